#include "base/settingsfolder.h"

#include <QStandardPaths>

QString settingsFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/qor/vxconfig");
}
