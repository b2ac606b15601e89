#include "fakelink.h"

#include "sim/server.h"

#include <QtTest>

using sim::Chain;
using sim::Module;
using sim::Server;

namespace {

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

// Requests with the counter 1, worked out apart from the code under test.
const QByteArray kFastRequest = hex("8081828301ff4350000000000000000005008ff408000000007334");
const QByteArray kSystemRequest = hex("80818283010143500000000000000000050091f30100000001ec2b");
const QByteArray kFilterRequest = hex("808182830107435000000000000000000a009cf326000000033235303000289a");
const QByteArray kBadCrcRequest = hex("8081828301ff4350000000000000000005008ff408000000007335");

// The head of a chain without a power module, and its frame with the counter 1.
const char kFastReply[] = "08000000000000000000000000000000";
const char kFastReplyFrame[] = "808182830101504b00000000000000001000a4f3080000000000000000000000000000009f8e";
constexpr int kFrameSize = 38;

} // namespace

class TstSimServer : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void replyComesAtOnceWithoutPace();
    void counterRunsOnOverReconnections();
    void eachLinkHasItsCounter();
    void twoPeersMeetOneChain();
    void requestsAreCountedAndKept();
    void refusedRequestIsNotAnswered_data();
    void refusedRequestIsNotAnswered();
    void signalsTellRequestsAndReplies();

    void lostReplyIsCarriedOutAndCounted();
    void silencedRequestIsNotCarriedOut();
    void delayedReply();
    void repliesKeepTheirOrderBehindADelayedOne();
    void corruptedByte_data();
    void corruptedByte();
    void cutReply();
    void cutLeavesTheLastPieceShorter();
    void resetFlagInTheReply();
    void unknownPayloadCode();
    void otherOriginator();
    void closedConnection();

    void paceOfOneFrame();
    void paceSendsBytesAsTheyPass();
    void paceHoldsForRequestsThatComeTooFast();
    void paceDoesNotDrift_data();
    void paceDoesNotDrift();
    void paceTakesThePeersOwnTimeAsItIs();
    void gapsAndDelaysAddToThePace();

    void longTalkNeedsNoStack();
    void logIsClearText();
    void timeoutOfAPartialRequest();

private:
    void load(const char *rules)
    {
        QString error;
        QVERIFY2(m_server->faults().parse(QString::fromLatin1(rules), &error), qPrintable(error));
    }

    std::unique_ptr<VirtualTime> m_time;
    std::unique_ptr<Server> m_server;
    FakeLink *m_link = nullptr;
    FakeConnection *m_peer = nullptr;
};

void TstSimServer::init()
{
    Chain chain;
    chain.modules = {Module::ofType(1), Module::ofType(2)};
    m_time = std::make_unique<VirtualTime>();
    m_server = std::make_unique<Server>(*m_time, chain);
    auto link = std::make_unique<FakeLink>(*m_time);
    m_link = link.get();
    m_server->addLink(std::move(link));
    m_peer = m_link->plugIn();
}

void TstSimServer::cleanup()
{
    m_server.reset();
    m_time.reset();
}

void TstSimServer::replyComesAtOnceWithoutPace()
{
    m_peer->write(kFastRequest);
    QCOMPARE(m_peer->pieces.size(), 1);
    QCOMPARE(m_peer->bytes().toHex(), QByteArray(kFastReplyFrame));
}

void TstSimServer::counterRunsOnOverReconnections()
{
    for (int i = 0; i < 255; ++i)
        m_peer->write(kFastRequest);
    QCOMPARE(int(static_cast<quint8>(m_peer->pieces.last().bytes.at(5))), 255);
    FakeConnection *next = m_link->plugIn();
    next->write(kFastRequest);
    QCOMPARE(int(next->pieces.last().bytes.at(5)), 0);
    next->write(kFastRequest);
    QCOMPARE(int(next->pieces.last().bytes.at(5)), 1);
}

void TstSimServer::eachLinkHasItsCounter()
{
    m_peer->write(kFastRequest);
    m_peer->write(kFastRequest);
    auto link = std::make_unique<FakeLink>(*m_time);
    FakeLink &second = *link;
    m_server->addLink(std::move(link));
    FakeConnection *peer = second.plugIn();
    peer->write(kFastRequest);
    QCOMPARE(int(peer->pieces.last().bytes.at(5)), 1);
    m_peer->write(kFastRequest);
    QCOMPARE(int(m_peer->pieces.last().bytes.at(5)), 3);
}

