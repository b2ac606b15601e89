#include "sessionfixture.h"

#include <QtTest>

/// Opening and closing the two links, and what it does to the session.
class TstOpening : public QObject
{
    Q_OBJECT

private slots:
    void init() { s = std::make_unique<SessionFixture>(); }
    void cleanup() { s.reset(); }

    void constructionMakesTheRecordsKnown_data(); // first: later tests make some known by using them
    void constructionMakesTheRecordsKnown();
    void constructionSendsNothing();
    void serialOpenStartsASession();
    void openPortIsClosedBeforeItIsOpenedAgain();
    void failedSerialOpenChangesNoTimer();
    void tcpOpenStartsASession();
    void repliesOverTcpLeadThroughTheSession();
    void refusedConnectLeavesACleanSlate();
    void refusedKindIsRememberedAndNothingOpened();
    void openingAgainInTheSameTurn();
    void otherLinkIsLeftFirst();
    void onlyTheActiveLinkCounts();
    void framesGoToTheActiveLinkOnly();
    void lostLinksAreReported();
    void writtenFramesAreReported();
    void timeOutsOfAClosedLinkEndInSilence();
    void nothingIsReportedWhileTheSessionDies();
    void settingsMayChangeWhileTheLinkOpens();

private:
    std::unique_ptr<SessionFixture> s;
};

void TstOpening::constructionMakesTheRecordsKnown_data()
{
    QTest::addColumn<bool>("known");
    for (const char *name : {"System_Status", "Fast_System_Status", "Module_Status", "Fast_Module_Status",
                             "QVector<Fast_Module_Status>", "Power_Status", "DatagramT1", "DatagramT2",
                             "DatagramT3", "FPGAfwCommand", "GroupCommand"})
        QTest::newRow(name) << true;
    QTest::newRow("NoRecord") << false;
}

void TstOpening::constructionMakesTheRecordsKnown()
{
    QFETCH(bool, known);
    QCOMPARE(QMetaType::type(QTest::currentDataTag()) != QMetaType::UnknownType, known);
}

void TstOpening::constructionSendsNothing()
{
    QCOMPARE(s->comm->state(), SessionState::SystemStatusAwaited);
    QVERIFY(!s->comm->isCommunicationChannelOpen());
    s->time.advance(20000);
    QCOMPARE(s->sent(), QList<QByteArray>());
    QCOMPARE(s->events, QStringList());
    QCOMPARE(s->serial->calls + s->tcp->calls, QStringList());
}

void TstOpening::serialOpenStartsASession()
{
    const auto settings = SessionFixture::serialSettings();
    QVERIFY(s->comm->OpenCommunicationChannel(settings));
    QCOMPARE(s->serial->settings, settings);
    QVERIFY(s->comm->isCommunicationChannelOpen());
    QCOMPARE(s->events, QStringList({QStringLiteral("CleanSlate"), QStringLiteral("packetSent"),
                                     QStringLiteral("DebugMsg(Connection established with serial port)")}));
    QCOMPARE(s->sent(), QList<QByteArray>{"0100000001"});
    QVERIFY(s->log.contains(QStringLiteral("INI Seq Request sent: 1")));
    QVERIFY(s->log.contains(QStringLiteral("Connection established with serial port")));
    QVERIFY(!s->log.contains(QStringLiteral("Close in OpenCommunication channel")));
}

void TstOpening::openPortIsClosedBeforeItIsOpenedAgain()
{
    s->bringTo(SessionState::Cyclic);
    QVERIFY(s->comm->OpenCommunicationChannel(SessionFixture::serialSettings()));
    QCOMPARE(s->serial->calls, QStringList({QStringLiteral("close"), QStringLiteral("open")}));
    QVERIFY(s->log.contains(QStringLiteral("Close in OpenCommunication channel")));
    QCOMPARE(s->comm->state(), SessionState::SystemStatusAwaited);
}

void TstOpening::failedSerialOpenChangesNoTimer()
{
    s->bringTo(SessionState::Cyclic);
    s->serial->opens = false;
    QVERIFY(!s->comm->OpenCommunicationChannel(SessionFixture::serialSettings()));
    QVERIFY(!s->comm->isCommunicationChannelOpen());
    QCOMPARE(s->takeEvents(), QStringList{QStringLiteral("passRetryPort")});
    QCOMPARE(s->comm->state(), SessionState::Cyclic);
    s->serial->opens = true;
    s->serial->Open();
    s->time.advance(500);
    QCOMPARE(s->sent(), QList<QByteArray>{"0800000000"}); // the cycle runs on
    s->takeEvents();
    s->time.advance(3499);
    QCOMPARE(s->takeEvents(), QStringList());
    s->time.advance(1); // 4000 ms after the last reply
    QCOMPARE(s->takeEvents().first(), QStringLiteral("CleanSlate"));
}

