#include "firmware/versionchecker.h"

#include "base/timesource.h"
#include "firmware/versionfiles.h"
#include "firmware/versionrequest.h"

#include <QDebug>
#include <QNetworkReply>
#include <utility>

namespace {

constexpr char kConfiguratorPath[] = "/fileadmin/Public/Products/Telemetry/Tools/vxconfig.txt";
constexpr char kFirmwarePath[] = "/fileadmin/Public/Products/Telemetry/Tools/vx_update.txt";
constexpr int kLongestShown = 500; ///< letters; the server may send megabytes

/// What the log and the debug panel show of a text that the server chose.
QString shown(const QString &text)
{
    return text.left(kLongestShown);
}

/// True for a line that was read up to its end.
bool isEnded(const QString &line)
{
    return line.endsWith(QLatin1Char('\r')) || line.endsWith(QLatin1Char('\n'));
}

Timer *singleShot(TimeSource &time, QObject *parent)
{
    Timer *timer = time.createTimer(parent);
    timer->setSingleShot(true);
    return timer;
}

} // namespace

VersionChecker::VersionChecker(TimeSource &time, const VersionServer &server, const VersionPeriods &periods,
                               QObject *parent, HostLookup::Function lookUp)
    : QObject(parent)
    , m_time(time)
    , m_server(server)
    , m_periods(periods)
    , m_hosts(std::move(lookUp))
    , m_versionDelay(singleShot(time, this))
    , m_firmwareDelay(singleShot(time, this))
{
    connect(m_versionDelay, &Timer::timeout, this, &VersionChecker::vxConfigRequest);
    connect(m_firmwareDelay, &Timer::timeout, this, &VersionChecker::firmwareRequest);
    connect(this, &VersionChecker::firmwareFetch, this, &VersionChecker::fetchFirmware);
}

VersionChecker::~VersionChecker()
{
    // Before the replies they follow.
    qDeleteAll(findChildren<VersionRequest *>(QString(), Qt::FindDirectChildrenOnly));
}

void VersionChecker::fetchVersion()
{
    m_hosts.begin(m_server.host);
    m_versionDelay->start(m_periods.delay);
}

void VersionChecker::vxConfigRequest()
{
    VersionRequest *request = newRequest(m_configuratorAccess, m_configuratorRequest);
    connect(request, &VersionRequest::finished, this, &VersionChecker::vxConfigReply);
    emit debugMessage(QStringLiteral("Requesting VXConfig Version"));
    request->send(QLatin1String(kConfiguratorPath));
}

void VersionChecker::vxConfigReply(QNetworkReply *reply)
{
    reply->deleteLater();
    if (!isContact(*reply))
        return;
    emit debugMessage(QStringLiteral("Contact Established with server"));
    const QString line = versionfiles::configuratorLine(reply->readAll());
    if (isEnded(line))
        qDebug() << " Server: line is detected" << shown(line);
    qDebug() << "Contacted VXConfig Server1";
    qDebug() << "****Message from Server:" << shown(line);
    const auto version = versionfiles::configuratorVersion(line);
    if (!version)
        return;
    qDebug() << shown(*version);
    emit versionNo(*version);
    emit firmwareFetch();
}

void VersionChecker::fetchFirmware()
{
    m_hosts.begin(m_server.host);
    m_firmwareDelay->start(m_periods.delay);
}

void VersionChecker::firmwareRequest()
{
    VersionRequest *request = newRequest(m_firmwareAccess, m_firmwareRequest);
    connect(request, &VersionRequest::finished, this, &VersionChecker::firmwareReply);
    emit debugMessage(QStringLiteral("Request for Firmware Version"));
    request->send(QLatin1String(kFirmwarePath));
}

void VersionChecker::firmwareReply(QNetworkReply *reply)
{
    reply->deleteLater();
    if (!isContact(*reply))
        return;
    emit debugMessage(QStringLiteral("Firmware Version Fetched"));
    const auto entries = versionfiles::firmwareEntries(reply->readAll());
    for (const auto &entry : entries) {
        emit debugMessage(shown(entry.line));
        emit frmwrVersion(entry.version, entry.flag);
    }
}

VersionRequest *VersionChecker::newRequest(WebAccess &web, QPointer<VersionRequest> &latest)
{
    if (latest)
        latest->drop(); // its answer would be stale, and the new request might wait for its connection
    latest = new VersionRequest(m_time, m_hosts, web, m_server, m_periods, this);
    connect(latest, &VersionRequest::failed, this, &VersionChecker::reportFailedContact);
    return latest;
}

bool VersionChecker::isContact(const QNetworkReply &reply)
{
    if (reply.error() == QNetworkReply::NoError)
        return true;
    reportFailedContact(reply.errorString());
    return false;
}

void VersionChecker::reportFailedContact(const QString &error)
{
    emit debugMessage(QStringLiteral("Error Cannot contact server"));
    qDebug() << "ERROR!" << shown(error);
}
