#pragma once

#include "controller/modulecontroller_ctrllr.h"
#include "controller/modulecontroller_view.h"
#include "protocol/records/fastmodulestatus.h"
#include "protocol/records/fastsystemstatus.h"
#include "protocol/records/modulestatus.h"
#include "protocol/records/powerstatus.h"
#include "support/childbyname.h"
#include "support/virtualtime.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QStringList>
#include <QVariant>
#include <memory>

/// The top row with short ways to play a device and to read it.
class Row
{
public:
    explicit Row(bool withPower = true)
        : controller(std::make_unique<ModuleController_Ctrllr>(1, 1, withPower, time))
        , mismatch(controller.get(), &ModuleController_Ctrllr::Signal_FirmwareMismatch)
        , m_settings(controller.get(), &ModuleController_Ctrllr::Signal_COMMAND_POWER_SET)
    {}

    template <typename T>
    T *child(const char *name) const
    {
        return childByName<T>(controller->GetView(), name);
    }

    /// The settings for the power module since the last call, each as "1 0x10 12300".
    QStringList takeSettings()
    {
        QStringList texts;
        while (!m_settings.isEmpty()) {
            const QVariantList setting = m_settings.takeFirst();
            texts.append(QStringLiteral("%1 0x%2 %3")
                             .arg(setting.at(0).toUInt())
                             .arg(setting.at(1).toUInt(), 2, 16, QLatin1Char('0'))
                             .arg(setting.at(2).toUInt()));
        }
        return texts;
    }

    QString text(const char *name) const { return childByName<QLabel>(controller->GetView(), name)->text(); }

    QString button(const char *name) const
    {
        return childByName<QPushButton>(controller->GetView(), name)->text();
    }

    bool powerIsHidden() const
    {
        return childByName<QFrame>(controller->GetView(), "powerFrame")->isHidden();
    }

    QString controllerIdentity() const
    {
        return button("pushButton_modType") + QLatin1Char('|') + text("label_SerialNumber") +
               QLatin1Char('|') + text("label_HwVersion") + QLatin1Char('|') + text("label_SwVersion") +
               QLatin1Char('|') + text("label_FpgaVersn");
    }

    QString powerIdentity() const
    {
        return button("pushButton_powModType") + QLatin1Char('|') + text("label_SerialNumber_Pow") +
               QLatin1Char('|') + text("label_HwVersion_Pow") + QLatin1Char('|') +
               text("label_SwVersion_Pow");
    }

    QString controllerLive() const
    {
        return text("label_Voltage") + QLatin1Char('|') + text("label_Temperature") + QLatin1Char('|') +
               text("label_SelftestSt");
    }

    QString powerLive() const
    {
        return text("label_Voltage_Pow") + QLatin1Char('|') + text("label_Temperature_Pow") +
               QLatin1Char('|') + text("label_SelftestSt_Pow");
    }

    void take(const Module_Status &status)
    {
        controller->Slot_StaticModuleStatus(QVariant::fromValue(status));
    }
    void take(const Power_Status &status) { controller->Slot_StaticPowerStatus(QVariant::fromValue(status)); }

    void take(const Fast_System_Status &status)
    {
        controller->Slot_FastSystemStatus(QVariant::fromValue(status));
    }

    void take(const QVector<Fast_Module_Status> &entries)
    {
        controller->Slot_FastModuleStatus(QVariant::fromValue(entries));
    }

    VirtualTime time;
    std::unique_ptr<ModuleController_Ctrllr> controller;
    QSignalSpy mismatch;

private:
    QSignalSpy m_settings;
};

inline Module_Status moduleStatus(int type, const char *firmware, const char *serialNumber = "4711")
{
    Module_Status status;
    status.moduleType = static_cast<quint8>(type);
    status.serialNumber = QString::fromLatin1(serialNumber);
    status.hardwareVersion = QStringLiteral("01.02");
    status.firmware1Version = QString::fromLatin1(firmware);
    status.firmware2Version = QStringLiteral("05.06");
    return status;
}

inline Power_Status powerStatus(int type, const char *firmware, const char *serialNumber = "4712")
{
    Power_Status status;
    status.moduleType = static_cast<quint8>(type);
    status.serialNumber = QString::fromLatin1(serialNumber);
    status.hardwareVersion = QStringLiteral("07.08");
    status.firmware1Version = QString::fromLatin1(firmware);
    return status;
}

/// Of a power module with these output settings, in millivolts.
inline Power_Status outputStatus(int mode, int fixedVoltage, int autoVoltage, int protection = 0)
{
    Power_Status status = powerStatus(120, "");
    status.powerMode = static_cast<quint8>(mode);
    status.fixedVoltage = static_cast<quint16>(fixedVoltage);
    status.autoVoltage = static_cast<quint16>(autoVoltage);
    status.powerProtection = static_cast<quint8>(protection);
    return status;
}

inline constexpr int kControllerType = 100;
inline constexpr int kPowerType = 120;
