#include "systemfixture.h"
#include "waiting.h"

#include "controller/modulecontroller_ctrllr.h"
#include "protocol/communication.h"
#include "support/sanitizers.h"

#include <QLabel>
#include <QLineEdit>
#include <QtTest>

namespace {

const QString kSmallChain = QStringLiteral("controller serial=C-1 hw=2.0 fw1=1.4.2 fw2=1.07\n"
                                           "power serial=P-1\n"
                                           "module type=1 serial=SG- fw1=1.4.2\n"
                                           "module type=4 serial=TH- fw1=1.4.2\n"
                                           "module type=9 serial=UN- fw1=1.4.2\n");

} // namespace

/// The program reads real chains over real links, and mirrors what they report.
class TstChain : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_fixture.reset(); }

    void chainIsReadOverBothLinks_data() { addLinkKinds(); }
    void chainIsReadOverBothLinks();
    void liveValuesFollowTheChain();
    void fullChainIsRead();
    void chainWithoutPowerModule();
    void chainWithoutController();
    void chainWithoutModules();
    void unknownTypeKeepsItsRow();
    void claimedModulesBeyondTheMost();
    void hugeClaimEndsInTime();
    void emptyPowerSerialHidesThePowerPart();
    void differentFirmwareWarnsOnce();
    void chainComesBackAfterALoss_data() { addLinkKinds(); }
    void chainComesBackAfterALoss();
    void chainThatIsNotThereYetIsFoundLater_data() { addLinkKinds(); }
    void chainThatIsNotThereYetIsFoundLater();
    void anotherChainAfterALossReplacesTheRows();

private:
    void create(SystemFixture::LinkKind kind);

    std::unique_ptr<SystemFixture> m_fixture;
};

void TstChain::init()
{
    create(SystemFixture::LinkKind::Tcp);
}

void TstChain::create(SystemFixture::LinkKind kind)
{
    m_fixture = std::make_unique<SystemFixture>(kind);
}

void TstChain::chainIsReadOverBothLinks()
{
    QFETCH(SystemFixture::LinkKind, kind);
    create(kind);
    m_fixture->useProductTimeouts();
    m_fixture->plug(kSmallChain);
    m_fixture->start();
    WAIT_VERIFY(m_fixture->isReady());
    QCOMPARE(m_fixture->rowCount(), 3);
    QCOMPARE(m_fixture->rowText(0, "label_SnVersion"), QStringLiteral("SG-0001"));
    QCOMPARE(m_fixture->rowText(1, "label_SnVersion"), QStringLiteral("TH-0002"));
    QCOMPARE(m_fixture->rowText(0, "label_DeviceName"), QStringLiteral("Strain Gauge"));
    QCOMPARE(m_fixture->rowText(1, "label_DeviceName"), QStringLiteral("Thermo"));
    QCOMPARE(m_fixture->rowText(2, "label_DeviceName"), QStringLiteral("Analog"));
    QCOMPARE(m_fixture->controllerText("label_SerialNumber"), QStringLiteral("S/N C-1"));
    QCOMPARE(m_fixture->device->refusals(), QStringList());
    // Each module was asked for once, the controller and the power module too.
    QCOMPARE(m_fixture->device->requestCount(0x01), 1);
    QCOMPARE(m_fixture->device->requestCount(0x12), 5);
}

void TstChain::liveValuesFollowTheChain()
{
    m_fixture->plug(kSmallChain);
    auto &module = m_fixture->device->chain().module(2);
    module.health.volts = 12.5;
    module.health.celsius = 40;
    module.health.selftest = 0x0A;
    m_fixture->start();
    WAIT_COMPARE(m_fixture->rowText(1, "label_SelftestSt"), QStringLiteral("0x0A"));
    QVERIFY(m_fixture->rowText(1, "label_Voltage").startsWith(QStringLiteral("12.")));
    QVERIFY(m_fixture->rowText(1, "label_Temperature").endsWith(QStringLiteral(" °C")));
    WAIT_COMPARE(m_fixture->rowText(0, "label_SelftestSt"), QStringLiteral("O.K."));
    module.health.selftest = 0;
    WAIT_COMPARE(m_fixture->rowText(1, "label_SelftestSt"), QStringLiteral("O.K."));
}

