#include "deviceframes.h"
#include "link/keepalive.h"
#include "link/tcpsock.h"
#include "support/messagecatcher.h"
#include "support/virtualtime.h"

#include <QByteArrayList>
#include <QElapsedTimer>
#include <QFile>
#include <QHostInfo>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>
#include <memory>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace {

const QString kLoopback = QStringLiteral("127.0.0.1");

int optionOf(qintptr socket, int level, int option)
{
    int value = -1;
    socklen_t size = sizeof value;
    return ::getsockopt(int(socket), level, option, &value, &size) == 0 ? value : -1;
}

/// A port whose queue of connections is full, so that an attempt to connect gets no answer at all.
class SilentPort
{
public:
    SilentPort()
    {
        m_sockets.push_back(::socket(AF_INET, SOCK_STREAM, 0));
        address().sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof m_address;
        if (::bind(m_sockets.front(), generic(), sizeof m_address) != 0 ||
            ::listen(m_sockets.front(), 0) != 0 || ::getsockname(m_sockets.front(), generic(), &size) != 0)
            qFatal("No silent port to be had");
        for (int i = 0; i < kQueued; ++i) {
            m_sockets.push_back(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0));
            ::connect(m_sockets.back(), generic(), sizeof m_address);
        }
    }

    ~SilentPort()
    {
        for (const int socket : m_sockets)
            ::close(socket);
    }

    SilentPort(const SilentPort &) = delete;
    SilentPort &operator=(const SilentPort &) = delete;

    QString number() { return QString::number(ntohs(address().sin_port)); }

private:
    static constexpr int kQueued = 4; ///< more than a queue of length 0 takes

    sockaddr *generic() { return reinterpret_cast<sockaddr *>(&m_address); }
    sockaddr_in &address()
    {
        m_address.sin_family = AF_INET;
        return m_address;
    }

    sockaddr_in m_address{};
    std::vector<int> m_sockets;
};

} // namespace

class TstTcpSock : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void isNotConnectedAtFirst();
    void connectsAndTells();
    void aHostNameIsLookedUp();
    void anEmptyHostFails();
    void thePortIsReadAsADecimalNumber();
    void portsThatAreNoSixteenBitNumberFail_data();
    void portsThatAreNoSixteenBitNumberFail();
    void aRefusedConnectFailsAtOnce();
    void aPeerThatDoesNotAnswerIsGivenUp();
    void aReceiverOfTheConnectMayLeave();
    void connectingAgainLeavesTheEarlierConnection();
    void connectingAgainWithUnsentBytesWorks();

    void aFrameIsPassedOnAsEthernet();
    void twoFramesInOneReadAreBothPassedOn();
    void framesCutAnywhereArePassedOn();
    void textIsPassedOnAndRefusedByTheDecoder();
    void aReceiverOfTheBytesMayChangeThem();

    void aFrameIsWrittenWhole();
    void aReceiverOfTheConnectMayWrite();
    void writingWithoutConnectionDoesNothing();

    void aPeerThatGoesAwayIsTold();
    void lastBytesOfThePeerAreTakenBeforeItsEnd();
    void leavingEmitsNothing();
    void bytesThatComeAfterLeavingAreIgnored();
    void aReceiverOfTheBytesMayLeave();
    void aReceiverMayLeaveTheConnection();
    void aReceiverMayConnectAgain();
    void theSocketMayEndWhileConnected();

    void keepAliveIsOn();
    void aKeepAliveThatFailsIsLogged();
    void theReceiveBufferIsSet();
    void otherSocketStatesAreIgnored();

