#pragma once

#include "sim/link.h"

#include <QTcpServer>

namespace sim {

/// Takes any number of TCP clients on the loopback interface; none replaces another.
class TcpLink : public Link
{
    Q_OBJECT

public:
    /// What waits for a peer that does not read, at most; what comes then is lost.
    static constexpr int kMaximumUnsent = 1 << 20;

    explicit TcpLink(QObject *parent = nullptr);

    /// Port 0 takes any free one. False with the reason if the port cannot be had.
    [[nodiscard]] bool open(quint16 port, QString *error);
    /// The port in use, 0 before `open`.
    quint16 port() const { return m_server.serverPort(); }

private:
    void takeClients();

    QTcpServer m_server;
    int m_clientCount = 0;
};

} // namespace sim
