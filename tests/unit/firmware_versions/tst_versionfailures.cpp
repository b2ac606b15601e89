#include "support/httpsserver.h"
#include "support/messagecatcher.h"
#include "support/plainlog.h"
#include "versionfixture.h"

#include <QElapsedTimer>
#include <QSemaphore>
#include <QtTest>
#include <memory>

using Manner = HttpsAnswer::Manner;

namespace {

const QByteArray kGoodFile = "vxconfig v1.1.63\n";
constexpr qint64 kAtOnce = 4500; ///< ms; generous to a busy machine, and less than any wait

} // namespace

class TstVersionFailures : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void aServerThatIsNotThereEndsTheSequence();
    void aBadAnswerEndsTheSequence_data();
    void aBadAnswerEndsTheSequence();
    void aBadAnswerOnTheFirmwareEndsTheSequence_data();
    void aBadAnswerOnTheFirmwareEndsTheSequence();
    void hostileContentsHoldNoVersion_data();
    void hostileContentsHoldNoVersion();
    void aSilentServerIsGivenUp_data();
    void aSilentServerIsGivenUp();
    void anEndlessHeadIsGivenUp_data();
    void anEndlessHeadIsGivenUp();
    void aServerThatSpeaksAgainIsHeard();
    void withoutAHostNothingIsContacted();
    void anUnknownNameIsAFailedContact();
    void aLookUpThatHangsIsAFailedContact();
    void theLookUpBeginsWithTheDelay();
    void theEndIsSilentAndAtOnce_data();
    void theEndIsSilentAndAtOnce();
    void theEndDoesNotWaitForALookUp();

private:
    TestCertificates m_certificates;
    CertifiedKey m_identity;
    std::unique_ptr<HttpsServer> m_server;
};

void TstVersionFailures::initTestCase()
{
    m_certificates.trustAuthority();
    m_identity = m_certificates.certified(QStringLiteral("DNS:localhost,IP:127.0.0.1"));
}

void TstVersionFailures::init()
{
    m_server = std::make_unique<HttpsServer>(m_identity);
}

void TstVersionFailures::aServerThatIsNotThereEndsTheSequence()
{
    // Nobody else listens at this address, so the port is free there.
    RecordedCheck check({QStringLiteral("127.127.127.126"), m_server->serverPort()});
    const MessageCatcher log;
    check.checker.fetchVersion();
    check.time.advance(1000);
    const QStringList expected{kRequesting, kFailed};
    QCOMPARE(check.eventsLike(expected), expected);
    QCOMPARE(plainLog(log.lines(QtDebugMsg)), QStringLiteral("ERROR! Connection refused"));
    check.time.advance(100000);
    QCOMPARE(check.events, expected);
}

void TstVersionFailures::aBadAnswerEndsTheSequence_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<Manner>("manner");
    QTest::addColumn<QByteArray>("status");
    QTest::newRow("not found") << kGoodFile << Manner::Whole << QByteArray("404 Not Found");
    QTest::newRow("server's error") << kGoodFile << Manner::Whole << QByteArray("500 Internal Server Error");
    QTest::newRow("closed in the middle") << kGoodFile << Manner::BrokenOff << QByteArray("200 OK");
    QTest::newRow("endless line") << QByteArray(4096, 'x') << Manner::Endless << QByteArray("200 OK");
    QTest::newRow("endless good lines") << kGoodFile.repeated(100) << Manner::Endless << QByteArray("200 OK");
    QTest::newRow("a byte more than one MiB")
        << kGoodFile + QByteArray(1048577 - kGoodFile.size(), 'x') << Manner::Whole << QByteArray("200 OK");
}

void TstVersionFailures::aBadAnswerEndsTheSequence()
{
    QFETCH(QByteArray, contents);
    QFETCH(Manner, manner);
    QFETCH(QByteArray, status);
    m_server->setAnswer(kConfiguratorPath, {contents, manner, status, {}});
    RecordedCheck check({kLoopback, m_server->serverPort()});
    const MessageCatcher log;
    check.checker.fetchVersion();
    check.time.advance(1000);
    const QStringList expected{kRequesting, kFailed};
    QCOMPARE(check.eventsLike(expected), expected);
    const QStringList lines = log.lines(QtDebugMsg);
    QVERIFY(lines.last().startsWith(QLatin1String("ERROR! \"")));
    QVERIFY(lines.last().size() > int(qstrlen("ERROR! \"\"")));
    QVERIFY(!plainLog(lines).contains(QLatin1String("Message from Server")));
    check.time.advance(100000);
    QCOMPARE(check.events, expected);
    QVERIFY(happens([this] { return m_server->openConnections() == 0; }));
}

