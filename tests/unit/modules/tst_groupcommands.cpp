#include "base/gui/fonts.h"
#include "chainfixture.h"

#include <QMessageBox>

namespace {

/// Each kind of channel from which a gesture can come, with the channels that it reaches.
void addSources()
{
    QTest::addColumn<int>("source");
    QTest::addColumn<Channel>("channel");
    QTest::addColumn<QString>("reached");
    QTest::newRow("strain gauge") << int(Chain::Strain1) << Channel::A << kStrain;
    QTest::newRow("strain gauge, B of the second") << int(Chain::Strain2) << Channel::B << kStrain;
    QTest::newRow("voltage") << int(Chain::Voltage2) << Channel::A << kVoltage;
    QTest::newRow("IEPE") << int(Chain::Iepe) << Channel::B << kIepe;
    QTest::newRow("thermo") << int(Chain::Thermo1) << Channel::A << kThermo;
    QTest::newRow("XVDT") << int(Chain::Xvdt) << Channel::A << kXvdt;
    QTest::newRow("potentiometer") << int(Chain::Potentiometer) << Channel::A << kPotentiometer;
    QTest::newRow("4_20") << int(Chain::Current) << Channel::A << kCurrent;
    QTest::newRow("auxiliary") << int(Chain::Auxiliary) << Channel::B << kAuxiliary;
    QTest::newRow("universal, voltage") << int(Chain::VoltageAndStrain) << Channel::A << kVoltage;
    QTest::newRow("universal, strain gauge") << int(Chain::VoltageAndStrain) << Channel::B << kStrain;
    QTest::newRow("universal, IEPE") << int(Chain::IepeAndPotentiometer) << Channel::A << kIepe;
    QTest::newRow("universal, potentiometer")
        << int(Chain::IepeAndPotentiometer) << Channel::B << kPotentiometer;
}

} // namespace

/// One gesture with Shift and all the channels that it reaches.
class TstGroupCommands : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shiftPickOfAType_data();
    void shiftPickOfAType();
    void shiftPickOfARange_data();
    void shiftPickOfARange();
    void shiftClickOnAutozero_data();
    void shiftClickOnAutozero();
    void shiftLongPressOnAutozero_data();
    void shiftLongPressOnAutozero();
    void shiftOnTheFilter_data();
    void shiftOnTheFilter();
    void shiftIsForOneGestureOnly();
    void eachReachedChannelHasItsOwnPendingTime();
    void requestsAreSnapshotsOfTheirOwnChannels();
    void indexBeyondTheListOfAnotherModuleLeavesItsBoxBlank();
    void groupFilterBelow200WarnsNowhere();
    void specialRangeReachesOtherChannelsWithNoWarningThere();
    void afterOneShiftClickPlainClicksGoToAllThermoModules();
    void commandsBeforeTheFirstStatus_data();
    void commandsBeforeTheFirstStatus();
    void unknownCommandsDoNothing_data();
    void unknownCommandsDoNothing();
    void foreignTypesReachNobody();
    void voltageCommandNeverReachesAStrainGaugeModule();
    void commandReachesItsOriginThroughTheJoinOnly();

private:
    /// A gesture on the Auto Zero button of each source; `command` is the one that it sends.
    void autozeroReachesAll(int gesture, int command, const QString &selector);
};

void TstGroupCommands::initTestCase()
{
    fonts::installSubstitutions();
}

void TstGroupCommands::shiftPickOfAType_data()
{
    addSources();
}

void TstGroupCommands::shiftPickOfAType()
{
    QFETCH(int, source);
    QFETCH(Channel, channel);
    QFETCH(QString, reached);
    Chain chain;
    chain.at(source).change(ChannelParameter::TypeIndex, channel, 2, Qt::ShiftModifier);
    QString value;
    QCOMPARE(chain.requesters("type", &value), reached);
    QCOMPARE(value, QStringLiteral("2"));
    for (int i = 0; i < Chain::Count; ++i) {
        for (const Channel any : kBothChannels) {
            const bool isReached = reached.split(' ').contains(QString::number(i + 1) + nameOf(any));
            if (i != Chain::Unknown)
                QCOMPARE(chain.at(i).shown(ChannelParameter::TypeIndex, any),
                         QString(isReached ? "2 red" : "0 black"));
        }
    }
}

