#include "fakelink.h"

#include "sim/server.h"

#include <QtTest>

using sim::Chain;
using sim::Milliseconds;
using sim::Module;
using sim::Server;

namespace {

// A fast system status with the counter 255, a system status with 1.
const QByteArray kFastRequest = QByteArray::fromHex("8081828301ff4350000000000000000005008ff408000000007334");
const QByteArray kSystemRequest =
    QByteArray::fromHex("80818283010143500000000000000000050091f30100000001ec2b");
constexpr int kFrameSize = 38;
constexpr int kControlFlagsAt = 20 + 8;

} // namespace

/// What must not get lost or mixed up when replies do.
class TstSimMishaps : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void resetFlagOutlivesADestroyedReply_data();
    void resetFlagOutlivesADestroyedReply();
    void resetFlagIsSpentByAReplyThatWentOut();
    void resetFlagOutlivesAPeerThatWentBeforeItsReply();
    void delayedReplyWhosePeerHasGone();
    void counterJumpIsCountedAndLogged();
    void counterOfANewConnectionIsTakenAsItIs();
    void replyIsLoggedWhenItStartsOnTheLine();
    void closeTellsItsAbsence();
    void resetIsNoOrderlyEnd();
    void replyThatComesTwiceHasTwoCounters();
    void replyThatComesTwiceCanBeLost();
    void refusalsAreCapped();
    void lossInTheConnectionIsLogged();

private:
    void load(const char *rules)
    {
        QString error;
        QVERIFY2(m_server->faults().parse(QString::fromLatin1(rules), &error), qPrintable(error));
    }
    QStringList linesWith(const char *text) const { return m_lines.filter(QString::fromLatin1(text)); }

    std::unique_ptr<VirtualTime> m_time;
    std::unique_ptr<Server> m_server;
    QStringList m_lines;
    FakeLink *m_link = nullptr;
    FakeConnection *m_peer = nullptr;
};

void TstSimMishaps::init()
{
    Chain chain;
    chain.modules = {Module::ofType(1)};
    m_time = std::make_unique<VirtualTime>();
    m_server = std::make_unique<Server>(*m_time, chain);
    m_lines.clear();
    m_server->log().setSink([this](const QString &line) { m_lines.append(line); });
    auto link = std::make_unique<FakeLink>(*m_time);
    m_link = link.get();
    m_server->addLink(std::move(link));
    m_peer = m_link->plugIn();
}

void TstSimMishaps::cleanup()
{
    m_server.reset();
    m_time.reset();
}

void TstSimMishaps::resetFlagOutlivesADestroyedReply_data()
{
    QTest::addColumn<QByteArray>("rule");

    QTest::newRow("lost") << QByteArray("lose nth=1");
    QTest::newRow("damaged") << QByteArray("corrupt nth=1");
    QTest::newRow("from somebody else") << QByteArray("originator value=1 nth=1");
    QTest::newRow("closed") << QByteArray("close nth=1");
    QTest::newRow("reset") << QByteArray("reset nth=1");
    QTest::newRow("silence") << QByteArray("silence nth=1");
}

void TstSimMishaps::resetFlagOutlivesADestroyedReply()
{
    QFETCH(QByteArray, rule);
    load(rule.constData());
    m_server->device().raiseResetFlag();
    m_peer->write(kFastRequest);
    m_peer->pieces.clear();
    m_peer->write(kFastRequest);
    QCOMPARE(int(m_peer->bytes().at(kControlFlagsAt)), 1);
    m_peer->pieces.clear();
    m_peer->write(kFastRequest);
    QCOMPARE(int(m_peer->bytes().at(kControlFlagsAt)), 0);
}

void TstSimMishaps::resetFlagIsSpentByAReplyThatWentOut()
{
    load("delay ms=100 nth=1\ncut size=20 gap=10 nth=1");
    m_server->device().raiseResetFlag();
    m_peer->write(kFastRequest);
    m_time->advance(200);
    QCOMPARE(int(m_peer->bytes().at(kControlFlagsAt)), 1);
    m_peer->unplug();
    m_peer = m_link->plugIn();
    m_peer->write(kFastRequest);
    QCOMPARE(int(m_peer->bytes().at(kControlFlagsAt)), 0);
}

void TstSimMishaps::resetFlagOutlivesAPeerThatWentBeforeItsReply()
{
    load("delay ms=100 nth=1");
    m_server->device().raiseResetFlag();
    m_peer->write(kFastRequest);
    m_time->advance(50);
    m_peer->unplug();
    m_peer = m_link->plugIn();
    m_peer->write(kFastRequest);
    QCOMPARE(int(m_peer->bytes().at(kControlFlagsAt)), 1);
}

void TstSimMishaps::delayedReplyWhosePeerHasGone()
{
    load("delay ms=1000 nth=1");
    m_peer->write(kSystemRequest);
    m_time->advance(500);
    m_peer->unplug();
    m_peer = m_link->plugIn();
    m_time->advance(1000);
    QVERIFY(m_peer->pieces.isEmpty());
    QCOMPARE(linesWith("<-"), QStringList());
    m_peer->write(kFastRequest);
    QCOMPARE(m_peer->bytes().size(), kFrameSize);
}

