#include "base/gui/fonts.h"
#include "gateway/changegatewaydialog.h"
#include "gateway/externipandport.h"
#include "gateway/minmaxdialog.h"
#include "gatewaypanel.h"

#include <QLabel>
#include <QMessageBox>
#include <QtTest>

namespace {

/// Closes the open box in one of the ways that are open to the operator.
void leave(QDialog *box, const QByteArray &how)
{
    if (how == "escape") {
        QTest::keyClick(box, Qt::Key_Escape);
    } else if (how == "close") {
        box->close();
    } else if (how == "return") {
        QTest::keyClick(box, Qt::Key_Return);
    } else {
        const auto buttons = box->findChildren<QPushButton *>();
        for (QPushButton *button : buttons) {
            if (button->text() == QString::fromLatin1(how)) {
                QTest::mouseClick(button, Qt::LeftButton);
                return;
            }
        }
        QFAIL("There is no such button.");
    }
}

void pressOk(QDialog *dialog)
{
    QTest::mouseClick(childByName<QPushButton>(dialog, "okButton"), Qt::LeftButton);
}

void pressCancel(QDialog *dialog)
{
    QTest::mouseClick(childByName<QPushButton>(dialog, "cancelButton"), Qt::LeftButton);
}

} // namespace

/// The boxes and dialogs that the gateway's panel opens.
class TstGatewayZrtDialogs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }
    void commandIsConfirmedFirst_data();
    void commandIsConfirmedFirst();
    void confirmationLooks_data();
    void confirmationLooks();
    void confirmationIsOpenOnce();
    void confirmationGoesWithThePanel();
    void addressIsConfirmedThenAskedThenSent();
    void addressQuestionLooks();
    void refusedQuestionAsksForNoAddress_data();
    void refusedQuestionAsksForNoAddress();
    void emptyAddressSendsNothing();
    void cancelledAddressSendsNothing();
    void addressDialogStartsEmptyEachTime();
    void setButtonOpensTheServerDialog();
    void cancelledServerSendsNothing();
    void serverPortOfTcpModeIsOffered();
    void pressOpensTheValueDialog_data();
    void pressOpensTheValueDialog();
    void otherKeysOpenNothing();
    void emptyValueIsSentAsItIs();
    void cancelledValueSendsNothing();
    void foreignAnswerSendsAnEmptyLine_data();
    void foreignAnswerSendsAnEmptyLine();
};

void TstGatewayZrtDialogs::commandIsConfirmedFirst_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QByteArray>("box");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QByteArray>("sent");
    const auto rows = [](const char *button, const char *box, const char *line) {
        QTest::addRow("%s, proceed", button)
            << QByteArray(button) << QByteArray(box) << QByteArray("Proceed") << QByteArray(line);
        for (const char *answer : {"Abort", "escape", "close", "return"})
            QTest::addRow("%s, %s", button, answer)
                << QByteArray(button) << QByteArray(box) << QByteArray(answer) << QByteArray();
    };
    rows("rebootBtn", "rebootConfirmation", "reboot\r");
    rows("restartBtn", "restartConfirmation", "restart\r");
}

void TstGatewayZrtDialogs::commandIsConfirmedFirst()
{
    QFETCH(QByteArray, button);
    QFETCH(QByteArray, box);
    QFETCH(QByteArray, answer);
    QFETCH(QByteArray, sent);
    GatewayPanel p;
    const QString dialogue = p.dialogue();
    p.click(button);
    QCOMPARE(p.takeLines(), QByteArray());
    const QPointer<QMessageBox> open = p.openDialog<QMessageBox>(box);
    QVERIFY(open);
    QCOMPARE(QApplication::activeModalWidget(), open.data());
    leave(open, answer);
    QCOMPARE(p.takeLines(), sent);
    QCOMPARE(p.dialogue(), dialogue); // these commands are not shown
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!open);
    QVERIFY(p.dialog->isVisible());
}

void TstGatewayZrtDialogs::confirmationLooks_data()
{
    QTest::addColumn<QByteArray>("box");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");
    QTest::newRow("rebootBtn") << QByteArray("rebootConfirmation") << "Reboot remote device"
                               << "Do you really want to proceed with rebooting the remote device ?   ";
    QTest::newRow("restartBtn") << QByteArray("restartConfirmation") << "Restart remote application"
                                << "Do you really want to restart the remote application ?  ";
}

