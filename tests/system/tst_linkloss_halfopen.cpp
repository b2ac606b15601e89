#include "lossfixture.h"
#include "peersockets.h"
#include "protocol/communication.h"
#include "sleepingmachine.h"

#include <QAbstractEventDispatcher>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QtTest>

using namespace std::chrono_literals;
using Moment = LossFixture::Moment;

namespace {

/// Lets a test with it wait for 2 s, a second of silence and one question, where most systems wait for 10 s.
constexpr int kOneQuestion = 1;
constexpr int kOwnOfTheSystem = 0;

constexpr std::chrono::milliseconds kGrain = 20ms; ///< of the clocks
constexpr std::chrono::milliseconds kBusy = 8s;    ///< what a machine with much else to do adds

constexpr int kFewWakings = 2000; ///< in these seconds; a loop that never rests wakes up so often in a few ms

} // namespace

/// The peer of a TCP connection is gone without a word, as by a pulled network cable or a power cut: no
/// packet comes back, not even a refusal.
///
/// | Case                           | What the operator sees                                               |
/// |--------------------------------|----------------------------------------------------------------------|
/// | while the chain is polled      | For up to 4 s the last values, READY, green lamp. Then no row and no |
/// |                                | text of the chain, OFFLINE, "Retrying to connect with Torvex",       |
/// |                                | yellow, anew each 3.8 s. The system gives the connection up when the |
/// |                                | first request has not been taken for as long as it takes for the     |
/// |                                | probes of a keep-alive, mostly 10 s; 6 s later, and each 6 s: "COM   |
/// |                                | Port unavailable: COM40", gray.                                      |
/// | before the first reply         | The same from "Retrying to connect with Torvex" on, 3.8 s after the  |
/// |                                | request.                                                             |
/// | nothing is sent meanwhile      | Given up as well, by the probes of the keep-alive.                   |
/// | the peer is back               | Within 6 s "COM Port opened: COM40", yellow, then all rows anew,     |
/// |                                | READY.                                                               |
/// | the way is back before the     | The requests of meanwhile arrive; all rows anew, READY, over the     |
/// | connection is given up         | same connection.                                                     |
/// | gone while the machine slept   | As while it is polled, from the moment of waking up; at once without |
/// |                                | a row if the timers counted the sleep.                               |
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
    void goneWhileTheMachineSlept_data();
    void goneWhileTheMachineSlept();

private:
    /// Fails unless the program has asked the system for what is agreed. `questions` may be fewer than the
    /// system asks by itself. Returns how long a connection lasts that nobody answers.
    std::chrono::milliseconds patience(int questions);

    /// Waits until the connection is given up, `patience` after the clock was started.
    void expectLoss(const QElapsedTimer &clock, std::chrono::milliseconds patience);

    /// The next attempts fail, until the peer is back.
    void expectBackLater();

    std::unique_ptr<LossFixture> m_fixture;
};

void TstLinkLossHalfOpen::peerIsGoneWithoutAWord_data()
{
    QTest::addColumn<Moment>("moment");
    QTest::addColumn<bool>("sends");
    QTest::addColumn<int>("questions");
    QTest::newRow("in the cycle") << Moment::Cycle << true << kOwnOfTheSystem;
    QTest::newRow("before the first reply") << Moment::FirstReply << true << kOneQuestion;
    QTest::newRow("nothing is sent meanwhile") << Moment::FirstReply << false << kOneQuestion;
}

std::chrono::milliseconds TstLinkLossHalfOpen::patience(int questions)
{
    const quint16 port = m_fixture->device->tcpPort();
    const auto check = [port] {
        const peersockets::Patience patience = peersockets::patience(port);
        QVERIFY(patience.asks);
        QVERIFY(patience.silence == 1s);
        QVERIFY(patience.interval == 1s);
        QVERIFY(patience.unconfirmed == 1s + patience.questions * 1s);
    };
    check();
    if (questions != kOwnOfTheSystem) {
        peersockets::setQuestions(port, questions);
        check();
    }
    return peersockets::patience(port).unconfirmed;
}

