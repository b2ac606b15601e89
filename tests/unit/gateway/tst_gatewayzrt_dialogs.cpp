#include "gateway/changegatewaydialog.h"
#include "gateway/externipandport.h"
#include "gateway/minmaxdialog.h"
#include "gatewaypanel.h"

#include <QLabel>
#include <QtTest>

namespace {

/// How a dialog is left.
enum class Leave { Ok, Return, Cancel, Escape, TitleBar };

bool sends(Leave leave)
{
    return leave == Leave::Ok || leave == Leave::Return;
}

void leaveBy(Leave leave, QDialog &dialog, QLineEdit *edit)
{
    switch (leave) {
    case Leave::Ok:
        GatewayPanel::pressOk(&dialog);
        return;
    case Leave::Return:
        edit->setFocus();
        QTest::keyClick(edit, Qt::Key_Return);
        return;
    case Leave::Cancel:
        GatewayPanel::pressCancel(&dialog);
        return;
    case Leave::Escape:
        QTest::keyClick(&dialog, Qt::Key_Escape);
        return;
    case Leave::TitleBar:
        dialog.close();
        return;
    }
}

void addWays()
{
    QTest::addColumn<Leave>("leave");
    QTest::newRow("ok") << Leave::Ok;
    QTest::newRow("return") << Leave::Return;
    QTest::newRow("cancel") << Leave::Cancel;
    QTest::newRow("escape") << Leave::Escape;
    QTest::newRow("title bar") << Leave::TitleBar;
}

} // namespace

Q_DECLARE_METATYPE(Leave)

/// The dialogs of the panel: what opens them, what they hold and what their answers send.
class TstGatewayZrtDialogs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }
    void cleanup();

    void addressIsConfirmedThenAskedThenSent();
    void setButtonOpensTheServerDialog();
    void setOfAServerTakesItsPort();
    void targetOfAStatusIsNotKept();
    void pressOpensTheValueDialog_data();
    void pressOpensTheValueDialog();
    void otherKeysAndPlacesOpenNothing();
    void valueDialogCanBeUsedForBothInTurn();
    void doubleClickOpensOneDialog();
    void statusLeavesAnOpenDialogAlone();
    void leavingThePanelsDialogs_data() { addWays(); }
    void leavingThePanelsDialogs();
    void openDialogGoesWithThePanel();
};

void TstGatewayZrtDialogs::cleanup()
{
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(!QApplication::activePopupWidget());
}

void TstGatewayZrtDialogs::addressIsConfirmedThenAskedThenSent()
{
    GatewayPanel p;
    p.click("ChangeGateway");
    auto *dialog = childByName<ChangeGatewayDialog>(p.dialog.get(), "changeGatewayDialog");
    QVERIFY(!dialog->isVisible());
    GatewayPanel::answer("addressConfirmation", QMessageBox::Yes);
    QVERIFY(dialog->isVisible());
    QCOMPARE(QApplication::activeModalWidget(), dialog);
    QTest::keyClicks(childByName<QLineEdit>(dialog, "IpAddress"), "10.0.0.42");
    QCOMPARE(p.takeLines(), QByteArray());
    GatewayPanel::pressOk(dialog);
    QVERIFY(!dialog->isVisible());
    QCOMPARE(p.takeLines(), QByteArray("gateway.addr=10.0.0.42\r"));
    QVERIFY(!p.dialogue().contains("gateway.addr"));
}

void TstGatewayZrtDialogs::setButtonOpensTheServerDialog()
{
    GatewayPanel p;
    p.receiveStatus({{11, "10.0.0.5"}, {12, "7000"}});
    p.click("setExtAddress");
    auto *dialog = p.openDialog<ExternIpAndPort>("externIpAndPort");
    QVERIFY(dialog);
    QCOMPARE(childByName<QLineEdit>(dialog, "ipAddress")->text(), QStringLiteral("10.0.0.5"));
    QCOMPARE(childByName<QLineEdit>(dialog, "portNo")->text(), QStringLiteral("7000"));
    QTest::keyClick(childByName<QLineEdit>(dialog, "portNo"), Qt::Key_End);
    QTest::keyClicks(childByName<QLineEdit>(dialog, "portNo"), "1");
    QTest::keyClick(childByName<QLineEdit>(dialog, "portNo"), Qt::Key_Return);
    QVERIFY(!dialog->isVisible());
    QCOMPARE(p.takeLines(), QByteArray("#012_10.0.0.5:70001\r"));
}

