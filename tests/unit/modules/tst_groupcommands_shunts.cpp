#include "base/gui/fonts.h"
#include "chainfixture.h"

namespace {

const QString kInactive = QStringLiteral("+off unchecked -off unchecked");

/// The channels on which something of this shunt state can be seen, as "12A".
QString channelsShowing(const Chain &chain, const QString &state)
{
    QStringList channels;
    for (const int index :
         {Chain::Strain1, Chain::Strain2, Chain::VoltageAndStrain, Chain::IepeAndPotentiometer}) {
        for (const Channel channel : kBothChannels) {
            if (chain.at(index).shown(ChannelParameter::Shunt, channel).contains(state))
                channels << QString::number(index + 1) + nameOf(channel);
        }
    }
    return channels.join(' ');
}

} // namespace

/// The gestures on the shunts, which change the screen of all matching channels while one request reaches
/// the device, and the change of function of all universal channels.
class TstGroupCommandsShunts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shiftClickOnAShunt_data();
    void shiftClickOnAShunt();
    void shiftClickOffLeavesTheTimersOfTheOthers();
    void activatePreselectedShowsThePreselection();
    void deactivateAllEndsAllShunts();
    void otherTypesHaveNoShunts();
    void shuntCommandsBeforeTheFirstStatus();
    void shiftOkChangesAllUniversalChannels();
    void changeOfFunctionIsForUniversalModulesOnly();
    void changedFunctionMatchesFromItsStatusOn();
};

void TstGroupCommandsShunts::initTestCase()
{
    fonts::installSubstitutions();
}

void TstGroupCommandsShunts::shiftClickOnAShunt_data()
{
    QTest::addColumn<int>("source");
    QTest::addColumn<Channel>("channel");
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QStringList>("on");
    QTest::addColumn<QStringList>("off");
    const struct
    {
        const char *name;
        int source;
        Channel channel;
        int module;
    } sources[] = {{"strain gauge", Chain::Strain1, Channel::A, 1},
                   {"strain gauge, B of the second", Chain::Strain2, Channel::B, 2},
                   {"universal", Chain::VoltageAndStrain, Channel::B, 12}};
    const QString request =
        QStringLiteral("T1 m%1 c%2: type 0, range 0, zero 0, offset Auto, filter 1000, inverted 0, "
                       "shunt %3, level 0, lists 0+0, selector 7");
    const QString group = QStringLiteral("group type 1 command %1 value 0");
    for (const auto &source : sources) {
        const QString own = request.arg(source.module).arg(static_cast<int>(source.channel));
        QTest::addRow("positive, %s", source.name)
            << source.source << source.channel << QByteArray("checkBox_Shunt_Pos")
            << QStringList{own.arg(139), group.arg(6)} << QStringList{own.arg(138), group.arg(7)};
        QTest::addRow("negative, %s", source.name)
            << source.source << source.channel << QByteArray("checkBox_Shunt_Neg")
            << QStringList{own.arg(141), group.arg(8)} << QStringList{own.arg(140), group.arg(9)};
    }
}

void TstGroupCommandsShunts::shiftClickOnAShunt()
{
    QFETCH(int, source);
    QFETCH(Channel, channel);
    QFETCH(QByteArray, button);
    QFETCH(QStringList, on);
    QFETCH(QStringList, off);
    Chain chain;
    const bool isPositive = button.endsWith("Pos");
    const auto active = [&] {
        QStringList channels;
        for (const int index :
             {Chain::Strain1, Chain::Strain2, Chain::VoltageAndStrain, Chain::IepeAndPotentiometer}) {
            for (const Channel any : kBothChannels) {
                if (chain.at(index).button(any, button)->styleSheet().contains("shunt_aux_fake.bmp"))
                    channels << QString::number(index + 1) + nameOf(any);
            }
        }
        return channels.join(' ');
    };
    QPushButton *own = chain.at(source).button(channel, button);
    QTest::mouseClick(own, Qt::LeftButton, Qt::ShiftModifier);
    QCOMPARE(chain.at(source).takeSent(), on);
    QCOMPARE(active(), kStrain);
    // The other shunt is not concerned, and only the clicked button is checked.
    QCOMPARE(channelsShowing(chain, isPositive ? "-off unchecked" : "+off unchecked"),
             QStringLiteral("1A 1B 2A 2B 12A 12B 13A 13B"));
    QVERIFY(own->isChecked());
    QCOMPARE(channelsShowing(chain, isPositive ? "+on" : "-on").split(' ').size(), 1);

    QTest::mouseClick(own, Qt::LeftButton, Qt::ShiftModifier);
    QCOMPARE(chain.at(source).takeSent(), off);
    QCOMPARE(active(), QString());

    QTest::mouseClick(own, Qt::LeftButton, Qt::ShiftModifier);
    chain.at(source).takeSent();
    chain.time().advance(19999);
    QCOMPARE(active(), kStrain);
    chain.time().advance(1);
    QCOMPARE(active(), QString());
    QVERIFY(!own->isChecked());
    // One request came from all the chain; the source alone fetches its status.
    QCOMPARE(chain.at(source).takeSent(),
             QStringList(QStringLiteral("get %1").arg(chain.at(source).number())));
    QString value;
    QCOMPARE(chain.requesters("shunt", &value), QString());
}

