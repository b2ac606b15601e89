#include "app/statusline.h"

#include "base/timesource.h"
#include "modules/common/widgetstyle.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLabel>
#include <QStatusBar>

namespace {

constexpr int kLabelHeight = 17;
constexpr int kClockWidth = 60;
constexpr int kTextWidth = 900;

QString style(StatusLine::Colour colour)
{
    switch (colour) {
    case StatusLine::Colour::Red:
        return QStringLiteral("color: red");
    case StatusLine::Colour::Black:
        break;
    }
    return QStringLiteral("color: black");
}

QLabel *createLabel(const char *name, const QString &accessibleName, int width, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setAccessibleName(accessibleName);
    label->setTextFormat(Qt::PlainText);
    label->setMaximumHeight(kLabelHeight);
    label->setMinimumWidth(width);
    return label;
}

} // namespace

StatusLine::StatusLine(QStatusBar *bar, TimeSource &time)
    : m_bar(bar)
    , m_passingTimer(time.createTimer(bar))
    , m_statusLabel(
          createLabel("statusLabel", QCoreApplication::translate("StatusLine", "Status"), kTextWidth, bar))
    , m_clockLabel(
          createLabel("clockLabel", QCoreApplication::translate("StatusLine", "Time"), kClockWidth, bar))
{
    m_statusLabel->setText(QStringLiteral("THis is a test message")); // agreed text, gone after a second
    setStyleIfChanged(*m_clockLabel, style(Colour::Black));
    bar->addWidget(m_statusLabel);
    bar->addPermanentWidget(m_clockLabel);
    QObject::connect(m_passingTimer, &Timer::timeout, bar, [bar, timer = m_passingTimer] {
        timer->stop();
        bar->clearMessage();
    });
}

void StatusLine::showPlain(const QString &text, int ticks)
{
    setStyleIfChanged(*m_bar, style(Colour::Black));
    setText(text, ticks);
}

void StatusLine::show(const QString &text, int ticks, Colour colour)
{
    setStyleIfChanged(*m_statusLabel, style(colour));
    setText(text, ticks);
}

void StatusLine::showPassing(const QString &text, std::chrono::milliseconds time)
{
    setStyleIfChanged(*m_bar, style(Colour::Black));
    m_bar->showMessage(text);
    m_passingTimer->start(time);
}

void StatusLine::tick(const QDateTime &now)
{
    if (m_statusLineTicks != 0)
        --m_statusLineTicks;
    else
        m_statusLabel->clear();
    m_clockLabel->setText(now.toString(QStringLiteral("HH:mm:ss")));
}

void StatusLine::setText(const QString &text, int ticks)
{
    m_statusLabel->setText(QStringLiteral("   ") + text);
    m_statusLineTicks = ticks;
}
