#pragma once

#include "sim/framelog.h"
#include "sim/gateway.h"
#include "sim/gatewayfaults.h"

#include <QDateTime>
#include <QObject>
#include <QPointer>
#include <QVector>

#include <functional>

class Timer;
class TimeSource;

namespace sim {

class Connection;
class GatewaySession;
class Link;
class TcpLink;
struct Dispatch;

/// A simulated gateway on a TCP port of its own, with faults and log. For a test of the program:
///
///     sim::GatewayServer gateway(time);
///     QString error;
///     QVERIFY2(gateway.listen(0, &error), qPrintable(error));
///     ... connect the program to 127.0.0.1 and gateway.port() ...
///     QTRY_COMPARE(gateway.lineCount("#009_UDP-M"), 1);
///     QCOMPARE(gateway.state().mode, QString("UDP-M"));
///
/// All clients meet the same gateway. A new address takes effect at once if it is one of the loopback
/// interface: the gateway listens there, with the same port, and ends the old connections a little later. At
/// any other address nobody can reach it.
class GatewayServer : public QObject
{
    Q_OBJECT

public:
    /// How long connections to a left address last.
    static constexpr Milliseconds kLeaving{200};
    /// After this a port that could not be had is tried again.
    static constexpr Milliseconds kTryAgain{500};
    static constexpr int kRememberedLines = 10000;

    explicit GatewayServer(TimeSource &time, const GatewayState &description = {}, quint32 seed = 1,
                           QObject *parent = nullptr);
    ~GatewayServer() override;

    Gateway &gateway() { return m_gateway; }
    GatewayState &state() { return m_gateway.state(); }
    GatewayFaults &faults() { return m_faults; }
    FrameLog &log() { return m_log; }

    /// Where the present data rate of the chain comes from; without it there is no chain.
    void setChainRate(std::function<DataRate()> rate) { m_chainRate = std::move(rate); }

    /// Listens at the address of the state; port 0 takes any free one.
    [[nodiscard]] bool listen(quint16 port, QString *error);
    /// The port of the last successful `listen`, also while nobody can connect; 0 without one.
    quint16 port() const { return m_port; }
    bool isListening() const;
    /// Another way in.
    void addLink(Link *link);

    /// Ends all connections; nobody can connect for so long.
    void goAway(Milliseconds absence);

    /// The lines that came, silenced ones too, the latest last.
    const QList<QByteArray> &receivedLines() const { return m_lines; }
    int lineCount(const QByteArray &line) const { return m_lines.count(line); }
    void clearLines() { m_lines.clear(); }
    /// Why lines were not taken at all, the latest last.
    const QStringList &refusals() const { return m_refusals; }
    int connectionCount() const { return m_sessions.size(); }

signals:
    /// Emitted for each line, before it is carried out.
    void lineReceived(const QByteArray &line);

private:
    void takeConnection(Connection *connection);
    void refuse(const GatewaySession *session, const QString &reason);
    void greet(GatewaySession *session);
    void takeLine(GatewaySession *session, const QByteArray &line);
    void answer(GatewaySession *session, const QByteArray &text, const GatewayPlan &plan);
    void transmit(GatewaySession *session, const QByteArray &text, const Dispatch &how, bool lose);
    void follow(GatewayAnswer::Then then);
    void move();
    void leave();
    void stopListening(Milliseconds absence);
    void comeBack();
    std::optional<DataRate> chainRate() const;
    void note(const GatewaySession *session, const QString &text) const;
    Milliseconds elapsed() const;

    TimeSource &m_time;
    const QDateTime m_start;
    Gateway m_gateway;
    GatewayFaults m_faults;
    FrameLog m_log;
    std::function<DataRate()> m_chainRate;
    TcpLink *m_tcp; ///< child
    quint16 m_port = 0;
    Timer *m_comeBack;
    Timer *m_leave;
    QVector<GatewaySession *> m_sessions;
    QVector<QPointer<GatewaySession>> m_leaving; ///< connected to the left address
    QList<QByteArray> m_lines;
    QStringList m_refusals;
};

} // namespace sim
