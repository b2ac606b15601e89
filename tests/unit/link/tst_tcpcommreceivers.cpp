#include "tcpcommtest.h"

#include <QtTest>

/// What receivers of the gateway link's signals may do to it, and its end.
class TstTcpCommReceivers : public TcpCommTest
{
    Q_OBJECT

private slots:
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
};

void TstTcpCommReceivers::aReceiverMayWriteOnceConnected()
{
    atNext(&TcpComm::TcpConnected, [this] { m_link->Write("#030_1\r"); });
    connectTo();
    QCOMPARE(m_sock->frames, QByteArrayList{"#030_1\r"});
}

void TstTcpCommReceivers::aReceiverMayLeaveOnceConnected()
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

void TstTcpCommReceivers::aReceiverMayLeaveOnceARetryConnected()
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

void TstTcpCommReceivers::aReceiverMayLeaveOnADrop()
{
    connectTo();
    atNext(&TcpComm::TcpDisconnectd, [this] { m_link->Slot_disconnectSocket(); });
    m_sock->drop();
    QCOMPARE(m_time->activeTimers(), 0);
    m_time->advance(kLong);
    QCOMPARE(attempts(), 1);
}

void TstTcpCommReceivers::aReceiverMayLeaveOnAFailedRetry()
{
    connectTo();
    m_sock->connects = false;
    m_sock->drop();
    atNext(&TcpComm::TcpDisconnectd, [this] { m_link->Slot_disconnectSocket(); });
    m_time->advance(kLong);
    QCOMPARE(attempts(), 2);
    QCOMPARE(m_time->activeTimers(), 0);
}

void TstTcpCommReceivers::aReceiverMayLeaveOnTheFirstFailedAttempt()
{
    m_sock->connects = false;
    atNext(&TcpComm::TcpDisconnectd, [this] { m_link->Slot_disconnectSocket(); });
    connectTo();
    connectTo(); // a first one again
    m_time->advance(kLong);
    QCOMPARE(attempts(), 2);
    QCOMPARE(m_log->lines(), QStringList());
}

void TstTcpCommReceivers::aReceiverMayConnectAgainOnADrop()
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

void TstTcpCommReceivers::aReceiverMayFailToConnectAgainOnADrop()
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

void TstTcpCommReceivers::aReceiverMayLeaveOnBytes()
{
    connectTo();
    atNext(&TcpComm::messagePacket, [this] { m_link->Slot_disconnectSocket(); });
    receive("]----");
    receive("]----");
    QCOMPARE(m_bytes.size(), 1);
    QCOMPARE(m_time->activeTimers(), 0);
}

void TstTcpCommReceivers::destructionTellsNobody()
{
    connectTo();
    int told = 0;
    connect(m_link.get(), &TcpComm::TcpDisconnectd, this, [&told] { ++told; });
    m_link.reset(); // the socket tells of its end
    QCOMPARE(told, 0);
    QCOMPARE(m_log->lines(), QStringList());
}

void TstTcpCommReceivers::destructionEndsTheRetries()
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

QTEST_GUILESS_MAIN(TstTcpCommReceivers)
#include "tst_tcpcommreceivers.moc"
