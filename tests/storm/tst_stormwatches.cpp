#include "logwatch.h"
#include "memorywatch.h"
#include "stallmeter.h"
#include "weather.h"

#include "sim/faults.h"
#include "sim/gatewayfaults.h"

#include <QEventLoop>
#include <QThread>
#include <QtTest>

using namespace storm;

namespace {

constexpr qint64 kMs = 1000000;

/// Clocks that the test sets; those that are not given stand still, but for that of the thread: it runs as
/// long as it does not wait.
StallClocks clocks(const qint64 *now, const qint64 *waited = nullptr, const qint64 *slept = nullptr,
                   const qint64 *shortage = nullptr, const qint64 *stolen = nullptr)
{
    const auto value = [](const qint64 *clock) { return clock ? *clock : 0; };
    return {[=] { return *now; }, [=] { return value(waited); },
            [=] { return *now - value(waited) - value(slept); }, [=] { return value(shortage); },
            [=] {
                return kernelclocks::Stolen{value(stolen), value(stolen) / 2};
            }};
}

/// Samples that lie on a line, and beside it by the noise, in turn above and below.
QVector<MemorySample> samples(int count, qint64 bytesPerSample, qint64 noise, qint64 objectsPerSample = 0)
{
    QVector<MemorySample> made;
    for (int i = 0; i < count; ++i) {
        MemorySample sample;
        sample.seconds = 5.0 * i;
        sample.sessions = 3 * i;
        sample.bytes = 20000000 + bytesPerSample * i + (i % 2 == 0 ? noise : -noise);
        sample.objects = 5000 + objectsPerSample * i;
        sample.widgets = 900;
        sample.topLevels = 40;
        made.append(sample);
    }
    return made;
}

} // namespace

Q_DECLARE_METATYPE(storm::MemorySample)

/// The watches of the storm see what they are there for.
class TstStormWatches : public QObject
{
    Q_OBJECT

private slots:
    void aLongTurnOfTheLoopIsAStall();
    void whatTheKernelTakesIsNoStallOfTheProgram();
    void whatTheHostTakesIsNoStallOfTheProgram();
    void sleepOfTheProgramIsAStall();
    void sleepIsNotWhileProcessorsAreShort();
    void timeOfTheObserversDoesNotCount();
    void aDialogThatIsWaitedForIsNoStall();

    void flatMemoryPasses();
    void memoryThatIsNotShownToBeFlatFails_data();
    void memoryThatIsNotShownToBeFlatFails();
    void allocatedBytesAreCounted();
    void objectsOfThisThreadAreCounted();

    void logLinesThatAreMeantAreKnown_data();
    void logLinesThatAreMeantAreKnown();
    void otherWarningsAreComplaints();

    void weatherComesFromTheSeed();
    void allRulesOfTheWeatherCanBeRead();
};

void TstStormWatches::aLongTurnOfTheLoopIsAStall()
{
    qint64 now = 0;
    StallMeter meter(100, clocks(&now));
    meter.start();
    meter.setActivity(QStringLiteral("short"));
    now += (99 + StallMeter::kPeriodMs) * kMs;
    QTRY_VERIFY(meter.ticks() > 0);
    QCOMPARE(meter.violations().size(), 0);
    meter.setActivity(QStringLiteral("long"));
    const qint64 ticks = meter.ticks();
    now += (102 + StallMeter::kPeriodMs) * kMs;
    QTRY_VERIFY(meter.ticks() > ticks);
    QCOMPARE(meter.violations().size(), 1);
    QCOMPARE(meter.violations().constFirst().during, QStringLiteral("long"));
    QCOMPARE(meter.longestOwn().ownMs(), 102.0);
    QCOMPARE(meter.longestOwn().during, QStringLiteral("long"));
}

