#include "sessionfixture.h"

#include "protocol/records/fastmodulestatus.h"
#include "protocol/records/fastsystemstatus.h"
#include "protocol/records/modulestatus.h"
#include "protocol/records/powerstatus.h"
#include "protocol/records/systemstatus.h"

#include <QSignalSpy>
#include <QtTest>
#include <random>

namespace {

const QString kTypeTabs(11, QLatin1Char('\t'));

QStringList events(const char *words)
{
    return QString::fromLatin1(words).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

QString debugMsg(const char *text)
{
    return QStringLiteral("DebugMsg(%1)").arg(QString::fromLatin1(text));
}

QString addressAndType(int address, int type)
{
    return QStringLiteral("DebugMsg(Module Address: %1 Module Type:%2%3)")
        .arg(address)
        .arg(kTypeTabs)
        .arg(type);
}

} // namespace

/// Each reply in each state: what is emitted in which order, and what it does to the session.
class TstStatusExtraction : public QObject
{
    Q_OBJECT

private slots:
    void init() { s = std::make_unique<SessionFixture>(); }
    void cleanup() { s.reset(); }

    void replyInState_data();
    void replyInState();
    void systemStatusAfterARateChange();
    void staticStatusWhileARateChangeWaitsCountsAsAStepOfTheWalk();
    void fastStatusDuringTheWalkDoesNotAdvanceIt();
    void recordsAreCarriedWhole();
    void headOfAnyReplyIsTheFastRecord();
    void payloadIsPassedOnAtTheEnd();
    void eachBranchIsLogged_data();
    void eachBranchIsLogged();
    void semaphoreIsRaisedAfterTheEmissions();
    void staticStatusExistsOnlyAfterTheSystemStatus();
    void shortPayloadsGiveZeroRecordsAndGoOn_data();
    void shortPayloadsGiveZeroRecordsAndGoOn();
    void emptyPayloadEndsTheTurn();
    void powerReplyWithAnotherAddressIsAPowerReply();
    void invalidFrameIsReportedWithItsLink_data();
    void invalidFrameIsReportedWithItsLink();
    void randomPayloadsLeaveAWorkingSession_data();
    void randomPayloadsLeaveAWorkingSession();

private:
    std::unique_ptr<SessionFixture> s;
};

void TstStatusExtraction::replyInState_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QStringList>("expected"); // behind packetRecvd
    QTest::addColumn<int>("stateAfter");
    QTest::addColumn<bool>("semaphoreAfter"); // it was down before
    QTest::addColumn<QByteArray>("request");  // what the reply makes the session send

    const QByteArray none;
    const QByteArray fast = device::fastSystemStatus();
    const QByteArray modules = device::fastModuleStatus();
    const QByteArray system = device::systemStatus(QByteArray(1, 1), true);
    const QByteArray module = device::moduleStatus(1, 9);
    const QByteArray power = device::powerStatus();
    const QString received = debugMsg("System status received!");

    for (int state = 1; state <= 4; ++state) {
        const auto row = [state](const char *name) -> QTestData & {
            return QTest::newRow(
                       qPrintable(QStringLiteral("state %1: %2").arg(state).arg(QLatin1String(name))))
                   << state;
        };
        row("fast system") << fast << events("FastSystemStatus RcvPayload") << state << true << none;
        row("fast module") << modules << events("FastSystemStatus FastModuleStatus RcvPayload") << state
                           << true << none;
        row("code 0x03") << device::head(0x03) << events("RcvPayload") << state << true << none;
        row("EEPROM text") << device::head(0x14) + "text" << events("RcvPayload") << state << true << none;
        row("empty") << none << events("RcvPayload") << state << true << none;
        if (state == 1)
            row("system") << system
                          << QStringList{received} +
                                 events("FastSystemStatus SystemStatus packetSent RcvPayload")
                          << 2 << true << QByteArray("1200000000");
        else
            row("system") << system
                          << QStringList{received, debugMsg("Invalid initialization state received!")} +
                                 events("CleanSlate packetSent")
                          << 1 << false << QByteArray("0100000001");
    }

