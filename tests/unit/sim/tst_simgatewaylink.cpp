#include "sim/gatewayserver.h"

#include "base/timesource.h"
#include "support/virtualtime.h"

#include <QtTest>

#include <QTcpServer>
#include <QTcpSocket>
#include <functional>

using namespace std::chrono_literals;
using sim::Gateway;
using sim::GatewayServer;
using sim::GatewayState;

namespace {

/// A client over the loopback interface.
class Client : public QTcpSocket
{
public:
    explicit Client(quint16 port, const char *address = "127.0.0.1")
    {
        connectToHost(QString::fromLatin1(address), port);
    }
};

constexpr auto kRestart = 30ms;
constexpr auto kReboot = 60ms;

GatewayState quickState()
{
    GatewayState state;
    state.restartTime = kRestart;
    state.rebootTime = kReboot;
    return state;
}

} // namespace

/// The gateway on real sockets.
class TstSimGatewayLink : public QObject
{
    Q_OBJECT

private slots:
    void init() { start(m_time); }
    void cleanup() { m_server.reset(); }

    void clientIsGreetedAndAnswered();
    void severalClients();
    void clientMayGoAndComeBack();
    void takenPortIsReported();
    void foreignAddressIsReported();
    void goesToTheNewAddressWithItsPort();
    void newAddressMayTakeAWhile();
    void foreignNewAddressLeavesNobodyThere();
    void newAddressWhosePortIsTakenIsTriedAgain();
    void isBackAfterARestart_data();
    void isBackAfterARestart();
    void closeRuleCanKeepClientsAway();
    void longestFloodArrivesWhole();
    void clientThatReadsNothingDoesNotHoldItUp();
    void clientThatReadsNothingIsLeft();
    void goesWithItsClients();

private:
    bool refuses(const char *address) const
    {
        QTcpSocket socket;
        socket.connectToHost(QString::fromLatin1(address), m_server->port());
        return !socket.waitForConnected() && socket.error() == QAbstractSocket::ConnectionRefusedError;
    }

    /// From now on the gateway's time stands still unless it is advanced; sockets do not.
    void stopTime() { start(m_still); }
    /// Whether the condition holds before long, without any time passing for the gateway.
    bool comes(const std::function<bool()> &condition)
    {
        return QTest::qWaitFor([this, &condition] {
            m_still.turn();
            return condition();
        });
    }
    void verifyAbsence(std::chrono::milliseconds absence, const char *address = "127.0.0.1");
    void start(TimeSource &time);

    SystemTime m_time;
    VirtualTime m_still;
    std::unique_ptr<GatewayServer> m_server;
};

void TstSimGatewayLink::start(TimeSource &time)
{
    m_server = std::make_unique<GatewayServer>(time, quickState());
    QString error;
    QVERIFY2(m_server->listen(0, &error), qPrintable(error));
    QVERIFY(m_server->port() > 0);
}

void TstSimGatewayLink::verifyAbsence(std::chrono::milliseconds absence, const char *address)
{
    QVERIFY(comes([this] { return !m_server->isListening(); }));
    QVERIFY(refuses(address));
    m_still.advance(absence - 1ms);
    QVERIFY(!m_server->isListening());
    m_still.advance(1ms);
    QVERIFY(m_server->isListening());
}

void TstSimGatewayLink::clientIsGreetedAndAnswered()
{
    Client client(m_server->port());
    QTRY_COMPARE(client.peek(99), Gateway::prompt());
    client.readAll();
    client.write("#010_L\r#?\r");
    QTRY_VERIFY(client.peek(999).endsWith(";ZRT-1;;\r\n"));
    QVERIFY(client.readAll().startsWith("#S;;2.3.1;2;;0;2500;16;UDP-B;L;16;"));
}

void TstSimGatewayLink::severalClients()
{
    Client first(m_server->port());
    Client second(m_server->port());
    QTRY_COMPARE(m_server->connectionCount(), 2);
    QTRY_VERIFY(first.bytesAvailable() > 0 && second.bytesAvailable() > 0);
    second.readAll();
    first.write("#009_TCP-C\r");
    QTRY_COMPARE(m_server->lineCount("#009_TCP-C"), 1);
    second.write("#?\r");
    QTRY_VERIFY(second.peek(999).contains(";TCP-C;"));
}

