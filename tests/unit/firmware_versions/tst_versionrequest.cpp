#include "fakereply.h"
#include "firmware/versionrequest.h"
#include "firmware/webaccess.h"
#include "link/hostlookup.h"
#include "support/virtualtime.h"
#include "versionfixture.h"

#include <QNetworkAccessManager>
#include <QPointer>
#include <QSemaphore>
#include <QSignalSpy>
#include <QtTest>
#include <functional>
#include <memory>

namespace {

/// What went to the web.
struct Sent
{
    int accesses = 0; ///< network accesses that are there
    QList<QNetworkRequest> requests;
    QList<QPointer<FakeReply>> replies;
};

/// Notes the requests and answers none.
class FakeAccess final : public QNetworkAccessManager
{
public:
    explicit FakeAccess(Sent &sent)
        : m_sent(sent)
    {
        ++m_sent.accesses;
    }
    ~FakeAccess() override { --m_sent.accesses; }

protected:
    QNetworkReply *createRequest(Operation operation, const QNetworkRequest &request, QIODevice *) override
    {
        if (operation != GetOperation)
            qFatal("not a get");
        m_sent.requests.append(request);
        m_sent.replies.append(new FakeReply({}, this));
        return m_sent.replies.last();
    }

private:
    Sent &m_sent;
};

} // namespace

class TstVersionRequest;
Q_DECLARE_METATYPE(std::function<void(TstVersionRequest &, VersionRequest *)>)

class TstVersionRequest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void theRequestGoesToTheAddressInTheNameOfTheServer_data();
    void theRequestGoesToTheAddressInTheNameOfTheServer();
    void theRequestUsesTheDefaultConfigurationAndFollowsNoRedirect();
    void aServerThatIsNotThereIsSoughtAtTheNextAddress_data();
    void aServerThatIsNotThereIsSoughtAtTheNextAddress();
    void anotherFailureEndsTheRequest_data();
    void anotherFailureEndsTheRequest();
    void anAddressWithoutAConnectionIsLeftForTheNext();
    void anAddressWithAConnectionIsKept_data();
    void anAddressWithAConnectionIsKept();
    void theNameIsLookedForAgainAndAgain();
    void aHostThatIsNoNameIsNotContacted_data();
    void aHostThatIsNoNameIsNotContacted();
    void bytesThatComeStartTheLimitAnew();
    void anAnswerWithoutAHeadIsGivenUp_data();
    void anAnswerWithoutAHeadIsGivenUp();
    void anAnswerThatGoesOnForEverIsGivenUp();
    void theLookUpIsNotPartOfTheLimitOfTheServer();
    void moreThanTheMaximumIsNotRead_data();
    void moreThanTheMaximumIsNotRead();
    void itDeletesItselfAtTheEnd();
    void itLeavesNoConnectionBehind_data();
    void itLeavesNoConnectionBehind();
    void aRequestThatIsDroppedIsSilent_data();
    void aRequestThatIsDroppedIsSilent();

private:
    bool waitForRequest();
    FakeReply *reply(int index) const { return m_access->replies.at(index); }
    VersionRequest *newRequest(const VersionServer &server, const QStringList &addresses = {kLoopback});
    VersionRequest *sendToTheFirstOfTwo();

    /// Lets a reply end with an error.
    void fail(int index, int error) const;

    std::unique_ptr<VirtualTime> m_time;
    std::unique_ptr<Sent> m_access;
    std::unique_ptr<WebAccess> m_web;
    int m_handedOver = -1; ///< place of the reply that a request ended with, and its error
    QNetworkReply::NetworkError m_error = QNetworkReply::NoError;
    std::unique_ptr<HostLookup> m_hosts;
    std::unique_ptr<QObject> m_owner;
};

/// A request to a server with two addresses; it goes out when the name has been looked up.
VersionRequest *TstVersionRequest::sendToTheFirstOfTwo()
{
    VersionRequest *request = newRequest({QStringLiteral("name"), 443}, {"10.0.0.1", "10.0.0.2"});
    request->send(QStringLiteral("/a"));
    return request;
}

void TstVersionRequest::fail(int index, int error) const
{
    FakeReply *failing = reply(index);
    failing->setFailed(QNetworkReply::NetworkError(error), QStringLiteral("gone"));
    failing->end();
}

