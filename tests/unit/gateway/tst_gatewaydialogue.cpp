#include "gatewaydialoguetest.h"

#include <QtTest>
#include <functional>

Q_DECLARE_METATYPE(std::function<void(GatewayDialogue &)>)

/// What the dialogue with the gateway sends and shows for each action of the operator.
class TstGatewayDialogue : public GatewayDialogueTest
{
    Q_OBJECT

private slots:
    void nothingHappensByItself();
    void aSettingIsKeptAndSent_data();
    void aSettingIsKeptAndSent();
    void modeOffRepeatsTheLastMode();
    void modeOffBeforeAnyOtherSendsTheFirstText();
    void anUnknownProtocolRepeatsTheLastOne();
    void aCommandThatChangesNoSettingIsSent();
    void aCommandIsShownAsItGoesOut();
    void theLineIsShownBeforeItGoesOut();
    void theClockIsSetToThePresentTime();
};

void TstGatewayDialogue::nothingHappensByItself()
{
    m_time->advance(60000);
    QCOMPARE(m_events, QStringList());
    QCOMPARE(m_time->activeTimers(), 0);
    const GatewaySettings &settings = m_dialogue->settings();
    QCOMPARE(settings.pendingAddress, QString());
    QCOMPARE(settings.gatewayMode, QStringLiteral("UDP"));
    QCOMPARE(settings.channelCount, QStringLiteral("16"));
    QCOMPARE(settings.bitRate, QStringLiteral("2500"));
    QCOMPARE(settings.dataLength, QStringLiteral("16"));
    QCOMPARE(settings.endian, QStringLiteral("B"));
    QCOMPARE(settings.simulation, QStringLiteral("1"));
    QCOMPARE(settings.activeCom, QStringLiteral("2"));
    QCOMPARE(settings.dataFormat, QStringLiteral("U"));
    QCOMPARE(settings.ptpMode, QStringLiteral("0"));
    QCOMPARE(settings.dataProtocol, QStringLiteral("ZRT-1"));
    QCOMPARE(settings.epochTime, QStringLiteral("12345"));
    QCOMPARE(settings.extAddress, QStringLiteral("192.168.0.22"));
    QCOMPARE(settings.extPort, QStringLiteral("5675"));
}

void TstGatewayDialogue::aSettingIsKeptAndSent_data()
{
    using Action = std::function<void(GatewayDialogue &)>;
    QTest::addColumn<Action>("action");
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *line, const Action &action) {
        QTest::newRow(line) << action << QByteArray(line) + '\r' << QString::fromLatin1(line) + '\n';
    };
    row("#006_0", [](GatewayDialogue &dialogue) { dialogue.setSimulation(0); });
    row("#006_8", [](GatewayDialogue &dialogue) { dialogue.setSimulation(8); });
    row("#007_625:256", [](GatewayDialogue &dialogue) {
        dialogue.setDataRate(QStringLiteral("625"), QStringLiteral("256"));
    });
    row("#009_UDP-B", [](GatewayDialogue &dialogue) { dialogue.setMode(0); });
    row("#009_UDP-M", [](GatewayDialogue &dialogue) { dialogue.setMode(1); });
    row("#009_UDP-U", [](GatewayDialogue &dialogue) { dialogue.setMode(2); });
    row("#009_TCP-S", [](GatewayDialogue &dialogue) { dialogue.setMode(3); });
    row("#009_TCP-C", [](GatewayDialogue &dialogue) { dialogue.setMode(4); });
    row("#010_L", [](GatewayDialogue &dialogue) { dialogue.setEndian(gateway::ByteOrder::Little); });
    row("#010_B", [](GatewayDialogue &dialogue) { dialogue.setEndian(gateway::ByteOrder::Big); });
    row("#011_16", [](GatewayDialogue &dialogue) { dialogue.setDataLength(gateway::SampleWidth::Bits16); });
    row("#011_18", [](GatewayDialogue &dialogue) { dialogue.setDataLength(gateway::SampleWidth::Bits18); });
    row("#012_10.0.0.9:8888", [](GatewayDialogue &dialogue) {
        dialogue.setExternalServer(QStringLiteral("10.0.0.9"), QStringLiteral("8888"));
    });
    row("#014_U", [](GatewayDialogue &dialogue) { dialogue.setDataFormat(gateway::SampleFormat::Unsigned); });
    row("#014_2",
        [](GatewayDialogue &dialogue) { dialogue.setDataFormat(gateway::SampleFormat::TwosComplement); });
    row("#032_0", [](GatewayDialogue &dialogue) { dialogue.setActiveCom(0); });
    row("#032_3", [](GatewayDialogue &dialogue) { dialogue.setActiveCom(3); });
    row("#034_0", [](GatewayDialogue &dialogue) { dialogue.setPtpMode(0); });
    row("#034_2", [](GatewayDialogue &dialogue) { dialogue.setPtpMode(2); });
    row("#039_ZRT-1", [](GatewayDialogue &dialogue) { dialogue.setDataProtocol(0); });
    row("#039_IENA-1", [](GatewayDialogue &dialogue) { dialogue.setDataProtocol(1); });
    QTest::newRow("gateway.addr=") << Action([](GatewayDialogue &dialogue) {
        dialogue.changeAddress(QStringLiteral("10.0.0.1"));
    }) << QByteArray("gateway.addr=10.0.0.1\r")
                                   << QString();
}

