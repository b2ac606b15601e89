#include "verdict.h"

#include "support/sanitizers.h"

#include <QtTest>

using namespace storm;

namespace {

using Spoil = void (*)(Evidence &);

/// A minute in which all is well, and hardly more than enough happens.
Evidence soundEvidence()
{
    Evidence sound;
    sound.seconds = 60;
    for (int i = 0; i < 8; ++i)
        sound.samples.append({6.0 * i, 5 * i, 20000000, 80000000, 5000, 900, 40});
    Recovery recovery;
    recovery.readyAfterMs = 700;
    recovery.isReady = true;
    recovery.modules = 13;
    recovery.statusBox = QStringLiteral("READY");
    sound.recoveries = {recovery, recovery, recovery, recovery};
    sound.recoveries[1].wasRefreshLost = true;
    sound.recoveries[1].readyAfterMs = 1900;
    sound.lostSessions = {{250}, {300}, {201}};
    sound.pollsOfCalms = {5};
    sound.isClosed = true;
    sound.ticks = 3000;
    sound.gestures = {{"click", 295}, {"leave", 1}, {"name", 1}, {"pick", 1},
                      {"press", 1},   {"turn", 1},  {"type", 1}};
    sound.sessions = {{Comm_Type::Serial, 1}, {Comm_Type::Ethernet, 7}};
    sound.comparedValues = 800;
    sound.comparisons = 10;
    sound.looksAtChain = {{0, 1}, {1, 1}, {2, 1}};
    sound.looksAtGateway = 1;
    sound.logLines = 3600;
    sound.world.requests = 900;
    sound.world.gatewayLines = 5;
    sound.world.webRequests = 15;
    sound.world.faults = {{"cut", 1},  {"delay", 1},   {"reset", 1},       {"close", 1},
                          {"lose", 1}, {"corrupt", 1}, {"gateway lose", 1}};
    return sound;
}

} // namespace

Q_DECLARE_METATYPE(Spoil)

/// A run passes only if it keeps all that it must.
class TstStormVerdict : public QObject
{
    Q_OBJECT

private slots:
    void aSoundRunPasses();
    void whatIsSpoiledIsTold_data();
    void whatIsSpoiledIsTold();
    void aLongRunNeedsMore_data();
    void aLongRunNeedsMore();
    void manyStallsAreCounted();
    void timeWithoutAProcessorIsTakenOff_data();
    void timeWithoutAProcessorIsTakenOff();
    void theLimitOfARecoveryIsAgreed();
    void aLinkIsMissingUntilASessionWasReadOverIt();
};

void TstStormVerdict::aSoundRunPasses()
{
    QCOMPARE(verdict(soundEvidence()), QStringList());
}

