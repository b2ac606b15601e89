#include "lossfixture.h"
#include "peersockets.h"
#include "protocol/communication.h"

#include <QAbstractEventDispatcher>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QtTest>

using namespace std::chrono_literals;
using Moment = LossFixture::Moment;

namespace {

const QString kStarted = QStringLiteral("Timer started");

/// The system ends a dead connection after 10 s: a second of silence and nine probes, one each second, or as
/// long without an acknowledgement. It may look at it a little later.
constexpr std::chrono::milliseconds kEarliest = 8s;
constexpr std::chrono::milliseconds kLatest = 20s;

constexpr int kFewWakings = 2000; ///< in these seconds; a loop that never rests wakes up so often in a few ms

} // namespace

/// The peer of a TCP connection is gone without a word, as by a pulled network cable or a power cut: no
/// packet comes back, not even a refusal.
///
/// | Case                           | What the operator sees                                               |
/// |--------------------------------|----------------------------------------------------------------------|
/// | while the chain is polled      | For up to 4 s the last values, READY, green lamp. Then no row and no |
/// |                                | text of the chain, OFFLINE, "Retrying to connect with Torvex",       |
/// |                                | yellow, anew each 3.8 s. The connection is given up about 10 s after |
/// |                                | the first request that nobody took; 6 s later, and each 6 s: "COM    |
/// |                                | Port unavailable: COM40", gray.                                      |
/// | before the first reply         | The same from "Retrying to connect with Torvex" on, 3.8 s after the  |
/// |                                | request.                                                             |
/// | nothing is sent meanwhile      | Given up as well, by the probes of the keep-alive.                   |
/// | the peer is back               | Within 6 s "COM Port opened: COM40", yellow, then all rows anew,     |
/// |                                | READY.                                                               |
/// | the way is back before the     | The requests of meanwhile arrive; all rows anew, READY, over the     |
/// | connection is given up         | same connection.                                                     |
/// | no answer at the start         | See tst_linkloss_tcp.                                                |
class TstLinkLossHalfOpen : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_fixture = std::make_unique<LossFixture>(SystemFixture::LinkKind::Tcp); }
    void cleanup() { m_fixture.reset(); }

    void peerIsGoneWithoutAWord_data();
    void peerIsGoneWithoutAWord();
    void wayIsBackBeforeTheConnectionIsGivenUp();

private:
    std::unique_ptr<LossFixture> m_fixture;
};

void TstLinkLossHalfOpen::peerIsGoneWithoutAWord_data()
{
    QTest::addColumn<Moment>("moment");
    QTest::addColumn<bool>("sends");
    QTest::newRow("in the cycle") << Moment::Cycle << true;
    QTest::newRow("before the first reply") << Moment::FirstReply << true;
    QTest::newRow("nothing is sent meanwhile") << Moment::FirstReply << false;
}

void TstLinkLossHalfOpen::peerIsGoneWithoutAWord()
{
    QFETCH(Moment, moment);
    QFETCH(bool, sends);
    LossFixture &f = *m_fixture;
    f.startUpTo(moment);
    const quint16 port = f.device->tcpPort();
    const QString before = f.sight();
    f.log.clear();
    QElapsedTimer clock;
    QSignalSpy losses(f.app->communication(), &Communication::passRetryPort);
    peersockets::vanish(port);
    clock.start();
    QVERIFY(busyTurns() < kFewTurns); // what had arrived before is taken
    const int taken = f.device->requestCount();
    if (sends) {
        f.time.skip(f.patience(moment) - 1ms);
        QCOMPARE(f.sight(), before);
        f.time.skip(1ms);
        QCOMPARE(f.sight(), LossFixture::retrying());
        f.expectNothingShown();
        f.time.skip(3800ms);
        QCOMPARE(f.sight(), LossFixture::retrying());
    }
    QVERIFY(losses.isEmpty());
    int wakings = 0;
    const auto counting =
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, [&] { ++wakings; });
    QVERIFY2(losses.wait(int(kLatest.count())), "the connection stays half open");
    disconnect(counting);
    QVERIFY2(clock.elapsed() >= kEarliest.count(), qPrintable(QString::number(clock.elapsed())));
    QVERIFY2(wakings < kFewWakings, qPrintable(QString::number(wakings)));
    QCOMPARE(f.device->requestCount(), taken); // nothing arrived
    QCOMPARE(f.logged(kStarted), 1);
    QCOMPARE(losses.size(), 1);
    // Nobody answers an attempt to connect either.
    for (int attempt = 1; attempt <= 5; ++attempt) {
        f.time.skip(6s);
        QCOMPARE(f.sight(), LossFixture::unavailable());
        f.expectNothingShown();
        QCOMPARE(f.retries(), attempt);
        QVERIFY(busyTurns() < kFewTurns);
    }
    peersockets::comeBack(port);
    f.device->faults().clear();
    f.device->chain().system.poweringMode = QStringLiteral("changed");
    f.device->chain().module(1).identity.serial = QStringLiteral("changed");
    QCOMPARE(f.sight(), LossFixture::unavailable());
    f.time.skip(6s);
    QCOMPARE(f.sight(), LossFixture::opened());
    f.expectWhole();
    f.poll(12s);
    QCOMPARE(f.retries(), 6);
    QVERIFY(f.isReady());
    QCOMPARE(f.warnings(), QStringList());
}

void TstLinkLossHalfOpen::wayIsBackBeforeTheConnectionIsGivenUp()
{
    LossFixture &f = *m_fixture;
    f.startUpTo(Moment::Cycle);
    const quint16 port = f.device->tcpPort();
    f.log.clear();
    f.device->clearCounters();
    peersockets::vanish(port);
    f.time.skip(4s);
    QCOMPARE(f.sight(), LossFixture::retrying());
    for (int round = 0; round < 2; ++round) {
        QVERIFY(busyTurns() < kFewTurns);
        f.time.skip(3800ms);
        QCOMPARE(f.sight(), LossFixture::retrying());
    }
    QCOMPARE(f.device->requestCount(0x01), 0);
    f.device->chain().module(1).identity.serial = QStringLiteral("changed");
    peersockets::resume(port);
    f.expectWhole();
    // All three arrive at once. Each reply but the last meets a session that has what it asked for, which
    // then starts over.
    QCOMPARE(f.device->requestCount(0x01), 3 + 2);
    f.poll(12s);
    QVERIFY(f.isReady());
    QCOMPARE(f.device->requestCount(0x01), 3 + 2);
    QCOMPARE(f.logged(kStarted), 0);
    QCOMPARE(f.warnings(), QStringList());
}

QTEST_MAIN(TstLinkLossHalfOpen)

#include "tst_linkloss_halfopen.moc"
