#include "sim/gatewaysession.h"

#include "sim/connection.h"

#include "base/timesource.h"

#include <utility>

namespace sim {

GatewaySession::GatewaySession(Connection &connection, TimeSource &time, std::function<Milliseconds()> now)
    : QObject(&connection)
    , m_connection(connection)
    , m_now(std::move(now))
    , m_timer(time.createTimer(this))
{
    m_timer->setSingleShot(true);
    connect(m_timer, &Timer::timeout, this, [this] {
        m_reached = m_wakeAt;
        pump();
    });
    connect(&connection, &Connection::received, this, &GatewaySession::take);
    connect(&connection, &Connection::drained, this, &GatewaySession::goOn);
    connect(&connection, &Connection::closed, this, [this] {
        m_closeDue = this->now(); // nothing can be sent any more
        dropQueue();
    });
}

void GatewaySession::take(const QByteArray &bytes)
{
    for (const char byte : bytes) {
        if (m_closeDue)
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

bool GatewaySession::send(const QByteArray &text, const Dispatch &how)
{
    if (text.isEmpty())
        return true;
    if (m_closeDue || m_waiting > kMaximumWaiting)
        return false;
    const Cut cut = how.cut.value_or(Cut{text.size(), Milliseconds(0)});
    const Milliseconds due = qMax(now() + how.delay, m_lastDue + how.pause);
    m_lastDue = due + cut.gap * ((text.size() - 1) / cut.size);
    m_waiting += text.size();
    m_outgoing.push_back({text, cut, due, 0, qMin(cut.size, text.size())});
    pump();
    return true;
}

void GatewaySession::close(Milliseconds delay)
{
    if (m_closeDue)
        return;
    m_closeDue = qMax(now() + delay, m_lastDue);
    pump();
}

void GatewaySession::pump()
{
    if (m_timer->isActive())
        return;
    m_isBlocked = false;
    const bool isOver = m_closeDue && *m_closeDue <= now();
    if (isOver && m_outgoing.empty()) {
        end();
        return;
    }
    if (!m_outgoing.empty() && m_outgoing.front().due <= now())
        m_isBlocked = !sendPiece();
    if (isOver && m_isBlocked)
        end();
    else
        schedule();
}

/// False if the peer has to take something before the piece is through.
bool GatewaySession::sendPiece()
{
    bool isThrough = false;
    while (!isThrough && !m_outgoing.empty()) {
        Outgoing &item = m_outgoing.front();
        // The last part is not a small one, so that an answer behind a flood is written at a stroke.
        const int left = item.pieceEnd - item.sent;
        const int size = left < 2 * kPart ? left : kPart;
        if (m_connection.room() < size)
            return false;
        const QByteArray part = item.text.mid(item.sent, size);
        item.sent += size;
        m_waiting -= size;
        isThrough = item.sent == item.pieceEnd;
        if (isThrough)
            goToNextPiece();
        m_connection.send(part); // may find the peer gone, which empties the queue
    }
    return true;
}

void GatewaySession::goToNextPiece()
{
    Outgoing &item = m_outgoing.front();
    item.due += item.cut.gap;
    item.pieceEnd += qMin(item.cut.size, item.text.size() - item.sent);
    if (item.sent == item.text.size())
        m_outgoing.pop_front();
}

void GatewaySession::goOn()
{
    if (!m_isBlocked)
        return;
    m_timer->stop();
    pump();
}

void GatewaySession::schedule()
{
    const bool waitsForTheEnd = m_isBlocked || m_outgoing.empty();
    if (waitsForTheEnd && !m_closeDue)
        return;
    m_wakeAt = waitsForTheEnd ? *m_closeDue : m_outgoing.front().due;
    m_timer->start(qMax(Milliseconds(0), m_wakeAt - now()));
}

void GatewaySession::end()
{
    dropQueue();
    m_connection.close(Milliseconds(0));
}

void GatewaySession::dropQueue()
{
    m_timer->stop();
    m_isBlocked = false;
    m_outgoing.clear();
    const int byteCount = std::exchange(m_waiting, 0);
    if (byteCount > 0)
        emit lost(byteCount);
}

} // namespace sim
