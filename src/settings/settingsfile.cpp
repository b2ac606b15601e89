#include "settings/settingsfile.h"

#include <QIODevice>
#include <QRegularExpression>
#include <algorithm>
#include <iterator>
#include <vector>

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

bool holdsKey(const QByteArray &line)
{
    return std::any_of(std::begin(kKeys), std::end(kKeys),
                       [&line](const char *key) { return line.contains(key); });
}

/// Reads a device line by line; a line longer than kMaxLineLength comes in several pieces.
class PieceReader
{
public:
    explicit PieceReader(QIODevice &device)
        : m_device(device)
        , m_buffer(kMaxLineLength + kLineEnd + 1)
    {}

    /// False at the end of the device.
    bool next()
    {
        m_length = int(m_device.readLine(m_buffer.data(), qint64(m_buffer.size())));
        return m_length > 0;
    }

    bool endsLine() const
    {
        return m_buffer.at(std::size_t(m_length) - 1) == '\n' || m_length <= kMaxLineLength;
    }

    /// Valid until the next call of next().
    QByteArray bytes() const { return QByteArray::fromRawData(m_buffer.data(), m_length); }

private:
    static constexpr int kLineEnd = 1;

    QIODevice &m_device;
    std::vector<char> m_buffer;
    int m_length = 0;
};

QString withoutLineEnd(const QByteArray &piece)
{
    int length = piece.size();
    while (length > 0 && (piece.at(length - 1) == '\n' || piece.at(length - 1) == '\r'))
        --length;
    return QString::fromUtf8(piece.constData(), length);
}

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
    QStringList lines;
    PieceReader reader(device);
    bool atLineStart = true;
    while (reader.next()) {
        const bool isWholeLine = atLineStart && reader.endsLine();
        if (isWholeLine && holdsKey(reader.bytes()))
            lines.append(withoutLineEnd(reader.bytes()));
        atLineStart = reader.endsLine();
    }
    return lines;
}

} // namespace settingsfile
