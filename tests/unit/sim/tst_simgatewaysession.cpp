#include "sim/gatewaysession.h"
#include "simgatewaytest.h"

using namespace std::chrono_literals;
using sim::Cut;
using sim::GatewayServer;
using sim::GatewaySession;

/// What the gateway sends to a peer that takes its time.
class TstSimGatewaySession : public SimGatewayTest
{
    Q_OBJECT

private slots:
    void longTextComesAsThePeerTakesIt();
    void answerBehindAFloodIsWrittenAtAStroke_data();
    void answerBehindAFloodIsWrittenAtAStroke();
    void piecesWaitForThePeerToo();
    void textBehindTooMuchIsLostAndLogged();
    void textInSmallPiecesWaitsWhole();
    void closeComesBehindWhatWaits();
    void closeDoesNotWaitForAPeerThatTakesNothing();
    void delayedCloseEndsAPeerThatTakesNothing();
    void whatWaitsForAPeerThatGoesIsLost();
    void peerThatGoesWhileItIsSentTo();
    void lossInTheConnectionIsLogged();

private:
    /// A peer whose greeting is over, and which takes so many bytes.
    FakeConnection *plugIn(int room)
    {
        FakeConnection *peer = SimGatewayTest::plugIn();
        peer->limit = room;
        return peer;
    }
};

void TstSimGatewaySession::longTextComesAsThePeerTakesIt()
{
    constexpr int kBytes = 3000000;
    load("flood bytes=3000000 line=\"#?\"");
    FakeConnection *peer = plugIn(1 << 20);
    peer->write("#?\r");
    QVERIFY(!peer->pieces.isEmpty());
    while (peer->bytes().size() < kBytes) {
        const int before = peer->bytes().size();
        QVERIFY(*peer->limit >= 0);
        peer->drain(200000);
        m_time->advance(0);
        QVERIFY(peer->bytes().size() > before);
    }
    QVERIFY(*peer->limit >= 0);
    QCOMPARE(peer->bytes(), QByteArray(kBytes, 'x') + status());
    QCOMPARE(m_lines.filter("lost").size(), 0);
}

void TstSimGatewaySession::answerBehindAFloodIsWrittenAtAStroke_data()
{
    QTest::addColumn<int>("bytes");
    for (const int bytes :
         {1, GatewaySession::kPart - 60, GatewaySession::kPart, 2 * GatewaySession::kPart - 60,
          5 * GatewaySession::kPart - 1, 5 * GatewaySession::kPart + 1})
        QTest::addRow("%d", bytes) << bytes;
}

void TstSimGatewaySession::answerBehindAFloodIsWrittenAtAStroke()
{
    QFETCH(int, bytes);
    load(qPrintable(QString("flood bytes=%1 line=\"#?\"").arg(bytes)));
    FakeConnection *peer = plugIn(1 << 20);
    peer->write("#?\r");
    QCOMPARE(peer->bytes(), QByteArray(bytes, 'x') + status());
    QVERIFY(peer->pieces.last().bytes.endsWith('x' + status()));
}

void TstSimGatewaySession::piecesWaitForThePeerToo()
{
    load("cut size=100 gap=50 line=\"#?\"");
    FakeConnection *peer = plugIn(100);
    peer->write("#?\r\r");
    m_time->advance(10s);
    QCOMPARE(peer->bytes(), status().left(100));
    peer->drain(1000);
    m_time->advance(0);
    QCOMPARE(peer->pieces.size(), 3);
    QCOMPARE(peer->pieces.at(1).bytes, status().mid(100));
    QCOMPARE(peer->pieces.at(2).bytes, sim::Gateway::prompt());
}

void TstSimGatewaySession::textBehindTooMuchIsLostAndLogged()
{
    constexpr int kTwoFloods = 2 * 600000;
    load("flood bytes=600000 line=\"#?\"");
    FakeConnection *peer = plugIn(0);
    peer->write("#?\r#?\r#?\r\r");
    QCOMPARE(m_lines.filter("<- \"x").size(), 2);
    QCOMPARE(m_lines.filter("<- lost, \"x").size(), 1);
    QCOMPARE(m_lines.filter("<- lost, \"\\r\\n----").size(), 1);
    peer->drain(1 << 24);
    m_time->advance(0);
    QCOMPARE(peer->bytes().size(), kTwoFloods + 2 * status().size());
    peer->pieces.clear();
    peer->write("\r");
    QCOMPARE(peer->bytes(), sim::Gateway::prompt());
}

