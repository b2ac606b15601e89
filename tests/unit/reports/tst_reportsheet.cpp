#include "reportrecords.h"
#include "reports/reportsheet.h"
#include "support/messagecatcher.h"

#include <QtTest>

/// The complete system report as a table.
class TstReportSheet : public QObject
{
    Q_OBJECT

private slots:
    void title();
    void titleShowsTheFileNameAsItIs();
    void headings();

    void controllerRow();
    void analogRow();
    void universalRow();
    void powerRow();
    void typeNames();
    void failureFlag();

    void emptyStoreHasAControllerRow();
    void rowsFollowTheAddresses();
    void moduleNotChosenLeavesItsRowEmpty();
    void controllerNotChosenLeavesRowThreeEmpty();
    void powerModuleOfASystemWithoutAnalogModulesStandsInRowFour();
    void powerModuleNotChosen();
    void powerModuleNotPresent();
    void powerModuleIsAskedForOnce();
    void mostModules_data();
    void mostModules();

    void countsOfOddLists_data();
    void countsOfOddLists();
    void indexBeyondTheListIsShown();

    void numberCells_data();
    void numberCells();
};

namespace {

using reportrecords::allChosen;
using reportrecords::chosen;

ReportSheet sheetOf(const StatusStore &store, const ModuleFilter &isChosen = allChosen())
{
    return reportSheet(store, isChosen, reportrecords::head(QStringLiteral("/home/u/report.xlsx")));
}

QVector<int> rowNumbers(const ReportSheet &sheet)
{
    QVector<int> numbers;
    for (const ReportSheet::Row &row : sheet.rows)
        numbers.append(row.number);
    return numbers;
}

/// A row's cells, with "|" between them.
QStringList cells(const char *row)
{
    return QString::fromLatin1(row).split(QLatin1Char('|'));
}

/// The row of this number; none if there is no such row.
QStringList row(const ReportSheet &sheet, int number)
{
    for (const ReportSheet::Row &row : sheet.rows) {
        if (row.number == number)
            return row.values;
    }
    return {};
}

} // namespace

void TstReportSheet::title()
{
    QCOMPARE(sheetOf(StatusStore()).title,
             QStringLiteral("report.xlsx / Report Created 05.03.26, 09:08:07 / comment comment comment"));
}

void TstReportSheet::titleShowsTheFileNameAsItIs()
{
    const ReportSheet sheet = reportSheet(
        StatusStore(), allChosen(), reportrecords::head(QStringLiteral("/a/b''Prüf  <1> & \"2\".xlsx")));
    QCOMPARE(sheet.title, QStringLiteral("Prüf  <1> & \"2\".xlsx / Report Created 05.03.26, 09:08:07 /"
                                         " comment comment comment"));
}

void TstReportSheet::headings()
{
    const QStringList expected =
        cells("Mod|Module Name|S/N|HW|SW1|SW2|Volt|Temp|BITE|Status|Ch.1 Function|Function1|Sensor1|"
              "Range1|Offset1|Filter1|Level1|Ch.2 Function|Function2|Sensor2|Range2|Offset2|Filter2|"
              "Level2|Sensor List|Range List|Sensors|Ranges|InpVolt|OutVolt|Current|Modules|"
              "Powering Mode|Data Transmission|Transmission Mode|Sampling Rate|Bit Rate");
    QCOMPARE(expected.size(), 37);
    QCOMPARE(sheetOf(StatusStore()).headings, expected);
    QCOMPARE(sheetOf(reportrecords::chain()).headings, expected);
}

void TstReportSheet::controllerRow()
{
    StatusStore store = reportrecords::chain();
    store.setFastModules({reportrecords::fast(2410, 161, 3)});
    QCOMPARE(row(sheetOf(store), 3),
             cells("0|Controller|12 34|HW0|MAIN0|FPGA0|24.10|25.50|0|3| | | | | | | | | | | | | | | | | |"
                   " | | | |12|Fixed|PCM|FM|1000 Hz|5000 kbit/s (16)"));
    QCOMPARE(row(sheetOf(store), 3).size(), 37);
}

