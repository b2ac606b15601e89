#include "base/gui/fonts.h"
#include "help/helpwindow.h"
#include "mainwindowfixture.h"
#include "support/messagecatcher.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QToolTip>
#include <functional>

using model_Namespace::Settings;

/// Connection dialog and what it tells, help button and warning box.
class TstFrameworkViewDialogs : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void pressOpensTheConnectionDialog_data();
    void pressOpensTheConnectionDialog();
    void pressOpensItAlsoOnADisabledField();
    void keyOnTheButtonOpensIt_data();
    void keyOnTheButtonOpensIt();
    void pressGoesOnToItsWidget();
    void buttonIsUpAgainAfterTheDialog();
    void pressWhileTheDialogIsOpenDoesNotNest();
    void otherEventsDoNotOpenTheDialog_data();
    void otherEventsDoNotOpenTheDialog();
    void otherWidgetsDoNotOpenTheDialog();
    void confirmedPortIsShownAndPassedOn();

    void comSettingsAreEmittedFirst();
    void networkSettingsAreEmittedLast();
    void networkSettingsWithoutAddressAreOnlyEmitted();
    void activatedModeIsShown_data();
    void activatedModeIsShown();
    void serverAddressIsShown_data();
    void serverAddressIsShown();

    void helpPress_data();
    void helpPress();
    void helpPressByKey();
    void heldButtonResetsOnce();
    void resetShowsAToolTip();
    void secondPressStartsAnew();
    void helpGesturesAreLogged();
    void displayHelpShowsTheHelp();

    void warningDoesNotBlock();
    void secondWarningRewritesTheFirst();
    void warningKeepsItsSize_data();
    void warningKeepsItsSize();

private:
    PortLister *lister() const { return m->view->portLister(); }

    // Does something that may open the dialog; in the dialog, runs `inside` and closes it. True if it opened.
    bool opensDialog(
        const std::function<void()> &action, const std::function<void()> &inside = [] {});

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

bool TstFrameworkViewDialogs::opensDialog(const std::function<void()> &action,
                                          const std::function<void()> &inside)
{
    bool ran = false;
    bool opened = false;
    QTimer::singleShot(0, lister(), [&] {
        ran = true;
        opened = lister()->isVisible();
        if (opened)
            inside();
        lister()->close();
    });
    action();
    [&] { QTRY_VERIFY(ran); }();
    return opened;
}

void TstFrameworkViewDialogs::pressOpensTheConnectionDialog_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("button");
    for (const char *name : {"comEdit", "ipEdit", "configButton"}) {
        QTest::addRow("%s", name) << QByteArray(name) << int(Qt::LeftButton);
        QTest::addRow("%s, right button", name) << QByteArray(name) << int(Qt::RightButton);
    }
}

void TstFrameworkViewDialogs::pressOpensTheConnectionDialog()
{
    QFETCH(QByteArray, name);
    QFETCH(int, button);
    MessageCatcher log;
    bool modal = false;
    QString focus;
    const bool opened =
        opensDialog([&] { QTest::mousePress(m->child<QWidget>(name), Qt::MouseButton(button)); },
                    [&] {
                        modal = lister()->isModal();
                        focus = lister()->focusWidget() ? lister()->focusWidget()->objectName() : QString();
                    });
    QVERIFY(opened);
    QVERIFY(modal);
    QCOMPARE(focus, QString("comBox"));
    QCOMPARE(log.lines().filter("**Com Box activated").size(), 1);
    QVERIFY(!lister()->isVisible());
    QVERIFY(lister()->isModal()); // it stays what it was made, not only while it runs
}

void TstFrameworkViewDialogs::pressOpensItAlsoOnADisabledField()
{
    auto *ip = m->child<QLineEdit>("ipEdit");
    ip->setEnabled(false);
    QVERIFY(opensDialog([&] { QTest::mousePress(ip, Qt::LeftButton); }));
}

void TstFrameworkViewDialogs::keyOnTheButtonOpensIt_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("space") << Qt::Key_Space;
    QTest::newRow("return") << Qt::Key_Return;
    QTest::newRow("enter") << Qt::Key_Enter;
}

