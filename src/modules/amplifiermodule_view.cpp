#include "modules/amplifiermodule_view.h"

#include "modules/channels/amplifierchannel_view.h"
#include "protocol/records/datagrams.h"

void AmplifierModule_View::setAmplifierChannels(AmplifierChannel_View *a, AmplifierChannel_View *b)
{
    setChannelViews(a, b);
    using Strip = AmplifierChannel_View;
    using Row = AmplifierModule_View;
    connect(a, &Strip::Signal_SendBridgeTypeIndex, this, &Row::Slot_SendBridgeTypeIndex_A);
    connect(b, &Strip::Signal_SendBridgeTypeIndex, this, &Row::Slot_SendBridgeTypeIndex_B);
    connect(a, &Strip::Signal_SendAutozero, this, &Row::Slot_SendAutozero_A);
    connect(b, &Strip::Signal_SendAutozero, this, &Row::Slot_SendAutozero_B);
    connect(a, &Strip::Signal_SendAutoReset, this, &Row::Slot_SendAutoReset_A);
    connect(b, &Strip::Signal_SendAutoReset, this, &Row::Slot_SendAutoReset_B);
    for (Strip *strip : {a, b})
        connect(strip, &Strip::Signal_ShiftClickCommand, this, &Row::Signal_ShifClickCommand);
}

void AmplifierModule_View::Slot_SendBridgeTypeIndex_A(int index)
{
    emit Signal_SendBridgeTypeIndex(kChannelA, index);
}

void AmplifierModule_View::Slot_SendBridgeTypeIndex_B(int index)
{
    emit Signal_SendBridgeTypeIndex(kChannelB, index);
}

void AmplifierModule_View::Slot_SendAutozero_A(bool state)
{
    emit Signal_SendAutozero(kChannelA, state, wireCode(ChannelSelector::Autozero));
}

void AmplifierModule_View::Slot_SendAutozero_B(bool state)
{
    emit Signal_SendAutozero(kChannelB, state, wireCode(ChannelSelector::Autozero));
}

void AmplifierModule_View::Slot_SendAutoReset_A(bool state)
{
    emit Signal_SendAutozero(kChannelA, state, wireCode(ChannelSelector::AutoReset));
}

void AmplifierModule_View::Slot_SendAutoReset_B(bool state)
{
    emit Signal_SendAutozero(kChannelB, state, wireCode(ChannelSelector::AutoReset));
}
