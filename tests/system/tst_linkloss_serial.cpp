#include "lossfixture.h"
#include "plainport.h"
#include "portholder.h"
#include "support/droppedprivileges.h"

#include <QtTest>

using namespace std::chrono_literals;
using Moment = LossFixture::Moment;

namespace {

const QString kFailing = QStringLiteral("Warning : the connection with Port COM40 is failing.");

} // namespace

Q_DECLARE_METATYPE(PortHolder::Manner)

/// A COM port gets lost, or cannot be had. The program is an ordinary user's, whoever runs the test, and so
/// are the port and the other programs: nothing but what is tested keeps it from the port.
///
/// | Case                           | What the operator sees                                               |
/// |--------------------------------|----------------------------------------------------------------------|
/// | adapter pulled while the chain | For up to 4 s the last values, READY, green lamp. Then no row and no |
/// | is polled                      | text of the chain, OFFLINE, "Retrying to connect with Torvex",       |
/// |                                | yellow. From 6 s on, each 6 s: "COM Port unavailable: COM40", gray;  |
/// |                                | once more, from 7.8 to 12 s, "Retrying to connect with Torvex",      |
/// |                                | yellow.                                                              |
/// | pulled before the first reply, | The same; what was read stays for 3.8 s.                             |
/// | or in the walk                 |                                                                      |
/// | plugged again                  | Within 6 s "COM Port opened: COM40", yellow, then all rows anew,     |
/// |                                | READY.                                                               |
/// | adapter not there at the start | "COM Port unavailable: COM40" for 7 s, gray, OFFLINE, no row.        |
/// |                                | Nothing is tried until he chooses the port again.                    |
/// | held by another program        | At the start as "not there"; after a loss as "pulled", until the     |
/// |                                | other program ends.                                                  |
/// | no permission                  | As "held". The log names the port, its group and what to do, with    |
/// |                                | each attempt.                                                        |
class TstLinkLossSerial : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void waitingIsMeasured();
    void adapterPulled_data();
    void adapterPulled();
    void adapterIsBackBeforeTheRowsGo();
    void adapterNotThereAtTheStart();
    void whatIsAskedForMeanwhileIsForgotten();
    void portHeldAtTheStart_data() { addManners(); }
    void portHeldAtTheStart();
    void portHeldAfterALoss_data() { addManners(); }
    void portHeldAfterALoss();
    void noPermissionAtTheStart();
    void noPermissionAfterALoss();

private:
    LossFixture &fixture() { return *m_fixture; }
    static void addManners();

    std::unique_ptr<DroppedPrivileges> m_user;
    std::unique_ptr<LossFixture> m_fixture;
};

void TstLinkLossSerial::init()
{
    m_user = std::make_unique<DroppedPrivileges>();
    m_fixture = std::make_unique<LossFixture>(SystemFixture::LinkKind::Serial);
}

void TstLinkLossSerial::cleanup()
{
    m_fixture.reset();
    m_user.reset();
}

void TstLinkLossSerial::addManners()
{
    QTest::addColumn<PortHolder::Manner>("manner");
    QTest::newRow("for itself alone") << PortHolder::Manner::Exclusive;
    QTest::newRow("by a lock file") << PortHolder::Manner::LockFile;
}

/// The measure itself: a loop that never rests is seen.
void TstLinkLossSerial::waitingIsMeasured()
{
    QTimer restless;
    restless.start(0);
    QVERIFY(busyTurns() > 900);
    restless.stop();
    QVERIFY(busyTurns() < kFewTurns);
}

void TstLinkLossSerial::adapterPulled_data()
{
    QTest::addColumn<Moment>("moment");
    addMoments([](const char *name, Moment moment) { QTest::newRow(name) << moment; });
}

void TstLinkLossSerial::adapterPulled()
{
    QFETCH(Moment, moment);
    LossFixture &f = fixture();
    f.startUpTo(moment);
    const QString before = f.sight();
    f.log.clear();
    f.unplugAndNotice();
    QVERIFY(busyTurns() < kFewTurns);
    // Nothing tells it yet: what was read last stays until the session misses a reply.
    const auto patience = f.patience(moment);
    f.expectRowsToGo(before, patience);
    QVERIFY(f.logged(kFailing) >= 2 && f.logged(kFailing) <= 3); // by the loss, and by each request since
    f.time.skip(6s - patience - 1ms);
    QCOMPARE(f.sight(), LossFixture::retrying());
    QCOMPARE(f.retries(), 0);
    f.time.skip(1ms);
    QCOMPARE(f.sight(), LossFixture::unavailable());
    QCOMPARE(f.retries(), 1);
    // The last request of the session is missed as well; then nothing is asked any more.
    f.time.skip(patience + 3800ms - 6s);
    QCOMPARE(f.sight(), LossFixture::retrying());
    f.time.skip(12s - patience - 3800ms);
    f.expectFailingMinute(12);
    QCOMPARE(f.attempts(), 12);
    QVERIFY(f.logged(kFailing) <= 3);

    f.plug(LossFixture::otherChain());
    QCOMPARE(f.sight(), LossFixture::unavailable());
    f.expectBackByTheNextRetry();
    QCOMPARE(f.retries(), 13);
    QCOMPARE(f.warnings(), QStringList());
}

