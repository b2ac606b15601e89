#include "app/dynamicmodulesframe_view.h"
#include "controller/modulecontroller_ctrllr.h"
#include "gateway/gatewayzrt.h"
#include "modules/analogmodule_ctrllr.h"
#include "modules/moduledevice_view.h"
#include "protocol/communication.h"
#include "protocol/records/datagrams.h"
#include "protocol/records/fastsystemstatus.h"
#include "protocol/records/powerstatus.h"
#include "protocol/records/systemstatus.h"
#include "support/appfixture.h"
#include "support/devicereplies.h"
#include "system/modulesyssettings_ctrllr.h"
#include "system/modulesyssettings_view.h"
#include "system/vx_samplingrates.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QStatusBar>
#include <QtTest>

namespace {

const QByteArray kSettings = "PORT1=COM7:115200,E,8,1\r\nMode=Serial\r\n";

System_Status fullStatus(const std::vector<int> &types)
{
    System_Status status = systemStatus(types);
    status.bitRate = QStringLiteral("2500 (16ch)");
    status.samplingRate = QStringLiteral("3000");
    status.poweringMode = QStringLiteral("cable");
    status.dataTransmission = QStringLiteral("inductive");
    return status;
}

} // namespace

/// What the application tells the system panel and the top row, and what becomes of their wishes.
class TstSystemPanel : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_fixture.reset(); }

    void panelStandsBetweenBarAndModuleList();
    void panelShowsZeroFromTheStart();
    void statusOfFiveModulesShowsFiveAndTen();
    void statusFillsTheTexts();
    void foreignStatusShowsZeroAndEmptyTexts();
    void statusBringsTheTableToLifeBeforeItMarksTheRate();
    void cleanSlateEmptiesTheTextsAndLeavesTheNumbers();
    void cleanSlateWithoutControllerDoesTheSame();
    void linkThatFailsKillsTheTable();
    void linkThatOpensKillsTheTableBeyondItsCleanSlate();
    void rateReportChangesRatesOnly();
    void chosenRateGoesOutBeforeTheNewStatusIsAsked();
    void switchesReachTheDeviceWithOneRequest_data();
    void switchesReachTheDeviceWithOneRequest();
    void switchesReachRowsWithShuntsOnly();
    void gatewayAddressInUseIsSaved();
    void savedGatewayAddressIsLoaded();
    void debugTextsReachTheFunnel();
    void responseDelayIsShown();
    void powerSettingGoesOutAndIsReadBack();
    void fastSystemStatusReachesTheTopRow();
    void topRowGoesWithItsPendingSetpoint();

private:
    void openSerialLink();
    QString label(const char *name) const { return m_fixture->child<QLabel>(name)->text(); }
    QString edit(const char *name) const { return m_fixture->child<QLineEdit>(name)->text(); }
    QString panelTexts() const
    {
        return edit("lineEdit_BitRate") + QLatin1Char('|') + edit("lineEdit_SamplingRate") +
               QLatin1Char('|') + label("label_PoweringMode") + QLatin1Char('|') +
               label("label_DataTransmission");
    }
    QString panelNumbers() const
    {
        return label("label_ModulesNumber") + QLatin1Char('|') + label("label_ChannelsNumber");
    }
    /// Of the table that the system panel opens; the gateway's has cells of the same names.
    QPushButton *cell(const char *name) const
    {
        return childByName<QPushButton>(m_fixture->child<VX_SamplingRates>("samplingRatesDialog"), name);
    }
    Communication *session() const { return m_fixture->app->communication(); }
    ModuleSysSettings_Ctrllr *panel() const { return m_fixture->app->sysSettings(); }
    void report(const System_Status &status)
    {
        m_fixture->app->Slot_SystemStatus(QVariant::fromValue(status));
    }

    std::unique_ptr<AppFixture> m_fixture;
};

void TstSystemPanel::init()
{
    m_fixture = std::make_unique<AppFixture>();
    m_fixture->writeSettings(kSettings);
    m_fixture->serialOpens = true;
    m_fixture->start();
}

/// A chain of one module of type 1, read and polled.
void TstSystemPanel::openSerialLink()
{
    m_fixture->serial->script = device::chain(QByteArray("\x01"), false);
    for (int turn = 0; turn < 200 && session()->state() != SessionState::Cyclic; ++turn)
        m_fixture->time.advance(50);
    m_fixture->time.advance(1000);
    m_fixture->serial->takePayloads();
}

void TstSystemPanel::panelStandsBetweenBarAndModuleList()
{
    const auto top = [this](QWidget *widget) { return widget->mapTo(m_fixture->window(), QPoint()).y(); };
    auto *bar = m_fixture->child<QLineEdit>("ipEdit");
    auto *list = m_fixture->window()->findChild<DynamicModulesFrame_View *>();
    QCoreApplication::processEvents();
    QVERIFY(top(bar) + bar->height() <= top(panel()->GetView()));
    QVERIFY(top(panel()->GetView()) + panel()->GetView()->height() <= top(list));
}

