#pragma once

#include "sim/chain.h"
#include "sim/fpgaimages.h"
#include "sim/livevalues.h"

namespace sim {

/// What the device does with one request payload.
struct Answer
{
    enum class Verdict {
        Reply,  ///< `payload` goes back
        Silent, ///< well formed, but nobody answers: a status request for an address without a module
        Refused ///< not a form that the device knows; no answer
    };

    Verdict verdict = Verdict::Refused;
    QByteArray payload;
    QString note;                  ///< what was done or why nothing was, for the log
    bool carriesResetFlag = false; ///< this reply has spent the flag that a reset raised
};

/// The chain as it behaves: request payloads in, reply payloads out, with the time given from outside. It
/// knows nothing of frames, links and clocks. Times must not run backwards.
class Device
{
public:
    Device(const Chain &description, quint32 seed);

    /// The reply shows the state after the request, with what is played over it.
    Answer answer(const QByteArray &payload, Milliseconds now, const PlayedPower &played = {});

    /// The present state; tests may also change it.
    Chain &chain() { return m_chain; }
    const Chain &chain() const { return m_chain; }
    const LiveValues &live() const { return m_live; }
    /// What was flashed; outlasts a reset.
    FpgaImages &images() { return m_images; }
    const FpgaImages &images() const { return m_images; }

    /// Back to the description, as after a reboot; the next reply carries the reset flag if the chain
    /// says so. The reset command does the same after its own reply.
    void reset();
    /// The next reply asks for a new start of the session; also for a reply that was lost with the flag.
    void raiseResetFlag() { m_resetFlag = true; }
    int resetCount() const { return m_resetCount; }

private:
    /// A request with all that its answer depends on besides the state.
    struct Request
    {
        const QByteArray &payload;
        Milliseconds now;
        const PlayedPower &played;
    };

    Answer dispatch(const Request &request);
    Answer statusReply(const Request &request);
    Answer channelCommand(const Request &request);
    Answer textCommand(const Request &request);
    Answer systemCommand(const Request &request);
    Answer fpgaCommand(const Request &request);
    Answer acknowledge(const QString &note, const Request &request) const;
    Chain shownChain(const PlayedPower &played) const;

    const Chain m_description;
    Chain m_chain;
    LiveValues m_live;
    FpgaImages m_images;
    bool m_resetFlag = false;
    int m_resetCount = 0;
};

} // namespace sim
