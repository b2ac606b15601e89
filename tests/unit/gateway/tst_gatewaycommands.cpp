#include "gateway/gatewaycommands.h"

#include <QtTest>

Q_DECLARE_METATYPE(gateway::Command)
Q_DECLARE_METATYPE(gateway::Echo)

using gateway::Command;
using gateway::Echo;

/// The lines that go to the gateway, byte for byte.
class TstGatewayCommands : public QObject
{
    Q_OBJECT

private slots:
    void aLineOfTheFirstSettings_data();
    void aLineOfTheFirstSettings();
    void aLineOfOtherSettings_data();
    void aLineOfOtherSettings();
    void howACommandIsSeen_data();
    void howACommandIsSeen();
    void theBitRateStandsBeforeTheChannels();
    void anEmptyValueLeavesNothingBehindTheNumber();
    void aLineEndsOnceWithACarriageReturn_data();
    void aLineEndsOnceWithACarriageReturn();
    void textIsLatin1();
    void percentSignsStayAsTheyAre();
    void epochIsNanosecondsUtc_data();
    void epochIsNanosecondsUtc();
    void modeTexts_data();
    void modeTexts();
};

void TstGatewayCommands::aLineOfTheFirstSettings_data()
{
    const GatewaySettings first;
    QTest::addColumn<Command>("command");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("status") << gateway::statusRequest() << QByteArray("\x23\x3f\x0d");
    QTest::newRow("empty") << gateway::emptyLine() << QByteArray("\x0d");
    QTest::newRow("debug") << gateway::debug() << QByteArray("#000_1\r");
    QTest::newRow("simulation") << gateway::simulation(first) << QByteArray("#006_1\r");
    QTest::newRow("data rate") << gateway::dataRate(first) << QByteArray("#007_2500:16\r");
    QTest::newRow("mode") << gateway::mode(first) << QByteArray("#009_UDP\r");
    QTest::newRow("endian") << gateway::endian(first) << QByteArray("#010_B\r");
    QTest::newRow("data length") << gateway::dataLength(first) << QByteArray("#011_16\r");
    QTest::newRow("external server") << gateway::externalServer(first)
                                     << QByteArray("#012_192.168.0.22:5675\r");
    QTest::newRow("data format") << gateway::dataFormat(first) << QByteArray("#014_U\r");
    QTest::newRow("epoch") << gateway::epochTime(first) << QByteArray("#030_12345\r");
    QTest::newRow("COM port") << gateway::activeCom(first) << QByteArray("#032_2\r");
    QTest::newRow("PTP mode") << gateway::ptpMode(first) << QByteArray("#034_0\r");
    QTest::newRow("minimum") << gateway::minimumSamples(QStringLiteral("10")) << QByteArray("#037_10\r");
    QTest::newRow("maximum") << gateway::maximumSamples(QStringLiteral("700")) << QByteArray("#038_700\r");
    QTest::newRow("protocol") << gateway::dataProtocol(first) << QByteArray("#039_ZRT-1\r");
    QTest::newRow("address") << gateway::changeAddress(first) << QByteArray("gateway.addr=\r");
    QTest::newRow("reboot") << gateway::reboot() << QByteArray("reboot\r");
    QTest::newRow("restart") << gateway::restart() << QByteArray("restart\r");
}

void TstGatewayCommands::aLineOfTheFirstSettings()
{
    QFETCH(Command, command);
    QTEST(gateway::lineOf(command), "line");
}

