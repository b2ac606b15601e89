#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QVector>
#include <functional>

class QTimer;

namespace storm {

/// Nanoseconds for which the kernel let the calling thread wait for a processor, since its start; 0 where the
/// kernel does not tell.
qint64 waitedForProcessorNs();

/// A time in which the event loop of the window's thread did not come round.
struct Stall
{
    double wholeMs = 0;  ///< by the clock
    double waitedMs = 0; ///< of it the kernel let the thread wait for a processor
    QString during;      ///< what the operator did last

    /// What the program has to answer for.
    double ownMs() const { return wholeMs - waitedMs; }
};

/// Measures how long the event loop of its thread does not come round. A timer fires in each turn of the
/// loop, also in that of a modal dialog, so that an operator who thinks over a dialog is no stall; the time
/// between two of its ticks, less its period, is the stall.
class StallMeter : public QObject
{
    Q_OBJECT

public:
    /// `waitedNs` tells what the kernel has taken so far; tests give their own.
    explicit StallMeter(double limitMs, std::function<qint64()> waitedNs = waitedForProcessorNs,
                        QObject *parent = nullptr);

    void start();

    /// What the operator does from now on, for the report.
    void setActivity(const QString &activity) { m_activity = activity; }

    /// Time of the observers, which is not the program's: what passes until resume() does not count.
    void pause();
    void resume();

    const Stall &longestOwn() const { return m_longestOwn; }
    const Stall &longestWhole() const { return m_longestWhole; }
    /// Those whose own time is above the limit.
    const QVector<Stall> &violations() const { return m_violations; }
    qint64 ticks() const { return m_ticks; }

private:
    void tick();
    void restart();
    void close();

    const double m_limitMs;
    const std::function<qint64()> m_waitedNs;
    QTimer *m_timer; // child
    QElapsedTimer m_clock;
    qint64 m_waitedAtStart = 0;
    double m_carriedMs = 0; ///< of this turn, before a pause
    double m_carriedWaitMs = 0;
    QString m_activity;
    Stall m_longestOwn;
    Stall m_longestWhole;
    QVector<Stall> m_violations;
    qint64 m_ticks = 0;
    int m_pauses = 0;
};

/// Pauses a meter as long as it lives.
class Unmeasured
{
public:
    explicit Unmeasured(StallMeter &meter)
        : m_meter(meter)
    {
        m_meter.pause();
    }
    ~Unmeasured() { m_meter.resume(); }

    Unmeasured(const Unmeasured &) = delete;
    Unmeasured &operator=(const Unmeasured &) = delete;

private:
    StallMeter &m_meter;
};

} // namespace storm
