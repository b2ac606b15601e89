#include "controller/powersetting.h"

#include <QCoreApplication>

namespace {

constexpr double kHighestVolts = 65.0;
constexpr double kMillivoltsPerVolt = 1000.0;
constexpr double kRounding = 0.5;
constexpr int kNoneCode = 3;

QString translated(const char *text)
{
    return QCoreApplication::translate("ModuleController_Ctrllr", text);
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
    return {translated("standard"), translated("derating"), translated("mission critical")};
}

QString protectionName(quint8 code)
{
    const QStringList names = protectionNames();
    if (code < names.size())
        return names.at(code);
    return code == kNoneCode ? translated("none") : QString::number(code);
}

quint16 setpointMillivolts(double volts)
{
    if (volts > kHighestVolts)
        volts = kHighestVolts;
    else if (!(volts > 0)) // no number, either
        volts = 0;
    return static_cast<quint16>(volts * kMillivoltsPerVolt + kRounding);
}