void TstGatewayZrtDialogs::confirmationLooks()
{
    QFETCH(QByteArray, box);
    const GatewayPanel p;
    p.click(QTest::currentDataTag());
    const auto *open = p.openDialog<QMessageBox>(box);
    QVERIFY(open);
    QTEST(open->windowTitle(), "title");
    QTEST(open->text(), "text");
    QCOMPARE(open->icon(), QMessageBox::Warning);
    QVERIFY(open->windowFlags() & Qt::WindowStaysOnTopHint);
    QCOMPARE(open->button(QMessageBox::Yes)->text(), QStringLiteral("Proceed"));
    QCOMPARE(open->button(QMessageBox::No)->text(), QStringLiteral("Abort"));
}

void TstGatewayZrtDialogs::confirmationIsOpenOnce()
{
    GatewayPanel p;
    p.dialog->Slot_Reboot();
    p.dialog->Slot_Reboot();
    leave(p.openDialog<QMessageBox>("rebootConfirmation"), "Abort"); // dies if there are two
    p.dialog->Slot_Reboot(); // the first one is left, but not yet deleted
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    leave(p.openDialog<QMessageBox>("rebootConfirmation"), "Proceed");
    QCOMPARE(p.takeLines(), QByteArray("reboot\r"));
}

void TstGatewayZrtDialogs::confirmationGoesWithThePanel()
{
    GatewayPanel p;
    p.click("rebootBtn");
    const QPointer<QMessageBox> open = p.openDialog<QMessageBox>("rebootConfirmation");
    p.dialog.reset();
    QVERIFY(!open);
    QVERIFY(!QApplication::activeModalWidget());
}

void TstGatewayZrtDialogs::addressIsConfirmedThenAskedThenSent()
{
    GatewayPanel p;
    p.click("ChangeGateway");
    auto *dialog = childByName<ChangeGatewayDialog>(p.dialog.get(), "changeGatewayDialog");
    QVERIFY(!dialog->isVisible());
    auto *box = p.openDialog<QMessageBox>("addressConfirmation");
    QTest::mouseClick(box->button(QMessageBox::Yes), Qt::LeftButton);
    QVERIFY(dialog->isVisible());
    QCOMPARE(QApplication::activeModalWidget(), dialog);
    QTest::keyClicks(childByName<QLineEdit>(dialog, "IpAddress"), "10.0.0.42");
    QCOMPARE(p.takeLines(), QByteArray());
    pressOk(dialog);
    QVERIFY(!dialog->isVisible());
    QCOMPARE(p.takeLines(), QByteArray("gateway.addr=10.0.0.42\r"));
    QVERIFY(!p.dialogue().contains("gateway.addr"));
}

void TstGatewayZrtDialogs::addressQuestionLooks()
{
    const GatewayPanel p;
    p.click("ChangeGateway");
    const auto *box = p.openDialog<QMessageBox>("addressConfirmation");
    QCOMPARE(box->text(),
             QStringLiteral("This will result in changing the IP Adress for the Gateway permanently.\n"
                            "Are you sure you want to proceed further?"));
    QCOMPARE(box->standardButtons(), QMessageBox::Yes | QMessageBox::Cancel);
    QCOMPARE(box->defaultButton(), box->button(QMessageBox::Cancel));
}

void TstGatewayZrtDialogs::refusedQuestionAsksForNoAddress_data()
{
    QTest::addColumn<QByteArray>("answer");
    for (const char *answer : {"escape", "close", "return"})
        QTest::newRow(answer) << QByteArray(answer);
}

void TstGatewayZrtDialogs::refusedQuestionAsksForNoAddress()
{
    QFETCH(QByteArray, answer);
    GatewayPanel p;
    p.click("ChangeGateway");
    leave(p.openDialog<QMessageBox>("addressConfirmation"), answer);
    QVERIFY(!p.openDialog<ChangeGatewayDialog>("changeGatewayDialog"));
    QCOMPARE(p.takeLines(), QByteArray());
}

void TstGatewayZrtDialogs::emptyAddressSendsNothing()
{
    GatewayPanel p;
    auto *dialog = childByName<ChangeGatewayDialog>(p.dialog.get(), "changeGatewayDialog");
    dialog->ask();
    pressOk(dialog);
    QCOMPARE(p.takeLines(), QByteArray());
}

void TstGatewayZrtDialogs::cancelledAddressSendsNothing()
{
    GatewayPanel p;
    auto *dialog = childByName<ChangeGatewayDialog>(p.dialog.get(), "changeGatewayDialog");
    dialog->ask();
    QTest::keyClicks(childByName<QLineEdit>(dialog, "IpAddress"), "10.0.0.42");
    pressCancel(dialog);
    QCOMPARE(p.takeLines(), QByteArray());
}

