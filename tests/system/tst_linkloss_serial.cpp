#include "link/permissionadvice.h"
#include "lossfixture.h"
#include "plainport.h"
#include "sim/chainfile.h"
#include "support/droppedprivileges.h"

#include <QLoggingCategory>
#include <QSerialPort>
#include <QtTest>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

using namespace std::chrono_literals;
using Moment = LossFixture::Moment;

namespace {

const QString kNoConnection = QStringLiteral("Error : No connection available in port COM40");
const QString kFailing = QStringLiteral("Warning : the connection with Port COM40 is failing.");
const QString kStarted = QStringLiteral("Timer started");
const QString kStopped = QStringLiteral("Timer Stopped");

/// Somebody else who uses the port until he ends.
class OtherProgram
{
public:
    virtual ~OtherProgram() = default;
};

/// One that takes the port for itself alone, which the system enforces against all but the superuser.
class ExclusiveProgram final : public OtherProgram
{
public:
    explicit ExclusiveProgram(const QString &device)
        : m_port(::open(QFile::encodeName(device).constData(), O_RDWR | O_NOCTTY))
    {
        if (m_port < 0 || ::ioctl(m_port, TIOCEXCL) != 0)
            qFatal("The port cannot be taken");
    }
    ~ExclusiveProgram() override
    {
        ::ioctl(m_port, TIOCNXCL);
        ::close(m_port);
    }

private:
    const int m_port;
};

/// One that keeps to the lock files, as this program does.
class LockingProgram final : public OtherProgram
{
public:
    explicit LockingProgram(const QString &device)
        : m_port(device)
    {
        if (!m_port.open(QIODevice::ReadWrite))
            qFatal("The port cannot be opened");
        ::ioctl(m_port.handle(), TIOCNXCL);
    }

private:
    QSerialPort m_port;
};

using Takes = std::function<std::unique_ptr<OtherProgram>(const QString &device)>;

} // namespace

Q_DECLARE_METATYPE(Takes)

/// A COM port gets lost, or cannot be had.
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
    void init() { m_fixture = std::make_unique<LossFixture>(SystemFixture::LinkKind::Serial); }
    void cleanup() { m_fixture.reset(); }

    void waitingIsMeasured();
    void adapterPulled_data();
    void adapterPulled();
    void adapterIsBackBeforeTheRowsGo();
    void adapterNotThereAtTheStart();
    void whatIsAskedForMeanwhileIsForgotten();
    void portHeldAtTheStart_data() { addPrograms(); }
    void portHeldAtTheStart();
    void portHeldAfterALoss_data() { addPrograms(); }
    void portHeldAfterALoss();
    void noPermissionAtTheStart();
    void noPermissionAfterALoss();

private:
    LossFixture &fixture() { return *m_fixture; }
    static void addPrograms();

    /// Another chain behind a port of its own, for everybody unless a test says otherwise.
    PlainPort *plugPlainPort();

    /// The log will tell once why this port cannot be opened.
    static void announceAdvice(const PlainPort &port);

    /// Starts the program as an ordinary user.
    void startAsUser();

    /// The next attempts to open the port, made as an ordinary user, fail and look so.
    void expectFailingRetries(int count);

    /// The next attempt works, and the chain is read.
    void expectBackByTheNextRetry();

    /// Nothing is tried, and nothing happens, for a minute.
    void expectNoAttempt();

    std::unique_ptr<LossFixture> m_fixture;
};

void TstLinkLossSerial::addPrograms()
{
    QTest::addColumn<Takes>("takes");
    QTest::newRow("for itself alone")
        << Takes([](const QString &device) { return std::make_unique<ExclusiveProgram>(device); });
    QTest::newRow("by a lock file") << Takes(
        [](const QString &device) { return std::make_unique<LockingProgram>(device); });
}

PlainPort *TstLinkLossSerial::plugPlainPort()
{
    sim::Chain chain;
    QString error;
    if (!sim::parseChain(LossFixture::otherChain(), &chain, &error))
        qFatal("%s", qPrintable(error));
    fixture().device = std::make_unique<sim::Server>(fixture().time, chain);
    auto link = std::make_unique<PlainPort>(fixture().folder.filePath(QStringLiteral("ports/COM40")));
    PlainPort *port = link.get();
    fixture().device->addLink(std::move(link));
    port->setPermissions(PlainPort::kForAll);
    port->plug();
    if (!QFile::setPermissions(fixture().folder.path(), DroppedPrivileges::kOpenFolder))
        qFatal("The folder cannot be opened for others");
    return port;
}

void TstLinkLossSerial::announceAdvice(const PlainPort &port)
{
    const QFileInfo device(port.device());
    const QString advice =
        permissionAdvice(QStringLiteral("COM40"), device.filePath(), device.group(), device.groupId());
    QVERIFY(advice.startsWith(QStringLiteral("No permission to open port COM40 (%1), ").arg(port.device())));
    QTest::ignoreMessage(QtWarningMsg, qPrintable(advice));
}

void TstLinkLossSerial::startAsUser()
{
    const DroppedPrivileges user;
    fixture().startAgain();
}