void TstSystemPanel::panelShowsZeroFromTheStart()
{
    QCOMPARE(panelNumbers(), QStringLiteral("0|0"));
    QCOMPARE(panelTexts(), QStringLiteral("|||"));
}

void TstSystemPanel::statusOfFiveModulesShowsFiveAndTen()
{
    report(fullStatus({1, 2, 4, 9, 1}));
    QCOMPARE(panelNumbers(), QStringLiteral("5|10"));
}

void TstSystemPanel::statusFillsTheTexts()
{
    report(fullStatus({1}));
    QCOMPARE(panelTexts(), QStringLiteral("2500 (16ch)|3000|cable|inductive"));
}

void TstSystemPanel::foreignStatusShowsZeroAndEmptyTexts()
{
    report(fullStatus({1, 2}));
    m_fixture->app->Slot_SystemStatus(QVariant(QStringLiteral("no status")));
    QCOMPARE(panelNumbers(), QStringLiteral("0|0"));
    QCOMPARE(panelTexts(), QStringLiteral("|||"));
}

void TstSystemPanel::statusBringsTheTableToLifeBeforeItMarksTheRate()
{
    QVERIFY(!cell("16,2500")->isEnabled());
    report(fullStatus({1}));
    QVERIFY(cell("16,2500")->isEnabled());
    QVERIFY(!cell("256,2500")->isEnabled());
    QCOMPARE(cell("16,2500")->styleSheet(), QStringLiteral("border: 2px solid blue"));
}

void TstSystemPanel::cleanSlateEmptiesTheTextsAndLeavesTheNumbers()
{
    report(fullStatus({1, 2, 4, 9, 1}));
    m_fixture->app->Slot_CleanSlateProtocol();
    QCOMPARE(panelTexts(), QStringLiteral("|||"));
    QCOMPARE(panelNumbers(), QStringLiteral("5|10"));
    QVERIFY(!cell("16,2500")->isEnabled());
}

void TstSystemPanel::cleanSlateWithoutControllerDoesTheSame()
{
    System_Status status = fullStatus({});
    status.sModules = {};
    report(status);
    QVERIFY(!m_fixture->app->controllerModule());
    m_fixture->app->Slot_CleanSlateProtocol();
    QCOMPARE(panelTexts(), QStringLiteral("|||"));
    QVERIFY(!cell("16,2500")->isEnabled());
}

void TstSystemPanel::linkThatFailsKillsTheTable()
{
    report(fullStatus({1}));
    QVERIFY(cell("16,2500")->isEnabled());
    QSignalSpy disabled(m_fixture->app.get(), &Framework_Ctrllr::Signal_DisableSamplingRate);
    m_fixture->serial->opens = false;
    QVERIFY(!m_fixture->app->openLink());
    QVERIFY(!cell("16,2500")->isEnabled());
    QCOMPARE(disabled.size(), 1);
}

void TstSystemPanel::linkThatOpensKillsTheTableBeyondItsCleanSlate()
{
    report(fullStatus({1}));
    QStringList texts; // of the status line, at each emission
    connect(m_fixture->app.get(), &Framework_Ctrllr::Signal_DisableSamplingRate, this,
            [this, &texts] { texts.append(m_fixture->statusText()); });
    QVERIFY(m_fixture->app->openLink());
    QCOMPARE(texts, (QStringList{QStringLiteral("Retrying to connect with Torvex"),
                                 QStringLiteral("COM Port opened: COM7")}));
    QVERIFY(!cell("16,2500")->isEnabled());
}

void TstSystemPanel::rateReportChangesRatesOnly()
{
    report(fullStatus({1, 2}));
    const auto *row = m_fixture->app->analogModules().front();
    System_Status status = fullStatus({});
    status.bitRate = QStringLiteral("625 (32ch)");
    status.samplingRate = QStringLiteral("375");
    status.poweringMode = QStringLiteral("battery");
    emit session()->Signal_SamplingNBitRate(QVariant::fromValue(status));
    QCOMPARE(panelTexts(), QStringLiteral("625 (32ch)|375|cable|inductive"));
    QCOMPARE(panelNumbers(), QStringLiteral("2|4"));
    QCOMPARE(m_fixture->app->analogModules().size(), std::size_t(2));
    QCOMPARE(m_fixture->app->analogModules().front(), row);
    QCOMPARE(cell("32,625")->styleSheet(), QStringLiteral("border: 2px solid blue"));
    QCOMPARE(cell("16,2500")->styleSheet(), QString());
}

void TstSystemPanel::chosenRateGoesOutBeforeTheNewStatusIsAsked()
{
    openSerialLink();
    cell("32,625")->click();
    m_fixture->time.advance(1100);
    const QList<QByteArray> sent = m_fixture->serial->takePayloads();
    // 625 kBit/s is entry 6 of its list, 32 channels is entry 4.
    const int command = sent.indexOf(QByteArray("\x2A\x00\x00\x00\x06\x04\x00", 7));
    const int request = sent.indexOf(QByteArray("\x01\x00\x00\x00\x01", 5));
    QVERIFY(command >= 0);
    QCOMPARE(request, command + 1);
}