/// The rows of before are still shown when the port is opened again, and not one of them is kept.
void TstLinkLossSerial::adapterIsBackBeforeTheRowsGo()
{
    LossFixture &f = fixture();
    f.periods.comm = 20s;
    f.startUpTo(Moment::Cycle);
    const QString before = f.sight();
    f.log.clear();
    f.unplugAndNotice();
    f.plug(LossFixture::otherChain());
    f.time.skip(5999ms);
    QCOMPARE(f.sight(), before);
    f.time.skip(1ms);
    QCOMPARE(f.sight(), LossFixture::opened());
    f.expectWhole();
    QCOMPARE(f.retries(), 1);
}

void TstLinkLossSerial::adapterNotThereAtTheStart()
{
    LossFixture &f = fixture();
    f.start();
    f.expectUnavailableFromTheStart();
    f.plug(LossFixture::otherChain());
    f.expectBackByChoice();
    QCOMPARE(f.warnings(), QStringList());
}

void TstLinkLossSerial::whatIsAskedForMeanwhileIsForgotten()
{
    LossFixture &f = fixture();
    f.startUpTo(Moment::Cycle);
    f.unplugAndNotice();
    f.pass(12s);
    QCOMPARE(f.sight(), LossFixture::unavailable());
    for (const char *name : {"loadPreselBtn", "loadPreselBtn_off"})
        QTest::mouseClick(childByName<QPushButton>(f.window(), name), Qt::LeftButton);
    // The box counts the work that waits; nobody takes it.
    QCOMPARE(f.statusBox(), QStringLiteral("1.00 s"));
    f.pass(5s);
    QCOMPARE(f.statusBox(), QStringLiteral("0.00 s"));
    f.plug(LossFixture::otherChain());
    f.pass(6s);
    f.expectWhole(); // and no command was sent
    f.poll(3s);
    QCOMPARE(f.commands(), QStringList());
}

void TstLinkLossSerial::portHeldAtTheStart()
{
    QFETCH(PortHolder::Manner, manner);
    LossFixture &f = fixture();
    f.start(); // writes the settings
    const PlainPort *port = f.plugPlainPort();
    PortHolder other(port->device(), manner);
    f.log.clear();
    f.startAgain();
    f.expectUnavailableFromTheStart();
    other.end();
    f.expectBackByChoice();
    QCOMPARE(f.warnings(), QStringList()); // the permissions are not the reason, and nobody says so
}

void TstLinkLossSerial::portHeldAfterALoss()
{
    QFETCH(PortHolder::Manner, manner);
    LossFixture &f = fixture();
    f.startUpTo(Moment::Cycle);
    f.log.clear();
    f.unplugAndNotice();
    f.pass(12s);
    QCOMPARE(f.sight(), LossFixture::unavailable());
    const PlainPort *port = f.plugPlainPort();
    PortHolder other(port->device(), manner);
    f.expectFailingMinute(12);
    QCOMPARE(f.attempts(), 12);
    QCOMPARE(f.device->requestCount(), 0);
    other.end();
    f.expectBackByTheNextRetry();
    QCOMPARE(f.warnings(), QStringList());
}

void TstLinkLossSerial::noPermissionAtTheStart()
{
    LossFixture &f = fixture();
    f.start();
    PlainPort *port = f.plugPlainPort();
    port->setPermissions({});
    LossFixture::announceAdvice(*port, 1);
    f.log.clear();
    f.startAgain();
    f.expectUnavailableFromTheStart();
    QCOMPARE(f.warnings().size(), 1);
    port->setPermissions(PlainPort::kForTheOwner);
    f.expectBackByChoice();
    QCOMPARE(f.warnings().size(), 1);
}

void TstLinkLossSerial::noPermissionAfterALoss()
{
    LossFixture &f = fixture();
    f.startUpTo(Moment::Cycle);
    f.log.clear();
    f.unplugAndNotice();
    f.pass(12s);
    PlainPort *port = f.plugPlainPort();
    port->setPermissions({});
    LossFixture::announceAdvice(*port, 10);
    f.expectFailingMinute(12);
    QCOMPARE(f.warnings().size(), 10);
    port->setPermissions(PlainPort::kForTheOwner);
    f.expectBackByTheNextRetry();
    QCOMPARE(f.warnings().size(), 10);
}

QTEST_MAIN(TstLinkLossSerial)

#include "tst_linkloss_serial.moc"
