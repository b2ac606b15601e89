#pragma once

#include <QKeyEvent>

/// Whether the event is the repeated press of a key that is held down. The key may be down since before the
/// window that hears of it was open: a repeat is not what the operator wants of that window.
inline bool isKeyRepeat(const QEvent &event)
{
    return event.type() == QEvent::KeyPress && static_cast<const QKeyEvent &>(event).isAutoRepeat();
}
