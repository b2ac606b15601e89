#include "gateway/gatewayrates.h"
#include "system/rates/ratepairs.h"

#include <QtTest>
#include <limits>

/// Which cells of the table the gateway cannot run.
class TstGatewayRates : public QObject
{
    Q_OBJECT

private slots:
    void deadCellsAreTheGatewaysOwn();
    void allDeadCellsAreInTheTable();
    void cellsAboveALimit_data();
    void cellsAboveALimit();
    void aRateEqualToTheLimitIsAllowed();
    void aFractionCounts();
    void textsThatAreNoNumbersAreNotAbove();
    void countOfCellsAboveALimit_data();
    void countOfCellsAboveALimit();

private:
    static QStringList names(const QList<RateChoice> &cells);
};

/// As the buttons are called: channels, comma, bit rate.
QStringList TstGatewayRates::names(const QList<RateChoice> &cells)
{
    QStringList names;
    for (const RateChoice &cell : cells)
        names.append(cell.channels + QLatin1Char(',') + cell.bitRate);
    names.sort();
    return names;
}

void TstGatewayRates::deadCellsAreTheGatewaysOwn()
{
    QStringList expected{"2,10000", "4,10000", "2,5000", "256,625", "128,312", "256,312"};
    expected.sort();
    QCOMPARE(names(gateway::deadCells()), expected);
}

void TstGatewayRates::allDeadCellsAreInTheTable()
{
    const auto cells = gateway::deadCells();
    for (const RateChoice &cell : cells) {
        QVERIFY2(rates::tableBitRates().contains(cell.bitRate.toInt()), qPrintable(cell.bitRate));
        QVERIFY2(rates::tableChannelCounts().contains(cell.channels.toInt()), qPrintable(cell.channels));
    }
}

void TstGatewayRates::cellsAboveALimit_data()
{
    QTest::addColumn<double>("limit");
    QTest::addColumn<QStringList>("cells");
    QTest::newRow("none") << 250000.0 << QStringList();
    QTest::newRow("one") << 249999.0 << QStringList{"2,10000"};
    QTest::newRow("60000") << 60000.0
                           << QStringList{"2,10000", "4,10000", "8,10000", "2,5000", "4,5000", "2,2500"};
    QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << QStringList();
}

void TstGatewayRates::cellsAboveALimit()
{
    QFETCH(double, limit);
    QFETCH(QStringList, cells);
    cells.sort();
    QCOMPARE(names(gateway::cellsAbove(limit)), cells);
}

void TstGatewayRates::aRateEqualToTheLimitIsAllowed()
{
    // 2500 x 50 / 2 = 62500
    QVERIFY(!names(gateway::cellsAbove(62500)).contains(QStringLiteral("2,2500")));
    QVERIFY(names(gateway::cellsAbove(62499.9)).contains(QStringLiteral("2,2500")));
}

void TstGatewayRates::textsThatAreNoNumbersAreNotAbove()
{
    QVERIFY(gateway::isAbove({QStringLiteral("2500"), QStringLiteral("2")}, 0));
    QVERIFY(!gateway::isAbove({QStringLiteral("fast"), QStringLiteral("2")}, 0));
    QVERIFY(!gateway::isAbove({QStringLiteral("2500"), QString()}, 0));
    QVERIFY(!gateway::isAbove({QStringLiteral("2500"), QStringLiteral("0")}, 0));
}

void TstGatewayRates::aFractionCounts()
{
    // 312 x 50 / 256 = 60.9375
    QVERIFY(names(gateway::cellsAbove(60.9374)).contains(QStringLiteral("256,312")));
    QVERIFY(!names(gateway::cellsAbove(60.9375)).contains(QStringLiteral("256,312")));
}

void TstGatewayRates::countOfCellsAboveALimit_data()
{
    QTest::addColumn<double>("limit");
    QTest::addColumn<int>("count");
    QTest::newRow("zero") << 0.0 << 48;
    QTest::newRow("negative") << -1.0 << 48;
    QTest::newRow("just the smallest allowed") << 60.9375 << 47;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << 0;
    QTest::newRow("largest") << std::numeric_limits<double>::max() << 0;
}

void TstGatewayRates::countOfCellsAboveALimit()
{
    QFETCH(double, limit);
    QTEST(gateway::cellsAbove(limit).size(), "count");
}

QTEST_GUILESS_MAIN(TstGatewayRates)
#include "tst_gatewayrates.moc"
