#include "sim/device.h"

#include "sim/catalogue.h"

#include <QtTest>

using sim::Answer;
using sim::Chain;
using sim::Channel;
using sim::Device;
using sim::Milliseconds;
using sim::Module;
using sim::Power;

namespace {

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

/// Four modules: strain gauge, voltage, thermo, universal; and a power module.
Chain smallChain()
{
    Chain chain;
    chain.controller.identity.serial = QStringLiteral("CT-1");
    chain.power = Power();
    chain.power->identity.serial = QStringLiteral("PW-1");
    for (const quint8 type : {sim::kStrainGauge, sim::kVoltage, sim::kThermo, sim::kUniversal})
        chain.modules.append(Module::ofType(type));
    chain.module(1).identity = {QStringLiteral("SG-0001"), QStringLiteral("2.1"), QStringLiteral("1.4.2"),
                                QStringLiteral("1.07")};
    return chain;
}

int u16(const QByteArray &bytes, int at)
{
    return static_cast<quint8>(bytes.at(at)) | static_cast<quint8>(bytes.at(at + 1)) << 8;
}

/// The bits of a fast status entry, counted from the least significant bit of its first byte.
int fastBits(const QByteArray &reply, int entry, int firstBit, int width)
{
    int value = 0;
    for (int i = 0; i < width; ++i) {
        const int bit = firstBit + i;
        const int byte = static_cast<quint8>(reply.at(16 + 9 * entry + bit / 8));
        value |= ((byte >> (bit % 8)) & 1) << i;
    }
    return value;
}

} // namespace

class TstSimDevice : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void systemStatusByteForByte();
    void systemStatusWithoutPower();
    void claimedCountAndFixedModulesAreTakenAsDescribed();
    void fastSystemStatusIsTheHead();
    void headWithoutPowerIsZero();
    void fastModuleStatusHas130Entries();
    void fastModuleStatusOfAFullChain();
    void analogStatusByteForByte();
    void textsThatFillTheirFieldKeepAllBytes();
    void controllerStatus();
    void powerStatusByteForByte();
    void unknownTypeAnswersWithEmptyLists();
    void absentAddressIsSilent_data();
    void absentAddressIsSilent();
    void eepromRequestGetsAPlainHead();
    void fpgaCommandGetsAPlainHead();

    void malformedRequestIsRefused_data();
    void malformedRequestIsRefused();
    void commandIsAcknowledged_data();
    void commandIsAcknowledged();

    void bridgeAndRange();
    void indexBeyondTheListIsNotTaken();
    void commandForAnAbsentChannelChangesNothing();
    void wireChannelOfModule128();
    void offsetText_data();
    void offsetText();
    void filterText_data();
    void filterText();
    void polarity();
    void autozeroShowsForAWhile();
    void autoResetEndsAutozero();
    void shuntsTurnThemselvesOff();
    void shuntCanBeTurnedOff();
    void groupShuntsReachAllStrainGaugeChannels_data();
    void groupShuntsReachAllStrainGaugeChannels();
    void preselectedShunts();
    void thermoHasNoActions();
    void functionChangeStartsTheChannelAfresh();
    void functionThatCannotBeSelected_data();
    void functionThatCannotBeSelected();
    void voltageSupply();
    void powerSettings_data();
    void powerSettings();
    void rates_data();
    void rates();
    void resetRestoresTheDescription();
    void secondResetRaisesTheFlagAgain();
    void resetFlagCanBeSwitchedOff();
    void resetFlagCanBeRaised();

    void valuesWanderSlowlyAndAreRepeatable();
    void invalidMarksAndSelftest();
    void everyListFitsItsField();

private:
    QByteArray ask(const QByteArray &payload, int ms = 0)
    {
        const Answer answer = m_device->answer(payload, Milliseconds(ms));
        return answer.verdict == Answer::Verdict::Reply ? answer.payload : QByteArray();
    }
    QByteArray ask(const char *payload, int ms = 0) { return ask(hex(payload), ms); }
    Channel &channel(int address, int index) { return m_device->chain().module(address).channel(index); }

    std::unique_ptr<Device> m_device;
};

void TstSimDevice::init()
{
    m_device = std::make_unique<Device>(smallChain(), 1);
}