void TstVersionFailures::aBadAnswerOnTheFirmwareEndsTheSequence_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<Manner>("manner");
    QTest::addColumn<QByteArray>("status");
    const QByteArray line = "14.03.24  1.2.3  text\n";
    QTest::newRow("not found") << line << Manner::Whole << QByteArray("404 Not Found");
    QTest::newRow("closed in the middle") << line << Manner::BrokenOff << QByteArray("200 OK");
    QTest::newRow("endless") << line << Manner::Endless << QByteArray("200 OK");
    QTest::newRow("a byte more than one MiB")
        << line + QByteArray(1048577 - line.size(), 'x') << Manner::Whole << QByteArray("200 OK");
}

void TstVersionFailures::aBadAnswerOnTheFirmwareEndsTheSequence()
{
    QFETCH(QByteArray, contents);
    QFETCH(Manner, manner);
    QFETCH(QByteArray, status);
    m_server->setAnswer(kConfiguratorPath, {kGoodFile});
    m_server->setAnswer(kFirmwarePath, {contents, manner, status, {}});
    RecordedCheck check({kLoopback, m_server->serverPort()});
    const MessageCatcher log;
    check.checker.fetchVersion();
    check.time.advance(1000);
    QTRY_VERIFY(check.events.contains(QStringLiteral("firmwareFetch")));
    check.time.advance(1000);
    const QStringList expected{kRequesting,     kContact,         "versionNo vxconfig v1.1.63",
                               "firmwareFetch", kFirmwareRequest, kFailed};
    QCOMPARE(check.eventsLike(expected), expected);
    QVERIFY(log.lines().last().startsWith(QLatin1String("ERROR! \"")));
}

void TstVersionFailures::hostileContentsHoldNoVersion_data()
{
    QTest::addColumn<QByteArray>("contents");
    QByteArray binary;
    quint32 state = 12345;
    for (int i = 0; i < 200000; ++i) {
        state = state * 1664525U + 1013904223U;
        binary.append(char(state >> 24));
    }
    QTest::newRow("one MiB without a line end") << QByteArray(1048576, 'x');
    QTest::newRow("one MiB of line ends") << QByteArray(1048576, '\n');
    QTest::newRow("one MiB of blanks") << QByteArray(1048576, ' ');
    QTest::newRow("one MiB of zeros") << QByteArray(1048576, '\0');
    QTest::newRow("binary") << binary;
    QTest::newRow("no UTF-8") << QByteArray("\xff\xfe\xc0\x80\n").repeated(1000);
}

void TstVersionFailures::hostileContentsHoldNoVersion()
{
    QFETCH(QByteArray, contents);
    m_server->setAnswer(kConfiguratorPath, {contents});
    m_server->setAnswer(kFirmwarePath, {contents});
    RecordedCheck check({kLoopback, m_server->serverPort()});
    const MessageCatcher log;
    check.checker.vxConfigRequest();
    QStringList expected{kRequesting, kContact};
    QCOMPARE(check.eventsLike(expected), expected);
    check.checker.firmwareRequest();
    expected << kFirmwareRequest << kFirmwareFetched;
    QCOMPARE(check.eventsLike(expected), expected);
}

void TstVersionFailures::aSilentServerIsGivenUp_data()
{
    QTest::addColumn<bool>("isEncrypted");
    QTest::addColumn<bool>("isFirmware");
    QTest::newRow("no encryption") << false << false;
    QTest::newRow("no answer") << true << false;
    QTest::newRow("no encryption, firmware") << false << true;
    QTest::newRow("no answer, firmware") << true << true;
}

