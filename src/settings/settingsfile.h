#pragma once

#include "link/settings.h"

#include <QString>
#include <QStringList>
#include <variant>

class QIODevice;

/// The format of the settings file as pure code: a text is made out of values, and a line is told what it
/// means. The file is written as UTF-8 without a byte order mark, so that paths with umlauts survive.
namespace settingsfile {

/// Everything that stands in the file.
struct Values
{
    QString executablePath; ///< written, never read back
    QString reportDirectory;
    QString gatewayAddress;
    QString gatewayPort;
    QString serverAddress;
    QString serverPort;
    QString portName;
    QString serialConfig; ///< as it shall stand in the file, without a colon
    QString activeMode;
    QString firmwarePath;
};

/// The text of the whole file, with CR LF and no line end behind the last line. Line ends inside a value
/// are left out, since they would break the file.
QString fileText(const Values &values);

struct GatewayLine
{
    QString address;
    QString port;
};

struct ServerLine
{
    QString address;
    QString port;
};

/// Split into words; [0] is the key in a line that begins with it.
struct PortLine
{
    QStringList words;
};

/// `mode` is any text, see linkKind().
struct ModeLine
{
    QString mode;
};

struct ReportDirectoryLine
{
    QString directory;
};

struct FirmwareLine
{
    QString path;
};

/// A line that means nothing: no key in it, or too few parts behind the key.
struct IgnoredLine
{};

using Line =
    std::variant<IgnoredLine, GatewayLine, ServerLine, PortLine, ModeLine, ReportDirectoryLine, FirmwareLine>;

/// What a line (without its line end) means. On purpose a key counts wherever it stands in the line, and
/// the first of the keys in their agreed order decides.
Line classify(const QString &line);

/// "Serial" or "TCP", exactly; None for any other text.
Comm_Type linkKind(const QString &mode);
QString modeText(Comm_Type kind);

/// The lines of the device that hold a key, in their order, without line ends. Lines of more than
/// kMaxLineLength bytes are no lines of this file and are left out, so that any content can be read. A
/// line that is not UTF-8 was left by an earlier version: it is read in the local 8-bit encoding, or as
/// Latin-1 if it does not fit there. A byte order mark is skipped.
QStringList keyLines(QIODevice &device);

constexpr int kMaxLineLength = 128 * 1024;

} // namespace settingsfile
