#include "mainwindowfixture.h"
#include "support/messagecatcher.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPushButton>
#include <functional>

using model_Namespace::Settings;

namespace {

/// A further key press of a key that is held down.
void repeatKey(QWidget *widget, Qt::Key key)
{
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
    QApplication::sendEvent(widget, &press);
}

} // namespace

/// How the connection dialog opens, and what the window makes of its choice.
class TstFrameworkViewConnection : public QObject
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
    void heldKeyDecidesNothingInTheDialog_data();
    void heldKeyDecidesNothingInTheDialog();
    void dialogOpensWithThePortsOfThisMoment();
    void pressGoesOnToTheButton();
    void pressGoesOnToTheField_data();
    void pressGoesOnToTheField();
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

private:
    PortLister *lister() const { return m->view->portLister(); }

    // Does something that may open the dialog; in the dialog, runs `inside` and closes it. True if it opened.
    bool opensDialog(
        const std::function<void()> &action, const std::function<void()> &inside = [] {});

    std::unique_ptr<MainWindowFixture> m;
};

void TstFrameworkViewConnection::init()
{
    m = std::make_unique<MainWindowFixture>();
    m->show();
}

void TstFrameworkViewConnection::cleanup()
{
    m.reset();
}

bool TstFrameworkViewConnection::opensDialog(const std::function<void()> &action,
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

void TstFrameworkViewConnection::pressOpensTheConnectionDialog_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("button");
    for (const char *name : {"comEdit", "ipEdit", "configButton"}) {
        QTest::addRow("%s", name) << QByteArray(name) << int(Qt::LeftButton);
        QTest::addRow("%s, right button", name) << QByteArray(name) << int(Qt::RightButton);
    }
}

void TstFrameworkViewConnection::pressOpensTheConnectionDialog()
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

void TstFrameworkViewConnection::pressOpensItAlsoOnADisabledField()
{
    auto *ip = m->child<QLineEdit>("ipEdit");
    ip->setEnabled(false);
    QVERIFY(opensDialog([&] { QTest::mousePress(ip, Qt::LeftButton); }));
}

void TstFrameworkViewConnection::keyOnTheButtonOpensIt_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<bool>("opens");
    QTest::newRow("space") << Qt::Key_Space << true;
    QTest::newRow("return") << Qt::Key_Return << false;
    QTest::newRow("enter") << Qt::Key_Enter << false;
}

void TstFrameworkViewConnection::keyOnTheButtonOpensIt()
{
    QFETCH(Qt::Key, key);
    QFETCH(bool, opens);
    auto *button = m->child<QPushButton>("configButton");
    button->setFocus();
    QCOMPARE(opensDialog([&] { QTest::keyPress(button, key); }), opens);
    QTRY_VERIFY(!button->isDown());
    QVERIFY(!opensDialog([&] { repeatKey(button, key); }));
    QVERIFY(!opensDialog([&] { QTest::keyPress(m->child<QLineEdit>("comEdit"), key); }));
}

void TstFrameworkViewConnection::heldKeyDecidesNothingInTheDialog_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<bool>("isSerial");
    QTest::addColumn<QByteArray>("focus");
    QTest::newRow("return, number") << Qt::Key_Return << true << QByteArray("comBox");
    QTest::newRow("enter, number") << Qt::Key_Enter << true << QByteArray("comBox");
    QTest::newRow("return, parameters") << Qt::Key_Return << true << QByteArray("portConfigBox");
    QTest::newRow("return, address") << Qt::Key_Return << false << QByteArray("ipAddrBox");
    QTest::newRow("space, parameters") << Qt::Key_Space << true << QByteArray("portConfigBox");
    QTest::newRow("escape, number") << Qt::Key_Escape << true << QByteArray("comBox");
}

void TstFrameworkViewConnection::heldKeyDecidesNothingInTheDialog()
{
    QFETCH(Qt::Key, key);
    QFETCH(bool, isSerial);
    QFETCH(QByteArray, focus);
    lister()->Slot_ActivateMode(isSerial ? Comm_Type::Serial : Comm_Type::Ethernet);
    int selections = 0;
    connect(lister(), &PortLister::setSerialPortConfig, this, [&] { ++selections; });
    connect(lister(), &PortLister::setNetworkConfig, this, [&] { ++selections; });
    bool stillOpen = false;
    QString focused;
    bool boxOpened = false;
    const auto inside = [&] {
        auto *box = lister()->findChild<QWidget *>("comConfigBox");
        QTimer::singleShot(0, box, [&, box] {
            boxOpened = box->isVisible();
            box->hide();
        });
        lister()->findChild<QWidget *>(focus)->setFocus();
        focused = lister()->focusWidget()->objectName();
        repeatKey(lister()->focusWidget(), key);
        stillOpen = lister()->isVisible();
        QCoreApplication::processEvents();
    };
    QVERIFY(opensDialog([&] { QTest::mousePress(m->child<QWidget>("comEdit"), Qt::LeftButton); }, inside));
    QCOMPARE(focused, QString::fromLatin1(focus));
    QVERIFY(stillOpen);
    QVERIFY(!boxOpened);
    QCOMPARE(selections, 0);
}

