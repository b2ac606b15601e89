#pragma once

#include "base/timesource.h"

#include <QObject>

/// The timer whose expiry ends a pending display. It repeats until it is stopped.
class FakeTimer : public QObject
{
    Q_OBJECT

public:
    /// Stopped at first. `time` must outlive the timer.
    explicit FakeTimer(TimeSource &time, QObject *parent = nullptr);

    bool isActive() const { return m_timer->isActive(); }

    /// Starts with one second, or starts it anew if it runs.
    void start();
    void start(Timer::Period period);
    void stop();

signals:
    /// Emitted each time the period is over.
    void Signal_FakeTimeOver();

private slots:
    void FakeTimeOver();

private:
    Timer *m_timer; ///< child of this object
};
