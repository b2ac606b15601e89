#pragma once

#include <QVariant>
#include <functional>

class QObject;

/// Where the requests of a module's controller go. Each family uses those that it has.
struct ModuleRequests
{
    QObject *context; ///< nothing is called once this object is gone

    /// A DatagramT1, DatagramT2 or DatagramT3.
    std::function<void(const QVariant &request)> channelRequest;

    /// `channel`: number in the chain, one byte. `function`: module type code.
    std::function<void(uchar channel, uchar function)> channelChange;

    /// `voltage`: (volts - 3) x 10.
    std::function<void(uchar channel, uchar onOff, uchar voltage)> voltageSupply;
};
