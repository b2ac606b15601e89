#include "base/timesource.h"

#include <QBasicTimer>
#include <QTimerEvent>

namespace {

/// Without a QTimer in it, which would be an object of its own: a full chain has hundreds of timers.
class SystemTimer final : public Timer
{
public:
    using Timer::Timer;

    bool isActive() const override { return m_timer.isActive(); }

    void start(Period period) override
    {
        m_timer.start(static_cast<int>(period.count()), Qt::PreciseTimer, this);
    }

    void stop() override { m_timer.stop(); }
    void setSingleShot(bool singleShot) override { m_singleShot = singleShot; }

protected:
    void timerEvent(QTimerEvent *event) override
    {
        if (event->timerId() != m_timer.timerId())
            return;
        if (m_singleShot)
            m_timer.stop();
        emit timeout();
    }

private:
    QBasicTimer m_timer;
    bool m_singleShot = false;
};

} // namespace

QDateTime SystemTime::now() const
{
    return QDateTime::currentDateTime();
}

Timer *SystemTime::createTimer(QObject *parent)
{
    return new SystemTimer(parent);
}
