#pragma once

#include "modules/amplifiermodule_ctrllr.h"

#include <string>

/// Controller of a module whose channels can feed a bridge: strain gauge and universal modules. Both ask
/// for changes with a DatagramT1.
class BridgeModule_Ctrllr : public AmplifierModule_Ctrllr
{
    Q_OBJECT

public slots:
    // The operator's wishes; `ch` is 1 (A) or 2 (B).
    void Slot_SendGainIndex(int ch, int index);
    void Slot_SendManualOffset(int ch, std::string &value);

    /// `value`: action byte of the device.
    void Slot_SendShuntState(int ch, uchar value);

    // The pending time of a parameter is over.
    void Slot_GainIndex_A_FakeTimeOver();
    void Slot_GainIndex_B_FakeTimeOver();
    void Slot_ManualOffset_A_FakeTimeOver();
    void Slot_ManualOffset_B_FakeTimeOver();
    void Slot_Shunt_A_FakeTimeOver();
    void Slot_Shunt_B_FakeTimeOver();

protected:
    /// The row in `parts` is a BridgeModule_View. `time` must outlive the controller.
    BridgeModule_Ctrllr(Parts parts, TimeSource &time, QObject *parent);

    void applyStaticStatus(const Module_Status &status) override;
};
