#include "firmwarewindow.h"
#include "support/windowacts.h"

/// The checks before the first command, and the commands.
class TstFirmwareUpdate : public QObject
{
    Q_OBJECT

private slots:
    void wrongFileIsRefused_data();
    void wrongFileIsRefused();
    void vanishedFileIsRefused_data();
    void vanishedFileIsRefused();
    void fileThatFailsToReadIsRefused_data();
    void fileThatFailsToReadIsRefused();
    void tooLargeFileIsRefused();
    void largestFileIsNotTooLarge();
    void refusalKeepsTheMessages();
    void refusedFileCanBeTriedAgain();
    void refusalSendsNothingThatWaits();
    void refusalIsAModalBox();
    void refusalGoesWithTheWindow();

    void wrongWordsAreLogged_data();
    void wrongWordsAreLogged();
    void acceptedNames_data();
    void acceptedNames();
    void fileIsDescribed_data();
    void fileIsDescribed();
    void secondStartClearsTheMessages();

    void commandsOfAFile_data();
    void commandsOfAFile();
    void lastBlockIsFilled();
    void signalsComeInOrder();
    void buildingIsLogged();
};

namespace {

const QString kCannotOpen = QStringLiteral("Unable to open file / File not found");
const QString kMismatch =
    QStringLiteral("The target type specified in the filename mismatches with its contents.\n"
                   "Please contact the support team to check with the issue.");
const QString kInvalidName = QStringLiteral("The No. of parameters provided in the file are invalid\n"
                                            "Please contact the administrator");
const QString kTooLarge = QStringLiteral("The file is too large for an FPGA image.");
const QString kAsterisks = QStringLiteral("*****************************************");

constexpr qint64 kMost = 16777216; // 65536 blocks of 256 bytes

} // namespace

void TstFirmwareUpdate::wrongFileIsRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("reason");
    const QByteArray small("..iCE5LP4K-SG48..");
    const QByteArray large("..iCE40UP5K-SG48..");
    const auto row = [](const char *name, const QByteArray &contents, const QString &reason,
                        const char *why) {
        QTest::addRow("%s: %s", name, why) << QString::fromLatin1(name) << contents << reason;
    };
    row("x_ANA_FPGA4_v2.bin", large, kMismatch, "the image is for the other chip");
    row("x_ANA_FPGA5_v2.bin", small, kMismatch, "the image is for the other chip");
    row("x_ANA_FPGA5_v2.bin", small + large, kMismatch, "of two chips the first of the list counts");
    row("x_ANA_FPGA5_v2.bin", large + small, kMismatch, "the place in the image does not count");
    row("x_ANA_FPGA4_v2.bin", "......", kMismatch, "the image names no chip");
    row("x_ANA_FPGA5_v2.bin", "", kMismatch, "empty");
    row("x_ANA_FPGA5_v2.bin", "iCE40UP5K-SG4", kMismatch, "the chip is not complete");
    row("x_ANA_FPGA6_v2.bin", large, kMismatch, "the name names no chip");
    row("x_ANA_FPGA6_v2.bin", "000000000000000", kMismatch, "zeros are no chip");
    row("x_ANA.bin", large, kMismatch, "the name names no chip");
    row("any.bin", small, kMismatch, "the name names no chip");
    row("x_ANA_FPGA5_not-FPGA4.bin", small, kMismatch, "both words, and the third piece is of the other");
    row("FPGA4_ANA_FPGA5_v2.bin", small, kMismatch, "both words, and the third piece is of the other");
    row("a_ANA_FPGA5_d_e_f_FPGA4.bin", small, kMismatch, "both words in seven pieces");
    row("x_ANA_FPGA5_not-FPGA4.bin", large, kMismatch, "of both words the first of the list counts");
    row("x_ANA_FPGA5.bin", large, kInvalidName, "the third piece has a suffix");
    row("x_ANA_FPGA55_v2.bin", large, kInvalidName, "the third piece is longer");
    row("x_FPGA5_ANA_v2.bin", large, kInvalidName, "the words are exchanged");
    row("x_ana_FPGA5_v2.bin", large, kInvalidName, "small letters");
    row("x_GATE_FPGA5_v2.bin", large, kInvalidName, "unknown module");
    row("ANA_FPGA5_v2.bin", large, kInvalidName, "the free piece is missing");
    row("x__ANA_FPGA5_v2.bin", large, kInvalidName, "an empty piece is one too");
    row("FPGA5_ANA.bin", large, kInvalidName, "the FPGA's word is missing");
    row("x_ANA_b_FPGA4_d_e_f.bin", small, kInvalidName, "seven pieces, and the FPGA's is the fourth");
}

