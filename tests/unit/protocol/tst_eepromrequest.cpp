#include "sessionfixture.h"

#include <QtTest>

namespace {

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

} // namespace

/// The pause that an EEPROM request makes in the session.
class TstEepromRequest : public QObject
{
    Q_OBJECT

private slots:
    void init() { s = std::make_unique<SessionFixture>(); }
    void cleanup() { s.reset(); }

    void cyclePausesForTwoSeconds();
    void noTimeOutOfTheCycleRunsAfterwards();
    void noTimeOutOfTheWalkRunsAfterwards();
    void pauseEndsOnce();
    void requestInThePauseMakesItLonger();
    void activityOfTheTimersIsLogged();

private:
    std::unique_ptr<SessionFixture> s;
};

void TstEepromRequest::cyclePausesForTwoSeconds()
{
    s->bringTo(SessionState::Cyclic);
    s->time.advance(400);
    s->comm->SendModuleEepromRequest(5);
    s->time.advance(2499); // 2000 ms, then a turn of the cycle
    QCOMPARE(s->sent(), QList<QByteArray>());
    s->time.advance(1);
    QCOMPARE(s->sent(), QList<QByteArray>{"0800000000"});
}

void TstEepromRequest::noTimeOutOfTheCycleRunsAfterwards()
{
    s->bringTo(SessionState::Cyclic);
    s->comm->SendModuleEepromRequest(5);
    s->time.advance(60000);
    QVERIFY(!s->takeEvents().contains(text("CleanSlate")));
    QCOMPARE(s->comm->state(), SessionState::Cyclic);
}

void TstEepromRequest::noTimeOutOfTheWalkRunsAfterwards()
{
    s->bringTo(SessionState::ModuleWalk);
    s->comm->SendModuleEepromRequest(5);
    s->time.advance(3800);
    QVERIFY(!s->takeEvents().contains(text("CleanSlate")));
    QCOMPARE(s->comm->state(), SessionState::ModuleWalk);
    QCOMPARE(s->sent(), QList<QByteArray>{"0800000000"}); // the cycle is what the pause ends in
}

void TstEepromRequest::pauseEndsOnce()
{
    s->bringTo(SessionState::Cyclic);
    s->comm->SendModuleEepromRequest(5);
    s->time.advance(2000);
    s->comm->Slot_CommTimeout(); // stops the cycle that the end of the pause had started
    s->endTurn();                // the semaphore is up: a cycle that runs would send
    s->forget();
    s->time.advance(3799);
    QCOMPARE(s->sent(), QList<QByteArray>());
}

void TstEepromRequest::requestInThePauseMakesItLonger()
{
    s->bringTo(SessionState::Cyclic);
    s->comm->SendModuleEepromRequest(5);
    s->time.advance(1500);
    s->comm->SendModuleEepromRequest(6);
    s->time.advance(2499);
    QCOMPARE(s->sent(), QList<QByteArray>());
    s->time.advance(1);
    QCOMPARE(s->sent(), QList<QByteArray>{"0800000000"});
}

void TstEepromRequest::activityOfTheTimersIsLogged()
{
    s->bringTo(SessionState::Cyclic);
    s->comm->SendModuleEepromRequest(5);
    QCOMPARE(s->log.lines(),
             QStringList({text("pCommTimer->isActive() true"), text("pCyclicCommTimer->isActive() true"),
                          text("pInitSequenceTimer->isActive() false"),
                          text("pEepromRequestTimeoutTimer->isActive() false"),
                          text("~ SendModuleEepromRequest()")}));
    s->bringTo(SessionState::ModuleWalk);
    s->comm->SendModuleEepromRequest(5); // the pause of the request before still runs
    QCOMPARE(s->log.lines(),
             QStringList({text("pCommTimer->isActive() false"), text("pCyclicCommTimer->isActive() false"),
                          text("pInitSequenceTimer->isActive() true"),
                          text("pEepromRequestTimeoutTimer->isActive() true"),
                          text("~ SendModuleEepromRequest()")}));
}

QTEST_GUILESS_MAIN(TstEepromRequest)
#include "tst_eepromrequest.moc"
