#include "gateway/changegatewaydialog.h"
#include "gatewaypanel.h"

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

} // namespace

/// The questions that the panel asks before it sends what cannot be undone.
class TstGatewayZrtConfirmations : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }

    void commandIsConfirmedFirst_data();
    void commandIsConfirmedFirst();
    void confirmationLooks_data();
    void confirmationLooks();
    void confirmationIsOpenOnce();
    void questionIsAskedOnce_data();
    void questionIsAskedOnce();
    void confirmationGoesWithThePanel();
    void addressQuestionLooks();
    void refusedQuestionAsksForNoAddress_data();
    void refusedQuestionAsksForNoAddress();
    void pollingGoesOnUnderAQuestion();
    void answerAfterTheLinkIsGoneIsDropped();
};

void TstGatewayZrtConfirmations::commandIsConfirmedFirst_data()
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

void TstGatewayZrtConfirmations::commandIsConfirmedFirst()
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

void TstGatewayZrtConfirmations::confirmationLooks_data()
{
    QTest::addColumn<QByteArray>("box");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");
    QTest::newRow("rebootBtn") << QByteArray("rebootConfirmation") << "Reboot remote device"
                               << "Do you really want to proceed with rebooting the remote device ?   ";
    QTest::newRow("restartBtn") << QByteArray("restartConfirmation") << "Restart remote application"
                                << "Do you really want to restart the remote application ?  ";
}

void TstGatewayZrtConfirmations::confirmationLooks()
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

void TstGatewayZrtConfirmations::confirmationIsOpenOnce()
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

void TstGatewayZrtConfirmations::questionIsAskedOnce_data()
{
    QTest::addColumn<QString>("box");
    QTest::newRow("rebootBtn") << "rebootConfirmation";
    QTest::newRow("restartBtn") << "restartConfirmation";
    QTest::newRow("ChangeGateway") << "addressConfirmation";
}

void TstGatewayZrtConfirmations::questionIsAskedOnce()
{
    QFETCH(QString, box);
    GatewayPanel p;
    p.click(QTest::currentDataTag());
    p.click(QTest::currentDataTag());
    GatewayPanel::answer(box.toLatin1(),
                         box == "addressConfirmation" ? QMessageBox::Cancel : QMessageBox::No);
    QVERIFY(!GatewayPanel::openDialog(box.toLatin1()));
    QCOMPARE(p.takeLines(), QByteArray());
}

void TstGatewayZrtConfirmations::confirmationGoesWithThePanel()
{
    GatewayPanel p;
    p.click("rebootBtn");
    const QPointer<QMessageBox> open = p.openDialog<QMessageBox>("rebootConfirmation");
    p.dialog.reset();
    QVERIFY(!open);
    QVERIFY(!QApplication::activeModalWidget());
}

void TstGatewayZrtConfirmations::addressQuestionLooks()
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

void TstGatewayZrtConfirmations::refusedQuestionAsksForNoAddress_data()
{
    QTest::addColumn<QByteArray>("answer");
    for (const char *answer : {"Cancel", "escape", "close", "return"})
        QTest::newRow(answer) << QByteArray(answer);
}

void TstGatewayZrtConfirmations::refusedQuestionAsksForNoAddress()
{
    QFETCH(QByteArray, answer);
    GatewayPanel p;
    p.click("ChangeGateway");
    leave(p.openDialog<QMessageBox>("addressConfirmation"), answer);
    QVERIFY(!p.openDialog<ChangeGatewayDialog>("changeGatewayDialog"));
    QCOMPARE(p.takeLines(), QByteArray());
}

void TstGatewayZrtConfirmations::pollingGoesOnUnderAQuestion()
{
    GatewayPanel p;
    p.receive("]----");
    p.takeLines();
    p.click("rebootBtn");
    p.time.advance(2000);
    QCOMPARE(p.takeLines(), QByteArray("#?\r#?\r"));
    GatewayPanel::answer("rebootConfirmation", QMessageBox::No);
}

void TstGatewayZrtConfirmations::answerAfterTheLinkIsGoneIsDropped()
{
    GatewayPanel p;
    p.click("rebootBtn");
    p.sock->connects = false;
    p.sock->drop();
    GatewayPanel::answer("rebootConfirmation", QMessageBox::Yes);
    QCOMPARE(p.takeLines(), QByteArray());
    p.sock->connects = true;
    p.time.advance(5000);
    QVERIFY(!p.takeLines().contains("reboot")); // nothing waits for the next connection
}

QTEST_MAIN(TstGatewayZrtConfirmations)
#include "tst_gatewayzrt_confirmations.moc"
