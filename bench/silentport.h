#pragma once

#include <QTcpServer>
#include <QTcpSocket>
#include <sys/socket.h>

/// A port of this machine that is open and never answers: its queue of one connection is full.
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

    quint16 port() const { return m_server.serverPort(); }

private:
    QTcpServer m_server;
    QTcpSocket m_clients[2];
};
