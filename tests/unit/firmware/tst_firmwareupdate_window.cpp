#include "firmwarewindow.h"
#include "support/dialoglook.h"

#include <QApplication>
#include <QScrollBar>
#include <sys/stat.h>

/// The looks of the window, and the choice of the file.
class TstFirmwareUpdateWindow : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void windowIsAsAgreed();
    void controlsAreNamed();
    void nothingIsClipped_data();
    void nothingIsClipped();
    void doubledFontFits();
    void buttonsKeepTheirPlaces();
    void lastMessageIsInView_data();
    void lastMessageIsInView();
    void earlierMessagesStayInView();

    void dialogAsksForAFile();
    void dialogStartsAtTheFileChosenLast();
    void dialogIsOpenOnlyOnce();
    void chosenFileIsShown();
    void leftDialogChangesNothing();
    void windowGoesWithTheMainWindow_data();
    void windowGoesWithTheMainWindow();
    void fileIsChosenAfterTheClosing();
    void noFileIsSelectedWhileAnUpdateRuns();

    void onlyAFileThatOpensCanBeFlashed_data();
    void onlyAFileThatOpensCanBeFlashed();
    void fileThatBecomesUnreadableIsRefused();
    void operationBeginsWithALookAtTheFile();

private:
    const QFont m_font = QApplication::font();
};

namespace {

const QString kCannotOpen = QStringLiteral("Unable to open file / File not found");

/// The window in each of its looks.
void bringTo(FirmwareWindow &w, const QString &look)
{
    if (look == QStringLiteral("idle"))
        return;
    w.flashImage(1000);
    if (look == QStringLiteral("running"))
        w.answer(4);
    else if (look == QStringLiteral("done"))
        w.answer(8);
    else if (look == QStringLiteral("stalled"))
        w.window.stopCounting();
    else
        w.abort();
}

} // namespace

void TstFirmwareUpdateWindow::cleanup()
{
    dialoglook::resetFont();
    QApplication::setFont(m_font);
}

void TstFirmwareUpdateWindow::windowIsAsAgreed()
{
    const FirmwareWindow w;
    QCOMPARE(w.window.windowTitle(), QStringLiteral("Firmware Update"));
    QCOMPARE(w.window.windowModality(), Qt::NonModal);
    const Qt::WindowFlags flags = w.window.windowFlags();
    QVERIFY(!flags.testFlag(Qt::WindowStaysOnTopHint)); // it would hide boxes that must be answered
    QVERIFY(flags.testFlag(Qt::WindowCloseButtonHint));
    QVERIFY(!flags.testFlag(Qt::WindowContextHelpButtonHint));
    QVERIFY(!flags.testFlag(Qt::WindowMaximizeButtonHint));
    QCOMPARE(w.window.windowType(), Qt::Dialog);
    QCOMPARE(childByName<QLabel>(&w.window, "filePathLabel")->text(), QStringLiteral("Firmware File"));
    QCOMPARE(w.pathEdit()->placeholderText(), QStringLiteral("Click on \"Select File\" to choose directory"));
    QCOMPARE(w.pathEdit()->text(), QString());
    QVERIFY(w.pathEdit()->isReadOnly());
    QCOMPARE(w.button("selectFileButton")->text(), QStringLiteral("Select File"));
    QVERIFY(w.button("selectFileButton")->isEnabled());
    QCOMPARE(w.flashButton()->text(), QStringLiteral("Read and Flash File"));
    QVERIFY(!w.flashButton()->isEnabled());
    QVERIFY(w.messageBox()->isReadOnly());
    QCOMPARE(w.messageBox()->maximumBlockCount(), 10000);
    QCOMPARE(w.messages(), QString());
    QVERIFY(!w.bar()->isVisible());
    QVERIFY(!w.status()->isVisible());
    QCOMPARE(w.status()->text(), QStringLiteral("FPGA flashing complete..."));
    QCOMPARE(w.events, QStringList());
}

void TstFirmwareUpdateWindow::controlsAreNamed()
{
    FirmwareWindow w;
    QCOMPARE(dialoglook::withoutAccessibleName(w.window), QStringList());
    QVERIFY(!w.messageBox()->accessibleName().isEmpty());
    QVERIFY(!w.bar()->accessibleName().isEmpty());
    for (const char *name : {"selectFileButton", "flashButton"})
        QVERIFY(!w.button(name)->autoDefault() && !w.button(name)->isDefault());
    w.window.Slot_UpdateFirmwrFilePath(w.file(QStringLiteral("any.bin"), "x"));
    w.pathEdit()->setFocus();
    QCOMPARE(dialoglook::tabOrder(w.window),
             (QStringList{"filePathEdit", "selectFileButton", "flashButton", "messageBox"}));
}

