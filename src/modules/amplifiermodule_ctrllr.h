#pragma once

#include "modules/channelmodule_ctrllr.h"

/// Controller of a module whose channels have an amplifier: strain gauge, voltage-like and universal
/// modules.
class AmplifierModule_Ctrllr : public ChannelModule_Ctrllr
{
    Q_OBJECT

public slots:
    // The operator's wishes; `ch` is 1 (A) or 2 (B).
    void Slot_SendBridgeTypeIndex(int ch, int index);
    void Slot_SendFilterValue(int ch, int value);
    void Slot_SendRevPolState(int ch, bool state);

    /// `code` tells an Auto Zero from its reset, as a ChannelSelector.
    void Slot_SendAutozero(int ch, bool state, uchar code);

    // The pending time of a parameter is over.
    void Slot_BridgeTypeIndex_A_FakeTimeOver();
    void Slot_BridgeTypeIndex_B_FakeTimeOver();
    virtual void Slot_Autozero_A_FakeTimeOver();
    void Slot_Autozero_B_FakeTimeOver();
    void Slot_Filter_A_FakeTimeOver();
    void Slot_Filter_B_FakeTimeOver();
    void Slot_RevPol_A_FakeTimeOver();
    void Slot_RevPol_B_FakeTimeOver();

protected:
    /// The row in `parts` is an AmplifierModule_View. `time` must outlive the controller.
    AmplifierModule_Ctrllr(Parts parts, const ChannelSetup &limits, TimeSource &time, QObject *parent);

    /// Filter limits of these families.
    static ChannelSetup amplifierLimits();
};
