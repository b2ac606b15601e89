#include "reqpanel.h"

#include "gateway/changegatewaydialog.h"
#include "gateway/externipandport.h"
#include "gateway/minmaxdialog.h"

#include <QLabel>
#include <QSignalSpy>

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
        ReqPanel::press(&dialog, QDialogButtonBox::Ok);
        return;
    case Leave::Return:
        edit->setFocus();
        QTest::keyClick(edit, Qt::Key_Return);
        return;
    case Leave::Cancel:
        ReqPanel::press(&dialog, QDialogButtonBox::Cancel);
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

QString labelText(const QDialog &dialog, const char *name)
{
    const auto *label = dialog.findChild<QLabel *>(QString::fromLatin1(name));
    return label ? label->text() : QStringLiteral("no such label");
}

} // namespace

Q_DECLARE_METATYPE(Leave)

/// The three dialogs by themselves and through the panel, and the three questions.
class TstReqDialogs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }
    void cleanup();

    void dialogsReadAsAgreed();
    void addressDialog_data() { addWays(); }
    void addressDialog();
    void emptyAddressSendsNothing_data() { addWays(); }
    void emptyAddressSendsNothing();
    void addressIsNotChecked();
    void addressDialogStartsEmpty();
    void targetDialog_data() { addWays(); }
    void targetDialog();
    void emptyTargetIsSentAsItIs();
    void valueDialog_data() { addWays(); }
    void valueDialog();
    void emptyValueIsSent();
    void valueDialogNeedsThreeTexts();
    void valueDialogCanBeUsedForBothInTurn();
    void leavingThePanelsDialogs_data() { addWays(); }
    void leavingThePanelsDialogs();
    void questionReadsAsAgreed_data();
    void questionReadsAsAgreed();
    void questionLeftOtherwiseSendsNothing_data();
    void questionLeftOtherwiseSendsNothing();
    void addressQuestionReadsAsAgreed();
    void addressQuestionLeftOtherwiseOpensNothing_data();
    void addressQuestionLeftOtherwiseOpensNothing();
    void questionCanBeAskedAgain();
    void answerAfterTheLinkIsGoneIsDropped();
};

void TstReqDialogs::cleanup()
{
    QVERIFY(!QApplication::activeModalWidget());
}

void TstReqDialogs::dialogsReadAsAgreed()
{
    const ChangeGatewayDialog address;
    QCOMPARE(address.windowTitle(), QStringLiteral("Enter Gateway Address"));
    QCOMPARE(labelText(address, "label"), QStringLiteral("Modify Gateway Address"));
    QCOMPARE(labelText(address, "label_2"), QStringLiteral("Gateway Address"));
    const ExternIpAndPort target;
    QCOMPARE(target.windowTitle(), QStringLiteral("Set External IP Address"));
    QCOMPARE(labelText(target, "labelIP"), QStringLiteral("IP Address"));
    QCOMPARE(labelText(target, "labelPort"), QStringLiteral("Port"));
    const MinMaxDialog value;
    QCOMPARE(value.windowTitle(), QStringLiteral("Minimum Value"));
    QCOMPARE(labelText(value, "mainLabel"), QStringLiteral("Set Minimum"));
    for (const QDialog *dialog :
         {static_cast<const QDialog *>(&address), static_cast<const QDialog *>(&target),
          static_cast<const QDialog *>(&value)}) {
        const auto *box = dialog->findChild<QDialogButtonBox *>("buttonBox");
        QVERIFY(box);
        QCOMPARE(box->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    }
}

void TstReqDialogs::addressDialog()
{
    QFETCH(Leave, leave);
    ChangeGatewayDialog dialog;
    const QSignalSpy sent(&dialog, &ChangeGatewayDialog::gatewayIpAddress);
    dialog.ask();
    QVERIFY(dialog.isVisible() && dialog.isModal());
    QLineEdit *edit = ReqPanel::edit(&dialog, "IpAddress");
    QTest::keyClicks(edit, "10.0.0.1");
    leaveBy(leave, dialog, edit);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), int(sends(leave) ? QDialog::Accepted : QDialog::Rejected));
    QCOMPARE(sent.count(), sends(leave) ? 1 : 0);
    if (sends(leave))
        QCOMPARE(sent[0][0].toString(), QStringLiteral("10.0.0.1"));
}

