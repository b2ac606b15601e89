#pragma once

#include "gateway/gatewaystatus.h"

#include <QMap>
#include <QStringList>

/// Lines that report the gateway's state, and what was read from them as text.
namespace statuslines {

/// A line with a value in each field that has a meaning.
inline const QString kLine =
    QStringLiteral("#S;;1.07;2;;3;2500;16;TCP-C;L;18;192.168.0.22;5675;2s;;;;123;41.5;33.25;;;;;;;;;60000;"
                   "1772440200;;2;1;2;SLAVE;-17;10;700;IENA-1");

/// A valid line of 39 fields with these in it, and nothing else.
inline QString lineWith(const QMap<int, QString> &fields)
{
    QStringList texts;
    for (int number = 0; number < 39; ++number)
        texts.append(fields.value(number));
    if (!fields.contains(0))
        texts[0] = QStringLiteral("#S");
    if (!fields.contains(3))
        texts[3] = QStringLiteral("2");
    return texts.join(QLatin1Char(';'));
}

template <typename Value>
QString numberOf(const std::optional<Value> &value)
{
    return value ? QString::number(static_cast<double>(*value)) : QStringLiteral("none");
}

/// What the status tells, as text: what differs from that of a line without any values.
inline QString described(const gateway::Status &status)
{
    const QList<QStringList> all{
        {"version", status.version, QString()},
        {"simulation", QString::number(status.simulation), "0"},
        {"bitRate", status.bitRate, QString()},
        {"channels", status.channelCount, QString()},
        {"mode", numberOf(status.mode), "none"},
        {"order", numberOf(status.byteOrder), "none"},
        {"width", numberOf(status.sampleWidth), "none"},
        {"address", status.extAddress, QString()},
        {"port", status.extPort, QString()},
        {"format", numberOf(status.sampleFormat), "none"},
        {"serial", status.serialNumber, "000000"},
        {"core", status.coreTemperature, QString()},
        {"pcb", status.pcbTemperature, QString()},
        {"highest", numberOf(status.highestRate), "none"},
        {"time", status.unixTime, QString()},
        {"com", QString::number(status.activeCom), "0"},
        {"pcm", numberOf(status.pcmSync), "none"},
        {"ptp", QString::number(status.ptpMode), "0"},
        {"state", status.ptpState, QString()},
        {"accuracy", status.ptpAccuracy, QString()},
        {"min", status.minimumSamples, QString()},
        {"max", status.maximumSamples, QString()},
        {"protocol", numberOf(status.dataProtocol), "none"},
    };
    QStringList told;
    for (const QStringList &entry : all) {
        if (entry.at(1) != entry.at(2))
            told.append(entry.at(0) + QLatin1Char('=') + entry.at(1));
    }
    return told.join(QLatin1Char(' '));
}

inline QString describedLine(const QString &piece)
{
    const gateway::Reply reply = gateway::readReply(piece);
    return reply.status ? described(*reply.status) : QStringLiteral("no status");
}

} // namespace statuslines
