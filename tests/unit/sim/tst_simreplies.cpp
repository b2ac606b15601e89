#include "simdevicefixture.h"

#include "sim/catalogue.h"

#include <QtTest>

using sim::Chain;
using sim::Channel;
using sim::Device;
using sim::Milliseconds;
using sim::Module;
using sim::Power;

class TstSimReplies : public SimDeviceFixture
{
    Q_OBJECT

private slots:
    void init() { describe(smallChain()); }

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
    void valuesWanderSlowlyAndAreRepeatable();
    void invalidMarksAndSelftest();
    void everyListFitsItsField();
    void valuesNearZeroStayAtZero_data();
    void valuesNearZeroStayAtZero();
    void valuesBeyondTheirFieldStayAtItsEnd();
    void longSystemTextsArriveWhole_data();
    void longSystemTextsArriveWhole();
    void hashInTheListOfAFixedType();
};

void TstSimReplies::systemStatusByteForByte()
{
    const QByteArray reply = ask("0100000001");
    QCOMPARE(reply.at(0), '\x01');
    QCOMPARE(reply.mid(1, 9), QByteArray(9, '\0'));
    QCOMPARE(reply.mid(16, 2).toHex(), QByteArray("0400"));
    QCOMPARE(reply.mid(18, 128).toHex(), QByteArray("01020409") + QByteArray(248, '0'));
    QCOMPARE(reply.mid(146, 10).toHex(), QByteArray("64780000000000000000"));
    QCOMPARE(reply.mid(156).replace('\0', '|'), QByteArray("inductive|inductive|3000|2500 (16ch)|-|PCM|"));
}

void TstSimReplies::systemStatusWithoutPower()
{
    m_device->chain().power.reset();
    QCOMPARE(ask("0100000001").mid(146, 10).toHex(), QByteArray("64000000000000000000"));
}

void TstSimReplies::claimedCountAndFixedModulesAreTakenAsDescribed()
{
    m_device->chain().claimedModules = 130;
    m_device->chain().fixedModules = hex("0078");
    const QByteArray reply = ask("0100000001");
    QCOMPARE(u16(reply, 16), 130);
    QCOMPARE(reply.mid(146, 10).toHex(), QByteArray("00780000000000000000"));
    QCOMPARE(reply.mid(156, 9), QByteArray("inductive"));
}

void TstSimReplies::fastSystemStatusIsTheHead()
{
    Power &power = *m_device->chain().power;
    power.tooHot = true;
    power.protection = 2;
    power.mode = Power::Auto;
    power.autoMillivolts = 9000;
    power.loadMillivolts = 9000;
    const QByteArray reply = ask("0800000000");
    QCOMPARE(reply.size(), 16);
    QCOMPARE(reply.left(10).toHex(), QByteArray("08000000000000000001"));
    QVERIFY(qAbs(u16(reply, 10) - 2400) <= 40);
    QCOMPARE(u16(reply, 12), 9000);
    QVERIFY(qAbs(u16(reply, 14) - 2500) <= 100);
}

void TstSimReplies::headWithoutPowerIsZero()
{
    m_device->chain().power.reset();
    QCOMPARE(ask("0800000000").toHex(), QByteArray("08000000000000000000000000000000"));
}

void TstSimReplies::fastModuleStatusHas130Entries()
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

void TstSimReplies::fastModuleStatusOfAFullChain()
{
    Chain chain;
    for (int i = 0; i < 128; ++i)
        chain.modules.append(Module::ofType(sim::kStrainGauge));
    chain.module(127).health.selftest = 5;
    chain.module(128).health.selftest = 6;
    chain.controller.health.selftest = 7;
    describe(chain);
    const QByteArray reply = ask("1000000000");
    QCOMPARE(reply.size(), 1186);
    QCOMPARE(fastBits(reply, 127, 67, 5), 5);
    QCOMPARE(fastBits(reply, 128, 67, 5), 7);
    QCOMPARE(ask("1200000080").size(), 564);
}

void TstSimReplies::analogStatusByteForByte()
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

void TstSimReplies::textsThatFillTheirFieldKeepAllBytes()
{
    m_device->chain().module(1).identity.serial = QStringLiteral("0123456789abcdef");
    m_device->chain().module(1).sensorText = QString(199, QLatin1Char('x')) + QLatin1Char('$');
    m_device->chain().module(1).identity.hardware = QString(15, QLatin1Char('h')) + QStringLiteral("é");
    const QByteArray reply = ask("1200000001");
    QCOMPARE(reply.mid(36, 16), QByteArray("0123456789abcdef"));
    QCOMPARE(reply.mid(164, 200), QByteArray(199, 'x') + '$');
    QCOMPARE(reply.mid(52, 16), QByteArray(15, 'h') + '\0');
}

