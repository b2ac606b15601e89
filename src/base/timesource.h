#pragma once

#include <QDateTime>
#include <QObject>
#include <chrono>

/// A timer of the time source that made it. It repeats until stopped, unless set to single shot.
/// Periods are milliseconds; a period of 0 fires once in each turn of the event loop.
class Timer : public QObject
{
    Q_OBJECT

public:
    using Period = std::chrono::milliseconds;

    explicit Timer(QObject *parent)
        : QObject(parent)
    {}

    virtual bool isActive() const = 0;

    /// Starts the timer, or starts it anew if it runs.
    virtual void start(Period period) = 0;
    virtual void stop() = 0;
    virtual void setSingleShot(bool singleShot) = 0;

signals:
    /// Emitted each time the period is over.
    void timeout();
};

/// Where the program's timers and its idea of "now" come from, so that tests can advance time by hand.
class TimeSource
{
public:
    virtual ~TimeSource() = default;

    /// The local date and time.
    virtual QDateTime now() const = 0;

    /// A stopped timer that belongs to `parent`. The time source must outlive it.
    virtual Timer *createTimer(QObject *parent) = 0;
};

/// The machine's own time; its timers are precise ones.
class SystemTime final : public TimeSource
{
public:
    QDateTime now() const override;
    Timer *createTimer(QObject *parent) override;
};
