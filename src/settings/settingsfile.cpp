#include "settings/settingsfile.h"

#include <QIODevice>
#include <QRegularExpression>
#include <QTextCodec>
#include <algorithm>
#include <iterator>
#include <optional>

namespace settingsfile {

namespace {

const char kGatewayKey[] = "ZrtGateway";
const char kServerKey[] = "MainServer";
const char kPortKey[] = "PORT1";
const char kModeKey[] = "Mode";
const char kReportKey[] = "FILE_DIR";
const char kFirmwareKey[] = "FIRMWR_FILEPATH";

const char *const kKeys[] = {kGatewayKey, kServerKey, kPortKey, kModeKey, kReportKey, kFirmwareKey};

const char kSerialMode[] = "Serial";
const char kTcpMode[] = "TCP";

QString oneLine(const QString &value)
{
    QString line = value;
    line.remove(QLatin1Char('\r'));
    line.remove(QLatin1Char('\n'));
    return line;
}

/// Address and port are the second and third part of a line that is cut at each "=" and ":".
template <typename AddressLine>
Line addressLine(const QString &line)
{
    static const QRegularExpression separators(QStringLiteral("[=:]"));
    const QStringList parts = line.split(separators);
    if (parts.size() < 3)
        return IgnoredLine();
    return AddressLine{parts.at(1), parts.at(2)};
}

/// The value of the other lines is the second part of a line that is cut at each "=": a value with that
/// sign in it is cut short, on purpose.
template <typename ValueLine>
Line valueLine(const QString &line)
{
    const QStringList parts = line.split(QLatin1Char('='));
    if (parts.size() < 2)
        return IgnoredLine();
    return ValueLine{parts.at(1)};
}

Line portLine(const QString &line)
{
    static const QRegularExpression noWord(QStringLiteral("\\W+"),
                                           QRegularExpression::UseUnicodePropertiesOption);
    return PortLine{line.split(noWord)};
}

constexpr qint64 kBlockSize = 64LL * 1024; ///< bytes
constexpr int kShortestKey = int(sizeof kModeKey) - 1;

bool holdsKey(const QByteArray &line)
{
    return line.size() >= kShortestKey &&
           std::any_of(std::begin(kKeys), std::end(kKeys),
                       [&line](const char *key) { return line.contains(key); });
}

/// The text, if these bytes are one in that encoding.
std::optional<QString> decoded(const QByteArray &bytes, const QTextCodec &codec)
{
    QTextCodec::ConverterState state;
    const QString text = codec.toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars > 0 || state.remainingChars > 0)
        return std::nullopt;
    return text;
}

/// UTF-8; otherwise what an earlier version wrote, which is the local 8-bit encoding, or Latin-1 if it is
/// not valid there either, as where the local encoding is UTF-8 too.
QString lineText(const QByteArray &bytes)
{
    for (const QTextCodec *codec : {QTextCodec::codecForName("UTF-8"), QTextCodec::codecForLocale()}) {
        if (const std::optional<QString> text = decoded(bytes, *codec))
            return *text;
    }
    return QString::fromLatin1(bytes.constData(), bytes.size()); // zero bytes included
}

/// Puts lines together from the blocks of a device and keeps those with a key. Never holds more than one
/// block and the longest line in memory.
class LineCollector
{
public:
    /// `block` may begin and end anywhere in a line.
    void add(const QByteArray &block)
    {
        int begin = 0;
        for (int end = block.indexOf('\n'); end >= 0; end = block.indexOf('\n', begin)) {
            append(block, begin, end);
            finishLine();
            begin = end + 1;
        }
        append(block, begin, block.size());
    }

    /// Call once behind the last block.
    QStringList finished()
    {
        finishLine();
        return m_lines;
    }

private:
    void append(const QByteArray &block, int begin, int end)
    {
        m_isTooLong = m_isTooLong || m_line.size() + end - begin > kMaxLineLength;
        if (!m_isTooLong)
            m_line.append(block.constData() + begin, end - begin);
    }

    void finishLine()
    {
        if (m_line.endsWith('\r'))
            m_line.chop(1);
        if (!m_isTooLong && holdsKey(m_line))
            m_lines.append(lineText(m_line));
        m_line.resize(0);
        m_isTooLong = false;
    }

    QByteArray m_line;
    bool m_isTooLong = false;
    QStringList m_lines;
};

} // namespace

QString fileText(const Values &values)
{
    return QStringLiteral("\r\n======[Torvex Configurator ]=========\r\n"
                          "[ACCESS]\r\n"
                          "LastCommand=") +
           oneLine(values.executablePath) +
           QStringLiteral("\r\n[Save Location]\r\n"
                          "FILE_DIR=") +
           oneLine(values.reportDirectory) +
           QStringLiteral("\r\n\r\n[TCP/IP]"
                          "\r\nZrtGateway=") +
           oneLine(values.gatewayAddress) + QLatin1Char(':') + oneLine(values.gatewayPort) +
           QStringLiteral("\r\nMainServer=") + oneLine(values.serverAddress) + QLatin1Char(':') +
           oneLine(values.serverPort) +
           QStringLiteral("\r\n[RS232]\r\n"
                          "PORT1=") +
           oneLine(values.portName) + QLatin1Char(':') + oneLine(values.serialConfig) +
           QStringLiteral("\r\n[Active Mode]\r\n"
                          "Mode=") +
           oneLine(values.activeMode) +
           QStringLiteral("\r\n[Firmware File Location]\r\n"
                          "FIRMWR_FILEPATH=") +
           oneLine(values.firmwarePath) + QStringLiteral("\r\n\r\n\r\n--------------EOF------------------");
}

Line classify(const QString &line)
{
    struct Rule
    {
        const char *key;
        Line (*meaning)(const QString &line);
    };
    static const Rule rules[] = {
        {kGatewayKey, addressLine<GatewayLine>},
        {kServerKey, addressLine<ServerLine>},
        {kPortKey, portLine},
        {kModeKey, valueLine<ModeLine>},
        {kReportKey, valueLine<ReportDirectoryLine>},
        {kFirmwareKey, valueLine<FirmwareLine>},
    };
    for (const Rule &rule : rules) {
        if (line.contains(QLatin1String(rule.key)))
            return rule.meaning(line);
    }
    return IgnoredLine();
}

Comm_Type linkKind(const QString &mode)
{
    if (mode == QLatin1String(kSerialMode))
        return Comm_Type::Serial;
    if (mode == QLatin1String(kTcpMode))
        return Comm_Type::Ethernet;
    return Comm_Type::None;
}

QString modeText(Comm_Type kind)
{
    switch (kind) {
    case Comm_Type::Serial:
        return QLatin1String(kSerialMode);
    case Comm_Type::Ethernet:
        return QLatin1String(kTcpMode);
    case Comm_Type::None:
        break;
    }
    return QString();
}

QStringList keyLines(QIODevice &device)
{
    LineCollector collector;
    for (QByteArray block = device.read(kBlockSize); !block.isEmpty(); block = device.read(kBlockSize))
        collector.add(block);
    return collector.finished();
}

} // namespace settingsfile
