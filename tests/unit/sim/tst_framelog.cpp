#include "sim/framelog.h"

#include <QtTest>

class TstFrameLog : public QObject
{
    Q_OBJECT

private slots:
    void requestsInWords_data();
    void requestsInWords();
    void repliesInWords_data();
    void repliesInWords();
    void truncatedPayloadsAreNoTrouble();
};

void TstFrameLog::requestsInWords_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QString>("words");

    QTest::newRow("0x01") << QByteArray("0100000001") << "system status";
    QTest::newRow("0x08") << QByteArray("0800000000") << "fast system status";
    QTest::newRow("0x10") << QByteArray("1000000000") << "fast module status";
    QTest::newRow("0x12") << QByteArray("1200000081") << "static module status of address 129";
    QTest::newRow("0x14") << QByteArray("1400000003") << "module EEPROM of address 3";
    QTest::newRow("0x16") << QByteArray("16010201e105000001ffff") << "FPGA command 0xe1, 5, 256";
    QTest::newRow("0x18") << QByteArray("1800000001100c30") << "power setting 1 0x10, 12300";
    QTest::newRow("0x1c") << QByteArray("1c00000007015a") << "voltage supply of channel 7: 1, code 90";
    QTest::newRow("0x1e") << QByteArray("1e000000080300") << "channel function of channel 8: 3";
    QTest::newRow("0x20") << QByteArray("200000000102") << "sensor of channel 1: 2";
    QTest::newRow("0x22") << QByteArray("220000000203") << "range of channel 2: 3";
    QTest::newRow("0x24") << QByteArray("240000000131322e3500") << "offset of channel 1: \"12.5\"";
    QTest::newRow("0x26") << QByteArray("26000000033235303000") << "filter of channel 3: \"2500\"";
    QTest::newRow("0x28") << QByteArray("28000000018f") << "action of channel 1: 143";
    QTest::newRow("0x2a") << QByteArray("2a000000060400") << "rates: 625 kBit/s, 32 channels";
    QTest::newRow("0x2b") << QByteArray("2b000000000000") << "system reset";
    QTest::newRow("other") << QByteArray("77") << "unknown";
}

void TstFrameLog::requestsInWords()
{
    QFETCH(QByteArray, payload);
    QFETCH(QString, words);
    QCOMPARE(sim::describeRequest(QByteArray::fromHex(payload)), words);
}

void TstFrameLog::repliesInWords_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QString>("words");

    QTest::newRow("head") << QByteArray::fromHex("080000000000000000006009e02ec409")
                          << "fast system status: input 24 V, output 12 V, load 1.25 A";
    QTest::newRow("reset flag") << QByteArray::fromHex("2a000000000000000100000000000000")
                                << "rates: input 0 V, output 0 V, load 0 A, reset flag";
    QTest::newRow("system status") << QByteArray::fromHex("010000000000000000000000000000000e00")
                                   << "system status: 14 modules, input 0 V, output 0 V, load 0 A";
    QTest::newRow("static status") << QByteArray::fromHex("12000000000000000000000000000000030004") +
                                          QByteArray(17, '\0') + QByteArray("TH-0003").leftJustified(16, '\0')
                                   << "static module status: address 3, type 4, serial \"TH-0003\", "
                                      "input 0 V, output 0 V, load 0 A";
}

void TstFrameLog::repliesInWords()
{
    QFETCH(QByteArray, payload);
    QFETCH(QString, words);
    QCOMPARE(sim::describeReply(payload), words);
}

void TstFrameLog::truncatedPayloadsAreNoTrouble()
{
    for (int code = 0; code < 256; ++code) {
        for (int size = 0; size < 20; ++size) {
            const QByteArray payload =
                QByteArray(size, '\0').replace(0, qMin(1, size), QByteArray(1, static_cast<char>(code)));
            QVERIFY(!sim::describeRequest(payload).isEmpty());
            QVERIFY(!sim::describeReply(payload).isEmpty());
        }
    }
}

QTEST_GUILESS_MAIN(TstFrameLog)
#include "tst_framelog.moc"
