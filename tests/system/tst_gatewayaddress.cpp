#include "gatewayfixture.h"

#include <QElapsedTimer>
#include <QLineEdit>
#include <QTcpSocket>
#include <QtTest>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

using namespace std::chrono_literals;

namespace {

/// Far above the 50 ms of an attempt, far below what an operator takes for a hang.
constexpr qint64 kLongestHalt = 10000;

/// A port that neither takes nor refuses a connection: its queue is full and nobody empties it.
class DeafPort
{
public:
    DeafPort()
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof(address);
        auto *generic = reinterpret_cast<sockaddr *>(&address); // as the system's interface wants it
        m_listener = ::socket(AF_INET, SOCK_STREAM, 0);
        if (::bind(m_listener, generic, size) != 0 || ::listen(m_listener, 0) != 0 ||
            ::getsockname(m_listener, generic, &size) != 0)
            qFatal("no port can be had");
        m_port = ntohs(address.sin_port);
        constexpr int kEnough = 16;
        for (int i = 0; i < kEnough && !m_isFull; ++i) {
            m_clients.push_back(std::make_unique<QTcpSocket>());
            m_clients.back()->connectToHost(QHostAddress::LocalHost, m_port);
            m_isFull = !m_clients.back()->waitForConnected(100);
        }
    }
    ~DeafPort() { ::close(m_listener); }

    quint16 port() const { return m_port; }
    bool isFull() const { return m_isFull; }

private:
    int m_listener = -1;
    quint16 m_port = 0;
    bool m_isFull = false;
    std::vector<std::unique_ptr<QTcpSocket>> m_clients;
};

} // namespace

/// Which gateway the panel connects to.
class TstGatewayAddress : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_fixture = std::make_unique<GatewayFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void savedAddressIsLoaded();
    void withoutASavedAddressTheDefaultShows();
    void usedAddressIsStoredAndLoadedNextTime();
    void newAddressIsFollowed();
    void newAddressThatTakesAWhileIsFollowedByTheRetry();
    void refusedAddressChangesNothing();
    void secondNewAddressIsFollowedToo();
    void emptyNewAddressSendsNothing();
    void absentGatewayIsNotTriedAgainByItself();
    void absentGatewayIsTriedAgainAfterASecondAttempt();
    void deafGatewayDoesNotHoldTheWindowUp();
    void silentGatewayDoesNotHoldTheWindowUp();
    void emptyFieldsDoNotConnect();

private:
    GatewayFixture &fixture() { return *m_fixture; }
    QString address() const { return m_fixture->partText("ipAddrBox"); }
    QString port() const { return m_fixture->partText("portNo"); }
    QString saved() const { return m_fixture->savedSetting("ZrtGateway"); }
    void changeAddress(const QString &address);
    void typeAddress(const QString &address);
    /// Milliseconds that the program does nothing else.
    qint64 clickTime(const char *name);

    std::unique_ptr<GatewayFixture> m_fixture;
};

void TstGatewayAddress::changeAddress(const QString &address)
{
    fixture().clickPart("ChangeGateway");
    fixture().answerDialog("addressConfirmation", "Yes");
    fixture().typeInto("changeGatewayDialog", "IpAddress", address);
    fixture().answerDialog("changeGatewayDialog", "OK");
}

void TstGatewayAddress::typeAddress(const QString &address)
{
    auto *field = fixture().part<QLineEdit>("ipAddrBox");
    field->setFocus();
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, address);
}

qint64 TstGatewayAddress::clickTime(const char *name)
{
    QElapsedTimer clock;
    clock.start();
    fixture().clickPart(name);
    return clock.elapsed();
}

void TstGatewayAddress::savedAddressIsLoaded()
{
    fixture().startWithGateway();
    QCOMPARE(address(), QString("127.0.0.1"));
    QCOMPARE(port(), QString::number(fixture().gateway->port()));
    QCOMPARE(fixture().gateway->connectionCount(), 0); // not before the panel is opened
    fixture().openConnectedPanel();
}

void TstGatewayAddress::withoutASavedAddressTheDefaultShows()
{
    fixture().startChain("module type=1\n");
    QCOMPARE(address(), QString("192.168.0.234"));
    QCOMPARE(port(), QString("9999"));
}

