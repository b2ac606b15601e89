#include "controller/modulecontroller_ctrllr.h"
#include "firmware/firmwareupdate.h"
#include "firmware/versionchecker.h"
#include "protocol/communication.h"
#include "protocol/records/fastsystemstatus.h"
#include "protocol/records/modulestatus.h"
#include "protocol/records/systemstatus.h"
#include "settings/appconfigurationmanager.h"
#include "support/appfixture.h"

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTcpServer>
#include <QtTest>

/// How the firmware update and the version check are joined to the rest of the program.
class TstFirmwareWiring : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m.reset(); }

    void fileOfTheSettingsReachesTheWindow();
    void flashedFileIsRemembered();
    void readChainStartsTheVersionCheck();
    void serverOfTheDeploymentIsAsked();
    void versionOfTheServerIsShown();
    void newerFirmwareOnTheServerIsTold_data();
    void newerFirmwareOnTheServerIsTold();
    void newControllerRowHearsOfFirmwareOnce();
    void lostSessionStopsTheProgress();
    void lostAnswerToTheLastCommandStopsNothing();
    void repliesToOtherRequestsDoNotComplete();
    void refusedFileSendsNothingOfAnAbort();
    void otherConnectionStopsTheProgress();

private:
    Communication *session() const { return m->app->communication(); }
    FirmwareUpdate *update() const { return m->window()->firmwareUpdate(); }
    template <typename T>
    T *inUpdate(const char *name) const
    {
        return childByName<T>(update(), name);
    }
    void showControllerWithFirmware(const QString &firmware);
    void readChain();
    void leaveUnanswered(char code);
    void writeImage(const QByteArray &contents) const;
    void sendAll();
    void flash();
    void answer(int times);
    QString buttonText() const { return inUpdate<QPushButton>("flashButton")->text(); }
    int progress() const { return inUpdate<QProgressBar>("progressBar")->value(); }

    std::unique_ptr<AppFixture> m;
    QTemporaryDir m_folder;
    QString m_image;
};

void TstFirmwareWiring::init()
{
    m_image = m_folder.filePath(QStringLiteral("x_ANA_FPGA5_v2.bin"));
    writeImage("iCE40UP5K-SG48" + QByteArray(986, 'x'));
    m = std::make_unique<AppFixture>();
    m->writeSettings("PORT1=COM7:9600,O,7,2\r\nMode=Serial\r\nFIRMWR_FILEPATH=" + m_image.toUtf8() + "\r\n");
    m->serialOpens = true;
    m->start();
}

void TstFirmwareWiring::showControllerWithFirmware(const QString &firmware)
{
    m->app->Slot_SystemStatus(QVariant::fromValue(systemStatus({})));
    Module_Status controller;
    controller.moduleType = 100;
    controller.serialNumber = QStringLiteral("000000001");
    controller.firmware1Version = firmware;
    m->app->controllerModule()->Slot_StaticModuleStatus(QVariant::fromValue(controller));
}

/// A chain of one module, read and polled.
void TstFirmwareWiring::readChain()
{
    m->serial->script = device::chain(QByteArray("\x01"), false);
    for (int turn = 0; turn < 200 && session()->state() != SessionState::Cyclic; ++turn)
        m->time.advance(50);
    QCOMPARE(session()->state(), SessionState::Cyclic);
}

/// From now on the chain answers everything but requests that begin with this code.
void TstFirmwareWiring::leaveUnanswered(char code)
{
    m->serial->script = [code, chain = device::chain(QByteArray("\x01"), false)](const QByteArray &request) {
        return request.startsWith(code) ? QList<QByteArray>() : chain(request);
    };
}

void TstFirmwareWiring::writeImage(const QByteArray &contents) const
{
    QFile file(m_image);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(contents), qint64(contents.size()));
}

/// Lets the session send what waits, as far as the chain answers.
void TstFirmwareWiring::sendAll()
{
    for (int turn = 0; turn < 20; ++turn)
        m->time.turn();
}

