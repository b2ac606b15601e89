#include "sessionfixture.h"

#include <QtTest>

namespace {

const QByteArray kSystemRequest = "0100000001";
const QByteArray kFastSystemRequest = "0800000000";
const QByteArray kFastModuleRequest = "1000000000";

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

} // namespace

/// The session on the wire: start, walk, cycle, time-outs.
class TstSession : public QObject
{
    Q_OBJECT

private slots:
    void init() { s = std::make_unique<SessionFixture>(); }
    void cleanup() { s.reset(); }

    void wholeFramesOfAStart();
    void wholeFrameOfAFilterCommand();
    void counterRunsFrom1To255AndOnFrom0();
    void counterRunsOnAcrossAReset();
    void walkOverAllModulesAndThePowerModule();
    void walkWithoutAPowerModuleEndsWithAWarning();
    void walkOverNoModules();
    void walkOver128Modules();
    void walkWithAClaimOf65535Modules();
    void endOfTheWalkStartsTheCycle();
    void fourthPollAsksForTheModules();
    void pollingPatternRunsOnAcrossAReset();
    void nothingIsSentUntilAReplyCame();
    void semaphoreIsDownAtFirst();
    void resetDoesNotRaiseTheSemaphore();
    void pollingAloneMakesTheStatusAvailable();
    void silenceBeforeTheWalkStartsOverEachTime();
    void silenceDuringTheWalkStartsOver();
    void everyStepOfTheWalkRestartsItsTime();
    void silenceInTheCycleStartsOver();
    void repliesHoldTheCommTimeoutOff();
    void rateChangeComesBackWithoutAWalk();
    void repliesDoNotHoldTheCommTimeoutOffWhileARateChangeWaits();
    void rateChangeLostInAResetHealsAfterOneTimeout();
    void queuedWorkIsLostInAReset();
    void resetFlagInEachState_data();
    void resetFlagInEachState();
    void stateCanBeSet();
    void pendingRequestIsAskedAgainThenStartsOver();
    void periodsAreTheAgreedOnes();

private:
    QStringList walkEvents(const QByteArray &types, bool withPower);

    std::unique_ptr<SessionFixture> s;
};

void TstSession::wholeFramesOfAStart()
{
    s->comm->OpenCommunicationChannel(SessionFixture::serialSettings());
    s->reply(device::systemStatus({}, true));
    s->reply(device::moduleStatus(0, 100));
    s->reply(device::powerStatus());
    s->time.advance(500);
    QCOMPARE(s->serial->frames,
             QByteArrayList({
                 QByteArray::fromHex("80818283010143500000000000000000050091f30100000001ec2b"),
                 QByteArray::fromHex("80818283010243500000000000000000050092f312000000001257"),
                 QByteArray::fromHex("80818283010343500000000000000000050093f31200000081695b"),
                 QByteArray::fromHex("80818283010443500000000000000000050094f308000000006909"),
             }));
}

void TstSession::wholeFrameOfAFilterCommand()
{
    QByteArray frame;
    s->comm->PackDatagram(0x43, QByteArray::fromHex("26000000033235303000"), frame);
    QCOMPARE(frame.toHex(), QByteArray("808182830101435000000000000000000a0096f326000000033235303000f30a"));
}

void TstSession::counterRunsFrom1To255AndOnFrom0()
{
    QByteArray frame;
    for (int i = 1; i <= 600; ++i) {
        s->comm->PackDatagram(0x43, QByteArray::fromHex("1000000000"), frame);
        QCOMPARE(int(quint8(frame.at(5))), i % 256);
        if (i == 255)
            QCOMPARE(frame.toHex(), QByteArray("8081828301ff4350000000000000000005008ff410000000000432"));
        if (i == 256)
            QCOMPARE(frame.toHex(), QByteArray("80818283010043500000000000000000050090f310000000001418"));
    }
}

void TstSession::counterRunsOnAcrossAReset()
{
    s->comm->OpenCommunicationChannel(SessionFixture::serialSettings());
    s->comm->Slot_CommTimeout();
    s->comm->OpenCommunicationChannel(SessionFixture::serialSettings());
    QCOMPARE(s->serial->frames.size(), 3);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(int(s->serial->frames.at(i).at(5)), i + 1);
}

/// Brings a new session through its walk, with a device that answers at once.
QStringList TstSession::walkEvents(const QByteArray &types, bool withPower)
{
    s->serial->script = device::chain(types, withPower);
    s->comm->OpenCommunicationChannel(SessionFixture::serialSettings());
    s->answerUntilCyclic();
    return s->takeEvents();
}

