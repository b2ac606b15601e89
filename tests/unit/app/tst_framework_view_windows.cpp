#include "firmware/firmwareupdate.h"
#include "help/helpengine.h"
#include "help/helpwindow.h"
#include "mainwindowfixture.h"
#include "protocol/records/fpgafwcommand.h"

#include <QFile>
#include <QFileDialog>
#include <QPushButton>
#include <QTextBrowser>

/// A text field of a desktop on which these keys delete the line.
class GreedyField : public QLineEdit
{
public:
    using QLineEdit::QLineEdit;
    bool event(QEvent *event) override
    {
        if (event->type() == QEvent::ShortcutOverride) {
            event->accept();
            return true;
        }
        return QLineEdit::event(event);
    }

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->key() == Qt::Key_U)
            clear();
    }
};

/// The windows beside the main window: how they are opened, joined and closed.
class TstFrameworkViewWindows : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m.reset(); }

    void keyOpensItsWindow_data();
    void keyOpensItsWindow();
    void keyOpensTheManualOnlyThen();
    void keysWorkInTheOtherWindowsToo();
    void controlAndUOpensFromATextFieldToo();
    void minimizedWindowComesBack();
    void linkOfTheShortHelpOpensTheManual();
    void firmwareUpdateLooksAtItsFileAgain();
    void wishesOfTheFirmwareUpdateArePassedOn();
    void repliesArePassedToTheFirmwareUpdate();
    void closingClosesAllWindowsInOrder();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    FirmwareUpdate *firmware() const { return m->view->firmwareUpdate(); }
    HelpEngine *manual() const { return m->view->findChild<HelpEngine *>(); }
    HelpWindow *shortHelp() const { return m->view->findChild<HelpWindow *>(); }

    std::unique_ptr<MainWindowFixture> m;
    QStringList m_closed;
};

void TstFrameworkViewWindows::init()
{
    m = std::make_unique<MainWindowFixture>();
    m->show();
    m_closed.clear();
}

bool TstFrameworkViewWindows::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Close)
        m_closed << QString::fromLatin1(watched->metaObject()->className());
    return QObject::eventFilter(watched, event);
}

void TstFrameworkViewWindows::keyOpensItsWindow_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("withControl");
    QTest::addColumn<bool>("manual");
    QTest::addColumn<bool>("firmware");
    QTest::newRow("F1") << int(Qt::Key_F1) << false << true << false;
    QTest::newRow("Ctrl+U") << int(Qt::Key_U) << true << false << true;
    QTest::newRow("U alone") << int(Qt::Key_U) << false << false << false;
}

void TstFrameworkViewWindows::keyOpensItsWindow()
{
    QFETCH(int, key);
    QFETCH(bool, withControl);
    QVERIFY(!manual()->isVisible());
    QVERIFY(!firmware()->isVisible());
    m->child<QPushButton>("systemReportButton")->setFocus();
    QTest::keyClick(m->view->windowHandle(), Qt::Key(key),
                    withControl ? Qt::ControlModifier : Qt::NoModifier);
    QTEST(manual()->isVisible(), "manual");
    QTEST(firmware()->isVisible(), "firmware");
    QVERIFY(manual()->isWindow());
}

void TstFrameworkViewWindows::keyOpensTheManualOnlyThen()
{
    const auto *page = childByName<QTextBrowser>(manual(), "helpBrowser");
    QCoreApplication::processEvents();
    QCOMPARE(page->source(), QUrl()); // the start does not wait for the manual
    QTest::keyClick(m->view->windowHandle(), Qt::Key_F1);
    QCOMPARE(page->source(), QUrl(QStringLiteral("qthelp://zrt.vxconfig/doc/index.html")));
    QVERIFY(!page->toPlainText().isEmpty());
}

void TstFrameworkViewWindows::keysWorkInTheOtherWindowsToo()
{
    m->view->Slot_FirmwareUpdate();
    QVERIFY(QTest::qWaitForWindowActive(firmware()));
    QTest::keyClick(firmware()->windowHandle(), Qt::Key_F1);
    QVERIFY(manual()->isVisible());
    firmware()->close();
    QVERIFY(QTest::qWaitForWindowActive(manual()));
    QTest::keyClick(manual()->windowHandle(), Qt::Key_U, Qt::ControlModifier);
    QVERIFY(firmware()->isVisible());
}

