#include "storm.h"

#include "support/sanitizers.h"

#include <algorithm>
#include <cstdio>

namespace storm {

namespace {

constexpr double kStallLimitMs = 100;
constexpr double kRequestMs = 20; ///< of a walk, at most
constexpr int kFixedModules = 2;
constexpr int kPollsToReady = 8;

void print(const char *title, const QString &text)
{
    std::printf("%-12s %s\n", title, qPrintable(text));
}

QString asText(const QMap<QString, int> &counts)
{
    QStringList parts;
    for (auto entry = counts.cbegin(); entry != counts.cend(); ++entry)
        parts.append(QStringLiteral("%1 %2").arg(entry.key()).arg(entry.value()));
    return parts.join(QStringLiteral(", "));
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

} // namespace

QString asText(const MemorySample &sample)
{
    return QStringLiteral("at %1 s, session %2: %3 bytes, %4 resident, %5 objects, %6 widgets, %7 windows")
        .arg(sample.seconds, 0, 'f', 1)
        .arg(sample.sessions)
        .arg(sample.bytes)
        .arg(sample.resident)
        .arg(sample.objects)
        .arg(sample.widgets)
        .arg(sample.topLevels);
}

double stallLimitMs()
{
    return kStallLimitMs * kSlowness;
}

double recoveryLimitMs(int modules)
{
    const CommPeriods periods = stormPeriods();
    const auto ms = [](std::chrono::milliseconds time) { return static_cast<double>(time.count()); };
    const double timeout = std::max(ms(periods.comm), ms(periods.initSequence));
    const double reopening = ms(kReconnect) + ms(kConnect);
    const double walk =
        kRequestMs * kSlowness * (modules + kFixedModules) + kPollsToReady * ms(periods.cyclic);
    return timeout + reopening + walk;
}

int calmMs()
{
    return 2 * static_cast<int>(stormPeriods().comm.count());
}

double lostRefreshMs()
{
    return static_cast<double>(stormPeriods().initSequence.count());
}

/// A run in which little happened shows nothing. The numbers are about a third of what a busy machine does.
void Storm::judgeWhetherEnoughHappened(const WorldCounts &counts)
{
    const auto atLeast = [this](const char *what, double count, double wanted) {
        if (count < wanted)
            fail(QStringLiteral("only %1 %2, not %3").arg(count).arg(QLatin1String(what)).arg(wanted));
    };
    const double seconds = secondsNow();
    const double minutes = seconds / 60;
    atLeast("turns of the event loop", static_cast<double>(m_meter.ticks()), 50 * seconds / kSlowness);
    atLeast("gestures", m_operator->gestureCount(), 5 * seconds / kSlowness);
    atLeast("sessions read", m_program->sessionsRead(), 8 * minutes);
    atLeast("recoveries", m_recoveries, 4 * minutes);
    atLeast("calm spells that were watched", m_calms, 1);
    atLeast("values compared", m_comparedValues, 80 * m_comparisons);
    atLeast("lines of the log", static_cast<double>(m_log.lineCount()), 60 * seconds / kSlowness);
    atLeast("requests to the devices", static_cast<double>(counts.requests), 15 * seconds / kSlowness);
    atLeast("lines to the gateway", static_cast<double>(counts.gatewayLines), 5 * minutes);
    atLeast("web requests", static_cast<double>(counts.webRequests), 15 * minutes);
    for (int chain = 0; chain < stormChains().size(); ++chain)
        atLeast(qPrintable(QStringLiteral("looks at all values of chain %1").arg(chain)),
                m_looksAtChain.value(chain), 1);
    for (const QString &kind : Weather::missingKinds(counts))
        fail(QStringLiteral("the weather never had: ") + kind);
}

void Storm::judge()
{
    constexpr int kToldStalls = 10;
    for (const Stall &stall : m_meter.violations().mid(0, kToldStalls))
        fail(QStringLiteral("stall: ") + asText(stall));
    if (m_meter.violations().size() > kToldStalls)
        fail(QStringLiteral("%1 stalls in all").arg(m_meter.violations().size()));
    for (const QString &line : m_log.complaints())
        fail(QStringLiteral("the log has: ") + line);
    for (const QString &name : m_book.missing())
        fail(QStringLiteral("%1 was not opened and left in all of its ways").arg(name));
    for (const QString &name : m_book.strangers())
        fail(QStringLiteral("nobody knows the dialog %1").arg(name));
    const QString memory = complaint(m_samples, MemoryRule());
    if (!memory.isEmpty())
        fail(memory);
}

void Storm::report(const WorldCounts &counts) const
{
    print("gestures", QStringLiteral("%1 in %2 acts: %3")
                          .arg(m_operator->gestureCount())
                          .arg(m_operator->actCount())
                          .arg(asText(m_operator->gesturesByKind())));
    print("dialogs", QStringLiteral("%1 opened; all of them within %2 s")
                         .arg(m_book.openings())
                         .arg(m_tourSeconds, 0, 'f', 1));
    for (const QString &line : m_book.report())
        print("", line);
    print("sessions", QStringLiteral("%1 begun, %2 read to the end; %3 requests, %4 lines to the gateway, "
                                     "%5 web requests")
                          .arg(m_program->sessionsBegun())
                          .arg(m_program->sessionsRead())
                          .arg(counts.requests)
                          .arg(counts.gatewayLines)
                          .arg(counts.webRequests));
    print("weather", m_weather->spells().join(QStringLiteral(", ")));
    print("faults", asText(counts.faults));
    print("log", QStringLiteral("%1 lines, %2 of them errors that are meant, %3 that are not")
                     .arg(m_log.lineCount())
                     .arg(m_log.meantCount())
                     .arg(m_log.complaintCount()));
    print("stall",
          QStringLiteral("limit %1 ms; longest: %2").arg(stallLimitMs()).arg(asText(m_meter.longestOwn())));
    print("", QStringLiteral("by the clock: %1").arg(asText(m_meter.longestWhole())));
    print("recovery",
          QStringLiteral(
              "%1 times, READY after %2 ms at most (limit for 14 modules %3 ms); walk %4 ms at most; "
              "%5 sessions lost for want of a processor; %6 times later, behind a lost status of a rate")
              .arg(m_recoveries)
              .arg(m_longestRecoveryMs, 0, 'f', 0)
              .arg(recoveryLimitMs(14), 0, 'f', 0)
              .arg(m_longestWalkMs, 0, 'f', 0)
              .arg(m_starvedSessions)
              .arg(m_lostRefreshes));
    print("calm", QStringLiteral("%1 times watched for %2 ms").arg(m_calms).arg(calmMs()));
    print("values", QStringLiteral("%1 compared in %2 looks").arg(m_comparedValues).arg(m_comparisons));
    if (m_samples.size() > 2) {
        const Trend bytes = trendOf(m_samples, &MemorySample::bytes);
        const Trend objects = trendOf(m_samples, &MemorySample::objects);
        print("memory",
              QStringLiteral("%1 samples: %2 bytes a session (error %3), %4 objects a session (error %5)")
                  .arg(m_samples.size())
                  .arg(bytes.perSession, 0, 'f', 0)
                  .arg(bytes.error, 0, 'f', 0)
                  .arg(objects.perSession, 0, 'f', 2)
                  .arg(objects.error, 0, 'f', 2));
        print("", asText(m_samples.constFirst()));
        print("", asText(m_samples.constLast()));
        QMap<QString, int> more;
        for (auto entry = m_classesAtLast.cbegin(); entry != m_classesAtLast.cend(); ++entry) {
            if (entry.value() > m_classesAtFirst.value(entry.key()))
                more[entry.key()] = entry.value() - m_classesAtFirst.value(entry.key());
        }
        print("", QStringLiteral("more at the end: ") + asText(more));
    }
    std::printf("%s after %.1f s, %d failures\n", m_failures.isEmpty() ? "PASS" : "FAIL", secondsNow(),
                static_cast<int>(m_failures.size()));
}

} // namespace storm
