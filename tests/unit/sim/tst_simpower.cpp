#include "fakelink.h"
#include "simdevicefixture.h"

#include "sim/server.h"

#include <QtTest>

#include <cmath>

using sim::PlayedPower;
using sim::Power;

namespace {

constexpr int kInputAt = 10;
constexpr int kOutputAt = 12;
constexpr int kLoadAt = 14;

// A fast system status with the counter 255.
const QByteArray kFastRequest = QByteArray::fromHex("8081828301ff4350000000000000000005008ff408000000007334");

QByteArray outputOf(const QByteArray &reply)
{
    return reply.mid(kOutputAt, 2).toHex();
}

} // namespace

/// How the power module behaves: its output, the load on it, and what a script plays over both.
class TstSimPower : public SimDeviceFixture
{
    Q_OBJECT

private slots:
    void init() { describe(smallChain()); }

    void loadFollowsTheOutputVoltage_data();
    void loadFollowsTheOutputVoltage();
    void loadFollowsTheMode();
    void noOutputNoLoad();
    void hotModuleProtectsItself_data();
    void hotModuleProtectsItself();
    void deratingStopsAtTheMinimum_data();
    void deratingStopsAtTheMinimum();
    void protectionActsInTheReplyToItsCommand();
    void protectionLeavesTheSetpointsAlone();
    void setpointBeyondTheLimitsIsNotTaken_data();
    void setpointBeyondTheLimitsIsNotTaken();
    void resetBringsTheDescribedVoltageBack();

    void playedInputAndLoad();
    void playedLoadFollowsTheOutputToo();
    void playedHeatActsAsTheChainsOwn();
    void playedHeatCannotCoolTheModule();
    void playedSerialIsEmpty();
    void playedValuesLeaveTheChainAlone();
    void nothingIsPlayedWithoutAPowerModule();
    void scriptPlaysForAWhile();

private:
    QByteArray play(const PlayedPower &played, const char *request)
    {
        return m_device->answer(hex(request), sim::Milliseconds(0), played).payload;
    }
    Power &power() { return *m_device->chain().power; }
    int load(int ms = 0) { return u16(ask("0800000000", ms), kLoadAt); }
};

void TstSimPower::loadFollowsTheOutputVoltage_data()
{
    QTest::addColumn<QByteArray>("setpoint");
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<double>("share"); // of the current at the described 12 V

    QTest::newRow("12 V") << hex("180000000110e02e") << QByteArray("e02e") << 1.0;
    QTest::newRow("6 V") << hex("1800000001107017") << QByteArray("7017") << 0.5;
    QTest::newRow("18 V") << hex("1800000001105046") << QByteArray("5046") << 1.5;
    QTest::newRow("0 V") << hex("1800000001100000") << QByteArray("0000") << 0.0;
    QTest::newRow("voltage of the other mode") << hex("1800000001117017") << QByteArray("e02e") << 1.0;
}

void TstSimPower::loadFollowsTheOutputVoltage()
{
    QFETCH(QByteArray, setpoint);
    QFETCH(QByteArray, output);
    QFETCH(double, share);
    // 1.25 A are 2500 steps; the value wanders by 100 steps.
    for (const int ms : {0, 10000, 20000, 30000, 40000}) {
        describe(smallChain());
        const int before = load(ms);
        QVERIFY2(qAbs(before - 2500) <= 100, qPrintable(QString::number(before)));
        const QByteArray reply = ask(setpoint, ms);
        QCOMPARE(outputOf(reply), output);
        const int after = u16(reply, kLoadAt);
        QVERIFY2(qAbs(after - before * share) <= 1, qPrintable(QString::number(after)));
        QCOMPARE(load(ms), after);
    }
}

void TstSimPower::loadFollowsTheMode()
{
    power().autoMillivolts = 6000;
    const int before = load();
    QCOMPARE(outputOf(ask("1800000001210000")), QByteArray("7017"));
    QVERIFY(qAbs(load() - before / 2) <= 1);
    QCOMPARE(outputOf(ask("1800000001200000")), QByteArray("e02e"));
    QCOMPARE(load(), before);
}

void TstSimPower::noOutputNoLoad()
{
    ask("1800000001100000");
    for (int ms = 0; ms < 100000; ms += 500)
        QCOMPARE(ask("0800000000", ms).mid(kOutputAt).toHex(), QByteArray("00000000"));
}