void TstSimDevice::systemStatusByteForByte()
{
    const QByteArray reply = ask("0100000001");
    QCOMPARE(reply.at(0), '\x01');
    QCOMPARE(reply.mid(1, 9), QByteArray(9, '\0'));
    QCOMPARE(reply.mid(16, 2).toHex(), QByteArray("0400"));
    QCOMPARE(reply.mid(18, 128).toHex(), QByteArray("01020409") + QByteArray(248, '0'));
    QCOMPARE(reply.mid(146, 10).toHex(), QByteArray("64780000000000000000"));
    QCOMPARE(reply.mid(156).replace('\0', '|'), QByteArray("inductive|inductive|3000|2500 (16ch)|-|PCM|"));
}

void TstSimDevice::systemStatusWithoutPower()
{
    m_device->chain().power.reset();
    QCOMPARE(ask("0100000001").mid(146, 10).toHex(), QByteArray("64000000000000000000"));
}

void TstSimDevice::claimedCountAndFixedModulesAreTakenAsDescribed()
{
    m_device->chain().claimedModules = 130;
    m_device->chain().fixedModules = hex("0078");
    const QByteArray reply = ask("0100000001");
    QCOMPARE(u16(reply, 16), 130);
    QCOMPARE(reply.mid(146, 10).toHex(), QByteArray("00780000000000000000"));
    QCOMPARE(reply.mid(156, 9), QByteArray("inductive"));
}

void TstSimDevice::fastSystemStatusIsTheHead()
{
    Power &power = *m_device->chain().power;
    power.tooHot = true;
    power.mode = Power::Auto;
    power.autoMillivolts = 9000;
    const QByteArray reply = ask("0800000000");
    QCOMPARE(reply.size(), 16);
    QCOMPARE(reply.left(10).toHex(), QByteArray("08000000000000000001"));
    QVERIFY(qAbs(u16(reply, 10) - 2400) <= 40);
    QCOMPARE(u16(reply, 12), 9000);
    QVERIFY(qAbs(u16(reply, 14) - 2500) <= 100);
}

void TstSimDevice::headWithoutPowerIsZero()
{
    m_device->chain().power.reset();
    QCOMPARE(ask("0800000000").toHex(), QByteArray("08000000000000000000000000000000"));
}

void TstSimDevice::fastModuleStatusHas130Entries()
{
    const QByteArray reply = ask("1000000000");
    QCOMPARE(reply.size(), 1186);
    QCOMPARE(reply.at(0), '\x10');
    for (const int entry : {0, 1, 2, 3, 4, 128, 129}) {
        QVERIFY(qAbs(fastBits(reply, entry, 0, 11) - 1200) <= 15);
        QVERIFY(qAbs(fastBits(reply, entry, 12, 9) - 180) <= 5);
    }
    QCOMPARE(reply.mid(16, 9), reply.mid(16 + 9 * 128, 9));
    QCOMPARE(reply.mid(16 + 9 * 5, 9 * 123), QByteArray(9 * 123, '\0'));
}

void TstSimDevice::fastModuleStatusOfAFullChain()
{
    Chain chain;
    for (int i = 0; i < 128; ++i)
        chain.modules.append(Module::ofType(sim::kStrainGauge));
    chain.module(127).health.selftest = 5;
    chain.module(128).health.selftest = 6;
    chain.controller.health.selftest = 7;
    m_device = std::make_unique<Device>(chain, 1);
    const QByteArray reply = ask("1000000000");
    QCOMPARE(reply.size(), 1186);
    QCOMPARE(fastBits(reply, 127, 67, 5), 5);
    QCOMPARE(fastBits(reply, 128, 67, 5), 7);
    QCOMPARE(ask("1200000080").size(), 564);
}

