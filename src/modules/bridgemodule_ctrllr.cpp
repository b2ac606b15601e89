#include "modules/bridgemodule_ctrllr.h"

#include "modules/bridgemodule_view.h"
#include "modules/channels/channel_view.h"
#include "protocol/records/modulestatus.h"

namespace {

constexpr double kOffsetLimit = 999.9;
constexpr double kOffsetStep = 0.1;

// Bits of the preselected shunts in a static status.
constexpr quint8 kPositiveA = 0x01;
constexpr quint8 kNegativeA = 0x02;
constexpr quint8 kPositiveB = 0x04;
constexpr quint8 kNegativeB = 0x08;

ChannelSetup bridgeLimits(ChannelSetup limits)
{
    limits.offsetMin = -kOffsetLimit;
    limits.offsetMax = kOffsetLimit;
    limits.offsetStep = kOffsetStep;
    return limits;
}

} // namespace

BridgeModule_Ctrllr::BridgeModule_Ctrllr(Parts parts, TimeSource &time, QObject *parent)
    : AmplifierModule_Ctrllr(std::move(parts), bridgeLimits(amplifierLimits()), time, parent)
{
    using P = ChannelParameter;
    addParameter(
        P::RangeIndex, [this] { Slot_GainIndex_A_FakeTimeOver(); },
        [this] { Slot_GainIndex_B_FakeTimeOver(); });
    addParameter(
        P::ManualOffset, [this] { Slot_ManualOffset_A_FakeTimeOver(); },
        [this] { Slot_ManualOffset_B_FakeTimeOver(); });
    addParameter(
        P::Shunt, [this] { Slot_Shunt_A_FakeTimeOver(); }, [this] { Slot_Shunt_B_FakeTimeOver(); });

    using View = BridgeModule_View;
    using Own = BridgeModule_Ctrllr;
    auto *view = &row<View>();
    connect(view, &View::Signal_SendGainIndex, this, &Own::Slot_SendGainIndex);
    connect(view, &View::Signal_SendManualOffset, this, &Own::Slot_SendManualOffset);
    connect(view, &View::Signal_SendShuntState, this, &Own::Slot_SendShuntState);
}

void BridgeModule_Ctrllr::applyStaticStatus(const Module_Status &status)
{
    const quint8 bits = status.shuntPreselect;
    auto &view = row<BridgeModule_View>();
    view.channelView(Channel::A).setPreselection((bits & kPositiveA) != 0, (bits & kNegativeA) != 0);
    view.channelView(Channel::B).setPreselection((bits & kPositiveB) != 0, (bits & kNegativeB) != 0);
    AmplifierModule_Ctrllr::applyStaticStatus(status);
}

void BridgeModule_Ctrllr::Slot_SendGainIndex(int ch, int index)
{
    changeRangeIndex(ch, index);
}

void BridgeModule_Ctrllr::Slot_SendManualOffset(int ch, std::string &value)
{
    changeOffset(ch, value);
}

void BridgeModule_Ctrllr::Slot_SendShuntState(int ch, uchar value)
{
    changeShunt(ch, value);
}

void BridgeModule_Ctrllr::Slot_GainIndex_A_FakeTimeOver()
{
    timeOver(ChannelParameter::RangeIndex, Channel::A);
}

void BridgeModule_Ctrllr::Slot_GainIndex_B_FakeTimeOver()
{
    timeOver(ChannelParameter::RangeIndex, Channel::B);
}

void BridgeModule_Ctrllr::Slot_ManualOffset_A_FakeTimeOver()
{
    timeOver(ChannelParameter::ManualOffset, Channel::A);
}

void BridgeModule_Ctrllr::Slot_ManualOffset_B_FakeTimeOver()
{
    timeOver(ChannelParameter::ManualOffset, Channel::B);
}

void BridgeModule_Ctrllr::Slot_Shunt_A_FakeTimeOver()
{
    timeOver(ChannelParameter::Shunt, Channel::A);
}

void BridgeModule_Ctrllr::Slot_Shunt_B_FakeTimeOver()
{
    timeOver(ChannelParameter::Shunt, Channel::B);
}