void TstReportSheet::analogRow()
{
    StatusStore store = reportrecords::storeOf({reportrecords::oneListModule(1, 1)});
    store.modules[1].functionCodeB = 2;
    store.modules[1].bridgeIndexB = 4;
    store.modules[1].rangeIndexB = 5;
    store.setFastModules({Fast_Module_Status(), reportrecords::fast(2412, 160, 3)});
    QCOMPARE(row(sheetOf(store), 4),
             cells("1|Strain Gauge|77 1|HW1|MAIN1|FPGA1|24.12|25.00|3|0|Strain Gauge|1|1|2|oa1|fa1|0|"
                   "Voltage|2|4|5|ob1|fb1|0|Full$Half$|2$5$10$|2|3| | | | | | | | | | "));
    QCOMPARE(row(sheetOf(store), 4).size(), 38);
}

void TstReportSheet::universalRow()
{
    Module_Status module = reportrecords::universalModule(1);
    module.rangeList = QStringLiteral("2$#1$10$50$");
    QCOMPARE(row(sheetOf(reportrecords::storeOf({module})), 4),
             cells("1|Analog|77 1|HW1|MAIN1|FPGA1|0.00|-55.00|0|0|Strain Gauge|1|1|0|oa1|fa1|0|Voltage|2|"
                   "2|1|ob1|fb1|0|Full$Half$#Volt$Diff$IEPE$|2$#1$10$50$|2|1| | | | | | | | | | "));
}

void TstReportSheet::powerRow()
{
    StatusStore store = reportrecords::storeOf({reportrecords::module(1, 1)});
    reportrecords::addPower(store);
    QVector<Fast_Module_Status> fast(130);
    fast[128] = reportrecords::fast(100, 100, 1);
    fast[129] = reportrecords::fast(2800, 109, 2);
    store.setFastModules(fast);
    const QStringList values = row(sheetOf(store), 5);
    QCOMPARE(values,
             cells("129|Power|77 129|HW129|MAIN129|FPGA129|28.00|-0.50|0|2| | | | | | | | | | | | | | | |"
                   " | |9-36$|28.05|12.34| | | | | | "));
    QCOMPARE(values.size(), 36);
}

void TstReportSheet::typeNames()
{
    const ReportSheet sheet = sheetOf(reportrecords::chain());
    QStringList names;
    QStringList functions;
    for (const ReportSheet::Row &row : sheet.rows) {
        names.append(row.values.value(1));
        functions.append(row.values.value(10));
        QCOMPARE(row.values.value(0), QString::number(row.number - 3));
    }
    QCOMPARE(names, cells("Controller|Strain Gauge|Voltage|IEPE_ICP|Thermo|XVDT|Potentiometer|4_20|Auxilary|"
                          "Analog|Inductive Transmitter|Radio Transmitter|Bluetooth"));
    QCOMPARE(functions,
             cells(" |Strain Gauge|Voltage|IEPE_ICP|Thermo|XVDT|Potentiometer|4_20|Auxilary|Strain Gauge|"
                   "Inductive Transmitter|Radio Transmitter|Bluetooth"));
}

void TstReportSheet::failureFlag()
{
    StatusStore store = reportrecords::storeOf({reportrecords::module(1, 1)});
    reportrecords::addPower(store);
    store.setFastModules(QVector<Fast_Module_Status>(130, reportrecords::fast(0, 0, 7)));
    const ReportSheet sheet = sheetOf(store);
    QCOMPARE(row(sheet, 3).mid(8, 2), (QStringList{"0", "7"}));
    QCOMPARE(row(sheet, 4).mid(8, 2), (QStringList{"7", "0"}));
    QCOMPARE(row(sheet, 5).mid(8, 2), (QStringList{"0", "7"}));
}

