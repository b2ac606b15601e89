#include "reportrecords.h"
#include "reports/protocolhtml.h"
#include "support/messagecatcher.h"

#include <QtTest>

/// The test protocol of one module.
class TstProtocolHtml : public QObject
{
    Q_OBJECT

private slots:
    void wholePage();
    void emptyStore_data();
    void emptyStore();
    void typeName_data();
    void typeName();
    void failureIsTold();

    void settingsOfAStrainGauge();
    void settingsOfAUniversalModule();
    void thermoHasNoSettings();
    void settingsOfOtherTypes_data();
    void settingsOfOtherTypes();

    void indexBeyondTheListGivesAnEmptyText_data();
    void indexBeyondTheListGivesAnEmptyText();
    void universalModuleWithOneListForBoth();
    void universalModuleWithTwoSeparators();
    void separatorOfAStrainGaugeIsShown();
    void oddLists_data();
    void oddLists();

    void textsOfTheModuleAreEscaped();
    void fileNameIsEscaped();
};

namespace {

const QString kEnd = QStringLiteral("</p></body></html>");

QString protocol(const StatusStore &store, int address)
{
    return protocolHtml(store, address, reportrecords::head(QStringLiteral("/home/u/report.pdf")));
}

QString protocol(const Module_Status &module)
{
    return protocol(reportrecords::storeOf({module}), 1);
}

/// The part that depends on the type.
QString settings(const QString &html)
{
    const QString before = QStringLiteral("<br>Selftest Message:&nbsp;&nbsp;&nbsp;O.K<br>");
    const int begin = html.indexOf(before);
    if (begin < 0 || !html.endsWith(kEnd))
        return QStringLiteral("no protocol: ") + html;
    const QString rest = html.mid(begin + before.size());
    return rest.left(rest.size() - kEnd.size());
}

QString settings(const Module_Status &module)
{
    return settings(protocol(module));
}

} // namespace

void TstProtocolHtml::wholePage()
{
    StatusStore store = reportrecords::storeOf({reportrecords::oneListModule(1, 1)});
    store.modules[1].serialNumber = QStringLiteral("12 34");
    store.setFastModules({Fast_Module_Status(), reportrecords::fast(2410, 161)});
    QCOMPARE(
        protocol(store, 1),
        QStringLiteral(
            "<html><head></head><body style=\"font-family:'arial narrow';font-size:10px;line-height:0.0;\">"
            "<p style=\"line-height:0.8;\">report.pdf"
            "<br>========= [ Test Protocol 05.03.2026 ] =========<br>"
            "<br>Module:&nbsp;&nbsp;&nbsp;Strain Gauge"
            "<br>Serial Number:&nbsp;&nbsp;&nbsp;000001234"
            "<br>Hardware:&nbsp;&nbsp;&nbsp;HW1"
            "<br>BOOT Firmware:&nbsp;&nbsp;&nbsp;n/a"
            "<br>MAIN Firmware:&nbsp;&nbsp;&nbsp;&nbsp;VXPIC1&nbsp;MAIN1"
            "<br>FPGA Firmware:&nbsp;&nbsp;&nbsp;VX_THERMO&nbsp;FPGA1"
            "<br>Supply Voltage:&nbsp;&nbsp;&nbsp;24.10 V"
            "<br>Module Temperature:&nbsp;&nbsp;&nbsp;25.5 °C"
            "<br>Selftest Message:&nbsp;&nbsp;&nbsp;O.K<br>"
            "<br>Bridge Types:&nbsp;&nbsp;&nbsp;Full / Half"
            "<br>Range Types:&nbsp;&nbsp;&nbsp;2 / 5 / 10"
            "<br>Ch.1 Bridge Type setting:&nbsp;&nbsp;&nbsp;Half"
            "<br>Ch.1 Range setting:&nbsp;&nbsp;&nbsp;10"
            "<br>Ch.2 Bridge Type setting:&nbsp;&nbsp;&nbsp;Full"
            "<br>Ch.2 Range setting:&nbsp;&nbsp;&nbsp;2"
            "</p></body></html>"));
}

