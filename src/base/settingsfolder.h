#pragma once

#include <QString>

/// The folder of the program's settings file, absolute, with forward slashes and none at its end. It need
/// not exist yet.
QString settingsFolder();
