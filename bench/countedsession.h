#pragma once

#include "base/timesource.h"
#include "link/portdirectory.h"
#include "link/serialcomm.h"
#include "link/tcpsock.h"
#include "protocol/commlinks.h"
#include "protocol/communication.h"
#include "simulatedchain.h"

/// A session with a simulated chain over TCP that counts the bytes of both directions.
class CountedSession
{
public:
    explicit CountedSession(const SimulatedChain &chain)
        : m_communication(m_time, links())
    {
        m_settings.ipAddress = QStringLiteral("127.0.0.1");
        m_settings.tcpPort = QString::number(chain.port());
        m_settings.commType = Comm_Type::Ethernet;
    }

    Communication &communication() { return m_communication; }
    bool open() { return m_communication.OpenCommunicationChannel(m_settings); }

    qint64 bytes = 0;

private:
    class CountingSock final : public TcpSock
    {
    public:
        CountingSock(TimeSource &time, qint64 &count)
            : TcpSock(time)
            , m_count(count)
        {
            connect(this, &TcpSock::messagePacket, this,
                    [this](QByteArray &packet) { m_count += packet.size(); });
        }

        void Write(const QByteArray &frame) override
        {
            m_count += frame.size();
            TcpSock::Write(frame);
        }

    private:
        qint64 &m_count;
    };

    CommLinks links()
    {
        CommLinks links;
        links.serial = std::make_unique<SerialComm>(m_time, PortDirectory(QString()));
        links.tcp = std::make_unique<CountingSock>(m_time, bytes);
        return links;
    }

    SystemTime m_time;
    model_Namespace::Settings m_settings;
    Communication m_communication;
};
