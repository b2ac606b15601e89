#pragma once

#include "link/tcpsock.h"

/// Counts the bytes of both directions.
class CountingSock final : public TcpSock
{
public:
    CountingSock(TimeSource &time, qint64 &count)
        : TcpSock(time)
        , m_count(count)
    {
        connect(this, &TcpSock::messagePacket, this, [this](QByteArray &bytes) { m_count += bytes.size(); });
    }

    void Write(const QByteArray &frame) override
    {
        m_count += frame.size();
        TcpSock::Write(frame);
    }

private:
    qint64 &m_count;
};
