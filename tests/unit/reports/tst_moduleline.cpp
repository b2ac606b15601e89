#include "reportrecords.h"
#include "reports/moduleline.h"
#include "support/messagecatcher.h"

#include <QtTest>

/// The one-line text of a module.
class TstModuleLine : public QObject
{
    Q_OBJECT

private slots:
    void controller();
    void numberOfModulesIsShownAsTheDeviceClaimsIt();
    void analogModule();
    void universalModuleShowsItsListsAsTheyAre();
    void powerModule();
    void typeNames_data();
    void typeNames();
    void failureFlagIsShownAsANumber();
    void textsAreShownAsTheyAre();
    void emptyStore_data();
    void emptyStore();
    void lastAnalogAddressIsAnAnalogModule();
};

void TstModuleLine::controller()
{
    StatusStore store = reportrecords::chain();
    store.setFastModules({reportrecords::fast(2412, 161)});
    QCOMPARE(moduleLine(store, 0),
             QStringLiteral("  0  Controller  12 34  HW0  MAIN0  FPGA0  24.12  25.5  0  0"
                            "  12  Fixed  PCM  FM  1000 Hz  5000 kbit/s (16).\n"));
}

void TstModuleLine::numberOfModulesIsShownAsTheDeviceClaimsIt()
{
    StatusStore store;
    store.setSystem(reportrecords::system(200));
    const QString end = QStringLiteral("  -55  0  0  200  Fixed  PCM  FM  1000 Hz  5000 kbit/s (16).\n");
    QCOMPARE(moduleLine(store, 0).right(end.size()), end);
}

void TstModuleLine::analogModule()
{
    StatusStore store = reportrecords::storeOf({reportrecords::oneListModule(1, 1)});
    store.modules[1].bridgeIndexB = 4;
    store.modules[1].rangeIndexB = 255;
    store.setFastModules({Fast_Module_Status(), reportrecords::fast(2400, 160)});
    QCOMPARE(moduleLine(store, 1),
             QStringLiteral("  1  Strain Gauge  77 1  HW1  MAIN1  FPGA1  24  25  0  0"
                            "  0  1  2  oa1  fa1  0  4  255  ob1  fb1  0  Full$Half$  2$5$10$.\n"));
}

void TstModuleLine::universalModuleShowsItsListsAsTheyAre()
{
    const StatusStore store = reportrecords::storeOf({reportrecords::universalModule(1)});
    QCOMPARE(moduleLine(store, 1),
             QStringLiteral(
                 "  1  Analog  77 1  HW1  MAIN1  FPGA1  0  -55  0  0"
                 "  0  1  0  oa1  fa1  0  2  1  ob1  fb1  0  Full$Half$#Volt$Diff$IEPE$  2$5$#1$10$.\n"));
}

void TstModuleLine::powerModule()
{
    StatusStore store = reportrecords::storeOf({});
    reportrecords::addPower(store);
    QVector<Fast_Module_Status> fast(130);
    fast[128] = reportrecords::fast(100, 100, 1);
    fast[129] = reportrecords::fast(2800, 170, 2);
    store.setFastModules(fast);
    const MessageCatcher log;
    QCOMPARE(moduleLine(store, 129),
             QStringLiteral("  129  Power  77 129  HW129  MAIN129  FPGA129  28  30  0  2"
                            "  9-36$  28.05  12.34   .\n"));
    QCOMPARE(log.lines(), QStringList());
}

void TstModuleLine::typeNames_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<QString>("beginning");
    QTest::newRow("1") << 1 << "  1  Strain Gauge  77 1  HW1  ";
    QTest::newRow("2") << 2 << "  2  Voltage  77 2  HW2  ";
    QTest::newRow("3") << 3 << "  3  IEPE_ICP  77 3  HW3  ";
    QTest::newRow("4") << 4 << "  4  Thermo  77 4  HW4  ";
    QTest::newRow("5") << 5 << "  5  XVDT  77 5  HW5  ";
    QTest::newRow("6") << 6 << "  6  Potentiometer  77 6  HW6  ";
    QTest::newRow("7") << 7 << "  7  4_20  77 7  HW7  ";
    QTest::newRow("8") << 8 << "  8  Auxilary  77 8  HW8  ";
    QTest::newRow("9") << 9 << "  9  Analog  77 9  HW9  ";
    QTest::newRow("130") << 10 << "  10  Inductive Transmitter  77 10  HW10  ";
    QTest::newRow("140") << 11 << "  11  Radio Transmitter  77 11  HW11  ";
    QTest::newRow("150") << 12 << "  12  Bluetooth  77 12  HW12  ";
}

