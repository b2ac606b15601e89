#include "sim/monotonictime.h"

namespace sim {

MonotonicTime::MonotonicTime()
    : m_start(QDateTime::currentDateTimeUtc())
{
    m_elapsed.start();
}

QDateTime MonotonicTime::now() const
{
    return m_start.addMSecs(m_elapsed.elapsed());
}

Timer *MonotonicTime::createTimer(QObject *parent)
{
    return m_system.createTimer(parent);
}

} // namespace sim