void TstSimGatewaySession::textInSmallPiecesWaitsWhole()
{
    FakeConnection *peer = plugIn(1 << 20);
    GatewaySession session(*peer, *m_time, [this] { return sim::Milliseconds(m_time->elapsedMs()); });
    QVERIFY(session.send(QByteArray(8 << 20, 'x'), {0ms, 0ms, Cut{1, 1ms}}));
    QCOMPARE(session.waitingTexts(), 1);
    m_time->advance(999);
    QCOMPARE(peer->pieces.size(), 1000);
    QCOMPARE(peer->pieces.last().bytes, QByteArray("x"));
    QCOMPARE(session.waitingTexts(), 1);
}

void TstSimGatewaySession::closeComesBehindWhatWaits()
{
    load("cut size=100 gap=50 line=\"#?\"\nclose line=\"#010_\"");
    FakeConnection *peer = plugIn(1 << 20);
    peer->write("#?\r#010_B\r");
    m_time->advance(10s);
    QCOMPARE(peer->bytes(), status());
    QCOMPARE(int(peer->closedAtMs), 50);
}

void TstSimGatewaySession::closeDoesNotWaitForAPeerThatTakesNothing()
{
    load("flood bytes=5000000 line=\"#?\"");
    FakeConnection *peer = plugIn(0);
    peer->write("#?\r");
    m_time->advance(70);
    plugIn(99)->write("restart\r");
    QCOMPARE(int(peer->closedAtMs), 70);
    const int waiting = 5000000 + status().size();
    const QString loss = QString("fake -- lost, %1 bytes that the peer does not take").arg(waiting);
    QCOMPARE(m_lines.filter(loss).size(), 1);
    peer->drain(1 << 20);
    m_time->advance(0);
    QVERIFY(peer->pieces.isEmpty());
}

void TstSimGatewaySession::delayedCloseEndsAPeerThatTakesNothing()
{
    load("flood bytes=5000000 line=\"#?\"\nclose line=\"#010_\"\ndelay ms=80 line=\"#010_\"");
    FakeConnection *peer = plugIn(0);
    peer->write("#?\r#010_L\r");
    m_time->advance(79);
    QCOMPARE(int(peer->closedAtMs), -1);
    peer->drain(1 << 20); // not enough
    m_time->advance(1);
    QCOMPARE(int(peer->closedAtMs), 80);
    QVERIFY(!peer->pieces.isEmpty());
}

void TstSimGatewaySession::whatWaitsForAPeerThatGoesIsLost()
{
    load("delay ms=100 line=\"#?\"");
    FakeConnection *peer = plugIn(1 << 20);
    peer->write("#?\r");
    peer->unplug();
    const QStringList end{
        QString("    0.000 fake -- lost, %1 bytes that the peer does not take").arg(status().size()),
        "    0.000 fake -- disconnected"};
    QCOMPARE(m_lines.mid(m_lines.size() - 2), end);
}

void TstSimGatewaySession::peerThatGoesWhileItIsSentTo()
{
    load("flood bytes=500000 line=\"#?\"");
    FakeConnection *peer = plugIn(1 << 20);
    peer->onSend = [peer] { emit peer->closed(); };
    peer->write("#?\r");
    m_time->advance(1000);
    QCOMPARE(peer->pieces.size(), 1);
    QCOMPARE(m_server->connectionCount(), 0);
    QCOMPARE(m_lines.filter(" -- lost, ").size(), 1);
}

void TstSimGatewaySession::lossInTheConnectionIsLogged()
{
    FakeConnection *peer = plugIn(0);
    emit peer->lost(7);
    QCOMPARE(m_lines.last(), QString("    0.000 fake -- lost, 7 bytes that the peer does not take"));
}

QTEST_GUILESS_MAIN(TstSimGatewaySession)
#include "tst_simgatewaysession.moc"
