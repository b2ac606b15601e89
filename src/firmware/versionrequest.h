#pragma once

#include "firmware/versionserver.h"

#include <QHostAddress>
#include <QList>
#include <QObject>
#include <QString>

class HostLookup;
class QNetworkAccessManager;
class QNetworkReply;
class Timer;
class TimeSource;

/// One request for a file of the web server: finds the server's address, sends the request there and gives up
/// a server that is silent for too long or sends too much. Waits for nothing; ends silently if it is
/// destroyed.
class VersionRequest : public QObject
{
    Q_OBJECT

public:
    /// A file of more bytes is not read.
    static constexpr qint64 kMaximumSize = qint64(1024) * 1024;

    /// The time source, the look-up and the network access, to which the replies belong, must outlive the
    /// object.
    VersionRequest(TimeSource &time, HostLookup &hosts, QNetworkAccessManager &network,
                   const VersionServer &server, const VersionPeriods &periods, QObject *parent);

    /// Once in the life of the object, which deletes itself after one of its signals.
    void send(const QString &path);

signals:
    /// The server's answer is complete or has failed. The receiver deletes the reply (with `deleteLater()`).
    void finished(QNetworkReply *reply);

    /// No request could be sent. `error` is text for the log.
    void failed(QString error);

private:
    void lookForAddress();
    void sendToNextAddress();
    void followReply(QNetworkReply *reply);
    void handleData();
    void handleFinished();
    void handleSilence();
    void fail(const QString &error);

    HostLookup &m_hosts;
    QNetworkAccessManager &m_network;
    const VersionServer m_server;
    const VersionPeriods m_periods;
    Timer *m_lookUpTimer; // child
    Timer *m_limitTimer;  // child
    QString m_path;
    QList<QHostAddress> m_addresses; ///< those that have not been tried
    QNetworkReply *m_reply = nullptr;
};