void TstReportSheet::emptyStoreHasAControllerRow()
{
    const ReportSheet sheet = sheetOf(StatusStore());
    QCOMPARE(rowNumbers(sheet), QVector<int>{3});
    QCOMPARE(row(sheet, 3),
             cells("0|unknown0|||||0.00|-55.00|0|0| | | | | | | | | | | | | | | | | | | | | |0|||||"));
    QVERIFY(sheetOf(StatusStore(), chosen({})).rows.empty());
}

void TstReportSheet::rowsFollowTheAddresses()
{
    StatusStore store = reportrecords::chain();
    reportrecords::addPower(store);
    const ReportSheet sheet = sheetOf(store);
    QCOMPARE(rowNumbers(sheet), (QVector<int>{3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}));
    QCOMPARE(row(sheet, 15).value(0), QStringLiteral("12"));
    QCOMPARE(row(sheet, 16).value(0), QStringLiteral("129"));
}

void TstReportSheet::moduleNotChosenLeavesItsRowEmpty()
{
    StatusStore store = reportrecords::storeOf(
        {reportrecords::module(1, 1), reportrecords::module(2, 2), reportrecords::module(3, 3)});
    reportrecords::addPower(store);
    ReportSheet sheet = sheetOf(store, chosen({0, 1, 3, 129}));
    QCOMPARE(rowNumbers(sheet), (QVector<int>{3, 4, 6, 7}));
    QCOMPARE(row(sheet, 4).value(0), QStringLiteral("1"));
    QCOMPARE(row(sheet, 6).value(0), QStringLiteral("3"));
    QCOMPARE(row(sheet, 7).value(0), QStringLiteral("129"));
    sheet = sheetOf(store, chosen({129}));
    QCOMPARE(rowNumbers(sheet), QVector<int>{7});
    sheet = sheetOf(store, chosen({2}));
    QCOMPARE(rowNumbers(sheet), QVector<int>{5});
}

void TstReportSheet::controllerNotChosenLeavesRowThreeEmpty()
{
    const StatusStore store = reportrecords::storeOf({reportrecords::module(1, 1)});
    QCOMPARE(rowNumbers(sheetOf(store, chosen({1}))), QVector<int>{4});
}

void TstReportSheet::powerModuleOfASystemWithoutAnalogModulesStandsInRowFour()
{
    StatusStore store = reportrecords::storeOf({});
    reportrecords::addPower(store);
    const ReportSheet sheet = sheetOf(store);
    QCOMPARE(rowNumbers(sheet), (QVector<int>{3, 4}));
    QCOMPARE(row(sheet, 4).value(0), QStringLiteral("129"));
}

void TstReportSheet::powerModuleNotChosen()
{
    StatusStore store = reportrecords::storeOf({reportrecords::module(1, 1)});
    reportrecords::addPower(store);
    store.modules[129].serialNumber.clear();
    const MessageCatcher log;
    QCOMPARE(rowNumbers(sheetOf(store, chosen({0, 1}))), (QVector<int>{3, 4}));
    QCOMPARE(log.lines(), QStringList());
}

void TstReportSheet::powerModuleNotPresent()
{
    StatusStore store = reportrecords::storeOf({reportrecords::module(1, 1)});
    store.setModule(reportrecords::power()); // has a serial number, but the system names none
    const MessageCatcher log;
    QCOMPARE(rowNumbers(sheetOf(store)), (QVector<int>{3, 4}));
    QCOMPARE(log.lines(), QStringList());
}

void TstReportSheet::powerModuleIsAskedForOnce()
{
    StatusStore store = reportrecords::storeOf({reportrecords::module(1, 1)});
    reportrecords::addPower(store);
    store.modules[129].serialNumber.clear();
    const MessageCatcher log;
    QCOMPARE(rowNumbers(sheetOf(store)), (QVector<int>{3, 4}));
    QCOMPARE(log.lines(), QStringList{QStringLiteral("Power Module Empty")});
}

void TstReportSheet::mostModules_data()
{
    QTest::addColumn<int>("claimed");
    QTest::newRow("all") << 128;
    QTest::newRow("claim of 200") << 200;
    QTest::newRow("claim of 65535") << 65535;
}

