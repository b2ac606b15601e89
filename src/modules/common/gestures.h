#pragma once

#include <QMouseEvent>

/// Whether the event is a press of a mouse button while exactly these keys are held. The second press of a
/// quick pair is one too.
inline bool isPressWith(const QEvent &event, Qt::KeyboardModifiers keys)
{
    if (event.type() != QEvent::MouseButtonPress && event.type() != QEvent::MouseButtonDblClick)
        return false;
    return static_cast<const QMouseEvent &>(event).modifiers() == keys;
}