VersionRequest *TstVersionRequest::newRequest(const VersionServer &server, const QStringList &addresses)
{
    m_owner.reset();
    m_time = std::make_unique<VirtualTime>();
    m_web.reset();
    m_access = std::make_unique<Sent>();
    m_web = std::make_unique<WebAccess>(nullptr, [this] { return new FakeAccess(*m_access); });
    m_hosts = std::make_unique<HostLookup>([addresses](const QString &) { return infoOf(addresses); });
    m_owner = std::make_unique<QObject>();
    auto *request = new VersionRequest(*m_time, *m_hosts, *m_web, server, {}, m_owner.get());
    connect(request, &VersionRequest::finished, this, [this](QNetworkReply *reply) {
        m_handedOver = m_access->replies.indexOf(static_cast<FakeReply *>(reply));
        m_error = reply->error();
    });
    return request;
}

/// Lets the time pass until the request is sent, and no longer.
bool TstVersionRequest::waitForRequest()
{
    return happens([this] {
        if (m_access->requests.isEmpty())
            m_time->advance(10);
        return !m_access->requests.isEmpty();
    });
}

void TstVersionRequest::initTestCase()
{
    qRegisterMetaType<QNetworkReply *>();
}

void TstVersionRequest::theRequestGoesToTheAddressInTheNameOfTheServer_data()
{
    QTest::addColumn<QString>("host");
    QTest::addColumn<quint16>("port");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("url");
    QTest::addColumn<QByteArray>("hostHeader");
    QTest::addColumn<QString>("verifiedName");
    const QString name = QStringLiteral("www.qor.example");
    QTest::newRow("name, usual port") << name << quint16(443) << "10.0.0.1"
                                      << "https://10.0.0.1/a/b.txt" << QByteArray("www.qor.example") << name;
    QTest::newRow("name, other port")
        << name << quint16(8443) << "10.0.0.1"
        << "https://10.0.0.1:8443/a/b.txt" << QByteArray("www.qor.example:8443") << name;
    QTest::newRow("name of a version 6 address")
        << name << quint16(443) << "fd00::1"
        << "https://[fd00::1]/a/b.txt" << QByteArray("www.qor.example") << name;
    QTest::newRow("version 4 address") << "10.0.0.2" << quint16(443) << "10.0.0.1"
                                       << "https://10.0.0.2/a/b.txt" << QByteArray("10.0.0.2") << "10.0.0.2";
    QTest::newRow("version 6 address")
        << "fd00::2" << quint16(8443) << "10.0.0.1"
        << "https://[fd00::2]:8443/a/b.txt" << QByteArray("[fd00::2]:8443") << "fd00::2";
    QTest::newRow("name with other letters")
        << QString::fromUtf8("m\xc3\xbc.example") << quint16(443) << "10.0.0.1"
        << "https://10.0.0.1/a/b.txt" << QByteArray("xn--m-eha.example") << "xn--m-eha.example";
}

void TstVersionRequest::theRequestGoesToTheAddressInTheNameOfTheServer()
{
    QFETCH(QString, host);
    QFETCH(quint16, port);
    QFETCH(QString, address);
    newRequest({host, port}, {address})->send(QStringLiteral("/a/b.txt"));
    QVERIFY(waitForRequest());
    const QNetworkRequest request = m_access->requests.first();
    QTEST(request.url().toString(), "url");
    QTEST(request.rawHeader("Host"), "hostHeader");
    QTEST(request.peerVerifyName(), "verifiedName");
}

void TstVersionRequest::theRequestUsesTheDefaultConfigurationAndFollowsNoRedirect()
{
    const QSslConfiguration before = QSslConfiguration::defaultConfiguration();
    QSslConfiguration marked = before;
    marked.setPeerVerifyDepth(7);
    QSslConfiguration::setDefaultConfiguration(marked);
    newRequest({kLoopback, 443})->send(QStringLiteral("/a"));
    QSslConfiguration::setDefaultConfiguration(before);
    QCOMPARE(m_access->requests.size(), 1);
    const QNetworkRequest request = m_access->requests.first();
    QCOMPARE(request.sslConfiguration().peerVerifyDepth(), 7);
    QCOMPARE(request.attribute(QNetworkRequest::RedirectPolicyAttribute).toInt(),
             int(QNetworkRequest::ManualRedirectPolicy));
    QCOMPARE(request.rawHeader("Accept-Encoding"), QByteArray("identity"));
}