void TstProtocolHtml::emptyStore_data()
{
    QTest::addColumn<int>("address");
    QTest::newRow("controller") << 0;
    QTest::newRow("analog module") << 1;
    QTest::newRow("power module") << 129;
    QTest::newRow("beyond the table by one") << 130;
    QTest::newRow("255") << 255;
}

void TstProtocolHtml::emptyStore()
{
    QFETCH(int, address);
    const MessageCatcher log;
    QCOMPARE(
        protocol(StatusStore(), address),
        QStringLiteral(
            "<html><head></head><body style=\"font-family:'arial narrow';font-size:10px;line-height:0.0;\">"
            "<p style=\"line-height:0.8;\">report.pdf"
            "<br>========= [ Test Protocol 05.03.2026 ] =========<br>"
            "<br>Module:&nbsp;&nbsp;&nbsp;unknown0"
            "<br>Serial Number:&nbsp;&nbsp;&nbsp;000000000"
            "<br>Hardware:&nbsp;&nbsp;&nbsp;"
            "<br>BOOT Firmware:&nbsp;&nbsp;&nbsp;n/a"
            "<br>MAIN Firmware:&nbsp;&nbsp;&nbsp;&nbsp;VXPIC1&nbsp;"
            "<br>FPGA Firmware:&nbsp;&nbsp;&nbsp;VX_THERMO&nbsp;"
            "<br>Supply Voltage:&nbsp;&nbsp;&nbsp;0.00 V"
            "<br>Module Temperature:&nbsp;&nbsp;&nbsp;-55.0 °C"
            "<br>Selftest Message:&nbsp;&nbsp;&nbsp;O.K<br>"
            "<br>Input:&nbsp;&nbsp;&nbsp;"
            "<br>Ranges: "
            "<br>Ch.1 Range setting:&nbsp;&nbsp;&nbsp;"
            "<br>Ch.2 Range setting:&nbsp;&nbsp;&nbsp;"
            "</p></body></html>"));
    QCOMPARE(log.lines(), QStringList());
}

void TstProtocolHtml::typeName_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<QString>("lines");
    const auto row = [](int address, const char *name, const char *serialNumber) {
        QTest::newRow(name) << address
                            << (QStringLiteral("<br>Module:&nbsp;&nbsp;&nbsp;") + name +
                                QStringLiteral("<br>Serial Number:&nbsp;&nbsp;&nbsp;") + serialNumber +
                                QStringLiteral("<br>Hardware:&nbsp;&nbsp;&nbsp;HW%1<br>BOOT").arg(address));
    };
    row(0, "Controller", "000001234");
    row(1, "Strain Gauge", "000000771");
    row(2, "Voltage", "000000772");
    row(3, "IEPE_ICP", "000000773");
    row(4, "Thermo", "000000774");
    row(5, "XVDT", "000000775");
    row(6, "Potentiometer", "000000776");
    row(7, "4_20", "000000777");
    row(8, "Auxilary", "000000778");
    row(9, "Analog", "000000779");
    row(10, "Inductive Transmitter", "000007710");
    row(11, "Radio Transmitter", "000007711");
    row(12, "Bluetooth", "000007712");
    row(129, "Power", "000077129");
}

void TstProtocolHtml::typeName()
{
    QFETCH(int, address);
    QFETCH(QString, lines);
    StatusStore store = reportrecords::chain();
    reportrecords::addPower(store);
    const QString html = protocol(store, address);
    QVERIFY2(html.contains(lines), qPrintable(html));
}

void TstProtocolHtml::failureIsTold()
{
    StatusStore store = reportrecords::storeOf({reportrecords::module(1, 4)});
    store.setFastModules({Fast_Module_Status(), reportrecords::fast(2412, 110, 3)});
    const QString html = protocol(store, 1);
    const QString end =
        QStringLiteral("<br>Supply Voltage:&nbsp;&nbsp;&nbsp;24.12 V"
                       "<br>Module Temperature:&nbsp;&nbsp;&nbsp;0.0 °C"
                       "<br>Selftest Message:&nbsp;&nbsp;&nbsp;Failure<br></p></body></html>");
    QCOMPARE(html.right(end.size()), end);
}

