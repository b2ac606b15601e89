#include "deviceframes.h"
#include "link/framebuilder.h"
#include "link/frameformat.h"

#include <QtTest>

class TstFrameBuilder : public QObject
{
    Q_OBJECT

private slots:
    void framesAreTheAgreedBytes_data();
    void framesAreTheAgreedBytes();
    void aPayloadOf1300BytesIsFramed();
    void theAddresseeIsTheOneGiven();
};

void TstFrameBuilder::framesAreTheAgreedBytes_data()
{
    QTest::addColumn<int>("counter");
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("first frame: counter 1")
        << 1 << QByteArray::fromHex("01000001")
        << QByteArray::fromHex("80818283010143500000000000000000040090f301000001b479");
    QTest::newRow("counter 255") << 255 << QByteArray::fromHex("22000000053b")
                                 << QByteArray::fromHex(
                                        "8081828301ff43500000000000000000060090f422000000053ba99b");
    QTest::newRow("counter 0, no payload")
        << 0 << QByteArray() << QByteArray::fromHex("8081828301004350000000000000000000008bf33b1d");
}

void TstFrameBuilder::framesAreTheAgreedBytes()
{
    QFETCH(int, counter);
    QFETCH(QByteArray, payload);
    QFETCH(QByteArray, expected);
    const QByteArray built = frame::build(static_cast<quint8>(counter), frame::kController, payload);
    QCOMPARE(built.toHex(), expected.toHex());
}

void TstFrameBuilder::aPayloadOf1300BytesIsFramed()
{
    const QByteArray payload = deviceframes::patternPayload(frame::kMaxPayload);
    const QByteArray built = frame::build(0x80, frame::kController, payload);
    QCOMPARE(built.size(), 1322);
    QCOMPARE(built.left(20).toHex(), QByteArray("80818283018043500000000000000000140524f4"));
    QCOMPARE(built.mid(20, 1300), payload);
    QCOMPARE(built.right(2).toHex(), QByteArray("d744"));
}

void TstFrameBuilder::theAddresseeIsTheOneGiven()
{
    const QByteArray built = frame::build(1, 0x5A, QByteArray());
    QCOMPARE(built.at(6), char(0x5A));
}

QTEST_APPLESS_MAIN(TstFrameBuilder)
#include "tst_framebuilder.moc"
