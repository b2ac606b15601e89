#pragma once

#include <QByteArray>

/// Asks the window with this title on this X11 display to close, as a window manager does when its close
/// button is clicked. False if there is no such window.
bool clickCloseButton(const QByteArray &display, const QByteArray &title);