    const QStringList refused{debugMsg("System Status not received")};
    QTest::newRow("state 1: module") << 1 << module << refused << 1 << false << none;
    QTest::newRow("state 1: power") << 1 << power << refused << 1 << false << none;

    const QStringList moduleEvents =
        QStringList{addressAndType(1, 9)} + events("FastSystemStatus StaticModuleStatus");
    const QStringList powerEvents = events("FastSystemStatus StaticPowerStatus");
    const auto finished = [](int next, int count) {
        return QStringList{
            QStringLiteral("stateInitialized"),
            QStringLiteral(
                "DebugMsg(State Initialized,Cyclic Commands started NextModIndex %1 ModToInitIndex %2)")
                .arg(next)
                .arg(count),
            QStringLiteral("RcvPayload")};
    };
    QTest::newRow("state 2: module") << 2 << module
                                     << moduleEvents + events("packetSent ModuleRead(1) RcvPayload") << 2
                                     << true << QByteArray("1200000001");
    QTest::newRow("state 2: power") << 2 << power << powerEvents + finished(1, 2) << 3 << true << none;
    QTest::newRow("state 3: module") << 3 << module << moduleEvents + events("RcvPayload") << 3 << true
                                     << none;
    QTest::newRow("state 3: power") << 3 << power << powerEvents + events("RcvPayload") << 3 << true << none;
    // A status in any state but the cyclic one is a step of the walk.
    QTest::newRow("state 4: module") << 4 << module << moduleEvents + finished(131, 2) << 3 << true << none;
    QTest::newRow("state 4: power") << 4 << power << powerEvents + finished(131, 2) << 3 << true << none;
}

void TstStatusExtraction::replyInState()
{
    QFETCH(int, state);
    QFETCH(QByteArray, payload);
    QFETCH(QStringList, expected);
    QFETCH(int, stateAfter);
    QFETCH(bool, semaphoreAfter);
    QFETCH(QByteArray, request);

    s->bringTo(state == 4 ? SessionState::Cyclic : static_cast<SessionState>(state));
    s->comm->setState(static_cast<SessionState>(state));
    s->endTurn();
    s->comm->Slot_CyclicCommTrigger(); // takes the semaphore down
    s->forget();

    s->reply(payload);
    QCOMPARE(s->takeEvents(), QStringList{QStringLiteral("packetRecvd")} + expected);
    QCOMPARE(int(s->comm->state()), stateAfter);
    QCOMPARE(s->sent(), request.isEmpty() ? QList<QByteArray>() : QList<QByteArray>{request});
    s->comm->Slot_CyclicCommTrigger();
    QCOMPARE(!s->sent().isEmpty(), semaphoreAfter);
}

void TstStatusExtraction::systemStatusAfterARateChange()
{
    s->bringTo(SessionState::Cyclic);
    s->comm->Slot_SendSamplingRates(QStringLiteral("5000"), QStringLiteral("16"));
    s->time.advance(500);
    s->endTurn();
    s->time.advance(500);
    s->forget();
    QSignalSpy spy(s->comm.get(), &Communication::Signal_SamplingNBitRate);
    s->reply(device::systemStatus(QByteArray(3, 2), true));
    QCOMPARE(s->takeEvents(), QStringList({QStringLiteral("packetRecvd"), debugMsg("System status received!"),
                                           QStringLiteral("SamplingNBitRate")}));
    const QVariant data = spy.first().first();
    QCOMPARE(data.userType(), qMetaTypeId<System_Status>());
    QCOMPARE(data.value<System_Status>().bitRate, QStringLiteral("5000"));
    QCOMPARE(s->comm->state(), SessionState::Cyclic);
    s->comm->Slot_CyclicCommTrigger();
    QCOMPARE(s->sent(), QList<QByteArray>{"0800000000"});
}

