#include "sim/faults.h"

#include <QtTest>

using sim::FaultPlan;
using sim::FaultScript;
using sim::Milliseconds;

namespace {

const QByteArray kFast = QByteArray::fromHex("0800000000");

FaultScript script(const QString &text, quint32 seed = 1)
{
    FaultScript faults(seed);
    QString error;
    if (!faults.parse(text, &error))
        QTest::qFail(qPrintable(error), __FILE__, __LINE__);
    return faults;
}

QByteArray staticRequest(int address)
{
    return QByteArray::fromHex("12000000") + static_cast<char>(address);
}

/// Which of the first requests the script touches, counted from 1.
QVector<int> touched(FaultScript faults, int requests, const QByteArray &request = kFast)
{
    QVector<int> numbers;
    for (int i = 1; i <= requests; ++i) {
        if (!faults.planFor(request, Milliseconds(i)).isClean())
            numbers.append(i);
    }
    return numbers;
}

} // namespace

class TstSimFaults : public QObject
{
    Q_OBJECT

private slots:
    void noRulesIsClean();
    void triggers_data();
    void triggers();
    void codeAndArgumentAreFilters();
    void onlyMatchingRequestsAreCounted();
    void timeWindow();
    void probabilityFollowsTheSeed();
    void actions();
    void parametersHaveUsualValues();
    void playedValues();
    void playedValueHoldsForAWhile();
    void silenceLastsFromItsRequest();
    void severalRulesAddUp();
    void clearForgetsRulesAndSilence();
    void badRuleIsReportedWithItsLine_data();
    void badRuleIsReportedWithItsLine();
    void failureAddsNothing();
};

void TstSimFaults::noRulesIsClean()
{
    FaultScript faults = script("# nothing\n\n");
    QCOMPARE(faults.ruleCount(), 0);
    const FaultPlan plan = faults.planFor(kFast, Milliseconds(0));
    QVERIFY(plan.isClean());
    QVERIFY(!plan.silence && !plan.lose && !plan.close && !plan.resetFlag && !plan.twice);
    QVERIFY(!plan.payloadCode && !plan.originator && !plan.corruption && !plan.cut);
    QCOMPARE(int(plan.delay.count()), 0);
}

void TstSimFaults::triggers_data()
{
    QTest::addColumn<QString>("rule");
    QTest::addColumn<QVector<int>>("numbers");

    QTest::newRow("always") << "lose" << QVector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9};
    QTest::newRow("nth") << "lose nth=4" << QVector<int>{4};
    QTest::newRow("every") << "lose every=3" << QVector<int>{3, 6, 9};
    QTest::newRow("next n") << "lose count=2" << QVector<int>{1, 2};
    QTest::newRow("after") << "lose after=7" << QVector<int>{8, 9};
    QTest::newRow("after and nth") << "lose after=2 nth=3" << QVector<int>{5};
    QTest::newRow("after, every and count") << "lose after=1 every=2 count=3" << QVector<int>{3, 5, 7};
    QTest::newRow("never") << "lose probability=0" << QVector<int>{};
}

void TstSimFaults::triggers()
{
    QFETCH(QString, rule);
    QFETCH(QVector<int>, numbers);
    QCOMPARE(touched(script(rule), 9), numbers);
}

void TstSimFaults::codeAndArgumentAreFilters()
{
    QCOMPARE(touched(script("lose code=0x08"), 2).size(), 2);
    QCOMPARE(touched(script("lose code=18"), 2).size(), 0);
    QCOMPARE(touched(script("lose code=0x12 argument=3"), 2, staticRequest(3)).size(), 2);
    QCOMPARE(touched(script("lose code=0x12 argument=3"), 2, staticRequest(4)).size(), 0);
}

void TstSimFaults::onlyMatchingRequestsAreCounted()
{
    FaultScript faults = script("lose code=0x12 nth=2");
    QVERIFY(faults.planFor(kFast, Milliseconds(0)).isClean());
    QVERIFY(faults.planFor(staticRequest(1), Milliseconds(0)).isClean());
    QVERIFY(faults.planFor(kFast, Milliseconds(0)).isClean());
    QVERIFY(faults.planFor(staticRequest(2), Milliseconds(0)).lose);
    QVERIFY(faults.planFor(staticRequest(3), Milliseconds(0)).isClean());
}