void TstGatewayAddress::usedAddressIsStoredAndLoadedNextTime()
{
    sim::GatewayState state;
    state.address = "127.0.0.2";
    fixture().plugGateway(state);
    fixture().startWithGateway();
    fixture().openPanel();
    QVERIFY(!fixture().isConnected()); // nobody listens at 127.0.0.1
    const QString port = QString::number(fixture().gateway->port());
    QCOMPARE(saved(), "127.0.0.1:" + port);
    typeAddress("127.0.0.2");
    fixture().clickPart("tcpConnect_Btn");
    WAIT_VERIFY(fixture().isConnected());
    QCOMPARE(saved(), "127.0.0.2:" + port);

    fixture().startAgain();
    WAIT_VERIFY(fixture().isReady());
    QCOMPARE(address(), QString("127.0.0.2"));
    QCOMPARE(this->port(), port);
    fixture().window()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(fixture().window()));
    fixture().openConnectedPanel();
    QCOMPARE(saved(), "127.0.0.2:" + port);
}

void TstGatewayAddress::newAddressIsFollowed()
{
    fixture().startWithGateway();
    fixture().openConnectedPanel();
    fixture().gateway->state().mode = "TCP-C";
    changeAddress("127.0.0.2");
    WAIT_COMPARE(fixture().lines(), QStringList("gateway.addr=127.0.0.2"));
    WAIT_COMPARE(address(), QString("127.0.0.2"));
    WAIT_VERIFY(fixture().isConnected());
    WAIT_COMPARE(fixture().differences(), QStringList());
    WAIT_COMPARE(fixture().gateway->connectionCount(), 1); // the old connection has ended
    QCOMPARE(saved(), QString("127.0.0.2:%1").arg(fixture().gateway->port()));
    QCOMPARE(fixture().lampColour("tcpLed"), QColor(Qt::green));
    QVERIFY(!fixture().part<QWidget>("ipAddrBox")->isEnabled());
    fixture().waitUntilPolled(2);
    fixture().nextPoll(5s);
    QCOMPARE(fixture().gateway->connectionCount(), 1);
}

void TstGatewayAddress::newAddressThatTakesAWhileIsFollowedByTheRetry()
{
    fixture().startWithGateway();
    fixture().openConnectedPanel();
    fixture().gateway->state().moveTime = 2s;
    changeAddress("127.0.0.2");
    WAIT_COMPARE(address(), QString("127.0.0.2"));
    WAIT_VERIFY(!fixture().isConnected());
    QVERIFY(!fixture().gateway->isListening());
    fixture().time.skip(4s);
    QVERIFY(fixture().gateway->isListening());
    QCOMPARE(fixture().partText("tcpConnect_Btn"), QString("Connect"));
    fixture().time.skip(1s);
    WAIT_VERIFY(fixture().isConnected());
    WAIT_COMPARE(fixture().differences(), QStringList());
    QCOMPARE(saved(), QString("127.0.0.2:%1").arg(fixture().gateway->port()));
}

void TstGatewayAddress::refusedAddressChangesNothing()
{
    fixture().startWithGateway();
    fixture().openConnectedPanel();
    changeAddress("127.0.0.300");
    WAIT_COMPARE(fixture().lines(), QStringList("gateway.addr=127.0.0.300"));
    fixture().nextPoll();
    QCOMPARE(address(), QString("127.0.0.1"));
    QVERIFY(fixture().isConnected());
    QCOMPARE(saved(), QString("127.0.0.1:%1").arg(fixture().gateway->port()));
}

void TstGatewayAddress::secondNewAddressIsFollowedToo()
{
    fixture().startWithGateway();
    fixture().openConnectedPanel();
    int connections = 1;
    for (const char *next : {"127.0.0.2", "127.0.0.3", "127.0.0.1"}) {
        changeAddress(next);
        WAIT_COMPARE(address(), QString(next));
        WAIT_VERIFY(fixture().isConnected());
        fixture().waitUntilPolled(++connections);
        WAIT_COMPARE(fixture().gateway->connectionCount(), 1);
        fixture().nextPoll();
        QCOMPARE(fixture().differences(), QStringList());
    }
}

