#include "reqpanel.h"

#include <QSignalSpy>

/// What an operator may do besides the plain use: keys in odd places, dialogs over a living link, gestures in
/// the wrong moment.
class TstReqOperator : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }
    void cleanup();

    void returnInAFieldStartsNothing_data();
    void returnInAFieldStartsNothing();
    void returnOnACellStartsNothing();
    void escapeClosesAnOpenListOnly();
    void escapeEndsTheRetries();
    void buttonConnectsWhileTheRetriesRun();
    void arrowKeysChooseARadioButton_data();
    void arrowKeysChooseARadioButton();
    void disabledControlsSendNothing_data();
    void disabledControlsSendNothing();
    void doubleClickOpensOneDialog();
    void questionIsAskedOnce_data();
    void questionIsAskedOnce();
    void statusLeavesAnOpenDialogAlone();
    void statusLeavesAnOpenListAlone();
    void pollingGoesOnUnderADialog();
    void chosenRateIsStoredWithoutALink();
    void eachConnectionGreetsAnew();
    void targetOfAStatusIsNotKept();
};

void TstReqOperator::cleanup()
{
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(!QApplication::activePopupWidget());
}

void TstReqOperator::returnInAFieldStartsNothing_data()
{
    QTest::addColumn<bool>("isUp");
    for (const char *name : {"ipAddrBox", "portNo", "RxBox"})
        QTest::addRow("%s closed", name) << false;
    for (const char *name :
         {"extIpAddr", "extPort", "SerialNo", "GtwVersion", "RxBox", "comboMode", "comboPTP", "radio16Bit"})
        QTest::addRow("%s connected", name) << true;
}

void TstReqOperator::returnInAFieldStartsNothing()
{
    QFETCH(bool, isUp);
    ReqPanel p(isUp ? ReqPanel::Link::Up : ReqPanel::Link::Closed);
    auto *field = p.child<QWidget>(QByteArray(QTest::currentDataTag()).split(' ').first());
    field->setFocus();
    for (Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        QTest::keyClick(field, key);
        QVERIFY(!QApplication::activeModalWidget());
        QVERIFY(p.panel->isVisible());
        QCOMPARE(p.sent(), QByteArray());
    }
    QCOMPARE(p.text("tcpConnect_Btn"), isUp ? QStringLiteral("Disconnect") : QStringLiteral("Connect"));
}

void TstReqOperator::returnOnACellStartsNothing()
{
    ReqPanel p;
    p.report({{6, "2500"}, {7, "16"}});
    QVERIFY(p.cell("16,2500")->hasFocus()); // the report gave it the focus, not the operator
    QTest::keyClick(p.cell("16,2500"), Qt::Key_Return);
    QCOMPARE(p.sent(), QByteArray());
    QVERIFY(!QApplication::activeModalWidget());
}

void TstReqOperator::escapeClosesAnOpenListOnly()
{
    ReqPanel p;
    auto *box = p.child<QComboBox>("comboSimultn");
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Down, Qt::AltModifier);
    QTRY_VERIFY(box->view()->isVisible());
    QTest::keyClick(box->view(), Qt::Key_Escape);
    QTRY_VERIFY(!box->view()->isVisible());
    QVERIFY(p.panel->isVisible());
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Disconnect"));
    QCOMPARE(p.sent(), QByteArray());
}

void TstReqOperator::escapeEndsTheRetries()
{
    ReqPanel p;
    p.sock->connects = false;
    p.sock->drop();
    QCOMPARE(p.time.activeTimers(), 1);
    QTest::keyClick(p.panel.get(), Qt::Key_Escape);
    p.sock->calls.clear();
    p.time.advance(30000);
    QCOMPARE(p.sock->calls, QStringList());
    QCOMPARE(p.time.activeTimers(), 0);
}

void TstReqOperator::buttonConnectsWhileTheRetriesRun()
{
    ReqPanel p;
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

void TstReqOperator::arrowKeysChooseARadioButton_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("endian") << "radioBigEndn"
                            << "radioLitleEndn" << QByteArray("#010_L\r");
    QTest::newRow("length") << "radio16Bit"
                            << "radio18Bit" << QByteArray("#011_18\r");
}

void TstReqOperator::arrowKeysChooseARadioButton()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    ReqPanel p;
    auto *button = p.child<QAbstractButton>(from.toLatin1());
    auto *other = p.child<QAbstractButton>(to.toLatin1());
    button->setFocus();
    const QPoint way = other->geometry().center() - button->geometry().center();
    const Qt::Key key = qAbs(way.x()) > qAbs(way.y()) ? (way.x() > 0 ? Qt::Key_Right : Qt::Key_Left)
                                                      : (way.y() > 0 ? Qt::Key_Down : Qt::Key_Up);
    QTest::keyClick(button, key);
    QVERIFY(other->isChecked());
    QTEST(p.sent(), "line");
}

void TstReqOperator::disabledControlsSendNothing_data()
{
    QTest::addColumn<bool>("unused");
    for (const char *name :
         {"radioLitleEndn", "radio18Bit", "twoComp", "comboSimultn", "comboMode", "16,2500", "256,10000"})
        QTest::newRow(name) << true;
}

void TstReqOperator::disabledControlsSendNothing()
{
    ReqPanel p(ReqPanel::Link::Closed);
    const QSignalSpy told(p.panel.get(), &GatewayZRT::Signal_SetVXsamplingRate);
    p.click(QTest::currentDataTag());
    QTest::keyClick(p.child<QWidget>(QTest::currentDataTag()), Qt::Key_Space);
    QCOMPARE(p.dialogue(), QString()); // what is dropped would be shown all the same
    QCOMPARE(told.count(), 0);
    QVERIFY(!QApplication::activePopupWidget());
}