void TstFirmwareUpdate::wrongFileIsRefused()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, contents);
    FirmwareWindow w;
    w.flash(w.file(name, contents));
    QTEST(w.refusal(), "reason");
    QCOMPARE(w.events, QStringList{"start"}); // no command, and nothing to be remembered
    QCOMPARE(w.flashButton()->text(), QStringLiteral("Read and Flash File"));
    QVERIFY(!w.bar()->isVisible());
    w.leaveRefusal();
    QVERIFY(!w.window.ReadFileAndSendCommands());
    QCOMPARE(w.events, QStringList{"start"});
}

void TstFirmwareUpdate::vanishedFileIsRefused_data()
{
    QTest::addColumn<bool>("isFolderNow");
    QTest::newRow("nothing is there") << false;
    QTest::newRow("a folder is there") << true;
}

void TstFirmwareUpdate::vanishedFileIsRefused()
{
    QFETCH(bool, isFolderNow);
    FirmwareWindow w;
    const QString path = w.file(QStringLiteral("x_ANA_FPGA5_v2.bin"), FirmwareWindow::image(1000));
    w.window.Slot_UpdateFirmwrFilePath(path);
    QVERIFY(QFile::remove(path));
    if (isFolderNow)
        QVERIFY(QDir(w.folder.path()).mkdir(path));
    w.clickFlash();
    QCOMPARE(w.refusal(), kCannotOpen);
    QCOMPARE(w.events, QStringList{"start"});
    QVERIFY(!w.isRunning());
}

void TstFirmwareUpdate::fileThatFailsToReadIsRefused_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("reading fails") << "/proc/self/mem";
    QTest::newRow("size is not that of the contents") << "/proc/self/status";
}

void TstFirmwareUpdate::fileThatFailsToReadIsRefused()
{
    QFETCH(QString, file);
    FirmwareWindow w;
    const QString path = w.folder.filePath(QStringLiteral("x_ANA_FPGA5_v2.bin"));
    QVERIFY(QFile::link(file, path));
    w.flash(path);
    QCOMPARE(w.refusal(), kCannotOpen);
    QCOMPARE(w.events, QStringList{"start"});
}

void TstFirmwareUpdate::tooLargeFileIsRefused()
{
    FirmwareWindow w;
    const QString path = w.file(QStringLiteral("x_ANA_FPGA5_v2.bin"), "iCE40UP5K-SG48");
    for (const qint64 size : {kMost + 1, qint64(1) << 40}) {
        QVERIFY(QFile::resize(path, size)); // takes no room on the disk
        w.flash(path);
        QCOMPARE(w.refusal(), kTooLarge);
        w.leaveRefusal();
    }
    QVERIFY(w.commands.isEmpty());
    QCOMPARE(w.messages(), QString());
}

void TstFirmwareUpdate::largestFileIsNotTooLarge()
{
    FirmwareWindow w;
    const QString path = w.file(QStringLiteral("x_ANA_FPGA5_v2.bin"), "iCE40UP5K-SG48");
    QVERIFY(QFile::resize(path, kMost));
    w.flash(path);
    QCOMPARE(w.refusal(), QString());
    w.letQueue();
    QCOMPARE(w.commands.size(), 1 + 257 + 65536 + 2);
    QCOMPARE(FirmwareWindow::text(w.commands.at(257)), QStringLiteral("1 2 1 224 | 256 0"));
    QCOMPARE(FirmwareWindow::text(w.commands.at(257 + 65536)), QStringLiteral("1 2 1 225 | 65535 256"));
}

