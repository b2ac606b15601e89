#pragma once

#include "sim/chain.h"

#include <functional>

namespace sim {

struct Reception;

/// What a payload says, in words; for the log.
QString describeRequest(const QByteArray &payload);
QString describeReply(const QByteArray &payload);

/// Writes what goes over the links in clear text, one line each: time in s, connection, direction, and the
/// meaning and hexadecimal bytes of a frame or the characters of a text.
class FrameLog
{
public:
    enum class Fate {
        Sent, ///< the reply begins on the line
        Lost  ///< a fault took it away
    };

    using Sink = std::function<void(const QString &line)>;

    /// Without a sink nothing is written and nothing is put together.
    void setSink(Sink sink) { m_sink = std::move(sink); }

    void request(Milliseconds now, const QString &connection, const Reception &reception) const;
    void reply(Milliseconds now, const QString &connection, const QByteArray &payload,
               const QByteArray &frame, Fate fate) const;
    /// Bytes of a line protocol; control characters are written as escapes, of a long text the beginning.
    void receivedText(Milliseconds now, const QString &connection, const QByteArray &bytes) const;
    void sentText(Milliseconds now, const QString &connection, const QByteArray &bytes, Fate fate) const;
    void note(Milliseconds now, const QString &connection, const QString &text) const;

private:
    void write(Milliseconds now, const QString &connection, const QString &text) const;

    Sink m_sink;
};

} // namespace sim
