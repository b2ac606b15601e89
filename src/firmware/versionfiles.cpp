#include "firmware/versionfiles.h"

#include <QDate>
#include <QStringList>
#include <QTextStream>

namespace versionfiles {

namespace {

constexpr char kProduct[] = "vxconfig";
constexpr char kVersionMark[] = "vxconfig v";
constexpr char kPartBreak[] = "  ";
constexpr char kDateFormat[] = "dd.MM.yy";
constexpr int kMaximumLines = 10;
constexpr int kMinimumParts = 3;

/// Zero bytes included, at which the conversion of a QByteArray would end.
QString fromUtf8(const QByteArray &bytes)
{
    return QString::fromUtf8(bytes.constData(), bytes.size());
}

std::optional<FirmwareEntry> firmwareEntry(const QString &line)
{
    const QStringList parts = line.split(QLatin1String(kPartBreak));
    if (parts.size() < kMinimumParts)
        return std::nullopt;
    if (!QDate::fromString(parts.at(0), QLatin1String(kDateFormat)).isValid())
        return std::nullopt;
    return FirmwareEntry{line, parts.at(1), parts.at(2).startsWith(QLatin1Char('*')) ? 1 : 0};
}

} // namespace

QString configuratorLine(const QByteArray &contents)
{
    QByteArray line;
    for (const char byte : contents) {
        line.append(byte);
        if (byte != '\r' && byte != '\n')
            continue;
        if (line.contains(kProduct))
            break;
        line.clear();
    }
    return fromUtf8(line);
}

std::optional<QString> configuratorVersion(const QString &line)
{
    const int position = line.indexOf(QLatin1String(kVersionMark));
    if (position < 0)
        return std::nullopt;
    // On purpose: not what stands behind the position, but so many characters from the front.
    QString text = line.left(line.size() - position);
    return text.remove(QLatin1Char('\n'));
}

QVector<FirmwareEntry> firmwareEntries(const QByteArray &contents)
{
    QTextStream stream(contents, QIODevice::ReadOnly);
    stream.setCodec("UTF-8");
    stream.setAutoDetectUnicode(false);
    QVector<FirmwareEntry> entries;
    for (int count = 0; count < kMaximumLines && !stream.atEnd(); ++count) {
        if (const auto entry = firmwareEntry(stream.readLine()))
            entries.append(*entry);
    }
    return entries;
}

} // namespace versionfiles
