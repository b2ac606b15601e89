#include "modules/channelmodule_ctrllr.h"

#include "base/log.h"
#include "modules/channels/channel_view.h"
#include "protocol/records/datagrams.h"
#include "protocol/records/fastmodulestatus.h"
#include "protocol/records/modulestatus.h"

#include <algorithm>
#include <limits>

namespace {

constexpr std::array<Channel, 2> kChannels{Channel::A, Channel::B};
constexpr quint8 kPolarityA = 0x01;
constexpr quint8 kPolarityB = 0x02;
constexpr quint8 kSet = 1; ///< a flag of the fast status

/// The filter text of a status; one that cannot be read is 0.
qint32 filterValue(const QString &text)
{
    constexpr auto most = static_cast<uint>(std::numeric_limits<qint32>::max());
    return static_cast<qint32>(std::min(text.toUInt(), most));
}

void replaceList(QStringListModel &model, const QStringList &list)
{
    // A model that is reset loses the entry under the mouse of an open popup.
    if (model.stringList() != list)
        model.setStringList(list);
}

} // namespace

ChannelModule_Ctrllr::ChannelModule_Ctrllr(Parts parts, const ChannelSetup &limits, TimeSource &time,
                                           QObject *parent)
    : AnalogModule_Ctrllr(parts.typeCode, parts.moduleNumber, std::move(parts.view), std::move(parts.data),
                          parent)
    , m_time(time)
    , m_row(static_cast<ChannelModule_View *>(AnalogModule_Ctrllr::GetView()))
{
    for (const Channel channel : kChannels) {
        m_row->channelView(channel).setModels(lists(channel).types, lists(channel).ranges);
        applySetup(static_cast<int>(channel), limits);
    }
}

ChannelModule_Ctrllr::~ChannelModule_Ctrllr()
{
    // The row goes after this object: a filter box that loses the focus then must find nobody.
    ChannelModule_Ctrllr::retire();
}

void ChannelModule_Ctrllr::retire()
{
    for (const auto &entry : m_pending) {
        for (const auto &display : entry.second)
            display->cancel();
    }
    if (!GetView()) // the window took the row along
        return;
    m_row->disableUpdates();
    m_row->disconnect(this); // some gestures act though updates are disabled
}

void ChannelModule_Ctrllr::addParameter(ChannelParameter parameter, TimeOverSlot slotA, TimeOverSlot slotB)
{
    const auto timeOverRule = parameter == ChannelParameter::Autozero ? PendingDisplay::TimeOver::OnlyElapse
                                                                      : PendingDisplay::TimeOver::ShowLatest;
    const auto make = [&](Channel channel, TimeOverSlot slot) {
        PendingDisplay::Callbacks callbacks;
        callbacks.showLatest = [this, parameter, channel] { show(parameter, channel); };
        callbacks.requestStatus = [this] { emit Signal_GetChannelData(static_cast<uint>(moduleNumber())); };
        callbacks.atTimeOver = std::move(slot);
        return std::make_unique<PendingDisplay>(m_time, std::move(callbacks), timeOverRule);
    };
    m_pending[parameter] = {make(Channel::A, std::move(slotA)), make(Channel::B, std::move(slotB))};
}

PendingDisplay &ChannelModule_Ctrllr::pending(ChannelParameter parameter, Channel channel)
{
    return *m_pending.at(parameter)[indexOf(channel)];
}

void ChannelModule_Ctrllr::timeOver(ChannelParameter parameter, Channel channel)
{
    pending(parameter, channel).timeOver();
}

template <typename Value>
void ChannelModule_Ctrllr::change(int ch, ChannelParameter parameter, quint8 selector,
                                  Value ChannelRecord::*field, const Value &value)
{
    ChannelRecord snapshot = GetData()->channel(ch);
    snapshot.*field = value;
    if (const auto channel = channelOf(ch))
        pending(parameter, *channel).userChanged();
    emitRequest(ch, snapshot, selector);
}