void TstSimPower::hotModuleProtectsItself_data()
{
    QTest::addColumn<int>("protection");
    QTest::addColumn<int>("setpoint");
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<double>("share");

    QTest::newRow("standard switches off") << 0 << 12000 << QByteArray("0000") << 0.0;
    QTest::newRow("derating brings it to 5 V") << 1 << 12000 << QByteArray("8813") << 5.0 / 12;
    QTest::newRow("derating at 5 V") << 1 << 5000 << QByteArray("8813") << 5.0 / 12;
    QTest::newRow("derating does not raise it") << 1 << 3000 << QByteArray("b80b") << 0.25;
    QTest::newRow("mission critical leaves it") << 2 << 12000 << QByteArray("e02e") << 1.0;
    QTest::newRow("none leaves it") << 3 << 12000 << QByteArray("e02e") << 1.0;
    QTest::newRow("unknown code leaves it") << 7 << 12000 << QByteArray("e02e") << 1.0;
}

void TstSimPower::hotModuleProtectsItself()
{
    QFETCH(int, protection);
    QFETCH(int, setpoint);
    QFETCH(QByteArray, output);
    QFETCH(double, share);
    const int before = load();
    power().protection = static_cast<quint8>(protection);
    QCOMPARE(outputOf(ask("0800000000")), QByteArray("e02e"));
    power().fixedMillivolts = setpoint;
    power().autoMillivolts = setpoint;
    power().tooHot = true;
    for (const quint8 mode : {Power::Fixed, Power::Auto}) {
        power().mode = mode;
        const QByteArray reply = ask("0800000000");
        QCOMPARE(int(reply.at(9)), 1);
        QCOMPARE(outputOf(reply), output);
        QVERIFY(qAbs(u16(reply, kLoadAt) - before * share) <= 1);
    }
}

void TstSimPower::deratingStopsAtTheMinimum_data()
{
    QTest::addColumn<int>("minimum");
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<double>("share");

    QTest::newRow("below 5 V") << 4999 << QByteArray("8813") << 5.0 / 12;
    QTest::newRow("above 5 V") << 9000 << QByteArray("2823") << 0.75;
    QTest::newRow("the setpoint") << 12000 << QByteArray("e02e") << 1.0;
}

void TstSimPower::deratingStopsAtTheMinimum()
{
    QFETCH(int, minimum);
    QFETCH(QByteArray, output);
    QFETCH(double, share);
    const int before = load();
    power().protection = Power::Derate;
    power().minimumMillivolts = minimum;
    power().tooHot = true;
    const QByteArray reply = ask("0800000000");
    QCOMPARE(outputOf(reply), output);
    QVERIFY(qAbs(u16(reply, kLoadAt) - before * share) <= 1);
}

void TstSimPower::protectionActsInTheReplyToItsCommand()
{
    power().tooHot = true;
    QCOMPARE(outputOf(ask("1800000001310000")), QByteArray("8813"));
    QCOMPARE(outputOf(ask("1800000001320000")), QByteArray("e02e"));
    QCOMPARE(outputOf(ask("1800000001300000")), QByteArray("0000"));
    power().tooHot = false;
    QCOMPARE(outputOf(ask("0800000000")), QByteArray("e02e"));
}

void TstSimPower::protectionLeavesTheSetpointsAlone()
{
    power().tooHot = true;
    power().autoMillivolts = 9000;
    QCOMPARE(ask("1200000081").mid(27, 4).toHex(), QByteArray("e02e2823"));
}

void TstSimPower::setpointBeyondTheLimitsIsNotTaken_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("setpoints"); // fixed and auto as they are read back

    QTest::newRow("fixed, lower limit") << hex("1800000001108813") << QByteArray("8813e02e");
    QTest::newRow("fixed, upper limit") << hex("180000000110204e") << QByteArray("204ee02e");
    QTest::newRow("fixed, below") << hex("1800000001108713") << QByteArray("e02ee02e");
    QTest::newRow("fixed, above") << hex("180000000110214e") << QByteArray("e02ee02e");
    QTest::newRow("auto, lower limit") << hex("1800000001118813") << QByteArray("e02e8813");
    QTest::newRow("auto, below") << hex("1800000001118713") << QByteArray("e02ee02e");
    QTest::newRow("auto, above") << hex("180000000111ffff") << QByteArray("e02ee02e");
}

void TstSimPower::setpointBeyondTheLimitsIsNotTaken()
{
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, setpoints);
    power().minimumMillivolts = 5000;
    power().maximumMillivolts = 20000;
    QCOMPARE(ask(request).at(0), '\x08');
    QCOMPARE(ask("1200000081").mid(27, 4).toHex(), setpoints);
}

void TstSimPower::resetBringsTheDescribedVoltageBack()
{
    const int before = load();
    ask("1800000001107017");
    ask("2b000000000000");
    QCOMPARE(load(), before);
    QCOMPARE(outputOf(ask("0800000000")), QByteArray("e02e"));
}

