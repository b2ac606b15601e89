#include "bridgetests.h"
#include "modules/moduledevicetype4_ctrllr.h"
#include "support/messagecatcher.h"

#include <QRegularExpression>

namespace {

QStringList itemsOf(const QComboBox *box)
{
    QStringList items;
    for (int i = 0; i < box->count(); ++i)
        items << box->itemText(i);
    return items;
}

ModuleDeviceType4_Ctrllr &universal(const FamilyModule &module)
{
    return *qobject_cast<ModuleDeviceType4_Ctrllr *>(module.controller.get());
}

/// Names of the controls of a channel that can be seen.
QString visibleControls(const FamilyModule &module, Channel channel)
{
    QString visible;
    for (const char *name : {"comboBox_BridgeType", "comboBox_Gain", "pushButton_Autozero", "checkBox_RevPol",
                             "checkBox_Shunt_Pos", "checkBox_Shunt_Neg", "checkBox_Shunt_Pos_Presel",
                             "checkBox_Shunt_Neg_Presel", "label", "label_2", "pushButton_ManualOffset"}) {
        if (childByName<QWidget>(&module.strip(channel), name)->isVisible())
            visible += QLatin1String(name) + QLatin1Char(' ');
    }
    if (module.filterBox(channel)->isVisible())
        visible += QStringLiteral("filter");
    return visible;
}

const QString kBridgeControls = QStringLiteral(
    "comboBox_BridgeType comboBox_Gain pushButton_Autozero checkBox_RevPol checkBox_Shunt_Pos "
    "checkBox_Shunt_Neg "
    "checkBox_Shunt_Pos_Presel checkBox_Shunt_Neg_Presel label label_2 pushButton_ManualOffset filter");
const QString kVoltageControls =
    QStringLiteral("comboBox_BridgeType comboBox_Gain pushButton_Autozero checkBox_RevPol filter");

/// Headers of a channel that can be seen.
QString visibleHeaders(const FamilyModule &module, Channel channel)
{
    QString visible;
    for (const char *name : {"Channel", "FirstInfoDevice", "SecondInfoDevice", "Shunt", "Filter",
                             "ManualOffset", "RevPol", "Level"}) {
        const QByteArray whole = QByteArray("label_") + name + (channel == Channel::B ? "_2" : "");
        if (!module.hidden(whole))
            visible += QLatin1String(name) + QLatin1Char(' ');
    }
    return visible.trimmed();
}

const QString kBridgeHeaders =
    QStringLiteral("Channel FirstInfoDevice SecondInfoDevice Shunt Filter ManualOffset RevPol");
const QString kVoltageHeaders = QStringLiteral("Channel FirstInfoDevice SecondInfoDevice Filter RevPol");

} // namespace

/// What only universal modules do but for their dialog; the rest is that of their family.
class TstModuleDeviceType4Ctrllr : public BridgeTests
{
    Q_OBJECT

protected:
    int typeCode() const override { return 9; }

private slots:
    void statusNamesTheRow();
    void listWithOneHashIsDividedBetweenTheChannels();
    void listWithoutHashIsForBothChannels();
    void hashesInLists_data();
    void hashesInLists();
    void eachFunctionHasItsControls_data();
    void eachFunctionHasItsControls();
    void functionsOfTheChannelsAreIndependent();
    void functionCode4WritesTheErrorLineAndShowsAllControls();
    void knownFunctionsWriteNoErrorLine();
    void requestsOfEachFunctionAreTheSame();
    void functionChangeSendsThenFetches();
    void supplySendsThenFetches();
    void staticStatusIsLogged();
    void autozeroTimeOfAIsLogged();
    void noDebugLineOfTheAnalogData();
};

void TstModuleDeviceType4Ctrllr::statusNamesTheRow()
{
    FamilyModule module(9);
    module.device.functionCodeA = 3;
    module.device.functionCodeB = 6;
    module.begin();
    QCOMPARE(module.names(), QString::fromUtf8("Analog|IEPE/ICP®|Potentiometer"));
    QCOMPARE(module.controller->GetData()->address, QStringLiteral("unknown"));
}

void TstModuleDeviceType4Ctrllr::listWithOneHashIsDividedBetweenTheChannels()
{
    FamilyModule module(9);
    module.device.sensorList = QStringLiteral("a$b$#c$d$e$");
    module.device.rangeList = QStringLiteral("1$#2$3$");
    module.device.bridgeIndexB = 2;
    module.begin();
    QCOMPARE(itemsOf(module.typeBox(Channel::A)), (QStringList{"a", "b"}));
    QCOMPARE(itemsOf(module.typeBox(Channel::B)), (QStringList{"c", "d", "e"}));
    QCOMPARE(itemsOf(module.rangeBox(Channel::A)), QStringList{"1"});
    QCOMPARE(itemsOf(module.rangeBox(Channel::B)), (QStringList{"2", "3"}));
    QCOMPARE(module.typeBox(Channel::B)->currentText(), QStringLiteral("e"));
    QCOMPARE(module.controller->GetData()->channel(1).bridgeTypeList, (QStringList{"a", "b"}));
    QCOMPARE(module.controller->GetData()->channel(2).gainList, (QStringList{"2", "3"}));
}