void TstStatusExtraction::staticStatusWhileARateChangeWaitsCountsAsAStepOfTheWalk()
{
    s->bringTo(SessionState::Cyclic);
    s->comm->Slot_SendSamplingRates(QStringLiteral("5000"), QStringLiteral("16"));
    s->time.advance(500);
    s->endTurn();
    s->time.advance(500);
    QCOMPARE(s->comm->state(), SessionState::SystemStatusAwaited);
    s->forget();
    s->reply(device::moduleStatus(1, 1));
    QVERIFY(s->takeEvents().contains(QStringLiteral("stateInitialized")));
    QCOMPARE(s->comm->state(), SessionState::Cyclic);
}

void TstStatusExtraction::fastStatusDuringTheWalkDoesNotAdvanceIt()
{
    s->bringTo(SessionState::ModuleWalk, QByteArray(2, 1));
    s->reply(device::fastSystemStatus());
    s->reply(device::fastModuleStatus());
    QCOMPARE(s->sent(), QList<QByteArray>());
    s->reply(device::moduleStatus(0, 100));
    QCOMPARE(s->sent(), QList<QByteArray>{"1200000001"});
}

void TstStatusExtraction::recordsAreCarriedWhole()
{
    Communication *c = s->comm.get();
    QSignalSpy system(c, &Communication::Signal_SystemStatus);
    QSignalSpy fast(c, &Communication::Signal_FastSystemStatus);
    QSignalSpy modules(c, &Communication::Signal_FastModuleStatus);
    QSignalSpy module(c, &Communication::Signal_StaticModuleStatus);
    QSignalSpy power(c, &Communication::Signal_StaticPowerStatus);
    s->bringTo(SessionState::Cyclic, QByteArray::fromHex("0102"));
    s->reply(device::fastModuleStatus());

    QCOMPARE(system.size(), 1);
    QCOMPARE(system.first().first().userType(), qMetaTypeId<System_Status>());
    const auto status = system.first().first().value<System_Status>();
    QCOMPARE(int(status.nModules), 2);
    QCOMPARE(status.transmissionMode, QStringLiteral("FM"));
    QCOMPARE(fast.last().first().userType(), qMetaTypeId<Fast_System_Status>());
    QCOMPARE(modules.first().first().userType(), qMetaTypeId<QVector<Fast_Module_Status>>());
    QCOMPARE(modules.first().first().value<QVector<Fast_Module_Status>>().size(), 130);
    QCOMPARE(module.size(), 3);
    QCOMPARE(module.at(2).first().userType(), qMetaTypeId<Module_Status>());
    QCOMPARE(module.at(2).first().value<Module_Status>().serialNumber, QStringLiteral("SN 2"));
    QCOMPARE(power.first().first().userType(), qMetaTypeId<Power_Status>());
    QCOMPARE(int(power.first().first().value<Power_Status>().fixedVoltage), 12000);
}

void TstStatusExtraction::headOfAnyReplyIsTheFastRecord()
{
    s->bringTo(SessionState::Cyclic);
    QSignalSpy fast(s->comm.get(), &Communication::Signal_FastSystemStatus);
    for (QByteArray payload : {device::fastSystemStatus(), device::fastModuleStatus(),
                               device::moduleStatus(1, 1), device::powerStatus()}) {
        payload[10] = char(0xE8);
        payload[11] = char(0x03);
        const char code = payload.at(0);
        s->reply(payload);
        const auto head = fast.last().first().value<Fast_System_Status>();
        QCOMPARE(int(head.payloadType), int(code));
        QCOMPARE(int(head.voltageRaw), 1000);
    }
    QCOMPARE(fast.size(), 4);
}

void TstStatusExtraction::payloadIsPassedOnAtTheEnd()
{
    QByteArray passedOn;
    connect(s->comm.get(), &Communication::Signal_RcvPayload, s.get(),
            [&passedOn](QByteArray &payload) { passedOn = payload; });
    s->bringTo(SessionState::Cyclic);
    s->reply(device::moduleStatus(7, 2));
    QCOMPARE(passedOn, device::moduleStatus(7, 2));
}