void TstLinkLossHalfOpen::expectLoss(const QElapsedTimer &clock, std::chrono::milliseconds patience)
{
    LossFixture &f = *m_fixture;
    const int taken = f.device->requestCount();
    QSignalSpy losses(f.app->communication(), &Communication::passRetryPort);
    int wakings = 0;
    QObject counting;
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &counting,
            [&] { ++wakings; });
    // A question that is due a moment too early is followed by one more.
    QVERIFY2(losses.wait(int((patience + 1s + kBusy).count())), "the connection stays half open");
    QVERIFY2(clock.elapsed() >= (patience - kGrain).count(), qPrintable(QString::number(clock.elapsed())));
    QVERIFY2(wakings < kFewWakings, qPrintable(QString::number(wakings)));
    QCOMPARE(f.device->requestCount(), taken); // nothing arrived
    QCOMPARE(f.losses(), 1);
    QCOMPARE(losses.size(), 1);
}

void TstLinkLossHalfOpen::expectBackLater()
{
    LossFixture &f = *m_fixture;
    // Nobody answers an attempt to connect either.
    for (int attempt = 1; attempt <= 5; ++attempt) {
        f.time.skip(6s);
        QCOMPARE(f.sight(), LossFixture::unavailable());
        f.expectNothingShown();
        QCOMPARE(f.retries(), attempt);
        QVERIFY(busyTurns() < kFewTurns);
    }
    peersockets::comeBack(f.device->tcpPort());
    f.device->faults().clear();
    f.changeChain();
    QCOMPARE(f.sight(), LossFixture::unavailable());
    f.expectBackByTheNextRetry();
    QCOMPARE(f.warnings(), QStringList());
}

void TstLinkLossHalfOpen::peerIsGoneWithoutAWord()
{
    QFETCH(Moment, moment);
    QFETCH(bool, sends);
    QFETCH(int, questions);
    LossFixture &f = *m_fixture;
    QElapsedTimer clock;
    clock.start(); // before the last that is heard of the peer
    f.startUpTo(moment);
    const auto wait = patience(questions);
    const QString before = f.sight();
    f.log.clear();
    if (sends)
        clock.start(); // before the first that nobody takes
    peersockets::vanish(f.device->tcpPort());
    QVERIFY(busyTurns() < kFewTurns); // what had arrived before is taken
    if (sends) {
        f.expectRowsToGo(before, f.patience(moment));
        f.time.skip(3800ms);
        QCOMPARE(f.sight(), LossFixture::retrying());
    }
    QCOMPARE(f.losses(), 0);
    expectLoss(clock, wait);
    expectBackLater();
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
    QCOMPARE(f.losses(), 0);
    QCOMPARE(f.warnings(), QStringList());
}

void TstLinkLossHalfOpen::goneWhileTheMachineSlept_data()
{
    QTest::addColumn<SkippingTime::Asleep>("asleep");
    for (const auto &platform : platforms())
        QTest::newRow(platform.first) << platform.second;
}

void TstLinkLossHalfOpen::goneWhileTheMachineSlept()
{
    QFETCH(SkippingTime::Asleep, asleep);
    LossFixture &f = *m_fixture;
    f.startUpTo(Moment::Cycle);
    const auto wait = patience(kOneQuestion);
    const QString before = f.sight();
    f.log.clear();
    QElapsedTimer clock;
    clock.start();
    peersockets::vanish(f.device->tcpPort());
    QVERIFY(busyTurns() < kFewTurns); // what had arrived before is taken
    f.time.sleep(kNight, asleep);
    QCOMPARE(f.sight(), timesOut(asleep) ? LossFixture::retrying() : before);
    QCOMPARE(f.losses(), 0);
    expectLoss(clock, wait);
    QCOMPARE(f.sight(), timesOut(asleep) ? LossFixture::retrying() : before);
    expectBackLater();
}

QTEST_MAIN(TstLinkLossHalfOpen)

#include "tst_linkloss_halfopen.moc"
