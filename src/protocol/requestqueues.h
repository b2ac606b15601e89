#pragma once

#include "protocol/commandpacking.h"

#include <QByteArray>
#include <QList>
#include <QVariant>
#include <optional>

/// A module whose static status is to be fetched.
struct ModuleRequest
{
    quint8 address = 0;
    quint8 retries = 0;
    quint8 cycles = 0; ///< turns of the cycle that it has waited
};

/// What the cycle is to send now.
struct QueuedRequest
{
    enum class Kind {
        Payload,       ///< `payload` as it is
        SystemRefresh, ///< a new system status; the session builds the request
    };
    Kind kind = Kind::Payload;
    QByteArray payload;
    const char *sentText = nullptr; ///< line of the log once it is sent, if any
};

/// Work that waits for its turn on the link, and the order in which it gets it. Sends nothing.
class RequestQueues
{
public:
    bool hasFirmwareCommands() const { return !m_firmwareCommands.isEmpty(); }
    bool isSystemStatusWanted() const { return m_systemStatusRefresh; }

    void addChannelRequest(const QVariant &request) { m_channelRequests.append(request); }
    void addSystemCommand(const SystemCommand &command) { m_systemCommands.append(command); }
    void addModuleRequest(quint8 address) { m_moduleRequests.append({address}); }
    void addFirmwareCommand(const QVariant &command) { m_firmwareCommands.append(command); }

    /// Flags, not queues: a clean slate leaves them alone.
    void setSystemStatusWanted(bool wanted) { m_systemStatusRefresh = wanted; }
    void setSystemResetPending() { m_systemResetPending = true; }

    /// Empties the four queues.
    void clear();
    void clearFirmwareCommands() { m_firmwareCommands.clear(); }

    /// The one thing to send in this turn, in the order channel requests, system commands, module status
    /// requests, refresh, reset; nothing if there is no work. What is returned is taken out of its queue,
    /// except the refresh, which stays wanted until its reply. A channel request that packs to nothing, or
    /// to more than a frame holds, is taken out too, and the choice goes on to the next kind of work.
    std::optional<QueuedRequest> takeNext();

    /// The first firmware command, which is taken out; nothing if it was no firmware command or is too long
    /// for a frame. The queue must not be empty.
    std::optional<QueuedRequest> takeFirmwareCommand();

    /// Takes out the first module request for this address, if there is one.
    void removeModuleRequest(quint8 address);

    /// What becomes of module requests that wait too long.
    struct Overdue
    {
        enum class Verdict {
            Empty,   ///< nothing waits
            Waiting, ///< nothing waits too long
            Retry,   ///< ask `address` once more
            GiveUp,  ///< asked again before: the session must start over
        };
        Verdict verdict = Verdict::Empty;
        quint8 address = 0;
    };

    /// Counts one turn for the waiting module requests, up to the first that waits too long.
    Overdue countTurn();

private:
    std::optional<QueuedRequest> takeChannelRequest();

    QList<ModuleRequest> m_moduleRequests;
    QList<QVariant> m_channelRequests;
    QList<QVariant> m_firmwareCommands; ///< FPGAfwCommand values
    QList<SystemCommand> m_systemCommands;
    bool m_systemStatusRefresh = false;
    bool m_systemResetPending = false;
};
