#include "fakereply.h"
#include "support/httpsserver.h"
#include "support/messagecatcher.h"
#include "support/plainlog.h"
#include "versionfixture.h"

#include <QPointer>
#include <QtTest>
#include <optional>

class TstVersionChecker : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void bothFilesAreFetchedOneAfterTheOther();
    void theLogTellsOfTheContact();
    void longTextsOfTheServerAreShownCut();
    void aLongErrorIsShownCut();
    void theRequestsNameTheServer();
    void theServerIsNamedBeforeTheEncryption();
    void aServerIsSoughtAtEachOfItsAddresses();
    void aServerThatHangsIsLeftForItsNextAddress();
    void theFirstLineThatNamesTheProductCounts_data();
    void theFirstLineThatNamesTheProductCounts();
    void withoutAVersionTheFirmwareIsNotRequested_data();
    void withoutAVersionTheFirmwareIsNotRequested();
    void aDatedLineIsAFirmwareVersion_data();
    void aDatedLineIsAFirmwareVersion();
    void aFileInPiecesIsReadWhole();
    void aRequestWithinTheDelayStartsItAnew();
    void aSecondSequenceTakesTheFirstOnesPlace();
    void theFirmwareIsRequestedOnceAtATime();
    void requestsThatHangAreLeftForTheNext_data();
    void requestsThatHangAreLeftForTheNext();
    void aReplyIsDeletedAfterIt_data();
    void aReplyIsDeletedAfterIt();

private:
    TestCertificates m_certificates;
    CertifiedKey m_identity;
    std::unique_ptr<HttpsServer> m_server;
};

void TstVersionChecker::initTestCase()
{
    m_certificates.trustAuthority();
    m_identity = m_certificates.certified(QStringLiteral("DNS:localhost,IP:127.0.0.1"));
}

void TstVersionChecker::init()
{
    m_server = std::make_unique<HttpsServer>(m_identity);
}

void TstVersionChecker::bothFilesAreFetchedOneAfterTheOther()
{
    m_server->setAnswer(kConfiguratorPath, {"vxconfig v1.1.63\n"});
    m_server->setAnswer(kFirmwarePath, {"14.03.24  1.2.3  *note\n02.02.24  1.2.2  text\n"});
    RecordedCheck check({kLoopback, m_server->serverPort()});
    check.checker.fetchVersion();
    check.time.advance(999);
    QCOMPARE(check.events, QStringList());
    check.time.advance(1);
    QStringList expected{kRequesting};
    QCOMPARE(check.events, expected);
    expected << kContact << "versionNo vxconfig v1.1.63"
             << "firmwareFetch";
    QCOMPARE(check.eventsLike(expected), expected);
    check.time.advance(999);
    QCOMPARE(check.events, expected);
    QCOMPARE(m_server->requests().size(), 1);
    check.time.advance(1);
    expected << kFirmwareRequest;
    QCOMPARE(check.events, expected);
    expected << kFirmwareFetched << "debugMessage 14.03.24  1.2.3  *note"
             << "frmwrVersion 1.2.3 1"
             << "debugMessage 02.02.24  1.2.2  text"
             << "frmwrVersion 1.2.2 0";
    QCOMPARE(check.eventsLike(expected), expected);
    check.time.advance(100000);
    QCOMPARE(check.events, expected);
    QCOMPARE(check.time.activeTimers(), 0);
}

void TstVersionChecker::theLogTellsOfTheContact()
{
    m_server->setAnswer(kConfiguratorPath, {"a vxconfig v1.1.63\r\nmore\r\n"});
    RecordedCheck check({kLoopback, m_server->serverPort()});
    const MessageCatcher log;
    check.checker.vxConfigRequest();
    QTRY_VERIFY(check.events.contains(QStringLiteral("firmwareFetch")));
    QCOMPARE(plainLog(log.lines(QtDebugMsg)),
             QStringLiteral(" Server: line is detected a vxconfig v1.1.63\\r\n"
                            "Contacted VXConfig Server1\n"
                            "****Message from Server: a vxconfig v1.1.63\\r\n"
                            "a vxconfig v1.1.6"));
}