void TstVersionRequest::aServerThatIsNotThereIsSoughtAtTheNextAddress_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("refused") << int(QNetworkReply::ConnectionRefusedError);
    QTest::newRow("unreachable") << int(QNetworkReply::UnknownNetworkError);
    QTest::newRow("timed out") << int(QNetworkReply::TimeoutError);
    QTest::newRow("no such host") << int(QNetworkReply::HostNotFoundError);
    QTest::newRow("network lost") << int(QNetworkReply::TemporaryNetworkFailureError);
    QTest::newRow("no network") << int(QNetworkReply::NetworkSessionFailedError);
}

void TstVersionRequest::aServerThatIsNotThereIsSoughtAtTheNextAddress()
{
    QFETCH(int, error);
    QSignalSpy finished(sendToTheFirstOfTwo(), &VersionRequest::finished);
    QVERIFY(waitForRequest());
    fail(0, error);
    QCOMPARE(finished.size(), 0);
    QCOMPARE(m_access->requests.size(), 2);
    QCOMPARE(m_access->requests.at(1).url().host(), QStringLiteral("10.0.0.2"));
    m_time->turn();
    QVERIFY(!m_access->replies.at(0)); // nobody else would delete it
    fail(1, error);
    QCOMPARE(finished.size(), 1);
    QCOMPARE(m_handedOver, 1);
    QCOMPARE(m_access->requests.size(), 2);
}

void TstVersionRequest::anotherFailureEndsTheRequest_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("untrusted") << int(QNetworkReply::SslHandshakeFailedError);
    QTest::newRow("not found") << int(QNetworkReply::ContentNotFoundError);
    QTest::newRow("closed") << int(QNetworkReply::RemoteHostClosedError);
}

void TstVersionRequest::anotherFailureEndsTheRequest()
{
    QFETCH(int, error);
    QSignalSpy finished(sendToTheFirstOfTwo(), &VersionRequest::finished);
    QVERIFY(waitForRequest());
    fail(0, error);
    QCOMPARE(finished.size(), 1);
    QCOMPARE(m_access->requests.size(), 1);
}

void TstVersionRequest::anAddressWithoutAConnectionIsLeftForTheNext()
{
    QSignalSpy finished(sendToTheFirstOfTwo(), &VersionRequest::finished);
    QVERIFY(waitForRequest());
    m_time->advance(4999);
    QCOMPARE(m_access->replies.size(), 1);
    QSignalSpy ended(reply(0), &QNetworkReply::finished);
    m_time->advance(1);
    QCOMPARE(ended.size(), 1);
    QVERIFY(!reply(0)); // nobody else would delete it
    QCOMPARE(m_access->requests.size(), 2);
    QCOMPARE(m_access->requests.at(1).url().host(), QStringLiteral("10.0.0.2"));
    m_time->advance(9999); // the last address has the limit of every server
    QCOMPARE(finished.size(), 0);
    m_time->advance(1);
    QCOMPARE(finished.size(), 1);
    QCOMPARE(m_handedOver, 1);
    QCOMPARE(m_access->requests.size(), 2);
    QCOMPARE(m_time->activeTimers(), 0);
}

void TstVersionRequest::anAddressWithAConnectionIsKept_data()
{
    QTest::addColumn<bool>("isEncrypted");
    QTest::newRow("encrypted") << true;
    QTest::newRow("answered in a connection from before") << false;
}

void TstVersionRequest::anAddressWithAConnectionIsKept()
{
    QFETCH(bool, isEncrypted);
    for (const bool hasFailed : {false, true}) {
        QSignalSpy finished(sendToTheFirstOfTwo(), &VersionRequest::finished);
        QVERIFY(waitForRequest());
        m_time->advance(4999);
        if (isEncrypted)
            reply(0)->encrypt();
        else
            reply(0)->receiveHead();
        m_time->advance(5000);
        if (hasFailed) {
            fail(0, QNetworkReply::TimeoutError);
        }
        QCOMPARE(finished.size(), hasFailed ? 1 : 0);
        QCOMPARE(m_access->requests.size(), 1);
    }
}

