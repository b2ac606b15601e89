#include "stallmeter.h"

#include <QTimer>
#include <utility>

namespace storm {

namespace {

constexpr double kNsPerMs = 1e6;

} // namespace

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
    m_passed.helpers += now.helpers - m_start.helpers;
    kernelclocks::addStolen(m_passed.stolen, m_start.stolen, now.stolen);
    m_start = now;
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
    stall.ranMs = ms(passed.ran);
    const double slept = qMax(0.0, stall.wholeMs - stall.waitedMs - stall.ranMs);
    if (slept <= Stall::kLongestHoldUpMs)
        stall.heldUpMs = qMin(slept, ms(passed.helpers));
    stall.stolenMs = qMin(ms(kernelclocks::longestNs(passed.stolen)), stall.wholeMs);
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
    if (stall.wholeMs > m_longestWhole.wholeMs)
        m_longestWhole = stall;
    if (stall.ownMs() > m_longestOwn.ownMs())
        m_longestOwn = stall;
    if (stall.ownMs() > m_limitMs)
        m_violations.append(stall);
}

} // namespace storm
