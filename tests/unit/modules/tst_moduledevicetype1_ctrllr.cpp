#include "bridgetests.h"
#include "modules/moduledevicetype1_ctrllr.h"
#include "modules/moduledevicetype1_view.h"
#include "support/messagecatcher.h"

/// What only the strain gauge module does; the rest is that of its family.
class TstModuleDeviceType1Ctrllr : public BridgeTests
{
    Q_OBJECT

protected:
    int typeCode() const override { return 1; }

private slots:
    void statusNamesTheRow();
    void statusWithTypeCode2SetsOnlyTheIdentificationLabels();
    void unreadableFilterTextInTheStatusReadsAsZero();
    void oldValueWithinTheSecondShowsAtItsEnd();
    void shuntsOfTheWholeModuleGoToChannelZero();
    void rowPassesOnTheShuntsOfTheWholeModule();
    void bothChannelsGetTheSameLists();
    void noDebugLineOfTheAnalogData();
    void channelButtonsDoNothing();
};

void TstModuleDeviceType1Ctrllr::statusNamesTheRow()
{
    FamilyModule module(1);
    module.begin();
    QCOMPARE(module.names(), QStringLiteral("Strain Gauge|Strain Gauge|Strain Gauge"));
    QCOMPARE(module.identification(), kNewIdentification);
    QCOMPARE(module.text("label_FirstInfoDevice"), QStringLiteral("BridgeType  [Ohm]"));
    QCOMPARE(module.text("label_SecondInfoDevice_2"), QString::fromUtf8("Range  [±mV/V]"));
}

void TstModuleDeviceType1Ctrllr::statusWithTypeCode2SetsOnlyTheIdentificationLabels()
{
    FamilyModule module(1);
    module.device.moduleType = 2;
    module.device.shuntPreselect = 0x0F;
    module.begin();
    QCOMPARE(module.identification(), kNewIdentification);
    QCOMPARE(module.names(), kFirstNames);
    QCOMPARE(module.typeBox(Channel::A)->count(), 0);
    QVERIFY(!module.button(Channel::A, "checkBox_Shunt_Pos_Presel")->isChecked());
    QCOMPARE(module.controller->GetData()->hardware, QStringLiteral("XX.XX"));
}

void TstModuleDeviceType1Ctrllr::unreadableFilterTextInTheStatusReadsAsZero()
{
    FamilyModule module(1);
    module.device.filterA = QStringLiteral("1000 Hz");
    module.begin();
    QCOMPARE(module.shown(ChannelParameter::Filter, Channel::A), QStringLiteral("0 black"));
    QCOMPARE(module.shown(ChannelParameter::Filter, Channel::B), QStringLiteral("1000 black"));
}

void TstModuleDeviceType1Ctrllr::oldValueWithinTheSecondShowsAtItsEnd()
{
    FamilyModule module(1);
    module.begin();
    module.change(ChannelParameter::TypeIndex, Channel::A, 2);
    module.takeSent();
    module.time.advance(300);
    module.reportStatic();
    QCOMPARE(module.shown(ChannelParameter::TypeIndex, Channel::A), QStringLiteral("2 red"));
    module.time.advance(700);
    QCOMPARE(module.shown(ChannelParameter::TypeIndex, Channel::A), QStringLiteral("0 black"));
    QCOMPARE(module.takeSent(), QStringList("get 3"));
    // What was asked for then settles it.
    module.report(ChannelParameter::TypeIndex, Channel::A, 2);
    QCOMPARE(module.shown(ChannelParameter::TypeIndex, Channel::A), QStringLiteral("2 black"));
}

void TstModuleDeviceType1Ctrllr::shuntsOfTheWholeModuleGoToChannelZero()
{
    for (const bool on : {true, false}) {
        FamilyModule module(1);
        module.beginWithDifferentChannels();
        qobject_cast<ModuleDeviceType1_Ctrllr *>(module.controller.get())->Slot_SendShuntCmdAll(on);
        QCOMPARE(
            module.takeSent(),
            QStringList(QStringLiteral("T1 m3 c0: type 0, range 0, zero 0, offset , filter 0, inverted 0, "
                                       "shunt %1, level 0, lists 0+0, selector 9")
                            .arg(on ? 1 : 0)));
        module.time.advance(5000);
        QCOMPARE(module.takeSent(), QStringList());
    }
}

void TstModuleDeviceType1Ctrllr::rowPassesOnTheShuntsOfTheWholeModule()
{
    FamilyModule module(1);
    module.begin();
    qobject_cast<ModuleDeviceType1_View *>(&module.row())->Slot_SendShuntAll(true);
    const QStringList sent = module.takeSent();
    QCOMPARE(sent.size(), 1);
    QVERIFY2(sent.first().startsWith(QLatin1String("T1 m3 c0: ")), qPrintable(sent.first()));
    QVERIFY2(sent.first().contains(QLatin1String(", shunt 1, ")), qPrintable(sent.first()));
}

void TstModuleDeviceType1Ctrllr::bothChannelsGetTheSameLists()
{
    FamilyModule module(1);
    // Only universal modules join two lists.
    module.device.sensorList = QStringLiteral("a$b$#c$");
    module.begin();
    for (const Channel channel : kBothChannels) {
        QCOMPARE(module.typeBox(channel)->count(), 3);
        QCOMPARE(module.typeBox(channel)->itemText(2), QStringLiteral("#c"));
    }
}

void TstModuleDeviceType1Ctrllr::noDebugLineOfTheAnalogData()
{
    FamilyModule module(1);
    module.begin();
    const MessageCatcher catcher;
    module.values.flag3 = 1;
    module.values.valueA = 77;
    module.reportFast();
    QVERIFY(!catcher.containsText(QStringLiteral("analogDataA")));
}

void TstModuleDeviceType1Ctrllr::channelButtonsDoNothing()
{
    FamilyModule module(1);
    module.begin();
    for (const char *name : {"pushButton_ChA", "pushButton_ChB"})
        QTest::mouseClick(childByName<QPushButton>(&module.row(), name), Qt::LeftButton);
    QVERIFY(module.openDialogs().isEmpty());
    QCOMPARE(module.takeSent(), QStringList());
}

QTEST_MAIN(TstModuleDeviceType1Ctrllr)
#include "tst_moduledevicetype1_ctrllr.moc"