void TstFirmwareWiring::flash()
{
    m->window()->Slot_FirmwareUpdate();
    QTest::mouseClick(inUpdate<QPushButton>("flashButton"), Qt::LeftButton);
    QCOMPARE(inUpdate<QPushButton>("flashButton")->text(), QStringLiteral("Abort"));
    QCOMPARE(inUpdate<QProgressBar>("progressBar")->maximum(), 7);
}

void TstFirmwareWiring::answer(int times)
{
    for (int i = 0; i < times; ++i)
        emit session()->Signal_FastSystemStatus(QVariant::fromValue(Fast_System_Status()));
}

void TstFirmwareWiring::fileOfTheSettingsReachesTheWindow()
{
    QCOMPARE(inUpdate<QLineEdit>("filePathEdit")->text(), m_image);
    QVERIFY(inUpdate<QPushButton>("flashButton")->isEnabled());
}

void TstFirmwareWiring::flashedFileIsRemembered()
{
    m->app->appConfig()->Slot_SaveFirmWrFilePath(QString());
    QVERIFY(!m->readSettings().contains(m_image.toUtf8()));
    flash();
    QVERIFY(m->readSettings().contains("FIRMWR_FILEPATH=" + m_image.toUtf8()));
}

void TstFirmwareWiring::readChainStartsTheVersionCheck()
{
    QSignalSpy funnel(m->window(), &Framework_View::Signal_DebugMessage);
    const auto requested = [&funnel] {
        return std::count_if(funnel.begin(), funnel.end(), [](const QVariantList &message) {
            return message.first().toString() == QLatin1String("Requesting VXConfig Version");
        });
    };
    readChain();
    m->time.advance(900);
    QCOMPARE(requested(), 0);
    m->time.advance(100);
    QCOMPARE(requested(), 1);
    m->time.advance(60000);
    QCOMPARE(requested(), 1);
}

void TstFirmwareWiring::serverOfTheDeploymentIsAsked()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    m.reset();
    m = std::make_unique<AppFixture>();
    m->deployment.host = QStringLiteral("127.0.0.1");
    m->deployment.port = server.serverPort();
    m->start();
    emit session()->stateInitialized();
    m->time.advance(1000);
    QTRY_VERIFY(server.hasPendingConnections());
    m.reset(); // while the server owes the answer
}

void TstFirmwareWiring::versionOfTheServerIsShown()
{
    auto *notice = m->child<QLabel>("updateLabel");
    QVERIFY(!notice->isVisible());
    emit m->app->versionChecker()->versionNo(QStringLiteral("vxconfig v1.1.62"));
    QVERIFY(!notice->isVisible());
    emit m->app->versionChecker()->versionNo(QStringLiteral("vxconfig v1.1.63"));
    QVERIFY(notice->isVisible());
    QCOMPARE(notice->text(), QStringLiteral("Please download new version vxconfig v1.1.63"));
}

void TstFirmwareWiring::newerFirmwareOnTheServerIsTold_data()
{
    QTest::addColumn<QString>("remote");
    QTest::addColumn<int>("flag");
    QTest::addColumn<QString>("style");
    QTest::newRow("newer") << "1.2.3" << 0 << "color: black";
    QTest::newRow("newer, marked") << "1.2.3" << 1 << "color: red";
    QTest::newRow("the same") << "1.2.2" << 1 << QString();
}

void TstFirmwareWiring::newerFirmwareOnTheServerIsTold()
{
    QFETCH(QString, remote);
    QFETCH(int, flag);
    QFETCH(QString, style);
    showControllerWithFirmware(QStringLiteral("1.2.2"));
    m->window()->showMessage(QStringLiteral("before"));
    emit m->app->versionChecker()->frmwrVersion(remote, flag);
    if (style.isEmpty()) {
        QCOMPARE(m->statusText(), QStringLiteral("before"));
    } else {
        QCOMPARE(
            m->statusText(),
            QStringLiteral("Warning: Please download the latest vxupdate.exe, current version is outdated"));
        QCOMPARE(m->child<QLabel>("statusLabel")->styleSheet(), style);
    }
}

