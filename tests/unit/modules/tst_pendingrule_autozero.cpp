#include "base/gui/fonts.h"
#include "familyrows.h"

/// The one parameter whose time ends without a word: what was held back shows with the next fast status.
class TstPendingRuleAutozero : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void autozeroHeldBackAppearsWithTheNextFastStatus_data();
    void autozeroHeldBackAppearsWithTheNextFastStatus();
    void autozeroFetchesNoStatus_data();
    void autozeroFetchesNoStatus();
    void autozeroStatusAfterTheSecondShowsAtOnce_data();
    void autozeroStatusAfterTheSecondShowsAtOnce();
    void resetOfTheAutozeroIsHeldLikeAutozero_data();
    void resetOfTheAutozeroIsHeldLikeAutozero();
    void bothChannelsInTheSameSecondRunTwoTimers_data();
    void bothChannelsInTheSameSecondRunTwoTimers();
    void changeAgainAfterAnUnansweredSecondShowsTheNextStatusAtOnce_data();
    void changeAgainAfterAnUnansweredSecondShowsTheNextStatusAtOnce();
    void slotOfAThermoModuleUpdatesTheRecordAndFetchesNothing_data();
    void slotOfAThermoModuleUpdatesTheRecordAndFetchesNothing();
};

void TstPendingRuleAutozero::initTestCase()
{
    fonts::installSubstitutions();
}

void TstPendingRuleAutozero::autozeroHeldBackAppearsWithTheNextFastStatus_data()
{
    addAutozero();
}

void TstPendingRuleAutozero::autozeroHeldBackAppearsWithTheNextFastStatus()
{
    FETCH_MODULE;
    module.change(parameter, channel, 1);
    module.time.advance(300);
    module.reportFast();
    QCOMPARE(module.shown(parameter, channel), QStringLiteral("red"));
    QCOMPARE(module.shown(parameter, otherThan(channel)), QStringLiteral("black"));
    module.time.advance(5000);
    QCOMPARE(module.shown(parameter, channel), QStringLiteral("red"));
    module.reportStatic();
    QCOMPARE(module.shown(parameter, channel), QStringLiteral("red"));
    module.reportFast();
    QCOMPARE(module.shown(parameter, channel), QStringLiteral("black"));
}

void TstPendingRuleAutozero::autozeroFetchesNoStatus_data()
{
    addAutozero();
}

void TstPendingRuleAutozero::autozeroFetchesNoStatus()
{
    FETCH_MODULE;
    module.change(parameter, channel, 1);
    module.takeSent();
    module.reportFast();
    module.time.advance(10000);
    module.reportFast();
    module.time.advance(10000);
    QCOMPARE(module.takeSent(), QStringList());
}

void TstPendingRuleAutozero::autozeroStatusAfterTheSecondShowsAtOnce_data()
{
    addAutozero();
}

void TstPendingRuleAutozero::autozeroStatusAfterTheSecondShowsAtOnce()
{
    FETCH_MODULE;
    module.change(parameter, channel, 1);
    module.time.advance(999);
    module.reportFast();
    QCOMPARE(module.shown(parameter, channel), QStringLiteral("red"));
    module.time.advance(1);
    module.reportFast();
    QCOMPARE(module.shown(parameter, channel), QStringLiteral("black"));
    // Settled: the next change is held again.
    module.change(parameter, channel, 1);
    module.reportFast();
    QCOMPARE(module.shown(parameter, channel), QStringLiteral("red"));
}

void TstPendingRuleAutozero::resetOfTheAutozeroIsHeldLikeAutozero_data()
{
    addAutozero();
}

void TstPendingRuleAutozero::resetOfTheAutozeroIsHeldLikeAutozero()
{
    FETCH_MODULE;
    module.change(parameter, channel, 2);
    QCOMPARE(module.takeSent().size(), 1);
    module.time.advance(500);
    module.reportFast();
    QCOMPARE(module.shown(parameter, channel), QStringLiteral("red"));
    module.time.advance(500);
    module.reportFast();
    QCOMPARE(module.shown(parameter, channel), QStringLiteral("black"));
    QCOMPARE(module.takeSent(), QStringList());
}

void TstPendingRuleAutozero::bothChannelsInTheSameSecondRunTwoTimers_data()
{
    addAutozero();
}

void TstPendingRuleAutozero::bothChannelsInTheSameSecondRunTwoTimers()
{
    FETCH_MODULE;
    const Channel other = otherThan(channel);
    module.change(parameter, channel, 1);
    module.time.advance(400);
    module.change(parameter, other, 1);
    module.reportFast();
    module.time.advance(600);
    module.reportFast();
    QCOMPARE(module.shown(parameter, channel), QStringLiteral("black"));
    QCOMPARE(module.shown(parameter, other), QStringLiteral("red"));
    module.time.advance(399);
    module.reportFast();
    QCOMPARE(module.shown(parameter, other), QStringLiteral("red"));
    module.time.advance(1);
    module.reportFast();
    QCOMPARE(module.shown(parameter, other), QStringLiteral("black"));
}

void TstPendingRuleAutozero::changeAgainAfterAnUnansweredSecondShowsTheNextStatusAtOnce_data()
{
    addAutozero();
}

void TstPendingRuleAutozero::changeAgainAfterAnUnansweredSecondShowsTheNextStatusAtOnce()
{
    FETCH_MODULE;
    module.change(parameter, channel, 1);
    module.time.advance(1500);
    module.change(parameter, channel, 1);
    QCOMPARE(module.shown(parameter, channel), QStringLiteral("red"));
    module.time.advance(100);
    module.reportFast();
    QCOMPARE(module.shown(parameter, channel), QStringLiteral("black"));
}

void TstPendingRuleAutozero::slotOfAThermoModuleUpdatesTheRecordAndFetchesNothing_data()
{
    QTest::addColumn<Channel>("channel");
    QTest::newRow("A") << Channel::A;
    QTest::newRow("B") << Channel::B;
}

void TstPendingRuleAutozero::slotOfAThermoModuleUpdatesTheRecordAndFetchesNothing()
{
    QFETCH(Channel, channel);
    FamilyModule module(4);
    module.begin();
    const QStringList before = module.shownAll();
    module.callSlot(ChannelParameter::Autozero, static_cast<int>(channel));
    QCOMPARE(module.takeSent().size(), 1);
    module.time.advance(200);
    for (const int value : {1, 0, 1}) {
        module.report(ChannelParameter::Autozero, channel, value);
        QCOMPARE(static_cast<int>(module.controller->GetData()->channel(channel).autozero), value);
    }
    module.time.advance(5000);
    module.report(ChannelParameter::Autozero, channel, 0);
    QCOMPARE(module.shownAll(), before);
    QCOMPARE(module.takeSent(), QStringList());
}

QTEST_MAIN(TstPendingRuleAutozero)
#include "tst_pendingrule_autozero.moc"
