#pragma once

#include <Qt>

/// Window flags of the small windows that stay on top of the main window and have a close button only.
constexpr Qt::WindowFlags dialogFlags()
{
    return Qt::WindowFlags(Qt::Dialog) | Qt::CustomizeWindowHint | Qt::WindowCloseButtonHint |
           Qt::WindowStaysOnTopHint;
}
