#include "lossfixture.h"
#include "sleepingmachine.h"

#include <QtTest>

using namespace std::chrono_literals;
using Asleep = SkippingTime::Asleep;
using LinkKind = SystemFixture::LinkKind;
using Moment = LossFixture::Moment;

/// The machine sleeps for hours, and the link is lost before or meanwhile; see tst_linkloss_sleep.
///
/// | Asleep                  | Timers that counted the sleep        | Timers that stood still              |
/// |-------------------------|--------------------------------------|--------------------------------------|
/// | while it is polled, and | At once "Retrying to connect with    | As a lost link from the moment of    |
/// | the link is dropped     | Torvex", yellow, OFFLINE, no row;    | waking up.                           |
/// |                         | then as a lost link: "COM Port       |                                      |
/// |                         | unavailable: COM40", gray, each 6 s. |                                      |
/// | while a link is retried | One attempt at once, then each 6 s;  | The next attempt within 6 s.         |
/// |                         | the hours that were missed are not   |                                      |
/// |                         | made up for.                         |                                      |
/// | while a link is         | At once "COM Port opened: COM40",    | The same within 6 s.                 |
/// | retried, and the device | then all rows anew, READY.           |                                      |
/// | comes back              |                                      |                                      |
class TstLinkLossSleepAway : public QObject
{
    Q_OBJECT

private slots:
    void linkIsDroppedMeanwhile_data();
    void linkIsDroppedMeanwhile();
    void whileALinkIsRetried_data();
    void whileALinkIsRetried();
};

void TstLinkLossSleepAway::linkIsDroppedMeanwhile_data()
{
    QTest::addColumn<LinkKind>("kind");
    QTest::addColumn<Asleep>("asleep");
    addSleeps([](const QByteArray &name, LinkKind kind, Asleep asleep) {
        QTest::newRow(name.constData()) << kind << asleep;
    });
}

void TstLinkLossSleepAway::linkIsDroppedMeanwhile()
{
    QFETCH(LinkKind, kind);
    QFETCH(Asleep, asleep);
    LossFixture f(kind);
    f.startUpTo(Moment::Cycle);
    const QString before = f.sight();
    f.log.clear();
    f.unplug();
    f.time.sleep(kNight, asleep);
    if (timesOut(asleep))
        f.expectNothingShown();
    else
        QCOMPARE(f.sight(), before);
    WAIT_COMPARE(f.losses(), 1);
    QVERIFY(busyTurns() < kFewTurns);
    f.pass(12s);
    QCOMPARE(f.sight(), LossFixture::unavailable());
    f.expectNothingShown();
    const int retries = f.retries();
    QVERIFY(retries >= 2 && retries <= 4);
    f.plug(LossFixture::otherChain());
    f.pass(6s);
    f.expectWhole();
    QCOMPARE(f.retries(), retries + 1);
    f.poll(12s);
    QCOMPARE(f.retries(), retries + 1);
    QCOMPARE(f.warnings(), QStringList());
}

void TstLinkLossSleepAway::whileALinkIsRetried_data()
{
    QTest::addColumn<LinkKind>("kind");
    QTest::addColumn<Asleep>("asleep");
    QTest::addColumn<bool>("isBack");
    addSleeps([](const QByteArray &name, LinkKind kind, Asleep asleep) {
        QTest::newRow((name + ", device back").constData()) << kind << asleep << true;
        QTest::newRow((name + ", device away").constData()) << kind << asleep << false;
    });
}

void TstLinkLossSleepAway::whileALinkIsRetried()
{
    QFETCH(LinkKind, kind);
    QFETCH(Asleep, asleep);
    QFETCH(bool, isBack);
    LossFixture f(kind);
    f.startUpTo(Moment::Cycle);
    f.log.clear();
    f.unplugAndNotice();
    f.pass(15s);
    QCOMPARE(f.sight(), LossFixture::unavailable());
    QCOMPARE(f.retries(), 2);
    if (isBack)
        f.plug(LossFixture::otherChain());
    f.time.sleep(kNight, asleep);
    int retries = timesOut(asleep) ? 3 : 2; // the hours that were missed are not made up for
    QCOMPARE(f.retries(), retries);
    if (isBack && timesOut(asleep))
        f.expectNothingShown(); // yet
    else
        QCOMPARE(f.sight(), LossFixture::unavailable());
    if (!isBack && asleep == Asleep::InTurn) {
        f.pass(1s); // the attempt that is overdue from within the sleep
        retries = f.retries();
        QCOMPARE(retries, 4);
    }
    if (!isBack) {
        for (int i = 0; i < 3; ++i) {
            QVERIFY(busyTurns() < kFewTurns);
            f.pass(6s);
            QCOMPARE(f.retries(), ++retries);
            QCOMPARE(f.sight(), LossFixture::unavailable());
        }
        f.plug(LossFixture::otherChain());
    }
    if (!isBack || !timesOut(asleep)) {
        f.pass(6s);
        QCOMPARE(f.retries(), ++retries);
    }
    f.expectWhole();
    f.poll(12s);
    QCOMPARE(f.retries(), retries);
    QCOMPARE(f.recoveries(), 1);
    QCOMPARE(f.warnings(), QStringList());
}

QTEST_MAIN(TstLinkLossSleepAway)

#include "tst_linkloss_sleep_away.moc"
