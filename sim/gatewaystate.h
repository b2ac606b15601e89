#pragma once

#include "sim/module.h"

#include <QString>

namespace sim {

/// A bit rate in kBit/s with a number of channels, as texts.
struct DataRate
{
    QString bitRate = QStringLiteral("2500");
    QString channels = QStringLiteral("16");

    bool operator==(const DataRate &other) const
    {
        return bitRate == other.bitRate && channels == other.channels;
    }
    bool operator!=(const DataRate &other) const { return !(*this == other); }
};

/// What a gateway is and how it is set: what a description says at first, and its state later. Texts are as
/// they go over the line.
struct GatewayState
{
    // What it is.
    QString version = QStringLiteral("2.3.1");
    QString serial = QStringLiteral("1");
    double highestRate = 62500; ///< samples per second that the gateway can take
    double coreCelsius = 52;
    double pcbCelsius = 41;
    QString ptpState = QStringLiteral("SLAVE"); ///< while PTP is on
    Milliseconds restartTime{1000};             ///< how long nobody can connect
    Milliseconds rebootTime{3000};
    Milliseconds moveTime{0}; ///< between a new address and its use

    // How it is set; kept over a restart and a reboot.
    QString address = QStringLiteral("127.0.0.1");
    DataRate rate;
    QString mode = QStringLiteral("UDP-B");
    QString endian = QStringLiteral("B");
    QString dataLength = QStringLiteral("16");
    QString extAddress = QStringLiteral("192.168.0.22");
    QString extPort = QStringLiteral("5675");
    QString dataFormat = QStringLiteral("U");
    QString simulation = QStringLiteral("0");
    QString activeCom = QStringLiteral("1");
    QString ptpMode = QStringLiteral("0");
    QString minimumSamples = QStringLiteral("1");
    QString maximumSamples = QStringLiteral("64");
    QString dataProtocol = QStringLiteral("ZRT-1");

    // What a new start loses.
    bool debugging = false; ///< lost by a restart and by a reboot
    qint64 clockNs = 0;     ///< since the beginning of 1970, at `clockSetAt`; lost by a reboot
    Milliseconds clockSetAt{0};
};

} // namespace sim