void TstStormWatches::whatTheKernelTakesIsNoStallOfTheProgram()
{
    qint64 now = 0;
    qint64 waited = 0;
    StallMeter meter(100, clocks(&now, &waited));
    meter.start();
    now += (180 + StallMeter::kPeriodMs) * kMs;
    waited += 90 * kMs;
    QTRY_VERIFY(meter.ticks() > 0);
    QCOMPARE(meter.violations().size(), 0);
    QCOMPARE(meter.longestWhole().wholeMs, 180.0);
    QCOMPARE(meter.longestOwn().ownMs(), 90.0);
    const qint64 ticks = meter.ticks();
    now += (195 + StallMeter::kPeriodMs) * kMs;
    waited += 90 * kMs;
    QTRY_VERIFY(meter.ticks() > ticks);
    QCOMPARE(meter.violations().size(), 1);
}

void TstStormWatches::whatTheHostTakesIsNoStallOfTheProgram()
{
    qint64 now = 0;
    qint64 waited = 0;
    qint64 slept = 0;
    qint64 stolen = 0;
    StallMeter meter(100, clocks(&now, &waited, &slept, nullptr, &stolen));
    meter.start();
    now += (300 + StallMeter::kPeriodMs) * kMs;
    waited += 80 * kMs;
    slept += 150 * kMs;
    stolen += 210 * kMs;
    QTRY_VERIFY(meter.ticks() > 0);
    QCOMPARE(meter.violations().size(), 0);
    QCOMPARE(meter.longestOwn().stolenMs, 210.0);
    QCOMPARE(meter.longestOwn().ownMs(), 90.0); // the wait may be of the same time
    QCOMPARE(meter.longestOwn().ranMs, 70.0 + StallMeter::kPeriodMs);
    qint64 ticks = meter.ticks();
    now += (300 + StallMeter::kPeriodMs) * kMs;
    waited += 80 * kMs;
    stolen += 190 * kMs;
    QTRY_VERIFY(meter.ticks() > ticks);
    QCOMPARE(meter.violations().size(), 1);
    QCOMPARE(meter.longestOwn().ownMs(), 110.0);
    ticks = meter.ticks();
    now += (50 + StallMeter::kPeriodMs) * kMs;
    waited += 20 * kMs;
    stolen += 5000 * kMs; // never more than there was
    QTRY_VERIFY(meter.ticks() > ticks);
    QCOMPARE(meter.longestOwn().ownMs(), 110.0);
}

void TstStormWatches::sleepOfTheProgramIsAStall()
{
    qint64 now = 0;
    qint64 slept = 0;
    StallMeter meter(100, clocks(&now, nullptr, &slept));
    meter.start();
    now += (130 + StallMeter::kPeriodMs) * kMs;
    slept += 130 * kMs;
    QTRY_VERIFY(meter.ticks() > 0);
    QCOMPARE(meter.violations().size(), 1);
}

void TstStormWatches::sleepIsNotWhileProcessorsAreShort()
{
    qint64 now = 0;
    qint64 slept = 0;
    qint64 shortage = 0;
    StallMeter meter(100, clocks(&now, nullptr, &slept, &shortage));
    meter.start();
    now += (160 + StallMeter::kPeriodMs) * kMs;
    slept += 160 * kMs;
    shortage += 70 * kMs;
    QTRY_VERIFY(meter.ticks() > 0);
    QCOMPARE(meter.violations().size(), 0);
    QCOMPARE(meter.longestOwn().ownMs(), 90.0);
    qint64 ticks = meter.ticks();
    now += (160 + StallMeter::kPeriodMs) * kMs; // at work
    shortage += 160 * kMs;
    QTRY_VERIFY(meter.ticks() > ticks);
    QCOMPARE(meter.violations().size(), 1);
    ticks = meter.ticks();
    now += (5000 + StallMeter::kPeriodMs) * kMs; // too long to be only that
    slept += 5000 * kMs;
    shortage += 5000 * kMs;
    QTRY_VERIFY(meter.ticks() > ticks);
    QCOMPARE(meter.violations().size(), 2);
}

