#include "deviceframes.h"
#include "tcpsocktest.h"

#include <QTcpSocket>
#include <QtTest>

/// What the TCP link makes of the bytes that come in.
class TstTcpReception : public TcpSockTest
{
    Q_OBJECT

private slots:
    void aFrameIsPassedOnAsEthernet();
    void twoFramesInOneReadAreBothPassedOn();
    void framesCutAnywhereArePassedOn();
    void textIsPassedOnAndRefusedByTheDecoder();
    void linesOfTheGatewayAreNoFrames();
    void aReceiverOfTheBytesMayChangeThem();
    void lastBytesOfThePeerAreTakenBeforeItsEnd();
    void bytesThatComeAfterLeavingAreIgnored();
    void aReceiverOfTheBytesMayLeave();
    void aReceiverOfTheBytesMayConnectAgain();
    void aReceiverMayLeaveTheConnection();
    void aReceiverMayConnectAgain();
};

void TstTcpReception::aFrameIsPassedOnAsEthernet()
{
    QVERIFY(connectSocket());
    QVERIFY(deliver(deviceframes::largest()));
    QCOMPARE(m_frames, QByteArrayList{deviceframes::largest()});
    QCOMPARE(m_bytes, deviceframes::largest());
}

void TstTcpReception::twoFramesInOneReadAreBothPassedOn()
{
    QVERIFY(connectSocket());
    QVERIFY(deliver(deviceframes::five() + deviceframes::eight()));
    QCOMPARE(m_frames, (QByteArrayList{deviceframes::five(), deviceframes::eight()}));
}

void TstTcpReception::framesCutAnywhereArePassedOn()
{
    QVERIFY(connectSocket());
    const QByteArray frame = deviceframes::eight();
    for (int cut = 1; cut < frame.size(); ++cut) {
        m_frames.clear();
        QVERIFY(deliver(frame.left(cut)));
        QVERIFY(m_frames.isEmpty());
        QVERIFY(deliver(frame.mid(cut)));
        QCOMPARE(m_frames, QByteArrayList{frame});
    }
}

void TstTcpReception::textIsPassedOnAndRefusedByTheDecoder()
{
    QVERIFY(connectSocket());
    QVERIFY(deliver("#010_ON\r"));
    QCOMPARE(m_bytes, QByteArray("#010_ON\r"));
    QCOMPARE(m_log->lines().last(), QStringLiteral("Rx From VX Stat -1"));
    QVERIFY(m_frames.isEmpty());
    QVERIFY(m_sock->IsConnected());
}

void TstTcpReception::linesOfTheGatewayAreNoFrames()
{
    QVERIFY(connectSocket());
    QByteArray all;
    for (int i = 0; i < 10; ++i) {
        const QByteArray line = "#S;;V" + QByteArray::number(i) + ";2;" + QByteArray(i * 35, 'x') + "\r\n";
        QVERIFY(deliver(line));
        all += line;
    }
    QCOMPARE(m_bytes, all);
    QVERIFY(m_frames.isEmpty());
}

void TstTcpReception::aReceiverOfTheBytesMayChangeThem()
{
    connect(m_sock.get(), &TcpSock::messagePacket, this, [](QByteArray &bytes) { bytes.clear(); });
    QVERIFY(connectSocket());
    QVERIFY(deliver(deviceframes::five()));
    QCOMPARE(m_frames.size(), 1);
}

void TstTcpReception::lastBytesOfThePeerAreTakenBeforeItsEnd()
{
    QVERIFY(connectSocket());
    m_peer->write(deviceframes::five());
    m_peer->disconnectFromHost();
    QTRY_COMPARE(m_disconnects->count(), 1);
    QCOMPARE(m_frames.size(), 1);
}

void TstTcpReception::bytesThatComeAfterLeavingAreIgnored()
{
    QVERIFY(connectSocket());
    // More than the peer takes: the connection stays for a while after it was left.
    m_peer->setReadBufferSize(1);
    m_sock->Write(QByteArray(16 * 1024 * 1024, 'x'));
    m_sock->disconnectSocket();
    QCOMPARE(socket()->state(), QAbstractSocket::ClosingState);
    m_peer->write(deviceframes::eight());
    QVERIFY(m_peer->waitForBytesWritten(5000));
    QVERIFY(connectSocket());
    QVERIFY(deliver(deviceframes::five()));
    QCOMPARE(m_bytes, deviceframes::five());
    QCOMPARE(m_frames, QByteArrayList{deviceframes::five()});
}

void TstTcpReception::aReceiverOfTheBytesMayLeave()
{
    connect(m_sock.get(), &TcpSock::messagePacket, m_sock.get(), &TcpSock::disconnectSocket);
    QVERIFY(connectSocket());
    QVERIFY(deliver(deviceframes::five()));
    QVERIFY(m_frames.isEmpty());
    QVERIFY(!m_sock->IsConnected());
}

void TstTcpReception::aReceiverOfTheBytesMayConnectAgain()
{
    const auto reconnecting =
        connect(m_sock.get(), &TcpSock::messagePacket, this, [this] { QVERIFY(connectSocket()); });
    QVERIFY(connectSocket());
    QVERIFY(deliver(deviceframes::five() + deviceframes::eight().left(10)));
    disconnect(reconnecting);
    QVERIFY(m_sock->IsConnected());
    QVERIFY(m_frames.isEmpty()); // the frame came from the connection before
    QVERIFY(deliver(deviceframes::eight()));
    QCOMPARE(m_frames, QByteArrayList{deviceframes::eight()});
    QCOMPARE(m_disconnects->count(), 0);
}

void TstTcpReception::aReceiverMayLeaveTheConnection()
{
    connect(m_sock.get(), &TcpSock::Signal_RcvSerialDatagram, m_sock.get(), &TcpSock::disconnectSocket);
    QVERIFY(connectSocket());
    QVERIFY(deliver(deviceframes::five() + deviceframes::eight()));
    QCOMPARE(m_frames, QByteArrayList{deviceframes::five()});
    QVERIFY(!m_sock->IsConnected());
    QCOMPARE(m_disconnects->count(), 0);
}

void TstTcpReception::aReceiverMayConnectAgain()
{
    const auto reconnecting =
        connect(m_sock.get(), &TcpSock::Signal_RcvSerialDatagram, this, [this] { QVERIFY(connectSocket()); });
    QVERIFY(connectSocket());
    QVERIFY(deliver(deviceframes::five() + deviceframes::eight().left(10)));
    QCOMPARE(m_frames.size(), 1);
    disconnect(reconnecting);
    QVERIFY(m_sock->IsConnected());
    // The rest of the old read was dropped: a whole frame is understood at once.
    QVERIFY(deliver(deviceframes::eight()));
    QCOMPARE(m_frames, (QByteArrayList{deviceframes::five(), deviceframes::eight()}));
    QCOMPARE(m_disconnects->count(), 0);
}

QTEST_GUILESS_MAIN(TstTcpReception)
#include "tst_tcpreception.moc"
