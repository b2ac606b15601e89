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
    void versionOfTheServerIsShown();
    void newerFirmwareOnTheServerIsTold_data();
    void newerFirmwareOnTheServerIsTold();
    void newControllerRowHearsOfFirmwareOnce();
    void lostSessionStopsTheProgress();
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
    void flash();
    void answer(int times);

    std::unique_ptr<AppFixture> m;
    QTemporaryDir m_folder;
    QString m_image;
};

void TstFirmwareWiring::init()
{
    m_image = m_folder.filePath(QStringLiteral("x_ANA_FPGA5_v2.bin"));
    QFile file(m_image);
    QVERIFY(file.open(QIODevice::WriteOnly));
    const QByteArray contents = "iCE40UP5K-SG48" + QByteArray(986, 'x');
    QCOMPARE(file.write(contents), qint64(1000));
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
    m->serial->script = device::chain(QByteArray("\x01"), false);
    for (int turn = 0; turn < 200 && session()->state() != SessionState::Cyclic; ++turn)
        m->time.advance(50);
    QCOMPARE(session()->state(), SessionState::Cyclic);
    m->time.advance(900);
    QCOMPARE(requested(), 0);
    m->time.advance(100);
    QCOMPARE(requested(), 1);
    m->time.advance(60000);
    QCOMPARE(requested(), 1);
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
    emit session()->Signal_CleanSlateProtocol();
    answer(20); // the chain is back and polled
    QCOMPARE(inUpdate<QProgressBar>("progressBar")->value(), 2);
    QCOMPARE(inUpdate<QPushButton>("flashButton")->text(), QStringLiteral("Abort"));
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