void TstVersionFailures::aSilentServerIsGivenUp()
{
    QFETCH(bool, isEncrypted);
    QFETCH(bool, isFirmware);
    m_server->setAnswer(isFirmware ? kFirmwarePath : kConfiguratorPath, {kGoodFile, Manner::Never});
    if (!isEncrypted)
        m_server->setSilent(true);
    RecordedCheck check({kLoopback, m_server->serverPort()});
    const MessageCatcher log;
    if (isFirmware)
        check.checker.firmwareRequest();
    else
        check.checker.vxConfigRequest();
    QVERIFY(happens([this, isEncrypted] {
        return isEncrypted ? !m_server->requests().isEmpty() : !m_server->unanswered().isEmpty();
    }));

    SystemTime systemTime;
    int ticks = 0;
    Timer *ticking = systemTime.createTimer(this);
    connect(ticking, &Timer::timeout, this, [&ticks] { ++ticks; });
    ticking->start(std::chrono::milliseconds(1));
    QVERIFY(happens([&ticks] { return ticks >= 20; })); // the event loop goes on
    delete ticking;

    const QString requesting = isFirmware ? kFirmwareRequest : kRequesting;
    check.time.advance(9999);
    QCOMPARE(check.events, QStringList{requesting});
    check.time.advance(1);
    const QStringList expected{requesting, kFailed};
    QCOMPARE(check.events, expected);
    QVERIFY(log.lines().last().startsWith(QLatin1String("ERROR! \"")));
    QVERIFY(happens([this] { return m_server->openConnections() == 0; }));
    check.time.advance(100000);
    QCOMPARE(check.events, expected);
}

void TstVersionFailures::anEndlessHeadIsGivenUp_data()
{
    QTest::addColumn<QByteArray>("status");
    QTest::addColumn<QByteArray>("contents");
    QTest::newRow("status line") << QByteArray("200 ") << QByteArray(4096, 'x');
    QTest::newRow("header") << QByteArray("200 OK\r\nX: ") << QByteArray(4096, 'x');
    QTest::newRow("headers") << QByteArray("200 OK\r\n") << QByteArray("X: x\r\n").repeated(500);
    QTest::newRow("preliminary heads")
        << QByteArray("100 Continue\r\n\r\n") << QByteArray("HTTP/1.1 100 Continue\r\n\r\n").repeated(100);
}

void TstVersionFailures::anEndlessHeadIsGivenUp()
{
    QFETCH(QByteArray, status);
    QFETCH(QByteArray, contents);
    m_server->setAnswer(kConfiguratorPath, {contents, Manner::NoHeadEnd, status, {}});
    RecordedCheck check({kLoopback, m_server->serverPort()});
    const MessageCatcher log;
    check.checker.vxConfigRequest();
    QVERIFY(happens([this] { return m_server->requests().size() == 1; }));
    check.time.advance(9999);
    QCOMPARE(check.events, QStringList{kRequesting});
    check.time.advance(1);
    QCOMPARE(check.events, QStringList({kRequesting, kFailed}));
    QVERIFY(happens([this] { return m_server->openConnections() == 0; }));
}

void TstVersionFailures::aServerThatSpeaksAgainIsHeard()
{
    m_server->setAnswer(kConfiguratorPath, {kGoodFile});
    m_server->setSilent(true);
    RecordedCheck check({kLoopback, m_server->serverPort()});
    const MessageCatcher log;
    check.checker.vxConfigRequest();
    QTRY_VERIFY(!m_server->unanswered().isEmpty());
    check.time.advance(10000);
    QStringList expected{kRequesting, kFailed};
    QCOMPARE(check.events, expected);
    m_server->setSilent(false);
    check.checker.vxConfigRequest();
    expected << kRequesting << kContact << "versionNo vxconfig v1.1.63"
             << "firmwareFetch";
    QCOMPARE(check.eventsLike(expected), expected);
}

void TstVersionFailures::withoutAHostNothingIsContacted()
{
    RecordedCheck check({QString(), m_server->serverPort()},
                        [](const QString &) { return infoOf({kLoopback}); });
    const MessageCatcher log;
    check.checker.fetchVersion();
    check.time.advance(1000);
    QCOMPARE(check.events, QStringList({kRequesting, kFailed}));
    QVERIFY(log.lines().last().startsWith(QLatin1String("ERROR! \"")));
    QCOMPARE(check.time.activeTimers(), 0);
}

void TstVersionFailures::anUnknownNameIsAFailedContact()
{
    RecordedCheck check({QStringLiteral("nobody.example"), m_server->serverPort()},
                        [](const QString &) { return QHostInfo(); });
    const MessageCatcher log;
    check.checker.fetchVersion();
    check.time.advance(1000);
    QTRY_COMPARE((check.time.advance(50), check.events), QStringList({kRequesting, kFailed}));
    QVERIFY(plainLog(log.lines()).contains(QLatin1String("ERROR! Host nobody.example not found")));
    QCOMPARE(check.time.activeTimers(), 0);
}

