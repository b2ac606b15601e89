#include "firmwarewindow.h"
#include "support/windowacts.h"

/// The running update: progress and abort.
class TstFirmwareUpdateProgress : public QObject
{
    Q_OBJECT

private slots:
    void startShowsTheProgress();
    void eachReplyCountsOnce();
    void lastReplyCompletesTheUpdate();
    void repliesOutsideOfAnUpdateCountNothing();
    void secondUpdateCountsFromTheStart();
    void updateIsNotStartedTwice();
    void abortIsPossibleEvenIfTheButtonWasOff();
    void fileMayVanishWhileItRuns();
    void pathOfTheSettingsWaitsForTheEnd();
    void windowMayBeClosedWhileItRuns();

    void abortAsks();
    void refusedAbortChangesNothing_data();
    void refusedAbortChangesNothing();
    void abortEndsTheUpdate();
    void abortWaitsForNothing();
    void abortedUpdateDoesNotComplete();
    void updateAfterAnAbortCountsFromTheStart();
    void abortTellsTheTargetThatRuns();
    void heldKeyAbortsNothing();
    void questionIsAskedOnce();
    void questionGoesWithTheUpdate();
    void questionIsAnsweredAfterTheClosing();
    void questionOfAFormerUpdateAbortsNothing();
};

namespace {

constexpr int kCommands = 8; // of 1000 bytes: start, one page, four blocks, stop, reset
constexpr int kMaximum = 7;  // of the bar

const QStringList kAbort{"abort", "1 2 1 0 | 0 0", "1 2 1 43 | 0 0"};

} // namespace

void TstFirmwareUpdateProgress::startShowsTheProgress()
{
    FirmwareWindow w;
    w.flashImage(1000);
    QVERIFY(w.isRunning());
    QCOMPARE(w.bar()->minimum(), 0);
    QCOMPARE(w.bar()->maximum(), kMaximum);
    QCOMPARE(w.bar()->value(), -1);
}

void TstFirmwareUpdateProgress::eachReplyCountsOnce()
{
    FirmwareWindow w;
    w.flashImage(1000);
    for (int reply = 1; reply < kCommands; ++reply) {
        w.answer();
        QCOMPARE(w.bar()->value(), reply - 1);
        QVERIFY(w.isRunning());
    }
    QCOMPARE(w.events.size(), kCommands + 2); // replies send nothing
}

void TstFirmwareUpdateProgress::lastReplyCompletesTheUpdate()
{
    FirmwareWindow w;
    w.flashImage(1000);
    const QString before = w.messages();
    w.answer(kCommands - 1);
    QCOMPARE(w.messages(), before);
    w.answer();
    QVERIFY(w.isIdle());
    QVERIFY(w.status()->isVisible());
    QCOMPARE(w.status()->text(), QStringLiteral("FPGA flashing complete..."));
    QCOMPARE(w.messages(), before + QStringLiteral("\n*****************************************"
                                                   "\n\tFlashing FPGA Done...."));
    QCOMPARE(w.events.size(), kCommands + 2);
}

void TstFirmwareUpdateProgress::repliesOutsideOfAnUpdateCountNothing()
{
    FirmwareWindow w;
    w.answer(3);
    QVERIFY(!w.status()->isVisible());
    w.flashImage(1000);
    w.answer(kCommands);
    const QString done = w.messages();
    w.answer(20); // the polling goes on
    w.window.Slot_incrementProgress(QVariant());
    QCOMPARE(w.messages(), done);
    QVERIFY(w.isIdle());
}

void TstFirmwareUpdateProgress::secondUpdateCountsFromTheStart()
{
    FirmwareWindow w;
    for (int update = 0; update < 3; ++update) {
        w.flashImage(1000);
        QVERIFY(w.isRunning());
        QCOMPARE(w.bar()->value(), -1);
        w.answer();
        QCOMPARE(w.bar()->value(), 0); // each reply counts once
        w.answer(kCommands - 2);
        QVERIFY(w.isRunning());
        w.answer();
        QVERIFY(w.isIdle());
    }
    QCOMPARE(w.commands.size(), 3 * kCommands);
    w.flashImage(300); // a shorter one
    QCOMPARE(w.bar()->maximum(), 5);
    w.answer(6);
    QVERIFY(w.isIdle());
}

