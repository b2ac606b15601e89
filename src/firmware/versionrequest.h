#pragma once

#include "firmware/versionserver.h"

#include <QHostAddress>
#include <QList>
#include <QObject>
#include <QString>

class HostLookup;
class QNetworkReply;
class Timer;
class TimeSource;
class WebAccess;

/// One request for a file of the web server: finds the server's addresses, sends the request to the first of
/// them at which somebody is, and gives up a server that is silent or busy for too long or sends too much.
/// Waits for nothing; ends silently if it is destroyed.
class VersionRequest : public QObject
{
    Q_OBJECT

public:
    /// A file of more bytes is not read.
    static constexpr qint64 kMaximumSize = qint64(1024) * 1024;

    /// The time source, the look-up and the web access, to which the replies belong, must outlive the object.
    /// The access must serve no other request until this one has ended.
    VersionRequest(TimeSource &time, HostLookup &hosts, WebAccess &web, const VersionServer &server,
                   const VersionPeriods &periods, QObject *parent);
    ~VersionRequest() override;

    /// Once in the life of the object, which deletes itself after one of its signals.
    void send(const QString &path);

    /// Ends without a signal, and leaves the access without a connection that may hang. Does nothing more
    /// after the end.
    void drop();

signals:
    /// The server's answer is complete or has failed. The receiver deletes the reply (with `deleteLater()`),
    /// and does not keep it longer.
    void finished(QNetworkReply *reply);

    /// No request could be sent. `error` is text for the log.
    void failed(QString error);

private:
    Timer *createLimit(TimeSource &time, void (VersionRequest::*handler)());
    void lookForAddress();
    void sendToNextAddress();
    void followReply(QNetworkReply *reply);
    void handleEncryption();
    void handleHead();
    void handleData();
    void handleFinished();
    void handleUnreached();
    void handleMissingHead();
    void handleSilence();
    void handleSlowness();
    void stopTimers();
    void abortReply();
    void leaveReply();
    void giveUp();
    void end();
    void fail(const QString &error);

    HostLookup &m_hosts;
    WebAccess &m_web;
    const VersionServer m_server;
    const VersionPeriods m_periods;
    Timer *m_lookUpTimer;  // child
    Timer *m_addressTimer; // child; runs as long as the next address may be tried
    Timer *m_headTimer;    // child
    Timer *m_silenceTimer; // child
    Timer *m_wholeTimer;   // child
    QString m_path;
    QList<QHostAddress> m_addresses;  ///< those that have not been tried
    QNetworkReply *m_reply = nullptr; ///< the one under way
};
