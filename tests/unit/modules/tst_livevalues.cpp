#include "modules/common/livevalues.h"
#include "protocol/records/fastmodulestatus.h"

#include <QtTest>

class TstLiveValues : public QObject
{
    Q_OBJECT

private slots:
    void valuesAreConverted();
    void invalidValuesAreMissing_data();
    void invalidValuesAreMissing();
};

void TstLiveValues::valuesAreConverted()
{
    Fast_Module_Status status;
    status.supplyVoltage = 1200;
    status.temperature = 0;
    status.moduleState = 10;
    const LiveValues values = liveValues(status);
    QVERIFY(values.voltage && values.temperature);
    QCOMPARE(*values.voltage, 12.0F);
    QCOMPARE(*values.temperature, -55.0F);
    QCOMPARE(values.selftest, quint8(10));
}

void TstLiveValues::invalidValuesAreMissing_data()
{
    QTest::addColumn<int>("voltageInvalid");
    QTest::addColumn<int>("temperatureInvalid");
    for (const int voltage : {0, 1, 255}) {
        for (const int temperature : {0, 1, 255})
            QTest::addRow("%d, %d", voltage, temperature) << voltage << temperature;
    }
}

void TstLiveValues::invalidValuesAreMissing()
{
    QFETCH(int, voltageInvalid);
    QFETCH(int, temperatureInvalid);
    Fast_Module_Status status;
    status.moduleState = 3;
    status.supplyVoltageInvalid = static_cast<quint8>(voltageInvalid);
    status.temperatureInvalid = static_cast<quint8>(temperatureInvalid);
    const LiveValues values = liveValues(status);
    QCOMPARE(values.voltage.has_value(), voltageInvalid == 0);
    QCOMPARE(values.temperature.has_value(), temperatureInvalid == 0);
    QCOMPARE(values.selftest, quint8(3)); // is always valid
}

QTEST_APPLESS_MAIN(TstLiveValues)
#include "tst_livevalues.moc"
