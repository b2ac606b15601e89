#include "base/gui/fonts.h"
#include "gateway/gatewayzrt.h"
#include "support/childbyname.h"
#include "support/messagecatcher.h"
#include "support/virtualtime.h"
#include "system/modulesyssettings_view.h"
#include "system/rates/ratetable.h"
#include "system/vx_samplingrates.h"

#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

namespace {

/// The system panel with both tables, and a gateway on the loopback that answers what the test says.
class Desk
{
public:
    Desk()
    {
        if (!server.listen(QHostAddress::LocalHost))
            qFatal("no port on the loopback");
        emit view.Signal_loadGateway("127.0.0.1", QString::number(server.serverPort()));
        emit view.Signal_EnableSamplingRate();
        view.show();
    }

    GatewayZRT *gateway() const { return childByName<GatewayZRT>(&view, "gateway"); }
    VX_SamplingRates *rates() const { return view.findChild<VX_SamplingRates *>(); }
    QPushButton *gatewayCell(const char *name) const { return cell(gateway(), name); }
    QPushButton *deviceCell(const char *name) const { return cell(rates(), name); }
    QString connectButton() const { return childByName<QPushButton>(gateway(), "tcpConnect_Btn")->text(); }

    void openGateway() const
    {
        QTest::mouseClick(childByName<QPushButton>(&view, "tvxGateway"), Qt::LeftButton);
    }

    /// Opens the gateway's panel; true when the gateway has the connection and its clock. The short wait of
    /// the link may be over on a machine under load; the operator presses the button again.
    bool connectGateway()
    {
        openGateway();
        for (int i = 0; i < 20 && connectButton() == "Connect"; ++i)
            QTest::mouseClick(childByName<QPushButton>(gateway(), "tcpConnect_Btn"), Qt::LeftButton);
        if (!server.hasPendingConnections() && !server.waitForNewConnection(5000))
            return false;
        while (server.hasPendingConnections())
            peer = server.nextPendingConnection();
        return QTest::qWaitFor([this] { return peer->peek(40).endsWith('\r'); });
    }

    QByteArray read() const { return peer->readAll(); }

    /// True when the gateway got exactly this.
    bool got(const QByteArray &bytes) const
    {
        QByteArray all;
        return QTest::qWaitFor([&] {
                   all += peer->readAll();
                   return all.size() >= bytes.size();
               }) &&
               all == bytes;
    }

    bool gotNothing()
    {
        // A line that is sent now arrives behind anything that was sent before.
        gateway()->on_debugBtn_clicked(false);
        return got("#000_1\r");
    }

    void say(const QByteArray &text) const { peer->write(text); }

    static QString marked(const QWidget *dialog)
    {
        const auto *button = dialog->findChild<RateTable *>("rateTable")->selected();
        return button ? button->objectName() : QString();
    }

    VirtualTime time;
    QTcpServer server;
    QTcpSocket *peer = nullptr; ///< the gateway's end; belongs to the server
    ModuleSysSettings_View view{time};

private:
    static QPushButton *cell(const QWidget *dialog, const char *name)
    {
        return childByName<QPushButton>(dialog, name);
    }
};

} // namespace

/// The system panel, the gateway's panel and both tables of rates, over a real connection.
class TstReqRateTables : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }

    void buttonConnectsAndOpensThePanel();
    void buttonFindsTheLinkUpAfterTheTitleBar();
    void buttonConnectsAgainAfterEscape();
    void settingsFileReachesThePanel();
    void gatewaysChoiceGoesToTheDeviceOnce();
    void devicesChoiceGoesToTheGatewayOnce();
    void choicesInTurnMakeNoLoop();
    void rateThatIsDeadInTheDevicesTable();
    void rateThatIsDeadInTheGatewaysTable();
    void reportedRateStaysInTheGatewaysTable();
    void devicesReportStaysInTheDevicesTable();
    void devicesChoiceWithoutALinkIsForgotten();
    void wholeDialogueOverTheWire();
};

void TstReqRateTables::buttonConnectsAndOpensThePanel()
{
    Desk d;
    const QSignalSpy used(&d.view, &ModuleSysSettings_View::Signal_ZrtGateway);
    QVERIFY(d.connectGateway());
    QVERIFY(d.gateway()->isVisible());
    QVERIFY(d.gateway()->isModal());
    QVERIFY(used.count() >= 1);
    QCOMPARE(used[0], (QVariantList{"127.0.0.1", QString::number(d.server.serverPort())}));
    QCOMPARE(d.connectButton(), QStringLiteral("Disconnect"));
    QCOMPARE(d.read(), QByteArray("#030_1772440200000000000\r"));
}