void TstGroupCommandsShunts::shiftClickOffLeavesTheTimersOfTheOthers()
{
    Chain chain;
    chain.sendToAll(1, 6);
    chain.time().advance(5000);
    chain.sendToAll(1, 7);
    QCOMPARE(channelsShowing(chain, kInactive), QStringLiteral("1A 1B 2A 2B 12A 12B 13A 13B"));
    QPushButton *positive = chain.at(Chain::Strain2).button(Channel::B, "checkBox_Shunt_Pos");
    positive->setChecked(true);
    chain.time().advance(14999);
    QVERIFY(positive->isChecked());
    chain.time().advance(1);
    QVERIFY(!positive->isChecked());
}

void TstGroupCommandsShunts::activatePreselectedShowsThePreselection()
{
    Chain chain;
    chain.at(Chain::Strain1).device.shuntPreselect = 0x09;          // positive of A, negative of B
    chain.at(Chain::VoltageAndStrain).device.shuntPreselect = 0x0F; // all, but A measures a voltage
    for (const int index : {Chain::Strain1, Chain::VoltageAndStrain})
        chain.at(index).reportStatic();
    chain.sendToAll(1, 10);
    QCOMPARE(chain.at(Chain::Strain1).shown(ChannelParameter::Shunt, Channel::A),
             QStringLiteral("+off active -off unchecked"));
    QCOMPARE(chain.at(Chain::Strain1).shown(ChannelParameter::Shunt, Channel::B),
             QStringLiteral("+off unchecked -off active"));
    QCOMPARE(chain.at(Chain::VoltageAndStrain).shown(ChannelParameter::Shunt, Channel::B),
             QStringLiteral("+off active -off active"));
    QCOMPARE(channelsShowing(chain, kInactive), QStringLiteral("2A 2B 12A 13A 13B"));
    chain.time().advance(19999);
    QCOMPARE(channelsShowing(chain, kInactive), QStringLiteral("2A 2B 12A 13A 13B"));
    chain.time().advance(1);
    QCOMPARE(channelsShowing(chain, kInactive), QStringLiteral("1A 1B 2A 2B 12A 12B 13A 13B"));
    QString value;
    QCOMPARE(chain.requesters("shunt", &value), QString());
}

void TstGroupCommandsShunts::deactivateAllEndsAllShunts()
{
    Chain chain;
    chain.sendToAll(1, 6);
    chain.sendToAll(1, 8);
    QCOMPARE(channelsShowing(chain, "+off active -off active"), kStrain);
    chain.time().advance(1000);
    chain.sendToAll(1, 11);
    QCOMPARE(channelsShowing(chain, kInactive), QStringLiteral("1A 1B 2A 2B 12A 12B 13A 13B"));
    // Both times are stopped: they do not touch what comes later.
    QPushButton *positive = chain.at(Chain::Strain1).button(Channel::A, "checkBox_Shunt_Pos");
    positive->setChecked(true);
    chain.time().advance(60000);
    QVERIFY(positive->isChecked());
    QString value;
    QCOMPARE(chain.requesters("shunt", &value), QString());
}

