#include "reportrecords.h"
#include "reports/channelsettings.h"

#include <QtTest>

/// What the channels of a module offer and how they are set.
class TstChannelSettings : public QObject
{
    Q_OBJECT

private slots:
    void channelsShareTheListsOfOtherTypes_data();
    void channelsShareTheListsOfOtherTypes();
    void universalModuleHasListsForEachChannel();
    void textWithoutSeparatorServesBothChannels();
    void listsArePartedOneByOne();
    void twoSeparatorsPartNothing();
    void separatorOfOtherTypesBelongsToAnItem();

    void listItems_data();
    void listItems();
    void indexBeyondTheList_data();
    void indexBeyondTheList();
    void indexBeyondTheListOfItsChannel();

    void emptyRecord();

    void joinedItemsOfAText_data();
    void joinedItemsOfAText();
};

namespace {

using Item = std::optional<QString>;

Item item(const char *text)
{
    return QString::fromUtf8(text);
}

} // namespace

void TstChannelSettings::channelsShareTheListsOfOtherTypes_data()
{
    QTest::addColumn<int>("type");
    for (const int type : {0, 1, 2, 3, 4, 5, 6, 7, 8, 10, 100, 120, 130, 140, 150, 255})
        QTest::addRow("%d", type) << type;
}

void TstChannelSettings::channelsShareTheListsOfOtherTypes()
{
    QFETCH(int, type);
    Module_Status module = reportrecords::oneListModule(1, static_cast<quint8>(type));
    module.functionCodeA = 3;
    module.functionCodeB = 4;
    const ModuleSettings settings = moduleSettings(module);
    QCOMPARE(settings.a.sensors, (QStringList{"Full", "Half"}));
    QCOMPARE(settings.b.sensors, (QStringList{"Full", "Half"}));
    QCOMPARE(settings.a.ranges, (QStringList{"2", "5", "10"}));
    QCOMPARE(settings.b.ranges, (QStringList{"2", "5", "10"}));
    QVERIFY(settings.a.sensor == item("Half"));
    QVERIFY(settings.b.sensor == item("Full"));
    QVERIFY(settings.a.range == item("10"));
    QVERIFY(settings.b.range == item("2"));
    QCOMPARE(int(settings.a.functionCode), 3);
    QCOMPARE(int(settings.b.functionCode), 4);
}

void TstChannelSettings::universalModuleHasListsForEachChannel()
{
    const ModuleSettings settings = moduleSettings(reportrecords::universalModule(1));
    QCOMPARE(settings.a.sensors, (QStringList{"Full", "Half"}));
    QCOMPARE(settings.a.ranges, (QStringList{"2", "5"}));
    QVERIFY(settings.a.sensor == item("Half"));
    QVERIFY(settings.a.range == item("2"));
    QCOMPARE(int(settings.a.functionCode), 1);
    QCOMPARE(settings.b.sensors, (QStringList{"Volt", "Diff", "IEPE"}));
    QCOMPARE(settings.b.ranges, (QStringList{"1", "10"}));
    QVERIFY(settings.b.sensor == item("IEPE"));
    QVERIFY(settings.b.range == item("10"));
    QCOMPARE(int(settings.b.functionCode), 2);
}

void TstChannelSettings::textWithoutSeparatorServesBothChannels()
{
    const ModuleSettings settings = moduleSettings(reportrecords::oneListModule(1, 9));
    QCOMPARE(settings.a.sensors, (QStringList{"Full", "Half"}));
    QCOMPARE(settings.b.sensors, settings.a.sensors);
    QCOMPARE(settings.b.ranges, (QStringList{"2", "5", "10"}));
    QVERIFY(settings.a.range == item("10"));
    QVERIFY(settings.b.range == item("2"));
}

void TstChannelSettings::listsArePartedOneByOne()
{
    Module_Status module = reportrecords::universalModule(1);
    module.rangeList = QStringLiteral("7$8$");
    const ModuleSettings settings = moduleSettings(module);
    QCOMPARE(settings.a.sensors, (QStringList{"Full", "Half"}));
    QCOMPARE(settings.b.sensors, (QStringList{"Volt", "Diff", "IEPE"}));
    QCOMPARE(settings.a.ranges, (QStringList{"7", "8"}));
    QCOMPARE(settings.b.ranges, (QStringList{"7", "8"}));
}

void TstChannelSettings::twoSeparatorsPartNothing()
{
    Module_Status module = reportrecords::module(1, 9);
    module.sensorList = QStringLiteral("a$#b$#c$");
    module.rangeList = QStringLiteral("##1$");
    module.bridgeIndexA = 1;
    const ModuleSettings settings = moduleSettings(module);
    QCOMPARE(settings.a.sensors, (QStringList{"a", "#b", "#c"}));
    QCOMPARE(settings.b.sensors, settings.a.sensors);
    QVERIFY(settings.a.sensor == item("#b"));
    QCOMPARE(settings.a.ranges, QStringList{"##1"});
    QCOMPARE(settings.b.ranges, QStringList{"##1"});
}

