#pragma once

#include "sim/gatewaystate.h"
#include "sim/livevalues.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace sim {

/// What the gateway does with one line.
struct GatewayAnswer
{
    enum class Then {
        Stay,
        Move,    ///< it is found at the address of its state from now on
        Restart, ///< the application ends and comes back
        Reboot   ///< the whole box does
    };

    QByteArray text; ///< to be sent; empty: nothing
    QString note;    ///< what was done or why nothing was, for the log
    Then then = Then::Stay;
};

/// The gateway as it behaves: lines in, texts out, with the time given from outside. It knows nothing of
/// sockets and clocks. Times must not run backwards.
///
/// It greets with its prompt. "#?" is answered by the status line alone, an empty line by the prompt, a new
/// address by a line that tells it. No other command is answered, obeyed or not: a prompt behind each would
/// make the program ask for the status each time. A line that it does not know, or whose value is out of
/// range, changes nothing.
class Gateway
{
public:
    static constexpr int kStatusFields = 41;

    explicit Gateway(const GatewayState &description = {}, quint32 seed = 1);

    /// What a new connection gets.
    static QByteArray prompt();

    /// `line` is without its CR. `chain` is the present data rate of the chain before the gateway, if there
    /// is one: the status tells whether the gateway is set to it.
    GatewayAnswer take(const QByteArray &line, Milliseconds now, const std::optional<DataRate> &chain = {});

    /// One line with its CR and LF.
    QByteArray statusLine(Milliseconds now, const std::optional<DataRate> &chain = {}) const;

    /// A new start: settings stay.
    void restart();
    void reboot(Milliseconds now);

    /// The present state; tests may also change it.
    GatewayState &state() { return m_state; }
    const GatewayState &state() const { return m_state; }

private:
    GatewayAnswer changeAddress(const QByteArray &text);
    qint64 unixSeconds(Milliseconds now) const;

    GatewayState m_state;
    LiveValues m_live;
};

} // namespace sim