void TstSimFaults::timeWindow()
{
    FaultScript faults = script("silence from=1000 for=500");
    for (const int ms : {0, 999, 1500, 9000})
        QVERIFY(!faults.planFor(kFast, Milliseconds(ms)).silence);
    for (const int ms : {1000, 1499})
        QVERIFY(faults.planFor(kFast, Milliseconds(ms)).silence);
}

void TstSimFaults::probabilityFollowsTheSeed()
{
    const QVector<int> first = touched(script("lose probability=0.25", 7), 4000);
    QVERIFY(first.size() > 900 && first.size() < 1100);
    QCOMPARE(touched(script("lose probability=0.25", 7), 4000), first);
    QVERIFY(touched(script("lose probability=0.25", 8), 4000) != first);
    QCOMPARE(touched(script("lose probability=1", 7), 10).size(), 10);
}

void TstSimFaults::actions()
{
    const auto plan = [](const char *rule) {
        FaultScript faults = script(QString::fromLatin1(rule));
        return faults.planFor(kFast, Milliseconds(0));
    };
    QVERIFY(plan("lose").lose);
    QVERIFY(plan("silence").silence);
    QVERIFY(plan("close").close && !plan("close").reset);
    QVERIFY(plan("reset").reset && !plan("reset").close && !plan("reset").resetFlag);
    QVERIFY(plan("reset").destroysReply());
    QCOMPARE(int(plan("reset").absence.count()), 1000);
    QCOMPARE(int(plan("reset ms=20").absence.count()), 20);
    QVERIFY(plan("reset-flag").resetFlag);
    QVERIFY(plan("twice").twice);
    QCOMPARE(int(plan("delay ms=1500").delay.count()), 1500);
    QCOMPARE(int(plan("unknown-code value=0x55").payloadCode.value_or(0)), 0x55);
    QCOMPARE(int(plan("originator value=1").originator.value_or(0)), 1);
    const auto corruption = plan("corrupt part=payload byte=7").corruption;
    QVERIFY(corruption && corruption->part == sim::FramePart::Payload);
    QCOMPARE(corruption->byte, 7);
    const auto cut = plan("cut size=5 gap=20").cut;
    QVERIFY(cut.has_value());
    QCOMPARE(cut->size, 5);
    QCOMPARE(int(cut->gap.count()), 20);
    QCOMPARE(plan("lose").notes, QStringList("lose (line 1)"));
}

void TstSimFaults::parametersHaveUsualValues()
{
    FaultScript faults = script("unknown-code\noriginator\ncorrupt\ncut size=3");
    const FaultPlan plan = faults.planFor(kFast, Milliseconds(0));
    QCOMPARE(int(plan.payloadCode.value_or(0)), 0x03);
    QCOMPARE(int(plan.originator.value_or(0)), 0x50);
    QVERIFY(plan.corruption && plan.corruption->part == sim::FramePart::Crc && plan.corruption->byte == 0);
    QVERIFY(plan.cut && plan.cut->gap.count() == 0);
}

void TstSimFaults::playedValues()
{
    const auto played = [](const char *rules) {
        FaultScript faults = script(QString::fromLatin1(rules));
        return faults.planFor(kFast, Milliseconds(0)).played;
    };
    QVERIFY(!played("lose").inputVolts && !played("lose").loadAmperes);
    QVERIFY(!played("lose").tooHot && !played("lose").noSerial);
    QCOMPARE(played("input volts=6.5").inputVolts.value_or(0), 6.5);
    QCOMPARE(played("load amperes=0.75").loadAmperes.value_or(0), 0.75);
    QVERIFY(played("hot").tooHot);
    QVERIFY(played("no-power").noSerial);
    const auto all = played("input volts=51\nhot\nload amperes=3\nno-power\ninput volts=7");
    QCOMPARE(all.inputVolts.value_or(0), 7.0);
    QCOMPARE(all.loadAmperes.value_or(0), 3.0);
    QVERIFY(all.tooHot && all.noSerial);
}

