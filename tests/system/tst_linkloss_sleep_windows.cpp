#include "firmwarefixture.h"
#include "gatewayfixture.h"
#include "operatorview.h"
#include "sleepingmachine.h"

#include <QLineEdit>
#include <QLoggingCategory>
#include <QRandomGenerator>
#include <QtTest>

using namespace std::chrono_literals;
using Asleep = SkippingTime::Asleep;

namespace {

constexpr int kAsleepAt = 60; ///< of the commands that the image takes, about 160

QByteArray imageContents()
{
    QRandomGenerator random(5);
    QByteArray bytes(40000, '\0');
    for (char &byte : bytes)
        byte = static_cast<char>(random.bounded(256));
    const QByteArray chip("iCE40UP5K-SG48");
    return bytes.replace(100, chip.size(), chip);
}

QByteArray filledUp(QByteArray file)
{
    while (file.size() % 256 != 0)
        file.append('\xFF');
    return file;
}

} // namespace

/// The machine sleeps for hours while the window of the firmware or the panel of the gateway is at work; see
/// tst_linkloss_sleep for the main window.
///
/// | Asleep                  | Timers that counted the sleep        | Timers that stood still              |
/// |-------------------------|--------------------------------------|--------------------------------------|
/// | during flashing         | The update stops, the bar stands     | The update goes on and completes.    |
/// |                         | until "Abort"; then it can be        |                                      |
/// |                         | started again.                       |                                      |
/// | with the gateway's      | One status request at once;          | The same within a second.            |
/// | panel                   | connected and mirrored as before.    |                                      |
/// | and its link is dropped | "Connect", lamps gray, controls      | The same.                            |
/// |                         | disabled; connected again 5 s later. |                                      |
class TstLinkLossSleepWindows : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false")); }
    void duringFlashing_data() { addPlatforms(); }
    void duringFlashing();
    void withTheGatewayPanel_data() { addPlatforms(); }
    void withTheGatewayPanel();
    void gatewayDropsItsLinkMeanwhile_data() { addPlatforms(); }
    void gatewayDropsItsLinkMeanwhile();

private:
    static void addPlatforms();
};

void TstLinkLossSleepWindows::addPlatforms()
{
    QTest::addColumn<Asleep>("asleep");
    for (const auto &platform : platforms())
        QTest::newRow(platform.first) << platform.second;
}

void TstLinkLossSleepWindows::duringFlashing()
{
    QFETCH(Asleep, asleep);
    bool hasSlept = false;
    FirmwareFixture f;
    f.begin();
    f.openWindow();
    const QByteArray file = imageContents();
    f.choose(f.write("x_ANA_FPGA5_1.bin", file));
    connect(f.device.get(), &sim::Server::replied, f.device.get(), [&] {
        if (f.fpgaCommands() != kAsleepAt || hasSlept)
            return;
        hasSlept = true;
        f.time.sleep(kNight, asleep); // the reply is on its way
    });
    f.click("flashButton");
    WAIT_VERIFY(hasSlept);
    if (timesOut(asleep)) {
        WAIT_VERIFY(f.isWhole());
        const int standing = f.progress();
        QVERIFY2(standing >= kAsleepAt - 3 && standing <= kAsleepAt, qPrintable(QString::number(standing)));
        f.waitForARound();
        QCOMPARE(f.fpgaCommands(), kAsleepAt);
        QCOMPARE(f.device->requestCount(0x2B), 0);
        QCOMPARE(f.progress(), standing);
        QVERIFY(f.part<QProgressBar>("progressBar")->isVisible());
        QCOMPARE(f.buttonText(), QStringLiteral("Abort"));
        QCOMPARE(f.label(), QString());
        f.abort();
        f.startOver();
        f.click("flashButton");
    }
    f.waitForTheResetsEnd(1);
    QCOMPARE(f.label(), QStringLiteral("FPGA flashing complete..."));
    QCOMPARE(f.buttonText(), QStringLiteral("Read and Flash File"));
    QVERIFY(f.images().image({1, 2}) == filledUp(file));
    QCOMPARE(f.images().breaches(), QStringList());
    QCOMPARE(f.device->refusals(), QStringList());
}

void TstLinkLossSleepWindows::withTheGatewayPanel()
{
    QFETCH(Asleep, asleep);
    GatewayFixture f;
    f.startWithGateway();
    f.openConnectedPanel();
    f.waitUntilPolled(1);
    sim::GatewayState &state = f.gateway->state();
    state.version = QStringLiteral("9.9.9");
    state.mode = QStringLiteral("UDP-M");
    const int requests = f.statusRequests();
    f.time.sleep(kNight, asleep);
    if (!timesOut(asleep))
        f.time.skip(1s);
    WAIT_COMPARE(f.statusRequests(), requests + 1); // the hours that were missed are not made up for
    WAIT_COMPARE(f.differences(), QStringList());
    QVERIFY(f.isConnected());
    QCOMPARE(f.lampColour("tcpLed"), QColor(Qt::green));
    for (int i = 0; i < 5; ++i)
        f.nextPoll();
    QCOMPARE(f.gateway->connectionCount(), 1);
    QCOMPARE(f.clockSettings(), 1); // the connection of before
    QCOMPARE(f.lines(), QStringList());
    f.waitUntilRead();
    WAIT_COMPARE(operatorview::differences(f), QStringList());
}

void TstLinkLossSleepWindows::gatewayDropsItsLinkMeanwhile()
{
    QFETCH(Asleep, asleep);
    GatewayFixture f;
    f.startWithGateway();
    f.openConnectedPanel();
    f.waitUntilPolled(1);
    f.unplugGateway();
    f.time.sleep(kNight, asleep);
    WAIT_VERIFY(!f.isConnected());
    QCOMPARE(f.lampColour("tcpLed"), QColor(Qt::gray));
    QCOMPARE(f.lampColour("PCM_Led"), QColor(Qt::gray));
    QCOMPARE(f.markedCell(), QString());
    QVERIFY(!f.part<QWidget>("comboMode")->isEnabled());
    QVERIFY(f.part<QWidget>("tcpConnect_Btn")->isEnabled());
    sim::GatewayState state;
    state.version = QStringLiteral("9.9.9");
    f.plugGateway(state);
    f.time.skip(5s);
    WAIT_VERIFY(f.isConnected());
    WAIT_COMPARE(f.differences(), QStringList());
    f.waitUntilPolled(1);
    f.nextPoll(5s); // a retry that still ran would make another connection
    f.nextPoll();
    QCOMPARE(f.clockSettings(), 1);
    QVERIFY(f.isConnected());
    QCOMPARE(f.gateway->connectionCount(), 1);
    QCOMPARE(f.lines(), QStringList());
    f.waitUntilRead();
}

QTEST_MAIN(TstLinkLossSleepWindows)

#include "tst_linkloss_sleep_windows.moc"