void TstFirmwareUpdate::refusalKeepsTheMessages()
{
    FirmwareWindow w;
    w.messageBox()->setPlainText(QStringLiteral("before"));
    w.flash(w.file(QStringLiteral("x_ANA_FPGA4_v2.bin"), FirmwareWindow::image(50)));
    QCOMPARE(w.refusal(), kMismatch);
    QCOMPARE(w.messages(), QStringLiteral("before"));
    w.leaveRefusal();
    w.flash(w.file(QStringLiteral("x_FOO_FPGA5.bin"), FirmwareWindow::image(50)));
    QCOMPARE(w.refusal(), kInvalidName); // a name is judged after the file was described
    QCOMPARE(w.messages(), QStringLiteral("\n\n\tFile Information\n") + kAsterisks +
                               QStringLiteral("\nFPGA type: iCE40UP5K-SG48\nFPGA = FPGA5.bin"));
}

void TstFirmwareUpdate::refusedFileCanBeTriedAgain()
{
    FirmwareWindow w;
    const QString path = w.file(QStringLiteral("x_ANA_FPGA5_v2.bin"), "x");
    w.flash(path);
    w.leaveRefusal();
    w.file(QStringLiteral("x_ANA_FPGA5_v2.bin"), FirmwareWindow::image(1000));
    w.clickFlash();
    QVERIFY(w.isRunning());
    QCOMPARE(w.commands.size(), 8);
    QCOMPARE(w.events.mid(9), (QStringList{"save " + path, "start"}));
}

void TstFirmwareUpdate::refusalSendsNothingThatWaits()
{
    FirmwareWindow w;
    bool commandsWait = true;
    w.window.setCommandsWaiting([&commandsWait] { return commandsWait; });
    w.flashImage(1000);
    w.abort(); // its stop and reset wait
    w.events.clear();
    w.flash(w.file(QStringLiteral("any.bin"), "x"));
    QCOMPARE(w.refusal(), kMismatch);
    QCOMPARE(w.events, QStringList());
    w.leaveRefusal();
    commandsWait = false; // the time-out dropped them
    w.clickFlash();
    QCOMPARE(w.events, QStringList{"start"});
    w.leaveRefusal();
    w.events.clear();
    commandsWait = true;
    w.flashImage(1000); // what waits goes first
    QCOMPARE(w.events.last(), QStringLiteral("start"));
}

void TstFirmwareUpdate::refusalIsAModalBox()
{
    FirmwareWindow w;
    w.flash(w.file(QStringLiteral("any.bin"), "x"));
    const QPointer<QMessageBox> box(w.box("failureBox"));
    QVERIFY(box);
    QVERIFY(box->isModal());
    QVERIFY(box->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    QCOMPARE(box->windowTitle(), QStringLiteral("Failure"));
    QCOMPARE(box->standardButtons(), QMessageBox::Ok);
    QCOMPARE(box->textFormat(), Qt::PlainText);
    box->activateWindow();
    QTRY_COMPARE(QApplication::focusWidget(), box->button(QMessageBox::Ok));
    windowacts::repeatKey(Qt::Key_Return); // held since before
    QVERIFY(box->isVisible());
    QTest::keyClick(box, Qt::Key_Return);
    QVERIFY(!w.box("failureBox"));
    QTRY_VERIFY(!box);
    QCOMPARE(w.events, QStringList{"start"});
}

void TstFirmwareUpdate::refusalGoesWithTheWindow()
{
    auto w = std::make_unique<FirmwareWindow>();
    w->flash(w->file(QStringLiteral("any.bin"), "x"));
    const QPointer<QMessageBox> box(w->box("failureBox"));
    QVERIFY(box);
    w.reset();
    QVERIFY(!box);
}

void TstFirmwareUpdate::wrongWordsAreLogged_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isModuleWrong");
    QTest::addColumn<bool>("isFpgaWrong");
    QTest::newRow("module") << "x_FPGA5_FPGA5_v2.bin" << true << false;
    QTest::newRow("FPGA") << "x_GTW_FPGA5.bin" << false << true;
    QTest::newRow("both") << "FPGA5.bin" << true << true;
    QTest::newRow("none") << "x_CON_FPGA5_v2.bin" << false << false;
}

