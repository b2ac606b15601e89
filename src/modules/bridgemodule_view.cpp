#include "modules/bridgemodule_view.h"

#include "modules/channels/bridgechannel_view.h"

void BridgeModule_View::setBridgeChannels(BridgeChannel_View *a, BridgeChannel_View *b)
{
    setAmplifierChannels(a, b);
    using Strip = BridgeChannel_View;
    using Row = BridgeModule_View;
    connect(a, &Strip::Signal_SendGainIndex, this, &Row::Slot_SendGainIndex_A);
    connect(b, &Strip::Signal_SendGainIndex, this, &Row::Slot_SendGainIndex_B);
    connect(a, &Strip::Signal_SendManualOffset, this, &Row::Slot_SendManualOffset_A);
    connect(b, &Strip::Signal_SendManualOffset, this, &Row::Slot_SendManualOffset_B);
    connect(a, &Strip::Signal_SendFilterValue, this, &Row::Slot_SendFilterValue_A);
    connect(b, &Strip::Signal_SendFilterValue, this, &Row::Slot_SendFilterValue_B);
    connect(a, &Strip::Signal_SendRevPolState, this, &Row::Slot_SendRevPolState_A);
    connect(b, &Strip::Signal_SendRevPolState, this, &Row::Slot_SendRevPolState_B);
    connect(a, &Strip::Signal_SendShuntState, this, &Row::Slot_SendShuntState_A);
    connect(b, &Strip::Signal_SendShuntState, this, &Row::Slot_SendShuntState_B);
}

void BridgeModule_View::Slot_SendGainIndex_A(int index)
{
    emit Signal_SendGainIndex(kChannelA, index);
}

void BridgeModule_View::Slot_SendGainIndex_B(int index)
{
    emit Signal_SendGainIndex(kChannelB, index);
}

void BridgeModule_View::Slot_SendManualOffset_A(std::string &value)
{
    emit Signal_SendManualOffset(kChannelA, value);
}

void BridgeModule_View::Slot_SendManualOffset_B(std::string &value)
{
    emit Signal_SendManualOffset(kChannelB, value);
}

void BridgeModule_View::Slot_SendFilterValue_A(int value)
{
    emit Signal_SendFilterValue(kChannelA, value);
}

void BridgeModule_View::Slot_SendFilterValue_B(int value)
{
    emit Signal_SendFilterValue(kChannelB, value);
}

void BridgeModule_View::Slot_SendRevPolState_A(bool state)
{
    emit Signal_SendRevPolState(kChannelA, state);
}

void BridgeModule_View::Slot_SendRevPolState_B(bool state)
{
    emit Signal_SendRevPolState(kChannelB, state);
}

void BridgeModule_View::Slot_SendShuntState_A(uchar value)
{
    emit Signal_SendShuntState(kChannelA, value);
}

void BridgeModule_View::Slot_SendShuntState_B(uchar value)
{
    emit Signal_SendShuntState(kChannelB, value);
}
