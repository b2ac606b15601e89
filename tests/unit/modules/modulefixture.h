#pragma once

#include "modules/analogmodule_ctrllr.h"
#include "modules/common/modulemodel.h"
#include "modules/moduledevice_view.h"
#include "modules/modulefactory.h"
#include "protocol/records/fastmodulestatus.h"
#include "protocol/records/modulestatus.h"
#include "support/childbyname.h"
#include "support/virtualtime.h"

#include <QLabel>
#include <QVariant>
#include <memory>

/// A module's controller with short ways to play a device and to read the row.
class Module
{
public:
    explicit Module(int typeCode, int number = 3, int firstChannel = 5)
        : m_ownTime(std::make_unique<VirtualTime>())
        , time(*m_ownTime)
        , controller(createModule(static_cast<quint8>(typeCode), number, firstChannel, time, nullptr))
    {}

    /// One of several modules in the same time, which must outlive them.
    Module(VirtualTime &sharedTime, int typeCode, int number, int firstChannel)
        : time(sharedTime)
        , controller(createModule(static_cast<quint8>(typeCode), number, firstChannel, time, nullptr))
    {}

    QString text(const char *name) const { return childByName<QLabel>(controller->GetView(), name)->text(); }

    bool hidden(const char *name) const
    {
        return childByName<QWidget>(controller->GetView(), name)->isHidden();
    }

    void take(const Module_Status &status)
    {
        controller->Slot_StaticModuleStatus(QVariant::fromValue(status));
    }

    void take(const Fast_Module_Status &status, int entry = 3)
    {
        QVector<Fast_Module_Status> entries(kFastModuleStatusCount);
        entries[entry] = status;
        controller->Slot_FastModuleStatus(QVariant::fromValue(entries));
    }

    /// Voltage, temperature and self-test as the row shows them.
    QString live() const
    {
        return text("label_Voltage") + QLatin1Char('|') + text("label_Temperature") + QLatin1Char('|') +
               text("label_SelftestSt");
    }

    /// The four identification labels.
    QString identification() const
    {
        return text("label_SnVersion") + QLatin1Char('|') + text("label_HwVersion") + QLatin1Char('|') +
               text("label_SwVersion") + QLatin1Char('|') + text("label_FpgaVersn");
    }

    QString names() const
    {
        return text("label_DeviceName") + QLatin1Char('|') + text("ChDeviceLabel_A") + QLatin1Char('|') +
               text("ChDeviceLabel_B");
    }

private:
    std::unique_ptr<VirtualTime> m_ownTime; ///< none if several modules share one

public:
    VirtualTime &time;
    std::unique_ptr<AnalogModule_Ctrllr> controller;
};

inline Module_Status status(int typeCode, int number = 3)
{
    Module_Status status;
    status.moduleAddress = static_cast<quint8>(number);
    status.moduleType = static_cast<quint8>(typeCode);
    status.serialNumber = QStringLiteral("4711");
    status.hardwareVersion = QStringLiteral("01.02");
    status.firmware1Version = QStringLiteral("03.04.05");
    status.firmware2Version = QStringLiteral("06.07");
    return status;
}

inline Fast_Module_Status live(quint16 voltage, quint16 temperature, quint8 state)
{
    Fast_Module_Status status;
    status.supplyVoltage = voltage;
    status.temperature = temperature;
    status.moduleState = state;
    return status;
}

inline const QString kNewIdentification = QStringLiteral("4711|01.02|03.04.05|06.07");
inline const QString kFirstIdentification = QStringLiteral("XXXXXXX|XX.XX|XX.XX.XX|XX.XX.XX");
inline const QString kFirstNames = QStringLiteral("Unknown|Unknown|Unknown");
