#pragma once

#include <functional>

class QWidget;

/// Runs the step once, when the window that the widget belongs to then is shown for the first time and before
/// its size is computed for that. For what takes long and is needed only when the window is seen: most
/// windows are made at the start of the program and stay hidden. The widget may get into its window later; if
/// that is on the screen already, or had a number (winId()) before it was shown, the step runs just before
/// the widget is seen, when sizes are computed already.
void beforeFirstShow(QWidget &widget, const std::function<void()> &step);

/// Runs the step once, soon after the widget was painted for the first time. For what the first look at it
/// does not need.
void afterFirstPaint(QWidget &widget, const std::function<void()> &step);