void TstGatewayZrtDialogs::addressDialogStartsEmptyEachTime()
{
    const GatewayPanel p;
    auto *dialog = childByName<ChangeGatewayDialog>(p.dialog.get(), "changeGatewayDialog");
    dialog->ask();
    QTest::keyClicks(childByName<QLineEdit>(dialog, "IpAddress"), "10.0.0.42");
    pressCancel(dialog);
    dialog->ask();
    QCOMPARE(childByName<QLineEdit>(dialog, "IpAddress")->text(), QString());
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

void TstGatewayZrtDialogs::cancelledServerSendsNothing()
{
    GatewayPanel p;
    p.click("setExtAddress");
    auto *dialog = p.openDialog<ExternIpAndPort>("externIpAndPort");
    QTest::keyClicks(childByName<QLineEdit>(dialog, "ipAddress"), "10.0.0.5");
    pressCancel(dialog);
    QCOMPARE(p.takeLines(), QByteArray());
}

void TstGatewayZrtDialogs::serverPortOfTcpModeIsOffered()
{
    const GatewayPanel p;
    p.receiveStatus({{8, "TCP-S"}, {11, "10.0.0.5"}, {12, "7000"}});
    QSignalSpy asked(p.dialog.get(), &GatewayZRT::Signal_sendIpDetails);
    p.dialog->Slot_setExtServerAddr(); // its button is hidden in this mode
    QCOMPARE(asked.size(), 1);
    QCOMPARE(asked.first(), (QVariantList{"10.0.0.5", "8888"}));
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
    if (key == 0)
        QTest::mousePress(p.child(box), Qt::LeftButton);
    else
        QTest::keyClick(p.child(box), Qt::Key(key));
    auto *dialog = p.openDialog<MinMaxDialog>("minMaxDialog");
    QVERIFY(dialog);
    QCOMPARE(dialog->windowTitle(), label);
    QCOMPARE(childByName<QLabel>(dialog, "mainLabel")->text(), label);
    auto *value = childByName<QLineEdit>(dialog, "valueBox");
    QCOMPARE(value->text(), QStringLiteral("64"));
    QTest::keyClicks(value, "99"); // in place of what is selected
    pressOk(dialog);
    QTEST(p.takeLines(), "line");
    QVERIFY(!dialog->isVisible());
}

void TstGatewayZrtDialogs::otherKeysOpenNothing()
{
    const GatewayPanel p;
    for (const int key : {int(Qt::Key_Tab), int(Qt::Key_A), int(Qt::Key_Left)})
        QTest::keyClick(p.child("minBox"), Qt::Key(key));
    QTest::mousePress(p.child("CoreTempBox"), Qt::LeftButton);
    QVERIFY(!p.openDialog<MinMaxDialog>("minMaxDialog"));
}

void TstGatewayZrtDialogs::emptyValueIsSentAsItIs()
{
    GatewayPanel p;
    QTest::mousePress(p.child("minBox"), Qt::LeftButton);
    pressOk(p.openDialog<MinMaxDialog>("minMaxDialog"));
    QCOMPARE(p.takeLines(), QByteArray("#037_\r"));
}

void TstGatewayZrtDialogs::cancelledValueSendsNothing()
{
    GatewayPanel p;
    QTest::mousePress(p.child("maxBox"), Qt::LeftButton);
    pressCancel(p.openDialog<MinMaxDialog>("minMaxDialog"));
    QTest::mousePress(p.child("maxBox"), Qt::LeftButton);
    QTest::keyClick(p.openDialog<MinMaxDialog>("minMaxDialog"), Qt::Key_Escape);
    QCOMPARE(p.takeLines(), QByteArray());
    QVERIFY(p.dialog->isVisible());
}

void TstGatewayZrtDialogs::foreignAnswerSendsAnEmptyLine_data()
{
    QTest::addColumn<QStringList>("answer");
    QTest::newRow("other label") << QStringList{"Set Average", "5"};
    QTest::newRow("nothing") << QStringList();
}

void TstGatewayZrtDialogs::foreignAnswerSendsAnEmptyLine()
{
    QFETCH(QStringList, answer);
    GatewayPanel p;
    p.dialog->Slot_DispatchMinMax(answer);
    QCOMPARE(p.takeLines(), QByteArray("\r"));
}

QTEST_MAIN(TstGatewayZrtDialogs)
#include "tst_gatewayzrt_dialogs.moc"
