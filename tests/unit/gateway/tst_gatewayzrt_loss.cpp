#include "gatewaypanel.h"

#include <QtTest>

/// What the panel does when the link is lost, comes back, or moves to another address.
class TstGatewayZrtLoss : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }

    void lostLinkLeavesTheValuesOnScreen();
    void lostLinkComesBackByItself();
    void buttonConnectsWhileTheRetriesRun();
    void retryThatWorksShowsItsAddress();
    void pollingStopsWithTheConnection_data();
    void pollingStopsWithTheConnection();
    void eachConnectionGreetsAnew();
    void newAddressIsFollowed();
};

void TstGatewayZrtLoss::lostLinkLeavesTheValuesOnScreen()
{
    const GatewayPanel p;
    p.receiveStatus({{2, "7.8"},
                     {5, "3"},
                     {6, "2500"},
                     {7, "16"},
                     {9, "L"},
                     {11, "10.0.0.9"},
                     {18, "55"},
                     {32, "1"},
                     {36, "12"}});
    QCOMPARE(p.marked(), QStringLiteral("16,2500"));
    QCOMPARE(p.lamp("PCM_Led"), QColor(Qt::green));
    const QSignalSpy left(p.dialog.get(), &GatewayZRT::disconnctTCP);
    p.sock->drop();
    p.checkClosed();
    QCOMPARE(left.size(), 0);
    QCOMPARE(p.text("GtwVersion"), QStringLiteral("7.8"));
    QCOMPARE(p.index("comboSimultn"), 3);
    QVERIFY(p.isChecked("radioLitleEndn"));
    QCOMPARE(p.text("extIpAddr"), QStringLiteral("10.0.0.9"));
    QCOMPARE(p.text("CoreTempBox"), QStringLiteral("55"));
    QCOMPARE(p.text("minBox"), QStringLiteral("12"));
}

void TstGatewayZrtLoss::lostLinkComesBackByItself()
{
    GatewayPanel p;
    p.sock->connects = false;
    p.sock->drop();
    p.forget();
    p.time.advance(5000);
    p.checkClosed(); // still not there
    p.sock->connects = true;
    p.time.advance(4999);
    p.checkClosed();
    p.time.advance(1);
    p.checkConnected();
    QCOMPARE(p.takeLines(), QByteArray("#030_1772440210000000000\r"));
    QCOMPARE(p.time.activeTimers(), 0);
}

void TstGatewayZrtLoss::buttonConnectsWhileTheRetriesRun()
{
    GatewayPanel p;
    p.sock->connects = false;
    p.sock->drop();
    p.click("tcpConnect_Btn"); // fails: the retries go on
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Connect"));
    QVERIFY(p.isEnabled("tcpConnect_Btn"));
    p.sock->connects = true;
    p.type(p.child<QLineEdit>("ipAddrBox"), "10.0.0.44");
    p.click("tcpConnect_Btn");
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Disconnect"));
    p.sock->calls.clear();
    p.time.advance(30000); // no retry cuts the fresh link
    QCOMPARE(p.sock->calls, QStringList());
    QCOMPARE(p.sock->address, QStringLiteral("10.0.0.44"));
}

void TstGatewayZrtLoss::retryThatWorksShowsItsAddress()
{
    GatewayPanel p;
    const QString address = p.sock->address;
    const QString port = p.sock->port;
    p.sock->drop();
    p.type(p.child<QLineEdit>("ipAddrBox"), "10.0.0.44"); // and the button is not pressed
    p.type(p.child<QLineEdit>("portNo"), "1");
    p.time.advance(5000);
    p.checkConnected();
    QCOMPARE(p.sock->address, address);
    QCOMPARE(p.text("ipAddrBox"), address);
    QCOMPARE(p.text("portNo"), port);
}

void TstGatewayZrtLoss::pollingStopsWithTheConnection_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("button") << "button";
    QTest::newRow("escape") << "escape";
    QTest::newRow("slot") << "slot";
    QTest::newRow("peer") << "peer";
}

void TstGatewayZrtLoss::pollingStopsWithTheConnection()
{
    QFETCH(QString, how);
    GatewayPanel p;
    p.receive("]----");
    p.forget();
    p.sock->connects = false;
    if (how == "button")
        p.click("tcpConnect_Btn");
    else if (how == "escape")
        QTest::keyClick(p.dialog.get(), Qt::Key_Escape);
    else if (how == "slot")
        p.dialog->Slot_tcpDisconnected();
    else
        p.sock->drop();
    p.time.advance(4000);
    QCOMPARE(p.takeLines(), QByteArray());
    QCOMPARE(p.takeShown(), QString()); // a request that is dropped would be shown all the same
}

void TstGatewayZrtLoss::eachConnectionGreetsAnew()
{
    GatewayPanel p;
    p.receive("]----");
    p.sock->drop();
    p.time.advance(5000);
    p.takeLines();
    p.time.advance(3000); // not greeted yet: nobody asks
    QCOMPARE(p.takeLines(), QByteArray());
    p.receive("]----");
    p.time.advance(1000);
    QCOMPARE(p.takeLines(), QByteArray("#?\r#?\r"));
}

void TstGatewayZrtLoss::newAddressIsFollowed()
{
    GatewayPanel p;
    p.child<QLineEdit>("portNo")->setText("7777");
    p.dialog->changeGatewayAddr("10.9.8.7");
    QCOMPARE(p.takeLines(), QByteArray("gateway.addr=10.9.8.7\r"));
    const QSignalSpy connects(p.dialog.get(), &GatewayZRT::connectToGateway);
    p.sock->calls.clear();
    p.receive("ok [NEW IP ADDRESS 10.9.8.7]");
    QCOMPARE(p.text("ipAddrBox"), QStringLiteral("10.9.8.7"));
    QCOMPARE(connects.count(), 1);
    QCOMPARE(connects[0][0].toString(), QStringLiteral("10.9.8.7"));
    QCOMPARE(connects[0][1].toString(), QStringLiteral("7777"));
    QCOMPARE(p.sock->calls.count("connect"), 1);
    QCOMPARE(p.sock->address, QStringLiteral("10.9.8.7"));
    QCOMPARE(p.sock->port, QStringLiteral("7777"));
    QVERIFY(p.takeLines().startsWith("#030_"));
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Disconnect"));
    QVERIFY(p.isEnabled("tcpConnect_Btn"));
}

QTEST_MAIN(TstGatewayZrtLoss)
#include "tst_gatewayzrt_loss.moc"
