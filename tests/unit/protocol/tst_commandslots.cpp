#include "sessionfixture.h"

#include "protocol/records/datagrams.h"
#include "protocol/records/fpgafwcommand.h"

#include <QtTest>

namespace {

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

template <typename Request>
QVariant request(quint32 module, quint8 channel, ChannelSelector selector)
{
    Request r;
    r.module = module;
    r.channel = channel;
    r.data.selector = wireCode(selector);
    return QVariant::fromValue(r);
}

QVariant firmware(quint8 b3, const QByteArray &data = {})
{
    return QVariant::fromValue(FPGAfwCommand{1, 2, 1, b3, 3, quint16(data.size()), data});
}

} // namespace

/// What the rest of the program asks for, from the slot to the payload.
class TstCommandSlots : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        s = std::make_unique<SessionFixture>();
        s->bringTo(SessionState::Cyclic);
    }
    void cleanup() { s.reset(); }

    void channelRequestsGoOutOnePerTurn();
    void samplingRatesBecomeTheirCodes();
    void unknownRatesFallToCode0();
    void voltageSupply();
    void channelChange();
    void powerSettingIsReadBack();
    void systemResetWaitsForEmptyQueues();
    void kindsOfWorkComeInTheirOrder();
    void busyIsToldBeforeTheEntryIsQueued();
    void slotsThatQueueNothingTellNothing();
    void requestWithoutChannelLeavesTheTurnToPolling();
    void requestWithoutChannelLeavesTheTurnToTheNextKind();
    void requestTooLongForAFrameIsDropped_data();
    void requestTooLongForAFrameIsDropped();
    void statusRequestGoesOutAtOnceWhenAsked();
    void answeredStatusRequestIsTakenOut();
    void refreshGoesAfterTheQueues();
    void refreshIsAskedForAgainAfterAnotherReply();
    void firmwareCommandsGoAsFastAsTheReplies();
    void firmwareCommandsWaitForTheSemaphore();
    void firmwareCommandsSilenceThePolling();
    void firmwareResetBecomesTheSystemReset();
    void firmwareCommandTooLongForAFrameIsDropped_data();
    void firmwareCommandTooLongForAFrameIsDropped();
    void firmwareTimerStopsItselfWhenTheQueueIsEmpty();
    void clearedFirmwareCommandsAreNotSent();
    void commandsAfterAnAbortWaitForANewStart();
    void commandsWithoutAStartEndInTheCommTimeout();
    void resetEmptiesTheFirmwareQueue();
    void foreignFirmwareCommandDoesNotTakeTheSemaphore();
    void agreedPackRoutinesPack();

private:
    /// Ends the turn of the last request and starts the next one.
    QList<QByteArray> nextTurn();

    std::unique_ptr<SessionFixture> s;
};

QList<QByteArray> TstCommandSlots::nextTurn()
{
    s->endTurn();
    s->time.advance(500);
    return s->sent();
}

void TstCommandSlots::channelRequestsGoOutOnePerTurn()
{
    s->comm->queueChannelRequest(request<DatagramT1>(1, 1, ChannelSelector::Autozero));
    s->comm->queueChannelRequest(request<DatagramT2>(1, 2, ChannelSelector::AutoReset));
    s->comm->queueChannelRequest(request<DatagramT3>(64, 1, ChannelSelector::Filter));
    QCOMPARE(nextTurn(), QList<QByteArray>{"280000000181"});
    QCOMPARE(nextTurn(), QList<QByteArray>{"280000000280"});
    QVERIFY(s->log.contains(text("ModuleType2 request Sent")));
    QCOMPARE(nextTurn(), QList<QByteArray>{"260000007f3000"});
    QCOMPARE(nextTurn(), QList<QByteArray>{"0800000000"});
}

void TstCommandSlots::samplingRatesBecomeTheirCodes()
{
    s->comm->Slot_SendSamplingRates(text("312"), text("256"));
    QCOMPARE(nextTurn(), QList<QByteArray>{"2a000000070700"});
    QVERIFY(s->log.contains(text("System Settings request Sent")));
}

void TstCommandSlots::unknownRatesFallToCode0()
{
    s->comm->Slot_SendSamplingRates(text("9999"), text("3"));
    QCOMPARE(nextTurn(), QList<QByteArray>{"2a000000000000"});
}

void TstCommandSlots::voltageSupply()
{
    s->comm->Slot_SendVoltageSupply(0xFF, 1, 0x78);
    QCOMPARE(nextTurn(), QList<QByteArray>{"1c000000ff0178"});
}

void TstCommandSlots::channelChange()
{
    s->comm->Slot_SendChannnelChangeReq(5, 6);
    QCOMPARE(nextTurn(), QList<QByteArray>{"1e000000050600"});
}

