#include "sim/gatewaysession.h"

#include "sim/connection.h"

#include "base/timesource.h"

namespace sim {

GatewaySession::GatewaySession(Connection &connection, TimeSource &time, std::function<Milliseconds()> now)
    : QObject(&connection)
    , m_connection(connection)
    , m_now(std::move(now))
    , m_timer(time.createTimer(this))
{
    m_timer->setSingleShot(true);
    connect(m_timer, &Timer::timeout, this, [this] {
        m_reached = m_outgoing.front().due;
        pump();
    });
    connect(&connection, &Connection::received, this, &GatewaySession::take);
}

void GatewaySession::take(const QByteArray &bytes)
{
    for (const char byte : bytes) {
        if (m_isClosing)
            return;
        if (byte == '\r') {
            endLine();
        } else if (byte == '\n') {
            m_hasLineFeed = true;
        } else if (!m_isTooLong) {
            m_line.append(byte);
            m_isTooLong = m_line.size() > kLongestLine;
        }
    }
}

void GatewaySession::endLine()
{
    const QByteArray line = std::exchange(m_line, QByteArray());
    const bool isTooLong = std::exchange(m_isTooLong, false);
    const bool hasLineFeed = std::exchange(m_hasLineFeed, false);
    if (isTooLong)
        emit lineRefused(QStringLiteral("the line is too long"));
    else if (hasLineFeed)
        emit lineRefused(QStringLiteral("the line has an LF"));
    else
        emit lineReceived(line);
}

void GatewaySession::send(const QByteArray &bytes, Milliseconds delay, const Cut &cut)
{
    Milliseconds due = now() + delay;
    for (int at = 0; at < bytes.size(); at += cut.size) {
        enqueue(bytes.mid(at, cut.size), due, false);
        due = m_lastDue + cut.gap;
    }
    pump();
}

void GatewaySession::close(Milliseconds delay)
{
    m_isClosing = true;
    enqueue({}, now() + delay, true);
    pump();
}

void GatewaySession::enqueue(const QByteArray &bytes, Milliseconds due, bool closes)
{
    m_lastDue = qMax(m_lastDue, due);
    m_outgoing.push_back({bytes, m_lastDue, closes});
}

void GatewaySession::pump()
{
    if (m_timer->isActive())
        return;
    if (!m_outgoing.empty() && m_outgoing.front().due <= now()) {
        const Outgoing next = m_outgoing.front();
        m_outgoing.pop_front();
        if (next.closes) {
            m_outgoing.clear();
            m_connection.close(Milliseconds(0));
            return;
        }
        m_connection.send(next.bytes);
    }
    schedule();
}

void GatewaySession::schedule()
{
    if (!m_outgoing.empty())
        m_timer->start(qMax(Milliseconds(0), m_outgoing.front().due - now()));
}

} // namespace sim
