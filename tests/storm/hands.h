#pragma once

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <chrono>
#include <deque>
#include <functional>

class QTimer;
class QWidget;
class QWindow;

namespace storm {

/// The operator's mouse and keyboard. What they do enters the program where the desktop's events enter it: a
/// modal dialog keeps them from other windows, an open list grabs them, keys go to the active window, and no
/// event loop runs but the program's own. One act follows the other from the event loop, also from that of a
/// dialog that the act before has opened.
class Hands : public QObject
{
    Q_OBJECT

public:
    using Act = std::function<void()>;
    using Time = std::chrono::milliseconds;

    explicit Hands(QObject *parent = nullptr);

    void start();
    /// Lets go of what is held and forgets what was not done yet.
    void stop();

    /// How long the hands rest before each act.
    void setPace(Time pace) { m_pace = pace; }
    bool isBusy() const { return !m_acts.empty(); }

    // Each of these adds to what is to be done: what an act adds comes next, all else at the end. What
    // vanished meanwhile is left alone.

    void click(QWidget *target, Qt::KeyboardModifiers keys = Qt::NoModifier, Time held = Time(0));
    void clickAt(QWidget *target, const QPoint &place, Qt::KeyboardModifiers keys = Qt::NoModifier,
                 Time held = Time(0));
    /// A press that ends somewhere else in the same window.
    void pressAndLeave(QWidget *target);
    void turnWheel(QWidget *target, bool up);
    /// To the active window.
    void key(Qt::Key key, Qt::KeyboardModifiers keys = Qt::NoModifier, const QString &text = {});
    void type(const QString &text);
    /// Puts the text in the place of what is in the field that has the focus.
    void typeOver(const QString &text);
    /// The title bar, which brings the window to the front.
    void activate(QWidget *window);
    /// The close button of the title bar.
    void close(QWidget *window);
    void rest(Time time);
    void then(Act act);

    /// Acts that were done.
    int actCount() const { return m_actCount; }

signals:
    /// There is nothing to do; emitted again after each rest.
    void idle();

private:
    static constexpr int kAtTheEnd = -1;

    struct Step
    {
        Time rest{0};
        Act act;
    };

    void add(Time rest, Act act);
    void schedule();
    void turn();
    void move(QWidget *target, const QPoint &place, Qt::KeyboardModifiers keys);
    void press(QWidget *target, const QPoint &place, Qt::KeyboardModifiers keys);
    void release(Qt::KeyboardModifiers keys);
    static bool isReachable(const QWidget *widget);
    static void bringToFront(QWidget *widget);
    static QWindow *windowForKeys();

    QTimer *m_timer; // child; runs until the next act
    std::deque<Step> m_acts;
    int m_place = kAtTheEnd;     ///< of what is added next
    QPointer<QWindow> m_pressed; ///< where the button was pressed that is down
    QPointF m_local;
    QPointF m_global;
    Time m_pace{8};
    int m_actCount = 0;
    bool m_isRunning = false;
};

} // namespace storm
