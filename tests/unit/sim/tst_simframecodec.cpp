#include "sim/framecodec.h"

#include <QtTest>

using sim::FrameCodec;
using sim::FrameHeader;
using sim::Reception;
using sim::RequestReceiver;

namespace {

constexpr qint64 kMs = 1000000;

const char kSystemStatusRequest[] = "80818283010143500000000000000000050091f30100000001ec2b";
const char kFastRequest[] = "8081828301ff4350000000000000000005008ff408000000007334";
const char kFilterRequest[] = "808182830107435000000000000000000a009cf326000000033235303000289a";

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

/// Everything the receiver makes of the bytes, all of which come at one time.
QVector<Reception> feed(RequestReceiver &receiver, const QByteArray &bytes, qint64 timeNs = 0)
{
    QVector<Reception> all;
    for (const char byte : bytes)
        all += receiver.feed(static_cast<quint8>(byte), timeNs);
    return all;
}

QVector<Reception> feed(const QByteArray &bytes)
{
    RequestReceiver receiver;
    return feed(receiver, bytes);
}

QStringList summary(const QVector<Reception> &receptions)
{
    QStringList lines;
    for (const Reception &reception : receptions)
        lines += reception.valid ? QString::fromLatin1(reception.payload.toHex()) : reception.fault;
    return lines;
}

QByteArray countingPayload(int size)
{
    QByteArray payload;
    for (int i = 0; i < size; ++i)
        payload.append(static_cast<char>(i & 0xFF));
    return payload;
}

} // namespace

class TstSimFrameCodec : public QObject
{
    Q_OBJECT

private slots:
    void replyIsBuilt_data();
    void replyIsBuilt();
    void longestReplyHasItsSums();
    void requestIsTaken_data();
    void requestIsTaken();
    void longestRequestIsTaken();
    void wrongHeaderIsRefused_data();
    void wrongHeaderIsRefused();
    void payloadAbove1300IsRefusedAtTheHeader();
    void wrongCrcIsRefused();
    void everyFlippedBitIsNoticed();
    void truncatedRequestGivesNothing();
    void noiseIsSkippedAndReportedOnce();
    void requestBehindAHeaderThatWasCutShortIsTaken();
    void pauseInsideAFrameDropsIt();
    void pauseBetweenFramesIsNone();
    void timeIsThatOfTheLastByte();
    void randomBytesNeverGiveARequest();
    void roundTrip();
};

void TstSimFrameCodec::replyIsBuilt_data()
{
    QTest::addColumn<int>("counter");
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QByteArray>("frame");

    QTest::newRow("fast system status")
        << 1 << hex("080000000000000000006009e02ec409")
        << hex("808182830101504b00000000000000001000a4f3080000000000000000006009e02ec4096f2b");
    QTest::newRow("no payload, counter 255")
        << 255 << QByteArray() << hex("8081828301ff504b0000000000000000000092f47fbf");
}

void TstSimFrameCodec::replyIsBuilt()
{
    QFETCH(int, counter);
    QFETCH(QByteArray, payload);
    QFETCH(QByteArray, frame);
    FrameHeader header;
    header.counter = static_cast<quint8>(counter);
    QCOMPARE(FrameCodec::encode(header, payload).toHex(), frame.toHex());
}

void TstSimFrameCodec::longestReplyHasItsSums()
{
    FrameHeader header;
    header.counter = 9;
    const QByteArray frame = FrameCodec::encode(header, countingPayload(1300));
    QCOMPARE(frame.size(), 1322);
    QCOMPARE(frame.left(20).toHex(), QByteArray("808182830109504b00000000000000001405b5f3"));
    QCOMPARE(frame.right(2).toHex(), QByteArray("a5f7"));
}

void TstSimFrameCodec::requestIsTaken_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<int>("counter");
    QTest::addColumn<QByteArray>("payload");

    QTest::newRow("system status") << hex(kSystemStatusRequest) << 1 << hex("0100000001");
    QTest::newRow("counter 255") << hex(kFastRequest) << 255 << hex("0800000000");
    QTest::newRow("text") << hex(kFilterRequest) << 7 << hex("26000000033235303000");
    QTest::newRow("no payload") << hex("80818283010043500000000000000000000 08bf33b1d") << 0 << QByteArray();
}

void TstSimFrameCodec::requestIsTaken()
{
    QFETCH(QByteArray, frame);
    QFETCH(int, counter);
    QFETCH(QByteArray, payload);
    const QVector<Reception> receptions = feed(frame);
    QCOMPARE(receptions.size(), 1);
    QVERIFY(receptions.first().valid);
    QCOMPARE(int(receptions.first().counter), counter);
    QCOMPARE(receptions.first().payload.toHex(), payload.toHex());
    QCOMPARE(receptions.first().raw, frame);
}

void TstSimFrameCodec::longestRequestIsTaken()
{
    const QByteArray payload = countingPayload(1300);
    const QVector<Reception> receptions =
        feed(hex("808182830109435000000000000000001405adf3") + payload + hex("0efd"));
    QCOMPARE(summary(receptions), QStringList(QString::fromLatin1(payload.toHex())));
}

void TstSimFrameCodec::wrongHeaderIsRefused_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QString>("fault");

    QTest::newRow("addressee") << hex("80818283010144500000000000000000050092f308000000002c71")
                               << "addressee 0x44";
    QTest::newRow("originator of the device")
        << hex("808182830101434b000000000000000005008cf30800000000224d") << "originator 0x4b";
    QTest::newRow("reserved byte") << hex("80818283010143500000000100000000050092f308000000005230")
                                   << "reserved bytes are not zero";
    QTest::newRow("version") << hex("80818283020143500000000000000000050092f308000000000825")
                             << "no sync bytes";
    QTest::newRow("header sum") << hex("80818283010143500000000000000000050092f30100000001ec2b")
                                << "wrong header sum";
    QTest::newRow("sync") << hex("80818383010143500000000000000000050092f30100000001ec2b") << "no sync bytes";
}