void TstGroupCommands::shiftPickOfARange_data()
{
    addSources();
}

void TstGroupCommands::shiftPickOfARange()
{
    QFETCH(int, source);
    QFETCH(Channel, channel);
    QFETCH(QString, reached);
    Chain chain;
    chain.at(source).change(ChannelParameter::RangeIndex, channel, 1, Qt::ShiftModifier);
    QString value;
    QCOMPARE(chain.requesters("range", &value), reached);
    QCOMPARE(value, QStringLiteral("1"));
    for (int i = 0; i < Chain::Count; ++i) {
        for (const Channel any : kBothChannels) {
            const bool isReached = reached.split(' ').contains(QString::number(i + 1) + nameOf(any));
            if (i != Chain::Unknown)
                QCOMPARE(chain.at(i).shown(ChannelParameter::RangeIndex, any),
                         QString(isReached ? "1 red" : "0 black"));
        }
    }
}

void TstGroupCommands::shiftClickOnAutozero_data()
{
    addSources();
}

void TstGroupCommands::shiftClickOnAutozero()
{
    autozeroReachesAll(1, 2, QStringLiteral("5"));
}

void TstGroupCommands::autozeroReachesAll(int gesture, int command, const QString &selector)
{
    QFETCH(int, source);
    QFETCH(Channel, channel);
    QFETCH(QString, reached);
    Chain chain;
    if (chain.at(source).isThermo()) {
        // It has no such button, and a command of its type does nothing.
        const QStringList before = chain.shownAll();
        chain.sendToAll(4, command);
        QString none;
        QCOMPARE(chain.requesters("zero", &none), QString());
        QCOMPARE(chain.shownAll(), before);
        return;
    }
    chain.at(source).change(ChannelParameter::Autozero, channel, gesture, Qt::ShiftModifier);
    QString value;
    QCOMPARE(chain.requesters("selector", &value), reached);
    QCOMPARE(value, selector);
    QCOMPARE(chain.shownAll().filter("autozero: red").size(), reached.split(' ').size());
}

void TstGroupCommands::shiftLongPressOnAutozero_data()
{
    addSources();
}

void TstGroupCommands::shiftLongPressOnAutozero()
{
    autozeroReachesAll(2, 5, QStringLiteral("8"));
}

void TstGroupCommands::shiftOnTheFilter_data()
{
    addSources();
}

void TstGroupCommands::shiftOnTheFilter()
{
    QFETCH(int, source);
    QFETCH(Channel, channel);
    QFETCH(QString, reached);
    Chain chain;
    chain.at(source).change(ChannelParameter::Filter, channel, 1, Qt::ShiftModifier);
    const bool isThermo = chain.at(source).isThermo();
    QString value;
    QCOMPARE(chain.requesters("filter", &value), reached);
    QCOMPARE(value, QString(isThermo ? "8" : "1200"));
    QCOMPARE(chain.shownAll().filter(isThermo ? "filter: 8 red" : "filter: 1200 red").size(),
             reached.split(' ').size());
}

