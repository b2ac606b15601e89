#include "link/keepalive.h"
#include "tcpsocktest.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTcpSocket>
#include <QtTest>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace {

int optionOf(qintptr socket, int level, int option)
{
    int value = -1;
    socklen_t size = sizeof value;
    return ::getsockopt(int(socket), level, option, &value, &size) == 0 ? value : -1;
}

/// The receive buffer that a socket of this machine gets when it asks for `size` bytes.
int grantedBuffer(int size)
{
    const int plain = ::socket(AF_INET, SOCK_STREAM, 0);
    ::setsockopt(plain, SOL_SOCKET, SO_RCVBUF, &size, sizeof size);
    const int granted = optionOf(plain, SOL_SOCKET, SO_RCVBUF);
    ::close(plain);
    return granted;
}

/// A port whose queue of connections is full, so that an attempt to connect gets no answer at all.
class SilentPort
{
public:
    SilentPort()
    {
        m_sockets.push_back(::socket(AF_INET, SOCK_STREAM, 0));
        address().sin_addr.s_addr = htonl(ownLoopback().toIPv4Address());
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

    quint16 port() { return ntohs(address().sin_port); }
    QString number() { return QString::number(port()); }

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

/// What the TCP link asks of the system, seen on the socket itself.
class TstTcpOptions : public TcpSockTest
{
    Q_OBJECT

private slots:
    void aPeerThatDoesNotAnswerIsGivenUp();
    void theWaitForAnAnswerIsTheOneGiven();
    void aConnectionThatIsThereIsTakenThoughTheWaitIsOver();
    void silentAddressesOfAHostAddOneShortLook_data();
    void silentAddressesOfAHostAddOneShortLook();
    void keepAliveIsOn();
    void keepAliveIsOnAfterConnectingAgain();
    void unacknowledgedBytesWaitAsLongAsKeepAliveDoes();
    void aKeepAliveThatFailsIsLogged();
    void theReceiveBufferIsSet();

private:
    void expectKeepAlive();
};

void TstTcpOptions::aPeerThatDoesNotAnswerIsGivenUp()
{
    SilentPort silent;
    m_sock = std::make_unique<TcpSock>(m_time); // with the wait that the program has
    QSignalSpy connects(m_sock.get(), &TcpSock::TcpConnected);
    QSignalSpy disconnects(m_sock.get(), &TcpSock::TcpDisconnectd);
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!m_sock->connectToServer(loopback(), silent.number()));
    const qint64 waited = clock.elapsed();
    QVERIFY2(waited >= 45, "the attempt was not waited for");
    QVERIFY2(waited < 10000, "the wait is 50 ms; a busy machine may add to it, but not so much");
    QCOMPARE(disconnects.count(), 1);
    QCOMPARE(connects.count(), 0);
    // Nothing is left that a late answer could reach.
    QCOMPARE(socket()->state(), QAbstractSocket::UnconnectedState);
    QCOMPARE(socket()->socketDescriptor(), qintptr(-1));
}

void TstTcpOptions::theWaitForAnAnswerIsTheOneGiven()
{
    SilentPort silent;
    TcpSock sock(m_time, nullptr, std::chrono::milliseconds(300));
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!sock.connectToServer(loopback(), silent.number()));
    QVERIFY(clock.elapsed() >= 290);
}

void TstTcpOptions::aConnectionThatIsThereIsTakenThoughTheWaitIsOver()
{
    // As if the program had not had the processor for the whole wait.
    TcpSock sock(m_time, nullptr, std::chrono::milliseconds(0));
    QVERIFY(sock.connectToServer(loopback(), port()));
    QVERIFY(sock.IsConnected());
}

void TstTcpOptions::silentAddressesOfAHostAddOneShortLook_data()
{
    QTest::addColumn<int>("silentAddresses");
    QTest::addColumn<bool>("isReached"); // the address behind them, where a device listens
    QTest::newRow("the first has the wait, the second the look") << 1 << true;
    QTest::newRow("nothing is left for the third") << 2 << false;
    QTest::newRow("nor for the last of many") << 30 << false;
}

