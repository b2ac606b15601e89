#include "modules/common/pendingdisplay.h"

#include <utility>

PendingDisplay::PendingDisplay(TimeSource &time, Callbacks callbacks, TimeOver timeOver)
    : m_callbacks(std::move(callbacks))
    , m_parameter(timeOver)
    , m_timer(time)
{
    QObject::connect(&m_timer, &FakeTimer::Signal_FakeTimeOver, &m_timer, [this] {
        if (m_callbacks.atTimeOver)
            m_callbacks.atTimeOver();
        else
            this->timeOver();
    });
}

void PendingDisplay::userChanged()
{
    m_parameter.userChanged();
    m_timer.start();
}

void PendingDisplay::statusArrived()
{
    if (m_parameter.statusArrived())
        m_callbacks.showLatest();
}

void PendingDisplay::cancel()
{
    m_timer.stop();
    m_parameter.clear();
}

void PendingDisplay::timeOver()
{
    m_timer.stop();
    const PendingParameter::Outcome outcome = m_parameter.timeOver();
    if (outcome.showLatest)
        m_callbacks.showLatest();
    if (outcome.requestStatus)
        m_callbacks.requestStatus();
}
