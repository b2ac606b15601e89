#include "protocol/commandpacking.h"
#include "protocol/records/datagrams.h"
#include "protocol/records/fpgafwcommand.h"
#include "support/messagecatcher.h"

#include <QtTest>

namespace {

constexpr quint8 kChannel = 0x7F;

DataModuleDeviceT1 snapshotT1()
{
    DataModuleDeviceT1 data;
    data.bridgeTypeIndex = 0x11;
    data.gainIndex = 0x22;
    data.manualOffset = "-12.5";
    data.filterValue = 2500;
    data.reversePolarity = true;
    data.shuntState = 0x8F;
    data.autozero = 1;
    return data;
}

DataModuleDeviceT2 snapshotT2()
{
    DataModuleDeviceT2 data;
    data.bridgeTypeIndex = 0x13;
    data.gainIndex = 0x24;
    data.filterValue = 999999999;
    data.reversePolarity = true;
    data.autozero = 1;
    return data;
}

DataModuleDeviceT3 snapshotT3()
{
    DataModuleDeviceT3 data;
    data.thermoDeviceTypeIndex = 0x15;
    data.temperatureRangeIndex = 0x26;
    data.filterValue = 32;
    data.autozero = 1;
    return data;
}

template <typename Data>
QByteArray packed(Data data, int selector)
{
    data.selector = static_cast<quint8>(selector);
    const QByteArray payload = command::packChannelData(data, kChannel).toHex();
    return data.selector == 0 ? payload : QByteArray("selector not cleared");
}

template <typename Request>
QVariant request(quint32 module, quint8 channel, int selector)
{
    Request r;
    r.module = module;
    r.channel = channel;
    r.data.selector = static_cast<quint8>(selector);
    return QVariant::fromValue(r);
}

void selectorRow(int selector, const char *hex)
{
    QTest::newRow(qPrintable(QStringLiteral("selector %1").arg(selector))) << selector << QByteArray(hex);
}

void selectorColumns()
{
    QTest::addColumn<int>("selector");
    QTest::addColumn<QByteArray>("payload");
}

} // namespace

class TstCommandPacking : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_log = std::make_unique<MessageCatcher>(); }
    void cleanup() { m_log.reset(); }

    void statusRequestsAreFiveBytes_data();
    void statusRequestsAreFiveBytes();
    void eachStateBeginsWithItsRequest();
    void requestsOfTheWalkTakeTheLowByte();
    void wireChannelOfModule_data();
    void wireChannelOfModule();
    void type1Selectors_data();
    void type1Selectors();
    void type2Selectors_data();
    void type2Selectors();
    void type3Selectors_data();
    void type3Selectors();
    void polaritySwitchedOff();
    void indexIsCutToOneByte();
    void offsetTextIsUtf8AndMayBeEmpty();
    void negativeFilterIsDecimalText();
    void filterOf2500IsTenBytesOfPayload();
    void channelRequestsOfAllThreeRecords();
    void requestsWithoutAChannelGiveNoPayload();
    void channelBOfModule128GivesNoPayload();
    void foreignValueGivesNoPayloadAndALine();
    void packingIsLoggedByRecord_data();
    void packingIsLoggedByRecord();
    void manualOffsetIsLoggedAsText();
    void systemCommands_data();
    void systemCommands();
    void systemResetIsAllZeros();
    void fpgaCommandCarriesWordsAndData();
    void fpgaCommandWithoutData();
    void fpgaResetBecomesTheSystemReset();

private:
    std::unique_ptr<MessageCatcher> m_log;
};

void TstCommandPacking::statusRequestsAreFiveBytes_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QByteArray>("expected");
    using command::packStatusRequest;
    QTest::newRow("system") << packStatusRequest(PayloadCode::SystemStatus, 1) << QByteArray("0100000001");
    QTest::newRow("fast system") << packStatusRequest(PayloadCode::FastSystemStatus, 0)
                                 << QByteArray("0800000000");
    QTest::newRow("fast module") << packStatusRequest(PayloadCode::FastModuleStatus, 0)
                                 << QByteArray("1000000000");
    QTest::newRow("controller") << command::packModuleRequest(0) << QByteArray("1200000000");
    QTest::newRow("last analog") << command::packModuleRequest(128) << QByteArray("1200000080");
    QTest::newRow("power") << command::packModuleRequest(0x81) << QByteArray("1200000081");
}

