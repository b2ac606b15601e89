#include "reports/moduletexts.h"

#include <QtTest>

/// How reports show types and raw values.
class TstModuleTexts : public QObject
{
    Q_OBJECT

private slots:
    void typeNames_data();
    void typeNames();
    void nineDigits_data();
    void nineDigits();
    void selfTest_data();
    void selfTest();
    void rangeWithUnit_data();
    void rangeWithUnit();
    void volts_data();
    void volts();
    void celsius_data();
    void celsius();
};

void TstModuleTexts::typeNames_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("shortName");
    QTest::addColumn<QString>("longName");
    QTest::newRow("1") << 1 << "STGX"
                       << "Strain Gauge";
    QTest::newRow("2") << 2 << "VOLT"
                       << "Voltage";
    QTest::newRow("3") << 3 << "IEPE_ICP"
                       << "IEPE_ICP";
    QTest::newRow("4") << 4 << "THERMO"
                       << "Thermo";
    QTest::newRow("5") << 5 << "XVDT"
                       << "XVDT";
    QTest::newRow("6") << 6 << "Potentiometer"
                       << "Potentiometer";
    QTest::newRow("7") << 7 << "4_20"
                       << "4_20";
    QTest::newRow("8") << 8 << "Auxilary"
                       << "Auxilary";
    QTest::newRow("9") << 9 << "Analog"
                       << "Analog";
    QTest::newRow("100") << 100 << "CONT"
                         << "Controller";
    QTest::newRow("120") << 120 << "POWER"
                         << "Power";
    QTest::newRow("130") << 130 << "INDUC_TSMTR"
                         << "Inductive Transmitter";
    QTest::newRow("140") << 140 << "RDIO_TSMTR"
                         << "Radio Transmitter";
    QTest::newRow("150") << 150 << "BLUTOTH"
                         << "Bluetooth";
    for (const int code : {0, 10, 99, 101, 119, 121, 129, 131, 149, 151, 255}) {
        const QString number = QString::number(code);
        QTest::addRow("unknown %d", code)
            << code << (QStringLiteral("UNKNWN") + number) << (QStringLiteral("unknown") + number);
    }
}

void TstModuleTexts::typeNames()
{
    QFETCH(int, code);
    QTEST(moduletexts::shortTypeName(static_cast<quint8>(code)), "shortName");
    QTEST(moduletexts::longTypeName(static_cast<quint8>(code)), "longName");
}

void TstModuleTexts::nineDigits_data()
{
    QTest::addColumn<QString>("serialNumber");
    QTest::addColumn<QString>("shown");
    QTest::newRow("empty") << ""
                           << "000000000";
    QTest::newRow("only blanks") << "   "
                                 << "000000000";
    QTest::newRow("blank within") << "12 34"
                                  << "000001234";
    QTest::newRow("blanks everywhere") << "  1  2 3 "
                                       << "000000123";
    QTest::newRow("eight") << "12345678"
                           << "012345678";
    QTest::newRow("nine") << "123456789"
                          << "123456789";
    QTest::newRow("nine and a blank") << "12345 6789"
                                      << "123456789";
    QTest::newRow("ten stay") << "1234567890"
                              << "1234567890";
    QTest::newRow("twenty characters stay") << "ABCDEFGHIJ0123456789"
                                            << "ABCDEFGHIJ0123456789";
    QTest::newRow("letters") << "SN 5"
                             << "000000SN5";
    QTest::newRow("umlauts") << QStringLiteral("ä ß") << QStringLiteral("0000000äß");
    QTest::newRow("special characters") << "<&$\">"
                                        << "0000<&$\">";
}

void TstModuleTexts::nineDigits()
{
    QFETCH(QString, serialNumber);
    QTEST(moduletexts::nineDigits(serialNumber), "shown");
}

void TstModuleTexts::selfTest_data()
{
    QTest::addColumn<int>("flag");
    QTest::addColumn<QString>("shown");
    QTest::newRow("0") << 0 << "O.K";
    QTest::newRow("1") << 1 << "Failure";
    QTest::newRow("3") << 3 << "Failure";
    QTest::newRow("31") << 31 << "Failure";
    QTest::newRow("255") << 255 << "Failure";
}

void TstModuleTexts::selfTest()
{
    QFETCH(int, flag);
    QTEST(moduletexts::selfTest(static_cast<quint8>(flag)), "shown");
}

