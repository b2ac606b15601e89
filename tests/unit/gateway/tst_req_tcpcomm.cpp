#include "link/tcpcomm.h"
#include "support/fakelinks.h"
#include "support/messagecatcher.h"
#include "support/virtualtime.h"

#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

namespace {

const QString kEntered = QStringLiteral("Entered the restart timer");
const QString kStarting = QStringLiteral("******************Starting retry timer");
const QString kRunning = QStringLiteral("***********Timer still running");
const QString kConnected = QStringLiteral("******************Connected");

/// The gateway's link with a scripted socket.
struct Comm
{
    Comm()
    {
        auto owned = std::make_unique<FakeTcpSock>(time);
        sock = owned.get();
        link = std::make_unique<TcpComm>(time, std::move(owned));
        QObject::connect(link.get(), &TcpComm::TcpConnected, link.get(), [this] { ++ups; });
        QObject::connect(link.get(), &TcpComm::TcpDisconnectd, link.get(), [this] { ++downs; });
        QObject::connect(link.get(), &TcpComm::messagePacket, link.get(),
                         [this](const QByteArray &bytes) { pieces.append(bytes); });
    }

    int attempts() const { return sock->calls.count("connect"); }
    int logged(const QString &text) const { return log.lines().filter(text).size(); }
    void connectTo(const QString &address = "10.0.0.1") { link->Slot_connectToGateway(address, "9999"); }

    VirtualTime time;
    MessageCatcher log;
    FakeTcpSock *sock = nullptr;
    std::unique_ptr<TcpComm> link;
    int ups = 0;
    int downs = 0;
    QByteArrayList pieces;
};

/// The same with a real socket and a gateway on the loopback; no load of the machine uses up the wait for it.
class LoopbackComm
{
public:
    LoopbackComm()
    {
        auto sock = std::make_unique<TcpSock>(time, nullptr, std::chrono::milliseconds(5000));
        link = std::make_unique<TcpComm>(time, std::move(sock));
        QObject::connect(link.get(), &TcpComm::messagePacket, link.get(),
                         [this](const QByteArray &bytes) { received += bytes; });
    }

    bool listen(quint16 port = 0)
    {
        server = std::make_unique<QTcpServer>();
        return server->listen(QHostAddress::LocalHost, port);
    }

    QTcpSocket *accept()
    {
        return server->hasPendingConnections() || server->waitForNewConnection(5000)
                   ? server->nextPendingConnection()
                   : nullptr;
    }

    void connectToServer()
    {
        link->Slot_connectToGateway("127.0.0.1", QString::number(server->serverPort()));
    }

    VirtualTime time;
    std::unique_ptr<QTcpServer> server;
    std::unique_ptr<TcpComm> link;
    QByteArray received;
};

} // namespace

/// The gateway's link: a lost connection comes back by itself.
class TstReqTcpComm : public QObject
{
    Q_OBJECT

private slots:
    void connectTellsItsOutcomeOnce();
    void firstFailedAttemptIsNotRepeated();
    void dropStartsTheRetries();
    void retryEachFiveSeconds();
    void retriesGoToTheLastAddress();
    void successEndsTheRetries();
    void laterDropsStartOneTimerEach();
    void runningTimerIsNotStartedAgain();
    void leavingEndsTheRetries();
    void leavingIsSilent();
    void nothingRestartsAfterLeaving();
    void connectAfterLeavingHasItsRetriesBack();
    void operatorsConnectEndsTheRetries();
    void operatorsFailedConnectKeepsTheRetries();
    void failedAttemptAfterTheFirstIsRepeated();
    void bytesArePassedOnWhileConnected();
    void bytesAreWrittenAsTheyAre();
    void closedLinkDropsBytesSilently();
    void endOfTheLinkIsQuiet();
    void loopbackCarriesBothWays();
    void loopbackComesBack();
    void loopbackRefused();
    void gatewayTextIsNoFrame();
};

