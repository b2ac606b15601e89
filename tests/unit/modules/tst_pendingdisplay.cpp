#include "modules/common/pendingdisplay.h"
#include "support/virtualtime.h"

#include <QtTest>
#include <memory>

namespace {

using TimeOver = PendingDisplay::TimeOver;

/// A parameter with its data record and its place on the screen, as a controller has it.
class Parameter
{
public:
    explicit Parameter(VirtualTime &time, TimeOver timeOver = TimeOver::ShowLatest)
        : display(time, {[this] { showRecord(); }, [this] { ++requests; }}, timeOver)
    {}

    void change(int value)
    {
        screen = value;
        confirmed = false;
        display.userChanged();
    }

    void status(int value)
    {
        m_record = value;
        display.statusArrived();
    }

    PendingDisplay display;
    int screen = 0;
    bool confirmed = true; ///< black, not red
    int requests = 0;

private:
    void showRecord()
    {
        screen = m_record;
        confirmed = true;
    }

    int m_record = 0;
};

} // namespace

class TstPendingDisplay : public QObject
{
    Q_OBJECT

private slots:
    void statusWithinTheSecondShowsAtItsEnd();
    void secondStatusWithinTheSecondOverrides();
    void withoutStatusTheUsersValueStays();
    void firstStatusAfterTheSecondShowsAtOnce();
    void autozeroHeldBackShowsWithTheNextStatus();
    void changeAfterAnUnansweredSecondIsNotHeld();
    void twoParametersRunIndependently();
    void changeWithinTheSecondStartsItAnew();
    void statusWithoutAChangeShowsAtOnce();
    void timeOverShowsBeforeItAsks();
    void clearedDisplayHoldsNothingBack();
    void cancelledDisplayEndsWithoutAWord();
    void autozeroShowsAndAsksForNothingByItself();
    void ownSlotStandsInForTheEndOfTheTime();
    void deletedWhilePendingStaysSilent();
};

void TstPendingDisplay::statusWithinTheSecondShowsAtItsEnd()
{
    VirtualTime time;
    Parameter parameter(time, TimeOver::ShowLatest);
    parameter.change(7);
    time.advance(200);
    parameter.status(3);
    QCOMPARE(parameter.screen, 7);
    QVERIFY(!parameter.confirmed);
    time.advance(799);
    QCOMPARE(parameter.screen, 7);
    time.advance(1);
    QCOMPARE(parameter.screen, 3);
    QVERIFY(parameter.confirmed);
    QCOMPARE(parameter.requests, 1);
    time.advance(5000);
    QCOMPARE(parameter.requests, 1);
}

void TstPendingDisplay::secondStatusWithinTheSecondOverrides()
{
    VirtualTime time;
    Parameter parameter(time, TimeOver::ShowLatest);
    parameter.change(7);
    time.advance(200);
    parameter.status(3);
    time.advance(200);
    parameter.status(4);
    QCOMPARE(parameter.screen, 7);
    time.advance(600);
    QCOMPARE(parameter.screen, 4);
}

void TstPendingDisplay::withoutStatusTheUsersValueStays()
{
    VirtualTime time;
    Parameter parameter(time, TimeOver::ShowLatest);
    parameter.change(7);
    time.advance(10000);
    QCOMPARE(parameter.screen, 7);
    QVERIFY(!parameter.confirmed);
    QCOMPARE(parameter.requests, 1);
}

void TstPendingDisplay::firstStatusAfterTheSecondShowsAtOnce()
{
    VirtualTime time;
    Parameter parameter(time, TimeOver::ShowLatest);
    parameter.change(7);
    time.advance(1001);
    parameter.status(3);
    QCOMPARE(parameter.screen, 3);
    QVERIFY(parameter.confirmed);
}

void TstPendingDisplay::autozeroHeldBackShowsWithTheNextStatus()
{
    VirtualTime time;
    Parameter parameter(time, TimeOver::OnlyElapse);
    parameter.change(1);
    time.advance(200);
    parameter.status(0);
    time.advance(1500);
    QCOMPARE(parameter.screen, 1);
    QCOMPARE(parameter.requests, 0);
    parameter.status(0);
    QCOMPARE(parameter.screen, 0);
    QVERIFY(parameter.confirmed);
}

void TstPendingDisplay::changeAfterAnUnansweredSecondIsNotHeld()
{
    VirtualTime time;
    Parameter parameter(time, TimeOver::ShowLatest);
    parameter.change(7);
    time.advance(1500);
    parameter.change(8);
    parameter.status(3);
    QCOMPARE(parameter.screen, 3);
}

