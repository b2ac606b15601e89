#pragma once

#include "skippingtime.h"

#include <QMetaType>
#include <chrono>
#include <utility>
#include <vector>

Q_DECLARE_METATYPE(SkippingTime::Asleep)

/// How long machines sleep in tests.
constexpr std::chrono::hours kNight{8};

/// What platforms do to timers in a sleep, with names for the rows of a test.
inline std::vector<std::pair<const char *, SkippingTime::Asleep>> platforms()
{
    using Asleep = SkippingTime::Asleep;
    return {{"timers in turn", Asleep::InTurn},
            {"timers overdue", Asleep::Overdue},
            {"timers stopped", Asleep::Stopped}};
}

/// Whether the time-outs of the session are over when the machine wakes up.
inline bool timesOut(SkippingTime::Asleep asleep)
{
    return asleep != SkippingTime::Asleep::Stopped;
}
