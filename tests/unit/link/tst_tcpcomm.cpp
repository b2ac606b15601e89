#include "link/tcpcomm.h"
#include "support/fakelinks.h"
#include "support/messagecatcher.h"
#include "support/virtualtime.h"

#include <QSignalSpy>
#include <QtTest>
#include <memory>

namespace {

const QString kEntered = QStringLiteral("Entered the restart timer");
const QString kStarting = QStringLiteral("******************Starting retry timer");
const QString kRunning = QStringLiteral("***********Timer still running");
const QString kConnected = QStringLiteral("******************Connected");
constexpr int kLong = 60000; ///< twelve periods

} // namespace

/// When the gateway's link connects by itself, with a scripted socket and time that stands still.
class TstTcpComm : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void connectsToTheAddressGiven();
    void aFailedAttemptIsTold();
    void theFirstFailedAttemptIsNotRepeated();
    void theSecondFailedAttemptIsRepeated();
    void aDropStartsTheRetriesEveryFiveSeconds();
    void failedRetriesGoOnWithoutStartingTheTimerAnew();
    void aRetryThatSucceedsIsTheLast();
    void aDropAfterARetryStartsThemAgain();
    void theTimerIsNotStartedTwice();
    void thePeriodIsGivenToTheConstructor();
    void leavingEmitsNothingAndEndsTheRetries();
    void aDropAfterLeavingStartsNothing();
    void afterLeavingTheFirstFailedAttemptIsNotRepeated();
    void afterLeavingANewConnectionIsKeptAgain();
    void aChangedAddressThatIsNotThereYetIsRetried();
    void aFailedAttemptLeavesTheRunningPeriod();
    void aSuccessfulAttemptStopsTheRetries();
    void aSuccessfulAttemptIsKept();
    void bytesArePassedOnWhileConnected();
    void bytesAreNotPassedOnBeforeAnyConnection();
    void bytesAreNotPassedOnAfterLeaving();
    void bytesAreNotPassedOnAfterADrop();
    void bytesToWriteGoOutAsTheyAre();
    void bytesToWriteAreDroppedWithoutAConnection();
    void aReceiverMayWriteOnceConnected();
    void aReceiverMayLeaveOnceConnected();
    void aReceiverMayLeaveOnceARetryConnected();
    void aReceiverMayLeaveOnADrop();
    void aReceiverMayLeaveOnAFailedRetry();
    void aReceiverMayLeaveOnTheFirstFailedAttempt();
    void aReceiverMayConnectAgainOnADrop();
    void aReceiverMayFailToConnectAgainOnADrop();
    void aReceiverMayLeaveOnBytes();
    void destructionTellsNobody();
    void destructionEndsTheRetries();

private:
    void makeLink(std::chrono::milliseconds period = TcpComm::kRetryPeriod);
    void connectTo(const char *address = "192.168.0.234", const char *port = "9999");
    void receive(QByteArray bytes) { emit m_sock->messagePacket(bytes); }
    int attempts() const { return m_sock->calls.count(QStringLiteral("connect")); }
    int connects() const { return m_connects->count(); }
    int disconnects() const { return m_disconnects->count(); }

    /// Calls the function at the next emission of the signal, and at no other.
    template <typename Signal, typename Function>
    void atNext(Signal signal, Function function);

    std::unique_ptr<VirtualTime> m_time;
    std::unique_ptr<MessageCatcher> m_log;
    FakeTcpSock *m_sock = nullptr; ///< of the link
    std::unique_ptr<TcpComm> m_link;
    std::unique_ptr<QSignalSpy> m_connects;
    std::unique_ptr<QSignalSpy> m_disconnects;
    QByteArrayList m_bytes; ///< what messagePacket carried
};

void TstTcpComm::init()
{
    m_time = std::make_unique<VirtualTime>();
    m_log = std::make_unique<MessageCatcher>();
    makeLink();
}

void TstTcpComm::cleanup()
{
    m_connects.reset();
    m_disconnects.reset();
    m_link.reset();
    m_log.reset();
    m_time.reset();
}

