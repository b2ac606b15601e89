#pragma once

#include <QDebug>
#include <QMetaType>
#include <array>

class ByteReader;

/// The 16 bytes with which every reply of the device begins, whatever its code.
struct Fast_System_Status
{
    quint8 payloadType = 0; ///< the payload code
    quint8 reserved1 = 0;
    std::array<quint8, 6> reserved2{};
    quint8 controlFlags = 0;      ///< bit 0: the device asks for a new start of the session
    quint8 statusFlags = 0;       ///< bit 0: state shown at the controller row
    quint16 voltageRaw = 0;       ///< rectified input supply voltage, 1/100 V
    quint16 outputVoltageRaw = 0; ///< 1/1000 V
    quint16 loadCurrentRaw = 0;   ///< output load current, 1/2000 A

    bool asksForNewStart() const { return (controlFlags & 1U) != 0; }
};

bool operator==(const Fast_System_Status &a, const Fast_System_Status &b);
QDebug operator<<(QDebug debug, const Fast_System_Status &status);

/// Number of bytes of the record on the wire.
constexpr int kFastSystemStatusSize = 16;

/// Reads the next 16 bytes; missing ones read as zero.
Fast_System_Status readFastSystemStatus(ByteReader &reader);

Q_DECLARE_METATYPE(Fast_System_Status)