void TstPendingDisplay::twoParametersRunIndependently()
{
    VirtualTime time;
    Parameter a(time, TimeOver::ShowLatest);
    Parameter b(time, TimeOver::ShowLatest);
    a.change(7);
    time.advance(500);
    b.change(8);
    a.status(1);
    b.status(2);
    time.advance(500);
    QCOMPARE(a.screen, 1);
    QCOMPARE(b.screen, 8);
    time.advance(500);
    QCOMPARE(b.screen, 2);
    QCOMPARE(a.requests, 1);
    QCOMPARE(b.requests, 1);
}

void TstPendingDisplay::changeWithinTheSecondStartsItAnew()
{
    VirtualTime time;
    Parameter parameter(time);
    parameter.change(7);
    time.advance(900);
    parameter.change(8);
    parameter.status(3);
    time.advance(999);
    QCOMPARE(parameter.screen, 8);
    QCOMPARE(parameter.requests, 0);
    time.advance(1);
    QCOMPARE(parameter.screen, 3);
    QCOMPARE(parameter.requests, 1);
}

void TstPendingDisplay::statusWithoutAChangeShowsAtOnce()
{
    VirtualTime time;
    Parameter parameter(time);
    parameter.status(3);
    QCOMPARE(parameter.screen, 3);
    time.advance(5000);
    QCOMPARE(parameter.requests, 0);
}

void TstPendingDisplay::timeOverShowsBeforeItAsks()
{
    VirtualTime time;
    QStringList calls;
    PendingDisplay display(time, {[&calls] { calls << QStringLiteral("show"); },
                                  [&calls] { calls << QStringLiteral("request"); }});
    display.userChanged();
    QVERIFY(display.isPending());
    display.statusArrived();
    QVERIFY(display.isPending());
    QCOMPARE(calls, QStringList());
    time.advance(1000);
    QCOMPARE(calls, (QStringList{QStringLiteral("show"), QStringLiteral("request")}));
    QVERIFY(!display.isPending());
}

void TstPendingDisplay::clearedDisplayHoldsNothingBack()
{
    VirtualTime time;
    Parameter parameter(time);
    parameter.change(7);
    parameter.status(3);
    parameter.display.clear();
    QVERIFY(!parameter.display.isPending());
    time.advance(1000); // the timer still asks, and has nothing to show
    QCOMPARE(parameter.screen, 7);
    QCOMPARE(parameter.requests, 1);
    parameter.status(4);
    QCOMPARE(parameter.screen, 4);
}

void TstPendingDisplay::cancelledDisplayEndsWithoutAWord()
{
    VirtualTime time;
    Parameter parameter(time);
    parameter.change(7);
    parameter.status(3);
    parameter.display.cancel();
    QVERIFY(!parameter.display.isPending());
    time.advance(5000);
    QCOMPARE(parameter.requests, 0);
    QCOMPARE(parameter.screen, 7);
    // It can be used again.
    parameter.status(4);
    QCOMPARE(parameter.screen, 4);
    parameter.change(8);
    time.advance(1000);
    QCOMPARE(parameter.requests, 1);
}

void TstPendingDisplay::autozeroShowsAndAsksForNothingByItself()
{
    VirtualTime time;
    int shows = 0;
    PendingDisplay display(time, {[&shows] { ++shows; }, nullptr}, TimeOver::OnlyElapse);
    display.userChanged();
    display.statusArrived();
    time.advance(5000); // no call of the request that is not there
    QCOMPARE(shows, 0);
    QVERIFY(display.isPending());
    display.statusArrived();
    QCOMPARE(shows, 1);
    QVERIFY(!display.isPending());
}

void TstPendingDisplay::ownSlotStandsInForTheEndOfTheTime()
{
    VirtualTime time;
    QStringList calls;
    std::unique_ptr<PendingDisplay> display;
    const auto slot = [&] {
        calls << QStringLiteral("slot");
        display->timeOver();
    };
    display = std::make_unique<PendingDisplay>(
        time, PendingDisplay::Callbacks{[&calls] { calls << QStringLiteral("show"); },
                                        [&calls] { calls << QStringLiteral("request"); }, slot});
    display->userChanged();
    display->statusArrived();
    time.advance(3000);
    QCOMPARE(calls, (QStringList{QStringLiteral("slot"), QStringLiteral("show"), QStringLiteral("request")}));
}

void TstPendingDisplay::deletedWhilePendingStaysSilent()
{
    VirtualTime time;
    int calls = 0;
    {
        PendingDisplay display(time, {[&calls] { ++calls; }, [&calls] { ++calls; }});
        display.userChanged();
        display.statusArrived();
    }
    time.advance(5000);
    QCOMPARE(calls, 0);
}

QTEST_GUILESS_MAIN(TstPendingDisplay)
#include "tst_pendingdisplay.moc"
