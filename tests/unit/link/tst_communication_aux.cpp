#include "deviceframes.h"
#include "link/communication_aux.h"
#include "support/messagecatcher.h"
#include "support/virtualtime.h"

#include <QByteArrayList>
#include <QSignalSpy>
#include <QtTest>
#include <memory>
#include <random>

namespace {

const QString kHeaderLine = QStringLiteral("int Communication_Aux::RX_from_VX(uchar) : Header Not OK!");
const QString kCounterLine =
    QStringLiteral("int Communication_Aux::RX_from_VX(uchar) : Inconsistent Consistency Counter!");
const QString kOverflowLine =
    QStringLiteral("int Communication_Aux::RX_from_VX(uchar) : RS232 Buffer Overflow!");
const QString kTimeoutLine = QStringLiteral("void Communication_Aux::RcvTimeOver() : Receive Timeout!");

/// What came of the bytes that were fed.
struct Feeding
{
    QList<int> results; ///< one for each byte

    int last() const { return results.last(); }

    bool allTakenBut(int index) const
    {
        for (int i = 0; i < results.size(); ++i) {
            if (i != index && results.at(i) != Communication_Aux::Taken)
                return false;
        }
        return true;
    }
};

Feeding feed(Communication_Aux &decoder, const QByteArray &bytes)
{
    Feeding feeding;
    for (const char byte : bytes)
        feeding.results.append(decoder.RX_from_VX(static_cast<uchar>(byte)));
    return feeding;
}

/// Counts how often its timer is started, besides what time does.
class CountingTime final : public TimeSource
{
public:
    class CountingTimer final : public Timer
    {
    public:
        using Timer::Timer;
        bool isActive() const override { return m_active; }
        void start(Period) override
        {
            m_active = true;
            ++starts;
        }
        void stop() override { m_active = false; }
        void setSingleShot(bool) override {}

        int starts = 0;

    private:
        bool m_active = false;
    };

    QDateTime now() const override { return QDateTime(); }
    Timer *createTimer(QObject *parent) override { return timer = new CountingTimer(parent); }

    CountingTimer *timer = nullptr;
};

} // namespace

class TstCommunication_Aux : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

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
    void everyTruncationIsDroppedByTheTimeOut();
    void randomBytesDoNoHarm();

    void theFrameIsTakenBeforeTheReset();
    void everyResetIsTold();
    void aReceiverMayKeepOrChangeTheArray();

    void theFirstFrameMayCarryAnyCounter();
    void counterFFIsFollowedBy00();
    void aCounterMismatchRepeatsWithEachFrame();
    void aMismatchWithABadChecksumPutsTheCounterBackInStep();
    void aRefusedHeaderCountsAsTheFirst();
    void linesOfOneHeaderComeInOrder();

    void bytes999MsApartAreOneFrame();
    void aPauseOf1000MsDropsTheFrame();
    void theTimeOutComesOnce();
    void thePauseCountsFromTheLastByte();
    void aPauseBetweenFramesDoesNothing();
    void aFrameBegunInTheTurnOfAnotherIsWatched();
    void bytesThatComeWithTheTimeOutSaveTheFrame();
    void theTimeOutIsACriticalLine();
    void theTimerIsStartedOncePerTurn();

    void anOverflowIsRefusedWithoutAReset();

    void twoFramesInOneReadAreBothTaken();
    void junkBetweenFramesDropsTheRestOfTheRead();
    void aBadChecksumDropsTheRestOfTheRead();
    void framesCutAnywhereAreTaken();
    void aReceiverMayAbandonTheRead();
    void abandoningOutsideOfAReadDoesNothing();

private:
    void expectRecovery();

    std::unique_ptr<MessageCatcher> m_log;
    std::unique_ptr<VirtualTime> m_time;
    std::unique_ptr<Communication_Aux> m_decoder;
    QByteArrayList m_frames;
    int m_resets = 0;
};

void TstCommunication_Aux::init()
{
    m_log = std::make_unique<MessageCatcher>();
    m_time = std::make_unique<VirtualTime>();
    m_decoder = std::make_unique<Communication_Aux>(*m_time);
    m_frames.clear();
    m_resets = 0;
    connect(m_decoder.get(), &Communication_Aux::Signal_RcvDatagramOk, this,
            [this](QByteArray &frame) { m_frames.append(frame); });
    connect(m_decoder.get(), &Communication_Aux::Signal_ResetRcvData, this, [this] { ++m_resets; });
}