void TstGroupCommands::shiftIsForOneGestureOnly()
{
    Chain chain;
    FamilyModule &module = chain.at(Chain::Strain1);
    QString value;
    module.change(ChannelParameter::TypeIndex, Channel::A, 1, Qt::ShiftModifier);
    module.change(ChannelParameter::RangeIndex, Channel::A, 1, Qt::ShiftModifier);
    module.change(ChannelParameter::Autozero, Channel::A, 1, Qt::ShiftModifier);
    chain.forgetSent();
    module.change(ChannelParameter::TypeIndex, Channel::A, 2);
    QCOMPARE(chain.requesters("type", &value), QStringLiteral("1A"));
    module.change(ChannelParameter::RangeIndex, Channel::A, 2);
    QCOMPARE(chain.requesters("range", &value), QStringLiteral("1A"));
    module.change(ChannelParameter::Autozero, Channel::A, 1);
    QCOMPARE(chain.requesters("selector", &value), QStringLiteral("1A"));
    QCOMPARE(value, QStringLiteral("5"));
}

void TstGroupCommands::eachReachedChannelHasItsOwnPendingTime()
{
    Chain chain;
    chain.at(Chain::Strain1).change(ChannelParameter::TypeIndex, Channel::A, 2, Qt::ShiftModifier);
    chain.forgetSent();
    chain.time().advance(500);
    // Only one of them is answered.
    chain.at(Chain::Strain2).report(ChannelParameter::TypeIndex, Channel::B, 1);
    chain.time().advance(500);
    QCOMPARE(chain.at(Chain::Strain1).takeSent(), (QStringList{"get 1", "get 1"}));
    QCOMPARE(chain.at(Chain::Strain2).takeSent(), (QStringList{"get 2", "get 2"}));
    QCOMPARE(chain.at(Chain::VoltageAndStrain).takeSent(), QStringList("get 12"));
    QCOMPARE(chain.at(Chain::Voltage1).takeSent(), QStringList());
    QCOMPARE(chain.at(Chain::Strain2).shown(ChannelParameter::TypeIndex, Channel::B),
             QStringLiteral("1 black"));
    QCOMPARE(chain.at(Chain::Strain2).shown(ChannelParameter::TypeIndex, Channel::A),
             QStringLiteral("0 black"));
    QCOMPARE(chain.at(Chain::Strain1).shown(ChannelParameter::TypeIndex, Channel::B),
             QStringLiteral("2 red"));
}

void TstGroupCommands::requestsAreSnapshotsOfTheirOwnChannels()
{
    Chain chain;
    chain.at(Chain::Strain2).beginWithDifferentChannels();
    chain.forgetSent();
    chain.at(Chain::VoltageAndStrain).change(ChannelParameter::TypeIndex, Channel::B, 0, Qt::ShiftModifier);
    QCOMPARE(chain.at(Chain::Strain2).takeSent(),
             (QStringList{
                 "T1 m2 c1: type 0, range 2, zero 1, offset 1.5, filter 1000, inverted 0, shunt 0, level 0, "
                 "lists 0+0, selector 1",
                 "T1 m2 c2: type 0, range 1, zero 0, offset Auto, filter 1300, inverted 1, shunt 1, level "
                 "0, lists 0+0, selector 1"}));
    QCOMPARE(chain.at(Chain::VoltageAndStrain).takeSent(),
             (QStringList{
                 "group type 1 command 0 value 0",
                 "T1 m12 c2: type 0, range 0, zero 0, offset Auto, filter 1000, inverted 0, shunt 0, level "
                 "0, lists 0+0, selector 1"}));
}

void TstGroupCommands::indexBeyondTheListOfAnotherModuleLeavesItsBoxBlank()
{
    Chain chain;
    FamilyModule &shorter = chain.at(Chain::Strain2);
    shorter.device.sensorList = QStringLiteral("only$");
    shorter.reportStatic();
    chain.at(Chain::Strain1).change(ChannelParameter::TypeIndex, Channel::A, 2, Qt::ShiftModifier);
    QCOMPARE(shorter.shown(ChannelParameter::TypeIndex, Channel::A), QStringLiteral("-1 red"));
    QCOMPARE(shorter.typeBox(Channel::A)->currentText(), QString());
    const QStringList sent = shorter.takeSent();
    QCOMPARE(sent.size(), 2);
    QVERIFY2(sent.first().startsWith(QLatin1String("T1 m2 c1: type 2, ")), qPrintable(sent.first()));
}

