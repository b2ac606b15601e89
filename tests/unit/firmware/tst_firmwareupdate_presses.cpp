#include "firmwarewindow.h"

/// Presses of the button that were meant for what it was before: none of them starts an update.
class TstFirmwareUpdatePresses : public QObject
{
    Q_OBJECT

private slots:
    void pressForTheAbortStartsNothing_data();
    void pressForTheAbortStartsNothing();
    void pressDraggedOutAndBackStartsNothing();
    void pressThatWasDraggedOutIsForgotten();
    void pressThatLostTheFocusIsForgotten();
    void otherButtonsTwiceForgetNothing();
    void pressForTheAbortAsksWhenCommandsWereDropped();
    void buttonRestsAfterTheCompletion();
    void pressBegunInTheRestStartsNothing();
    void keyStartsNothingInTheRest();
    void restDoesNotTakeTheAbortAway();
    void slotStartsInTheRestToo();
    void noRestAfterAnAbort();
    void doubleClickOnYesStartsNothing();
    void doubleClickOnTheButtonOnlyStarts();
    void pressOfAProgramCounts();
};

namespace {

constexpr int kCommands = 8; // of 1000 bytes: start, one page, four blocks, stop, reset

void press(QWidget *button)
{
    QTest::mousePress(button, Qt::LeftButton);
}

void release(QWidget *button)
{
    QTest::mouseRelease(button, Qt::LeftButton);
}

void drag(QWidget *button, QPoint to)
{
    QMouseEvent move(QEvent::MouseMove, to, button->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(button, &move);
}

/// The second click of two quick ones, as it arrives: the first may have been on something else.
void clickAgain(QWidget *button)
{
    const QPoint middle = button->rect().center();
    QMouseEvent second(QEvent::MouseButtonDblClick, middle, button->mapToGlobal(middle), Qt::LeftButton,
                       Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(button, &second);
    release(button);
}

/// An update that was complete, long enough ago for another to start.
void bringToTheEnd(FirmwareWindow &w)
{
    w.flashImage(1000);
    w.answer(kCommands);
    w.time.advance(FirmwareWindow::kRest);
    w.events.clear();
}

} // namespace

void TstFirmwareUpdatePresses::pressForTheAbortStartsNothing_data()
{
    QTest::addColumn<bool>("isKey");
    QTest::addColumn<int>("heldMs");
    for (const int ms : {0, 499, 500, 5000}) {
        QTest::addRow("mouse, held for %d ms", ms) << false << ms;
        QTest::addRow("Space, held for %d ms", ms) << true << ms;
    }
}

void TstFirmwareUpdatePresses::pressForTheAbortStartsNothing()
{
    QFETCH(bool, isKey);
    QFETCH(int, heldMs);
    FirmwareWindow w;
    w.flashImage(1000);
    w.answer(kCommands - 1);
    w.events.clear();
    w.flashButton()->setFocus();
    if (isKey)
        QTest::keyPress(w.flashButton(), Qt::Key_Space);
    else
        press(w.flashButton());
    w.answer();
    w.time.advance(heldMs);
    QTest::keyClick(w.flashButton(), Qt::Key_Return); // presses no button
    QTest::mouseClick(w.flashButton(), Qt::RightButton);
    if (isKey)
        QTest::keyRelease(w.flashButton(), Qt::Key_Space);
    else
        release(w.flashButton());
    QCOMPARE(w.events, QStringList());
    QVERIFY(w.isIdle());
    w.time.advance(FirmwareWindow::kRest);
    w.clickFlash(); // the next press is one of its own
    QVERIFY(w.isRunning());
}

void TstFirmwareUpdatePresses::pressDraggedOutAndBackStartsNothing()
{
    FirmwareWindow w;
    w.flashImage(1000);
    press(w.flashButton());
    w.answer(kCommands);
    w.events.clear();
    w.time.advance(FirmwareWindow::kRest);
    drag(w.flashButton(), {-20, -20});
    QVERIFY(!w.flashButton()->isDown());
    drag(w.flashButton(), {5, 5});
    QVERIFY(w.flashButton()->isDown());
    release(w.flashButton());
    QCOMPARE(w.events, QStringList());
    QVERIFY(w.isIdle());
}

void TstFirmwareUpdatePresses::pressThatWasDraggedOutIsForgotten()
{
    FirmwareWindow w;
    w.flashImage(1000);
    press(w.flashButton());
    drag(w.flashButton(), {-20, -20});
    QTest::mouseRelease(w.flashButton(), Qt::LeftButton, {}, {-20, -20});
    QVERIFY(!w.box("abortBox"));
    w.answer(kCommands);
    w.time.advance(FirmwareWindow::kRest);
    w.flashButton()->click(); // by a program: no press of its own goes before it
    QVERIFY(w.isRunning());
}

void TstFirmwareUpdatePresses::pressThatLostTheFocusIsForgotten()
{
    FirmwareWindow w;
    w.flashImage(1000);
    w.flashButton()->setFocus();
    QTest::keyPress(w.flashButton(), Qt::Key_Space);
    childByName<QWidget>(&w.window, "messageBox")->setFocus();
    QVERIFY(!w.flashButton()->hasFocus());
    QVERIFY(!w.box("abortBox"));
    w.answer(kCommands);
    w.time.advance(FirmwareWindow::kRest);
    w.flashButton()->click();
    QVERIFY(w.isRunning());
}

void TstFirmwareUpdatePresses::otherButtonsTwiceForgetNothing()
{
    FirmwareWindow w;
    w.flashImage(1000);
    QTest::mouseDClick(w.flashButton(), Qt::RightButton);
    QVERIFY(!w.box("abortBox"));
    w.flashButton()->click();
    QVERIFY(w.box("abortBox"));
}

void TstFirmwareUpdatePresses::pressForTheAbortAsksWhenCommandsWereDropped()
{
    FirmwareWindow w;
    w.flashImage(1000);
    press(w.flashButton());
    w.window.stopCounting();
    release(w.flashButton());
    QVERIFY(w.box("abortBox"));
}

void TstFirmwareUpdatePresses::buttonRestsAfterTheCompletion()
{
    FirmwareWindow w;
    w.flashImage(1000);
    w.answer(kCommands);
    w.events.clear();
    w.clickFlash();
    w.time.advance(499);
    w.clickFlash();
    QCOMPARE(w.events, QStringList());
    QVERIFY(w.isIdle());
    w.time.advance(1);
    w.clickFlash();
    QVERIFY(w.isRunning());
}

void TstFirmwareUpdatePresses::pressBegunInTheRestStartsNothing()
{
    FirmwareWindow w;
    w.flashImage(1000);
    w.answer(kCommands);
    w.events.clear();
    press(w.flashButton());
    w.time.advance(FirmwareWindow::kRest);
    release(w.flashButton());
    QCOMPARE(w.events, QStringList());
    QVERIFY(w.isIdle());
}

void TstFirmwareUpdatePresses::keyStartsNothingInTheRest()
{
    FirmwareWindow w;
    w.flashImage(1000);
    w.answer(kCommands);
    w.events.clear();
    w.flashButton()->setFocus();
    QTest::keyClick(w.flashButton(), Qt::Key_Space);
    QCOMPARE(w.events, QStringList());
    w.time.advance(FirmwareWindow::kRest);
    QTest::keyClick(w.flashButton(), Qt::Key_Space);
    QVERIFY(w.isRunning());
}

void TstFirmwareUpdatePresses::restDoesNotTakeTheAbortAway()
{
    FirmwareWindow w;
    w.flashImage(1000);
    w.answer(kCommands);
    w.window.Slot_UpdateOrAbortFirmw();
    QVERIFY(w.isRunning());
    w.clickFlash();
    QVERIFY(w.box("abortBox"));
}

void TstFirmwareUpdatePresses::slotStartsInTheRestToo()
{
    FirmwareWindow w;
    w.flashImage(1000);
    w.answer(kCommands);
    w.events.clear();
    w.window.Slot_UpdateOrAbortFirmw();
    QVERIFY(w.isRunning());
    QCOMPARE(w.events.size(), kCommands + 2);
}

void TstFirmwareUpdatePresses::noRestAfterAnAbort()
{
    FirmwareWindow w;
    w.flashImage(1000);
    w.abort();
    w.clickFlash();
    QVERIFY(w.isRunning());
}

void TstFirmwareUpdatePresses::doubleClickOnYesStartsNothing()
{
    FirmwareWindow w;
    w.flashImage(1000);
    w.clickFlash();
    w.events.clear();
    const QPointer<QPushButton> yes(childByName<QPushButton>(w.box("abortBox"), "proceedButton"));
    w.click(yes);
    clickAgain(w.flashButton()); // the box is gone, and the button was under it
    if (yes)
        yes->click();
    QCOMPARE(w.events, (QStringList{"abort", "1 2 1 0 | 0 0", "1 2 1 43 | 0 0"}));
    QVERIFY(w.isIdle());
    w.clickFlash();
    QVERIFY(w.isRunning());
}

void TstFirmwareUpdatePresses::doubleClickOnTheButtonOnlyStarts()
{
    FirmwareWindow w;
    bringToTheEnd(w);
    w.clickFlash();
    clickAgain(w.flashButton());
    QVERIFY(w.isRunning());
    QVERIFY(!w.box("abortBox"));
    QCOMPARE(w.events.size(), kCommands + 2);
}

void TstFirmwareUpdatePresses::pressOfAProgramCounts()
{
    FirmwareWindow w;
    bringToTheEnd(w);
    w.flashButton()->click(); // as a screen reader does
    QVERIFY(w.isRunning());
    w.flashButton()->click();
    QVERIFY(w.box("abortBox"));
}

QTEST_MAIN(TstFirmwareUpdatePresses)
#include "tst_firmwareupdate_presses.moc"
