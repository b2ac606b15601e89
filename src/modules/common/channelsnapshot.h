#pragma once

#include "protocol/records/datagrams.h"

struct ChannelRecord;

/// The snapshot of a channel that a change request carries: its values without the lists. `selector` says
/// which of them the device is to take, see ChannelSelector.
void fillSnapshot(DataModuleDeviceT1 &data, const ChannelRecord &record, quint8 selector);
void fillSnapshot(DataModuleDeviceT2 &data, const ChannelRecord &record, quint8 selector);
void fillSnapshot(DataModuleDeviceT3 &data, const ChannelRecord &record, quint8 selector);

/// The change request of a family: module 1 to 128; channel 1, 2, or 0 for the whole module.
template <typename Datagram>
Datagram changeRequest(int module, int channel, const ChannelRecord &record, quint8 selector)
{
    Datagram request;
    request.module = static_cast<quint32>(module);
    request.channel = static_cast<quint8>(channel);
    fillSnapshot(request.data, record, selector);
    return request;
}