void TstTcpComm::makeLink(std::chrono::milliseconds period)
{
    auto socket = std::make_unique<FakeTcpSock>(*m_time);
    m_sock = socket.get();
    m_link = std::make_unique<TcpComm>(*m_time, std::move(socket), nullptr, period);
    m_connects = std::make_unique<QSignalSpy>(m_link.get(), &TcpComm::TcpConnected);
    m_disconnects = std::make_unique<QSignalSpy>(m_link.get(), &TcpComm::TcpDisconnectd);
    m_bytes.clear();
    connect(m_link.get(), &TcpComm::messagePacket, this, [this](QByteArray &bytes) { m_bytes << bytes; });
}

void TstTcpComm::connectTo(const char *address, const char *port)
{
    m_link->Slot_connectToGateway(QString::fromLatin1(address), QString::fromLatin1(port));
}

template <typename Signal, typename Function>
void TstTcpComm::atNext(Signal signal, Function function)
{
    auto connection = std::make_shared<QMetaObject::Connection>();
    *connection = connect(m_link.get(), signal, this, [connection, function] {
        QObject::disconnect(*connection);
        function();
    });
}

void TstTcpComm::connectsToTheAddressGiven()
{
    connectTo("10.1.2.3", "4711");
    QCOMPARE(m_sock->address, QStringLiteral("10.1.2.3"));
    QCOMPARE(m_sock->port, QStringLiteral("4711"));
    QCOMPARE(m_sock->calls, QStringList{QStringLiteral("connect")});
    QCOMPARE(connects(), 1);
    QCOMPARE(disconnects(), 0);
    QCOMPARE(m_time->activeTimers(), 0);
    QCOMPARE(m_log->lines(), QStringList());
}

void TstTcpComm::aFailedAttemptIsTold()
{
    m_sock->connects = false;
    connectTo();
    QCOMPARE(connects(), 0);
    QCOMPARE(disconnects(), 1);
}

void TstTcpComm::theFirstFailedAttemptIsNotRepeated()
{
    m_sock->connects = false;
    connectTo();
    m_time->advance(kLong);
    QCOMPARE(attempts(), 1);
    QCOMPARE(disconnects(), 1);
    QCOMPARE(m_log->lines(), QStringList());
}

void TstTcpComm::theSecondFailedAttemptIsRepeated()
{
    m_sock->connects = false;
    connectTo();
    connectTo();
    QCOMPARE(m_log->lines(), (QStringList{kEntered, kStarting}));
    m_time->advance(4999);
    QCOMPARE(attempts(), 2);
    m_time->advance(1);
    QCOMPARE(attempts(), 3);
}

void TstTcpComm::aDropStartsTheRetriesEveryFiveSeconds()
{
    connectTo();
    m_time->advance(1234);
    m_sock->connects = false;
    m_sock->drop();
    QCOMPARE(disconnects(), 1);
    QCOMPARE(m_log->lines(), (QStringList{kEntered, kStarting}));
    for (int retry = 1; retry <= 4; ++retry) {
        m_time->advance(4999);
        QCOMPARE(attempts(), retry);
        m_time->advance(1);
        QCOMPARE(attempts(), retry + 1);
        QCOMPARE(disconnects(), retry + 1);
    }
}

void TstTcpComm::failedRetriesGoOnWithoutStartingTheTimerAnew()
{
    connectTo();
    m_sock->connects = false;
    m_sock->drop();
    m_log->clear();
    m_time->advance(10000);
    QCOMPARE(m_log->lines(), (QStringList{kRunning, kEntered, kRunning, kEntered}));
}