void TstFirmwareWiring::newControllerRowHearsOfFirmwareOnce()
{
    QSignalSpy versions(m->app->versionChecker(), &VersionChecker::frmwrVersion);
    showControllerWithFirmware(QStringLiteral("1.2.2"));
    m->app->Slot_CleanSlateProtocol();
    emit m->app->versionChecker()->frmwrVersion(QStringLiteral("1.2.3"), 0); // nobody is there
    showControllerWithFirmware(QStringLiteral("1.2.2"));
    QSignalSpy mismatches(m->app->controllerModule(), &ModuleController_Ctrllr::Signal_FirmwareMismatch);
    emit m->app->versionChecker()->frmwrVersion(QStringLiteral("1.2.3"), 0);
    QCOMPARE(versions.count(), 2);
    QCOMPARE(mismatches.count(), 1);
}

void TstFirmwareWiring::lostSessionStopsTheProgress()
{
    flash();
    answer(3);
    QCOMPARE(inUpdate<QProgressBar>("progressBar")->value(), 2);
    session()->Slot_CommTimeout(); // drops the commands
    answer(20);                    // the chain is back and polled
    QCOMPARE(inUpdate<QProgressBar>("progressBar")->value(), 2);
    QCOMPARE(inUpdate<QPushButton>("flashButton")->text(), QStringLiteral("Abort"));
}

void TstFirmwareWiring::lostAnswerToTheLastCommandStopsNothing()
{
    readChain();
    leaveUnanswered('\x2B');
    flash();
    sendAll();
    QVERIFY(!session()->firmwareCommandsWait());
    QCOMPARE(progress(), 6);
    session()->Slot_CommTimeout(); // the device restarts; no command is left to drop
    QCOMPARE(buttonText(), QStringLiteral("Abort"));
    m->time.advance(5000); // it is back and polled
    QCOMPARE(buttonText(), QStringLiteral("Read and Flash File"));
    QCOMPARE(inUpdate<QLabel>("flashStatusLabel")->text(), QStringLiteral("FPGA flashing complete..."));
}

void TstFirmwareWiring::repliesToOtherRequestsDoNotComplete()
{
    readChain();
    leaveUnanswered('\x16');
    flash();
    m->time.turn(); // the first command is out
    answer(20);
    QCOMPARE(progress(), 6);
    QCOMPARE(buttonText(), QStringLiteral("Abort"));
    leaveUnanswered('\x7F');
    m->serial->reply(device::fastSystemStatus());
    sendAll();
    QVERIFY(!session()->firmwareCommandsWait());
    QCOMPARE(inUpdate<QLabel>("flashStatusLabel")->text(), QStringLiteral("FPGA flashing complete..."));
}

void TstFirmwareWiring::refusedFileSendsNothingOfAnAbort()
{
    readChain();
    leaveUnanswered('\x16');
    flash();
    m->time.turn();
    QTest::mouseClick(inUpdate<QPushButton>("flashButton"), Qt::LeftButton);
    QTest::mouseClick(inUpdate<QPushButton>("proceedButton"), Qt::LeftButton);
    QCOMPARE(buttonText(), QStringLiteral("Read and Flash File"));
    QVERIFY(session()->firmwareCommandsWait()); // stop and reset
    m->serial->takePayloads();

    writeImage("no chip");
    QTest::mouseClick(inUpdate<QPushButton>("flashButton"), Qt::LeftButton);
    QVERIFY(inUpdate<QDialog>("failureBox")->isVisible());
    m->serial->reply(device::fastSystemStatus());
    sendAll();
    QCOMPARE(m->serial->takePayloads(), QList<QByteArray>());
}

void TstFirmwareWiring::otherConnectionStopsTheProgress()
{
    flash();
    answer(3);
    model_Namespace::Settings settings;
    settings.portName = QStringLiteral("COM9");
    settings.commType = Comm_Type::Serial;
    m->app->Slot_ComConfigurationChanged(settings);
    answer(20);
    QCOMPARE(inUpdate<QProgressBar>("progressBar")->value(), 2);
}

QTEST_MAIN(TstFirmwareWiring)

#include "tst_firmwarewiring.moc"
