#include "simdevicefixture.h"

#include "sim/catalogue.h"

#include <QtTest>

using sim::Chain;
using sim::Channel;
using sim::Milliseconds;
using sim::Module;

class TstSimCommands : public SimDeviceFixture
{
    Q_OBJECT

private slots:
    void init() { describe(smallChain()); }

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
};

void TstSimCommands::bridgeAndRange()
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

void TstSimCommands::indexBeyondTheListIsNotTaken()
{
    ask("220000000107");
    ask("220000000108");
    QCOMPARE(channel(1, 0).gainIndex, 7);
    ask("2000000001ff");
    QCOMPARE(channel(1, 0).bridgeIndex, 0);
}

void TstSimCommands::commandForAnAbsentChannelChangesNothing()
{
    const QByteArray before = ask("1200000004");
    QCOMPARE(ask("200000000901").size(), 16);
    QCOMPARE(ask("26000000ff3100").size(), 16);
    QCOMPARE(ask("1200000004"), before);
}

void TstSimCommands::wireChannelOfModule128()
{
    Chain chain;
    for (int i = 0; i < 128; ++i)
        chain.modules.append(Module::ofType(sim::kVoltage));
    describe(chain);
    ask("22000000ff03");
    ask("220000008005");
    QCOMPARE(channel(128, 0).gainIndex, 3);
    QCOMPARE(channel(128, 1).gainIndex, 0);
    QCOMPARE(channel(64, 1).gainIndex, 5);
}

void TstSimCommands::offsetText_data()
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

void TstSimCommands::offsetText()
{
    QFETCH(QByteArray, text);
    QFETCH(int, wireChannel);
    QFETCH(QByteArray, shown);
    const int address = (wireChannel + 1) / 2;
    channel(address, 0).offset = QStringLiteral("3");
    QCOMPARE(ask(hex("24000000") + static_cast<char>(wireChannel) + text + '\0').at(0), '\x08');
    QCOMPARE(ask(hex("12000000") + static_cast<char>(address)).mid(100, 16), shown.leftJustified(16, '\0'));
}

void TstSimCommands::filterText_data()
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

void TstSimCommands::filterText()
{
    QFETCH(QByteArray, text);
    QFETCH(int, wireChannel);
    QFETCH(QByteArray, shown);
    const int address = (wireChannel + 1) / 2;
    channel(address, 0).filter = QStringLiteral("600");
    ask(hex("26000000") + static_cast<char>(wireChannel) + text + '\0');
    QCOMPARE(ask(hex("12000000") + static_cast<char>(address)).mid(132, 16), shown.leftJustified(16, '\0'));
}

void TstSimCommands::polarity()
{
    ask("280000000185");
    QCOMPARE(int(ask("1200000001").at(25)), 1);
    ask("280000000285");
    QCOMPARE(int(ask("1200000001").at(25)), 3);
    ask("280000000184");
    QCOMPARE(int(ask("1200000001").at(25)), 2);
}

void TstSimCommands::autozeroShowsForAWhile()
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

void TstSimCommands::autoResetEndsAutozero()
{
    ask("280000000181");
    ask("280000000180", 10);
    QCOMPARE(fastBits(ask("1000000000", 10), 1, 43, 2), 0);
    QVERIFY(!channel(1, 0).zeroed);
}

void TstSimCommands::shuntsTurnThemselvesOff()
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

void TstSimCommands::shuntCanBeTurnedOff()
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

void TstSimCommands::groupShuntsReachAllStrainGaugeChannels_data()
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

void TstSimCommands::groupShuntsReachAllStrainGaugeChannels()
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

void TstSimCommands::preselectedShunts()
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

void TstSimCommands::thermoHasNoActions()
{
    for (const char *request : {"280000000581", "280000000585", "280000000583", "28000000059b"})
        QCOMPARE(ask(request).size(), 16);
    QCOMPARE(fastBits(ask("1000000000"), 3, 43, 4), 0);
    QCOMPARE(int(ask("1200000003").at(25)), 0);
    QCOMPARE(int(ask("1200000003").at(30)), 0);
}

void TstSimCommands::functionChangeStartsTheChannelAfresh()
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

void TstSimCommands::functionThatCannotBeSelected_data()
{
    QTest::addColumn<QByteArray>("request");

    QTest::newRow("thermo") << hex("1e000000070400");
    QTest::newRow("unknown") << hex("1e000000070000");
    QTest::newRow("minus one") << hex("1e00000007ff00");
    QTest::newRow("a module of one function") << hex("1e000000010200");
}

void TstSimCommands::functionThatCannotBeSelected()
{
    QFETCH(QByteArray, request);
    const QByteArray first = ask("1200000001");
    const QByteArray fourth = ask("1200000004");
    QCOMPARE(ask(request).size(), 16);
    QCOMPARE(ask("1200000001"), first);
    QCOMPARE(ask("1200000004"), fourth);
}

void TstSimCommands::voltageSupply()
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

QTEST_GUILESS_MAIN(TstSimCommands)
#include "tst_simcommands.moc"
