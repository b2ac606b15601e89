#pragma once

#include "modules/bridgemodule_ctrllr.h"

/// Controller of a strain gauge module.
class ModuleDeviceType1_Ctrllr : public BridgeModule_Ctrllr
{
    Q_OBJECT

public:
    /// Module 1 to 128. `firstChannel` is the number of channel A, that of channel B is one more. `time`
    /// must outlive the controller.
    ModuleDeviceType1_Ctrllr(int moduleNumber, int firstChannel, TimeSource &time, QObject *parent = nullptr);

    void SetChannelT1Setup(int channel, const ChannelSetup &setup) override;
    void SetChannelT1Values(int channel, const ChannelRecord &values) override;
    void connectRequests(const ModuleRequests &requests) override;

public slots:
    /// The shunts of the whole module: a request to channel 0, which no wire carries.
    void Slot_SendShuntCmdAll(bool state);

signals:
    void Signal_SendChannelT1Data(QVariant request); ///< a DatagramT1

protected:
    void emitRequest(int ch, const ChannelRecord &snapshot, quint8 selector) override;
};
