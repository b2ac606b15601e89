#pragma once

#include "link/hostlookup.h"
#include "link/settings.h"

#include <QAbstractSocket>
#include <QByteArray>
#include <QObject>
#include <chrono>

class Communication_Aux;
class QTcpSocket;
class TimeSource;

/// Carries frames over TCP, and raw bytes for the gateway's text dialogue. Owns the socket and a decoder.
/// The operations that the session uses are virtual so that tests can put a scripted link in its place.
class TcpSock : public QObject
{
    Q_OBJECT

public:
    /// `connectTimeout` is the longest wait for a connection, `lookUp` finds the addresses of a host name.
    /// `time` must outlive the object.
    explicit TcpSock(TimeSource &time, QObject *parent = nullptr,
                     std::chrono::milliseconds connectTimeout = std::chrono::milliseconds(50),
                     HostLookup::Function lookUp = &QHostInfo::fromName);
    ~TcpSock() override;

    /// True from a successful connectToServer() until the connection is left or its loss was told: false
    /// within TcpConnected(), true within the TcpDisconnectd() of a peer that went away.
    virtual bool IsConnected() const;

    /// Hands bytes to the socket, which sends what the peer does not take at once later, and emits
    /// dataWritten(). Does nothing on a socket that is not connected.
    virtual void Write(const QByteArray &frame);

public slots:
    /// Leaves any other connection. `port` is a decimal text; one that is no number of a port fails. Waits no
    /// longer than the connect time-out, the look-up of a host name included, and 10 ms more at most for the
    /// addresses whose turn comes when it is over, all together; a machine that holds the program up while a
    /// socket is made adds as much again. True and TcpConnected() on success; otherwise the attempt is
    /// aborted, TcpDisconnectd() is emitted and the result is false.
    virtual bool connectToServer(QString ipAddr, QString port);

    /// Leaves the connection; emits nothing.
    virtual void disconnectSocket();

    // What the socket and the decoder told.
    void readData();
    void handleDisconnect();
    void Slot_RcvDatagramOK(QByteArray &frame);
    void Slot_CommStatus(QAbstractSocket::SocketState state);

signals:
    void TcpDisconnectd();                 ///< the connect failed or the peer went away; name as agreed
    void TcpConnected();                   ///< a connect worked; a receiver may leave the connection again
    void dataWritten();                    ///< after each Write() that found a connection
    void packetRecvd(QString text);        ///< agreed name; nothing emits it
    void messagePacket(QByteArray &bytes); ///< the bytes of each read as they came

    /// A valid frame came in; the kind is always Ethernet.
    void Signal_RcvSerialDatagram(Comm_Type commType, QByteArray &frame);

private:
    QTcpSocket *makeSocket();
    void leaveConnection();
    void replaceSocket();
    bool reach(const QString &host, quint16 port);

    const std::chrono::milliseconds m_connectTimeout;
    HostLookup m_hosts;
    Communication_Aux *m_decoder; ///< child
    QTcpSocket *m_socket;         ///< child; a new one for each attempt to connect
    bool m_connected = false;
};
