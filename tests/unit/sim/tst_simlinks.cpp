#include "sim/server.h"

#include "base/timesource.h"

#include <QtTest>

#include <QSocketNotifier>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <algorithm>
#include <fcntl.h>
#include <linux/capability.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <termios.h>
#include <unistd.h>

using sim::Chain;
using sim::Module;
using sim::Server;

namespace {

const QByteArray kFastRequest = QByteArray::fromHex("8081828301ff4350000000000000000005008ff408000000007334");
const QByteArray kModulesRequest =
    QByteArray::fromHex("80818283010143500000000000000000050091f31000000000c695");
constexpr int kFrameSize = 38;

/// The program's side of a terminal.
class Port : public QObject
{
public:
    explicit Port(const QString &name)
        : m_descriptor(::open(QFile::encodeName(name).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK))
    {
        if (m_descriptor < 0)
            return;
        m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
        connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] {
            char bytes[4096];
            const ssize_t size = ::read(m_descriptor, bytes, sizeof bytes);
            if (size > 0)
                received.append(bytes, static_cast<int>(size));
        });
    }

    ~Port() override
    {
        m_notifier.reset();
        ::close(m_descriptor);
    }

    bool isOpen() const { return m_descriptor >= 0; }
    int descriptor() const { return m_descriptor; }
    bool write(const QByteArray &bytes)
    {
        return ::write(m_descriptor, bytes.constData(), static_cast<size_t>(bytes.size())) == bytes.size();
    }

    QByteArray received;

private:
    const int m_descriptor;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

/// While it lives, the process lacks the right to open what another has taken for itself alone, as any user
/// but root does.
class NoAdministrator
{
public:
    NoAdministrator()
    {
        ::syscall(SYS_capget, &m_header, m_before);
        std::copy(std::begin(m_before), std::end(m_before), std::begin(m_now));
        m_now[CAP_TO_INDEX(CAP_SYS_ADMIN)].effective &= ~CAP_TO_MASK(CAP_SYS_ADMIN);
        ::syscall(SYS_capset, &m_header, m_now);
    }

    ~NoAdministrator() { ::syscall(SYS_capset, &m_header, m_before); }

    NoAdministrator(const NoAdministrator &) = delete;
    NoAdministrator &operator=(const NoAdministrator &) = delete;

private:
    __user_cap_header_struct m_header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct m_before[_LINUX_CAPABILITY_U32S_3]{};
    __user_cap_data_struct m_now[_LINUX_CAPABILITY_U32S_3]{};
};

} // namespace

class TstSimLinks : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void tcpAnswers();
    void severalClients();
    void clientMayGoAndComeBack();
    void takenPortIsReported();
    void closeFaultEndsTheConnection();
    void wholeFastModuleStatusOverTcp();

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

private:
    QString portName() const { return m_folder->filePath(QStringLiteral("ports/COM40")); }
    void openTerminal()
    {
        QString error;
        QVERIFY2(m_server->openTerminal(portName(), &error), qPrintable(error));
    }
    std::unique_ptr<QTcpSocket> client()
    {
        auto socket = std::make_unique<QTcpSocket>();
        socket->connectToHost(QHostAddress::LocalHost, m_server->tcpPort());
        return socket;
    }

    SystemTime m_time;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Server> m_server;
};

void TstSimLinks::init()
{
    Chain chain;
    chain.modules = {Module::ofType(1)};
    m_folder = std::make_unique<QTemporaryDir>();
    m_server = std::make_unique<Server>(m_time, chain);
    QString error;
    QVERIFY2(m_server->listen(0, &error), qPrintable(error));
    QVERIFY(m_server->tcpPort() != 0);
}

void TstSimLinks::cleanup()
{
    m_server.reset();
    m_folder.reset();
}

void TstSimLinks::tcpAnswers()
{
    const auto socket = client();
    socket->write(kFastRequest.left(11));
    QVERIFY(socket->waitForConnected());
    socket->flush();
    socket->write(kFastRequest.mid(11));
    QTRY_COMPARE(socket->bytesAvailable(), kFrameSize);
    QCOMPARE(socket->readAll().left(8).toHex(), QByteArray("808182830101504b"));
}

void TstSimLinks::severalClients()
{
    const auto first = client();
    const auto second = client();
    first->write(kFastRequest);
    QTRY_COMPARE(first->bytesAvailable(), kFrameSize);
    second->write(kFastRequest);
    QTRY_COMPARE(second->bytesAvailable(), kFrameSize);
    first->write(kFastRequest);
    QTRY_COMPARE(first->bytesAvailable(), 2 * kFrameSize);
}

