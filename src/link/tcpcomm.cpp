#include "link/tcpcomm.h"

#include "base/timesource.h"
#include "link/tcpsock.h"

#include <QDebug>
#include <utility>

TcpComm::TcpComm(TimeSource &time, std::unique_ptr<TcpSock> socket, QObject *parent,
                 std::chrono::milliseconds retryPeriod)
    : QObject(parent)
    , m_retryPeriod(retryPeriod)
    , m_socket(std::move(socket))
    , m_retryTimer(time.createTimer(this))
{
    connect(m_socket.get(), &TcpSock::TcpConnected, this, &TcpComm::TcpConnected);
    connect(m_socket.get(), &TcpSock::TcpDisconnectd, this, &TcpComm::handleDisconnect);
    connect(m_socket.get(), &TcpSock::messagePacket, this, &TcpComm::passOn);
    connect(m_retryTimer, &Timer::timeout, this, &TcpComm::Slot_RetryTcpConnection);
}

TcpComm::~TcpComm()
{
    m_socket->disconnect(this); // it may tell of its end while it dies
}

void TcpComm::Write(const QByteArray &bytes)
{
    m_socket->Write(bytes);
}

void TcpComm::Slot_connectToGateway(QString ipAddr, QString port)
{
    m_address = ipAddr;
    m_port = port;
    if (m_upkeep == Upkeep::Left)
        m_upkeep = Upkeep::FirstAttempt;
    connectToStoredAddress();
    if (m_upkeep == Upkeep::FirstAttempt) // a receiver may have left
        m_upkeep = Upkeep::Kept;
}

bool TcpComm::connectToStoredAddress()
{
    if (!m_socket->connectToServer(m_address, m_port))
        return false;
    m_retryTimer->stop(); // one more retry would cut the fresh link
    return true;
}

void TcpComm::Slot_tmrStart()
{
    qDebug() << "Entered the restart timer";
    if (m_retryTimer->isActive())
        return;
    qDebug() << "******************Starting retry timer";
    m_retryTimer->start(m_retryPeriod);
}

void TcpComm::Slot_RetryTcpConnection()
{
    qDebug() << "***********Timer still running";
    if (!connectToStoredAddress())
        return;
    qDebug() << "******************Connected";
    m_upkeep = Upkeep::Kept;
}

void TcpComm::Slot_disconnectSocket()
{
    m_upkeep = Upkeep::Left;
    m_retryTimer->stop();
    m_socket->disconnectSocket();
}

void TcpComm::handleDisconnect()
{
    // Before the receivers hear of it: one of them may leave or connect again, which ends the retries.
    if (m_upkeep == Upkeep::Kept)
        Slot_tmrStart();
    emit TcpDisconnectd();
}

void TcpComm::passOn(QByteArray &bytes)
{
    if (m_socket->IsConnected()) // bytes of a connection that was left may still come in
        emit messagePacket(bytes);
}