void TstSession::walkOverAllModulesAndThePowerModule()
{
    const QStringList events = walkEvents(QByteArray::fromHex("010209"), true);
    QCOMPARE(s->comm->state(), SessionState::Cyclic);
    QCOMPARE(s->sent(), (QList<QByteArray>{kSystemRequest, "1200000000", "1200000001", "1200000002",
                                           "1200000003", "1200000081"}));
    QCOMPARE(events.filter(text("ModuleRead")),
             QStringList({text("ModuleRead(1)"), text("ModuleRead(2)"), text("ModuleRead(3)"),
                          text("ModuleRead(129)")}));
    QCOMPARE(events.count(text("StaticModuleStatus")), 4);
    QCOMPARE(events.count(text("StaticPowerStatus")), 1);
    QCOMPARE(s->log.lines().filter(QRegularExpression(text("^NxtModuleToInit"))),
             QStringList({text("NxtModuleToInit : 1  nModulesToInit : 4"),
                          text("NxtModuleToInit : 2  nModulesToInit : 4"),
                          text("NxtModuleToInit : 3  nModulesToInit : 4"),
                          text("NxtModuleToInit : 129  nModulesToInit : 4")}));
    QVERIFY(s->log.contains(text("****Fetch next Module Power*****")));
    QVERIFY(!s->log.containsText(text("**Warning Power Module type")));
}

void TstSession::walkWithoutAPowerModuleEndsWithAWarning()
{
    walkEvents(QByteArray::fromHex("01"), false);
    QCOMPARE(s->comm->state(), SessionState::Cyclic);
    QCOMPARE(s->sent(), (QList<QByteArray>{kSystemRequest, "1200000000", "1200000001"}));
    QVERIFY(s->log.contains(text("**Warning Power Module type incorrectly recieved or not present ")));
}

void TstSession::walkOverNoModules()
{
    walkEvents({}, true);
    QCOMPARE(s->comm->state(), SessionState::Cyclic);
    QCOMPARE(s->sent(), (QList<QByteArray>{kSystemRequest, "1200000000", "1200000081"}));
    walkEvents({}, false);
    QCOMPARE(s->comm->state(), SessionState::Cyclic);
    QCOMPARE(s->sent(), (QList<QByteArray>{kSystemRequest, "1200000000"}));
}

void TstSession::walkOver128Modules()
{
    walkEvents(QByteArray(128, 2), true);
    QCOMPARE(s->comm->state(), SessionState::Cyclic);
    const auto sent = s->sent();
    QCOMPARE(sent.size(), 1 + 129 + 1);
    QCOMPARE(sent.at(129), QByteArray("1200000080"));
    QCOMPARE(sent.at(130), QByteArray("1200000081"));
}

void TstSession::walkWithAClaimOf65535Modules()
{
    s->bringTo(SessionState::SystemStatusAwaited);
    s->reply(device::systemStatusClaiming(65535, {}, true));
    s->reply(device::moduleStatus(0, 100));
    QCOMPARE(s->comm->state(), SessionState::Cyclic);
    QVERIFY(s->takeEvents().contains(
        text("DebugMsg(State Initialized,Cyclic Commands started NextModIndex 1 ModToInitIndex 0)")));
}

void TstSession::endOfTheWalkStartsTheCycle()
{
    s->bringTo(SessionState::ModuleWalk, {});
    s->reply(device::moduleStatus(0, 100));
    s->forget();
    s->reply(device::powerStatus());
    QCOMPARE(s->takeEvents(),
             QStringList({text("packetRecvd"), text("FastSystemStatus"), text("StaticPowerStatus"),
                          text("stateInitialized"),
                          text("DebugMsg(State Initialized,Cyclic Commands started NextModIndex 130 "
                               "ModToInitIndex 1)"),
                          text("RcvPayload")}));
    QVERIFY(s->log.contains(text("Initialized State NxtModuleToInit : 130 1")));
    QVERIFY(s->log.contains(text(">>>>>Static module Status ID 120")));
    s->time.advance(499);
    QCOMPARE(s->sent(), QList<QByteArray>());
    s->time.advance(1);
    QCOMPARE(s->sent(), QList<QByteArray>{kFastSystemRequest});
}

