#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>
#include <optional>

/// The two text files of the web server that name the current versions.
namespace versionfiles {

/// The first line of the configurator's file that names the product, with the CR or LF that ends it. If none
/// does: what stands behind the last line end, which may be empty.
QString configuratorLine(const QByteArray &contents);

/// The text to show for such a line; none if the line names no version.
std::optional<QString> configuratorVersion(const QString &line);

/// One line of the firmware's file that has a valid date.
struct FirmwareEntry
{
    QString line;    ///< the whole line
    QString version; ///< its second part
    int flag = 0;    ///< 1 if the third part begins with "*"
};

/// The entries among the first ten lines, in the order of the file.
QVector<FirmwareEntry> firmwareEntries(const QByteArray &contents);

} // namespace versionfiles