void TstFrameworkViewConnection::dialogOpensWithThePortsOfThisMoment()
{
    QDir(m->folder.path()).mkdir("ports");
    QFile port(m->folder.path() + "/ports/COM149");
    QVERIFY(port.open(QIODevice::WriteOnly));
    QStringList shown;
    QVERIFY(opensDialog([&] { QTest::mousePress(m->child<QWidget>("comEdit"), Qt::LeftButton); },
                        [&] {
                            for (const QLabel *label : lister()->findChildren<QLabel *>())
                                shown.append(label->text());
                        }));
    QVERIFY(shown.contains("149"));
}

void TstFrameworkViewConnection::pressGoesOnToTheButton()
{
    auto *button = m->child<QPushButton>("configButton");
    QSignalSpy pressed(button, &QPushButton::pressed);
    QVERIFY(opensDialog([&] { QTest::mousePress(button, Qt::LeftButton); }));
    QCOMPARE(pressed.count(), 1);
}

void TstFrameworkViewConnection::pressGoesOnToTheField_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name : {"comEdit", "ipEdit"})
        QTest::addRow("%s", name) << QByteArray(name);
}

void TstFrameworkViewConnection::pressGoesOnToTheField()
{
    QFETCH(QByteArray, name);
    auto *field = m->child<QLineEdit>(name);
    field->setText(QStringLiteral("some text"));
    field->selectAll();
    // A press beside the text takes the selection away, if it reaches the field.
    const QPoint behind(field->width() - 3, field->height() / 2);
    QVERIFY(opensDialog([&] { QTest::mousePress(field, Qt::LeftButton, {}, behind); }));
    QVERIFY(!field->hasSelectedText());
}

void TstFrameworkViewConnection::buttonIsUpAgainAfterTheDialog()
{
    auto *button = m->child<QPushButton>("configButton");
    QVERIFY(opensDialog([&] { QTest::mousePress(button, Qt::LeftButton); }));
    QTRY_VERIFY(!button->isDown());
    QVERIFY(opensDialog([&] { QTest::mousePress(button, Qt::LeftButton); }));
}

void TstFrameworkViewConnection::pressWhileTheDialogIsOpenDoesNotNest()
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

void TstFrameworkViewConnection::otherEventsDoNotOpenTheDialog_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name : {"comEdit", "ipEdit", "configButton"})
        QTest::addRow("%s", name) << QByteArray(name);
}

void TstFrameworkViewConnection::otherEventsDoNotOpenTheDialog()
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

void TstFrameworkViewConnection::otherWidgetsDoNotOpenTheDialog()
{
    for (const char *name : {"connectionLamp", "txLamp", "rxLamp", "statusBox", "systemReportButton"})
        QVERIFY(!opensDialog([&] { QTest::mouseClick(m->child<QWidget>(name), Qt::LeftButton); }));
}

void TstFrameworkViewConnection::confirmedPortIsShownAndPassedOn()
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

void TstFrameworkViewConnection::comSettingsAreEmittedFirst()
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

void TstFrameworkViewConnection::networkSettingsAreEmittedLast()
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

void TstFrameworkViewConnection::networkSettingsWithoutAddressAreOnlyEmitted()
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

void TstFrameworkViewConnection::activatedModeIsShown_data()
{
    QTest::addColumn<int>("commType");
    QTest::addColumn<bool>("comEnabled");
    QTest::addColumn<bool>("ipEnabled");
    QTest::newRow("Ethernet") << 1 << false << true;
    QTest::newRow("serial") << 2 << true << false;
    QTest::newRow("none") << 0 << true << true;
    QTest::newRow("unknown") << 9 << true << true;
}

void TstFrameworkViewConnection::activatedModeIsShown()
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

void TstFrameworkViewConnection::serverAddressIsShown_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("shown");
    QTest::newRow("address") << "10.1.2.3"
                             << "10.1.2.3";
    QTest::newRow("empty") << ""
                           << "192.168.0.62";
}

void TstFrameworkViewConnection::serverAddressIsShown()
{
    QFETCH(QString, address);
    QFETCH(QString, shown);
    m->view->handleServerSettings(address, QStringLiteral("1234"));
    QCOMPARE(m->child<QLineEdit>("ipEdit")->text(), shown);
}

QTEST_MAIN(TstFrameworkViewConnection)

#include "tst_framework_view_connection.moc"
