#include "system/reportedtext.h"

#include <QDebug>
#include <utility>

// Nothing follows from the end of the time alone: the next report is shown.
ReportedText::ReportedText(TimeSource &time, std::function<void()> show)
    : m_show(std::move(show))
    , m_display(time, {[this] { showReport(); }, nullptr}, PendingDisplay::TimeOver::OnlyElapse)
{}

void ReportedText::userChanged()
{
    m_display.userChanged();
}

void ReportedText::reported()
{
    m_isLate = m_display.isPending();
    m_display.statusArrived();
}

void ReportedText::showReport()
{
    if (m_isLate)
        qDebug() << "***Really Mad Nothing is initialized";
    m_display.cancel();
    m_show();
}
