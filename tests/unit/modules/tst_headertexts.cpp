#include "modules/common/headertexts.h"
#include "modules/common/rowcolumns.h"

#include <QtTest>

Q_DECLARE_METATYPE(HeaderForm)

class TstHeaderTexts : public QObject
{
    Q_OBJECT

private slots:
    void eachFormHasItsTexts_data();
    void eachFormHasItsTexts();
    void thermoHeaderFollowsTheName_data();
    void thermoHeaderFollowsTheName();
    void onlyThermoHasNoSeparators();
    void onlyUniversalChannelsHaveFunctions();
    void columnsDoNotOverlap_data();
    void columnsDoNotOverlap();
};

void TstHeaderTexts::eachFormHasItsTexts_data()
{
    QTest::addColumn<HeaderForm>("form");
    QTest::addColumn<QStringList>("texts"); // first, second, offset, shunt, filter, polarity, level
    const QStringList strainGauge{"BridgeType  [Ohm]", QString::fromUtf8("Range  [±mV/V]"),
                                  "Offset ",           " Shunt  sel.",
                                  "Filter [Hz]",       "Invert",
                                  "Level  [%]"};
    QTest::newRow("3 strain gauge") << HeaderForm::StrainGauge << strainGauge;
    QTest::newRow("6 universal") << HeaderForm::Universal << strainGauge;
    QTest::newRow("4 voltage")
        << HeaderForm::Voltage
        << QStringList{"Input",     QString::fromUtf8("Range  [±V]   "), "", "  ", "Filter [Hz]", "Invert",
                       "Level  [%]"};
    QTest::newRow("5 thermo") << HeaderForm::Thermo << QStringList{"Sensor Type      ",
                                                                   QString::fromUtf8("Temp.Range  [°C]"),
                                                                   "",
                                                                   "  ",
                                                                   "Filter [Hz]",
                                                                   "         ",
                                                                   "       "};
}

void TstHeaderTexts::eachFormHasItsTexts()
{
    QFETCH(HeaderForm, form);
    const HeaderTexts texts = headerTexts(form, QStringLiteral("Unknown"));
    QTEST((QStringList{texts.firstInfo, texts.secondInfo, texts.manualOffset, texts.shunt, texts.filter,
                       texts.revPol, texts.level}),
          "texts");
    QCOMPARE(texts.channel, QStringLiteral("Channel"));
}

void TstHeaderTexts::thermoHeaderFollowsTheName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::newRow("named") << "Thermo"
                           << "Sensor Type         ";
    QTest::newRow("a new row's name") << "Unknown"
                                      << "Sensor Type      ";
    QTest::newRow("case counts") << "thermo"
                                 << "Sensor Type      ";
}

void TstHeaderTexts::thermoHeaderFollowsTheName()
{
    QFETCH(QString, name);
    QTEST(headerTexts(HeaderForm::Thermo, name).firstInfo, "text");
}

void TstHeaderTexts::onlyThermoHasNoSeparators()
{
    QVERIFY(headerTraits(HeaderForm::StrainGauge).separators);
    QVERIFY(headerTraits(HeaderForm::Voltage).separators);
    QVERIFY(!headerTraits(HeaderForm::Thermo).separators);
    QVERIFY(headerTraits(HeaderForm::Universal).separators);
}

void TstHeaderTexts::onlyUniversalChannelsHaveFunctions()
{
    QVERIFY(!headerTraits(HeaderForm::StrainGauge).channelsHaveFunctions);
    QVERIFY(!headerTraits(HeaderForm::Voltage).channelsHaveFunctions);
    QVERIFY(!headerTraits(HeaderForm::Thermo).channelsHaveFunctions);
    QVERIFY(headerTraits(HeaderForm::Universal).channelsHaveFunctions);
}

void TstHeaderTexts::columnsDoNotOverlap_data()
{
    QTest::addColumn<HeaderForm>("form");
    QTest::newRow("3 strain gauge") << HeaderForm::StrainGauge;
    QTest::newRow("4 voltage") << HeaderForm::Voltage;
    QTest::newRow("5 thermo") << HeaderForm::Thermo;
    QTest::newRow("6 universal") << HeaderForm::Universal;
}

void TstHeaderTexts::columnsDoNotOverlap()
{
    QFETCH(HeaderForm, form);
    const rowcolumns::Columns columns = rowcolumns::columns(form);
    int end = 0;
    for (const rowcolumns::Column &column :
         {columns.firstInfo, columns.secondInfo, columns.autozero, columns.shunt, columns.manualOffset,
          columns.filter, columns.revPol}) {
        if (column.width == 0)
            continue;
        QVERIFY(column.left >= end);
        end = column.end();
    }
    QVERIFY(end <= rowcolumns::kStripWidth);
}

QTEST_APPLESS_MAIN(TstHeaderTexts)
#include "tst_headertexts.moc"