void TstVersionRequest::theNameIsLookedForAgainAndAgain()
{
    QSemaphore mayEnd;
    newRequest({});
    HostLookup hosts([&mayEnd](const QString &) {
        mayEnd.acquire();
        return infoOf({kLoopback});
    });
    auto *request =
        new VersionRequest(*m_time, hosts, *m_web, {QStringLiteral("name"), 443}, {}, m_owner.get());
    request->send(QStringLiteral("/a"));
    m_time->advance(10000);
    QCOMPARE(m_access->requests.size(), 0);
    mayEnd.release();
    QVERIFY(waitForRequest());
    m_owner.reset();
}

void TstVersionRequest::aHostThatIsNoNameIsNotContacted_data()
{
    QTest::addColumn<QString>("host");
    QTest::newRow("empty") << QString();
    QTest::newRow("blank") << QStringLiteral(" ");
    QTest::newRow("another header") << QStringLiteral("a\r\nX: b");
    QTest::newRow("user and path") << QStringLiteral("user@name/path");
}

void TstVersionRequest::aHostThatIsNoNameIsNotContacted()
{
    QFETCH(QString, host);
    VersionRequest *request = newRequest({host, 443}); // whose look-up finds any name
    QSignalSpy failed(request, &VersionRequest::failed);
    request->send(QStringLiteral("/a"));
    QTRY_COMPARE((m_time->advance(50), failed.size()), 1);
    QVERIFY(!failed.at(0).at(0).toString().isEmpty());
    QCOMPARE(m_access->requests.size(), 0);
    QCOMPARE(m_time->activeTimers(), 0);
}

void TstVersionRequest::bytesThatComeStartTheLimitAnew()
{
    VersionRequest *request = newRequest({kLoopback, 443});
    QSignalSpy finished(request, &VersionRequest::finished);
    request->send(QStringLiteral("/a"));
    m_time->advance(5000);
    reply(0)->receiveHead();
    m_time->advance(20000);
    reply(0)->receive("a");
    m_time->advance(29999);
    QCOMPARE(finished.size(), 0);
    m_time->advance(1);
    QCOMPARE(finished.size(), 1);
    QCOMPARE(m_error, QNetworkReply::OperationCanceledError);
    QCOMPARE(m_time->activeTimers(), 0);
}

void TstVersionRequest::anAnswerWithoutAHeadIsGivenUp_data()
{
    QTest::addColumn<bool>("isEncrypted");
    QTest::newRow("no connection") << false;
    QTest::newRow("connection") << true;
}

void TstVersionRequest::anAnswerWithoutAHeadIsGivenUp()
{
    QFETCH(bool, isEncrypted);
    VersionRequest *request = newRequest({kLoopback, 443});
    QSignalSpy finished(request, &VersionRequest::finished);
    request->send(QStringLiteral("/a"));
    m_time->advance(9999);
    if (isEncrypted)
        reply(0)->encrypt();
    QCOMPARE(finished.size(), 0);
    m_time->advance(1);
    QCOMPARE(finished.size(), 1);
    QCOMPARE(m_error, QNetworkReply::OperationCanceledError);
    QCOMPARE(m_time->activeTimers(), 0);
}

void TstVersionRequest::anAnswerThatGoesOnForEverIsGivenUp()
{
    VersionRequest *request = newRequest({kLoopback, 443});
    QSignalSpy finished(request, &VersionRequest::finished);
    request->send(QStringLiteral("/a"));
    reply(0)->receiveHead();
    for (int second = 1; second < 60; ++second) {
        m_time->advance(1000);
        reply(0)->receive("a");
    }
    m_time->advance(999);
    QCOMPARE(finished.size(), 0);
    m_time->advance(1);
    QCOMPARE(finished.size(), 1);
    QCOMPARE(m_error, QNetworkReply::OperationCanceledError);
    QCOMPARE(m_time->activeTimers(), 0);
}

