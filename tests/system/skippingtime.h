#pragma once

#include "base/timesource.h"

#include <QElapsedTimer>
#include <QList>
#include <QPointer>

/// The machine's own time, which a test may move on at a stroke: what takes seconds by itself costs nothing
/// then. For tests with real links, where the session must run without being told to.
class SkippingTime final : public TimeSource
{
public:
    SkippingTime();

    QDateTime now() const override;
    Timer *createTimer(QObject *parent) override;

    /// From now on time moves by skip() only, so that a slow machine changes nothing. Timers with a period
    /// below kShort, those of the links and of the polling in these tests, keep firing by themselves.
    void hold();

    /// Moves time on. Timers that fall due on the way fire within the call, in the order of their due
    /// times, and each but once, as after a halt of the machine.
    void skip(std::chrono::milliseconds by);

    /// What becomes of the timers while the machine sleeps: platforms differ in it.
    enum class Asleep {
        InTurn,  ///< as skip(): as if it had not slept but been halted each time a timer fell due
        Overdue, ///< each that fell due fires once when it wakes up, and counts from then on
        Stopped, ///< the sleep does not count; only the clock on the wall has moved
    };

    /// The machine sleeps for so long.
    void sleep(std::chrono::milliseconds by, Asleep timers);

    static constexpr std::chrono::milliseconds kShort{500};

private:
    friend class SkippingTimer;

    /// The time that the timers know, since the start.
    qint64 nowMs() const { return (m_held ? m_heldAtMs : m_clock.elapsed()) + m_skippedMs; }
    class SkippingTimer *nextDue(qint64 end) const;
    void armTimers() const;

    const QDateTime m_start;
    QElapsedTimer m_clock;
    bool m_held = false;
    qint64 m_heldAtMs = 0;
    qint64 m_skippedMs = 0;
    qint64 m_sleptMs = 0; ///< which the timers do not know of
    int m_skips = 0;
    QList<QPointer<class SkippingTimer>> m_timers;
};
