#include "reqpanel.h"

#include <QCloseEvent>
#include <QSignalSpy>

namespace {

const QStringList kDependent{"groupBoxEndian",      "groupBoxDataLength", "groupBoxDataFormat",
                             "groupBoxTemperature", "comboSimultn",       "comboMode"};

/// Notes how a button was enabled and what it read each time that changed.
class ButtonRecorder : public QObject
{
public:
    explicit ButtonRecorder(QAbstractButton *button)
        : m_button(button)
    {
        button->installEventFilter(this);
    }

    QStringList states;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::EnabledChange)
            states.append((m_button->isEnabled() ? "enabled " : "disabled ") + m_button->text());
        return false;
    }

private:
    QAbstractButton *m_button;
};

QStringList allCells(const ReqPanel &p)
{
    return p.cells([](const QPushButton *) { return true; });
}

void checkClosed(const ReqPanel &p)
{
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Connect"));
    QVERIFY(p.isEnabled("tcpConnect_Btn"));
    QCOMPARE(p.lamp("tcpLed"), QColor(Qt::gray));
    QCOMPARE(p.lamp("PCM_Led"), QColor(Qt::gray));
    QVERIFY(p.isEnabled("ipAddrBox"));
    QVERIFY(p.isEnabled("portNo"));
    for (const QString &name : kDependent)
        QVERIFY2(!p.isEnabled(name.toLatin1()), qPrintable(name));
    QCOMPARE(p.deadCells(), allCells(p));
    QCOMPARE(p.markedCells(), QStringList());
}

void checkConnected(const ReqPanel &p)
{
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Disconnect"));
    QVERIFY(p.isEnabled("tcpConnect_Btn"));
    QCOMPARE(p.lamp("tcpLed"), QColor(Qt::green));
    QVERIFY(!p.isEnabled("ipAddrBox"));
    QVERIFY(!p.isEnabled("portNo"));
    for (const QString &name : kDependent)
        QVERIFY2(p.isEnabled(name.toLatin1()), qPrintable(name));
    QCOMPARE(p.deadCells(), ReqPanel::alwaysDead());
}

} // namespace

/// Connecting, leaving, losing and closing.
class TstReqConnection : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }

    void beginsClosed();
    void buttonConnects();
    void buttonIsDisabledWhileConnecting();
    void refusedConnectionShowsClosedAgain();
    void emptyFieldStopsTheButton_data();
    void emptyFieldStopsTheButton();
    void buttonLeavesTheConnection();
    void openingConnects();
    void openingDoesNotCheckForEmptyFields();
    void openingFindsTheLinkUp();
    void lostLinkShowsClosedAndKeepsTheValues();
    void lostLinkComesBackByItself();
    void leftLinkDoesNotComeBack_data();
    void leftLinkDoesNotComeBack();
    void limitedCellsComeBackWithTheNextConnection();
    void escapeDisconnects();
    void escapeWhileClosed();
    void titleBarHidesOnly();
    void settingsFileGivesTheAddress_data();
    void settingsFileGivesTheAddress();
    void lampsTellTheirStateInWords();
    void panelDiesQuietly_data();
    void panelDiesQuietly();
};

void TstReqConnection::beginsClosed()
{
    ReqPanel p(ReqPanel::Link::Closed);
    checkClosed(p);
    QCOMPARE(p.text("ipAddrBox"), QStringLiteral("192.168.0.234"));
    QCOMPARE(p.text("portNo"), QStringLiteral("9999"));
    p.time.advance(20000);
    QCOMPARE(p.sock->calls, QStringList());
    QCOMPARE(p.dialogue(), QString());
}

void TstReqConnection::buttonConnects()
{
    ReqPanel p(ReqPanel::Link::Closed);
    p.type(p.child<QLineEdit>("ipAddrBox"), "10.0.0.9");
    p.type(p.child<QLineEdit>("portNo"), "4242");
    const QSignalSpy connects(p.panel.get(), &GatewayZRT::connectToGateway);
    const MessageCatcher log;
    p.click("tcpConnect_Btn");
    QVERIFY(log.contains("HandleTcpConnect"));
    QCOMPARE(connects.count(), 1);
    QCOMPARE(connects[0], (QVariantList{"10.0.0.9", "4242"}));
    QCOMPARE(p.sock->calls.count("connect"), 1);
    QCOMPARE(p.sock->address, QStringLiteral("10.0.0.9"));
    QCOMPARE(p.sock->port, QStringLiteral("4242"));
    checkConnected(p);
    QCOMPARE(p.sent(), QByteArray("#030_1772440200000000000\r"));
    p.time.advance(4000); // no polling before the gateway greets
    QCOMPARE(p.sent(), QByteArray());
}

