#include "sim/gateway.h"
#include "sim/gatewayfaults.h"

#include <QtTest>

using namespace std::chrono_literals;
using sim::GatewayFaults;
using sim::GatewayPlan;
using sim::Milliseconds;

namespace {

GatewayFaults script(const QString &text, quint32 seed = 1)
{
    GatewayFaults faults(seed);
    QString error;
    if (!faults.parse(text, &error))
        QTest::qFail(qPrintable(error), __FILE__, __LINE__);
    return faults;
}

GatewayPlan plan(const QString &text, const QByteArray &line = "#?")
{
    return script(text).planFor(line, 0ms);
}

/// Which of the first lines the script touches, counted from 1; one line comes in each millisecond.
QVector<int> touched(GatewayFaults faults, int lines, const QByteArray &line = "#?")
{
    QVector<int> numbers;
    for (int i = 1; i <= lines; ++i) {
        if (!faults.planFor(line, Milliseconds(i)).isClean())
            numbers.append(i);
    }
    return numbers;
}

} // namespace

class TstSimGatewayFaults : public QObject
{
    Q_OBJECT

private slots:
    void noRulesIsClean();
    void actions();
    void triggers_data();
    void triggers();
    void lineIsAFilter();
    void otherLinesAreNotCounted();
    void greetingIsALine();
    void silenceLastsFromItsLine();
    void oddFieldsReplaceThoseOfTheStatusOnly();
    void mergedPromptStandsBehindTheAnswer();
    void floodStandsBeforeTheAnswer();
    void severalRulesAddUp();
    void clearForgetsRulesAndSilence();
    void badRuleIsReportedWithItsLine_data();
    void badRuleIsReportedWithItsLine();
};

void TstSimGatewayFaults::noRulesIsClean()
{
    const GatewayPlan clean = plan("# nothing\n\n");
    QVERIFY(clean.isClean());
    QVERIFY(!clean.silent && !clean.lose && !clean.close && !clean.merge && !clean.cut);
    QCOMPARE(int(clean.delay.count()), 0);
    QCOMPARE(clean.applyTo("#S;1\r\n"), QByteArray("#S;1\r\n"));
    QCOMPARE(clean.applyTo(""), QByteArray());
}

void TstSimGatewayFaults::actions()
{
    QVERIFY(plan("lose").lose);
    QVERIFY(plan("silent").silent);
    QVERIFY(plan("merge").merge);
    QVERIFY(plan("close").close);
    QCOMPARE(int(plan("close").absence.count()), 0);
    QCOMPARE(int(plan("close ms=40").absence.count()), 40);
    QCOMPARE(int(plan("delay ms=70").delay.count()), 70);
    QVERIFY(!plan("delay ms=70").promptGap);
    QCOMPARE(int(plan("prompt").promptGap->count()), 0);
    QCOMPARE(int(plan("prompt gap=8").promptGap->count()), 8);
    QCOMPARE(plan("prompt gap=8").applyTo("#S\r\n"), QByteArray("#S\r\n"));
    QCOMPARE(plan("cut size=3").cut->size, 3);
    QCOMPARE(int(plan("cut size=3").cut->gap.count()), 0);
    QCOMPARE(int(plan("cut size=3 gap=9").cut->gap.count()), 9);
    QCOMPARE(plan("odd field=3 value=1").oddFields, (QMap<int, QByteArray>{{3, "1"}}));
    QCOMPARE(plan("flood bytes=5").flood, QByteArray("xxxxx"));
    QCOMPARE(plan("flood bytes=5 text=\"ab\"").flood, QByteArray("ababa"));
    QCOMPARE(plan("lose").notes, QStringList("lose (line 1)"));
}

void TstSimGatewayFaults::triggers_data()
{
    QTest::addColumn<QString>("rule");
    QTest::addColumn<QVector<int>>("numbers");

    QTest::newRow("always") << "lose" << QVector<int>{1, 2, 3, 4, 5, 6};
    QTest::newRow("nth") << "lose nth=3" << QVector<int>{3};
    QTest::newRow("every") << "lose every=2" << QVector<int>{2, 4, 6};
    QTest::newRow("count") << "lose count=2" << QVector<int>{1, 2};
    QTest::newRow("after") << "lose after=4" << QVector<int>{5, 6};
    QTest::newRow("from") << "lose from=5" << QVector<int>{5, 6};
    QTest::newRow("for") << "lose from=2 for=3" << QVector<int>{2, 3, 4};
    QTest::newRow("never") << "lose probability=0" << QVector<int>();
}

void TstSimGatewayFaults::triggers()
{
    QFETCH(QString, rule);
    QFETCH(QVector<int>, numbers);
    QCOMPARE(touched(script(rule), 6), numbers);
}

void TstSimGatewayFaults::lineIsAFilter()
{
    GatewayFaults faults = script("lose line=\"#007_\"");
    QVERIFY(faults.planFor("#007_2500:16", 0ms).lose);
    QVERIFY(!faults.planFor("#?", 0ms).lose);
    QVERIFY(!faults.planFor("#007", 0ms).lose);
    QVERIFY(!faults.planFor("", 0ms).lose);
}

