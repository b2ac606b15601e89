#pragma once

#include "sim/link.h"

#include <QHostAddress>
#include <QTcpServer>

namespace sim {

/// Takes any number of TCP clients on the loopback interface; none replaces another.
class TcpLink : public Link
{
    Q_OBJECT

public:
    /// What waits for a peer that does not read, at most; what comes then is lost.
    static constexpr int kMaximumUnsent = 1 << 20;

    /// Connections are named "<name>:1" and so on.
    explicit TcpLink(QObject *parent = nullptr, const QString &name = QStringLiteral("tcp"));

    /// Listens at an address of the loopback interface. Port 0 takes any free one. False with the reason if
    /// the port cannot be had.
    [[nodiscard]] bool open(quint16 port, QString *error,
                            const QHostAddress &address = QHostAddress(QHostAddress::LocalHost));
    /// Nobody can connect any more; the connections that are there stay.
    void close() { m_server.close(); }
    bool isOpen() const { return m_server.isListening(); }
    /// The port in use, 0 while it does not listen.
    quint16 port() const { return m_server.serverPort(); }

private:
    void takeClients();

    const QString m_name;
    QTcpServer m_server;
    int m_clientCount = 0;
};

} // namespace sim
