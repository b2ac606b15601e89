#include "protocol/ratecodes.h"

#include <QtTest>

class TstRateCodes : public QObject
{
    Q_OBJECT

private slots:
    void bitRatesCountFrom40000Down_data();
    void bitRatesCountFrom40000Down();
    void channelCountsCountFrom2Up_data();
    void channelCountsCountFrom2Up();
};

void TstRateCodes::bitRatesCountFrom40000Down_data()
{
    QTest::addColumn<int>("code");
    QTest::newRow("40000") << 0;
    QTest::newRow("20000") << 1;
    QTest::newRow("10000") << 2;
    QTest::newRow("5000") << 3;
    QTest::newRow("2500") << 4;
    QTest::newRow("1250") << 5;
    QTest::newRow("625") << 6;
    QTest::newRow("312") << 7;
    // Unknown texts fall to the first code without a message.
    QTest::newRow("") << 0;
    QTest::newRow("312.5") << 0;
    QTest::newRow("5000 ") << 0;
}

void TstRateCodes::bitRatesCountFrom40000Down()
{
    QFETCH(int, code);
    QCOMPARE(int(rates::bitRateCode(QString::fromLatin1(QTest::currentDataTag()))), code);
}

void TstRateCodes::channelCountsCountFrom2Up_data()
{
    QTest::addColumn<int>("code");
    QTest::newRow("2") << 0;
    QTest::newRow("4") << 1;
    QTest::newRow("8") << 2;
    QTest::newRow("16") << 3;
    QTest::newRow("32") << 4;
    QTest::newRow("64") << 5;
    QTest::newRow("128") << 6;
    QTest::newRow("256") << 7;
    QTest::newRow("512") << 0;
    QTest::newRow("all") << 0;
}

void TstRateCodes::channelCountsCountFrom2Up()
{
    QFETCH(int, code);
    QCOMPARE(int(rates::channelCountCode(QString::fromLatin1(QTest::currentDataTag()))), code);
}

QTEST_GUILESS_MAIN(TstRateCodes)
#include "tst_ratecodes.moc"