void TstTcpComm::aRetryThatSucceedsIsTheLast()
{
    connectTo("10.1.2.3", "4711");
    m_sock->drop();
    m_sock->address.clear();
    m_sock->port.clear();
    m_log->clear();
    m_time->advance(5000);
    QCOMPARE(m_log->lines(), (QStringList{kRunning, kConnected}));
    QCOMPARE(m_sock->address, QStringLiteral("10.1.2.3"));
    QCOMPARE(m_sock->port, QStringLiteral("4711"));
    QCOMPARE(connects(), 2);
    QCOMPARE(m_time->activeTimers(), 0);
    m_time->advance(kLong);
    QCOMPARE(attempts(), 2);
}

void TstTcpComm::aDropAfterARetryStartsThemAgain()
{
    connectTo();
    m_sock->drop();
    m_time->advance(5000);
    m_time->advance(777);
    m_log->clear();
    m_sock->drop();
    QCOMPARE(m_log->lines(), (QStringList{kEntered, kStarting}));
    m_time->advance(4999);
    QCOMPARE(attempts(), 2);
    m_time->advance(1);
    QCOMPARE(attempts(), 3);
    QCOMPARE(connects(), 3);
    QCOMPARE(m_time->activeTimers(), 0);
}

void TstTcpComm::theTimerIsNotStartedTwice()
{
    connectTo();
    m_sock->connects = false;
    m_sock->drop();
    m_time->advance(3000);
    m_log->clear();
    m_link->Slot_tmrStart();
    QCOMPARE(m_log->lines(), QStringList{kEntered});
    m_time->advance(1999);
    QCOMPARE(attempts(), 1);
    m_time->advance(1);
    QCOMPARE(attempts(), 2);
}

void TstTcpComm::thePeriodIsGivenToTheConstructor()
{
    makeLink(std::chrono::milliseconds(30));
    connectTo();
    m_sock->drop();
    m_time->advance(29);
    QCOMPARE(attempts(), 1);
    m_time->advance(1);
    QCOMPARE(attempts(), 2);
}

void TstTcpComm::leavingEmitsNothingAndEndsTheRetries()
{
    connectTo();
    m_sock->connects = false;
    m_sock->drop();
    m_time->advance(5000);
    const int told = disconnects();
    m_log->clear();
    m_link->Slot_disconnectSocket();
    QCOMPARE(m_sock->calls.last(), QStringLiteral("disconnect"));
    QCOMPARE(m_time->activeTimers(), 0);
    m_time->advance(kLong);
    QCOMPARE(attempts(), 2);
    QCOMPARE(disconnects(), told);
    QCOMPARE(m_log->lines(), QStringList());
}

void TstTcpComm::aDropAfterLeavingStartsNothing()
{
    connectTo();
    m_link->Slot_disconnectSocket();
    m_sock->drop();
    QCOMPARE(disconnects(), 0);
    // Even if the socket told of it.
    emit m_sock->TcpDisconnectd();
    QCOMPARE(m_time->activeTimers(), 0);
    QCOMPARE(m_log->lines(), QStringList());
}

void TstTcpComm::afterLeavingTheFirstFailedAttemptIsNotRepeated()
{
    connectTo();
    m_link->Slot_disconnectSocket();
    m_sock->connects = false;
    connectTo();
    QCOMPARE(disconnects(), 1);
    m_time->advance(kLong);
    QCOMPARE(attempts(), 2);
}

void TstTcpComm::afterLeavingANewConnectionIsKeptAgain()
{
    connectTo();
    m_link->Slot_disconnectSocket();
    connectTo();
    m_sock->drop();
    QCOMPARE(m_log->lines(), (QStringList{kEntered, kStarting}));
    m_time->advance(5000);
    QCOMPARE(connects(), 3);
}

void TstTcpComm::aChangedAddressThatIsNotThereYetIsRetried()
{
    connectTo();
    m_sock->connects = false;
    connectTo("192.168.0.99", "9999");
    QCOMPARE(disconnects(), 1);
    m_sock->address.clear();
    m_sock->connects = true;
    m_time->advance(4999);
    QCOMPARE(attempts(), 2);
    m_time->advance(1);
    QCOMPARE(attempts(), 3);
    QCOMPARE(m_sock->address, QStringLiteral("192.168.0.99"));
    QCOMPARE(connects(), 2);
}

