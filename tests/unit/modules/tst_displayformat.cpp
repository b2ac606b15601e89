#include "modules/common/displayformat.h"
#include "protocol/records/units.h"

#include <QtTest>

class TstDisplayFormat : public QObject
{
    Q_OBJECT

private slots:
    void voltageHasTwoDecimals_data();
    void voltageHasTwoDecimals();
    void temperatureHasOneDecimal_data();
    void temperatureHasOneDecimal();
    void selftestIsOkOrHexadecimal_data();
    void selftestIsOkOrHexadecimal();
};

void TstDisplayFormat::voltageHasTwoDecimals_data()
{
    QTest::addColumn<int>("raw");
    QTest::addColumn<QString>("text");
    QTest::newRow("raw 1200 shows 12.00 volts") << 1200 << "12.00 V";
    QTest::newRow("zero") << 0 << "0.00 V";
    QTest::newRow("one step") << 1 << "0.01 V";
    QTest::newRow("all 11 bits") << 2047 << "20.47 V";
    QTest::newRow("no rounding error") << 1005 << "10.05 V";
}

void TstDisplayFormat::voltageHasTwoDecimals()
{
    QFETCH(int, raw);
    QTEST(displayformat::voltage(units::voltsFromRaw(static_cast<quint16>(raw))), "text");
}

void TstDisplayFormat::temperatureHasOneDecimal_data()
{
    QTest::addColumn<int>("raw");
    QTest::addColumn<QString>("text");
    QTest::newRow("raw 0 shows minus 55.0 degrees") << 0 << QString::fromUtf8("-55.0 °C");
    QTest::newRow("half a degree") << 1 << QString::fromUtf8("-54.5 °C");
    QTest::newRow("zero degrees") << 110 << QString::fromUtf8("0.0 °C");
    QTest::newRow("room") << 161 << QString::fromUtf8("25.5 °C");
    QTest::newRow("all 9 bits") << 511 << QString::fromUtf8("200.5 °C");
}

void TstDisplayFormat::temperatureHasOneDecimal()
{
    QFETCH(int, raw);
    QTEST(displayformat::temperature(units::celsiusFromRaw(static_cast<quint16>(raw))), "text");
}

void TstDisplayFormat::selftestIsOkOrHexadecimal_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("text");
    QTest::newRow("0 is ok") << 0 << "O.K.";
    QTest::newRow("1 is padded") << 1 << "0x01";
    QTest::newRow("10 is upper case") << 10 << "0x0A";
    QTest::newRow("16") << 16 << "0x10";
    QTest::newRow("all 5 bits") << 31 << "0x1F";
    QTest::newRow("whole byte") << 255 << "0xFF";
}

void TstDisplayFormat::selftestIsOkOrHexadecimal()
{
    QFETCH(int, code);
    QTEST(displayformat::selftest(static_cast<quint8>(code)), "text");
}

QTEST_APPLESS_MAIN(TstDisplayFormat)
#include "tst_displayformat.moc"
