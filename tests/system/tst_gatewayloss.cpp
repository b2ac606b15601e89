#include "gatewayfixture.h"

#include <QLineEdit>
#include <QtTest>

using namespace std::chrono_literals;

/// The gateway's link ends, by the gateway, by the operator or with the program.
class TstGatewayLoss : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_fixture.reset(); }

    void lostLinkShowsAndComesBackByTheRetry();
    void retriesGoOnUntilTheGatewayIsBack();
    void closeInPlaceOfAStatus();
    void closeInPlaceOfTheGreeting();
    void restartedGatewayComesBack_data();
    void restartedGatewayComesBack();
    void escapeLeavesTheLink();
    void escapeEndsTheRetries();
    void titleBarKeepsTheLink();
    void hiddenPanelComesBackConnectedAfterALoss();
    void disconnectButtonLeavesTheLink();
    void commandsOnALostLinkAreSwallowed();
    void lossUnderAnOpenDialog();
    void chainGoesOnMeanwhile();
    void programEndsInAnyState_data();
    void programEndsInAnyState();

private:
    GatewayFixture &fixture() { return *m_fixture; }
    void expectDisconnected();
    /// Connected, mirrored, and by one connection alone.
    void expectBack();

    std::unique_ptr<GatewayFixture> m_fixture;
};

void TstGatewayLoss::init()
{
    m_fixture = std::make_unique<GatewayFixture>();
    fixture().startWithGateway();
    fixture().openConnectedPanel();
}

void TstGatewayLoss::expectDisconnected()
{
    WAIT_VERIFY(!fixture().isConnected());
    QCOMPARE(fixture().partText("tcpConnect_Btn"), QString("Connect"));
    QCOMPARE(fixture().lampColour("tcpLed"), QColor(Qt::gray));
    QCOMPARE(fixture().lampColour("PCM_Led"), QColor(Qt::gray));
    QCOMPARE(fixture().markedCell(), QString());
    for (const char *name : {"groupBoxEndian", "groupBoxDataLength", "groupBoxDataFormat",
                             "groupBoxTemperature", "comboSimultn", "comboMode", "16,2500", "128,625"})
        QVERIFY2(!fixture().part<QWidget>(name)->isEnabled(), name);
    for (const char *name : {"tcpConnect_Btn", "ipAddrBox", "portNo"})
        QVERIFY2(fixture().part<QWidget>(name)->isEnabled(), name);
}

void TstGatewayLoss::expectBack()
{
    WAIT_VERIFY(fixture().isConnected());
    WAIT_COMPARE(fixture().differences(), QStringList());
    QCOMPARE(fixture().lampColour("tcpLed"), QColor(Qt::green));
    fixture().nextPoll(5s); // a retry that still ran would cut the link
    QVERIFY(fixture().isConnected());
    QCOMPARE(fixture().gateway->connectionCount(), 1);
}

void TstGatewayLoss::lostLinkShowsAndComesBackByTheRetry()
{
    sim::GatewayState state = fixture().gateway->state();
    state.version = "back";
    fixture().unplugGateway();
    expectDisconnected();
    QCOMPARE(fixture().partText("GtwVersion"), QString("2.3.1")); // the last values stay
    fixture().plugGateway(state);
    fixture().time.skip(4999ms);
    fixture().waitForPolls();
    QCOMPARE(fixture().gateway->connectionCount(), 0);
    fixture().time.skip(1ms);
    expectBack();
    QCOMPARE(fixture().partText("GtwVersion"), QString("back"));
    QVERIFY(fixture().gateway->receivedLines().first().startsWith("#030_"));
}

void TstGatewayLoss::retriesGoOnUntilTheGatewayIsBack()
{
    fixture().unplugGateway();
    expectDisconnected();
    for (int i = 0; i < 5; ++i) {
        fixture().time.skip(5s);
        QCOMPARE(fixture().partText("tcpConnect_Btn"), QString("Connect"));
    }
    fixture().plugGateway();
    fixture().time.skip(5s);
    expectBack();
}

void TstGatewayLoss::closeInPlaceOfAStatus()
{
    fixture().addGatewayFaults("close line=\"#?\" nth=1");
    fixture().time.skip(1s);
    expectDisconnected();
    const int requests = fixture().statusRequests();
    fixture().time.skip(4s); // nothing is asked meanwhile
    QCOMPARE(fixture().statusRequests(), requests);
    fixture().time.skip(1s);
    expectBack();
}

void TstGatewayLoss::closeInPlaceOfTheGreeting()
{
    fixture().addGatewayFaults("close line=greeting count=2");
    fixture().gateway->goAway(0ms);
    expectDisconnected();
    for (int i = 0; i < 2; ++i) {
        fixture().time.skip(5s);
        QVERIFY(fixture().isConnected());
        expectDisconnected();
    }
    fixture().time.skip(5s);
    expectBack();
}

void TstGatewayLoss::restartedGatewayComesBack_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QByteArray>("box");
    QTest::addColumn<QString>("line");
    QTest::newRow("reboot") << QByteArray("rebootBtn") << QByteArray("rebootConfirmation") << "reboot";
    QTest::newRow("restart") << QByteArray("restartBtn") << QByteArray("restartConfirmation") << "restart";
}