void TstChain::fullChainIsRead()
{
    m_fixture->useProductTimeouts();
    m_fixture->plugFile(QStringLiteral("full128.chain"));
    m_fixture->start();
    QTRY_VERIFY_WITH_TIMEOUT(m_fixture->isReady(), 60000);
    QCOMPARE(m_fixture->rowCount(), 128);
    QCOMPARE(m_fixture->device->requestCount(0x12), 130);
    WAIT_VERIFY(!m_fixture->rowText(127, "label_Voltage").isEmpty());
    const sim::Module &last = m_fixture->device->chain().module(128);
    QCOMPARE(m_fixture->rowText(127, "label_SnVersion"), last.identity.serial);
}

void TstChain::chainWithoutPowerModule()
{
    m_fixture->useProductTimeouts();
    m_fixture->plug(QStringLiteral("controller serial=C-1\nmodule type=2 count=2 serial=V-\n"));
    m_fixture->start();
    WAIT_VERIFY(m_fixture->isReady());
    QCOMPARE(m_fixture->rowCount(), 2);
    QCOMPARE(m_fixture->device->requestCount(0x12), 3);
}

void TstChain::chainWithoutController()
{
    m_fixture->plug(QStringLiteral("system fixed=\"120\"\npower serial=P-1\nmodule type=2 serial=V-\n"));
    m_fixture->start();
    WAIT_COMPARE(m_fixture->statusText(), QStringLiteral("No Controller Module available"));
    QCOMPARE(m_fixture->rowCount(), 0);
    QVERIFY(!m_fixture->app->controllerModule());
}

void TstChain::chainWithoutModules()
{
    m_fixture->useProductTimeouts();
    m_fixture->plug(QStringLiteral("controller serial=C-1\npower serial=P-1\n"));
    m_fixture->start();
    WAIT_VERIFY(m_fixture->isReady());
    QCOMPARE(m_fixture->rowCount(), 0);
    QVERIFY(m_fixture->app->controllerModule());
    QCOMPARE(m_fixture->device->requestCount(0x12), 2);
}

void TstChain::unknownTypeKeepsItsRow()
{
    m_fixture->useProductTimeouts();
    m_fixture->plug(
        QStringLiteral("controller serial=C-1\nmodule type=1 serial=A-\nmodule type=77 serial=B-\n"
                       "module type=2 serial=D-\n"));
    m_fixture->start();
    WAIT_VERIFY(m_fixture->isReady());
    QCOMPARE(m_fixture->rowCount(), 3);
    QCOMPARE(m_fixture->rowText(1, "label_SnVersion"), QStringLiteral("B-0002"));
    QCOMPARE(m_fixture->rowText(2, "label_SnVersion"), QStringLiteral("D-0003"));
}

void TstChain::claimedModulesBeyondTheMost()
{
    m_fixture->useProductTimeouts();
    m_fixture->plugFile(QStringLiteral("full128.chain"));
    m_fixture->device->chain().claimedModules = 129;
    m_fixture->start();
    WAIT_COMPARE(m_fixture->rowCount(), 128);
    WAIT_VERIFY(m_fixture->device->requestCount(0x12) > 100);
    QCOMPARE(m_fixture->rowCount(), 128);
}

void TstChain::hugeClaimEndsInTime()
{
    m_fixture->useProductTimeouts();
    m_fixture->periods.initSequence *= kSlowness;
    m_fixture->plugFile(QStringLiteral("full128.chain"));
    m_fixture->device->chain().claimedModules = 60000;
    m_fixture->start();
    // Refusing the others costs little: the walk goes on, and does not run into its time-out.
    QTRY_COMPARE_WITH_TIMEOUT(m_fixture->device->requestCount(0x12), 130, 20000);
    QCOMPARE(m_fixture->device->requestCount(0x01), 1);
    QCOMPARE(m_fixture->rowCount(), 128);
}