void TstFirmwareUpdateWindow::nothingIsClipped_data()
{
    QTest::addColumn<QString>("family");
    QTest::addColumn<QString>("look");
    for (const char *family : {"Open Sans", "DejaVu Sans"}) {
        for (const char *look : {"idle", "running", "done", "aborted"})
            QTest::addRow("%s, %s", family, look) << QString(family) << QString(look);
    }
}

void TstFirmwareUpdateWindow::nothingIsClipped()
{
    QFETCH(QString, family);
    QFETCH(QString, look);
    QVERIFY(dialoglook::useFont(family));
    FirmwareWindow w;
    bringTo(w, look);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(dialoglook::clipped(w.window), QStringList());
    w.window.resize(1, 1);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(dialoglook::clipped(w.window), QStringList());
}

void TstFirmwareUpdateWindow::doubledFontFits()
{
    QFont font = m_font;
    font.setPixelSize(2 * QFontInfo(m_font).pixelSize());
    QApplication::setFont(font);
    for (const char *look : {"idle", "running", "done", "aborted"}) {
        FirmwareWindow w;
        bringTo(w, QString::fromLatin1(look));
        QCoreApplication::sendPostedEvents();
        QCOMPARE(dialoglook::clipped(w.window), QStringList());
        QCOMPARE(w.status()->font().pixelSize(), font.pixelSize());
        w.window.resize(1, 1);
        QCoreApplication::sendPostedEvents();
        const int placeholder =
            w.pathEdit()->fontMetrics().horizontalAdvance(w.pathEdit()->placeholderText());
        QVERIFY(w.pathEdit()->width() > placeholder + 6); // and its margins
    }
}

void TstFirmwareUpdateWindow::buttonsKeepTheirPlaces()
{
    FirmwareWindow w;
    const QRect select = w.button("selectFileButton")->geometry();
    const QRect flash = w.flashButton()->geometry();
    w.flashImage(1000);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(w.button("selectFileButton")->geometry(), select);
    QCOMPARE(w.flashButton()->geometry(), flash);
    QCOMPARE(flash.right(), w.pathEdit()->geometry().right());
    QCOMPARE(flash.top(), select.top());
}

void TstFirmwareUpdateWindow::lastMessageIsInView_data()
{
    QTest::addColumn<QString>("look");
    for (const char *look : {"running", "done", "aborted"})
        QTest::newRow(look) << look;
}

void TstFirmwareUpdateWindow::lastMessageIsInView()
{
    QFETCH(QString, look);
    FirmwareWindow w;
    constexpr int kRoomForTheBar = 40; // the messages leave it to the bar or the status
    w.window.resize(w.window.minimumSizeHint() + QSize(0, kRoomForTheBar));
    bringTo(w, look);
    QCoreApplication::sendPostedEvents();
    QTextCursor cursor(w.messageBox()->document());
    QVERIFY(w.messageBox()->cursorRect(cursor).top() < 0);
    cursor.movePosition(QTextCursor::End);
    QVERIFY(w.messageBox()->viewport()->rect().contains(w.messageBox()->cursorRect(cursor)));
}

void TstFirmwareUpdateWindow::earlierMessagesStayInView()
{
    FirmwareWindow w;
    w.window.resize(w.window.minimumSizeHint() + QSize(0, 40));
    w.flashImage(1000);
    QCoreApplication::sendPostedEvents();
    QScrollBar *bar = w.messageBox()->verticalScrollBar();
    QVERIFY(bar->maximum() >= 4);
    bar->setValue(2);
    w.abort(); // one message more
    QCoreApplication::sendPostedEvents();
    QCOMPARE(bar->value(), 2);
    w.window.resize(w.window.size() - QSize(0, 20));
    QCoreApplication::sendPostedEvents();
    QCOMPARE(bar->value(), 2);
    bar->setValue(bar->maximum()); // and follows again
    w.messageBox()->appendPlainText(QStringLiteral("more"));
    w.window.resize(w.window.size() + QSize(0, 20));
    w.window.resize(w.window.size() - QSize(0, 20));
    QCoreApplication::sendPostedEvents();
    QCOMPARE(bar->value(), bar->maximum());
}

void TstFirmwareUpdateWindow::dialogAsksForAFile()
{
    const FirmwareWindow w;
    w.click(w.button("selectFileButton"));
    const QFileDialog *dialog = w.fileDialog();
    QVERIFY(dialog);
    QVERIFY(dialog->isModal());
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Firmware File"));
    QCOMPARE(dialog->nameFilters(), QStringList{"Binary Files (*.bin)"});
    QCOMPARE(dialog->acceptMode(), QFileDialog::AcceptOpen);
    QVERIFY(dialog->testOption(QFileDialog::DontUseNativeDialog));
    QCOMPARE(w.events, QStringList());
}

