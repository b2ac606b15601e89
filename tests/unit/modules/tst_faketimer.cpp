#include "modules/common/faketimer.h"
#include "support/virtualtime.h"

#include <QSignalSpy>
#include <QtTest>

class TstFakeTimer : public QObject
{
    Q_OBJECT

private slots:
    void isStoppedAtFirst();
    void withoutArgumentThePeriodIsOneSecond();
    void takesAPeriod();
    void repeatsUntilStopped();
    void startingAgainBeginsAnew();
    void deletedWhileRunningStaysSilent();
};

void TstFakeTimer::isStoppedAtFirst()
{
    VirtualTime time;
    FakeTimer timer(time);
    QSignalSpy over(&timer, &FakeTimer::Signal_FakeTimeOver);
    QVERIFY(!timer.isActive());
    time.advance(5000);
    QCOMPARE(over.count(), 0);
}

void TstFakeTimer::withoutArgumentThePeriodIsOneSecond()
{
    VirtualTime time;
    FakeTimer timer(time);
    QSignalSpy over(&timer, &FakeTimer::Signal_FakeTimeOver);
    timer.start();
    QVERIFY(timer.isActive());
    time.advance(999);
    QCOMPARE(over.count(), 0);
    time.advance(1);
    QCOMPARE(over.count(), 1);
}

void TstFakeTimer::takesAPeriod()
{
    VirtualTime time;
    FakeTimer timer(time);
    QSignalSpy over(&timer, &FakeTimer::Signal_FakeTimeOver);
    timer.start(Timer::Period(2000));
    time.advance(1999);
    QCOMPARE(over.count(), 0);
    time.advance(1);
    QCOMPARE(over.count(), 1);
}

void TstFakeTimer::repeatsUntilStopped()
{
    VirtualTime time;
    FakeTimer timer(time);
    QSignalSpy over(&timer, &FakeTimer::Signal_FakeTimeOver);
    timer.start();
    time.advance(3000);
    QCOMPARE(over.count(), 3);
    timer.stop();
    QVERIFY(!timer.isActive());
    time.advance(3000);
    QCOMPARE(over.count(), 3);
}

void TstFakeTimer::startingAgainBeginsAnew()
{
    VirtualTime time;
    FakeTimer timer(time);
    QSignalSpy over(&timer, &FakeTimer::Signal_FakeTimeOver);
    timer.start();
    time.advance(600);
    timer.start();
    time.advance(600);
    QCOMPARE(over.count(), 0);
    time.advance(400);
    QCOMPARE(over.count(), 1);
}

void TstFakeTimer::deletedWhileRunningStaysSilent()
{
    VirtualTime time;
    int count = 0;
    {
        FakeTimer timer(time);
        connect(&timer, &FakeTimer::Signal_FakeTimeOver, this, [&count] { ++count; });
        timer.start();
    }
    time.advance(3000);
    QCOMPARE(count, 0);
}

QTEST_GUILESS_MAIN(TstFakeTimer)
#include "tst_faketimer.moc"