void TstChain::emptyPowerSerialHidesThePowerPart()
{
    m_fixture->plug(QStringLiteral("controller serial=C-1\npower serial=\"\"\nmodule type=1 serial=A-\n"));
    m_fixture->start();
    WAIT_VERIFY(m_fixture->isReady());
    auto *button = m_fixture->window()->findChild<QWidget *>(QStringLiteral("pushButton_powModType"));
    QVERIFY(button);
    QVERIFY(!button->isVisible());
}

void TstChain::differentFirmwareWarnsOnce()
{
    m_fixture->useProductTimeouts();
    m_fixture->plug(QStringLiteral("controller serial=C-1 fw1=1.4.2\nmodule type=1 serial=A- fw1=1.4.1\n"
                                   "module type=1 serial=B- fw1=1.3.0\n"));
    int warnings = 0;
    m_fixture->start();
    // Heard after the application itself, so the controller's row is there.
    QObject::connect(m_fixture->app->communication(), &Communication::Signal_SystemStatus,
                     m_fixture->window(), [&] {
                         QObject::connect(m_fixture->app->controllerModule(),
                                          &ModuleController_Ctrllr::Signal_FirmwareMismatch,
                                          m_fixture->window(), [&warnings] { ++warnings; });
                     });
    WAIT_VERIFY(m_fixture->isReady());
    QCOMPARE(warnings, 1);
    QCOMPARE(m_fixture->statusText(),
             QStringLiteral("Warning: Firmware mismatch between individual modules. We "
                            "strongly recommended to update the firmware."));
}

void TstChain::chainComesBackAfterALoss()
{
    QFETCH(SystemFixture::LinkKind, kind);
    create(kind);
    m_fixture->plug(kSmallChain);
    m_fixture->start();
    WAIT_VERIFY(m_fixture->isReady());
    m_fixture->unplug();
    WAIT_COMPARE(m_fixture->statusText(), QStringLiteral("COM Port unavailable: COM40"));
    QCOMPARE(m_fixture->window()
                 ->findChild<QLineEdit *>(QStringLiteral("connectionLamp"))
                 ->palette()
                 .base()
                 .color(),
             QColor(Qt::gray));
    m_fixture->plug(kSmallChain);
    WAIT_VERIFY(m_fixture->isReady());
    WAIT_COMPARE(m_fixture->rowCount(), 3);
    QCOMPARE(m_fixture->device->refusals(), QStringList());
}

void TstChain::chainThatIsNotThereYetIsFoundLater()
{
    QFETCH(SystemFixture::LinkKind, kind);
    create(kind);
    m_fixture->plug(kSmallChain);
    m_fixture->unplug();
    m_fixture->start();
    QCOMPARE(m_fixture->statusText(), QStringLiteral("COM Port unavailable: COM40"));
    // A first open that fails is not tried again by itself; choosing the connection again does it.
    m_fixture->plug(kSmallChain);
    model_Namespace::Settings chosen = m_fixture->chosenConnection();
    QVERIFY(m_fixture->app->Slot_ComConfigurationChanged(chosen));
    WAIT_VERIFY(m_fixture->isReady());
}

void TstChain::anotherChainAfterALossReplacesTheRows()
{
    m_fixture->plug(kSmallChain);
    m_fixture->start();
    WAIT_VERIFY(m_fixture->isReady());
    m_fixture->unplug();
    m_fixture->plug(QStringLiteral("controller serial=C-2\nmodule type=6 serial=POT-\n"));
    WAIT_COMPARE(m_fixture->rowCount(), 1);
    WAIT_COMPARE(m_fixture->rowText(0, "label_SnVersion"), QStringLiteral("POT-0001"));
}

QTEST_MAIN(TstChain)

#include "tst_chain.moc"
