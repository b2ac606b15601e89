#pragma once

#include "measuring.h"

#include <QTimer>

/// The longest time for which the event loop did not turn, from start() until it is asked for.
class LoopGap
{
public:
    void start()
    {
        m_heartbeat.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_heartbeat, &QTimer::timeout, &m_heartbeat, [this] {
            m_longestMs = std::max(m_longestMs, elapsedMs(m_clock));
            m_clock.start();
        });
        m_clock.start();
        m_heartbeat.start(1);
    }

    double longestMs() const { return std::max(m_longestMs, elapsedMs(m_clock)); }

private:
    QTimer m_heartbeat;
    QElapsedTimer m_clock;
    double m_longestMs = 0;
};