void TstTcpComm::aFailedAttemptLeavesTheRunningPeriod()
{
    connectTo();
    m_sock->connects = false;
    m_sock->drop();
    m_time->advance(3000);
    connectTo("192.168.0.99", "9999");
    m_sock->address.clear();
    m_time->advance(1999);
    QCOMPARE(attempts(), 2);
    m_time->advance(1);
    QCOMPARE(attempts(), 3);
    QCOMPARE(m_sock->address, QStringLiteral("192.168.0.99"));
}

void TstTcpComm::aSuccessfulAttemptStopsTheRetries()
{
    connectTo();
    m_sock->drop();
    m_time->advance(4999);
    connectTo();
    QCOMPARE(m_time->activeTimers(), 0);
    m_time->advance(kLong);
    QCOMPARE(attempts(), 2);
    QVERIFY(m_sock->IsConnected());
}

void TstTcpComm::aSuccessfulAttemptIsKept()
{
    connectTo();
    m_sock->drop();
    m_time->advance(4000);
    connectTo();
    m_time->advance(4000);
    m_sock->drop();
    QCOMPARE(disconnects(), 2);
    m_time->advance(4999);
    QCOMPARE(attempts(), 2);
    m_time->advance(1);
    QCOMPARE(attempts(), 3);
}

void TstTcpComm::bytesArePassedOnWhileConnected()
{
    connectTo();
    const QByteArray raw("\0\xff#S;\r\n", 7);
    receive(raw);
    receive(QByteArray());
    receive("]----");
    QCOMPARE(m_bytes, (QByteArrayList{raw, QByteArray(), "]----"}));
}

void TstTcpComm::bytesAreNotPassedOnBeforeAnyConnection()
{
    receive("]----");
    QCOMPARE(m_bytes, QByteArrayList());
}

void TstTcpComm::bytesAreNotPassedOnAfterLeaving()
{
    connectTo();
    m_link->Slot_disconnectSocket();
    receive("]----");
    QCOMPARE(m_bytes, QByteArrayList());
}

void TstTcpComm::bytesAreNotPassedOnAfterADrop()
{
    connectTo();
    m_sock->drop();
    receive("]----");
    QCOMPARE(m_bytes, QByteArrayList());
    m_time->advance(5000);
    receive("#S");
    QCOMPARE(m_bytes, QByteArrayList{"#S"});
}

void TstTcpComm::bytesToWriteGoOutAsTheyAre()
{
    connectTo();
    const QByteArray raw("\0#?\r\xff", 5);
    m_link->Write(raw);
    m_link->Write("\r");
    QCOMPARE(m_sock->frames, (QByteArrayList{raw, "\r"}));
}

void TstTcpComm::bytesToWriteAreDroppedWithoutAConnection()
{
    m_link->Write("#?\r");
    connectTo();
    m_sock->drop();
    m_link->Write("#?\r");
    m_link->Slot_disconnectSocket();
    m_link->Write("#?\r");
    connectTo();
    QCOMPARE(m_sock->frames, QByteArrayList());
    QCOMPARE(m_log->lines(), (QStringList{kEntered, kStarting}));
}

void TstTcpComm::aReceiverMayWriteOnceConnected()
{
    atNext(&TcpComm::TcpConnected, [this] { m_link->Write("#030_1\r"); });
    connectTo();
    QCOMPARE(m_sock->frames, QByteArrayList{"#030_1\r"});
}

void TstTcpComm::aReceiverMayLeaveOnceConnected()
{
    atNext(&TcpComm::TcpConnected, [this] { m_link->Slot_disconnectSocket(); });
    connectTo();
    QVERIFY(!m_sock->IsConnected());
    // It was left, so the next attempt is a first one again.
    m_sock->connects = false;
    connectTo();
    QCOMPARE(m_time->activeTimers(), 0);
    QCOMPARE(m_log->lines(), QStringList());
}