void TstReqTcpComm::connectTellsItsOutcomeOnce()
{
    Comm c;
    c.connectTo();
    QCOMPARE(c.ups, 1);
    QCOMPARE(c.downs, 0);
    QCOMPARE(c.sock->address, QStringLiteral("10.0.0.1"));
    QCOMPARE(c.sock->port, QStringLiteral("9999"));
    c.sock->connects = false;
    c.connectTo("10.0.0.2");
    QCOMPARE(c.ups, 1);
    QCOMPARE(c.downs, 1);
    QCOMPARE(c.attempts(), 2);
}

void TstReqTcpComm::firstFailedAttemptIsNotRepeated()
{
    Comm c;
    c.sock->connects = false;
    c.connectTo();
    QCOMPARE(c.downs, 1);
    QCOMPARE(c.time.activeTimers(), 0);
    c.time.advance(30000);
    QCOMPARE(c.attempts(), 1);
    QCOMPARE(c.logged(kEntered), 0);
}

void TstReqTcpComm::dropStartsTheRetries()
{
    Comm c;
    c.connectTo();
    QCOMPARE(c.time.activeTimers(), 0);
    c.sock->drop();
    QCOMPARE(c.downs, 1);
    QCOMPARE(c.time.activeTimers(), 1);
    QCOMPARE(c.logged(kEntered), 1);
    QCOMPARE(c.logged(kStarting), 1);
}

void TstReqTcpComm::retryEachFiveSeconds()
{
    Comm c;
    c.connectTo();
    c.sock->connects = false;
    c.sock->drop();
    c.time.advance(4999);
    QCOMPARE(c.attempts(), 1);
    c.time.advance(1);
    QCOMPARE(c.attempts(), 2);
    QCOMPARE(c.logged(kRunning), 1);
    QCOMPARE(c.sock->address, QStringLiteral("10.0.0.1"));
    QCOMPARE(c.sock->port, QStringLiteral("9999"));
    c.time.advance(4999);
    QCOMPARE(c.attempts(), 2);
    c.time.advance(1);
    QCOMPARE(c.attempts(), 3);
    c.time.advance(50000);
    QCOMPARE(c.attempts(), 13);
    QCOMPARE(c.logged(kRunning), 12);
    QCOMPARE(c.logged(kStarting), 1);
}

void TstReqTcpComm::retriesGoToTheLastAddress()
{
    Comm c;
    c.connectTo("10.0.0.1");
    c.link->Slot_connectToGateway("10.0.0.7", "1234");
    c.sock->drop();
    c.sock->address.clear();
    c.sock->port.clear();
    c.time.advance(5000);
    QCOMPARE(c.sock->address, QStringLiteral("10.0.0.7"));
    QCOMPARE(c.sock->port, QStringLiteral("1234"));
}

void TstReqTcpComm::successEndsTheRetries()
{
    Comm c;
    c.connectTo();
    c.sock->drop();
    c.time.advance(5000);
    QCOMPARE(c.ups, 2);
    QCOMPARE(c.logged(kConnected), 1);
    QCOMPARE(c.time.activeTimers(), 0);
    c.time.advance(30000);
    QCOMPARE(c.attempts(), 2);
}

void TstReqTcpComm::laterDropsStartOneTimerEach()
{
    Comm c;
    c.connectTo();
    for (int i = 1; i <= 4; ++i) {
        c.sock->drop();
        QCOMPARE(c.logged(kEntered), i); // connected once, however often it came back
        QCOMPARE(c.logged(kStarting), i);
        QCOMPARE(c.downs, i);
        c.time.advance(5000);
        QCOMPARE(c.ups, i + 1);
    }
}

void TstReqTcpComm::runningTimerIsNotStartedAgain()
{
    Comm c;
    c.connectTo();
    c.sock->connects = false;
    c.sock->drop();
    c.time.advance(3000);
    c.link->Slot_tmrStart();
    QCOMPARE(c.logged(kEntered), 2);
    QCOMPARE(c.logged(kStarting), 1);
    c.time.advance(2000); // not put off
    QCOMPARE(c.attempts(), 2);
}