void TstOpening::tcpOpenStartsASession()
{
    QVERIFY(s->comm->OpenCommunicationChannel(SessionFixture::tcpSettings()));
    QCOMPARE(s->tcp->address, QStringLiteral("192.168.0.62"));
    QCOMPARE(s->tcp->port, QStringLiteral("7777"));
    QVERIFY(s->comm->isCommunicationChannelOpen());
    QCOMPARE(s->events, QStringList({QStringLiteral("CleanSlate"), QStringLiteral("packetSent")}));
    QCOMPARE(s->sent(), QList<QByteArray>{"0100000001"});
}

void TstOpening::repliesOverTcpLeadThroughTheSession()
{
    s->tcp->script = device::chain(QByteArray(1, 2), true);
    s->comm->OpenCommunicationChannel(SessionFixture::tcpSettings());
    s->answerUntilCyclic();
    QCOMPARE(s->comm->state(), SessionState::Cyclic);
    s->time.advance(1000);
    QCOMPARE(s->serial->frames, QByteArrayList());
    QCOMPARE(s->sent(), (QList<QByteArray>{"0100000001", "1200000000", "1200000001", "1200000081",
                                           "0800000000", "0800000000"}));
}

void TstOpening::refusedConnectLeavesACleanSlate()
{
    s->bringTo(SessionState::Cyclic);
    s->comm->queueModuleStatus(1);
    s->forget();
    s->tcp->connects = false;
    QVERIFY(!s->comm->OpenCommunicationChannel(SessionFixture::tcpSettings()));
    QCOMPARE(s->takeEvents(), QStringList{QStringLiteral("passRetryPort")});
    QCOMPARE(s->comm->state(), SessionState::SystemStatusAwaited);
    s->time.advance(20000);
    QCOMPARE(s->sent(), QList<QByteArray>());
    QCOMPARE(s->takeEvents(), QStringList());
    QVERIFY(!s->comm->CheckPendingModuleStatusRequests()); // the queue was emptied
}

void TstOpening::refusedKindIsRememberedAndNothingOpened()
{
    s->bringTo(SessionState::Cyclic);
    model_Namespace::Settings settings = SessionFixture::serialSettings();
    settings.commType = Comm_Type::None;
    QVERIFY(!s->comm->OpenCommunicationChannel(settings));
    QVERIFY(s->serial->IsOpen());
    QVERIFY(!s->comm->isCommunicationChannelOpen());
    s->comm->RequestModuleStatus(1);
    QCOMPARE(s->sent(), QList<QByteArray>()); // no link is the active one
    settings.commType = static_cast<Comm_Type>(7);
    QVERIFY(!s->comm->OpenCommunicationChannel(settings));
    QVERIFY(!s->comm->isCommunicationChannelOpen());
    QCOMPARE(s->serial->calls + s->tcp->calls, QStringList());
}

void TstOpening::openingAgainInTheSameTurn()
{
    QVERIFY(s->comm->OpenCommunicationChannel(SessionFixture::serialSettings()));
    QVERIFY(s->comm->OpenCommunicationChannel(SessionFixture::tcpSettings()));
    QVERIFY(s->comm->OpenCommunicationChannel(SessionFixture::serialSettings()));
    QCOMPARE(s->serial->takePayloads().size(), 2);
    QCOMPARE(s->tcp->takePayloads().size(), 1);
    s->serial->script = device::chain(QByteArray(1, 1), true);
    s->reply(device::systemStatus(QByteArray(1, 1), true));
    s->answerUntilCyclic();
    QCOMPARE(s->comm->state(), SessionState::Cyclic);
}

void TstOpening::otherLinkIsLeftFirst()
{
    s->comm->OpenCommunicationChannel(SessionFixture::serialSettings());
    QCOMPARE(s->tcp->calls, QStringList{QStringLiteral("disconnect")});
    s->forget();
    s->comm->OpenCommunicationChannel(SessionFixture::tcpSettings());
    QCOMPARE(s->serial->calls, QStringList{QStringLiteral("close")});
    QVERIFY(!s->serial->IsOpen());
    s->forget();
    s->comm->OpenCommunicationChannel(SessionFixture::serialSettings());
    QVERIFY(!s->tcp->IsConnected());
}

