#pragma once

#include <QString>
#include <QStringList>

struct FirmwareName;

/// What the firmware window tells the operator. Each text of a list is appended on its own.
namespace firmwaretexts {

/// Refusals, and a debug line.
QString cannotOpen();
QString tooLarge();
QString mismatch();
QString invalidName();

/// The line that parts the messages.
QString separator();

/// What is known about the file before its name is judged; without the module if its word is unknown.
QStringList fileInformation(const FirmwareName &name, const QString &chip);

/// The last texts before the commands go out; `size` in bytes.
QStringList start(const FirmwareName &name, qint64 size);

/// The texts after the last reply.
QStringList completion();

/// In the messages and in the status label.
QString aborted();

} // namespace firmwaretexts