void TstSimServer::twoPeersMeetOneChain()
{
    FakeConnection *second = m_link->plugIn();
    m_peer->write(kFilterRequest);
    QCOMPARE(m_server->chain().module(2).channel(0).filter, QString("2500"));
    second->write(kFastRequest);
    QCOMPARE(m_peer->pieces.size(), 1);
    QCOMPARE(second->pieces.size(), 1);
    QCOMPARE(m_server->requestCount(), 2);
}

void TstSimServer::requestsAreCountedAndKept()
{
    m_peer->write(kFastRequest);
    m_peer->write(kSystemRequest + kFastRequest);
    QCOMPARE(m_server->requestCount(0x08), 2);
    QCOMPARE(m_server->requestCount(0x01), 1);
    QCOMPARE(m_server->requestCount(0x12), 0);
    QCOMPARE(m_server->requestCount(), 3);
    QCOMPARE(m_server->receivedPayloads(),
             QList<QByteArray>({hex("0800000000"), hex("0100000001"), hex("0800000000")}));
    m_server->clearCounters();
    QCOMPARE(m_server->requestCount(), 0);
    QVERIFY(m_server->receivedPayloads().isEmpty());
}

void TstSimServer::refusedRequestIsNotAnswered_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("reason");

    QTest::newRow("CRC") << kBadCrcRequest << "wrong CRC";
    QTest::newRow("noise") << hex("55") << "no sync bytes";
    QTest::newRow("payload") << hex("8081828301004350000000000000000000008bf33b1d") << "empty payload";
}

void TstSimServer::refusedRequestIsNotAnswered()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, reason);
    QSignalSpy refused(m_server.get(), &Server::refused);
    m_peer->write(bytes);
    QVERIFY(m_peer->pieces.isEmpty());
    QCOMPARE(m_server->refusals(), QStringList(reason));
    QCOMPARE(refused.size(), 1);
    m_peer->write(kFastRequest);
    QCOMPARE(m_peer->bytes().toHex(), QByteArray(kFastReplyFrame));
}

void TstSimServer::signalsTellRequestsAndReplies()
{
    QSignalSpy requests(m_server.get(), &Server::requestReceived);
    QSignalSpy replies(m_server.get(), &Server::replied);
    m_peer->write(kFastRequest);
    QCOMPARE(requests.size(), 1);
    QCOMPARE(requests.first().first().toByteArray(), hex("0800000000"));
    QCOMPARE(replies.size(), 1);
    QCOMPARE(replies.first().first().toByteArray(), hex(kFastReply));
}

void TstSimServer::lostReplyIsCarriedOutAndCounted()
{
    load("lose nth=1");
    m_peer->write(kFilterRequest);
    QVERIFY(m_peer->pieces.isEmpty());
    QCOMPARE(m_server->chain().module(2).channel(0).filter, QString("2500"));
    m_peer->write(kFastRequest);
    QCOMPARE(int(m_peer->bytes().at(5)), 2);
}

void TstSimServer::silencedRequestIsNotCarriedOut()
{
    load("silence nth=1 ms=3000");
    m_peer->write(kFilterRequest);
    m_time->advance(2999);
    m_peer->write(kFilterRequest);
    QVERIFY(m_peer->pieces.isEmpty());
    QCOMPARE(m_server->chain().module(2).channel(0).filter, QString("1000"));
    QCOMPARE(m_server->requestCount(0x26), 2);
    m_time->advance(1);
    m_peer->write(kFastRequest);
    QCOMPARE(m_peer->bytes().toHex(), QByteArray(kFastReplyFrame));
}

void TstSimServer::delayedReply()
{
    load("delay ms=1500 nth=1");
    m_time->advance(100);
    m_peer->write(kFastRequest);
    m_time->advance(1499);
    QVERIFY(m_peer->pieces.isEmpty());
    m_time->advance(1);
    QCOMPARE(m_peer->bytes().size(), kFrameSize);
    QCOMPARE(m_peer->pieces.first().atMs, 1600);
}

void TstSimServer::repliesKeepTheirOrderBehindADelayedOne()
{
    load("delay ms=500 nth=1");
    m_peer->write(kSystemRequest + kFastRequest);
    QVERIFY(m_peer->pieces.isEmpty());
    m_time->advance(500);
    QCOMPARE(m_peer->pieces.size(), 2);
    QCOMPARE(int(m_peer->pieces.at(0).bytes.at(20)), 1);
    QCOMPARE(int(m_peer->pieces.at(1).bytes.at(20)), 8);
}

void TstSimServer::corruptedByte_data()
{
    QTest::addColumn<QByteArray>("rule");
    QTest::addColumn<int>("place");

    QTest::newRow("header") << QByteArray("corrupt part=header byte=18") << 18;
    QTest::newRow("payload") << QByteArray("corrupt part=payload byte=3") << 23;
    QTest::newRow("payload, beyond its end") << QByteArray("corrupt part=payload byte=17") << 21;
    QTest::newRow("CRC") << QByteArray("corrupt part=crc byte=1") << 37;
    QTest::newRow("usual") << QByteArray("corrupt") << 36;
}

