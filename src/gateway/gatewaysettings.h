#pragma once

#include <QString>

/// The last value of each setting of the gateway, as the text that goes over the line. They change by the
/// operator's actions and by the other table of data rates, never by what the gateway reports.
struct GatewaySettings
{
    QString pendingAddress; ///< the address that the gateway was told to take; empty: none
    QString gatewayMode = QStringLiteral("UDP");
    QString channelCount = QStringLiteral("16");
    QString bitRate = QStringLiteral("2500"); ///< kBit/s
    QString dataLength = QStringLiteral("16");
    QString endian = QStringLiteral("B");
    QString simulation = QStringLiteral("1");
    QString activeCom = QStringLiteral("2");
    QString dataFormat = QStringLiteral("U");
    QString ptpMode = QStringLiteral("0");
    QString dataProtocol = QStringLiteral("ZRT-1");
    QString epochTime = QStringLiteral("12345"); ///< nanoseconds since the beginning of 1970, UTC
    QString extAddress = QStringLiteral("192.168.0.22");
    QString extPort = QStringLiteral("5675");
};