void TstFirmwareUpdateProgress::updateIsNotStartedTwice()
{
    FirmwareWindow w;
    w.flashImage(1000);
    w.answer(3);
    QVERIFY(!w.window.ReadFileAndSendCommands());
    QCOMPARE(w.commands.size(), kCommands);
    QCOMPARE(w.bar()->value(), 2);
    QVERIFY(w.isRunning());
}

void TstFirmwareUpdateProgress::abortIsPossibleEvenIfTheButtonWasOff()
{
    FirmwareWindow w;
    w.window.Slot_UpdateFirmwrFilePath(w.folder.filePath(QStringLiteral("x_ANA_FPGA5_v2.bin")));
    QVERIFY(!w.flashButton()->isEnabled());
    w.file(QStringLiteral("x_ANA_FPGA5_v2.bin"), FirmwareWindow::image(1000)); // appears later
    QVERIFY(w.window.ReadFileAndSendCommands());
    QVERIFY(w.isRunning());
}

void TstFirmwareUpdateProgress::fileMayVanishWhileItRuns()
{
    FirmwareWindow w;
    w.flashImage(1000);
    QVERIFY(QFile::remove(w.pathEdit()->text()));
    w.window.beginOperation();
    QVERIFY(w.isRunning());
    w.window.Slot_UpdateFirmwrFilePath(w.pathEdit()->text());
    QVERIFY(w.isRunning());
    w.answer(kCommands);
    QVERIFY(w.status()->isVisible());
    QVERIFY(!w.flashButton()->isEnabled()); // nothing is left to flash
    QCOMPARE(w.flashButton()->text(), QStringLiteral("Read and Flash File"));
}

void TstFirmwareUpdateProgress::pathOfTheSettingsWaitsForTheEnd()
{
    FirmwareWindow w;
    const QString other = w.file(QStringLiteral("other.bin"), "x");
    w.flashImage(1000);
    const QString running = w.pathEdit()->text();
    w.window.Slot_UpdateFirmwrFilePath(other);
    QCOMPARE(w.pathEdit()->text(), running);
    w.answer(kCommands);
    QCOMPARE(w.pathEdit()->text(), other);
    QVERIFY(w.isIdle());

    w.flashImage(1000);
    w.window.Slot_UpdateFirmwrFilePath(w.folder.filePath(QStringLiteral("missing.bin")));
    QVERIFY(w.isRunning());
    w.abort();
    QVERIFY(!w.flashButton()->isEnabled());
    w.flashImage(1000); // and what waited does not come again
    w.answer(kCommands);
    QCOMPARE(w.pathEdit()->text(), running);
}

void TstFirmwareUpdateProgress::windowMayBeClosedWhileItRuns()
{
    FirmwareWindow w;
    w.flashImage(1000);
    w.answer(2);
    QVERIFY(windowacts::closeByTitleBar(w.window));
    QVERIFY(!w.window.isVisible());
    w.answer(2);
    w.show();
    w.window.beginOperation();
    QVERIFY(w.isRunning());
    QCOMPARE(w.bar()->value(), 3);
    QTest::keyClick(&w.window, Qt::Key_Escape);
    QVERIFY(!w.window.isVisible());
    w.answer(4);
    w.show();
    QVERIFY(w.isIdle());
    QVERIFY(w.status()->isVisible());
    QCOMPARE(w.events.size(), kCommands + 2); // closing aborts nothing
}

void TstFirmwareUpdateProgress::abortAsks()
{
    FirmwareWindow w;
    w.flashImage(1000);
    w.events.clear();
    w.clickFlash();
    const QMessageBox *box = w.box("abortBox");
    QVERIFY(box);
    QVERIFY(box->isModal());
    QVERIFY(box->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    QCOMPARE(box->windowTitle(), QStringLiteral("Warning"));
    QCOMPARE(box->text(), QStringLiteral("Are you sure you want to Abort the Flashing Process"));
    const auto *yes = childByName<QPushButton>(box, "proceedButton");
    const auto *no = childByName<QPushButton>(box, "refusalButton");
    QCOMPARE(yes->text(), QStringLiteral("Yes ,Abort Flashing"));
    QCOMPARE(no->text(), QStringLiteral("No"));
    QCOMPARE(box->buttons().size(), 2);
    QVERIFY(no->isDefault());
    QVERIFY(w.isRunning());
    QCOMPARE(w.events, QStringList());
    w.answer(2); // the update goes on meanwhile
    QCOMPARE(w.bar()->value(), 1);
}

void TstFirmwareUpdateProgress::refusedAbortChangesNothing_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Return presses No") << int(Qt::Key_Return);
    QTest::newRow("Enter presses No") << int(Qt::Key_Enter);
    QTest::newRow("Escape") << int(Qt::Key_Escape);
    QTest::newRow("click on No") << 0;
}

