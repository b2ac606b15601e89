#include "deviceframes.h"
#include "link/framecrc.h"
#include "link/frameformat.h"

#include <QtTest>

namespace {

quint16 crcOf(const QByteArray &bytes)
{
    return frame::updateCrc(frame::kChecksumStart, bytes.constData(), bytes.size());
}

/// Bit by bit, as the format tells it.
quint16 bitwiseCrc(const QByteArray &bytes)
{
    unsigned crc = 0xF0F1;
    for (const char byte : bytes) {
        for (int bit = 7; bit >= 0; --bit) {
            const unsigned top = crc >> 15;
            const unsigned dataBit = (static_cast<quint8>(byte) >> bit) & 1U;
            crc = (crc << 1) & 0xFFFFU;
            if (top != dataBit)
                crc ^= 0x1021U;
        }
    }
    return static_cast<quint16>(crc);
}

} // namespace

class TstFrameCrc : public QObject
{
    Q_OBJECT

private slots:
    void crcOfKnownBytes_data();
    void crcOfKnownBytes();
    void everyLengthAgreesWithTheBitwiseRule();
    void crcCarriesOnWhereverTheBytesAreCut();
    void sumKeepsSixteenBits();
    void sumCarriesOn();
};

void TstFrameCrc::crcOfKnownBytes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("crc");
    QTest::newRow("no byte: the start value") << QByteArray() << 0xF0F1;
    QTest::newRow("one byte") << QByteArray("A") << 0x46FA;
    QTest::newRow("nine digits") << QByteArray("123456789") << 0x2FF4;
    QTest::newRow("1300 bytes") << deviceframes::patternPayload(1300) << 0xAD52;
}

void TstFrameCrc::crcOfKnownBytes()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, crc);
    QCOMPARE(int(crcOf(bytes)), crc);
}

void TstFrameCrc::everyLengthAgreesWithTheBitwiseRule()
{
    for (int size = 0; size <= 100; ++size) {
        const QByteArray bytes = deviceframes::patternPayload(size);
        QCOMPARE(crcOf(bytes), bitwiseCrc(bytes));
    }
}

void TstFrameCrc::crcCarriesOnWhereverTheBytesAreCut()
{
    const QByteArray bytes = deviceframes::patternPayload(70);
    for (int cut = 0; cut <= bytes.size(); ++cut) {
        const quint16 head = frame::updateCrc(frame::kChecksumStart, bytes.constData(), cut);
        QCOMPARE(frame::updateCrc(head, bytes.constData() + cut, bytes.size() - cut), crcOf(bytes));
    }
}

void TstFrameCrc::sumKeepsSixteenBits()
{
    const QByteArray bytes(18, char(0xFF));
    // 0xF0F1 + 18 * 0xFF = 0x102DF
    QCOMPARE(int(frame::updateSum(frame::kChecksumStart, bytes.constData(), bytes.size())), 0x02DF);
}

void TstFrameCrc::sumCarriesOn()
{
    const QByteArray bytes = QByteArray::fromHex("80ff01");
    const quint16 head = frame::updateSum(0, bytes.constData(), 1);
    QCOMPARE(int(frame::updateSum(head, bytes.constData() + 1, 2)), 0x180);
}

QTEST_APPLESS_MAIN(TstFrameCrc)
#include "tst_framecrc.moc"