void TstGatewayDialogue::aSettingIsKeptAndSent()
{
    QFETCH(std::function<void(GatewayDialogue &)>, action);
    QFETCH(QByteArray, line);
    QFETCH(QString, shown);
    action(*m_dialogue);
    QCOMPARE(takeLines(), QByteArrayList{line});
    QCOMPARE(takeShown(), shown);
    QCOMPARE(m_follows, shown.isEmpty() ? QList<bool>() : QList<bool>{true});
    // Kept: the settings make the same line again.
    const GatewaySettings &settings = m_dialogue->settings();
    const QByteArrayList kept{
        gateway::lineOf(gateway::simulation(settings)),     gateway::lineOf(gateway::dataRate(settings)),
        gateway::lineOf(gateway::mode(settings)),           gateway::lineOf(gateway::endian(settings)),
        gateway::lineOf(gateway::dataLength(settings)),     gateway::lineOf(gateway::dataFormat(settings)),
        gateway::lineOf(gateway::externalServer(settings)), gateway::lineOf(gateway::activeCom(settings)),
        gateway::lineOf(gateway::ptpMode(settings)),        gateway::lineOf(gateway::dataProtocol(settings)),
        gateway::lineOf(gateway::changeAddress(settings))};
    QVERIFY(kept.contains(line));
    QCOMPARE(m_time->activeTimers(), 0);
}

void TstGatewayDialogue::modeOffRepeatsTheLastMode()
{
    m_dialogue->setMode(3);
    m_dialogue->setMode(5);
    QCOMPARE(takeLines(), (QByteArrayList{"#009_TCP-S\r", "#009_TCP-S\r"}));
    QCOMPARE(m_dialogue->settings().gatewayMode, QStringLiteral("TCP-S"));
}

void TstGatewayDialogue::modeOffBeforeAnyOtherSendsTheFirstText()
{
    m_dialogue->setMode(5);
    m_dialogue->setMode(-1);
    QCOMPARE(takeLines(), (QByteArrayList{"#009_UDP\r", "#009_UDP\r"}));
}

void TstGatewayDialogue::anUnknownProtocolRepeatsTheLastOne()
{
    m_dialogue->setDataProtocol(1);
    m_dialogue->setDataProtocol(2);
    m_dialogue->setDataProtocol(-1);
    QCOMPARE(takeLines(), (QByteArrayList{"#039_IENA-1\r", "#039_IENA-1\r", "#039_IENA-1\r"}));
}

void TstGatewayDialogue::aCommandThatChangesNoSettingIsSent()
{
    m_dialogue->send(gateway::reboot());
    m_dialogue->send(gateway::restart());
    QCOMPARE(m_events, (QStringList{"line", "line"}));
    m_dialogue->send(gateway::emptyLine());
    m_dialogue->send(gateway::debug());
    m_dialogue->send(gateway::minimumSamples(QString()));
    QCOMPARE(takeLines(), (QByteArrayList{"reboot\r", "restart\r", "\r", "#000_1\r", "#037_\r"}));
    QCOMPARE(takeShown(), QStringLiteral("\n#000_1\n#037_\n"));
    QCOMPARE(m_follows, (QList<bool>{true, true, true}));
}

void TstGatewayDialogue::aCommandIsShownAsItGoesOut()
{
    m_dialogue->setExternalServer(QStringLiteral("a\r\nb"), QString(QChar(0x20ac)) + QChar(0xe4));
    QCOMPARE(takeLines(), QByteArrayList{"#012_ab:?\xe4\r"});
    QCOMPARE(takeShown(), QStringLiteral("#012_ab:?") + QChar(0xe4) + QLatin1Char('\n'));
}

void TstGatewayDialogue::theLineIsShownBeforeItGoesOut()
{
    m_dialogue->send(gateway::debug());
    QCOMPARE(m_events, (QStringList{"text", "line"}));
}

void TstGatewayDialogue::theClockIsSetToThePresentTime()
{
    m_dialogue->setClock(); // 2026-03-02 08:30:00
    m_time->advance(1234);
    m_dialogue->setClock();
    QCOMPARE(takeLines(), (QByteArrayList{"#030_1772440200000000000\r", "#030_1772440201234000000\r"}));
    QCOMPARE(takeShown(), QStringLiteral("#030_1772440200000000000\n#030_1772440201234000000\n"));
    QCOMPARE(m_dialogue->settings().epochTime, QStringLiteral("1772440201234000000"));
}

QTEST_GUILESS_MAIN(TstGatewayDialogue)
#include "tst_gatewaydialogue.moc"