void TstTcpComm::aReceiverMayLeaveOnceARetryConnected()
{
    connectTo();
    m_sock->drop();
    m_log->clear();
    atNext(&TcpComm::TcpConnected, [this] { m_link->Slot_disconnectSocket(); });
    m_time->advance(kLong);
    QCOMPARE(attempts(), 2);
    QCOMPARE(m_log->lines(), QStringList{kRunning});
    QCOMPARE(m_time->activeTimers(), 0);
}

void TstTcpComm::aReceiverMayLeaveOnADrop()
{
    connectTo();
    atNext(&TcpComm::TcpDisconnectd, [this] { m_link->Slot_disconnectSocket(); });
    m_sock->drop();
    QCOMPARE(m_time->activeTimers(), 0);
    m_time->advance(kLong);
    QCOMPARE(attempts(), 1);
}

void TstTcpComm::aReceiverMayLeaveOnAFailedRetry()
{
    connectTo();
    m_sock->connects = false;
    m_sock->drop();
    atNext(&TcpComm::TcpDisconnectd, [this] { m_link->Slot_disconnectSocket(); });
    m_time->advance(kLong);
    QCOMPARE(attempts(), 2);
    QCOMPARE(m_time->activeTimers(), 0);
}

void TstTcpComm::aReceiverMayLeaveOnTheFirstFailedAttempt()
{
    m_sock->connects = false;
    atNext(&TcpComm::TcpDisconnectd, [this] { m_link->Slot_disconnectSocket(); });
    connectTo();
    connectTo(); // a first one again
    m_time->advance(kLong);
    QCOMPARE(attempts(), 2);
    QCOMPARE(m_log->lines(), QStringList());
}

void TstTcpComm::aReceiverMayConnectAgainOnADrop()
{
    connectTo();
    atNext(&TcpComm::TcpDisconnectd, [this] { connectTo("192.168.0.99", "9999"); });
    m_sock->drop();
    QVERIFY(m_sock->IsConnected());
    QCOMPARE(connects(), 2);
    QCOMPARE(m_time->activeTimers(), 0);
    m_time->advance(kLong);
    QCOMPARE(attempts(), 2);
    receive("]----");
    QCOMPARE(m_bytes, QByteArrayList{"]----"});
}

void TstTcpComm::aReceiverMayFailToConnectAgainOnADrop()
{
    connectTo();
    m_sock->connects = false;
    atNext(&TcpComm::TcpDisconnectd, [this] { connectTo("192.168.0.99", "9999"); });
    m_sock->drop();
    QCOMPARE(attempts(), 2);
    QCOMPARE(m_time->activeTimers(), 1);
    m_sock->connects = true;
    m_sock->address.clear();
    m_time->advance(5000);
    QCOMPARE(m_sock->address, QStringLiteral("192.168.0.99"));
    QCOMPARE(connects(), 2);
}

void TstTcpComm::aReceiverMayLeaveOnBytes()
{
    connectTo();
    atNext(&TcpComm::messagePacket, [this] { m_link->Slot_disconnectSocket(); });
    receive("]----");
    receive("]----");
    QCOMPARE(m_bytes.size(), 1);
    QCOMPARE(m_time->activeTimers(), 0);
}

void TstTcpComm::destructionTellsNobody()
{
    connectTo();
    int told = 0;
    connect(m_link.get(), &TcpComm::TcpDisconnectd, this, [&told] { ++told; });
    m_link.reset(); // the socket tells of its end
    QCOMPARE(told, 0);
    QCOMPARE(m_log->lines(), QStringList());
}

void TstTcpComm::destructionEndsTheRetries()
{
    connectTo();
    m_sock->drop();
    QCOMPARE(m_time->activeTimers(), 1);
    m_link.reset();
    QCOMPARE(m_time->activeTimers(), 0);
    m_log->clear();
    m_time->advance(kLong);
    QCOMPARE(m_log->lines(), QStringList());
}

QTEST_GUILESS_MAIN(TstTcpComm)
#include "tst_tcpcomm.moc"