void TstFrameworkViewDialogs::keyOnTheButtonOpensIt()
{
    QFETCH(Qt::Key, key);
    auto *button = m->child<QPushButton>("configButton");
    button->setFocus();
    QVERIFY(opensDialog([&] { QTest::keyPress(button, key); }));
    QTRY_VERIFY(!button->isDown());
    QVERIFY(!opensDialog([&] { QTest::keyPress(m->child<QLineEdit>("comEdit"), key); }));
}

void TstFrameworkViewDialogs::pressGoesOnToItsWidget()
{
    auto *button = m->child<QPushButton>("configButton");
    QSignalSpy pressed(button, &QPushButton::pressed);
    QVERIFY(opensDialog([&] { QTest::mousePress(button, Qt::LeftButton); }));
    QCOMPARE(pressed.count(), 1);
}

void TstFrameworkViewDialogs::buttonIsUpAgainAfterTheDialog()
{
    auto *button = m->child<QPushButton>("configButton");
    QVERIFY(opensDialog([&] { QTest::mousePress(button, Qt::LeftButton); }));
    QTRY_VERIFY(!button->isDown());
    QVERIFY(opensDialog([&] { QTest::mousePress(button, Qt::LeftButton); }));
}

void TstFrameworkViewDialogs::pressWhileTheDialogIsOpenDoesNotNest()
{
    MessageCatcher log;
    const bool opened = opensDialog([&] { QTest::mousePress(m->child<QWidget>("comEdit"), Qt::LeftButton); },
                                    [&] {
                                        for (const char *name : {"comEdit", "ipEdit", "configButton"})
                                            QTest::mousePress(m->child<QWidget>(name), Qt::LeftButton);
                                        QVERIFY(lister()->isVisible());
                                    });
    QVERIFY(opened);
    QCOMPARE(log.lines().filter("**Com Box activated").size(), 1);
    QVERIFY(!log.containsText("Recursive"));
}

void TstFrameworkViewDialogs::otherEventsDoNotOpenTheDialog_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name : {"comEdit", "ipEdit", "configButton"})
        QTest::addRow("%s", name) << QByteArray(name);
}

void TstFrameworkViewDialogs::otherEventsDoNotOpenTheDialog()
{
    QFETCH(QByteArray, name);
    auto *widget = m->child<QWidget>(name);
    QVERIFY(!opensDialog([&] { QTest::mouseRelease(widget, Qt::LeftButton); }));
    QVERIFY(!opensDialog([&] { QTest::mouseMove(widget, QPoint(3, 3)); }));
    QVERIFY(!opensDialog([&] {
        QMouseEvent event(QEvent::MouseButtonDblClick, QPointF(3, 3), Qt::LeftButton, Qt::LeftButton, {});
        QApplication::sendEvent(widget, &event);
    }));
    QVERIFY(!opensDialog([&] { QTest::keyClick(widget, Qt::Key_A); }));
}

void TstFrameworkViewDialogs::otherWidgetsDoNotOpenTheDialog()
{
    for (const char *name : {"connectionLamp", "txLamp", "rxLamp", "statusBox", "systemReportButton"})
        QVERIFY(!opensDialog([&] { QTest::mouseClick(m->child<QWidget>(name), Qt::LeftButton); }));
}

void TstFrameworkViewDialogs::confirmedPortIsShownAndPassedOn()
{
    QStringList ports;
    connect(m->view.get(), &Framework_View::Signal_SelectedComPort, this,
            [&](Settings &settings) { ports.append(settings.portName); });
    const bool opened = opensDialog([&] { QTest::mousePress(m->child<QWidget>("comEdit"), Qt::LeftButton); },
                                    [&] {
                                        auto *box = lister()->findChild<QLineEdit *>("comBox");
                                        QTest::keyClicks(box, QStringLiteral("17"));
                                        auto *open = lister()->findChild<QPushButton *>("openBtn");
                                        QTest::mouseClick(open, Qt::LeftButton);
                                    });
    QVERIFY(opened);
    QCOMPARE(ports, QStringList{"COM17"});
    QCOMPARE(m->child<QLineEdit>("comEdit")->text(), QString("COM17"));
}