void TstReqRateTables::buttonFindsTheLinkUpAfterTheTitleBar()
{
    Desk d;
    QVERIFY(d.connectGateway());
    d.read();
    d.gateway()->close();
    QVERIFY(!d.gateway()->isVisible());
    QVERIFY(d.gotNothing());
    const MessageCatcher log;
    d.openGateway();
    QVERIFY(d.gateway()->isVisible());
    QVERIFY(log.contains("Already Connected"));
    QVERIFY(d.gotNothing());
    QVERIFY(!d.server.hasPendingConnections());
}

void TstReqRateTables::buttonConnectsAgainAfterEscape()
{
    Desk d;
    QVERIFY(d.connectGateway());
    QTcpSocket *first = d.peer;
    QTest::keyClick(d.gateway(), Qt::Key_Escape);
    QVERIFY(!d.gateway()->isVisible());
    QTRY_COMPARE(first->state(), QAbstractSocket::UnconnectedState);
    QVERIFY(d.connectGateway());
    QVERIFY(d.gateway()->isVisible());
    QVERIFY(d.peer != first);
    QVERIFY(d.got("#030_1772440200000000000\r"));
}

void TstReqRateTables::settingsFileReachesThePanel()
{
    Desk d;
    emit d.view.Signal_loadGateway("10.1.1.1", "");
    QCOMPARE(childByName<QLineEdit>(d.gateway(), "ipAddrBox")->text(), QStringLiteral("10.1.1.1"));
}

void TstReqRateTables::gatewaysChoiceGoesToTheDeviceOnce()
{
    Desk d;
    QVERIFY(d.connectGateway());
    d.read();
    const QSignalSpy device(&d.view, &ModuleSysSettings_View::samplingRates);
    QTest::mouseClick(d.gatewayCell("16,1250"), Qt::LeftButton);
    QCOMPARE(device.count(), 1);
    QCOMPARE(device[0], (QVariantList{"1250", "16"}));
    QCOMPARE(Desk::marked(d.gateway()), QStringLiteral("16,1250"));
    QCOMPARE(Desk::marked(d.rates()), QStringLiteral("16,1250"));
    QVERIFY(d.got("#007_1250:16\r"));
    QVERIFY(d.gotNothing());
}

void TstReqRateTables::devicesChoiceGoesToTheGatewayOnce()
{
    Desk d;
    QVERIFY(d.connectGateway());
    d.gateway()->close();
    d.read();
    d.view.bitRateExec(false);
    const QSignalSpy device(&d.view, &ModuleSysSettings_View::samplingRates);
    QTest::mouseClick(d.deviceCell("32,2500"), Qt::LeftButton);
    QCOMPARE(device.count(), 1);
    QCOMPARE(device[0], (QVariantList{"2500", "32"}));
    QCOMPARE(Desk::marked(d.rates()), QStringLiteral("32,2500"));
    QCOMPARE(Desk::marked(d.gateway()), QStringLiteral("32,2500"));
    QVERIFY(d.got("#007_2500:32\r"));
    QVERIFY(d.gotNothing());
}

void TstReqRateTables::choicesInTurnMakeNoLoop()
{
    Desk d;
    QVERIFY(d.connectGateway());
    d.read();
    const QSignalSpy device(&d.view, &ModuleSysSettings_View::samplingRates);
    QTest::mouseClick(d.gatewayCell("8,625"), Qt::LeftButton);
    QTest::mouseClick(d.deviceCell("64,1250"), Qt::LeftButton);
    QTest::mouseClick(d.gatewayCell("8,625"), Qt::LeftButton);
    d.time.advance(10);
    QCOMPARE(device.count(), 3);
    QCOMPARE(device[1], (QVariantList{"1250", "64"}));
    QVERIFY(d.got("#007_625:8\r#007_1250:64\r#007_625:8\r"));
    QVERIFY(d.gotNothing());
}