void TstReqTcpComm::leavingEndsTheRetries()
{
    Comm c;
    c.connectTo();
    c.sock->connects = false;
    c.sock->drop();
    c.link->Slot_disconnectSocket();
    QCOMPARE(c.time.activeTimers(), 0);
    c.time.advance(30000);
    QCOMPARE(c.attempts(), 1);
}

void TstReqTcpComm::leavingIsSilent()
{
    Comm c;
    c.connectTo();
    c.link->Slot_disconnectSocket();
    QCOMPARE(c.sock->calls.last(), QStringLiteral("disconnect"));
    QCOMPARE(c.downs, 0);
    QCOMPARE(c.time.activeTimers(), 0);
}

void TstReqTcpComm::nothingRestartsAfterLeaving()
{
    Comm c;
    c.connectTo();
    c.link->Slot_disconnectSocket();
    emit c.sock->TcpDisconnectd();
    QCOMPARE(c.logged(kEntered), 0);
    c.time.advance(30000);
    QCOMPARE(c.attempts(), 1);
}

void TstReqTcpComm::connectAfterLeavingHasItsRetriesBack()
{
    Comm c;
    c.connectTo();
    c.link->Slot_disconnectSocket();
    c.connectTo();
    c.sock->drop();
    QCOMPARE(c.logged(kEntered), 1);
    c.time.advance(5000);
    QCOMPARE(c.attempts(), 3);
    // And the first attempt after leaving counts as a first one again.
    c.link->Slot_disconnectSocket();
    c.sock->connects = false;
    c.connectTo();
    c.time.advance(30000);
    QCOMPARE(c.attempts(), 4);
}

void TstReqTcpComm::operatorsConnectEndsTheRetries()
{
    Comm c;
    c.connectTo();
    c.sock->connects = false;
    c.sock->drop();
    c.time.advance(2000);
    c.sock->connects = true;
    c.connectTo("10.0.0.5");
    QCOMPARE(c.time.activeTimers(), 0);
    c.time.advance(30000); // a retry would cut the fresh link
    QCOMPARE(c.attempts(), 2);
    QVERIFY(c.sock->IsConnected());
}

void TstReqTcpComm::operatorsFailedConnectKeepsTheRetries()
{
    Comm c;
    c.connectTo();
    c.sock->connects = false;
    c.sock->drop();
    c.time.advance(2000);
    c.connectTo("10.0.0.5");
    QCOMPARE(c.attempts(), 2);
    c.time.advance(3000);
    QCOMPARE(c.attempts(), 3);
    QCOMPARE(c.sock->address, QStringLiteral("10.0.0.5"));
}

void TstReqTcpComm::failedAttemptAfterTheFirstIsRepeated()
{
    Comm c;
    c.connectTo("10.0.0.1");
    c.sock->connects = false;
    c.connectTo("10.0.0.2");
    QCOMPARE(c.time.activeTimers(), 1);
    c.sock->connects = true;
    c.time.advance(5000);
    QCOMPARE(c.sock->address, QStringLiteral("10.0.0.2"));
    QCOMPARE(c.ups, 2);
}

void TstReqTcpComm::bytesArePassedOnWhileConnected()
{
    Comm c;
    QByteArray piece("early");
    emit c.sock->messagePacket(piece);
    c.connectTo();
    piece = QByteArray("a\0\xFF\r", 4);
    emit c.sock->messagePacket(piece);
    c.link->Slot_disconnectSocket();
    piece = "late";
    emit c.sock->messagePacket(piece);
    QCOMPARE(c.pieces, QByteArrayList{QByteArray("a\0\xFF\r", 4)});
}

void TstReqTcpComm::bytesAreWrittenAsTheyAre()
{
    Comm c;
    c.connectTo();
    c.link->Write(QByteArray("#?\r\0\xE4", 5));
    QCOMPARE(c.sock->frames, QByteArrayList{QByteArray("#?\r\0\xE4", 5)});
}

void TstReqTcpComm::closedLinkDropsBytesSilently()
{
    Comm c;
    c.link->Write("#?\r");
    c.connectTo();
    c.link->Slot_disconnectSocket();
    c.log.clear();
    c.link->Write("#?\r");
    QCOMPARE(c.sock->frames, QByteArrayList());
    QCOMPARE(c.log.lines(), QStringList());
}