void TstSimDevice::analogStatusByteForByte()
{
    Channel &a = channel(1, 0);
    a.bridgeIndex = 3;
    a.gainIndex = 2;
    a.offset = QStringLiteral("12.5");
    a.filter = QStringLiteral("2500");
    a.negativePreselected = true;
    Channel &b = channel(1, 1);
    b.bridgeIndex = 1;
    b.gainIndex = 7;
    b.reversePolarity = true;
    b.positivePreselected = true;
    b.negativePreselected = true;
    const QByteArray reply = ask("1200000001");
    QCOMPARE(reply.size(), 564);
    QCOMPARE(reply.left(10).toHex(), QByteArray("12000000000000000000"));
    //                                          addr id type bridge range function polarity
    QCOMPARE(reply.mid(16, 10).toHex(), QByteArray("01000103010207010102"));
    QCOMPARE(reply.mid(26, 10).toHex(), QByteArray("000000000e0000000000"));
    QCOMPARE(reply.mid(36, 16), QByteArray("SG-0001").leftJustified(16, '\0'));
    QCOMPARE(reply.mid(52, 16), QByteArray("2.1").leftJustified(16, '\0'));
    QCOMPARE(reply.mid(68, 16), QByteArray("1.4.2").leftJustified(16, '\0'));
    QCOMPARE(reply.mid(84, 16), QByteArray("1.07").leftJustified(16, '\0'));
    QCOMPARE(reply.mid(100, 16), QByteArray("12.5").leftJustified(16, '\0'));
    QCOMPARE(reply.mid(116, 16), QByteArray("Auto").leftJustified(16, '\0'));
    QCOMPARE(reply.mid(132, 16), QByteArray("2500").leftJustified(16, '\0'));
    QCOMPARE(reply.mid(148, 16), QByteArray("1000").leftJustified(16, '\0'));
    QVERIFY(reply.mid(164, 200).startsWith("120 Full$350 Full$1000 Full$120 Half$"));
    QCOMPARE(reply.mid(364, 200), QByteArray("0.5$1$2$5$10$20$50$100$").leftJustified(200, '\0'));
}

void TstSimDevice::textsThatFillTheirFieldKeepAllBytes()
{
    m_device->chain().module(1).identity.serial = QStringLiteral("0123456789abcdef");
    m_device->chain().module(1).sensorText = QString(199, QLatin1Char('x')) + QLatin1Char('$');
    m_device->chain().module(1).identity.hardware = QString(15, QLatin1Char('h')) + QStringLiteral("é");
    const QByteArray reply = ask("1200000001");
    QCOMPARE(reply.mid(36, 16), QByteArray("0123456789abcdef"));
    QCOMPARE(reply.mid(164, 200), QByteArray(199, 'x') + '$');
    QCOMPARE(reply.mid(52, 16), QByteArray(15, 'h') + '\0');
}

void TstSimDevice::controllerStatus()
{
    const QByteArray reply = ask("1200000000");
    QCOMPARE(reply.size(), 564);
    QCOMPARE(reply.mid(16, 20).toHex(), QByteArray("000064") + QByteArray(34, '0'));
    QCOMPARE(reply.mid(36, 16), QByteArray("CT-1").leftJustified(16, '\0'));
    QCOMPARE(reply.mid(100), QByteArray(464, '\0'));
}

void TstSimDevice::powerStatusByteForByte()
{
    Power &power = *m_device->chain().power;
    power.mode = Power::Auto;
    power.protection = 2;
    power.fixedMillivolts = 0x3039;
    power.autoMillivolts = 0x1234;
    const QByteArray reply = ask("1200000081");
    QCOMPARE(reply.size(), 100);
    QCOMPARE(reply.mid(16, 20).toHex(), QByteArray("8100780102000000000000393034120000000000"));
    QCOMPARE(reply.mid(36, 16), QByteArray("PW-1").leftJustified(16, '\0'));
    QCOMPARE(reply.mid(84, 16), QByteArray("1.07").leftJustified(16, '\0'));
}

void TstSimDevice::unknownTypeAnswersWithEmptyLists()
{
    m_device->chain().modules.append(Module::ofType(77));
    QCOMPARE(ask("0100000001").mid(18, 5).toHex(), QByteArray("010204094d"));
    const QByteArray reply = ask("1200000005");
    QCOMPARE(reply.size(), 564);
    QCOMPARE(int(reply.at(18)), 77);
    QCOMPARE(reply.mid(164), QByteArray(400, '\0'));
}

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

void TstSimDevice::eepromRequestGetsAPlainHead()
{
    m_device->chain().power.reset();
    QCOMPARE(ask("1400000003").toHex(), QByteArray("14000000000000000000000000000000"));
}