void TstFrameworkViewDialogs::comSettingsAreEmittedFirst()
{
    auto *com = m->child<QLineEdit>("comEdit");
    auto *ip = m->child<QLineEdit>("ipEdit");
    com->setEnabled(false);
    Settings settings;
    settings.portName = QStringLiteral("COM9");
    QStringList seen;
    connect(m->view.get(), &Framework_View::Signal_SelectedComPort, this, [&](Settings &emitted) {
        seen.append(QStringLiteral("%1 [%2] %3 %4")
                        .arg(emitted.portName, com->text())
                        .arg(com->isEnabled())
                        .arg(ip->isEnabled()));
        QCOMPARE(&emitted, &settings);
    });
    m->view->handleCommSettings(settings);
    QCOMPARE(seen, QStringList{"COM9 [] 0 1"});
    QCOMPARE(com->text(), QString("COM9"));
    QVERIFY(com->isEnabled());
    QVERIFY(!ip->isEnabled());
}

void TstFrameworkViewDialogs::networkSettingsAreEmittedLast()
{
    auto *com = m->child<QLineEdit>("comEdit");
    auto *ip = m->child<QLineEdit>("ipEdit");
    ip->setEnabled(false);
    Settings settings;
    settings.ipAddress = QStringLiteral("10.0.0.7");
    QStringList seen;
    connect(m->view.get(), &Framework_View::Signal_ServerGateway, this, [&](Settings &emitted) {
        seen.append(QStringLiteral("[%1] %2 %3").arg(ip->text()).arg(com->isEnabled()).arg(ip->isEnabled()));
        QCOMPARE(&emitted, &settings);
    });
    m->view->handleNetworkSettings(settings);
    QCOMPARE(seen, QStringList{"[10.0.0.7] 0 1"});
}

void TstFrameworkViewDialogs::networkSettingsWithoutAddressAreOnlyEmitted()
{
    auto *com = m->child<QLineEdit>("comEdit");
    auto *ip = m->child<QLineEdit>("ipEdit");
    ip->setEnabled(false);
    int emissions = 0;
    connect(m->view.get(), &Framework_View::Signal_ServerGateway, this, [&] { ++emissions; });
    Settings settings;
    m->view->handleNetworkSettings(settings);
    QCOMPARE(emissions, 1);
    QCOMPARE(ip->text(), QString("192.168.0.62"));
    QVERIFY(!ip->isEnabled());
    QVERIFY(com->isEnabled());
}

void TstFrameworkViewDialogs::activatedModeIsShown_data()
{
    QTest::addColumn<int>("commType");
    QTest::addColumn<bool>("comEnabled");
    QTest::addColumn<bool>("ipEnabled");
    QTest::newRow("Ethernet") << 1 << false << true;
    QTest::newRow("serial") << 2 << true << false;
    QTest::newRow("none") << 0 << true << true;
    QTest::newRow("unknown") << 9 << true << true;
}

void TstFrameworkViewDialogs::activatedModeIsShown()
{
    QFETCH(int, commType);
    QFETCH(bool, comEnabled);
    QFETCH(bool, ipEnabled);
    Settings settings;
    settings.portName = QStringLiteral("COM12");
    settings.ipAddress = QStringLiteral("10.0.0.7");
    settings.commType = static_cast<Comm_Type>(commType);
    emit lister()->Signal_ActivateMode(settings);
    QCOMPARE(m->child<QLineEdit>("comEdit")->text(), QString("COM12"));
    QCOMPARE(m->child<QLineEdit>("ipEdit")->text(), QString("192.168.0.62"));
    QCOMPARE(m->child<QLineEdit>("comEdit")->isEnabled(), comEnabled);
    QCOMPARE(m->child<QLineEdit>("ipEdit")->isEnabled(), ipEnabled);
}

void TstFrameworkViewDialogs::serverAddressIsShown_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("shown");
    QTest::newRow("address") << "10.1.2.3"
                             << "10.1.2.3";
    QTest::newRow("empty") << ""
                           << "192.168.0.62";
}

void TstFrameworkViewDialogs::serverAddressIsShown()
{
    QFETCH(QString, address);
    QFETCH(QString, shown);
    m->view->handleServerSettings(address, QStringLiteral("1234"));
    QCOMPARE(m->child<QLineEdit>("ipEdit")->text(), shown);
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
