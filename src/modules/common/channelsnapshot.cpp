#include "modules/common/channelsnapshot.h"

#include "modules/common/channelrecord.h"

namespace {

/// Fields that the records of types 1 and 2 have in common.
template <typename Data>
void fillAmplifierSnapshot(Data &data, const ChannelRecord &record, quint8 selector)
{
    data.bridgeTypeIndex = record.bridgeTypeIndex;
    data.gainIndex = record.gainIndex;
    data.autozero = record.autozero;
    data.filterValue = record.filterValue;
    data.reversePolarity = record.reversePolarity != 0;
    data.selector = selector;
}

} // namespace

void fillSnapshot(DataModuleDeviceT1 &data, const ChannelRecord &record, quint8 selector)
{
    fillAmplifierSnapshot(data, record, selector);
    data.manualOffset = record.manualOffset.toStdString();
    data.shuntState = record.shuntState;
}

void fillSnapshot(DataModuleDeviceT2 &data, const ChannelRecord &record, quint8 selector)
{
    fillAmplifierSnapshot(data, record, selector);
}

void fillSnapshot(DataModuleDeviceT3 &data, const ChannelRecord &record, quint8 selector)
{
    data.thermoDeviceTypeIndex = record.bridgeTypeIndex;
    data.temperatureRangeIndex = record.gainIndex;
    data.filterValue = record.filterValue;
    data.autozero = record.autozero;
    data.selector = selector;
}
