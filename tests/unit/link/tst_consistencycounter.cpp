#include "decodertest.h"
#include "deviceframes.h"

#include <QtTest>

class TstConsistencyCounter : public DecoderTest
{
    Q_OBJECT

private slots:
    void theFirstFrameMayCarryAnyCounter();
    void counterFFIsFollowedBy00();
    void aCounterMismatchRepeatsWithEachFrame();
    void aMismatchWithABadChecksumPutsTheCounterBackInStep();
    void aRefusedHeaderCountsAsTheFirst();
    void linesOfOneHeaderComeInOrder();
};

void TstConsistencyCounter::theFirstFrameMayCarryAnyCounter()
{
    feed(*m_decoder, deviceframes::counterFE());
    QVERIFY(!m_log->contains(kCounterLine));
}

void TstConsistencyCounter::counterFFIsFollowedBy00()
{
    for (const auto &frame : {deviceframes::counterFE(), deviceframes::counterFF(), deviceframes::counter00(),
                              deviceframes::counter01()})
        feed(*m_decoder, frame);
    QCOMPARE(m_frames.size(), 4);
    QVERIFY(!m_log->contains(kCounterLine));
}

void TstConsistencyCounter::aCounterMismatchRepeatsWithEachFrame()
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

void TstConsistencyCounter::aMismatchWithABadChecksumPutsTheCounterBackInStep()
{
    feed(*m_decoder, deviceframes::counterFE());
    feed(*m_decoder, deviceframes::withBadChecksum(deviceframes::counter00()));
    QCOMPARE(m_log->lines().filter(kCounterLine).size(), 1);
    feed(*m_decoder, deviceframes::counter01());
    feed(*m_decoder, deviceframes::counter02());
    QCOMPARE(m_log->lines().filter(kCounterLine).size(), 1);
}

void TstConsistencyCounter::aRefusedHeaderCountsAsTheFirst()
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

void TstConsistencyCounter::linesOfOneHeaderComeInOrder()
{
    feed(*m_decoder, deviceframes::five());
    m_log->clear();
    feed(*m_decoder, QByteArray::fromHex("80818283010143500000000000000000040090f3"));
    QCOMPARE(m_log->lines(), (QStringList{QStringLiteral("Payload Size: 4"), kCounterLine, kHeaderLine}));
}

QTEST_GUILESS_MAIN(TstConsistencyCounter)
#include "tst_consistencycounter.moc"