void TstSimGatewayLink::clientMayGoAndComeBack()
{
    {
        Client client(m_server->port());
        QTRY_COMPARE(m_server->connectionCount(), 1);
    }
    QTRY_COMPARE(m_server->connectionCount(), 0);
    Client again(m_server->port());
    QTRY_COMPARE(again.peek(99), Gateway::prompt());
}

void TstSimGatewayLink::takenPortIsReported()
{
    GatewayServer second(m_time);
    QString error;
    QVERIFY(!second.listen(m_server->port(), &error));
    QVERIFY2(error.startsWith(QString("TCP port %1: ").arg(m_server->port())), qPrintable(error));
    QCOMPARE(int(second.port()), 0);
}

void TstSimGatewayLink::foreignAddressIsReported()
{
    GatewayState state;
    state.address = "0.0.0.0";
    GatewayServer server(m_time, state);
    QString error;
    QVERIFY(!server.listen(0, &error));
    QCOMPARE(error, QString("0.0.0.0 is no address of the loopback interface"));
}

void TstSimGatewayLink::goesToTheNewAddressWithItsPort()
{
    Client client(m_server->port());
    QTRY_COMPARE(m_server->connectionCount(), 1);
    client.write("gateway.addr=127.0.0.2\r");
    QTRY_VERIFY(client.peek(999).contains("[NEW IP ADDRESS 127.0.0.2]\r\n"));
    Client follower(m_server->port(), "127.0.0.2");
    QTRY_COMPARE(follower.peek(99), Gateway::prompt());
    QVERIFY(refuses("127.0.0.1"));
    QTRY_COMPARE(client.state(), QAbstractSocket::UnconnectedState);
    QCOMPARE(follower.state(), QAbstractSocket::ConnectedState);
    QCOMPARE(m_server->connectionCount(), 1);
}

void TstSimGatewayLink::newAddressMayTakeAWhile()
{
    stopTime();
    m_server->state().moveTime = 50ms;
    Client client(m_server->port());
    QVERIFY(comes([this] { return m_server->connectionCount() == 1; }));
    client.write("gateway.addr=127.0.0.2\r");
    verifyAbsence(50ms, "127.0.0.2");
    Client follower(m_server->port(), "127.0.0.2");
    QVERIFY(comes([&follower] { return follower.peek(99) == Gateway::prompt(); }));
}

void TstSimGatewayLink::foreignNewAddressLeavesNobodyThere()
{
    QStringList lines;
    m_server->log().setSink([&lines](const QString &line) { lines.append(line); });
    Client client(m_server->port());
    QTRY_COMPARE(m_server->connectionCount(), 1);
    client.write("gateway.addr=192.0.2.1\r");
    QTRY_VERIFY(client.peek(999).contains("[NEW IP ADDRESS 192.0.2.1]\r\n"));
    QVERIFY(!m_server->isListening());
    QVERIFY(refuses("127.0.0.1"));
    QTRY_COMPARE(client.state(), QAbstractSocket::UnconnectedState);
    QCOMPARE(lines.filter("nobody can connect: 192.0.2.1 is no address of the loopback interface").size(), 1);
    QVERIFY(!m_server->isListening());
}

void TstSimGatewayLink::newAddressWhosePortIsTakenIsTriedAgain()
{
    QTcpServer owner;
    QVERIFY(owner.listen(QHostAddress(QStringLiteral("127.0.0.2")), m_server->port()));
    Client client(m_server->port());
    QTRY_COMPARE(m_server->connectionCount(), 1);
    client.write("gateway.addr=127.0.0.2\r");
    QTRY_VERIFY(client.peek(999).contains("[NEW IP ADDRESS"));
    QVERIFY(!m_server->isListening());
    owner.close();
    QTRY_VERIFY(m_server->isListening());
    Client follower(m_server->port(), "127.0.0.2");
    QTRY_COMPARE(follower.peek(99), Gateway::prompt());
}

void TstSimGatewayLink::isBackAfterARestart_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("absence");
    QTest::newRow("restart") << QByteArray("restart\r") << int(kRestart.count());
    QTest::newRow("reboot") << QByteArray("reboot\r") << int(kReboot.count());
}

