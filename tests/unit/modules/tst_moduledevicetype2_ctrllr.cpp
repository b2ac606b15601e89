#include "amplifiertests.h"
#include "support/messagecatcher.h"

#include <QRegularExpression>

/// What only voltage-like modules do; the rest is that of their family.
class TstModuleDeviceType2Ctrllr : public AmplifierTests
{
    Q_OBJECT

protected:
    int typeCode() const override { return 2; }
    void addRequests() const override;
    void addRequestsOfNoChannel() const override;

private slots:
    void rowTakesTheNameOfTheReportedCode_data();
    void rowTakesTheNameOfTheReportedCode();
    void statusWithCode2AtAControllerMadeForCode3SetsTheNameToVoltage();
    void statusWithATypeCodeOutsideTheListSetsOnlyTheIdentificationLabels();
    void xvdtChangesTheHeadersOfBothColumns();
    void otherCodesLeaveTheHeaders();
    void requestsOfEachCodeAreTheSame();
    void listIsNotSplitForTheChannels();
    void rowHasNoShuntsAndNoOffset();
    void analogDataIsLoggedOnlyWithItsFlag();
};

void TstModuleDeviceType2Ctrllr::addRequests() const
{
    using P = ChannelParameter;
    addRequest(P::TypeIndex, Channel::A, 0,
               "T2 m3 c1: type 0, range 2, zero 1, filter 1000, inverted 0, level 0, lists 0+0, selector 1");
    addRequest(P::TypeIndex, Channel::B, 0,
               "T2 m3 c2: type 0, range 1, zero 0, filter 1300, inverted 1, level 0, lists 0+0, selector 1");
    addRequest(P::RangeIndex, Channel::A, 0,
               "T2 m3 c1: type 1, range 0, zero 1, filter 1000, inverted 0, level 0, lists 0+0, selector 2");
    addRequest(P::RangeIndex, Channel::B, 2,
               "T2 m3 c2: type 2, range 2, zero 0, filter 1300, inverted 1, level 0, lists 0+0, selector 2");
    addRequest(P::Filter, Channel::A, 1,
               "T2 m3 c1: type 1, range 2, zero 1, filter 1200, inverted 0, level 0, lists 0+0, selector 4");
    addRequest(P::Filter, Channel::B, 1,
               "T2 m3 c2: type 2, range 1, zero 0, filter 1200, inverted 1, level 0, lists 0+0, selector 4");
    addRequest(P::Autozero, Channel::A, 1,
               "T2 m3 c1: type 1, range 2, zero 1, filter 1000, inverted 0, level 0, lists 0+0, selector 5");
    addRequest(P::Autozero, Channel::B, 1,
               "T2 m3 c2: type 2, range 1, zero 1, filter 1300, inverted 1, level 0, lists 0+0, selector 5");
    addRequest(P::ReversePolarity, Channel::A, 1,
               "T2 m3 c1: type 1, range 2, zero 1, filter 1000, inverted 1, level 0, lists 0+0, selector 6");
    addRequest(P::ReversePolarity, Channel::B, 0,
               "T2 m3 c2: type 2, range 1, zero 0, filter 1300, inverted 0, level 0, lists 0+0, selector 6");
    addRequest(P::Autozero, Channel::A, 2,
               "T2 m3 c1: type 1, range 2, zero 1, filter 1000, inverted 0, level 0, lists 0+0, selector 8");
    addRequest(P::Autozero, Channel::B, 2,
               "T2 m3 c2: type 2, range 1, zero 1, filter 1300, inverted 1, level 0, lists 0+0, selector 8");
}