void TstLinkLossSerial::expectFailingRetries(int count)
{
    const int before = fixture().retries();
    for (int i = 1; i <= count; ++i) {
        {
            const DroppedPrivileges user;
            fixture().time.skip(6s);
        }
        QCOMPARE(fixture().sight(), LossFixture::unavailable());
        QCOMPARE(fixture().retries(), before + i);
        QVERIFY(busyTurns() < kFewTurns);
    }
}

void TstLinkLossSerial::expectBackByTheNextRetry()
{
    fixture().time.skip(6s);
    QCOMPARE(fixture().sight(), LossFixture::opened());
    QCOMPARE(fixture().logged(kStopped), 1);
    fixture().expectWhole();
    const int retries = fixture().retries();
    fixture().poll(12s);
    QCOMPARE(fixture().retries(), retries);
    QVERIFY(fixture().isReady());
}

void TstLinkLossSerial::expectNoAttempt()
{
    const int attempts = fixture().logged(kNoConnection);
    fixture().pass(60s);
    QVERIFY(busyTurns() < kFewTurns);
    QCOMPARE(fixture().logged(kNoConnection), attempts);
    QCOMPARE(fixture().logged(kStarted), 0);
    QCOMPARE(fixture().sight(), LossFixture::unavailable(QString())); // the line was there for its 7 s
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
    f.time.skip(patience - 1ms);
    QCOMPARE(f.sight(), before);
    f.time.skip(1ms);
    QCOMPARE(f.sight(), LossFixture::retrying());
    f.expectNothingShown();
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
    for (int second = 12; second < 72; ++second) {
        QCOMPARE(f.sight(), LossFixture::unavailable());
        QCOMPARE(f.retries(), second / 6);
        f.pass(1s);
    }
    QVERIFY(busyTurns() < kFewTurns);
    QCOMPARE(f.logged(kNoConnection), 12);
    QVERIFY(f.logged(kFailing) <= 3);
    QCOMPARE(f.logged(kStarted), 1);

    f.plug(LossFixture::otherChain());
    QCOMPARE(f.sight(), LossFixture::unavailable());
    expectBackByTheNextRetry();
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
    QCOMPARE(f.sight(), LossFixture::unavailable());
    f.expectNothingShown();
    QCOMPARE(f.logged(kNoConnection), 1);
    expectNoAttempt();
    f.plug(LossFixture::otherChain());
    expectNoAttempt();
    f.chooseAgain();
    QCOMPARE(f.sight(), LossFixture::opened());
    f.expectWhole();
    QCOMPARE(f.logged(kStarted), 0);
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
    QFETCH(Takes, takes);
    LossFixture &f = fixture();
    f.start(); // writes the settings
    PlainPort *port = plugPlainPort();
    auto other = takes(port->device());
    f.log.clear();
    startAsUser();
    QCOMPARE(f.sight(), LossFixture::unavailable());
    f.expectNothingShown();
    QCOMPARE(f.logged(kNoConnection), 1);
    expectNoAttempt();
    other.reset();
    expectNoAttempt();
    f.chooseAgain();
    f.expectWhole();
    QCOMPARE(f.warnings(), QStringList()); // the permissions are not the reason, and nobody says so
}

void TstLinkLossSerial::portHeldAfterALoss()
{
    QFETCH(Takes, takes);
    LossFixture &f = fixture();
    f.startUpTo(Moment::Cycle);
    f.log.clear();
    f.unplugAndNotice();
    f.pass(12s);
    QCOMPARE(f.sight(), LossFixture::unavailable());
    PlainPort *port = plugPlainPort();
    auto other = takes(port->device());
    expectFailingRetries(10);
    QCOMPARE(f.logged(kNoConnection), 12);
    QCOMPARE(f.device->requestCount(), 0);
    other.reset();
    expectBackByTheNextRetry();
    QCOMPARE(f.warnings(), QStringList());
}

void TstLinkLossSerial::noPermissionAtTheStart()
{
    LossFixture &f = fixture();
    f.start();
    PlainPort *port = plugPlainPort();
    port->setPermissions({});
    announceAdvice(*port);
    f.log.clear();
    startAsUser();
    QCOMPARE(f.sight(), LossFixture::unavailable());
    f.expectNothingShown();
    QCOMPARE(f.logged(kNoConnection), 1);
    QCOMPARE(f.warnings().size(), 1);
    expectNoAttempt();
    port->setPermissions(PlainPort::kForAll);
    expectNoAttempt();
    f.chooseAgain();
    f.expectWhole();
    QCOMPARE(f.warnings().size(), 1);
}

void TstLinkLossSerial::noPermissionAfterALoss()
{
    LossFixture &f = fixture();
    f.startUpTo(Moment::Cycle);
    f.log.clear();
    f.unplugAndNotice();
    f.pass(12s);
    PlainPort *port = plugPlainPort();
    port->setPermissions({});
    for (int i = 0; i < 10; ++i)
        announceAdvice(*port);
    expectFailingRetries(10);
    QCOMPARE(f.warnings().size(), 10);
    port->setPermissions(PlainPort::kForAll);
    {
        const DroppedPrivileges user; // who has it now
        f.time.skip(6s);
    }
    QCOMPARE(f.sight(), LossFixture::opened());
    f.expectWhole();
    QCOMPARE(f.warnings().size(), 10);
}

QTEST_MAIN(TstLinkLossSerial)

#include "tst_linkloss_serial.moc"
