#include "sim/gateway.h"

#include <QtTest>

using namespace std::chrono_literals;
using sim::DataRate;
using sim::Gateway;
using sim::GatewayAnswer;
using sim::GatewayState;
using sim::Milliseconds;

using Then = GatewayAnswer::Then;

namespace {

const QByteArray kPrompt = "\r\n----[ZRT gateway]---- ";

/// The fields of a status line, without its end.
QList<QByteArray> fields(const QByteArray &line)
{
    if (!line.endsWith("\r\n"))
        QTest::qFail("the line has no end", __FILE__, __LINE__);
    return line.chopped(2).split(';');
}

QByteArray field(const Gateway &gateway, int number, Milliseconds now = 0ms)
{
    return fields(gateway.statusLine(now)).value(number);
}

} // namespace

/// The gateway as a plain value: lines in, texts out.
class TstSimGateway : public QObject
{
    Q_OBJECT

private slots:
    void statusLineIsLiteral();
    void statusLineOfAnOtherState();
    void settingsShowInTheirFields_data();
    void settingsShowInTheirFields();
    void settingsAreNotAnswered();
    void whatIsOutOfRangeChangesNothing_data();
    void whatIsOutOfRangeChangesNothing();
    void rateUpToTheLimitIsTaken();
    void clockRunsFromItsValue();
    void clockWithoutAValueCountsFromTheStart();
    void syncComparesWithTheChain_data();
    void syncComparesWithTheChain();
    void temperaturesFollowTimeAndSeed();
    void ptpShowsWhileItIsOn();
    void emptyLineGetsThePrompt();
    void newAddressIsTold();
    void badAddressIsIgnored_data();
    void badAddressIsIgnored();
    void restartKeepsSettingsAndClock();
    void rebootLosesTheClock();
};

void TstSimGateway::statusLineIsLiteral()
{
    Gateway gateway;
    const GatewayAnswer answer = gateway.take("#?", 0ms, DataRate());
    QCOMPARE(answer.text,
             QByteArray("#S;;2.3.1;2;;0;2500;16;UDP-B;B;16;192.168.0.22;5675;U;;;;1;50.1;40.9;;;;;;;"
                        ";;62500;0;;1;1;0;OFF;0;1;64;ZRT-1;;\r\n"));
    QVERIFY(answer.then == Then::Stay);
    QCOMPARE(fields(answer.text).size(), 41);
}

void TstSimGateway::statusLineOfAnOtherState()
{
    GatewayState state;
    state.version = "9.9";
    state.serial = "123456";
    state.highestRate = 7812.5;
    state.coreCelsius = 60;
    state.pcbCelsius = 30;
    state.ptpState = "LISTENING";
    state.ptpMode = "2";
    state.rate = {"625", "128"};
    Gateway gateway(state);
    for (const char *line : {"#006_8", "#009_TCP-C", "#010_L", "#011_18", "#012_10.1.2.3:99", "#014_2",
                             "#032_3", "#037_5", "#038_500", "#039_IENA-1"})
        QCOMPARE(gateway.take(line, 0ms).note, QString("set"));
    QCOMPARE(gateway.statusLine(60s, DataRate()),
             QByteArray(
                 "#S;;9.9;2;;8;625;128;TCP-C;L;18;10.1.2.3;99;2;;;;123456;61.1;28.8;;;;;;;;;7812.5;60;;3;0;2;"
                 "LISTENING;101;5;500;IENA-1;;\r\n"));
}

