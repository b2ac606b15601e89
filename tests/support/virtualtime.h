#pragma once

#include "base/timesource.h"

#include <QList>
#include <QPointer>

/// Time that stands still until a test advances it. Timers fire in the order of their due times; events
/// that were posted meanwhile are delivered before and after each step, as one turn of the event loop.
class VirtualTime final : public TimeSource
{
public:
    VirtualTime();

    QDateTime now() const override;
    Timer *createTimer(QObject *parent) override;

    /// Moves time on and fires every timer that falls due on the way, those due at the very end included.
    void advance(std::chrono::milliseconds by);
    void advance(int ms) { advance(std::chrono::milliseconds(ms)); }

    /// One turn of the event loop without moving time: posted events, deferred deletions and
    /// timers of period 0.
    void turn();

    qint64 elapsedMs() const { return m_nowMs; }

    /// Number of timers that were started and did not end.
    int activeTimers() const;

private:
    friend class VirtualTimer;

    QList<QPointer<class VirtualTimer>> m_timers;
    qint64 m_nowMs = 0;
    qint64 m_sequence = 0;
};
