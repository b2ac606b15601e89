#include "link/tcpsock.h"

#include "link/communication_aux.h"
#include "link/keepalive.h"

#include <QDeadlineTimer>
#include <QPointer>
#include <QTcpSocket>
#include <utility>

namespace {

constexpr int kReceiveBufferSize = 1250172;

/// As much is left, once in an attempt, if a busy machine or a silent address has let the whole wait pass:
/// the connection may be there and only has to be looked at.
constexpr int kLastLookMs = 10;

} // namespace

TcpSock::TcpSock(TimeSource &time, QObject *parent, std::chrono::milliseconds connectTimeout,
                 HostLookup::Function lookUp)
    : QObject(parent)
    , m_connectTimeout(connectTimeout)
    , m_hosts(std::move(lookUp))
    , m_decoder(new Communication_Aux(time, this))
    , m_socket(makeSocket())
{
    connect(m_decoder, &Communication_Aux::Signal_RcvDatagramOk, this, &TcpSock::Slot_RcvDatagramOK);
}

TcpSock::~TcpSock() = default;

QTcpSocket *TcpSock::makeSocket()
{
    auto *socket = new QTcpSocket(this);
    connect(socket, &QTcpSocket::readyRead, this, &TcpSock::readData);
    connect(socket, &QTcpSocket::disconnected, this, &TcpSock::handleDisconnect);
    connect(socket, &QTcpSocket::stateChanged, this, &TcpSock::Slot_CommStatus);
    return socket;
}

bool TcpSock::IsConnected() const
{
    return m_connected;
}

bool TcpSock::connectToServer(QString ipAddr, QString port)
{
    qDebug() << "Connect Received";
    leaveConnection();
    replaceSocket();
    if (!reach(ipAddr, port.toUShort())) {
        emit TcpDisconnectd();
        return false;
    }
    // A socket takes this option only while it is connected.
    m_socket->setSocketOption(QAbstractSocket::ReceiveBufferSizeSocketOption, kReceiveBufferSize);
    emit TcpConnected();
    // A receiver may have left the connection again.
    m_connected = m_socket->state() == QAbstractSocket::ConnectedState;
    return m_connected;
}

/// A receiver may connect anew while the old socket still tells of its end. That socket clears what it knows
/// of its connection only after it has told, and would clear what belongs to a new one as well.
void TcpSock::replaceSocket()
{
    m_socket->disconnect(this);
    m_socket->abort(); // unsent bytes would keep the old connection
    m_socket->deleteLater();
    m_socket = makeSocket();
}

/// A short blocking wait on purpose: a device that takes longer counts as failed. The look-up of a name is
/// part of the wait.
bool TcpSock::reach(const QString &host, quint16 port)
{
    QDeadlineTimer deadline(m_connectTimeout, Qt::PreciseTimer);
    bool isLastLook = false;
    const auto addresses = m_hosts.addressesWithin(m_connectTimeout, host);
    for (const QHostAddress &address : addresses) {
        if (!isLastLook && deadline.remainingTime() < kLastLookMs) {
            isLastLook = true;
            deadline.setRemainingTime(kLastLookMs, Qt::PreciseTimer);
        }
        if (deadline.hasExpired())
            break;
        m_socket->connectToHost(address, port, QIODevice::ReadWrite);
        // Connecting may have used up the time. A wait of 0 ms would not look at all.
        if (m_socket->waitForConnected(qMax(kLastLookMs, int(deadline.remainingTime()))))
            return true;
        m_socket->abort();
    }
    return false;
}

void TcpSock::disconnectSocket()
{
    leaveConnection();
}

void TcpSock::leaveConnection()
{
    m_connected = false;
    m_decoder->abandonRead();
    m_socket->disconnectFromHost();
}

void TcpSock::Write(const QByteArray &frame)
{
    if (!m_socket->isWritable() || m_socket->state() != QAbstractSocket::ConnectedState)
        return;
    m_socket->write(frame);
    emit dataWritten();
}

void TcpSock::readData()
{
    const QPointer<QTcpSocket> source = m_socket;
    const QByteArray bytes = m_socket->readAll();
    QByteArray message = bytes;
    emit messagePacket(message);
    if (m_connected && source == m_socket) // a receiver may have left or connected anew
        m_decoder->takeRead(bytes);
}

void TcpSock::handleDisconnect()
{
    if (!m_connected)
        return;
    emit TcpDisconnectd();
    m_connected = m_socket->state() == QAbstractSocket::ConnectedState;
}

void TcpSock::Slot_RcvDatagramOK(QByteArray &frame)
{
    emit Signal_RcvSerialDatagram(Comm_Type::Ethernet, frame);
}

void TcpSock::Slot_CommStatus(QAbstractSocket::SocketState state)
{
    if (state != QAbstractSocket::ConnectedState)
        return;
    qDebug() << "Connected State";
    enableKeepAlive(m_socket->socketDescriptor());
}