void TstSimGateway::settingsShowInTheirFields_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("number");
    QTest::addColumn<QByteArray>("text");

    const auto row = [](const char *line, int number, const char *text) {
        QTest::newRow(line) << QByteArray(line) << number << QByteArray(text);
    };
    for (int i = 0; i <= 8; ++i)
        row(qPrintable(QString("#006_%1").arg(i)), 5, qPrintable(QString::number(i)));
    row("#007_1250:32", 6, "1250");
    row("#007_312:256", 7, "256");
    for (const char *mode : {"UDP-B", "UDP-M", "UDP-U", "TCP-S", "TCP-C", "OFF"})
        row(qPrintable(QString("#009_%1").arg(mode)), 8, mode);
    row("#010_L", 9, "L");
    row("#010_B", 9, "B");
    row("#011_18", 10, "18");
    row("#011_16", 10, "16");
    row("#012_host.local:8888", 11, "host.local");
    row("#012_10.0.0.1:65535", 12, "65535");
    row("#014_2", 13, "2");
    row("#014_U", 13, "U");
    for (int i = 0; i <= 3; ++i)
        row(qPrintable(QString("#032_%1").arg(i)), 31, qPrintable(QString::number(i)));
    for (int i = 0; i <= 2; ++i)
        row(qPrintable(QString("#034_%1").arg(i)), 33, qPrintable(QString::number(i)));
    row("#037_7", 36, "7");
    row("#038_65535", 37, "65535");
    row("#039_IENA-1", 38, "IENA-1");
    row("#039_ZRT-1", 38, "ZRT-1");
}

void TstSimGateway::settingsShowInTheirFields()
{
    QFETCH(QByteArray, line);
    QFETCH(int, number);
    QFETCH(QByteArray, text);
    Gateway gateway;
    // So that a line that does nothing is found out also where it asks for the usual value.
    GatewayState &state = gateway.state();
    for (QString *other : {&state.simulation, &state.mode, &state.endian, &state.dataLength,
                           &state.extAddress, &state.extPort, &state.dataFormat, &state.activeCom,
                           &state.ptpMode, &state.minimumSamples, &state.maximumSamples, &state.dataProtocol})
        *other = "?";
    QList<QByteArray> before = fields(gateway.statusLine(0ms));
    QVERIFY(gateway.take(line, 0ms).then == Then::Stay);
    QList<QByteArray> after = fields(gateway.statusLine(0ms));
    QCOMPARE(after.at(number), text);
    // Nothing else changes but the partner of a pair, and what PTP shows by its mode.
    const QMap<int, QVector<int>> partners{{6, {7}}, {7, {6}}, {11, {12}}, {12, {11}}, {33, {34, 35}}};
    for (const int changed : partners.value(number) + QVector<int>{number})
        before[changed] = after[changed] = QByteArray();
    QCOMPARE(after, before);
}

void TstSimGateway::settingsAreNotAnswered()
{
    Gateway gateway;
    for (const char *line : {"#000_1", "#006_1", "#006_9", "#007_1250:32", "#030_5",
                             "#030_1700000000123000000", "#999_1", "hello", "#", "?"})
        QCOMPARE(gateway.take(line, 0ms).text, QByteArray());
    QVERIFY(gateway.state().debugging);
}

void TstSimGateway::whatIsOutOfRangeChangesNothing_data()
{
    QTest::addColumn<QByteArray>("line");
    for (const char *line : {"#000_",
                             "#000_2",
                             "#006_",
                             "#006_9",
                             "#006_-1",
                             "#006_ 1",
                             "#007_",
                             "#007_2500",
                             "#007_2500:",
                             "#007_2501:16",
                             "#007_2500:17",
                             "#007_16:2500",
                             "#007_10000:2",
                             "#007_1250:8:8",
                             "#007_1250;8",
                             "#009_",
                             "#009_UDP",
                             "#009_udp-b",
                             "#010_",
                             "#010_b",
                             "#011_17",
                             "#012_",
                             "#012_10.0.0.1",
                             "#012_:1",
                             "#012_h:0",
                             "#012_h:65536",
                             "#012_h:x",
                             "#012_h;i:1",
                             "#012_h:1 ",
                             "#014_S",
                             "#030_",
                             "#030_x",
                             "#030_-1",
                             "#030_1700000000123",      // milliseconds
                             "#030_170000000012300000", // a digit is missing
                             "#030_+1700000000123000000",
                             "#030_ 1700000000123000000",
                             "#030_1700000000123000000 ",
                             "#030_-000000000000000001",
                             "#032_4",
                             "#032_COM 1",
                             "#034_3",
                             "#037_",
                             "#037_0",
                             "#037_-1",
                             "#037_65536",
                             "#037_1.5",
                             "#037_ 7",
                             "#038_",
                             "#038_x",
                             "#039_ZRT-2",
                             "#001_1",
                             "#0061",
                             "#006",
                             "#",
                             "#??",
                             " #?",
                             "#012_h\x01:1",
                             "REBOOT",
                             "rebootx",
                             "restart ",
                             "gateway.addr",
                             "gateway.addr =",
                             "#030_9223372036854775808"})
        QTest::newRow(line) << QByteArray(line);
}