void TstTcpOptions::silentAddressesOfAHostAddOneShortLook()
{
    QFETCH(int, silentAddresses);
    QFETCH(bool, isReached);
    SilentPort silent;
    const QHostAddress other(ownLoopback().toIPv4Address() + 1);
    QTcpServer device;
    QVERIFY(device.listen(other, silent.port()));
    QHostInfo host;
    host.setAddresses(QVector<QHostAddress>(silentAddresses, ownLoopback()).toList() << other);
    constexpr std::chrono::milliseconds kWait(200); // long enough for the look-up
    TcpSock sock(m_time, nullptr, kWait, [host](const QString &) { return host; });
    const QString name = QStringLiteral("gateway");
    if (isReached) // by a busy machine not each time
        QTRY_VERIFY(sock.IsConnected() || sock.connectToServer(name, silent.number()));
    else
        QVERIFY(!sock.connectToServer(name, silent.number()));
}

void TstTcpOptions::keepAliveIsOn()
{
    QVERIFY(connectSocket());
    expectKeepAlive();
}

void TstTcpOptions::keepAliveIsOnAfterConnectingAgain()
{
    QVERIFY(connectSocket());
    QVERIFY(connectSocket());
    expectKeepAlive();
    m_peer->close();
    QTRY_COMPARE(m_disconnects->count(), 1);
    QVERIFY(connectSocket());
    expectKeepAlive();
}

void TstTcpOptions::unacknowledgedBytesWaitAsLongAsKeepAliveDoes()
{
    const int plain = ::socket(AF_INET, SOCK_STREAM, 0);
    const int probes = 4;
    QCOMPARE(::setsockopt(plain, IPPROTO_TCP, TCP_KEEPCNT, &probes, sizeof probes), 0);
    enableKeepAlive(plain);
    const int wait = optionOf(plain, IPPROTO_TCP, TCP_USER_TIMEOUT);
    ::close(plain);
    QCOMPARE(wait, 5000); // a second of silence and four probes, one each second
    QCOMPARE(m_log->lines(QtWarningMsg), QStringList());
}

void TstTcpOptions::aKeepAliveThatFailsIsLogged()
{
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("^TCP keep-alive could not be set: ")));
    enableKeepAlive(-1);
    const QStringList warnings = m_log->lines(QtWarningMsg);
    QCOMPARE(warnings.size(), 1);
    QVERIFY(warnings.first().startsWith(QStringLiteral("TCP keep-alive could not be set: ")));
}

void TstTcpOptions::theReceiveBufferIsSet()
{
    const int granted = grantedBuffer(1250172);
    QVERIFY(granted != grantedBuffer(1250172 / 8)); // so much depends on the size that is asked for
    QVERIFY(connectSocket());
    QCOMPARE(optionOf(socket()->socketDescriptor(), SOL_SOCKET, SO_RCVBUF), granted);
}

void TstTcpOptions::expectKeepAlive()
{
    const qintptr descriptor = socket()->socketDescriptor();
    QCOMPARE(optionOf(descriptor, SOL_SOCKET, SO_KEEPALIVE), 1);
    QCOMPARE(optionOf(descriptor, IPPROTO_TCP, TCP_KEEPIDLE), 1);
    QCOMPARE(optionOf(descriptor, IPPROTO_TCP, TCP_KEEPINTVL), 1);
    const int probes = optionOf(descriptor, IPPROTO_TCP, TCP_KEEPCNT);
    QVERIFY(probes > 0);
    QCOMPARE(optionOf(descriptor, IPPROTO_TCP, TCP_USER_TIMEOUT), (1 + probes) * 1000);
}

QTEST_GUILESS_MAIN(TstTcpOptions)
#include "tst_tcpoptions.moc"
