#pragma once

#include "sim/framecodec.h"

#include <QList>
#include <QObject>

#include <chrono>
#include <functional>
#include <optional>

class Timer;
class TimeSource;

namespace sim {

class Connection;

/// The line to one peer: turns its bytes into requests and sends replies, both at the pace of a serial
/// line. A byte is on the line for 1 / pace s; requests that arrive faster are taken as if they came at the
/// pace. Starts and ends of frames are kept as points in time of their own, apart from the moments at which
/// the timer happens to fire, so that the wire time of many frames does not drift.
class Session : public QObject
{
    Q_OBJECT

public:
    /// `now` gives the nanoseconds since the start. Both must outlive the session. A pace of 0 is no limit.
    Session(Connection &connection, TimeSource &time, std::function<qint64()> now, int bytesPerSecond,
            QObject *parent);

    /// Bytes for the peer. `started` is called with the time at which the first of them begins on the line,
    /// `finished` when the last one is out; neither if the connection ends before.
    struct Piece
    {
        QByteArray bytes;
        qint64 gapNs = 0; ///< pause behind what was queued before
        std::function<void(qint64 startNs)> started;
        std::function<void()> finished;
    };

    /// Queues bytes behind everything that was queued before, not before `earliestNs`.
    void send(const Piece &piece, qint64 earliestNs);
    enum class End { Close, Reset };
    /// Ends the connection when all that was queued before is out.
    void endAt(qint64 earliestNs, End end, std::chrono::milliseconds absence);

    Connection &connection() const { return m_connection; }
    /// When the last reply byte queued so far will be out, and the last byte received so far in.
    qint64 outFreeNs() const { return m_outFreeNs; }
    qint64 inFreeNs() const { return m_inFreeNs; }

signals:
    /// A request, or bytes that were refused, whose last byte has arrived by the pace.
    void arrived(const sim::Reception &reception);

private:
    struct Outgoing
    {
        Piece piece;
        qint64 startNs = 0;
        int sent = 0;
        std::optional<End> end;
        std::chrono::milliseconds absence{0}; ///< behind the end
    };

    void take(const QByteArray &bytes);
    void run();
    bool step();
    bool pump(Outgoing *item, qint64 nowNs);
    void schedule();
    qint64 wireNs(int byteCount) const;
    qint64 nextByteNs(const Outgoing &item) const;

    Connection &m_connection;
    const std::function<qint64()> m_now;
    const int m_bytesPerSecond;
    Timer *m_timer;
    RequestReceiver m_receiver;
    QList<Reception> m_arriving;
    QList<Outgoing> m_outgoing;
    qint64 m_inFreeNs = 0;
    qint64 m_outFreeNs = 0;
    qint64 m_latenessNs = 0; ///< of the timer at the end of the last reply, which was at
    qint64 m_repliedNs = 0;
    bool m_running = false;
};

} // namespace sim