private:
    bool connectSocket();
    QString port() const { return QString::number(m_server->serverPort()); }
    QTcpSocket *socket() const { return m_sock->findChild<QTcpSocket *>(); }
    bool deliver(const QByteArray &bytes);

    std::unique_ptr<QTcpServer> m_server;
    QTcpSocket *m_peer = nullptr; ///< the device's end of the last connection; belongs to the server
    VirtualTime m_time;
    std::unique_ptr<TcpSock> m_sock;
    std::unique_ptr<QSignalSpy> m_connects;
    std::unique_ptr<QSignalSpy> m_disconnects;
    std::unique_ptr<QSignalSpy> m_written;
    QByteArray m_bytes; ///< what messagePacket carried
    QByteArrayList m_frames;
    std::unique_ptr<MessageCatcher> m_log;
};

void TstTcpSock::init()
{
    m_server = std::make_unique<QTcpServer>();
    QVERIFY(m_server->listen(QHostAddress::LocalHost, 0));
    m_sock = std::make_unique<TcpSock>(m_time);
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

void TstTcpSock::cleanup()
{
    m_connects.reset();
    m_disconnects.reset();
    m_written.reset();
    m_sock.reset();
    m_server.reset();
    m_log.reset();
}

/// Connects to the server and takes the server's end of it.
bool TstTcpSock::connectSocket()
{
    if (!m_sock->connectToServer(kLoopback, port()))
        return false;
    if (!m_server->hasPendingConnections() && !m_server->waitForNewConnection(5000))
        return false;
    m_peer = m_server->nextPendingConnection();
    return m_peer != nullptr;
}

/// The device sends these bytes; true when all of them have been read.
bool TstTcpSock::deliver(const QByteArray &bytes)
{
    const int expected = m_bytes.size() + bytes.size();
    m_peer->write(bytes);
    return QTest::qWaitFor([this, expected] { return m_bytes.size() >= expected; });
}

void TstTcpSock::isNotConnectedAtFirst()
{
    QVERIFY(!m_sock->IsConnected());
}

void TstTcpSock::connectsAndTells()
{
    bool upWhenTold = true;
    connect(m_sock.get(), &TcpSock::TcpConnected, this, [&] { upWhenTold = m_sock->IsConnected(); });
    QVERIFY(connectSocket());
    QVERIFY(m_sock->IsConnected());
    QVERIFY(!upWhenTold); // the flag follows the signal
    QCOMPARE(m_connects->count(), 1);
    QCOMPARE(m_disconnects->count(), 0);
    QCOMPARE(m_log->lines(),
             (QStringList{QStringLiteral("Connect Received"), QStringLiteral("Connected State")}));
}

void TstTcpSock::aHostNameIsLookedUp()
{
    if (!QHostInfo::fromName(QStringLiteral("localhost")).addresses().contains(QHostAddress::LocalHost))
        QSKIP("The name localhost is not known here");
    QVERIFY(m_sock->connectToServer(QStringLiteral("localhost"), port()));
}

void TstTcpSock::anEmptyHostFails()
{
    QVERIFY(!m_sock->connectToServer(QString(), port()));
    QCOMPARE(m_disconnects->count(), 1);
}

void TstTcpSock::thePortIsReadAsADecimalNumber()
{
    QVERIFY(m_sock->connectToServer(kLoopback, QStringLiteral("0") + port()));
}

void TstTcpSock::portsThatAreNoSixteenBitNumberFail_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<bool>("alone");
    QTest::newRow("empty") << QString() << true;
    QTest::newRow("letters behind") << QStringLiteral("x") << false;
    QTest::newRow("two numbers") << QStringLiteral(" 1") << false;
    QTest::newRow("hexadecimal") << QStringLiteral("0x1E61") << true;
    QTest::newRow("too large") << QStringLiteral("65536") << true;
    QTest::newRow("below zero") << QStringLiteral("-1") << true;
}

void TstTcpSock::portsThatAreNoSixteenBitNumberFail()
{
    QFETCH(QString, suffix);
    QFETCH(bool, alone);
    QVERIFY(!m_sock->connectToServer(kLoopback, alone ? suffix : port() + suffix));
    QCOMPARE(m_disconnects->count(), 1);
}