void TstStatusExtraction::eachBranchIsLogged_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QString>("line");
    QTest::newRow("system") << device::systemStatus({}, true) << QStringLiteral("Rcvd TYPE_SYSTEM_STATUS_");
    QTest::newRow("fast system") << device::fastSystemStatus()
                                 << QStringLiteral("Rcvd TYPE_FAST_SYSTEM_STATUS_");
    QTest::newRow("fast module") << device::fastModuleStatus()
                                 << QStringLiteral("Rcvd TYPE_FAST_MODULE_STATUS_");
    QTest::newRow("module") << device::moduleStatus(1, 1)
                            << QStringLiteral("Rcvd TYPE_STATIC_MODULE_STATUS_");
    QTest::newRow("power") << device::powerStatus()
                           << QStringLiteral("Rcvd TYPE_STATIC_MODULE_STATUS_ with module type power");
    QTest::newRow("unknown") << device::head(0x03) << QStringLiteral("Unkown Payload!");
}

void TstStatusExtraction::eachBranchIsLogged()
{
    QFETCH(QByteArray, payload);
    QFETCH(QString, line);
    s->bringTo(SessionState::Cyclic);
    s->reply(payload);
    QVERIFY(s->log.contains(QStringLiteral("void Communication::ExtractReceivedPayLoadData(QByteArray&) : ") +
                            line));
}

void TstStatusExtraction::semaphoreIsRaisedAfterTheEmissions()
{
    s->bringTo(SessionState::Cyclic);
    s->time.advance(500);
    s->forget();
    int inside = -1;
    connect(s->comm.get(), &Communication::Signal_FastSystemStatus, s.get(), [&] {
        s->comm->Slot_CyclicCommTrigger();
        inside = s->sent().size();
    });
    int atTheEnd = -1;
    connect(s->comm.get(), &Communication::Signal_RcvPayload, s.get(), [&] {
        s->comm->Slot_CyclicCommTrigger();
        atTheEnd = s->sent().size();
    });
    s->endTurn();
    QCOMPARE(inside, 0);
    QCOMPARE(atTheEnd, 1);
}

void TstStatusExtraction::staticStatusExistsOnlyAfterTheSystemStatus()
{
    s->bringTo(SessionState::SystemStatusAwaited);
    s->reply(device::moduleStatus(0, 100));
    QCOMPARE(s->comm->state(), SessionState::SystemStatusAwaited);
    QCOMPARE(s->log.lines(), QStringList{QStringLiteral("void Communication::ExtractReceivedPayLoadData("
                                                        "QByteArray&) : Rcvd TYPE_STATIC_MODULE_STATUS_")});
    s->time.advance(3799);
    QCOMPARE(s->sent(), QList<QByteArray>());
    s->time.advance(1); // the wait was not restarted
    QCOMPARE(s->sent(), QList<QByteArray>{"0100000001"});
}

void TstStatusExtraction::shortPayloadsGiveZeroRecordsAndGoOn_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("code alone") << 1;
    QTest::newRow("half a head") << 9;
    QTest::newRow("a head") << 16;
    QTest::newRow("one byte more") << 17;
}

void TstStatusExtraction::shortPayloadsGiveZeroRecordsAndGoOn()
{
    QFETCH(int, size);
    s->bringTo(SessionState::SystemStatusAwaited);
    QSignalSpy system(s->comm.get(), &Communication::Signal_SystemStatus);
    QSignalSpy module(s->comm.get(), &Communication::Signal_StaticModuleStatus);
    QSignalSpy modules(s->comm.get(), &Communication::Signal_FastModuleStatus);
    s->reply(device::systemStatus(QByteArray(1, 1), true).left(size));
    QCOMPARE(system.first().first().value<System_Status>(), System_Status());
    QCOMPARE(s->comm->state(), SessionState::ModuleWalk);
    s->reply(device::fastModuleStatus().left(size));
    QCOMPARE(modules.first().first().value<QVector<Fast_Module_Status>>(), QVector<Fast_Module_Status>(130));
    s->reply(device::moduleStatus(0, 100).left(size));
    QCOMPARE(module.first().first().value<Module_Status>(), Module_Status());
    QCOMPARE(s->comm->state(), SessionState::Cyclic); // no modules, no power module: the walk is over
}

