#include "terminalport.h"

#include "sim/server.h"

#include "base/timesource.h"

#include <QtTest>

#include <QTcpSocket>
#include <QTemporaryDir>

#include <atomic>
#include <functional>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <thread>
#include <utility>

using sim::Chain;
using sim::Module;
using sim::Server;

namespace {

/// What a peer does at the very moment in which the device has found out that nobody is there.
std::function<void()> whenFoundGone;

} // namespace

/// Stands in for the system's own function, so that a test can come between two steps of the device.
extern "C" int poll(pollfd *states, nfds_t count, int patienceMs)
{
    const auto result = static_cast<int>(::syscall(SYS_poll, states, count, patienceMs));
    if (whenFoundGone && result > 0 && count == 1 && (states[0].revents & POLLHUP) != 0)
        std::exchange(whenFoundGone, nullptr)();
    return result;
}

namespace {

const QByteArray kFastRequest = QByteArray::fromHex("8081828301ff4350000000000000000005008ff408000000007334");
const QByteArray kModulesRequest =
    QByteArray::fromHex("80818283010143500000000000000000050091f31000000000c695");
constexpr int kFrameSize = 38;

/// Opens, asks, reads the reply and closes, so often and with hardly a pause; gives the number of replies.
int askQuickly(const QByteArray &path, int turns, bool exclusive)
{
    constexpr int kPatienceMs = 30000;
    constexpr int kPauses = 40;
    constexpr qint64 kPauseStepNs = 3000;
    for (int turn = 0; turn < turns; ++turn) {
        QElapsedTimer clock;
        clock.start();
        int port = -1;
        // The name of a terminal that its last owner has left for ever is soon another's.
        while (port < 0 && !clock.hasExpired(kPatienceMs))
            port = ::open(path.constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        if (port < 0)
            return turn;
        if (exclusive)
            ::ioctl(port, TIOCEXCL);
        const ssize_t written =
            ::write(port, kFastRequest.constData(), static_cast<size_t>(kFastRequest.size()));
        int missing = written == kFastRequest.size() ? kFrameSize : -1;
        pollfd state{port, POLLIN, 0};
        while (missing > 0 && ::poll(&state, 1, kPatienceMs) > 0) {
            char bytes[kFrameSize];
            const ssize_t size = ::read(port, bytes, static_cast<size_t>(missing));
            if (size <= 0)
                break;
            missing -= static_cast<int>(size);
        }
        if (exclusive)
            ::ioctl(port, TIOCNXCL);
        ::close(port);
        if (missing != 0)
            return turn;
        // Pauses of all lengths about that in which the device notices the end.
        QElapsedTimer pause;
        pause.start();
        while (pause.nsecsElapsed() < turn % kPauses * kPauseStepNs) {
        }
    }
    return turns;
}

} // namespace

class TstSimTerminal : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void terminalAnswersUnderItsName();
    void terminalIsRaw();
    void terminalSurvivesReopening();
    void staleBytesAreGoneAtTheNextOpening();
    void terminalSurvivesAnExclusiveOwnerThatDied_data();
    void terminalSurvivesAnExclusiveOwnerThatDied();
    void nothingReadsSoNothingBlocks();
    void oldLinkIsReplaced();
    void fileIsNotReplaced();
    void nameIsRemovedAtTheEnd();
    void nameOfAnotherIsLeftAlone();
    void bothLinksMeetOneChain();
    void closeFaultTakesTheTerminalAway();
    void closedTerminalTalksAgain();
    void peerThatComesWhenTheLastIsFoundGone_data();
    void peerThatComesWhenTheLastIsFoundGone();
    void quickReopeningLosesNoRequest_data();
    void quickReopeningLosesNoRequest();

private:
    QString portName() const { return m_folder->filePath(QStringLiteral("ports/COM40")); }
    void openTerminal()
    {
        QString error;
        QVERIFY2(m_server->openTerminal(portName(), &error), qPrintable(error));
    }
    SystemTime m_time;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Server> m_server;
};

void TstSimTerminal::init()
{
    Chain chain;
    chain.modules = {Module::ofType(1)};
    m_folder = std::make_unique<QTemporaryDir>();
    m_server = std::make_unique<Server>(m_time, chain);
    QString error;
    QVERIFY2(m_server->listen(0, &error), qPrintable(error));
    QVERIFY(m_server->tcpPort() != 0);
}

void TstSimTerminal::cleanup()
{
    whenFoundGone = nullptr;
    m_server.reset();
    m_folder.reset();
}