void TstGatewayLoss::restartedGatewayComesBack()
{
    QFETCH(QByteArray, button);
    QFETCH(QByteArray, box);
    QFETCH(QString, line);
    fixture().gateway->state().mode = "UDP-M";
    fixture().clickPart(button);
    fixture().answerDialog(box, "Proceed");
    WAIT_COMPARE(fixture().lines(), QStringList(line));
    expectDisconnected();
    QVERIFY(!fixture().gateway->isListening());
    fixture().time.skip(4s);
    QVERIFY(fixture().gateway->isListening());
    QVERIFY(!fixture().isConnected());
    fixture().time.skip(1s);
    expectBack();
    QCOMPARE(fixture().part<QComboBox>("comboMode")->currentIndex(), 1);
}

void TstGatewayLoss::escapeLeavesTheLink()
{
    QTest::keyClick(fixture().panel(), Qt::Key_Escape);
    WAIT_VERIFY(!fixture().panel());
    WAIT_COMPARE(fixture().gateway->connectionCount(), 0);
    expectDisconnected();
    fixture().gateway->clearLines();
    fixture().time.skip(10s);
    fixture().waitForPolls();
    QCOMPARE(fixture().gateway->connectionCount(), 0);
    QCOMPARE(fixture().gateway->receivedLines(), QList<QByteArray>());
    fixture().gateway->state().mode = "TCP-C";
    fixture().openConnectedPanel();
    expectBack();
}

void TstGatewayLoss::escapeEndsTheRetries()
{
    fixture().unplugGateway();
    expectDisconnected();
    QTest::keyClick(fixture().panel(), Qt::Key_Escape);
    WAIT_VERIFY(!fixture().panel());
    fixture().plugGateway();
    fixture().time.skip(10s);
    fixture().waitForPolls();
    QCOMPARE(fixture().gateway->connectionCount(), 0);
}

void TstGatewayLoss::titleBarKeepsTheLink()
{
    fixture().panel()->close();
    WAIT_VERIFY(!fixture().panel());
    fixture().gateway->state().mode = "TCP-C";
    for (int i = 0; i < 3; ++i)
        fixture().nextPoll();
    QCOMPARE(fixture().gateway->connectionCount(), 1);
    fixture().openPanel();
    QCOMPARE(fixture().differences(), QStringList());
    QVERIFY(fixture().isConnected());
    QCOMPARE(fixture().clockSettings(), 1); // no new connection
}

void TstGatewayLoss::hiddenPanelComesBackConnectedAfterALoss()
{
    fixture().panel()->close();
    WAIT_VERIFY(!fixture().panel());
    fixture().unplugGateway();
    WAIT_VERIFY(!fixture().isConnected());
    fixture().plugGateway();
    fixture().time.skip(5s);
    WAIT_VERIFY(fixture().isConnected());
    QVERIFY(!fixture().panel());
    fixture().openPanel();
    expectBack();
}

void TstGatewayLoss::disconnectButtonLeavesTheLink()
{
    fixture().clickPart("tcpConnect_Btn");
    expectDisconnected();
    WAIT_COMPARE(fixture().gateway->connectionCount(), 0);
    fixture().time.skip(10s);
    fixture().waitForPolls();
    QCOMPARE(fixture().gateway->connectionCount(), 0);
    fixture().clickPart("tcpConnect_Btn");
    expectBack();
}

void TstGatewayLoss::commandsOnALostLinkAreSwallowed()
{
    fixture().unplugGateway();
    expectDisconnected();
    fixture().clickPart("debugBtn");
    gestures::pick(fixture().part<QComboBox>("comboPTP"), 2);
    fixture().plugGateway();
    fixture().time.skip(5s);
    expectBack(); // and the control is set back by the status
    QCOMPARE(fixture().lines(), QStringList());
}

void TstGatewayLoss::lossUnderAnOpenDialog()
{
    fixture().clickPart("minBox");
    WAIT_VERIFY(fixture().openDialog("minMaxDialog"));
    fixture().unplugGateway();
    WAIT_VERIFY(!fixture().isConnected());
    fixture().plugGateway();
    fixture().time.skip(5s);
    expectBack();
    fixture().typeInto("minMaxDialog", "valueBox", "12");
    fixture().answerDialog("minMaxDialog", "OK");
    WAIT_COMPARE(fixture().lines(), QStringList("#037_12"));
}

void TstGatewayLoss::chainGoesOnMeanwhile()
{
    fixture().unplugGateway();
    expectDisconnected();
    for (int i = 0; i < 3; ++i) {
        fixture().time.skip(5s);
        fixture().waitForPolls();
    }
    QVERIFY(fixture().isReady());
    QCOMPARE(fixture().device->refusals(), QStringList());
}

void TstGatewayLoss::programEndsInAnyState_data()
{
    QTest::addColumn<QString>("state");
    for (const char *state : {"connected", "hidden", "retrying", "dialog", "question"})
        QTest::newRow(state) << QString(state);
}

void TstGatewayLoss::programEndsInAnyState()
{
    QFETCH(QString, state);
    if (state == "hidden")
        fixture().panel()->close();
    if (state == "dialog")
        fixture().clickPart("maxBox");
    if (state == "question")
        fixture().clickPart("rebootBtn");
    if (state == "retrying") {
        fixture().unplugGateway();
        expectDisconnected();
    }
    fixture().app.reset();
    if (state == "retrying")
        fixture().plugGateway();
    fixture().time.skip(10s);
    WAIT_COMPARE(fixture().gateway->connectionCount(), 0);
    QCOMPARE(fixture().lines(), QStringList());
}

QTEST_MAIN(TstGatewayLoss)
#include "tst_gatewayloss.moc"
