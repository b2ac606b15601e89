#include "controller/powersetting.h"

#include <QCoreApplication>
#include <array>

namespace {

constexpr double kHighestVolts = 65.0;
constexpr double kRounding = 0.5;

/// Texts of the reported codes, in their order. The last cannot be chosen.
constexpr std::array<const char *, 4> kProtections{{
    QT_TRANSLATE_NOOP("ModuleController_Ctrllr", "standard"),
    QT_TRANSLATE_NOOP("ModuleController_Ctrllr", "derating"),
    QT_TRANSLATE_NOOP("ModuleController_Ctrllr", "mission critical"),
    QT_TRANSLATE_NOOP("ModuleController_Ctrllr", "none"),
}};
constexpr std::size_t kChoices = 3;

QString translatedProtection(std::size_t code)
{
    return QCoreApplication::translate("ModuleController_Ctrllr", kProtections.at(code));
}

} // namespace

PowerSetting modeSetting(int index)
{
    switch (index) {
    case 0:
        return PowerSetting::FixedMode;
    case 1:
        return PowerSetting::AutoMode;
    default:
        return PowerSetting::None;
    }
}

PowerSetting protectionSetting(int index)
{
    switch (index) {
    case 1:
        return PowerSetting::ProtectionDerating;
    case 2:
        return PowerSetting::ProtectionMissionCritical;
    default:
        return PowerSetting::ProtectionStandard;
    }
}

QStringList protectionNames()
{
    QStringList names;
    for (std::size_t code = 0; code < kChoices; ++code)
        names.append(translatedProtection(code));
    return names;
}

QString protectionName(quint8 code)
{
    return code < kProtections.size() ? translatedProtection(code) : QString::number(code);
}

quint16 setpointMillivolts(double volts)
{
    if (volts > kHighestVolts)
        volts = kHighestVolts;
    else if (!(volts > 0)) // no number, either
        volts = 0;
    return static_cast<quint16>(volts * kMillivoltsPerVolt + kRounding);
}
