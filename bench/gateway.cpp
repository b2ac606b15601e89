// What the gateway's panel costs the window: a status line each second, a peer that floods it with bytes
// without an end, and an address where nobody answers. The peer is a real socket in a thread of its own.

#include "base/timesource.h"
#include "gateway/gatewayzrt.h"
#include "link/tcpsock.h"
#include "loopgap.h"
#include "measuring.h"
#include "widgetbench.h"

#include <QFile>
#include <QPlainTextEdit>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <cstdio>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr int kRounds = 500;
constexpr int kFloodBytes = 16 << 20;
constexpr int kPatienceMs = 30000;
constexpr int kPieces = 5000;
constexpr int kAttempts = 7;
constexpr double kStatusLimitMs = 2;
constexpr double kGapLimitMs = 30;
constexpr double kMemoryLimit = 50;
constexpr double kConnectLimitMs = 60; // the agreed 50 ms of waiting, and what is done around it

/// Differs from that of the round before in every text and in the marked cell.
QByteArray statusLine(int round)
{
    const QByteArray number = QByteArray::number(1000 + round);
    QByteArrayList fields;
    for (int field = 0; field <= 38; ++field)
        fields << number;
    fields[0] = "#S";
    fields[3] = "2";
    fields[5] = QByteArray::number(round % 9);
    fields[6] = round % 2 ? "2500" : "1250";
    fields[7] = "16";
    fields[8] = round % 2 ? "UDP-B" : "TCP-S";
    fields[9] = round % 2 ? "B" : "L";
    fields[10] = round % 2 ? "16" : "18";
    fields[13] = round % 2 ? "U" : "2";
    fields[28] = "100000";
    fields[31] = QByteArray::number(round % 4);
    fields[32] = round % 2 ? "0" : "1";
    fields[33] = QByteArray::number(round % 3);
    fields[38] = round % 2 ? "ZRT-1" : "IENA-1";
    return fields.join(';');
}

/// Takes one client, sends it bytes without a line end and closes.
class Flood : public QThread
{
public:
    explicit Flood(QTcpServer &server)
        : m_server(server)
    {
        m_server.moveToThread(this);
    }
    ~Flood() override { wait(); }

protected:
    void run() override
    {
        if (!m_server.waitForNewConnection(kPatienceMs))
            return;
        const std::unique_ptr<QTcpSocket> client(m_server.nextPendingConnection());
        const QByteArray piece(1 << 16, 'x');
        for (int sent = 0; sent < kFloodBytes; sent += piece.size()) {
            client->write(piece);
            while (client->bytesToWrite() > 0 && client->waitForBytesWritten(kPatienceMs)) {
            }
        }
        client->disconnectFromHost();
        if (client->state() != QAbstractSocket::UnconnectedState)
            client->waitForDisconnected(kPatienceMs);
    }

private:
    QTcpServer &m_server;
};

/// A port that is open and never answers: its queue of one connection is full.
class SilentPort
{
public:
    SilentPort()
    {
        m_server.listen(QHostAddress::LocalHost);
        ::listen(static_cast<int>(m_server.socketDescriptor()), 0);
        for (QTcpSocket &client : m_clients)
            client.connectToHost(QHostAddress(QHostAddress::LocalHost), m_server.serverPort());
        m_clients[0].waitForConnected();
        m_server.pauseAccepting();
    }

    QString port() const { return QString::number(m_server.serverPort()); }

private:
    QTcpServer m_server;
    QTcpSocket m_clients[2];
};

struct Panel
{
    Panel()
        : link(new TcpComm(time, std::make_unique<TcpSock>(time)))
        , window(time, std::unique_ptr<TcpComm>(link))
    {
        window.show();
        QCoreApplication::processEvents();
    }

    SystemTime time;
    TcpComm *link;
    GatewayZRT window;
};

void measureStatus()
{
    Panel panel;
    std::vector<double> times;
    for (int round = 0; round < kRounds; ++round) {
        QByteArray line = statusLine(round);
        times.push_back(measureMs([&] { panel.window.parseData(line); }));
        QCoreApplication::processEvents();
    }
    std::printf("status line of the gateway that changes every field: median %.2f ms, worst %.2f ms (limit "
                "%.0f ms)\n",
                medianMs(times), worstMs(times), kStatusLimitMs);
}

void measureFlood()
{
    Panel panel;
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    const QString port = QString::number(server.serverPort());
    Flood flood(server);
    flood.start();
    QEventLoop loop;
    QObject::connect(&flood, &QThread::finished, &loop, &QEventLoop::quit);
    QElapsedTimer total;
    total.start();
    LoopGap gap;
    gap.start();
    panel.link->Slot_connectToGateway(QStringLiteral("127.0.0.1"), port);
    loop.exec();
    const auto *box = panel.window.findChild<QPlainTextEdit *>(QStringLiteral("RxBox"));
    std::printf("longest gap in the event loop while %d MB without an end come in (%.0f ms): %.1f ms (limit "
                "%.0f ms), "
                "%d characters kept\n",
                kFloodBytes >> 20, elapsedMs(total), gap.longestMs(), kGapLimitMs,
                box->document()->characterCount());
}

double residentMegabytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toDouble() * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

void measureMemory()
{
    Panel panel;
    QByteArray piece(1 << 16, 'x');
    const double before = residentMegabytes();
    for (int round = 0; round < kPieces; ++round) {
        panel.window.parseData(piece);
        QCoreApplication::processEvents();
    }
    std::printf("memory that %d pieces of %d characters take: %.1f MB (limit %.0f MB)\n", kPieces,
                piece.size(), residentMegabytes() - before, kMemoryLimit);
}

void measureSilence()
{
    Panel panel;
    const SilentPort silent;
    std::vector<double> times;
    for (int attempt = 0; attempt < kAttempts; ++attempt)
        times.push_back(measureMs(
            [&] { panel.link->Slot_connectToGateway(QStringLiteral("127.0.0.1"), silent.port()); }));
    panel.link->Slot_disconnectSocket();
    std::printf("attempt to connect where nobody answers: median %.1f ms, worst %.1f ms (limit %.0f ms)\n",
                medianMs(times), worstMs(times), kConnectLimitMs);
}

} // namespace

int main(int argc, char *argv[])
{
    return runWidgetBench(argc, argv, [] {
        measureStatus();
        measureFlood();
        measureMemory();
        measureSilence();
    });
}
