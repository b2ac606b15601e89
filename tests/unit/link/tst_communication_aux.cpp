#include "decodertest.h"
#include "deviceframes.h"

#include <QSignalSpy>
#include <QtTest>
#include <random>

class TstCommunication_Aux : public DecoderTest
{
    Q_OBJECT

private slots:
    void goodFramesAreAccepted_data();
    void goodFramesAreAccepted();
    void aFrameOfTheLargestPayloadIsAccepted();
    void aPayloadOf1301BytesIsRefusedAtTheTwentiethByte();
    void aLengthOf65535IsToldAndRefused();
    void headersWithAFaultAreRefusedAtTheTwentiethByte_data();
    void headersWithAFaultAreRefusedAtTheTwentiethByte();
    void aFirstByteOtherThan0x80IsRefused_data();
    void aFirstByteOtherThan0x80IsRefused();
    void aBadChecksumIsToldAtTheLastByte();
    void smallChecksumsAreToldWithTwoDigits();
    void everyFlippedBitIsNoticed();
    void randomBytesDoNoHarm();
    void theFrameIsTakenBeforeTheReset();
    void everyResetIsTold();
    void aReceiverMayKeepOrChangeTheArray();
    void anOverflowIsRefusedWithoutAReset();
};

void TstCommunication_Aux::goodFramesAreAccepted_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<int>("payloadSize");
    QTest::newRow("no payload, 22 bytes") << deviceframes::empty() << 0;
    QTest::newRow("five bytes") << deviceframes::five() << 5;
    QTest::newRow("payload with sync bytes") << deviceframes::eight() << 8;
    QTest::newRow("another addressee, reserved bytes not zero")
        << QByteArray::fromHex("808182830101ee4bf1f2f3f4f5f6f7f80200d8fbaa556de0") << 2;
}

void TstCommunication_Aux::goodFramesAreAccepted()
{
    QFETCH(QByteArray, frame);
    QFETCH(int, payloadSize);
    const QByteArray allButLast = frame.left(frame.size() - 1);
    QVERIFY(feed(*m_decoder, allButLast).allTaken());
    QVERIFY(m_frames.isEmpty());
    QCOMPARE(m_decoder->RX_from_VX(static_cast<uchar>(frame.back())), int(Communication_Aux::Taken));
    QCOMPARE(m_frames, QByteArrayList{frame});
    QCOMPARE(m_log->lines(), QStringList{QStringLiteral("Payload Size: %1").arg(payloadSize)});
}

void TstCommunication_Aux::aFrameOfTheLargestPayloadIsAccepted()
{
    QCOMPARE(deviceframes::largest().size(), 1322);
    QVERIFY(feed(*m_decoder, deviceframes::largest()).allTaken());
    QCOMPARE(m_frames, QByteArrayList{deviceframes::largest()});
    QCOMPARE(m_log->lines(), QStringList{QStringLiteral("Payload Size: 1300")});
}

void TstCommunication_Aux::aPayloadOf1301BytesIsRefusedAtTheTwentiethByte()
{
    const Feeding feeding = feed(*m_decoder, deviceframes::tooLong().left(20));
    QVERIFY(feeding.allTakenBut(19));
    QCOMPARE(feeding.last(), int(Communication_Aux::Refused));
    QCOMPARE(m_log->lines(), (QStringList{QStringLiteral("Payload Size: 1301"), kHeaderLine}));
    QCOMPARE(m_resets, 1);
    expectRecovery();
}

void TstCommunication_Aux::aLengthOf65535IsToldAndRefused()
{
    const auto header = QByteArray::fromHex("808182830109504b0000000000000000ffff9af5");
    const Feeding feeding = feed(*m_decoder, header);
    QVERIFY(feeding.allTakenBut(19));
    QCOMPARE(feeding.last(), int(Communication_Aux::Refused));
    QCOMPARE(m_log->lines(), (QStringList{QStringLiteral("Payload Size: 65535"), kHeaderLine}));
}

