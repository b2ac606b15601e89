#include "support/messagecatcher.h"
#include "support/virtualtime.h"
#include "system/reportedtext.h"

#include <QtTest>
#include <memory>

namespace {

const QString kLate = QStringLiteral("***Really Mad Nothing is initialized");

/// A rate with its record and its place on the screen, as the panel's controller has it.
class Rate
{
public:
    explicit Rate(VirtualTime &time)
        : text(time, [this] { shown << m_record; })
    {}

    void report(const QString &value)
    {
        m_record = value;
        text.reported();
    }

    ReportedText text;
    QStringList shown;

private:
    QString m_record;
};

} // namespace

class TstReportedText : public QObject
{
    Q_OBJECT

private slots:
    void reportWithoutAChangeShowsAtOnce();
    void reportWithinTheSecondIsHeldBack();
    void heldReportDoesNotAppearByItself();
    void firstReportAfterTheSecondShows();
    void afterThatReportsShowAtOnceAgain();
    void timerRunsForTheSecondOnly();
    void shownReportStopsTheTimer();
    void lateReportIsLoggedBeforeItShows();
    void changeWithinTheSecondStartsItAnew();
    void twoRatesRunIndependently();
    void deletedWhilePendingStaysSilent();
};

void TstReportedText::reportWithoutAChangeShowsAtOnce()
{
    VirtualTime time;
    MessageCatcher log;
    Rate rate(time);
    rate.report("5000");
    rate.report("2500");
    rate.report("");
    QCOMPARE(rate.shown, (QStringList{"5000", "2500", ""}));
    QCOMPARE(log.lines(), QStringList());
}

void TstReportedText::reportWithinTheSecondIsHeldBack()
{
    VirtualTime time;
    MessageCatcher log;
    Rate rate(time);
    rate.text.userChanged();
    rate.report("5000");
    time.advance(999);
    rate.report("2500");
    QCOMPARE(rate.shown, QStringList());
    QCOMPARE(log.lines(), QStringList());
}

void TstReportedText::heldReportDoesNotAppearByItself()
{
    VirtualTime time;
    Rate rate(time);
    rate.text.userChanged();
    rate.report("5000");
    time.advance(10000);
    QCOMPARE(rate.shown, QStringList());
}

void TstReportedText::firstReportAfterTheSecondShows()
{
    VirtualTime time;
    MessageCatcher log;
    Rate rate(time);
    rate.text.userChanged();
    rate.report("5000");
    time.advance(1000);
    rate.report("2500");
    QCOMPARE(rate.shown, QStringList{"2500"});
    QCOMPARE(log.lines(), QStringList{kLate});
}

void TstReportedText::afterThatReportsShowAtOnceAgain()
{
    VirtualTime time;
    MessageCatcher log;
    Rate rate(time);
    rate.text.userChanged();
    time.advance(1000);
    rate.report("5000");
    log.clear();
    rate.report("2500");
    QCOMPARE(rate.shown, (QStringList{"5000", "2500"}));
    QCOMPARE(log.lines(), QStringList());
    rate.text.userChanged(); // the time that was over is forgotten
    rate.report("1250");
    QCOMPARE(rate.shown.size(), 2);
}

void TstReportedText::timerRunsForTheSecondOnly()
{
    VirtualTime time;
    Rate rate(time);
    QCOMPARE(time.activeTimers(), 0);
    rate.text.userChanged();
    time.advance(999);
    rate.report("5000"); // held back, the time goes on
    QCOMPARE(time.activeTimers(), 1);
    time.advance(1);
    QCOMPARE(time.activeTimers(), 0);
}

void TstReportedText::shownReportStopsTheTimer()
{
    VirtualTime time;
    Rate rate(time);
    rate.text.userChanged();
    time.advance(1000);
    rate.text.userChanged(); // the time that was over is not forgotten by another change
    QCOMPARE(time.activeTimers(), 1);
    rate.report("5000");
    QCOMPARE(rate.shown, QStringList{"5000"});
    QCOMPARE(time.activeTimers(), 0);
}

void TstReportedText::lateReportIsLoggedBeforeItShows()
{
    VirtualTime time;
    MessageCatcher log;
    QStringList loggedThen;
    ReportedText text(time, [&] { loggedThen = log.lines(); });
    text.userChanged();
    time.advance(1000);
    text.reported();
    QCOMPARE(loggedThen, QStringList{kLate});
}

void TstReportedText::changeWithinTheSecondStartsItAnew()
{
    VirtualTime time;
    Rate rate(time);
    rate.text.userChanged();
    time.advance(900);
    rate.text.userChanged();
    time.advance(900);
    rate.report("5000");
    QCOMPARE(rate.shown, QStringList());
    time.advance(100);
    rate.report("2500");
    QCOMPARE(rate.shown, QStringList{"2500"});
}

void TstReportedText::twoRatesRunIndependently()
{
    VirtualTime time;
    Rate held(time);
    Rate free(time);
    held.text.userChanged();
    held.report("5000");
    free.report("24000");
    QCOMPARE(held.shown, QStringList());
    QCOMPARE(free.shown, QStringList{"24000"});
}

void TstReportedText::deletedWhilePendingStaysSilent()
{
    VirtualTime time;
    auto rate = std::make_unique<Rate>(time);
    rate->text.userChanged();
    rate->report("5000");
    rate.reset();
    MessageCatcher log;
    time.advance(5000);
    QCOMPARE(log.lines(), QStringList());
}

QTEST_GUILESS_MAIN(TstReportedText)
#include "tst_reportedtext.moc"
