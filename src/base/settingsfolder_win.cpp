#include "base/settingsfolder.h"

QString settingsFolder()
{
    // Fixed on purpose, not computed from the environment: all users of a machine share one file.
    return QStringLiteral("C:/ProgramData/qor/vxconfig");
}
