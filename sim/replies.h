#pragma once

#include "sim/chain.h"
#include "sim/livevalues.h"

namespace sim {

/// Writes the payloads of the replies from the state of a chain at one moment.
class Replies
{
public:
    Replies(const Chain &chain, const LiveValues &live, Milliseconds now)
        : m_chain(chain)
        , m_live(live)
        , m_now(now)
    {}

    /// 16 bytes with any code; the whole reply to a command or a fast system status request.
    QByteArray head(quint8 code) const;
    QByteArray systemStatus() const;
    /// 1186 bytes: 130 entries of 9 bytes.
    QByteArray fastModuleStatus() const;
    /// 564 bytes for the controller and the analog modules, 100 for the power module. Empty if nobody has
    /// the address.
    QByteArray staticStatus(quint8 address) const;

private:
    QByteArray controllerStatus() const;
    QByteArray powerStatus() const;
    QByteArray analogStatus(int address) const;
    QByteArray fastEntry(int address, const Health &health) const;
    QByteArray analogFastEntry(int address) const;

    const Chain &m_chain;
    const LiveValues &m_live;
    Milliseconds m_now;
};

} // namespace sim
