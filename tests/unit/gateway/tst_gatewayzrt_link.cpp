#include "base/gui/fonts.h"
#include "gatewaypanel.h"
#include "support/messagecatcher.h"

#include <QtTest>

namespace {

/// Those that work only while the link is up, the cells of the table aside.
const char *const kSettings[] = {"groupBoxEndian",      "groupBoxDataLength", "groupBoxDataFormat",
                                 "groupBoxTemperature", "comboSimultn",       "comboMode"};

const QByteArray kPrompt = "[ZRT GATEWAY]---->";

/// What a widget was each time that it was enabled or disabled.
class EnabledChanges : public QObject
{
public:
    explicit EnabledChanges(QWidget &widget)
        : m_widget(widget)
    {
        widget.installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::EnabledChange)
            seen.append(m_widget.isEnabled());
        return QObject::eventFilter(watched, event);
    }

    QList<bool> seen;

private:
    QWidget &m_widget;
};

} // namespace

/// How the panel connects, loses the link and leaves it.
class TstGatewayZrtLink : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }
    void startsWithoutALink();
    void buttonAsksForTheTypedAddress();
    void buttonIsDeadWhileTheAttemptLasts_data();
    void buttonIsDeadWhileTheAttemptLasts();
    void buttonKeepsTheFocusOverTheAttempt();
    void emptyFieldConnectsNothing_data();
    void emptyFieldConnectsNothing();
    void linkThatIsUpBringsTheControlsToLife();
    void clockIsSetAtOnce();
    void attemptThatFailsBringsTheButtonBack();
    void buttonLeavesTheLink();
    void lostLinkLeavesTheValuesOnScreen();
    void lostLinkStopsThePolling();
    void retryBringsTheLinkBack();
    void openingConnectsUnlessItIsUp();
    void openingDoesNotAskForFields();
    void escapeLeavesTheLink();
    void escapeAndOpeningConnectAgain();
    void titleBarHidesAndLeavesThePollingRunning();
    void returnKeyPressesNoButton();
    void savedAddressIsShown_data();
    void savedAddressIsShown();
    void newAddressIsFollowed();
    void connectedPanelDiesInPeace();
};

void TstGatewayZrtLink::startsWithoutALink()
{
    const GatewayPanel p(GatewayPanel::Link::Down);
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Connect"));
    QCOMPARE(p.text("ipAddrBox"), QStringLiteral("192.168.0.234"));
    QCOMPARE(p.text("portNo"), QStringLiteral("9999"));
    QCOMPARE(p.lamp("tcpLed"), QColor(Qt::gray));
    QCOMPARE(p.lamp("PCM_Led"), QColor(Qt::gray));
    QVERIFY(p.isEnabled("ipAddrBox") && p.isEnabled("portNo"));
    for (const char *name : kSettings)
        QVERIFY2(!p.isEnabled(name), name);
    QCOMPARE(p.dead().size(), 48);
    QCOMPARE(p.sock->calls, QStringList());
}

void TstGatewayZrtLink::buttonAsksForTheTypedAddress()
{
    GatewayPanel p(GatewayPanel::Link::Down);
    for (const char *name : {"ipAddrBox", "portNo"}) {
        QTest::keyClick(p.child(name), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(p.child(name), name == QByteArray("portNo") ? "4567" : "10.1.2.3");
    }
    QSignalSpy asked(p.dialog.get(), &GatewayZRT::connectToGateway);
    const MessageCatcher log;
    p.click("tcpConnect_Btn");
    QCOMPARE(asked.size(), 1);
    QCOMPARE(asked.first(), (QVariantList{"10.1.2.3", "4567"}));
    QCOMPARE(p.sock->address, QStringLiteral("10.1.2.3"));
    QCOMPARE(p.sock->port, QStringLiteral("4567"));
    QVERIFY(log.contains("HandleTcpConnect"));
}

void TstGatewayZrtLink::buttonIsDeadWhileTheAttemptLasts_data()
{
    QTest::addColumn<bool>("connects");
    QTest::newRow("succeeds") << true;
    QTest::newRow("fails") << false;
}

void TstGatewayZrtLink::buttonIsDeadWhileTheAttemptLasts()
{
    QFETCH(bool, connects);
    const GatewayPanel p(GatewayPanel::Link::Down);
    p.sock->connects = connects;
    EnabledChanges changes(*p.child("tcpConnect_Btn"));
    p.click("tcpConnect_Btn");
    QCOMPARE(changes.seen, (QList<bool>{false, true}));
}

void TstGatewayZrtLink::buttonKeepsTheFocusOverTheAttempt()
{
    GatewayPanel p(GatewayPanel::Link::Down);
    p.child("tcpConnect_Btn")->setFocus();
    QTest::keyClick(p.child("tcpConnect_Btn"), Qt::Key_Space);
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Disconnect"));
    QCOMPARE(QApplication::focusWidget(), p.child("tcpConnect_Btn"));
    p.takeLines();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Connect"));
    QCOMPARE(p.takeLines(), QByteArray());
}

void TstGatewayZrtLink::emptyFieldConnectsNothing_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::newRow("address") << QByteArray("ipAddrBox");
    QTest::newRow("port") << QByteArray("portNo");
}

