#pragma once

#include <QCoreApplication>
#include <QHostAddress>

/// The address on which the devices of this test process listen: a loopback address that no other process
/// has. A port that is given back stays free, so it is dead, or can be listened on again, whatever runs
/// beside the test. An attempt on a dead port cannot meet itself either: it does not come from this address.
inline QHostAddress ownLoopback()
{
    constexpr quint32 kFirst = 0x7F800001; // 127.128.0.1
    constexpr quint32 kProcesses = 0x7FFF;
    return QHostAddress(kFirst + ((quint32(QCoreApplication::applicationPid()) & kProcesses) << 8));
}