void TstCommunication_Aux::cleanup()
{
    m_decoder.reset();
    m_time.reset();
    m_log.reset();
}

/// The decoder takes the next frame, after the time-out at the latest.
void TstCommunication_Aux::expectRecovery()
{
    m_time->advance(1000);
    m_frames.clear();
    QVERIFY(feed(*m_decoder, deviceframes::five()).allTakenBut(-1));
    QCOMPARE(m_frames, QByteArrayList{deviceframes::five()});
}

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
    QVERIFY(feed(*m_decoder, allButLast).allTakenBut(-1));
    QVERIFY(m_frames.isEmpty());
    QCOMPARE(m_decoder->RX_from_VX(static_cast<uchar>(frame.back())), int(Communication_Aux::Taken));
    QCOMPARE(m_frames, QByteArrayList{frame});
    QCOMPARE(m_log->lines(), QStringList{QStringLiteral("Payload Size: %1").arg(payloadSize)});
}

void TstCommunication_Aux::aFrameOfTheLargestPayloadIsAccepted()
{
    QCOMPARE(deviceframes::largest().size(), 1322);
    QVERIFY(feed(*m_decoder, deviceframes::largest()).allTakenBut(-1));
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
        QSignalSpy accepted(&decoder, &Communication_Aux::Signal_RcvDatagramOk);
        QByteArray frame = good;
        const int index = bit / 8;
        frame[index] = static_cast<char>(frame.at(index) ^ (1 << (bit % 8)));

        const int noticedAt = index == 0 ? 0 : index < 20 ? 19 : good.size() - 1;
        const Feeding feeding = feed(decoder, frame.left(noticedAt + 1));
        QVERIFY(feeding.allTakenBut(noticedAt));
        QCOMPARE(feeding.last(),
                 int(index < 20 ? Communication_Aux::Refused : Communication_Aux::BadChecksum));
        QCOMPARE(accepted.count(), 0);
    }
}