void TstSimGatewayFaults::otherLinesAreNotCounted()
{
    GatewayFaults faults = script("lose line=\"#?\" nth=2");
    QVERIFY(!faults.planFor("#?", 0ms).lose);
    QVERIFY(!faults.planFor("#010_B", 0ms).lose);
    QVERIFY(faults.planFor("#?", 0ms).lose);
}

void TstSimGatewayFaults::greetingIsALine()
{
    GatewayFaults faults = script("lose line=greeting");
    QVERIFY(faults.planFor(GatewayFaults::greetingLine(), 0ms).lose);
    QVERIFY(!faults.planFor("#?", 0ms).lose);
}

void TstSimGatewayFaults::silenceLastsFromItsLine()
{
    GatewayFaults faults = script("silent nth=1 ms=100");
    QVERIFY(faults.planFor("#?", 10ms).silent);
    QVERIFY(faults.planFor("#?", 109ms).silent);
    QVERIFY(!faults.planFor("#?", 110ms).silent);
}

void TstSimGatewayFaults::oddFieldsReplaceThoseOfTheStatusOnly()
{
    const GatewayPlan odd = plan("odd field=1 value=one\nodd field=3 value=\"\"");
    QCOMPARE(odd.applyTo("#S;;2;3;4\r\n"), QByteArray("#S;one;2;;4\r\n"));
    QCOMPARE(odd.applyTo("[NEW;;;;\r\n"), QByteArray("[NEW;;;;\r\n"));
    const QByteArray line = plan("odd field=40 value=end").applyTo(sim::Gateway().statusLine(0ms));
    QVERIFY(line.endsWith(";ZRT-1;;end\r\n"));
}

void TstSimGatewayFaults::mergedPromptStandsBehindTheAnswer()
{
    QCOMPARE(plan("merge").applyTo("#S\r\n"), QByteArray("#S\r\n\r\n----[ZRT gateway]---- "));
    QCOMPARE(plan("merge", "#010_B").applyTo(""), QByteArray("\r\n----[ZRT gateway]---- "));
}

void TstSimGatewayFaults::floodStandsBeforeTheAnswer()
{
    const GatewayPlan flood = plan("flood bytes=1000000");
    QCOMPARE(flood.applyTo("#S\r\n"), QByteArray(1000000, 'x') + "#S\r\n");
    QCOMPARE(flood.applyTo("").size(), 1000000);
}

void TstSimGatewayFaults::severalRulesAddUp()
{
    const GatewayPlan all = plan("delay ms=5\ndelay ms=6\ncut size=2\nmerge");
    QCOMPARE(int(all.delay.count()), 11);
    QVERIFY(all.cut && all.merge);
    QCOMPARE(all.notes.size(), 4);
}

void TstSimGatewayFaults::clearForgetsRulesAndSilence()
{
    GatewayFaults faults = script("silent ms=1000");
    QCOMPARE(faults.ruleCount(), 1);
    QVERIFY(faults.planFor("#?", 0ms).silent);
    faults.clear();
    QCOMPARE(faults.ruleCount(), 0);
    QVERIFY(faults.planFor("#?", 1ms).isClean());
}

void TstSimGatewayFaults::badRuleIsReportedWithItsLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("error");

    QTest::newRow("unknown") << "lose\nburn"
                             << "line 2: there is no fault \"burn\" of a gateway";
    QTest::newRow("of the device") << "hot"
                                   << "line 1: there is no fault \"hot\" of a gateway";
    QTest::newRow("unknown key") << "lose code=1"
                                 << "line 1: \"lose\" does not know \"code\"";
    QTest::newRow("size missing") << "cut gap=1"
                                  << "line 1: \"cut\" needs size=";
    QTest::newRow("size") << "cut size=0"
                          << "line 1: size=0 is no number from 1 to 2147483647";
    QTest::newRow("delay") << "delay"
                           << "line 1: \"delay\" needs ms=";
    QTest::newRow("field missing") << "odd value=1"
                                   << "line 1: \"odd\" needs field=";
    QTest::newRow("value missing") << "odd field=1"
                                   << "line 1: \"odd\" needs value=";
    QTest::newRow("field") << "odd field=41 value=1"
                           << "line 1: field=41 is no number from 0 to 40";
    QTest::newRow("value") << "odd field=1 value=\"a;b\""
                           << "line 1: value has a \";\" or what is not Latin-1";
    QTest::newRow("flood") << "flood"
                           << "line 1: \"flood\" needs bytes=";
    QTest::newRow("flood of nothing") << "flood bytes=4 text=\"\""
                                      << "line 1: text is empty";
    QTest::newRow("flood, too much") << "flood bytes=67108865"
                                     << "line 1: bytes=67108865 is no number from 1 to 67108864";
}

void TstSimGatewayFaults::badRuleIsReportedWithItsLine()
{
    QFETCH(QString, text);
    QFETCH(QString, error);
    GatewayFaults faults;
    QString actual;
    QVERIFY(!faults.parse(text, &actual));
    QCOMPARE(actual, error);
    QCOMPARE(faults.ruleCount(), 0);
}

QTEST_GUILESS_MAIN(TstSimGatewayFaults)
#include "tst_simgatewayfaults.moc"