void TstSimDevice::fpgaCommandGetsAPlainHead()
{
    m_device->chain().power.reset();
    QCOMPARE(ask("16010201010000 0000").toHex(), QByteArray("16000000000000000000000000000000"));
    QCOMPARE(ask(hex("16010201e105000001") + QByteArray(256, '\xff')).size(), 16);
    m_device->chain().fpgaReplyCode = 0x08;
    QCOMPARE(ask("160102010100000000").toHex(), QByteArray("08000000000000000000000000000000"));
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
    m_device->chain().power.reset();
    QCOMPARE(ask(payload).toHex(), payload.left(1).toHex() + QByteArray(30, '0'));
}

void TstSimDevice::bridgeAndRange()
{
    ask("200000000102");
    ask("200000000203");
    ask("220000000404");
    QCOMPARE(channel(1, 0).bridgeIndex, 2);
    QCOMPARE(channel(1, 1).bridgeIndex, 3);
    QCOMPARE(channel(2, 1).gainIndex, 4);
    QCOMPARE(ask("1200000001").mid(19, 4).toHex(), QByteArray("02030000"));
    QCOMPARE(ask("1200000002").mid(19, 4).toHex(), QByteArray("00000004"));
}

void TstSimDevice::indexBeyondTheListIsNotTaken()
{
    ask("220000000107");
    ask("220000000108");
    QCOMPARE(channel(1, 0).gainIndex, 7);
    ask("2000000001ff");
    QCOMPARE(channel(1, 0).bridgeIndex, 0);
}

void TstSimDevice::commandForAnAbsentChannelChangesNothing()
{
    const QByteArray before = ask("1200000004");
    QCOMPARE(ask("200000000901").size(), 16);
    QCOMPARE(ask("26000000ff3100").size(), 16);
    QCOMPARE(ask("1200000004"), before);
}

void TstSimDevice::wireChannelOfModule128()
{
    Chain chain;
    for (int i = 0; i < 128; ++i)
        chain.modules.append(Module::ofType(sim::kVoltage));
    m_device = std::make_unique<Device>(chain, 1);
    ask("22000000ff03");
    ask("220000008005");
    QCOMPARE(channel(128, 0).gainIndex, 3);
    QCOMPARE(channel(128, 1).gainIndex, 0);
    QCOMPARE(channel(64, 1).gainIndex, 5);
}

void TstSimDevice::offsetText_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("wireChannel");
    QTest::addColumn<QByteArray>("shown");

    QTest::newRow("number") << QByteArray("12.5") << 1 << QByteArray("12.5");
    QTest::newRow("negative") << QByteArray("-999.9") << 1 << QByteArray("-999.9");
    QTest::newRow("auto") << QByteArray("Auto") << 1 << QByteArray("Auto");
    QTest::newRow("universal channel") << QByteArray("7") << 7 << QByteArray("7");
    QTest::newRow("beyond the limit") << QByteArray("1000") << 1 << QByteArray("3");
    QTest::newRow("no number") << QByteArray("abc") << 1 << QByteArray("3");
    QTest::newRow("empty") << QByteArray() << 1 << QByteArray("3");
    QTest::newRow("too long") << QByteArray("1.0000000000000000") << 1 << QByteArray("3");
    QTest::newRow("voltage channel") << QByteArray("12.5") << 3 << QByteArray("3");
}

void TstSimDevice::offsetText()
{
    QFETCH(QByteArray, text);
    QFETCH(int, wireChannel);
    QFETCH(QByteArray, shown);
    const int address = (wireChannel + 1) / 2;
    channel(address, 0).offset = QStringLiteral("3");
    QCOMPARE(ask(hex("24000000") + static_cast<char>(wireChannel) + text + '\0').at(0), '\x24');
    QCOMPARE(ask(hex("12000000") + static_cast<char>(address)).mid(100, 16), shown.leftJustified(16, '\0'));
}

