#pragma once

#include <QKeyEvent>

/// Whether the key is Return or the Enter of a keypad.
inline bool isReturn(const QKeyEvent &event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

/// Whether the key presses what has the focus, as it does a button of a dialog.
inline bool isButtonKey(const QKeyEvent &event)
{
    return isReturn(event) || event.key() == Qt::Key_Space || event.key() == Qt::Key_Select;
}