void TstSimPower::playedInputAndLoad()
{
    PlayedPower played;
    played.inputVolts = 6.5;
    played.loadAmperes = 3;
    for (const char *request : {"0800000000", "0100000001", "1000000000", "1200000002", "1800000001200000"}) {
        const QByteArray reply = play(played, request);
        QVERIFY(qAbs(u16(reply, kInputAt) - 650) <= 40);
        QVERIFY(qAbs(u16(reply, kLoadAt) - 6000) <= 100);
    }
    QVERIFY(qAbs(u16(ask("0800000000"), kInputAt) - 2400) <= 40);
}

void TstSimPower::playedLoadFollowsTheOutputToo()
{
    PlayedPower played;
    played.loadAmperes = 3;
    ask("1800000001107017"); // 6 V of 12
    QVERIFY(qAbs(u16(play(played, "0800000000"), kLoadAt) - 3000) <= 50);
}

void TstSimPower::playedHeatActsAsTheChainsOwn()
{
    PlayedPower played;
    played.tooHot = true;
    QCOMPARE(play(played, "0800000000").left(10).toHex(), QByteArray("08000000000000000001"));
    QCOMPARE(play(played, "0800000000").mid(kOutputAt).toHex(), QByteArray("00000000"));
    power().protection = Power::Derate;
    QCOMPARE(outputOf(play(played, "0800000000")), QByteArray("8813"));
    QCOMPARE(ask("0800000000").left(10).toHex(), QByteArray("08000000000000000000"));
    QCOMPARE(outputOf(ask("0800000000")), QByteArray("e02e"));
}

void TstSimPower::playedHeatCannotCoolTheModule()
{
    power().tooHot = true;
    QCOMPARE(int(play(PlayedPower(), "0800000000").at(9)), 1);
}

void TstSimPower::playedSerialIsEmpty()
{
    PlayedPower played;
    played.noSerial = true;
    const QByteArray reply = play(played, "1200000081");
    QCOMPARE(reply.size(), 100);
    QCOMPARE(reply.mid(16, 3).toHex(), QByteArray("810078"));
    QCOMPARE(reply.mid(36, 16), QByteArray(16, '\0'));
    QCOMPARE(reply.mid(52, 4), QByteArray("2.1\0", 4));
    QCOMPARE(play(played, "1200000000").mid(36, 5), QByteArray("CT-1\0", 5));
    QCOMPARE(ask("1200000081").mid(36, 5), QByteArray("PW-1\0", 5));
}

void TstSimPower::playedValuesLeaveTheChainAlone()
{
    PlayedPower played;
    played.inputVolts = 51;
    played.loadAmperes = 3;
    played.tooHot = true;
    played.noSerial = true;
    play(played, "1800000001107017");
    QCOMPARE(power().fixedMillivolts, 6000);
    QCOMPARE(power().inputVolts, 24.0);
    QCOMPARE(power().loadAmperes, 1.25);
    QVERIFY(!power().tooHot);
    QCOMPARE(power().identity.serial, QStringLiteral("PW-1"));
}

void TstSimPower::nothingIsPlayedWithoutAPowerModule()
{
    m_device->chain().power.reset();
    PlayedPower played;
    played.inputVolts = 51;
    played.tooHot = true;
    QCOMPARE(play(played, "0800000000").toHex(), QByteArray("08000000000000000000000000000000"));
}

void TstSimPower::scriptPlaysForAWhile()
{
    VirtualTime time;
    sim::Server server(time, smallChain());
    auto link = std::make_unique<FakeLink>(time);
    FakeLink *const plug = link.get();
    server.addLink(std::move(link));
    FakeConnection *const peer = plug->plugIn();
    QString error;
    QVERIFY2(server.faults().parse(
                 QStringLiteral("input volts=51 from=1000 for=500\nhot from=1000 for=500\n"), &error),
             qPrintable(error));
    const auto poll = [peer] {
        peer->pieces.clear();
        peer->write(kFastRequest);
        return peer->bytes().mid(20, 16);
    };
    const auto isPlayed = [](const QByteArray &head) {
        return std::lround(u16(head, kInputAt) / 100.0) == 51 && head.at(9) == '\x01' &&
               outputOf(head) == "0000";
    };
    const auto isUsual = [](const QByteArray &head) {
        return std::lround(u16(head, kInputAt) / 100.0) == 24 && head.at(9) == '\0' &&
               outputOf(head) == "e02e";
    };
    QVERIFY(isUsual(poll()));
    time.advance(999);
    QVERIFY(isUsual(poll()));
    time.advance(1);
    QVERIFY(isPlayed(poll()));
    time.advance(499);
    QVERIFY(isPlayed(poll()));
    time.advance(1);
    QVERIFY(isUsual(poll()));
}

QTEST_GUILESS_MAIN(TstSimPower)
#include "tst_simpower.moc"