void TstReqDialogs::emptyAddressSendsNothing()
{
    QFETCH(Leave, leave);
    ChangeGatewayDialog dialog;
    const QSignalSpy sent(&dialog, &ChangeGatewayDialog::gatewayIpAddress);
    dialog.ask();
    leaveBy(leave, dialog, ReqPanel::edit(&dialog, "IpAddress"));
    QVERIFY(!dialog.isVisible());
    QCOMPARE(sent.count(), 0);
}

void TstReqDialogs::addressIsNotChecked()
{
    ChangeGatewayDialog dialog;
    const QSignalSpy sent(&dialog, &ChangeGatewayDialog::gatewayIpAddress);
    dialog.ask();
    ReqPanel::type(ReqPanel::edit(&dialog, "IpAddress"), "not an address; 999.1 ");
    ReqPanel::press(&dialog, QDialogButtonBox::Ok);
    QCOMPARE(sent.count(), 1);
    QCOMPARE(sent[0][0].toString(), QStringLiteral("not an address; 999.1 "));
}

void TstReqDialogs::addressDialogStartsEmpty()
{
    ChangeGatewayDialog dialog;
    for (int i = 0; i < 2; ++i) {
        dialog.ask();
        QCOMPARE(ReqPanel::edit(&dialog, "IpAddress")->text(), QString());
        ReqPanel::type(ReqPanel::edit(&dialog, "IpAddress"), "10.0.0.1");
        ReqPanel::press(&dialog, i == 0 ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel);
    }
}

void TstReqDialogs::targetDialog()
{
    QFETCH(Leave, leave);
    ExternIpAndPort dialog;
    const QSignalSpy sent(&dialog, &ExternIpAndPort::Signal_setExtDetails);
    dialog.Slot_displayDialog("1.2.3.4", "99");
    QVERIFY(dialog.isVisible() && dialog.isModal());
    QLineEdit *address = ReqPanel::edit(&dialog, "ipAddress");
    QLineEdit *port = ReqPanel::edit(&dialog, "portNo");
    QCOMPARE(address->text(), QStringLiteral("1.2.3.4"));
    QCOMPARE(port->text(), QStringLiteral("99"));
    ReqPanel::type(address, "5.6.7.8");
    ReqPanel::type(port, "100");
    leaveBy(leave, dialog, port);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(sent.count(), sends(leave) ? 1 : 0);
    if (sends(leave))
        QCOMPARE(sent[0], (QVariantList{"5.6.7.8", "100"}));
    dialog.Slot_displayDialog("9.9.9.9", ""); // what is shown is what is given
    QCOMPARE(address->text(), QStringLiteral("9.9.9.9"));
    QCOMPARE(port->text(), QString());
    dialog.reject();
}

void TstReqDialogs::emptyTargetIsSentAsItIs()
{
    ReqPanel p;
    p.click("setExtAddress"); // both fields are empty
    auto *dialog = ReqPanel::open("externIpAndPort");
    QVERIFY(dialog);
    ReqPanel::type(ReqPanel::edit(dialog, "ipAddress"), "");
    ReqPanel::type(ReqPanel::edit(dialog, "portNo"), "");
    ReqPanel::press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(p.sent(), QByteArray("#012_:\r"));
}

void TstReqDialogs::valueDialog()
{
    QFETCH(Leave, leave);
    MinMaxDialog dialog;
    const QSignalSpy sent(&dialog, &MinMaxDialog::Signal_setMinMaxValue);
    dialog.Slot_Execute({"A label", "17", "A title"});
    QVERIFY(dialog.isVisible() && dialog.isModal());
    QCOMPARE(dialog.windowTitle(), QStringLiteral("A title"));
    QCOMPARE(labelText(dialog, "mainLabel"), QStringLiteral("A label"));
    QLineEdit *edit = ReqPanel::edit(&dialog, "valueBox");
    QCOMPARE(edit->text(), QStringLiteral("17"));
    ReqPanel::type(edit, "18");
    leaveBy(leave, dialog, edit);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(sent.count(), sends(leave) ? 1 : 0);
    if (sends(leave))
        QCOMPARE(sent[0][0].toStringList(), (QStringList{"A label", "18"}));
}

