#include "sim/connection.h"
#include "sim/server.h"
#include "sim/tcplink.h"

#include "base/timesource.h"

#include <QtTest>

#include <QTcpSocket>

using sim::Chain;
using sim::Connection;
using sim::Milliseconds;
using sim::Module;
using sim::Server;
using sim::TcpLink;

namespace {

const QByteArray kFastRequest = QByteArray::fromHex("8081828301ff4350000000000000000005008ff408000000007334");
const QByteArray kModulesRequest =
    QByteArray::fromHex("80818283010143500000000000000000050091f31000000000c695");
constexpr int kFrameSize = 38;

/// A peer that reads nothing of the 32 MiB of replies that it is sent.
struct FloodedPeer
{
    FloodedPeer()
    {
        QString error;
        QVERIFY2(link.open(0, &error), qPrintable(error));
        QObject::connect(&link, &TcpLink::connected, &peer, [this](Connection *made) { connection = made; });
        peer.setReadBufferSize(1);
        peer.connectToHost(QHostAddress::LocalHost, link.port());
        QTRY_VERIFY(connection);
        QObject::connect(connection, &Connection::lost, &peer, [this](int byteCount) { lost += byteCount; });
        const QByteArray replies(kReply, 'r');
        for (int i = 0; i < 512; ++i)
            connection->send(replies);
    }

    static constexpr int kReply = 1 << 16;

    TcpLink link;
    QTcpSocket peer;
    qint64 lost = 0;                  // bytes
    Connection *connection = nullptr; // belongs to the link
};

} // namespace

class TstSimLinks : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void tcpAnswers();
    void severalClients();
    void clientMayGoAndComeBack();
    void takenPortIsReported();
    void closeFaultEndsTheConnection();
    void wholeFastModuleStatusOverTcp();
    void peerThatDoesNotReadCostsLittleMemory();
    void lossAndRoomAreTold();
    void closeDoesNotWaitForAPeerThatDoesNotRead();

private:
    std::unique_ptr<QTcpSocket> client()
    {
        auto socket = std::make_unique<QTcpSocket>();
        socket->connectToHost(QHostAddress::LocalHost, m_server->tcpPort());
        return socket;
    }

    SystemTime m_time;
    std::unique_ptr<Server> m_server;
};

void TstSimLinks::init()
{
    Chain chain;
    chain.modules = {Module::ofType(1)};
    m_server = std::make_unique<Server>(m_time, chain);
    QString error;
    QVERIFY2(m_server->listen(0, &error), qPrintable(error));
    QVERIFY(m_server->tcpPort() != 0);
}

void TstSimLinks::cleanup()
{
    m_server.reset();
}

void TstSimLinks::tcpAnswers()
{
    const auto socket = client();
    socket->write(kFastRequest.left(11));
    QVERIFY(socket->waitForConnected());
    socket->flush();
    socket->write(kFastRequest.mid(11));
    QTRY_COMPARE(socket->bytesAvailable(), kFrameSize);
    QCOMPARE(socket->readAll().left(8).toHex(), QByteArray("808182830101504b"));
}

void TstSimLinks::severalClients()
{
    const auto first = client();
    const auto second = client();
    first->write(kFastRequest);
    QTRY_COMPARE(first->bytesAvailable(), kFrameSize);
    second->write(kFastRequest);
    QTRY_COMPARE(second->bytesAvailable(), kFrameSize);
    first->write(kFastRequest);
    QTRY_COMPARE(first->bytesAvailable(), 2 * kFrameSize);
}

void TstSimLinks::clientMayGoAndComeBack()
{
    for (int i = 1; i <= 3; ++i) {
        const auto socket = client();
        socket->write(kFastRequest);
        QTRY_COMPARE(socket->bytesAvailable(), kFrameSize);
        QCOMPARE(int(socket->readAll().at(5)), i);
    }
}

void TstSimLinks::takenPortIsReported()
{
    Server other(m_time, Chain());
    QString error;
    QVERIFY(!other.listen(m_server->tcpPort(), &error));
    QVERIFY(error.startsWith(QStringLiteral("TCP port %1: ").arg(m_server->tcpPort())));
}

void TstSimLinks::closeFaultEndsTheConnection()
{
    QString error;
    QVERIFY(m_server->faults().parse("close nth=1", &error));
    const auto socket = client();
    socket->write(kFastRequest);
    QTRY_COMPARE(m_server->requestCount(), 1);
    QTRY_COMPARE(socket->state(), QAbstractSocket::UnconnectedState);
    const auto next = client();
    next->write(kFastRequest);
    QTRY_COMPARE(next->bytesAvailable(), kFrameSize);
}

void TstSimLinks::wholeFastModuleStatusOverTcp()
{
    const auto socket = client();
    socket->write(kModulesRequest);
    QTRY_COMPARE(socket->bytesAvailable(), 1208);
}

void TstSimLinks::peerThatDoesNotReadCostsLittleMemory()
{
    FloodedPeer flooded;
    QVERIFY(flooded.connection);
    const auto *socket = flooded.connection->findChild<QTcpSocket *>();
    QVERIFY(socket->bytesToWrite() > 0);
    QVERIFY(socket->bytesToWrite() <= TcpLink::kMaximumUnsent);
}

void TstSimLinks::lossAndRoomAreTold()
{
    FloodedPeer flooded;
    QVERIFY(flooded.connection);
    QVERIFY(flooded.lost > 0);
    QCOMPARE(flooded.lost % FloodedPeer::kReply, 0);
    QVERIFY(flooded.connection->room() < FloodedPeer::kReply);
    QSignalSpy drained(flooded.connection, &Connection::drained);
    flooded.peer.setReadBufferSize(0);
    QTRY_COMPARE(flooded.connection->room(), int(TcpLink::kMaximumUnsent));
    QVERIFY(!drained.isEmpty());
    const qint64 before = flooded.lost;
    flooded.connection->send(QByteArray(TcpLink::kMaximumUnsent, 'r'));
    QCOMPARE(flooded.lost, before);
}

void TstSimLinks::closeDoesNotWaitForAPeerThatDoesNotRead()
{
    FloodedPeer flooded;
    QVERIFY(flooded.connection);
    QSignalSpy closed(flooded.connection, &Connection::closed);
    flooded.connection->close(Milliseconds(0));
    QCOMPARE(closed.size(), 1);
}

QTEST_GUILESS_MAIN(TstSimLinks)
#include "tst_simlinks.moc"