void TstVersionFailures::aLookUpThatHangsIsAFailedContact()
{
    const auto mayEnd = std::make_shared<QSemaphore>();
    RecordedCheck check({QStringLiteral("localhost"), m_server->serverPort()}, [mayEnd](const QString &) {
        mayEnd->acquire();
        return infoOf({kLoopback});
    });
    const MessageCatcher log;
    QElapsedTimer clock;
    clock.start();
    check.checker.fetchVersion();
    check.time.advance(1000);
    check.time.advance(29999);
    QCOMPARE(check.events, QStringList{kRequesting});
    check.time.advance(1);
    QCOMPARE(check.events, QStringList({kRequesting, kFailed}));
    QVERIFY(clock.elapsed() < kAtOnce);
    QCOMPARE(check.time.activeTimers(), 0);
    mayEnd->release();
}

void TstVersionFailures::theLookUpBeginsWithTheDelay()
{
    const auto begun = std::make_shared<QSemaphore>();
    RecordedCheck check({QStringLiteral("localhost"), m_server->serverPort()}, [begun](const QString &) {
        begun->release();
        return infoOf({kLoopback});
    });
    check.checker.fetchVersion();
    QVERIFY(begun->tryAcquire(1, 20000));
    QCOMPARE(check.events, QStringList());
    check.checker.fetchVersion(); // takes the same look-up
    m_server->setAnswer(kConfiguratorPath, {{}});
    check.time.advance(1000);
    QTRY_COMPARE((check.time.advance(5), check.events), QStringList({kRequesting, kContact}));
    QCOMPARE(begun->available(), 0);
}

void TstVersionFailures::theEndIsSilentAndAtOnce_data()
{
    QTest::addColumn<Manner>("manner");
    QTest::addColumn<bool>("isEncrypted");
    QTest::newRow("during the encryption") << Manner::Whole << false;
    QTest::newRow("before the answer") << Manner::Never << true;
    QTest::newRow("during the answer") << Manner::InPieces << true;
}

void TstVersionFailures::theEndIsSilentAndAtOnce()
{
    QFETCH(Manner, manner);
    QFETCH(bool, isEncrypted);
    m_server->setAnswer(kConfiguratorPath,
                        {kGoodFile.repeated(50000), manner}); // too long to be sent in pieces
    if (!isEncrypted)
        m_server->setSilent(true);
    auto check = std::make_unique<RecordedCheck>(VersionServer{kLoopback, m_server->serverPort()});
    int messages = 0;
    connect(&check->checker, &VersionChecker::debugMessage, this, [&messages] { ++messages; });
    const MessageCatcher log;
    check->checker.fetchVersion();
    check->time.advance(1000);
    QTRY_VERIFY(isEncrypted ? !m_server->requests().isEmpty() : !m_server->unanswered().isEmpty());
    QCOMPARE(messages, 1);
    QElapsedTimer clock;
    clock.start();
    check.reset();
    QVERIFY(clock.elapsed() < kAtOnce);
    QVERIFY(happens([this] { return m_server->openConnections() == 0; }));
    QCOMPARE(messages, 1);
    QCOMPARE(log.lines(), QStringList());
}

void TstVersionFailures::theEndDoesNotWaitForALookUp()
{
    const auto begun = std::make_shared<QSemaphore>();
    const auto mayEnd = std::make_shared<QSemaphore>();
    const MessageCatcher log;
    QElapsedTimer clock;
    clock.start();
    {
        RecordedCheck check({QStringLiteral("localhost"), m_server->serverPort()},
                            [begun, mayEnd](const QString &) {
                                begun->release();
                                mayEnd->acquire();
                                return infoOf({kLoopback});
                            });
        check.checker.fetchVersion();
        check.time.advance(2000);
        QCOMPARE(check.events, QStringList{kRequesting});
    }
    QVERIFY(clock.elapsed() < kAtOnce);
    QVERIFY(begun->tryAcquire(1, 20000)); // it did hang
    mayEnd->release();
    QTRY_COMPARE(mayEnd.use_count(), 1L); // and its answer reaches nobody
    QCOMPARE(m_server->connections(), 0);
    QCOMPARE(log.lines(), QStringList());
}

QTEST_GUILESS_MAIN(TstVersionFailures)
#include "tst_versionfailures.moc"