void TstProtocolHtml::settingsOfAStrainGauge()
{
    Module_Status module = reportrecords::oneListModule(1, 1);
    module.bridgeIndexB = 1;
    module.rangeIndexB = 1;
    QCOMPARE(settings(module), QStringLiteral("<br>Bridge Types:&nbsp;&nbsp;&nbsp;Full / Half"
                                              "<br>Range Types:&nbsp;&nbsp;&nbsp;2 / 5 / 10"
                                              "<br>Ch.1 Bridge Type setting:&nbsp;&nbsp;&nbsp;Half"
                                              "<br>Ch.1 Range setting:&nbsp;&nbsp;&nbsp;10"
                                              "<br>Ch.2 Bridge Type setting:&nbsp;&nbsp;&nbsp;Half"
                                              "<br>Ch.2 Range setting:&nbsp;&nbsp;&nbsp;5"));
}

void TstProtocolHtml::settingsOfAUniversalModule()
{
    QCOMPARE(settings(reportrecords::universalModule(1)),
             QStringLiteral("<br>Bridge/Sensor Types Channel A:&nbsp;&nbsp;&nbsp;Full / Half"
                            "<br>Range Types Channel A:&nbsp;&nbsp;&nbsp;2 / 5"
                            "<br>Ch.A Bridge Type setting:&nbsp;&nbsp;&nbsp;Half"
                            "<br>Ch.A Range setting:&nbsp;&nbsp;&nbsp;2"
                            "<br><br>Bridge Type Channel B:&nbsp;&nbsp;&nbsp;Volt / Diff / IEPE"
                            "<br>Range Types Channel B:&nbsp;&nbsp;&nbsp;1 / 10"
                            "<br>Ch.B Bridge Type setting:&nbsp;&nbsp;&nbsp;IEPE"
                            "<br>Ch.B Range setting:&nbsp;&nbsp;&nbsp;10"));
}

void TstProtocolHtml::thermoHasNoSettings()
{
    QCOMPARE(settings(reportrecords::oneListModule(1, 4)), QString());
}

void TstProtocolHtml::settingsOfOtherTypes_data()
{
    QTest::addColumn<int>("type");
    for (const int type : {0, 2, 3, 5, 6, 7, 8, 10, 99, 100, 120, 130, 140, 150, 255})
        QTest::addRow("%d", type) << type;
}

void TstProtocolHtml::settingsOfOtherTypes()
{
    QFETCH(int, type);
    QCOMPARE(settings(reportrecords::oneListModule(1, static_cast<quint8>(type))),
             QStringLiteral("<br>Input:&nbsp;&nbsp;&nbsp;Full / Half"
                            "<br>Ranges: 2 / 5 / 10"
                            "<br>Ch.1 Range setting:&nbsp;&nbsp;&nbsp;10"
                            "<br>Ch.2 Range setting:&nbsp;&nbsp;&nbsp;2"));
}

void TstProtocolHtml::indexBeyondTheListGivesAnEmptyText_data()
{
    QTest::addColumn<int>("sensorIndex");
    QTest::addColumn<int>("rangeIndex");
    QTest::newRow("by one") << 2 << 3;
    QTest::newRow("255") << 255 << 255;
}

