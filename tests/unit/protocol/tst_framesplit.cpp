#include "protocol/framesplit.h"
#include "support/devicereplies.h"

#include <QtTest>

class TstFrameSplit : public QObject
{
    Q_OBJECT

private slots:
    void literalFrameGivesItsPayload();
    void emptyPayloadIsAPayload();
    void largestPayloadComesWhole();
    void everyTruncationIsRefused();
    void bytesBehindTheTrailerAreLeftOut();
};

void TstFrameSplit::literalFrameGivesItsPayload()
{
    const auto payload = payloadOfFrame(QByteArray::fromHex("80818283010343500000000000000000050093f312000000"
                                                            "81695b"));
    QVERIFY(payload);
    QCOMPARE(payload->toHex(), QByteArray("1200000081"));
}

void TstFrameSplit::emptyPayloadIsAPayload()
{
    const auto payload = payloadOfFrame(QByteArray::fromHex("8081828301014350000000000000000000008cf3502a"));
    QVERIFY(payload);
    QVERIFY(payload->isEmpty());
}

void TstFrameSplit::largestPayloadComesWhole()
{
    const QByteArray payload(1300, 'p');
    const QByteArray frame = device::frame(payload);
    QCOMPARE(frame.size(), 1322);
    QCOMPARE(payloadOfFrame(frame).value_or(QByteArray()), payload);
}

void TstFrameSplit::everyTruncationIsRefused()
{
    const QByteArray frame = device::frame(QByteArray("0123456789"));
    for (int size = 0; size < frame.size(); ++size)
        QVERIFY2(!payloadOfFrame(frame.left(size)), qPrintable(QString::number(size)));
}

void TstFrameSplit::bytesBehindTheTrailerAreLeftOut()
{
    QCOMPARE(payloadOfFrame(device::frame("abc") + "more").value_or(QByteArray()), QByteArray("abc"));
}

QTEST_GUILESS_MAIN(TstFrameSplit)
#include "tst_framesplit.moc"
