#include "modules/widgets/voltagecode.h"

#include <QtTest>

class TstVoltageCode : public QObject
{
    Q_OBJECT

private slots:
    void textGivesItsCode_data();
    void textGivesItsCode();
};

void TstVoltageCode::textGivesItsCode_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("code");
    QTest::newRow("empty is off") << "" << 0;
    QTest::newRow("lowest voltage") << "3" << 0;
    QTest::newRow("3.1 lies below one step as a 32-bit float") << "3.1" << 0;
    QTest::newRow("5") << "5" << 20;
    QTest::newRow("5.1 rounds up as a 32-bit float, not as a 64-bit one") << "5.1" << 21;
    QTest::newRow("fraction is cut") << "9.99" << 69;
    QTest::newRow("12") << "12" << 90;
    QTest::newRow("24.0") << "24.0" << 210;
    QTest::newRow("spaces around") << " 12 " << 90;
    QTest::newRow("highest code of a byte") << "28.5" << 255;
    QTest::newRow("more than a byte") << "28.6" << 256;
    QTest::newRow("fraction below 0 is cut towards 0") << "2.95" << 0;
    QTest::newRow("below the lowest voltage") << "0" << 65506;
    QTest::newRow("negative") << "-1" << 65496;
    QTest::newRow("no number counts as 0 V") << "abc" << 65506;
    QTest::newRow("decimal comma is no number") << "5,0" << 65506;
    QTest::newRow("a blank is no number and not empty") << " " << 65506;
    QTest::newRow("just above 16 bits") << "6556.7" << 1;
    QTest::newRow("above 32 bits") << "1e10" << 0xE000; // the nearest float is 0x174876E000
    QTest::newRow("above 64 bits") << "1e30" << 0;
    QTest::newRow("far below") << "-1e30" << 0;
    QTest::newRow("larger than any float") << "1e50" << 0;
    QTest::newRow("infinite") << "inf" << 0;
    QTest::newRow("not a number") << "nan" << 0;
}

void TstVoltageCode::textGivesItsCode()
{
    QFETCH(QString, text);
    QFETCH(int, code);
    QCOMPARE(int(voltageCode(text)), code);
}

QTEST_GUILESS_MAIN(TstVoltageCode)
#include "tst_voltagecode.moc"