void TstCommandPacking::statusRequestsAreFiveBytes()
{
    QFETCH(QByteArray, payload);
    QFETCH(QByteArray, expected);
    QCOMPARE(payload.toHex(), expected);
}

void TstCommandPacking::eachStateBeginsWithItsRequest()
{
    using command::packInitRequest;
    QCOMPARE(packInitRequest(SessionState::SystemStatusAwaited, 5, 6)->toHex(), QByteArray("0100000001"));
    QCOMPARE(packInitRequest(SessionState::ModuleWalk, 5, 6)->toHex(), QByteArray("1200000005"));
    QCOMPARE(packInitRequest(SessionState::ModuleEeprom, 5, 6)->toHex(), QByteArray("1400000006"));
    QVERIFY(!packInitRequest(SessionState::Cyclic, 5, 6));
}

void TstCommandPacking::requestsOfTheWalkTakeTheLowByte()
{
    using command::packInitRequest;
    QCOMPARE(packInitRequest(SessionState::ModuleWalk, 0x1234, 0)->toHex(), QByteArray("1200000034"));
    QCOMPARE(packInitRequest(SessionState::ModuleEeprom, 0, 0x1256)->toHex(), QByteArray("1400000056"));
}

void TstCommandPacking::wireChannelOfModule_data()
{
    QTest::addColumn<int>("module");
    QTest::addColumn<int>("channel");
    QTest::addColumn<int>("onWire"); // 0: none
    QTest::newRow("module 1 A") << 1 << 1 << 1;
    QTest::newRow("module 1 B") << 1 << 2 << 2;
    QTest::newRow("module 64 A") << 64 << 1 << 127;
    QTest::newRow("module 64 B") << 64 << 2 << 128;
    QTest::newRow("module 128 A") << 128 << 1 << 255;
    QTest::newRow("module 128 B") << 128 << 2 << 0;
    QTest::newRow("whole module") << 1 << 0 << 0;
    QTest::newRow("channel 3") << 1 << 3 << 0;
    QTest::newRow("channel 255") << 1 << 255 << 0;
    QTest::newRow("module 0 B") << 0 << 2 << 0;
}

void TstCommandPacking::wireChannelOfModule()
{
    QFETCH(int, module);
    QFETCH(int, channel);
    QFETCH(int, onWire);
    const auto result = command::wireChannel(static_cast<quint32>(module), static_cast<quint8>(channel));
    QCOMPARE(result.has_value(), onWire != 0);
    QCOMPARE(int(result.value_or(0)), onWire);
}

void TstCommandPacking::type1Selectors_data()
{
    selectorColumns();
    selectorRow(0, "000000007f00");
    selectorRow(1, "200000007f11");
    selectorRow(2, "220000007f22");
    selectorRow(3, "240000007f2d31322e3500");
    selectorRow(4, "260000007f3235303000");
    selectorRow(5, "280000007f81");
    selectorRow(6, "280000007f85");
    selectorRow(7, "280000007f8f");
    selectorRow(8, "280000007f80");
    selectorRow(9, "000000007f00");
    selectorRow(10, "000000007f00");
    selectorRow(255, "000000007f00");
}

void TstCommandPacking::type1Selectors()
{
    QFETCH(int, selector);
    QFETCH(QByteArray, payload);
    QCOMPARE(packed(snapshotT1(), selector), payload);
}

void TstCommandPacking::type2Selectors_data()
{
    selectorColumns();
    selectorRow(0, "000000007f00");
    selectorRow(1, "200000007f13");
    selectorRow(2, "220000007f24");
    selectorRow(3, "000000007f00"); // no manual offset
    selectorRow(4, "260000007f39393939393939393900");
    selectorRow(5, "280000007f81");
    selectorRow(6, "280000007f85");
    selectorRow(7, "000000007f00"); // no shunt
    selectorRow(8, "280000007f80");
    selectorRow(9, "000000007f00");
}

