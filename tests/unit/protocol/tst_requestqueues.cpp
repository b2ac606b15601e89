#include "protocol/records/datagrams.h"
#include "protocol/records/fpgafwcommand.h"
#include "protocol/requestqueues.h"
#include "support/messagecatcher.h"

#include <QtTest>

namespace {

using Kind = QueuedRequest::Kind;
using Verdict = RequestQueues::Overdue::Verdict;

QVariant channelRequest(quint32 module, quint8 channel)
{
    DatagramT1 request;
    request.module = module;
    request.channel = channel;
    request.data.selector = 5;
    return QVariant::fromValue(request);
}

QByteArray payloadOf(const std::optional<QueuedRequest> &request)
{
    if (!request)
        return "nothing";
    return request->kind == Kind::SystemRefresh ? QByteArray("refresh") : request->payload.toHex();
}

const SystemCommand kChange{PayloadCode::ChannelChange, 1, 2, 0, 0};

} // namespace

class TstRequestQueues : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_log = std::make_unique<MessageCatcher>(); }
    void cleanup() { m_log.reset(); }

    void emptyQueuesGiveNothing();
    void kindsOfWorkComeInTheirOrder();
    void firstInFirstOutWithinAQueue();
    void refreshStaysWantedUntilItsReply();
    void resetIsPendingOnce();
    void requestThatPacksToNothingLetsTheNextKindThrough();
    void onlyOneBadRequestGoesPerTurn();
    void sentRequestsHaveTheirLine();
    void clearEmptiesTheQueuesAndLeavesTheFlags();
    void firmwareCommandsAreAQueueOfTheirOwn();
    void foreignFirmwareCommandIsTakenOutAndGivesNothing();
    void answeredModuleRequestIsRemovedOnce();
    void nothingWaitsWhenTheQueueIsEmpty();
    void requestIsAskedAgainAtItsSixthTurn();
    void secondTimeOverdueGivesUp();
    void countingStopsAtTheFirstOverdueRequest();

private:
    std::unique_ptr<MessageCatcher> m_log;
};

void TstRequestQueues::emptyQueuesGiveNothing()
{
    RequestQueues queues;
    QCOMPARE(payloadOf(queues.takeNext()), QByteArray("nothing"));
}

void TstRequestQueues::kindsOfWorkComeInTheirOrder()
{
    RequestQueues queues;
    queues.setSystemResetPending();
    queues.setSystemStatusWanted(true);
    queues.addModuleRequest(7);
    queues.addSystemCommand(kChange);
    queues.addChannelRequest(channelRequest(1, 1));
    QCOMPARE(payloadOf(queues.takeNext()), QByteArray("280000000181"));
    QCOMPARE(payloadOf(queues.takeNext()), QByteArray("1e000000010200"));
    QCOMPARE(payloadOf(queues.takeNext()), QByteArray("1200000007"));
    QCOMPARE(payloadOf(queues.takeNext()), QByteArray("refresh"));
    queues.setSystemStatusWanted(false);
    QCOMPARE(payloadOf(queues.takeNext()), QByteArray("2b000000000000"));
    QCOMPARE(payloadOf(queues.takeNext()), QByteArray("nothing"));
}

void TstRequestQueues::firstInFirstOutWithinAQueue()
{
    RequestQueues queues;
    for (quint8 i = 1; i <= 3; ++i) {
        queues.addChannelRequest(channelRequest(i, 2));
        queues.addSystemCommand({PayloadCode::VoltageSupply, i, 0, 0, 0});
        queues.addModuleRequest(i);
    }
    const QByteArrayList expected{"280000000281",   "280000000481",   "280000000681",
                                  "1c000000010000", "1c000000020000", "1c000000030000",
                                  "1200000001",     "1200000002",     "1200000003"};
    for (const QByteArray &payload : expected)
        QCOMPARE(payloadOf(queues.takeNext()), payload);
}

void TstRequestQueues::refreshStaysWantedUntilItsReply()
{
    RequestQueues queues;
    queues.setSystemStatusWanted(true);
    QCOMPARE(payloadOf(queues.takeNext()), QByteArray("refresh"));
    QCOMPARE(payloadOf(queues.takeNext()), QByteArray("refresh"));
    QVERIFY(queues.isSystemStatusWanted());
}

void TstRequestQueues::resetIsPendingOnce()
{
    RequestQueues queues;
    queues.setSystemResetPending();
    queues.setSystemResetPending();
    QCOMPARE(payloadOf(queues.takeNext()), QByteArray("2b000000000000"));
    QCOMPARE(payloadOf(queues.takeNext()), QByteArray("nothing"));
}

void TstRequestQueues::requestThatPacksToNothingLetsTheNextKindThrough()
{
    RequestQueues queues;
    queues.addChannelRequest(channelRequest(128, 2));
    queues.addModuleRequest(9);
    QCOMPARE(payloadOf(queues.takeNext()), QByteArray("1200000009"));
    QCOMPARE(payloadOf(queues.takeNext()), QByteArray("nothing"));
}

void TstRequestQueues::onlyOneBadRequestGoesPerTurn()
{
    RequestQueues queues;
    queues.addChannelRequest(QVariant(1));
    queues.addChannelRequest(channelRequest(1, 0));
    queues.addChannelRequest(channelRequest(1, 1));
    QCOMPARE(payloadOf(queues.takeNext()), QByteArray("nothing"));
    QCOMPARE(payloadOf(queues.takeNext()), QByteArray("nothing"));
    QCOMPARE(payloadOf(queues.takeNext()), QByteArray("280000000181"));
}