void TstSimTerminal::terminalAnswersUnderItsName()
{
    openTerminal();
    QVERIFY(QFileInfo(portName()).isSymLink());
    Port port(portName());
    QVERIFY(port.isOpen());
    QVERIFY(port.write(kFastRequest));
    QTRY_COMPARE(port.received.size(), kFrameSize);
    QCOMPARE(port.received.left(8).toHex(), QByteArray("808182830101504b"));
}

void TstSimTerminal::terminalIsRaw()
{
    openTerminal();
    const Port port(portName());
    termios settings{};
    QCOMPARE(::tcgetattr(port.descriptor(), &settings), 0);
    QCOMPARE(int(settings.c_lflag & (ICANON | ECHO | ISIG)), 0);
    QCOMPARE(int(settings.c_oflag & OPOST), 0);
}

void TstSimTerminal::terminalSurvivesReopening()
{
    openTerminal();
    for (int i = 0; i < 5; ++i) {
        Port port(portName());
        QVERIFY(port.isOpen());
        QVERIFY(port.write(kFastRequest));
        QTRY_COMPARE(port.received.size(), kFrameSize);
    }
    QCOMPARE(m_server->requestCount(0x08), 5);
}

void TstSimTerminal::staleBytesAreGoneAtTheNextOpening()
{
    openTerminal();
    const auto open = [this] { return ::open(QFile::encodeName(portName()).constData(), O_RDWR | O_NOCTTY); };
    const auto unread = [](int descriptor) {
        int size = -1;
        return ::ioctl(descriptor, FIONREAD, &size) == 0 ? size : -1;
    };
    const int careless = open();
    QCOMPARE(::write(careless, kFastRequest.constData(), static_cast<size_t>(kFastRequest.size())),
             ssize_t(kFastRequest.size()));
    QTRY_COMPARE(unread(careless), kFrameSize);
    ::close(careless);
    const auto unreadAfterOpening = [&] {
        const int descriptor = open();
        const int size = unread(descriptor);
        ::close(descriptor);
        return size;
    };
    QTRY_COMPARE(unreadAfterOpening(), 0);
    Port port(portName());
    QVERIFY(port.write(kFastRequest));
    QTRY_COMPARE(port.received.size(), kFrameSize);
    QCOMPARE(int(port.received.at(5)), 2);
}

void TstSimTerminal::terminalSurvivesAnExclusiveOwnerThatDied_data()
{
    QTest::addColumn<bool>("wasNoticed");

    QTest::newRow("after an exchange") << true;
    QTest::newRow("before anybody noticed it") << false;
}

void TstSimTerminal::terminalSurvivesAnExclusiveOwnerThatDied()
{
    QFETCH(bool, wasNoticed);
    const NoAdministrator ordinaryUser;
    openTerminal();
    {
        Port port(portName());
        QCOMPARE(::ioctl(port.descriptor(), TIOCEXCL), 0);
        QVERIFY(!Port(portName()).isOpen());
        if (wasNoticed) {
            QVERIFY(port.write(kFastRequest));
            QTRY_COMPARE(port.received.size(), kFrameSize);
        }
    }
    QTRY_VERIFY(Port(portName()).isOpen());
    Port next(portName());
    QVERIFY(next.write(kFastRequest));
    QTRY_COMPARE(next.received.size(), kFrameSize);
}

void TstSimTerminal::nothingReadsSoNothingBlocks()
{
    openTerminal();
    const int careless = ::open(QFile::encodeName(portName()).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    QVERIFY(careless >= 0);
    constexpr int kRequests = 100; // their replies are more than any terminal keeps
    for (int i = 1; i <= kRequests; ++i) {
        QCOMPARE(::write(careless, kModulesRequest.constData(), static_cast<size_t>(kModulesRequest.size())),
                 ssize_t(kModulesRequest.size()));
        QTRY_COMPARE(m_server->requestCount(), i);
    }
    ::close(careless);
}

void TstSimTerminal::oldLinkIsReplaced()
{
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("ports")));
    QVERIFY(QFile::link(QStringLiteral("/no/such/device"), portName()));
    openTerminal();
    QVERIFY(Port(portName()).isOpen());
}

void TstSimTerminal::fileIsNotReplaced()
{
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("ports")));
    QFile file(portName());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("mine");
    file.close();
    QString error;
    QVERIFY(!m_server->openTerminal(portName(), &error));
    QCOMPARE(error, portName() + QStringLiteral(" exists and is no symbolic link"));
    QVERIFY(file.exists() && !QFileInfo(portName()).isSymLink());
}

void TstSimTerminal::nameIsRemovedAtTheEnd()
{
    openTerminal();
    m_server.reset();
    QCOMPARE(QDir(m_folder->filePath(QStringLiteral("ports")))
                 .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot),
             QStringList());
}

