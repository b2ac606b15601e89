#pragma once

#include "sim/faults.h"

#include <QByteArray>
#include <QObject>

#include <deque>
#include <functional>

class Timer;
class TimeSource;

namespace sim {

class Connection;

/// The line to one peer of a gateway: puts lines together and sends texts in their order. Child of the
/// connection.
class GatewaySession : public QObject
{
    Q_OBJECT

public:
    /// A longer line is refused as a whole.
    static constexpr int kLongestLine = 4096;

    /// `now` gives the time since the start; it and `time` must outlive the session.
    GatewaySession(Connection &connection, TimeSource &time, std::function<Milliseconds()> now);

    Connection &connection() const { return m_connection; }

    /// Sends behind all that was queued before, `delay` from now at the earliest. Each piece is written in a
    /// turn of the event loop of its own, so that it can arrive by itself.
    void send(const QByteArray &bytes, Milliseconds delay, const Cut &cut);
    /// Ends the connection behind all that was queued before. Lines that come from now on are not taken.
    void close(Milliseconds delay);

signals:
    /// A line without the CR that closed it.
    void lineReceived(const QByteArray &line);
    void lineRefused(const QString &reason);

private:
    struct Outgoing
    {
        QByteArray bytes;
        Milliseconds due{0};
        bool closes = false;
    };

    void take(const QByteArray &bytes);
    void endLine();
    Milliseconds now() const { return qMax(m_now(), m_reached); }
    void enqueue(const QByteArray &bytes, Milliseconds due, bool closes);
    void pump();
    void schedule();

    Connection &m_connection;
    const std::function<Milliseconds()> m_now;
    Timer *m_timer;
    QByteArray m_line;
    bool m_isTooLong = false;
    bool m_hasLineFeed = false;
    bool m_isClosing = false;
    std::deque<Outgoing> m_outgoing;
    Milliseconds m_lastDue{0};
    Milliseconds m_reached{0}; ///< by the timer, where the clock stands still
};

} // namespace sim
