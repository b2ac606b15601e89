#include "verdict.h"

#include "program.h"
#include "weather.h"

#include "support/sanitizers.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace storm {

namespace {

constexpr double kStallLimitMs = 100;
constexpr double kRequestMs = 20; ///< of a walk, at most
constexpr int kFixedModules = 2;
constexpr int kPollsToReady = 8;
constexpr double kStarvedMs =
    200; ///< without a processor: may cost a session with the time-outs of the storm
constexpr int kMostStarvedAMinute = 3;

double ms(std::chrono::milliseconds time)
{
    return static_cast<double>(time.count());
}

int wholeMinutes(double seconds)
{
    return std::max(1, static_cast<int>(seconds / 60));
}

int sum(const QMap<QString, int> &counts)
{
    return std::accumulate(counts.cbegin(), counts.cend(), 0);
}

QString nameOf(Comm_Type link)
{
    return link == Comm_Type::Serial ? QStringLiteral("a COM port") : QStringLiteral("TCP");
}

/// The lines of the verdict.
class Judge
{
public:
    void add(const QString &line)
    {
        if (!line.isEmpty())
            m_lines.append(line);
    }
    void add(const QStringList &lines, const QString &form = QStringLiteral("%1"))
    {
        for (const QString &line : lines)
            m_lines.append(form.arg(line));
    }
    void atLeast(const QString &what, double count, double wanted)
    {
        if (count < wanted)
            m_lines.append(QStringLiteral("only %1 %2, not %3").arg(count).arg(what).arg(std::ceil(wanted)));
    }
    const QStringList &lines() const { return m_lines; }

private:
    QStringList m_lines;
};

void judgeStalls(const QVector<Stall> &stalls, Judge &judge)
{
    constexpr int kTold = 10;
    for (const Stall &stall : stalls.mid(0, kTold))
        judge.add(QStringLiteral("stall: ") + asText(stall));
    if (stalls.size() > kTold)
        judge.add(QStringLiteral("%1 stalls in all").arg(stalls.size()));
}

void judgeRecoveries(const QVector<Recovery> &recoveries, Judge &judge)
{
    for (const Recovery &recovery : recoveries)
        judge.add(complaint(recovery));
    const auto later = std::count_if(recoveries.cbegin(), recoveries.cend(),
                                     [](const Recovery &recovery) { return recovery.wasRefreshLost; });
    constexpr int kOneOf = 3;
    if (later * kOneOf > recoveries.size())
        judge.add(QStringLiteral("%1 of %2 recoveries were later, behind a lost status of a rate")
                      .arg(later)
                      .arg(recoveries.size()));
}

void judgeCalms(const QVector<int> &polls, Judge &judge)
{
    constexpr int kFewest = 5;
    for (const int count : polls) {
        if (count < kFewest)
            judge.add(QStringLiteral("only %1 polls in a calm of %2 ms").arg(count).arg(calmMs()));
    }
}

/// Those that each minute has several times; others are rare, as to hold a button for long.
const QStringList &commonGestures()
{
    static const QStringList kinds{QStringLiteral("click"), QStringLiteral("leave"), QStringLiteral("name"),
                                   QStringLiteral("pick"),  QStringLiteral("press"), QStringLiteral("turn"),
                                   QStringLiteral("type")};
    return kinds;
}

/// A run in which little happened shows nothing. The numbers are about a third of what a busy machine does.
void judgeWhetherEnoughHappened(const Evidence &evidence, Judge &judge)
{
    const double seconds = evidence.seconds;
    const double minutes = seconds / 60;
    const auto atLeast = [&judge](const char *what, double count, double wanted) {
        judge.atLeast(QString::fromLatin1(what), count, wanted);
    };
    atLeast("turns of the event loop", static_cast<double>(evidence.ticks), 50 * seconds / kSlowness);
    atLeast("gestures", sum(evidence.gestures), 5 * seconds / kSlowness);
    for (const QString &kind : commonGestures())
        judge.atLeast(QStringLiteral("gestures \"%1\"").arg(kind), evidence.gestures.value(kind),
                      wholeMinutes(seconds));
    atLeast("sessions read", std::accumulate(evidence.sessions.cbegin(), evidence.sessions.cend(), 0),
            8 * minutes);
    for (const Comm_Type link : {Comm_Type::Serial, Comm_Type::Ethernet})
        judge.atLeast(QStringLiteral("sessions read over ") + nameOf(link), evidence.sessions.value(link),
                      wholeMinutes(seconds));
    atLeast("recoveries", evidence.recoveries.size(), 4 * minutes);
    atLeast("calm spells that were watched", evidence.pollsOfCalms.size(), wholeMinutes(seconds));
    atLeast("values compared", evidence.comparedValues, 80 * evidence.comparisons);
    atLeast("looks at the gateway's panel", evidence.looksAtGateway, 1);
    atLeast("lines of the log", static_cast<double>(evidence.logLines), 60 * seconds / kSlowness);
    atLeast("requests to the devices", static_cast<double>(evidence.world.requests),
            15 * seconds / kSlowness);
    atLeast("lines to the gateway", static_cast<double>(evidence.world.gatewayLines), 5 * minutes);
    atLeast("web requests", static_cast<double>(evidence.world.webRequests), 15 * minutes);
    for (int chain = 0; chain < stormChains().size(); ++chain)
        judge.atLeast(QStringLiteral("looks at all values of chain %1").arg(chain),
                      evidence.looksAtChain.value(chain), std::max(1, wholeMinutes(seconds) / 2));
    judge.add(Weather::missingKinds(evidence.world), QStringLiteral("the weather never had: %1"));
}

} // namespace

