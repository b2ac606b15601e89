#include "deviceframes.h"
#include "tcpsocktest.h"

#include <QTcpSocket>
#include <QtTest>

class TstTcpSock : public TcpSockTest
{
    Q_OBJECT

private slots:
    void isNotConnectedAtFirst();
    void connectsAndTells();
    void aHostNameIsLookedUp();
    void anUnknownHostFails();
    void anEmptyHostFails();
    void thePortIsReadAsADecimalNumber();
    void portsThatAreNoSixteenBitNumberFail_data();
    void portsThatAreNoSixteenBitNumberFail();
    void aRefusedConnectFailsAtOnce();
    void aReceiverOfTheConnectMayLeave();
    void connectingAgainLeavesTheEarlierConnection();
    void connectingAgainWithUnsentBytesWorks();

    void aFrameIsWrittenWhole();
    void aReceiverOfTheConnectMayWrite();
    void writingWithoutConnectionDoesNothing();

    void aPeerThatGoesAwayIsTold();
    void theFlagFollowsTheSignalOfTheEnd();
    void aReceiverOfTheEndMayConnectAgain();
    void socketsOfEarlierAttemptsDoNotPileUp();
    void leavingEmitsNothing();
    void theSocketMayEndWhileConnected();
    void otherSocketStatesAreIgnored();
};

void TstTcpSock::isNotConnectedAtFirst()
{
    QVERIFY(!m_sock->IsConnected());
}

void TstTcpSock::connectsAndTells()
{
    bool upWhenTold = true;
    connect(m_sock.get(), &TcpSock::TcpConnected, this, [&] { upWhenTold = m_sock->IsConnected(); });
    QVERIFY(connectSocket());
    QVERIFY(m_sock->IsConnected());
    QVERIFY(!upWhenTold); // the flag follows the signal
    QCOMPARE(m_connects->count(), 1);
    QCOMPARE(m_disconnects->count(), 0);
    QCOMPARE(m_log->lines(),
             (QStringList{QStringLiteral("Connect Received"), QStringLiteral("Connected State")}));
}

void TstTcpSock::aHostNameIsLookedUp()
{
    QStringList asked;
    m_sock = patientSock([&asked](const QString &name) {
        asked.append(name);
        QHostInfo info;
        // The first address is not the device's: nobody listens there on this port.
        info.setAddresses({QHostAddress(ownLoopback().toIPv4Address() + 1), ownLoopback()});
        return info;
    });
    QVERIFY(m_sock->connectToServer(QStringLiteral("gateway"), port()));
    QCOMPARE(asked, QStringList{QStringLiteral("gateway")});
    QVERIFY(m_sock->IsConnected());
}

void TstTcpSock::anUnknownHostFails()
{
    m_sock = patientSock([](const QString &) { return QHostInfo(); });
    QSignalSpy disconnects(m_sock.get(), &TcpSock::TcpDisconnectd);
    QVERIFY(!m_sock->connectToServer(QStringLiteral("gateway"), port()));
    QCOMPARE(disconnects.count(), 1);
}

void TstTcpSock::anEmptyHostFails()
{
    QVERIFY(!m_sock->connectToServer(QString(), port()));
    QCOMPARE(m_disconnects->count(), 1);
}

void TstTcpSock::thePortIsReadAsADecimalNumber()
{
    QVERIFY(m_sock->connectToServer(loopback(), QStringLiteral("0") + port()));
}

void TstTcpSock::portsThatAreNoSixteenBitNumberFail_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<bool>("alone");
    QTest::newRow("empty") << QString() << true;
    QTest::newRow("letters behind") << QStringLiteral("x") << false;
    QTest::newRow("two numbers") << QStringLiteral(" 1") << false;
    QTest::newRow("hexadecimal") << QStringLiteral("0x1E61") << true;
    QTest::newRow("too large") << QStringLiteral("65536") << true;
    QTest::newRow("below zero") << QStringLiteral("-1") << true;
}

void TstTcpSock::portsThatAreNoSixteenBitNumberFail()
{
    QFETCH(QString, suffix);
    QFETCH(bool, alone);
    QVERIFY(!m_sock->connectToServer(loopback(), alone ? suffix : port() + suffix));
    QCOMPARE(m_disconnects->count(), 1);
}

void TstTcpSock::aRefusedConnectFailsAtOnce()
{
    const QString closedPort = port();
    m_server->close();
    QVERIFY(!m_sock->connectToServer(loopback(), closedPort));
    QVERIFY(!m_sock->IsConnected());
    QCOMPARE(m_disconnects->count(), 1);
    QCOMPARE(m_connects->count(), 0);
    QCOMPARE(socket()->state(), QAbstractSocket::UnconnectedState);
}

void TstTcpSock::aReceiverOfTheConnectMayLeave()
{
    connect(m_sock.get(), &TcpSock::TcpConnected, m_sock.get(), &TcpSock::disconnectSocket);
    QVERIFY(!m_sock->connectToServer(loopback(), port()));
    QVERIFY(!m_sock->IsConnected());
    QCOMPARE(m_disconnects->count(), 0);
}

void TstTcpSock::connectingAgainLeavesTheEarlierConnection()
{
    QVERIFY(connectSocket());
    QSignalSpy left(m_peer, &QTcpSocket::disconnected);
    QVERIFY(connectSocket());
    QTRY_COMPARE(left.count(), 1);
    QVERIFY(m_sock->IsConnected());
    QCOMPARE(m_disconnects->count(), 0);
    QCOMPARE(m_connects->count(), 2);
    QVERIFY(deliver(deviceframes::five()));
    QCOMPARE(m_frames.size(), 1);
}

