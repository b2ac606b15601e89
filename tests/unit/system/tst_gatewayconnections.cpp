#include "base/gui/fonts.h"
#include "gateway/gatewayzrt.h"
#include "panel.h"
#include "support/messagecatcher.h"
#include "system/vx_samplingrates.h"

#include <QApplication>
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

namespace {

const QString kMarked = QStringLiteral("border: 2px solid blue");

/// A gateway on the loopback interface.
struct LoopbackGateway
{
    LoopbackGateway() { listening = server.listen(QHostAddress::LocalHost); }

    QString port() const { return QString::number(server.serverPort()); }

    /// The next bytes, as many of them as came in time.
    QByteArray read(int length)
    {
        const auto areThere = [&] {
            if (!peer)
                peer = server.nextPendingConnection();
            return peer && peer->bytesAvailable() >= length;
        };
        const bool inTime = QTest::qWaitFor(areThere);
        return inTime ? peer->read(length) : QByteArray();
    }

    QTcpServer server;
    bool listening = false;
    QTcpSocket *peer = nullptr; // of the server
};

GatewayZRT *gatewayOf(const Panel &panel)
{
    return panel.child<GatewayZRT>("gateway");
}

void openGateway(const Panel &panel)
{
    QTest::mouseClick(panel.child<QPushButton>("tvxGateway"), Qt::LeftButton);
}

QPushButton *gatewayCell(const Panel &panel, const char *name)
{
    return childByName<QPushButton>(gatewayOf(panel), name);
}

/// One of its dialogs has a field of the same name.
QLineEdit *gatewayPort(const Panel &panel)
{
    return gatewayOf(panel)->findChild<QLineEdit *>("portNo", Qt::FindDirectChildrenOnly);
}

} // namespace

/// How the panel of the system settings and the gateway's panel work together.
class TstGatewayConnections : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }
    void buttonConnectsAndThenShowsThePanel();
    void openPanelThatIsConnectedDoesNotConnectAgain();
    void failedConnectShowsThePanelAllTheSame();
    void savedAddressIsShown();
    void addressInUseIsTold();
    void debugTextsArePassedOn();
    void rateOfTheSystemGoesToTheGateway();
    void rateOfTheGatewayGoesToTheSystemOnce();
    void systemWithoutModulesLeavesTheGatewaysTableAlone();
    void connectedPanelGoesWithTheController();
};

void TstGatewayConnections::buttonConnectsAndThenShowsThePanel()
{
    LoopbackGateway peer;
    QVERIFY(peer.listening);
    Panel panel;
    emit panel.controller->Signal_LoadGateway("127.0.0.1", peer.port());
    bool shownAtConnect = true;
    connect(gatewayOf(panel), &GatewayZRT::connectToGateway, this,
            [&] { shownAtConnect = gatewayOf(panel)->isVisible(); });
    QVERIFY(panel.child<QPushButton>("tvxGateway")->isEnabled());
    openGateway(panel);
    QVERIFY(!shownAtConnect);
    QVERIFY(gatewayOf(panel)->isVisible());
    QCOMPARE(QApplication::activeModalWidget(), gatewayOf(panel));
    QCOMPARE(childByName<QPushButton>(gatewayOf(panel), "tcpConnect_Btn")->text(),
             QStringLiteral("Disconnect"));
    QCOMPARE(peer.read(5), QByteArray("#030_")); // the clock is set at once
}

void TstGatewayConnections::openPanelThatIsConnectedDoesNotConnectAgain()
{
    LoopbackGateway peer;
    Panel panel;
    emit panel.controller->Signal_LoadGateway("127.0.0.1", peer.port());
    openGateway(panel);
    gatewayOf(panel)->close(); // the link stays up
    QVERIFY(!gatewayOf(panel)->isVisible());
    panel.take();
    const MessageCatcher log;
    openGateway(panel);
    QVERIFY(log.contains("Already Connected"));
    QVERIFY(gatewayOf(panel)->isVisible());
    QCOMPARE(panel.take(), QStringList());
}

void TstGatewayConnections::failedConnectShowsThePanelAllTheSame()
{
    Panel panel;
    emit panel.controller->Signal_LoadGateway("127.0.0.1", "0");
    openGateway(panel);
    QVERIFY(gatewayOf(panel)->isVisible());
    const auto *button = childByName<QPushButton>(gatewayOf(panel), "tcpConnect_Btn");
    QCOMPARE(button->text(), QStringLiteral("Connect"));
    QVERIFY(button->isEnabled());
}

