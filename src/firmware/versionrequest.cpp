#include "firmware/versionrequest.h"

#include "base/timesource.h"
#include "link/hostlookup.h"

#include <QDebug>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSslConfiguration>
#include <QUrl>
#include <algorithm>

namespace {

constexpr quint16 kHttpsPort = 443;

/// The address of the file, with the server's name in it.
QUrl namedUrl(const VersionServer &server, const QString &path)
{
    QUrl url;
    url.setScheme(QStringLiteral("https"));
    url.setHost(server.host);
    if (server.port != kHttpsPort)
        url.setPort(server.port);
    url.setPath(path);
    return url;
}

/// A request that goes to `address`, for a server that has to answer, and to prove itself, by its name.
QNetworkRequest requestTo(const QHostAddress &address, const QUrl &named)
{
    QUrl url = named;
    url.setHost(address.toString());
    QNetworkRequest request(url);
    request.setSslConfiguration(QSslConfiguration::defaultConfiguration());
    request.setPeerVerifyName(named.host(QUrl::FullyEncoded));
    request.setRawHeader("Host", named.authority(QUrl::FullyEncoded).toLatin1());
    request.setRawHeader("Accept-Encoding", "identity"); // so that the size received is the size read
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    return request;
}

/// True if the server was not there at all, so that another of its addresses may be tried.
bool isWithoutServer(QNetworkReply::NetworkError error)
{
    return error == QNetworkReply::ConnectionRefusedError || error == QNetworkReply::HostNotFoundError ||
           error == QNetworkReply::UnknownNetworkError;
}

/// A connection that hangs before it is encrypted outlives the reply that is aborted, and the next request
/// would hang with it. Nothing is done while another request is under way.
void leaveConnections(QNetworkAccessManager &network)
{
    const auto replies = network.findChildren<QNetworkReply *>();
    if (std::none_of(replies.begin(), replies.end(),
                     [](const QNetworkReply *reply) { return reply->isRunning(); }))
        network.clearConnectionCache();
}

} // namespace

VersionRequest::VersionRequest(TimeSource &time, HostLookup &hosts, QNetworkAccessManager &network,
                               const VersionServer &server, const VersionPeriods &periods, QObject *parent)
    : QObject(parent)
    , m_hosts(hosts)
    , m_network(network)
    , m_server(server)
    , m_periods(periods)
    , m_lookUpTimer(time.createTimer(this))
    , m_limitTimer(time.createTimer(this))
{
    m_limitTimer->setSingleShot(true);
    connect(m_lookUpTimer, &Timer::timeout, this, &VersionRequest::lookForAddress);
    connect(m_limitTimer, &Timer::timeout, this, &VersionRequest::handleSilence);
}

void VersionRequest::send(const QString &path)
{
    m_path = path;
    m_limitTimer->start(m_periods.transfer);
    m_lookUpTimer->start(m_periods.lookUp);
    lookForAddress();
}

void VersionRequest::lookForAddress()
{
    const auto addresses = m_hosts.addressesIfAnswered(m_server.host);
    if (!addresses)
        return;
    m_lookUpTimer->stop();
    if (addresses->isEmpty() || namedUrl(m_server, m_path).host().isEmpty()) {
        fail(QStringLiteral("Host %1 not found").arg(m_server.host));
        return;
    }
    m_addresses = *addresses;
    sendToNextAddress();
}

void VersionRequest::sendToNextAddress()
{
    m_limitTimer->start(m_periods.transfer);
    followReply(m_network.get(requestTo(m_addresses.takeFirst(), namedUrl(m_server, m_path))));
}

void VersionRequest::followReply(QNetworkReply *reply)
{
    m_reply = reply;
    connect(reply, &QNetworkReply::readyRead, this, &VersionRequest::handleData);
    connect(reply, &QNetworkReply::finished, this, &VersionRequest::handleFinished);
}

/// The end of a reply that is aborted comes from within the call.
void VersionRequest::handleData()
{
    m_limitTimer->start(m_periods.transfer);
    if (m_reply->bytesAvailable() <= kMaximumSize)
        return;
    qDebug() << "The version file has more than" << kMaximumSize << "bytes";
    m_reply->abort();
}

void VersionRequest::handleFinished()
{
    m_limitTimer->stop();
    m_reply->disconnect(this);
    if (!m_addresses.isEmpty() && isWithoutServer(m_reply->error())) {
        m_reply->deleteLater();
        sendToNextAddress();
        return;
    }
    deleteLater();
    emit finished(m_reply);
}

void VersionRequest::handleSilence()
{
    const auto seconds = std::chrono::duration<double>(m_periods.transfer).count();
    qDebug() << "The server of the version files was silent for" << seconds << "seconds";
    m_lookUpTimer->stop();
    if (m_reply) {
        m_reply->abort();
        leaveConnections(m_network);
        return;
    }
    fail(QStringLiteral("Host %1 not found in time").arg(m_server.host));
}

void VersionRequest::fail(const QString &error)
{
    m_limitTimer->stop();
    deleteLater();
    emit failed(error);
}
