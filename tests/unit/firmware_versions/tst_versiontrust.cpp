#include "support/httpsserver.h"
#include "support/messagecatcher.h"
#include "versionfixture.h"

#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslError>
#include <QSslSocket>
#include <QtTest>
#include <memory>

using Manner = HttpsAnswer::Manner;

namespace {

const QByteArray kGoodFile = "vxconfig v1.1.63\n";

} // namespace

/// Which servers are believed, and that no other one is asked.
class TstVersionTrust : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void aServerThatCannotProveItselfGetsNoRequest_data();
    void aServerThatCannotProveItselfGetsNoRequest();
    void aServerWhoseCertificateExpiredGetsNoRequest();
    void aServerWithAnOldEncryptionGetsNoRequest_data();
    void aServerWithAnOldEncryptionGetsNoRequest();
    void aRedirectIsNotFollowed_data();
    void aRedirectIsNotFollowed();

private:
    TestCertificates m_certificates;
    CertifiedKey m_identity;
};

void TstVersionTrust::initTestCase()
{
    m_certificates.trustAuthority();
    m_identity = m_certificates.certified(QStringLiteral("DNS:localhost,IP:127.0.0.1,IP:127.127.127.125"));
}

void TstVersionTrust::aServerThatCannotProveItselfGetsNoRequest_data()
{
    QTest::addColumn<bool>("isTrusted");
    QTest::addColumn<QString>("names");
    QTest::newRow("unknown authority") << false << "DNS:localhost,IP:127.0.0.1";
    QTest::newRow("another name, right address") << true << "DNS:other.example,IP:127.0.0.1";
}

void TstVersionTrust::aServerThatCannotProveItselfGetsNoRequest()
{
    QFETCH(bool, isTrusted);
    QFETCH(QString, names);
    TestCertificates unknown;
    HttpsServer server((isTrusted ? m_certificates : unknown).certified(names));
    server.setAnswer(kConfiguratorPath, {kGoodFile});
    RecordedCheck check({QStringLiteral("localhost"), server.serverPort()},
                        [](const QString &) { return infoOf({kLoopback}); });
    const MessageCatcher log;
    check.checker.fetchVersion();
    check.time.advance(1000);
    const QStringList expected{kRequesting, kFailed};
    QTRY_COMPARE((check.time.advance(5), check.events), expected);
    QVERIFY(log.lines().last().startsWith(QLatin1String("ERROR! \"SSL handshake failed")));
    QVERIFY(happens([&server] { return server.openConnections() == 0; }));
    QCOMPARE(server.connections(), 1);
    QCOMPARE(server.requests(), QList<QByteArray>());
}

void TstVersionTrust::aServerWhoseCertificateExpiredGetsNoRequest()
{
    const CertifiedKey expired = m_certificates.expired(QStringLiteral("DNS:localhost,IP:127.0.0.1"));
    const QList<QSslError> faults = QSslCertificate::verify({expired.certificate}, kLoopback);
    QCOMPARE(faults.size(), 1); // and nothing else is wrong with it
    QCOMPARE(faults.first().error(), QSslError::CertificateExpired);
    HttpsServer server(expired);
    server.setAnswer(kConfiguratorPath, {kGoodFile});
    RecordedCheck check({kLoopback, server.serverPort()});
    const MessageCatcher log;
    check.checker.vxConfigRequest();
    const QStringList expected{kRequesting, kFailed};
    QCOMPARE(check.eventsLike(expected), expected);
    QVERIFY(log.lines().last().startsWith(QLatin1String("ERROR! \"SSL handshake failed")));
    QVERIFY(happens([&server] { return server.openConnections() == 0; }));
    QCOMPARE(server.connections(), 1);
    QCOMPARE(server.requests(), QList<QByteArray>());
}

void TstVersionTrust::aServerWithAnOldEncryptionGetsNoRequest_data()
{
    QTest::addColumn<int>("protocol");
    QTest::newRow("TLS 1.0") << int(QSsl::TlsV1_0);
    QTest::newRow("TLS 1.1") << int(QSsl::TlsV1_1);
}

void TstVersionTrust::aServerWithAnOldEncryptionGetsNoRequest()
{
    QFETCH(int, protocol);
    const auto version = static_cast<QSsl::SslProtocol>(protocol);
    HttpsServer server(m_identity);
    server.setProtocol(version);
    server.setAnswer(kConfiguratorPath, {kGoodFile});

    QSslSocket careless; // finds that the server can be spoken to
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setProtocol(version);
    configuration.setBackendConfigurationOption("CipherString", "DEFAULT:@SECLEVEL=0");
    careless.setSslConfiguration(configuration);
    careless.connectToHostEncrypted(kLoopback, server.serverPort());
    QTRY_VERIFY2(careless.isEncrypted(), qPrintable(careless.errorString()));
    QCOMPARE(careless.sessionProtocol(), version);
    careless.abort();

    RecordedCheck check({kLoopback, server.serverPort()});
    const MessageCatcher log;
    check.checker.vxConfigRequest();
    const QStringList expected{kRequesting, kFailed};
    QCOMPARE(check.eventsLike(expected), expected);
    QVERIFY(log.lines().last().startsWith(QLatin1String("ERROR! \"SSL handshake failed")));
    QVERIFY(happens([&server] { return server.openConnections() == 0; }));
    QCOMPARE(server.connections(), 2);
    QCOMPARE(server.requests(), QList<QByteArray>());
}

void TstVersionTrust::aRedirectIsNotFollowed_data()
{
    QTest::addColumn<QByteArray>("target");
    QTest::newRow("the same server") << QByteArray("/elsewhere.txt");
    QTest::newRow("another host") << QByteArray("https://127.127.127.125:%1/elsewhere.txt");
    QTest::newRow("without encryption") << QByteArray("http://127.127.127.125:%1/elsewhere.txt");
}

void TstVersionTrust::aRedirectIsNotFollowed()
{
    QFETCH(QByteArray, target);
    HttpsServer server(m_identity);
    HttpsServer other(m_identity, QHostAddress(QStringLiteral("127.127.127.125")), 0);
    target.replace("%1", QByteArray::number(other.serverPort()));
    server.setAnswer(kConfiguratorPath,
                     {"moved", Manner::Whole, "302 Found", "Location: " + target + "\r\n"});
    for (HttpsServer *place : {&server, &other})
        place->setAnswer("/elsewhere.txt", {kGoodFile});
    RecordedCheck check({kLoopback, server.serverPort()});
    const MessageCatcher log;
    check.checker.vxConfigRequest();
    const QStringList expected{kRequesting, kContact};
    QCOMPARE(check.eventsLike(expected), expected);
    QVERIFY(happens([&server] { return server.openConnections() == 0; }));
    QCOMPARE(server.requests().size(), 1);
    QCOMPARE(other.connections(), 0);
    QCOMPARE(check.events, expected);
}

QTEST_GUILESS_MAIN(TstVersionTrust)
#include "tst_versiontrust.moc"