void TstFirmwareUpdateWindow::dialogStartsAtTheFileChosenLast()
{
    FirmwareWindow w;
    w.window.Slot_UpdateFirmwrFilePath(w.file(QStringLiteral("any.bin"), "x"));
    w.click(w.button("selectFileButton"));
    QCOMPARE(w.fileDialog()->directory().canonicalPath(), QDir(w.folder.path()).canonicalPath());
    QCOMPARE(childByName<QLineEdit>(w.fileDialog(), "fileNameEdit")->text(), QStringLiteral("any.bin"));

    w.fileDialog()->reject();
    w.window.Slot_UpdateFirmwrFilePath(w.folder.filePath(QStringLiteral("gone/any.bin")));
    w.click(w.button("selectFileButton"));
    QVERIFY(w.fileDialog()->directory().exists()); // a folder that is gone is no place to start
}

void TstFirmwareUpdateWindow::dialogIsOpenOnlyOnce()
{
    FirmwareWindow w;
    w.click(w.button("selectFileButton"));
    const QFileDialog *first = w.fileDialog();
    w.window.Slot_SelectFilePath();
    QCOMPARE(w.fileDialog(), first); // a second one would end the test
    w.fileDialog()->reject();
    w.click(w.button("selectFileButton"));
    QVERIFY(w.fileDialog());
}

void TstFirmwareUpdateWindow::chosenFileIsShown()
{
    const FirmwareWindow w;
    const QString path = w.file(QStringLiteral("x_ANA_FPGA5_v2.bin"), "x");
    w.click(w.button("selectFileButton"));
    auto *name = childByName<QLineEdit>(w.fileDialog(), "fileNameEdit");
    name->selectAll();
    QTest::keyClicks(name, path);
    QTest::keyClick(name, Qt::Key_Return);
    QVERIFY(!w.fileDialog());
    QCOMPARE(w.pathEdit()->text(), path);
    QVERIFY(w.flashButton()->isEnabled());
    QVERIFY(!w.log.contains(kCannotOpen));
    QCOMPARE(w.events, QStringList()); // choosing sends nothing

    w.click(w.button("selectFileButton"));
    name = childByName<QLineEdit>(w.fileDialog(), "fileNameEdit");
    name->selectAll();
    const QString missing = w.folder.filePath(QStringLiteral("missing.bin"));
    QTest::keyClicks(name, missing);
    QTest::keyClick(name, Qt::Key_Return);
    QVERIFY(!w.fileDialog());
    QCOMPARE(w.pathEdit()->text(), missing);
    QVERIFY(!w.flashButton()->isEnabled());
    QVERIFY(w.log.contains(QtDebugMsg, kCannotOpen));
}

void TstFirmwareUpdateWindow::leftDialogChangesNothing()
{
    FirmwareWindow w;
    const QString path = w.file(QStringLiteral("any.bin"), "x");
    w.window.Slot_UpdateFirmwrFilePath(path);
    w.click(w.button("selectFileButton"));
    const QPointer<QFileDialog> dialog(w.fileDialog());
    QTest::keyClick(w.fileDialog(), Qt::Key_Escape);
    QVERIFY(!w.fileDialog());
    QTRY_VERIFY(!dialog);
    QCOMPARE(w.pathEdit()->text(), path);
    QVERIFY(w.flashButton()->isEnabled());
}

void TstFirmwareUpdateWindow::windowGoesWithTheMainWindow_data()
{
    QTest::addColumn<QString>("look");
    QTest::addColumn<QString>("open");
    for (const char *look : {"idle", "done", "aborted"})
        QTest::addRow("file dialog, %s", look) << QString(look) << "firmwareFileDialog";
    for (const char *look : {"running", "stalled"})
        QTest::addRow("question, %s", look) << QString(look) << "abortBox";
    for (const char *look : {"running", "stalled", "done", "aborted"})
        QTest::addRow("no box, %s", look) << QString(look) << "";
}

void TstFirmwareUpdateWindow::windowGoesWithTheMainWindow()
{
    QFETCH(QString, look);
    QFETCH(QString, open);
    auto mainWindow = std::make_unique<QWidget>();
    mainWindow->show();
    FirmwareWindow w(mainWindow.get());
    bringTo(w, look);
    if (open == QStringLiteral("abortBox"))
        w.clickFlash();
    else if (!open.isEmpty())
        w.click(w.button("selectFileButton"));
    const QPointer<QDialog> dialog(open.isEmpty() ? &w.window : w.window.findChild<QDialog *>(open));
    QVERIFY(dialog && dialog->isVisible());
    const QStringList before = w.events;
    mainWindow.reset();
    QVERIFY(!dialog);
    w.time.advance(1000);
    QCOMPARE(w.events, before); // no abort on its own
}

