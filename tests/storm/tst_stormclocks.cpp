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
                ++m_begun;
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

    /// All of them have their name.
    bool isAtWork() const { return m_begun == size(); }
    int size() const { return static_cast<int>(m_threads.size()); }
    /// For which all of them together had no processor.
    qint64 waitedNs() const { return m_waited; }

private:
    QAtomicInteger<qint64> m_waited = 0;
    QAtomicInt m_begun = 0;
    QAtomicInt m_goOn = 1;
    std::vector<std::unique_ptr<QThread>> m_threads;
};

} // namespace

/// What is known of the threads that the program waits for.
class TstStormClocks : public QObject
{
    Q_OBJECT

private slots:
    void theKernelTellsOfTheWaits();
    void waitsOfOtherThreadsCount_data();
    void waitsOfOtherThreadsCount();
    void ofThreadsSideBySideTheLongestWaitCounts();
    void shortageCountsForAThreadThatEnded();
    void aThreadThatIsLeftOutNeverCounts();
    void sleepIsAStallHoweverBusyTheMachineIs();
    void theHostTellsWhatItTook();
    void whatTheKernelAndTheHostTookIsDenied();
};

void TstStormClocks::theKernelTellsOfTheWaits()
{
    const Crowd crowd(QStringLiteral("crowd"));
    QTRY_VERIFY(crowd.waitedNs() > 0);
}

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
    ThreadWaits waits(kOthers, [] { return 0; }); // a thread of the row before may be about to go
    const Crowd crowd(name);
    QTRY_VERIFY(crowd.isAtWork());
    const qint64 enough = 200 * kMs * crowd.size();
    QTRY_VERIFY(crowd.waitedNs() > enough);
    const qint64 total = waits.total();
    QVERIFY2((total > 100 * kMs) == counts, qPrintable(QString::number(total))); // above the mean of all
}

void TstStormClocks::ofThreadsSideBySideTheLongestWaitCounts()
{
    ThreadWaits::Threads threads{{11, {false, 70 * kMs}}, {12, {false, 0}}};
    ThreadWaits waits([&threads](const auto &) { return threads; }, [] { return 0; });
    QCOMPARE(waits.total(), 0);
    threads = {{11, {false, 95 * kMs}}, {12, {false, 25 * kMs}}, {13, {false, 24 * kMs}}};
    QCOMPARE(waits.total(), 25 * kMs);
    QCOMPARE(waits.total(), 25 * kMs);
    threads[13].waited += 40 * kMs;
    threads[12].waited += 1 * kMs;
    QCOMPARE(waits.total(), 65 * kMs);
}

void TstStormClocks::shortageCountsForAThreadThatEnded()
{
    qint64 shortage = 1000 * kMs;
    ThreadWaits::Threads threads{{11, {false, 5 * kMs}}, {12, {false, 0}}};
    ThreadWaits waits([&threads](const auto &) { return threads; }, [&shortage] { return shortage; });
    shortage += 500 * kMs; // of the machine alone
    QCOMPARE(waits.total(), 0);
    shortage += 60 * kMs;
    threads = {{12, {false, 20 * kMs}}};
    QCOMPARE(waits.total(), 60 * kMs);
    shortage += 90 * kMs;
    QCOMPARE(waits.total(), 60 * kMs); // once
}

void TstStormClocks::aThreadThatIsLeftOutNeverCounts()
{
    qint64 shortage = 0;
    ThreadWaits::Threads threads{{11, {true, 0}}};
    ThreadWaits waits([&threads](const auto &) { return threads; }, [&shortage] { return shortage; });
    threads.clear();
    shortage += 60 * kMs;
    QCOMPARE(waits.total(), 0);
}

void TstStormClocks::sleepIsAStallHoweverBusyTheMachineIs()
{
    const Crowd crowd(QString::fromLatin1(kThreadOfTheWorld)); // as the other programs of the machine
    QTRY_VERIFY(crowd.waitedNs() > 0);
    StallClocks clocks;
    clocks.stolen = [] { return 0; }; // a host does not ask who wants the processor
    StallMeter meter(100, clocks);
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
}

void TstStormClocks::whatTheKernelAndTheHostTookIsDenied()
{
    QCOMPARE(deniedNs([] { return 5; }, [] { return 7; }), 12);
    const qint64 waited = waitedForProcessorNs();
    const qint64 denied = deniedNs();
    const Crowd crowd(QStringLiteral("crowd"));
    QTRY_VERIFY(waitedForProcessorNs() > waited);
    const qint64 growth = waitedForProcessorNs() - waited;
    QVERIFY(deniedNs() - denied >= growth);
}

QTEST_GUILESS_MAIN(TstStormClocks)

#include "tst_stormclocks.moc"
