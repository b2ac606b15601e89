#include "reports/librarypath.h"

#include <QFile>

QByteArray libraryPath(const QString &path)
{
    return QFile::encodeName(path);
}
