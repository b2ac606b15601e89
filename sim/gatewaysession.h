#pragma once

#include "sim/faults.h"

#include <QByteArray>
#include <QObject>

#include <deque>
#include <functional>
#include <optional>

class Timer;
class TimeSource;

namespace sim {

class Connection;

/// When a text goes out, and in which pieces.
struct Dispatch
{
    Milliseconds delay{0};  ///< from now, at the least
    Milliseconds pause{0};  ///< behind what was queued before, at the least
    std::optional<Cut> cut; ///< without it in one piece
};

/// The line to one peer of a gateway: puts lines together and sends texts in their order. Child of the
/// connection.
class GatewaySession : public QObject
{
    Q_OBJECT

public:
    /// A longer line is refused as a whole.
    static constexpr int kLongestLine = 4096;
    /// A text is lost if more than this waits before it.
    static constexpr int kMaximumWaiting = 1 << 20;
    /// A long piece is written in parts of so many bytes, as the peer takes them.
    static constexpr int kPart = 1 << 16;

    /// `now` gives the time since the start; it and `time` must outlive the session.
    GatewaySession(Connection &connection, TimeSource &time, std::function<Milliseconds()> now);

    Connection &connection() const { return m_connection; }
    /// Texts that are not through, each kept whole however it is cut.
    int waitingTexts() const { return static_cast<int>(m_outgoing.size()); }

    /// Sends behind all that was queued before. Each piece is written in a turn of the event loop of its own,
    /// so that it can arrive by itself. False if the text is lost.
    [[nodiscard]] bool send(const QByteArray &text, const Dispatch &how);
    /// Ends the connection behind all that was queued before. It does not wait for a peer that takes nothing
    /// more. Lines that come from now on are not taken.
    void close(Milliseconds delay);

signals:
    /// A line without the CR that closed it.
    void lineReceived(const QByteArray &line);
    void lineRefused(const QString &reason);
    /// Bytes that were queued will not be sent any more.
    void lost(int byteCount);

private:
    struct Outgoing
    {
        QByteArray text;
        Cut cut;
        Milliseconds due{0}; ///< of the next piece
        int sent = 0;
        int pieceEnd = 0; ///< of the next piece
    };

    void take(const QByteArray &bytes);
    void endLine();
    Milliseconds now() const { return qMax(m_now(), m_reached); }
    void pump();
    bool sendPiece();
    void goToNextPiece();
    void goOn();
    void schedule();
    void end();
    void dropQueue();

    Connection &m_connection;
    const std::function<Milliseconds()> m_now;
    Timer *m_timer;
    QByteArray m_line;
    bool m_isTooLong = false;
    bool m_hasLineFeed = false;
    std::deque<Outgoing> m_outgoing;
    int m_waiting = 0;        ///< bytes in m_outgoing
    bool m_isBlocked = false; ///< the peer has to take something first
    std::optional<Milliseconds> m_closeDue;
    Milliseconds m_lastDue{0};
    Milliseconds m_wakeAt{0};
    Milliseconds m_reached{0}; ///< by the timer, where the clock stands still
};

} // namespace sim