void TstReqDialogs::emptyValueIsSent()
{
    MinMaxDialog dialog;
    const QSignalSpy sent(&dialog, &MinMaxDialog::Signal_setMinMaxValue);
    dialog.Slot_Execute({"Set Minimum", "", "T"});
    ReqPanel::press(&dialog, QDialogButtonBox::Ok);
    QCOMPARE(sent.count(), 1);
    QCOMPARE(sent[0][0].toStringList(), (QStringList{"Set Minimum", ""}));
}

void TstReqDialogs::valueDialogNeedsThreeTexts()
{
    MinMaxDialog dialog;
    for (const QStringList &items : {QStringList{}, QStringList{"a"}, QStringList{"a", "b"}}) {
        dialog.Slot_Execute(items);
        QVERIFY(!dialog.isVisible());
        QCOMPARE(labelText(dialog, "mainLabel"), QStringLiteral("Set Minimum"));
    }
}

void TstReqDialogs::valueDialogCanBeUsedForBothInTurn()
{
    ReqPanel p;
    p.report({{36, "5"}, {37, "6"}});
    for (const char *box : {"maxBox", "minBox", "maxBox"}) {
        QTest::mousePress(p.child<QWidget>(box), Qt::LeftButton);
        ReqPanel::press(ReqPanel::open("minMaxDialog"), QDialogButtonBox::Ok);
    }
    QCOMPARE(p.sent(), QByteArray("#038_6\r#037_5\r#038_6\r"));
}

void TstReqDialogs::leavingThePanelsDialogs()
{
    QFETCH(Leave, leave);
    ReqPanel p;
    QTest::mousePress(p.child<QWidget>("minBox"), Qt::LeftButton);
    auto *value = ReqPanel::open("minMaxDialog");
    QVERIFY(value);
    leaveBy(leave, *value, ReqPanel::edit(value, "valueBox"));
    QCOMPARE(p.sent(), sends(leave) ? QByteArray("#037_\r") : QByteArray());
    p.click("setExtAddress");
    auto *target = ReqPanel::open("externIpAndPort");
    QVERIFY(target);
    ReqPanel::type(ReqPanel::edit(target, "ipAddress"), "1.1.1.1");
    ReqPanel::type(ReqPanel::edit(target, "portNo"), "2");
    leaveBy(leave, *target, ReqPanel::edit(target, "portNo"));
    QCOMPARE(p.sent(), sends(leave) ? QByteArray("#012_1.1.1.1:2\r") : QByteArray());
    p.click("ChangeGateway");
    ReqPanel::answer(ReqPanel::open<QMessageBox>("addressConfirmation"), QMessageBox::Yes);
    auto *address = ReqPanel::open("changeGatewayDialog");
    QVERIFY(address);
    ReqPanel::type(ReqPanel::edit(address, "IpAddress"), "2.2.2.2");
    leaveBy(leave, *address, ReqPanel::edit(address, "IpAddress"));
    QCOMPARE(p.sent(), sends(leave) ? QByteArray("gateway.addr=2.2.2.2\r") : QByteArray());
    QVERIFY(p.panel->isVisible());
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Disconnect"));
}

void TstReqDialogs::questionReadsAsAgreed_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("rebootBtn") << "rebootConfirmation"
                               << "Reboot remote device"
                               << "Do you really want to proceed with rebooting the remote device ?   "
                               << QByteArray("reboot\r");
    QTest::newRow("restartBtn") << "restartConfirmation"
                                << "Restart remote application"
                                << "Do you really want to restart the remote application ?  "
                                << QByteArray("restart\r");
}

void TstReqDialogs::questionReadsAsAgreed()
{
    QFETCH(QString, box);
    ReqPanel p;
    p.click(QTest::currentDataTag());
    QPointer<QMessageBox> question = ReqPanel::open<QMessageBox>(box.toLatin1());
    QVERIFY(question);
    QTEST(question->windowTitle(), "title");
    QTEST(question->text(), "text");
    QCOMPARE(question->icon(), QMessageBox::Warning);
    QVERIFY(question->windowFlags() & Qt::WindowStaysOnTopHint);
    QCOMPARE(question->standardButtons(), QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(question->button(QMessageBox::Yes)->text(), QStringLiteral("Proceed"));
    QCOMPARE(question->button(QMessageBox::No)->text(), QStringLiteral("Abort"));
    QVERIFY(question->isModal());
    QCOMPARE(p.sent(), QByteArray());
    ReqPanel::answer(question, QMessageBox::Yes);
    QTEST(p.sent(), "line");
    p.time.turn();
    QVERIFY(!question);
}

void TstReqDialogs::questionLeftOtherwiseSendsNothing_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("how");
    for (const char *name : {"reboot", "restart"}) {
        for (const char *how : {"abort", "escape", "title bar"}) {
            QTest::newRow(qPrintable(QString(name) + ' ' + how))
                << QString(name) + "Btn" << QString(name) + "Confirmation" << QString(how);
        }
    }
}

