#include "familytests.h"

#include "base/gui/fonts.h"

void FamilyTests::addRequest(ChannelParameter parameter, Channel channel, int value, const char *request)
{
    QTest::addRow("%s %d of %s", nameOf(parameter), value, nameOf(channel))
        << parameter << channel << value << QString::fromUtf8(request);
}

void FamilyTests::addRequestOfNoChannel(ChannelParameter parameter, const char *request)
{
    for (const int channel : {0, 3, 200})
        QTest::addRow("%s of %d", nameOf(parameter), channel)
            << parameter << channel << QString::fromUtf8(request);
}

void FamilyTests::addParameters() const
{
    QTest::addColumn<ChannelParameter>("parameter");
    QTest::addColumn<Channel>("channel");
    const FamilyModule module(typeCode());
    for (const ChannelParameter parameter : module.parameters()) {
        for (const Channel channel : kBothChannels)
            QTest::addRow("%s of %s", nameOf(parameter), nameOf(channel)) << parameter << channel;
    }
}

void FamilyTests::initTestCase()
{
    fonts::installSubstitutions();
}

void FamilyTests::gestureSendsTheWholeSnapshot_data()
{
    QTest::addColumn<ChannelParameter>("parameter");
    QTest::addColumn<Channel>("channel");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("request");
    addRequests();
}

void FamilyTests::gestureSendsTheWholeSnapshot()
{
    QFETCH(ChannelParameter, parameter);
    QFETCH(Channel, channel);
    QFETCH(int, value);
    QFETCH(QString, request);
    FamilyModule module(typeCode());
    module.beginWithDifferentChannels();
    QCOMPARE(module.takeSent(), QStringList());
    module.change(parameter, channel, value);
    QCOMPARE(module.takeSent(), QStringList(request));
}

void FamilyTests::sendingDoesNotChangeTheDataRecord_data()
{
    addParameters();
}

void FamilyTests::sendingDoesNotChangeTheDataRecord()
{
    QFETCH(ChannelParameter, parameter);
    QFETCH(Channel, channel);
    FamilyModule module(typeCode());
    module.begin();
    module.change(parameter, channel, 1);
    QCOMPARE(module.takeSent().size(), 1);
    const ChannelRecord &record = module.controller->GetData()->channel(channel);
    QCOMPARE(record.bridgeTypeIndex, 0);
    QCOMPARE(record.gainIndex, 0);
    QCOMPARE(static_cast<int>(record.autozero), 0);
    QCOMPARE(record.manualOffset, QString(module.isBridge() ? QStringLiteral("Auto") : QString()));
    QCOMPARE(record.filterValue, module.isThermo() ? 4 : 1000);
    QCOMPARE(static_cast<int>(record.reversePolarity), 0);
    QCOMPARE(static_cast<int>(record.shuntState), 0);
}

void FamilyTests::channelOtherThanOneAndTwoSendsAndHoldsNothing_data()
{
    QTest::addColumn<ChannelParameter>("parameter");
    QTest::addColumn<int>("channel");
    QTest::addColumn<QString>("request");
    addRequestsOfNoChannel();
}

void FamilyTests::channelOtherThanOneAndTwoSendsAndHoldsNothing()
{
    QFETCH(ChannelParameter, parameter);
    QFETCH(int, channel);
    QFETCH(QString, request);
    FamilyModule module(typeCode());
    module.beginWithDifferentChannels();
    const QStringList before = module.shownAll();
    module.callSlot(parameter, channel);
    QCOMPARE(module.takeSent(), QStringList(request.arg(channel)));
    QCOMPARE(module.shownAll(), before);
    module.time.advance(5000);
    QCOMPARE(module.takeSent(), QStringList());
}

void FamilyTests::newRowDoesNotActBeforeItsFirstStatus()
{
    FamilyModule module(typeCode());
    const QStringList before = module.shownAll();
    for (const ChannelParameter parameter : module.parameters()) {
        // Its lists are empty; Return in a filter box of Hz acts in any case.
        if (parameter == ChannelParameter::TypeIndex || parameter == ChannelParameter::RangeIndex ||
            (parameter == ChannelParameter::Filter && !module.isThermo()))
            continue;
        for (const Channel channel : kBothChannels)
            module.change(parameter, channel, 1);
    }
    for (const Channel channel : kBothChannels) {
        QTest::keyClick(module.typeBox(channel), Qt::Key_Down);
        QTest::keyClick(module.rangeBox(channel), Qt::Key_Down);
    }
    QVERIFY(module.openDialogs().isEmpty());
    module.time.advance(5000);
    QCOMPARE(module.takeSent(), QStringList());
    module.begin();
    module.change(ChannelParameter::TypeIndex, Channel::A, 1);
    QCOMPARE(module.takeSent().size(), 1);
}

