#include "decodertest.h"
#include "deviceframes.h"

#include <QtTest>

class TstTakeRead : public DecoderTest
{
    Q_OBJECT

private slots:
    void twoFramesInOneReadAreBothTaken();
    void junkBetweenFramesDropsTheRestOfTheRead();
    void aBadChecksumDropsTheRestOfTheRead();
    void framesCutAnywhereAreTaken();
    void aReceiverMayAbandonTheRead();
    void abandoningOutsideOfAReadDoesNothing();
};

void TstTakeRead::twoFramesInOneReadAreBothTaken()
{
    m_decoder->takeRead(deviceframes::five() + deviceframes::eight());
    QCOMPARE(m_frames, (QByteArrayList{deviceframes::five(), deviceframes::eight()}));
}

void TstTakeRead::junkBetweenFramesDropsTheRestOfTheRead()
{
    m_decoder->takeRead(deviceframes::five() + QByteArray(1, '\x55') + deviceframes::eight());
    QCOMPARE(m_frames, QByteArrayList{deviceframes::five()});
    QCOMPARE(m_log->lines().last(), QStringLiteral("Rx From VX Stat -1"));
    m_decoder->takeRead(deviceframes::eight());
    QCOMPARE(m_frames.size(), 2);
}

void TstTakeRead::aBadChecksumDropsTheRestOfTheRead()
{
    m_decoder->takeRead(deviceframes::withBadChecksum(deviceframes::five()) + deviceframes::eight());
    QVERIFY(m_frames.isEmpty());
    QCOMPARE(m_log->lines().last(), QStringLiteral("Rx From VX Stat -9"));
}

void TstTakeRead::framesCutAnywhereAreTaken()
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

void TstTakeRead::aReceiverMayAbandonTheRead()
{
    connect(m_decoder.get(), &Communication_Aux::Signal_RcvDatagramOk, m_decoder.get(),
            &Communication_Aux::abandonRead);
    m_decoder->takeRead(deviceframes::five() + deviceframes::eight());
    QCOMPARE(m_frames, QByteArrayList{deviceframes::five()});
    m_decoder->takeRead(deviceframes::eight());
    QCOMPARE(m_frames.size(), 2);
}

void TstTakeRead::abandoningOutsideOfAReadDoesNothing()
{
    m_decoder->takeRead(deviceframes::five().left(12));
    m_decoder->abandonRead();
    m_decoder->takeRead(deviceframes::five().mid(12));
    QCOMPARE(m_frames.size(), 1);
}

QTEST_GUILESS_MAIN(TstTakeRead)
#include "tst_takeread.moc"
