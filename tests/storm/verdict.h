#pragma once

#include "memorywatch.h"
#include "stallmeter.h"
#include "world.h"

#include "link/settings.h"

#include <QMap>
#include <QStringList>
#include <QVector>
#include <optional>

namespace storm {

/// The longest time for which the event loop may not come round.
double stallLimitMs();
/// The longest time from the end of the faults to READY: one time-out and one walk through so many modules.
double recoveryLimitMs(int modules);
/// What comes to it if the status after a change of the data rate was lost: that is wanted still, so the
/// first one of the new session is taken for it, without a walk, which then begins a time-out later.
double lostRefreshMs();
/// For so long a session that is READY in fair weather is watched.
int calmMs();

/// What is left of a time if that is taken off for which the program or the devices had no processor in it,
/// whichever is more: they may have waited at once. The host's time is told in steps: never less than nothing
/// is left.
double ownMs(double wholeMs, double programWaitedMs, double worldWaitedMs);

/// From the end of the faults to READY.
struct Recovery
{
    double readyAfterMs = 0;
    double programWaitedMs = 0; ///< of it, without a processor
    double worldWaitedMs = 0;   ///< the same of the devices
    bool isReady = false;       ///< given up
    int modules = 0;
    bool wasRefreshLost = false; ///< as lostRefreshMs() tells
    QString statusBox;

    double ownMs() const { return storm::ownMs(readyAfterMs, programWaitedMs, worldWaitedMs); }
};

/// A session that was READY and ended in fair weather.
struct LostSession
{
    double waitedMs =
        0; ///< for which the program or the devices, whichever is more, had no processor since it was READY
};

/// All that a run has shown.
struct Evidence
{
    double seconds = 0; ///< how long it was

    // What must not be.
    QStringList unfinished;  ///< phases that did not end, as texts
    QStringList differences; ///< between what the devices have and what the program showed
    QStringList complaints;  ///< of the log
    QStringList missing;     ///< names of dialogs that were not left in all of their ways
    QStringList strangers;   ///< and of dialogs that nobody knows
    QVector<Stall> stalls;   ///< above the limit
    bool isClosed = false;   ///< the program went when its window was closed

    // What is judged by its size.
    QVector<MemorySample> samples;
    QVector<Recovery> recoveries;
    QVector<LostSession> lostSessions;
    QVector<int> pollsOfCalms; ///< replies with values in each calm that was watched

    // What must have happened often enough.
    qint64 ticks = 0;              ///< turns of the event loop
    QMap<QString, int> gestures;   ///< by their first words
    QMap<Comm_Type, int> sessions; ///< read to the end, by their link
    int comparedValues = 0;
    int comparisons = 0;
    QMap<int, int> looksAtChain; ///< with all values, by the chain's number
    int looksAtGateway = 0;      ///< at its panel, in a calm
    qint64 logLines = 0;
    WorldCounts world;
};

/// Empty for a run that keeps all that it must, and in which enough happened; else a line for each thing.
QStringList verdict(const Evidence &evidence);

// Parts of it, for those who want to know at once; an empty text, or none, if all is well.

QString complaint(const Recovery &recovery);
/// A machine that lets the program or the devices wait for a processor may cost a session now and then, as
/// the time-outs are short; else no session is lost in fair weather.
QStringList complaints(const QVector<LostSession> &lost, double seconds);

/// A link over which fewer sessions were read than the verdict of a longer run will ask for.
std::optional<Comm_Type> missingLink(const QMap<Comm_Type, int> &sessions, double seconds);

QString asText(const Stall &stall);

} // namespace storm
