#include "simdevicefixture.h"

#include "sim/catalogue.h"

#include <QtTest>

using sim::Answer;
using sim::Chain;
using sim::Milliseconds;
using sim::Power;

class TstSimDevice : public SimDeviceFixture
{
    Q_OBJECT

private slots:
    void init() { describe(smallChain()); }

    void absentAddressIsSilent_data();
    void absentAddressIsSilent();
    void eepromRequestIsAcknowledged();
    void fpgaCommandIsAcknowledged();
    void malformedRequestIsRefused_data();
    void malformedRequestIsRefused();
    void commandIsAcknowledged_data();
    void commandIsAcknowledged();
    void powerSettings_data();
    void powerSettings();
    void rates_data();
    void rates();
    void resetRestoresTheDescription();
    void secondResetRaisesTheFlagAgain();
    void resetFlagCanBeSwitchedOff();
    void resetFlagCanBeRaised();
    void answerTellsThatItCarriesTheFlag();
};

void TstSimDevice::absentAddressIsSilent_data()
{
    QTest::addColumn<int>("address");
    QTest::newRow("behind the last module") << 5;
    QTest::newRow("module 128") << 128;
    QTest::newRow("power module of a chain without one") << 0x81;
    QTest::newRow("beyond all addresses") << 0x82;
}

void TstSimDevice::absentAddressIsSilent()
{
    QFETCH(int, address);
    m_device->chain().power.reset();
    const Answer answer = m_device->answer(hex("12000000") + static_cast<char>(address), Milliseconds(0));
    QCOMPARE(answer.verdict, Answer::Verdict::Silent);
    QVERIFY(answer.payload.isEmpty());
}

void TstSimDevice::eepromRequestIsAcknowledged()
{
    m_device->chain().power.reset();
    QCOMPARE(ask("1400000003").toHex(), QByteArray("08000000000000000000000000000000"));
}

void TstSimDevice::fpgaCommandIsAcknowledged()
{
    m_device->chain().power.reset();
    QCOMPARE(ask("160102010100000000").toHex(), QByteArray("08000000000000000000000000000000"));
    QCOMPARE(ask(hex("16010201e105000001") + QByteArray(256, '\xff')).size(), 16);
}

void TstSimDevice::malformedRequestIsRefused_data()
{
    QTest::addColumn<QByteArray>("payload");

    QTest::newRow("empty") << QByteArray();
    QTest::newRow("unknown code") << hex("0300000000");
    QTest::newRow("code 0 of a packing slip") << hex("000000000100");
    QTest::newRow("system status without its argument 1") << hex("0100000000");
    QTest::newRow("status request too short") << hex("12000000");
    QTest::newRow("status request too long") << hex("120000000100");
    QTest::newRow("status request with a byte behind its code") << hex("0801000000");
    QTest::newRow("fast status with an argument") << hex("1000000001");
    QTest::newRow("channel command too short") << hex("2000000001");
    QTest::newRow("channel command too long") << hex("20000000010000");
    QTest::newRow("channel command with a byte behind its code") << hex("200100000100");
    QTest::newRow("channel 0") << hex("220000000001");
    QTest::newRow("text without its zero") << hex("260000000131303030");
    QTest::newRow("text with a zero inside") << hex("26000000013100303000");
    QTest::newRow("text for channel 0") << hex("26000000003100");
    QTest::newRow("text missing") << hex("2600000001");
    QTest::newRow("rates with a third parameter") << hex("2a000000020301");
    QTest::newRow("rates too short") << hex("2a0000000203");
    QTest::newRow("function with a third parameter") << hex("1e000000070201");
    QTest::newRow("function of channel 0") << hex("1e000000000200");
    QTest::newRow("supply of channel 0") << hex("1c000000000114");
    QTest::newRow("power setting of seven bytes") << hex("18000000011000");
    QTest::newRow("power setting of nine bytes") << hex("180000000110000000");
    QTest::newRow("reset with a parameter") << hex("2b000000010000");
    QTest::newRow("FPGA command too short") << hex("1601020101000000");
}

void TstSimDevice::malformedRequestIsRefused()
{
    QFETCH(QByteArray, payload);
    const Answer answer = m_device->answer(payload, Milliseconds(0));
    QCOMPARE(answer.verdict, Answer::Verdict::Refused);
    QVERIFY(answer.payload.isEmpty());
    QVERIFY(!answer.note.isEmpty());
}

void TstSimDevice::commandIsAcknowledged_data()
{
    QTest::addColumn<QByteArray>("payload");

    QTest::newRow("0x18") << hex("18000000012000 00");
    QTest::newRow("0x1c") << hex("1c000000070114");
    QTest::newRow("0x1e") << hex("1e000000070200");
    QTest::newRow("0x20") << hex("200000000101");
    QTest::newRow("0x22") << hex("220000000101");
    QTest::newRow("0x24") << hex("24000000014175746f00");
    QTest::newRow("0x26") << hex("26000000013130303000");
    QTest::newRow("0x28") << hex("280000000181");
    QTest::newRow("0x28, no such action") << hex("2800000001ff");
    QTest::newRow("0x2a") << hex("2a000000040300");
    QTest::newRow("0x2b") << hex("2b000000000000");
    QTest::newRow("for a channel that is not there") << hex("2000000000ff01").remove(4, 1);
}

void TstSimDevice::commandIsAcknowledged()
{
    QFETCH(QByteArray, payload);
    QByteArray live = ask("0800000000");
    QCOMPARE(live.at(0), '\x08');
    QCOMPARE(ask(payload).toHex(), live.toHex());
    m_device->chain().commandReplyCode = 0x22;
    live[0] = '\x22';
    m_device->raiseResetFlag();
    live[8] = 1;
    QCOMPARE(ask(payload).toHex(), live.toHex());
}