void TstSimGatewayLink::isBackAfterARestart()
{
    QFETCH(QByteArray, line);
    QFETCH(int, absence);
    stopTime();
    Client client(m_server->port());
    Client other(m_server->port());
    QVERIFY(comes([this] { return m_server->connectionCount() == 2; }));
    client.write("#009_TCP-S\r" + line);
    verifyAbsence(std::chrono::milliseconds(absence));
    QTRY_COMPARE(client.state(), QAbstractSocket::UnconnectedState);
    QTRY_COMPARE(other.state(), QAbstractSocket::UnconnectedState);
    Client again(m_server->port());
    QVERIFY(comes([&again] { return again.peek(99) == Gateway::prompt(); }));
    QCOMPARE(m_server->state().mode, QString("TCP-S"));
}

void TstSimGatewayLink::closeRuleCanKeepClientsAway()
{
    stopTime();
    QString error;
    QVERIFY(m_server->faults().parse("close line=\"#?\" nth=1 ms=40", &error));
    Client client(m_server->port());
    client.write("#?\r");
    verifyAbsence(40ms);
    QTRY_COMPARE(client.state(), QAbstractSocket::UnconnectedState);
    Client again(m_server->port());
    again.write("#?\r");
    QVERIFY(comes([&again] { return again.peek(999).contains("#S;"); }));
}

void TstSimGatewayLink::longestFloodArrivesWhole()
{
    constexpr int kBytes = 64 << 20;
    QString error;
    QVERIFY(m_server->faults().parse(QString("flood bytes=%1 line=\"#?\"").arg(kBytes), &error));
    Client client(m_server->port());
    QTRY_COMPARE(client.peek(99), Gateway::prompt());
    client.readAll();
    qint64 received = 0;
    QByteArray end;
    connect(&client, &QTcpSocket::readyRead, &client, [&] {
        const QByteArray bytes = client.readAll();
        received += bytes.size();
        end = (end + bytes).right(999);
    });
    client.write("#?\r");
    QTRY_VERIFY_WITH_TIMEOUT(end.endsWith(";ZRT-1;;\r\n"), 60000);
    const int status = end.size() - end.indexOf("#S;");
    QCOMPARE(received, qint64(kBytes) + status);
}

void TstSimGatewayLink::clientThatReadsNothingDoesNotHoldItUp()
{
    QStringList lines;
    m_server->log().setSink([&lines](const QString &line) { lines.append(line); });
    QString error;
    QVERIFY(m_server->faults().parse("flood bytes=1000000", &error));
    QTcpSocket lazy;
    lazy.setReadBufferSize(1);
    lazy.connectToHost(QHostAddress::LocalHost, m_server->port());
    QTRY_COMPARE(m_server->connectionCount(), 1);
    for (int i = 0; i < 32; ++i)
        lazy.write("#?\r");
    QTRY_COMPARE(m_server->lineCount("#?"), 32);
    QVERIFY(lines.filter("<- lost, ").size() > 16); // the rest may wait in the system's buffers
    m_server->faults().clear();
    Client client(m_server->port());
    QTRY_COMPARE(client.peek(99), Gateway::prompt());
}

void TstSimGatewayLink::clientThatReadsNothingIsLeft()
{
    QString error;
    QVERIFY(m_server->faults().parse("flood bytes=60000000 line=\"#?\"", &error));
    QTcpSocket lazy;
    lazy.setReadBufferSize(1);
    lazy.connectToHost(QHostAddress::LocalHost, m_server->port());
    lazy.write("#?\r");
    QTRY_COMPARE(m_server->lineCount("#?"), 1);
    QCOMPARE(m_server->connectionCount(), 1);
    m_server->goAway(0ms);
    QTRY_COMPARE(m_server->connectionCount(), 0);
}

void TstSimGatewayLink::goesWithItsClients()
{
    Client client(m_server->port());
    QTRY_COMPARE(client.peek(99), Gateway::prompt());
    m_server.reset();
    QTRY_COMPARE(client.state(), QAbstractSocket::UnconnectedState);
}

QTEST_GUILESS_MAIN(TstSimGatewayLink)
#include "tst_simgatewaylink.moc"
