#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <chrono>
#include <memory>

class TcpSock;
class Timer;
class TimeSource;

/// A TCP connection that comes back by itself: the gateway's control link. A connection that was up and drops
/// is tried again each retry period until that works or until it is left on purpose. The very first attempt
/// is not repeated if it fails.
class TcpComm : public QObject
{
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds kRetryPeriod{5000};

    /// Takes the socket over. `time` must outlive the object.
    TcpComm(TimeSource &time, std::unique_ptr<TcpSock> socket, QObject *parent = nullptr,
            std::chrono::milliseconds retryPeriod = kRetryPeriod);
    ~TcpComm() override;

    /// Those of the last connection that was asked for, up or not; empty before the first.
    QString address() const { return m_address; }
    QString port() const { return m_port; }

    /// Writes the bytes as they are; without a connection they are dropped without a word.
    void Write(const QByteArray &bytes);

public slots:
    /// Connects to this address in place of any other, and remembers it for the retries. The outcome is
    /// known, and told by TcpConnected() or TcpDisconnectd(), when this returns, after 50 ms at most.
    void Slot_connectToGateway(QString ipAddr, QString port);

    /// The connection is gone: starts the retries, unless they run already.
    void Slot_tmrStart();
    void Slot_RetryTcpConnection();

    /// Leaves the connection and ends the retries; emits nothing.
    void Slot_disconnectSocket();

signals:
    void TcpConnected();
    void TcpDisconnectd();                 ///< an attempt failed or the peer went away; name as agreed
    void messagePacket(QByteArray &bytes); ///< the bytes of each read while the connection is up

private:
    /// Whether an end of the connection, or a failed attempt, starts the retries: only once an attempt is
    /// behind us and until the connection is left on purpose.
    enum class Upkeep { Left, FirstAttempt, Kept };

    bool connectToStoredAddress();
    void handleDisconnect();
    void passOn(QByteArray &bytes);

    const std::chrono::milliseconds m_retryPeriod;
    std::unique_ptr<TcpSock> m_socket;
    Timer *m_retryTimer; ///< child
    Upkeep m_upkeep = Upkeep::Left;
    QString m_address;
    QString m_port;
};
