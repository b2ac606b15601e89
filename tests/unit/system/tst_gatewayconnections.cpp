#include "base/gui/fonts.h"
#include "gateway/gatewayzrt.h"
#include "panel.h"
#include "support/messagecatcher.h"
#include "system/rates/ratetable.h"
#include "system/vx_samplingrates.h"

#include <QApplication>
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

namespace {

const QByteArray kClock("#030_1772440200000000000\r"); ///< of the time that stands still

/// The panel of the system settings with both tables of rates, and a gateway on the loopback interface that
/// says what the test says.
class Desk
{
public:
    Desk()
    {
        if (!server.listen(QHostAddress::LocalHost))
            qFatal("No port is free on the loopback interface");
        emit panel.controller->Signal_LoadGateway("127.0.0.1", port());
        emit panel.controller->Signal_EnableSamplingRate();
    }

    QString port() const { return QString::number(server.serverPort()); }
    GatewayZRT *gateway() const { return panel.child<GatewayZRT>("gateway"); }
    VX_SamplingRates *rates() const { return panel.child<VX_SamplingRates>("samplingRatesDialog"); }
    QPushButton *connectButton() const { return childByName<QPushButton>(gateway(), "tcpConnect_Btn"); }
    QPushButton *gatewayCell(const char *name) const { return childByName<QPushButton>(gateway(), name); }
    QPushButton *deviceCell(const char *name) const { return panel.ratePart<QPushButton>(name); }

    static QString marked(const QWidget *dialog)
    {
        const auto *button = dialog->findChild<RateTable *>("rateTable")->selected();
        return button ? button->objectName() : QString();
    }

    void openGateway() const { QTest::mouseClick(panel.child<QPushButton>("tvxGateway"), Qt::LeftButton); }

    /// Opens the gateway's panel; true when the gateway has the connection and its clock, which nobody has
    /// read. The short wait of the link may be over on a machine under load; the operator presses the button
    /// again.
    bool openConnected()
    {
        openGateway();
        for (int i = 0; i < 20 && connectButton()->text() == "Connect"; ++i)
            QTest::mouseClick(connectButton(), Qt::LeftButton);
        return QTest::qWaitFor([this] {
            while (server.hasPendingConnections())
                peer = server.nextPendingConnection(); // those before it were given up
            return peer && peer->peek(kClock.size()) == kClock;
        });
    }

    /// The same; what was sent and told so far is done with.
    bool openGreeted()
    {
        const bool isConnected = openConnected();
        if (isConnected)
            peer->read(kClock.size());
        panel.take();
        return isConnected;
    }

    /// True when the gateway gets exactly this, and nothing behind it.
    bool gets(const QByteArray &bytes) const
    {
        // A line that is sent now arrives behind anything that was sent before.
        gateway()->on_debugBtn_clicked(false);
        const QByteArray expected = bytes + "#000_1\r";
        QByteArray all;
        const bool inTime = QTest::qWaitFor([&] {
            all += peer->readAll();
            return all.size() >= expected.size();
        });
        return inTime && all == expected;
    }

    bool getsNothing() const { return gets(QByteArray()); }

    QTcpServer server;
    QTcpSocket *peer = nullptr; ///< the gateway's end of the connection; belongs to the server
    Panel panel;
};

} // namespace

/// How the panel of the system settings and the gateway's panel work together.
class TstGatewayConnections : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }
    void buttonConnectsAndThenShowsThePanel();
    void buttonFindsTheLinkUpAfterTheTitleBar();
    void failedConnectShowsThePanelAllTheSame();
    void savedAddressIsShown();
    void addressInUseIsTold();
    void debugTextsArePassedOn();
    void gatewaysChoiceGoesToTheDeviceOnce();
    void devicesChoiceGoesToTheGatewayOnce();
    void choicesInTurnMakeNoLoop();
    void rateThatIsDeadInTheGatewaysTable();
    void devicesReportStaysInTheDevicesTable();
    void devicesChoiceWithoutALinkIsForgotten();
    void systemWithoutModulesLeavesTheGatewaysTableAlone();
    void connectedPanelGoesWithTheController();
};

void TstGatewayConnections::buttonConnectsAndThenShowsThePanel()
{
    Desk d;
    QList<bool> shownAtConnect;
    connect(d.gateway(), &GatewayZRT::connectToGateway, this,
            [&] { shownAtConnect.append(d.gateway()->isVisible()); });
    QVERIFY(d.panel.child<QPushButton>("tvxGateway")->isEnabled());
    QVERIFY(d.openConnected()); // the clock is set at once
    QVERIFY(!shownAtConnect.first());
    QVERIFY(d.gateway()->isVisible());
    QCOMPARE(QApplication::activeModalWidget(), d.gateway());
    QCOMPARE(d.connectButton()->text(), QStringLiteral("Disconnect"));
}

void TstGatewayConnections::buttonFindsTheLinkUpAfterTheTitleBar()
{
    Desk d;
    QVERIFY(d.openGreeted());
    d.gateway()->close(); // the link stays up
    QVERIFY(!d.gateway()->isVisible());
    const MessageCatcher log;
    d.openGateway();
    QVERIFY(log.contains("Already Connected"));
    QVERIFY(d.gateway()->isVisible());
    QVERIFY(d.getsNothing());
    QVERIFY(!d.server.hasPendingConnections());
    QCOMPARE(d.panel.take(), QStringList());
}

void TstGatewayConnections::failedConnectShowsThePanelAllTheSame()
{
    const Desk d;
    emit d.panel.controller->Signal_LoadGateway("127.0.0.1", "0");
    d.openGateway();
    QVERIFY(d.gateway()->isVisible());
    QCOMPARE(d.connectButton()->text(), QStringLiteral("Connect"));
    QVERIFY(d.connectButton()->isEnabled());
}