void TstReportSheet::mostModules()
{
    QFETCH(int, claimed);
    StatusStore store;
    store.setSystem(reportrecords::system(static_cast<quint16>(claimed)));
    store.setModule(reportrecords::module(128, 1));
    reportrecords::addPower(store);
    const ReportSheet sheet = sheetOf(store);
    QCOMPARE(sheet.rows.size(), std::size_t(130));
    QCOMPARE(row(sheet, 3).value(31), QString::number(claimed)); // what the device says is shown
    QCOMPARE(row(sheet, 131).mid(0, 3), (QStringList{"128", "Strain Gauge", "77 128"}));
    QCOMPARE(row(sheet, 132).mid(0, 3), (QStringList{"129", "Power", "77 129"}));
}

void TstReportSheet::countsOfOddLists_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("list");
    QTest::addColumn<QString>("count");
    QTest::newRow("empty") << 1 << ""
                           << "0";
    QTest::newRow("not closed") << 1 << "a"
                                << "0";
    QTest::newRow("separator alone") << 1 << "$"
                                     << "1";
    QTest::newRow("last not closed") << 1 << "a$b"
                                     << "1";
    QTest::newRow("two separators") << 1 << "$$"
                                    << "2";
    QTest::newRow("channel separator of a strain gauge") << 1 << "a$b$#c$"
                                                         << "3";
    QTest::newRow("universal, empty") << 9 << ""
                                      << "0";
    QTest::newRow("universal, one list") << 9 << "a$b$"
                                         << "2";
    QTest::newRow("universal, nothing for A") << 9 << "#a$b$"
                                              << "0";
    QTest::newRow("universal, nothing for B") << 9 << "a$b$#"
                                              << "2";
    QTest::newRow("universal, two channel separators") << 9 << "a$#b$#c$"
                                                       << "3";
}

void TstReportSheet::countsOfOddLists()
{
    QFETCH(int, type);
    QFETCH(QString, list);
    QFETCH(QString, count);
    Module_Status module = reportrecords::module(1, static_cast<quint8>(type));
    module.sensorList = list;
    QCOMPARE(row(sheetOf(reportrecords::storeOf({module})), 4).mid(24, 4),
             (QStringList{list, "", count, "0"}));
    module.sensorList.clear();
    module.rangeList = list;
    QCOMPARE(row(sheetOf(reportrecords::storeOf({module})), 4).mid(24, 4),
             (QStringList{"", list, "0", count}));
}

void TstReportSheet::indexBeyondTheListIsShown()
{
    Module_Status module = reportrecords::module(1, 1);
    module.bridgeIndexA = 255;
    module.rangeIndexA = 254;
    module.bridgeIndexB = 1;
    module.rangeIndexB = 9;
    module.functionCodeA = 0;
    module.functionCodeB = 99;
    const QStringList values = row(sheetOf(reportrecords::storeOf({module})), 4);
    QCOMPARE(values.mid(10, 4), (QStringList{"unknown0", "0", "255", "254"}));
    QCOMPARE(values.mid(17, 4), (QStringList{"unknown99", "99", "1", "9"}));
}

void TstReportSheet::numberCells_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<bool>("isNumber");
    const QVector<int> numbers{1, 9, 10, 13, 14, 20, 21};
    for (int column = 1; column <= 40; ++column)
        QTest::addRow("column %d", column) << column << numbers.contains(column);
}

void TstReportSheet::numberCells()
{
    QFETCH(int, column);
    QTEST(isNumberCell(column, QStringLiteral("12")), "isNumber");
    QTEST(isNumberCell(column, QStringLiteral("0")), "isNumber");
    QVERIFY(!isNumberCell(column, QStringLiteral(" ")));
    QVERIFY(!isNumberCell(column, QStringLiteral("1 2")));
    QVERIFY(!isNumberCell(column, QStringLiteral(" 12")));
    QVERIFY(!isNumberCell(column, QStringLiteral("12 ")));
}

QTEST_GUILESS_MAIN(TstReportSheet)
#include "tst_reportsheet.moc"
