#include "base/gui/fonts.h"
#include "help/helpwindow.h"
#include "mainwindowfixture.h"
#include "support/messagecatcher.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QToolTip>

/// Help button and warning box.
class TstFrameworkViewDialogs : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void helpPress_data();
    void helpPress();
    void helpPressByKey();
    void heldButtonResetsOnce();
    void resetShowsAToolTip();
    void heldButtonIsLookedAtEachHalfSecond();
    void periodsOfThePressCanBeSet();
    void secondPressStartsAnew();
    void helpGesturesAreLogged();
    void displayHelpShowsTheHelp();

    void warningDoesNotBlock();
    void secondWarningRewritesTheFirst();
    void warningKeepsItsSize_data();
    void warningKeepsItsSize();

private:
    std::unique_ptr<MainWindowFixture> m;
};

void TstFrameworkViewDialogs::init()
{
    m = std::make_unique<MainWindowFixture>();
    m->show();
}

void TstFrameworkViewDialogs::cleanup()
{
    m.reset();
}

void TstFrameworkViewDialogs::helpPress_data()
{
    QTest::addColumn<int>("ms");
    QTest::addColumn<bool>("help");
    QTest::addColumn<int>("resets");
    QTest::newRow("0 ms") << 0 << true << 0;
    QTest::newRow("1000 ms") << 1000 << true << 0;
    QTest::newRow("exactly 1100 ms") << 1100 << true << 0;
    QTest::newRow("1101 ms") << 1101 << false << 0;
    QTest::newRow("1500 ms does neither") << 1500 << false << 0;
    QTest::newRow("1999 ms") << 1999 << false << 0;
    QTest::newRow("2000 ms") << 2000 << false << 1;
    QTest::newRow("3000 ms") << 3000 << false << 1;
}

void TstFrameworkViewDialogs::helpPress()
{
    QFETCH(int, ms);
    QFETCH(bool, help);
    QFETCH(int, resets);
    auto *button = m->child<QPushButton>("helpButton");
    QSignalSpy reset(m->view.get(), &Framework_View::Signal_SystemReset);
    m->time.advance(321); // the clock of the window beats at other moments
    QTest::mousePress(button, Qt::LeftButton);
    m->time.advance(ms);
    QVERIFY(!m->view->findChild<HelpWindow *>()->isVisible());
    QTest::mouseRelease(button, Qt::LeftButton);
    m->time.advance(10000); // nothing comes after the release
    QCOMPARE(m->view->findChild<HelpWindow *>()->isVisible(), help);
    QCOMPARE(reset.count(), resets);
}

void TstFrameworkViewDialogs::helpPressByKey()
{
    auto *button = m->child<QPushButton>("helpButton");
    QSignalSpy reset(m->view.get(), &Framework_View::Signal_SystemReset);
    QTest::keyPress(button, Qt::Key_Space);
    m->time.advance(2100);
    QTest::keyRelease(button, Qt::Key_Space);
    QCOMPARE(reset.count(), 1);
    QTest::keyClick(button, Qt::Key_Space);
    QVERIFY(m->view->findChild<HelpWindow *>()->isVisible());
}

void TstFrameworkViewDialogs::heldButtonResetsOnce()
{
    QSignalSpy reset(m->view.get(), &Framework_View::Signal_SystemReset);
    QTest::mousePress(m->child<QPushButton>("helpButton"), Qt::LeftButton);
    m->time.advance(1999);
    QCOMPARE(reset.count(), 0);
    m->time.advance(1);
    QCOMPARE(reset.count(), 1);
    m->time.advance(60000);
    QCOMPARE(reset.count(), 1);
}

void TstFrameworkViewDialogs::heldButtonIsLookedAtEachHalfSecond()
{
    DisplayPeriods periods;
    periods.resetPress = std::chrono::milliseconds(1600); // the fourth look is the first behind it
    m->restart(periods);
    m->show();
    QSignalSpy reset(m->view.get(), &Framework_View::Signal_SystemReset);
    QTest::mousePress(m->child<QPushButton>("helpButton"), Qt::LeftButton);
    m->time.advance(1999);
    QCOMPARE(reset.count(), 0);
    m->time.advance(1);
    QCOMPARE(reset.count(), 1);
}

void TstFrameworkViewDialogs::periodsOfThePressCanBeSet()
{
    DisplayPeriods periods;
    periods.helpPress = std::chrono::milliseconds(20);
    periods.resetPress = std::chrono::milliseconds(40);
    periods.longPressPoll = std::chrono::milliseconds(15);
    m->restart(periods);
    m->show();
    auto *button = m->child<QPushButton>("helpButton");
    QSignalSpy reset(m->view.get(), &Framework_View::Signal_SystemReset);
    QTest::mousePress(button, Qt::LeftButton);
    m->time.advance(44);
    QCOMPARE(reset.count(), 0);
    m->time.advance(1);
    QCOMPARE(reset.count(), 1);
    QTest::mouseRelease(button, Qt::LeftButton);
    QVERIFY(!m->view->findChild<HelpWindow *>()->isVisible());
    QTest::mousePress(button, Qt::LeftButton);
    m->time.advance(20);
    QTest::mouseRelease(button, Qt::LeftButton);
    QVERIFY(m->view->findChild<HelpWindow *>()->isVisible());
}