void TstCommandPacking::type2Selectors()
{
    QFETCH(int, selector);
    QFETCH(QByteArray, payload);
    QCOMPARE(packed(snapshotT2(), selector), payload);
}

void TstCommandPacking::type3Selectors_data()
{
    selectorColumns();
    selectorRow(0, "000000007f00");
    selectorRow(1, "200000007f15");
    selectorRow(2, "220000007f26");
    selectorRow(3, "000000007f00");
    selectorRow(4, "260000007f333200");
    for (int selector = 5; selector <= 9; ++selector)
        selectorRow(selector, "000000007f00");
}

void TstCommandPacking::type3Selectors()
{
    QFETCH(int, selector);
    QFETCH(QByteArray, payload);
    QCOMPARE(packed(snapshotT3(), selector), payload);
}

void TstCommandPacking::polaritySwitchedOff()
{
    DataModuleDeviceT1 t1 = snapshotT1();
    t1.reversePolarity = false;
    QCOMPARE(packed(t1, 6), QByteArray("280000007f84"));
    DataModuleDeviceT2 t2 = snapshotT2();
    t2.reversePolarity = false;
    QCOMPARE(packed(t2, 6), QByteArray("280000007f84"));
}

void TstCommandPacking::indexIsCutToOneByte()
{
    DataModuleDeviceT1 data;
    data.bridgeTypeIndex = 0x1FE;
    data.gainIndex = -1; // a combo box without a choice
    QCOMPARE(packed(data, 1), QByteArray("200000007ffe"));
    QCOMPARE(packed(data, 2), QByteArray("220000007fff"));
}

void TstCommandPacking::offsetTextIsUtf8AndMayBeEmpty()
{
    DataModuleDeviceT1 data;
    data.manualOffset = "\xC2\xB1"
                        "1";
    QCOMPARE(packed(data, 3), QByteArray("240000007fc2b13100"));
    data.manualOffset.clear();
    QCOMPARE(packed(data, 3), QByteArray("240000007f00"));
}

void TstCommandPacking::negativeFilterIsDecimalText()
{
    DataModuleDeviceT2 data;
    data.filterValue = -2147483647 - 1;
    QCOMPARE(packed(data, 4), QByteArray("260000007f") + QByteArray("-2147483648").toHex() + "00");
}

void TstCommandPacking::filterOf2500IsTenBytesOfPayload()
{
    DataModuleDeviceT1 data = snapshotT1();
    data.selector = 4;
    QCOMPARE(command::packChannelData(data, 3), QByteArray::fromHex("26000000033235303000"));
    data.selector = 4;
    QCOMPARE(command::packChannelData(data, 3).size(), 10);
}

void TstCommandPacking::channelRequestsOfAllThreeRecords()
{
    using command::packChannelRequest;
    QCOMPARE(packChannelRequest(request<DatagramT1>(1, 2, 5))->toHex(), QByteArray("280000000281"));
    QCOMPARE(packChannelRequest(request<DatagramT2>(64, 1, 8))->toHex(), QByteArray("280000007f80"));
    QCOMPARE(packChannelRequest(request<DatagramT3>(128, 1, 2))->toHex(), QByteArray("22000000ff00"));
}

void TstCommandPacking::requestsWithoutAChannelGiveNoPayload()
{
    QVERIFY(!command::packChannelRequest(request<DatagramT1>(1, 0, 9)));
    QVERIFY(!command::packChannelRequest(request<DatagramT1>(1, 3, 1)));
    QVERIFY(!command::packChannelRequest(QVariant::fromValue(DatagramT2())));
    QVERIFY(!command::packChannelRequest(QVariant::fromValue(DatagramT3())));
}

void TstCommandPacking::channelBOfModule128GivesNoPayload()
{
    QVERIFY(command::packChannelRequest(request<DatagramT1>(128, 1, 1)));
    QVERIFY(!command::packChannelRequest(request<DatagramT1>(128, 2, 1)));
}