void TstTcpSock::aRefusedConnectFailsAtOnce()
{
    const QString closedPort = port();
    m_server->close();
    QVERIFY(!m_sock->connectToServer(kLoopback, closedPort));
    QVERIFY(!m_sock->IsConnected());
    QCOMPARE(m_disconnects->count(), 1);
    QCOMPARE(m_connects->count(), 0);
    QCOMPARE(socket()->state(), QAbstractSocket::UnconnectedState);
}

void TstTcpSock::aPeerThatDoesNotAnswerIsGivenUp()
{
    SilentPort silent;
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!m_sock->connectToServer(kLoopback, silent.number()));
    QVERIFY2(clock.elapsed() >= 45, "the attempt was not waited for");
    QCOMPARE(m_disconnects->count(), 1);
    QCOMPARE(m_connects->count(), 0);
    // Nothing is left that a late answer could reach.
    QCOMPARE(socket()->state(), QAbstractSocket::UnconnectedState);
    QCOMPARE(socket()->socketDescriptor(), qintptr(-1));
}

void TstTcpSock::aReceiverOfTheConnectMayLeave()
{
    connect(m_sock.get(), &TcpSock::TcpConnected, m_sock.get(), &TcpSock::disconnectSocket);
    QVERIFY(!m_sock->connectToServer(kLoopback, port()));
    QVERIFY(!m_sock->IsConnected());
    QCOMPARE(m_disconnects->count(), 0);
}

void TstTcpSock::connectingAgainLeavesTheEarlierConnection()
{
    QVERIFY(connectSocket());
    QSignalSpy left(m_peer, &QTcpSocket::disconnected);
    QVERIFY(connectSocket());
    QTRY_COMPARE(left.count(), 1);
    QVERIFY(m_sock->IsConnected());
    QCOMPARE(m_disconnects->count(), 0);
    QCOMPARE(m_connects->count(), 2);
    QVERIFY(deliver(deviceframes::five()));
    QCOMPARE(m_frames.size(), 1);
}

void TstTcpSock::connectingAgainWithUnsentBytesWorks()
{
    QVERIFY(connectSocket());
    m_sock->Write(deviceframes::five());
    QVERIFY(socket()->bytesToWrite() > 0);
    QVERIFY(connectSocket());
    QVERIFY(m_sock->IsConnected());
    QCOMPARE(m_disconnects->count(), 0);
    m_sock->Write(deviceframes::eight());
    QTRY_COMPARE(m_peer->bytesAvailable(), qint64(deviceframes::eight().size()));
    QCOMPARE(m_peer->readAll(), deviceframes::eight());
}

void TstTcpSock::aFrameIsPassedOnAsEthernet()
{
    QVERIFY(connectSocket());
    QVERIFY(deliver(deviceframes::largest()));
    QCOMPARE(m_frames, QByteArrayList{deviceframes::largest()});
    QCOMPARE(m_bytes, deviceframes::largest());
}

void TstTcpSock::twoFramesInOneReadAreBothPassedOn()
{
    QVERIFY(connectSocket());
    QVERIFY(deliver(deviceframes::five() + deviceframes::eight()));
    QCOMPARE(m_frames, (QByteArrayList{deviceframes::five(), deviceframes::eight()}));
}

void TstTcpSock::framesCutAnywhereArePassedOn()
{
    QVERIFY(connectSocket());
    const QByteArray frame = deviceframes::eight();
    for (int cut = 1; cut < frame.size(); ++cut) {
        m_frames.clear();
        QVERIFY(deliver(frame.left(cut)));
        QVERIFY(m_frames.isEmpty());
        QVERIFY(deliver(frame.mid(cut)));
        QCOMPARE(m_frames, QByteArrayList{frame});
    }
}

