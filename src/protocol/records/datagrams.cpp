#include "protocol/records/datagrams.h"

#include <tuple>

namespace {

auto fields(const DataModuleDeviceT1 &d)
{
    return std::tie(d.bridgeTypeList, d.gainList, d.bridgeTypeIndex, d.gainIndex, d.autozero, d.manualOffset,
                    d.filterValue, d.reversePolarity, d.shuntState, d.level, d.selector);
}

auto fields(const DataModuleDeviceT2 &d)
{
    return std::tie(d.bridgeTypeList, d.gainList, d.bridgeTypeIndex, d.gainIndex, d.filterValue,
                    d.reversePolarity, d.level, d.selector, d.autozero);
}

auto fields(const DataModuleDeviceT3 &d)
{
    return std::tie(d.thermoDeviceTypeList, d.temperatureRangeList, d.thermoDeviceTypeIndex,
                    d.temperatureRangeIndex, d.filterValue, d.selector, d.autozero);
}

template <typename Request>
bool sameRequest(const Request &a, const Request &b)
{
    return a.module == b.module && a.channel == b.channel && a.data == b.data;
}

template <typename Request>
QDebug printRequest(QDebug debug, const char *name, const Request &request)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << name << "(module " << request.module << ", channel " << request.channel << ", "
                    << request.data << ')';
    return debug;
}

} // namespace

bool operator==(const DataModuleDeviceT1 &a, const DataModuleDeviceT1 &b)
{
    return fields(a) == fields(b);
}

bool operator==(const DataModuleDeviceT2 &a, const DataModuleDeviceT2 &b)
{
    return fields(a) == fields(b);
}

bool operator==(const DataModuleDeviceT3 &a, const DataModuleDeviceT3 &b)
{
    return fields(a) == fields(b);
}

bool operator==(const DatagramT1 &a, const DatagramT1 &b)
{
    return sameRequest(a, b);
}

bool operator==(const DatagramT2 &a, const DatagramT2 &b)
{
    return sameRequest(a, b);
}

bool operator==(const DatagramT3 &a, const DatagramT3 &b)
{
    return sameRequest(a, b);
}

QDebug operator<<(QDebug debug, const DataModuleDeviceT1 &data)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "DataModuleDeviceT1(selector " << data.selector << ", bridge " << data.bridgeTypeIndex
                    << ", gain " << data.gainIndex << ", autozero " << data.autozero << ", offset "
                    << data.manualOffset.c_str() << ", filter " << data.filterValue << ", reverse "
                    << data.reversePolarity << ", shunt " << data.shuntState << ')';
    return debug;
}

QDebug operator<<(QDebug debug, const DataModuleDeviceT2 &data)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "DataModuleDeviceT2(selector " << data.selector << ", bridge " << data.bridgeTypeIndex
                    << ", gain " << data.gainIndex << ", autozero " << data.autozero << ", filter "
                    << data.filterValue << ", reverse " << data.reversePolarity << ')';
    return debug;
}

QDebug operator<<(QDebug debug, const DataModuleDeviceT3 &data)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "DataModuleDeviceT3(selector " << data.selector << ", type "
                    << data.thermoDeviceTypeIndex << ", range " << data.temperatureRangeIndex << ", autozero "
                    << data.autozero << ", filter " << data.filterValue << ')';
    return debug;
}

QDebug operator<<(QDebug debug, const DatagramT1 &request)
{
    return printRequest(debug, "DatagramT1", request);
}

QDebug operator<<(QDebug debug, const DatagramT2 &request)
{
    return printRequest(debug, "DatagramT2", request);
}

QDebug operator<<(QDebug debug, const DatagramT3 &request)
{
    return printRequest(debug, "DatagramT3", request);
}
