#include "firmware/webaccess.h"
#include "support/messagecatcher.h"
#include "support/testcertificates.h"
#include "versionfixture.h"

#include <QElapsedTimer>
#include <QNetworkReply>
#include <QPointer>
#include <QSemaphore>
#include <QSslConfiguration>
#include <QSslSocket>
#include <QTcpServer>
#include <QThread>
#include <QtTest>
#include <memory>

namespace {

constexpr qint64 kAtOnce = 4500; ///< ms; generous to a busy machine, and less than any wait

/// Encrypts its connections.
class EncryptingServer : public QTcpServer
{
public:
    explicit EncryptingServer(CertifiedKey identity)
        : m_identity(std::move(identity))
    {
        if (!listen(QHostAddress::LocalHost))
            qFatal("no port for the server");
    }

    QSemaphore connected; ///< a connection is there
    QSemaphore encrypted; ///< one is encrypted

protected:
    void incomingConnection(qintptr descriptor) override
    {
        auto *socket = new QSslSocket(this);
        QSslConfiguration configuration = socket->sslConfiguration();
        configuration.setLocalCertificate(m_identity.certificate);
        configuration.setPrivateKey(m_identity.key);
        configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
        socket->setSslConfiguration(configuration);
        socket->setSocketDescriptor(descriptor);
        connect(socket, &QSslSocket::encrypted, this, [this] { encrypted.release(); });
        socket->startServerEncryption();
        connected.release();
    }

private:
    const CertifiedKey m_identity;
};

/// The server in a thread of its own, which works while this one is held up.
class ServerThread
{
public:
    explicit ServerThread(const CertifiedKey &identity)
        : server(new EncryptingServer(identity))
    {
        server->moveToThread(&m_thread);
        m_thread.start();
    }
    ~ServerThread()
    {
        QMetaObject::invokeMethod(
            server, [this] { delete server; }, Qt::BlockingQueuedConnection);
        m_thread.quit();
        m_thread.wait();
    }

    ServerThread(const ServerThread &) = delete;
    ServerThread &operator=(const ServerThread &) = delete;

    /// Lets events come until a connection is there. No event of this thread comes from then on, and the
    /// program's thread of the connection gets as far as it can without this one.
    void waitForConnection() const
    {
        constexpr int kTurn = 5;
        while (!server->connected.tryAcquire(1, kTurn))
            QCoreApplication::processEvents();
        constexpr int kFarEnough = 300;
        server->encrypted.tryAcquire(1, kFarEnough);
    }

    EncryptingServer *const server;

private:
    QThread m_thread;
};

} // namespace

/// A version check never holds the program up, whatever its connection is at.
class TstVersionBlocking : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void aConnectionThatIsJustEncryptedIsLeftAtOnce_data();
    void aConnectionThatIsJustEncryptedIsLeftAtOnce();
    void aRenewedAccessIsAnotherOne();
    void whatIsLeftGoesWithItsReplies();

private:
    TestCertificates m_certificates;
    CertifiedKey m_identity;
};

void TstVersionBlocking::initTestCase()
{
    m_certificates.trustAuthority();
    m_identity = m_certificates.certified(QStringLiteral("DNS:localhost,IP:127.0.0.1"));
}

void TstVersionBlocking::aConnectionThatIsJustEncryptedIsLeftAtOnce_data()
{
    QTest::addColumn<bool>("isEnd");
    QTest::newRow("by the next session") << false;
    QTest::newRow("by the end of the program") << true;
}

void TstVersionBlocking::aConnectionThatIsJustEncryptedIsLeftAtOnce()
{
    QFETCH(bool, isEnd);
    const MessageCatcher log;
    const ServerThread thread(m_identity);
    auto check = std::make_unique<RecordedCheck>(VersionServer{kLoopback, thread.server->serverPort()});
    check->checker.fetchVersion();
    check->time.advance(1000);
    thread.waitForConnection();
    QElapsedTimer clock;
    clock.start();
    if (isEnd) {
        check.reset();
    } else {
        check->checker.fetchVersion();
        check->time.advance(1000);
    }
    QVERIFY2(clock.elapsed() < kAtOnce, qPrintable(QString::number(clock.elapsed())));
    if (isEnd)
        return;
    thread.waitForConnection(); // that of the next request
    clock.restart();
    check.reset();
    QVERIFY2(clock.elapsed() < kAtOnce, qPrintable(QString::number(clock.elapsed())));
}

void TstVersionBlocking::aRenewedAccessIsAnotherOne()
{
    int made = 0;
    WebAccess web(nullptr, [&made] {
        ++made;
        return new QNetworkAccessManager;
    });
    web.renew();
    QCOMPARE(made, 0);
    const QNetworkAccessManager *first = &web.network();
    QCOMPARE(&web.network(), first);
    web.renew();
    QVERIFY(&web.network() != first);
    QCOMPARE(made, 2);
}

void TstVersionBlocking::whatIsLeftGoesWithItsReplies()
{
    auto web = std::make_unique<WebAccess>();
    const QPointer<QNetworkAccessManager> first = &web->network();
    const QPointer<QNetworkReply> reply =
        first->get(QNetworkRequest(QUrl(QStringLiteral("https://127.0.0.1:9"))));
    web->renew();
    QVERIFY(first && reply); // whoever has the reply may still look at it
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!first && !reply);
    const QPointer<QNetworkAccessManager> second = &web->network();
    web->renew();
    web.reset();
    QVERIFY(!second); // though no turn of the loop came
}

QTEST_GUILESS_MAIN(TstVersionBlocking)

#include "tst_versionblocking.moc"
