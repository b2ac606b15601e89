#pragma once

#include <QObject>
#include <chrono>

class Timer;
class TimeSource;

/// Timer for watching the serial ports. Part of the design; nothing in the program creates it, because the
/// connection dialog surveys the ports with a timer of its own.
class WatchTimerSerialPorts : public QObject
{
    Q_OBJECT

public:
    explicit WatchTimerSerialPorts(TimeSource &time, QObject *parent = nullptr,
                                   std::chrono::milliseconds period = std::chrono::milliseconds(2500));
    ~WatchTimerSerialPorts() override;

    /// Stopped after construction.
    void start();
    void stop();

public slots:
    void UpdatePortsStatus(); ///< emits the signal

signals:
    /// Emitted each time the period is over.
    void Signal_UpdatePortsStatus();

private:
    const std::chrono::milliseconds m_period;
    Timer *m_timer; ///< child
};