void TstCommandSlots::powerSettingIsReadBack()
{
    s->comm->Slot_SendPowerModuleSetting(1, 2, 0x1234);
    QCOMPARE(s->takeEvents(), QStringList({text("statusBusy"), text("statusBusy")}));
    QCOMPARE(nextTurn(), QList<QByteArray>{"1800000001023412"});
    QCOMPARE(nextTurn(), QList<QByteArray>{"1200000081"});
    QCOMPARE(nextTurn(), QList<QByteArray>{"0800000000"});
}

void TstCommandSlots::systemResetWaitsForEmptyQueues()
{
    s->comm->Slot_SendSystemReset();
    s->comm->queueModuleStatus(3);
    QCOMPARE(nextTurn(), QList<QByteArray>{"1200000003"});
    QCOMPARE(nextTurn(), QList<QByteArray>{"2b000000000000"});
    QVERIFY(s->log.contains(text("System Reset request Sent")));
    QCOMPARE(nextTurn(), QList<QByteArray>{"0800000000"});
}

void TstCommandSlots::kindsOfWorkComeInTheirOrder()
{
    s->comm->Slot_SendSystemReset();
    s->comm->queueModuleStatus(3);
    s->comm->Slot_SendVoltageSupply(1, 0, 0);
    s->comm->queueChannelRequest(request<DatagramT1>(2, 1, ChannelSelector::Autozero));
    QCOMPARE(nextTurn(), QList<QByteArray>{"280000000381"});
    QCOMPARE(nextTurn(), QList<QByteArray>{"1c000000010000"});
    QCOMPARE(nextTurn(), QList<QByteArray>{"1200000003"});
    QCOMPARE(nextTurn(), QList<QByteArray>{"2b000000000000"});
}

void TstCommandSlots::busyIsToldBeforeTheEntryIsQueued()
{
    QList<QByteArray> sentInside;
    connect(s->comm.get(), &Communication::statusBusy, s.get(), [&] {
        s->comm->Slot_CyclicCommTrigger(); // what is queued by now would go out here
        sentInside += s->sent();
        s->endTurn();
    });
    s->endTurn();
    s->comm->queueModuleStatus(3);
    QCOMPARE(sentInside, QList<QByteArray>{"0800000000"});
    QCOMPARE(nextTurn(), QList<QByteArray>{"1200000003"});
    sentInside.clear();
    s->endTurn();
    s->comm->queueChannelRequest(request<DatagramT1>(1, 1, ChannelSelector::Autozero));
    QCOMPARE(sentInside, QList<QByteArray>{"0800000000"});
    QCOMPARE(nextTurn(), QList<QByteArray>{"280000000181"});
    sentInside.clear();
    s->endTurn();
    s->comm->Slot_SendChannnelChangeReq(1, 1);
    QCOMPARE(sentInside, QList<QByteArray>{"0800000000"});
    sentInside.clear();
    s->endTurn();
    s->comm->Slot_FirmwareCommands(firmware(1));
    QCOMPARE(sentInside, QList<QByteArray>{"1e000000010100"});
}

void TstCommandSlots::slotsThatQueueNothingTellNothing()
{
    s->comm->Slot_SendSystemReset();
    s->comm->Slot_StartFPGAprocess();
    s->comm->Slot_ClearFirmwrCommands();
    s->comm->RequestModuleStatus(1);
    QCOMPARE(s->takeEvents(), QStringList{text("packetSent")});
}

void TstCommandSlots::requestWithoutChannelLeavesTheTurnToPolling()
{
    s->comm->queueChannelRequest(request<DatagramT1>(128, 2, ChannelSelector::Autozero));
    s->comm->queueChannelRequest(request<DatagramT1>(1, 0, ChannelSelector::ShuntAll));
    s->comm->queueChannelRequest(QVariant(text("foreign")));
    for (int i = 0; i < 3; ++i) {
        s->forget();
        s->time.advance(500);
        QCOMPARE(s->takeEvents(), QStringList({text("packetSent"), text("statusAvailbl")}));
        QCOMPARE(s->sent(), QList<QByteArray>{"0800000000"});
        s->endTurn();
    }
}

void TstCommandSlots::requestWithoutChannelLeavesTheTurnToTheNextKind()
{
    s->comm->queueChannelRequest(request<DatagramT1>(1, 0, ChannelSelector::ShuntAll));
    s->comm->queueModuleStatus(4);
    QCOMPARE(nextTurn(), QList<QByteArray>{"1200000004"});
}

void TstCommandSlots::requestTooLongForAFrameIsDropped_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("goesOut");
    QTest::newRow("a full frame") << 1300 - 6 << true;
    QTest::newRow("one byte more") << 1300 - 5 << false;
    QTest::newRow("beyond 16 bits") << 70000 << false;
}