void TstGroupCommandsShunts::otherTypesHaveNoShunts()
{
    Chain chain;
    const QStringList before = chain.shownAll();
    for (const int type : {4, 5, 7, 8}) {
        for (const int command : {6, 7, 8, 9, 10, 11})
            chain.sendToAll(type, command);
    }
    QCOMPARE(chain.shownAll(), before);
    // A universal channel with another function only mirrors what is for that function.
    chain.sendToAll(2, 6);
    for (const int index : {Chain::Strain1, Chain::Strain2})
        QCOMPARE(chain.at(index).shown(ChannelParameter::Shunt, Channel::A), kInactive);
    QCOMPARE(chain.at(Chain::VoltageAndStrain).shown(ChannelParameter::Shunt, Channel::B), kInactive);
    QString value;
    QCOMPARE(chain.requesters("shunt", &value), QString());
}

void TstGroupCommandsShunts::shuntCommandsBeforeTheFirstStatus()
{
    Chain chain(false);
    chain.sendToAll(1, 6);
    chain.sendToAll(1, 10);
    // Universal channels have no function yet.
    QCOMPARE(channelsShowing(chain, "+off active"), QStringLiteral("1A 1B 2A 2B"));
    chain.time().advance(20000);
    QString value;
    QCOMPARE(chain.requesters("shunt", &value), QString());
}

void TstGroupCommandsShunts::shiftOkChangesAllUniversalChannels()
{
    Chain chain;
    FamilyModule &source = chain.at(Chain::IepeAndPotentiometer);
    QTest::mouseClick(childByName<QPushButton>(&source.row(), "pushButton_ChA"), Qt::LeftButton);
    QCOMPARE(source.openDialogs().size(), 1);
    QDialog *dialog = source.openDialogs().first();
    clickRadio(dialog, "strainGBtn");
    QTest::mouseClick(childByName<QPushButton>(dialog, "OkBtn"), Qt::LeftButton, Qt::ShiftModifier);
    QCOMPARE(chain.at(Chain::VoltageAndStrain).takeSent(),
             (QStringList{"change channel 23 to 1", "get 12", "change channel 24 to 1", "get 12"}));
    QCOMPARE(source.takeSent(), (QStringList{"group type 9 command 4 value 1", "change channel 25 to 1",
                                             "get 13", "change channel 26 to 1", "get 13"}));
    for (const int index : {Chain::VoltageAndStrain, Chain::IepeAndPotentiometer}) {
        QCOMPARE(chain.at(index).names(), QStringLiteral("Analog|Strain Gauge|Strain Gauge"));
        for (const Channel channel : kBothChannels)
            QVERIFY(!chain.at(index).typeBox(channel)->isVisible());
    }
    for (int index = 0; index < Chain::Count; ++index)
        QCOMPARE(chain.at(index).takeSent(), QStringList());
}

void TstGroupCommandsShunts::changeOfFunctionIsForUniversalModulesOnly()
{
    Chain chain;
    const QStringList before = chain.shownAll();
    for (const int type : {0, 1, 2, 3, 4, 5, 6, 7, 8})
        chain.sendToAll(type, 4, 2);
    for (int index = 0; index < Chain::Count; ++index)
        QCOMPARE(chain.at(index).takeSent(), QStringList());
    QCOMPARE(chain.shownAll(), before);
    QCOMPARE(chain.at(Chain::VoltageAndStrain).names(), QStringLiteral("Analog|Voltage|Strain Gauge"));
}

void TstGroupCommandsShunts::changedFunctionMatchesFromItsStatusOn()
{
    Chain chain;
    FamilyModule &universal = chain.at(Chain::VoltageAndStrain);
    universal.device.functionCodeA = 3;
    universal.reportStatic();
    QString value;
    chain.at(Chain::Voltage1).change(ChannelParameter::RangeIndex, Channel::A, 1, Qt::ShiftModifier);
    QCOMPARE(chain.requesters("range", &value), QStringLiteral("3A 3B 4A 4B"));
    chain.at(Chain::Iepe).change(ChannelParameter::RangeIndex, Channel::A, 1, Qt::ShiftModifier);
    QCOMPARE(chain.requesters("range", &value), QStringLiteral("5A 5B 12A 13A"));
}

QTEST_MAIN(TstGroupCommandsShunts)
#include "tst_groupcommands_shunts.moc"