void TstReqTcpComm::endOfTheLinkIsQuiet()
{
    Comm c;
    c.connectTo();
    c.log.clear();
    c.link.reset(); // its socket tells of the end of the connection while it dies
    QCOMPARE(c.log.lines(), QStringList());
    QCOMPARE(c.time.activeTimers(), 0);
}

void TstReqTcpComm::loopbackCarriesBothWays()
{
    LoopbackComm c;
    QVERIFY(c.listen());
    const QSignalSpy ups(c.link.get(), &TcpComm::TcpConnected);
    c.connectToServer();
    QCOMPARE(ups.count(), 1);
    QTcpSocket *peer = c.accept();
    QVERIFY(peer);
    c.link->Write("#007_2500:16\r");
    QTRY_COMPARE(peer->bytesAvailable(), 13);
    QCOMPARE(peer->readAll(), QByteArray("#007_2500:16\r"));
    peer->write("\r\n[gw]----");
    QTRY_COMPARE(c.received, QByteArray("\r\n[gw]----"));
}

void TstReqTcpComm::loopbackComesBack()
{
    LoopbackComm c;
    QVERIFY(c.listen());
    c.connectToServer();
    QTcpSocket *peer = c.accept();
    QVERIFY(peer);
    const QSignalSpy ups(c.link.get(), &TcpComm::TcpConnected);
    const QSignalSpy downs(c.link.get(), &TcpComm::TcpDisconnectd);
    peer->close();
    QTRY_COMPARE(downs.count(), 1);
    c.time.advance(5000);
    QCOMPARE(ups.count(), 1);
    peer = c.accept();
    QVERIFY(peer);
    peer->write("again");
    QTRY_COMPARE(c.received, QByteArray("again"));
    // Left on purpose: the gateway sees the end, nothing comes back.
    c.link->Slot_disconnectSocket();
    QTRY_COMPARE(peer->state(), QAbstractSocket::UnconnectedState);
    c.time.advance(30000);
    QVERIFY(!c.server->hasPendingConnections());
    QCOMPARE(downs.count(), 1);
}

void TstReqTcpComm::loopbackRefused()
{
    LoopbackComm c;
    QVERIFY(c.listen());
    const quint16 port = c.server->serverPort();
    c.server->close();
    const QSignalSpy downs(c.link.get(), &TcpComm::TcpDisconnectd);
    const QSignalSpy ups(c.link.get(), &TcpComm::TcpConnected);
    c.link->Slot_connectToGateway("127.0.0.1", QString::number(port));
    c.link->Slot_connectToGateway("127.0.0.1", "no port");
    c.link->Slot_connectToGateway("", "");
    QCOMPARE(downs.count(), 3);
    QCOMPARE(ups.count(), 0);
}

void TstReqTcpComm::gatewayTextIsNoFrame()
{
    VirtualTime time;
    auto owned = std::make_unique<TcpSock>(time, nullptr, std::chrono::milliseconds(5000));
    TcpSock *sock = owned.get();
    TcpComm link(time, std::move(owned));
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    const QSignalSpy frames(sock, &TcpSock::Signal_RcvSerialDatagram);
    QByteArray received;
    connect(&link, &TcpComm::messagePacket, this,
            [&received](const QByteArray &bytes) { received += bytes; });
    link.Slot_connectToGateway("127.0.0.1", QString::number(server.serverPort()));
    QVERIFY(server.hasPendingConnections() || server.waitForNewConnection(5000));
    QTcpSocket *peer = server.nextPendingConnection();
    QByteArray all;
    for (int i = 0; i < 50; ++i) {
        const QByteArray line = "#S;;V" + QByteArray::number(i) + ";2;" + QByteArray(i * 7, 'x') + "\r\n";
        peer->write(line);
        all += line;
    }
    QTRY_COMPARE(received, all);
    QCOMPARE(frames.count(), 0);
}

QTEST_MAIN(TstReqTcpComm)
#include "tst_req_tcpcomm.moc"
