#include "link/tcpcomm.h"
#include "link/tcpsock.h"
#include "ownloopback.h"
#include "support/messagecatcher.h"
#include "support/virtualtime.h"

#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>
#include <memory>

/// The gateway's link with a real socket; the gateway listens on the loopback.
class TstTcpCommLoopback : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void bytesGoBothWays();
    void theServerSeesThatTheLinkWasLeft();
    void nobodyListensIsToldAtOnce();
    void theServerClosingStartsTheRetries();
    void theServerIsFoundAgainOnTheSamePort();
    void aReceiverMayConnectAgainWhenTheServerCloses();
    void theLastBytesBeforeTheEndArePassedOn();
    void bytesThatComeAfterLeavingAreNotPassedOn();
    void destructionWhileConnectedTellsNobody();

private:
    void connectLink();
    QTcpSocket *acceptedPeer();
    static QString address() { return ownLoopback().toString(); }
    QString port() const { return QString::number(m_port); }

    std::unique_ptr<VirtualTime> m_time;
    std::unique_ptr<MessageCatcher> m_log;
    std::unique_ptr<QTcpServer> m_server;
    quint16 m_port = 0;
    TcpSock *m_sock = nullptr;    ///< of the link
    QTcpSocket *m_peer = nullptr; ///< the gateway's end of the connection; belongs to the server
    std::unique_ptr<TcpComm> m_link;
    std::unique_ptr<QSignalSpy> m_connects;
    std::unique_ptr<QSignalSpy> m_disconnects;
    QByteArray m_bytes; ///< what messagePacket carried
};

void TstTcpCommLoopback::init()
{
    constexpr std::chrono::milliseconds kPatience(20000); // no load of the machine uses it up
    m_time = std::make_unique<VirtualTime>();
    m_log = std::make_unique<MessageCatcher>();
    m_server = std::make_unique<QTcpServer>();
    QVERIFY(m_server->listen(ownLoopback(), 0));
    m_port = m_server->serverPort();
    auto socket = std::make_unique<TcpSock>(*m_time, nullptr, kPatience);
    m_sock = socket.get();
    m_link = std::make_unique<TcpComm>(*m_time, std::move(socket));
    m_connects = std::make_unique<QSignalSpy>(m_link.get(), &TcpComm::TcpConnected);
    m_disconnects = std::make_unique<QSignalSpy>(m_link.get(), &TcpComm::TcpDisconnectd);
    m_bytes.clear();
    connect(m_link.get(), &TcpComm::messagePacket, this, [this](QByteArray &bytes) { m_bytes += bytes; });
}

void TstTcpCommLoopback::cleanup()
{
    m_connects.reset();
    m_disconnects.reset();
    m_link.reset();
    m_server.reset();
    m_log.reset();
    m_time.reset();
}

QTcpSocket *TstTcpCommLoopback::acceptedPeer()
{
    if (!m_server->hasPendingConnections())
        m_server->waitForNewConnection(5000);
    return m_server->nextPendingConnection();
}

void TstTcpCommLoopback::connectLink()
{
    m_link->Slot_connectToGateway(address(), port());
    QCOMPARE(m_connects->count(), 1);
    m_peer = acceptedPeer();
    QVERIFY(m_peer);
}

void TstTcpCommLoopback::bytesGoBothWays()
{
    connectLink();
    const QByteArray sent("#006_1\r\0\xff", 9);
    m_link->Write(sent);
    QTRY_COMPARE(m_peer->bytesAvailable(), qint64(sent.size()));
    QCOMPARE(m_peer->readAll(), sent);
    const QByteArray received("\r\n[root]----\0\xff", 14);
    m_peer->write(received);
    QTRY_COMPARE(m_bytes, received);
}

void TstTcpCommLoopback::theServerSeesThatTheLinkWasLeft()
{
    connectLink();
    m_link->Slot_disconnectSocket();
    QTRY_COMPARE(m_peer->state(), QAbstractSocket::UnconnectedState);
    QCOMPARE(m_disconnects->count(), 0);
    QCOMPARE(m_time->activeTimers(), 0);
}

void TstTcpCommLoopback::nobodyListensIsToldAtOnce()
{
    m_server->close();
    m_link->Slot_connectToGateway(address(), port());
    QCOMPARE(m_connects->count(), 0);
    QCOMPARE(m_disconnects->count(), 1);
    QCOMPARE(m_time->activeTimers(), 0);
}

