#include "lossfixture.h"
#include "peersockets.h"

#include <QSocketNotifier>
#include <QTcpSocket>
#include <QtTest>
#include <cerrno>
#include <sys/socket.h>

using namespace std::chrono_literals;
using peersockets::End;
using Moment = LossFixture::Moment;

namespace {

/// Tells how the connection of the program ends: what its system knows when the program first hears of it.
class EndWatch final : public QObject
{
public:
    explicit EndWatch(quint16 port)
        : m_socket(peersockets::client(port))
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

    /// None while the program has heard of none.
    std::optional<End> end() const { return m_end; }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const auto *notifier = qobject_cast<QSocketNotifier *>(watched);
        if (!m_end && event->type() == QEvent::SockAct && notifier && notifier->socket() == m_socket)
            m_end = peersockets::endOf(m_socket);
        return false;
    }

private:
    const int m_socket;
    std::optional<End> m_end;
};

} // namespace

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

    void theEndIsTheOneThatIsPlayed();
    void deviceGoesAway_data() { addEnds(); }
    void deviceGoesAway();
    void connectionEndsAndTheDeviceStays_data() { addEnds(); }
    void connectionEndsAndTheDeviceStays();
    void nobodyAtTheStart_data();
    void nobodyAtTheStart();

private:
    LossFixture &fixture() { return *m_fixture; }
    static void addEnds();

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

/// The measure itself: what the socket is found to have ended by is what a read of it tells.
void TstLinkLossTcp::theEndIsTheOneThatIsPlayed()
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
        QVERIFY(!peersockets::endOf(socket));
        peersockets::endBy(end, f.device->tcpPort());
        f.unplug();
        QVERIFY(peersockets::endOf(socket, 30s) == end);
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
    const EndWatch watch(f.device->tcpPort());
    peersockets::endBy(end, f.device->tcpPort());
    f.unplugAndNotice();
    QVERIFY(watch.end() == end);
    QVERIFY(busyTurns() < kFewTurns);
    // Nothing tells it yet: what was read last stays until the session misses a reply.
    const auto patience = f.patience(moment);
    f.expectRowsToGo(before, patience);
    f.time.skip(6s - patience - 1ms);
    QCOMPARE(f.sight(), LossFixture::retrying());
    QCOMPARE(f.retries(), 0);
    f.time.skip(1ms);
    f.expectFailingMinute(6);

    f.plug(LossFixture::otherChain());
    QCOMPARE(f.sight(), LossFixture::unavailable());
    f.expectBackByTheNextRetry();
    QCOMPARE(f.retries(), 12);
    QCOMPARE(f.warnings(), QStringList());
}

void TstLinkLossTcp::connectionEndsAndTheDeviceStays()
{
    QFETCH(Moment, moment);
    QFETCH(End, end);
    LossFixture &f = fixture();
    f.startUpTo(moment);
    f.device->faults().clear();
    f.log.clear();
    const EndWatch watch(f.device->tcpPort());
    peersockets::endBy(end, f.device->tcpPort());
    // Whatever comes next is answered by the end.
    f.addFaults(QStringLiteral("close count=1"));
    if (moment != Moment::Cycle)
        f.time.skip(f.patience(moment));
    WAIT_COMPARE(f.losses(), 1);
    QVERIFY(watch.end() == end);
    QVERIFY(busyTurns() < kFewTurns);
    if (moment == Moment::Cycle)
        f.time.skip(f.patience(moment));
    QCOMPARE(f.sight(), LossFixture::retrying());
    f.expectNothingShown();
    f.changeChain();
    if (moment == Moment::Cycle)
        f.time.skip(1999ms);
    else
        f.time.skip(5999ms);
    QCOMPARE(f.sight().section(operatorview::kSeparator, 3), operatorview::kNothing);
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
    f.expectUnavailableFromTheStart();
    if (isSilent)
        peersockets::comeBack(port);
    else
        f.plug(LossFixture::otherChain());
    f.expectBackByChoice();
    QCOMPARE(f.warnings(), QStringList());
}

QTEST_MAIN(TstLinkLossTcp)

#include "tst_linkloss_tcp.moc"