void TstReqDialogs::questionLeftOtherwiseSendsNothing()
{
    QFETCH(QString, button);
    QFETCH(QString, box);
    QFETCH(QString, how);
    ReqPanel p;
    p.click(button.toLatin1());
    auto *question = ReqPanel::open<QMessageBox>(box.toLatin1());
    QVERIFY(question);
    if (how == "abort")
        ReqPanel::answer(question, QMessageBox::No);
    else if (how == "escape")
        QTest::keyClick(question, Qt::Key_Escape);
    else
        question->close();
    p.time.turn();
    QVERIFY(!ReqPanel::open(box.toLatin1()));
    QCOMPARE(p.sent(), QByteArray());
    QCOMPARE(p.shown(), QString());
}

void TstReqDialogs::addressQuestionReadsAsAgreed()
{
    ReqPanel p;
    p.click("ChangeGateway");
    auto *question = ReqPanel::open<QMessageBox>("addressConfirmation");
    QVERIFY(question);
    QCOMPARE(question->text(), QStringLiteral("This will result in changing the IP Adress for the Gateway "
                                              "permanently.\nAre you sure you want to proceed further?"));
    QCOMPARE(question->standardButtons(), QMessageBox::Yes | QMessageBox::Cancel);
    QCOMPARE(question->defaultButton(), question->button(QMessageBox::Cancel));
    QVERIFY(!ReqPanel::open("changeGatewayDialog"));
    ReqPanel::answer(question, QMessageBox::Yes);
    QVERIFY(ReqPanel::open("changeGatewayDialog"));
    QCOMPARE(p.sent(), QByteArray());
    ReqPanel::open("changeGatewayDialog")->reject();
}

void TstReqDialogs::addressQuestionLeftOtherwiseOpensNothing_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("return takes the default") << int(Qt::Key_Return);
    QTest::newRow("escape") << int(Qt::Key_Escape);
    QTest::newRow("cancel by mouse") << 0;
}

void TstReqDialogs::addressQuestionLeftOtherwiseOpensNothing()
{
    QFETCH(int, key);
    ReqPanel p;
    p.click("ChangeGateway");
    auto *question = ReqPanel::open<QMessageBox>("addressConfirmation");
    QVERIFY(question);
    if (key == 0)
        ReqPanel::answer(question, QMessageBox::Cancel);
    else
        QTest::keyClick(question, static_cast<Qt::Key>(key));
    p.time.turn();
    QVERIFY(!ReqPanel::open("addressConfirmation"));
    QVERIFY(!ReqPanel::open("changeGatewayDialog"));
    QCOMPARE(p.sent(), QByteArray());
}

void TstReqDialogs::questionCanBeAskedAgain()
{
    ReqPanel p;
    for (auto answer : {QMessageBox::No, QMessageBox::Yes, QMessageBox::Yes}) {
        p.click("restartBtn");
        ReqPanel::answer(ReqPanel::open<QMessageBox>("restartConfirmation"), answer);
        p.time.turn();
    }
    QCOMPARE(p.sent(), QByteArray("restart\rrestart\r"));
}

void TstReqDialogs::answerAfterTheLinkIsGoneIsDropped()
{
    ReqPanel p;
    p.click("rebootBtn");
    p.sock->connects = false;
    p.sock->drop();
    ReqPanel::answer(ReqPanel::open<QMessageBox>("rebootConfirmation"), QMessageBox::Yes);
    QCOMPARE(p.sent(), QByteArray());
    p.sock->connects = true;
    p.time.advance(5000);
    QVERIFY(!p.sent().contains("reboot")); // nothing waits for the next connection
}

QTEST_MAIN(TstReqDialogs)
#include "tst_req_dialogs.moc"