void TstVersionChecker::longTextsOfTheServerAreShownCut()
{
    const QString line = QStringLiteral("vxconfig v") + QString(700, 'x');
    const QString entry = QStringLiteral("14.03.24  ") + QString(700, 'y') + QStringLiteral("  *");
    RecordedCheck check({kLoopback, m_server->serverPort()});
    const MessageCatcher log;
    check.checker.vxConfigReply(new FakeReply(line.toUtf8() + '\n'));
    check.checker.firmwareReply(new FakeReply(entry.toUtf8()));
    QCOMPARE(plainLog(log.lines(QtDebugMsg)), QStringLiteral(" Server: line is detected %1\n"
                                                             "Contacted VXConfig Server1\n"
                                                             "****Message from Server: %1\n"
                                                             "%1")
                                                  .arg(line.left(500)));
    QCOMPARE(check.events,
             QStringList({kContact, "versionNo " + line, "firmwareFetch", kFirmwareFetched,
                          "debugMessage " + entry.left(500), "frmwrVersion " + QString(700, 'y') + " 1"}));
}

void TstVersionChecker::aLongErrorIsShownCut()
{
    RecordedCheck check({kLoopback, m_server->serverPort()});
    for (const auto slot : {&VersionChecker::vxConfigReply, &VersionChecker::firmwareReply}) {
        const MessageCatcher log;
        auto *reply = new FakeReply;
        reply->setFailed(QNetworkReply::UnknownServerError, QString(3000000, 'x'));
        (check.checker.*slot)(reply);
        QCOMPARE(plainLog(log.lines(QtDebugMsg)), QStringLiteral("ERROR! ") + QString(500, 'x'));
    }
}

void TstVersionChecker::theRequestsNameTheServer()
{
    m_server->setAnswer(kConfiguratorPath, {"vxconfig v1.1.63\n"});
    m_server->setAnswer(kFirmwarePath, {"14.03.24  1.2.3  text\n"});
    RecordedCheck check({QStringLiteral("localhost"), m_server->serverPort()},
                        [](const QString &) { return infoOf({kLoopback}); });
    check.checker.fetchVersion();
    check.time.advance(1000);
    QTRY_VERIFY((check.time.advance(5), check.events.contains(QStringLiteral("firmwareFetch"))));
    check.time.advance(1000);
    QTRY_VERIFY((check.time.advance(5), check.events.contains(QStringLiteral("frmwrVersion 1.2.3 0"))));
    QCOMPARE(m_server->requests().size(), 2);
    const QByteArray host = "\r\nHost: localhost:" + QByteArray::number(m_server->serverPort()) + "\r\n";
    QVERIFY(m_server->requests().at(0).startsWith("GET " + kConfiguratorPath + " HTTP/1.1\r\n"));
    QVERIFY(m_server->requests().at(0).contains(host));
    QVERIFY(m_server->requests().at(1).startsWith("GET " + kFirmwarePath + " HTTP/1.1\r\n"));
    QVERIFY(m_server->requests().at(1).contains(host));
}

void TstVersionChecker::theServerIsNamedBeforeTheEncryption()
{
    m_server->setSilent(true);
    RecordedCheck check({QStringLiteral("version.files.example"), m_server->serverPort()},
                        [](const QString &) { return infoOf({kLoopback}); });
    check.checker.vxConfigRequest();
    QTRY_VERIFY((check.time.advance(5), m_server->unanswered().contains("version.files.example")));
    QVERIFY(!m_server->unanswered().contains("vxconfig.txt")); // which is for the server alone
}

void TstVersionChecker::aServerIsSoughtAtEachOfItsAddresses()
{
    m_server->setAnswer(kConfiguratorPath, {"vxconfig v1.1.63\n"});
    RecordedCheck check({QStringLiteral("localhost"), m_server->serverPort()}, [](const QString &) {
        return infoOf({QStringLiteral("127.127.127.127"), kLoopback}); // nobody listens there
    });
    check.checker.vxConfigRequest();
    const QStringList expected{kRequesting, kContact, "versionNo vxconfig v1.1.63", "firmwareFetch"};
    QTRY_COMPARE((check.time.advance(5), check.events.mid(0, 4)), expected);
}

