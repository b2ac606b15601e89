#include "storm.h"

#include <algorithm>
#include <cstdio>

namespace storm {

namespace {

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

/// Of those that no lost status made longer.
double longestMs(const QVector<Recovery> &recoveries)
{
    double longest = 0;
    for (const Recovery &recovery : recoveries) {
        if (!recovery.wasRefreshLost)
            longest = std::max(longest, recovery.ownMs());
    }
    return longest;
}

int laterCount(const QVector<Recovery> &recoveries)
{
    return static_cast<int>(std::count_if(recoveries.cbegin(), recoveries.cend(),
                                          [](const Recovery &recovery) { return recovery.wasRefreshLost; }));
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

void Storm::report() const
{
    for (const QString &line : m_verdict)
        print("FAILURE", line);
    const WorldCounts &counts = m_evidence.world;
    print("gestures", QStringLiteral("%1 in %2 acts: %3")
                          .arg(m_operator->gestureCount())
                          .arg(m_operator->actCount())
                          .arg(asText(m_operator->gesturesByKind())));
    print("dialogs", QStringLiteral("%1 opened; all of them within %2 s")
                         .arg(m_book.openings())
                         .arg(m_tourSeconds, 0, 'f', 1));
    for (const QString &line : m_book.report())
        print("", line);
    print("sessions", QStringLiteral("%1 begun, %2 read to the end, %3 of them over a COM port; %4 requests, "
                                     "%5 lines to the gateway, %6 web requests")
                          .arg(m_program->sessionsBegun())
                          .arg(m_program->sessionsRead())
                          .arg(m_evidence.sessions.value(Comm_Type::Serial))
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
              .arg(m_evidence.recoveries.size())
              .arg(longestMs(m_evidence.recoveries), 0, 'f', 0)
              .arg(recoveryLimitMs(14), 0, 'f', 0)
              .arg(m_longestWalkMs, 0, 'f', 0)
              .arg(m_evidence.lostSessions.size())
              .arg(laterCount(m_evidence.recoveries)));
    print("calm",
          QStringLiteral("%1 times watched for %2 ms").arg(m_evidence.pollsOfCalms.size()).arg(calmMs()));
    print("values", QStringLiteral("%1 compared in %2 looks; the gateway's panel in %3 more")
                        .arg(m_evidence.comparedValues)
                        .arg(m_evidence.comparisons)
                        .arg(m_evidence.looksAtGateway));
    if (m_evidence.samples.size() > 2) {
        const Trend bytes = trendOf(m_evidence.samples, &MemorySample::bytes);
        const Trend objects = trendOf(m_evidence.samples, &MemorySample::objects);
        print("memory",
              QStringLiteral("%1 samples: %2 bytes a session (error %3), %4 objects a session (error %5)")
                  .arg(m_evidence.samples.size())
                  .arg(bytes.perSession, 0, 'f', 0)
                  .arg(bytes.error, 0, 'f', 0)
                  .arg(objects.perSession, 0, 'f', 2)
                  .arg(objects.error, 0, 'f', 2));
        print("", asText(m_evidence.samples.constFirst()));
        print("", asText(m_evidence.samples.constLast()));
        QMap<QString, int> more;
        for (auto entry = m_classesAtLast.cbegin(); entry != m_classesAtLast.cend(); ++entry) {
            if (entry.value() > m_classesAtFirst.value(entry.key()))
                more[entry.key()] = entry.value() - m_classesAtFirst.value(entry.key());
        }
        print("", QStringLiteral("more at the end: ") + asText(more));
    }
    std::printf("%s after %.1f s, %d failures\n", m_verdict.isEmpty() ? "PASS" : "FAIL", m_evidence.seconds,
                static_cast<int>(m_verdict.size()));
}

} // namespace storm