void TstTcpCommLoopback::theServerClosingStartsTheRetries()
{
    connectLink();
    m_peer->disconnectFromHost();
    QTRY_COMPARE(m_disconnects->count(), 1);
    QCOMPARE(m_time->activeTimers(), 1);
    QVERIFY(m_log->contains(QStringLiteral("******************Starting retry timer")));
    m_time->advance(5000);
    QCOMPARE(m_connects->count(), 2);
    m_peer = acceptedPeer();
    QVERIFY(m_peer);
    m_peer->write("]----");
    QTRY_COMPARE(m_bytes, QByteArray("]----"));
    QCOMPARE(m_time->activeTimers(), 0);
}

void TstTcpCommLoopback::theServerIsFoundAgainOnTheSamePort()
{
    connectLink();
    m_server->close();
    m_peer->abort();
    QTRY_COMPARE(m_disconnects->count(), 1);
    m_time->advance(10000);
    QCOMPARE(m_disconnects->count(), 3);
    QVERIFY(m_server->listen(ownLoopback(), m_port));
    m_time->advance(4999);
    QCOMPARE(m_connects->count(), 1);
    m_time->advance(1);
    QCOMPARE(m_connects->count(), 2);
    QVERIFY(m_log->contains(QStringLiteral("******************Connected")));
    m_peer = acceptedPeer();
    QVERIFY(m_peer);
    m_link->Write("#?\r");
    QTRY_COMPARE(m_peer->bytesAvailable(), qint64(3));
}

void TstTcpCommLoopback::aReceiverMayConnectAgainWhenTheServerCloses()
{
    connectLink();
    const auto again = [this] {
        m_link->Slot_connectToGateway(address(), port());
        m_link->Write("#?\r");
    };
    connect(m_link.get(), &TcpComm::TcpDisconnectd, this, again);
    m_peer->disconnectFromHost();
    QTRY_COMPARE(m_connects->count(), 2);
    QCOMPARE(m_disconnects->count(), 1);
    QCOMPARE(m_time->activeTimers(), 0);
    m_peer = acceptedPeer();
    QVERIFY(m_peer);
    m_link->Write("#006_1\r");
    QTRY_COMPARE(m_peer->bytesAvailable(), qint64(10));
    QCOMPARE(m_peer->readAll(), QByteArray("#?\r#006_1\r"));
    m_peer->write("]----");
    QTRY_COMPARE(m_bytes, QByteArray("]----"));
}

void TstTcpCommLoopback::theLastBytesBeforeTheEndArePassedOn()
{
    connectLink();
    m_peer->write("[NEW IP ADDRESS");
    m_peer->disconnectFromHost();
    QTRY_COMPARE(m_disconnects->count(), 1);
    QCOMPARE(m_bytes, QByteArray("[NEW IP ADDRESS"));
}

void TstTcpCommLoopback::bytesThatComeAfterLeavingAreNotPassedOn()
{
    connectLink();
    // More than the peer takes: the connection stays for a while after it was left.
    m_peer->setReadBufferSize(1);
    m_link->Write(QByteArray(16 * 1024 * 1024, 'x'));
    m_link->Slot_disconnectSocket();
    const auto *socket = m_sock->findChildren<QTcpSocket *>().last(); // of the only attempt
    QCOMPARE(socket->state(), QAbstractSocket::ClosingState);
    m_peer->write("]----");
    QVERIFY(m_peer->waitForBytesWritten(5000));
    m_peer->setReadBufferSize(0);
    QTRY_COMPARE(socket->state(), QAbstractSocket::UnconnectedState);
    QCOMPARE(m_bytes, QByteArray());
    QCOMPARE(m_disconnects->count(), 0);
}

void TstTcpCommLoopback::destructionWhileConnectedTellsNobody()
{
    connectLink();
    int told = 0;
    connect(m_link.get(), &TcpComm::TcpDisconnectd, this, [&told] { ++told; });
    m_link.reset();
    QTRY_COMPARE(m_peer->state(), QAbstractSocket::UnconnectedState);
    QCOMPARE(told, 0);
    QVERIFY(!m_log->contains(QStringLiteral("Entered the restart timer")));
}

QTEST_GUILESS_MAIN(TstTcpCommLoopback)
#include "tst_tcpcommloopback.moc"