void TstSimServer::corruptedByte()
{
    QFETCH(QByteArray, rule);
    QFETCH(int, place);
    load(rule.constData());
    m_peer->write(kFastRequest);
    QByteArray expected = hex(kFastReplyFrame);
    expected[place] = static_cast<char>(~expected.at(place));
    QCOMPARE(m_peer->bytes().toHex(), expected.toHex());
}

void TstSimServer::cutReply()
{
    load("cut size=19 gap=300");
    m_peer->write(kFastRequest);
    QCOMPARE(m_peer->bytes().size(), 19);
    m_time->advance(299);
    QCOMPARE(m_peer->bytes().size(), 19);
    m_time->advance(1);
    QCOMPARE(m_peer->bytes().toHex(), QByteArray(kFastReplyFrame));
    QCOMPARE(m_peer->pieces.size(), 2);
}

void TstSimServer::cutLeavesTheLastPieceShorter()
{
    load("cut size=10");
    m_peer->write(kFastRequest);
    QCOMPARE(m_peer->pieces.size(), 4);
    QCOMPARE(m_peer->pieces.last().bytes.size(), 8);
    QCOMPARE(m_peer->bytes().toHex(), QByteArray(kFastReplyFrame));
}

void TstSimServer::resetFlagInTheReply()
{
    load("reset-flag");
    m_peer->write(kFastRequest);
    QCOMPARE(m_peer->bytes().mid(20, 16).toHex(), QByteArray("08000000000000000100000000000000"));
}

void TstSimServer::unknownPayloadCode()
{
    load("unknown-code value=0x77");
    m_peer->write(kFastRequest);
    QCOMPARE(m_peer->bytes().mid(20, 16).toHex(), QByteArray("77000000000000000000000000000000"));
}

void TstSimServer::otherOriginator()
{
    load("originator");
    m_peer->write(kFastRequest);
    // The header sum fits: 5 more than in the usual frame.
    QCOMPARE(m_peer->bytes().left(20).toHex(), QByteArray("808182830101505000000000000000001000a9f3"));
}

void TstSimServer::closedConnection()
{
    load("close nth=2\ndelay ms=40 nth=2");
    m_peer->write(kFastRequest);
    QCOMPARE(m_peer->closedAtMs, -1);
    m_peer->write(kFastRequest);
    m_time->advance(40);
    QCOMPARE(m_peer->closedAtMs, 40);
    QCOMPARE(m_peer->pieces.size(), 1);
}

void TstSimServer::paceOfOneFrame()
{
    m_server->setPace(1000);
    FakeConnection *peer = m_link->plugIn();
    peer->write(kFastRequest); // 27 bytes
    m_time->advance(27);
    QVERIFY(peer->pieces.isEmpty());
    QCOMPARE(m_server->requestCount(), 1);
    m_time->advance(37);
    QCOMPARE(peer->bytes().size(), 37);
    m_time->advance(1);
    QCOMPARE(peer->bytes().toHex(), QByteArray(kFastReplyFrame));
    QCOMPARE(m_time->elapsedMs(), 27 + kFrameSize);
}

void TstSimServer::paceSendsBytesAsTheyPass()
{
    m_server->setPace(4000);
    FakeConnection *peer = m_link->plugIn();
    peer->write(kFastRequest); // until 6.75 ms
    for (int ms = 1; ms <= 20; ++ms) {
        m_time->advance(1);
        // The last byte of a millisecond is in when its last bit is.
        const int expected = qBound(0, ms * 4 - 27, kFrameSize);
        QCOMPARE(peer->bytes().size(), expected);
    }
}

void TstSimServer::paceHoldsForRequestsThatComeTooFast()
{
    m_server->setPace(1000);
    FakeConnection *peer = m_link->plugIn();
    peer->write(kFastRequest);
    peer->write(kFastRequest);
    m_time->advance(53);
    QCOMPARE(m_server->requestCount(), 1);
    m_time->advance(1);
    QCOMPARE(m_server->requestCount(), 2);
    // The second reply waits for the end of the first one on the line.
    m_time->advance(27 + 2 * kFrameSize - 54 - 1);
    QCOMPARE(peer->bytes().size(), 2 * kFrameSize - 1);
    m_time->advance(1);
    QCOMPARE(peer->bytes().size(), 2 * kFrameSize);
}

void TstSimServer::paceDoesNotDrift_data()
{
    QTest::addColumn<int>("pace");

    QTest::newRow("115200 baud") << 10472;
    QTest::newRow("an odd one") << 7777;
    QTest::newRow("faster than the timer") << 100003;
}

