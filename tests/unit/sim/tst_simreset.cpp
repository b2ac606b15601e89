#include "sim/server.h"

#include "base/timesource.h"

#include <QtTest>

#include <arpa/inet.h>
#include <cerrno>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

using sim::Chain;
using sim::Server;

namespace {

const QByteArray kFastRequest = QByteArray::fromHex("8081828301ff4350000000000000000005008ff408000000007334");
constexpr int kNothingYet = -2;

/// A client that sees how its connection ends: a socket of the library tells one end from another no more.
class BareClient
{
public:
    explicit BareClient(quint16 port)
        : m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_in place{};
        place.sin_family = AF_INET;
        place.sin_port = htons(port);
        place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        const auto *where =
            reinterpret_cast<const sockaddr *>(&place); // the interface of the kernel asks for it
        m_isConnected = ::connect(m_socket, where, sizeof place) == 0;
    }
    ~BareClient() { ::close(m_socket); }

    BareClient(const BareClient &) = delete;
    BareClient &operator=(const BareClient &) = delete;

    bool isConnected() const { return m_isConnected; }
    void write(const QByteArray &bytes) const
    {
        (void)::send(m_socket, bytes.constData(), static_cast<size_t>(bytes.size()), MSG_NOSIGNAL);
    }
    /// The error number with which the connection ended, 0 for an orderly end.
    int end() const
    {
        char byte = 0;
        const ssize_t size = ::recv(m_socket, &byte, 1, MSG_DONTWAIT);
        if (size == 0)
            return 0;
        return size < 0 && errno != EAGAIN ? errno : kNothingYet;
    }

private:
    const int m_socket;
    bool m_isConnected = false;
};

} // namespace

/// What the faults that end a connection do to a real one.
class TstSimReset : public QObject
{
    Q_OBJECT

private slots:
    void faultsEndTheConnection_data();
    void faultsEndTheConnection();
};

void TstSimReset::faultsEndTheConnection_data()
{
    QTest::addColumn<QString>("rule");
    QTest::addColumn<int>("error");

    QTest::newRow("closed") << "close" << 0;
    QTest::newRow("reset") << "reset" << ECONNRESET;
}

void TstSimReset::faultsEndTheConnection()
{
    QFETCH(QString, rule);
    QFETCH(int, error);
    SystemTime time;
    Server server(time, Chain());
    QString reason;
    QVERIFY2(server.listen(0, &reason), qPrintable(reason));
    QVERIFY2(server.faults().parse(rule, &reason), qPrintable(reason));
    QSignalSpy requests(&server, &Server::requestReceived);
    const BareClient client(server.tcpPort());
    QVERIFY(client.isConnected());
    client.write(kFastRequest);
    QVERIFY(!requests.isEmpty() || requests.wait());
    int end = kNothingYet;
    const auto hasEnded = [&client, &end] { // an error is told once
        if (end == kNothingYet)
            end = client.end();
        return end != kNothingYet;
    };
    QTRY_VERIFY(hasEnded());
    QCOMPARE(end, error);
}

QTEST_GUILESS_MAIN(TstSimReset)
#include "tst_simreset.moc"
