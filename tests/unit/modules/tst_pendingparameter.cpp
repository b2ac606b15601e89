#include "modules/common/pendingparameter.h"

#include <QtTest>

namespace {

using TimeOver = PendingParameter::TimeOver;

/// Plays events and tells what was answered. C: the user changes, no answer. S: a status arrives, answered
/// with s to show it or h to hold it back. T: the timer ends, answered with L to show the latest and ask
/// for a status, r to ask only, n for nothing.
QString play(PendingParameter &parameter, const QString &events)
{
    QString answers;
    for (const QChar event : events) {
        if (event == QLatin1Char('C')) {
            parameter.userChanged();
        } else if (event == QLatin1Char('S')) {
            answers += parameter.statusArrived() ? QLatin1Char('s') : QLatin1Char('h');
        } else {
            const PendingParameter::Outcome outcome = parameter.timeOver();
            if (outcome.showLatest && outcome.requestStatus)
                answers += QLatin1Char('L');
            else if (outcome.requestStatus)
                answers += QLatin1Char('r');
            else
                answers += outcome.showLatest ? QLatin1Char('?') : QLatin1Char('n');
        }
    }
    return answers;
}

QString flags(const PendingParameter &parameter)
{
    return QString::number(parameter.isPending()) + QString::number(parameter.hasTimeElapsed()) +
           QString::number(parameter.hasStatusArrived());
}

} // namespace

class TstPendingParameter : public QObject
{
    Q_OBJECT

private slots:
    void followsEveryOrder_data();
    void followsEveryOrder();
    void statusAfterTheTimeIsAlwaysShown_data();
    void statusAfterTheTimeIsAlwaysShown();
    void clearForgetsEverything();
};

void TstPendingParameter::followsEveryOrder_data()
{
    QTest::addColumn<bool>("autozero");
    QTest::addColumn<QString>("events");
    QTest::addColumn<QString>("answers");
    QTest::addColumn<QString>("flagsAfter"); // pending, timeElapsed, statusArrived
    const auto row = [](const char *name, bool autozero, const char *events, const char *answers,
                        const char *after) {
        QTest::newRow(name) << autozero << QString(events) << QString(answers) << QString(after);
    };
    row("nothing yet", false, "", "", "000");
    row("status alone", false, "S", "s", "000");
    row("change alone", false, "C", "", "100");
    row("time alone", false, "T", "r", "010");
    row("time, status", false, "TS", "rs", "000");
    row("change, status", false, "CS", "h", "101");
    row("change, two status", false, "CSS", "hh", "101");
    row("change, status, time", false, "CST", "hL", "000");
    row("change, two status, time", false, "CSST", "hhL", "000");
    row("change, status, time, status", false, "CSTS", "hLs", "000");
    row("change, time", false, "CT", "r", "110");
    row("change, time, time", false, "CTT", "rr", "110");
    row("change, time, status", false, "CTS", "rs", "000");
    row("change, time, status, status", false, "CTSS", "rss", "000");
    row("change again after the time keeps it elapsed", false, "CTC", "r", "110");
    row("and the next status shows at once", false, "CTCS", "rs", "000");
    row("and the second timer only asks", false, "CTCST", "rsr", "010");
    row("a stray time lets the next change through", false, "TCS", "rs", "000");
    row("change, change, status, time", false, "CCST", "hL", "000");
    row("status between two changes shows at the end", false, "CSCT", "hL", "000");
    row("settled, then a new change is held again", false, "CTSCS", "rsh", "101");
    row("status, change, status", false, "SCS", "sh", "101");
    row("autozero: status alone", true, "S", "s", "000");
    row("autozero: change, status", true, "CS", "h", "101");
    row("autozero: time alone asks for nothing", true, "T", "n", "010");
    row("autozero: time shows nothing", true, "CST", "hn", "111");
    row("autozero: next status shows", true, "CSTS", "hns", "000");
    row("autozero: change, time", true, "CT", "n", "110");
    row("autozero: change, time, status", true, "CTS", "ns", "000");
    row("autozero: change, time, change, status", true, "CTCS", "ns", "000");
}

void TstPendingParameter::followsEveryOrder()
{
    QFETCH(bool, autozero);
    QFETCH(QString, events);
    PendingParameter parameter(autozero ? TimeOver::OnlyElapse : TimeOver::ShowLatest);
    QTEST(play(parameter, events), "answers");
    QTEST(flags(parameter), "flagsAfter");
}

void TstPendingParameter::statusAfterTheTimeIsAlwaysShown_data()
{
    QTest::addColumn<bool>("autozero");
    QTest::newRow("ordinary") << false;
    QTest::newRow("autozero") << true;
}

void TstPendingParameter::statusAfterTheTimeIsAlwaysShown()
{
    QFETCH(bool, autozero);
    constexpr int kLength = 7;
    constexpr int kSequences = 2187; // 3 to the power of 7
    for (int number = 0; number < kSequences; ++number) {
        QString events;
        for (int rest = number, i = 0; i < kLength; ++i, rest /= 3)
            events += QLatin1Char("CST"[rest % 3]);
        PendingParameter parameter(autozero ? TimeOver::OnlyElapse : TimeOver::ShowLatest);
        play(parameter, events);
        const QString answers = play(parameter, QStringLiteral("TS"));
        QVERIFY2(answers.endsWith(QLatin1Char('s')), qPrintable(events));
        QCOMPARE(flags(parameter), QStringLiteral("000"));
    }
}

void TstPendingParameter::clearForgetsEverything()
{
    PendingParameter parameter(TimeOver::OnlyElapse);
    play(parameter, QStringLiteral("CST"));
    QCOMPARE(flags(parameter), QStringLiteral("111"));
    parameter.clear();
    QCOMPARE(flags(parameter), QStringLiteral("000"));
}

QTEST_GUILESS_MAIN(TstPendingParameter)
#include "tst_pendingparameter.moc"