void TstCommandSlots::requestTooLongForAFrameIsDropped()
{
    QFETCH(int, size);
    QFETCH(bool, goesOut);
    DatagramT1 change;
    change.module = 1;
    change.channel = 1;
    change.data.selector = wireCode(ChannelSelector::ManualOffset);
    change.data.manualOffset = std::string(static_cast<std::size_t>(size), '1');
    s->comm->queueChannelRequest(QVariant::fromValue(change));
    s->comm->queueModuleStatus(4);
    s->time.advance(500);
    QCOMPARE(s->log.lines(QtCriticalMsg).size(), goesOut ? 0 : 1);
    if (goesOut) {
        QCOMPARE(s->serial->frames.first().size(), 1322);
        return;
    }
    QVERIFY(s->log.containsText(QStringLiteral("too long for a frame: %1 bytes").arg(size + 6)));
    QCOMPARE(s->sent(), QList<QByteArray>{"1200000004"}); // the turn went on to the next kind
}

void TstCommandSlots::statusRequestGoesOutAtOnceWhenAsked()
{
    s->comm->RequestModuleStatus(128);
    QCOMPARE(s->sent(), QList<QByteArray>{"1200000080"});
}

void TstCommandSlots::answeredStatusRequestIsTakenOut()
{
    s->comm->queueModuleStatus(3);
    s->comm->queueModuleStatus(4);
    s->reply(device::moduleStatus(3, 1)); // whatever brought it
    QCOMPARE(nextTurn(), QList<QByteArray>{"1200000004"});
    QCOMPARE(nextTurn(), QList<QByteArray>{"0800000000"});
}

void TstCommandSlots::refreshGoesAfterTheQueues()
{
    s->comm->Slot_SendSamplingRates(text("5000"), text("16"));
    s->comm->queueModuleStatus(3);
    QCOMPARE(nextTurn(), QList<QByteArray>{"2a000000030300"});
    QCOMPARE(nextTurn(), QList<QByteArray>{"1200000003"});
    QCOMPARE(nextTurn(), QList<QByteArray>{"0100000001"});
}

void TstCommandSlots::refreshIsAskedForAgainAfterAnotherReply()
{
    s->comm->Slot_SendSamplingRates(text("5000"), text("16"));
    nextTurn();
    QCOMPARE(nextTurn(), QList<QByteArray>{"0100000001"});
    QCOMPARE(nextTurn(), QList<QByteArray>{"0100000001"}); // a fast status came in its place
    s->reply(device::systemStatus({}, true));
    QCOMPARE(nextTurn(), QList<QByteArray>{"0800000000"});
}

void TstCommandSlots::firmwareCommandsGoAsFastAsTheReplies()
{
    s->comm->Slot_FirmwareCommands(firmware(1));
    s->comm->Slot_FirmwareCommands(firmware(0xE1, "ab"));
    s->comm->Slot_FirmwareCommands(firmware(0));
    s->comm->Slot_StartFPGAprocess();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>{"160102010103000000"});
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>());
    s->endTurn();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>{"16010201e1030002006162"});
    s->endTurn();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>{"160102010003000000"});
    QCOMPARE(s->time.elapsedMs(), qint64(0));
}

void TstCommandSlots::firmwareCommandsWaitForTheSemaphore()
{
    s->time.advance(500); // a poll is out
    s->forget();
    s->comm->Slot_FirmwareCommands(firmware(1));
    s->comm->Slot_StartFPGAprocess();
    s->time.turn();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>());
    s->endTurn();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>{"160102010103000000"});
}

void TstCommandSlots::firmwareCommandsSilenceThePolling()
{
    s->comm->Slot_FirmwareCommands(firmware(1));
    s->comm->Slot_FirmwareCommands(firmware(0));
    s->comm->queueModuleStatus(3);
    s->comm->Slot_StartFPGAprocess();
    s->time.turn();
    s->forget();
    s->time.advance(3000);
    QCOMPARE(s->sent(), QList<QByteArray>());
    s->endTurn(); // holds the comm time-out off
    s->time.advance(1500);
    QCOMPARE(s->sent(), QList<QByteArray>{"160102010003000000"});
    QCOMPARE(nextTurn(), QList<QByteArray>{"1200000003"}); // the queue is empty: the cycle goes on
}

void TstCommandSlots::firmwareResetBecomesTheSystemReset()
{
    s->comm->Slot_FirmwareCommands(firmware(0x2B));
    s->comm->Slot_StartFPGAprocess();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>{"2b000000000000"});
    QCOMPARE(s->log.lines().count(text("System Reset request Sent")), 1);
}