void TstSimFaults::playedValueHoldsForAWhile()
{
    FaultScript faults = script("input volts=6.5 from=1000 for=500");
    for (const int ms : {0, 999, 1500, 9000})
        QVERIFY(!faults.planFor(kFast, Milliseconds(ms)).played.inputVolts);
    for (const int ms : {1000, 1499})
        QVERIFY(faults.planFor(kFast, Milliseconds(ms)).played.inputVolts);
    FaultScript filtered = script("hot code=0x12 argument=0x81");
    QVERIFY(!filtered.planFor(kFast, Milliseconds(0)).played.tooHot);
    QVERIFY(filtered.planFor(staticRequest(0x81), Milliseconds(0)).played.tooHot);
}

void TstSimFaults::silenceLastsFromItsRequest()
{
    FaultScript faults = script("silence nth=2 ms=4000\ndelay ms=1");
    QVERIFY(!faults.planFor(kFast, Milliseconds(100)).silence);
    QVERIFY(faults.planFor(kFast, Milliseconds(200)).silence);
    QVERIFY(faults.planFor(kFast, Milliseconds(4199)).silence);
    QVERIFY(!faults.planFor(kFast, Milliseconds(4200)).silence);
}

void TstSimFaults::severalRulesAddUp()
{
    FaultScript faults = script("delay ms=100\ndelay ms=50 nth=2\nreset-flag nth=2\n");
    QCOMPARE(int(faults.planFor(kFast, Milliseconds(0)).delay.count()), 100);
    const FaultPlan second = faults.planFor(kFast, Milliseconds(0));
    QCOMPARE(int(second.delay.count()), 150);
    QVERIFY(second.resetFlag);
    QCOMPARE(second.notes, QStringList({"delay (line 1)", "delay (line 2)", "reset-flag (line 3)"}));
}

void TstSimFaults::clearForgetsRulesAndSilence()
{
    FaultScript faults = script("silence ms=100000");
    QVERIFY(faults.planFor(kFast, Milliseconds(0)).silence);
    faults.clear();
    QVERIFY(faults.planFor(kFast, Milliseconds(1)).isClean());
}

void TstSimFaults::badRuleIsReportedWithItsLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("error");

    QTest::newRow("unknown fault") << "lose\nloose"
                                   << "line 2: there is no fault \"loose\"";
    QTest::newRow("unknown key") << "lose ms=1"
                                 << "line 1: \"lose\" does not know \"ms\"";
    QTest::newRow("delay without time") << "#\ndelay"
                                        << "line 2: \"delay\" needs ms=";
    QTest::newRow("cut without size") << "cut gap=1"
                                      << "line 1: \"cut\" needs size=";
    QTest::newRow("cut of size 0") << "cut size=0"
                                   << "line 1: size=0 is no number from 1 to 2147483647";
    QTest::newRow("input without volts") << "input from=1"
                                         << "line 1: \"input\" needs volts=";
    QTest::newRow("load without amperes") << "load"
                                          << "line 1: \"load\" needs amperes=";
    QTest::newRow("input beyond its field") << "input volts=601"
                                            << "line 1: volts=601 is no number from 0 to 600";
    QTest::newRow("load beyond its field") << "load amperes=-1"
                                           << "line 1: amperes=-1 is no number from 0 to 32";
    QTest::newRow("hot with a value") << "hot volts=1"
                                      << "line 1: \"hot\" does not know \"volts\"";
    QTest::newRow("part") << "corrupt part=tail"
                          << "line 1: part=tail is none of header, payload, crc";
    QTest::newRow("probability") << "lose probability=2"
                                 << "line 1: probability=2 is no number from 0 to 1";
    QTest::newRow("code") << "lose code=0x1ff"
                          << "line 1: code=0x1ff is no number from 0 to 255";
    QTest::newRow("every 0") << "lose every=0"
                             << "line 1: every=0 is no number from 1 to 2147483647";
}

void TstSimFaults::badRuleIsReportedWithItsLine()
{
    QFETCH(QString, text);
    QFETCH(QString, error);
    FaultScript faults;
    QString reported;
    QVERIFY(!faults.parse(text, &reported));
    QCOMPARE(reported, error);
}

void TstSimFaults::failureAddsNothing()
{
    FaultScript faults;
    QString error;
    QVERIFY(!faults.parse("lose\nnonsense", &error));
    QCOMPARE(faults.ruleCount(), 0);
}

QTEST_GUILESS_MAIN(TstSimFaults)
#include "tst_simfaults.moc"