void TstStatusExtraction::emptyPayloadEndsTheTurn()
{
    s->bringTo(SessionState::Cyclic);
    s->time.advance(500);
    s->forget();
    s->reply({});
    s->time.advance(500);
    QCOMPARE(s->sent(), QList<QByteArray>{"0800000000"});
}

void TstStatusExtraction::powerReplyWithAnotherAddressIsAPowerReply()
{
    s->bringTo(SessionState::Cyclic);
    s->comm->queueModuleStatus(5);
    s->forget();
    QByteArray payload = device::powerStatus();
    payload[16] = 5;
    s->reply(payload);
    QVERIFY(s->takeEvents().contains(QStringLiteral("StaticPowerStatus")));
    s->time.advance(500);
    QCOMPARE(s->sent(), QList<QByteArray>{"0800000000"}); // it answered the request for address 5
}

void TstStatusExtraction::invalidFrameIsReportedWithItsLink_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("word");
    QTest::newRow("serial") << 2 << QStringLiteral("SERIAL");
    QTest::newRow("ethernet") << 1 << QStringLiteral("ETHERNET");
    QTest::newRow("none") << 0 << QStringLiteral("UNKNOWN");
    QTest::newRow("foreign") << 9 << QStringLiteral("UNKNOWN");
}

void TstStatusExtraction::invalidFrameIsReportedWithItsLink()
{
    QFETCH(int, kind);
    QFETCH(QString, word);
    QByteArray frame = device::frame("payload").chopped(1);
    const QString line =
        QStringLiteral("An Invalid DataStream was received over : %1 communication.").arg(word);
    QTest::ignoreMessage(QtCriticalMsg, qPrintable(line));
    s->comm->Slot_RcvDatagram(static_cast<Comm_Type>(kind), frame);
    QCOMPARE(s->takeEvents(), QStringList{QStringLiteral("packetRecvd")});
    QCOMPARE(s->log.lines().size(), 2);
    QCOMPARE(s->log.lines().first(), line);
    QCOMPARE(s->log.lines().last(), QString::fromLatin1(frame.toHex(' ')));
}

void TstStatusExtraction::randomPayloadsLeaveAWorkingSession_data()
{
    QTest::addColumn<int>("state");
    for (int state = 1; state <= 4; ++state)
        QTest::newRow(qPrintable(QString::number(state))) << state;
}

void TstStatusExtraction::randomPayloadsLeaveAWorkingSession()
{
    QFETCH(int, state);
    constexpr int kRounds = 1500;
    constexpr char kCodes[] = {0x01, 0x08, 0x10, 0x12, 0x14, 0x03};
    std::mt19937 random(static_cast<unsigned>(state));
    s->bringTo(static_cast<SessionState>(state));
    for (int round = 0; round < kRounds; ++round) {
        if (round % 8 == 0)
            s->comm->setState(static_cast<SessionState>(state));
        QByteArray payload(static_cast<int>(random() % 1301), '\0');
        for (char &byte : payload)
            byte = static_cast<char>(random());
        if (!payload.isEmpty() && random() % 4 != 0)
            payload[0] = kCodes[random() % sizeof(kCodes)];
        if (payload.size() > 8 && random() % 8 != 0)
            payload[8] = 0;
        s->reply(payload);
        s->time.advance(static_cast<int>(random() % 600));
        QVERIFY(s->comm->isCommunicationChannelOpen());
        s->forget();
    }
    s->serial->script = device::chain(QByteArray(2, 1), true);
    s->comm->OpenCommunicationChannel(SessionFixture::serialSettings());
    s->answerUntilCyclic();
    QCOMPARE(s->comm->state(), SessionState::Cyclic);
}

QTEST_GUILESS_MAIN(TstStatusExtraction)
#include "tst_statusextraction.moc"
