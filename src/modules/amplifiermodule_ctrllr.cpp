#include "modules/amplifiermodule_ctrllr.h"

#include "modules/amplifiermodule_view.h"

namespace {

constexpr qint32 kFilterMax = 999999999; // Hz
constexpr qint32 kFilterStep = 10;

} // namespace

ChannelSetup AmplifierModule_Ctrllr::amplifierLimits()
{
    ChannelSetup limits;
    limits.filterMin = 0;
    limits.filterMax = kFilterMax;
    limits.filterStep = kFilterStep;
    return limits;
}

AmplifierModule_Ctrllr::AmplifierModule_Ctrllr(Parts parts, const ChannelSetup &limits, TimeSource &time,
                                               QObject *parent)
    : ChannelModule_Ctrllr(std::move(parts), limits, time, parent)
{
    using P = ChannelParameter;
    addParameter(
        P::TypeIndex, [this] { Slot_BridgeTypeIndex_A_FakeTimeOver(); },
        [this] { Slot_BridgeTypeIndex_B_FakeTimeOver(); });
    addParameter(
        P::Autozero, [this] { Slot_Autozero_A_FakeTimeOver(); }, [this] { Slot_Autozero_B_FakeTimeOver(); });
    addParameter(
        P::Filter, [this] { Slot_Filter_A_FakeTimeOver(); }, [this] { Slot_Filter_B_FakeTimeOver(); });
    addParameter(
        P::ReversePolarity, [this] { Slot_RevPol_A_FakeTimeOver(); },
        [this] { Slot_RevPol_B_FakeTimeOver(); });

    using View = AmplifierModule_View;
    using Own = AmplifierModule_Ctrllr;
    auto *view = &row<View>();
    connect(view, &View::Signal_DeviceButton, this, &Own::Slot_DeviceButton);
    connect(view, &View::Signal_SendBridgeTypeIndex, this, &Own::Slot_SendBridgeTypeIndex);
    connect(view, &View::Signal_SendAutozero, this, &Own::Slot_SendAutozero);
    connect(view, &View::Signal_SendFilterValue, this, &Own::Slot_SendFilterValue);
    connect(view, &View::Signal_SendRevPolState, this, &Own::Slot_SendRevPolState);
}

void AmplifierModule_Ctrllr::Slot_SendBridgeTypeIndex(int ch, int index)
{
    changeTypeIndex(ch, index);
}

void AmplifierModule_Ctrllr::Slot_SendFilterValue(int ch, int value)
{
    changeFilter(ch, value);
}

void AmplifierModule_Ctrllr::Slot_SendRevPolState(int ch, bool state)
{
    changePolarity(ch, state);
}

void AmplifierModule_Ctrllr::Slot_SendAutozero(int ch, bool state, uchar code)
{
    changeAutozero(ch, state, code);
}

void AmplifierModule_Ctrllr::Slot_BridgeTypeIndex_A_FakeTimeOver()
{
    timeOver(ChannelParameter::TypeIndex, Channel::A);
}

void AmplifierModule_Ctrllr::Slot_BridgeTypeIndex_B_FakeTimeOver()
{
    timeOver(ChannelParameter::TypeIndex, Channel::B);
}

void AmplifierModule_Ctrllr::Slot_Autozero_A_FakeTimeOver()
{
    timeOver(ChannelParameter::Autozero, Channel::A);
}

void AmplifierModule_Ctrllr::Slot_Autozero_B_FakeTimeOver()
{
    timeOver(ChannelParameter::Autozero, Channel::B);
}

void AmplifierModule_Ctrllr::Slot_Filter_A_FakeTimeOver()
{
    timeOver(ChannelParameter::Filter, Channel::A);
}

void AmplifierModule_Ctrllr::Slot_Filter_B_FakeTimeOver()
{
    timeOver(ChannelParameter::Filter, Channel::B);
}

void AmplifierModule_Ctrllr::Slot_RevPol_A_FakeTimeOver()
{
    timeOver(ChannelParameter::ReversePolarity, Channel::A);
}

void AmplifierModule_Ctrllr::Slot_RevPol_B_FakeTimeOver()
{
    timeOver(ChannelParameter::ReversePolarity, Channel::B);
}
