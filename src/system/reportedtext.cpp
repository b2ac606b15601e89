#include "system/reportedtext.h"

#include <QDebug>
#include <utility>

ReportedText::ReportedText(TimeSource &time, std::function<void()> show)
    : m_show(std::move(show))
    , m_parameter(PendingParameter::TimeOver::OnlyElapse)
    , m_timer(time)
{
    QObject::connect(&m_timer, &FakeTimer::Signal_FakeTimeOver, &m_timer, [this] {
        m_timer.stop();
        // Nothing follows from the end of the time alone: the next report is shown.
        static_cast<void>(m_parameter.timeOver());
    });
}

void ReportedText::userChanged()
{
    m_parameter.userChanged();
    m_timer.start();
}

void ReportedText::reported()
{
    const bool wasPending = m_parameter.isPending();
    if (!m_parameter.statusArrived())
        return;
    if (wasPending)
        qDebug() << "***Really Mad Nothing is initialized";
    m_timer.stop();
    m_show();
}
