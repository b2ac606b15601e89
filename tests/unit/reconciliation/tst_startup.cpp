#include "modules/moduledevice_ctrllr.h"
#include "modules/moduledevice_view.h"
#include "protocol/communication.h"
#include "protocol/records/systemstatus.h"
#include "settings/portlister.h"
#include "support/appfixture.h"
#include "support/messagecatcher.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

namespace {

const QColor kGreen(154, 237, 191);
const QString kOpen = QStringLiteral("open");
const QString kConnect = QStringLiteral("connect");

} // namespace

/// How the application starts, which link it opens, and how it comes back after a loss.
class TstStartup : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_fixture = std::make_unique<AppFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void withoutSettingsFileTheBuiltInPortIsTried();
    void withoutSettingsFileTheBuiltInPortOpens();
    void firstOpenThatFailsIsNotTriedAgain();
    void portWithoutModeOpensNothing();
    void modeOpensItsLink_data();
    void modeOpensItsLink();
    void modeWithoutPortOpensTwice();
    void modeBeforePortCarriesTheDialogsDefaults();
    void unknownModeOpensNothing();
    void lostLinkIsReopenedEverySixSeconds();
    void secondLossDoesNotRestartThePeriod();
    void failedRetryRewritesLampAndLine();
    void changedConnectionIsSavedAndOpened_data();
    void changedConnectionIsSavedAndOpened();
    void changedConnectionStopsTheRetry();
    void connectionOfUnknownKindSavesNothing();
    void changedConnectionRemovesTheRows();
    void connectionChosenInTheDialogIsOpened();
    void wholeStartOnBothLinks_data();
    void wholeStartOnBothLinks();
    void rowsExistBeforeTheCounterShows();
    void restartAfterALossReadsTheChainAgain();
    void helpHeldForTwoSecondsResetsTheSystem();
    void endWithRowsAlive();

private:
    model_Namespace::Settings serialSettings(const QString &port) const;
    model_Namespace::Settings tcpSettings() const;
    QString statusBox() const { return m_fixture->child<QLineEdit>("statusBox")->text(); }
    void advanceUntilReady();

    std::unique_ptr<AppFixture> m_fixture;
};

model_Namespace::Settings TstStartup::serialSettings(const QString &port) const
{
    model_Namespace::Settings settings;
    settings.portName = port;
    settings.baudRate = 9600;
    settings.dataBits = 7;
    settings.parity = 3;
    settings.stopBits = 2;
    settings.serialConfig = QStringLiteral("9600:O,7,2");
    settings.commType = Comm_Type::Serial;
    return settings;
}

model_Namespace::Settings TstStartup::tcpSettings() const
{
    model_Namespace::Settings settings;
    settings.ipAddress = QStringLiteral("10.1.2.3");
    settings.tcpPort = QStringLiteral("7777");
    settings.commType = Comm_Type::Ethernet;
    return settings;
}

void TstStartup::advanceUntilReady()
{
    for (int turn = 0; turn < 200 && statusBox() != QStringLiteral("READY"); ++turn)
        m_fixture->time.advance(100);
}

void TstStartup::withoutSettingsFileTheBuiltInPortIsTried()
{
    MessageCatcher messages;
    m_fixture->start();
    QCOMPARE(m_fixture->statusText(), QStringLiteral("COM Port unavailable: COM20"));
    QCOMPARE(m_fixture->lamp(), QColor(Qt::gray));
    QCOMPARE(m_fixture->placeholders(), (QStringList{QStringLiteral("No Controller connected or detected."),
                                                     QStringLiteral("No Device connected or detected.")}));
    QVERIFY(messages.contains(QStringLiteral("******CONST() Port Opened******")));
    QVERIFY(m_fixture->window()->isVisible());
    m_fixture->time.advance(8000);
    QCOMPARE(m_fixture->statusText(), QString());
}

void TstStartup::withoutSettingsFileTheBuiltInPortOpens()
{
    m_fixture->serialOpens = true;
    m_fixture->start();
    const model_Namespace::Settings &settings = m_fixture->serial->settings;
    QCOMPARE(settings.portName, QStringLiteral("COM20"));
    QCOMPARE(settings.dataBits, 8);
    QCOMPARE(settings.parity, 2);
    QCOMPARE(settings.baudRate, 115200);
    QCOMPARE(settings.stopBits, 1);
    QCOMPARE(settings.flowControl, 0);
    QCOMPARE(m_fixture->statusText(), QStringLiteral("COM Port opened: COM20"));
    QCOMPARE(m_fixture->lamp(), QColor(Qt::yellow));
    QCOMPARE(statusBox(), QStringLiteral("OFFLINE"));
    m_fixture->time.advance(10000);
    QCOMPARE(m_fixture->statusText(), QStringLiteral("Retrying to connect with Torvex"));
}

