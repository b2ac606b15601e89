#include "storm.h"

#include "support/kernelclocks.h"
#include "support/testcertificates.h"

#include <QApplication>
#include <cstdio>

namespace storm {

namespace {

constexpr int kRoundMs = 3500;
constexpr int kAftermathMs = 2400; ///< longer than the longest pending display
constexpr int kAwayMs = 250;
constexpr int kLookEveryMs = 4;
constexpr int kSettleMs = 120;
constexpr int kGiveUpMs = 15000;
constexpr double kNsPerMs = 1e6;
constexpr int kLongestTourMs = 100000;
constexpr int kRoundsToASessionLook = 3;
constexpr int kRoundsToACalm = 3;
constexpr int kRoundsToAnotherChain = 3;
constexpr int kMismatchChain = 2;
const QString kOfflineBox = QStringLiteral("notSavedBox");
const QString kMismatchBox = QStringLiteral("WarningBox");

} // namespace

Storm::Storm(const Options &options, LogWatch &log, const CertifiedKey &identity)
    : m_options(options)
    , m_log(log)
    , m_addresses(addressesOfThisProcess())
    , m_meter(stallLimitMs())
    , m_chance(options.seed)
{
    const auto seed = [this] { return static_cast<quint32>(m_chance.number(1, 1 << 30)); };
    m_phaseTimer.setSingleShot(true);
    m_phaseTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_lookTimer, &QTimer::timeout, this, &Storm::lookWhetherReady);
    m_program = std::make_unique<Program>(m_addresses);
    m_world = std::make_unique<World>(m_addresses, m_program->portFolder(), seed(), identity);
    m_weather = std::make_unique<Weather>(*m_world, seed());
    m_operator = std::make_unique<Operator>(*m_program, m_book, m_meter, seed());
    m_operator->setVerbose(options.isVerbose);
    connect(m_operator.get(), &Operator::mismatchWanted, this, [this] { m_mismatchWanted = true; });
}

Storm::~Storm() = default;

/// Tells at once what the verdict will tell too.
void Storm::notice(const QString &text) const
{
    if (!text.isEmpty())
        std::printf("at %.1f s: %s\n", secondsNow(), qPrintable(text));
}

/// The tour takes long at times: then the storm goes on until there is enough to judge the memory by.
bool Storm::isTimeUp() const
{
    constexpr double kMostTimes = 3;
    const double times = secondsNow() / m_options.seconds;
    return times >= 1 && (m_evidence.samples.size() >= MemoryRule().fewest || times >= kMostTimes);
}

void Storm::after(int ms, void (Storm::*next)())
{
    m_phaseTimer.disconnect(this);
    connect(&m_phaseTimer, &QTimer::timeout, this, next);
    m_phaseTimer.start(ms);
}

void Storm::begin()
{
    m_clock.start();
    m_world->start();
    m_program->start(m_world->gatewayPort(), m_world->webPort());
    m_program->fillDialogue();
    m_meter.start();
    m_phase = Phase::TourOffline;
    connect(m_operator.get(), &Operator::done, this, &Storm::goOn);
    m_operator->visit({kOfflineBox}); // only a program that has read nothing shows it
    after(kLongestTourMs, &Storm::giveUp);
}

/// The operator has done what the phase asked for.
void Storm::goOn()
{
    switch (m_phase) {
    case Phase::TourOffline:
        startTour();
        break;
    case Phase::Tour:
        startMismatch();
        break;
    case Phase::Mismatch:
        endTour();
        break;
    case Phase::Leaving:
        gesturesAreOver();
        break;
    case Phase::Connecting:
        startCalm();
        break;
    case Phase::Closing:
        askForCounts();
        break;
    case Phase::Gestures:
    case Phase::Aftermath:
    case Phase::Outage:
    case Phase::Recovery:
    case Phase::Looking:
    case Phase::Calm:
    case Phase::Over:
        break;
    }
}