void TstGatewayZrtDialogs::setOfAServerTakesItsPort()
{
    GatewayPanel p;
    p.receiveStatus({{8, "TCP-S"}, {11, "10.0.0.3"}, {12, "5005"}});
    const QSignalSpy details(p.dialog.get(), &GatewayZRT::Signal_sendIpDetails);
    p.dialog->Slot_setExtServerAddr();
    QCOMPARE(details.count(), 1);
    QCOMPARE(details[0], (QVariantList{"10.0.0.3", "8888"}));
    QVERIFY(GatewayPanel::openDialog("externIpAndPort"));
    GatewayPanel::openDialog("externIpAndPort")->reject();
    // Both shown: neither way is meant.
    p.child("extPort")->show();
    p.dialog->Slot_setExtServerAddr();
    QCOMPARE(details.count(), 1);
}

void TstGatewayZrtDialogs::targetOfAStatusIsNotKept()
{
    GatewayPanel p;
    p.receiveStatus({{11, "10.0.0.3"}, {12, "5005"}});
    p.click("setExtAddress");
    auto *dialog = GatewayPanel::openDialog("externIpAndPort");
    GatewayPanel::type(childByName<QLineEdit>(dialog, "portNo"), "6006");
    p.receiveStatus({{11, "10.0.0.4"}, {12, "5006"}});
    GatewayPanel::pressOk(dialog);
    QCOMPARE(p.takeLines(), QByteArray("#012_10.0.0.3:6006\r"));
    QCOMPARE(p.text("extIpAddr"), QStringLiteral("10.0.0.4"));
}

void TstGatewayZrtDialogs::pressOpensTheValueDialog_data()
{
    QTest::addColumn<QByteArray>("box");
    QTest::addColumn<int>("key"); // 0: the mouse
    QTest::addColumn<QString>("label");
    QTest::addColumn<QByteArray>("line");
    for (const int key : {0, int(Qt::Key_Return), int(Qt::Key_Enter), int(Qt::Key_Space)}) {
        QTest::addRow("minimum, %x", key)
            << QByteArray("minBox") << key << "Set Minimum" << QByteArray("#037_99\r");
        QTest::addRow("maximum, %x", key)
            << QByteArray("maxBox") << key << "Set Maximum" << QByteArray("#038_99\r");
    }
}

void TstGatewayZrtDialogs::pressOpensTheValueDialog()
{
    QFETCH(QByteArray, box);
    QFETCH(int, key);
    QFETCH(QString, label);
    GatewayPanel p;
    p.receiveStatus({{36, "64"}, {37, "64"}});
    const QSignalSpy asked(p.dialog.get(), &GatewayZRT::Signal_displayMinMax);
    if (key == 0)
        QTest::mousePress(p.child(box), Qt::LeftButton);
    else
        QTest::keyClick(p.child(box), Qt::Key(key));
    QCOMPARE(asked.size(), 1);
    QCOMPARE(asked.first().first().toStringList(), (QStringList{label, "64", label}));
    auto *dialog = p.openDialog<MinMaxDialog>("minMaxDialog");
    QVERIFY(dialog);
    QCOMPARE(dialog->windowTitle(), label);
    QCOMPARE(childByName<QLabel>(dialog, "mainLabel")->text(), label);
    auto *value = childByName<QLineEdit>(dialog, "valueBox");
    QCOMPARE(value->text(), QStringLiteral("64"));
    QTest::keyClicks(value, "99"); // in place of what is selected
    GatewayPanel::pressOk(dialog);
    QTEST(p.takeLines(), "line");
    QVERIFY(!dialog->isVisible());
}

void TstGatewayZrtDialogs::otherKeysAndPlacesOpenNothing()
{
    const GatewayPanel p;
    for (const int key : {int(Qt::Key_Tab), int(Qt::Key_A), int(Qt::Key_Left)})
        QTest::keyClick(p.child("minBox"), Qt::Key(key));
    QTest::mouseMove(p.child("minBox"));
    QTest::mousePress(p.child("CoreTempBox"), Qt::LeftButton);
    QVERIFY(!p.openDialog<MinMaxDialog>("minMaxDialog"));
}

