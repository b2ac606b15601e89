#include "sessionfixture.h"

#include "protocol/records/datagrams.h"

#include <QtTest>
#include <functional>

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

} // namespace

Q_DECLARE_METATYPE(std::function<void(Communication &)>)

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
    void everyKindOfRequestIsAddressedToTheController();
    void linesOfAType2RequestComeInTheirOrder();
    void samplingRatesBecomeTheirCodes_data();
    void samplingRatesBecomeTheirCodes();
    void unknownRatesFallToCode0();
    void voltageSupply();
    void channelChange();
    void powerSettingIsReadBack();
    void systemResetGoesOutInTheNextTurn();
    void systemResetWaitsForEmptyQueues();
    void systemResetWaitsForTheRefresh();
    void systemResetWaitsForTheFirmwareCommands();
    void kindsOfWorkComeInTheirOrder();
    void busyIsToldForEachEntry_data();
    void busyIsToldForEachEntry();
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
    void shuntsOfAllChannelsGoOutThroughTheFirst_data();
    void shuntsOfAllChannelsGoOutThroughTheFirst();
    void agreedPackRoutinesPack();

private:
    std::unique_ptr<SessionFixture> s;
};

void TstCommandSlots::channelRequestsGoOutOnePerTurn()
{
    s->comm->queueChannelRequest(request<DatagramT1>(1, 1, ChannelSelector::Autozero));
    s->comm->queueChannelRequest(request<DatagramT2>(1, 2, ChannelSelector::AutoReset));
    s->comm->queueChannelRequest(request<DatagramT3>(64, 1, ChannelSelector::Filter));
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"280000000181"});
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"280000000280"});
    QVERIFY(s->log.contains(text("ModuleType2 request Sent")));
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"260000007f3000"});
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"0800000000"});
}

void TstCommandSlots::everyKindOfRequestIsAddressedToTheController()
{
    s->comm->queueChannelRequest(request<DatagramT1>(1, 1, ChannelSelector::Autozero));
    s->comm->Slot_SendChannnelChangeReq(1, 1);
    s->comm->queueModuleStatus(3);
    s->comm->Slot_SendSystemReset();
    for (int turn = 0; turn < 4; ++turn) {
        s->endTurn();
        s->time.advance(500);
    }
    s->endTurn();
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(1));
    s->comm->Slot_StartFPGAprocess();
    s->time.turn();
    const QByteArrayList frames = s->serial->frames;
    QCOMPARE(s->sent(), QList<QByteArray>({"280000000181", "1e000000010100", "1200000003", "2b000000000000",
                                           "160102010103000000"}));
    for (const QByteArray &frame : frames) {
        QCOMPARE(frame.left(5).toHex(), QByteArray("8081828301"));
        QCOMPARE(frame.mid(6, 2).toHex(), QByteArray("4350"));
    }
}

void TstCommandSlots::linesOfAType2RequestComeInTheirOrder()
{
    s->comm->queueChannelRequest(request<DatagramT2>(1, 2, ChannelSelector::AutoReset));
    s->comm->queueChannelRequest(request<DatagramT2>(128, 2, ChannelSelector::AutoReset));
    s->nextTurn();
    const QStringList lines = s->log.lines();
    const QStringList packing = lines.filter(text("Packing Change Request Type 2 ===> setChannelCommand"));
    QCOMPARE(packing.size(), 1);
    QCOMPARE(lines.count(text("ModuleType2 request Sent")), 1);
    QVERIFY(lines.indexOf(packing.first()) < lines.indexOf(text("ModuleType2 request Sent")));
    s->log.clear();
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"0800000000"}); // the second names no channel
    QVERIFY(!s->log.contains(text("ModuleType2 request Sent")));
}

void TstCommandSlots::samplingRatesBecomeTheirCodes_data()
{
    QTest::addColumn<QString>("bitRate");
    QTest::addColumn<QString>("channelCount");
    QTest::addColumn<QByteArray>("payload");
    QTest::newRow("first and last") << "40000"
                                    << "256" << QByteArray("2a000000000700");
    QTest::newRow("last and first") << "312"
                                    << "2" << QByteArray("2a000000070000");
    QTest::newRow("from the table of the dialog") << "10000"
                                                  << "64" << QByteArray("2a000000020500");
}

void TstCommandSlots::samplingRatesBecomeTheirCodes()
{
    QFETCH(QString, bitRate);
    QFETCH(QString, channelCount);
    QFETCH(QByteArray, payload);
    s->comm->Slot_SendSamplingRates(bitRate, channelCount);
    QCOMPARE(s->nextTurn(), QList<QByteArray>{payload});
    QCOMPARE(s->log.lines().count(text("System Settings request Sent")), 1);
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"0100000001"}); // what became of it is read back
}

void TstCommandSlots::unknownRatesFallToCode0()
{
    s->comm->Slot_SendSamplingRates(text("9999"), text("3"));
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"2a000000000000"});
}

void TstCommandSlots::voltageSupply()
{
    s->comm->Slot_SendVoltageSupply(0xFF, 1, 0x78);
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"1c000000ff0178"});
}

void TstCommandSlots::channelChange()
{
    s->comm->Slot_SendChannnelChangeReq(5, 6);
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"1e000000050600"});
}

void TstCommandSlots::powerSettingIsReadBack()
{
    s->comm->Slot_SendPowerModuleSetting(1, 2, 0x1234);
    QCOMPARE(s->takeEvents(), QStringList({text("statusBusy"), text("statusBusy")}));
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"1800000001023412"});
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"1200000081"});
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"0800000000"});
}