void TstStormVerdict::whatIsSpoiledIsTold_data()
{
    QTest::addColumn<Spoil>("spoil");
    QTest::addColumn<QString>("line");
    const auto add = [](const char *name, Spoil spoil, const char *line) {
        QTest::newRow(name) << spoil << QString::fromUtf8(line);
    };
    add(
        "phase", [](Evidence &e) { e.unfinished = QStringList("phase 1 did not end"); },
        "phase 1 did not end");
    add(
        "difference", [](Evidence &e) { e.differences = QStringList("round 2: row 1 is missing"); },
        "round 2: row 1 is missing");
    add(
        "log", [](Evidence &e) { e.complaints = QStringList("QObject::connect: 1%"); },
        "the log has: QObject::connect: 1%");
    add(
        "dialog", [](Evidence &e) { e.missing = QStringList("versionBox"); },
        "versionBox was not opened and left in all of its ways");
    add(
        "stranger", [](Evidence &e) { e.strangers = QStringList("surpriseBox"); },
        "nobody knows the dialog surpriseBox");
    add(
        "stall",
        [](Evidence &e) {
            Stall stall;
            stall.wholeMs = 130;
            stall.waitedMs = 20;
            stall.during = QStringLiteral("click a");
            e.stalls = {stall};
        },
        "stall: 130.0 ms by the clock, 20.0 ms of them without a processor, 0.0 ms asleep while another of "
        "its threads had none, 0.0 ms taken by the host, 110.0 ms of its own; at work for 0.0 ms; at "
        "\"click a\"");
    add(
        "closing", [](Evidence &e) { e.isClosed = false; },
        "the program did not go when its window was closed");
    add(
        "memory", [](Evidence &e) { ++e.samples.last().topLevels; },
        "41 windows at the end, never more than 40 before");
    add(
        "no memory", [](Evidence &e) { e.samples.clear(); }, "0 samples are too few to tell");
    add(
        "late", [](Evidence &e) { e.recoveries[2].readyAfterMs = 9000; },
        kSlowness == 1
            ? "READY after 9000 ms (0 ms of them without a processor), not 1460; the box reads READY"
            : "READY after 9000 ms (0 ms of them without a processor), not 2360; the box reads READY");
    add(
        "never",
        [](Evidence &e) {
            e.recoveries[3].isReady = false;
            e.recoveries[3].programWaitedMs = 900;
            e.recoveries[3].statusBox = QStringLiteral("OFFLINE");
        },
        kSlowness == 1
            ? "not READY after 700 ms (700 ms of them without a processor), not 1460; the box reads OFFLINE"
            : "not READY after 700 ms (700 ms of them without a processor), not 2360; the box reads OFFLINE");
    add(
        "lost refreshes", [](Evidence &e) { e.recoveries[2].wasRefreshLost = true; },
        "2 of 4 recoveries were later, behind a lost status of a rate");
    add(
        "session", [](Evidence &e) { e.lostSessions = {{120}}; },
        "the session was lost in fair weather, with 120 ms without a processor");
    add(
        "sessions", [](Evidence &e) { e.lostSessions.append(LostSession{400}); },
        "4 sessions were lost in fair weather, not 3 at most");
    add(
        "calm", [](Evidence &e) { e.pollsOfCalms.append(4); }, "only 4 polls in a calm of 1600 ms");
    add(
        "no calm", [](Evidence &e) { e.pollsOfCalms.clear(); },
        "only 0 calm spells that were watched, not 1");
    add(
        "turns", [](Evidence &e) { e.ticks = 700; },
        kSlowness == 1 ? "only 700 turns of the event loop, not 3000"
                       : "only 700 turns of the event loop, not 750");
    add(
        "gestures", [](Evidence &e) { e.gestures["click"] = 4; },
        kSlowness == 1 ? "only 10 gestures, not 300" : "only 10 gestures, not 75");
    add(
        "kind of gesture", [](Evidence &e) { e.gestures.remove("turn"); }, "only 0 gestures \"turn\", not 1");
    add(
        "sessions read", [](Evidence &e) { e.sessions[Comm_Type::Ethernet] = 6; },
        "only 7 sessions read, not 8");
    add(
        "COM port",
        [](Evidence &e) {
            e.sessions = {{Comm_Type::Ethernet, 8}};
        },
        "only 0 sessions read over a COM port, not 1");
    add(
        "TCP",
        [](Evidence &e) {
            e.sessions = {{Comm_Type::Serial, 8}};
        },
        "only 0 sessions read over TCP, not 1");
    add(
        "recoveries", [](Evidence &e) { e.recoveries.removeLast(); }, "only 3 recoveries, not 4");
    add(
        "values", [](Evidence &e) { e.comparedValues = 799; }, "only 799 values compared, not 800");
    add(
        "lines of the log", [](Evidence &e) { e.logLines = 800; },
        kSlowness == 1 ? "only 800 lines of the log, not 3600" : "only 800 lines of the log, not 900");
    add(
        "requests", [](Evidence &e) { e.world.requests = 200; },
        kSlowness == 1 ? "only 200 requests to the devices, not 900"
                       : "only 200 requests to the devices, not 225");
    add(
        "gateway", [](Evidence &e) { e.world.gatewayLines = 4; }, "only 4 lines to the gateway, not 5");
    add(
        "web", [](Evidence &e) { e.world.webRequests = 14; }, "only 14 web requests, not 15");
    add(
        "chain", [](Evidence &e) { e.looksAtChain.remove(2); },
        "only 0 looks at all values of chain 2, not 1");
    add(
        "gateway's panel", [](Evidence &e) { e.looksAtGateway = 0; },
        "only 0 looks at the gateway's panel, not 1");
    add(
        "fault", [](Evidence &e) { e.world.faults.remove("reset"); }, "the weather never had: reset");
}

void TstStormVerdict::whatIsSpoiledIsTold()
{
    QFETCH(Spoil, spoil);
    QFETCH(QString, line);
    Evidence evidence = soundEvidence();
    spoil(evidence);
    const QStringList lines = verdict(evidence);
    QVERIFY2(lines.contains(line), qPrintable(lines.join(QLatin1Char('\n'))));
}

/// Ten minutes with ten times as much, but for one thing.
void TstStormVerdict::aLongRunNeedsMore_data()
{
    QTest::addColumn<Spoil>("spoil");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("all") << Spoil([](Evidence &) {}) << QStringList();
    QTest::newRow("COM port") << Spoil([](Evidence &e) {
        e.sessions = {{Comm_Type::Serial, 9}, {Comm_Type::Ethernet, 71}};
    }) << QStringList("only 9 sessions read over a COM port, not 10");
    QTest::newRow("kind of gesture") << Spoil([](Evidence &e) { e.gestures["pick"] = 9; })
                                     << QStringList("only 9 gestures \"pick\", not 10");
    QTest::newRow("calms") << Spoil([](Evidence &e) { e.pollsOfCalms.resize(9); })
                           << QStringList("only 9 calm spells that were watched, not 10");
    QTest::newRow("a chain") << Spoil([](Evidence &e) { e.looksAtChain[1] = 4; })
                             << QStringList("only 4 looks at all values of chain 1, not 5");
    QTest::newRow("sessions lost, for want of a processor")
        << Spoil([](Evidence &e) { e.lostSessions.fill(LostSession{201}, 30); }) << QStringList();
}

