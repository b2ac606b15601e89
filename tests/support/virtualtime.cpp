#include "support/virtualtime.h"

#include <QCoreApplication>

class VirtualTimer final : public Timer
{
public:
    VirtualTimer(VirtualTime &time, QObject *parent)
        : Timer(parent)
        , m_time(time)
    {}

    bool isActive() const override { return m_active; }

    void start(Period period) override
    {
        m_period = period.count();
        m_active = true;
        schedule();
    }

    void stop() override { m_active = false; }
    void setSingleShot(bool singleShot) override { m_singleShot = singleShot; }

    bool isIdleTimer() const { return m_active && m_period == 0; }
    qint64 due() const { return m_due; }
    qint64 order() const { return m_order; }

    void fire()
    {
        if (m_singleShot)
            m_active = false;
        else
            schedule();
        emit timeout();
    }

private:
    void schedule()
    {
        m_due = m_time.m_nowMs + m_period;
        m_order = m_time.m_sequence++;
    }

    VirtualTime &m_time;
    qint64 m_period = 0;
    qint64 m_due = 0;
    qint64 m_order = 0;
    bool m_active = false;
    bool m_singleShot = false;
};

namespace {

/// Deferred deletions are told apart because they wait for an event loop, and tests run outside of any.
void sendPostedEvents()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

VirtualTime::VirtualTime() = default;

QDateTime VirtualTime::now() const
{
    static const QDateTime start(QDate(2026, 3, 2), QTime(8, 30, 0), Qt::UTC);
    return start.addMSecs(m_nowMs);
}

Timer *VirtualTime::createTimer(QObject *parent)
{
    auto *timer = new VirtualTimer(*this, parent);
    m_timers.append(timer);
    return timer;
}

int VirtualTime::activeTimers() const
{
    int active = 0;
    for (const auto &timer : m_timers)
        active += timer && timer->isActive() ? 1 : 0;
    return active;
}

void VirtualTime::turn()
{
    sendPostedEvents();
    const auto timers = m_timers;
    for (const auto &timer : timers) {
        if (timer && timer->isIdleTimer())
            timer->fire();
    }
    sendPostedEvents();
}

void VirtualTime::advance(std::chrono::milliseconds by)
{
    const qint64 end = m_nowMs + by.count();
    turn();
    for (;;) {
        m_timers.removeAll(QPointer<VirtualTimer>());
        VirtualTimer *next = nullptr;
        for (const auto &timer : qAsConst(m_timers)) {
            if (!timer->isActive() || timer->isIdleTimer() || timer->due() > end)
                continue;
            if (!next || timer->due() < next->due() ||
                (timer->due() == next->due() && timer->order() < next->order()))
                next = timer;
        }
        if (!next)
            break;
        m_nowMs = qMax(m_nowMs, next->due());
        next->fire();
        turn();
    }
    m_nowMs = end;
}