void TstCommandSlots::systemResetGoesOutInTheNextTurn()
{
    s->comm->Slot_SendSystemReset();
    QCOMPARE(s->sent(), QList<QByteArray>());
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"2b000000000000"});
    QCOMPARE(s->log.lines().count(text("System Reset request Sent")), 1);
}

void TstCommandSlots::systemResetWaitsForEmptyQueues()
{
    s->comm->Slot_SendSystemReset();
    s->comm->queueModuleStatus(3);
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"1200000003"});
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"2b000000000000"});
    QVERIFY(s->log.contains(text("System Reset request Sent")));
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"0800000000"});
}

void TstCommandSlots::systemResetWaitsForTheRefresh()
{
    s->comm->Slot_SendSystemReset();
    s->comm->Slot_SendSamplingRates(text("5000"), text("16"));
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"2a000000030300"});
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"0100000001"});
    s->reply(device::systemStatus({}, true));
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"2b000000000000"});
}

void TstCommandSlots::systemResetWaitsForTheFirmwareCommands()
{
    s->comm->Slot_SendSystemReset();
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(1));
    QCOMPARE(s->nextTurn(), QList<QByteArray>());
    s->comm->Slot_StartFPGAprocess();
    s->time.turn();
    QCOMPARE(s->sent(), QList<QByteArray>{"160102010103000000"});
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"2b000000000000"});
}

void TstCommandSlots::kindsOfWorkComeInTheirOrder()
{
    s->comm->Slot_SendSystemReset();
    s->comm->queueModuleStatus(3);
    s->comm->Slot_SendVoltageSupply(1, 0, 0);
    s->comm->queueChannelRequest(request<DatagramT1>(2, 1, ChannelSelector::Autozero));
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"280000000381"});
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"1c000000010000"});
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"1200000003"});
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"2b000000000000"});
}

void TstCommandSlots::busyIsToldForEachEntry_data()
{
    using Order = std::function<void(Communication &)>;
    QTest::addColumn<Order>("order");
    QTest::addColumn<int>("times");
    const auto row = [](const char *name, int times, const Order &order) {
        QTest::newRow(name) << order << times;
    };
    row("type 1", 1, [](Communication &c) {
        c.queueChannelRequest(request<DatagramT1>(1, 1, ChannelSelector::Autozero));
    });
    row("request without a channel", 1, [](Communication &c) {
        c.queueChannelRequest(request<DatagramT1>(1, 0, ChannelSelector::ShuntAll));
    });
    row("module status", 1, [](Communication &c) { c.queueModuleStatus(3); });
    row("rates", 1, [](Communication &c) { c.Slot_SendSamplingRates(text("312"), text("2")); });
    row("voltage supply", 1, [](Communication &c) { c.Slot_SendVoltageSupply(1, 1, 1); });
    row("channel change", 1, [](Communication &c) { c.Slot_SendChannnelChangeReq(1, 1); });
    row("power and its status", 2, [](Communication &c) { c.Slot_SendPowerModuleSetting(1, 1, 1); });
    row("firmware", 1, [](Communication &c) { c.Slot_FirmwareCommands(SessionFixture::firmware(1)); });
}

void TstCommandSlots::busyIsToldForEachEntry()
{
    QFETCH(std::function<void(Communication &)>, order);
    QFETCH(int, times);
    order(*s->comm);
    QCOMPARE(s->takeEvents(), QVector<QString>(times, text("statusBusy")).toList());
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
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"1200000003"});
    sentInside.clear();
    s->endTurn();
    s->comm->queueChannelRequest(request<DatagramT1>(1, 1, ChannelSelector::Autozero));
    QCOMPARE(sentInside, QList<QByteArray>{"0800000000"});
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"280000000181"});
    sentInside.clear();
    s->endTurn();
    s->comm->Slot_SendChannnelChangeReq(1, 1);
    QCOMPARE(sentInside, QList<QByteArray>{"0800000000"});
    sentInside.clear();
    s->endTurn();
    s->comm->Slot_FirmwareCommands(SessionFixture::firmware(1));
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
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"1200000004"});
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
    if (!goesOut)
        s->expectDropped(size + 6);
    s->time.advance(500);
    if (goesOut) {
        QCOMPARE(s->serial->frames.first().size(), 1322);
        return;
    }
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
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"1200000004"});
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"0800000000"});
}

void TstCommandSlots::refreshGoesAfterTheQueues()
{
    s->comm->Slot_SendSamplingRates(text("5000"), text("16"));
    s->comm->queueModuleStatus(3);
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"2a000000030300"});
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"1200000003"});
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"0100000001"});
}

void TstCommandSlots::refreshIsAskedForAgainAfterAnotherReply()
{
    s->comm->Slot_SendSamplingRates(text("5000"), text("16"));
    s->nextTurn();
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"0100000001"});
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"0100000001"}); // a fast status came in its place
    s->reply(device::systemStatus({}, true));
    QCOMPARE(s->nextTurn(), QList<QByteArray>{"0800000000"});
}

void TstCommandSlots::shuntsOfAllChannelsGoOutThroughTheFirst_data()
{
    QTest::addColumn<int>("shuntState");
    QTest::addColumn<QByteArray>("payload");
    QTest::newRow("preselected ones on") << 0x8F << QByteArray("28000000018f");
    QTest::newRow("all off") << 0x8E << QByteArray("28000000018e");
}

void TstCommandSlots::shuntsOfAllChannelsGoOutThroughTheFirst()
{
    QFETCH(int, shuntState);
    QFETCH(QByteArray, payload);
    DatagramT1 change;
    change.module = 1;
    change.channel = 1;
    change.data.selector = 7;
    change.data.shuntState = static_cast<quint8>(shuntState);
    s->comm->queueChannelRequest(QVariant::fromValue(change));
    QCOMPARE(s->nextTurn(), QList<QByteArray>{payload});
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