void TstFirmwareUpdateWindow::fileIsChosenAfterTheClosing()
{
    FirmwareWindow w;
    const QString path = w.file(QStringLiteral("any.bin"), "x");
    w.click(w.button("selectFileButton"));
    QVERIFY(w.window.close());
    QVERIFY(w.fileDialog());
    auto *name = childByName<QLineEdit>(w.fileDialog(), "fileNameEdit");
    name->selectAll();
    QTest::keyClicks(name, path);
    QTest::keyClick(name, Qt::Key_Return);
    QVERIFY(!w.fileDialog());
    w.show();
    QCOMPARE(w.pathEdit()->text(), path);
    QVERIFY(w.flashButton()->isEnabled());
}

void TstFirmwareUpdateWindow::noFileIsSelectedWhileAnUpdateRuns()
{
    FirmwareWindow w;
    w.flashImage(1000);
    w.click(w.button("selectFileButton"));
    QVERIFY(!w.fileDialog());
}

void TstFirmwareUpdateWindow::onlyAFileThatOpensCanBeFlashed_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("isEnabled");
    QTest::newRow("file") << "file" << true;
    QTest::newRow("empty file") << "empty" << true;
    QTest::newRow("symbolic link to a file") << "link" << true;
    QTest::newRow("no path") << "" << false;
    QTest::newRow("no file") << "missing" << false;
    QTest::newRow("folder") << "folder" << false;
    QTest::newRow("pipe") << "pipe" << false;
}

void TstFirmwareUpdateWindow::onlyAFileThatOpensCanBeFlashed()
{
    QFETCH(QString, kind);
    QFETCH(bool, isEnabled);
    FirmwareWindow w;
    const QString other = w.file(QStringLiteral("file"), "x");
    w.file(QStringLiteral("empty"), "");
    QVERIFY(QFile::link(other, w.folder.filePath(QStringLiteral("link"))));
    QVERIFY(QDir(w.folder.path()).mkdir(QStringLiteral("folder")));
    QCOMPARE(::mkfifo(QFile::encodeName(w.folder.filePath(QStringLiteral("pipe"))), 0666), 0);
    if (!isEnabled) // it was before
        w.window.Slot_UpdateFirmwrFilePath(other);
    QCOMPARE(w.flashButton()->isEnabled(), !isEnabled);

    const QString path = kind.isEmpty() ? kind : w.folder.filePath(kind);
    w.window.Slot_UpdateFirmwrFilePath(path);
    QCOMPARE(w.pathEdit()->text(), path);
    QCOMPARE(w.flashButton()->isEnabled(), isEnabled);
    QCOMPARE(w.log.contains(QtDebugMsg, kCannotOpen), !isEnabled);
    QCOMPARE(w.events, QStringList());
}

void TstFirmwareUpdateWindow::fileThatBecomesUnreadableIsRefused()
{
    FirmwareWindow w;
    const QString path = w.file(QStringLiteral("x_ANA_FPGA5_v2.bin"), FirmwareWindow::image(1000));
    w.window.Slot_UpdateFirmwrFilePath(path);
    QVERIFY(QFile::setPermissions(path, {}));
    const DroppedPrivileges ordinary;
    w.clickFlash();
    QCOMPARE(w.refusal(), kCannotOpen);
    w.leaveRefusal();
    w.window.Slot_UpdateFirmwrFilePath(path);
    QVERIFY(!w.flashButton()->isEnabled());
    QVERIFY(w.log.contains(QtDebugMsg, kCannotOpen));
    QVERIFY(w.commands.isEmpty());
}

void TstFirmwareUpdateWindow::operationBeginsWithALookAtTheFile()
{
    FirmwareWindow w;
    const QString path = w.file(QStringLiteral("any.bin"), "x");
    w.window.Slot_UpdateFirmwrFilePath(path);
    QVERIFY(QFile::remove(path));
    w.window.beginOperation();
    QVERIFY(!w.flashButton()->isEnabled());
    QVERIFY(w.log.contains(QtDebugMsg, kCannotOpen));
    w.file(QStringLiteral("any.bin"), "x");
    w.window.beginOperation();
    QVERIFY(w.flashButton()->isEnabled());
    QCOMPARE(w.pathEdit()->text(), path);
    QCOMPARE(w.events, QStringList());
}

QTEST_MAIN(TstFirmwareUpdateWindow)
#include "tst_firmwareupdate_window.moc"
