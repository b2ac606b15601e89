#pragma once

#include <QString>

/// What is wrong with an XLSX file: an unreadable archive, a part whose checksum is wrong, or one that is no
/// whole XML document. Empty if it is sound.
QString spreadsheetFault(const QString &path);