void Storm::startTour()
{
    m_phase = Phase::Tour;
    m_weather->setChain(0);
    QStringList names;
    for (const DialogKind &kind : dialogKinds()) {
        if (kind.name != kMismatchBox && kind.name != kOfflineBox)
            names.append(kind.name);
    }
    m_operator->visit(names);
    after(kLongestTourMs, &Storm::giveUp);
}

void Storm::startMismatch()
{
    m_phase = Phase::Mismatch;
    m_weather->setChain(kMismatchChain);
    m_operator->visit({kMismatchBox});
    after(kLongestTourMs, &Storm::giveUp);
}

void Storm::endTour()
{
    m_tourSeconds = secondsNow();
    m_weather->setChain(0);
    startRound();
}

void Storm::startRound()
{
    ++m_round;
    m_phase = Phase::Gestures;
    if (m_mismatchWanted)
        m_weather->setChain(kMismatchChain);
    m_mismatchWanted = false;
    m_weather->setForeignReplies(m_round % kRoundsToASessionLook != 0);
    m_weather->start();
    m_operator->work();
    after(kRoundMs, &Storm::stopGestures);
}

void Storm::stopGestures()
{
    m_isLast = isTimeUp();
    m_phase = Phase::Leaving;
    m_operator->leaveAll(missingLink(m_program->sessionsByLink(), secondsNow()));
    after(kGiveUpMs, &Storm::giveUp);
}

void Storm::gesturesAreOver()
{
    m_sessionsAtOutage = 0; // any session will do
    if (m_round % kRoundsToASessionLook == 0) {
        m_phase = Phase::Aftermath;
        after(kAftermathMs, &Storm::endOutage);
        m_reach = Comparison::Reach::Session;
    } else {
        startOutage();
    }
}

/// Something that ends the session for certain.
void Storm::startOutage()
{
    m_phase = Phase::Outage;
    m_reach = Comparison::Reach::Whole;
    m_sessionsAtOutage = m_program->sessionsRead();
    const int longer = static_cast<int>(stormPeriods().comm.count()) + m_chance.number(20, 300);
    if (m_chance.happens(0.4)) {
        m_weather->takeDeviceAway();
        after(kAwayMs, &Storm::endOutage);
        return;
    }
    const QStringList faults{QStringLiteral("lose"),
                             QStringLiteral("silence"),
                             QStringLiteral("close ms=50"),
                             QStringLiteral("corrupt part=crc"),
                             QStringLiteral("originator value=7"),
                             QStringLiteral("reset ms=50")};
    m_weather->hold(m_chance.oneOf(faults));
    after(longer, &Storm::endOutage);
}

void Storm::endOutage()
{
    recover(m_reach);
}

void Storm::recover(Comparison::Reach reach)
{
    m_phase = Phase::Recovery;
    m_reach = reach;
    // The first chain mostly, so that samples of the memory can be compared.
    const bool another = m_round % kRoundsToAnotherChain == kRoundsToAnotherChain - 1 && !m_isLast;
    const int wanted = another ? 1 + m_round / kRoundsToAnotherChain % (stormChains().size() - 1) : 0;
    if (reach == Comparison::Reach::Whole && m_weather->chain() != wanted)
        m_weather->setChain(wanted);
    m_weather->clear();
    startRecovery();
}

void Storm::startRecovery()
{
    m_deniedAtRecovery = {};
    m_world->look(this, [this](const Snapshot &snapshot) { m_worldWaitedAtRecovery = snapshot.waitedNs; });
    m_recovery.start();
    m_refreshesAtRecovery = m_program->lateRefreshes();
    m_pollsAtRecovery = m_program->polls();
    m_lookTimer.start(kLookEveryMs);
}