void TstFirmwareUpdateProgress::refusedAbortChangesNothing()
{
    QFETCH(int, key);
    FirmwareWindow w;
    w.flashImage(1000);
    w.answer(3);
    w.events.clear();
    w.clickFlash();
    if (key)
        QTest::keyClick(w.box("abortBox"), Qt::Key(key));
    else
        w.click(childByName<QPushButton>(w.box("abortBox"), "refusalButton"));
    QVERIFY(!w.box("abortBox"));
    QVERIFY(w.isRunning());
    QCOMPARE(w.bar()->value(), 2);
    QCOMPARE(w.events, QStringList());
    w.answer(kCommands - 3);
    QVERIFY(w.isIdle());
}

void TstFirmwareUpdateProgress::abortEndsTheUpdate()
{
    FirmwareWindow w;
    w.flashImage(1000);
    w.answer(3);
    w.events.clear();
    const QString before = w.messages();
    w.abort();
    QCOMPARE(w.events, kAbort);
    QVERIFY(w.isIdle());
    QCOMPARE(w.bar()->value(), -1);
    QCOMPARE(w.messages(), before + QStringLiteral("\nFirmware Flashing Aborted.."));
    QVERIFY(w.status()->isVisible());
    QCOMPARE(w.status()->text(), QStringLiteral("Firmware Flashing Aborted.."));
}

void TstFirmwareUpdateProgress::abortWaitsForNothing()
{
    FirmwareWindow w;
    w.flashImage(1000);
    w.answer(3);
    const QString running = w.pathEdit()->text();
    QStringList looks;
    const auto look = [&w, &looks] {
        looks.append(QStringLiteral("%1, %2 %3, %4, %5")
                         .arg(w.flashButton()->text())
                         .arg(w.bar()->isHidden() ? "hidden" : "shown")
                         .arg(w.bar()->value())
                         .arg(w.status()->isHidden() ? QString() : w.status()->text())
                         .arg(w.messages().section(QLatin1Char('\n'), -1)));
        QVERIFY(w.flashButton()->isEnabled()); // no file was looked at yet
    };
    connect(&w.window, &FirmwareUpdate::Signal_AbortFrmwr, this, look);
    connect(&w.window, &FirmwareUpdate::Signal_commandMsg, this, look);
    const QString missing = w.folder.filePath(QStringLiteral("missing.bin"));
    w.window.Slot_UpdateFirmwrFilePath(missing);
    connect(&w.window, &FirmwareUpdate::Signal_commandMsg, this,
            [&] { QCOMPARE(w.pathEdit()->text(), running); });
    w.abort();
    const QString aborted = QStringLiteral("Firmware Flashing Aborted..");
    const QString after =
        QStringLiteral("Read and Flash File, hidden -1, %1, %1").arg(aborted); // bar, label, messages
    QCOMPARE(looks,
             (QStringList{"Read and Flash File, shown 2, , \tFlashing FPGA started...", after, after}));
    QCOMPARE(w.pathEdit()->text(), missing);
    QVERIFY(!w.flashButton()->isEnabled());
}

void TstFirmwareUpdateProgress::abortedUpdateDoesNotComplete()
{
    FirmwareWindow w;
    w.flashImage(1000);
    w.answer(kCommands - 1);
    w.abort();
    const QString before = w.messages();
    w.answer(50);
    QCOMPARE(w.messages(), before);
    QCOMPARE(w.status()->text(), QStringLiteral("Firmware Flashing Aborted.."));
}

