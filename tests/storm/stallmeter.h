#pragma once

#include "support/kernelclocks.h"
#include "threadsofstorm.h"

#include <QObject>
#include <QString>
#include <QVector>
#include <functional>

class QTimer;

namespace storm {

/// In nanoseconds; those of the machine unless a test gives others.
struct StallClocks
{
    std::function<qint64()> now = kernelclocks::nowNs;
    std::function<qint64()> waited = kernelclocks::waitedForProcessorNs;
    std::function<qint64()> ran = kernelclocks::ranNs;
    std::function<qint64()> helpers = helpersWaitedNs;
    std::function<kernelclocks::Stolen()> stolen = [] { return kernelclocks::stolenNs(); };
};

/// A time in which the event loop of the window's thread did not come round.
struct Stall
{
    double wholeMs = 0;  ///< by the clock
    double waitedMs = 0; ///< of it the kernel let the thread wait for a processor
    /// Of it the thread slept as long as other threads of the program waited for a processor: as a file
    /// dialog that goes waits for its thread. A long sleep is none of that kind.
    double heldUpMs = 0;
    double stolenMs = 0; ///< of the whole the host of a virtual machine gave a processor of it to others
    double ranMs = 0;    ///< of the whole the thread was at work
    QString during;      ///< what the operator did last

    static constexpr double kLongestHoldUpMs = 2000;

    /// What the program has to answer for. What the host took may be the time of the waits.
    double ownMs() const { return wholeMs - qMax(waitedMs + heldUpMs, stolenMs); }
};

/// Measures how long the event loop of its thread does not come round. A timer fires in each turn of the
/// loop, also in that of a modal dialog, so that an operator who thinks over a dialog is no stall; the time
/// between two of its ticks, less its period, is the stall.
class StallMeter : public QObject
{
    Q_OBJECT

public:
    explicit StallMeter(double limitMs, const StallClocks &clocks = {}, QObject *parent = nullptr);

    /// Of the timer. What a stall exceeds this by is told.
    static constexpr int kPeriodMs = 4;

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
    const StallClocks m_clocks;
    QTimer *m_timer; // child
    /// What the clocks show, or how far they went.
    struct Reading
    {
        qint64 now = 0;
        qint64 waited = 0;
        qint64 ran = 0;
        qint64 helpers = 0;
        kernelclocks::Stolen stolen;
    };

    Reading read() const
    {
        return {m_clocks.now(), m_clocks.waited(), m_clocks.ran(), m_clocks.helpers(), m_clocks.stolen()};
    }
    Stall stallOf(const Reading &passed) const;

    Reading m_start;  ///< of what is measured now
    Reading m_passed; ///< of this turn, before a pause
    bool m_isStarted = false;
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