void TstSimServer::paceDoesNotDrift()
{
    QFETCH(int, pace);
    constexpr int kTurns = 2000;
    m_server->setPace(pace);
    FakeConnection *peer = m_link->plugIn();
    // A peer that answers each reply at once with the next request.
    int replies = 0;
    qint64 lastMs = 0;
    peer->onSend = [&] {
        if (peer->bytes().size() < kFrameSize)
            return;
        peer->pieces.clear();
        lastMs = m_time->elapsedMs();
        if (++replies < kTurns)
            peer->write(kFastRequest);
    };
    peer->write(kFastRequest);
    const double wireMs = 1000.0 * kTurns * (27 + kFrameSize) / pace;
    m_time->advance(qCeil(wireMs) + 1);
    QCOMPARE(replies, kTurns);
    QVERIFY2(static_cast<double>(lastMs) >= wireMs && static_cast<double>(lastMs) <= wireMs + 1.001,
             qPrintable(QStringLiteral("%1 ms for %2 ms").arg(lastMs).arg(wireMs)));
}

void TstSimServer::paceTakesThePeersOwnTimeAsItIs()
{
    m_server->setPace(10000);
    FakeConnection *peer = m_link->plugIn();
    peer->write(kFastRequest);
    m_time->advance(1000); // the peer thinks long after the reply
    peer->pieces.clear();
    peer->write(kFastRequest);
    m_time->advance(6);
    QVERIFY(peer->bytes().size() < kFrameSize);
    m_time->advance(1);
    QCOMPARE(peer->bytes().size(), kFrameSize);
}

void TstSimServer::gapsAndDelaysAddToThePace()
{
    load("cut size=19 gap=100\ndelay ms=50");
    m_server->setPace(1000);
    FakeConnection *peer = m_link->plugIn();
    peer->write(kFastRequest);
    m_time->advance(27 + 50 + 19);
    QCOMPARE(peer->bytes().size(), 19);
    m_time->advance(100);
    QCOMPARE(peer->bytes().size(), 19);
    m_time->advance(18);
    QCOMPARE(peer->bytes().size(), 37);
    m_time->advance(1);
    QCOMPARE(peer->bytes().size(), kFrameSize);
}

void TstSimServer::longTalkNeedsNoStack()
{
    // A peer that answers inside the call that brought it the reply.
    constexpr int kTurns = 30000;
    int replies = 0;
    m_peer->onSend = [&] {
        m_peer->pieces.clear();
        if (++replies < kTurns)
            m_peer->write(kFastRequest);
    };
    m_peer->write(kFastRequest);
    QCOMPARE(replies, kTurns);
}

void TstSimServer::logIsClearText()
{
    QStringList lines;
    m_server->log().setSink([&lines](const QString &line) { lines.append(line); });
    load("lose code=0x26");
    m_time->advance(1250);
    m_peer->write(kFastRequest + kFilterRequest + kBadCrcRequest);
    QCOMPARE(lines.size(), 8);
    QCOMPARE(lines.at(0),
             QString("    1.250 fake -> 0x08 fast system status | 80 81 82 83 01 ff 43 50 00 00 00 00 00 "
                     "00 00 00 05 00 8f f4 08 00 00 00 00 73 34"));
    QVERIFY(lines.at(1).startsWith(QLatin1String(
        "    1.250 fake <- 0x08 fast system status: input 0 V, output 0 V, load 0 A | 80 81 82 83 01 01")));
    QVERIFY(lines.at(2).contains(QLatin1String("-> 0x26 filter of channel 3: \"2500\" | ")));
    QVERIFY(lines.at(3).endsWith(QLatin1String("-- consistency counter 7, expected 0")));
    QVERIFY(lines.at(4).endsWith(QLatin1String("-- fault: lose (line 1)")));
    QVERIFY(lines.at(5).endsWith(QLatin1String("-- channel 3: filter 2500")));
    QVERIFY(lines.at(6).contains(QLatin1String("<- lost, 0x08 fast system status: ")));
    QVERIFY(lines.at(7).contains(QLatin1String("-> refused, wrong CRC | 80 81")));
}

void TstSimServer::timeoutOfAPartialRequest()
{
    m_peer->write(kFastRequest.left(26));
    m_time->advance(1001);
    m_peer->write(kFastRequest);
    QCOMPARE(m_peer->bytes().toHex(), QByteArray(kFastReplyFrame));
    QCOMPARE(m_server->refusals(), QStringList("pause inside a frame"));
}

QTEST_GUILESS_MAIN(TstSimServer)
#include "tst_simserver.moc"
