#pragma once

#include <QMouseEvent>

/// Whether the event is a press of any mouse button. The second press of a quick pair is one too.
inline bool isMousePress(const QEvent &event)
{
    return event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick;
}

/// Whether the event is a press of this mouse button, whatever keys are held.
inline bool isPressOf(const QEvent &event, Qt::MouseButton button)
{
    return isMousePress(event) && static_cast<const QMouseEvent &>(event).button() == button;
}

/// Whether the event is a press of the left mouse button while exactly these keys are held.
inline bool isPressWith(const QEvent &event, Qt::KeyboardModifiers keys)
{
    return isPressOf(event, Qt::LeftButton) && static_cast<const QMouseEvent &>(event).modifiers() == keys;
}
