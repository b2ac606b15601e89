#include "link/watchtimerserialports.h"

#include "base/timesource.h"

WatchTimerSerialPorts::WatchTimerSerialPorts(TimeSource &time, QObject *parent,
                                             std::chrono::milliseconds period)
    : QObject(parent)
    , m_period(period)
    , m_timer(time.createTimer(this))
{
    connect(m_timer, &Timer::timeout, this, &WatchTimerSerialPorts::UpdatePortsStatus);
}

WatchTimerSerialPorts::~WatchTimerSerialPorts()
{
    m_timer->stop();
}

void WatchTimerSerialPorts::start()
{
    m_timer->start(m_period);
}

void WatchTimerSerialPorts::stop()
{
    m_timer->stop();
}

void WatchTimerSerialPorts::UpdatePortsStatus()
{
    emit Signal_UpdatePortsStatus();
}
