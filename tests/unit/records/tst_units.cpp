#include "protocol/records/units.h"

#include <QtTest>

class TstUnits : public QObject
{
    Q_OBJECT

private slots:
    void voltageCountsIn10Millivolts();
    void temperatureCountsInHalfDegreesFromMinus55();
};

void TstUnits::voltageCountsIn10Millivolts()
{
    QCOMPARE(units::voltsFromRaw(0), 0.0F);
    QCOMPARE(units::voltsFromRaw(1200), 12.0F);
    QCOMPARE(units::voltsFromRaw(2047), 20.47F);
}

void TstUnits::temperatureCountsInHalfDegreesFromMinus55()
{
    QCOMPARE(units::celsiusFromRaw(0), -55.0F);
    QCOMPARE(units::celsiusFromRaw(161), 25.5F);
    QCOMPARE(units::celsiusFromRaw(511), 200.5F);
}

QTEST_GUILESS_MAIN(TstUnits)
#include "tst_units.moc"