void TstVersionChecker::aServerThatHangsIsLeftForItsNextAddress()
{
    m_server->setSilent(true);
    HttpsServer healthy(m_identity, QHostAddress(QStringLiteral("127.127.127.127")), m_server->serverPort());
    healthy.setAnswer(kConfiguratorPath, {"vxconfig v1.1.63\n"});
    RecordedCheck check({QStringLiteral("localhost"), m_server->serverPort()}, [](const QString &) {
        return infoOf({kLoopback, QStringLiteral("127.127.127.127")});
    });
    const MessageCatcher log;
    check.checker.vxConfigRequest();
    QTRY_VERIFY((check.time.advance(5), !m_server->unanswered().isEmpty()));
    check.time.advance(5000);
    QVERIFY(happens([this] { return m_server->openConnections() == 0; }));
    const QStringList expected{kRequesting, kContact, "versionNo vxconfig v1.1.63", "firmwareFetch"};
    QTRY_COMPARE(check.events.mid(0, 4), expected);
    QCOMPARE(m_server->connections(), 1);
    QVERIFY(log.lines().first().startsWith(QLatin1String(" Server: line is detected"))); // nothing before it
}

void TstVersionChecker::theFirstLineThatNamesTheProductCounts_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("version");
    QTest::newRow("LF") << QByteArray("vxconfig v1.1.63\n") << "vxconfig v1.1.63";
    QTest::newRow("CR LF: the CR stays") << QByteArray("vxconfig v1.1.63\r\n") << "vxconfig v1.1.63\r";
    QTest::newRow("no line end") << QByteArray("vxconfig v1.1.63") << "vxconfig v1.1.63";
    QTest::newRow("two numbers") << QByteArray("vxconfig v1.1\n") << "vxconfig v1.1";
    QTest::newRow("second line") << QByteArray("hello\r\n\r\nvxconfig v2.0.0\r\n") << "vxconfig v2.0.0\r";
    QTest::newRow("first of two") << QByteArray("vxconfig v2.0.0\nvxconfig v3.0.0\n") << "vxconfig v2.0.0";
    QTest::newRow("behind the product's name alone: the end is lost")
        << QByteArray("vxconfig: vxconfig v3.0.0\n") << "vxconfig: vxconf";
    QTest::newRow("behind other text: the end is lost")
        << QByteArray("xyz vxconfig v1.1.63\n") << "xyz vxconfig v1.1";
    QTest::newRow("so far behind that nothing is left")
        << QByteArray("0123456789vxconfig v\r") << "0123456789v";
    QTest::newRow("UTF-8") << QByteArray("vxconfig v1.1.63 \xc3\xa4\n")
                           << QString::fromUtf8("vxconfig v1.1.63 \xc3\xa4");
}

void TstVersionChecker::theFirstLineThatNamesTheProductCounts()
{
    QFETCH(QByteArray, contents);
    QFETCH(QString, version);
    m_server->setAnswer(kConfiguratorPath, {contents});
    RecordedCheck check({kLoopback, m_server->serverPort()});
    check.checker.vxConfigRequest();
    const QStringList expected{kRequesting, kContact, QStringLiteral("versionNo ") + version,
                               "firmwareFetch"};
    QCOMPARE(check.eventsLike(expected), expected);
}

void TstVersionChecker::withoutAVersionTheFirmwareIsNotRequested_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("log");
    const QString tail = QStringLiteral("Contacted VXConfig Server1\n****Message from Server: ");
    QTest::newRow("empty") << QByteArray() << tail;
    QTest::newRow("another product") << QByteArray("other v1.1.63\nthe rest")
                                     << tail + QStringLiteral("the rest");
    QTest::newRow("without the v") << QByteArray("vxconfig 1.1.63\nvxconfig v1.1.63\n")
                                   << QStringLiteral(" Server: line is detected vxconfig 1.1.63\\n\n") +
                                          tail + QStringLiteral("vxconfig 1.1.63\\n");
    QTest::newRow("capital letters") << QByteArray("VXConfig v1.1.63\n") << tail;
    QTest::newRow("broken over two lines")
        << QByteArray("vxconfig\nv1.1.63\n")
        << QStringLiteral(" Server: line is detected vxconfig\\n\n") + tail + QStringLiteral("vxconfig\\n");
}

void TstVersionChecker::withoutAVersionTheFirmwareIsNotRequested()
{
    QFETCH(QByteArray, contents);
    QFETCH(QString, log);
    m_server->setAnswer(kConfiguratorPath, {contents});
    RecordedCheck check({kLoopback, m_server->serverPort()});
    const MessageCatcher messages;
    check.checker.fetchVersion();
    check.time.advance(1000);
    const QStringList expected{kRequesting, kContact};
    QCOMPARE(check.eventsLike(expected), expected);
    check.time.advance(100000);
    QCOMPARE(check.events, expected);
    QCOMPARE(plainLog(messages.lines()), log);
}

