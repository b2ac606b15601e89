#include "reportrecords.h"
#include "reports/overviewhtml.h"

#include <QtTest>

/// The rows of analog modules in the overview.
class TstOverviewRows : public QObject
{
    Q_OBJECT

private slots:
    void typesAndUnits_data();
    void typesAndUnits();
    void unitFollowsTheTypeAndNotTheFunction();
    void universalModule();
    void universalModuleTakesTheUnitOfEachChannel_data();
    void universalModuleTakesTheUnitOfEachChannel();
    void functionNames();

    void indexBeyondTheListGivesABlankCell_data();
    void indexBeyondTheListGivesABlankCell();
    void indexBeyondTheListOfAUniversalModuleBlanksThePair_data();
    void indexBeyondTheListOfAUniversalModuleBlanksThePair();
    void universalModuleWithOneListForBoth();
    void universalModuleWithTwoSeparators();
    void separatorOfAStrainGaugeBelongsToAnItem();
    void oddLists_data();
    void oddLists();
    void textsAreEscaped();
};

namespace {

/// The row of the one module that the report is about.
QString rowOf(const Module_Status &module)
{
    const QString html = overviewHtml(reportrecords::storeOf({module}), reportrecords::chosen({1}),
                                      reportrecords::head(QStringLiteral("r.pdf")));
    const int begin = html.indexOf(QStringLiteral("<tr >"));
    const QString end = QStringLiteral("</table></body></html>");
    return begin >= 0 && html.endsWith(end) ? html.mid(begin).chopped(end.size())
                                            : QStringLiteral("no row: ") + html;
}

/// A row of the module at address 1 of which only these cells are of interest.
QString row(const QString &type, const QString &functions, const QString &settings)
{
    return QStringLiteral("<tr ><td>1</td><td>") + type + QStringLiteral("</td><td>000000771</td>") +
           functions + settings +
           QStringLiteral("<td>fa1</td><td>fb1</td><td>HW1</td><td>MAIN1</td><td>FPGA1</td></tr>");
}

const QString kBothStrain = QStringLiteral("<td>Strain Gauge</td><td>Strain Gauge</td>");
const QString kStrainAndVoltage = QStringLiteral("<td>Strain Gauge</td><td>Voltage</td>");

} // namespace

void TstOverviewRows::typesAndUnits_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("ranges");
    const QString volts = QStringLiteral("<td>±10 V</td><td>±2 V</td>");
    const QString none = QStringLiteral("<td>10</td><td>2</td>");
    QTest::newRow("1") << 1 << "Strain Gauge" << QStringLiteral("<td>±10 mV/V</td><td>±2 mV/V</td>");
    QTest::newRow("2") << 2 << "Voltage" << volts;
    QTest::newRow("3") << 3 << "IEPE_ICP" << volts;
    QTest::newRow("4") << 4 << "Thermo" << QStringLiteral("<td>10 °C</td><td>2 °C</td>");
    QTest::newRow("5") << 5 << "XVDT" << none;
    QTest::newRow("6") << 6 << "Potentiometer" << volts;
    QTest::newRow("7") << 7 << "4_20" << none;
    QTest::newRow("8") << 8 << "Auxilary" << volts;
    QTest::newRow("0") << 0 << "unknown0" << none;
    QTest::newRow("99") << 99 << "unknown99" << none;
    QTest::newRow("130") << 130 << "Inductive Transmitter" << none;
    QTest::newRow("140") << 140 << "Radio Transmitter" << none;
    QTest::newRow("150") << 150 << "Bluetooth" << none;
}

void TstOverviewRows::typesAndUnits()
{
    QFETCH(int, type);
    QFETCH(QString, name);
    QFETCH(QString, ranges);
    QCOMPARE(rowOf(reportrecords::oneListModule(1, static_cast<quint8>(type))),
             QStringLiteral("<tr ><td>1</td><td>") + name + QStringLiteral("</td><td>000000771</td><td>") +
                 name + QStringLiteral("</td><td>") + name +
                 QStringLiteral("</td><td>Half</td><td>Full</td>") + ranges +
                 QStringLiteral("<td>fa1</td><td>fb1</td><td>HW1</td><td>MAIN1</td><td>FPGA1</td></tr>"));
}