void TstStormVerdict::aLongRunNeedsMore()
{
    QFETCH(Spoil, spoil);
    QFETCH(QStringList, lines);
    constexpr int kTimes = 10;
    Evidence evidence = soundEvidence();
    evidence.seconds *= kTimes;
    for (int &count : evidence.gestures)
        count *= kTimes;
    for (int &count : evidence.sessions)
        count *= kTimes;
    for (int &count : evidence.looksAtChain)
        count *= kTimes;
    evidence.pollsOfCalms = QVector<int>(kTimes, 5);
    const QVector<Recovery> recoveries = evidence.recoveries;
    for (int i = 1; i < kTimes; ++i)
        evidence.recoveries += recoveries;
    evidence.ticks *= kTimes;
    evidence.logLines *= kTimes;
    evidence.world.requests *= kTimes;
    evidence.world.gatewayLines *= kTimes;
    evidence.world.webRequests *= kTimes;
    spoil(evidence);
    QCOMPARE(verdict(evidence), lines);
}

void TstStormVerdict::manyStallsAreCounted()
{
    Evidence evidence = soundEvidence();
    evidence.stalls.resize(12);
    const QStringList lines = verdict(evidence);
    QCOMPARE(lines.size(), 11);
    QCOMPARE(lines.constLast(), "12 stalls in all");
}

void TstStormVerdict::timeWithoutAProcessorIsTakenOff_data()
{
    QTest::addColumn<double>("whole");
    QTest::addColumn<double>("program");
    QTest::addColumn<double>("world");
    QTest::addColumn<double>("own");
    QTest::newRow("none") << 1500.0 << 0.0 << 0.0 << 1500.0;
    QTest::newRow("the program") << 1500.0 << 120.0 << 0.0 << 1380.0;
    QTest::newRow("the devices") << 1500.0 << 0.0 << 30.0 << 1470.0;
    QTest::newRow("both, at once perhaps") << 1500.0 << 120.0 << 30.0 << 1380.0;
    QTest::newRow("more than there was") << 100.0 << 80.0 << 110.0 << 0.0;
}

void TstStormVerdict::timeWithoutAProcessorIsTakenOff()
{
    QFETCH(double, whole);
    QFETCH(double, program);
    QFETCH(double, world);
    QFETCH(double, own);
    QCOMPARE(ownMs(whole, program, world), own);
    Recovery recovery;
    recovery.readyAfterMs = whole;
    recovery.programWaitedMs = program;
    recovery.worldWaitedMs = world;
    QCOMPARE(recovery.ownMs(), own);
}

void TstStormVerdict::theLimitOfARecoveryIsAgreed()
{
    QCOMPARE(recoveryLimitMs(0), 1160.0 + 40 * kSlowness);
    QCOMPARE(recoveryLimitMs(13), 1160.0 + 300 * kSlowness);
    QCOMPARE(lostRefreshMs(), 760.0);
    QCOMPARE(calmMs(), 1600);
    QCOMPARE(stallLimitMs(), 100.0 * kSlowness);
    Recovery recovery;
    recovery.isReady = true;
    recovery.readyAfterMs = recoveryLimitMs(0);
    QCOMPARE(complaint(recovery), QString());
    recovery.readyAfterMs += 1;
    QVERIFY(!complaint(recovery).isEmpty());
    recovery.worldWaitedMs = 1;
    QCOMPARE(complaint(recovery), QString());
    recovery.readyAfterMs += lostRefreshMs();
    QVERIFY(!complaint(recovery).isEmpty());
    recovery.wasRefreshLost = true;
    QCOMPARE(complaint(recovery), QString());
}

void TstStormVerdict::aLinkIsMissingUntilASessionWasReadOverIt()
{
    constexpr auto kSerial = Comm_Type::Serial;
    constexpr auto kTcp = Comm_Type::Ethernet;
    QVERIFY(missingLink({}, 5) == kSerial);
    QVERIFY(missingLink({{kTcp, 4}}, 5) == kSerial);
    QVERIFY(missingLink({{kSerial, 2}}, 5) == kTcp);
    QVERIFY(!missingLink({{kSerial, 1}, {kTcp, 1}}, 59));
    QVERIFY(missingLink({{kSerial, 1}, {kTcp, 9}}, 60) == kSerial);
    QVERIFY(missingLink({{kSerial, 9}, {kTcp, 9}}, 570) == kSerial);
    QVERIFY(!missingLink({{kSerial, 10}, {kTcp, 10}}, 570));
}

QTEST_GUILESS_MAIN(TstStormVerdict)

#include "tst_stormverdict.moc"
