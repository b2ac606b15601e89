#include "stallmeter.h"
#include "support/kernelclocks.h"
#include "threadsofstorm.h"

#include <QThread>
#include <QtTest>
#include <memory>
#include <vector>

using namespace kernelclocks;
using namespace storm;

namespace {

constexpr qint64 kMs = 1000000;
constexpr char kOthers[] = "others";

/// So many threads at work that they have to wait for processors.
class Crowd
{
public:
    explicit Crowd(const QString &name)
    {
        for (int i = 0; i < 4 * QThread::idealThreadCount(); ++i) {
            m_threads.emplace_back(QThread::create([this] {
                qint64 told = 0;
                while (m_goOn != 0) {
                    const qint64 waited = waitedForProcessorNs();
                    m_waited += waited - told;
                    told = waited;
                }
            }));
            m_threads.back()->setObjectName(name);
            m_threads.back()->start();
        }
    }
    ~Crowd()
    {
        m_goOn = 0;
        for (const auto &thread : m_threads)
            thread->wait();
    }

    Crowd(const Crowd &) = delete;
    Crowd &operator=(const Crowd &) = delete;

    /// For which all of them together had no processor.
    qint64 waitedNs() const { return m_waited; }

private:
    QAtomicInteger<qint64> m_waited = 0;
    QAtomicInt m_goOn = 1;
    std::vector<std::unique_ptr<QThread>> m_threads;
};

/// A thread that does nothing until it is told to end.
class Sleeper
{
public:
    Sleeper()
        : m_thread(QThread::create([this] { m_end.acquire(); }))
    {
        m_thread->start();
    }
    ~Sleeper() { end(); }

    Sleeper(const Sleeper &) = delete;
    Sleeper &operator=(const Sleeper &) = delete;

    void end()
    {
        m_end.release();
        m_thread->wait();
    }

private:
    QSemaphore m_end;
    const std::unique_ptr<QThread> m_thread;
};

} // namespace

/// What is known of the threads that the program waits for.
class TstStormClocks : public QObject
{
    Q_OBJECT

private slots:
    void waitsOfOtherThreadsCount_data();
    void waitsOfOtherThreadsCount();
    void shortageCountsForAThreadThatEnded();
    void shortageOfTheMachineAloneDoesNotCount();
    void sleepIsAStallHoweverBusyTheMachineIs();
    void theHostTellsWhatItTook();
};

void TstStormClocks::waitsOfOtherThreadsCount_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("counts");
    QTest::newRow("program") << "helper" << true;
    QTest::newRow("left out") << kOthers << false;
}

void TstStormClocks::waitsOfOtherThreadsCount()
{
    QFETCH(QString, name);
    QFETCH(bool, counts);
    ThreadWaits waits(kOthers);
    const Crowd crowd(name);
    constexpr qint64 kEnough = 300 * kMs;
    QTRY_VERIFY(crowd.waitedNs() > kEnough);
    const qint64 total = waits.total();
    QVERIFY2((total > kEnough / 2) == counts, qPrintable(QString::number(total)));
}

void TstStormClocks::shortageCountsForAThreadThatEnded()
{
    constexpr qint64 kMuch = 1000000 * kMs;
    qint64 shortage = 0;
    ThreadWaits waits(kOthers, [&shortage] { return shortage += kMuch; });
    Sleeper sleeper;
    QVERIFY(waits.total() < kMuch);
    QVERIFY(waits.total() < kMuch);
    sleeper.end();
    QTRY_VERIFY(waits.total() >= kMuch); // the kernel has it a moment longer
    QVERIFY(waits.total() < 2 * kMuch);  // once
}

void TstStormClocks::shortageOfTheMachineAloneDoesNotCount()
{
    qint64 shortage = 0;
    ThreadWaits waits(kOthers, [&shortage] { return shortage += 1000000 * kMs; });
    for (int i = 0; i < 10; ++i)
        QVERIFY(waits.total() < 1000 * kMs);
}

void TstStormClocks::sleepIsAStallHoweverBusyTheMachineIs()
{
    const Crowd crowd(QString::fromLatin1(kThreadOfTheWorld)); // as the other programs of the machine
    QTRY_VERIFY(crowd.waitedNs() > 0);
    StallMeter meter(100);
    meter.start();
    QTRY_VERIFY(meter.ticks() > 1);
    QThread::msleep(160); // the blocked window that is to be seen; the way to a processor takes nothing of it
    const qint64 ticks = meter.ticks();
    QTRY_VERIFY(meter.ticks() > ticks);
    QVERIFY(!meter.violations().isEmpty());
}

void TstStormClocks::theHostTellsWhatItTook()
{
    const auto text = [](int first, int second) {
        return "cpu  16140 0 5102 45167 380 0 49 " + std::to_string(first + second) +
               " 0 0\ncpu0 7885 0 2195 23339 15 0 5 " + std::to_string(first) +
               " 0 0\ncpu1 8254 0 2907 21828 365 0 43 " + std::to_string(second) +
               " 0 0\nintr 9 9 9 9 9 9 9 9999 9\n";
    };
    std::string told = text(57, 1000);
    HostTheft theft([&told] { return told; }, 100);
    QCOMPARE(theft.total(), 0);
    told = text(65, 1002);
    QCOMPARE(theft.total(), 80 * kMs);
    QCOMPARE(theft.total(), 80 * kMs);
    told = text(66, 1005);
    QCOMPARE(theft.total(), 110 * kMs);
    told = text(66, 0).substr(0, 60); // a processor is gone
    QCOMPARE(theft.total(), 110 * kMs);
    told = "cpu0 7885 0\n"; // an old kernel
    QCOMPARE(theft.total(), 110 * kMs);
    QVERIFY(stolenNs() >= 0); // of this machine
}

QTEST_GUILESS_MAIN(TstStormClocks)

#include "tst_stormclocks.moc"