void TstSimGateway::whatIsOutOfRangeChangesNothing()
{
    QFETCH(QByteArray, line);
    Gateway gateway;
    QVERIFY(gateway.take("#030_0000000005000000000", 0ms).text.isEmpty());
    const QByteArray before = gateway.statusLine(0ms);
    const GatewayAnswer answer = gateway.take(line, 0ms);
    QCOMPARE(answer.text, QByteArray());
    QVERIFY(answer.then == Then::Stay);
    QVERIFY2(answer.note == "unknown line" || answer.note == "out of range: not obeyed",
             qPrintable(answer.note));
    QCOMPARE(gateway.statusLine(0ms), before);
    QVERIFY(!gateway.state().debugging);
}

void TstSimGateway::rateUpToTheLimitIsTaken()
{
    GatewayState state;
    state.highestRate = 60000;
    Gateway gateway(state);
    QVERIFY(gateway.take("#007_2500:2", 0ms).note.contains("not obeyed")); // 62500 samples per second
    QCOMPARE(field(gateway, 6), QByteArray("2500"));
    QCOMPARE(field(gateway, 7), QByteArray("16"));
    gateway.state().highestRate = 62500;
    QCOMPARE(gateway.take("#007_2500:2", 0ms).note, QString("set"));
    QCOMPARE(field(gateway, 7), QByteArray("2"));
}

void TstSimGateway::clockRunsFromItsValue()
{
    Gateway gateway;
    gateway.take("#030_1700000000123000000", 5s);
    QCOMPARE(field(gateway, 29, 5s), QByteArray("1700000000"));
    QCOMPARE(field(gateway, 29, 5876ms), QByteArray("1700000000"));
    QCOMPARE(field(gateway, 29, 5877ms), QByteArray("1700000001"));
    gateway.take("#030_0000000001000000000", 6s);
    QCOMPARE(field(gateway, 29, 9s), QByteArray("4"));
}

void TstSimGateway::clockWithoutAValueCountsFromTheStart()
{
    const Gateway gateway;
    QCOMPARE(field(gateway, 29, 0ms), QByteArray("0"));
    QCOMPARE(field(gateway, 29, 61s), QByteArray("61"));
}

void TstSimGateway::syncComparesWithTheChain_data()
{
    QTest::addColumn<QString>("bitRate");
    QTest::addColumn<QString>("channels");
    QTest::addColumn<QByteArray>("sync");
    QTest::newRow("same") << "2500"
                          << "16" << QByteArray("1");
    QTest::newRow("other bit rate") << "1250"
                                    << "16" << QByteArray("0");
    QTest::newRow("other channels") << "2500"
                                    << "32" << QByteArray("0");
    QTest::newRow("no chain") << QString() << QString() << QByteArray("X");
}

void TstSimGateway::syncComparesWithTheChain()
{
    QFETCH(QString, bitRate);
    QFETCH(QString, channels);
    QFETCH(QByteArray, sync);
    const Gateway gateway;
    const auto chain = bitRate.isEmpty() ? std::nullopt : std::optional<DataRate>({bitRate, channels});
    QCOMPARE(fields(gateway.statusLine(0ms, chain)).at(32), sync);
}

