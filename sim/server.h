#pragma once

#include "sim/device.h"
#include "sim/faults.h"
#include "sim/framelog.h"

#include <QDateTime>
#include <QHash>
#include <QObject>

#include <memory>
#include <vector>

class TimeSource;

namespace sim {

class Connection;
class Link;
class Session;
class TcpLink;
struct Reception;

/// A simulated device with links, faults, pace and log. For a test of the program:
///
///     sim::Server device(time, chain);
///     QString error;
///     QVERIFY2(device.listen(0, &error), qPrintable(error));
///     ... connect the program to 127.0.0.1 and device.tcpPort() ...
///     QTRY_COMPARE(device.requestCount(0x12), 3);
///     QCOMPARE(device.chain().module(1).channel(0).gainIndex, 2);
///
/// All links meet the same chain. A frame's consistency counter runs per link, from 1, over reconnections.
class Server : public QObject
{
    Q_OBJECT

public:
    static constexpr quint32 kDefaultSeed = 1;

    Server(TimeSource &time, const Chain &chain, quint32 seed = kDefaultSeed, QObject *parent = nullptr);
    ~Server() override;

    Device &device() { return m_device; }
    Chain &chain() { return m_device.chain(); }
    FaultScript &faults() { return m_faults; }
    FrameLog &log() { return m_log; }

    /// Bytes per second in each direction, 0 for no limit; for connections made from now on.
    void setPace(int bytesPerSecond) { m_bytesPerSecond = bytesPerSecond; }

    /// Listens on the loopback interface; port 0 takes any free one.
    [[nodiscard]] bool listen(quint16 port, QString *error);
    /// The port of the last successful `listen`, 0 without one.
    quint16 tcpPort() const;
    /// Makes a pseudo terminal that is found under `name`, which is removed with this object.
    [[nodiscard]] bool openTerminal(const QString &name, QString *error);
    /// Any other link.
    void addLink(std::unique_ptr<Link> link);

    /// Requests in right frames, by payload code or all; refused payloads count, silenced ones too.
    int requestCount(int code) const { return m_counts.value(code); }
    int requestCount() const;
    /// Their payloads, the latest last; no more than kRememberedPayloads.
    const QList<QByteArray> &receivedPayloads() const { return m_payloads; }
    /// Why frames or payloads were refused, the latest last; no more than kRememberedRefusals.
    const QStringList &refusals() const { return m_refusals; }
    /// Right frames whose consistency counter was not that of the frame before on the same connection, plus
    /// one.
    int counterJumps() const { return m_counterJumps; }
    void clearCounters();

    /// Simulated time since the construction.
    Milliseconds elapsed() const;

    static constexpr int kRememberedPayloads = 10000;
    static constexpr int kRememberedRefusals = 1000;

signals:
    /// Emitted for each request in a right frame, before it is carried out.
    void requestReceived(const QByteArray &payload);
    /// Emitted for each reply that is handed to the line, lost ones included.
    void replied(const QByteArray &payload);
    void refused(const QString &reason);

private:
    void takeConnection(Link *link, Connection *connection);
    void takeReception(Link *link, Session *session, const Reception &reception);
    void checkCounter(Session *session, const Reception &reception);
    void carryOut(Link *link, Session *session, const Reception &reception);
    void sendReply(Link *link, Session *session, const QByteArray &payload, qint64 startNs,
                   const FaultPlan &plan);
    void sendFrame(Session *session, const QByteArray &payload, const QByteArray &frame, qint64 startNs,
                   const Cut &cut);
    /// The flag of a reset did not reach the program: the next reply carries it again.
    void keepResetFlag();
    void refuse(const QString &reason);
    qint64 nowNs() const;

    TimeSource &m_time;
    const QDateTime m_start;
    Device m_device;
    FaultScript m_faults;
    FrameLog m_log;
    int m_bytesPerSecond = 0;
    QHash<int, int> m_counts;
    QHash<Link *, quint8> m_counters;
    QHash<Session *, quint8> m_expectedCounters;
    int m_counterJumps = 0;
    Session *m_flagCarrier = nullptr; ///< whose reply with the reset flag is not out yet
    QList<QByteArray> m_payloads;
    QStringList m_refusals;
    TcpLink *m_tcp = nullptr;
    std::vector<std::unique_ptr<Link>> m_links;
};

} // namespace sim
