#include "tcpcommtest.h"

#include <QtTest>

/// When the gateway's link connects by itself, and which bytes go through it.
class TstTcpComm : public TcpCommTest
{
    Q_OBJECT

private slots:
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
    void aRetryByHandIsKept();
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
};

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

void TstTcpComm::aRetryByHandIsKept()
{
    connectTo();
    m_link->Slot_disconnectSocket();
    m_link->Slot_RetryTcpConnection();
    QCOMPARE(connects(), 2);
    m_sock->drop();
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

QTEST_GUILESS_MAIN(TstTcpComm)
#include "tst_tcpcomm.moc"