void TstSystemPanel::switchesReachTheDeviceWithOneRequest_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("payload");
    QTest::newRow("on") << "loadPreselBtn" << QByteArray("\x28\x00\x00\x00\x01\x8F", 6);
    QTest::newRow("off") << "loadPreselBtn_off" << QByteArray("\x28\x00\x00\x00\x01\x8E", 6);
}

void TstSystemPanel::switchesReachTheDeviceWithOneRequest()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, payload);
    openSerialLink();
    QTest::mouseClick(m_fixture->child<QPushButton>(name.toLatin1().constData()), Qt::LeftButton);
    m_fixture->time.advance(1600);
    QCOMPARE(m_fixture->serial->takePayloads().count(payload), 1);
}

void TstSystemPanel::switchesReachRowsWithShuntsOnly()
{
    report(fullStatus({1, 2, 3, 4, 5, 6, 7, 8, 9, 77}));
    QList<int> reached;
    const auto &rows = m_fixture->app->analogModules();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        auto *row = qobject_cast<AnalogModule_Ctrllr *>(rows.at(i));
        const bool joined = QObject::disconnect(panel(), &ModuleSysSettings_Ctrllr::Signal_ldPresel, row,
                                                &AnalogModule_Ctrllr::Slot_FilterOrRangeHandle);
        if (joined)
            reached << static_cast<int>(i) + 1;
    }
    QCOMPARE(reached, (QList<int>{1, 9}));
}

void TstSystemPanel::gatewayAddressInUseIsSaved()
{
    emit panel()->GetView()->Signal_ZrtGateway(QStringLiteral("10.1.2.3"), QStringLiteral("4567"));
    QVERIFY(m_fixture->readSettings().contains("ZrtGateway=10.1.2.3:4567"));
}

void TstSystemPanel::savedGatewayAddressIsLoaded()
{
    AppFixture fixture;
    fixture.writeSettings("ZrtGateway=10.1.2.3:4567\r\nPORT1=COM5:115200,E,8,1\r\n");
    fixture.start();
    const auto *gateway = childByName<GatewayZRT>(fixture.window(), "gateway");
    const auto text = [gateway](const QString &name) { // a dialog of the panel has a field of this name too
        return gateway->findChild<QLineEdit *>(name, Qt::FindDirectChildrenOnly)->text();
    };
    QCOMPARE(text(QStringLiteral("ipAddrBox")), QStringLiteral("10.1.2.3"));
    QCOMPARE(text(QStringLiteral("portNo")), QStringLiteral("4567"));
}

void TstSystemPanel::debugTextsReachTheFunnel()
{
    QSignalSpy funnel(m_fixture->window(), &Framework_View::Signal_DebugMessage);
    emit panel()->GetView()->debugMessage(QStringLiteral("gateway says hello"));
    QCOMPARE(funnel.size(), 1);
    QCOMPARE(funnel.first().first().toString(), QStringLiteral("gateway says hello"));
}

void TstSystemPanel::responseDelayIsShown()
{
    emit panel()->Signal_HwResponseDelay(1234);
    QCOMPARE(m_fixture->window()->statusBar()->currentMessage(), QStringLiteral("HW delay response : 1234"));
}

void TstSystemPanel::powerSettingGoesOutAndIsReadBack()
{
    openSerialLink();
    m_fixture->app->controllerModule()->Slot_OutputVoltageModeChanged(1);
    m_fixture->time.advance(1600);
    const QList<QByteArray> sent = m_fixture->serial->takePayloads();
    const int command = sent.indexOf(QByteArray("\x18\x00\x00\x00\x01\x21\x00\x00", 8));
    QVERIFY(command >= 0);
    QCOMPARE(sent.indexOf(QByteArray("\x12\x00\x00\x00\x81", 5)), command + 1);
}

void TstSystemPanel::fastSystemStatusReachesTheTopRow()
{
    report(fullStatus({1}));
    Fast_System_Status status;
    status.voltageRaw = 2410;
    emit session()->Signal_FastSystemStatus(QVariant::fromValue(status));
    QCOMPARE(label("label_InputVoltage"), QStringLiteral("24.1"));
}

void TstSystemPanel::topRowGoesWithItsPendingSetpoint()
{
    openSerialLink();
    m_fixture->app->controllerModule()->Slot_OutputVoltageSetpointChanged(13.5);
    m_fixture->app->Slot_CleanSlateProtocol();
    m_fixture->time.advance(5000);
    for (const QByteArray &payload : m_fixture->serial->takePayloads())
        QVERIFY(!payload.startsWith('\x18'));
}

QTEST_MAIN(TstSystemPanel)

#include "tst_systempanel.moc"
