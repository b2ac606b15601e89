#pragma once

#include <QString>

/// Where the settings file and what belongs to it lie. All paths are absolute, with forward slashes; the
/// folders have no slash at their end.
struct ConfigPaths
{
    QString settingsFolder; ///< holds the settings file; need not exist yet
    QString desktopFolder;  ///< where earlier versions left their settings file
    QString executablePath; ///< the running program
};

/// The places of the product. Needs the application object.
ConfigPaths defaultConfigPaths();
