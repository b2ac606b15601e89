#include "protocol/requestqueues.h"

#include "base/variantcast.h"
#include "link/frameformat.h"
#include "protocol/records/datagrams.h"
#include "protocol/records/fpgafwcommand.h"

#include <QDebug>
#include <algorithm>

namespace {

constexpr quint8 kLongestWait = 5; ///< turns of the cycle
constexpr quint8 kRetryLimit = 2;

constexpr char kResetSent[] = "System Reset request Sent";

/// The payload if a frame can hold it. A text or data of the caller may be too long for that.
std::optional<QByteArray> fitting(std::optional<QByteArray> payload)
{
    if (!payload || payload->size() <= frame::kMaxPayload)
        return payload;
    qCritical() << "Request dropped, its payload is too long for a frame:" << payload->size() << "bytes";
    return std::nullopt;
}

} // namespace

void RequestQueues::clear()
{
    m_moduleRequests.clear();
    m_channelRequests.clear();
    m_firmwareCommands.clear();
    m_systemCommands.clear();
}

std::optional<QueuedRequest> RequestQueues::takeNext()
{
    using Kind = QueuedRequest::Kind;
    if (const auto request = takeChannelRequest())
        return request;
    if (!m_systemCommands.isEmpty())
        return QueuedRequest{Kind::Payload, command::packSystemCommand(m_systemCommands.takeFirst()),
                             "System Settings request Sent"};
    if (!m_moduleRequests.isEmpty())
        return QueuedRequest{Kind::Payload, command::packModuleRequest(m_moduleRequests.takeFirst().address)};
    if (m_systemStatusRefresh)
        return QueuedRequest{Kind::SystemRefresh, {}};
    if (m_systemResetPending) {
        m_systemResetPending = false;
        return QueuedRequest{Kind::Payload, command::packSystemReset(), kResetSent};
    }
    return std::nullopt;
}

std::optional<QueuedRequest> RequestQueues::takeChannelRequest()
{
    if (m_channelRequests.isEmpty())
        return std::nullopt;
    const QVariant request = m_channelRequests.takeFirst();
    const auto payload = fitting(command::packChannelRequest(request));
    if (!payload)
        return std::nullopt;
    const bool isType2 = request.userType() == qMetaTypeId<DatagramT2>();
    return QueuedRequest{QueuedRequest::Kind::Payload, *payload,
                         isType2 ? "ModuleType2 request Sent" : nullptr};
}

std::optional<QueuedRequest> RequestQueues::takeFirmwareCommand()
{
    const QVariant first = m_firmwareCommands.takeFirst();
    if (!first.canConvert<FPGAfwCommand>()) {
        qDebug() << "Unknown Request being packed";
        return std::nullopt;
    }
    const auto command = recordFromVariant<FPGAfwCommand>(first);
    const auto payload = fitting(command::packFpgaCommand(command));
    if (!payload)
        return std::nullopt;
    const bool isReset = command.b3 == static_cast<quint8>(FpgaCommandCode::Reset);
    return QueuedRequest{QueuedRequest::Kind::Payload, *payload, isReset ? kResetSent : nullptr};
}

void RequestQueues::removeModuleRequest(quint8 address)
{
    const auto found = std::find_if(m_moduleRequests.begin(), m_moduleRequests.end(),
                                    [address](const ModuleRequest &r) { return r.address == address; });
    if (found != m_moduleRequests.end())
        m_moduleRequests.erase(found);
}

RequestQueues::Overdue RequestQueues::countTurn()
{
    using Verdict = Overdue::Verdict;
    if (m_moduleRequests.isEmpty())
        return {Verdict::Empty};
    for (ModuleRequest &request : m_moduleRequests) {
        if (++request.cycles <= kLongestWait)
            continue;
        if (++request.retries >= kRetryLimit)
            return {Verdict::GiveUp, request.address};
        request.cycles = 0;
        return {Verdict::Retry, request.address};
    }
    return {Verdict::Waiting};
}