void TstGatewayZrtLink::emptyFieldConnectsNothing()
{
    QFETCH(QByteArray, field);
    const GatewayPanel p(GatewayPanel::Link::Down);
    p.child<QLineEdit>(field)->clear();
    p.click("tcpConnect_Btn");
    QCOMPARE(p.sock->calls, QStringList());
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Connect"));
    QVERIFY(p.isEnabled("tcpConnect_Btn"));
}

void TstGatewayZrtLink::linkThatIsUpBringsTheControlsToLife()
{
    const GatewayPanel p;
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Disconnect"));
    QVERIFY(p.isEnabled("tcpConnect_Btn"));
    QCOMPARE(p.lamp("tcpLed"), QColor(Qt::green));
    QCOMPARE(p.child("tcpLed")->accessibleDescription(), QStringLiteral("Connected"));
    QVERIFY(!p.isEnabled("ipAddrBox") && !p.isEnabled("portNo"));
    for (const char *name : kSettings)
        QVERIFY2(p.isEnabled(name), name);
    QCOMPARE(p.dead(), (QStringList{"2,10000", "4,10000", "2,5000", "256,625", "128,312", "256,312"}));
}

void TstGatewayZrtLink::clockIsSetAtOnce()
{
    GatewayPanel p(GatewayPanel::Link::Down);
    p.click("tcpConnect_Btn");
    const QByteArray milliseconds = QByteArray::number(p.time.now().toMSecsSinceEpoch());
    QCOMPARE(p.takeLines(), "#030_" + milliseconds + "000000\r");
}

void TstGatewayZrtLink::attemptThatFailsBringsTheButtonBack()
{
    GatewayPanel p(GatewayPanel::Link::Down);
    p.sock->connects = false;
    p.click("tcpConnect_Btn");
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Connect"));
    QVERIFY(p.isEnabled("tcpConnect_Btn") && p.isEnabled("ipAddrBox"));
    QCOMPARE(p.lamp("tcpLed"), QColor(Qt::gray));
    QCOMPARE(p.takeLines(), QByteArray());
}

void TstGatewayZrtLink::buttonLeavesTheLink()
{
    GatewayPanel p;
    p.receive(kPrompt);
    QSignalSpy left(p.dialog.get(), &GatewayZRT::disconnctTCP);
    p.click("tcpConnect_Btn");
    QCOMPARE(left.size(), 1);
    QCOMPARE(p.sock->calls, (QStringList{"connect", "disconnect"}));
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Connect"));
    QCOMPARE(p.lamp("tcpLed"), QColor(Qt::gray));
    p.time.advance(60000);
    QCOMPARE(p.sock->calls, (QStringList{"connect", "disconnect"})); // no retry
}

void TstGatewayZrtLink::lostLinkLeavesTheValuesOnScreen()
{
    const GatewayPanel p;
    p.receiveStatus(
        {{2, "7.8"}, {6, "2500"}, {7, "16"}, {11, "10.0.0.9"}, {18, "55"}, {32, "1"}, {36, "12"}});
    QCOMPARE(p.marked(), QStringLiteral("16,2500"));
    QCOMPARE(p.lamp("PCM_Led"), QColor(Qt::green));
    p.sock->drop();
    QCOMPARE(p.lamp("tcpLed"), QColor(Qt::gray));
    QCOMPARE(p.lamp("PCM_Led"), QColor(Qt::gray));
    QCOMPARE(p.marked(), QString());
    QCOMPARE(p.dead().size(), 48);
    for (const char *name : kSettings)
        QVERIFY2(!p.isEnabled(name), name);
    QCOMPARE(p.text("GtwVersion"), QStringLiteral("7.8"));
    QCOMPARE(p.text("extIpAddr"), QStringLiteral("10.0.0.9"));
    QCOMPARE(p.text("CoreTempBox"), QStringLiteral("55"));
    QCOMPARE(p.text("minBox"), QStringLiteral("12"));
}

void TstGatewayZrtLink::lostLinkStopsThePolling()
{
    GatewayPanel p;
    p.receive(kPrompt);
    p.time.advance(1000);
    QCOMPARE(p.takeLines(), QByteArray("#?\r#?\r"));
    p.sock->drop();
    const QString shown = p.dialogue();
    p.time.advance(4000);
    QCOMPARE(p.dialogue(), shown);
}

void TstGatewayZrtLink::retryBringsTheLinkBack()
{
    GatewayPanel p;
    p.sock->drop();
    p.time.advance(5000);
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Disconnect"));
    QCOMPARE(p.lamp("tcpLed"), QColor(Qt::green));
    QVERIFY(p.takeLines().startsWith("#030_"));
}