void TstFrameworkViewDialogs::resetShowsAToolTip()
{
    QTest::mousePress(m->child<QPushButton>("helpButton"), Qt::LeftButton);
    m->time.advance(2000);
    QVERIFY(QToolTip::isVisible());
    QCOMPARE(QToolTip::text(), QString("System Reset Sent"));
}

void TstFrameworkViewDialogs::secondPressStartsAnew()
{
    auto *button = m->child<QPushButton>("helpButton");
    QSignalSpy reset(m->view.get(), &Framework_View::Signal_SystemReset);
    QTest::mousePress(button, Qt::LeftButton);
    m->time.advance(1400);
    QTest::mouseRelease(button, Qt::LeftButton);
    m->time.advance(50);
    QTest::mousePress(button, Qt::LeftButton);
    m->time.advance(1500);
    QTest::mouseRelease(button, Qt::LeftButton);
    QCOMPARE(reset.count(), 0);
    QVERIFY(!m->view->findChild<HelpWindow *>()->isVisible());
}

void TstFrameworkViewDialogs::helpGesturesAreLogged()
{
    const MessageCatcher log;
    auto *button = m->child<QPushButton>("helpButton");
    QTest::mousePress(button, Qt::LeftButton);
    QVERIFY(log.contains(QStringLiteral("***Help Pressed")));
    QVERIFY(!log.contains(QStringLiteral("***Help released")));
    QTest::mouseRelease(button, Qt::LeftButton);
    QVERIFY(log.contains(QStringLiteral("***Help released")));
}

void TstFrameworkViewDialogs::displayHelpShowsTheHelp()
{
    m->view->displayHelp();
    QVERIFY(m->view->findChild<HelpWindow *>()->isVisible());
}

void TstFrameworkViewDialogs::warningDoesNotBlock()
{
    m->view->showWarning(QStringLiteral("Something is wrong."));
    const auto *box = m->child<QMessageBox>("warningBox");
    QVERIFY(box->isVisible());
    QVERIFY(!box->isModal());
    QVERIFY(box->isWindow());
    QCOMPARE(box->windowTitle(), QString("Warning"));
    QCOMPARE(box->icon(), QMessageBox::Warning);
    QCOMPARE(box->text(), QString("Something is wrong."));
    QVERIFY(box->windowFlags().testFlag(Qt::CustomizeWindowHint));
    QVERIFY(box->windowFlags().testFlag(Qt::WindowCloseButtonHint));
    QVERIFY(box->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    QVERIFY(!(box->windowFlags() & (Qt::WindowMinMaxButtonsHint | Qt::WindowContextHelpButtonHint)));
    QSignalSpy list(m->view.get(), &Framework_View::Signal_SystemList);
    QTest::mouseClick(m->child<QPushButton>("systemReportButton"), Qt::LeftButton);
    QCOMPARE(list.count(), 1);
}

void TstFrameworkViewDialogs::secondWarningRewritesTheFirst()
{
    m->view->showWarning(QStringLiteral("first"));
    m->view->showWarning(QStringLiteral("second"));
    const auto boxes = m->view->findChildren<QMessageBox *>();
    QCOMPARE(boxes.size(), 1);
    QVERIFY(boxes.first()->isVisible());
    QCOMPARE(boxes.first()->text(), QString("second"));

    boxes.first()->close();
    m->view->showWarning(QStringLiteral("third"));
    QVERIFY(boxes.first()->isVisible());
    QCOMPARE(boxes.first()->text(), QString("third"));
}

void TstFrameworkViewDialogs::warningKeepsItsSize_data()
{
    QTest::addColumn<QString>("family");
    QTest::addColumn<QString>("text");

    const QString longest = QStringLiteral(
        "The firmware versions in the individual modules are different. This may lead to communication "
        "problems. We strongly recommend that you perform a firmware update. The latest firmware can be "
        "found on the qor Torvex Support website.\n\nhttps://www.qor.example/downloads/telemetry/torvex");
    for (const char *family : {"Open Sans", "DejaVu Sans"}) {
        QTest::addRow("%s, a word", family) << QString::fromLatin1(family) << QStringLiteral("Warning");
        QTest::addRow("%s, the longest", family) << QString::fromLatin1(family) << longest;
    }
}

void TstFrameworkViewDialogs::warningKeepsItsSize()
{
    QFETCH(QString, family);
    QFETCH(QString, text);
    auto *box = m->child<QMessageBox>("warningBox");
    QFont font = fonts::text();
    font.setFamily(family);
    box->setFont(font);
    m->view->showWarning(text);
    QVERIFY(QTest::qWaitForWindowExposed(box));
    QCoreApplication::processEvents();
    QCOMPARE(box->size(), QSize(500, 200));
    const auto *label = box->findChild<QLabel *>(QStringLiteral("qt_msgbox_label"));
    QVERIFY(box->rect().contains(label->geometry()));
    QVERIFY(label->heightForWidth(label->width()) <= label->height());
}

QTEST_MAIN(TstFrameworkViewDialogs)

#include "tst_framework_view_dialogs.moc"