void TstOverviewRows::unitFollowsTheTypeAndNotTheFunction()
{
    Module_Status module = reportrecords::oneListModule(1, 1);
    module.functionCodeA = 2;
    module.functionCodeB = 4;
    QCOMPARE(rowOf(module),
             row("Strain Gauge", "<td>Voltage</td><td>Thermo</td>",
                 QStringLiteral("<td>Half</td><td>Full</td><td>±10 mV/V</td><td>±2 mV/V</td>")));
}

void TstOverviewRows::universalModule()
{
    QCOMPARE(rowOf(reportrecords::universalModule(1)),
             QStringLiteral("<tr ><td>1</td><td>Analog</td><td>000000771</td>"
                            "<td>Strain Gauge</td><td>Voltage</td><td>Half</td><td>IEPE</td>"
                            "<td>±2 mV/V</td><td>±10 V</td><td>fa1</td><td>fb1</td>"
                            "<td>HW1</td><td>MAIN1</td><td>FPGA1</td></tr>"));
}

void TstOverviewRows::universalModuleTakesTheUnitOfEachChannel_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("rangeA");
    QTest::addColumn<QString>("rangeB");
    QTest::newRow("1") << 1 << "Strain Gauge" << QStringLiteral("±2 mV/V") << QStringLiteral("±10 mV/V");
    QTest::newRow("2") << 2 << "Voltage" << QStringLiteral("±2 V") << QStringLiteral("±10 V");
    QTest::newRow("3") << 3 << "IEPE_ICP" << QStringLiteral("±2 V") << QStringLiteral("±10 V");
    QTest::newRow("4") << 4 << "Thermo" << QStringLiteral("2 °C") << QStringLiteral("10 °C");
    QTest::newRow("5") << 5 << "XVDT"
                       << "2"
                       << "10";
    QTest::newRow("6") << 6 << "Potentiometer" << QStringLiteral("±2 V") << QStringLiteral("±10 V");
    QTest::newRow("7") << 7 << "4_20"
                       << "2"
                       << "10";
    QTest::newRow("8") << 8 << "Auxilary" << QStringLiteral("±2 V") << QStringLiteral("±10 V");
    QTest::newRow("0") << 0 << "unknown0"
                       << "2"
                       << "10";
}

void TstOverviewRows::universalModuleTakesTheUnitOfEachChannel()
{
    QFETCH(int, code);
    QFETCH(QString, name);
    QFETCH(QString, rangeA);
    QFETCH(QString, rangeB);
    Module_Status module = reportrecords::universalModule(1);
    module.functionCodeA = static_cast<quint8>(code);
    QCOMPARE(rowOf(module),
             row("Analog", "<td>" + name + "</td><td>Voltage</td>",
                 "<td>Half</td><td>IEPE</td><td>" + rangeA + QStringLiteral("</td><td>±10 V</td>")));
    module.functionCodeA = 1;
    module.functionCodeB = static_cast<quint8>(code);
    QCOMPARE(rowOf(module),
             row("Analog", "<td>Strain Gauge</td><td>" + name + "</td>",
                 QStringLiteral("<td>Half</td><td>IEPE</td><td>±2 mV/V</td><td>") + rangeB + "</td>"));
}

void TstOverviewRows::functionNames()
{
    Module_Status module = reportrecords::module(1, 1);
    module.functionCodeA = 0;
    module.functionCodeB = 99;
    QCOMPARE(rowOf(module), row("Strain Gauge", "<td>unknown0</td><td>unknown99</td>",
                                "<td> </td><td> </td><td> </td><td> </td>"));
}