void TstChannelSettings::separatorOfOtherTypesBelongsToAnItem()
{
    Module_Status module = reportrecords::universalModule(1);
    module.moduleType = 1;
    const ModuleSettings settings = moduleSettings(module);
    QCOMPARE(settings.a.sensors, (QStringList{"Full", "Half", "#Volt", "Diff", "IEPE"}));
    QCOMPARE(settings.b.sensors, settings.a.sensors);
    QCOMPARE(settings.a.ranges, (QStringList{"2", "5", "#1", "10"}));
    QVERIFY(settings.b.sensor == item("#Volt"));
    QVERIFY(settings.b.range == item("5"));
}

void TstChannelSettings::listItems_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("items");
    QTest::newRow("empty") << "" << QStringList{};
    QTest::newRow("separator alone") << "$" << QStringList{""};
    QTest::newRow("no separator") << "a" << QStringList{};
    QTest::newRow("last not closed") << "a$b" << QStringList{"a"};
    QTest::newRow("two separators") << "$$" << QStringList{"", ""};
    QTest::newRow("separator in front") << "$a$" << QStringList{"", "a"};
    QTest::newRow("two separators within") << "a$$b$" << QStringList{"a", "", "b"};
    QTest::newRow("blanks, umlauts, markup")
        << QStringLiteral(" ä $<b>&\"$") << QStringList{QStringLiteral(" ä "), QStringLiteral("<b>&\"")};
}

void TstChannelSettings::listItems()
{
    QFETCH(QString, text);
    QFETCH(QStringList, items);
    for (const quint8 type : {quint8(1), quint8(9)}) {
        Module_Status module = reportrecords::module(1, type);
        module.sensorList = text;
        module.rangeList = text;
        const ModuleSettings settings = moduleSettings(module);
        for (const ChannelSettings &channel : {settings.a, settings.b}) {
            QCOMPARE(channel.sensors, items);
            QCOMPARE(channel.ranges, items);
            QVERIFY(channel.sensor == (items.isEmpty() ? Item() : Item(items.first())));
            QVERIFY(channel.range == channel.sensor);
        }
    }
}

void TstChannelSettings::indexBeyondTheList_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("isSensor");
    QTest::addColumn<bool>("isRange");
    QTest::newRow("within both") << 1 << true << true;
    QTest::newRow("beyond the sensors by one") << 2 << false << true;
    QTest::newRow("beyond both by one") << 3 << false << false;
    QTest::newRow("255") << 255 << false << false;
}

void TstChannelSettings::indexBeyondTheList()
{
    QFETCH(int, index);
    Module_Status module = reportrecords::oneListModule(1, 1);
    module.bridgeIndexB = static_cast<quint8>(index);
    module.rangeIndexB = static_cast<quint8>(index);
    const ModuleSettings settings = moduleSettings(module);
    QTEST(settings.b.sensor.has_value(), "isSensor");
    QTEST(settings.b.range.has_value(), "isRange");
    QVERIFY(settings.a.sensor == item("Half"));
    QVERIFY(settings.a.range == item("10"));
}

void TstChannelSettings::indexBeyondTheListOfItsChannel()
{
    Module_Status module = reportrecords::universalModule(1);
    module.bridgeIndexA = 2; // the list of channel B is longer
    module.rangeIndexB = 2;
    const ModuleSettings settings = moduleSettings(module);
    QVERIFY(!settings.a.sensor);
    QVERIFY(settings.a.range == item("2"));
    QVERIFY(settings.b.sensor == item("IEPE"));
    QVERIFY(!settings.b.range);
}

void TstChannelSettings::emptyRecord()
{
    const ModuleSettings settings = moduleSettings(Module_Status());
    for (const ChannelSettings &channel : {settings.a, settings.b}) {
        QCOMPARE(channel.sensors, QStringList());
        QCOMPARE(channel.ranges, QStringList());
        QVERIFY(!channel.sensor);
        QVERIFY(!channel.range);
        QCOMPARE(int(channel.functionCode), 0);
    }
}

void TstChannelSettings::joinedItemsOfAText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("joined");
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("one") << "a$"
                         << "a";
    QTest::newRow("three") << "a$b$c$"
                           << "a / b / c";
    QTest::newRow("not closed") << "a"
                                << "a";
    QTest::newRow("last not closed") << "a$b"
                                     << "a / b";
    QTest::newRow("separator alone") << "$"
                                     << "";
    QTest::newRow("two separators") << "$$"
                                    << " / ";
    QTest::newRow("separator in front") << "$a$"
                                        << " / a";
    QTest::newRow("channel separator") << "a$#b$"
                                       << "a / #b";
    QTest::newRow("slash in an item") << "4/20$/$"
                                      << "4/20 / /";
    QTest::newRow("as they are") << QStringLiteral("ä&<$\" $") << QStringLiteral("ä&< / \" ");
}

void TstChannelSettings::joinedItemsOfAText()
{
    QFETCH(QString, text);
    QTEST(joinedItems(text), "joined");
}

QTEST_GUILESS_MAIN(TstChannelSettings)
#include "tst_channelsettings.moc"