void TstReqRateTables::rateThatIsDeadInTheDevicesTable()
{
    Desk d;
    QVERIFY(d.connectGateway());
    d.read();
    QVERIFY(!d.deviceCell("256,10000")->isEnabled());
    const QSignalSpy device(&d.view, &ModuleSysSettings_View::samplingRates);
    QTest::mouseClick(d.gatewayCell("256,10000"), Qt::LeftButton);
    QCOMPARE(device.count(), 1); // sent even so
    QCOMPARE(device[0], (QVariantList{"10000", "256"}));
    QVERIFY(d.got("#007_10000:256\r"));
    QVERIFY(d.deviceCell("256,10000")->styleSheet().isEmpty());
    QCOMPARE(Desk::marked(d.gateway()), QStringLiteral("256,10000"));
}

void TstReqRateTables::rateThatIsDeadInTheGatewaysTable()
{
    Desk d;
    QVERIFY(d.connectGateway());
    d.read();
    d.say("#S;;;2" + QByteArray(25, ';') + "60000;");
    QTRY_VERIFY(!d.gatewayCell("2,2500")->isEnabled());
    QVERIFY(d.deviceCell("2,2500")->isEnabled()); // the limit is the gateway's own
    QTest::mouseClick(d.deviceCell("2,2500"), Qt::LeftButton);
    QVERIFY(d.got("#007_2500:2\r"));
    QVERIFY(d.gatewayCell("2,2500")->styleSheet().isEmpty());
    QCOMPARE(Desk::marked(d.rates()), QStringLiteral("2,2500"));
}

void TstReqRateTables::reportedRateStaysInTheGatewaysTable()
{
    Desk d;
    QVERIFY(d.connectGateway());
    d.read();
    const QSignalSpy device(&d.view, &ModuleSysSettings_View::samplingRates);
    d.say("#S;;;2;;;2500;16;");
    QTRY_COMPARE(Desk::marked(d.gateway()), QStringLiteral("16,2500"));
    QCOMPARE(device.count(), 0);
    QCOMPARE(Desk::marked(d.rates()), QString());
    QVERIFY(d.gotNothing());
}

void TstReqRateTables::devicesReportStaysInTheDevicesTable()
{
    Desk d;
    QVERIFY(d.connectGateway());
    d.read();
    const QSignalSpy device(&d.view, &ModuleSysSettings_View::samplingRates);
    d.view.setBitRate("2500 (16ch)");
    QCOMPARE(Desk::marked(d.rates()), QStringLiteral("16,2500"));
    QCOMPARE(Desk::marked(d.gateway()), QString());
    QCOMPARE(device.count(), 0);
    QVERIFY(d.gotNothing());
}

void TstReqRateTables::devicesChoiceWithoutALinkIsForgotten()
{
    Desk d;
    const QSignalSpy device(&d.view, &ModuleSysSettings_View::samplingRates);
    QTest::mouseClick(d.deviceCell("32,2500"), Qt::LeftButton);
    QCOMPARE(device.count(), 1);
    QVERIFY(!d.server.hasPendingConnections());
    QVERIFY(d.connectGateway());
    QCOMPARE(d.read(), QByteArray("#030_1772440200000000000\r"));
    QVERIFY(d.gotNothing());
}

void TstReqRateTables::wholeDialogueOverTheWire()
{
    Desk d;
    QVERIFY(d.connectGateway());
    d.read();
    d.say("\r\n[gw]----");
    QVERIFY(d.got("#?\r"));
    d.say("#S;;V4;2;;1;2500;16;UDP-M;L;18;10.0.0.1;5001;2\r\n[gw]----");
    const auto *version = childByName<QLineEdit>(d.gateway(), "GtwVersion");
    QTRY_COMPARE(version->text(), QStringLiteral("V4"));
    QVERIFY(d.gotNothing()); // a prompt behind a status line is not answered
    d.time.advance(1000);
    QVERIFY(d.got("#?\r"));
    d.gateway()->changeGatewayAddr("127.0.0.1");
    QVERIFY(d.got("gateway.addr=127.0.0.1\r"));
    QTcpSocket *first = d.peer;
    d.say("[NEW IP ADDRESS]");
    QTRY_VERIFY(d.server.hasPendingConnections());
    d.peer = d.server.nextPendingConnection();
    QVERIFY(d.got("#030_1772440201000000000\r"));
    QTRY_COMPARE(first->state(), QAbstractSocket::UnconnectedState);
    QCOMPARE(d.connectButton(), QStringLiteral("Disconnect"));
}

QTEST_MAIN(TstReqRateTables)
#include "tst_req_ratetables.moc"