void TstCommunication_Aux::headersWithAFaultAreRefusedAtTheTwentiethByte_data()
{
    QTest::addColumn<QByteArray>("frame");
    // Header sum and checksum are right but where the name says otherwise.
    QTest::newRow("originator 0x50: an echo of our own request")
        << QByteArray::fromHex("80818283010143500000000000000000040090f301000001b479");
    QTest::newRow("sync byte 1") << QByteArray::fromHex("809182830103504b00000000000000000100a7f301c53f");
    QTest::newRow("sync byte 2") << QByteArray::fromHex("808192830103504b00000000000000000100a7f301cb64");
    QTest::newRow("sync byte 3") << QByteArray::fromHex("808182930103504b00000000000000000100a7f30169a6");
    QTest::newRow("version") << QByteArray::fromHex("808182831103504b00000000000000000100a7f301974a");
    QTest::newRow("header sum") << QByteArray::fromHex("808182830103504b0000000000000000010098f30102bd");
}

void TstCommunication_Aux::headersWithAFaultAreRefusedAtTheTwentiethByte()
{
    QFETCH(QByteArray, frame);
    const Feeding feeding = feed(*m_decoder, frame.left(20));
    QVERIFY(feeding.allTakenBut(19));
    QCOMPARE(feeding.last(), int(Communication_Aux::Refused));
    QCOMPARE(m_log->lines().last(), kHeaderLine);
    QCOMPARE(m_resets, 1);
    QVERIFY(m_frames.isEmpty());
    m_decoder->RX_from_VX(0); // the receiver waits for a first byte again
    QCOMPARE(m_resets, 2);
    expectRecovery();
}

void TstCommunication_Aux::aFirstByteOtherThan0x80IsRefused_data()
{
    QTest::addColumn<int>("byte");
    QTest::newRow("zero") << 0x00;
    QTest::newRow("second sync byte") << 0x81;
    QTest::newRow("one bit off") << 0x90;
    QTest::newRow("0xFF") << 0xFF;
}

void TstCommunication_Aux::aFirstByteOtherThan0x80IsRefused()
{
    QFETCH(int, byte);
    QCOMPARE(m_decoder->RX_from_VX(static_cast<uchar>(byte)), int(Communication_Aux::Refused));
    QCOMPARE(m_resets, 1);
    QVERIFY(m_log->lines().isEmpty());
    m_time->advance(2000);
    QVERIFY(m_log->lines().isEmpty());
    expectRecovery();
}

void TstCommunication_Aux::aBadChecksumIsToldAtTheLastByte()
{
    const QByteArray frame = deviceframes::withBadChecksum(deviceframes::counter01());
    const Feeding feeding = feed(*m_decoder, frame);
    QVERIFY(feeding.allTakenBut(frame.size() - 1));
    QCOMPARE(feeding.last(), int(Communication_Aux::BadChecksum));
    QVERIFY(m_frames.isEmpty());
    QCOMPARE(m_resets, 1);
    QCOMPARE(m_log->lines().last(),
             QStringLiteral("int Communication_Aux::RX_from_VX(uchar) : "
                            "!!! Invalid Checksum  received 55a4 Checksum Calculated 54a4"));
    expectRecovery();
}

void TstCommunication_Aux::smallChecksumsAreToldWithTwoDigits()
{
    auto frame = QByteArray::fromHex("80818283011a504b00000000000000000100aef3040900");
    feed(*m_decoder, frame);
    QCOMPARE(m_frames.size(), 1);
    frame[frame.size() - 2] = 0x0C;
    feed(*m_decoder, frame);
    QVERIFY(m_log->lines().last().endsWith(
        QStringLiteral("!!! Invalid Checksum  received 0c Checksum Calculated 09")));
}

void TstCommunication_Aux::everyFlippedBitIsNoticed()
{
    const QByteArray good = deviceframes::eight();
    for (int bit = 0; bit < good.size() * 8; ++bit) {
        Communication_Aux decoder(*m_time);
        int accepted = 0;
        connect(&decoder, &Communication_Aux::Signal_RcvDatagramOk, this, [&accepted] { ++accepted; });
        QByteArray frame = good;
        const int index = bit / 8;
        frame[index] = static_cast<char>(frame.at(index) ^ (1 << (bit % 8)));

        const int noticedAt = index == 0 ? 0 : index < 20 ? 19 : good.size() - 1;
        const Feeding feeding = feed(decoder, frame.left(noticedAt + 1));
        QVERIFY(feeding.allTakenBut(noticedAt));
        QCOMPARE(feeding.last(),
                 int(index < 20 ? Communication_Aux::Refused : Communication_Aux::BadChecksum));
        QCOMPARE(accepted, 0);
    }
}

