#include "support/fakelinks.h"

namespace {

QByteArray payloadOf(const QByteArray &frame)
{
    constexpr int kHeader = 20;
    constexpr int kTrailer = 2;
    return frame.mid(kHeader, frame.size() - kHeader - kTrailer);
}

} // namespace

QByteArrayList FakeWire::takePayloads()
{
    QByteArrayList payloads;
    for (const QByteArray &frame : qAsConst(frames))
        payloads.append(payloadOf(frame));
    frames.clear();
    return payloads;
}

void FakeWire::reply(const QByteArray &payload)
{
    m_received = device::frame(payload);
    deliver(m_received);
    m_received.clear();
}

void FakeWire::take(const QByteArray &frame)
{
    frames.append(frame);
    if (!script)
        return;
    const int opening = m_opening;
    const auto answers = script(payloadOf(frame));
    for (const QByteArray &answer : answers) {
        const auto answerLater = [this, answer, opening] {
            if (opening == m_opening)
                reply(answer);
        };
        QMetaObject::invokeMethod(link(), answerLater, Qt::QueuedConnection);
    }
}

void FakeWire::dropReceived()
{
    ++m_opening;
    m_received.clear();
}

FakeSerialComm::FakeSerialComm(TimeSource &time, const PortDirectory &ports)
    : SerialComm(time, ports)
{}

bool FakeSerialComm::Open()
{
    calls.append(QStringLiteral("open"));
    m_open = opens;
    if (!opens)
        emit retryPort();
    return opens;
}

void FakeSerialComm::Close()
{
    calls.append(QStringLiteral("close"));
    m_open = false;
    dropReceived();
}

void FakeSerialComm::Write(const QByteArray &frame)
{
    if (lost && !m_open)
        return;
    if (lost || !m_open) {
        emit retryPort();
        return;
    }
    take(frame);
    emit dataWritten();
}

void FakeSerialComm::deliver(QByteArray &frame)
{
    emit Signal_RcvSerialDatagram(Comm_Type::Serial, frame);
}

FakeTcpSock::FakeTcpSock(TimeSource &time)
    : TcpSock(time)
{}

FakeTcpSock::~FakeTcpSock()
{
    if (m_connected)
        emit TcpDisconnectd();
}

void FakeTcpSock::Write(const QByteArray &frame)
{
    if (!m_socketUp)
        return;
    take(frame);
    emit dataWritten();
}

bool FakeTcpSock::connectToServer(QString ipAddr, QString portText)
{
    calls.append(QStringLiteral("connect"));
    address = ipAddr;
    port = portText;
    m_connected = false;
    m_socketUp = connects;
    dropReceived();
    if (!m_socketUp) {
        emit TcpDisconnectd();
        return false;
    }
    emit TcpConnected();
    m_connected = m_socketUp; // a receiver may have left the connection again
    return m_connected;
}

void FakeTcpSock::disconnectSocket()
{
    calls.append(QStringLiteral("disconnect"));
    m_connected = false;
    m_socketUp = false;
    dropReceived();
}

void FakeTcpSock::drop()
{
    m_socketUp = false;
    dropReceived();
    if (!m_connected)
        return;
    emit TcpDisconnectd();
    m_connected = m_socketUp; // a receiver may have connected again
}

void FakeTcpSock::deliver(QByteArray &frame)
{
    emit Signal_RcvSerialDatagram(Comm_Type::Ethernet, frame);
}