void TstOverviewRows::indexBeyondTheListGivesABlankCell_data()
{
    QTest::addColumn<int>("sensorA");
    QTest::addColumn<int>("sensorB");
    QTest::addColumn<int>("rangeA");
    QTest::addColumn<int>("rangeB");
    QTest::addColumn<QString>("cells");
    const QString sensors = QStringLiteral("<td>Half</td><td>Half</td>");
    const QString ranges = QStringLiteral("<td>±10 mV/V</td><td>±10 mV/V</td>");
    QTest::newRow("last of all") << 1 << 1 << 2 << 2 << sensors + ranges;
    QTest::newRow("sensor of A by one") << 2 << 1 << 2 << 2 << "<td> </td><td>Half</td>" + ranges;
    QTest::newRow("sensor of B by one") << 1 << 2 << 2 << 2 << "<td>Half</td><td> </td>" + ranges;
    QTest::newRow("range of A by one")
        << 1 << 1 << 3 << 2 << sensors + QStringLiteral("<td> </td><td>±10 mV/V</td>");
    QTest::newRow("range of B by one")
        << 1 << 1 << 2 << 3 << sensors + QStringLiteral("<td>±10 mV/V</td><td> </td>");
    QTest::newRow("all far away") << 255 << 255 << 255 << 255 << "<td> </td><td> </td><td> </td><td> </td>";
}

void TstOverviewRows::indexBeyondTheListGivesABlankCell()
{
    QFETCH(int, sensorA);
    QFETCH(int, sensorB);
    QFETCH(int, rangeA);
    QFETCH(int, rangeB);
    QFETCH(QString, cells);
    Module_Status module = reportrecords::oneListModule(1, 1);
    module.bridgeIndexA = static_cast<quint8>(sensorA);
    module.bridgeIndexB = static_cast<quint8>(sensorB);
    module.rangeIndexA = static_cast<quint8>(rangeA);
    module.rangeIndexB = static_cast<quint8>(rangeB);
    QCOMPARE(rowOf(module), row("Strain Gauge", kBothStrain, cells));
}

void TstOverviewRows::indexBeyondTheListOfAUniversalModuleBlanksThePair_data()
{
    QTest::addColumn<int>("sensorA");
    QTest::addColumn<int>("sensorB");
    QTest::addColumn<int>("rangeA");
    QTest::addColumn<int>("rangeB");
    QTest::addColumn<QString>("cells");
    const QString sensors = QStringLiteral("<td>Half</td><td>IEPE</td>");
    const QString ranges = QStringLiteral("<td>±5 mV/V</td><td>±10 V</td>");
    const QString blank = QStringLiteral("<td> </td><td> </td>");
    QTest::newRow("last of all") << 1 << 2 << 1 << 1 << sensors + ranges;
    QTest::newRow("sensor of A by one") << 2 << 2 << 1 << 1 << blank + ranges;
    QTest::newRow("sensor of B by one") << 1 << 3 << 1 << 1 << blank + ranges;
    QTest::newRow("range of A by one") << 1 << 2 << 2 << 1 << sensors + blank;
    QTest::newRow("range of B by one") << 1 << 2 << 1 << 2 << sensors + blank;
    QTest::newRow("all far away") << 255 << 255 << 255 << 255 << blank + blank;
}

void TstOverviewRows::indexBeyondTheListOfAUniversalModuleBlanksThePair()
{
    QFETCH(int, sensorA);
    QFETCH(int, sensorB);
    QFETCH(int, rangeA);
    QFETCH(int, rangeB);
    QFETCH(QString, cells);
    Module_Status module = reportrecords::universalModule(1);
    module.bridgeIndexA = static_cast<quint8>(sensorA);
    module.bridgeIndexB = static_cast<quint8>(sensorB);
    module.rangeIndexA = static_cast<quint8>(rangeA);
    module.rangeIndexB = static_cast<quint8>(rangeB);
    QCOMPARE(rowOf(module), row("Analog", kStrainAndVoltage, cells));
}