void TstCommunication_Aux::randomBytesDoNoHarm()
{
    std::mt19937 random(20260302);
    const QByteArray begin = deviceframes::eight();
    for (int round = 0; round < 3000; ++round) {
        // A true begin of random length leads the bytes into every stage of the receiver.
        feed(*m_decoder, begin.left(int(random() % 21)));
        const int size = int(random() % 1600);
        for (int i = 0; i < size; ++i) {
            const int result = m_decoder->RX_from_VX(static_cast<uchar>(random()));
            QVERIFY(result == Communication_Aux::Taken || result == Communication_Aux::Refused ||
                    result == Communication_Aux::BadChecksum);
        }
        m_log->clear();
    }
    expectRecovery();
}

void TstCommunication_Aux::theFrameIsTakenBeforeTheReset()
{
    const QByteArray *array = nullptr;
    int resetsBefore = -1;
    connect(m_decoder.get(), &Communication_Aux::Signal_RcvDatagramOk, this, [&](QByteArray &frame) {
        array = &frame;
        resetsBefore = m_resets;
    });
    feed(*m_decoder, deviceframes::five());
    QCOMPARE(resetsBefore, 0);
    QCOMPARE(m_resets, 1);
    QVERIFY(array->isEmpty());
}

void TstCommunication_Aux::everyResetIsTold()
{
    m_decoder->RX_from_VX(0x00);
    QCOMPARE(m_resets, 1);
    feed(*m_decoder, deviceframes::five());
    QCOMPARE(m_resets, 2);
    feed(*m_decoder, deviceframes::withBadChecksum(deviceframes::five()));
    QCOMPARE(m_resets, 3);
    feed(*m_decoder, deviceframes::tooLong().left(20));
    QCOMPARE(m_resets, 4);
    expectTimeOut();
    m_decoder->RcvTimeOver();
    QCOMPARE(m_resets, 5);
}

void TstCommunication_Aux::aReceiverMayKeepOrChangeTheArray()
{
    QByteArray kept;
    connect(m_decoder.get(), &Communication_Aux::Signal_RcvDatagramOk, this, [&kept](QByteArray &frame) {
        kept = frame;
        frame.clear();
    });
    feed(*m_decoder, deviceframes::five());
    feed(*m_decoder, deviceframes::eight().left(25));
    QCOMPARE(kept, deviceframes::five());
    feed(*m_decoder, deviceframes::eight().mid(25));
    QCOMPARE(kept, deviceframes::eight());
}

/// A header limits the length of its frame, so only a smaller buffer lets a test reach the guard.
void TstCommunication_Aux::anOverflowIsRefusedWithoutAReset()
{
    constexpr int kLimit = 100;
    Communication_Aux decoder(*m_time, nullptr, std::chrono::milliseconds(1000), kLimit);
    QSignalSpy resets(&decoder, &Communication_Aux::Signal_ResetRcvData);
    QVERIFY(feed(decoder, deviceframes::largest().left(kLimit)).allTaken());
    m_log->clear();
    QCOMPARE(decoder.RX_from_VX(0x12), int(Communication_Aux::Overflow));
    QCOMPARE(decoder.RX_from_VX(0x80), int(Communication_Aux::Overflow));
    QCOMPARE(m_log->lines(), (QStringList{kOverflowLine, kOverflowLine}));
    QCOMPARE(resets.count(), 0);
    expectTimeOut();
    m_time->advance(1000);
    QCOMPARE(resets.count(), 1);
    QVERIFY(feed(decoder, deviceframes::five()).allTaken());
}

QTEST_GUILESS_MAIN(TstCommunication_Aux)
#include "tst_communication_aux.moc"
