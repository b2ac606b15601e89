#include "lossfixture.h"

#include <QtTest>

using namespace std::chrono_literals;
using LinkKind = SystemFixture::LinkKind;
using Moment = LossFixture::Moment;

/// The link is up and takes every byte, and nobody replies.
///
/// | Case                           | What the operator sees                                               |
/// |--------------------------------|----------------------------------------------------------------------|
/// | silent from the start          | "COM Port opened: COM40", yellow, OFFLINE, no row; from 3.8 s on,    |
/// |                                | anew each 3.8 s: "Retrying to connect with Torvex".                  |
/// | silent in the walk             | For 3.8 s the rows with what was read, the count of the walk stands, |
/// |                                | green lamp. Then as above.                                           |
/// | silent while it is polled      | For up to 4 s the last values, READY, green lamp. Then as above.     |
/// | it replies again               | Within 3.8 s the walk begins, then all rows anew, READY. The link is |
/// |                                | neither closed nor opened.                                           |
class TstLinkLossSilence : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { m_fixture.reset(); }

    void peerDoesNotReply_data();
    void peerDoesNotReply();

private:
    std::unique_ptr<LossFixture> m_fixture;
};

void TstLinkLossSilence::peerDoesNotReply_data()
{
    QTest::addColumn<LinkKind>("kind");
    QTest::addColumn<Moment>("moment");
    addMoments([](const char *name, Moment moment) {
        QTest::addRow("tcp, %s", name) << LinkKind::Tcp << moment;
        QTest::addRow("serial, %s", name) << LinkKind::Serial << moment;
    });
}

void TstLinkLossSilence::peerDoesNotReply()
{
    QFETCH(LinkKind, kind);
    QFETCH(Moment, moment);
    m_fixture = std::make_unique<LossFixture>(kind);
    LossFixture &f = *m_fixture;
    f.startUpTo(moment);
    const QString before = f.sight();
    f.device->faults().clear();
    f.addFaults(QStringLiteral("silence"));
    f.log.clear();
    if (moment == Moment::Cycle) {
        // One request is out, and no other follows it.
        const int polls = f.device->requestCount();
        WAIT_VERIFY(f.device->requestCount() > polls);
    }
    QVERIFY(busyTurns() < kFewTurns);
    const int taken = f.device->requestCount();
    const int statusRequests = f.device->requestCount(0x01);
    f.expectRowsToGo(before, f.patience(moment));
    for (int round = 1; round <= 10; ++round) {
        WAIT_COMPARE(f.device->requestCount(0x01), statusRequests + round);
        QCOMPARE(f.device->requestCount(), taken + round);
        QCOMPARE(f.sight(), LossFixture::retrying());
        QVERIFY(busyTurns() < kFewTurns);
        if (round < 10)
            f.time.skip(3800ms);
    }
    f.device->faults().clear();
    f.changeChain();
    f.time.skip(3799ms);
    QCOMPARE(f.sight(), LossFixture::retrying());
    f.time.skip(1ms);
    f.expectWhole();
    f.poll(12s);
    QVERIFY(f.isReady());
    QCOMPARE(f.losses(), 0);
    QCOMPARE(f.log.lines().filter(QStringLiteral("Info : Connection with port")), QStringList());
    QCOMPARE(f.logged(QStringLiteral("Connect Received")), 0);
    QCOMPARE(f.warnings(), QStringList());
}

QTEST_MAIN(TstLinkLossSilence)

#include "tst_linkloss_silence.moc"