void TstSimDevice::filterText_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("wireChannel");
    QTest::addColumn<QByteArray>("shown");

    QTest::newRow("number") << QByteArray("2500") << 1 << QByteArray("2500");
    QTest::newRow("largest") << QByteArray("999999999") << 1 << QByteArray("999999999");
    QTest::newRow("zero") << QByteArray("0") << 3 << QByteArray("0");
    QTest::newRow("negative") << QByteArray("-1") << 1 << QByteArray("600");
    QTest::newRow("too large") << QByteArray("1000000000") << 1 << QByteArray("600");
    QTest::newRow("no number") << QByteArray("fast") << 1 << QByteArray("600");
    QTest::newRow("thermo") << QByteArray("32") << 5 << QByteArray("32");
    QTest::newRow("thermo, too large") << QByteArray("33") << 5 << QByteArray("600");
    QTest::newRow("thermo, zero") << QByteArray("0") << 5 << QByteArray("600");
}

void TstSimDevice::filterText()
{
    QFETCH(QByteArray, text);
    QFETCH(int, wireChannel);
    QFETCH(QByteArray, shown);
    const int address = (wireChannel + 1) / 2;
    channel(address, 0).filter = QStringLiteral("600");
    ask(hex("26000000") + static_cast<char>(wireChannel) + text + '\0');
    QCOMPARE(ask(hex("12000000") + static_cast<char>(address)).mid(132, 16), shown.leftJustified(16, '\0'));
}

void TstSimDevice::polarity()
{
    ask("280000000185");
    QCOMPARE(int(ask("1200000001").at(25)), 1);
    ask("280000000285");
    QCOMPARE(int(ask("1200000001").at(25)), 3);
    ask("280000000184");
    QCOMPARE(int(ask("1200000001").at(25)), 2);
}

void TstSimDevice::autozeroShowsForAWhile()
{
    const int before = fastBits(ask("1000000000", 1000), 1, 48, 18);
    ask("280000000281", 1000);
    QByteArray fast = ask("1000000000", 1000);
    QCOMPARE(fastBits(fast, 1, 43, 2), 2);
    QVERIFY(fastBits(fast, 1, 48, 18) != before);
    fast = ask("1000000000", 3999);
    QCOMPARE(fastBits(fast, 1, 43, 2), 2);
    fast = ask("1000000000", 4000);
    QCOMPARE(fastBits(fast, 1, 43, 2), 0);
    QVERIFY(channel(1, 1).zeroed);
}

void TstSimDevice::autoResetEndsAutozero()
{
    ask("280000000181");
    ask("280000000180", 10);
    QCOMPARE(fastBits(ask("1000000000", 10), 1, 43, 2), 0);
    QVERIFY(!channel(1, 0).zeroed);
}

void TstSimDevice::shuntsTurnThemselvesOff()
{
    ask("280000000183", 500); // positive on
    ask("280000000289", 700); // negative on
    QVERIFY(channel(1, 0).positiveShuntOn(Milliseconds(500)));
    QVERIFY(!channel(1, 0).negativeShuntOn(Milliseconds(500)));
    QVERIFY(channel(1, 1).negativeShuntOn(Milliseconds(700)));
    QCOMPARE(fastBits(ask("1000000000", 20499), 1, 45, 2), 3);
    QCOMPARE(fastBits(ask("1000000000", 20500), 1, 45, 2), 2);
    QCOMPARE(fastBits(ask("1000000000", 20700), 1, 45, 2), 0);
}

void TstSimDevice::shuntCanBeTurnedOff()
{
    ask("280000000183");
    ask("280000000189");
    ask("280000000182", 10);
    QVERIFY(!channel(1, 0).positiveShuntOn(Milliseconds(10)));
    QVERIFY(channel(1, 0).negativeShuntOn(Milliseconds(10)));
    QCOMPARE(fastBits(ask("1000000000", 10), 1, 45, 2), 1);
    ask("280000000188", 20);
    QCOMPARE(fastBits(ask("1000000000", 20), 1, 45, 2), 0);
}

void TstSimDevice::groupShuntsReachAllStrainGaugeChannels_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<bool>("positiveBefore");
    QTest::addColumn<bool>("negativeBefore");
    QTest::addColumn<bool>("positive");
    QTest::addColumn<bool>("negative");

    QTest::newRow("138") << 138 << true << true << false << true;
    QTest::newRow("139") << 139 << false << false << true << false;
    QTest::newRow("140") << 140 << true << true << true << false;
    QTest::newRow("141") << 141 << false << false << false << true;
    QTest::newRow("142") << 142 << true << true << false << false;
    QTest::newRow("143, nothing preselected") << 143 << false << false << false << false;
}

