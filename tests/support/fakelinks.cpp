#include "support/fakelinks.h"

QByteArrayList FakeWire::takePayloads()
{
    constexpr int kHeader = 20;
    constexpr int kTrailer = 2;
    QByteArrayList payloads;
    for (const QByteArray &frame : qAsConst(frames))
        payloads.append(frame.mid(kHeader, frame.size() - kHeader - kTrailer));
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
    const QByteArray request = frame.mid(20, frame.size() - 22);
    const int opening = m_opening;
    const auto answers = script(request);
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
    if (!m_open || lost) {
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
    if (m_up)
        emit TcpDisconnectd();
}

void FakeTcpSock::Write(const QByteArray &frame)
{
    if (!m_up)
        return;
    take(frame);
    emit dataWritten();
}

bool FakeTcpSock::connectToServer(QString ipAddr, QString portText)
{
    calls.append(QStringLiteral("connect"));
    address = ipAddr;
    port = portText;
    m_up = connects;
    dropReceived();
    if (connects)
        emit TcpConnected();
    else
        emit TcpDisconnectd();
    return connects;
}

void FakeTcpSock::disconnectSocket()
{
    calls.append(QStringLiteral("disconnect"));
    m_up = false;
    dropReceived();
}

void FakeTcpSock::drop()
{
    m_up = false;
    dropReceived();
    emit TcpDisconnectd();
}

void FakeTcpSock::deliver(QByteArray &frame)
{
    emit Signal_RcvSerialDatagram(Comm_Type::Ethernet, frame);
}