void TstCommunication_Aux::everyTruncationIsDroppedByTheTimeOut()
{
    const QByteArray good = deviceframes::eight();
    for (int size = 1; size < good.size(); ++size) {
        m_log->clear();
        m_resets = 0;
        QVERIFY(feed(*m_decoder, good.left(size)).allTakenBut(-1));
        QCOMPARE(m_resets, 0);
        m_time->advance(1000);
        QCOMPARE(m_log->lines().filter(kTimeoutLine).size(), 1);
        QCOMPARE(m_resets, 1);
        QVERIFY(m_frames.isEmpty());
    }
    expectRecovery();
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

void TstCommunication_Aux::theFirstFrameMayCarryAnyCounter()
{
    feed(*m_decoder, deviceframes::counterFE());
    QVERIFY(!m_log->contains(kCounterLine));
}

void TstCommunication_Aux::counterFFIsFollowedBy00()
{
    for (const auto &frame : {deviceframes::counterFE(), deviceframes::counterFF(), deviceframes::counter00(),
                              deviceframes::counter01()})
        feed(*m_decoder, frame);
    QCOMPARE(m_frames.size(), 4);
    QVERIFY(!m_log->contains(kCounterLine));
}

void TstCommunication_Aux::aCounterMismatchRepeatsWithEachFrame()
{
    feed(*m_decoder, deviceframes::counterFE());
    const QByteArrayList later{deviceframes::counter00(), deviceframes::counter01(),
                               deviceframes::counter02()};
    for (int i = 0; i < later.size(); ++i) {
        feed(*m_decoder, later.at(i));
        QCOMPARE(m_log->lines().filter(kCounterLine).size(), i + 1);
    }
    QCOMPARE(m_frames.size(), 4);
}

void TstCommunication_Aux::aMismatchWithABadChecksumPutsTheCounterBackInStep()
{
    feed(*m_decoder, deviceframes::counterFE());
    feed(*m_decoder, deviceframes::withBadChecksum(deviceframes::counter00()));
    QCOMPARE(m_log->lines().filter(kCounterLine).size(), 1);
    feed(*m_decoder, deviceframes::counter01());
    feed(*m_decoder, deviceframes::counter02());
    QCOMPARE(m_log->lines().filter(kCounterLine).size(), 1);
}

void TstCommunication_Aux::aRefusedHeaderCountsAsTheFirst()
{
    // An echo with counter 1: its header is complete, so the next frame is expected to carry 1 as well.
    feed(*m_decoder, QByteArray::fromHex("80818283010143500000000000000000040090f3"));
    feed(*m_decoder, deviceframes::counter01());
    QVERIFY(!m_log->contains(kCounterLine));
    feed(*m_decoder, deviceframes::counter02());
    QVERIFY(!m_log->contains(kCounterLine));
    feed(*m_decoder, deviceframes::counterFE());
    QVERIFY(m_log->contains(kCounterLine));
}

void TstCommunication_Aux::linesOfOneHeaderComeInOrder()
{
    feed(*m_decoder, deviceframes::five());
    m_log->clear();
    feed(*m_decoder, QByteArray::fromHex("80818283010143500000000000000000040090f3"));
    QCOMPARE(m_log->lines(), (QStringList{QStringLiteral("Payload Size: 4"), kCounterLine, kHeaderLine}));
}

void TstCommunication_Aux::bytes999MsApartAreOneFrame()
{
    for (const char byte : deviceframes::five()) {
        QCOMPARE(m_decoder->RX_from_VX(static_cast<uchar>(byte)), int(Communication_Aux::Taken));
        m_time->advance(999);
    }
    QCOMPARE(m_frames, QByteArrayList{deviceframes::five()});
    QVERIFY(!m_log->contains(kTimeoutLine));
}

void TstCommunication_Aux::aPauseOf1000MsDropsTheFrame()
{
    feed(*m_decoder, deviceframes::five().left(24));
    m_time->advance(1001);
    QVERIFY(m_log->contains(kTimeoutLine));
    QCOMPARE(m_resets, 1);
    QCOMPARE(feed(*m_decoder, deviceframes::five().mid(24, 1)).last(), int(Communication_Aux::Refused));
    QVERIFY(m_frames.isEmpty());
}

void TstCommunication_Aux::theTimeOutComesOnce()
{
    feed(*m_decoder, deviceframes::five().left(24));
    m_time->advance(5000);
    QCOMPARE(m_log->lines().filter(kTimeoutLine).size(), 1);
    QCOMPARE(m_resets, 1);
}

void TstCommunication_Aux::thePauseCountsFromTheLastByte()
{
    feed(*m_decoder, deviceframes::five().left(3));
    m_time->advance(600);
    feed(*m_decoder, deviceframes::five().mid(3, 4));
    m_time->advance(999);
    QVERIFY(!m_log->contains(kTimeoutLine));
    m_time->advance(1);
    QVERIFY(m_log->contains(kTimeoutLine));
}

void TstCommunication_Aux::aPauseBetweenFramesDoesNothing()
{
    m_time->advance(5000);
    feed(*m_decoder, deviceframes::five());
    m_time->advance(5000);
    feed(*m_decoder, deviceframes::five().left(7));
    m_time->advance(500);
    feed(*m_decoder, deviceframes::five().mid(7));
    m_time->advance(5000);
    QCOMPARE(m_frames.size(), 2);
    QVERIFY(!m_log->contains(kTimeoutLine));
}

void TstCommunication_Aux::aFrameBegunInTheTurnOfAnotherIsWatched()
{
    feed(*m_decoder, deviceframes::five() + deviceframes::eight().left(10));
    m_time->advance(999);
    QVERIFY(!m_log->contains(kTimeoutLine));
    m_time->advance(1);
    QCOMPARE(m_log->lines().filter(kTimeoutLine).size(), 1);
}

void TstCommunication_Aux::bytesThatComeWithTheTimeOutSaveTheFrame()
{
    std::unique_ptr<Timer> busyLoop(m_time->createTimer(nullptr));
    busyLoop->setSingleShot(true);
    busyLoop->start(Timer::Period(1000));
    connect(busyLoop.get(), &Timer::timeout, this,
            [this] { feed(*m_decoder, deviceframes::five().mid(10, 5)); });
    feed(*m_decoder, deviceframes::five().left(10));
    m_time->advance(1500);
    QVERIFY(!m_log->contains(kTimeoutLine));
    feed(*m_decoder, deviceframes::five().mid(15));
    QCOMPARE(m_frames.size(), 1);
}

void TstCommunication_Aux::theTimeOutIsACriticalLine()
{
    m_log.reset();
    QTest::ignoreMessage(QtCriticalMsg, qPrintable(kTimeoutLine));
    m_decoder->RcvTimeOver();
    QCOMPARE(m_resets, 1);
}

void TstCommunication_Aux::theTimerIsStartedOncePerTurn()
{
    CountingTime time;
    Communication_Aux decoder(time);
    feed(decoder, deviceframes::five() + deviceframes::largest().left(700));
    QCoreApplication::sendPostedEvents(&decoder);
    QCOMPARE(time.timer->starts, 1);
    feed(decoder, deviceframes::largest().mid(700, 300));
    QVERIFY(!time.timer->isActive());
    QCoreApplication::sendPostedEvents(&decoder);
    QCOMPARE(time.timer->starts, 2);
    feed(decoder, deviceframes::largest().mid(1000));
    QCoreApplication::sendPostedEvents(&decoder);
    QCOMPARE(time.timer->starts, 2);
    QVERIFY(!time.timer->isActive());
}

/// A header limits the length of its frame, so only a smaller buffer lets a test reach the guard.
void TstCommunication_Aux::anOverflowIsRefusedWithoutAReset()
{
    constexpr int kLimit = 100;
    Communication_Aux decoder(*m_time, nullptr, std::chrono::milliseconds(1000), kLimit);
    QSignalSpy resets(&decoder, &Communication_Aux::Signal_ResetRcvData);
    QVERIFY(feed(decoder, deviceframes::largest().left(kLimit)).allTakenBut(-1));
    m_log->clear();
    QCOMPARE(decoder.RX_from_VX(0x12), int(Communication_Aux::Overflow));
    QCOMPARE(decoder.RX_from_VX(0x80), int(Communication_Aux::Overflow));
    QCOMPARE(m_log->lines(), (QStringList{kOverflowLine, kOverflowLine}));
    QCOMPARE(resets.count(), 0);
    m_time->advance(1000);
    QCOMPARE(resets.count(), 1);
    QVERIFY(feed(decoder, deviceframes::five()).allTakenBut(-1));
}

void TstCommunication_Aux::twoFramesInOneReadAreBothTaken()
{
    m_decoder->takeRead(deviceframes::five() + deviceframes::eight());
    QCOMPARE(m_frames, (QByteArrayList{deviceframes::five(), deviceframes::eight()}));
}

void TstCommunication_Aux::junkBetweenFramesDropsTheRestOfTheRead()
{
    m_decoder->takeRead(deviceframes::five() + QByteArray(1, '\x55') + deviceframes::eight());
    QCOMPARE(m_frames, QByteArrayList{deviceframes::five()});
    QCOMPARE(m_log->lines().last(), QStringLiteral("Rx From VX Stat -1"));
    m_decoder->takeRead(deviceframes::eight());
    QCOMPARE(m_frames.size(), 2);
}

void TstCommunication_Aux::aBadChecksumDropsTheRestOfTheRead()
{
    m_decoder->takeRead(deviceframes::withBadChecksum(deviceframes::five()) + deviceframes::eight());
    QVERIFY(m_frames.isEmpty());
    QCOMPARE(m_log->lines().last(), QStringLiteral("Rx From VX Stat -9"));
}

void TstCommunication_Aux::framesCutAnywhereAreTaken()
{
    const QByteArray stream = deviceframes::largest() + deviceframes::eight();
    for (int cut = 1; cut < stream.size(); ++cut) {
        m_frames.clear();
        m_decoder->takeRead(stream.left(cut));
        m_time->turn();
        m_decoder->takeRead(stream.mid(cut));
        m_time->turn();
        QCOMPARE(m_frames, (QByteArrayList{deviceframes::largest(), deviceframes::eight()}));
    }
}

void TstCommunication_Aux::aReceiverMayAbandonTheRead()
{
    connect(m_decoder.get(), &Communication_Aux::Signal_RcvDatagramOk, m_decoder.get(),
            &Communication_Aux::abandonRead);
    m_decoder->takeRead(deviceframes::five() + deviceframes::eight());
    QCOMPARE(m_frames, QByteArrayList{deviceframes::five()});
    m_decoder->takeRead(deviceframes::eight());
    QCOMPARE(m_frames.size(), 2);
}

void TstCommunication_Aux::abandoningOutsideOfAReadDoesNothing()
{
    m_decoder->takeRead(deviceframes::five().left(12));
    m_decoder->abandonRead();
    m_decoder->takeRead(deviceframes::five().mid(12));
    QCOMPARE(m_frames.size(), 1);
}

QTEST_GUILESS_MAIN(TstCommunication_Aux)
#include "tst_communication_aux.moc"