void TstSimDevice::powerSettings_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("modeAndProtection");
    QTest::addColumn<int>("fixedVoltage");
    QTest::addColumn<int>("autoVoltage");

    QTest::newRow("fixed voltage") << hex("1800000001100c30") << QByteArray("0001") << 12300 << 12000;
    QTest::newRow("auto voltage") << hex("180000000111e803") << QByteArray("0001") << 12000 << 1000;
    QTest::newRow("fixed mode") << hex("1800000001200000") << QByteArray("0001") << 12000 << 12000;
    QTest::newRow("auto mode") << hex("1800000001210000") << QByteArray("0101") << 12000 << 12000;
    QTest::newRow("standard") << hex("1800000001300000") << QByteArray("0000") << 12000 << 12000;
    QTest::newRow("derating") << hex("1800000001310000") << QByteArray("0001") << 12000 << 12000;
    QTest::newRow("mission critical") << hex("1800000001320000") << QByteArray("0002") << 12000 << 12000;
    QTest::newRow("setting 0") << hex("1800000001000000") << QByteArray("0001") << 12000 << 12000;
    QTest::newRow("other first argument") << hex("1800000002210000") << QByteArray("0001") << 12000 << 12000;
}

void TstSimDevice::powerSettings()
{
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, modeAndProtection);
    QFETCH(int, fixedVoltage);
    QFETCH(int, autoVoltage);
    m_device->chain().power->protection = 1;
    QCOMPARE(ask(request).at(0), '\x08');
    const QByteArray reply = ask("1200000081");
    QCOMPARE(reply.mid(19, 2).toHex(), modeAndProtection);
    QCOMPARE(u16(reply, 27), fixedVoltage);
    QCOMPARE(u16(reply, 29), autoVoltage);
    QCOMPARE(u16(ask("0800000000"), 12), modeAndProtection.startsWith("01") ? autoVoltage : fixedVoltage);
}

void TstSimDevice::rates_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("texts");

    QTest::newRow("625 kBit/s, 32 channels") << hex("2a000000060400") << QByteArray("375|625 (32ch)");
    QTest::newRow("2500 kBit/s, 2 channels") << hex("2a000000040000") << QByteArray("24000|2500 (2ch)");
    QTest::newRow("10000 kBit/s, 8 channels") << hex("2a000000020200") << QByteArray("24000|10000 (8ch)");
    QTest::newRow("40000 kBit/s, 2 channels") << hex("2a000000000000") << QByteArray("384000|40000 (2ch)");
    QTest::newRow("312 kBit/s, 256 channels") << hex("2a000000070700") << QByteArray("23|312 (256ch)");
    QTest::newRow("no such bit rate") << hex("2a000000080300") << QByteArray("3000|2500 (16ch)");
    QTest::newRow("no such channel count") << hex("2a000000040800") << QByteArray("3000|2500 (16ch)");
}

void TstSimDevice::rates()
{
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, texts);
    ask(request);
    const QByteArray area = ask("0100000001").mid(156).replace('\0', '|');
    QCOMPARE(area, QByteArray("inductive|inductive|") + texts + "|-|PCM|");
}

void TstSimDevice::resetRestoresTheDescription()
{
    ask("220000000103");
    ask("2a000000060400");
    ask("1800000001210000");
    const QByteArray reply = ask("2b000000000000");
    QCOMPARE(int(reply.at(8)), 0);
    QCOMPARE(channel(1, 0).gainIndex, 0);
    QCOMPARE(int(m_device->chain().power->mode), int(Power::Fixed));
    QCOMPARE(m_device->resetCount(), 1);
    QCOMPARE(int(ask("0800000000").at(8)), 1);
    QCOMPARE(int(ask("0800000000").at(8)), 0);
    QVERIFY(ask("0100000001").contains("2500 (16ch)"));
}

void TstSimDevice::secondResetRaisesTheFlagAgain()
{
    ask("2b000000000000");
    QCOMPARE(int(ask("2b000000000000").at(8)), 1);
    QCOMPARE(int(ask("0800000000").at(8)), 1);
    QCOMPARE(int(ask("0800000000").at(8)), 0);
}

void TstSimDevice::resetFlagCanBeSwitchedOff()
{
    Chain chain = smallChain();
    chain.flagsReset = false;
    describe(chain);
    ask("2b000000000000");
    QCOMPARE(int(ask("0800000000").at(8)), 0);
}

void TstSimDevice::resetFlagCanBeRaised()
{
    m_device->raiseResetFlag();
    // Requests without an answer do not use it up.
    m_device->answer(hex("120000007f"), Milliseconds(0));
    m_device->answer(hex("03"), Milliseconds(0));
    QCOMPARE(int(ask("1200000001").at(8)), 1);
    QCOMPARE(int(ask("1200000001").at(8)), 0);
}

void TstSimDevice::answerTellsThatItCarriesTheFlag()
{
    const QByteArray request = hex("0800000000");
    QVERIFY(!m_device->answer(request, Milliseconds(0)).carriesResetFlag);
    m_device->raiseResetFlag();
    QVERIFY(m_device->answer(request, Milliseconds(0)).carriesResetFlag);
    QVERIFY(!m_device->answer(request, Milliseconds(0)).carriesResetFlag);
}

QTEST_GUILESS_MAIN(TstSimDevice)
#include "tst_simdevice.moc"