void TstSimDevice::groupShuntsReachAllStrainGaugeChannels()
{
    QFETCH(int, code);
    QFETCH(bool, positiveBefore);
    QFETCH(bool, negativeBefore);
    QFETCH(bool, positive);
    QFETCH(bool, negative);
    channel(4, 1) = Channel::withFunction(sim::kVoltage);
    for (const int address : {1, 4}) {
        for (Channel &c : m_device->chain().module(address).channels) {
            c.positiveShuntUntil = Milliseconds(positiveBefore ? 5000 : 0);
            c.negativeShuntUntil = Milliseconds(negativeBefore ? 5000 : 0);
        }
    }
    ask(hex("2800000001") + static_cast<char>(code));
    const Milliseconds now(1);
    for (const Channel &c : {channel(1, 0), channel(1, 1), channel(4, 0)}) {
        QCOMPARE(c.positiveShuntOn(now), positive);
        QCOMPARE(c.negativeShuntOn(now), negative);
    }
    QCOMPARE(channel(4, 1).positiveShuntOn(now), positiveBefore);
    QCOMPARE(channel(2, 0).shuntOn(now), false);
}

void TstSimDevice::preselectedShunts()
{
    ask("28000000019b"); // 155, positive
    ask("28000000029d"); // 157, negative
    ask("28000000079b");
    ask("28000000079d");
    QCOMPARE(int(ask("1200000001").at(30)), 0x9);
    QCOMPARE(int(ask("1200000004").at(30)), 0x3);
    ask("28000000018f", 100);
    const Milliseconds now(101);
    QVERIFY(channel(1, 0).positiveShuntOn(now) && !channel(1, 0).negativeShuntOn(now));
    QVERIFY(!channel(1, 1).positiveShuntOn(now) && channel(1, 1).negativeShuntOn(now));
    QVERIFY(channel(4, 0).positiveShuntOn(now) && channel(4, 0).negativeShuntOn(now));
    QVERIFY(!channel(4, 1).shuntOn(now));
    QVERIFY(!channel(1, 0).shuntOn(Milliseconds(20100)));
    ask("28000000018e", 200);
    QVERIFY(!channel(4, 0).shuntOn(Milliseconds(201)));
    ask("28000000019a");
    ask("28000000029c");
    QCOMPARE(int(ask("1200000001").at(30)), 0);
}

void TstSimDevice::thermoHasNoActions()
{
    for (const char *request : {"280000000581", "280000000585", "280000000583", "28000000059b"})
        QCOMPARE(ask(request).size(), 16);
    QCOMPARE(fastBits(ask("1000000000"), 3, 43, 4), 0);
    QCOMPARE(int(ask("1200000003").at(25)), 0);
    QCOMPARE(int(ask("1200000003").at(30)), 0);
}

void TstSimDevice::functionChangeStartsTheChannelAfresh()
{
    channel(4, 1).gainIndex = 3;
    channel(4, 1).reversePolarity = true;
    channel(4, 0).gainIndex = 4;
    ask("1e000000080300");
    const QByteArray reply = ask("1200000004");
    QCOMPARE(reply.mid(19, 7).toHex(), QByteArray("00000400010300"));
    QCOMPARE(reply.mid(148, 16), QByteArray("2500").leftJustified(16, '\0'));
    QCOMPARE(reply.mid(364, 200),
             QByteArray("0.5$1$2$5$10$20$50$100$#0.1$0.5$1$5$10$").leftJustified(200, '\0'));
    QVERIFY(reply.mid(164, 200).contains("350 Quarter$#4 mA$8 mA$"));
    ask("1e000000070200");
    QCOMPARE(ask("1200000004").mid(364, 200),
             QByteArray("0.1$0.2$0.5$1$2$5$10$#0.1$0.5$1$5$10$").leftJustified(200, '\0'));
    // The new list counts for what is set from now on.
    ask("220000000805");
    QCOMPARE(channel(4, 1).gainIndex, 0);
    ask("220000000804");
    QCOMPARE(channel(4, 1).gainIndex, 4);
}