void TstModuleLine::typeNames()
{
    QFETCH(int, address);
    QFETCH(QString, beginning);
    const QString line = moduleLine(reportrecords::chain(), address);
    QCOMPARE(line.left(beginning.size()), beginning);
    QCOMPARE(line.right(2), QStringLiteral(".\n"));
    QCOMPARE(line.count(QLatin1Char('\n')), 1);
}

void TstModuleLine::failureFlagIsShownAsANumber()
{
    StatusStore store = reportrecords::storeOf({reportrecords::module(1, 4)});
    store.setFastModules({reportrecords::fast(0, 110, 5), reportrecords::fast(1, 0, 3)});
    QCOMPARE(moduleLine(store, 1), QStringLiteral("  1  Thermo  77 1  HW1  MAIN1  FPGA1  0.01  -55  0  3"
                                                  "  0  0  0  oa1  fa1  0  0  0  ob1  fb1  0    .\n"));
    QCOMPARE(moduleLine(store, 0), QStringLiteral("  0  Controller  12 34  HW0  MAIN0  FPGA0  0  0  0  5"
                                                  "  1  Fixed  PCM  FM  1000 Hz  5000 kbit/s (16).\n"));
}

void TstModuleLine::textsAreShownAsTheyAre()
{
    Module_Status module = reportrecords::module(1, 2);
    module.serialNumber = QStringLiteral(" <1>  & %1 ");
    module.hardwareVersion = QStringLiteral("\"Hä%2\"");
    module.firmware1Version = QStringLiteral("'$'");
    module.firmware2Version = QString();
    module.sensorList = QStringLiteral("a$b");
    module.rangeList = QStringLiteral("$");
    QCOMPARE(moduleLine(reportrecords::storeOf({module}), 1),
             QStringLiteral("  1  Voltage   <1>  & %1   \"Hä%2\"  '$'    0  -55  0  0"
                            "  0  0  0  oa1  fa1  0  0  0  ob1  fb1  0  a$b  $.\n"));
}

void TstModuleLine::emptyStore_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<QString>("line");
    const QString analog = QStringLiteral("  unknown0          0  -55  0  0"
                                          "  0  0  0      0  0  0      0    .\n");
    QTest::newRow("controller") << 0 << "  0  unknown0          0  -55  0  0  0          .\n";
    QTest::newRow("analog module") << 1 << ("  1" + analog);
    QTest::newRow("last analog module") << 128 << ("  128" + analog);
    QTest::newRow("power module") << 129 << "  129  unknown0          0  -55  0  0    0  0   .\n";
    QTest::newRow("beyond the table by one") << 130 << ("  130" + analog);
    QTest::newRow("255") << 255 << ("  255" + analog);
}

void TstModuleLine::emptyStore()
{
    QFETCH(int, address);
    QTEST(moduleLine(StatusStore(), address), "line");
}

void TstModuleLine::lastAnalogAddressIsAnAnalogModule()
{
    StatusStore store = reportrecords::storeOf({reportrecords::oneListModule(128, 3)});
    QVector<Fast_Module_Status> fast(130);
    fast[128] = reportrecords::fast(2100, 120, 1);
    store.setFastModules(fast);
    QCOMPARE(moduleLine(store, 128),
             QStringLiteral("  128  IEPE_ICP  77 128  HW128  MAIN128  FPGA128  21  5  0  1"
                            "  0  1  2  oa128  fa128  0  0  0  ob128  fb128  0  Full$Half$  2$5$10$.\n"));
}

QTEST_GUILESS_MAIN(TstModuleLine)
#include "tst_moduleline.moc"