void TstFirmwareUpdate::wrongWordsAreLogged()
{
    QFETCH(QString, name);
    FirmwareWindow w;
    w.flash(w.file(name, FirmwareWindow::image(100)));
    QTEST(w.log.contains(QtDebugMsg, QStringLiteral("Error incorrect module type in filename")),
          "isModuleWrong");
    QTEST(w.log.contains(QtDebugMsg, QStringLiteral("Error incorrect FPGA type in filename")), "isFpgaWrong");
}

void TstFirmwareUpdate::acceptedNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("chip");
    QTest::addColumn<QString>("target");
    QTest::addColumn<bool>("isWarned");
    const QByteArray small("iCE5LP4K-SG48");
    const QByteArray large("iCE40UP5K-SG48");
    QTest::newRow("controller") << "x_CON_FPGA4_v2.bin" << small << "0 1" << true;
    QTest::newRow("controller, other FPGA") << "x_CON_FPGA5_v2.bin" << large << "0 2" << true;
    QTest::newRow("analog") << "x_ANA_FPGA4_v2.bin" << small << "1 1" << true;
    QTest::newRow("analog, other FPGA") << "x_ANA_FPGA5_v2.bin" << large << "1 2" << true;
    QTest::newRow("gateway") << "x_GTW_FPGA4_v2.bin" << small << "2 1" << true;
    QTest::newRow("gateway, other FPGA") << "x_GTW_FPGA5_v2.bin" << large << "2 2" << true;
    QTest::newRow("three pieces") << "_ANA_FPGA5" << large << "1 2" << true;
    QTest::newRow("six pieces") << "a_ANA_FPGA5_d_e_f.bin" << large << "1 2" << true;
    QTest::newRow("seven pieces") << "a_ANA_FPGA5_d_e_f_g.bin" << large << "1 2" << false;
    QTest::newRow("eight pieces") << "a_ANA_FPGA5_d_e_f_g_h.bin" << large << "1 2" << false;
    QTest::newRow("apostrophe") << "it's 5_ANA_FPGA5_v2.bin" << large << "1 2" << true;
    QTest::newRow("both words, and the third piece is the chip's")
        << "x_ANA_FPGA4_not-FPGA5.bin" << small << "1 1" << true;
}

void TstFirmwareUpdate::acceptedNames()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, chip);
    QFETCH(QString, target);
    QFETCH(bool, isWarned);
    FirmwareWindow w;
    w.flash(w.file(name, FirmwareWindow::image(300, chip)));
    QCOMPARE(w.refusal(), QString());
    QVERIFY(w.isRunning());
    for (const QString &command : w.events.mid(0, 6))
        QVERIFY2(command.startsWith(target + " 1 "), qPrintable(command));
    QCOMPARE(w.log.contains(QtDebugMsg, QStringLiteral("Warning parameters count is low")), isWarned);
}

void TstFirmwareUpdate::fileIsDescribed_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("chip");
    QTest::addColumn<QString>("fpga");
    QTest::addColumn<QString>("target");
    QTest::newRow("controller") << "x_CON_FPGA4_v2.bin" << QByteArray("iCE5LP4K-SG48") << "FPGA4"
                                << "Controller";
    QTest::newRow("analog") << "x_ANA_FPGA5_v2.bin" << QByteArray("iCE40UP5K-SG48") << "FPGA5"
                            << "Analog";
    QTest::newRow("gateway") << "x_GTW_FPGA5_v2.bin" << QByteArray("iCE40UP5K-SG48") << "FPGA5"
                             << "GTW";
}

void TstFirmwareUpdate::fileIsDescribed()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, chip);
    QFETCH(QString, fpga);
    QFETCH(QString, target);
    FirmwareWindow w;
    w.flash(w.file(name, FirmwareWindow::image(1000, chip)));
    const QStringList expected{"",
                               "",
                               "\tFile Information",
                               kAsterisks,
                               "FPGA type: " + QString::fromLatin1(chip),
                               "FPGA = " + fpga,
                               target,
                               "Target = " + target,
                               "The total bytes read in file: 1000",
                               "\tFlashing FPGA started..."};
    QCOMPARE(w.messages().split(QLatin1Char('\n')), expected);
    QVERIFY(w.window.isVisible());
}

