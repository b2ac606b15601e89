#include "base/timesource.h"
#include "support/virtualtime.h"

#include <QPointer>
#include <QSignalSpy>
#include <QtTest>

using std::chrono::milliseconds;

/// The promises of a timer, held by the machine's time as well as by the time that tests advance.
class TstTimeSource : public QObject
{
    Q_OBJECT

private slots:
    void machineTimerRepeatsUntilStopped();
    void machineTimerWithoutPeriodFiresEachTurn();
    void singleShotFiresOnce();
    void machineTimeIsNow();
    void timerDiesWithItsParent();
    void virtualTimerRepeatsUntilStopped();
    void virtualSingleShotFiresOnce();
    void startAgainBeginsThePeriodAnew();
    void virtualTimersFireInTheOrderOfTheirTimes();
    void virtualTimersOfEqualTimesFireInTheOrderOfTheirStart();
    void virtualNowMovesWithTheAdvance();
    void virtualTimerWithoutPeriodFiresOncePerTurn();
    void virtualTimerDeletedByASlotFiresNoMore();
    void aVirtualTurnCarriesOutDeferredDeletions();
};

void TstTimeSource::machineTimerRepeatsUntilStopped()
{
    SystemTime time;
    Timer *timer = time.createTimer(this);
    QSignalSpy spy(timer, &Timer::timeout);
    QVERIFY(!timer->isActive());
    timer->start(milliseconds(1));
    QVERIFY(timer->isActive());
    QTRY_VERIFY(spy.count() >= 3);
    timer->stop();
    QVERIFY(!timer->isActive());
}

void TstTimeSource::machineTimerWithoutPeriodFiresEachTurn()
{
    SystemTime time;
    Timer *timer = time.createTimer(this);
    QSignalSpy spy(timer, &Timer::timeout);
    timer->start(milliseconds(0));
    QTRY_VERIFY(spy.count() >= 3);
    timer->stop();
}

void TstTimeSource::singleShotFiresOnce()
{
    SystemTime time;
    Timer *timer = time.createTimer(this);
    Timer *witness = time.createTimer(this);
    QSignalSpy spy(timer, &Timer::timeout);
    QSignalSpy later(witness, &Timer::timeout);
    timer->setSingleShot(true);
    timer->start(milliseconds(1));
    witness->start(milliseconds(2));
    QTRY_VERIFY(later.count() >= 3);
    QCOMPARE(spy.count(), 1);
    QVERIFY(!timer->isActive());
}

void TstTimeSource::machineTimeIsNow()
{
    const SystemTime time;
    const QDateTime before = QDateTime::currentDateTime();
    const QDateTime now = time.now();
    QVERIFY(now >= before);
    QVERIFY(now <= QDateTime::currentDateTime());
}

void TstTimeSource::timerDiesWithItsParent()
{
    SystemTime time;
    auto parent = std::make_unique<QObject>();
    const QPointer<Timer> timer = time.createTimer(parent.get());
    parent.reset();
    QVERIFY(!timer);
}

void TstTimeSource::virtualTimerRepeatsUntilStopped()
{
    VirtualTime time;
    Timer *timer = time.createTimer(this);
    QSignalSpy spy(timer, &Timer::timeout);
    timer->start(milliseconds(10));
    time.advance(9);
    QCOMPARE(spy.count(), 0);
    time.advance(1);
    QCOMPARE(spy.count(), 1);
    time.advance(25);
    QCOMPARE(spy.count(), 3);
    timer->stop();
    time.advance(100);
    QCOMPARE(spy.count(), 3);
}

void TstTimeSource::virtualSingleShotFiresOnce()
{
    VirtualTime time;
    Timer *timer = time.createTimer(this);
    QSignalSpy spy(timer, &Timer::timeout);
    timer->setSingleShot(true);
    timer->start(milliseconds(10));
    time.advance(100);
    QCOMPARE(spy.count(), 1);
    QVERIFY(!timer->isActive());
}

void TstTimeSource::startAgainBeginsThePeriodAnew()
{
    VirtualTime time;
    Timer *timer = time.createTimer(this);
    QSignalSpy spy(timer, &Timer::timeout);
    timer->start(milliseconds(10));
    time.advance(9);
    timer->start(milliseconds(10));
    time.advance(9);
    QCOMPARE(spy.count(), 0);
    time.advance(1);
    QCOMPARE(spy.count(), 1);
}

void TstTimeSource::virtualTimersFireInTheOrderOfTheirTimes()
{
    VirtualTime time;
    Timer *late = time.createTimer(this);
    Timer *early = time.createTimer(this);
    QStringList order;
    connect(late, &Timer::timeout, this, [&order] { order << QStringLiteral("late"); });
    connect(early, &Timer::timeout, this, [&order] { order << QStringLiteral("early"); });
    late->start(milliseconds(7));
    early->start(milliseconds(5));
    time.advance(7);
    QCOMPARE(order, QStringList({QStringLiteral("early"), QStringLiteral("late")}));
}

void TstTimeSource::virtualTimersOfEqualTimesFireInTheOrderOfTheirStart()
{
    VirtualTime time;
    Timer *first = time.createTimer(this);
    Timer *second = time.createTimer(this);
    QStringList order;
    connect(first, &Timer::timeout, this, [&order] { order << QStringLiteral("first"); });
    connect(second, &Timer::timeout, this, [&order] { order << QStringLiteral("second"); });
    second->start(milliseconds(10));
    first->start(milliseconds(10));
    time.advance(10);
    QCOMPARE(order, QStringList({QStringLiteral("second"), QStringLiteral("first")}));
    second->start(milliseconds(10)); // begun anew, it comes behind the other, which runs on
    time.advance(10);
    QCOMPARE(order.mid(2), QStringList({QStringLiteral("first"), QStringLiteral("second")}));
}

void TstTimeSource::virtualNowMovesWithTheAdvance()
{
    VirtualTime time;
    const QDateTime start = time.now();
    time.advance(1500);
    QCOMPARE(start.msecsTo(time.now()), qint64(1500));
    QCOMPARE(time.elapsedMs(), qint64(1500));
}

void TstTimeSource::virtualTimerWithoutPeriodFiresOncePerTurn()
{
    VirtualTime time;
    Timer *timer = time.createTimer(this);
    QSignalSpy spy(timer, &Timer::timeout);
    timer->start(milliseconds(0));
    time.turn();
    time.turn();
    QCOMPARE(spy.count(), 2);
}

void TstTimeSource::virtualTimerDeletedByASlotFiresNoMore()
{
    VirtualTime time;
    auto owner = std::make_unique<QObject>();
    Timer *doomed = time.createTimer(owner.get());
    Timer *killer = time.createTimer(this);
    QSignalSpy spy(doomed, &Timer::timeout);
    connect(killer, &Timer::timeout, this, [&owner] { owner.reset(); });
    killer->start(milliseconds(5));
    doomed->start(milliseconds(6));
    time.advance(20);
    QCOMPARE(spy.count(), 0);
}

void TstTimeSource::aVirtualTurnCarriesOutDeferredDeletions()
{
    VirtualTime time;
    const QPointer<QObject> object = new QObject;
    object->deleteLater();
    time.turn();
    QVERIFY(!object);
    Timer *timer = time.createTimer(this);
    const QPointer<QObject> other = new QObject;
    connect(timer, &Timer::timeout, other, &QObject::deleteLater);
    timer->start(milliseconds(5));
    time.advance(5);
    QVERIFY(!other);
}

QTEST_GUILESS_MAIN(TstTimeSource)
#include "tst_timesource.moc"
