#include "link/watchtimerserialports.h"
#include "support/virtualtime.h"

#include <QSignalSpy>
#include <QtTest>

class TstWatchTimerSerialPorts : public QObject
{
    Q_OBJECT

private slots:
    void isStoppedAfterConstruction();
    void tellsEachTimeThePeriodIsOver();
    void stopsWhenTold();
    void isSilentAfterItsEnd();
};

void TstWatchTimerSerialPorts::isStoppedAfterConstruction()
{
    VirtualTime time;
    WatchTimerSerialPorts watch(time);
    QSignalSpy updates(&watch, &WatchTimerSerialPorts::Signal_UpdatePortsStatus);
    time.advance(10000);
    QCOMPARE(updates.count(), 0);
}

void TstWatchTimerSerialPorts::tellsEachTimeThePeriodIsOver()
{
    VirtualTime time;
    WatchTimerSerialPorts watch(time);
    QSignalSpy updates(&watch, &WatchTimerSerialPorts::Signal_UpdatePortsStatus);
    watch.start();
    time.advance(2499);
    QCOMPARE(updates.count(), 0);
    time.advance(1);
    QCOMPARE(updates.count(), 1);
    time.advance(5000);
    QCOMPARE(updates.count(), 3);
}

void TstWatchTimerSerialPorts::stopsWhenTold()
{
    VirtualTime time;
    WatchTimerSerialPorts watch(time);
    QSignalSpy updates(&watch, &WatchTimerSerialPorts::Signal_UpdatePortsStatus);
    watch.start();
    watch.stop();
    time.advance(5000);
    QCOMPARE(updates.count(), 0);
}

void TstWatchTimerSerialPorts::isSilentAfterItsEnd()
{
    VirtualTime time;
    int updates = 0;
    {
        WatchTimerSerialPorts watch(time);
        connect(&watch, &WatchTimerSerialPorts::Signal_UpdatePortsStatus, this, [&updates] { ++updates; });
        watch.start();
    }
    time.advance(5000);
    QCOMPARE(updates, 0);
}

QTEST_GUILESS_MAIN(TstWatchTimerSerialPorts)
#include "tst_watchtimerserialports.moc"