void TstVersionRequest::theLookUpIsNotPartOfTheLimitOfTheServer()
{
    QSemaphore mayEnd;
    newRequest({});
    HostLookup hosts([&mayEnd](const QString &) {
        mayEnd.acquire();
        return infoOf({kLoopback});
    });
    auto *request =
        new VersionRequest(*m_time, hosts, *m_web, {QStringLiteral("name"), 443}, {}, m_owner.get());
    QSignalSpy finished(request, &VersionRequest::finished);
    request->send(QStringLiteral("/a"));
    m_time->advance(20000);
    mayEnd.release();
    QVERIFY(waitForRequest());
    reply(0)->receiveHead();
    m_time->advance(29999);
    QCOMPARE(finished.size(), 0);
    m_time->advance(1);
    QCOMPARE(finished.size(), 1);
}

void TstVersionRequest::moreThanTheMaximumIsNotRead_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("isRead");
    QTest::newRow("one MiB") << 1048576 << true;
    QTest::newRow("a byte more") << 1048577 << false;
}

void TstVersionRequest::moreThanTheMaximumIsNotRead()
{
    QFETCH(int, size);
    QFETCH(bool, isRead);
    VersionRequest *request = newRequest({kLoopback, 443});
    QSignalSpy finished(request, &VersionRequest::finished);
    request->send(QStringLiteral("/a"));
    m_access->replies.at(0)->receive(QByteArray(1000000, 'x'));
    QCOMPARE(finished.size(), 0);
    m_access->replies.at(0)->receive(QByteArray(size - 1000000, 'x'));
    QCOMPARE(finished.size(), isRead ? 0 : 1);
    QCOMPARE(m_access->replies.at(0)->error() == QNetworkReply::NoError, isRead);
}

void TstVersionRequest::itDeletesItselfAtTheEnd()
{
    const QPointer<VersionRequest> request = newRequest({kLoopback, 443});
    request->send(QStringLiteral("/a"));
    m_access->replies.at(0)->end();
    m_time->turn();
    QVERIFY(!request);
    QCOMPARE(m_time->activeTimers(), 0);
}

void TstVersionRequest::itLeavesNoConnectionBehind_data()
{
    using End = std::function<void(TstVersionRequest &, VersionRequest *)>;
    QTest::addColumn<End>("end");
    QTest::newRow("answered") << End([](TstVersionRequest &test, VersionRequest *) { test.reply(0)->end(); });
    QTest::newRow("given up") << End([](TstVersionRequest &test, VersionRequest *) {
        test.reply(0)->encrypt();
        test.m_time->advance(10000);
    });
    QTest::newRow("dropped") << End([](TstVersionRequest &, VersionRequest *request) { request->drop(); });
    QTest::newRow("destroyed") << End([](TstVersionRequest &, VersionRequest *request) { delete request; });
}

void TstVersionRequest::itLeavesNoConnectionBehind()
{
    QFETCH(std::function<void(TstVersionRequest &, VersionRequest *)>, end);
    VersionRequest *request = newRequest({kLoopback, 443});
    request->send(QStringLiteral("/a"));
    QCOMPARE(m_access->accesses, 1);
    end(*this, request);
    m_time->turn();
    QCOMPARE(m_access->accesses, 0);
}

void TstVersionRequest::aRequestThatIsDroppedIsSilent_data()
{
    QTest::addColumn<bool>("isDestroyed");
    QTest::newRow("dropped") << false;
    QTest::newRow("destroyed") << true;
}

void TstVersionRequest::aRequestThatIsDroppedIsSilent()
{
    QFETCH(bool, isDestroyed);
    const QPointer<VersionRequest> request = newRequest({kLoopback, 443});
    QSignalSpy finished(request, &VersionRequest::finished);
    QSignalSpy failed(request, &VersionRequest::failed);
    request->send(QStringLiteral("/a"));
    QSignalSpy ended(reply(0), &QNetworkReply::finished);
    if (isDestroyed)
        delete request;
    else
        request->drop();
    QCOMPARE(ended.size(), 1);
    m_time->turn();
    QVERIFY(!request);
    QVERIFY(!reply(0));
    QCOMPARE(finished.size() + failed.size(), 0);
    QCOMPARE(m_time->activeTimers(), 0);
}

QTEST_GUILESS_MAIN(TstVersionRequest)
#include "tst_versionrequest.moc"
