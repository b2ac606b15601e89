#pragma once

#include "support/kernelclocks.h"

#include <QTimer>
#include <algorithm>
#include <utility>

/// A time in milliseconds for which the event loop did not turn.
struct Gap
{
    /// Without that for which the kernel, or the host of a virtual machine, gave the processor to others.
    double ms = 0;
    double byTheClockMs = 0; ///< with it
};

/// Finds the longest gaps from start() until it is asked for them; both figures are the longest of their
/// kind. The host's time is told in steps of the kernel's tick, so that up to 10 ms may be taken off a gap
/// behind it.
class LoopGap
{
public:
    void start()
    {
        m_heartbeat.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_heartbeat, &QTimer::timeout, &m_heartbeat, [this] { turn(); });
        m_start = now();
        m_heartbeat.start(1);
    }

    Gap longest()
    {
        turn();
        return m_longest;
    }

private:
    struct Reading
    {
        qint64 clock;
        kernelclocks::Denied denied;
    };

    static Reading now() { return {kernelclocks::nowNs(), {}}; }

    void turn()
    {
        constexpr double kNsPerMs = 1e6;
        const Reading then = std::exchange(m_start, now());
        const double byTheClock = static_cast<double>(m_start.clock - then.clock) / kNsPerMs;
        const double denied =
            static_cast<double>(kernelclocks::deniedNs(then.denied, m_start.denied)) / kNsPerMs;
        m_longest.byTheClockMs = std::max(m_longest.byTheClockMs, byTheClock);
        m_longest.ms = std::max(m_longest.ms, byTheClock - denied);
    }

    QTimer m_heartbeat;
    Reading m_start{};
    Gap m_longest;
};
