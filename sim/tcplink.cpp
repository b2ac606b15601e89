#include "sim/tcplink.h"

#include "sim/connection.h"
#include "sim/tcpreset.h"

#include <QTcpSocket>

namespace sim {

namespace {

class TcpConnection final : public Connection
{
public:
    TcpConnection(const QString &name, QTcpSocket *socket, QObject *parent)
        : Connection(name, parent)
        , m_socket(socket)
    {
        socket->setParent(this);
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        connect(socket, &QTcpSocket::readyRead, this, [this] { emit received(m_socket->readAll()); });
        connect(socket, &QTcpSocket::bytesWritten, this, &Connection::drained);
        connect(socket, &QTcpSocket::disconnected, this, [this] {
            emit closed();
            deleteLater();
        });
    }

    void send(const QByteArray &bytes) override
    {
        if (m_socket->state() != QAbstractSocket::ConnectedState || bytes.size() > room()) {
            emit lost(bytes.size());
            return;
        }
        m_socket->write(bytes);
        m_socket->flush();
    }

    int room() const override { return TcpLink::kMaximumUnsent - static_cast<int>(m_socket->bytesToWrite()); }

    void close(Milliseconds absence) override
    {
        Q_UNUSED(absence)
        // A peer that does not read would hold an orderly end up for ever.
        if (m_socket->bytesToWrite() > 0)
            m_socket->abort();
        else
            m_socket->disconnectFromHost();
    }

    void reset(Milliseconds absence) override
    {
        Q_UNUSED(absence)
        resetWhenClosed(m_socket->socketDescriptor());
        m_socket->abort();
    }

private:
    QTcpSocket *m_socket;
};

} // namespace

TcpLink::TcpLink(QObject *parent, const QString &name)
    : Link(parent)
    , m_name(name)
{
    connect(&m_server, &QTcpServer::newConnection, this, &TcpLink::takeClients);
}

bool TcpLink::open(quint16 port, QString *error, const QHostAddress &address)
{
    if (m_server.listen(address, port))
        return true;
    *error = QStringLiteral("TCP port %1: %2").arg(port).arg(m_server.errorString());
    return false;
}

void TcpLink::takeClients()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        const QString name = QStringLiteral("%1:%2").arg(m_name).arg(++m_clientCount);
        auto *connection = new TcpConnection(name, socket, this);
        emit connected(connection);
        if (socket->bytesAvailable() > 0)
            emit connection->received(socket->readAll());
        // The client may be gone already, before anybody listened.
        if (socket->state() == QAbstractSocket::UnconnectedState) {
            emit connection->closed();
            connection->deleteLater();
        }
    }
}

} // namespace sim
