#include "sim/endsignals.h"

#include <QtTest>

#include <csignal>
#include <pthread.h>

class TstEndSignals : public QObject
{
    Q_OBJECT

private slots:
    void firstSignalQuitsAndTheNextOneIsFree_data();
    void firstSignalQuitsAndTheNextOneIsFree();
    void ignoredHangUpStaysIgnored();

private:
    static bool isBlocked(int signal)
    {
        sigset_t blocked;
        sigemptyset(&blocked);
        pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
        return sigismember(&blocked, signal) == 1;
    }
};

void TstEndSignals::firstSignalQuitsAndTheNextOneIsFree_data()
{
    QTest::addColumn<int>("signal");

    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void TstEndSignals::firstSignalQuitsAndTheNextOneIsFree()
{
    QFETCH(int, signal);
    std::signal(signal, SIG_DFL); // the shell may have begun this with some ignored
    sim::quitOnEndSignals(*QCoreApplication::instance());
    QVERIFY(isBlocked(signal));
    QCOMPARE(std::raise(signal), 0);
    QSignalSpy quits(QCoreApplication::instance(), &QCoreApplication::aboutToQuit);
    QCOMPARE(QCoreApplication::exec(), 0);
    QCOMPARE(quits.size(), 1);
    for (const int end : {SIGTERM, SIGINT, SIGHUP})
        QVERIFY(!isBlocked(end));
}

void TstEndSignals::ignoredHangUpStaysIgnored()
{
    std::signal(SIGHUP, SIG_IGN);
    sim::quitOnEndSignals(*QCoreApplication::instance());
    QVERIFY(isBlocked(SIGTERM));
    QVERIFY(!isBlocked(SIGHUP));
    QCOMPARE(std::raise(SIGHUP), 0);
    std::signal(SIGHUP, SIG_DFL);
}

QTEST_GUILESS_MAIN(TstEndSignals)
#include "tst_endsignals.moc"
