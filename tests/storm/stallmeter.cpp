#include "stallmeter.h"

#include <QTimer>
#include <cstdio>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace storm {

namespace {

constexpr int kPeriodMs = 4;
constexpr double kNsPerMs = 1e6;

/// The file of the kernel on the calling thread, open as long as the thread lives.
class SchedulerFile
{
public:
    SchedulerFile()
    {
        char name[64];
        std::snprintf(name, sizeof name, "/proc/self/task/%ld/schedstat", syscall(SYS_gettid));
        m_file = ::open(name, O_RDONLY | O_CLOEXEC);
    }
    ~SchedulerFile()
    {
        if (m_file >= 0)
            ::close(m_file);
    }

    SchedulerFile(const SchedulerFile &) = delete;
    SchedulerFile &operator=(const SchedulerFile &) = delete;

    qint64 waitedNs() const
    {
        char text[128];
        const ssize_t size = m_file < 0 ? -1 : ::pread(m_file, text, sizeof text - 1, 0);
        if (size <= 0)
            return 0;
        text[size] = '\0';
        unsigned long long run = 0;
        unsigned long long waited = 0;
        return std::sscanf(text, "%llu %llu", &run, &waited) == 2 ? static_cast<qint64>(waited) : 0;
    }

private:
    int m_file = -1;
};

} // namespace

qint64 waitedForProcessorNs()
{
    static thread_local const SchedulerFile file;
    return file.waitedNs();
}

StallMeter::StallMeter(double limitMs, std::function<qint64()> waitedNs, QObject *parent)
    : QObject(parent)
    , m_limitMs(limitMs)
    , m_waitedNs(std::move(waitedNs))
    , m_timer(new QTimer(this))
{
    m_timer->setTimerType(Qt::PreciseTimer);
    connect(m_timer, &QTimer::timeout, this, &StallMeter::tick);
}

void StallMeter::start()
{
    restart();
    m_timer->start(kPeriodMs);
}

void StallMeter::restart()
{
    m_clock.start();
    m_waitedAtStart = m_waitedNs();
}

void StallMeter::close()
{
    m_carriedMs += static_cast<double>(m_clock.nsecsElapsed()) / kNsPerMs;
    m_carriedWaitMs += static_cast<double>(m_waitedNs() - m_waitedAtStart) / kNsPerMs;
}

void StallMeter::pause()
{
    if (m_pauses++ == 0 && m_clock.isValid())
        close();
}

void StallMeter::resume()
{
    if (--m_pauses == 0 && m_clock.isValid())
        restart();
}

void StallMeter::tick()
{
    if (m_pauses > 0)
        return;
    close();
    ++m_ticks;
    Stall stall;
    stall.wholeMs = qMax(0.0, m_carriedMs - kPeriodMs);
    stall.waitedMs = qMin(m_carriedWaitMs, stall.wholeMs);
    m_carriedMs = 0;
    m_carriedWaitMs = 0;
    restart();
    if (stall.wholeMs > m_longestWhole.wholeMs) {
        m_longestWhole = stall;
        m_longestWhole.during = m_activity;
    }
    if (stall.ownMs() > m_longestOwn.ownMs()) {
        m_longestOwn = stall;
        m_longestOwn.during = m_activity;
    }
    if (stall.ownMs() > m_limitMs) {
        stall.during = m_activity;
        m_violations.append(stall);
    }
}

} // namespace storm
