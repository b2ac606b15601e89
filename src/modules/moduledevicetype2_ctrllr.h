#pragma once

#include "modules/amplifiermodule_ctrllr.h"

/// Controller of a voltage-like module: voltage, IEPE, XVDT, potentiometer, current loop, auxiliary.
class ModuleDeviceType2_Ctrllr : public AmplifierModule_Ctrllr
{
    Q_OBJECT

public:
    /// `moduleType`: the module type code of the system status. The row shows the name of the code that a
    /// status brings; group commands follow this one. Numbers and time as in ModuleDeviceType1_Ctrllr.
    ModuleDeviceType2_Ctrllr(quint8 moduleType, int moduleNumber, int firstChannel, TimeSource &time,
                             QObject *parent = nullptr);

    void SetChannelT2Setup(int channel, const ChannelSetup &setup) override;
    void SetChannelT2Values(int channel, const ChannelRecord &values) override;
    void connectRequests(const ModuleRequests &requests) override;

public slots:
    void Slot_SendRangeGainIndex(int ch, int index);

    // The pending time of a parameter is over.
    void Slot_RangeGain_A_FakeTimeOver();
    void Slot_RangeGain_B_FakeTimeOver();

signals:
    void Signal_SendChannelT2Data(QVariant request); ///< a DatagramT2

protected:
    void emitRequest(int ch, const ChannelRecord &snapshot, quint8 selector) override;
    void applyFastStatus(const Fast_Module_Status &status) override;
};