void TstSimGateway::temperaturesFollowTimeAndSeed()
{
    const Gateway gateway;
    const Gateway same;
    const Gateway other({}, 2);
    QSet<QByteArray> values;
    for (int seconds = 0; seconds < 600; ++seconds) {
        const Milliseconds now = std::chrono::seconds(seconds);
        const QByteArray text = field(gateway, 18, now);
        values.insert(text);
        QVERIFY2(qAbs(text.toDouble() - 52) <= 2.5, text);
        QVERIFY(qAbs(field(gateway, 19, now).toDouble() - 41) <= 2.5);
        QCOMPARE(field(same, 18, now), text);
    }
    QVERIFY2(values.size() > 10, qPrintable(QString::number(values.size())));
    QVERIFY(field(other, 18) != field(gateway, 18));
}

void TstSimGateway::ptpShowsWhileItIsOn()
{
    Gateway gateway;
    QCOMPARE(field(gateway, 34), QByteArray("OFF"));
    QCOMPARE(field(gateway, 35), QByteArray("0"));
    gateway.take("#034_1", 0ms);
    QCOMPARE(field(gateway, 34), QByteArray("SLAVE"));
    QVERIFY(field(gateway, 35).toInt() >= 50 && field(gateway, 35).toInt() <= 130);
}

void TstSimGateway::emptyLineGetsThePrompt()
{
    QCOMPARE(Gateway::prompt(), kPrompt);
    QVERIFY(kPrompt.contains("]----"));
    QCOMPARE(Gateway().take("", 0ms).text, kPrompt);
}

void TstSimGateway::newAddressIsTold()
{
    Gateway gateway;
    const GatewayAnswer answer = gateway.take("gateway.addr=192.168.0.235", 0ms);
    QCOMPARE(answer.text, QByteArray("[NEW IP ADDRESS 192.168.0.235]\r\n"));
    QVERIFY(!answer.text.contains("]----"));
    QVERIFY(answer.then == Then::Move);
    QCOMPARE(gateway.state().address, QString("192.168.0.235"));
}

void TstSimGateway::badAddressIsIgnored_data()
{
    QTest::addColumn<QByteArray>("address");
    for (const char *address :
         {"", "localhost", "1.2.3", "1.2.3.256", "127.1", "::1", "1.2.3.4 ", "01.2.3.4"})
        QTest::newRow(address) << QByteArray(address);
}

void TstSimGateway::badAddressIsIgnored()
{
    QFETCH(QByteArray, address);
    Gateway gateway;
    const GatewayAnswer answer = gateway.take("gateway.addr=" + address, 0ms);
    QCOMPARE(answer.text, QByteArray());
    QVERIFY(answer.then == Then::Stay);
    QCOMPARE(gateway.state().address, QString("127.0.0.1"));
}

void TstSimGateway::restartKeepsSettingsAndClock()
{
    Gateway gateway;
    for (const char *line : {"#009_OFF", "#000_1", "#030_0000000007000000000"})
        gateway.take(line, 0ms);
    QVERIFY(gateway.take("restart", 1s).then == Then::Restart);
    gateway.restart();
    QCOMPARE(field(gateway, 8), QByteArray("OFF"));
    QCOMPARE(field(gateway, 29, 2s), QByteArray("9"));
    QVERIFY(!gateway.state().debugging);
}

void TstSimGateway::rebootLosesTheClock()
{
    Gateway gateway;
    for (const char *line : {"#009_OFF", "#000_1", "#030_0000000007000000000"})
        gateway.take(line, 0ms);
    QVERIFY(gateway.take("reboot", 1s).then == Then::Reboot);
    gateway.reboot(1s);
    QCOMPARE(field(gateway, 8), QByteArray("OFF"));
    QCOMPARE(field(gateway, 29, 2s), QByteArray("1"));
    QVERIFY(!gateway.state().debugging);
}

QTEST_GUILESS_MAIN(TstSimGateway)
#include "tst_simgateway.moc"