void TstModuleDeviceType2Ctrllr::addRequestsOfNoChannel() const
{
    using P = ChannelParameter;
    addRequestOfNoChannel(
        P::TypeIndex,
        "T2 m3 c%1: type 2, range 0, zero 0, filter 0, inverted 0, level 0, lists 0+0, selector 1");
    addRequestOfNoChannel(
        P::RangeIndex,
        "T2 m3 c%1: type 0, range 1, zero 0, filter 0, inverted 0, level 0, lists 0+0, selector 2");
    addRequestOfNoChannel(
        P::Filter,
        "T2 m3 c%1: type 0, range 0, zero 0, filter 300, inverted 0, level 0, lists 0+0, selector 4");
    addRequestOfNoChannel(
        P::Autozero,
        "T2 m3 c%1: type 0, range 0, zero 1, filter 0, inverted 0, level 0, lists 0+0, selector 5");
    addRequestOfNoChannel(
        P::ReversePolarity,
        "T2 m3 c%1: type 0, range 0, zero 0, filter 0, inverted 1, level 0, lists 0+0, selector 6");
}

void TstModuleDeviceType2Ctrllr::rowTakesTheNameOfTheReportedCode_data()
{
    QTest::addColumn<int>("own");
    QTest::addColumn<int>("reported");
    QTest::addColumn<QString>("name");
    const QList<QPair<int, QString>> names{{2, "Voltage"}, {3, QString::fromUtf8("IEPE/ICP®")},
                                           {5, "XVDT"},    {6, "Potentiometer"},
                                           {7, "4_20"},    {8, "Auxilary"}};
    for (const auto &made : names) {
        for (const auto &reported : names)
            QTest::addRow("%d at %d", reported.first, made.first)
                << made.first << reported.first << reported.second;
    }
}

void TstModuleDeviceType2Ctrllr::rowTakesTheNameOfTheReportedCode()
{
    QFETCH(int, own);
    QFETCH(int, reported);
    QFETCH(QString, name);
    FamilyModule module(own);
    module.device.moduleType = static_cast<quint8>(reported);
    module.beginWithDifferentChannels();
    QCOMPARE(module.names(), QStringList({name, name, name}).join(QLatin1Char('|')));
    QCOMPARE(module.shown(ChannelParameter::TypeIndex, Channel::A), QStringLiteral("1 black"));
    QCOMPARE(module.shown(ChannelParameter::ReversePolarity, Channel::B), QStringLiteral("on black"));
    QCOMPARE(module.text("label_SecondInfoDevice"),
             QString::fromUtf8(reported == 5 ? "Range  " : "Range  [±V]   "));
    module.change(ChannelParameter::TypeIndex, Channel::A, 0);
    QCOMPARE(module.takeSent(),
             QStringList("T2 m3 c1: type 0, range 2, zero 1, filter 1000, inverted 0, level 0, "
                         "lists 0+0, selector 1"));
}

void TstModuleDeviceType2Ctrllr::statusWithCode2AtAControllerMadeForCode3SetsTheNameToVoltage()
{
    FamilyModule module(3);
    module.begin();
    QCOMPARE(module.names(), QString::fromUtf8("IEPE/ICP®|IEPE/ICP®|IEPE/ICP®"));
    module.device.moduleType = 2;
    module.report(ChannelParameter::TypeIndex, Channel::B, 2);
    QCOMPARE(module.names(), QStringLiteral("Voltage|Voltage|Voltage"));
    QCOMPARE(module.shown(ChannelParameter::TypeIndex, Channel::B), QStringLiteral("2 black"));
    // Gestures still go by the code that the controller was made for.
    module.pick(module.rangeBox(Channel::A), 1, Qt::ShiftModifier);
    QCOMPARE(module.takeSent(), QStringList("group type 3 command 1 value 1"));
}

void TstModuleDeviceType2Ctrllr::statusWithATypeCodeOutsideTheListSetsOnlyTheIdentificationLabels()
{
    for (const int code : {0, 1, 4, 9, 10}) {
        FamilyModule module(6);
        module.device.moduleType = static_cast<quint8>(code);
        module.begin();
        QCOMPARE(module.identification(), kNewIdentification);
        QCOMPARE(module.names(), kFirstNames);
        QCOMPARE(module.typeBox(Channel::A)->count(), 0);
    }
}