void TstSession::fourthPollAsksForTheModules()
{
    s->bringTo(SessionState::Cyclic);
    s->serial->script = device::chain(QByteArray(1, 1), true);
    s->time.advance(4000);
    QCOMPARE(s->sent(), (QList<QByteArray>{kFastSystemRequest, kFastSystemRequest, kFastSystemRequest,
                                           kFastModuleRequest, kFastSystemRequest, kFastSystemRequest,
                                           kFastSystemRequest, kFastModuleRequest}));
}

void TstSession::pollingPatternRunsOnAcrossAReset()
{
    s->bringTo(SessionState::Cyclic);
    for (int poll = 0; poll < 2; ++poll) {
        s->time.advance(500);
        s->endTurn();
    }
    QCOMPARE(s->sent().size(), 2);
    s->bringTo(SessionState::Cyclic);
    s->time.advance(500);
    s->endTurn();
    s->time.advance(500);
    QCOMPARE(s->sent(), (QList<QByteArray>{kFastSystemRequest, kFastModuleRequest}));
}

void TstSession::nothingIsSentUntilAReplyCame()
{
    s->bringTo(SessionState::Cyclic);
    s->time.advance(500);
    QCOMPARE(s->sent().size(), 1);
    s->comm->queueModuleStatus(1);
    s->time.advance(1500);
    QCOMPARE(s->sent(), QList<QByteArray>());
    s->endTurn();
    QCOMPARE(s->sent(), QList<QByteArray>()); // waits for the trigger
    s->time.advance(499);
    QCOMPARE(s->sent(), QList<QByteArray>());
    s->time.advance(1);
    QCOMPARE(s->sent(), QList<QByteArray>{"1200000001"});
}

void TstSession::semaphoreIsDownAtFirst()
{
    s->bringTo(SessionState::SystemStatusAwaited);
    s->comm->Slot_CyclicCommTrigger();
    QCOMPARE(s->sent(), QList<QByteArray>());
    s->endTurn();
    s->comm->Slot_CyclicCommTrigger();
    QCOMPARE(s->sent(), QList<QByteArray>{kFastSystemRequest});
    QVERIFY(s->log.contains(text("Semaphore Consumed")));
}

void TstSession::resetDoesNotRaiseTheSemaphore()
{
    s->bringTo(SessionState::Cyclic);
    s->time.advance(500);
    s->comm->Slot_CommTimeout();
    s->forget();
    s->comm->Slot_CyclicCommTrigger();
    QCOMPARE(s->sent(), QList<QByteArray>());
    // Nor does it take it down.
    s->endTurn();
    s->comm->Slot_CommTimeout();
    s->forget();
    s->comm->Slot_CyclicCommTrigger();
    QCOMPARE(s->sent().size(), 1);
}

void TstSession::pollingAloneMakesTheStatusAvailable()
{
    s->bringTo(SessionState::Cyclic);
    s->comm->queueModuleStatus(1);
    s->forget();
    s->time.advance(500);
    QCOMPARE(s->takeEvents(), QStringList{text("packetSent")});
    s->endTurn();
    s->forget();
    s->time.advance(500);
    QCOMPARE(s->takeEvents(), QStringList({text("packetSent"), text("statusAvailbl")}));
}

void TstSession::silenceBeforeTheWalkStartsOverEachTime()
{
    s->bringTo(SessionState::SystemStatusAwaited);
    for (int round = 0; round < 5; ++round) {
        s->time.advance(3799);
        QCOMPARE(s->takeEvents(), QStringList());
        s->time.advance(1);
        QCOMPARE(s->takeEvents(), QStringList({text("DebugMsg(Initialize Sequence Timeout!)"),
                                               text("packetSent"), text("CleanSlate")}));
        QCOMPARE(s->sent(), QList<QByteArray>{kSystemRequest});
        QCOMPARE(s->comm->state(), SessionState::SystemStatusAwaited);
    }
    QVERIFY(s->log.contains(
        text("void Communication::Slot_InitializationTimeout() : Initialize Sequence Failed!")));
}

void TstSession::silenceDuringTheWalkStartsOver()
{
    s->bringTo(SessionState::ModuleWalk);
    s->time.advance(3800);
    QCOMPARE(s->sent(), QList<QByteArray>{kSystemRequest});
    QCOMPARE(s->comm->state(), SessionState::SystemStatusAwaited);
    s->reply(device::moduleStatus(0, 100)); // too late
    QCOMPARE(s->takeEvents().last(), text("DebugMsg(System Status not received)"));
    s->reply(device::systemStatus(QByteArray(1, 1), true));
    QCOMPARE(s->sent(), QList<QByteArray>{"1200000000"}); // from the controller again
}

