#include "lossfixture.h"
#include "peersockets.h"

#include <QTcpSocket>
#include <QtTest>
#include <cerrno>
#include <sys/socket.h>

using namespace std::chrono_literals;
using Moment = LossFixture::Moment;

namespace {

const QString kStarted = QStringLiteral("Timer started");
const QString kStopped = QStringLiteral("Timer Stopped");

enum class End {
    Orderly, ///< the device closes the connection
    Reset,   ///< its connection is reset, as by a restart of its machine or by a firewall
};

} // namespace

Q_DECLARE_METATYPE(End)

/// A TCP connection ends, or cannot be had.
///
/// | Case                           | What the operator sees                                               |
/// |--------------------------------|----------------------------------------------------------------------|
/// | reset or closed while the      | For up to 4 s the last values, READY, green lamp. Then no row and no |
/// | chain is polled, and nobody    | text of the chain, OFFLINE, "Retrying to connect with Torvex",       |
/// | listens                        | yellow. From 6 s on, each 6 s: "COM Port unavailable: COM40", gray.  |
/// | before the first reply, or in  | The same; what was read stays for 3.8 s.                             |
/// | the walk                       |                                                                      |
/// | the device is back, or has     | Within 6 s "COM Port opened: COM40", yellow, then all rows anew,     |
/// | listened all the time          | READY.                                                               |
/// | refused, or no answer, at the  | "COM Port unavailable: COM40" for 7 s, gray, OFFLINE, no row.        |
/// | start                          | Nothing is tried until he chooses the connection again.              |
class TstLinkLossTcp : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_fixture = std::make_unique<LossFixture>(SystemFixture::LinkKind::Tcp); }
    void cleanup() { m_fixture.reset(); }

    void theResetIsOne();
    void deviceGoesAway_data() { addEnds(); }
    void deviceGoesAway();
    void connectionEndsAndTheDeviceStays_data() { addEnds(); }
    void connectionEndsAndTheDeviceStays();
    void nobodyAtTheStart_data();
    void nobodyAtTheStart();

private:
    LossFixture &fixture() { return *m_fixture; }
    static void addEnds();
    void play(End end);
    void expectBackByTheNextRetry();

    std::unique_ptr<LossFixture> m_fixture;
};

void TstLinkLossTcp::addEnds()
{
    QTest::addColumn<Moment>("moment");
    QTest::addColumn<End>("end");
    addMoments([](const char *name, Moment moment) {
        QTest::addRow("closed %s", name) << moment << End::Orderly;
        QTest::addRow("reset %s", name) << moment << End::Reset;
    });
}

/// What the program will see of the next end.
void TstLinkLossTcp::play(End end)
{
    switch (end) {
    case End::Orderly:
        break;
    case End::Reset:
        peersockets::endWithReset(fixture().device->tcpPort());
        break;
    }
}

void TstLinkLossTcp::expectBackByTheNextRetry()
{
    LossFixture &f = fixture();
    f.time.skip(6s);
    QCOMPARE(f.sight(), LossFixture::opened());
    QCOMPARE(f.logged(kStopped), 1);
    f.expectWhole();
    const int retries = f.retries();
    f.poll(12s);
    QCOMPARE(f.retries(), retries);
    QVERIFY(f.isReady());
    QCOMPARE(f.warnings(), QStringList());
}

/// The end that the tests play is the one that they are named after.
void TstLinkLossTcp::theResetIsOne()
{
    LossFixture &f = fixture();
    for (const End end : {End::Orderly, End::Reset}) {
        f.plug(LossFixture::chain());
        QTcpSocket client;
        client.connectToHost(QStringLiteral("127.0.0.1"), f.device->tcpPort());
        WAIT_VERIFY(client.state() == QAbstractSocket::ConnectedState);
        client.write("?"); // the device has taken the connection when it refuses this
        WAIT_VERIFY(!f.device->refusals().isEmpty());
        const int socket = static_cast<int>(client.socketDescriptor());
        play(end);
        f.device.reset();
        char byte = 0;
        const auto size = ::recv(socket, &byte, 1, MSG_DONTWAIT);
        if (end == End::Reset)
            QVERIFY(size < 0 && errno == ECONNRESET);
        else
            QCOMPARE(int(size), 0);
    }
}