void TstGroupCommands::groupFilterBelow200WarnsNowhere()
{
    Chain chain;
    FamilyModule &module = chain.at(Chain::Voltage1);
    module.typeFilter(Channel::A, QStringLiteral("50"));
    QTest::keyClick(module.filterBox(Channel::A), Qt::Key_Return, Qt::ShiftModifier);
    QString value;
    QCOMPARE(chain.requesters("filter", &value), kVoltage);
    QCOMPARE(value, QStringLiteral("50"));
    for (int i = 0; i < Chain::Count; ++i)
        QVERIFY(chain.at(i).openDialogs().isEmpty());
}

void TstGroupCommands::specialRangeReachesOtherChannelsWithNoWarningThere()
{
    Chain chain;
    FamilyModule &source = chain.at(Chain::Thermo1);
    source.pick(source.rangeBox(Channel::A), 2, Qt::ShiftModifier);
    QString value;
    QCOMPARE(chain.requesters("range", &value), QString());
    QCOMPARE(source.openDialogs().size(), 1);
    QTest::mouseClick(qobject_cast<QMessageBox *>(source.openDialogs().first())->button(QMessageBox::Yes),
                      Qt::LeftButton);
    QVERIFY(source.openDialogs().isEmpty());
    QVERIFY(chain.at(Chain::Thermo2).openDialogs().isEmpty());
    QCOMPARE(chain.requesters("range", &value), kThermo);
    QCOMPARE(value, QStringLiteral("2"));
    QCOMPARE(chain.at(Chain::Thermo2).shown(ChannelParameter::RangeIndex, Channel::B),
             QStringLiteral("2 red"));
}

void TstGroupCommands::afterOneShiftClickPlainClicksGoToAllThermoModules()
{
    Chain chain;
    FamilyModule &source = chain.at(Chain::Thermo2);
    clickArrow(source.filterBox(Channel::B), true, Qt::ShiftModifier);
    chain.forgetSent();
    clickArrow(source.filterBox(Channel::B), true);
    QString value;
    QCOMPARE(chain.requesters("filter", &value), kThermo);
    QCOMPARE(value, QStringLiteral("16"));
    // The module's other box is not concerned.
    clickArrow(source.filterBox(Channel::A), false);
    QCOMPARE(chain.requesters("filter", &value), QStringLiteral("7A"));
    QCOMPARE(value, QStringLiteral("8"));
}

void TstGroupCommands::commandsBeforeTheFirstStatus_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("command");
    QTest::addColumn<QString>("reached");
    const QString strain = QStringLiteral("1A 1B 2A 2B"); // universal channels have no function yet
    const QString voltage = QStringLiteral("3A 3B 4A 4B");
    QTest::newRow("type of a strain gauge: guarded") << 1 << 0 << QString();
    QTest::newRow("range of a strain gauge: guarded") << 1 << 1 << QString();
    QTest::newRow("Auto Zero of a strain gauge") << 1 << 2 << strain;
    QTest::newRow("filter of a strain gauge") << 1 << 3 << strain;
    QTest::newRow("reset of a strain gauge") << 1 << 5 << strain;
    QTest::newRow("type of a voltage module: guarded") << 2 << 0 << QString();
    QTest::newRow("range of a voltage module: guarded") << 2 << 1 << QString();
    QTest::newRow("Auto Zero of a voltage module") << 2 << 2 << voltage;
    QTest::newRow("filter of a voltage module") << 2 << 3 << voltage;
    QTest::newRow("reset of a voltage module") << 2 << 5 << voltage;
    QTest::newRow("sensor of a thermo module: guarded") << 4 << 0 << QString();
    QTest::newRow("range of a thermo module: not guarded") << 4 << 1 << kThermo;
    QTest::newRow("filter of a thermo module") << 4 << 3 << kThermo;
}