void TstTcpSock::textIsPassedOnAndRefusedByTheDecoder()
{
    QVERIFY(connectSocket());
    QVERIFY(deliver("#010_ON\r"));
    QCOMPARE(m_bytes, QByteArray("#010_ON\r"));
    QCOMPARE(m_log->lines().last(), QStringLiteral("Rx From VX Stat -1"));
    QVERIFY(m_frames.isEmpty());
    QVERIFY(m_sock->IsConnected());
}

void TstTcpSock::aReceiverOfTheBytesMayChangeThem()
{
    connect(m_sock.get(), &TcpSock::messagePacket, this, [](QByteArray &bytes) { bytes.clear(); });
    QVERIFY(connectSocket());
    QVERIFY(deliver(deviceframes::five()));
    QCOMPARE(m_frames.size(), 1);
}

void TstTcpSock::aFrameIsWrittenWhole()
{
    QVERIFY(connectSocket());
    m_sock->Write(deviceframes::largest());
    QCOMPARE(m_written->count(), 1);
    QTRY_COMPARE(m_peer->bytesAvailable(), qint64(deviceframes::largest().size()));
    QCOMPARE(m_peer->readAll(), deviceframes::largest());
}

void TstTcpSock::aReceiverOfTheConnectMayWrite()
{
    connect(m_sock.get(), &TcpSock::TcpConnected, this, [this] { m_sock->Write("hello"); });
    QVERIFY(connectSocket());
    QCOMPARE(m_written->count(), 1);
    QTRY_COMPARE(m_peer->bytesAvailable(), qint64(5));
}

void TstTcpSock::writingWithoutConnectionDoesNothing()
{
    m_sock->Write("x");
    QVERIFY(connectSocket());
    m_peer->close();
    QTRY_COMPARE(m_disconnects->count(), 1);
    m_sock->Write("x");
    QVERIFY(connectSocket());
    m_sock->disconnectSocket();
    m_sock->Write("x");
    QCOMPARE(m_written->count(), 0);
}

void TstTcpSock::aPeerThatGoesAwayIsTold()
{
    QVERIFY(connectSocket());
    m_peer->close();
    QTRY_COMPARE(m_disconnects->count(), 1);
    QVERIFY(!m_sock->IsConnected());
    m_sock->handleDisconnect();
    QCOMPARE(m_disconnects->count(), 1); // told once
    QVERIFY(connectSocket());
    QVERIFY(m_sock->IsConnected());
}

void TstTcpSock::lastBytesOfThePeerAreTakenBeforeItsEnd()
{
    QVERIFY(connectSocket());
    m_peer->write(deviceframes::five());
    m_peer->disconnectFromHost();
    QTRY_COMPARE(m_disconnects->count(), 1);
    QCOMPARE(m_frames.size(), 1);
}

void TstTcpSock::leavingEmitsNothing()
{
    QVERIFY(connectSocket());
    QSignalSpy left(m_peer, &QTcpSocket::disconnected);
    m_sock->disconnectSocket();
    QVERIFY(!m_sock->IsConnected());
    QTRY_COMPARE(left.count(), 1);
    QCOMPARE(m_disconnects->count(), 0);
    m_sock->disconnectSocket();
    QCOMPARE(m_disconnects->count(), 0);
}

void TstTcpSock::bytesThatComeAfterLeavingAreIgnored()
{
    QVERIFY(connectSocket());
    // More than the peer takes: the connection stays for a while after it was left.
    m_peer->setReadBufferSize(1);
    m_sock->Write(QByteArray(16 * 1024 * 1024, 'x'));
    m_sock->disconnectSocket();
    QCOMPARE(socket()->state(), QAbstractSocket::ClosingState);
    m_peer->write(deviceframes::eight());
    QVERIFY(m_peer->waitForBytesWritten(5000));
    QVERIFY(connectSocket());
    QVERIFY(deliver(deviceframes::five()));
    QCOMPARE(m_bytes, deviceframes::five());
    QCOMPARE(m_frames, QByteArrayList{deviceframes::five()});
}