void TstOpening::onlyTheActiveLinkCounts()
{
    s->comm->OpenCommunicationChannel(SessionFixture::serialSettings());
    s->comm->closeTcpChannel();
    QVERIFY(s->comm->isCommunicationChannelOpen());
    s->comm->closeSerialChannel();
    QVERIFY(!s->comm->isCommunicationChannelOpen());
    s->comm->OpenCommunicationChannel(SessionFixture::tcpSettings());
    s->comm->closeSerialChannel();
    QVERIFY(s->comm->isCommunicationChannelOpen());
    s->comm->closeTcpChannel();
    QVERIFY(!s->comm->isCommunicationChannelOpen());
}

void TstOpening::framesGoToTheActiveLinkOnly()
{
    const QByteArray frame("frame");
    s->comm->SendDatagram(frame);
    s->comm->OpenCommunicationChannel(SessionFixture::serialSettings());
    s->forget();
    s->comm->SendDatagram(frame);
    QCOMPARE(s->serial->frames, QByteArrayList{frame});
    QCOMPARE(s->tcp->frames, QByteArrayList());
    s->comm->OpenCommunicationChannel(SessionFixture::tcpSettings());
    s->forget();
    s->comm->SendDatagram(frame);
    QCOMPARE(s->serial->frames, QByteArrayList());
    QCOMPARE(s->tcp->frames, QByteArrayList{frame});
}

void TstOpening::lostLinksAreReported()
{
    s->comm->OpenCommunicationChannel(SessionFixture::serialSettings());
    s->forget();
    s->serial->lost = true;
    s->comm->RequestModuleStatus(1);
    QCOMPARE(s->takeEvents(), QStringList{QStringLiteral("passRetryPort")});
    s->comm->OpenCommunicationChannel(SessionFixture::tcpSettings());
    s->forget();
    s->tcp->drop();
    QCOMPARE(s->takeEvents(), QStringList{QStringLiteral("passRetryPort")});
}

void TstOpening::writtenFramesAreReported()
{
    s->comm->OpenCommunicationChannel(SessionFixture::serialSettings());
    s->forget();
    s->comm->RequestModuleStatus(1);
    QCOMPARE(s->takeEvents(), QStringList{QStringLiteral("packetSent")});
    s->comm->OpenCommunicationChannel(SessionFixture::tcpSettings());
    s->forget();
    s->comm->RequestModuleStatus(1);
    QCOMPARE(s->takeEvents(), QStringList{QStringLiteral("packetSent")});
}

void TstOpening::timeOutsOfAClosedLinkEndInSilence()
{
    s->bringTo(SessionState::ModuleWalk);
    s->comm->closeSerialChannel();
    s->forget();
    s->time.advance(3800);
    QCOMPARE(s->takeEvents(), QStringList({QStringLiteral("DebugMsg(Initialize Sequence Timeout!)"),
                                           QStringLiteral("CleanSlate")}));
    QCOMPARE(s->comm->state(), SessionState::SystemStatusAwaited);
    s->time.advance(20000);
    QCOMPARE(s->takeEvents(), QStringList());
}

void TstOpening::nothingIsReportedWhileTheSessionDies()
{
    s->comm->OpenCommunicationChannel(SessionFixture::tcpSettings());
    s->forget();
    int reports = 0;
    connect(s->serial, &FakeSerialComm::retryPort, s.get(), [&reports] { ++reports; });
    connect(s->tcp, &FakeTcpSock::TcpDisconnectd, s.get(), [&reports, this] {
        ++reports;
        s->serial->Write("frame"); // the port is closed, and says so
    });
    s->comm.reset();
    QCOMPARE(reports, 2); // both links told of their end, the session did not
    QCOMPARE(s->takeEvents(), QStringList());
}

void TstOpening::settingsMayChangeWhileTheLinkOpens()
{
    model_Namespace::Settings settings = SessionFixture::tcpSettings();
    connect(s->tcp, &FakeTcpSock::TcpConnected, s->tcp, [&settings] { settings = {}; });
    QVERIFY(s->comm->OpenCommunicationChannel(settings));
    QVERIFY(s->comm->isCommunicationChannelOpen());
}

QTEST_GUILESS_MAIN(TstOpening)
#include "tst_opening.moc"
