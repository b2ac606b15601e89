#pragma once

#include "giveup.h"
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
        require(m_server.listen(QHostAddress::LocalHost) &&
                    ::listen(static_cast<int>(m_server.socketDescriptor()), 0) == 0,
                "No silent port is to be had.");
        for (QTcpSocket &client : m_clients)
            client.connectToHost(QHostAddress(QHostAddress::LocalHost), m_server.serverPort());
        require(m_clients[0].waitForConnected(), "The queue of the silent port was not filled.");
        m_server.pauseAccepting();
    }

    quint16 port() const { return m_server.serverPort(); }

    /// How long a bare socket waits here if it waits as long as the product may.
    double bareAttemptMs() const
    {
        constexpr int kAgreedWaitMs = 50;
        QTcpSocket bare;
        const double ms = measureMs([&] {
            bare.connectToHost(QHostAddress(QHostAddress::LocalHost), port());
            bare.waitForConnected(kAgreedWaitMs);
        });
        require(isWaitedFor(ms), "The silent port answered.");
        return ms;
    }

    /// Whether an attempt of so many milliseconds had no answer.
    static bool isWaitedFor(double ms)
    {
        constexpr double kShortestMs = 45;
        return ms >= kShortestMs;
    }

private:
    QTcpServer m_server;
    QTcpSocket m_clients[2];
};
