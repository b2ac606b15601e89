#include "base/timesource.h"

#include <QTimer>

namespace {

class SystemTimer final : public Timer
{
public:
    explicit SystemTimer(QObject *parent)
        : Timer(parent)
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        connect(&m_timer, &QTimer::timeout, this, &Timer::timeout);
    }

    bool isActive() const override { return m_timer.isActive(); }
    void start(Period period) override { m_timer.start(period); }
    void stop() override { m_timer.stop(); }
    void setSingleShot(bool singleShot) override { m_timer.setSingleShot(singleShot); }

private:
    QTimer m_timer;
};

} // namespace

QDateTime SystemTime::now() const
{
    return QDateTime::currentDateTime();
}

Timer *SystemTime::createTimer(QObject *parent)
{
    return new SystemTimer(parent);
}