void TstTcpSock::aReceiverOfTheBytesMayLeave()
{
    connect(m_sock.get(), &TcpSock::messagePacket, m_sock.get(), &TcpSock::disconnectSocket);
    QVERIFY(connectSocket());
    QVERIFY(deliver(deviceframes::five()));
    QVERIFY(m_frames.isEmpty());
    QVERIFY(!m_sock->IsConnected());
}

void TstTcpSock::aReceiverMayLeaveTheConnection()
{
    connect(m_sock.get(), &TcpSock::Signal_RcvSerialDatagram, m_sock.get(), &TcpSock::disconnectSocket);
    QVERIFY(connectSocket());
    QVERIFY(deliver(deviceframes::five() + deviceframes::eight()));
    QCOMPARE(m_frames, QByteArrayList{deviceframes::five()});
    QVERIFY(!m_sock->IsConnected());
    QCOMPARE(m_disconnects->count(), 0);
}

void TstTcpSock::aReceiverMayConnectAgain()
{
    const auto reconnecting =
        connect(m_sock.get(), &TcpSock::Signal_RcvSerialDatagram, this, [this] { QVERIFY(connectSocket()); });
    QVERIFY(connectSocket());
    QVERIFY(deliver(deviceframes::five() + deviceframes::eight().left(10)));
    QCOMPARE(m_frames.size(), 1);
    disconnect(reconnecting);
    QVERIFY(m_sock->IsConnected());
    // The rest of the old read was dropped: a whole frame is understood at once.
    QVERIFY(deliver(deviceframes::eight()));
    QCOMPARE(m_frames, (QByteArrayList{deviceframes::five(), deviceframes::eight()}));
    QCOMPARE(m_disconnects->count(), 0);
}

void TstTcpSock::theSocketMayEndWhileConnected()
{
    QVERIFY(connectSocket());
    QSignalSpy left(m_peer, &QTcpSocket::disconnected);
    int told = 0;
    connect(m_sock.get(), &TcpSock::TcpDisconnectd, this, [&told] { ++told; });
    m_sock.reset();
    QTRY_COMPARE(left.count(), 1);
    QCOMPARE(told, 0);
}

void TstTcpSock::keepAliveIsOn()
{
    QVERIFY(connectSocket());
    const qintptr descriptor = socket()->socketDescriptor();
    QCOMPARE(optionOf(descriptor, SOL_SOCKET, SO_KEEPALIVE), 1);
    QCOMPARE(optionOf(descriptor, IPPROTO_TCP, TCP_KEEPIDLE), 1);
    QCOMPARE(optionOf(descriptor, IPPROTO_TCP, TCP_KEEPINTVL), 1);
}

void TstTcpSock::aKeepAliveThatFailsIsLogged()
{
    enableKeepAlive(-1);
    QVERIFY(m_log->containsText(QStringLiteral("TCP keep-alive could not be set: ")));
}

void TstTcpSock::theReceiveBufferIsSet()
{
    QFile limitFile(QStringLiteral("/proc/sys/net/core/rmem_max"));
    if (!limitFile.open(QIODevice::ReadOnly))
        QSKIP("The limit of receive buffers is not told here");
    const int limit = limitFile.readAll().trimmed().toInt();
    QVERIFY(connectSocket());
    // The system books twice the size that was asked for.
    QCOMPARE(optionOf(socket()->socketDescriptor(), SOL_SOCKET, SO_RCVBUF), 2 * qMin(1250172, limit));
}

void TstTcpSock::otherSocketStatesAreIgnored()
{
    for (const auto state :
         {QAbstractSocket::UnconnectedState, QAbstractSocket::HostLookupState,
          QAbstractSocket::ConnectingState, QAbstractSocket::BoundState, QAbstractSocket::ClosingState})
        m_sock->Slot_CommStatus(state);
    QVERIFY(m_log->lines().isEmpty());
}

QTEST_GUILESS_MAIN(TstTcpSock)
#include "tst_tcpsock.moc"