void TstSimLinks::clientMayGoAndComeBack()
{
    for (int i = 1; i <= 3; ++i) {
        const auto socket = client();
        socket->write(kFastRequest);
        QTRY_COMPARE(socket->bytesAvailable(), kFrameSize);
        QCOMPARE(int(socket->readAll().at(5)), i);
    }
}

void TstSimLinks::takenPortIsReported()
{
    Server other(m_time, Chain());
    QString error;
    QVERIFY(!other.listen(m_server->tcpPort(), &error));
    QVERIFY(error.startsWith(QStringLiteral("TCP port %1: ").arg(m_server->tcpPort())));
}

void TstSimLinks::closeFaultEndsTheConnection()
{
    QString error;
    QVERIFY(m_server->faults().parse("close nth=1", &error));
    const auto socket = client();
    socket->write(kFastRequest);
    QTRY_COMPARE(m_server->requestCount(), 1);
    QTRY_COMPARE(socket->state(), QAbstractSocket::UnconnectedState);
    const auto next = client();
    next->write(kFastRequest);
    QTRY_COMPARE(next->bytesAvailable(), kFrameSize);
}

void TstSimLinks::wholeFastModuleStatusOverTcp()
{
    const auto socket = client();
    socket->write(kModulesRequest);
    QTRY_COMPARE(socket->bytesAvailable(), 1208);
}

void TstSimLinks::terminalAnswersUnderItsName()
{
    openTerminal();
    QVERIFY(QFileInfo(portName()).isSymLink());
    Port port(portName());
    QVERIFY(port.isOpen());
    QVERIFY(port.write(kFastRequest));
    QTRY_COMPARE(port.received.size(), kFrameSize);
    QCOMPARE(port.received.left(8).toHex(), QByteArray("808182830101504b"));
}

void TstSimLinks::terminalIsRaw()
{
    openTerminal();
    const Port port(portName());
    termios settings{};
    QCOMPARE(::tcgetattr(port.descriptor(), &settings), 0);
    QCOMPARE(int(settings.c_lflag & (ICANON | ECHO | ISIG)), 0);
    QCOMPARE(int(settings.c_oflag & OPOST), 0);
}

void TstSimLinks::terminalSurvivesReopening()
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

void TstSimLinks::staleBytesAreGoneAtTheNextOpening()
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

void TstSimLinks::terminalSurvivesAnExclusiveOwnerThatDied_data()
{
    QTest::addColumn<bool>("wasNoticed");

    QTest::newRow("after an exchange") << true;
    QTest::newRow("before anybody noticed it") << false;
}

void TstSimLinks::terminalSurvivesAnExclusiveOwnerThatDied()
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

void TstSimLinks::nothingReadsSoNothingBlocks()
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

void TstSimLinks::oldLinkIsReplaced()
{
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("ports")));
    QVERIFY(QFile::link(QStringLiteral("/no/such/device"), portName()));
    openTerminal();
    QVERIFY(Port(portName()).isOpen());
}

void TstSimLinks::fileIsNotReplaced()
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

void TstSimLinks::nameIsRemovedAtTheEnd()
{
    openTerminal();
    m_server.reset();
    QCOMPARE(QDir(m_folder->filePath(QStringLiteral("ports")))
                 .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot),
             QStringList());
}

void TstSimLinks::nameOfAnotherIsLeftAlone()
{
    openTerminal();
    QVERIFY(QFile::remove(portName()));
    QVERIFY(QFile::link(QStringLiteral("/dev/null"), portName()));
    m_server.reset();
    QCOMPARE(QFile::symLinkTarget(portName()), QStringLiteral("/dev/null"));
}

void TstSimLinks::bothLinksMeetOneChain()
{
    openTerminal();
    Port port(portName());
    // Polarity of channel 1 on, over the terminal; read back over TCP.
    QVERIFY(port.write(QByteArray::fromHex("80818283010143500000000000000000060092f328000000018574bc")));
    QTRY_COMPARE(m_server->requestCount(0x28), 1);
    const auto socket = client();
    socket->write(QByteArray::fromHex("80818283010143500000000000000000050091f3120000000164c1"));
    QTRY_COMPARE(socket->bytesAvailable(), 586);
    QCOMPARE(int(socket->readAll().at(20 + 25)), 1);
    QVERIFY(m_server->chain().module(1).channel(0).reversePolarity);
}

QTEST_GUILESS_MAIN(TstSimLinks)
#include "tst_simlinks.moc"
