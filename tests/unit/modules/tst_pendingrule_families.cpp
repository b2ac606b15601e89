#include "base/gui/fonts.h"
#include "familyrows.h"

/// What a row shows between the operator's change and the device's answer. In all tests the device has the
/// values 0 at first, and the operator sets 1.
class TstPendingRuleFamilies : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void statusShowsAtOnceIfNothingIsPending_data();
    void statusShowsAtOnceIfNothingIsPending();
    void changeStatusTimeOut_data();
    void changeStatusTimeOut();
    void changeTimeOutStatus_data();
    void changeTimeOutStatus();
    void secondStatusWithinTheSecondOverrides_data();
    void secondStatusWithinTheSecondOverrides();
    void statusOfTheOldValueIsHeldBackToo_data();
    void statusOfTheOldValueIsHeldBackToo();
    void changeAgainAfterAnUnansweredSecondShowsTheNextStatusAtOnce_data();
    void changeAgainAfterAnUnansweredSecondShowsTheNextStatusAtOnce();
    void changeAgainAfterAnAnsweredSecondIsHeldAgain_data();
    void changeAgainAfterAnAnsweredSecondIsHeldAgain();
    void changeWithinTheSecondStartsItAnew_data();
    void changeWithinTheSecondStartsItAnew();
    void bothChannelsInTheSameSecondRunTwoTimers_data();
    void bothChannelsInTheSameSecondRunTwoTimers();
    void otherParametersAreNotHeldBack_data();
    void otherParametersAreNotHeldBack();
    void recordIsUpdatedWhileTheScreenIsHeld_data();
    void recordIsUpdatedWhileTheScreenIsHeld();
    void listIsNotReplacedWhileItsIndexIsHeldBack_data();
    void listIsNotReplacedWhileItsIndexIsHeldBack();
    void foreignStatusNeitherShowsNorAnswers_data();
    void foreignStatusNeitherShowsNorAnswers();
};

void TstPendingRuleFamilies::initTestCase()
{
    fonts::installSubstitutions();
}

void TstPendingRuleFamilies::statusShowsAtOnceIfNothingIsPending_data()
{
    addRows([](ChannelParameter parameter) { return parameter != ChannelParameter::Shunt; });
}

void TstPendingRuleFamilies::statusShowsAtOnceIfNothingIsPending()
{
    FETCH_MODULE;
    for (const int value : {1, 0, 1}) {
        module.report(parameter, channel, value);
        QCOMPARE(module.shown(parameter, channel), module.confirmed(parameter, value));
        QCOMPARE(module.shown(parameter, otherThan(channel)), module.confirmed(parameter, 0));
    }
    module.time.advance(5000);
    QCOMPARE(module.takeSent(), QStringList());
}

void TstPendingRuleFamilies::changeStatusTimeOut_data()
{
    addHeldParameters();
}

void TstPendingRuleFamilies::changeStatusTimeOut()
{
    FETCH_MODULE;
    module.change(parameter, channel, 1);
    QCOMPARE(module.takeSent().size(), 1);
    QCOMPARE(module.shown(parameter, channel), module.asSent(parameter, 1));
    module.time.advance(200);
    module.report(parameter, channel, 1);
    QCOMPARE(module.shown(parameter, channel), module.asSent(parameter, 1));
    module.time.advance(799);
    QCOMPARE(module.shown(parameter, channel), module.asSent(parameter, 1));
    QCOMPARE(module.takeSent(), QStringList());
    module.time.advance(1);
    QCOMPARE(module.shown(parameter, channel), module.confirmed(parameter, 1));
    QCOMPARE(module.takeSent(), kOneFetch);
    // All is settled: the next status shows at once, and no timer runs on.
    module.report(parameter, channel, 0);
    QCOMPARE(module.shown(parameter, channel), module.confirmed(parameter, 0));
    module.time.advance(5000);
    QCOMPARE(module.takeSent(), QStringList());
}

void TstPendingRuleFamilies::changeTimeOutStatus_data()
{
    addHeldParameters();
}

void TstPendingRuleFamilies::changeTimeOutStatus()
{
    FETCH_MODULE;
    module.change(parameter, channel, 1);
    module.takeSent();
    module.time.advance(1000);
    QCOMPARE(module.takeSent(), kOneFetch);
    QCOMPARE(module.shown(parameter, channel), module.asSent(parameter, 1));
    module.time.advance(10000);
    QCOMPARE(module.takeSent(), QStringList());
    QCOMPARE(module.shown(parameter, channel), module.asSent(parameter, 1));
    module.report(parameter, channel, 0);
    QCOMPARE(module.shown(parameter, channel), module.confirmed(parameter, 0));
}

void TstPendingRuleFamilies::secondStatusWithinTheSecondOverrides_data()
{
    addVisibleParameters();
}

