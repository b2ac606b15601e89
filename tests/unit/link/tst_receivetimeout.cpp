#include "decodertest.h"
#include "deviceframes.h"

#include <QtTest>

namespace {

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

class TstReceiveTimeout : public DecoderTest
{
    Q_OBJECT

private slots:
    void bytes999MsApartAreOneFrame();
    void aPauseOf1000MsDropsTheFrame();
    void theTimeOutComesOnce();
    void thePauseCountsFromTheLastByte();
    void aPauseBetweenFramesDoesNothing();
    void aFrameBegunInTheTurnOfAnotherIsWatched();
    void bytesThatComeWithTheTimeOutSaveTheFrame();
    void everyTruncationIsDroppedByTheTimeOut();
    void theTimeOutIsACriticalLine();
    void theTimerIsStartedOncePerTurn();
};

void TstReceiveTimeout::bytes999MsApartAreOneFrame()
{
    for (const char byte : deviceframes::five()) {
        QCOMPARE(m_decoder->RX_from_VX(static_cast<uchar>(byte)), int(Communication_Aux::Taken));
        m_time->advance(999);
    }
    QCOMPARE(m_frames, QByteArrayList{deviceframes::five()});
    QVERIFY(!m_log->contains(kTimeoutLine));
}

void TstReceiveTimeout::aPauseOf1000MsDropsTheFrame()
{
    feed(*m_decoder, deviceframes::five().left(24));
    expectTimeOut();
    m_time->advance(1001);
    QVERIFY(m_log->contains(kTimeoutLine));
    QCOMPARE(m_resets, 1);
    QCOMPARE(feed(*m_decoder, deviceframes::five().mid(24, 1)).last(), int(Communication_Aux::Refused));
    QVERIFY(m_frames.isEmpty());
}

void TstReceiveTimeout::theTimeOutComesOnce()
{
    feed(*m_decoder, deviceframes::five().left(24));
    expectTimeOut();
    m_time->advance(5000);
    QCOMPARE(m_log->lines().filter(kTimeoutLine).size(), 1);
    QCOMPARE(m_resets, 1);
}

void TstReceiveTimeout::thePauseCountsFromTheLastByte()
{
    feed(*m_decoder, deviceframes::five().left(3));
    m_time->advance(600);
    feed(*m_decoder, deviceframes::five().mid(3, 4));
    m_time->advance(999);
    QVERIFY(!m_log->contains(kTimeoutLine));
    expectTimeOut();
    m_time->advance(1);
    QVERIFY(m_log->contains(kTimeoutLine));
}

void TstReceiveTimeout::aPauseBetweenFramesDoesNothing()
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

void TstReceiveTimeout::aFrameBegunInTheTurnOfAnotherIsWatched()
{
    feed(*m_decoder, deviceframes::five() + deviceframes::eight().left(10));
    m_time->advance(999);
    QVERIFY(!m_log->contains(kTimeoutLine));
    expectTimeOut();
    m_time->advance(1);
    QCOMPARE(m_log->lines().filter(kTimeoutLine).size(), 1);
}

void TstReceiveTimeout::bytesThatComeWithTheTimeOutSaveTheFrame()
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

void TstReceiveTimeout::everyTruncationIsDroppedByTheTimeOut()
{
    const QByteArray good = deviceframes::eight();
    for (int size = 1; size < good.size(); ++size) {
        m_log->clear();
        m_resets = 0;
        QVERIFY(feed(*m_decoder, good.left(size)).allTaken());
        QCOMPARE(m_resets, 0);
        expectTimeOut();
        m_time->advance(1000);
        QCOMPARE(m_log->lines().filter(kTimeoutLine).size(), 1);
        QCOMPARE(m_resets, 1);
        QVERIFY(m_frames.isEmpty());
    }
    expectRecovery();
}

void TstReceiveTimeout::theTimeOutIsACriticalLine()
{
    expectTimeOut();
    m_decoder->RcvTimeOver();
    QCOMPARE(m_log->lines(QtCriticalMsg), QStringList{kTimeoutLine});
    QCOMPARE(m_resets, 1);
}

void TstReceiveTimeout::theTimerIsStartedOncePerTurn()
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

QTEST_GUILESS_MAIN(TstReceiveTimeout)
#include "tst_receivetimeout.moc"