void TstGatewayCommands::aLineOfOtherSettings_data()
{
    GatewaySettings other;
    other.pendingAddress = QStringLiteral("10.0.0.1");
    other.gatewayMode = QStringLiteral("TCP-C");
    other.channelCount = QStringLiteral("256");
    other.bitRate = QStringLiteral("10000");
    other.dataLength = QStringLiteral("18");
    other.endian = QStringLiteral("L");
    other.simulation = QStringLiteral("8");
    other.activeCom = QStringLiteral("3");
    other.dataFormat = QStringLiteral("2");
    other.ptpMode = QStringLiteral("1");
    other.dataProtocol = QStringLiteral("IENA-1");
    other.epochTime = QStringLiteral("77");
    other.extAddress = QStringLiteral("host");
    other.extPort = QStringLiteral("65535");

    QTest::addColumn<Command>("command");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("simulation") << gateway::simulation(other) << QByteArray("#006_8\r");
    QTest::newRow("data rate") << gateway::dataRate(other) << QByteArray("#007_10000:256\r");
    QTest::newRow("mode") << gateway::mode(other) << QByteArray("#009_TCP-C\r");
    QTest::newRow("endian") << gateway::endian(other) << QByteArray("#010_L\r");
    QTest::newRow("data length") << gateway::dataLength(other) << QByteArray("#011_18\r");
    QTest::newRow("external server") << gateway::externalServer(other) << QByteArray("#012_host:65535\r");
    QTest::newRow("data format") << gateway::dataFormat(other) << QByteArray("#014_2\r");
    QTest::newRow("epoch") << gateway::epochTime(other) << QByteArray("#030_77\r");
    QTest::newRow("COM port") << gateway::activeCom(other) << QByteArray("#032_3\r");
    QTest::newRow("PTP mode") << gateway::ptpMode(other) << QByteArray("#034_1\r");
    QTest::newRow("protocol") << gateway::dataProtocol(other) << QByteArray("#039_IENA-1\r");
    QTest::newRow("address") << gateway::changeAddress(other) << QByteArray("gateway.addr=10.0.0.1\r");
}

void TstGatewayCommands::aLineOfOtherSettings()
{
    QFETCH(Command, command);
    QTEST(gateway::lineOf(command), "line");
}

void TstGatewayCommands::howACommandIsSeen_data()
{
    const GatewaySettings settings;
    QTest::addColumn<Command>("command");
    QTest::addColumn<Echo>("echo");
    QTest::newRow("status") << gateway::statusRequest() << Echo::SameLine;
    QTest::newRow("reboot") << gateway::reboot() << Echo::Nothing;
    QTest::newRow("restart") << gateway::restart() << Echo::Nothing;
    QTest::newRow("address") << gateway::changeAddress(settings) << Echo::Nothing;
    QTest::newRow("empty") << gateway::emptyLine() << Echo::Line;
    QTest::newRow("debug") << gateway::debug() << Echo::Line;
    QTest::newRow("simulation") << gateway::simulation(settings) << Echo::Line;
    QTest::newRow("data rate") << gateway::dataRate(settings) << Echo::Line;
    QTest::newRow("mode") << gateway::mode(settings) << Echo::Line;
    QTest::newRow("endian") << gateway::endian(settings) << Echo::Line;
    QTest::newRow("data length") << gateway::dataLength(settings) << Echo::Line;
    QTest::newRow("external server") << gateway::externalServer(settings) << Echo::Line;
    QTest::newRow("data format") << gateway::dataFormat(settings) << Echo::Line;
    QTest::newRow("epoch") << gateway::epochTime(settings) << Echo::Line;
    QTest::newRow("COM port") << gateway::activeCom(settings) << Echo::Line;
    QTest::newRow("PTP mode") << gateway::ptpMode(settings) << Echo::Line;
    QTest::newRow("minimum") << gateway::minimumSamples(QString()) << Echo::Line;
    QTest::newRow("maximum") << gateway::maximumSamples(QString()) << Echo::Line;
    QTest::newRow("protocol") << gateway::dataProtocol(settings) << Echo::Line;
}

void TstGatewayCommands::howACommandIsSeen()
{
    QFETCH(Command, command);
    QTEST(command.echo, "echo");
}

void TstGatewayCommands::theBitRateStandsBeforeTheChannels()
{
    GatewaySettings settings;
    settings.bitRate = QStringLiteral("625");
    settings.channelCount = QStringLiteral("2");
    QCOMPARE(gateway::lineOf(gateway::dataRate(settings)), QByteArray("#007_625:2\r"));
}

void TstGatewayCommands::anEmptyValueLeavesNothingBehindTheNumber()
{
    QCOMPARE(gateway::lineOf(gateway::minimumSamples(QString())), QByteArray("#037_\r"));
    QCOMPARE(gateway::lineOf(gateway::maximumSamples(QString())), QByteArray("#038_\r"));
    GatewaySettings settings;
    settings.extAddress.clear();
    settings.extPort.clear();
    QCOMPARE(gateway::lineOf(gateway::externalServer(settings)), QByteArray("#012_:\r"));
}

