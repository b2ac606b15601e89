#include "reqpanel.h"

#include <QClipboard>
#include <QScrollBar>
#include <QSignalSpy>

/// What the gateway's replies start, the polling, and how the dialogue is shown.
class TstReqReplies : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }

    void promptIsAnsweredAndStartsThePolling();
    void otherReplyStartsThePollingOnly();
    void runningTimerIsNotStartedAnew();
    void eachPromptIsAnswered();
    void prompt_data();
    void prompt();
    void pollingStopsWithTheConnection_data();
    void pollingStopsWithTheConnection();
    void directTickAsksForTheStatus();
    void newAddressIsFollowed();
    void newAddressWithPromptAsksFirst();
    void newAddressWithoutAPendingOneChangesNothing();
    void newAddressInAStatusIsNotFollowed();
    void newAddressThatIsNotThereYetIsTriedAgain();
    void lateBytesAreNotTaken();
    void pieceIsShownOneCharacterPerByte();
    void commandScrollsToTheEnd();
    void statusRequestDoesNotScroll();
    void receivedTextFollowsOnlyFromTheEnd();
    void receivedTextKeepsTheSelection();
};

void TstReqReplies::promptIsAnsweredAndStartsThePolling()
{
    ReqPanel p;
    p.receive("\nWelcome [gw]----");
    QCOMPARE(p.sent(), QByteArray("#?\r"));
    QCOMPARE(p.shown(), QStringLiteral("\nWelcome [gw]----\n#?"));
    p.time.advance(999);
    QCOMPARE(p.sent(), QByteArray());
    p.time.advance(1);
    QCOMPARE(p.sent(), QByteArray("#?\r"));
    QCOMPARE(p.shown(), QStringLiteral("#?"));
    for (int i = 0; i < 5; ++i) {
        p.time.advance(1000);
        QCOMPARE(p.sent(), QByteArray("#?\r"));
    }
    QCOMPARE(p.shown(), QStringLiteral("#?#?#?#?#?"));
}

void TstReqReplies::otherReplyStartsThePollingOnly()
{
    ReqPanel p;
    p.receive("hello");
    QCOMPARE(p.sent(), QByteArray());
    QCOMPARE(p.shown(), QStringLiteral("hello\n"));
    p.time.advance(999);
    QCOMPARE(p.sent(), QByteArray());
    p.time.advance(1);
    QCOMPARE(p.sent(), QByteArray("#?\r"));
}

void TstReqReplies::runningTimerIsNotStartedAnew()
{
    ReqPanel p;
    p.receive("one");
    p.time.advance(600);
    p.receive("two");
    p.time.advance(399);
    QCOMPARE(p.sent(), QByteArray());
    p.time.advance(1);
    QCOMPARE(p.sent(), QByteArray("#?\r"));
    p.time.advance(999);
    QCOMPARE(p.sent(), QByteArray());
    QCOMPARE(p.time.activeTimers(), 1);
}

void TstReqReplies::eachPromptIsAnswered()
{
    ReqPanel p;
    p.receive("]----");
    p.receive("]----");
    QCOMPARE(p.sent(), QByteArray("#?\r#?\r"));
    p.receive("]---- and ]---- again"); // tested as a whole
    QCOMPARE(p.sent(), QByteArray("#?\r"));
}

void TstReqReplies::prompt_data()
{
    QTest::addColumn<QByteArray>("piece");
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("alone") << QByteArray("]----") << QByteArray("#?\r");
    QTest::newRow("within") << QByteArray("x[gw]-----> y") << QByteArray("#?\r");
    QTest::newRow("too short") << QByteArray("]---") << QByteArray();
    QTest::newRow("no bracket") << QByteArray("----") << QByteArray();
    QTest::newRow("apart") << QByteArray("] ----") << QByteArray();
}

void TstReqReplies::prompt()
{
    QFETCH(QByteArray, piece);
    ReqPanel p;
    p.receive(piece);
    QTEST(p.sent(), "answer");
    QCOMPARE(p.time.activeTimers(), 1);
}

void TstReqReplies::pollingStopsWithTheConnection_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("button") << "button";
    QTest::newRow("escape") << "escape";
    QTest::newRow("slot") << "slot";
    QTest::newRow("peer") << "peer";
}

void TstReqReplies::pollingStopsWithTheConnection()
{
    QFETCH(QString, how);
    ReqPanel p;
    p.receive("]----");
    p.forget();
    p.sock->connects = false;
    if (how == "button")
        p.click("tcpConnect_Btn");
    else if (how == "escape")
        QTest::keyClick(p.panel.get(), Qt::Key_Escape);
    else if (how == "slot")
        p.panel->Slot_tcpDisconnected();
    else
        p.sock->drop();
    p.time.advance(4000);
    QCOMPARE(p.sent(), QByteArray());
    QCOMPARE(p.shown(), QString()); // a request that is dropped would be shown all the same
}

void TstReqReplies::directTickAsksForTheStatus()
{
    ReqPanel p;
    p.panel->Slot_OneSecTmrHndlr();
    QCOMPARE(p.sent(), QByteArray("#?\r"));
    QCOMPARE(p.shown(), QStringLiteral("#?"));
}