void Storm::lookWhetherReady()
{
    m_times.readyAfterMs = static_cast<double>(m_recovery.nsecsElapsed()) / kNsPerMs;
    m_times.isReady = m_program->isReady() && m_program->polls() > m_pollsAtRecovery + 1 &&
                      m_program->sessionsRead() > m_sessionsAtOutage;
    if (!m_times.isReady && m_times.readyAfterMs < kGiveUpMs)
        return;
    m_lookTimer.stop();
    m_deniedAtReady = {};
    m_world->look(this, [this](const Snapshot &snapshot) {
        m_worldWaitedAtReady = snapshot.waitedNs;
        noteRecovery();
    });
    m_times.modules = m_program->rowCount();
    m_times.wasRefreshLost = m_program->lateRefreshes() > m_refreshesAtRecovery;
    m_times.statusBox = m_program->statusBox();
    m_longestWalkMs = qMax(m_longestWalkMs, m_program->walkMs());
    m_slatesAtReady = m_program->cleanSlates();
    m_phase = Phase::Looking;
    after(kSettleMs, &Storm::look);
}

/// What came behind READY does not belong to it.
void Storm::noteRecovery()
{
    m_times.programWaitedMs =
        static_cast<double>(kernelclocks::deniedNs(m_deniedAtRecovery, m_deniedAtReady)) / kNsPerMs;
    m_times.worldWaitedMs = static_cast<double>(m_worldWaitedAtReady - m_worldWaitedAtRecovery) / kNsPerMs;
    m_evidence.recoveries.append(m_times);
    notice(complaint(m_times));
}

void Storm::look()
{
    m_world->look(this, [this](const Snapshot &snapshot) {
        if (isSessionLost(snapshot)) {
            m_phase = Phase::Recovery;
            startRecovery();
            return;
        }
        compare(snapshot);
    });
}

/// Whether the session ended since it was READY, for want of a processor, although nothing goes wrong any
/// more. READY is awaited anew then.
bool Storm::isSessionLost(const Snapshot &snapshot)
{
    if (m_program->cleanSlates() == m_slatesAtReady)
        return false;
    const qint64 waitedNs =
        qMax(kernelclocks::deniedNs(m_deniedAtReady, {}), snapshot.waitedNs - m_worldWaitedAtReady);
    m_evidence.lostSessions.append(LostSession{static_cast<double>(waitedNs) / kNsPerMs});
    const QStringList lines = complaints(m_evidence.lostSessions, secondsNow());
    notice(lines.join(QStringLiteral("; ")));
    return lines.isEmpty();
}

void Storm::compareNow(const Snapshot &snapshot)
{
    const Unmeasured unmeasured(m_meter);
    Comparison comparison(snapshot, m_reach);
    comparison.compare(*m_program);
    ++m_evidence.comparisons;
    m_evidence.comparedValues += comparison.valueCount();
    if (m_reach == Comparison::Reach::Whole)
        ++m_evidence.looksAtChain[m_weather->chain()];
    note(comparison);
}

/// In a calm in which it was asked for its state, which did not change. A panel whose greeting got lost asks
/// for nothing.
void Storm::compareGateway(const Snapshot &snapshot)
{
    const Unmeasured unmeasured(m_meter);
    const QWidget *panel = connectedPanel();
    if (!panel || !m_gatewayAtCalm || snapshot.gatewayLines == m_gatewayAtCalm->gatewayLines ||
        !isShownAlike(m_gatewayAtCalm->gateway, snapshot.gateway))
        return;
    Comparison comparison(snapshot, m_reach);
    comparison.compareGateway(*panel);
    ++m_evidence.looksAtGateway;
    note(comparison);
}

void Storm::note(const Comparison &comparison)
{
    constexpr int kTold = 6;
    for (const QString &difference : comparison.differences().mid(0, kTold)) {
        m_evidence.differences.append(
            QStringLiteral("round %1: %2").arg(QString::number(m_round), difference));
        notice(difference);
    }
}

void Storm::compare(const Snapshot &snapshot)
{
    compareNow(snapshot);
    if (m_reach == Comparison::Reach::Session) {
        startOutage();
        return;
    }
    if (m_weather->chain() == 0)
        sample();
    if (m_round % kRoundsToACalm == 0)
        watchCalm();
    else
        endRound();
}

/// The session that was just READY goes on in fair weather.
void Storm::watchCalm()
{
    if (m_evidence.looksAtGateway > 0) {
        startCalm();
        return;
    }
    m_phase = Phase::Connecting;
    m_operator->connectPanel();
    after(kGiveUpMs, &Storm::giveUp);
}