void TstSimTerminal::nameOfAnotherIsLeftAlone()
{
    openTerminal();
    QVERIFY(QFile::remove(portName()));
    QVERIFY(QFile::link(QStringLiteral("/dev/null"), portName()));
    m_server.reset();
    QCOMPARE(QFile::symLinkTarget(portName()), QStringLiteral("/dev/null"));
}

void TstSimTerminal::bothLinksMeetOneChain()
{
    openTerminal();
    Port port(portName());
    // Polarity of channel 1 on, over the terminal; read back over TCP.
    QVERIFY(port.write(QByteArray::fromHex("80818283010143500000000000000000060092f328000000018574bc")));
    QTRY_COMPARE(m_server->requestCount(0x28), 1);
    const auto socket = std::make_unique<QTcpSocket>();
    socket->connectToHost(QHostAddress::LocalHost, m_server->tcpPort());
    socket->write(QByteArray::fromHex("80818283010143500000000000000000050091f3120000000164c1"));
    QTRY_COMPARE(socket->bytesAvailable(), 586);
    QCOMPARE(int(socket->readAll().at(20 + 25)), 1);
    QVERIFY(m_server->chain().module(1).channel(0).reversePolarity);
}

void TstSimTerminal::closeFaultTakesTheTerminalAway()
{
    openTerminal();
    QString error;
    QVERIFY(m_server->faults().parse("close ms=3600000", &error));
    Port port(portName());
    QVERIFY(port.write(kFastRequest));
    // The reader is told of a hang-up, as when a converter is pulled out.
    const auto isHungUp = [&port] {
        pollfd state{port.descriptor(), POLLIN, 0};
        return ::poll(&state, 1, 0) > 0 && (state.revents & POLLHUP) != 0;
    };
    QTRY_VERIFY(isHungUp());
    QVERIFY(!QFileInfo(portName()).isSymLink());
    QVERIFY(port.received.isEmpty());
}

void TstSimTerminal::closedTerminalTalksAgain()
{
    openTerminal();
    QString error;
    QVERIFY(m_server->faults().parse("close ms=20 nth=1", &error));
    QStringList notes;
    m_server->log().setSink([&notes](const QString &line) {
        if (line.contains(QLatin1String("connected")))
            notes.append(line.section(QLatin1Char(' '), -1));
    });
    {
        Port port(portName());
        QVERIFY(port.write(kFastRequest));
        QTRY_COMPARE(m_server->requestCount(), 1);
    }
    QTRY_COMPARE(notes, QStringList({"disconnected", "connected"}));
    Port port(portName());
    QVERIFY(port.isOpen());
    QVERIFY(port.write(kFastRequest));
    QTRY_COMPARE(port.received.size(), kFrameSize);
}

void TstSimTerminal::peerThatComesWhenTheLastIsFoundGone_data()
{
    QTest::addColumn<bool>("exclusive");

    QTest::newRow("open for others") << false;
    QTest::newRow("for itself alone") << true;
}

void TstSimTerminal::peerThatComesWhenTheLastIsFoundGone()
{
    QFETCH(bool, exclusive);
    const NoAdministrator ordinaryUser;
    openTerminal();
    {
        Port last(portName());
        QVERIFY(last.write(kFastRequest));
        QTRY_COMPARE(last.received.size(), kFrameSize);
    }
    std::unique_ptr<Port> next;
    whenFoundGone = [&] {
        next = std::make_unique<Port>(portName());
        if (exclusive)
            QCOMPARE(::ioctl(next->descriptor(), TIOCEXCL), 0);
        QVERIFY(next->write(kFastRequest));
    };
    QTRY_VERIFY(next);
    QTRY_COMPARE(next->received.size(), kFrameSize);
    QCOMPARE(m_server->requestCount(), 2);
}

void TstSimTerminal::quickReopeningLosesNoRequest_data()
{
    QTest::addColumn<bool>("exclusive");

    QTest::newRow("open for others") << false;
    QTest::newRow("for itself alone") << true;
}

void TstSimTerminal::quickReopeningLosesNoRequest()
{
    QFETCH(bool, exclusive);
    constexpr int kTurns = 100;
    const NoAdministrator ordinaryUser;
    openTerminal();
    const QByteArray path = QFile::encodeName(portName());
    std::atomic<bool> ended{false};
    int replies = 0;
    std::thread peer([&] {
        replies = askQuickly(path, kTurns, exclusive);
        ended = true;
    });
    QTRY_VERIFY_WITH_TIMEOUT(ended, 60000);
    peer.join();
    QCOMPARE(replies, kTurns);
}

QTEST_GUILESS_MAIN(TstSimTerminal)
#include "tst_simterminal.moc"
