#pragma once

#include <QByteArray>

class QString;

/// Path of an existing file or folder, as a C library has to be told it to find it.
QByteArray libraryPath(const QString &path);