void TstGroupCommands::commandsBeforeTheFirstStatus()
{
    QFETCH(int, type);
    QFETCH(int, command);
    Chain chain(false);
    chain.sendToAll(type, command, 8);
    QString value;
    QTEST(chain.requesters("selector", &value), "reached");
    // A slot that is refused changes no colour.
    if (command == 0)
        QVERIFY(chain.shownAll().filter("type: ").filter("red").isEmpty());
}

void TstGroupCommands::unknownCommandsDoNothing_data()
{
    QTest::addColumn<int>("command");
    for (const int command : {-1, 12, 13, 255, 1000000})
        QTest::addRow("%d", command) << command;
}

void TstGroupCommands::unknownCommandsDoNothing()
{
    QFETCH(int, command);
    Chain chain;
    const QStringList before = chain.shownAll();
    for (int type = 0; type < 12; ++type)
        chain.sendToAll(type, command, 1);
    chain.time().advance(30000);
    QString value;
    QCOMPARE(chain.requesters("selector", &value), QString());
    QCOMPARE(chain.shownAll(), before);
}

void TstGroupCommands::foreignTypesReachNobody()
{
    Chain chain;
    const QStringList before = chain.shownAll();
    for (const int type : {0, 9, 10, 77, 100, 120, 255}) {
        for (const int command : {0, 1, 2, 3, 5, 6, 7, 8, 9, 10, 11})
            chain.sendToAll(type, command, 1);
    }
    QString value;
    QCOMPARE(chain.requesters("selector", &value), QString());
    QCOMPARE(chain.shownAll(), before);
}

void TstGroupCommands::voltageCommandNeverReachesAStrainGaugeModule()
{
    for (int source : {int(Chain::Voltage1), int(Chain::Iepe), int(Chain::Xvdt), int(Chain::Potentiometer),
                       int(Chain::Current), int(Chain::Auxiliary)}) {
        Chain chain;
        const QStringList before = chain.at(Chain::Strain1).shownAll();
        for (const ChannelParameter parameter : {ChannelParameter::TypeIndex, ChannelParameter::RangeIndex,
                                                 ChannelParameter::Autozero, ChannelParameter::Filter})
            chain.at(source).change(parameter, Channel::A, 1, Qt::ShiftModifier);
        QCOMPARE(chain.at(Chain::Strain1).takeSent(), QStringList());
        QCOMPARE(chain.at(Chain::Strain1).shownAll(), before);
        for (int other : {int(Chain::Voltage2), int(Chain::Iepe), int(Chain::Xvdt)}) {
            if (other != source && !(source == Chain::Voltage1 && other == Chain::Voltage2))
                QCOMPARE(chain.at(other).takeSent(), QStringList());
        }
    }
}

void TstGroupCommands::commandReachesItsOriginThroughTheJoinOnly()
{
    FamilyModule alone(2);
    alone.begin();
    alone.change(ChannelParameter::TypeIndex, Channel::A, 2, Qt::ShiftModifier);
    QCOMPARE(alone.takeSent(), QStringList("group type 2 command 0 value 2"));
    alone.change(ChannelParameter::Autozero, Channel::B, 1, Qt::ShiftModifier);
    QCOMPARE(alone.takeSent(), QStringList("group type 2 command 2 value 0"));
    alone.change(ChannelParameter::Autozero, Channel::A, 2, Qt::ShiftModifier);
    QCOMPARE(alone.takeSent(), QStringList("group type 2 command 5 value 0"));
    alone.change(ChannelParameter::Filter, Channel::B, 2, Qt::ShiftModifier);
    QCOMPARE(alone.takeSent(), QStringList("group type 2 command 3 value 1300"));
    alone.time.advance(5000);
    QCOMPARE(alone.takeSent(), QStringList());
}

QTEST_MAIN(TstGroupCommands)
#include "tst_groupcommands.moc"
