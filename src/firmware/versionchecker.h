#pragma once

#include "firmware/versionserver.h"
#include "firmware/webaccess.h"
#include "link/hostlookup.h"

#include <QObject>
#include <QPointer>
#include <QString>

class QNetworkReply;
class Timer;
class TimeSource;
class VersionRequest;

/// Asks the web server for the current versions of the configurator and of the firmware after each start of a
/// session. Downloads nothing else. A failed contact ends the sequence without a retry. Of two requests for
/// the same file that meet, the older one is dropped without a word.
class VersionChecker : public QObject
{
    Q_OBJECT

public:
    /// `time` must outlive the object. `lookUp` finds the server's address, on a thread of its own.
    VersionChecker(TimeSource &time, const VersionServer &server, const VersionPeriods &periods = {},
                   QObject *parent = nullptr, HostLookup::Function lookUp = &QHostInfo::fromName);

    /// Aborts silently what is under way.
    ~VersionChecker() override;

public slots:
    /// Begins the sequence; its first request goes out after the delay, which a call within it starts anew.
    void fetchVersion();

    /// Requests the configurator's file at once.
    void vxConfigRequest();

    /// Takes the answer to it, and deletes the reply later.
    void vxConfigReply(QNetworkReply *reply);

    /// Requests the firmware's file after the delay, which a call within it starts anew.
    void fetchFirmware();

    /// Requests the firmware's file at once.
    void firmwareRequest();

    /// Takes the answer to it, and deletes the reply later.
    void firmwareReply(QNetworkReply *reply);

signals:
    /// The text of the server on the configurator's current version.
    void versionNo(QString text);

    /// What the check is doing. Text of the server in it is cut.
    void debugMessage(QString text);

    /// One current firmware version; `flag` is 1 if the server marks it. Emitted for each in the order of the
    /// file.
    void frmwrVersion(QString version, int flag);

    /// The configurator's version was found: the firmware's file is next.
    void firmwareFetch();

private:
    VersionRequest *newRequest(WebAccess &web, QPointer<VersionRequest> &latest);
    bool isContact(const QNetworkReply &reply);
    void reportFailedContact(const QString &error);

    TimeSource &m_time;
    const VersionServer m_server;
    const VersionPeriods m_periods;
    HostLookup m_hosts;
    WebAccess m_configuratorAccess;
    WebAccess m_firmwareAccess;
    QPointer<VersionRequest> m_configuratorRequest; ///< the latest one, a child
    QPointer<VersionRequest> m_firmwareRequest;     ///< likewise
    Timer *m_versionDelay;                          // child
    Timer *m_firmwareDelay;                         // child
};