void TstReqConnection::buttonIsDisabledWhileConnecting()
{
    ReqPanel p(ReqPanel::Link::Closed);
    const ButtonRecorder recorder(p.child<QAbstractButton>("tcpConnect_Btn"));
    p.click("tcpConnect_Btn");
    QVERIFY(recorder.states.size() >= 2);
    QCOMPARE(recorder.states.first(), QStringLiteral("disabled Connect"));
    QVERIFY(recorder.states.last().startsWith("enabled"));
}

void TstReqConnection::refusedConnectionShowsClosedAgain()
{
    ReqPanel p(ReqPanel::Link::Closed);
    p.sock->connects = false;
    p.click("tcpConnect_Btn");
    checkClosed(p);
    QCOMPARE(p.sent(), QByteArray());
    QCOMPARE(p.dialogue(), QString());
    p.time.advance(20000); // the very first attempt is not repeated
    QCOMPARE(p.sock->calls.count("connect"), 1);
    p.sock->connects = true;
    p.click("tcpConnect_Btn");
    checkConnected(p);
}

void TstReqConnection::emptyFieldStopsTheButton_data()
{
    QTest::addColumn<QString>("empty");
    QTest::addColumn<bool>("isUp");
    for (const char *field : {"ipAddrBox", "portNo"}) {
        QTest::newRow(qPrintable(QString(field) + " closed")) << QString(field) << false;
        QTest::newRow(qPrintable(QString(field) + " connected")) << QString(field) << true;
    }
}

void TstReqConnection::emptyFieldStopsTheButton()
{
    QFETCH(QString, empty);
    QFETCH(bool, isUp);
    ReqPanel p(isUp ? ReqPanel::Link::Up : ReqPanel::Link::Closed);
    p.child<QLineEdit>(empty.toLatin1())->clear();
    p.sock->calls.clear();
    const QSignalSpy connects(p.panel.get(), &GatewayZRT::connectToGateway);
    const QSignalSpy leaves(p.panel.get(), &GatewayZRT::disconnctTCP);
    const MessageCatcher log;
    p.click("tcpConnect_Btn");
    QVERIFY(log.contains("HandleTcpConnect"));
    QCOMPARE(connects.count() + leaves.count(), 0);
    QCOMPARE(p.sock->calls, QStringList());
    if (isUp)
        checkConnected(p);
    else
        checkClosed(p);
}

void TstReqConnection::buttonLeavesTheConnection()
{
    ReqPanel p;
    p.report({{6, "2500"}, {7, "16"}, {32, "1"}});
    QCOMPARE(p.markedCells(), QStringList{"16,2500"});
    p.receive("]----");
    p.sock->calls.clear();
    const QSignalSpy leaves(p.panel.get(), &GatewayZRT::disconnctTCP);
    p.click("tcpConnect_Btn");
    QCOMPARE(leaves.count(), 1);
    QCOMPARE(p.sock->calls, QStringList{"disconnect"});
    checkClosed(p);
    QCOMPARE(p.time.activeTimers(), 0);
    QVERIFY(p.panel->isVisible());
}

void TstReqConnection::openingConnects()
{
    ReqPanel p(ReqPanel::Link::Closed);
    const QSignalSpy connects(p.panel.get(), &GatewayZRT::connectToGateway);
    const MessageCatcher log;
    const ButtonRecorder recorder(p.child<QAbstractButton>("tcpConnect_Btn"));
    p.panel->connectToTcp();
    QCOMPARE(connects.count(), 1);
    QCOMPARE(connects[0], (QVariantList{"192.168.0.234", "9999"}));
    QCOMPARE(recorder.states.value(0), QStringLiteral("disabled Connect"));
    QVERIFY(!log.contains("Already Connected"));
    checkConnected(p);
}