void TstGatewayCommands::aLineEndsOnceWithACarriageReturn_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("CR") << QStringLiteral("1\rreboot") << QByteArray("#037_1reboot\r");
    QTest::newRow("LF") << QStringLiteral("1\nreboot") << QByteArray("#037_1reboot\r");
    QTest::newRow("CR LF at the end") << QStringLiteral("1\r\n") << QByteArray("#037_1\r");
    QTest::newRow("many") << QStringLiteral("\r\r\n1\n\n2\r") << QByteArray("#037_12\r");
}

void TstGatewayCommands::aLineEndsOnceWithACarriageReturn()
{
    QFETCH(QString, value);
    QTEST(gateway::lineOf(gateway::minimumSamples(value)), "line");
}

void TstGatewayCommands::textIsLatin1()
{
    QCOMPARE(gateway::lineOf(gateway::minimumSamples(QString(QChar(0xe4)))), QByteArray("#037_\xe4\r"));
    // The euro sign has no place in it.
    QCOMPARE(gateway::lineOf(gateway::minimumSamples(QString(QChar(0x20ac)))), QByteArray("#037_?\r"));
    // These two end a line elsewhere, and must not do so here.
    QCOMPARE(gateway::lineOf(gateway::minimumSamples(QString(QChar(0x2028)))), QByteArray("#037_?\r"));
    QCOMPARE(gateway::lineOf(gateway::minimumSamples(QString(QChar(0x010d)))), QByteArray("#037_?\r"));
}

void TstGatewayCommands::percentSignsStayAsTheyAre()
{
    GatewaySettings settings;
    settings.extAddress = QStringLiteral("%1%2");
    settings.extPort = QStringLiteral("%1");
    QCOMPARE(gateway::lineOf(gateway::externalServer(settings)), QByteArray("#012_%1%2:%1\r"));
}

void TstGatewayCommands::epochIsNanosecondsUtc_data()
{
    QTest::addColumn<QDateTime>("now");
    QTest::addColumn<QString>("text");
    const QDate date(2026, 3, 2);
    QTest::newRow("beginning") << QDateTime(QDate(1970, 1, 1), QTime(0, 0), Qt::UTC)
                               << QStringLiteral("0000000");
    QTest::newRow("UTC") << QDateTime(date, QTime(8, 30, 0, 123), Qt::UTC)
                         << QStringLiteral("1772440200123000000");
    QTest::newRow("two hours east") << QDateTime(date, QTime(10, 30, 0, 123), Qt::OffsetFromUTC, 7200)
                                    << QStringLiteral("1772440200123000000");
    QTest::newRow("beyond 32 bits of seconds")
        << QDateTime(QDate(2106, 2, 7), QTime(6, 28, 16), Qt::UTC) << QStringLiteral("4294967296000000000");
}

void TstGatewayCommands::epochIsNanosecondsUtc()
{
    QFETCH(QDateTime, now);
    QTEST(gateway::epochText(now), "text");
}

void TstGatewayCommands::modeTexts_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("text"); // null: none
    QTest::newRow("-1") << -1 << QString();
    QTest::newRow("0") << 0 << QStringLiteral("UDP-B");
    QTest::newRow("1") << 1 << QStringLiteral("UDP-M");
    QTest::newRow("2") << 2 << QStringLiteral("UDP-U");
    QTest::newRow("3") << 3 << QStringLiteral("TCP-S");
    QTest::newRow("4") << 4 << QStringLiteral("TCP-C");
    QTest::newRow("5, OFF") << 5 << QString();
    QTest::newRow("6") << 6 << QString();
}

void TstGatewayCommands::modeTexts()
{
    QFETCH(int, index);
    QFETCH(QString, text);
    const auto found = gateway::modeText(index);
    QCOMPARE(found.has_value(), !text.isNull());
    QCOMPARE(found.value_or(QString()), text);
}

QTEST_GUILESS_MAIN(TstGatewayCommands)
#include "tst_gatewaycommands.moc"