void TstGatewayConnections::savedAddressIsShown()
{
    const Panel panel;
    emit panel.controller->Signal_LoadGateway("10.1.2.3", "4567");
    QCOMPARE(childByName<QLineEdit>(gatewayOf(panel), "ipAddrBox")->text(), QStringLiteral("10.1.2.3"));
    QCOMPARE(gatewayPort(panel)->text(), QStringLiteral("4567"));
}

void TstGatewayConnections::addressInUseIsTold()
{
    Panel panel;
    emit panel.controller->Signal_LoadGateway("127.0.0.1", "0");
    openGateway(panel);
    QCOMPARE(panel.take(), QStringList{"address in use 127.0.0.1 0"});
}

void TstGatewayConnections::debugTextsArePassedOn()
{
    Panel panel;
    emit gatewayOf(panel)->Signal_debugMessage("hello");
    QCOMPARE(panel.take(), QStringList{"debug hello"});
}

void TstGatewayConnections::rateOfTheSystemGoesToTheGateway()
{
    LoopbackGateway peer;
    Panel panel;
    emit panel.controller->Signal_EnableSamplingRate();
    emit panel.controller->Signal_LoadGateway("127.0.0.1", peer.port());
    gatewayOf(panel)->connectToTcp();
    const QByteArray clock = peer.read(25); // "#030_", 13 digits of milliseconds, six zeros, CR
    QVERIFY(clock.startsWith("#030_") && clock.endsWith("000000\r"));
    panel.take();
    QTest::mouseClick(panel.ratePart<QPushButton>("32,1250"), Qt::LeftButton);
    QCOMPARE(peer.read(13), QByteArray("#007_1250:32\r"));
    QCOMPARE(gatewayCell(panel, "32,1250")->styleSheet(), kMarked);
    QCOMPARE(panel.take(), QStringList{"rates 1250 32"}); // not told again by the gateway's panel
}

void TstGatewayConnections::rateOfTheGatewayGoesToTheSystemOnce()
{
    LoopbackGateway peer;
    Panel panel;
    emit panel.controller->Signal_EnableSamplingRate();
    emit panel.controller->Signal_LoadGateway("127.0.0.1", peer.port());
    openGateway(panel);
    peer.read(25);
    panel.take();
    QTest::mouseClick(gatewayCell(panel, "64,625"), Qt::LeftButton);
    QCOMPARE(panel.take(), QStringList{"rates 625 64"});
    QCOMPARE(panel.ratePart<QPushButton>("64,625")->styleSheet(), kMarked);
    QCOMPARE(peer.read(12), QByteArray("#007_625:64\r"));
    QTest::mouseClick(gatewayCell(panel, "64,1250"), Qt::LeftButton);
    QCOMPARE(peer.read(13), QByteArray("#007_1250:64\r")); // so the first one went out once
}

void TstGatewayConnections::systemWithoutModulesLeavesTheGatewaysTableAlone()
{
    LoopbackGateway peer;
    Panel panel;
    emit panel.controller->Signal_LoadGateway("127.0.0.1", peer.port());
    openGateway(panel);
    QVERIFY(gatewayCell(panel, "16,2500")->isEnabled());
    emit panel.controller->Signal_DisableSamplingRate();
    QVERIFY(gatewayCell(panel, "16,2500")->isEnabled());
    QVERIFY(!panel.ratePart<QPushButton>("16,2500")->isEnabled());
}

void TstGatewayConnections::connectedPanelGoesWithTheController()
{
    LoopbackGateway peer;
    Panel panel;
    emit panel.controller->Signal_LoadGateway("127.0.0.1", peer.port());
    openGateway(panel);
    QCOMPARE(peer.read(5), QByteArray("#030_"));
    const QPointer<GatewayZRT> gateway = gatewayOf(panel);
    panel.controller.reset();
    QVERIFY(!gateway);
    QVERIFY(!QApplication::activeModalWidget());
    QTRY_COMPARE(peer.peer->state(), QAbstractSocket::UnconnectedState);
}

QTEST_MAIN(TstGatewayConnections)
#include "tst_gatewayconnections.moc"
