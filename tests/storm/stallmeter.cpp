#include "stallmeter.h"

#include <QTimer>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

namespace storm {

namespace {

constexpr double kNsPerMs = 1e6;

/// A small file of the kernel that is read again and again.
class KernelFile
{
public:
    explicit KernelFile(const char *name)
        : m_file(::open(name, O_RDONLY | O_CLOEXEC))
    {}
    ~KernelFile()
    {
        if (m_file >= 0)
            ::close(m_file);
    }

    KernelFile(const KernelFile &) = delete;
    KernelFile &operator=(const KernelFile &) = delete;

    /// Empty if there is no such file.
    std::string text() const
    {
        std::array<char, 256> buffer;
        const ssize_t size = m_file < 0 ? -1 : ::pread(m_file, buffer.data(), buffer.size(), 0);
        return size <= 0 ? std::string() : std::string(buffer.data(), static_cast<size_t>(size));
    }

private:
    const int m_file;
};

/// Times of the calling thread.
struct ThreadTimes
{
    unsigned long long ran = 0;
    unsigned long long waited = 0;
};

ThreadTimes threadTimes()
{
    static thread_local const KernelFile file(
        ("/proc/self/task/" + std::to_string(syscall(SYS_gettid)) + "/schedstat").c_str());
    ThreadTimes times;
    if (std::sscanf(file.text().c_str(), "%llu %llu", &times.ran, &times.waited) != 2)
        return {};
    return times;
}

} // namespace

qint64 nowNs()
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

qint64 waitedForProcessorNs()
{
    return static_cast<qint64>(threadTimes().waited);
}

qint64 ranNs()
{
    return static_cast<qint64>(threadTimes().ran);
}

qint64 shortageNs()
{
    static const KernelFile file("/proc/pressure/cpu");
    constexpr qint64 kNsPerUs = 1000;
    const std::string text = file.text();
    const size_t at = text.find("total=");
    return at == std::string::npos ? 0 : std::atoll(text.c_str() + at + 6) * kNsPerUs;
}

StallMeter::StallMeter(double limitMs, const StallClocks &clocks, QObject *parent)
    : QObject(parent)
    , m_limitMs(limitMs)
    , m_clocks(clocks)
    , m_timer(new QTimer(this))
{
    m_timer->setTimerType(Qt::PreciseTimer);
    connect(m_timer, &QTimer::timeout, this, &StallMeter::tick);
}

void StallMeter::start()
{
    m_isStarted = true;
    restart();
    m_timer->start(kPeriodMs);
}

void StallMeter::restart()
{
    m_start = read();
}

void StallMeter::close()
{
    const Reading now = read();
    m_passed.now += now.now - m_start.now;
    m_passed.waited += now.waited - m_start.waited;
    m_passed.ran += now.ran - m_start.ran;
    m_passed.shortage += now.shortage - m_start.shortage;
}

void StallMeter::pause()
{
    if (m_pauses++ == 0 && m_isStarted)
        close();
}

void StallMeter::resume()
{
    if (--m_pauses == 0 && m_isStarted)
        restart();
}

Stall StallMeter::stallOf(const Reading &passed) const
{
    const auto ms = [](qint64 ns) { return static_cast<double>(ns) / kNsPerMs; };
    Stall stall;
    stall.wholeMs = qMax(0.0, ms(passed.now) - kPeriodMs);
    stall.waitedMs = qMin(ms(passed.waited), stall.wholeMs);
    const double slept = qMax(0.0, stall.wholeMs - stall.waitedMs - ms(passed.ran));
    if (slept <= Stall::kLongestHoldUpMs)
        stall.heldUpMs = qMin(slept, ms(passed.shortage));
    stall.during = m_activity;
    return stall;
}

void StallMeter::tick()
{
    if (m_pauses > 0)
        return;
    close();
    ++m_ticks;
    const Stall stall = stallOf(std::exchange(m_passed, Reading()));
    restart();
    if (stall.wholeMs > m_longestWhole.wholeMs)
        m_longestWhole = stall;
    if (stall.ownMs() > m_longestOwn.ownMs())
        m_longestOwn = stall;
    if (stall.ownMs() > m_limitMs)
        m_violations.append(stall);
}

} // namespace storm