void TstOverviewRows::universalModuleWithOneListForBoth()
{
    Module_Status module = reportrecords::oneListModule(1, 9);
    module.functionCodeA = 1;
    module.functionCodeB = 2;
    QCOMPARE(rowOf(module), row("Analog", kStrainAndVoltage,
                                QStringLiteral("<td>Half</td><td>Full</td><td>±10 mV/V</td><td>±2 V</td>")));
}

void TstOverviewRows::universalModuleWithTwoSeparators()
{
    Module_Status module = reportrecords::universalModule(1);
    module.sensorList = QStringLiteral("a$#b$#c$");
    QCOMPARE(rowOf(module), row("Analog", kStrainAndVoltage,
                                QStringLiteral("<td>#b</td><td>#c</td><td>±2 mV/V</td><td>±10 V</td>")));
}

void TstOverviewRows::separatorOfAStrainGaugeBelongsToAnItem()
{
    Module_Status module = reportrecords::universalModule(1);
    module.moduleType = 1;
    module.functionCodeB = 1;
    module.rangeIndexB = 2;
    QCOMPARE(rowOf(module),
             row("Strain Gauge", kBothStrain,
                 QStringLiteral("<td>Half</td><td>#Volt</td><td>±2 mV/V</td><td>±#1 mV/V</td>")));
}

void TstOverviewRows::oddLists_data()
{
    QTest::addColumn<QString>("list");
    QTest::addColumn<QString>("sensor");
    QTest::addColumn<QString>("range");
    QTest::newRow("empty") << ""
                           << " "
                           << " ";
    QTest::newRow("not closed") << "a"
                                << " "
                                << " ";
    QTest::newRow("last not closed") << "a$b"
                                     << "a" << QStringLiteral("±a mV/V");
    QTest::newRow("separator alone") << "$"
                                     << "" << QStringLiteral("± mV/V");
    QTest::newRow("two separators") << "$$"
                                    << "" << QStringLiteral("± mV/V");
}

void TstOverviewRows::oddLists()
{
    QFETCH(QString, list);
    QFETCH(QString, sensor);
    QFETCH(QString, range);
    Module_Status module = reportrecords::module(1, 1);
    module.sensorList = list;
    module.rangeList = list;
    const QString between = QStringLiteral("</td><td>");
    const QString cells = "<td>" + sensor + between + sensor + between + range + between + range + "</td>";
    QCOMPARE(rowOf(module), row("Strain Gauge", kBothStrain, cells));
    module.moduleType = 9;
    QCOMPARE(rowOf(module), row("Analog", kBothStrain, cells));
}

void TstOverviewRows::textsAreEscaped()
{
    Module_Status module = reportrecords::module(1, 2);
    module.serialNumber = QStringLiteral("<1 & 2>");
    module.hardwareVersion = QStringLiteral("<td>");
    module.firmware1Version = QStringLiteral("\"ä\"");
    module.firmware2Version = QStringLiteral("a  b");
    module.filterA = QStringLiteral("&1");
    module.filterB = QStringLiteral(" 2");
    module.sensorList = QStringLiteral("<s>$");
    module.rangeList = QStringLiteral("&r$");
    QCOMPARE(rowOf(module),
             QStringLiteral("<tr ><td>1</td><td>Voltage</td><td>0000&lt;1&amp;2&gt;</td>"
                            "<td>Voltage</td><td>Voltage</td><td>&lt;s&gt;</td><td>&lt;s&gt;</td>"
                            "<td>±&amp;r V</td><td>±&amp;r V</td><td>&amp;1</td><td>&nbsp;2</td>"
                            "<td>&lt;td&gt;</td><td>&quot;ä&quot;</td><td>a&nbsp; b</td></tr>"));
}

QTEST_GUILESS_MAIN(TstOverviewRows)
#include "tst_overviewrows.moc"
