#pragma once

#include <QObject>
#include <QString>
#include <chrono>

class QNetworkAccessManager;
class QNetworkReply;
class TimeSource;

/// The web server that holds the version files.
struct VersionServer
{
    QString host; ///< name or address; empty: none can be contacted
    quint16 port = 443;
};

/// The times of the version check.
struct VersionPeriods
{
    std::chrono::milliseconds delay{1000};     ///< before each of the two requests
    std::chrono::milliseconds transfer{30000}; ///< a server that is silent for so long counts as not there
};

/// Asks the web server for the current versions of the configurator and of the firmware after each start of a
/// session. Downloads nothing else. A failed contact ends the sequence without a retry.
class VersionChecker : public QObject
{
    Q_OBJECT

public:
    /// `time` must outlive the object.
    VersionChecker(TimeSource &time, const VersionServer &server, const VersionPeriods &periods = {},
                   QObject *parent = nullptr);
    ~VersionChecker() override;

public slots:
    /// Begins the sequence; its first request goes out after the delay.
    void fetchVersion();
    void vxConfigRequest();
    void vxConfigReply(QNetworkReply *reply);
    void fetchFirmware();
    void firmwareRequest();
    void firmwareReply(QNetworkReply *reply);

signals:
    /// The text of the server on the configurator's current version.
    void versionNo(QString text);
    void debugMessage(QString text);

    /// One current firmware version; `flag` is 1 if the server marks it.
    void frmwrVersion(QString version, int flag);

    /// The configurator's version was found: the firmware's file is next.
    void firmwareFetch();

private:
    TimeSource &m_time;
    const VersionServer m_server;
    const VersionPeriods m_periods;
};
