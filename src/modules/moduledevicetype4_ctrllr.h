#pragma once

#include "modules/bridgemodule_ctrllr.h"

/// Controller of a universal module, each channel of which can be switched between functions.
class ModuleDeviceType4_Ctrllr : public BridgeModule_Ctrllr
{
    Q_OBJECT

public:
    /// Numbers and time as in ModuleDeviceType1_Ctrllr.
    ModuleDeviceType4_Ctrllr(int moduleNumber, int firstChannel, TimeSource &time, QObject *parent = nullptr);

    void SetChannelT4Setup(int channel, const ChannelSetup &setup) override;
    void SetChannelT4Values(int channel, const ChannelRecord &values) override;
    void connectRequests(const ModuleRequests &requests) override;

public slots:
    /// A channel of the chain (number in one byte) is to get another function.
    void Slot_SendChannelChange(uchar ch, uchar type);

    /// Sensor supply of a channel of the chain; `voltage` is (volts - 3) x 10.
    void Slot_SendVoltageSupply(uchar ch, uchar onOff, uchar voltage);
    void Slot_Autozero_A_FakeTimeOver() override;

signals:
    void Signal_SendChannelT4Data(QVariant request); ///< a DatagramT1

    // The arguments of the two slots above. Each is followed by the request for the module's status.
    void Signal_SendChannelChange(uchar ch, uchar type);
    void Signal_SendVoltageSupply(uchar ch, uchar onOff, uchar voltage);

protected:
    void emitRequest(int ch, const ChannelRecord &snapshot, quint8 selector) override;

    /// Two lists may be joined by "#", one for each channel.
    ChannelLists splitLists(const QString &text) const override;
    void showNames(const Module_Status &status) override;

    /// Each: whether a command is for a channel is decided by the channel's function.
    bool matchesGroupCommand(const GroupCommand &command) const override;
};
