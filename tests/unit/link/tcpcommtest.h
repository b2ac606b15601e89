#pragma once

#include "link/tcpcomm.h"
#include "support/fakelinks.h"
#include "support/messagecatcher.h"
#include "support/virtualtime.h"

#include <QSignalSpy>
#include <memory>

/// Base of the tests of the gateway's link: each has a new one with a scripted socket, in time that stands
/// still.
class TcpCommTest : public QObject
{
    Q_OBJECT

protected slots:
    void init();
    void cleanup();

protected:
    // Lines of the log.
    const QString kEntered = QStringLiteral("Entered the restart timer");
    const QString kStarting = QStringLiteral("******************Starting retry timer");
    const QString kRunning = QStringLiteral("***********Timer still running");
    const QString kConnected = QStringLiteral("******************Connected");
    static constexpr int kLong = 60000; ///< ms, twelve periods

    void makeLink(std::chrono::milliseconds period = TcpComm::kRetryPeriod);
    void connectTo(const char *address = "192.168.0.234", const char *port = "9999");
    void receive(QByteArray bytes) { emit m_sock->messagePacket(bytes); }
    int attempts() const { return m_sock->calls.count(QStringLiteral("connect")); }
    int connects() const { return m_connects->count(); }
    int disconnects() const { return m_disconnects->count(); }

    /// Calls the function at the next emission of the link's signal, and at no other.
    template <typename Signal, typename Function>
    void atNext(Signal signal, Function function)
    {
        auto connection = std::make_shared<QMetaObject::Connection>();
        *connection = connect(m_link.get(), signal, this, [connection, function] {
            QObject::disconnect(*connection);
            function();
        });
    }

    std::unique_ptr<VirtualTime> m_time;
    std::unique_ptr<MessageCatcher> m_log;
    FakeTcpSock *m_sock = nullptr; ///< of the link
    std::unique_ptr<TcpComm> m_link;
    std::unique_ptr<QSignalSpy> m_connects;
    std::unique_ptr<QSignalSpy> m_disconnects;
    QByteArrayList m_bytes; ///< what messagePacket carried
};