void FamilyTests::foreignStatusDoesNotLetANewRowAct()
{
    FamilyModule module(typeCode());
    module.device.moduleType = 77;
    module.begin();
    module.device.moduleType = static_cast<quint8>(typeCode());
    module.device.moduleAddress = 4;
    module.begin();
    if (module.isThermo())
        clickArrow(module.filterBox(Channel::A), true);
    else
        module.change(ChannelParameter::Autozero, Channel::A, 1);
    QCOMPARE(module.takeSent(), QStringList());
    QCOMPARE(module.typeBox(Channel::A)->count(), 0);
}

void FamilyTests::applyingAStatusSendsNothing()
{
    FamilyModule module(typeCode());
    module.begin();
    for (int value = 2; value >= 0; --value) {
        for (const ChannelParameter parameter : module.parameters()) {
            for (const Channel channel : kBothChannels)
                module.report(parameter, channel, value);
        }
    }
    module.device.sensorList.clear();
    module.device.rangeList.clear();
    module.begin();
    module.time.advance(5000);
    QCOMPARE(module.takeSent(), QStringList());
}

void FamilyTests::statusUnderAnOpenListSendsNothing()
{
    FamilyModule module(typeCode());
    module.begin();
    QComboBox *box = module.typeBox(Channel::A);
    box->showPopup();
    module.device.sensorList = QStringLiteral("a$b$");
    module.report(ChannelParameter::TypeIndex, Channel::A, 1);
    module.time.advance(5000);
    QCOMPARE(module.takeSent(), QStringList());
    QCOMPARE(box->currentText(), QStringLiteral("b"));
    box->hidePopup();
    QCOMPARE(module.takeSent(), QStringList());
    module.change(ChannelParameter::TypeIndex, Channel::A, 0);
    QCOMPARE(module.takeSent().size(), 1);
}

void FamilyTests::statusShowsTheValuesOfBothChannels()
{
    FamilyModule module(typeCode());
    module.beginWithDifferentChannels();
    using P = ChannelParameter;
    QCOMPARE(module.shown(P::TypeIndex, Channel::A), QStringLiteral("1 black"));
    QCOMPARE(module.shown(P::TypeIndex, Channel::B), QStringLiteral("2 black"));
    QCOMPARE(module.shown(P::RangeIndex, Channel::A), QStringLiteral("2 black"));
    QCOMPARE(module.shown(P::RangeIndex, Channel::B), QStringLiteral("1 black"));
    QCOMPARE(module.typeBox(Channel::A)->currentText(), QStringLiteral("350"));
    QCOMPARE(module.rangeBox(Channel::B)->currentText(), QStringLiteral("2"));
    QCOMPARE(module.shown(P::Filter, Channel::A), QString(module.isThermo() ? "4 black" : "1000 black"));
    QCOMPARE(module.shown(P::Filter, Channel::B), QString(module.isThermo() ? "16 black" : "1300 black"));
}

void FamilyTests::statusFillsTheRecordsOfBothChannels()
{
    FamilyModule module(typeCode());
    module.beginWithDifferentChannels();
    const ModuleModel *data = module.controller->GetData();
    const ChannelRecord a = data->channel(1);
    const ChannelRecord b = data->channel(2);
    QCOMPARE(a.bridgeTypeList, (QStringList{"120", "350", "1000"}));
    QCOMPARE(b.gainList, (QStringList{"1", "2", "5"}));
    QCOMPARE(a.bridgeTypeIndex, 1);
    QCOMPARE(b.bridgeTypeIndex, 2);
    QCOMPARE(a.gainIndex, 2);
    QCOMPARE(b.gainIndex, 1);
    QCOMPARE(a.filterValue, module.isThermo() ? 4 : 1000);
    QCOMPARE(b.filterValue, module.isThermo() ? 16 : 1300);
    QCOMPARE(static_cast<int>(a.autozero), 1);
    QCOMPARE(static_cast<int>(b.autozero), 0);
    // Limits, set when the controller is made.
    QCOMPARE(a.filterMin, module.isThermo() ? 1 : 0);
    QCOMPARE(b.filterMax, module.isThermo() ? 32 : 999999999);
    QCOMPARE(b.filterStep, module.isThermo() ? 2 : 10);
    QCOMPARE(module.filterBox(Channel::A)->minimum(), module.isThermo() ? 1 : 0);
    QCOMPARE(module.filterBox(Channel::B)->maximum(), module.isThermo() ? 32 : 999999999);
}