void TstStormWatches::timeOfTheObserversDoesNotCount()
{
    qint64 now = 0;
    StallMeter meter(100, clocks(&now));
    meter.start();
    now += 60 * kMs;
    {
        const Unmeasured unmeasured(meter);
        now += 500 * kMs;
    }
    now += 30 * kMs;
    QTRY_VERIFY(meter.ticks() > 0);
    QCOMPARE(meter.violations().size(), 0);
    QCOMPARE(meter.longestWhole().wholeMs, 90.0 - StallMeter::kPeriodMs);
}

void TstStormWatches::aDialogThatIsWaitedForIsNoStall()
{
    constexpr int kLooks = 60;
    qint64 now = 0;
    int looks = 0;
    StallMeter meter(100, clocks(&now));
    meter.start();
    QEventLoop dialog;
    QTimer look;
    connect(&look, &QTimer::timeout, &dialog, [&] {
        now += StallMeter::kPeriodMs * kMs;
        if (++looks == kLooks)
            dialog.quit();
    });
    look.start(StallMeter::kPeriodMs);
    QTimer::singleShot(0, &dialog, [&dialog] { dialog.exec(); }); // in the loop of which it is a turn
    QTRY_VERIFY(looks >= kLooks);
    const qint64 ticks = meter.ticks();
    QTRY_VERIFY(meter.ticks() > ticks);
    QVERIFY(meter.longestWhole().wholeMs < 100);
}

void TstStormWatches::flatMemoryPasses()
{
    QCOMPARE(complaint(samples(8, 0, 3000), MemoryRule()), QString());
    QCOMPARE(complaint(samples(8, -5000, 3000), MemoryRule()), QString());
    QCOMPARE(complaint(samples(10, 24000, 0), MemoryRule()), QString()); // 216 KB in all
    QCOMPARE(complaint(samples(8, 0, 0, 3), MemoryRule()), QString());   // 21 objects
}

void TstStormWatches::memoryThatIsNotShownToBeFlatFails_data()
{
    QTest::addColumn<QVector<MemorySample>>("samples");
    QTest::addColumn<QString>("why");
    QTest::newRow("few samples") << samples(5, 0, 0) << "5 samples are too few";
    QTest::newRow("none") << QVector<MemorySample>() << "0 samples are too few";
    auto oneSession = samples(8, 0, 0);
    for (MemorySample &sample : oneSession)
        sample.sessions = 5;
    QTest::newRow("no session") << oneSession << "0 sessions are too few";
    QTest::newRow("20 KB a session, a minute") << samples(10, 3 * 20480, 20000) << "bytes may grow";
    QTest::newRow("5 KB a session, ten minutes") << samples(100, 3 * 5120, 20000) << "bytes may grow";
    QTest::newRow("jumps that may hide growth") << samples(8, 0, 2000000) << "bytes may grow";
    QTest::newRow("objects, a minute") << samples(10, 0, 0, 9) << "objects may grow";
    QTest::newRow("an object a session, ten minutes") << samples(100, 0, 0, 3) << "objects may grow";
    auto left = samples(8, 0, 0);
    ++left.last().widgets;
    QTest::newRow("a widget is left over") << left << "901 widgets at the end";
    left = samples(8, 0, 0);
    ++left.last().topLevels;
    QTest::newRow("a window is left over") << left << "41 windows at the end";
}

void TstStormWatches::memoryThatIsNotShownToBeFlatFails()
{
    QFETCH(QVector<MemorySample>, samples);
    QFETCH(QString, why);
    const QString text = complaint(samples, MemoryRule());
    QVERIFY2(text.contains(why), qPrintable(text));
}

void TstStormWatches::allocatedBytesAreCounted()
{
    constexpr int kSize = 3000000;
    const qint64 before = allocatedBytes();
    QByteArray bytes(kSize, 'x');
    QVERIFY(allocatedBytes() - before > kSize - 100000);
    bytes = QByteArray();
    QVERIFY(allocatedBytes() - before < 100000);
    QVERIFY(residentBytes() > kSize);
}