void TstStartup::firstOpenThatFailsIsNotTriedAgain()
{
    m_fixture->start();
    m_fixture->time.advance(60000);
    QCOMPARE(m_fixture->serial->calls.count(kOpen), 1);
}

void TstStartup::portWithoutModeOpensNothing()
{
    m_fixture->writeSettings("PORT1=COM7:115200,E,8,1\r\n");
    m_fixture->serialOpens = true;
    m_fixture->start();
    m_fixture->time.advance(60000);
    QVERIFY(!m_fixture->serial->calls.contains(kOpen));
    QVERIFY(!m_fixture->tcp->calls.contains(kConnect));
    QCOMPARE(m_fixture->serial->frames.size(), 0);
}

void TstStartup::modeOpensItsLink_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<bool>("isSerial");
    QTest::newRow("serial") << QByteArray("PORT1=COM7:9600,O,7,2\r\nMode=Serial\r\n") << true;
    QTest::newRow("tcp") << QByteArray("MainServer=10.9.8.7:1234\r\nPORT1=COM7:9600,O,7,2\r\nMode=TCP\r\n")
                         << false;
}

void TstStartup::modeOpensItsLink()
{
    QFETCH(QByteArray, file);
    QFETCH(bool, isSerial);
    m_fixture->writeSettings(file);
    m_fixture->serialOpens = true;
    m_fixture->tcpConnects = true;
    m_fixture->start();
    QCOMPARE(m_fixture->serial->calls.count(kOpen), isSerial ? 1 : 0);
    QCOMPARE(m_fixture->tcp->calls.count(kConnect), isSerial ? 0 : 1);
    if (isSerial) {
        QCOMPARE(m_fixture->serial->settings.portName, QStringLiteral("COM7"));
        QCOMPARE(m_fixture->serial->settings.baudRate, 9600);
        QCOMPARE(m_fixture->serial->settings.parity, 3);
    } else {
        QCOMPARE(m_fixture->tcp->address, QStringLiteral("10.9.8.7"));
        QCOMPARE(m_fixture->tcp->port, QStringLiteral("1234"));
    }
    // The texts name the port for both kinds of link.
    QCOMPARE(m_fixture->statusText(), QStringLiteral("COM Port opened: COM7"));
}

void TstStartup::modeWithoutPortOpensTwice()
{
    m_fixture->writeSettings("MainServer=10.9.8.7:1234\r\nMode=TCP\r\n");
    m_fixture->tcpConnects = true;
    m_fixture->start();
    QCOMPARE(m_fixture->tcp->calls.count(kConnect), 2);
    QVERIFY(m_fixture->tcp->IsConnected());
}

void TstStartup::modeBeforePortCarriesTheDialogsDefaults()
{
    m_fixture->writeSettings("Mode=Serial\r\nPORT1=COM7:9600,O,7,2\r\n");
    m_fixture->serialOpens = true;
    m_fixture->start();
    QCOMPARE(m_fixture->serial->settings.baudRate, 115200);
    QVERIFY(m_fixture->serial->settings.portName != QStringLiteral("COM7"));
}

void TstStartup::unknownModeOpensNothing()
{
    m_fixture->writeSettings("PORT1=COM7:9600,O,7,2\r\nMode=serial\r\n");
    m_fixture->start();
    QVERIFY(!m_fixture->serial->calls.contains(kOpen));
    QVERIFY(!m_fixture->tcp->calls.contains(kConnect));
}

void TstStartup::lostLinkIsReopenedEverySixSeconds()
{
    m_fixture->writeSettings("MainServer=10.9.8.7:1234\r\nPORT1=COM7:9600,O,7,2\r\nMode=TCP\r\n");
    m_fixture->tcpConnects = true;
    m_fixture->start();
    m_fixture->tcp->calls.clear();
    MessageCatcher messages;
    m_fixture->tcp->connects = false;
    m_fixture->tcp->drop();
    QVERIFY(messages.contains(QStringLiteral("Timer started")));
    m_fixture->time.advance(5999);
    QCOMPARE(m_fixture->tcp->calls.count(kConnect), 0);
    m_fixture->time.advance(1);
    QCOMPARE(m_fixture->tcp->calls.count(kConnect), 1);
    QVERIFY(messages.contains(QStringLiteral("Timer function to reconnect")));
    m_fixture->time.advance(12000);
    QCOMPARE(m_fixture->tcp->calls.count(kConnect), 3);
    m_fixture->tcp->connects = true;
    m_fixture->time.advance(6000);
    QVERIFY(m_fixture->tcp->IsConnected());
    QVERIFY(messages.contains(QStringLiteral("Timer Stopped")));
    m_fixture->time.advance(60000);
    QCOMPARE(m_fixture->tcp->calls.count(kConnect), 4);
}

