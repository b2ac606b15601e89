#include "protocol/records/moduletypes.h"

#include <QtTest>

class TstModuleTypes : public QObject
{
    Q_OBJECT

private slots:
    void everyCodeHasFamilyFormAndName_data();
    void everyCodeHasFamilyFormAndName();
};

void TstModuleTypes::everyCodeHasFamilyFormAndName_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("family");
    QTest::addColumn<int>("form");
    QTest::addColumn<QString>("name");
    QTest::newRow("1") << 1 << 1 << 3 << QStringLiteral("Strain Gauge");
    QTest::newRow("2") << 2 << 2 << 4 << QStringLiteral("Voltage");
    QTest::newRow("3") << 3 << 2 << 4 << QStringLiteral("IEPE/ICP\u00AE");
    QTest::newRow("4") << 4 << 3 << 5 << QStringLiteral("Thermo");
    QTest::newRow("5") << 5 << 2 << 4 << QStringLiteral("XVDT");
    QTest::newRow("6") << 6 << 2 << 4 << QStringLiteral("Potentiometer");
    QTest::newRow("7") << 7 << 2 << 4 << QStringLiteral("4_20");
    QTest::newRow("8") << 8 << 2 << 4 << QStringLiteral("Auxilary");
    QTest::newRow("9") << 9 << 4 << 6 << QStringLiteral("Analog");
    for (const int code : {0, 10, 100, 120, 255})
        QTest::newRow(qPrintable(QString::number(code))) << code << 0 << 6 << QStringLiteral("Unknown");
}

void TstModuleTypes::everyCodeHasFamilyFormAndName()
{
    QFETCH(int, code);
    QFETCH(int, family);
    QFETCH(int, form);
    QFETCH(QString, name);
    const auto typeCode = static_cast<quint8>(code);
    QCOMPARE(static_cast<int>(moduleFamily(typeCode)), family);
    QCOMPARE(static_cast<int>(headerForm(typeCode)), form);
    QCOMPARE(moduleTypeName(typeCode), name);
}

QTEST_GUILESS_MAIN(TstModuleTypes)
#include "tst_moduletypes.moc"
