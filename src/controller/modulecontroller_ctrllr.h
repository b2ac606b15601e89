#pragma once

#include "controller/controllermodel.h"

#include <QObject>
#include <QPointer>
#include <QVariant>

class FakeTimer;
class ModuleController_View;
class TimeSource;
struct Module_Status;
struct Power_Status;
enum class PowerSetting : quint8;

/// Drives the top row: the controller module and, beside it, the power module. Shows what they are and how
/// they fare, warns of firmware that does not match, and turns the user's power settings into commands.
class ModuleController_Ctrllr : public QObject
{
    Q_OBJECT

public:
    /// `rowNumber` is the row's place among the controller rows, from 1. With `withPower` the power
    /// module's part is shown until a report tells that no such module answers; once hidden it stays so.
    ModuleController_Ctrllr(int moduleNumber, int rowNumber, bool withPower, TimeSource &time,
                            QObject *parent = nullptr);
    ~ModuleController_Ctrllr() override;

    /// The row; this object owns it.
    ModuleController_View *GetView();

    int rowNumber() const { return m_rowNumber; }

    /// What is known of both modules.
    const ControllerModel &model() const { return m_data; }

public slots:
    /// Shows the controller's version numbers. The box does not block.
    void Slot_ControllerButton();

    /// Lets the user choose the protection of the power module. The dialog does not block; the command goes
    /// out when it is accepted.
    void Slot_PowerButton();

    /// `remote` is the newest firmware known on the web; `flag` is passed on.
    void Slot_CheckFrmwrVersion(QString remote, int flag);

    /// A Fast_System_Status.
    void Slot_FastSystemStatus(QVariant data);

    /// The vector of Fast_Module_Status entries, of which the last two are taken.
    void Slot_FastModuleStatus(QVariant data);

    /// A Module_Status of any module.
    void Slot_StaticModuleStatus(QVariant data);

    /// A Power_Status.
    void Slot_StaticPowerStatus(QVariant data);

    /// The user chose an output voltage, in volts. It is sent when two seconds passed without another.
    void Slot_OutputVoltageSetpointChanged(double volts);

    /// The user chose an entry of the mode box. The command goes out at once.
    void Slot_OutputVoltageModeChanged(int index);

    /// The time in which another output voltage would replace the chosen one is over.
    void Slot_OutputVoltage_FakeTimeOver();

signals:
    /// Origin "local": the modules' firmware differs among themselves; emitted once at most, with flag 0.
    /// Origin "remote": there is newer firmware on the web; with the flag of that check.
    void Signal_FirmwareMismatch(QString origin, int flag);

    /// A setting for the power module: 1, a PowerSetting, and millivolts where the setting has a value.
    void Signal_COMMAND_POWER_SET(uchar first, uchar setting, ushort value);

private:
    void showController();
    void showPower();
    void takeController(const Module_Status &status);
    void takePower(const QString &serialNumber, const QString &hardware, const QString &firmware);
    void takePowerSettings(const Power_Status &status);
    void takeLimits(const QString &list);
    void takeInputVoltage(float volts);
    void checkLocalFirmware(const QString &firmware);
    void setProtection(const QString &name);
    void sendPowerSetting(PowerSetting setting, quint16 value = 0);

    int m_rowNumber;
    ControllerModel m_data;
    QPointer<ModuleController_View> m_view; ///< null once its window took it along: then nothing is done
    FakeTimer *m_setpointTimer;             ///< child; runs while a chosen setpoint is not sent yet
    QString m_referenceFirmware;            ///< firmware 1 of the controller; empty until it reported
    bool m_firmwareCheckPending = true;     ///< no local mismatch was reported yet
};