void TstFirmwareUpdate::secondStartClearsTheMessages()
{
    FirmwareWindow w;
    w.flashImage(1000);
    const QString first = w.messages();
    w.answer(8);
    QVERIFY(w.messages() != first);
    w.time.advance(FirmwareWindow::kRest);
    w.clickFlash();
    QCOMPARE(w.messages(), first);
}

void TstFirmwareUpdate::commandsOfAFile_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("pages");
    QTest::addColumn<int>("blocks");
    QTest::newRow("less than a block") << 100 << 1 << 1;
    QTest::newRow("one block") << 256 << 1 << 1;
    QTest::newRow("one byte more than a block") << 257 << 1 << 2;
    QTest::newRow("1000 bytes") << 1000 << 1 << 4;
    QTest::newRow("one byte less than a page") << 65535 << 1 << 256;
    QTest::newRow("one page") << 65536 << 2 << 256;
    QTest::newRow("one byte more than a page") << 65537 << 2 << 257;
    QTest::newRow("300000 bytes") << 300000 << 5 << 1172;
}

void TstFirmwareUpdate::commandsOfAFile()
{
    QFETCH(int, size);
    QFETCH(int, pages);
    QFETCH(int, blocks);
    FirmwareWindow w;
    w.flashImage(size);
    QStringList expected{"1 2 1 1 | 0 0"};
    for (int page = 0; page < pages; ++page)
        expected.append(QStringLiteral("1 2 1 224 | %1 0").arg(page));
    for (int block = 0; block < blocks; ++block)
        expected.append(QStringLiteral("1 2 1 225 | %1 256").arg(block));
    expected += {"1 2 1 0 | 0 0", "1 2 1 43 | 0 0"};
    QCOMPARE(w.events.mid(0, w.commands.size()), expected);

    QByteArray written;
    for (const FPGAfwCommand &command : qAsConst(w.commands)) {
        QCOMPARE(command.data.size(), command.b3 == 0xE1 ? 256 : 0);
        written += command.data;
    }
    QCOMPARE(written.left(size), FirmwareWindow::image(size));
    QCOMPARE(written.mid(size), QByteArray(blocks * 256 - size, '\xFF'));
    QCOMPARE(w.bar()->minimum(), 0);
    QCOMPARE(w.bar()->maximum(), size / 65536 + 3 + blocks);
}

void TstFirmwareUpdate::lastBlockIsFilled()
{
    FirmwareWindow w;
    w.flashImage(1000);
    const QByteArray last = w.commands.at(5).data;
    QCOMPARE(last.left(232), FirmwareWindow::image(1000).mid(768));
    QCOMPARE(last.mid(232), QByteArray(24, '\xFF'));
}

void TstFirmwareUpdate::signalsComeInOrder()
{
    FirmwareWindow w;
    const QString path =
        w.file(QStringLiteral("x_GTW_FPGA4_v2.bin"), FirmwareWindow::image(300, QByteArray("iCE5LP4K-SG48")));
    w.flash(path);
    QCOMPARE(w.events,
             (QStringList{"2 1 1 1 | 0 0", "2 1 1 224 | 0 0", "2 1 1 225 | 0 256", "2 1 1 225 | 1 256",
                          "2 1 1 0 | 0 0", "2 1 1 43 | 0 0", "save " + path, "start"}));
}

void TstFirmwareUpdate::buildingIsLogged()
{
    FirmwareWindow w;
    w.flashImage(1000);
    const QStringList lines = w.log.lines(QtDebugMsg);
    QCOMPARE(lines.filter(QStringLiteral("Total no of bytes")),
             QStringList{"Total no of bytes 1000  No of Blocks: 3"});
    QCOMPARE(lines.filter(QStringLiteral("Block Size:")),
             (QStringList{"Block Size: 256", "Block Size: 256", "Block Size: 256", "Block Size: 256"}));
    QVERIFY(lines.contains(QStringLiteral("No of Block commands planned sent:  4")));
    QVERIFY(lines.contains(QStringLiteral("Total bytes packed and being sent:  1024")));
}

QTEST_MAIN(TstFirmwareUpdate)
#include "tst_firmwareupdate.moc"