void TstGatewayAddress::emptyNewAddressSendsNothing()
{
    fixture().startWithGateway();
    fixture().openConnectedPanel();
    changeAddress("");
    fixture().nextPoll();
    QCOMPARE(fixture().lines(), QStringList());
    QCOMPARE(address(), QString("127.0.0.1"));
}

void TstGatewayAddress::absentGatewayIsNotTriedAgainByItself()
{
    fixture().startWithGateway();
    fixture().unplugGateway();
    fixture().openPanel();
    QVERIFY(!fixture().isConnected());
    QCOMPARE(fixture().partText("tcpConnect_Btn"), QString("Connect"));
    QCOMPARE(fixture().lampColour("tcpLed"), QColor(Qt::gray));
    fixture().plugGateway();
    fixture().time.skip(20s);
    fixture().waitForPolls();
    QCOMPARE(fixture().gateway->connectionCount(), 0);
    fixture().clickPart("tcpConnect_Btn");
    WAIT_VERIFY(fixture().isConnected());
    WAIT_COMPARE(fixture().differences(), QStringList());
}

void TstGatewayAddress::absentGatewayIsTriedAgainAfterASecondAttempt()
{
    fixture().startWithGateway();
    fixture().unplugGateway();
    fixture().openPanel();
    fixture().clickPart("tcpConnect_Btn");
    QVERIFY(!fixture().isConnected());
    fixture().plugGateway();
    fixture().time.skip(5s);
    WAIT_VERIFY(fixture().isConnected());
    WAIT_COMPARE(fixture().differences(), QStringList());
}

void TstGatewayAddress::deafGatewayDoesNotHoldTheWindowUp()
{
    const DeafPort deaf;
    QVERIFY(deaf.isFull());
    fixture().gatewayAddress = QString("127.0.0.1:%1").arg(deaf.port());
    fixture().startChain("module type=1\n");
    fixture().openPanel();
    QVERIFY(!fixture().isConnected());
    for (int i = 0; i < 3; ++i) {
        const qint64 halt = clickTime("tcpConnect_Btn");
        QVERIFY2(halt < kLongestHalt, qPrintable(QString::number(halt)));
        QCOMPARE(fixture().partText("tcpConnect_Btn"), QString("Connect"));
    }
    for (int i = 0; i < 3; ++i) {
        QElapsedTimer clock;
        clock.start();
        fixture().time.skip(5s); // one more attempt each time
        QVERIFY2(clock.elapsed() < kLongestHalt, qPrintable(QString::number(clock.elapsed())));
        fixture().waitForPolls();
    }
    QVERIFY(fixture().isReady());
    QTest::keyClick(fixture().panel(), Qt::Key_Escape);
    WAIT_VERIFY(!fixture().panel());
}

void TstGatewayAddress::silentGatewayDoesNotHoldTheWindowUp()
{
    fixture().startWithGateway();
    fixture().addGatewayFaults("silent");
    fixture().openPanel();
    WAIT_VERIFY(fixture().isConnected());
    fixture().time.skip(20s);
    fixture().waitForPolls();
    QCOMPARE(fixture().statusRequests(), 0); // the greeting starts the polling
    QCOMPARE(fixture().partText("GtwVersion"), QString());
    gestures::pick(fixture().part<QComboBox>("comboPTP"), 2);
    WAIT_COMPARE(fixture().lines(), QStringList("#034_2"));
    QVERIFY(clickTime("debugBtn") < kLongestHalt);
    QTest::keyClick(fixture().panel(), Qt::Key_Escape);
    WAIT_VERIFY(!fixture().panel());
    WAIT_COMPARE(fixture().gateway->connectionCount(), 0);
    fixture().gateway->faults().clear();
    fixture().openConnectedPanel();
}

void TstGatewayAddress::emptyFieldsDoNotConnect()
{
    fixture().startWithGateway();
    fixture().unplugGateway();
    fixture().openPanel();
    const QString before = saved();
    typeAddress("");
    fixture().clickPart("tcpConnect_Btn");
    QCOMPARE(saved(), before);
    QVERIFY(fixture().part<QWidget>("tcpConnect_Btn")->isEnabled());
}

QTEST_MAIN(TstGatewayAddress)
#include "tst_gatewayaddress.moc"