void TstReqOperator::doubleClickOpensOneDialog()
{
    ReqPanel p;
    auto *box = p.child<QLineEdit>("maxBox");
    QTest::mousePress(box, Qt::LeftButton);
    QTest::mouseRelease(box, Qt::LeftButton);
    auto *dialog = ReqPanel::open("minMaxDialog");
    QVERIFY(dialog);
    ReqPanel::type(ReqPanel::edit(dialog, "valueBox"), "9");
    QTest::mouseDClick(box, Qt::LeftButton);
    QVERIFY(ReqPanel::open("minMaxDialog"));
    ReqPanel::press(ReqPanel::open("minMaxDialog"), QDialogButtonBox::Ok);
    QVERIFY(!ReqPanel::open("minMaxDialog"));
    QCOMPARE(p.sent().count("#038_"), 1);
}

void TstReqOperator::questionIsAskedOnce_data()
{
    QTest::addColumn<QString>("box");
    QTest::newRow("rebootBtn") << "rebootConfirmation";
    QTest::newRow("restartBtn") << "restartConfirmation";
    QTest::newRow("ChangeGateway") << "addressConfirmation";
}

void TstReqOperator::questionIsAskedOnce()
{
    QFETCH(QString, box);
    ReqPanel p;
    p.click(QTest::currentDataTag());
    p.click(QTest::currentDataTag());
    auto *question = ReqPanel::open<QMessageBox>(box.toLatin1());
    QVERIFY(question);
    ReqPanel::answer(question, box == "addressConfirmation" ? QMessageBox::Cancel : QMessageBox::No);
    QVERIFY(!ReqPanel::open(box.toLatin1()));
    QCOMPARE(p.sent(), QByteArray());
}

void TstReqOperator::statusLeavesAnOpenDialogAlone()
{
    ReqPanel p;
    p.report({{36, "10"}, {37, "20"}});
    QTest::mousePress(p.child<QWidget>("minBox"), Qt::LeftButton);
    auto *dialog = ReqPanel::open("minMaxDialog");
    QVERIFY(dialog);
    ReqPanel::type(ReqPanel::edit(dialog, "valueBox"), "77");
    p.report({{36, "11"}, {37, "21"}});
    QCOMPARE(ReqPanel::edit(dialog, "valueBox")->text(), QStringLiteral("77"));
    QCOMPARE(p.text("minBox"), QStringLiteral("11"));
    ReqPanel::press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(p.sent(), QByteArray("#037_77\r"));
    QCOMPARE(p.text("minBox"), QStringLiteral("11")); // the gateway's word counts
}

void TstReqOperator::statusLeavesAnOpenListAlone()
{
    ReqPanel p;
    p.report({{5, "2"}});
    auto *box = p.child<QComboBox>("comboSimultn");
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Down, Qt::AltModifier);
    QTRY_VERIFY(box->view()->isVisible());
    QTest::keyClick(box->view(), Qt::Key_Down);
    p.report({{5, "2"}});
    QVERIFY(box->view()->isVisible());
    QTest::keyClick(box->view(), Qt::Key_Return);
    QTRY_VERIFY(!box->view()->isVisible());
    QCOMPARE(p.sent(), QByteArray("#006_3\r"));
}

void TstReqOperator::pollingGoesOnUnderADialog()
{
    ReqPanel p;
    p.receive("]----");
    p.sent();
    p.click("rebootBtn");
    p.time.advance(2000);
    QCOMPARE(p.sent(), QByteArray("#?\r#?\r"));
    ReqPanel::answer(ReqPanel::open<QMessageBox>("rebootConfirmation"), QMessageBox::No);
}

void TstReqOperator::chosenRateIsStoredWithoutALink()
{
    ReqPanel p(ReqPanel::Link::Closed);
    const QSignalSpy told(p.panel.get(), &GatewayZRT::Signal_SetVXsamplingRate);
    p.panel->Slot_setBitRateSettings("625", "64");
    QCOMPARE(p.sent(), QByteArray());
    QCOMPARE(p.markedCells(), QStringList());
    QCOMPARE(told.count(), 0);
    p.click("tcpConnect_Btn");
    QCOMPARE(p.sent(), QByteArray("#030_1772440200000000000\r")); // nothing waited for the link
    QCOMPARE(p.markedCells(), QStringList());
}

void TstReqOperator::eachConnectionGreetsAnew()
{
    ReqPanel p;
    p.receive("]----");
    p.sock->drop();
    p.time.advance(5000);
    p.sent();
    p.time.advance(3000); // not greeted yet: nobody asks
    QCOMPARE(p.sent(), QByteArray());
    p.receive("]----");
    p.time.advance(1000);
    QCOMPARE(p.sent(), QByteArray("#?\r#?\r"));
}

void TstReqOperator::targetOfAStatusIsNotKept()
{
    ReqPanel p;
    p.report({{11, "10.0.0.3"}, {12, "5005"}});
    p.click("setExtAddress");
    auto *dialog = ReqPanel::open("externIpAndPort");
    ReqPanel::type(ReqPanel::edit(dialog, "portNo"), "6006");
    p.report({{11, "10.0.0.4"}, {12, "5006"}});
    ReqPanel::press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(p.sent(), QByteArray("#012_10.0.0.3:6006\r"));
    QCOMPARE(p.text("extIpAddr"), QStringLiteral("10.0.0.4"));
}

QTEST_MAIN(TstReqOperator)
#include "tst_req_operator.moc"