void TstStartup::secondLossDoesNotRestartThePeriod()
{
    m_fixture->start();
    m_fixture->serial->calls.clear();
    m_fixture->app->StartSerialTimer();
    m_fixture->time.advance(4000);
    m_fixture->app->StartSerialTimer();
    m_fixture->time.advance(2000);
    QCOMPARE(m_fixture->serial->calls.count(kOpen), 1);
}

void TstStartup::failedRetryRewritesLampAndLine()
{
    m_fixture->start();
    m_fixture->app->Slot_CleanSlateProtocol();
    QCOMPARE(m_fixture->lamp(), QColor(Qt::yellow));
    m_fixture->app->StartSerialTimer();
    m_fixture->time.advance(6000);
    QCOMPARE(m_fixture->lamp(), QColor(Qt::gray));
    QCOMPARE(m_fixture->statusText(), QStringLiteral("COM Port unavailable: COM20"));
}

void TstStartup::changedConnectionIsSavedAndOpened_data()
{
    QTest::addColumn<bool>("isSerial");
    QTest::addColumn<QByteArray>("modeLine");
    QTest::newRow("serial") << true << QByteArray("Mode=Serial\r\n");
    QTest::newRow("tcp") << false << QByteArray("Mode=TCP\r\n");
}

void TstStartup::changedConnectionIsSavedAndOpened()
{
    QFETCH(bool, isSerial);
    QFETCH(QByteArray, modeLine);
    m_fixture->start();
    m_fixture->serial->opens = true;
    m_fixture->tcp->connects = true;
    model_Namespace::Settings settings = isSerial ? serialSettings(QStringLiteral("COM9")) : tcpSettings();
    MessageCatcher messages;
    QVERIFY(m_fixture->app->Slot_ComConfigurationChanged(settings));
    QVERIFY(messages.contains(
        QStringLiteral("void Framework_Ctrllr::Slot_ComConfigurationChanged(model_Namespace::Settings&) : "
                       "Communication settings changed!")));
    QVERIFY(m_fixture->readSettings().contains(modeLine));
    QCOMPARE(m_fixture->readSettings().contains("PORT1=COM9:9600,O,7,2"), isSerial);
    QCOMPARE(m_fixture->readSettings().contains("MainServer=10.1.2.3:7777"), !isSerial);
    QCOMPARE(m_fixture->serial->IsOpen(), isSerial);
    QCOMPARE(m_fixture->tcp->IsConnected(), !isSerial);
}

void TstStartup::changedConnectionStopsTheRetry()
{
    m_fixture->start();
    m_fixture->app->StartSerialTimer();
    m_fixture->time.advance(5000);
    m_fixture->serial->opens = true;
    model_Namespace::Settings settings = serialSettings(QStringLiteral("COM9"));
    m_fixture->app->Slot_ComConfigurationChanged(settings);
    m_fixture->serial->calls.clear();
    m_fixture->time.advance(30000);
    QCOMPARE(m_fixture->serial->calls.count(kOpen), 0);
}

void TstStartup::connectionOfUnknownKindSavesNothing()
{
    m_fixture->start();
    model_Namespace::Settings settings = serialSettings(QStringLiteral("COM9"));
    settings.commType = Comm_Type::None;
    QVERIFY(!m_fixture->app->Slot_ComConfigurationChanged(settings));
    QCOMPARE(m_fixture->readSettings(), QByteArray());
    QCOMPARE(m_fixture->statusText(), QStringLiteral("COM Port unavailable: COM9"));
}

void TstStartup::changedConnectionRemovesTheRows()
{
    m_fixture->start();
    m_fixture->app->Slot_SystemStatus(QVariant::fromValue(systemStatus({1, 2})));
    QCOMPARE(m_fixture->window()->findChildren<ModuleDevice_View *>().size(), 2);
    model_Namespace::Settings settings = tcpSettings();
    m_fixture->app->Slot_ComConfigurationChanged(settings);
    QCOMPARE(m_fixture->window()->findChildren<ModuleDevice_View *>().size(), 0);
}

void TstStartup::connectionChosenInTheDialogIsOpened()
{
    m_fixture->start();
    m_fixture->serial->opens = true;
    auto *lister = m_fixture->window()->portLister();
    lister->show();
    auto *number = lister->findChild<QLineEdit *>(QStringLiteral("comBox"));
    QTest::keyClicks(number, QStringLiteral("12"));
    QTest::mouseClick(lister->findChild<QPushButton *>(QStringLiteral("openBtn")), Qt::LeftButton);
    QVERIFY(!lister->isVisible());
    QCOMPARE(m_fixture->serial->settings.portName, QStringLiteral("COM12"));
    QVERIFY(m_fixture->serial->IsOpen());
    QVERIFY(m_fixture->readSettings().contains("PORT1=COM12:"));
    QCOMPARE(m_fixture->child<QLineEdit>("comEdit")->text(), QStringLiteral("COM12"));
}