void TstLinkLossTcp::deviceGoesAway()
{
    QFETCH(Moment, moment);
    QFETCH(End, end);
    LossFixture &f = fixture();
    f.startUpTo(moment);
    const QString before = f.sight();
    f.log.clear();
    play(end);
    f.unplugAndNotice();
    QVERIFY(busyTurns() < kFewTurns);
    // Nothing tells it yet: what was read last stays until the session misses a reply.
    const auto patience = f.patience(moment);
    f.time.skip(patience - 1ms);
    QCOMPARE(f.sight(), before);
    f.time.skip(1ms);
    QCOMPARE(f.sight(), LossFixture::retrying());
    f.expectNothingShown();
    f.time.skip(6s - patience - 1ms);
    QCOMPARE(f.sight(), LossFixture::retrying());
    QCOMPARE(f.retries(), 0);
    f.time.skip(1ms);
    for (int second = 6; second < 66; ++second) {
        QCOMPARE(f.sight(), LossFixture::unavailable());
        QCOMPARE(f.retries(), second / 6);
        f.pass(1s);
    }
    QVERIFY(busyTurns() < kFewTurns);
    QCOMPARE(f.logged(kStarted), 1);

    f.plug(LossFixture::otherChain());
    QCOMPARE(f.sight(), LossFixture::unavailable());
    expectBackByTheNextRetry();
    QCOMPARE(f.retries(), 12);
}

void TstLinkLossTcp::connectionEndsAndTheDeviceStays()
{
    QFETCH(Moment, moment);
    QFETCH(End, end);
    LossFixture &f = fixture();
    f.startUpTo(moment);
    f.device->faults().clear();
    f.log.clear();
    play(end);
    // Whatever comes next is answered by the end.
    f.addFaults(QStringLiteral("close count=1"));
    if (moment != Moment::Cycle)
        f.time.skip(f.patience(moment));
    WAIT_COMPARE(f.logged(kStarted), 1);
    QVERIFY(busyTurns() < kFewTurns);
    if (moment == Moment::Cycle)
        f.time.skip(f.patience(moment));
    QCOMPARE(f.sight(), LossFixture::retrying());
    f.expectNothingShown();
    f.device->chain().system.poweringMode = QStringLiteral("changed");
    f.device->chain().module(1).identity.serial = QStringLiteral("changed");
    if (moment == Moment::Cycle)
        f.time.skip(1999ms);
    else
        f.time.skip(5999ms);
    QCOMPARE(f.sight().section(QStringLiteral(" | "), 3), operatorview::kNothing);
    QCOMPARE(f.retries(), 0);
    f.time.skip(1ms);
    QCOMPARE(f.sight(), LossFixture::opened());
    QCOMPARE(f.retries(), 1);
    f.expectWhole();
    f.poll(12s);
    QCOMPARE(f.retries(), 1);
    QVERIFY(f.isReady());
    QCOMPARE(f.warnings(), QStringList());
}

void TstLinkLossTcp::nobodyAtTheStart_data()
{
    QTest::addColumn<bool>("isSilent");
    QTest::newRow("refused") << false;
    QTest::newRow("no answer") << true;
}

void TstLinkLossTcp::nobodyAtTheStart()
{
    QFETCH(bool, isSilent);
    LossFixture &f = fixture();
    f.plug(LossFixture::otherChain());
    const quint16 port = f.device->tcpPort();
    if (isSilent)
        peersockets::vanish(port);
    else
        f.unplug();
    f.start();
    QCOMPARE(f.sight(), LossFixture::unavailable());
    f.expectNothingShown();
    for (int round = 0; round < 2; ++round) {
        f.pass(60s);
        QVERIFY(busyTurns() < kFewTurns);
        QCOMPARE(f.sight(), LossFixture::unavailable(QString())); // the line was there for its 7 s
        QCOMPARE(f.logged(kStarted), 0);
        QCOMPARE(f.logged(QStringLiteral("Connect Received")), 1);
        if (round > 0)
            break;
        if (isSilent)
            peersockets::comeBack(port);
        else
            f.plug(LossFixture::otherChain());
    }
    f.chooseAgain();
    QCOMPARE(f.sight(), LossFixture::opened());
    f.expectWhole();
    QCOMPARE(f.logged(kStarted), 0);
    QCOMPARE(f.warnings(), QStringList());
}

QTEST_MAIN(TstLinkLossTcp)

#include "tst_linkloss_tcp.moc"