void Storm::startCalm()
{
    m_phase = Phase::Calm;
    m_pollsAtCalm = m_program->polls();
    m_gatewayAtCalm.reset();
    if (connectedPanel())
        m_world->look(this, [this](const Snapshot &snapshot) { m_gatewayAtCalm = snapshot; });
    after(calmMs(), &Storm::endCalm);
}

void Storm::endCalm()
{
    m_world->look(this, [this](const Snapshot &snapshot) {
        if (!isSessionLost(snapshot) && m_program->cleanSlates() == m_slatesAtReady) {
            m_evidence.pollsOfCalms.append(m_program->polls() - m_pollsAtCalm);
            compareNow(snapshot);
            compareGateway(snapshot);
        }
        endRound();
    });
}

void Storm::endRound()
{
    if (m_isLast)
        end();
    else
        startRound();
}

void Storm::sample()
{
    const Unmeasured unmeasured(m_meter);
    MemorySample sample;
    sample.seconds = secondsNow();
    sample.sessions = m_program->sessionsBegun();
    sample.bytes = allocatedBytes();
    sample.resident = residentBytes();
    sample.objects = objectcount::now();
    sample.widgets = static_cast<int>(QApplication::allWidgets().size());
    sample.topLevels = static_cast<int>(QApplication::topLevelWidgets().size());
    m_evidence.samples.append(sample);
    m_classesAtLast = objectcount::byClass();
    if (m_evidence.samples.size() == 1)
        m_classesAtFirst = m_classesAtLast;
    if (m_options.isVerbose)
        std::printf("%s\n", qPrintable(asText(sample)));
}

void Storm::giveUp()
{
    m_evidence.unfinished.append(QStringLiteral("phase %1 did not end; still missing: %2")
                                     .arg(static_cast<int>(m_phase))
                                     .arg(m_book.missing().join(QStringLiteral(", "))));
    notice(m_evidence.unfinished.constLast());
    end();
}

void Storm::end()
{
    m_phase = Phase::Over;
    m_phaseTimer.stop();
    m_lookTimer.stop();
    m_operator->rest();
    m_weather->takeDeviceAway();
    after(kAwayMs, &Storm::closeSomewhere);
}

/// The chain comes back, and the operator closes the program before, in or behind the walk.
void Storm::closeSomewhere()
{
    m_weather->clear();
    constexpr int kUntilItIsRead = 700;
    after(m_chance.number(0, kUntilItIsRead), &Storm::leaveDialogs);
}

/// A dialog that came by itself, or that the operator did not leave, keeps him from the main window.
void Storm::leaveDialogs()
{
    if (!QApplication::activeModalWidget()) {
        askForCounts();
        return;
    }
    m_phase = Phase::Closing;
    m_operator->leaveDialogs();
    after(kGiveUpMs, &Storm::askForCounts);
}

void Storm::askForCounts()
{
    m_phase = Phase::Over;
    m_phaseTimer.stop();
    m_operator->rest();
    m_world->count(this, [this](const WorldCounts &counts) { finish(counts); });
}

void Storm::finish(const WorldCounts &counts)
{
    // In the event loop of a modal dialog the program cannot end.
    m_evidence.isClosed = !QApplication::activeModalWidget() && m_program->end();
    QTimer::singleShot(0, this, [this, counts] {
        collect(counts);
        m_verdict = verdict(m_evidence);
        report();
        emit finished();
    });
}

void Storm::collect(const WorldCounts &counts)
{
    m_evidence.seconds = secondsNow();
    m_evidence.complaints = m_log.complaints();
    m_evidence.logLines = m_log.lineCount();
    m_evidence.missing = m_book.missing();
    m_evidence.strangers = m_book.strangers();
    m_evidence.stalls = m_meter.violations();
    m_evidence.ticks = m_meter.ticks();
    m_evidence.gestures = m_operator->gesturesByKind();
    m_evidence.sessions = m_program->sessionsByLink();
    m_evidence.world = counts;
}

} // namespace storm