void TstStormWatches::objectsOfThisThreadAreCounted()
{
    objectcount::start();
    const qint64 before = objectcount::now();
    auto parent = std::make_unique<QObject>();
    new QObject(parent.get());
    QCOMPARE(objectcount::now(), before + 2);
    std::unique_ptr<QThread> thread(QThread::create([] { const QObject other; }));
    const qint64 withThread = objectcount::now();
    thread->start();
    QVERIFY(thread->wait());
    QCOMPARE(objectcount::now(), withThread);
    parent.reset();
    QCOMPARE(objectcount::now(), withThread - 2);
}

void TstStormWatches::logLinesThatAreMeantAreKnown_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<bool>("isMeant");
    QTest::newRow("broken frame") << "void Communication_Aux::RcvTimeOver() : Receive Timeout!" << true;
    QTest::newRow("damaged frame") << "An Invalid DataStream was received over : SERIAL communication."
                                   << true;
    QTest::newRow("platform") << "This plugin does not support propagateSizeHints()" << true;
    QTest::newRow("print dialog") << "QFSFileEngine::open: No file name specified" << true;
    QTest::newRow("printer's properties")
        << "QFont::setPointSizeF: Point size <= 0 (-0.250000), must be greater than 0" << true;
    QTest::newRow("font") << "QFont::setPointSizeF: Point size <= 0 (-1.000000), must be greater than 0"
                          << false;
    QTest::newRow("connection") << "QObject::connect: No such slot QLabel::none()" << false;
    QTest::newRow("timer") << "QObject::killTimer: Timers cannot be stopped from another thread" << false;
    QTest::newRow("report") << "bool saveReport(QString) : Report not written to \"x\" - \"full\"" << false;
    QTest::newRow("a text that quotes a meant one")
        << "x void Communication_Aux::RcvTimeOver() : Receive Timeout!" << false;
}

void TstStormWatches::logLinesThatAreMeantAreKnown()
{
    QFETCH(QString, line);
    QFETCH(bool, isMeant);
    QCOMPARE(LogWatch::isMeant(line), isMeant);
}

void TstStormWatches::otherWarningsAreComplaints()
{
    LogWatch log;
    qDebug("a debug line");
    qWarning("This plugin does not support raise()");
    QCOMPARE(log.complaintCount(), 0);
    qWarning("QWidget::setLayout: something is wrong");
    qCritical("and something else");
    QCOMPARE(log.lineCount(), 4);
    QCOMPARE(log.meantCount(), 1);
    QCOMPARE(log.complaintCount(), 2);
    QCOMPARE(log.complaints(), (QStringList{"QWidget::setLayout: something is wrong", "and something else"}));
}

void TstStormWatches::weatherComesFromTheSeed()
{
    const auto rules = [](quint32 seed) {
        Chance chance(seed);
        return Weather::deviceRules(Weather::Spell::Wild, chance) +
               Weather::gatewayRules(Weather::Spell::Rough, chance);
    };
    QCOMPARE(rules(7), rules(7));
    QVERIFY(rules(7) != rules(8));
}

void TstStormWatches::allRulesOfTheWeatherCanBeRead()
{
    Chance chance(1);
    int count = 0;
    for (int i = 0; i < 300; ++i) {
        for (const auto spell : {Weather::Spell::Calm, Weather::Spell::Rough, Weather::Spell::Wild}) {
            sim::FaultScript device;
            sim::GatewayFaults gateway;
            QString error;
            QVERIFY2(device.parse(Weather::deviceRules(spell, chance), &error), qPrintable(error));
            QVERIFY2(gateway.parse(Weather::gatewayRules(spell, chance), &error), qPrintable(error));
            count += device.ruleCount() + gateway.ruleCount();
        }
    }
    QVERIFY(count > 300 * 4);
}

QTEST_MAIN(TstStormWatches)

#include "tst_stormwatches.moc"
