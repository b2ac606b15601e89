#pragma once

#include <QDebug>
#include <QMetaType>
#include <QStringList>
#include <string>

/// Which field of a change request is to go to the device.
enum class ChannelSelector : quint8 {
    None = 0,         ///< nothing chosen; what a request holds after it was packed
    TypeIndex = 1,    ///< bridge type, or thermo device type
    RangeIndex = 2,   ///< gain, range or temperature range
    ManualOffset = 3, ///< types 1 and 4 only
    Filter = 4,
    Autozero = 5,        ///< not for thermo modules
    ReversePolarity = 6, ///< not for thermo modules
    Shunt = 7,           ///< types 1 and 4 only
    AutoReset = 8,       ///< not for thermo modules
    ShuntAll = 9,        ///< shunts of the whole module; never reaches the wire
};

constexpr quint8 wireCode(ChannelSelector selector)
{
    return static_cast<quint8>(selector);
}

/// Snapshot of one channel of a type 1 or type 4 module, the one changed field included.
struct DataModuleDeviceT1
{
    QStringList bridgeTypeList; ///< left empty in requests
    QStringList gainList;       ///< left empty in requests
    qint32 bridgeTypeIndex = 0;
    qint32 gainIndex = 0;
    quint8 autozero = 0;
    std::string manualOffset; ///< decimal text, UTF-8
    qint32 filterValue = 0;   ///< Hz
    bool reversePolarity = false;
    quint8 shuntState = 0; ///< action byte of the device
    double level = 0.0;    ///< left at zero in requests
    quint8 selector = 0;   ///< a ChannelSelector
};

/// Snapshot of one channel of a type 2 module.
struct DataModuleDeviceT2
{
    QStringList bridgeTypeList; ///< left empty in requests
    QStringList gainList;       ///< left empty in requests
    qint32 bridgeTypeIndex = 0;
    qint32 gainIndex = 0;
    qint32 filterValue = 0; ///< Hz
    bool reversePolarity = false;
    double level = 0.0;  ///< left at zero in requests
    quint8 selector = 0; ///< a ChannelSelector
    quint8 autozero = 0;
};

/// Snapshot of one channel of a thermo module.
struct DataModuleDeviceT3
{
    QStringList thermoDeviceTypeList; ///< left empty in requests
    QStringList temperatureRangeList; ///< left empty in requests
    qint32 thermoDeviceTypeIndex = 0;
    qint32 temperatureRangeIndex = 0;
    qint32 filterValue = 0;
    quint8 selector = 0; ///< a ChannelSelector
    quint8 autozero = 0;
};

/// Request to change one channel: what the module controllers hand to the session. `module` counts from 1,
/// `channel` is 1 (A), 2 (B), or 0 for a request to the whole module.
template <typename Data>
struct ChannelDatagram
{
    quint32 module = 0;
    quint8 channel = 0;
    Data data;
};

struct DatagramT1 : ChannelDatagram<DataModuleDeviceT1>
{};

struct DatagramT2 : ChannelDatagram<DataModuleDeviceT2>
{};

struct DatagramT3 : ChannelDatagram<DataModuleDeviceT3>
{};

bool operator==(const DataModuleDeviceT1 &a, const DataModuleDeviceT1 &b);
bool operator==(const DataModuleDeviceT2 &a, const DataModuleDeviceT2 &b);
bool operator==(const DataModuleDeviceT3 &a, const DataModuleDeviceT3 &b);
bool operator==(const DatagramT1 &a, const DatagramT1 &b);
bool operator==(const DatagramT2 &a, const DatagramT2 &b);
bool operator==(const DatagramT3 &a, const DatagramT3 &b);
QDebug operator<<(QDebug debug, const DataModuleDeviceT1 &data);
QDebug operator<<(QDebug debug, const DataModuleDeviceT2 &data);
QDebug operator<<(QDebug debug, const DataModuleDeviceT3 &data);
QDebug operator<<(QDebug debug, const DatagramT1 &request);
QDebug operator<<(QDebug debug, const DatagramT2 &request);
QDebug operator<<(QDebug debug, const DatagramT3 &request);

Q_DECLARE_METATYPE(DatagramT1)
Q_DECLARE_METATYPE(DatagramT2)
Q_DECLARE_METATYPE(DatagramT3)