void TstFirmwareUpdateProgress::updateAfterAnAbortCountsFromTheStart()
{
    FirmwareWindow w;
    w.flashImage(1000);
    w.answer(5);
    w.abort();
    w.events.clear();
    w.clickFlash();
    QVERIFY(w.isRunning());
    QCOMPARE(w.bar()->value(), -1);
    QCOMPARE(w.events.size(), kCommands + 2);
    w.answer(2);
    QCOMPARE(w.bar()->value(), 1);
    w.answer(kCommands - 2);
    QVERIFY(w.isIdle());
    QCOMPARE(w.status()->text(), QStringLiteral("FPGA flashing complete..."));
}

void TstFirmwareUpdateProgress::abortTellsTheTargetThatRuns()
{
    FirmwareWindow w;
    w.flash(w.file(QStringLiteral("x_GTW_FPGA4_v2.bin"), FirmwareWindow::image(300, "iCE5LP4K-SG48")));
    w.window.Slot_UpdateFirmwrFilePath(w.file(QStringLiteral("x_CON_FPGA5_v2.bin"), "x"));
    w.events.clear();
    w.abort();
    QCOMPARE(w.events, (QStringList{"abort", "2 1 1 0 | 0 0", "2 1 1 43 | 0 0"}));
    QVERIFY(w.commands.last().data.isEmpty());
}

void TstFirmwareUpdateProgress::heldKeyAbortsNothing()
{
    FirmwareWindow w;
    w.window.Slot_UpdateFirmwrFilePath(
        w.file(QStringLiteral("x_ANA_FPGA5_v2.bin"), FirmwareWindow::image(1000)));
    w.flashButton()->setFocus();
    QTest::keyClick(w.flashButton(), Qt::Key_Space);
    QVERIFY(w.isRunning());
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space})
        windowacts::repeatKey(key);
    QVERIFY(!w.box("abortBox"));
    QTest::keyClick(w.flashButton(), Qt::Key_Return); // no button is the default one
    QVERIFY(!w.box("abortBox"));
    QVERIFY(w.window.isVisible());
    QTest::keyClick(w.flashButton(), Qt::Key_Space);
    QVERIFY(QTest::qWaitForWindowActive(w.box("abortBox")));
    childByName<QPushButton>(w.box("abortBox"), "proceedButton")->setFocus();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space})
        windowacts::repeatKey(key);
    QVERIFY(w.box("abortBox"));
    QVERIFY(w.isRunning());
}

void TstFirmwareUpdateProgress::questionIsAskedOnce()
{
    FirmwareWindow w;
    w.flashImage(1000);
    w.clickFlash();
    w.window.Slot_UpdateOrAbortFirmw();
    QVERIFY(w.box("abortBox")); // two would end the test
    w.click(childByName<QPushButton>(w.box("abortBox"), "proceedButton"));
    QVERIFY(!w.box("abortBox"));
}

void TstFirmwareUpdateProgress::questionGoesWithTheUpdate()
{
    FirmwareWindow w;
    w.flashImage(1000);
    w.events.clear();
    w.clickFlash();
    w.answer(kCommands - 1);
    QVERIFY(w.box("abortBox"));
    w.answer();
    QVERIFY(!w.box("abortBox"));
    QVERIFY(w.isIdle());
    QCOMPARE(w.status()->text(), QStringLiteral("FPGA flashing complete..."));
    QCOMPARE(w.events, QStringList());
}

void TstFirmwareUpdateProgress::questionIsAnsweredAfterTheClosing()
{
    FirmwareWindow w;
    w.flashImage(1000);
    w.clickFlash();
    w.events.clear();
    QVERIFY(w.window.close());
    QVERIFY(w.box("abortBox"));
    w.click(childByName<QPushButton>(w.box("abortBox"), "proceedButton"));
    QCOMPARE(w.events, kAbort);
    w.show();
    QVERIFY(w.isIdle());
    QVERIFY(w.status()->isVisible());
}

void TstFirmwareUpdateProgress::questionOfAFormerUpdateAbortsNothing()
{
    FirmwareWindow w;
    w.flashImage(1000);
    w.clickFlash();
    const QPointer<QMessageBox> former(w.box("abortBox"));
    w.answer(kCommands);
    w.events.clear();
    if (former) // a press that was under way
        childByName<QPushButton>(former, "proceedButton")->click();
    QCOMPARE(w.events, QStringList());
    QCOMPARE(w.status()->text(), QStringLiteral("FPGA flashing complete..."));
}

QTEST_MAIN(TstFirmwareUpdateProgress)
#include "tst_firmwareupdate_progress.moc"