void TstVersionChecker::aDatedLineIsAFirmwareVersion_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QStringList>("expected");
    const QByteArray line = "14.03.24  1.2.3  text\n";
    const QStringList one{"debugMessage 14.03.24  1.2.3  text", "frmwrVersion 1.2.3 0"};
    QTest::newRow("impossible date") << QByteArray("31.02.24  1.2.3  text\n") + line << one;
    QTest::newRow("no date") << QByteArray("note  1.2.3  text\n") + line << one;
    QTest::newRow("CR LF") << QByteArray("14.03.24  1.2.3  text\r\n") << one;
    QTest::newRow("no line end") << QByteArray("14.03.24  1.2.3  text") << one;
    QTest::newRow("two parts") << QByteArray("14.03.24  1.2.3\n") << QStringList();
    QTest::newRow("single blanks") << QByteArray("14.03.24 1.2.3 text\n") << QStringList();
    QTest::newRow("empty part") << QByteArray("14.03.24    1.2.3\n")
                                << QStringList{"debugMessage 14.03.24    1.2.3", "frmwrVersion  0"};
    QTest::newRow("third part empty")
        << QByteArray("14.03.24  1.2.3  \n")
        << QStringList{"debugMessage 14.03.24  1.2.3  ", "frmwrVersion 1.2.3 0"};
    QTest::newRow("mark not in front")
        << QByteArray("14.03.24  1.2.3  a*\n")
        << QStringList{"debugMessage 14.03.24  1.2.3  a*", "frmwrVersion 1.2.3 0"};
    QTest::newRow("tenth line") << QByteArray(9, '\n') + line << one;
    QTest::newRow("eleventh line") << QByteArray(10, '\n') + line << QStringList();
    QTest::newRow("empty") << QByteArray() << QStringList();
}

void TstVersionChecker::aDatedLineIsAFirmwareVersion()
{
    QFETCH(QByteArray, contents);
    QFETCH(QStringList, expected);
    m_server->setAnswer(kFirmwarePath, {contents});
    RecordedCheck check({kLoopback, m_server->serverPort()});
    check.checker.firmwareRequest();
    expected = QStringList({kFirmwareRequest, kFirmwareFetched}) + expected;
    QCOMPARE(check.eventsLike(expected), expected);
}

void TstVersionChecker::aFileInPiecesIsReadWhole()
{
    m_server->setAnswer(kConfiguratorPath, {"hello\r\nvxconfig v1.1.63\n", HttpsAnswer::Manner::InPieces});
    RecordedCheck check({kLoopback, m_server->serverPort()});
    check.checker.vxConfigRequest();
    const QStringList expected{kRequesting, kContact, "versionNo vxconfig v1.1.63", "firmwareFetch"};
    QCOMPARE(check.eventsLike(expected), expected);
}

void TstVersionChecker::aRequestWithinTheDelayStartsItAnew()
{
    RecordedCheck check({QString(), 443});
    check.checker.fetchVersion();
    check.time.advance(600);
    check.checker.fetchVersion();
    check.time.advance(999);
    QCOMPARE(check.events, QStringList());
    check.time.advance(1);
    QCOMPARE(check.events.count(kRequesting), 1);
    check.time.advance(100000);
    QCOMPARE(check.events.count(kRequesting), 1);
}

void TstVersionChecker::aSecondSequenceTakesTheFirstOnesPlace()
{
    m_server->setAnswer(kConfiguratorPath, {{}, HttpsAnswer::Manner::Never});
    RecordedCheck check({kLoopback, m_server->serverPort()});
    const MessageCatcher log;
    check.checker.fetchVersion();
    check.time.advance(1000);
    QVERIFY(happens([this] { return m_server->requests().size() == 1; }));
    m_server->setAnswer(kConfiguratorPath, {"vxconfig v1.1.63\n"});
    check.checker.fetchVersion();
    check.time.advance(999);
    QCOMPARE(m_server->openConnections(), 1); // until the second one begins
    check.time.advance(1);
    QStringList expected{kRequesting, kRequesting, kContact, "versionNo vxconfig v1.1.63", "firmwareFetch"};
    QCOMPARE(check.eventsLike(expected), expected);
    QVERIFY(happens([this] { return m_server->openConnections() == 0; }));
    check.time.advance(1000);
    expected << kFirmwareRequest << kFailed; // the server has no such file
    QCOMPARE(check.eventsLike(expected), expected);
    check.time.advance(100000);
    QCOMPARE(check.events, expected);
    QCOMPARE(plainLog(log.lines()).count(QLatin1String("ERROR!")), 1);
}

