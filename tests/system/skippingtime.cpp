#include "skippingtime.h"

#include <QTimer>

class SkippingTimer final : public Timer
{
public:
    SkippingTimer(SkippingTime &time, QObject *parent)
        : Timer(parent)
        , m_time(time)
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.setSingleShot(true);
        connect(&m_timer, &QTimer::timeout, this, [this] { fire(); });
    }

    bool isActive() const override { return m_active; }

    void start(Period period) override
    {
        m_active = true;
        m_period = period.count();
        m_dueMs = m_time.nowMs() + m_period;
        arm();
    }

    void stop() override
    {
        m_active = false;
        m_timer.stop();
    }

    void setSingleShot(bool singleShot) override { m_singleShot = singleShot; }

    bool isIdleTimer() const { return m_period == 0; }
    qint64 dueMs() const { return m_dueMs; }
    bool hasFiredIn(int skip) const { return m_firedInSkip == skip; }

    /// Lets the timer fire by itself, if it may.
    void arm()
    {
        if (m_time.m_held && m_period >= SkippingTime::kShort.count())
            m_timer.stop();
        else
            m_timer.start(static_cast<int>(qMax<qint64>(0, m_dueMs - m_time.nowMs())));
    }

    void fire(int skip = 0)
    {
        m_firedInSkip = skip;
        if (m_singleShot)
            stop();
        else
            start(Period(m_period));
        emit timeout();
    }

private:
    SkippingTime &m_time;
    QTimer m_timer;
    qint64 m_period = 0;
    qint64 m_dueMs = 0;
    int m_firedInSkip = 0;
    bool m_active = false;
    bool m_singleShot = false;
};

SkippingTime::SkippingTime()
    : m_start(QDateTime::currentDateTime())
{
    m_clock.start();
}

QDateTime SkippingTime::now() const
{
    return m_start.addMSecs(nowMs() + m_sleptMs);
}

Timer *SkippingTime::createTimer(QObject *parent)
{
    auto *timer = new SkippingTimer(*this, parent);
    m_timers.removeAll(QPointer<SkippingTimer>());
    m_timers.append(timer);
    return timer;
}

SkippingTimer *SkippingTime::nextDue(qint64 end) const
{
    SkippingTimer *next = nullptr;
    for (const auto &timer : m_timers) {
        if (!timer || !timer->isActive() || timer->isIdleTimer() || timer->hasFiredIn(m_skips) ||
            timer->dueMs() > end)
            continue;
        if (!next || timer->dueMs() < next->dueMs())
            next = timer;
    }
    return next;
}

void SkippingTime::hold()
{
    m_heldAtMs = m_clock.elapsed();
    m_held = true;
    armTimers();
}

void SkippingTime::armTimers() const
{
    for (const auto &timer : m_timers) {
        if (timer && timer->isActive())
            timer->arm();
    }
}

void SkippingTime::skip(std::chrono::milliseconds by)
{
    ++m_skips;
    const qint64 end = nowMs() + by.count();
    while (SkippingTimer *next = nextDue(end)) {
        m_skippedMs += qMax<qint64>(0, next->dueMs() - nowMs());
        next->fire(m_skips);
    }
    m_skippedMs += qMax<qint64>(0, end - nowMs());
    armTimers();
}

void SkippingTime::sleep(std::chrono::milliseconds by, Asleep timers)
{
    switch (timers) {
    case Asleep::InTurn:
        skip(by);
        return;
    case Asleep::Overdue:
        m_skippedMs += by.count();
        skip(std::chrono::milliseconds(0));
        return;
    case Asleep::Stopped:
        m_sleptMs += by.count();
        return;
    }
}
