#include "tcpsocktest.h"

#include <QTcpSocket>
#include <QtTest>

std::unique_ptr<TcpSock> TcpSockTest::patientSock(HostLookup::Function lookUp)
{
    constexpr std::chrono::milliseconds kPatience(20000);
    return std::make_unique<TcpSock>(m_time, nullptr, kPatience, std::move(lookUp));
}

QTcpSocket *TcpSockTest::socket() const
{
    return m_sock->findChildren<QTcpSocket *>().last(); // those before it are to be deleted
}

void TcpSockTest::init()
{
    m_server = std::make_unique<QTcpServer>();
    QVERIFY(m_server->listen(ownLoopback(), 0));
    m_sock = patientSock();
    m_connects = std::make_unique<QSignalSpy>(m_sock.get(), &TcpSock::TcpConnected);
    m_disconnects = std::make_unique<QSignalSpy>(m_sock.get(), &TcpSock::TcpDisconnectd);
    m_written = std::make_unique<QSignalSpy>(m_sock.get(), &TcpSock::dataWritten);
    m_bytes.clear();
    m_frames.clear();
    connect(m_sock.get(), &TcpSock::messagePacket, this, [this](QByteArray &bytes) { m_bytes += bytes; });
    connect(m_sock.get(), &TcpSock::Signal_RcvSerialDatagram, this,
            [this](Comm_Type kind, QByteArray &frame) {
                QCOMPARE(kind, Comm_Type::Ethernet);
                m_frames.append(frame);
            });
    m_log = std::make_unique<MessageCatcher>();
}

void TcpSockTest::cleanup()
{
    m_connects.reset();
    m_disconnects.reset();
    m_written.reset();
    m_sock.reset();
    m_server.reset();
    m_log.reset();
}

bool TcpSockTest::connectSocket()
{
    if (!m_sock->connectToServer(loopback(), port()))
        return false;
    if (!m_server->hasPendingConnections() && !m_server->waitForNewConnection(5000))
        return false;
    m_peer = m_server->nextPendingConnection();
    return m_peer != nullptr;
}

bool TcpSockTest::deliver(const QByteArray &bytes)
{
    const int expected = m_bytes.size() + bytes.size();
    m_peer->write(bytes);
    return QTest::qWaitFor([this, expected] { return m_bytes.size() >= expected; });
}