void TstGatewayZrtLink::openingConnectsUnlessItIsUp()
{
    const GatewayPanel p(GatewayPanel::Link::Down);
    p.dialog->connectToTcp();
    QCOMPARE(p.sock->calls, QStringList{"connect"});
    const MessageCatcher log;
    p.dialog->connectToTcp();
    QVERIFY(log.contains("Already Connected"));
    QCOMPARE(p.sock->calls, QStringList{"connect"});
}

void TstGatewayZrtLink::openingDoesNotAskForFields()
{
    const GatewayPanel p(GatewayPanel::Link::Down);
    p.child<QLineEdit>("ipAddrBox")->clear();
    p.sock->connects = false;
    p.dialog->connectToTcp();
    QCOMPARE(p.sock->calls, QStringList{"connect"});
}

void TstGatewayZrtLink::escapeLeavesTheLink()
{
    const GatewayPanel p;
    QSignalSpy left(p.dialog.get(), &GatewayZRT::disconnctTCP);
    QTest::keyClick(p.dialog.get(), Qt::Key_Escape);
    QVERIFY(!p.dialog->isVisible());
    QCOMPARE(left.size(), 1);
    QCOMPARE(p.sock->calls, (QStringList{"connect", "disconnect"}));
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Connect"));
}

void TstGatewayZrtLink::escapeAndOpeningConnectAgain()
{
    const GatewayPanel p;
    QTest::keyClick(p.dialog.get(), Qt::Key_Escape);
    p.dialog->connectToTcp();
    QCOMPARE(p.sock->calls, (QStringList{"connect", "disconnect", "connect"}));
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Disconnect"));
}

void TstGatewayZrtLink::titleBarHidesAndLeavesThePollingRunning()
{
    GatewayPanel p;
    p.receive(kPrompt);
    p.takeLines();
    QSignalSpy left(p.dialog.get(), &GatewayZRT::disconnctTCP);
    QVERIFY(!p.dialog->close()); // what the title bar's button does; refused
    QVERIFY(!p.dialog->isVisible());
    p.time.advance(3000);
    QCOMPARE(p.takeLines(), QByteArray("#?\r#?\r#?\r"));
    QCOMPARE(left.size(), 0);
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Disconnect"));
}

void TstGatewayZrtLink::returnKeyPressesNoButton()
{
    GatewayPanel p(GatewayPanel::Link::Down);
    for (const char *name : {"ipAddrBox", "portNo", "comboPTP", "RxBox"})
        QTest::keyClick(p.child(name), Qt::Key_Return);
    QCOMPARE(p.sock->calls, QStringList());
    QVERIFY(p.dialog->isVisible());
    QVERIFY(!QApplication::activeModalWidget());
    const auto buttons = p.dialog->findChildren<QPushButton *>();
    for (const QPushButton *button : buttons) {
        if (button->window() == p.dialog.get())
            QVERIFY2(!button->autoDefault() && !button->isDefault(), qPrintable(button->objectName()));
    }
}

void TstGatewayZrtLink::savedAddressIsShown_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("port");
    QTest::addColumn<QString>("shown");
    QTest::newRow("both") << "10.1.2.3"
                          << "4567"
                          << "10.1.2.3:4567";
    QTest::newRow("no port keeps 9999") << "10.1.2.3"
                                        << ""
                                        << "10.1.2.3:9999";
    QTest::newRow("no address keeps its default") << ""
                                                  << "4567"
                                                  << "192.168.0.234:4567";
    QTest::newRow("neither") << ""
                             << ""
                             << "192.168.0.234:9999";
}

void TstGatewayZrtLink::savedAddressIsShown()
{
    QFETCH(QString, address);
    QFETCH(QString, port);
    const GatewayPanel p(GatewayPanel::Link::Down);
    p.dialog->Slot_loadTcpAddr(address, port);
    QTEST(p.text("ipAddrBox") + ':' + p.text("portNo"), "shown");
}

void TstGatewayZrtLink::newAddressIsFollowed()
{
    GatewayPanel p;
    p.dialog->changeGatewayAddr("10.0.0.77");
    QCOMPARE(p.takeLines(), QByteArray("gateway.addr=10.0.0.77\r"));
    QSignalSpy asked(p.dialog.get(), &GatewayZRT::connectToGateway);
    p.receive("[NEW IP ADDRESS 10.0.0.77]");
    QCOMPARE(p.text("ipAddrBox"), QStringLiteral("10.0.0.77"));
    QCOMPARE(asked.size(), 1);
    QCOMPARE(asked.first(), (QVariantList{"10.0.0.77", "9999"}));
    QCOMPARE(p.sock->address, QStringLiteral("10.0.0.77"));
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Disconnect"));
}

void TstGatewayZrtLink::connectedPanelDiesInPeace()
{
    GatewayPanel p;
    p.receive(kPrompt);
    QSignalSpy left(p.dialog.get(), &GatewayZRT::disconnctTCP);
    p.dialog.reset(); // its socket tells of the end of the link while it dies
    QCOMPARE(left.size(), 0);
    QCOMPARE(p.time.activeTimers(), 0);
    p.time.advance(10000);
}

QTEST_MAIN(TstGatewayZrtLink)
#include "tst_gatewayzrt_link.moc"