void TstRequestQueues::sentRequestsHaveTheirLine()
{
    RequestQueues queues;
    DatagramT2 type2;
    type2.module = 1;
    type2.channel = 1;
    queues.addChannelRequest(QVariant::fromValue(type2));
    queues.addChannelRequest(channelRequest(1, 1));
    queues.addSystemCommand(kChange);
    queues.setSystemResetPending();
    QCOMPARE(queues.takeNext()->sentText, "ModuleType2 request Sent");
    QVERIFY(!queues.takeNext()->sentText);
    QCOMPARE(queues.takeNext()->sentText, "System Settings request Sent");
    QCOMPARE(queues.takeNext()->sentText, "System Reset request Sent");
}

void TstRequestQueues::clearEmptiesTheQueuesAndLeavesTheFlags()
{
    RequestQueues queues;
    queues.addChannelRequest(channelRequest(1, 1));
    queues.addSystemCommand(kChange);
    queues.addModuleRequest(1);
    queues.addFirmwareCommand(QVariant::fromValue(FPGAfwCommand()));
    queues.setSystemStatusWanted(true);
    queues.setSystemResetPending();
    queues.clear();
    QVERIFY(!queues.hasFirmwareCommands());
    QCOMPARE(queues.countTurn().verdict, Verdict::Empty);
    QCOMPARE(payloadOf(queues.takeNext()), QByteArray("refresh"));
    queues.setSystemStatusWanted(false);
    QCOMPARE(payloadOf(queues.takeNext()), QByteArray("2b000000000000"));
}

void TstRequestQueues::firmwareCommandsAreAQueueOfTheirOwn()
{
    RequestQueues queues;
    queues.addFirmwareCommand(QVariant::fromValue(FPGAfwCommand{1, 2, 1, 1, 0, 0, {}}));
    queues.addFirmwareCommand(QVariant::fromValue(FPGAfwCommand{1, 2, 1, 0, 0, 0, {}}));
    QCOMPARE(payloadOf(queues.takeNext()), QByteArray("nothing"));
    QCOMPARE(queues.takeFirmwareCommand()->payload.toHex(), QByteArray("160102010100000000"));
    QVERIFY(queues.hasFirmwareCommands());
    QCOMPARE(queues.takeFirmwareCommand()->payload.toHex(), QByteArray("160102010000000000"));
    QVERIFY(!queues.hasFirmwareCommands());
}

void TstRequestQueues::foreignFirmwareCommandIsTakenOutAndGivesNothing()
{
    RequestQueues queues;
    queues.addFirmwareCommand(QVariant(5));
    QVERIFY(!queues.takeFirmwareCommand());
    QVERIFY(!queues.hasFirmwareCommands());
    QVERIFY(m_log->contains(QStringLiteral("Unknown Request being packed")));
}

void TstRequestQueues::answeredModuleRequestIsRemovedOnce()
{
    RequestQueues queues;
    for (const quint8 address : {quint8(4), quint8(5), quint8(4)})
        queues.addModuleRequest(address);
    queues.removeModuleRequest(4);
    queues.removeModuleRequest(99);
    QCOMPARE(payloadOf(queues.takeNext()), QByteArray("1200000005"));
    QCOMPARE(payloadOf(queues.takeNext()), QByteArray("1200000004"));
    QCOMPARE(payloadOf(queues.takeNext()), QByteArray("nothing"));
}

void TstRequestQueues::nothingWaitsWhenTheQueueIsEmpty()
{
    RequestQueues queues;
    QCOMPARE(queues.countTurn().verdict, Verdict::Empty);
}

void TstRequestQueues::requestIsAskedAgainAtItsSixthTurn()
{
    RequestQueues queues;
    queues.addModuleRequest(3);
    for (int turn = 1; turn <= 5; ++turn)
        QCOMPARE(queues.countTurn().verdict, Verdict::Waiting);
    const auto overdue = queues.countTurn();
    QCOMPARE(overdue.verdict, Verdict::Retry);
    QCOMPARE(overdue.address, quint8(3));
    QCOMPARE(queues.countTurn().verdict, Verdict::Waiting);
}

void TstRequestQueues::secondTimeOverdueGivesUp()
{
    RequestQueues queues;
    queues.addModuleRequest(3);
    for (int turn = 1; turn <= 11; ++turn)
        queues.countTurn();
    const auto overdue = queues.countTurn();
    QCOMPARE(overdue.verdict, Verdict::GiveUp);
    QCOMPARE(overdue.address, quint8(3));
}

void TstRequestQueues::countingStopsAtTheFirstOverdueRequest()
{
    RequestQueues queues;
    queues.addModuleRequest(3);
    queues.addModuleRequest(4);
    for (int turn = 1; turn <= 5; ++turn)
        QCOMPARE(queues.countTurn().verdict, Verdict::Waiting);
    QCOMPARE(queues.countTurn().address, quint8(3));
    const auto second = queues.countTurn();
    QCOMPARE(second.verdict, Verdict::Retry);
    QCOMPARE(second.address, quint8(4));
}

QTEST_GUILESS_MAIN(TstRequestQueues)
#include "tst_requestqueues.moc"
