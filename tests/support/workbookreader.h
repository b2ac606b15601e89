#pragma once

#include <QByteArray>
#include <QJsonObject>

/// A workbook as a library that did not write it reads it, described in readworkbook.py.
QJsonObject readWorkbook(const QByteArray &workbook);

/// A file of the archive.
QByteArray partOf(const QByteArray &workbook, const char *name);