void TstPendingRuleFamilies::secondStatusWithinTheSecondOverrides()
{
    FETCH_MODULE;
    for (const int last : {0, 1}) {
        module.change(parameter, channel, 1);
        module.time.advance(200);
        module.report(parameter, channel, 1 - last);
        module.time.advance(200);
        module.report(parameter, channel, last);
        QCOMPARE(module.shown(parameter, channel), module.asSent(parameter, 1));
        module.time.advance(600);
        QCOMPARE(module.shown(parameter, channel), module.confirmed(parameter, last));
        QCOMPARE(module.takeSent().filter("get"), kOneFetch);
    }
}

void TstPendingRuleFamilies::statusOfTheOldValueIsHeldBackToo_data()
{
    addHeldParameters();
}

void TstPendingRuleFamilies::statusOfTheOldValueIsHeldBackToo()
{
    FETCH_MODULE;
    module.change(parameter, channel, 1);
    module.takeSent();
    module.time.advance(500);
    module.report(parameter, channel, 0);
    QCOMPARE(module.shown(parameter, channel), module.asSent(parameter, 1));
    module.time.advance(500);
    QCOMPARE(module.shown(parameter, channel), module.confirmed(parameter, 0));
    QCOMPARE(module.takeSent(), kOneFetch);
    // The status that was asked for settles it.
    module.report(parameter, channel, 1);
    QCOMPARE(module.shown(parameter, channel), module.confirmed(parameter, 1));
}

void TstPendingRuleFamilies::changeAgainAfterAnUnansweredSecondShowsTheNextStatusAtOnce_data()
{
    addHeldParameters();
}

void TstPendingRuleFamilies::changeAgainAfterAnUnansweredSecondShowsTheNextStatusAtOnce()
{
    FETCH_MODULE;
    module.change(parameter, channel, 1);
    module.time.advance(1500);
    // The elapsed time is not forgotten by the second change.
    module.change(parameter, channel, parameter == ChannelParameter::ReversePolarity ? 0 : 2);
    module.takeSent();
    module.time.advance(100);
    module.report(parameter, channel, 1);
    if (parameter != ChannelParameter::Shunt)
        QCOMPARE(module.shown(parameter, channel), module.confirmed(parameter, 1));
    module.time.advance(899);
    QCOMPARE(module.takeSent(), QStringList());
    module.time.advance(1);
    QCOMPARE(module.takeSent(), kOneFetch);
    if (parameter != ChannelParameter::Shunt)
        QCOMPARE(module.shown(parameter, channel), module.confirmed(parameter, 1));
}

void TstPendingRuleFamilies::changeAgainAfterAnAnsweredSecondIsHeldAgain_data()
{
    addVisibleParameters();
}

void TstPendingRuleFamilies::changeAgainAfterAnAnsweredSecondIsHeldAgain()
{
    FETCH_MODULE;
    for (int round = 0; round < 3; ++round) {
        module.change(parameter, channel, 1);
        module.time.advance(300);
        module.report(parameter, channel, 0);
        QCOMPARE(module.shown(parameter, channel), module.asSent(parameter, 1));
        module.time.advance(700);
        QCOMPARE(module.shown(parameter, channel), module.confirmed(parameter, 0));
        QCOMPARE(module.takeSent().filter("get"), kOneFetch);
    }
}

void TstPendingRuleFamilies::changeWithinTheSecondStartsItAnew_data()
{
    addHeldParameters();
}

void TstPendingRuleFamilies::changeWithinTheSecondStartsItAnew()
{
    FETCH_MODULE;
    module.change(parameter, channel, 1);
    module.time.advance(600);
    const bool isPolarity = parameter == ChannelParameter::ReversePolarity;
    module.change(parameter, channel, isPolarity ? 0 : 2);
    const QString byTheOperator = module.shown(parameter, channel);
    QCOMPARE(module.takeSent().size(), 2);
    module.report(parameter, channel, isPolarity ? 1 : 0);
    module.time.advance(999);
    QCOMPARE(module.shown(parameter, channel), byTheOperator);
    QCOMPARE(module.takeSent(), QStringList());
    module.time.advance(1);
    QCOMPARE(module.takeSent(), kOneFetch);
    if (parameter != ChannelParameter::Shunt)
        QCOMPARE(module.shown(parameter, channel), module.confirmed(parameter, isPolarity ? 1 : 0));
}

void TstPendingRuleFamilies::bothChannelsInTheSameSecondRunTwoTimers_data()
{
    addHeldParameters();
}