void FamilyTests::listIsSplitAtDollars_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("items");
    QTest::newRow("empty") << QString() << QStringList();
    QTest::newRow("without $") << "120" << QStringList();
    QTest::newRow("one") << "120$" << QStringList{"120"};
    QTest::newRow("several") << "a$b$c$d$" << QStringList{"a", "b", "c", "d"};
    QTest::newRow("empty item kept") << "a$$c$" << QStringList{"a", "", "c"};
    QTest::newRow("not closed") << "a$b" << QStringList{"a"};
    QTest::newRow("only $") << "$" << QStringList{""};
}

void FamilyTests::listIsSplitAtDollars()
{
    QFETCH(QString, text);
    QFETCH(QStringList, items);
    const auto itemsOf = [](const QComboBox *box) {
        QStringList found;
        for (int i = 0; i < box->count(); ++i)
            found << box->itemText(i);
        return found;
    };
    FamilyModule types(typeCode());
    types.begin();
    types.device.sensorList = text;
    types.reportStatic();
    FamilyModule ranges(typeCode());
    ranges.begin();
    ranges.device.rangeList = text;
    ranges.reportStatic();
    for (const Channel channel : kBothChannels) {
        QCOMPARE(itemsOf(types.typeBox(channel)), items);
        QCOMPARE(itemsOf(types.rangeBox(channel)), (QStringList{"1", "2", "5"}));
        QCOMPARE(itemsOf(ranges.rangeBox(channel)), items);
        QCOMPARE(itemsOf(ranges.typeBox(channel)), (QStringList{"120", "350", "1000"}));
        QCOMPARE(types.controller->GetData()->channel(channel).bridgeTypeList, items);
        QCOMPARE(ranges.controller->GetData()->channel(channel).gainList, items);
    }
}

void FamilyTests::textWithTwoEntriesGivesTwoAndAnEmptyTextNone()
{
    FamilyModule module(typeCode());
    module.device.sensorList = QStringLiteral("x$y$");
    module.device.rangeList.clear();
    module.reportStatic();
    for (const Channel channel : kBothChannels) {
        QCOMPARE(module.typeBox(channel)->count(), 2);
        QCOMPARE(module.typeBox(channel)->currentText(), QStringLiteral("x"));
        QCOMPARE(module.rangeBox(channel)->count(), 0);
        QCOMPARE(module.rangeBox(channel)->currentIndex(), -1);
    }
}

void FamilyTests::newRowHasEmptyBoxes()
{
    const FamilyModule module(typeCode());
    for (const Channel channel : kBothChannels) {
        QCOMPARE(module.typeBox(channel)->count(), 0);
        QCOMPARE(module.rangeBox(channel)->count(), 0);
    }
    QCOMPARE(module.names(), kFirstNames);
    QCOMPARE(module.identification(), kFirstIdentification);
}

void FamilyTests::modelOfABoxStaysForLife()
{
    FamilyModule module(typeCode());
    const auto *types = module.typeBox(Channel::A)->model();
    const auto *ranges = module.rangeBox(Channel::A)->model();
    module.begin();
    module.device.sensorList = QStringLiteral("other$");
    module.begin();
    QCOMPARE(module.typeBox(Channel::A)->model(), types);
    QCOMPARE(module.rangeBox(Channel::A)->model(), ranges);
    QVERIFY(module.typeBox(Channel::B)->model() != types);
    QVERIFY(module.rangeBox(Channel::B)->model() != ranges);
}

void FamilyTests::indexBeyondTheListLeavesTheBoxBlank()
{
    FamilyModule module(typeCode());
    module.begin();
    module.device.bridgeIndexA = 3;
    module.device.rangeIndexB = 255;
    module.reportStatic();
    QCOMPARE(module.typeBox(Channel::A)->currentIndex(), -1);
    QCOMPARE(module.typeBox(Channel::A)->currentText(), QString());
    QCOMPARE(module.rangeBox(Channel::B)->currentIndex(), -1);
    QCOMPARE(module.typeBox(Channel::B)->currentIndex(), 0);
    QCOMPARE(module.controller->GetData()->channel(1).bridgeTypeIndex, 3);
    QCOMPARE(module.controller->GetData()->channel(2).gainIndex, 255);
    module.device.bridgeIndexA = 1;
    module.reportStatic();
    QCOMPARE(module.typeBox(Channel::A)->currentIndex(), 1);
}