void TstGatewayZrtDialogs::valueDialogCanBeUsedForBothInTurn()
{
    GatewayPanel p;
    p.receiveStatus({{36, "5"}, {37, "6"}});
    for (const char *box : {"maxBox", "minBox", "maxBox"}) {
        QTest::mousePress(p.child(box), Qt::LeftButton);
        GatewayPanel::pressOk(GatewayPanel::openDialog("minMaxDialog"));
    }
    QCOMPARE(p.takeLines(), QByteArray("#038_6\r#037_5\r#038_6\r"));
}

void TstGatewayZrtDialogs::doubleClickOpensOneDialog()
{
    GatewayPanel p;
    auto *box = p.child<QLineEdit>("maxBox");
    QTest::mousePress(box, Qt::LeftButton);
    QTest::mouseRelease(box, Qt::LeftButton);
    auto *dialog = GatewayPanel::openDialog("minMaxDialog");
    QVERIFY(dialog);
    GatewayPanel::type(childByName<QLineEdit>(dialog, "valueBox"), "9");
    QTest::mouseDClick(box, Qt::LeftButton);
    QVERIFY(GatewayPanel::openDialog("minMaxDialog"));
    GatewayPanel::pressOk(GatewayPanel::openDialog("minMaxDialog"));
    QVERIFY(!GatewayPanel::openDialog("minMaxDialog"));
    QCOMPARE(p.takeLines().count("#038_"), 1);
}

void TstGatewayZrtDialogs::statusLeavesAnOpenDialogAlone()
{
    GatewayPanel p;
    p.receiveStatus({{36, "10"}, {37, "20"}});
    QTest::mousePress(p.child("minBox"), Qt::LeftButton);
    auto *dialog = GatewayPanel::openDialog("minMaxDialog");
    QVERIFY(dialog);
    GatewayPanel::type(childByName<QLineEdit>(dialog, "valueBox"), "77");
    p.receiveStatus({{36, "11"}, {37, "21"}});
    QCOMPARE(childByName<QLineEdit>(dialog, "valueBox")->text(), QStringLiteral("77"));
    QCOMPARE(p.text("minBox"), QStringLiteral("11"));
    GatewayPanel::pressOk(dialog);
    QCOMPARE(p.takeLines(), QByteArray("#037_77\r"));
    QCOMPARE(p.text("minBox"), QStringLiteral("11")); // the gateway's word counts
}

void TstGatewayZrtDialogs::leavingThePanelsDialogs()
{
    QFETCH(Leave, leave);
    GatewayPanel p;
    QTest::mousePress(p.child("minBox"), Qt::LeftButton);
    auto *value = GatewayPanel::openDialog("minMaxDialog");
    QVERIFY(value);
    leaveBy(leave, *value, childByName<QLineEdit>(value, "valueBox"));
    QCOMPARE(p.takeLines(), sends(leave) ? QByteArray("#037_\r") : QByteArray());
    p.click("setExtAddress");
    auto *target = GatewayPanel::openDialog("externIpAndPort");
    QVERIFY(target);
    GatewayPanel::type(childByName<QLineEdit>(target, "ipAddress"), "1.1.1.1");
    GatewayPanel::type(childByName<QLineEdit>(target, "portNo"), "2");
    leaveBy(leave, *target, childByName<QLineEdit>(target, "portNo"));
    QCOMPARE(p.takeLines(), sends(leave) ? QByteArray("#012_1.1.1.1:2\r") : QByteArray());
    p.click("ChangeGateway");
    GatewayPanel::answer("addressConfirmation", QMessageBox::Yes);
    auto *address = GatewayPanel::openDialog("changeGatewayDialog");
    QVERIFY(address);
    GatewayPanel::type(childByName<QLineEdit>(address, "IpAddress"), "2.2.2.2");
    leaveBy(leave, *address, childByName<QLineEdit>(address, "IpAddress"));
    QCOMPARE(p.takeLines(), sends(leave) ? QByteArray("gateway.addr=2.2.2.2\r") : QByteArray());
    QVERIFY(p.dialog->isVisible());
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Disconnect"));
}

void TstGatewayZrtDialogs::openDialogGoesWithThePanel()
{
    GatewayPanel p;
    p.receive("]----");
    p.click("setExtAddress");
    const QPointer<ExternIpAndPort> open = p.openDialog<ExternIpAndPort>("externIpAndPort");
    QVERIFY(open);
    p.dialog.reset();
    QVERIFY(!open);
    p.time.advance(10000);
    QCOMPARE(p.time.activeTimers(), 0);
}

QTEST_MAIN(TstGatewayZrtDialogs)
#include "tst_gatewayzrt_dialogs.moc"