void TstSimFrameCodec::wrongHeaderIsRefused()
{
    QFETCH(QByteArray, frame);
    QFETCH(QString, fault);
    RequestReceiver receiver;
    QCOMPARE(summary(feed(receiver, frame)), QStringList(fault));
    QCOMPARE(summary(feed(receiver, hex(kFastRequest))), QStringList("0800000000"));
}

void TstSimFrameCodec::payloadAbove1300IsRefusedAtTheHeader()
{
    RequestReceiver receiver;
    QCOMPARE(summary(feed(receiver, hex("808182830101435000000000000000001505a6f3"))),
             QStringList("payload length 1301"));
}

void TstSimFrameCodec::wrongCrcIsRefused()
{
    RequestReceiver receiver;
    QByteArray frame = hex(kSystemStatusRequest);
    frame[25] = static_cast<char>(frame.at(25) ^ 1);
    QCOMPARE(summary(feed(receiver, frame + hex(kFastRequest))), QStringList({"wrong CRC", "0800000000"}));
}

void TstSimFrameCodec::everyFlippedBitIsNoticed()
{
    const QByteArray frame = hex(kFilterRequest);
    for (int bit = 0; bit < frame.size() * 8; ++bit) {
        QByteArray damaged = frame;
        damaged[bit / 8] = static_cast<char>(damaged.at(bit / 8) ^ (1 << (bit % 8)));
        for (const Reception &reception : feed(damaged))
            QVERIFY2(!reception.valid, qPrintable(QString::number(bit)));
    }
}

void TstSimFrameCodec::truncatedRequestGivesNothing()
{
    const QByteArray frame = hex(kFilterRequest);
    for (int size = 0; size < frame.size(); ++size)
        QVERIFY(feed(frame.left(size)).isEmpty());
}

void TstSimFrameCodec::noiseIsSkippedAndReportedOnce()
{
    QCOMPARE(summary(feed(hex("00112280558081") + hex(kFastRequest) + hex("3344"))),
             QStringList({"no sync bytes", "0800000000", "no sync bytes"}));
}

void TstSimFrameCodec::requestBehindAHeaderThatWasCutShortIsTaken()
{
    // The cut frame's length makes the receiver read on into the next frame; the check sums end that.
    const QByteArray cut = hex(kFilterRequest).left(8);
    QCOMPARE(summary(feed(cut + hex(kFastRequest) + hex(kFastRequest))).last(), QString("0800000000"));
}

void TstSimFrameCodec::pauseInsideAFrameDropsIt()
{
    RequestReceiver receiver;
    const QByteArray frame = hex(kFastRequest);
    QVERIFY(feed(receiver, frame.left(10), 0).isEmpty());
    QCOMPARE(summary(feed(receiver, frame, 1001 * kMs)), QStringList({"pause inside a frame", "0800000000"}));
}

void TstSimFrameCodec::pauseBetweenFramesIsNone()
{
    RequestReceiver receiver;
    const QByteArray frame = hex(kFastRequest);
    feed(receiver, frame.left(10), 0);
    QCOMPARE(summary(feed(receiver, frame.mid(10), 1000 * kMs)), QStringList("0800000000"));
    QCOMPARE(summary(feed(receiver, frame, 900000 * kMs)), QStringList("0800000000"));
}

void TstSimFrameCodec::timeIsThatOfTheLastByte()
{
    RequestReceiver receiver;
    const QByteArray frame = hex(kFastRequest);
    QVector<Reception> receptions;
    for (int i = 0; i < frame.size(); ++i)
        receptions += receiver.feed(static_cast<quint8>(frame.at(i)), i * kMs);
    QCOMPARE(receptions.size(), 1);
    QCOMPARE(receptions.first().timeNs, 26 * kMs);
}

void TstSimFrameCodec::randomBytesNeverGiveARequest()
{
    QRandomGenerator random(4711);
    RequestReceiver receiver;
    for (int i = 0; i < 200000; ++i) {
        const auto byte = static_cast<quint8>(random.bounded(256));
        for (const Reception &reception : receiver.feed(byte, i))
            QVERIFY(!reception.valid);
    }
    // What the noise left behind may swallow a frame, but not all that follow.
    feed(receiver, hex(kFastRequest).repeated(60), 200000);
    QCOMPARE(summary(feed(receiver, hex(kFastRequest), 200000)), QStringList("0800000000"));
}

void TstSimFrameCodec::roundTrip()
{
    QRandomGenerator random(99);
    RequestReceiver receiver;
    for (int size = 0; size <= 1300; size += 13) {
        QByteArray payload;
        for (int i = 0; i < size; ++i)
            payload.append(static_cast<char>(random.bounded(256)));
        FrameHeader header;
        header.counter = static_cast<quint8>(size & 0xFF);
        header.addressee = sim::kDeviceAddressee;
        header.originator = sim::kProgramOriginator;
        QCOMPARE(summary(feed(receiver, FrameCodec::encode(header, payload))),
                 QStringList(QString::fromLatin1(payload.toHex())));
    }
}

QTEST_GUILESS_MAIN(TstSimFrameCodec)
#include "tst_simframecodec.moc"