void TstStartup::wholeStartOnBothLinks_data()
{
    QTest::addColumn<QByteArray>("mode");
    QTest::newRow("serial") << QByteArray("Serial");
    QTest::newRow("tcp") << QByteArray("TCP");
}

void TstStartup::wholeStartOnBothLinks()
{
    QFETCH(QByteArray, mode);
    m_fixture->writeSettings("MainServer=10.9.8.7:1234\r\nPORT1=COM7:9600,O,7,2\r\nMode=" + mode + "\r\n");
    m_fixture->serialOpens = true;
    m_fixture->tcpConnects = true;
    m_fixture->start();
    m_fixture->serial->script = device::chain(QByteArray("\x01\x04\x09"), true);
    m_fixture->tcp->script = m_fixture->serial->script;
    // The first request went out before the device listened: the session starts over by itself.
    QStringList boxTexts;
    QObject::connect(m_fixture->child<QLineEdit>("statusBox"), &QLineEdit::textChanged, m_fixture->window(),
                     [&boxTexts](const QString &text) { boxTexts.append(text); });
    advanceUntilReady();
    QCOMPARE(statusBox(), QStringLiteral("READY"));
    QCOMPARE(m_fixture->lamp(), kGreen);
    QCOMPARE(m_fixture->window()->findChildren<ModuleDevice_View *>().size(), 3);
    QCOMPARE(boxTexts,
             (QStringList{QStringLiteral("0 / 4 "), QStringLiteral("1 / 4 "), QStringLiteral("2 / 4 "),
                          QStringLiteral("3 / 4 "), QStringLiteral("129 / 4 "), QStringLiteral("READY")}));
    const auto *view = m_fixture->app->analogModules().at(1)->GetView();
    QCOMPARE(view->findChild<QLabel *>(QStringLiteral("label_SnVersion"))->text(), QStringLiteral("SN 2"));
}

void TstStartup::rowsExistBeforeTheCounterShows()
{
    m_fixture->start();
    int rowsAtCount = -1;
    QObject::connect(m_fixture->child<QLineEdit>("statusBox"), &QLineEdit::textChanged, m_fixture->window(),
                     [this, &rowsAtCount] {
                         rowsAtCount = m_fixture->window()->findChildren<ModuleDevice_View *>().size();
                     });
    emit m_fixture->app->communication()->Signal_SystemStatus(QVariant::fromValue(systemStatus({1, 2})));
    QCOMPARE(rowsAtCount, 2);
}

void TstStartup::restartAfterALossReadsTheChainAgain()
{
    m_fixture->writeSettings("MainServer=10.9.8.7:1234\r\nPORT1=COM7:9600,O,7,2\r\nMode=TCP\r\n");
    m_fixture->tcpConnects = true;
    m_fixture->start();
    m_fixture->tcp->script = device::chain(QByteArray("\x01\x02"), false);
    advanceUntilReady();
    QCOMPARE(statusBox(), QStringLiteral("READY"));
    m_fixture->tcp->drop();
    m_fixture->time.advance(4000);
    // The silent session has started over meanwhile; the link comes back after six seconds.
    QCOMPARE(statusBox(), QStringLiteral("OFFLINE"));
    QCOMPARE(m_fixture->window()->findChildren<ModuleDevice_View *>().size(), 0);
    advanceUntilReady();
    QCOMPARE(statusBox(), QStringLiteral("READY"));
    QCOMPARE(m_fixture->window()->findChildren<ModuleDevice_View *>().size(), 2);
}

void TstStartup::helpHeldForTwoSecondsResetsTheSystem()
{
    m_fixture->serialOpens = true;
    m_fixture->start();
    m_fixture->serial->script = device::chain(QByteArray("\x01"), false);
    advanceUntilReady();
    m_fixture->serial->takePayloads();
    auto *help = m_fixture->child<QPushButton>("helpButton");
    QTest::mousePress(help, Qt::LeftButton);
    m_fixture->time.advance(3000);
    QTest::mouseRelease(help, Qt::LeftButton);
    QVERIFY(m_fixture->serial->takePayloads().contains(QByteArray("\x2B\x00\x00\x00\x00\x00\x00", 7)));
}

void TstStartup::endWithRowsAlive()
{
    m_fixture->start();
    m_fixture->app->Slot_SystemStatus(QVariant::fromValue(systemStatus({1, 2, 4, 9, 77})));
    m_fixture->app.reset();
    QVERIFY(!m_fixture->app);
}

QTEST_MAIN(TstStartup)

#include "tst_startup.moc"
