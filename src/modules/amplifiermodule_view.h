#pragma once

#include "modules/channelmodule_view.h"
#include "protocol/records/groupcommand.h"

class AmplifierChannel_View;

/// The row of a module whose channels have an amplifier: strain gauge, voltage-like and universal modules.
class AmplifierModule_View : public ChannelModule_View
{
    Q_OBJECT

public slots:
    void Slot_SendBridgeTypeIndex_A(int index);
    void Slot_SendBridgeTypeIndex_B(int index);
    void Slot_SendAutozero_A(bool state);
    void Slot_SendAutozero_B(bool state);
    void Slot_SendAutoReset_A(bool state);
    void Slot_SendAutoReset_B(bool state);

signals:
    // The operator's wishes; `ch` is 1 (A) or 2 (B).
    void Signal_SendBridgeTypeIndex(int ch, int index);

    /// `code` tells an Auto Zero from its reset, as a ChannelSelector.
    void Signal_SendAutozero(int ch, bool state, quint8 code);
    void Signal_SendFilterValue(int ch, int value);
    void Signal_SendRevPolState(int ch, bool state);

    /// A gesture for all matching channels; name as agreed.
    void Signal_ShifClickCommand(GroupCommand command);

protected:
    using ChannelModule_View::ChannelModule_View;

    /// Puts the strips into the row and joins what all amplifier channels report.
    void setAmplifierChannels(AmplifierChannel_View *a, AmplifierChannel_View *b);
};
