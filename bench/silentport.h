#pragma once

#include "measuring.h"

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

    /// How long a bare socket waits here if it waits as long as the product may.
    double bareAttemptMs() const
    {
        constexpr int kAgreedWaitMs = 50;
        QTcpSocket bare;
        return measureMs([&] {
            bare.connectToHost(QHostAddress(QHostAddress::LocalHost), port());
            bare.waitForConnected(kAgreedWaitMs);
        });
    }

private:
    QTcpServer m_server;
    QTcpSocket m_clients[2];
};