double stallLimitMs()
{
    return kStallLimitMs * kSlowness;
}

double recoveryLimitMs(int modules)
{
    const CommPeriods periods = stormPeriods();
    const double timeout = std::max(ms(periods.comm), ms(periods.initSequence));
    const double reopening = ms(kReconnect) + ms(kConnect);
    const double walk =
        kRequestMs * kSlowness * (modules + kFixedModules) + kPollsToReady * ms(periods.cyclic);
    return timeout + reopening + walk;
}

double lostRefreshMs()
{
    return ms(stormPeriods().initSequence);
}

int calmMs()
{
    return 2 * static_cast<int>(stormPeriods().comm.count());
}

double ownMs(double wholeMs, double programWaitedMs, double worldWaitedMs)
{
    return std::max(0.0, wholeMs - std::max(programWaitedMs, worldWaitedMs));
}

QString complaint(const Recovery &recovery)
{
    const double limit = recoveryLimitMs(recovery.modules) + (recovery.wasRefreshLost ? lostRefreshMs() : 0);
    if (recovery.isReady && recovery.ownMs() <= limit)
        return {};
    return QStringLiteral("%1 after %2 ms (%3 ms of them without a processor), not %4; the box reads %5")
        .arg(recovery.isReady ? QStringLiteral("READY") : QStringLiteral("not READY"))
        .arg(recovery.readyAfterMs, 0, 'f', 0)
        .arg(recovery.readyAfterMs - recovery.ownMs(), 0, 'f', 0)
        .arg(limit, 0, 'f', 0)
        .arg(recovery.statusBox);
}

QStringList complaints(const QVector<LostSession> &lost, double seconds)
{
    QStringList lines;
    for (const LostSession &session : lost) {
        if (session.waitedMs <= kStarvedMs)
            lines.append(
                QStringLiteral("the session was lost in fair weather, with %1 ms without a processor")
                    .arg(session.waitedMs, 0, 'f', 0));
    }
    const int most = kMostStarvedAMinute * wholeMinutes(seconds);
    if (lost.size() > most)
        lines.append(QStringLiteral("%1 sessions were lost in fair weather, not %2 at most")
                         .arg(lost.size())
                         .arg(most));
    return lines;
}

std::optional<Comm_Type> missingLink(const QMap<Comm_Type, int> &sessions, double seconds)
{
    constexpr double kMinute = 60;
    for (const Comm_Type link : {Comm_Type::Serial, Comm_Type::Ethernet}) {
        if (sessions.value(link) < 1 + static_cast<int>(seconds / kMinute))
            return link;
    }
    return {};
}

QString asText(const Stall &stall)
{
    return QStringLiteral("%1 ms by the clock, %2 ms of them without a processor, %3 ms asleep while another "
                          "of its threads had none, %4 ms taken by the host, "
                          "%5 ms of its own; at work for %6 ms; at \"%7\"")
        .arg(stall.wholeMs, 0, 'f', 1)
        .arg(stall.waitedMs, 0, 'f', 1)
        .arg(stall.heldUpMs, 0, 'f', 1)
        .arg(stall.stolenMs, 0, 'f', 1)
        .arg(stall.ownMs(), 0, 'f', 1)
        .arg(stall.ranMs, 0, 'f', 1)
        .arg(stall.during);
}

QStringList verdict(const Evidence &evidence)
{
    Judge judge;
    judge.add(evidence.unfinished);
    judge.add(evidence.differences);
    judgeRecoveries(evidence.recoveries, judge);
    judge.add(complaints(evidence.lostSessions, evidence.seconds));
    judgeCalms(evidence.pollsOfCalms, judge);
    judgeStalls(evidence.stalls, judge);
    judge.add(evidence.complaints, QStringLiteral("the log has: %1"));
    judge.add(evidence.missing, QStringLiteral("%1 was not opened and left in all of its ways"));
    judge.add(evidence.strangers, QStringLiteral("nobody knows the dialog %1"));
    judge.add(complaint(evidence.samples, MemoryRule()));
    if (!evidence.isClosed)
        judge.add(QStringLiteral("the program did not go when its window was closed"));
    judgeWhetherEnoughHappened(evidence, judge);
    return judge.lines();
}

} // namespace storm