void TstReqConnection::openingDoesNotCheckForEmptyFields()
{
    ReqPanel p(ReqPanel::Link::Closed);
    p.child<QLineEdit>("ipAddrBox")->clear();
    p.sock->connects = false;
    const QSignalSpy connects(p.panel.get(), &GatewayZRT::connectToGateway);
    p.panel->connectToTcp();
    QCOMPARE(connects.count(), 1);
    QCOMPARE(connects[0], (QVariantList{"", "9999"}));
    checkClosed(p);
}

void TstReqConnection::openingFindsTheLinkUp()
{
    ReqPanel p;
    p.sock->calls.clear();
    const QSignalSpy connects(p.panel.get(), &GatewayZRT::connectToGateway);
    const QSignalSpy leaves(p.panel.get(), &GatewayZRT::disconnctTCP);
    const MessageCatcher log;
    p.panel->connectToTcp();
    QVERIFY(log.contains("Already Connected"));
    QCOMPARE(connects.count() + leaves.count(), 0);
    QCOMPARE(p.sock->calls, QStringList());
    checkConnected(p);
}

void TstReqConnection::lostLinkShowsClosedAndKeepsTheValues()
{
    ReqPanel p;
    p.report({{2, "V7"}, {5, "3"}, {6, "2500"}, {7, "16"}, {9, "L"}, {11, "1.1.1.1"}, {32, "1"}, {36, "5"}});
    const QSignalSpy leaves(p.panel.get(), &GatewayZRT::disconnctTCP);
    p.sock->drop();
    checkClosed(p);
    QCOMPARE(leaves.count(), 0);
    QCOMPARE(p.text("GtwVersion"), QStringLiteral("V7"));
    QCOMPARE(p.index("comboSimultn"), 3);
    QVERIFY(p.isChecked("radioLitleEndn"));
    QCOMPARE(p.text("extIpAddr"), QStringLiteral("1.1.1.1"));
    QCOMPARE(p.text("minBox"), QStringLiteral("5"));
}

void TstReqConnection::lostLinkComesBackByItself()
{
    ReqPanel p;
    p.sock->connects = false;
    p.sock->drop();
    p.forget();
    p.time.advance(5000);
    checkClosed(p); // still not there
    p.sock->connects = true;
    p.time.advance(4999);
    checkClosed(p);
    p.time.advance(1);
    checkConnected(p);
    QCOMPARE(p.sent(), QByteArray("#030_1772440210000000000\r"));
    QCOMPARE(p.time.activeTimers(), 0);
}

void TstReqConnection::leftLinkDoesNotComeBack_data()
{
    QTest::addColumn<bool>("byEscape");
    QTest::newRow("button") << false;
    QTest::newRow("escape") << true;
}

void TstReqConnection::leftLinkDoesNotComeBack()
{
    QFETCH(bool, byEscape);
    ReqPanel p;
    p.sock->calls.clear();
    if (byEscape)
        QTest::keyClick(p.panel.get(), Qt::Key_Escape);
    else
        p.click("tcpConnect_Btn");
    emit p.sock->TcpDisconnectd(); // a socket that tells of its end late
    p.time.advance(20000);
    QCOMPARE(p.sock->calls.count("connect"), 0);
    checkClosed(p);
}

void TstReqConnection::limitedCellsComeBackWithTheNextConnection()
{
    ReqPanel p;
    p.report({{28, "1000"}});
    QVERIFY(p.deadCells().size() > ReqPanel::alwaysDead().size());
    p.click("tcpConnect_Btn");
    p.click("tcpConnect_Btn");
    checkConnected(p);
}

void TstReqConnection::escapeDisconnects()
{
    ReqPanel p;
    p.receive("]----");
    p.sock->calls.clear();
    const QSignalSpy leaves(p.panel.get(), &GatewayZRT::disconnctTCP);
    QTest::keyClick(p.panel.get(), Qt::Key_Escape);
    QVERIFY(!p.panel->isVisible());
    QCOMPARE(leaves.count(), 1);
    QCOMPARE(p.sock->calls.count("disconnect"), 1);
    checkClosed(p);
    QCOMPARE(p.time.activeTimers(), 0);
    p.panel->connectToTcp(); // as opening it again does
    checkConnected(p);
}

void TstReqConnection::escapeWhileClosed()
{
    ReqPanel p(ReqPanel::Link::Closed);
    const QSignalSpy leaves(p.panel.get(), &GatewayZRT::disconnctTCP);
    QTest::keyClick(p.panel.get(), Qt::Key_Escape);
    QVERIFY(!p.panel->isVisible());
    QCOMPARE(leaves.count(), 1);
    checkClosed(p);
}