void TstProtocolHtml::indexBeyondTheListGivesAnEmptyText()
{
    QFETCH(int, sensorIndex);
    QFETCH(int, rangeIndex);
    Module_Status module = reportrecords::oneListModule(1, 1);
    module.bridgeIndexA = static_cast<quint8>(sensorIndex);
    module.rangeIndexA = static_cast<quint8>(rangeIndex);
    QCOMPARE(settings(module), QStringLiteral("<br>Bridge Types:&nbsp;&nbsp;&nbsp;Full / Half"
                                              "<br>Range Types:&nbsp;&nbsp;&nbsp;2 / 5 / 10"
                                              "<br>Ch.1 Bridge Type setting:&nbsp;&nbsp;&nbsp;"
                                              "<br>Ch.1 Range setting:&nbsp;&nbsp;&nbsp;"
                                              "<br>Ch.2 Bridge Type setting:&nbsp;&nbsp;&nbsp;Full"
                                              "<br>Ch.2 Range setting:&nbsp;&nbsp;&nbsp;2"));
    module.moduleType = 2;
    QCOMPARE(settings(module), QStringLiteral("<br>Input:&nbsp;&nbsp;&nbsp;Full / Half"
                                              "<br>Ranges: 2 / 5 / 10"
                                              "<br>Ch.1 Range setting:&nbsp;&nbsp;&nbsp;"
                                              "<br>Ch.2 Range setting:&nbsp;&nbsp;&nbsp;2"));
    module = reportrecords::universalModule(1);
    module.bridgeIndexA = static_cast<quint8>(sensorIndex);
    module.rangeIndexB = static_cast<quint8>(rangeIndex - 1);
    QCOMPARE(settings(module),
             QStringLiteral("<br>Bridge/Sensor Types Channel A:&nbsp;&nbsp;&nbsp;Full / Half"
                            "<br>Range Types Channel A:&nbsp;&nbsp;&nbsp;2 / 5"
                            "<br>Ch.A Bridge Type setting:&nbsp;&nbsp;&nbsp;"
                            "<br>Ch.A Range setting:&nbsp;&nbsp;&nbsp;2"
                            "<br><br>Bridge Type Channel B:&nbsp;&nbsp;&nbsp;Volt / Diff / IEPE"
                            "<br>Range Types Channel B:&nbsp;&nbsp;&nbsp;1 / 10"
                            "<br>Ch.B Bridge Type setting:&nbsp;&nbsp;&nbsp;IEPE"
                            "<br>Ch.B Range setting:&nbsp;&nbsp;&nbsp;"));
}

void TstProtocolHtml::universalModuleWithOneListForBoth()
{
    QCOMPARE(settings(reportrecords::oneListModule(1, 9)),
             QStringLiteral("<br>Bridge/Sensor Types Channel A:&nbsp;&nbsp;&nbsp;Full / Half"
                            "<br>Range Types Channel A:&nbsp;&nbsp;&nbsp;2 / 5 / 10"
                            "<br>Ch.A Bridge Type setting:&nbsp;&nbsp;&nbsp;Half"
                            "<br>Ch.A Range setting:&nbsp;&nbsp;&nbsp;10"
                            "<br><br>Bridge Type Channel B:&nbsp;&nbsp;&nbsp;Full / Half"
                            "<br>Range Types Channel B:&nbsp;&nbsp;&nbsp;2 / 5 / 10"
                            "<br>Ch.B Bridge Type setting:&nbsp;&nbsp;&nbsp;Full"
                            "<br>Ch.B Range setting:&nbsp;&nbsp;&nbsp;2"));
}

void TstProtocolHtml::universalModuleWithTwoSeparators()
{
    Module_Status module = reportrecords::module(1, 9);
    module.sensorList = QStringLiteral("a$#b$#c$");
    module.rangeList = QStringLiteral("1$#2$");
    module.bridgeIndexA = 1;
    module.bridgeIndexB = 2;
    QCOMPARE(settings(module),
             QStringLiteral("<br>Bridge/Sensor Types Channel A:&nbsp;&nbsp;&nbsp;a / #b / #c"
                            "<br>Range Types Channel A:&nbsp;&nbsp;&nbsp;1"
                            "<br>Ch.A Bridge Type setting:&nbsp;&nbsp;&nbsp;#b"
                            "<br>Ch.A Range setting:&nbsp;&nbsp;&nbsp;1"
                            "<br><br>Bridge Type Channel B:&nbsp;&nbsp;&nbsp;a / #b / #c"
                            "<br>Range Types Channel B:&nbsp;&nbsp;&nbsp;2"
                            "<br>Ch.B Bridge Type setting:&nbsp;&nbsp;&nbsp;#c"
                            "<br>Ch.B Range setting:&nbsp;&nbsp;&nbsp;2"));
}

void TstProtocolHtml::separatorOfAStrainGaugeIsShown()
{
    Module_Status module = reportrecords::universalModule(1);
    module.moduleType = 1;
    QCOMPARE(settings(module),
             QStringLiteral("<br>Bridge Types:&nbsp;&nbsp;&nbsp;Full / Half / #Volt / Diff / IEPE"
                            "<br>Range Types:&nbsp;&nbsp;&nbsp;2 / 5 / #1 / 10"
                            "<br>Ch.1 Bridge Type setting:&nbsp;&nbsp;&nbsp;Half"
                            "<br>Ch.1 Range setting:&nbsp;&nbsp;&nbsp;2"
                            "<br>Ch.2 Bridge Type setting:&nbsp;&nbsp;&nbsp;#Volt"
                            "<br>Ch.2 Range setting:&nbsp;&nbsp;&nbsp;5"));
}