void TstModuleTexts::rangeWithUnit_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("shown");
    QTest::newRow("strain gauge") << "2.5" << 1 << QStringLiteral("±2.5 mV/V");
    QTest::newRow("voltage") << "10" << 2 << QStringLiteral("±10 V");
    QTest::newRow("IEPE") << "10" << 3 << QStringLiteral("±10 V");
    QTest::newRow("thermo") << "1200" << 4 << QStringLiteral("1200 °C");
    QTest::newRow("XVDT") << "10" << 5 << "10";
    QTest::newRow("potentiometer") << "10" << 6 << QStringLiteral("±10 V");
    QTest::newRow("4 to 20") << "10" << 7 << "10";
    QTest::newRow("auxiliary") << "10" << 8 << QStringLiteral("±10 V");
    QTest::newRow("universal") << "10" << 9 << "10";
    QTest::newRow("none") << "10" << 0 << "10";
    QTest::newRow("controller") << "10" << 100 << "10";
    QTest::newRow("power") << "10" << 120 << "10";
    QTest::newRow("inductive transmitter") << "10" << 130 << "10";
    QTest::newRow("255") << "10" << 255 << "10";
    QTest::newRow("a text as value") << "a<b & 'ü'" << 7 << "a<b & 'ü'";
    QTest::newRow("empty value") << "" << 1 << QStringLiteral("± mV/V");
    QTest::newRow("place marker as value") << "%1" << 1 << QStringLiteral("±%1 mV/V");
}

void TstModuleTexts::rangeWithUnit()
{
    QFETCH(QString, value);
    QFETCH(int, code);
    QTEST(moduletexts::rangeWithUnit(value, static_cast<quint8>(code)), "shown");
}

void TstModuleTexts::volts_data()
{
    QTest::addColumn<int>("raw");
    QTest::addColumn<QString>("shortForm");
    QTest::addColumn<QString>("twoDecimals");
    QTest::newRow("0") << 0 << "0"
                       << "0.00";
    QTest::newRow("one step") << 1 << "0.01"
                              << "0.01";
    QTest::newRow("whole") << 2400 << "24"
                           << "24.00";
    QTest::newRow("one decimal") << 2410 << "24.1"
                                 << "24.10";
    QTest::newRow("two decimals") << 2412 << "24.12"
                                  << "24.12";
    QTest::newRow("11 bits") << 2047 << "20.47"
                             << "20.47";
    QTest::newRow("hundred") << 10000 << "100"
                             << "100.00";
    QTest::newRow("16 bits") << 65535 << "655.35"
                             << "655.35";
}

void TstModuleTexts::volts()
{
    QFETCH(int, raw);
    QTEST(moduletexts::shortVolts(static_cast<quint16>(raw)), "shortForm");
    QTEST(moduletexts::volts(static_cast<quint16>(raw), 2), "twoDecimals");
}

void TstModuleTexts::celsius_data()
{
    QTest::addColumn<int>("raw");
    QTest::addColumn<QString>("shortForm");
    QTest::addColumn<QString>("oneDecimal");
    QTest::addColumn<QString>("twoDecimals");
    QTest::newRow("0") << 0 << "-55"
                       << "-55.0"
                       << "-55.00";
    QTest::newRow("one step") << 1 << "-54.5"
                              << "-54.5"
                              << "-54.50";
    QTest::newRow("below zero") << 109 << "-0.5"
                                << "-0.5"
                                << "-0.50";
    QTest::newRow("zero") << 110 << "0"
                          << "0.0"
                          << "0.00";
    QTest::newRow("half") << 111 << "0.5"
                          << "0.5"
                          << "0.50";
    QTest::newRow("room") << 160 << "25"
                          << "25.0"
                          << "25.00";
    QTest::newRow("9 bits") << 511 << "200.5"
                            << "200.5"
                            << "200.50";
    QTest::newRow("16 bits") << 65535 << "32712.5"
                             << "32712.5"
                             << "32712.50";
}

void TstModuleTexts::celsius()
{
    QFETCH(int, raw);
    const auto value = static_cast<quint16>(raw);
    QTEST(moduletexts::shortCelsius(value), "shortForm");
    QTEST(moduletexts::celsius(value, 1), "oneDecimal");
    QTEST(moduletexts::celsius(value, 2), "twoDecimals");
}

QTEST_GUILESS_MAIN(TstModuleTexts)
#include "tst_moduletexts.moc"
