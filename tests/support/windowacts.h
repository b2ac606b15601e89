#pragma once

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QWheelEvent>
#include <QtTest>
#include <qtestspontaneevent.h>

/// What an operator or the desktop does to windows and Qt Test has no call for.
namespace windowacts {

/// A further press of a key that is held down, where such a press goes: to the widget with the focus. With
/// no active window it is lost.
inline void repeatKey(Qt::Key key, const QString &text = QString())
{
    QWidget *target = QApplication::focusWidget();
    if (!target)
        target = QApplication::activeWindow();
    if (!target)
        return;
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text, true);
    QApplication::sendEvent(target, &press);
}

/// Presses the close button of the window's title bar; false if the window refuses. The desktop does not
/// close the window by itself.
inline bool closeByTitleBar(QWidget &window)
{
    QCloseEvent event;
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(&window, &event);
    return event.isAccepted();
}

/// Turns the wheel by one notch over the middle of a widget; up if `up`.
inline void turnWheel(QWidget &widget, bool up)
{
    constexpr int kNotch = 120;
    const QPoint middle = widget.rect().center();
    QWheelEvent wheel(middle, widget.mapToGlobal(middle), {}, {0, up ? kNotch : -kNotch}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &wheel);
}

} // namespace windowacts
