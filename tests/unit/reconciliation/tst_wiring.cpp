#include "modules/widgets/changemoduletype.h"
#include "protocol/communication.h"
#include "protocol/records/fastsystemstatus.h"
#include "protocol/records/fpgafwcommand.h"
#include "protocol/records/systemstatus.h"
#include "settings/portlister.h"
#include "support/appfixture.h"
#include "support/childbyname.h"
#include "support/messagecatcher.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

/// Each joint between the long-lived objects, by what an operator or the device notices of it.
class TstWiring : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_fixture.reset(); }

    void gatewayChosenInTheDialogIsOpened();
    void fileFillsTheConnectionBar();
    void savedPortSurvivesAChangeToTheGateway();
    void progressOfSavingReachesTheDebugFunnel();
    void progressOfTheSessionReachesTheDebugFunnel();
    void firmwareFileIsRemembered();
    void firmwareCommandsAreQueuedSentAndCleared();
    void systemResetGoesOut();
    void sensorSupplyGoesOut();
    void fastStatusIsRepeatedByTheWindow();
    void queuedWorkShowsAsBusy();
    void framesLightTheLamps();
    void rateChangeReachesTheController();

private:
    void openSerialLink(const QByteArray &types = QByteArray("\x01"));
    QColor lampColour(const char *name) const
    {
        return m_fixture->child<QLineEdit>(name)->palette().color(QPalette::Base);
    }
    Communication *session() const { return m_fixture->app->communication(); }

    std::unique_ptr<AppFixture> m_fixture;
};

void TstWiring::init()
{
    m_fixture = std::make_unique<AppFixture>();
    m_fixture->writeSettings("MainServer=10.9.8.7:1234\r\nPORT1=COM7:9600,O,7,2\r\nMode=Serial\r\n");
    m_fixture->serialOpens = true;
    m_fixture->tcpConnects = true;
    m_fixture->start();
}

/// A chain of these modules, read and polled.
void TstWiring::openSerialLink(const QByteArray &types)
{
    m_fixture->serial->script = device::chain(types, false);
    for (int turn = 0; turn < 200 && session()->state() != SessionState::Cyclic; ++turn)
        m_fixture->time.advance(50);
    m_fixture->time.advance(1000);
    m_fixture->serial->takePayloads();
}

void TstWiring::gatewayChosenInTheDialogIsOpened()
{
    auto *lister = m_fixture->window()->portLister();
    lister->show();
    lister->findChild<QCheckBox *>(QStringLiteral("checkBoxGateway"))->click();
    auto *address = lister->findChild<QLineEdit *>(QStringLiteral("ipAddrBox"));
    address->clear();
    QTest::keyClicks(address, QStringLiteral("10.1.2.3"));
    QTest::mouseClick(lister->findChild<QPushButton *>(QStringLiteral("openBtn")), Qt::LeftButton);
    QVERIFY(m_fixture->tcp->IsConnected());
    QCOMPARE(m_fixture->tcp->address, QStringLiteral("10.1.2.3"));
    QCOMPARE(m_fixture->tcp->port, QStringLiteral("7777"));
    QVERIFY(!m_fixture->serial->IsOpen());
    QVERIFY(m_fixture->readSettings().contains("MainServer=10.1.2.3:7777"));
    QCOMPARE(m_fixture->child<QLineEdit>("ipEdit")->text(), QStringLiteral("10.1.2.3"));
}

void TstWiring::fileFillsTheConnectionBar()
{
    QCOMPARE(m_fixture->child<QLineEdit>("ipEdit")->text(), QStringLiteral("10.9.8.7"));
    QCOMPARE(m_fixture->child<QLineEdit>("comEdit")->text(), QStringLiteral("COM7"));
}

void TstWiring::savedPortSurvivesAChangeToTheGateway()
{
    model_Namespace::Settings settings;
    settings.ipAddress = QStringLiteral("10.1.2.3");
    settings.tcpPort = QStringLiteral("7777");
    settings.commType = Comm_Type::Ethernet;
    m_fixture->app->Slot_ComConfigurationChanged(settings);
    QVERIFY(m_fixture->readSettings().contains("PORT1=COM7:9600,O,7,2"));
}

void TstWiring::progressOfSavingReachesTheDebugFunnel()
{
    QSignalSpy funnel(m_fixture->window(), &Framework_View::Signal_DebugMessage);
    emit m_fixture->window()->Signal_FirmwrFilePath(QStringLiteral("C:/x.bin"));
    QCOMPARE(funnel.size(), 1);
    QVERIFY(funnel.first().first().toString().startsWith(QStringLiteral("Path:")));
}