void TstPendingRuleFamilies::bothChannelsInTheSameSecondRunTwoTimers()
{
    FETCH_MODULE;
    const Channel other = otherThan(channel);
    module.change(parameter, channel, 1);
    module.time.advance(400);
    module.change(parameter, other, 1);
    QCOMPARE(module.takeSent().size(), 2);
    module.set(parameter, channel, 0);
    module.report(parameter, other, 0);
    module.time.advance(599);
    QCOMPARE(module.shown(parameter, channel), module.asSent(parameter, 1));
    module.time.advance(1);
    QCOMPARE(module.takeSent(), kOneFetch);
    QCOMPARE(module.shown(parameter, channel), module.confirmed(parameter, 0));
    QCOMPARE(module.shown(parameter, other), module.asSent(parameter, 1));
    module.time.advance(399);
    QCOMPARE(module.takeSent(), QStringList());
    QCOMPARE(module.shown(parameter, other), module.asSent(parameter, 1));
    module.time.advance(1);
    QCOMPARE(module.takeSent(), kOneFetch);
    QCOMPARE(module.shown(parameter, other), module.confirmed(parameter, 0));
}

void TstPendingRuleFamilies::otherParametersAreNotHeldBack_data()
{
    addRows([](ChannelParameter) { return true; });
}

void TstPendingRuleFamilies::otherParametersAreNotHeldBack()
{
    FETCH_MODULE;
    module.change(parameter, channel, 1);
    module.time.advance(100);
    for (const ChannelParameter other : module.parameters()) {
        for (const Channel any : kBothChannels) {
            const bool isHeld = other == parameter && any == channel;
            if (isHeld || other == ChannelParameter::Shunt)
                continue;
            module.report(other, any, 1);
            QCOMPARE(module.shown(other, any), module.confirmed(other, 1));
        }
    }
    QCOMPARE(module.shown(parameter, channel), module.asSent(parameter, 1));
}

void TstPendingRuleFamilies::recordIsUpdatedWhileTheScreenIsHeld_data()
{
    addRows([](ChannelParameter) { return true; });
}

void TstPendingRuleFamilies::recordIsUpdatedWhileTheScreenIsHeld()
{
    FETCH_MODULE;
    module.change(parameter, channel, 1);
    const auto value = [&] {
        const ChannelRecord record = module.controller->GetData()->channel(static_cast<int>(channel));
        switch (parameter) {
        case ChannelParameter::TypeIndex:
            return QString::number(record.bridgeTypeIndex);
        case ChannelParameter::RangeIndex:
            return QString::number(record.gainIndex);
        case ChannelParameter::Autozero:
            return QString::number(record.autozero);
        case ChannelParameter::ManualOffset:
            return record.manualOffset;
        case ChannelParameter::Filter:
            return QString::number(record.filterValue);
        case ChannelParameter::ReversePolarity:
            return QString::number(record.reversePolarity);
        case ChannelParameter::Shunt:
            return QString::number(record.shuntState);
        }
        return QString();
    };
    const QString before = value();
    module.report(parameter, channel, 1);
    QVERIFY(value() != before);
    module.report(parameter, channel, 0);
    QCOMPARE(value(), before);
    QCOMPARE(module.shown(parameter, channel), module.asSent(parameter, 1));
}

void TstPendingRuleFamilies::listIsNotReplacedWhileItsIndexIsHeldBack_data()
{
    addRows([](ChannelParameter parameter) {
        return parameter == ChannelParameter::TypeIndex || parameter == ChannelParameter::RangeIndex;
    });
}

void TstPendingRuleFamilies::listIsNotReplacedWhileItsIndexIsHeldBack()
{
    FETCH_MODULE;
    module.change(parameter, channel, 1);
    module.device.sensorList = module.device.rangeList = QStringLiteral("x$y$");
    module.report(parameter, channel, 1);
    const QComboBox *held = module.box(parameter, channel);
    QCOMPARE(held->count(), 3);
    QCOMPARE(module.box(parameter, otherThan(channel))->count(), 2);
    const ChannelRecord record = module.controller->GetData()->channel(static_cast<int>(channel));
    QCOMPARE(parameter == ChannelParameter::TypeIndex ? record.bridgeTypeList : record.gainList,
             (QStringList{"x", "y"}));
    module.time.advance(1000);
    QCOMPARE(held->count(), 2);
    QCOMPARE(held->currentText(), QStringLiteral("y"));
    QCOMPARE(module.shown(parameter, channel), QStringLiteral("1 black"));
}

void TstPendingRuleFamilies::foreignStatusNeitherShowsNorAnswers_data()
{
    addHeldParameters();
}

void TstPendingRuleFamilies::foreignStatusNeitherShowsNorAnswers()
{
    FETCH_MODULE;
    module.change(parameter, channel, 1);
    module.device.moduleAddress = 4;
    module.reportStatic();
    module.device.moduleAddress = 3;
    module.device.moduleType = 77;
    module.reportStatic();
    module.time.advance(1000);
    QCOMPARE(module.shown(parameter, channel), module.asSent(parameter, 1));
    module.reportStatic();
    QCOMPARE(module.shown(parameter, channel), module.asSent(parameter, 1));
}

QTEST_MAIN(TstPendingRuleFamilies)
#include "tst_pendingrule_families.moc"