void TstSimMishaps::counterJumpIsCountedAndLogged()
{
    m_peer->write(kFastRequest);   // 255
    m_peer->write(kSystemRequest); // 1, not 0
    QCOMPARE(m_server->counterJumps(), 1);
    QCOMPARE(linesWith("consistency counter").size(), 1);
    QVERIFY(linesWith("consistency counter").first().endsWith("fake -- consistency counter 1, expected 0"));
    m_peer->write(kSystemRequest);
    QCOMPARE(m_server->counterJumps(), 2);
    QCOMPARE(m_server->requestCount(), 3);
    QCOMPARE(linesWith("<-").size(), 3);
    m_server->clearCounters();
    QCOMPARE(m_server->counterJumps(), 0);
    // The frame that follows is no jump: 2, with its own header sum and CRC.
    m_peer->write(QByteArray::fromHex("80818283010243500000000000000000050092f30800000000e615"));
    QCOMPARE(m_server->requestCount(), 1);
    QCOMPARE(m_server->counterJumps(), 0);
}

void TstSimMishaps::counterOfANewConnectionIsTakenAsItIs()
{
    m_peer->write(kFastRequest);
    m_peer->unplug();
    m_peer = m_link->plugIn();
    m_peer->write(kFastRequest);
    FakeConnection *second = m_link->plugIn();
    second->write(kSystemRequest);
    QCOMPARE(m_server->requestCount(), 3);
    QCOMPARE(m_server->counterJumps(), 0);
}

void TstSimMishaps::replyIsLoggedWhenItStartsOnTheLine()
{
    load("delay ms=40 nth=1");
    m_server->setPace(1000);
    FakeConnection *peer = m_link->plugIn();
    peer->write(kFastRequest); // until 27 ms
    m_time->advance(66);
    QCOMPARE(linesWith("<-"), QStringList());
    m_time->advance(2);
    QCOMPARE(linesWith("<-").size(), 1);
    QVERIFY(linesWith("<-").first().startsWith("    0.067 fake <- 0x08 "));
    QVERIFY(peer->bytes().size() < kFrameSize);
    m_time->advance(100);
    QCOMPARE(linesWith("<-").size(), 1);
}

void TstSimMishaps::closeTellsItsAbsence()
{
    load("close nth=1\nclose ms=250 nth=2");
    m_peer->write(kFastRequest);
    QCOMPARE(m_peer->closedFor, Milliseconds(1000));
    m_peer->write(kFastRequest);
    QCOMPARE(m_peer->closedFor, Milliseconds(250));
    QVERIFY(!m_peer->isReset);
}

void TstSimMishaps::resetIsNoOrderlyEnd()
{
    load("reset ms=300 nth=1\ntwice nth=1\nclose nth=1\ndelay ms=40 nth=1");
    m_peer->write(kFastRequest);
    m_time->advance(39);
    QVERIFY(!m_peer->isReset);
    m_time->advance(2);
    QVERIFY(m_peer->isReset);
    QCOMPARE(m_peer->closedFor, Milliseconds(1000)); // the longer one of both
    QVERIFY(m_peer->pieces.isEmpty());
}

void TstSimMishaps::replyThatComesTwiceHasTwoCounters()
{
    load("twice nth=1");
    m_peer->write(kFastRequest);
    QCOMPARE(m_peer->bytes().toHex(),
             QByteArray("808182830101504b00000000000000001000a4f3080000000000000000000000000000009f8e"
                        "808182830102504b00000000000000001000a5f308000000000000000000000000000000f4fc"));
    QCOMPARE(m_server->requestCount(), 1);
    m_peer->pieces.clear();
    m_peer->write(kFastRequest);
    QCOMPARE(m_peer->bytes().size(), kFrameSize);
}

void TstSimMishaps::replyThatComesTwiceCanBeLost()
{
    load("twice\nlose nth=1\nclose nth=2");
    m_peer->write(kFastRequest);
    QVERIFY(m_peer->pieces.isEmpty());
    m_peer->write(kFastRequest);
    QVERIFY(m_peer->pieces.isEmpty());
    QCOMPARE(m_peer->closedFor, Milliseconds(1000));
}

void TstSimMishaps::refusalsAreCapped()
{
    QByteArray damaged = kFastRequest;
    damaged[26] = '\0';
    m_peer->write("\x55");
    QCOMPARE(m_server->refusals(), QStringList("no sync bytes"));
    for (int i = 0; i < Server::kRememberedRefusals; ++i)
        m_peer->write(damaged);
    QCOMPARE(m_server->refusals().size(), Server::kRememberedRefusals);
    QCOMPARE(m_server->refusals().first(), QString("wrong CRC"));
}

void TstSimMishaps::lossInTheConnectionIsLogged()
{
    emit m_peer->lost(7);
    QCOMPARE(m_lines.last(), QString("    0.000 fake -- lost, 7 bytes that the peer does not take"));
}

QTEST_GUILESS_MAIN(TstSimMishaps)
#include "tst_simmishaps.moc"
