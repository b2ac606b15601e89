// What the gateway's panel costs the window: a status line each second, a peer that floods it with bytes
// without an end, and an address where nobody answers. The peer is a real socket in a thread of its own.

#include "base/timesource.h"
#include "gateway/dialogueview.h"
#include "gateway/gatewayzrt.h"
#include "giveup.h"
#include "link/tcpsock.h"
#include "loopgap.h"
#include "measuring.h"
#include "number.h"
#include "silentport.h"
#include "ui_gatewayzrt.h"
#include "widgetbench.h"

#include <QFile>
#include <QThread>
#include <functional>
#include <malloc.h>
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
        require(m_server.waitForNewConnection(kPatienceMs), "Nobody takes the flood.");
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

struct Panel
{
    Panel()
        : link(new TcpComm(time, std::make_unique<TcpSock>(time)))
        , window(time, std::unique_ptr<TcpComm>(link))
    {
        window.show();
        QCoreApplication::processEvents();
    }

    /// Ends the benchmark unless bytes of the flood stand in the dialogue.
    void requireFlooded() const
    {
        require(window.findChild<DialogueView *>()->toPlainText().contains(QStringLiteral("xxx")),
                "The panel does not show what it is sent.");
    }

    SystemTime time;
    TcpComm *link;
    GatewayZRT window;
};

/// The changes of a status line in the form of the panel, in plain controls.
std::vector<double> bareFormTimes()
{
    QDialog window;
    Ui::GatewayZRT form;
    form.setupUi(&window);
    window.show();
    QCoreApplication::processEvents();
    const QList<QLineEdit *> texts{
        form.GtwVersion,  form.SerialNo,  form.unixEpochField, form.CoreTempBox,
        form.PCBTempBox,  form.extIpAddr, form.extPort,        form.PTPStateLineEdit,
        form.accuracyPTP, form.minBox,    form.maxBox};
    const QList<QComboBox *> lists{form.comboSimultn, form.comboMode, form.comboActivCOM, form.comboPTP,
                                   form.comboBoxDataPtcl};
    std::vector<double> times;
    for (int round = 0; round < kRounds; ++round) {
        const QString text = QString::number(1000 + round);
        const bool isOdd = round % 2 != 0;
        times.push_back(measureMs([&] {
            for (QLineEdit *field : texts)
                field->setText(text);
            for (QComboBox *list : lists)
                list->setCurrentIndex(round % 2);
            (isOdd ? form.radioBigEndn : form.radioLitleEndn)->setChecked(true);
            (isOdd ? form.radio16Bit : form.radio18Bit)->setChecked(true);
            (isOdd ? form.unsignedInt : form.twoComp)->setChecked(true);
        }));
        QCoreApplication::processEvents();
    }
    return times;
}

void measureStatus()
{
    const double bareMs = medianMs(bareFormTimes());
    Panel panel;
    std::vector<double> times;
    for (int round = 0; round < kRounds; ++round) {
        QByteArray line = statusLine(round);
        times.push_back(measureMs([&] { panel.window.parseData(line); }));
        const auto *port = panel.window.findChild<QLineEdit *>(QStringLiteral("extPort"));
        require(port->text() == QString::number(1000 + round), "The panel does not show its status.");
        QCoreApplication::processEvents();
    }
    Number("status line of the gateway, all fields", medianMs(times), "ms")
        .worst(worstMs(times))
        .atMost(kStatusLimitMs)
        .beside("the same in the bare form", bareMs)
        .report();
}

/// The longest gap in the event loop until all bytes of the flood were read. `receive` connects to the port;
/// `bytesRead` counts what came.
Gap longestGapInFlood(const qint64 &bytesRead, const std::function<void(quint16)> &receive)
{
    QTcpServer server;
    require(server.listen(QHostAddress::LocalHost), "No port is to be had.");
    const quint16 port = server.serverPort();
    Flood flood(server);
    flood.start();
    QElapsedTimer clock;
    clock.start();
    LoopGap gap;
    gap.start();
    receive(port);
    while (bytesRead < kFloodBytes) {
        require(clock.elapsed() < kPatienceMs, "The flood was not read in time.");
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return gap.longest();
}

void measureFlood()
{
    qint64 bareBytes = 0;
    QTcpSocket bare;
    QObject::connect(&bare, &QTcpSocket::readyRead, &bare, [&] { bareBytes += bare.readAll().size(); });
    const Gap bareGap = longestGapInFlood(bareBytes, [&bare](quint16 port) {
        bare.connectToHost(QHostAddress(QHostAddress::LocalHost), port);
    });
    qint64 bytes = 0;
    Panel panel;
    QObject::connect(panel.link, &TcpComm::messagePacket, &panel.window,
                     [&bytes](const QByteArray &packet) { bytes += packet.size(); });
    const Gap gap = longestGapInFlood(bytes, [&panel](quint16 port) {
        panel.link->Slot_connectToGateway(QStringLiteral("127.0.0.1"), QString::number(port));
    });
    panel.requireFlooded();
    Number("longest gap, gateway sends " + std::to_string(kFloodBytes >> 20) + " MB without an end", gap.ms,
           "ms")
        .worst(gap.byTheClockMs)
        .atMost(kGapLimitMs)
        .beside("bare socket", bareGap.ms)
        .report();
}

double residentMegabytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    require(file.open(QIODevice::ReadOnly), "The memory of this program cannot be read.");
    return file.readAll().split(' ').value(1).toDouble() * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

void measureMemory()
{
    Panel panel;
    QByteArray piece(1 << 16, 'x');
    malloc_trim(0); // what earlier measurements have left is not given back meanwhile
    const double before = residentMegabytes();
    for (int round = 0; round < kPieces; ++round) {
        panel.window.parseData(piece);
        QCoreApplication::processEvents();
    }
    const double grown = std::max(0.0, residentMegabytes() - before);
    panel.requireFlooded();
    Number("memory of " + std::to_string(kPieces) + " pieces of " + std::to_string(piece.size()) +
               " bytes of the gateway",
           grown, "MB")
        .atMost(kMemoryLimit)
        .report();
}

void measureSilence()
{
    Panel panel;
    const SilentPort silent;
    const QString port = QString::number(silent.port());
    std::vector<double> times;
    std::vector<double> bareTimes;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        bareTimes.push_back(silent.bareAttemptMs());
        times.push_back(
            measureMs([&] { panel.link->Slot_connectToGateway(QStringLiteral("127.0.0.1"), port); }));
        require(SilentPort::isWaitedFor(times.back()), "The attempt to connect was not waited for.");
    }
    panel.link->Slot_disconnectSocket();
    Number("attempt to connect where nobody answers", medianMs(times), "ms")
        .worst(worstMs(times))
        .worstAtMost(kConnectLimitMs)
        .beside("bare socket, 50 ms", medianMs(bareTimes))
        .report();
}

} // namespace

int main(int argc, char *argv[])
{
    return runWidgetBench(argc, argv, [] {
        measureStatus();
        measureMemory(); // while this program has asked for little so far
        measureFlood();
        measureSilence();
    });
}