void TstProtocolHtml::oddLists_data()
{
    QTest::addColumn<QString>("list");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("first");
    QTest::newRow("empty") << ""
                           << ""
                           << "";
    QTest::newRow("separator alone") << "$"
                                     << ""
                                     << "";
    QTest::newRow("not closed") << "a"
                                << "a"
                                << "";
    QTest::newRow("last not closed") << "a$b"
                                     << "a / b"
                                     << "a";
    QTest::newRow("one") << "a$"
                         << "a"
                         << "a";
    QTest::newRow("empty in front") << "$a$"
                                    << "&nbsp;/ a"
                                    << "";
}

void TstProtocolHtml::oddLists()
{
    QFETCH(QString, list);
    QFETCH(QString, shown);
    QFETCH(QString, first);
    Module_Status module = reportrecords::module(1, 2);
    module.sensorList = list;
    module.rangeList = list;
    QCOMPARE(settings(module), QStringLiteral("<br>Input:&nbsp;&nbsp;&nbsp;") + shown +
                                   QStringLiteral("<br>Ranges: ") + shown +
                                   QStringLiteral("<br>Ch.1 Range setting:&nbsp;&nbsp;&nbsp;") + first +
                                   QStringLiteral("<br>Ch.2 Range setting:&nbsp;&nbsp;&nbsp;") + first);
}

void TstProtocolHtml::textsOfTheModuleAreEscaped()
{
    Module_Status module = reportrecords::module(1, 1);
    module.serialNumber = QStringLiteral("<1 & 2>");
    module.hardwareVersion = QStringLiteral("\"ä  b\"");
    module.firmware1Version = QStringLiteral("<b>");
    module.firmware2Version = QStringLiteral(" & ");
    module.sensorList = QStringLiteral("<i>$\"ü\"$");
    module.rangeList = QStringLiteral("&amp;$%1$");
    const QString html = protocol(module);
    QVERIFY2(
        html.contains(QStringLiteral("<br>Serial Number:&nbsp;&nbsp;&nbsp;0000&lt;1&amp;2&gt;"
                                     "<br>Hardware:&nbsp;&nbsp;&nbsp;&quot;ä&nbsp; b&quot;"
                                     "<br>BOOT Firmware:&nbsp;&nbsp;&nbsp;n/a"
                                     "<br>MAIN Firmware:&nbsp;&nbsp;&nbsp;&nbsp;VXPIC1&nbsp;&lt;b&gt;"
                                     "<br>FPGA Firmware:&nbsp;&nbsp;&nbsp;VX_THERMO&nbsp;&nbsp;&amp;&nbsp;"
                                     "<br>Supply Voltage:")),
        qPrintable(html));
    QCOMPARE(settings(html), QStringLiteral("<br>Bridge Types:&nbsp;&nbsp;&nbsp;&lt;i&gt; / &quot;ü&quot;"
                                            "<br>Range Types:&nbsp;&nbsp;&nbsp;&amp;amp; / %1"
                                            "<br>Ch.1 Bridge Type setting:&nbsp;&nbsp;&nbsp;&lt;i&gt;"
                                            "<br>Ch.1 Range setting:&nbsp;&nbsp;&nbsp;&amp;amp;"
                                            "<br>Ch.2 Bridge Type setting:&nbsp;&nbsp;&nbsp;&lt;i&gt;"
                                            "<br>Ch.2 Range setting:&nbsp;&nbsp;&nbsp;&amp;amp;"));
}

void TstProtocolHtml::fileNameIsEscaped()
{
    const QString html =
        protocolHtml(StatusStore(), 0, reportrecords::head(QStringLiteral("/a/b''Prüf <1> & \"2\".pdf")));
    QVERIFY2(
        html.contains(QStringLiteral("<p style=\"line-height:0.8;\">Prüf &lt;1&gt; &amp; &quot;2&quot;.pdf"
                                     "<br>========= [ Test Protocol ")),
        qPrintable(html));
}

QTEST_GUILESS_MAIN(TstProtocolHtml)
#include "tst_protocolhtml.moc"
