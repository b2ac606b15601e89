#include "settings/configpaths.h"

#include "base/settingsfolder.h"

#include <QCoreApplication>
#include <QStandardPaths>

ConfigPaths defaultConfigPaths()
{
    return {settingsFolder(), QStandardPaths::writableLocation(QStandardPaths::DesktopLocation),
            QCoreApplication::applicationFilePath()};
}