void TstTcpSock::connectingAgainWithUnsentBytesWorks()
{
    QVERIFY(connectSocket());
    m_sock->Write(deviceframes::five());
    QVERIFY(socket()->bytesToWrite() > 0);
    QVERIFY(connectSocket());
    QVERIFY(m_sock->IsConnected());
    QCOMPARE(m_disconnects->count(), 0);
    m_sock->Write(deviceframes::eight());
    QTRY_COMPARE(m_peer->bytesAvailable(), qint64(deviceframes::eight().size()));
    QCOMPARE(m_peer->readAll(), deviceframes::eight());
}

void TstTcpSock::aFrameIsWrittenWhole()
{
    QVERIFY(connectSocket());
    m_sock->Write(deviceframes::largest());
    QCOMPARE(m_written->count(), 1);
    QTRY_COMPARE(m_peer->bytesAvailable(), qint64(deviceframes::largest().size()));
    QCOMPARE(m_peer->readAll(), deviceframes::largest());
}

void TstTcpSock::aReceiverOfTheConnectMayWrite()
{
    connect(m_sock.get(), &TcpSock::TcpConnected, this, [this] { m_sock->Write("hello"); });
    QVERIFY(connectSocket());
    QCOMPARE(m_written->count(), 1);
    QTRY_COMPARE(m_peer->bytesAvailable(), qint64(5));
}

void TstTcpSock::writingWithoutConnectionDoesNothing()
{
    m_sock->Write("x");
    QVERIFY(connectSocket());
    m_peer->close();
    QTRY_COMPARE(m_disconnects->count(), 1);
    m_sock->Write("x");
    QVERIFY(connectSocket());
    m_sock->disconnectSocket();
    m_sock->Write("x");
    QCOMPARE(m_written->count(), 0);
}

void TstTcpSock::aPeerThatGoesAwayIsTold()
{
    QVERIFY(connectSocket());
    m_peer->close();
    QTRY_COMPARE(m_disconnects->count(), 1);
    QVERIFY(!m_sock->IsConnected());
    m_sock->handleDisconnect();
    QCOMPARE(m_disconnects->count(), 1); // told once
    QVERIFY(connectSocket());
    QVERIFY(m_sock->IsConnected());
}

void TstTcpSock::theFlagFollowsTheSignalOfTheEnd()
{
    bool upWhenTold = false;
    connect(m_sock.get(), &TcpSock::TcpDisconnectd, this, [&] { upWhenTold = m_sock->IsConnected(); });
    QVERIFY(connectSocket());
    m_peer->close();
    QTRY_COMPARE(m_disconnects->count(), 1);
    QVERIFY(upWhenTold);
    QVERIFY(!m_sock->IsConnected());
}

void TstTcpSock::aReceiverOfTheEndMayConnectAgain()
{
    connect(m_sock.get(), &TcpSock::TcpDisconnectd, this, [this] {
        QVERIFY(connectSocket());
        m_sock->Write("at once,");
    });
    QVERIFY(connectSocket());
    m_peer->close();
    QTRY_COMPARE(m_connects->count(), 2);
    QVERIFY(m_sock->IsConnected());
    // The new connection is whole, although it was made while the old one was being closed.
    QVERIFY(socket()->isWritable());
    m_sock->Write("later");
    QCOMPARE(m_written->count(), 2);
    QTRY_COMPARE(m_peer->bytesAvailable(), qint64(13));
    QCOMPARE(m_peer->readAll(), QByteArray("at once,later"));
    QVERIFY(deliver(deviceframes::five()));
    QCOMPARE(m_frames, QByteArrayList{deviceframes::five()});
    QCOMPARE(m_disconnects->count(), 1);
}

void TstTcpSock::socketsOfEarlierAttemptsDoNotPileUp()
{
    for (int i = 0; i < 3; ++i)
        QVERIFY(connectSocket());
    m_server->close();
    QVERIFY(!m_sock->connectToServer(loopback(), port()));
    QTRY_COMPARE(m_sock->findChildren<QTcpSocket *>().size(), 1);
}

void TstTcpSock::leavingEmitsNothing()
{
    QVERIFY(connectSocket());
    QSignalSpy left(m_peer, &QTcpSocket::disconnected);
    m_sock->disconnectSocket();
    QVERIFY(!m_sock->IsConnected());
    QTRY_COMPARE(left.count(), 1);
    QCOMPARE(m_disconnects->count(), 0);
    m_sock->disconnectSocket();
    QCOMPARE(m_disconnects->count(), 0);
}

void TstTcpSock::theSocketMayEndWhileConnected()
{
    QVERIFY(connectSocket());
    QSignalSpy left(m_peer, &QTcpSocket::disconnected);
    int told = 0;
    connect(m_sock.get(), &TcpSock::TcpDisconnectd, this, [&told] { ++told; });
    m_sock.reset();
    QTRY_COMPARE(left.count(), 1);
    QCOMPARE(told, 0);
}

void TstTcpSock::otherSocketStatesAreIgnored()
{
    for (const auto state :
         {QAbstractSocket::UnconnectedState, QAbstractSocket::HostLookupState,
          QAbstractSocket::ConnectingState, QAbstractSocket::BoundState, QAbstractSocket::ClosingState})
        m_sock->Slot_CommStatus(state);
    QVERIFY(m_log->lines().isEmpty());
}

QTEST_GUILESS_MAIN(TstTcpSock)
#include "tst_tcpsock.moc"