void ChannelModule_Ctrllr::changeTypeIndex(int ch, int index)
{
    change(ch, ChannelParameter::TypeIndex, wireCode(ChannelSelector::TypeIndex),
           &ChannelRecord::bridgeTypeIndex, index);
}

void ChannelModule_Ctrllr::changeRangeIndex(int ch, int index)
{
    change(ch, ChannelParameter::RangeIndex, wireCode(ChannelSelector::RangeIndex), &ChannelRecord::gainIndex,
           index);
}

void ChannelModule_Ctrllr::changeFilter(int ch, int value)
{
    change(ch, ChannelParameter::Filter, wireCode(ChannelSelector::Filter), &ChannelRecord::filterValue,
           value);
}

void ChannelModule_Ctrllr::changePolarity(int ch, bool reversed)
{
    change<quint8>(ch, ChannelParameter::ReversePolarity, wireCode(ChannelSelector::ReversePolarity),
                   &ChannelRecord::reversePolarity, reversed ? 1 : 0);
}

void ChannelModule_Ctrllr::changeOffset(int ch, const std::string &value)
{
    change(ch, ChannelParameter::ManualOffset, wireCode(ChannelSelector::ManualOffset),
           &ChannelRecord::manualOffset, QString::fromStdString(value));
}

void ChannelModule_Ctrllr::changeShunt(int ch, quint8 value)
{
    change(ch, ChannelParameter::Shunt, wireCode(ChannelSelector::Shunt), &ChannelRecord::shuntState, value);
}

void ChannelModule_Ctrllr::changeAutozero(int ch, bool state, quint8 code)
{
    change<quint8>(ch, ChannelParameter::Autozero, code, &ChannelRecord::autozero, state ? 1 : 0);
}

ChannelLists ChannelModule_Ctrllr::splitLists(const QString &text) const
{
    const QStringList items = moduleListItems(text);
    return {items, items};
}

void ChannelModule_Ctrllr::applyStaticStatus(const Module_Status &status)
{
    const ChannelLists types = splitLists(status.sensorList);
    const ChannelLists ranges = splitLists(status.rangeList);
    // No change made here may send a command.
    m_row->disableUpdates();
    applyChannelStatus(Channel::A, {types.a, status.bridgeIndexA, ranges.a, status.rangeIndexA,
                                    status.offsetA, status.filterA, (status.revPolBits & kPolarityA) != 0});
    applyChannelStatus(Channel::B, {types.b, status.bridgeIndexB, ranges.b, status.rangeIndexB,
                                    status.offsetB, status.filterB, (status.revPolBits & kPolarityB) != 0});
    m_row->enableUpdates();
}

void ChannelModule_Ctrllr::applyChannelStatus(Channel channel, const ChannelStatus &status)
{
    ChannelRecord &record = GetData()->channel(channel);
    record.bridgeTypeList = status.types;
    record.bridgeTypeIndex = status.typeIndex;
    statusArrived(ChannelParameter::TypeIndex, channel);
    record.gainList = status.ranges;
    record.gainIndex = status.rangeIndex;
    statusArrived(ChannelParameter::RangeIndex, channel);
    if (has(ChannelParameter::ManualOffset)) {
        record.manualOffset = status.offset;
        statusArrived(ChannelParameter::ManualOffset, channel);
    }
    record.filterValue = filterValue(status.filter);
    statusArrived(ChannelParameter::Filter, channel);
    if (has(ChannelParameter::ReversePolarity)) {
        record.reversePolarity = status.reversePolarity ? 1 : 0;
        statusArrived(ChannelParameter::ReversePolarity, channel);
    }
}

void ChannelModule_Ctrllr::applyFastStatus(const Fast_Module_Status &status)
{
    applyAutozero(Channel::A, status.autozeroA == kSet);
    applyAutozero(Channel::B, status.autozeroB == kSet);
    if (has(ChannelParameter::Shunt)) {
        applyShunt(Channel::A, status.shuntA == kSet);
        applyShunt(Channel::B, status.shuntB == kSet);
    }
}

