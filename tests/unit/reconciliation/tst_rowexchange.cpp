#include "modules/analogmodule_ctrllr.h"
#include "modules/moduledevice_view.h"
#include "protocol/communication.h"
#include "protocol/records/datagrams.h"
#include "protocol/records/fastmodulestatus.h"
#include "protocol/records/modulestatus.h"
#include "protocol/records/systemstatus.h"
#include "support/appfixture.h"

#include <QLabel>
#include <QSignalSpy>
#include <QStatusBar>
#include <QtTest>

namespace {

/// A settings file with a port and no mode: the application starts without opening a link.
const QByteArray kQuietSettings = "PORT1=COM5:115200,E,8,1\r\n";

} // namespace

/// What passes between the rows of a chain, the session and each other.
class TstRowExchange : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_fixture.reset(); }

    void groupCommandReachesAllButUnknownModules();
    void statusReachesTheRows();
    void wantedChannelDataIsFetched();
    void channelCommandGoesOut();
    void hardwareDelayIsShown();

private:
    /// A chain of one module that was read over the serial link and is polled.
    void joinSilentChain();
    void receive(const System_Status &status)
    {
        m_fixture->app->Slot_SystemStatus(QVariant::fromValue(status));
    }
    ModuleDevice_View *row(int index) const
    {
        return m_fixture->app->analogModules().at(static_cast<std::size_t>(index))->GetView();
    }

    std::unique_ptr<AppFixture> m_fixture;
};

void TstRowExchange::init()
{
    m_fixture = std::make_unique<AppFixture>();
    m_fixture->writeSettings(kQuietSettings);
    m_fixture->start();
}

void TstRowExchange::joinSilentChain()
{
    m_fixture->serial->opens = true;
    m_fixture->serial->script = device::chain(QByteArray("\x01"), false);
    model_Namespace::Settings settings;
    settings.commType = Comm_Type::Serial;
    QVERIFY(m_fixture->app->Slot_ComConfigurationChanged(settings));
    for (int turn = 0; turn < 100 && m_fixture->app->analogModules().empty(); ++turn)
        m_fixture->time.advance(50);
    m_fixture->time.advance(1000);
    m_fixture->serial->takePayloads();
}

void TstRowExchange::groupCommandReachesAllButUnknownModules()
{
    receive(systemStatus({1, 77, 2, 9}));
    QSignalSpy all(m_fixture->app.get(), &Framework_Ctrllr::Signal_SendAll);
    const auto module = [this](std::size_t index) {
        return qobject_cast<AnalogModule_Ctrllr *>(m_fixture->app->analogModules().at(index));
    };
    GroupCommand command;
    command.command = 3;
    command.value = 2500;
    emit module(0)->Signal_ShiftClickCommand(command);
    QCOMPARE(all.size(), 1);
    QCOMPARE(all.first().first().value<GroupCommand>(), command);
    // Taking a connection away tells whether it was there: the sender hears its own command too.
    const auto isJoined = [&](std::size_t index) {
        return QObject::disconnect(m_fixture->app.get(), &Framework_Ctrllr::Signal_SendAll, module(index),
                                   &AnalogModule_Ctrllr::Slot_FilterOrRangeHandle);
    };
    QVERIFY(isJoined(0));
    QVERIFY(!isJoined(1));
    QVERIFY(isJoined(2));
    QVERIFY(isJoined(3));
}

void TstRowExchange::statusReachesTheRows()
{
    receive(systemStatus({1, 2}));
    Module_Status status;
    status.moduleAddress = 2;
    status.moduleType = 2;
    status.serialNumber = QStringLiteral("V-0042");
    emit m_fixture->app->communication()->Signal_StaticModuleStatus(QVariant::fromValue(status));
    const auto serial = [this](int index) {
        return row(index)->findChild<QLabel *>(QStringLiteral("label_SnVersion"))->text();
    };
    QCOMPARE(serial(1), QStringLiteral("V-0042"));
    QVERIFY(serial(0) != QStringLiteral("V-0042"));

    QVector<Fast_Module_Status> fast(kFastModuleStatusCount);
    fast[1].supplyVoltage = 1200;
    emit m_fixture->app->communication()->Signal_FastModuleStatus(QVariant::fromValue(fast));
    QCOMPARE(row(0)->findChild<QLabel *>(QStringLiteral("label_Voltage"))->text(), QStringLiteral("12.00 V"));
}

void TstRowExchange::wantedChannelDataIsFetched()
{
    joinSilentChain();
    QSignalSpy busy(m_fixture->app.get(), &Framework_Ctrllr::statusBusy);
    auto *module = qobject_cast<AnalogModule_Ctrllr *>(m_fixture->app->analogModules().front());
    emit module->Signal_GetChannelData(0x105); // its low byte is the address
    QCOMPARE(busy.size(), 1);
    m_fixture->time.advance(600);
    QVERIFY(m_fixture->serial->takePayloads().contains(QByteArray("\x12\x00\x00\x00\x05", 5)));
}

void TstRowExchange::channelCommandGoesOut()
{
    joinSilentChain();
    DatagramT1 request;
    request.module = 1;
    request.channel = 2;
    request.data.gainIndex = 4;
    request.data.selector = 2;
    m_fixture->app->Slot_SendChannelCommand(QVariant::fromValue(request));
    m_fixture->time.advance(600);
    QVERIFY(m_fixture->serial->takePayloads().contains(QByteArray("\x22\x00\x00\x00\x02\x04", 6)));
}

void TstRowExchange::hardwareDelayIsShown()
{
    receive(systemStatus({1}));
    auto *module = qobject_cast<AnalogModule_Ctrllr *>(m_fixture->app->analogModules().front());
    emit module->Signal_HwResponseDelay(17);
    QCOMPARE(m_fixture->window()->statusBar()->currentMessage(), QStringLiteral("HW delay response : 17"));
}

QTEST_MAIN(TstRowExchange)

#include "tst_rowexchange.moc"