void TstSimDevice::functionThatCannotBeSelected_data()
{
    QTest::addColumn<QByteArray>("request");

    QTest::newRow("thermo") << hex("1e000000070400");
    QTest::newRow("unknown") << hex("1e000000070000");
    QTest::newRow("minus one") << hex("1e00000007ff00");
    QTest::newRow("a module of one function") << hex("1e000000010200");
}

void TstSimDevice::functionThatCannotBeSelected()
{
    QFETCH(QByteArray, request);
    const QByteArray first = ask("1200000001");
    const QByteArray fourth = ask("1200000004");
    QCOMPARE(ask(request).size(), 16);
    QCOMPARE(ask("1200000001"), first);
    QCOMPARE(ask("1200000004"), fourth);
}

void TstSimDevice::voltageSupply()
{
    ask("1c00000007015a");
    QCOMPARE(channel(4, 0).supplyVolts(), 12.0);
    ask("1c000000080114");
    QCOMPARE(channel(4, 1).supplyVolts(), 5.0);
    QCOMPARE(ask("1200000004").mid(26, 2).toHex(), QByteArray("5a14"));
    ask("1c00000007005a");
    QCOMPARE(ask("1200000004").mid(26, 2).toHex(), QByteArray("0014"));
    ask("1c00000001015a");
    QVERIFY(!channel(1, 0).supplyOn);
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
    QCOMPARE(ask(request).at(0), '\x18');
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
    m_device = std::make_unique<Device>(chain, 1);
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

void TstSimDevice::valuesWanderSlowlyAndAreRepeatable()
{
    Device other(smallChain(), 1);
    Device differs(smallChain(), 2);
    int changes = 0;
    int differences = 0;
    QByteArray last = ask("1000000000");
    for (int ms = 500; ms < 120000; ms += 500) {
        const QByteArray reply = ask("1000000000", ms);
        QCOMPARE(other.answer(hex("1000000000"), Milliseconds(ms)).payload, reply);
        differences += differs.answer(hex("1000000000"), Milliseconds(ms)).payload != reply ? 1 : 0;
        for (const int entry : {1, 2, 128, 129}) {
            QVERIFY(qAbs(fastBits(reply, entry, 0, 11) - fastBits(last, entry, 0, 11)) <= 3);
            QVERIFY(qAbs(fastBits(reply, entry, 12, 9) - fastBits(last, entry, 12, 9)) <= 1);
            changes += fastBits(reply, entry, 0, 11) != fastBits(last, entry, 0, 11) ? 1 : 0;
        }
        last = reply;
    }
    QVERIFY(changes > 100);
    QVERIFY(differences > 200);
}

void TstSimDevice::invalidMarksAndSelftest()
{
    sim::Health &health = m_device->chain().module(2).health;
    health.voltsInvalid = true;
    health.selftest = 10;
    QByteArray reply = ask("1000000000");
    QCOMPARE(fastBits(reply, 2, 11, 1), 1);
    QCOMPARE(fastBits(reply, 2, 21, 1), 0);
    QCOMPARE(fastBits(reply, 2, 67, 5), 10);
    QCOMPARE(int(static_cast<quint8>(reply.at(16 + 9 * 2 + 8)) >> 3), 10);
    health.voltsInvalid = false;
    health.celsiusInvalid = true;
    reply = ask("1000000000");
    QCOMPARE(fastBits(reply, 2, 11, 1), 0);
    QCOMPARE(fastBits(reply, 2, 21, 1), 1);
}

void TstSimDevice::everyListFitsItsField()
{
    const quint8 functions[] = {1, 2, 3, 4, 5, 6, 7, 8};
    Module universal = Module::ofType(sim::kUniversal);
    for (const quint8 a : functions) {
        QVERIFY(!Module::ofType(a).sensorsOf(0).isEmpty());
        QVERIFY(!Module::ofType(a).rangesOf(1).isEmpty());
        for (const quint8 b : functions) {
            universal.channels = {Channel::withFunction(a), Channel::withFunction(b)};
            QVERIFY(universal.sensorList().toUtf8().size() <= 200);
            QVERIFY(universal.rangeList().toUtf8().size() <= 200);
            QCOMPARE(universal.sensorsOf(1), Module::ofType(b).sensorsOf(0));
        }
    }
}

QTEST_GUILESS_MAIN(TstSimDevice)
#include "tst_simdevice.moc"