void TstModuleDeviceType2Ctrllr::xvdtChangesTheHeadersOfBothColumns()
{
    FamilyModule module(5);
    QCOMPARE(module.text("label_SecondInfoDevice_2"), QString::fromUtf8("Range  [±V]   "));
    module.begin();
    for (const char *suffix : {"", "_2"}) {
        QCOMPARE(module.text(QByteArray("label_FirstInfoDevice") + suffix), QStringLiteral("Input"));
        QCOMPARE(module.text(QByteArray("label_SecondInfoDevice") + suffix), QStringLiteral("Range  "));
        QCOMPARE(module.text(QByteArray("label_Filter") + suffix), QStringLiteral("Filter [Hz]"));
    }
}

void TstModuleDeviceType2Ctrllr::otherCodesLeaveTheHeaders()
{
    for (const int code : {2, 3, 6, 7, 8}) {
        FamilyModule module(code);
        module.begin();
        QCOMPARE(module.text("label_FirstInfoDevice"), QStringLiteral("Input"));
        QCOMPARE(module.text("label_SecondInfoDevice"), QString::fromUtf8("Range  [±V]   "));
        QCOMPARE(module.text("label_SecondInfoDevice_2"), QString::fromUtf8("Range  [±V]   "));
        QCOMPARE(module.text("label_RevPol"), QStringLiteral("Invert"));
    }
}

void TstModuleDeviceType2Ctrllr::requestsOfEachCodeAreTheSame()
{
    for (const int code : {2, 3, 5, 6, 7, 8}) {
        FamilyModule module(code, 128);
        module.begin();
        for (const ChannelParameter parameter : module.parameters()) {
            module.change(parameter, Channel::B, 1);
            const QStringList sent = module.takeSent();
            QCOMPARE(sent.size(), 1);
            QVERIFY2(sent.first().startsWith(QLatin1String("T2 m128 c2: ")), qPrintable(sent.first()));
        }
    }
}

void TstModuleDeviceType2Ctrllr::listIsNotSplitForTheChannels()
{
    FamilyModule module(2);
    module.device.rangeList = QStringLiteral("1$#2$");
    module.begin();
    for (const Channel channel : kBothChannels)
        QCOMPARE(module.rangeBox(channel)->count(), 2);
    QCOMPARE(module.rangeBox(Channel::A)->itemText(1), QStringLiteral("#2"));
}

void TstModuleDeviceType2Ctrllr::rowHasNoShuntsAndNoOffset()
{
    FamilyModule module(2);
    module.device.shuntPreselect = 0x0F;
    module.device.offsetA = QStringLiteral("1.5");
    module.values.shuntA = 1;
    module.begin();
    for (const char *name : {"checkBox_Shunt_Pos", "checkBox_Shunt_Neg_Presel", "pushButton_ManualOffset"})
        QVERIFY2(!module.row().findChild<QPushButton *>(name), name);
    QCOMPARE(module.text("label_ManualOffset"), QString());
    QCOMPARE(module.text("label_Shunt"), QStringLiteral("  "));
}

void TstModuleDeviceType2Ctrllr::analogDataIsLoggedOnlyWithItsFlag()
{
    FamilyModule module(2);
    module.begin();
    const MessageCatcher catcher;
    module.values.valueA = 262143;
    module.reportFast();
    module.values.flag1 = module.values.flag2 = module.values.flag4 = module.values.flag5 = 1;
    module.reportFast();
    QVERIFY(!catcher.containsText(QStringLiteral("analogDataA")));
    module.values.flag3 = 1;
    module.reportFast();
    const QStringList lines = catcher.lines(QtDebugMsg).filter(QStringLiteral("analogDataA"));
    QCOMPARE(lines.size(), 1);
    const QRegularExpression form(QStringLiteral(
        "^void ModuleDeviceType2_Ctrllr::Slot_FastModuleStatus\\(QVariant\\) ?: ?analogDataA: +262143$"));
    QVERIFY2(form.match(lines.first()).hasMatch(), qPrintable(lines.first()));
    QCOMPARE(module.takeSent(), QStringList());
}

QTEST_MAIN(TstModuleDeviceType2Ctrllr)
#include "tst_moduledevicetype2_ctrllr.moc"