void TstVersionChecker::theFirmwareIsRequestedOnceAtATime()
{
    m_server->setAnswer(kConfiguratorPath, {{}, HttpsAnswer::Manner::Never});
    m_server->setAnswer(kFirmwarePath, {{}, HttpsAnswer::Manner::Never});
    RecordedCheck check({kLoopback, m_server->serverPort()});
    check.checker.vxConfigRequest();
    check.checker.firmwareRequest();
    QTRY_COMPARE(m_server->requests().size(), 2);
    m_server->setAnswer(kFirmwarePath, {"14.03.24  1.2.3  text\n"});
    check.checker.firmwareRequest();
    const QStringList expected{kRequesting,
                               kFirmwareRequest,
                               kFirmwareRequest,
                               kFirmwareFetched,
                               "debugMessage 14.03.24  1.2.3  text",
                               "frmwrVersion 1.2.3 0"};
    QCOMPARE(check.eventsLike(expected), expected);
    QTRY_COMPARE(m_server->openConnections(), 1); // that for the other file stays
}

void TstVersionChecker::requestsThatHangAreLeftForTheNext_data()
{
    QTest::addColumn<int>("hanging");
    QTest::newRow("one") << 1;
    QTest::newRow("more than the connections to a host") << 7;
}

void TstVersionChecker::requestsThatHangAreLeftForTheNext()
{
    QFETCH(int, hanging);
    m_server->setAnswer(kConfiguratorPath, {"vxconfig v1.1.63\n"});
    m_server->setSilent(true);
    RecordedCheck check({kLoopback, m_server->serverPort()});
    QStringList expected;
    for (int count = 1; count <= hanging; ++count) {
        check.checker.vxConfigRequest();
        expected << kRequesting;
        QVERIFY(happens([this, count] { return m_server->connections() == count; }));
        QVERIFY(happens([this] { return m_server->openConnections() == 1; }));
    }
    QTRY_VERIFY(!m_server->unanswered().isEmpty()); // within the encryption
    m_server->setSilent(false);
    check.checker.vxConfigRequest();
    expected << kRequesting << kContact << "versionNo vxconfig v1.1.63"
             << "firmwareFetch";
    QCOMPARE(check.eventsLike(expected), expected);
    QVERIFY(happens([this] { return m_server->openConnections() == 0; }));
    check.time.turn();
    QCOMPARE(check.time.activeTimers(), 1); // for the firmware; those that were dropped have none
}

void TstVersionChecker::aReplyIsDeletedAfterIt_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<bool>("hasFailed");
    QTest::newRow("good") << QByteArray("vxconfig v1.1.63\n") << false;
    QTest::newRow("nothing in it") << QByteArray() << false;
    QTest::newRow("failed") << QByteArray("vxconfig v1.1.63\n") << true;
}

void TstVersionChecker::aReplyIsDeletedAfterIt()
{
    QFETCH(QByteArray, contents);
    QFETCH(bool, hasFailed);
    for (const auto slot : {&VersionChecker::vxConfigReply, &VersionChecker::firmwareReply}) {
        RecordedCheck check({kLoopback, m_server->serverPort()});
        const MessageCatcher log;
        const QPointer<FakeReply> reply = new FakeReply(contents);
        if (hasFailed)
            reply->setFailed(QNetworkReply::UnknownServerError, QStringLiteral("the reason"));
        (check.checker.*slot)(reply);
        QCOMPARE(check.events == QStringList{kFailed}, hasFailed);
        QCOMPARE(plainLog(log.lines(QtDebugMsg)) == QLatin1String("ERROR! the reason"), hasFailed);
        check.time.turn();
        QVERIFY(!reply);
    }
}

QTEST_GUILESS_MAIN(TstVersionChecker)
#include "tst_versionchecker.moc"