void TstWiring::progressOfTheSessionReachesTheDebugFunnel()
{
    QSignalSpy funnel(m_fixture->window(), &Framework_View::Signal_DebugMessage);
    session()->Slot_InitializationTimeout();
    QCOMPARE(funnel.first().first().toString(), QStringLiteral("Initialize Sequence Timeout!"));
}

void TstWiring::firmwareFileIsRemembered()
{
    emit m_fixture->window()->Signal_FirmwrFilePath(QStringLiteral("C:/images/a_b.bin"));
    QVERIFY(m_fixture->readSettings().contains("FIRMWR_FILEPATH=C:/images/a_b.bin"));
}

void TstWiring::firmwareCommandsAreQueuedSentAndCleared()
{
    openSerialLink();
    FPGAfwCommand command;
    command.b0 = 1;
    const QByteArray payload("\x16\x01\x00\x00\x00\x00\x00\x00\x00", 9);

    emit m_fixture->window()->Signal_FirmwareCommand(QVariant::fromValue(command));
    emit m_fixture->window()->Signal_AbrtFrmw();
    emit m_fixture->window()->Signal_StartFPGAprocess();
    m_fixture->time.advance(100);
    QVERIFY(!m_fixture->serial->takePayloads().contains(payload));

    emit m_fixture->window()->Signal_FirmwareCommand(QVariant::fromValue(command));
    m_fixture->time.advance(100);
    QVERIFY(!m_fixture->serial->takePayloads().contains(payload));
    emit m_fixture->window()->Signal_StartFPGAprocess();
    m_fixture->time.advance(100);
    QVERIFY(m_fixture->serial->takePayloads().contains(payload));
}

void TstWiring::systemResetGoesOut()
{
    openSerialLink();
    emit m_fixture->window()->Signal_SystemReset();
    m_fixture->time.advance(1100);
    QVERIFY(m_fixture->serial->takePayloads().contains(QByteArray("\x2B\x00\x00\x00\x00\x00\x00", 7)));
}

void TstWiring::sensorSupplyGoesOut()
{
    openSerialLink(QByteArray("\x01\x09"));
    auto *dialog = m_fixture->window()->findChild<ChangeModuleType *>();
    QVERIFY(dialog);
    dialog->Slot_Channel({QStringLiteral("Voltage"), QStringLiteral("Voltage"), QStringLiteral("4")});
    childByName<QLineEdit>(dialog, "VoltValEditBox")->setText(QStringLiteral("15.0"));
    childByName<QCheckBox>(dialog, "supplyVoltCheckBx")->setChecked(true);
    dialog->VoltageCheckBoxClicked(); // the control itself is locked
    m_fixture->time.advance(1100);
    const QByteArray fourthChannelTo15V("\x1C\x00\x00\x00\x04\x01\x78", 7);
    QCOMPARE(m_fixture->serial->takePayloads().count(fourthChannelTo15V), 1);
}

void TstWiring::fastStatusIsRepeatedByTheWindow()
{
    QSignalSpy repeated(m_fixture->window(), &Framework_View::Signal_FastSystemStatus);
    Fast_System_Status status;
    status.voltageRaw = 2400;
    emit session()->Signal_FastSystemStatus(QVariant::fromValue(status));
    QCOMPARE(repeated.size(), 1);
    QCOMPARE(repeated.first().first().value<Fast_System_Status>().voltageRaw, quint16(2400));
}

void TstWiring::queuedWorkShowsAsBusy()
{
    openSerialLink();
    auto *box = m_fixture->child<QLineEdit>("statusBox");
    QCOMPARE(box->text(), QStringLiteral("READY"));
    m_fixture->app->Slot_GetChannelData(1);
    QCOMPARE(box->text(), QStringLiteral("0.50 s"));
    m_fixture->time.advance(3000);
    QCOMPARE(box->text(), QStringLiteral("READY"));
}

void TstWiring::framesLightTheLamps()
{
    const QColor lit(154, 237, 191);
    m_fixture->time.advance(1000);
    QVERIFY(lampColour("txLamp") != lit);
    QVERIFY(lampColour("rxLamp") != lit);
    emit session()->packetSent();
    QCOMPARE(lampColour("txLamp"), lit);
    QVERIFY(lampColour("rxLamp") != lit);
    emit session()->packetRecvd();
    QCOMPARE(lampColour("rxLamp"), lit);
}

void TstWiring::rateChangeReachesTheController()
{
    MessageCatcher messages;
    System_Status status;
    status.bitRate = QStringLiteral("2500");
    emit session()->Signal_SamplingNBitRate(QVariant::fromValue(status));
    QVERIFY(messages.containsText(QStringLiteral("***********System status received Bitrate: \"2500\"")));
}

QTEST_MAIN(TstWiring)

#include "tst_wiring.moc"