void TstSession::everyStepOfTheWalkRestartsItsTime()
{
    s->bringTo(SessionState::ModuleWalk, QByteArray(3, 1));
    for (quint8 i = 0; i < 4; ++i) {
        s->time.advance(3700);
        s->reply(device::moduleStatus(i, 1));
    }
    s->time.advance(3700);
    QVERIFY(!s->takeEvents().contains(text("CleanSlate")));
    s->time.advance(100);
    QVERIFY(s->takeEvents().contains(text("CleanSlate")));
}

void TstSession::silenceInTheCycleStartsOver()
{
    s->bringTo(SessionState::Cyclic);
    s->time.advance(3999);
    QCOMPARE(s->takeEvents(), QStringList({text("packetSent"), text("statusAvailbl")}));
    QCOMPARE(s->sent(), QList<QByteArray>{kFastSystemRequest}); // one, and no reply to it
    s->time.advance(1);
    QCOMPARE(s->takeEvents(), QStringList({text("CleanSlate"),
                                           text("DebugMsg(<<<Comm timeout resetting the Comm Channels>>>)"),
                                           text("packetSent")}));
    QCOMPARE(s->sent(), QList<QByteArray>{kSystemRequest});
    QCOMPARE(s->comm->state(), SessionState::SystemStatusAwaited);
    QVERIFY(s->log.contains(text("<<<Comm timeout resetting the Comm Channels>>>")));
    s->time.advance(3799);
    QCOMPARE(s->sent(), QList<QByteArray>()); // the cycle has stopped
}

void TstSession::repliesHoldTheCommTimeoutOff()
{
    s->bringTo(SessionState::Cyclic);
    for (int i = 0; i < 10; ++i) {
        s->time.advance(3900);
        s->reply(device::head(0x03)); // of whatever kind
    }
    QCOMPARE(s->comm->state(), SessionState::Cyclic);
    QVERIFY(!s->takeEvents().contains(text("CleanSlate")));
}

void TstSession::rateChangeComesBackWithoutAWalk()
{
    s->bringTo(SessionState::Cyclic);
    s->comm->Slot_SendSamplingRates(text("5000"), text("16"));
    s->time.advance(500);
    QCOMPARE(s->sent(), QList<QByteArray>{"2a000000030300"});
    QCOMPARE(s->comm->state(), SessionState::Cyclic);
    s->endTurn();
    s->time.advance(500);
    QCOMPARE(s->sent(), QList<QByteArray>{kSystemRequest});
    QCOMPARE(s->comm->state(), SessionState::SystemStatusAwaited);
    s->forget();
    s->reply(device::systemStatus(QByteArray(1, 1), true));
    QCOMPARE(s->takeEvents(), QStringList({text("packetRecvd"), text("DebugMsg(System status received!)"),
                                           text("SamplingNBitRate")}));
    QCOMPARE(s->comm->state(), SessionState::Cyclic);
    s->time.advance(500);
    QCOMPARE(s->sent(), QList<QByteArray>{kFastSystemRequest}); // the semaphore is up, the flag is clear
}

void TstSession::repliesDoNotHoldTheCommTimeoutOffWhileARateChangeWaits()
{
    s->bringTo(SessionState::Cyclic);
    s->comm->Slot_SendSamplingRates(text("5000"), text("16"));
    s->time.advance(500);
    s->endTurn(); // the last reply in the cyclic state
    s->time.advance(500);
    QCOMPARE(s->comm->state(), SessionState::SystemStatusAwaited);
    s->forget();
    for (int i = 0; i < 6; ++i) {
        s->endTurn(); // the system status never comes
        s->time.advance(500);
    }
    s->time.advance(499);
    QVERIFY(!s->takeEvents().contains(text("CleanSlate")));
    s->time.advance(1);
    QVERIFY(s->takeEvents().contains(text("CleanSlate")));
}

void TstSession::rateChangeLostInAResetHealsAfterOneTimeout()
{
    s->bringTo(SessionState::Cyclic);
    s->comm->Slot_SendSamplingRates(text("5000"), text("16"));
    s->comm->Slot_CommTimeout(); // leaves the wish for a new system status
    s->reply(device::systemStatus(QByteArray(1, 1), true));
    QCOMPARE(s->comm->state(), SessionState::Cyclic);
    QVERIFY(s->takeEvents().contains(text("SamplingNBitRate")));
    s->forget();
    s->time.advance(3800); // the time of the initialisation was not stopped
    QCOMPARE(s->sent(), QList<QByteArray>{kSystemRequest});
    s->reply(device::systemStatus(QByteArray(1, 1), true));
    QCOMPARE(s->comm->state(), SessionState::ModuleWalk);
}

