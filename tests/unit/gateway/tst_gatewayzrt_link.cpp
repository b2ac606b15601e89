#include "gatewaypanel.h"
#include "support/messagecatcher.h"

#include <QtTest>

namespace {

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

/// How the panel connects and how it leaves the link.
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
    void emptyFieldStopsTheButton_data();
    void emptyFieldStopsTheButton();
    void linkThatIsUpBringsTheControlsToLife();
    void attemptThatFailsBringsTheButtonBack();
    void buttonLeavesTheConnection();
    void leftLinkDoesNotComeBack_data();
    void leftLinkDoesNotComeBack();
    void openingConnectsUnlessItIsUp();
    void openingDoesNotAskForFields();
    void escapeLeavesTheLink();
    void escapeAndOpeningConnectAgain();
    void escapeWhileClosed();
    void returnKeyPressesNoButton();
    void savedAddressIsShown_data();
    void savedAddressIsShown();
    void lampsTellTheirStateInWords();
    void connectedPanelDiesInPeace();
};

void TstGatewayZrtLink::startsWithoutALink()
{
    GatewayPanel p(GatewayPanel::Link::Down);
    p.checkClosed();
    QCOMPARE(p.text("ipAddrBox"), QStringLiteral("192.168.0.234"));
    QCOMPARE(p.text("portNo"), QStringLiteral("9999"));
    p.time.advance(20000);
    QCOMPARE(p.sock->calls, QStringList());
    QCOMPARE(p.dialogue(), QString());
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

void TstGatewayZrtLink::emptyFieldStopsTheButton_data()
{
    QTest::addColumn<QString>("empty");
    QTest::addColumn<bool>("isUp");
    for (const char *field : {"ipAddrBox", "portNo"}) {
        QTest::newRow(qPrintable(QString(field) + " closed")) << QString(field) << false;
        QTest::newRow(qPrintable(QString(field) + " connected")) << QString(field) << true;
    }
}

void TstGatewayZrtLink::emptyFieldStopsTheButton()
{
    QFETCH(QString, empty);
    QFETCH(bool, isUp);
    GatewayPanel p(isUp ? GatewayPanel::Link::Up : GatewayPanel::Link::Down);
    p.child<QLineEdit>(empty.toLatin1())->clear();
    p.sock->calls.clear();
    const QSignalSpy connects(p.dialog.get(), &GatewayZRT::connectToGateway);
    const QSignalSpy leaves(p.dialog.get(), &GatewayZRT::disconnctTCP);
    const MessageCatcher log;
    p.click("tcpConnect_Btn");
    QVERIFY(log.contains("HandleTcpConnect"));
    QCOMPARE(connects.count() + leaves.count(), 0);
    QCOMPARE(p.sock->calls, QStringList());
    if (isUp)
        p.checkConnected();
    else
        p.checkClosed();
}

void TstGatewayZrtLink::linkThatIsUpBringsTheControlsToLife()
{
    const GatewayPanel p;
    p.checkConnected();
    QCOMPARE(p.child("tcpLed")->accessibleDescription(), QStringLiteral("Connected"));
}

void TstGatewayZrtLink::attemptThatFailsBringsTheButtonBack()
{
    GatewayPanel p(GatewayPanel::Link::Down);
    p.sock->connects = false;
    p.click("tcpConnect_Btn");
    p.checkClosed();
    QCOMPARE(p.takeLines(), QByteArray());
    QCOMPARE(p.dialogue(), QString());
    p.time.advance(20000);
    QCOMPARE(p.sock->calls, QStringList{"connect"}); // the first attempt is not repeated
    p.sock->connects = true;
    p.click("tcpConnect_Btn");
    p.checkConnected();
}

void TstGatewayZrtLink::buttonLeavesTheConnection()
{
    GatewayPanel p;
    p.receiveStatus({{6, "2500"}, {7, "16"}, {32, "1"}});
    QCOMPARE(p.marked(), QStringLiteral("16,2500"));
    p.receive("]----");
    p.sock->calls.clear();
    const QSignalSpy leaves(p.dialog.get(), &GatewayZRT::disconnctTCP);
    p.click("tcpConnect_Btn");
    QCOMPARE(leaves.count(), 1);
    QCOMPARE(p.sock->calls, QStringList{"disconnect"});
    p.checkClosed();
    QCOMPARE(p.time.activeTimers(), 0);
    QVERIFY(p.dialog->isVisible());
}

void TstGatewayZrtLink::leftLinkDoesNotComeBack_data()
{
    QTest::addColumn<bool>("byEscape");
    QTest::newRow("button") << false;
    QTest::newRow("escape") << true;
}

void TstGatewayZrtLink::leftLinkDoesNotComeBack()
{
    QFETCH(bool, byEscape);
    GatewayPanel p;
    p.sock->calls.clear();
    if (byEscape)
        QTest::keyClick(p.dialog.get(), Qt::Key_Escape);
    else
        p.click("tcpConnect_Btn");
    emit p.sock->TcpDisconnectd(); // a socket that tells of its end late
    p.time.advance(20000);
    QCOMPARE(p.sock->calls.count("connect"), 0);
    p.checkClosed();
}

void TstGatewayZrtLink::openingConnectsUnlessItIsUp()
{
    const GatewayPanel p(GatewayPanel::Link::Down);
    p.dialog->connectToTcp();
    QCOMPARE(p.sock->calls, QStringList{"connect"});
    QCOMPARE(p.sock->address, QStringLiteral("192.168.0.234"));
    QCOMPARE(p.sock->port, QStringLiteral("9999"));
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

void TstGatewayZrtLink::escapeWhileClosed()
{
    GatewayPanel p(GatewayPanel::Link::Down);
    const QSignalSpy leaves(p.dialog.get(), &GatewayZRT::disconnctTCP);
    QTest::keyClick(p.dialog.get(), Qt::Key_Escape);
    QVERIFY(!p.dialog->isVisible());
    QCOMPARE(leaves.count(), 1);
    p.checkClosed();
}

void TstGatewayZrtLink::returnKeyPressesNoButton()
{
    GatewayPanel p(GatewayPanel::Link::Down);
    for (const char *name : {"ipAddrBox", "portNo", "comboPTP", "RxBox"}) {
        QTest::keyClick(p.child(name), Qt::Key_Return);
        QTest::keyClick(p.child(name), Qt::Key_Enter);
    }
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
    QCOMPARE(p.sock->calls, QStringList());
    QTEST(p.text("ipAddrBox") + ':' + p.text("portNo"), "shown");
    p.click("tcpConnect_Btn");
    QTEST(p.sock->address + ':' + p.sock->port, "shown");
}

void TstGatewayZrtLink::lampsTellTheirStateInWords()
{
    GatewayPanel p;
    QStringList words;
    for (const char *value : {"X", "0", "1"}) {
        p.receiveStatus({{32, value}});
        const auto *lamp = p.child("PCM_Led");
        QVERIFY(!lamp->accessibleDescription().isEmpty());
        QCOMPARE(lamp->toolTip(), lamp->accessibleDescription());
        words.append(lamp->toolTip());
    }
    QCOMPARE(words.removeDuplicates(), 0);
    const QString up = p.child("tcpLed")->accessibleDescription();
    p.sock->drop();
    const QString down = p.child("tcpLed")->accessibleDescription();
    QVERIFY(!up.isEmpty() && !down.isEmpty() && up != down);
    for (const char *name : {"tcpLed", "PCM_Led"}) {
        QVERIFY(p.child<QLineEdit>(name)->isReadOnly());
        QCOMPARE(p.child<QLineEdit>(name)->focusPolicy(), Qt::NoFocus);
        QCOMPARE(p.text(name), QString());
    }
}

void TstGatewayZrtLink::connectedPanelDiesInPeace()
{
    GatewayPanel p;
    p.receive("[ZRT GATEWAY]---->");
    QSignalSpy left(p.dialog.get(), &GatewayZRT::disconnctTCP);
    p.dialog.reset(); // its socket tells of the end of the link while it dies
    QCOMPARE(left.size(), 0);
    QCOMPARE(p.time.activeTimers(), 0);
    p.time.advance(10000);
}

QTEST_MAIN(TstGatewayZrtLink)
#include "tst_gatewayzrt_link.moc"
