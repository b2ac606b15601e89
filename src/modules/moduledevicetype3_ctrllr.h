#pragma once

#include "modules/channelmodule_ctrllr.h"

/// Controller of a thermo module.
class ModuleDeviceType3_Ctrllr : public ChannelModule_Ctrllr
{
    Q_OBJECT

public:
    /// Numbers and time as in ModuleDeviceType1_Ctrllr.
    ModuleDeviceType3_Ctrllr(int moduleNumber, int firstChannel, TimeSource &time, QObject *parent = nullptr);

    void SetChannelT3Setup(int channel, const ChannelSetup &setup) override;
    void SetChannelT3Values(int channel, const ChannelRecord &values) override;
    void connectRequests(const ModuleRequests &requests) override;

public slots:
    void DeviceButton();
    void ChannelButton();

    // The operator's wishes; `ch` is 1 (A) or 2 (B).
    void SendThermoDeviceTypeIndex(int ch, int index);
    void SendTemperatureRangeIndex(int ch, int index);
    void SendFilterValue(int ch, int value);

    /// Agreed, not connected: the row has no Auto Zero, and the device takes none.
    void Slot_SendAutozero(int ch, bool state);

    // The pending time of a parameter is over.
    void ThermoDeviceType_A_FakeTimeOver();
    void ThermoDeviceType_B_FakeTimeOver();
    void TemperatureRange_A_FakeTimeOver();
    void TemperatureRange_B_FakeTimeOver();
    void Slot_Autozero_A_FakeTimeOver();
    void Slot_Autozero_B_FakeTimeOver();
    void Filter_A_FakeTimeOver();
    void Filter_B_FakeTimeOver();

signals:
    void Signal_SendChannelT3Data(QVariant request); ///< a DatagramT3

protected:
    void emitRequest(int ch, const ChannelRecord &snapshot, quint8 selector) override;
    void applyFastStatus(const Fast_Module_Status &status) override;
};