void TstReqReplies::newAddressIsFollowed()
{
    ReqPanel p;
    p.child<QLineEdit>("portNo")->setText("7777");
    p.panel->changeGatewayAddr("10.9.8.7");
    QCOMPARE(p.sent(), QByteArray("gateway.addr=10.9.8.7\r"));
    const QSignalSpy connects(p.panel.get(), &GatewayZRT::connectToGateway);
    p.sock->calls.clear();
    p.receive("ok [NEW IP ADDRESS 10.9.8.7]");
    QCOMPARE(p.text("ipAddrBox"), QStringLiteral("10.9.8.7"));
    QCOMPARE(connects.count(), 1);
    QCOMPARE(connects[0][0].toString(), QStringLiteral("10.9.8.7"));
    QCOMPARE(connects[0][1].toString(), QStringLiteral("7777"));
    QCOMPARE(p.sock->calls.count("connect"), 1);
    QCOMPARE(p.sock->address, QStringLiteral("10.9.8.7"));
    QCOMPARE(p.sock->port, QStringLiteral("7777"));
    QVERIFY(p.sent().startsWith("#030_"));
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Disconnect"));
    QVERIFY(p.isEnabled("tcpConnect_Btn"));
}

void TstReqReplies::newAddressWithPromptAsksFirst()
{
    ReqPanel p;
    p.panel->changeGatewayAddr("10.9.8.7");
    p.forget();
    p.receive("[NEW IP ADDRESS] [gw]----");
    const QByteArray sent = p.sent();
    QVERIFY2(sent.startsWith("#?\r#030_"), sent);
    p.time.advance(1000);
    QCOMPARE(p.sent(), QByteArray("#?\r"));
}

void TstReqReplies::newAddressWithoutAPendingOneChangesNothing()
{
    ReqPanel p;
    const QString before = p.text("ipAddrBox");
    const QSignalSpy connects(p.panel.get(), &GatewayZRT::connectToGateway);
    p.receive("[NEW IP ADDRESS 1.1.1.1]");
    QCOMPARE(p.text("ipAddrBox"), before);
    QCOMPARE(connects.count(), 0);
    p.time.advance(1000);
    QCOMPARE(p.sent(), QByteArray("#?\r"));
}

void TstReqReplies::newAddressInAStatusIsNotFollowed()
{
    ReqPanel p;
    p.panel->changeGatewayAddr("10.9.8.7");
    const QSignalSpy connects(p.panel.get(), &GatewayZRT::connectToGateway);
    p.receive(ReqPanel::status() + "\n[NEW IP ADDRESS");
    QCOMPARE(connects.count(), 0);
    p.receive("[NEW IP ADDRES"); // not the whole word
    QCOMPARE(connects.count(), 0);
}

void TstReqReplies::newAddressThatIsNotThereYetIsTriedAgain()
{
    ReqPanel p;
    p.panel->changeGatewayAddr("10.9.8.7");
    p.sock->connects = false;
    p.receive("[NEW IP ADDRESS");
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Connect"));
    p.sock->calls.clear();
    p.sock->address.clear();
    p.time.advance(4999);
    QCOMPARE(p.sock->calls.count("connect"), 0);
    p.sock->connects = true;
    p.time.advance(1);
    QCOMPARE(p.sock->address, QStringLiteral("10.9.8.7"));
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Disconnect"));
    QCOMPARE(p.lamp("tcpLed"), QColor(Qt::green));
}

void TstReqReplies::lateBytesAreNotTaken()
{
    ReqPanel p;
    p.click("tcpConnect_Btn"); // leaves the connection
    p.forget();
    p.receive("]----");
    p.receive(ReqPanel::status({{2, "late"}}));
    QCOMPARE(p.shown(), QString());
    QCOMPARE(p.text("GtwVersion"), QString());
    QCOMPARE(p.time.activeTimers(), 0);
}

void TstReqReplies::pieceIsShownOneCharacterPerByte()
{
    ReqPanel p;
    p.receive("\xC3\xA4 \xB5 <b>bold</b> &amp;");
    QCOMPARE(p.shown(), QString::fromLatin1("\xC3\xA4 \xB5 <b>bold</b> &amp;\n"));
}

namespace {

QScrollBar *filledBar(ReqPanel &p)
{
    for (int i = 0; i < 200; ++i)
        p.receive("line " + QByteArray::number(i));
    auto *bar = p.child<QAbstractScrollArea>("RxBox")->verticalScrollBar();
    p.forget();
    return bar;
}

} // namespace

void TstReqReplies::commandScrollsToTheEnd()
{
    ReqPanel p;
    QScrollBar *bar = filledBar(p);
    QVERIFY(bar->maximum() > 0);
    bar->setValue(0);
    p.click("debugBtn");
    QCOMPARE(bar->value(), bar->maximum());
}

void TstReqReplies::statusRequestDoesNotScroll()
{
    ReqPanel p;
    QScrollBar *bar = filledBar(p);
    bar->setValue(3);
    p.panel->Slot_OneSecTmrHndlr();
    QCOMPARE(p.shown(), QStringLiteral("#?"));
    QCOMPARE(bar->value(), 3);
}

void TstReqReplies::receivedTextFollowsOnlyFromTheEnd()
{
    ReqPanel p;
    QScrollBar *bar = filledBar(p);
    QCOMPARE(bar->value(), bar->maximum());
    const int before = bar->maximum();
    p.receive("one more");
    QVERIFY(bar->maximum() > before);
    QCOMPARE(bar->value(), bar->maximum());
    bar->setValue(5);
    p.receive("and another");
    QCOMPARE(bar->value(), 5);
}

void TstReqReplies::receivedTextKeepsTheSelection()
{
    ReqPanel p;
    filledBar(p);
    auto *box = p.child<QWidget>("RxBox");
    box->setFocus();
    QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
    QApplication::clipboard()->clear();
    p.receive("more");
    QTest::keyClick(box, Qt::Key_C, Qt::ControlModifier);
    const QString copied = QApplication::clipboard()->text();
    QVERIFY(copied.contains(QStringLiteral("line 0\nline 1\n")));
    QVERIFY(!copied.contains(QStringLiteral("more")));
}

QTEST_MAIN(TstReqReplies)
#include "tst_req_replies.moc"
