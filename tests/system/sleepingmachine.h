#pragma once

#include "systemfixture.h"

#include <QByteArray>
#include <chrono>
#include <functional>
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

/// Calls `addRow` for each kind of link and platform, with a name for the row.
inline void addSleeps(const std::function<void(const QByteArray &name, SystemFixture::LinkKind kind,
                                               SkippingTime::Asleep asleep)> &addRow)
{
    for (const auto &platform : platforms()) {
        addRow(QByteArray("tcp, ") + platform.first, SystemFixture::LinkKind::Tcp, platform.second);
        addRow(QByteArray("serial, ") + platform.first, SystemFixture::LinkKind::Serial, platform.second);
    }
}

/// Whether the time-outs of the session are over when the machine wakes up.
inline bool timesOut(SkippingTime::Asleep asleep)
{
    return asleep != SkippingTime::Asleep::Stopped;
}