void TstCommandSlots::firmwareCommandTooLongForAFrameIsDropped_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("goesOut");
    QTest::newRow("a full frame") << 1300 - 9 << true;
    QTest::newRow("one byte more") << 1300 - 8 << false;
    QTest::newRow("beyond 16 bits") << 70000 << false;
}

void TstCommandSlots::firmwareCommandTooLongForAFrameIsDropped()
{
    QFETCH(int, size);
    QFETCH(bool, goesOut);
    s->comm->Slot_FirmwareCommands(firmware(0xE1, QByteArray(size, 'x')));
    s->comm->Slot_FirmwareCommands(firmware(0));
    s->comm->Slot_StartFPGAprocess();
    s->time.turn();
    QCOMPARE(s->serial->frames.size(), goesOut ? 1 : 0);
    QCOMPARE(s->log.lines(QtCriticalMsg).size(), goesOut ? 0 : 1);
    if (goesOut) {
        QCOMPARE(s->serial->frames.first().size(), 1322);
        return;
    }
    QVERIFY(s->log.containsText(QStringLiteral("too long for a frame: %1 bytes").arg(size + 9)));
    s->time.turn(); // it did not take the semaphore
    QCOMPARE(s->sent(), QList<QByteArray>{"160102010003000000"});
}

void TstCommandSlots::firmwareTimerStopsItselfWhenTheQueueIsEmpty()
{
    s->comm->Slot_StartFPGAprocess();
    s->time.turn();
    s->comm->Slot_FirmwareCommands(firmware(1));
    s->time.turn();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>()); // the timer runs no more
}

void TstCommandSlots::clearedFirmwareCommandsAreNotSent()
{
    s->comm->Slot_FirmwareCommands(firmware(1));
    s->comm->Slot_StartFPGAprocess();
    s->comm->Slot_ClearFirmwrCommands();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>());
    QCOMPARE(nextTurn(), QList<QByteArray>{"0800000000"});
}

void TstCommandSlots::commandsAfterAnAbortWaitForANewStart()
{
    s->comm->Slot_FirmwareCommands(firmware(1));
    s->comm->Slot_StartFPGAprocess();
    s->comm->Slot_ClearFirmwrCommands();
    s->comm->Slot_FirmwareCommands(firmware(0));
    s->comm->Slot_FirmwareCommands(firmware(0x2B));
    s->time.advance(1000);
    QCOMPARE(s->sent(), QList<QByteArray>());
    s->comm->Slot_StartFPGAprocess();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>{"160102010003000000"});
}

void TstCommandSlots::commandsWithoutAStartEndInTheCommTimeout()
{
    s->comm->Slot_FirmwareCommands(firmware(1));
    s->forget();
    s->time.advance(4000);
    QCOMPARE(s->takeEvents().first(), text("CleanSlate"));
    QCOMPARE(s->sent(), QList<QByteArray>{"0100000001"});
    s->comm->Slot_StartFPGAprocess();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>()); // the reset emptied the queue
}

void TstCommandSlots::resetEmptiesTheFirmwareQueue()
{
    s->comm->Slot_FirmwareCommands(firmware(1));
    s->comm->Slot_StartFPGAprocess();
    s->reply(device::fastSystemStatus(1));
    s->forget();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>());
}

void TstCommandSlots::foreignFirmwareCommandDoesNotTakeTheSemaphore()
{
    s->comm->Slot_FirmwareCommands(QVariant(5));
    s->comm->Slot_FirmwareCommands(firmware(0));
    s->comm->Slot_StartFPGAprocess();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>());
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>{"160102010003000000"});
}

void TstCommandSlots::agreedPackRoutinesPack()
{
    QByteArray payload("old");
    DataModuleDeviceT1 t1;
    t1.selector = wireCode(ChannelSelector::Shunt);
    t1.shuntState = 143;
    s->comm->PackPayLoadDeviceT1Data(t1, 1, payload);
    QCOMPARE(payload.toHex(), QByteArray("28000000018f"));
    QCOMPARE(t1.selector, quint8(0));
    DataModuleDeviceT2 t2;
    t2.selector = wireCode(ChannelSelector::ReversePolarity);
    s->comm->PackPayLoadDeviceT2Data(t2, 2, payload);
    QCOMPARE(payload.toHex(), QByteArray("280000000284"));
    DataModuleDeviceT3 t3;
    t3.selector = wireCode(ChannelSelector::TypeIndex);
    t3.thermoDeviceTypeIndex = 4;
    s->comm->PackPayLoadDeviceT3Data(t3, 3, payload);
    QCOMPARE(payload.toHex(), QByteArray("200000000304"));
}

QTEST_GUILESS_MAIN(TstCommandSlots)
#include "tst_commandslots.moc"
