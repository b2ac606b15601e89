#pragma once

#include "link/tcpsock.h"
#include "ownloopback.h"
#include "support/messagecatcher.h"
#include "support/virtualtime.h"

#include <QByteArrayList>
#include <QObject>
#include <QSignalSpy>
#include <QTcpServer>
#include <memory>

class QTcpSocket;

/// Base of the tests of the TCP link: each test has a device that listens on the loopback.
class TcpSockTest : public QObject
{
    Q_OBJECT

protected slots:
    void init();
    void cleanup();

protected:
    static QString loopback() { return ownLoopback().toString(); }

    /// A link with a wait for the connection that no load of the machine uses up.
    std::unique_ptr<TcpSock> patientSock(HostLookup::Function lookUp = &QHostInfo::fromName);

    /// Connects to the device and takes the device's end of it.
    bool connectSocket();

    /// The device sends these bytes; true when all of them have been read.
    bool deliver(const QByteArray &bytes);

    QString port() const { return QString::number(m_server->serverPort()); }
    QTcpSocket *socket() const; ///< of the link, for its last attempt

    std::unique_ptr<QTcpServer> m_server;
    QTcpSocket *m_peer = nullptr; ///< the device's end of the last connection; belongs to the server
    VirtualTime m_time;
    std::unique_ptr<TcpSock> m_sock;
    std::unique_ptr<QSignalSpy> m_connects;
    std::unique_ptr<QSignalSpy> m_disconnects;
    std::unique_ptr<QSignalSpy> m_written;
    QByteArray m_bytes; ///< what messagePacket carried
    QByteArrayList m_frames;
    std::unique_ptr<MessageCatcher> m_log;
};
