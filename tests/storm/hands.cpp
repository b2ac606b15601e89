#include "hands.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>
#include <QtTest>
#include <qtestspontaneevent.h>

namespace storm {

namespace {

/// The time stamps of the events, by which double clicks are known.
int timestamp()
{
    static QElapsedTimer clock;
    if (!clock.isValid())
        clock.start();
    return static_cast<int>(clock.elapsed()) + 1;
}

/// Whether a modal dialog keeps the operator from the window.
bool isBlocked(const QWidget &window)
{
    const QWidget *modal = QApplication::activeModalWidget();
    return modal && modal != &window;
}

} // namespace

Hands::Hands(QObject *parent)
    : QObject(parent)
    , m_timer(new QTimer(this))
{
    m_timer->setSingleShot(true);
    m_timer->setTimerType(Qt::PreciseTimer);
    connect(m_timer, &QTimer::timeout, this, &Hands::turn);
}

void Hands::start()
{
    m_isRunning = true;
    schedule();
}

void Hands::stop()
{
    m_isRunning = false;
    m_timer->stop();
    m_acts.clear();
    release(Qt::NoModifier);
}

void Hands::add(Time rest, Act act)
{
    if (m_place == kAtTheEnd)
        m_acts.push_back({rest, std::move(act)});
    else
        m_acts.insert(m_acts.begin() + m_place++, {rest, std::move(act)});
}

void Hands::schedule()
{
    if (m_timer->isActive() || !m_isRunning)
        return;
    const Time rest = m_acts.empty() ? Time(0) : m_acts.front().rest;
    m_timer->start(m_pace + rest);
}

void Hands::turn()
{
    m_place = kAtTheEnd;
    if (m_acts.empty()) {
        emit idle();
        schedule();
        return;
    }
    const Act act = std::move(m_acts.front().act);
    m_acts.pop_front();
    ++m_actCount;
    schedule(); // before the act, which may run an event loop of a dialog
    m_place = 0;
    act();
    m_place = kAtTheEnd;
}

bool Hands::isReachable(const QWidget *widget)
{
    return widget && widget->isVisible() && widget->window()->windowHandle();
}

void Hands::bringToFront(QWidget *widget)
{
    QWidget *window = widget->window();
    if (!isBlocked(*window) && !window->isActiveWindow() && !QApplication::activePopupWidget())
        window->windowHandle()->requestActivate(); // as the desktop does on a click
}

void Hands::move(QWidget *target, const QPoint &place, Qt::KeyboardModifiers keys)
{
    if (!isReachable(target))
        return;
    QWidget *window = target->window();
    m_local = target->mapTo(window, place);
    m_global = target->mapToGlobal(place);
    qt_handleMouseEvent(window->windowHandle(), m_local, m_global, m_pressed ? Qt::LeftButton : Qt::NoButton,
                        Qt::NoButton, QEvent::MouseMove, keys, timestamp());
}

void Hands::press(QWidget *target, const QPoint &place, Qt::KeyboardModifiers keys)
{
    if (!isReachable(target))
        return;
    bringToFront(target);
    QWidget *window = target->window();
    m_local = target->mapTo(window, place);
    m_global = target->mapToGlobal(place);
    m_pressed = window->windowHandle();
    qt_handleMouseEvent(m_pressed, m_local, m_global, Qt::LeftButton, Qt::LeftButton,
                        QEvent::MouseButtonPress, keys, timestamp());
}

void Hands::release(Qt::KeyboardModifiers keys)
{
    const QPointer<QWindow> window = m_pressed;
    m_pressed.clear();
    if (window)
        qt_handleMouseEvent(window, m_local, m_global, Qt::NoButton, Qt::LeftButton,
                            QEvent::MouseButtonRelease, keys, timestamp());
}

void Hands::click(QWidget *target, Qt::KeyboardModifiers keys, Time held)
{
    clickAt(target, target->rect().center(), keys, held);
}

void Hands::clickAt(QWidget *target, const QPoint &place, Qt::KeyboardModifiers keys, Time held)
{
    const QPointer<QWidget> widget = target;
    add(Time(0), [this, widget, place, keys] { move(widget, place, keys); });
    add(Time(0), [this, widget, place, keys] { press(widget, place, keys); });
    add(held, [this, keys] { release(keys); });
}

void Hands::pressAndLeave(QWidget *target)
{
    const QPointer<QWidget> widget = target;
    const QPoint place = target->rect().center();
    add(Time(0), [this, widget, place] { press(widget, place, Qt::NoModifier); });
    add(Time(0), [this, widget] { move(widget, QPoint(-30, -30), Qt::NoModifier); });
    add(Time(0), [this] { release(Qt::NoModifier); });
}

void Hands::turnWheel(QWidget *target, bool up)
{
    const QPointer<QWidget> widget = target;
    add(Time(0), [widget, up] {
        if (!isReachable(widget) || isBlocked(*widget->window()))
            return;
        constexpr int kNotch = 120;
        const QPoint middle = widget->rect().center();
        QWheelEvent wheel(widget->mapTo(widget->window(), middle), widget->mapToGlobal(middle), {},
                          {0, up ? kNotch : -kNotch}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&wheel); // else nobody gets what the first one ignores
        qApp->notify(widget->window()->windowHandle(), &wheel);
    });
}

/// An open list has the keys, else the window that is active. The platform of the tests makes an open list
/// the active one, and nothing when it has gone.
QWindow *Hands::windowForKeys()
{
    if (const QWidget *popup = QApplication::activePopupWidget())
        return popup->windowHandle();
    QWidget *modal = QApplication::activeModalWidget();
    QWidget *active = modal ? modal : QApplication::activeWindow();
    if (!active || !active->windowHandle())
        return QGuiApplication::focusWindow();
    if (QGuiApplication::focusWindow() != active->windowHandle())
        active->windowHandle()->requestActivate();
    return active->windowHandle();
}

void Hands::key(Qt::Key key, Qt::KeyboardModifiers keys, const QString &text)
{
    add(Time(0), [key, keys, text] {
        QPointer<QWindow> window = windowForKeys();
        if (!window)
            return;
        const auto stamp = static_cast<ulong>(timestamp());
        if (!qt_sendShortcutOverrideEvent(window, stamp, key, keys, text) && window)
            qt_handleKeyEvent(window, QEvent::KeyPress, key, keys, text);
        // A key goes up where the keys go then.
        window = windowForKeys();
        if (window)
            qt_handleKeyEvent(window, QEvent::KeyRelease, key, keys, text);
    });
}

void Hands::type(const QString &text)
{
    for (const QChar letter : text) {
        const int code = letter.toUpper().unicode();
        key(static_cast<Qt::Key>(code), Qt::NoModifier, QString(letter));
    }
}

void Hands::typeOver(const QString &text)
{
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_Delete);
    type(text);
}

void Hands::activate(QWidget *window)
{
    const QPointer<QWidget> wanted = window;
    add(Time(0), [wanted] {
        if (isReachable(wanted))
            bringToFront(wanted);
    });
}

void Hands::close(QWidget *window)
{
    const QPointer<QWidget> closed = window;
    add(Time(0), [closed] {
        if (isReachable(closed))
            closed->windowHandle()->close(); // asks the window as the desktop does
    });
}

void Hands::rest(Time time)
{
    add(time, [] {});
}

void Hands::then(Act act)
{
    add(Time(0), std::move(act));
}

} // namespace storm
