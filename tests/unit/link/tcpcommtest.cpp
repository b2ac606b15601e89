#include "tcpcommtest.h"

void TcpCommTest::init()
{
    m_time = std::make_unique<VirtualTime>();
    m_log = std::make_unique<MessageCatcher>();
    makeLink();
}

void TcpCommTest::cleanup()
{
    m_connects.reset();
    m_disconnects.reset();
    m_link.reset();
    m_log.reset();
    m_time.reset();
}

void TcpCommTest::makeLink(std::chrono::milliseconds period)
{
    auto socket = std::make_unique<FakeTcpSock>(*m_time);
    m_sock = socket.get();
    m_link = std::make_unique<TcpComm>(*m_time, std::move(socket), nullptr, period);
    m_connects = std::make_unique<QSignalSpy>(m_link.get(), &TcpComm::TcpConnected);
    m_disconnects = std::make_unique<QSignalSpy>(m_link.get(), &TcpComm::TcpDisconnectd);
    m_bytes.clear();
    connect(m_link.get(), &TcpComm::messagePacket, this, [this](QByteArray &bytes) { m_bytes << bytes; });
}

void TcpCommTest::connectTo(const char *address, const char *port)
{
    m_link->Slot_connectToGateway(QString::fromLatin1(address), QString::fromLatin1(port));
}
