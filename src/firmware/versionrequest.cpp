#include "firmware/versionrequest.h"

#include "base/timesource.h"
#include "firmware/webaccess.h"
#include "link/hostlookup.h"

#include <QDebug>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSslConfiguration>
#include <QUrl>
#include <utility>

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
           error == QNetworkReply::TimeoutError || error == QNetworkReply::TemporaryNetworkFailureError ||
           error == QNetworkReply::NetworkSessionFailedError || error == QNetworkReply::UnknownNetworkError;
}

double seconds(std::chrono::milliseconds period)
{
    return std::chrono::duration<double>(period).count();
}

} // namespace

VersionRequest::VersionRequest(TimeSource &time, HostLookup &hosts, WebAccess &web,
                               const VersionServer &server, const VersionPeriods &periods, QObject *parent)
    : QObject(parent)
    , m_hosts(hosts)
    , m_web(web)
    , m_server(server)
    , m_periods(periods)
    , m_lookUpTimer(time.createTimer(this))
    , m_addressTimer(createLimit(time, &VersionRequest::handleUnreached))
    , m_headTimer(createLimit(time, &VersionRequest::handleMissingHead))
    , m_silenceTimer(createLimit(time, &VersionRequest::handleSilence))
    , m_wholeTimer(createLimit(time, &VersionRequest::handleSlowness))
{
    connect(m_lookUpTimer, &Timer::timeout, this, &VersionRequest::lookForAddress);
}

VersionRequest::~VersionRequest()
{
    leaveReply();
}

Timer *VersionRequest::createLimit(TimeSource &time, void (VersionRequest::*handler)())
{
    Timer *timer = time.createTimer(this);
    timer->setSingleShot(true);
    connect(timer, &Timer::timeout, this, handler);
    return timer;
}

void VersionRequest::send(const QString &path)
{
    m_path = path;
    m_silenceTimer->start(m_periods.transfer);
    m_lookUpTimer->start(m_periods.lookUp);
    lookForAddress();
}

void VersionRequest::drop()
{
    disconnect();
    stopTimers();
    leaveReply();
    deleteLater();
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
    const QHostAddress address = m_addresses.takeFirst();
    if (!m_addresses.isEmpty())
        m_addressTimer->start(m_periods.address);
    m_headTimer->start(m_periods.head);
    m_silenceTimer->start(m_periods.transfer);
    m_wholeTimer->start(m_periods.whole);
    followReply(m_web.network().get(requestTo(address, namedUrl(m_server, m_path))));
}

void VersionRequest::followReply(QNetworkReply *reply)
{
    m_reply = reply;
    connect(reply, &QNetworkReply::encrypted, this, &VersionRequest::handleEncryption);
    connect(reply, &QNetworkReply::metaDataChanged, this, &VersionRequest::handleHead);
    connect(reply, &QNetworkReply::readyRead, this, &VersionRequest::handleData);
    connect(reply, &QNetworkReply::finished, this, &VersionRequest::handleFinished);
}

void VersionRequest::handleEncryption()
{
    m_addressTimer->stop();
}

void VersionRequest::handleHead()
{
    handleEncryption(); // a reply need not have told of it
    m_headTimer->stop();
    m_silenceTimer->start(m_periods.transfer);
}

void VersionRequest::handleData()
{
    m_silenceTimer->start(m_periods.transfer);
    if (m_reply->bytesAvailable() <= kMaximumSize)
        return;
    qDebug() << "The version file has more than" << kMaximumSize << "bytes";
    giveUp();
}

void VersionRequest::handleFinished()
{
    const bool mayGoOn = m_addressTimer->isActive() && isWithoutServer(m_reply->error());
    stopTimers();
    if (mayGoOn) {
        leaveReply();
        sendToNextAddress();
        return;
    }
    end();
}

void VersionRequest::handleUnreached()
{
    leaveReply();
    sendToNextAddress();
}

void VersionRequest::handleMissingHead()
{
    qDebug() << "The server of the version files sent no whole head within" << seconds(m_periods.head)
             << "seconds";
    giveUp();
}

void VersionRequest::handleSilence()
{
    if (!m_reply) {
        fail(QStringLiteral("Host %1 not found in time").arg(m_server.host));
        return;
    }
    qDebug() << "The server of the version files was silent for" << seconds(m_periods.transfer) << "seconds";
    giveUp();
}

void VersionRequest::handleSlowness()
{
    qDebug() << "The server of the version files did not end within" << seconds(m_periods.whole) << "seconds";
    giveUp();
}

void VersionRequest::stopTimers()
{
    for (Timer *timer : {m_lookUpTimer, m_addressTimer, m_headTimer, m_silenceTimer, m_wholeTimer})
        timer->stop();
}

/// The reply ends within the call, without telling this object.
void VersionRequest::abortReply()
{
    m_reply->disconnect(this);
    m_reply->abort();
}

void VersionRequest::leaveReply()
{
    if (!m_reply)
        return;
    abortReply();
    m_reply->deleteLater();
    m_reply = nullptr;
    m_web.renew();
}

void VersionRequest::giveUp()
{
    abortReply();
    end();
}

/// Last in its caller: the receiver may begin the next request.
void VersionRequest::end()
{
    stopTimers();
    m_reply->disconnect(this);
    m_web.renew();
    deleteLater();
    emit finished(std::exchange(m_reply, nullptr));
}

void VersionRequest::fail(const QString &error)
{
    stopTimers();
    deleteLater();
    emit failed(error);
}
