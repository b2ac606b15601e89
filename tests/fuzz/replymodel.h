#pragma once

#include "protocol/sessionstate.h"

#include <QByteArray>
#include <QVariant>
#include <QVector>

/// What the session must make of a reply, read from the payload without the program's own readers.
namespace replymodel {

/// What a session tells while it takes a reply.
enum class Event {
    DebugMsg,
    CleanSlate,
    FastSystemStatus,
    SystemStatus,
    SamplingNBitRate,
    FastModuleStatus,
    StaticModuleStatus,
    StaticPowerStatus,
    ModuleRead,
    StateInitialized,
    RcvPayload,
    Count
};

using Events = QVector<Event>;

/// Follows one session by what is told of it and by its replies.
class Session
{
public:
    /// Tells what must be emitted for the reply, in order, and follows it.
    Events take(const QByteArray &payload, SessionState state);

    /// The state behind that reply.
    SessionState state() const { return m_state; }

    void cleanSlate();
    void wantRates() { m_wantsRates = true; }
    bool wantsRates() const { return m_wantsRates; }

private:
    Events takeSystemStatus(const QByteArray &payload);
    Events takeStaticStatus(const QByteArray &payload);
    Event walk(int type);

    SessionState m_state = SessionState::SystemStatusAwaited;
    bool m_isSystemKnown = false;
    bool m_wantsRates = false; ///< survives a clean slate
    bool m_hasPower = false;
    int m_next = 0;
    int m_count = 0;
};

/// Whether the record that was emitted says what the payload holds.
bool isRead(Event event, const QVariant &record, const QByteArray &payload);

} // namespace replymodel
