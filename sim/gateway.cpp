#include "sim/gateway.h"

#include "sim/gatewaysetting.h"
#include "sim/monotonictime.h"

#include <QHostAddress>
#include <QStringList>

namespace sim {

namespace {

constexpr qint64 kMsPerSecond = 1000;
constexpr int kRateDigits = 12;
const QByteArray kLineEnd = QByteArrayLiteral("\r\n");
const QByteArray kAddressCommand = QByteArrayLiteral("gateway.addr=");

// What the program does not show may stay empty.
enum StatusField {
    TagField = 0,
    VersionField = 2,
    GuardField = 3,
    SimulationField = 5,
    BitRateField = 6,
    ChannelsField = 7,
    ModeField = 8,
    EndianField = 9,
    LengthField = 10,
    ExtAddressField = 11,
    ExtPortField = 12,
    FormatField = 13,
    SerialField = 17,
    CoreField = 18,
    PcbField = 19,
    LimitField = 28,
    TimeField = 29,
    ComField = 31,
    SyncField = 32,
    PtpField = 33,
    PtpStateField = 34,
    AccuracyField = 35,
    MinimumField = 36,
    MaximumField = 37,
    ProtocolField = 38
};

enum class Sensor { Core, Pcb };

QString celsiusText(const LiveValues &live, Sensor sensor, double base, Milliseconds now)
{
    const int address = kGatewaySensors + static_cast<int>(sensor);
    return QString::number(live.celsius(address, base, now), 'f', 1);
}

QString syncText(const DataRate &own, const std::optional<DataRate> &chain)
{
    if (!chain)
        return QStringLiteral("X");
    return own == *chain ? QStringLiteral("1") : QStringLiteral("0");
}

} // namespace

Gateway::Gateway(const GatewayState &description, quint32 seed)
    : m_state(description)
    , m_live(seed)
{}

QByteArray Gateway::prompt()
{
    return kLineEnd + "----[ZRT gateway]---- ";
}

qint64 Gateway::unixSeconds(Milliseconds now) const
{
    return (m_state.clockNs / kNsPerMs + (now - m_state.clockSetAt).count()) / kMsPerSecond;
}

QByteArray Gateway::statusLine(Milliseconds now, const std::optional<DataRate> &chain) const
{
    const bool hasPtp = m_state.ptpMode != QLatin1String("0");
    QStringList fields;
    fields.reserve(kStatusFields);
    for (int i = 0; i < kStatusFields; ++i)
        fields.append(QString());
    fields[TagField] = QStringLiteral("#S");
    fields[VersionField] = m_state.version;
    fields[GuardField] = QStringLiteral("2");
    fields[SimulationField] = m_state.simulation;
    fields[BitRateField] = m_state.rate.bitRate;
    fields[ChannelsField] = m_state.rate.channels;
    fields[ModeField] = m_state.mode;
    fields[EndianField] = m_state.endian;
    fields[LengthField] = m_state.dataLength;
    fields[ExtAddressField] = m_state.extAddress;
    fields[ExtPortField] = m_state.extPort;
    fields[FormatField] = m_state.dataFormat;
    fields[SerialField] = m_state.serial;
    fields[CoreField] = celsiusText(m_live, Sensor::Core, m_state.coreCelsius, now);
    fields[PcbField] = celsiusText(m_live, Sensor::Pcb, m_state.pcbCelsius, now);
    fields[LimitField] = QString::number(m_state.highestRate, 'g', kRateDigits);
    fields[TimeField] = QString::number(unixSeconds(now));
    fields[ComField] = m_state.activeCom;
    fields[SyncField] = syncText(m_state.rate, chain);
    fields[PtpField] = m_state.ptpMode;
    fields[PtpStateField] = hasPtp ? m_state.ptpState : QStringLiteral("OFF");
    fields[AccuracyField] = hasPtp ? QString::number(m_live.ptpNs(now)) : QStringLiteral("0");
    fields[MinimumField] = m_state.minimumSamples;
    fields[MaximumField] = m_state.maximumSamples;
    fields[ProtocolField] = m_state.dataProtocol;
    return fields.join(QLatin1Char(';')).toLatin1() + kLineEnd;
}

GatewayAnswer Gateway::changeAddress(const QByteArray &text)
{
    const QString address = QString::fromLatin1(text);
    QHostAddress parsed;
    // QHostAddress also takes shortened forms; what it writes must be what it was given.
    if (!parsed.setAddress(address) || parsed.protocol() != QAbstractSocket::IPv4Protocol ||
        parsed.toString() != address)
        return {{}, QStringLiteral("no address: not obeyed"), GatewayAnswer::Then::Stay};
    m_state.address = address;
    return {"[NEW IP ADDRESS " + text + "]" + kLineEnd, QStringLiteral("new address"),
            GatewayAnswer::Then::Move};
}

GatewayAnswer Gateway::take(const QByteArray &line, Milliseconds now, const std::optional<DataRate> &chain)
{
    using Then = GatewayAnswer::Then;
    if (line.isEmpty())
        return {prompt(), QStringLiteral("prompt"), Then::Stay};
    if (line == "#?")
        return {statusLine(now, chain), {}, Then::Stay};
    if (line == "reboot")
        return {{}, QStringLiteral("reboots"), Then::Reboot};
    if (line == "restart")
        return {{}, QStringLiteral("restarts"), Then::Restart};
    if (line.startsWith(kAddressCommand))
        return changeAddress(line.mid(kAddressCommand.size()));
    return {{}, obeySetting(QString::fromLatin1(line), now, &m_state), Then::Stay};
}

void Gateway::restart()
{
    m_state.debugging = false;
}

void Gateway::reboot(Milliseconds now)
{
    m_state.debugging = false;
    m_state.clockNs = 0;
    m_state.clockSetAt = now;
}

} // namespace sim
