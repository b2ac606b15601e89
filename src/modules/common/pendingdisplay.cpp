#include "modules/common/pendingdisplay.h"

#include <utility>

PendingDisplay::PendingDisplay(TimeSource &time, Callbacks callbacks, TimeOver timeOver)
    : m_time(time)
    , m_callbacks(std::move(callbacks))
    , m_parameter(timeOver)
{}

FakeTimer &PendingDisplay::timer()
{
    if (!m_timer) {
        m_timer = std::make_unique<FakeTimer>(m_time);
        QObject::connect(m_timer.get(), &FakeTimer::Signal_FakeTimeOver, m_timer.get(), [this] {
            if (m_callbacks.atTimeOver)
                m_callbacks.atTimeOver();
            else
                timeOver();
        });
    }
    return *m_timer;
}

void PendingDisplay::userChanged()
{
    m_parameter.userChanged();
    timer().start();
}

void PendingDisplay::statusArrived()
{
    if (m_parameter.statusArrived())
        m_callbacks.showLatest();
}

void PendingDisplay::cancel()
{
    if (m_timer)
        m_timer->stop();
    m_parameter.clear();
}

void PendingDisplay::timeOver()
{
    if (m_timer)
        m_timer->stop();
    const PendingParameter::Outcome outcome = m_parameter.timeOver();
    if (outcome.showLatest)
        m_callbacks.showLatest();
    if (outcome.requestStatus)
        m_callbacks.requestStatus();
}
