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
    void theHostTellsWhatItTookOfEachProcessor();
    void ofProcessorsTheOneCountsThatWasTakenLongest();
    void whatTheKernelOrTheHostTookIsDenied();
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
    clocks.stolen = [] { return Stolen(); }; // a host does not ask who wants the processor
    StallMeter meter(100, clocks);
    meter.start();
    QTRY_VERIFY(meter.ticks() > 1);
    QThread::msleep(160); // the blocked window that is to be seen; the way to a processor takes nothing of it
    const qint64 ticks = meter.ticks();
    QTRY_VERIFY(meter.ticks() > ticks);
    QVERIFY(!meter.violations().isEmpty());
}

void TstStormClocks::theHostTellsWhatItTookOfEachProcessor()
{
    const std::string text = "cpu  16140 0 5102 45167 380 0 49 116 900 1\n"
                             "cpu0 7885 0 2195 23339 15 0 5 57 400 0\n"
                             "cpu1 8254 0 2907 21828 365 0 43 59 500 1\n"
                             "intr 9 9 9 9 9 9 9 9999 9\n";
    QCOMPARE(stolenNs(text, 100), (Stolen{570 * kMs, 590 * kMs}));
    QCOMPARE(stolenNs(text, 1000), (Stolen{57 * kMs, 59 * kMs}));
    QCOMPARE(stolenNs(text.substr(0, text.find("59 500") + 1), 100), (Stolen{570 * kMs})); // cut
    QCOMPARE(stolenNs("cpu0 7885 0\n", 100), Stolen());                                    // an old kernel
    QCOMPARE(stolenNs(std::string(), 100), Stolen());
}

void TstStormClocks::ofProcessorsTheOneCountsThatWasTakenLongest()
{
    Stolen sum;
    QCOMPARE(longestNs(sum), 0);
    addStolen(sum, {100, 1000}, {180, 1020});
    QCOMPARE(longestNs(sum), 80);
    addStolen(sum, {180, 1020}, {190, 1050});
    QCOMPARE(sum, (Stolen{90, 50}));
    QCOMPARE(longestNs(sum), 90);
    addStolen(sum, {190, 1050}, {195}); // a processor is gone
    QCOMPARE(sum, (Stolen{95, 50}));
}

void TstStormClocks::whatTheKernelOrTheHostTookIsDenied()
{
    QCOMPARE(deniedNs({5, {10, 20}}, {12, {13, 24}}), 7);
    QCOMPARE(deniedNs({5, {10, 20}}, {12, {19, 24}}), 9);
    QCOMPARE(deniedNs({5, {}}, {12, {}}), 7);
    const Denied before;
    const qint64 waited = waitedForProcessorNs();
    const Crowd crowd(QStringLiteral("crowd"));
    QTRY_VERIFY(waitedForProcessorNs() > waited);
    const qint64 growth = waitedForProcessorNs() - waited;
    QVERIFY(deniedNs(before, {}) >= growth);
}

QTEST_GUILESS_MAIN(TstStormClocks)

#include "tst_stormclocks.moc"