void ChannelModule_Ctrllr::logAnalogData(const char *signature, const Fast_Module_Status &status)
{
    if (status.flag3 != 0)
        debugLine(signature) << "analogDataA: " << status.valueA;
}

void ChannelModule_Ctrllr::applyAutozero(Channel channel, bool running)
{
    GetData()->channel(channel).autozero = running ? 1 : 0;
    statusArrived(ChannelParameter::Autozero, channel);
}

void ChannelModule_Ctrllr::applyShunt(Channel channel, bool on)
{
    GetData()->channel(channel).shuntState = on ? 1 : 0;
    statusArrived(ChannelParameter::Shunt, channel);
}

void ChannelModule_Ctrllr::statusArrived(ChannelParameter parameter, Channel channel)
{
    pending(parameter, channel).statusArrived();
}

void ChannelModule_Ctrllr::show(ChannelParameter parameter, Channel channel)
{
    const ChannelRecord &record = GetData()->channel(channel);
    Channel_View &strip = m_row->channelView(channel);
    switch (parameter) {
    case ChannelParameter::TypeIndex:
        replaceList(lists(channel).types, record.bridgeTypeList);
        strip.setTypeIndex(record.bridgeTypeIndex);
        break;
    case ChannelParameter::RangeIndex:
        replaceList(lists(channel).ranges, record.gainList);
        strip.setRangeIndex(record.gainIndex);
        break;
    case ChannelParameter::Autozero:
        strip.setAutozero(record.autozero != 0);
        break;
    case ChannelParameter::ManualOffset:
        strip.setOffset(record.manualOffset);
        break;
    case ChannelParameter::Filter:
        strip.setFilterValue(record.filterValue);
        break;
    case ChannelParameter::ReversePolarity:
        strip.setPolarity(record.reversePolarity != 0);
        break;
    case ChannelParameter::Shunt:
        // The shunt buttons follow the 20 seconds for which the module holds a shunt, not the status.
        break;
    }
}

void ChannelModule_Ctrllr::applyGroupCommand(const GroupCommand &command)
{
    m_row->applyGroupCommand(command);
}

void ChannelModule_Ctrllr::applySetup(int ch, const ChannelSetup &setup)
{
    const auto channel = channelOf(ch);
    if (!channel)
        return;
    ChannelRecord &record = GetData()->channel(*channel);
    record.bridgeTypeList = setup.bridgeTypeList;
    record.gainList = setup.gainList;
    record.offsetMin = setup.offsetMin;
    record.offsetMax = setup.offsetMax;
    record.offsetStep = setup.offsetStep;
    record.filterMin = setup.filterMin;
    record.filterMax = setup.filterMax;
    record.filterStep = setup.filterStep;
    replaceList(lists(*channel).types, setup.bridgeTypeList);
    replaceList(lists(*channel).ranges, setup.gainList);
    Channel_View &strip = m_row->channelView(*channel);
    strip.setOffsetRange(setup.offsetMin, setup.offsetMax, setup.offsetStep);
    strip.setFilterRange(setup.filterMin, setup.filterMax);
}

void ChannelModule_Ctrllr::applyValues(int ch, const ChannelRecord &values)
{
    const auto channel = channelOf(ch);
    if (!channel)
        return;
    ChannelRecord &record = GetData()->channel(*channel);
    const ChannelRecord old = record;
    record = values;
    record.channelNumber = old.channelNumber;
    record.offsetMin = old.offsetMin;
    record.offsetMax = old.offsetMax;
    record.offsetStep = old.offsetStep;
    record.filterMin = old.filterMin;
    record.filterMax = old.filterMax;
    record.filterStep = old.filterStep;
    for (const auto &entry : m_pending)
        setDirectly(entry.first, *channel);
    m_row->channelView(*channel).setLevel(values.level);
}

void ChannelModule_Ctrllr::setDirectly(ChannelParameter parameter, Channel channel)
{
    pending(parameter, channel).clear();
    show(parameter, channel);
}
