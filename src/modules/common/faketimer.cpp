#include "modules/common/faketimer.h"

namespace {

constexpr Timer::Period kPendingPeriod{1000};

} // namespace

FakeTimer::FakeTimer(TimeSource &time, QObject *parent)
    : QObject(parent)
    , m_timer(time.createTimer(this))
{
    connect(m_timer, &Timer::timeout, this, &FakeTimer::FakeTimeOver);
}

void FakeTimer::start()
{
    start(kPendingPeriod);
}

void FakeTimer::start(Timer::Period period)
{
    m_timer->start(period);
}

void FakeTimer::stop()
{
    m_timer->stop();
}

void FakeTimer::FakeTimeOver()
{
    emit Signal_FakeTimeOver();
}