void TstModuleDeviceType4Ctrllr::listWithoutHashIsForBothChannels()
{
    FamilyModule module(9);
    module.device.sensorList = QStringLiteral("a$b$");
    module.device.rangeList = QStringLiteral("1$#2$");
    module.begin();
    for (const Channel channel : kBothChannels)
        QCOMPARE(itemsOf(module.typeBox(channel)), (QStringList{"a", "b"}));
    // Each list is judged by itself.
    QCOMPARE(itemsOf(module.rangeBox(Channel::B)), QStringList{"2"});
}

void TstModuleDeviceType4Ctrllr::hashesInLists_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("a");
    QTest::addColumn<QStringList>("b");
    QTest::newRow("two: the whole text is one list")
        << "a$#b$#c$" << QStringList{"a", "#b", "#c"} << QStringList{"a", "#b", "#c"};
    QTest::newRow("nothing before it") << "#b$" << QStringList() << QStringList{"b"};
    QTest::newRow("nothing behind it") << "a$#" << QStringList{"a"} << QStringList();
    QTest::newRow("alone") << "#" << QStringList() << QStringList();
    QTest::newRow("halves without $") << "a#b" << QStringList() << QStringList();
    QTest::newRow("halves that are not closed") << "a$x#b$y" << QStringList{"a"} << QStringList{"b"};
    QTest::newRow("empty") << QString() << QStringList() << QStringList();
}

void TstModuleDeviceType4Ctrllr::hashesInLists()
{
    QFETCH(QString, text);
    FamilyModule module(9);
    module.device.sensorList = module.device.rangeList = text;
    module.begin();
    QTEST(itemsOf(module.typeBox(Channel::A)), "a");
    QTEST(itemsOf(module.typeBox(Channel::B)), "b");
    QTEST(itemsOf(module.rangeBox(Channel::A)), "a");
    QTEST(itemsOf(module.rangeBox(Channel::B)), "b");
}

void TstModuleDeviceType4Ctrllr::eachFunctionHasItsControls_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("controls");
    QTest::addColumn<QString>("headers");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    const QString range = QString::fromUtf8("Range  [±V]   ");
    const QString iepe = QString::fromUtf8("IEPE/ICP®");
    QTest::newRow("1") << "Strain Gauge" << kBridgeControls << kBridgeHeaders << "BridgeType  [Ohm]"
                       << QString::fromUtf8("Range  [±mV/V]");
    QTest::newRow("2") << "Voltage" << kVoltageControls << kVoltageHeaders << "Input" << range;
    QTest::newRow("3") << iepe << kVoltageControls << kVoltageHeaders << "Input" << range;
    QTest::newRow("5") << "Unknown" << kVoltageControls << kVoltageHeaders << "Input" << range;
    QTest::newRow("6") << "Potentiometer" << kVoltageControls << kVoltageHeaders << "Input" << range;
    QTest::newRow("8") << "Unknown" << kVoltageControls << kVoltageHeaders << "Input" << range;
    for (const char *code : {"0", "4", "7", "9", "255"})
        QTest::newRow(code) << "Unknown" << kBridgeControls << kVoltageHeaders << "Input" << range;
}

void TstModuleDeviceType4Ctrllr::eachFunctionHasItsControls()
{
    QFETCH(QString, name);
    const int code = QByteArray(QTest::currentDataTag()).toInt();
    for (const Channel channel : kBothChannels) {
        FamilyModule module(9);
        const bool isA = channel == Channel::A;
        // From either layout.
        for (const int before : {1, 2}) {
            (isA ? module.device.functionCodeA : module.device.functionCodeB) = static_cast<quint8>(before);
            module.begin();
            (isA ? module.device.functionCodeA : module.device.functionCodeB) = static_cast<quint8>(code);
            module.begin();
            QCOMPARE(module.names().section('|', isA ? 1 : 2, isA ? 1 : 2), name);
            QTEST(visibleControls(module, channel), "controls");
            QTEST(visibleHeaders(module, channel), "headers");
            QTEST(module.text(isA ? "label_FirstInfoDevice" : "label_FirstInfoDevice_2"), "first");
            QTEST(module.text(isA ? "label_SecondInfoDevice" : "label_SecondInfoDevice_2"), "second");
        }
        QCOMPARE(module.takeSent(), QStringList());
    }
}

void TstModuleDeviceType4Ctrllr::functionsOfTheChannelsAreIndependent()
{
    FamilyModule module(9);
    module.device.functionCodeA = 2;
    module.device.functionCodeB = 1;
    module.begin();
    QCOMPARE(visibleControls(module, Channel::A), kVoltageControls);
    QCOMPARE(visibleControls(module, Channel::B), kBridgeControls);
    QCOMPARE(visibleHeaders(module, Channel::A), kVoltageHeaders);
    QCOMPARE(visibleHeaders(module, Channel::B), kBridgeHeaders);
}

