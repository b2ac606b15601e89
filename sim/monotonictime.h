#pragma once

#include "base/timesource.h"

#include <QElapsedTimer>

namespace sim {

constexpr qint64 kNsPerMs = 1000000;

/// The machine's time without the jumps of its clock: begins with the clock and then only counts on.
class MonotonicTime final : public TimeSource
{
public:
    MonotonicTime();

    QDateTime now() const override;
    Timer *createTimer(QObject *parent) override;

private:
    SystemTime m_system;
    const QDateTime m_start;
    QElapsedTimer m_elapsed;
};

} // namespace sim