void TstSimReplies::controllerStatus()
{
    const QByteArray reply = ask("1200000000");
    QCOMPARE(reply.size(), 564);
    QCOMPARE(reply.mid(16, 20).toHex(), QByteArray("000064") + QByteArray(34, '0'));
    QCOMPARE(reply.mid(36, 16), QByteArray("CT-1").leftJustified(16, '\0'));
    QCOMPARE(reply.mid(100), QByteArray(464, '\0'));
}

void TstSimReplies::powerStatusByteForByte()
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

void TstSimReplies::unknownTypeAnswersWithEmptyLists()
{
    m_device->chain().modules.append(Module::ofType(77));
    QCOMPARE(ask("0100000001").mid(18, 5).toHex(), QByteArray("010204094d"));
    const QByteArray reply = ask("1200000005");
    QCOMPARE(reply.size(), 564);
    QCOMPARE(int(reply.at(18)), 77);
    QCOMPARE(reply.mid(164), QByteArray(400, '\0'));
}

void TstSimReplies::valuesWanderSlowlyAndAreRepeatable()
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

void TstSimReplies::invalidMarksAndSelftest()
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

void TstSimReplies::everyListFitsItsField()
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

void TstSimReplies::valuesNearZeroStayAtZero_data()
{
    QTest::addColumn<double>("input");
    QTest::addColumn<double>("load");
    QTest::addColumn<int>("largestInput");
    QTest::addColumn<int>("largestLoad");

    QTest::newRow("zero") << 0.0 << 0.0 << 40 << 100;
    QTest::newRow("a little more") << 0.1 << 0.01 << 50 << 120;
    QTest::newRow("far below") << -50.0 << -50.0 << 0 << 0;
}

void TstSimReplies::valuesNearZeroStayAtZero()
{
    QFETCH(double, input);
    QFETCH(double, load);
    QFETCH(int, largestInput);
    QFETCH(int, largestLoad);
    m_device->chain().power->inputVolts = input;
    m_device->chain().power->loadAmperes = load;
    int zeros = 0;
    for (int ms = 0; ms < 120000; ms += 500) {
        const QByteArray reply = ask("0800000000", ms);
        QVERIFY2(u16(reply, 10) <= largestInput, qPrintable(QString::number(u16(reply, 10))));
        QVERIFY2(u16(reply, 14) <= largestLoad, qPrintable(QString::number(u16(reply, 14))));
        zeros += u16(reply, 10) == 0 && u16(reply, 14) == 0 ? 1 : 0;
    }
    QVERIFY(zeros > 0);
}

void TstSimReplies::valuesBeyondTheirFieldStayAtItsEnd()
{
    m_device->chain().power->inputVolts = 700;
    m_device->chain().power->loadAmperes = 1e12;
    m_device->chain().power->fixedMillivolts = 70000;
    QCOMPARE(ask("0800000000").mid(10).toHex(), QByteArray("ffffffffffff"));
}

void TstSimReplies::longSystemTextsArriveWhole_data()
{
    QTest::addColumn<int>("areaSize");

    QTest::newRow("255 bytes") << 255;
    QTest::newRow("256 bytes") << 256;
    QTest::newRow("257 bytes") << 257;
    QTest::newRow("as many as a frame takes") << 1300 - 156;
}

void TstSimReplies::longSystemTextsArriveWhole()
{
    QFETCH(int, areaSize);
    const QByteArray others("|inductive|3000|2500 (16ch)|-|PCM|");
    const QByteArray powering(areaSize - others.size(), 'p');
    m_device->chain().system.poweringMode = QString::fromLatin1(powering);
    const QByteArray reply = ask("0100000001");
    QCOMPARE(reply.size(), 156 + areaSize);
    QCOMPARE(reply.mid(156).replace('\0', '|'), powering + others);
}

void TstSimReplies::hashInTheListOfAFixedType()
{
    const QString list = QStringLiteral("a$b$#c$");
    Module fixed = Module::ofType(sim::kVoltage);
    fixed.sensorText = list;
    fixed.rangeText = list;
    for (const int side : {0, 1}) {
        QCOMPARE(fixed.sensorsOf(side), QStringList({"a", "b", "#c"}));
        QCOMPARE(fixed.rangesOf(side), QStringList({"a", "b", "#c"}));
    }
    Module universal = Module::ofType(sim::kUniversal);
    universal.sensorText = list;
    universal.rangeText = list;
    QCOMPARE(universal.sensorsOf(0), QStringList({"a", "b"}));
    QCOMPARE(universal.sensorsOf(1), QStringList("c"));
    QCOMPARE(universal.rangesOf(1), QStringList("c"));
}

QTEST_GUILESS_MAIN(TstSimReplies)
#include "tst_simreplies.moc"