void TstReqConnection::titleBarHidesOnly()
{
    ReqPanel p;
    p.receive("]----");
    p.forget();
    p.sock->calls.clear();
    const QSignalSpy leaves(p.panel.get(), &GatewayZRT::disconnctTCP);
    const QSignalSpy rejections(p.panel.get(), &QDialog::rejected);
    QCloseEvent event;
    QApplication::sendEvent(p.panel.get(), &event);
    QVERIFY(!event.isAccepted());
    QVERIFY(!p.panel->isVisible());
    QCOMPARE(leaves.count() + rejections.count(), 0);
    QCOMPARE(p.sock->calls, QStringList());
    p.time.advance(3000);
    QCOMPARE(p.sent(), QByteArray("#?\r#?\r#?\r"));
    p.panel->show();
    checkConnected(p);
}

void TstReqConnection::settingsFileGivesTheAddress_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("port");
    QTest::addColumn<QString>("shownAddress");
    QTest::addColumn<QString>("shownPort");
    QTest::newRow("both") << "10.0.0.1"
                          << "1234"
                          << "10.0.0.1"
                          << "1234";
    QTest::newRow("empty port keeps 9999") << "10.0.0.1"
                                           << ""
                                           << "10.0.0.1"
                                           << "9999";
    QTest::newRow("empty address keeps the default") << ""
                                                     << "1234"
                                                     << "192.168.0.234"
                                                     << "1234";
    QTest::newRow("none") << ""
                          << ""
                          << "192.168.0.234"
                          << "9999";
}

void TstReqConnection::settingsFileGivesTheAddress()
{
    QFETCH(QString, address);
    QFETCH(QString, port);
    ReqPanel p(ReqPanel::Link::Closed);
    const QSignalSpy connects(p.panel.get(), &GatewayZRT::connectToGateway);
    p.panel->Slot_loadTcpAddr(address, port);
    QTEST(p.text("ipAddrBox"), "shownAddress");
    QTEST(p.text("portNo"), "shownPort");
    QCOMPARE(connects.count(), 0);
    p.click("tcpConnect_Btn");
    QTEST(p.sock->address, "shownAddress");
    QTEST(p.sock->port, "shownPort");
}

void TstReqConnection::lampsTellTheirStateInWords()
{
    ReqPanel p;
    QStringList words;
    for (const char *value : {"X", "0", "1"}) {
        p.report({{32, value}});
        const auto *lamp = p.child<QWidget>("PCM_Led");
        QVERIFY(!lamp->accessibleDescription().isEmpty());
        QCOMPARE(lamp->toolTip(), lamp->accessibleDescription());
        words.append(lamp->toolTip());
    }
    QCOMPARE(words.removeDuplicates(), 0);
    const QString up = p.child<QWidget>("tcpLed")->accessibleDescription();
    p.sock->drop();
    const QString down = p.child<QWidget>("tcpLed")->accessibleDescription();
    QVERIFY(!up.isEmpty() && !down.isEmpty() && up != down);
    for (const char *name : {"tcpLed", "PCM_Led"}) {
        QVERIFY(p.child<QLineEdit>(name)->isReadOnly());
        QCOMPARE(p.child<QLineEdit>(name)->focusPolicy(), Qt::NoFocus);
        QCOMPARE(p.text(name), QString());
    }
}

void TstReqConnection::panelDiesQuietly_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("button");
    QTest::newRow("link up") << ""
                             << "";
    QTest::newRow("question open") << "rebootConfirmation"
                                   << "rebootBtn";
    QTest::newRow("dialog open") << "externIpAndPort"
                                 << "setExtAddress";
}

void TstReqConnection::panelDiesQuietly()
{
    QFETCH(QString, box);
    QFETCH(QString, button);
    ReqPanel p;
    p.receive("]----");
    if (!box.isEmpty()) {
        p.click(button.toLatin1());
        QVERIFY(ReqPanel::open(box.toLatin1()));
    }
    p.panel.reset();
    QVERIFY(!ReqPanel::open(box.toLatin1()));
    p.time.advance(10000);
    QCOMPARE(p.time.activeTimers(), 0);
}

QTEST_MAIN(TstReqConnection)
#include "tst_req_connection.moc"