void TstSession::queuedWorkIsLostInAReset()
{
    s->bringTo(SessionState::Cyclic);
    s->comm->queueModuleStatus(1);
    s->comm->Slot_SendChannnelChangeReq(1, 2);
    s->comm->Slot_CommTimeout();
    s->endTurn();
    s->forget();
    s->comm->Slot_CyclicCommTrigger();
    QCOMPARE(s->sent(), QList<QByteArray>{kFastSystemRequest});
}

void TstSession::resetFlagInEachState_data()
{
    QTest::addColumn<int>("state");
    for (int state = 1; state <= 4; ++state)
        QTest::newRow(qPrintable(QString::number(state))) << state;
}

void TstSession::resetFlagInEachState()
{
    QFETCH(int, state);
    s->bringTo(static_cast<SessionState>(state));
    s->comm->setState(static_cast<SessionState>(state));
    s->time.advance(3000);
    s->forget();
    s->reply(device::fastSystemStatus(1));
    QCOMPARE(s->takeEvents(), QStringList({text("packetRecvd"), text("CleanSlate"), text("packetSent")}));
    QCOMPARE(s->sent(), QList<QByteArray>{kSystemRequest});
    QCOMPARE(s->comm->state(), SessionState::SystemStatusAwaited);
    s->time.advance(3799); // its time was restarted
    QCOMPARE(s->sent(), QList<QByteArray>());
    s->time.advance(1);
    QCOMPARE(s->sent(), QList<QByteArray>{kSystemRequest});
}

void TstSession::stateCanBeSet()
{
    s->comm->setState(SessionState::ModuleEeprom);
    QCOMPARE(s->comm->state(), SessionState::ModuleEeprom);
    QCOMPARE(int(s->comm->state()), 4);
    QVERIFY(s->log.contains(text("Session state 1 becomes 4")));
    s->comm->OpenCommunicationChannel(SessionFixture::serialSettings());
    QCOMPARE(int(s->comm->state()), 1);
}

void TstSession::pendingRequestIsAskedAgainThenStartsOver()
{
    s->bringTo(SessionState::Cyclic);
    QVERIFY(!s->comm->CheckPendingModuleStatusRequests());
    s->comm->queueModuleStatus(7);
    s->forget();
    for (int turn = 1; turn <= 5; ++turn)
        QVERIFY(s->comm->CheckPendingModuleStatusRequests());
    QCOMPARE(s->sent(), QList<QByteArray>());
    QVERIFY(s->comm->CheckPendingModuleStatusRequests());
    QCOMPARE(s->sent(), QList<QByteArray>{"1200000007"});
    QVERIFY(s->log.contains(text("bool Communication::CheckPendingModuleStatusRequests() : Retry "
                                 "STATIC_MODULE_STATUS request for module 7")));
    s->takeEvents();
    for (int turn = 1; turn <= 5; ++turn)
        QVERIFY(s->comm->CheckPendingModuleStatusRequests());
    QCOMPARE(s->sent(), QList<QByteArray>());
    QVERIFY(s->comm->CheckPendingModuleStatusRequests());
    QCOMPARE(s->sent(), QList<QByteArray>{kSystemRequest});
    QCOMPARE(s->takeEvents(), QStringList({text("CleanSlate"), text("packetSent")}));
    QVERIFY(s->log.contains(text("<<<Pending modules higher resetting modules>>>")));
    QVERIFY(!s->comm->CheckPendingModuleStatusRequests());
}

void TstSession::periodsAreTheAgreedOnes()
{
    const CommPeriods defaults;
    QCOMPARE(qint64(defaults.cyclic.count()), qint64(500));
    QCOMPARE(qint64(defaults.comm.count()), qint64(4000));
    QCOMPARE(qint64(defaults.initSequence.count()), qint64(3800));
    QCOMPARE(qint64(defaults.eeprom.count()), qint64(2000));
    QCOMPARE(qint64(defaults.fpga.count()), qint64(0));
}

QTEST_GUILESS_MAIN(TstSession)
#include "tst_session.moc"