void TstCommandPacking::foreignValueGivesNoPayloadAndALine()
{
    QVERIFY(!command::packChannelRequest(QVariant(42)));
    QCOMPARE(m_log->lines(), QStringList(QStringLiteral("Unknown Request being packed")));
    QVERIFY(!command::packChannelRequest(QVariant()));
    QVERIFY(!command::packChannelRequest(QVariant::fromValue(FPGAfwCommand())));
}

void TstCommandPacking::packingIsLoggedByRecord_data()
{
    QTest::addColumn<int>("selector");
    QTest::addColumn<QString>("beginning"); // behind the number of the type
    const QString byte = QStringLiteral(" ===> setChannelCommand param2 + parameter1 + parameter2: ");
    const QString text = QStringLiteral(" ===> setChannelCommand param2Str +parameter1 +parameter2: ");
    QTest::newRow("nothing chosen") << 0 << byte;
    QTest::newRow("index") << 1 << byte;
    QTest::newRow("filter") << 4 << text;
}

void TstCommandPacking::packingIsLoggedByRecord()
{
    QFETCH(int, selector);
    QFETCH(QString, beginning);
    packed(snapshotT1(), selector);
    packed(snapshotT2(), selector);
    packed(snapshotT3(), selector);
    const QStringList lines = m_log->lines();
    QCOMPARE(lines.size(), 3);
    for (int i = 0; i < 3; ++i) {
        const QString begin = QStringLiteral("Packing Change Request Type %1").arg(i + 1) + beginning;
        QVERIFY2(lines.at(i).startsWith(begin), qPrintable(lines.at(i)));
    }
}

void TstCommandPacking::manualOffsetIsLoggedAsText()
{
    packed(snapshotT1(), 3);
    QVERIFY(m_log->containsText(QStringLiteral("Packing Change Request Type 1 ===> setChannelCommand "
                                               "param2Str +parameter1 +parameter2: -12.5")));
}

void TstCommandPacking::systemCommands_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("payload");
    QTest::newRow("rates") << 0x2A << QByteArray("2a000000a1b2c3");
    QTest::newRow("voltage supply") << 0x1C << QByteArray("1c000000a1b2c3");
    QTest::newRow("channel change") << 0x1E << QByteArray("1e000000a1b2c3");
    QTest::newRow("power has a fourth byte") << 0x18 << QByteArray("18000000a1b2c3d4");
    QTest::newRow("reset") << 0x2B << QByteArray("2b000000a1b2c3");
}

void TstCommandPacking::systemCommands()
{
    QFETCH(int, code);
    QFETCH(QByteArray, payload);
    const SystemCommand entry{static_cast<PayloadCode>(code), 0xA1, 0xB2, 0xC3, 0xD4};
    QCOMPARE(command::packSystemCommand(entry).toHex(), payload);
}

void TstCommandPacking::systemResetIsAllZeros()
{
    QCOMPARE(command::packSystemReset().toHex(), QByteArray("2b000000000000"));
}

void TstCommandPacking::fpgaCommandCarriesWordsAndData()
{
    const FPGAfwCommand program{1, 2, 1, 225, 0x1234, 256, QByteArray(254, '\xFF') + "ab"};
    const QByteArray payload = command::packFpgaCommand(program);
    QCOMPARE(payload.left(9).toHex(), QByteArray("16010201e134120001"));
    QCOMPARE(payload.size(), 9 + 256);
    QCOMPARE(payload.mid(9), program.data);
}

void TstCommandPacking::fpgaCommandWithoutData()
{
    QCOMPARE(command::packFpgaCommand({2, 1, 1, 224, 3, 0, {}}).toHex(), QByteArray("16020101e003000000"));
    QCOMPARE(command::packFpgaCommand({}).toHex(), QByteArray("160000000000000000"));
}

void TstCommandPacking::fpgaResetBecomesTheSystemReset()
{
    QCOMPARE(command::packFpgaCommand({1, 2, 1, 0x2B, 7, 8, "data"}).toHex(), QByteArray("2b000000000000"));
}

QTEST_GUILESS_MAIN(TstCommandPacking)
#include "tst_commandpacking.moc"