void TstModuleDeviceType4Ctrllr::functionCode4WritesTheErrorLineAndShowsAllControls()
{
    FamilyModule module(9);
    module.device.functionCodeA = 2;
    module.begin();
    QCOMPARE(visibleControls(module, Channel::A), kVoltageControls);
    const MessageCatcher catcher;
    module.device.functionCodeA = 4;
    module.reportStatic();
    QCOMPARE(catcher.lines(QtDebugMsg).filter(QStringLiteral("!Error unknown channel module Type")).size(),
             1);
    QCOMPARE(visibleControls(module, Channel::A), kBridgeControls);
    // The row acts all the same.
    module.change(ChannelParameter::Filter, Channel::A, 1);
    QCOMPARE(module.takeSent().size(), 1);
}

void TstModuleDeviceType4Ctrllr::knownFunctionsWriteNoErrorLine()
{
    FamilyModule module(9);
    const MessageCatcher catcher;
    for (const int code : {1, 2, 3, 5, 6, 8}) {
        module.device.functionCodeA = module.device.functionCodeB = static_cast<quint8>(code);
        module.reportStatic();
    }
    QVERIFY(!catcher.containsText(QStringLiteral("!Error unknown channel module Type")));
}

void TstModuleDeviceType4Ctrllr::requestsOfEachFunctionAreTheSame()
{
    for (const int code : {1, 2, 3, 4, 5, 6, 8}) {
        FamilyModule module(9);
        module.device.functionCodeB = static_cast<quint8>(code);
        module.begin();
        module.change(ChannelParameter::RangeIndex, Channel::B, 2);
        QCOMPARE(
            module.takeSent(),
            QStringList("T1 m3 c2: type 0, range 2, zero 0, offset Auto, filter 1000, inverted 0, shunt 0, "
                        "level 0, lists 0+0, selector 2"));
    }
}

void TstModuleDeviceType4Ctrllr::functionChangeSendsThenFetches()
{
    FamilyModule module(9);
    module.begin();
    universal(module).Slot_SendChannelChange(6, 2);
    QCOMPARE(module.takeSent(), (QStringList{"change channel 6 to 2", "get 3"}));
}

void TstModuleDeviceType4Ctrllr::supplySendsThenFetches()
{
    FamilyModule module(9);
    module.begin();
    universal(module).Slot_SendVoltageSupply(5, 1, 90);
    QCOMPARE(module.takeSent(), (QStringList{"supply channel 5: 1 90", "get 3"}));
}

void TstModuleDeviceType4Ctrllr::staticStatusIsLogged()
{
    FamilyModule module(9);
    const MessageCatcher catcher;
    module.device.shuntPreselect = 9;
    module.reportStatic();
    const QStringList lines = catcher.lines(QtDebugMsg);
    const QStringList first = lines.filter(QStringLiteral("Static M Stat ModuleDeviceType4_Ctrllr type"));
    QCOMPARE(first.size(), 1);
    const QRegularExpression form(QStringLiteral(
        "^void ModuleDeviceType4_Ctrllr::Slot_StaticModuleStatus\\(QVariant\\) ?:? ?Static M Stat "
        "ModuleDeviceType4_Ctrllr type +9 +Address: +3$"));
    QVERIFY2(form.match(first.first()).hasMatch(), qPrintable(first.first()));
    const QStringList second = lines.filter(QStringLiteral(" Shunt Preselect value: "));
    QCOMPARE(second.size(), 1);
    QVERIFY2(second.first().trimmed().endsWith(QLatin1Char('9')), qPrintable(second.first()));
}

void TstModuleDeviceType4Ctrllr::autozeroTimeOfAIsLogged()
{
    for (const Channel channel : kBothChannels) {
        FamilyModule module(9);
        module.begin();
        module.change(ChannelParameter::Autozero, channel, 1);
        const MessageCatcher catcher;
        module.time.advance(999);
        QVERIFY(!catcher.containsText(QStringLiteral("Inside timeout")));
        module.time.advance(5000);
        QCOMPARE(catcher.lines(QtDebugMsg).filter(QStringLiteral("Inside timeout")).size(),
                 channel == Channel::A ? 1 : 0);
    }
}

void TstModuleDeviceType4Ctrllr::noDebugLineOfTheAnalogData()
{
    FamilyModule module(9);
    module.begin();
    const MessageCatcher catcher;
    module.values.flag3 = 1;
    module.values.valueA = 77;
    module.reportFast();
    QVERIFY(!catcher.containsText(QStringLiteral("analogDataA")));
}

QTEST_MAIN(TstModuleDeviceType4Ctrllr)
#include "tst_moduledevicetype4_ctrllr.moc"