void TstGatewayConnections::savedAddressIsShown()
{
    const Desk d;
    emit d.panel.controller->Signal_LoadGateway("10.1.2.3", "4567");
    QCOMPARE(childByName<QLineEdit>(d.gateway(), "ipAddrBox")->text(), QStringLiteral("10.1.2.3"));
    // One of its dialogs has a field of the same name.
    const auto *field = d.gateway()->findChild<QLineEdit *>("portNo", Qt::FindDirectChildrenOnly);
    QCOMPARE(field->text(), QStringLiteral("4567"));
}

void TstGatewayConnections::addressInUseIsTold()
{
    Desk d;
    emit d.panel.controller->Signal_LoadGateway("127.0.0.1", "0");
    d.openGateway();
    QCOMPARE(d.panel.take(), QStringList{"address in use 127.0.0.1 0"});
}

void TstGatewayConnections::debugTextsArePassedOn()
{
    Desk d;
    emit d.gateway()->Signal_debugMessage("hello");
    QCOMPARE(d.panel.take(), QStringList{"debug hello"});
}

void TstGatewayConnections::gatewaysChoiceGoesToTheDeviceOnce()
{
    Desk d;
    QVERIFY(d.openGreeted());
    QTest::mouseClick(d.gatewayCell("16,1250"), Qt::LeftButton);
    QCOMPARE(d.panel.take(), QStringList{"rates 1250 16"});
    QCOMPARE(Desk::marked(d.gateway()), QStringLiteral("16,1250"));
    QCOMPARE(Desk::marked(d.rates()), QStringLiteral("16,1250"));
    QVERIFY(d.gets("#007_1250:16\r"));
}

void TstGatewayConnections::devicesChoiceGoesToTheGatewayOnce()
{
    Desk d;
    QVERIFY(d.openGreeted());
    d.gateway()->close();
    d.panel.view()->bitRateExec(false);
    QTest::mouseClick(d.deviceCell("32,2500"), Qt::LeftButton);
    QCOMPARE(d.panel.take(), QStringList{"rates 2500 32"}); // not told again by the gateway's panel
    QCOMPARE(Desk::marked(d.rates()), QStringLiteral("32,2500"));
    QCOMPARE(Desk::marked(d.gateway()), QStringLiteral("32,2500"));
    QVERIFY(d.gets("#007_2500:32\r"));
}

void TstGatewayConnections::choicesInTurnMakeNoLoop()
{
    Desk d;
    QVERIFY(d.openGreeted());
    QTest::mouseClick(d.gatewayCell("8,625"), Qt::LeftButton);
    QTest::mouseClick(d.deviceCell("64,1250"), Qt::LeftButton);
    QTest::mouseClick(d.gatewayCell("8,625"), Qt::LeftButton);
    d.panel.time.advance(10);
    QCOMPARE(d.panel.take(), (QStringList{"rates 625 8", "rates 1250 64", "rates 625 8"}));
    QVERIFY(d.gets("#007_625:8\r#007_1250:64\r#007_625:8\r"));
}

void TstGatewayConnections::rateThatIsDeadInTheGatewaysTable()
{
    Desk d;
    QVERIFY(d.openGreeted());
    d.peer->write("#S;;;2" + QByteArray(25, ';') + "60000;");
    QTRY_VERIFY(!d.gatewayCell("2,2500")->isEnabled());
    QVERIFY(d.deviceCell("2,2500")->isEnabled()); // the limit is the gateway's own
    QTest::mouseClick(d.deviceCell("2,2500"), Qt::LeftButton);
    QVERIFY(d.gets("#007_2500:2\r"));
    QCOMPARE(Desk::marked(d.gateway()), QString());
    QCOMPARE(Desk::marked(d.rates()), QStringLiteral("2,2500"));
}

void TstGatewayConnections::devicesReportStaysInTheDevicesTable()
{
    Desk d;
    QVERIFY(d.openGreeted());
    d.panel.view()->setBitRate("2500 (16ch)");
    QCOMPARE(Desk::marked(d.rates()), QStringLiteral("16,2500"));
    QCOMPARE(Desk::marked(d.gateway()), QString());
    QCOMPARE(d.panel.take(), QStringList());
    QVERIFY(d.getsNothing());
}

void TstGatewayConnections::devicesChoiceWithoutALinkIsForgotten()
{
    Desk d;
    QTest::mouseClick(d.deviceCell("32,2500"), Qt::LeftButton);
    QCOMPARE(d.panel.take(), QStringList{"rates 2500 32"});
    QVERIFY(!d.server.hasPendingConnections());
    QVERIFY(d.openGreeted());
    QVERIFY(d.getsNothing());
}

void TstGatewayConnections::systemWithoutModulesLeavesTheGatewaysTableAlone()
{
    Desk d;
    QVERIFY(d.openGreeted());
    QVERIFY(d.gatewayCell("16,2500")->isEnabled());
    emit d.panel.controller->Signal_DisableSamplingRate();
    QVERIFY(d.gatewayCell("16,2500")->isEnabled());
    QVERIFY(!d.deviceCell("16,2500")->isEnabled());
}

void TstGatewayConnections::connectedPanelGoesWithTheController()
{
    Desk d;
    QVERIFY(d.openGreeted());
    const QPointer<GatewayZRT> gateway = d.gateway();
    d.panel.controller.reset();
    QVERIFY(!gateway);
    QVERIFY(!QApplication::activeModalWidget());
    QTRY_COMPARE(d.peer->state(), QAbstractSocket::UnconnectedState);
}

QTEST_MAIN(TstGatewayConnections)
#include "tst_gatewayconnections.moc"
