#include "sim/framelog.h"

#include "sim/bytes.h"
#include "sim/framecodec.h"
#include "sim/payloadlayout.h"

namespace sim {

namespace {

constexpr int kShownText = 400;

QString codeName(quint8 code)
{
    switch (code) {
    case SystemStatusCode:
        return QStringLiteral("system status");
    case FastSystemStatusCode:
        return QStringLiteral("fast system status");
    case FastModuleStatusCode:
        return QStringLiteral("fast module status");
    case StaticStatusCode:
        return QStringLiteral("static module status");
    case EepromCode:
        return QStringLiteral("module EEPROM");
    case FpgaCode:
        return QStringLiteral("FPGA command");
    case PowerCode:
        return QStringLiteral("power setting");
    case SupplyCode:
        return QStringLiteral("voltage supply");
    case FunctionCode:
        return QStringLiteral("channel function");
    case BridgeCode:
        return QStringLiteral("sensor");
    case RangeCode:
        return QStringLiteral("range");
    case OffsetCode:
        return QStringLiteral("offset");
    case FilterCode:
        return QStringLiteral("filter");
    case ActionCode:
        return QStringLiteral("action");
    case RatesCode:
        return QStringLiteral("rates");
    case ResetCode:
        return QStringLiteral("system reset");
    default:
        return QStringLiteral("unknown");
    }
}

QString hexBytes(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex(' '));
}

QString textAt(const QByteArray &payload, int offset, int width)
{
    QByteArray bytes = payload.mid(offset, width);
    const int end = bytes.indexOf('\0');
    if (end >= 0)
        bytes.truncate(end);
    return QString::fromUtf8(bytes);
}

QString describeHead(const QByteArray &payload)
{
    const QString flag =
        (u8At(payload, ControlFlagsAt) & kResetFlag) ? QStringLiteral(", reset flag") : QString();
    return QStringLiteral("input %1 V, output %2 V, load %3 A%4")
        .arg(u16At(payload, InputVoltageAt) / kInputSteps)
        .arg(u16At(payload, OutputVoltageAt) / kOutputSteps)
        .arg(u16At(payload, LoadCurrentAt) / kLoadSteps)
        .arg(flag);
}

QString quoted(const QByteArray &bytes)
{
    QString text;
    for (const char byte : bytes.left(kShownText)) {
        const auto code = static_cast<uchar>(byte);
        if (byte == '\r')
            text += QLatin1String("\\r");
        else if (byte == '\n')
            text += QLatin1String("\\n");
        else if (code < 0x20 || code == 0x7f)
            text += QStringLiteral("\\x%1").arg(code, 2, 16, QLatin1Char('0'));
        else
            text += QLatin1Char(byte);
    }
    const int more = bytes.size() - kShownText;
    const QString rest = more > 0 ? QStringLiteral(" and %1 bytes more").arg(more) : QString();
    return QStringLiteral("\"%1\"%2").arg(text, rest);
}

} // namespace

QString describeRequest(const QByteArray &payload)
{
    const quint8 code = u8At(payload, 0);
    const int p1 = u8At(payload, kArgumentAt);
    const int p2 = u8At(payload, kArgumentAt + 1);
    const QString name = codeName(code);
    switch (code) {
    case StaticStatusCode:
    case EepromCode:
        return QStringLiteral("%1 of address %2").arg(name).arg(p1);
    case BridgeCode:
    case RangeCode:
    case ActionCode:
        return QStringLiteral("%1 of channel %2: %3").arg(name).arg(p1).arg(p2);
    case OffsetCode:
    case FilterCode:
        return QStringLiteral("%1 of channel %2: \"%3\"")
            .arg(name)
            .arg(p1)
            .arg(textAt(payload, kArgumentAt + 1, payload.size()));
    case PowerCode:
        return QStringLiteral("%1 %2 %3, %4")
            .arg(name)
            .arg(p1)
            .arg(hexCode(p2))
            .arg(u16At(payload, kArgumentAt + 2));
    case SupplyCode:
        return QStringLiteral("%1 of channel %2: %3, code %4")
            .arg(name)
            .arg(p1)
            .arg(p2)
            .arg(u8At(payload, kArgumentAt + 2));
    case FunctionCode:
        return QStringLiteral("%1 of channel %2: %3").arg(name).arg(p1).arg(p2);
    case RatesCode:
        return QStringLiteral("%1: %2 kBit/s, %3 channels")
            .arg(name, bitRateNames().value(p1), channelCountNames().value(p2));
    case FpgaCode:
        return QStringLiteral("%1 %2, %3, %4")
            .arg(name, hexCode(p1))
            .arg(u16At(payload, kFpgaFirstNumberAt))
            .arg(u16At(payload, kFpgaSecondNumberAt));
    default:
        return name;
    }
}

QString describeReply(const QByteArray &payload)
{
    const quint8 code = u8At(payload, 0);
    const QString name = codeName(code);
    if (payload.size() < kHeadSize)
        return QStringLiteral("%1, shorter than a head").arg(name);
    switch (code) {
    case SystemStatusCode:
        return QStringLiteral("%1: %2 modules, %3")
            .arg(name)
            .arg(u16At(payload, CountAt))
            .arg(describeHead(payload));
    case StaticStatusCode:
        return QStringLiteral("%1: address %2, type %3, serial \"%4\", %5")
            .arg(name)
            .arg(u8At(payload, AddressAt))
            .arg(u8At(payload, TypeAt))
            .arg(textAt(payload, SerialAt, kShortTextSize), describeHead(payload));
    default:
        return QStringLiteral("%1: %2").arg(name, describeHead(payload));
    }
}

void FrameLog::write(Milliseconds now, const QString &connection, const QString &text) const
{
    const double seconds = static_cast<double>(now.count()) / 1000;
    m_sink(QStringLiteral("%1 %2 %3").arg(seconds, 9, 'f', 3).arg(connection, text));
}

void FrameLog::request(Milliseconds now, const QString &connection, const Reception &reception) const
{
    if (!m_sink)
        return;
    if (!reception.valid) {
        write(now, connection,
              QStringLiteral("-> refused, %1 | %2").arg(reception.fault, hexBytes(reception.raw)));
        return;
    }
    write(now, connection,
          QStringLiteral("-> %1 %2 | %3")
              .arg(hexCode(u8At(reception.payload, 0)), describeRequest(reception.payload),
                   hexBytes(reception.raw)));
}

void FrameLog::reply(Milliseconds now, const QString &connection, const QByteArray &payload,
                     const QByteArray &frame, Fate fate) const
{
    if (m_sink)
        write(now, connection,
              QStringLiteral("<- %1%2 %3 | %4")
                  .arg(fate == Fate::Lost ? QStringLiteral("lost, ") : QString(), hexCode(u8At(payload, 0)),
                       describeReply(payload), hexBytes(frame)));
}

void FrameLog::receivedText(Milliseconds now, const QString &connection, const QByteArray &bytes) const
{
    if (m_sink)
        write(now, connection, QStringLiteral("-> %1").arg(quoted(bytes)));
}

void FrameLog::sentText(Milliseconds now, const QString &connection, const QByteArray &bytes, Fate fate) const
{
    if (m_sink)
        write(now, connection,
              QStringLiteral("<- %1%2").arg(fate == Fate::Lost ? QStringLiteral("lost, ") : QString(),
                                            quoted(bytes)));
}

void FrameLog::note(Milliseconds now, const QString &connection, const QString &text) const
{
    if (m_sink)
        write(now, connection, QStringLiteral("-- %1").arg(text));
}

} // namespace sim
