#include "reports/channelsettings.h"

ModuleSettings moduleSettings(const Module_Status &)
{
    return {};
}

QString joinedItems(const QString &)
{
    return {};
}