void TstFrameworkViewWindows::controlAndUOpensFromATextFieldToo()
{
    auto *field = new GreedyField(QStringLiteral("1000"), m->view->centralWidget());
    field->show();
    field->setFocus();
    QVERIFY(field->hasFocus());
    QTest::keyClick(m->view->windowHandle(), Qt::Key_U, Qt::ControlModifier);
    QVERIFY(firmware()->isVisible());
    QCOMPARE(field->text(), QStringLiteral("1000"));
    firmware()->close();
    m->view->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m->view.get()));
    QTest::keyClick(m->view->windowHandle(), Qt::Key_U,
                    Qt::ControlModifier | Qt::ShiftModifier); // not reserved
    QVERIFY(!firmware()->isVisible());
    QCOMPARE(field->text(), QString());
}

void TstFrameworkViewWindows::minimizedWindowComesBack()
{
    m->view->Slot_FirmwareUpdate();
    firmware()->showMinimized();
    QVERIFY(firmware()->isMinimized());
    m->view->Slot_FirmwareUpdate();
    QVERIFY(!firmware()->isMinimized());
    QVERIFY(firmware()->isVisible());
}

void TstFrameworkViewWindows::linkOfTheShortHelpOpensTheManual()
{
    m->view->displayHelp();
    auto *text = childByName<QTextBrowser>(shortHelp(), "helpTextBox");
    text->moveCursor(QTextCursor::End); // the link is the last line
    text->setFocus();
    QTest::keyClick(text, Qt::Key_Tab); // to the link
    QTest::keyClick(text, Qt::Key_Return);
    QVERIFY(manual()->isVisible());
}

void TstFrameworkViewWindows::firmwareUpdateLooksAtItsFileAgain()
{
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("x_ANA_FPGA5_v2.bin")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    firmware()->Slot_UpdateFirmwrFilePath(file.fileName());
    QSignalSpy commands(m->view.get(), &Framework_View::Signal_FirmwareCommand);
    QSignalSpy starts(m->view.get(), &Framework_View::Signal_StartFPGAprocess);
    auto *button = childByName<QPushButton>(firmware(), "flashButton");
    QVERIFY(button->isEnabled());

    QVERIFY(file.rename(folder.filePath(QStringLiteral("elsewhere"))));
    m->view->Slot_FirmwareUpdate();
    QVERIFY(!button->isEnabled());
    QVERIFY(file.rename(folder.filePath(QStringLiteral("x_ANA_FPGA5_v2.bin"))));
    m->view->Slot_FirmwareUpdate();
    QVERIFY(button->isEnabled());
    QCOMPARE(commands.count(), 0);
    QCOMPARE(starts.count(), 0);
}

void TstFrameworkViewWindows::wishesOfTheFirmwareUpdateArePassedOn()
{
    QStringList heard;
    connect(m->view.get(), &Framework_View::Signal_FirmwareCommand, this, [&heard](const QVariant &command) {
        heard << QStringLiteral("command %1").arg(command.value<FPGAfwCommand>().b3);
    });
    connect(m->view.get(), &Framework_View::Signal_AbrtFrmw, this,
            [&heard] { heard << QStringLiteral("abort"); });
    connect(m->view.get(), &Framework_View::Signal_StartFPGAprocess, this,
            [&heard] { heard << QStringLiteral("start"); });
    connect(m->view.get(), &Framework_View::Signal_FirmwrFilePath, this,
            [&heard](const QString &path) { heard << path; });
    FPGAfwCommand erase;
    erase.b3 = quint8(FpgaCommandCode::ErasePage);
    emit firmware()->Signal_commandMsg(QVariant::fromValue(erase));
    emit firmware()->Signal_AbortFrmwr();
    emit firmware()->Signal_StartProcedure();
    emit firmware()->Signal_SaveFile(QStringLiteral("/images/a.bin"));
    QCOMPARE(heard, (QStringList{"command 224", "abort", "start", "/images/a.bin"}));
}

void TstFrameworkViewWindows::repliesArePassedToTheFirmwareUpdate()
{
    QSignalSpy counted(firmware(), &FirmwareUpdate::Signal_IncrementCntr);
    emit m->view->Signal_FastSystemStatus(QVariant(17));
    QCOMPARE(counted.count(), 1);
    QCOMPARE(counted.first().first().toInt(), 17);
}

void TstFrameworkViewWindows::closingClosesAllWindowsInOrder()
{
    m->view->displayHelp();
    m->view->Slot_FirmwareUpdate();
    m->view->showWarning(QStringLiteral("beware"));
    manual()->show();
    m->view->portLister()->show();
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows)
        window->installEventFilter(this);
    m->view->close();
    QCOMPARE(m_closed, (QStringList{"Framework_View", "HelpWindow", "FirmwareUpdate", "WarningBox",
                                    "HelpEngine", "PortLister"}));
    for (QWidget *window : windows)
        QVERIFY2(!window->isVisible(), window->metaObject()->className());
}

QTEST_MAIN(TstFrameworkViewWindows)

#include "tst_framework_view_windows.moc"