void FamilyTests::unreadableFilterTextReadsZero_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"", "abc", "12x", "-5", "1.5", "0x10", "99999999999", "1 000"})
        QTest::newRow(text) << QString::fromLatin1(text);
}

void FamilyTests::unreadableFilterTextReadsZero()
{
    QFETCH(QString, text);
    FamilyModule module(typeCode());
    module.beginWithDifferentChannels();
    module.device.filterB = text;
    module.reportStatic();
    QCOMPARE(module.controller->GetData()->channel(2).filterValue, 0);
    // The thermo box begins at 1.
    QCOMPARE(module.filterBox(Channel::B)->value(), module.isThermo() ? 1 : 0);
    QCOMPARE(module.controller->GetData()->channel(1).filterValue, module.isThermo() ? 4 : 1000);
}

void FamilyTests::identificationIsStoredButTheSerialNumber()
{
    FamilyModule module(typeCode());
    module.begin();
    const ModuleModel *data = module.controller->GetData();
    QCOMPARE(data->hardware, QStringLiteral("01.02"));
    QCOMPARE(data->firmware1, QStringLiteral("03.04.05"));
    QCOMPARE(data->firmware2, QStringLiteral("06.07"));
    QCOMPARE(data->serialNumber, QStringLiteral("XXXXXXX"));
    QCOMPARE(module.identification(), kNewIdentification);
}

void FamilyTests::foreignTypeCodeSetsOnlyTheFourLabels_data()
{
    QTest::addColumn<int>("code");
    const ModuleFamily own = moduleFamily(static_cast<quint8>(typeCode()));
    for (const int code : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 100, 120, 255}) {
        if (moduleFamily(static_cast<quint8>(code)) != own)
            QTest::addRow("%d", code) << code;
    }
}

void FamilyTests::foreignTypeCodeSetsOnlyTheFourLabels()
{
    QFETCH(int, code);
    FamilyModule module(typeCode());
    module.beginWithDifferentChannels();
    const QStringList shown = module.shownAll();
    const QString names = module.names();
    Module_Status foreign = status(code);
    foreign.serialNumber = QStringLiteral("12");
    foreign.hardwareVersion = QStringLiteral("34");
    foreign.firmware1Version = QStringLiteral("56");
    foreign.firmware2Version = QStringLiteral("78");
    foreign.shuntPreselect = 0xFF;
    foreign.functionCodeA = foreign.functionCodeB = 2;
    foreign.sensorList = foreign.rangeList = QStringLiteral("x$y$z$");
    module.take(foreign);
    QCOMPARE(module.identification(), QStringLiteral("12|34|56|78"));
    QCOMPARE(module.names(), names);
    QCOMPARE(module.shownAll(), shown);
    QCOMPARE(module.typeBox(Channel::A)->currentText(), QStringLiteral("350"));
    QCOMPARE(module.controller->GetData()->hardware, QStringLiteral("01.02"));
    QCOMPARE(module.controller->GetData()->channel(1).bridgeTypeIndex, 1);
    if (module.isBridge())
        QVERIFY(!module.button(Channel::A, "checkBox_Shunt_Pos_Presel")->isChecked());
    QCOMPARE(module.takeSent(), QStringList());
}

void FamilyTests::foreignNumberChangesNothing_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("the module before") << 2;
    QTest::newRow("the module after") << 4;
    QTest::newRow("controller") << 0;
    QTest::newRow("power module") << 0x81;
}

void FamilyTests::foreignNumberChangesNothing()
{
    QFETCH(int, number);
    FamilyModule module(typeCode());
    module.beginWithDifferentChannels();
    const QStringList shown = module.shownAll();
    module.device.moduleAddress = static_cast<quint8>(number);
    module.device.serialNumber = QStringLiteral("other");
    module.device.hardwareVersion = QStringLiteral("other");
    module.device.shuntPreselect = 0x0F;
    for (const ChannelParameter parameter : module.parameters()) {
        if (parameter != ChannelParameter::Autozero && parameter != ChannelParameter::Shunt)
            module.set(parameter, Channel::A, 0);
    }
    module.reportStatic();
    QCOMPARE(module.identification(), kNewIdentification);
    QCOMPARE(module.shownAll(), shown);
    QCOMPARE(module.controller->GetData()->hardware, QStringLiteral("01.02"));
    QCOMPARE(module.controller->GetData()->channel(1).bridgeTypeIndex, 1);
}
