#include "sim/device.h"

#include "sim/bytes.h"
#include "sim/commands.h"
#include "sim/payloadlayout.h"
#include "sim/replies.h"

namespace sim {

namespace {

constexpr int kStatusRequestSize = 5;
constexpr int kChannelCommandSize = 6;
constexpr int kSmallestTextCommand = 6;
constexpr int kSystemCommandSize = 7;
constexpr int kPowerCommandSize = 8;
constexpr int kSystemStatusArgument = 1;

Answer refused(const QString &why)
{
    return {Answer::Verdict::Refused, {}, why, false};
}

Answer badForm(const QByteArray &payload)
{
    return refused(
        QStringLiteral("no such form of %1, %2 bytes").arg(hexCode(u8At(payload, 0))).arg(payload.size()));
}

Answer replied(const QByteArray &payload, const QString &note = {})
{
    return {Answer::Verdict::Reply, payload, note, false};
}

bool zerosFollowCode(const QByteArray &payload)
{
    return u8At(payload, 1) == 0 && u8At(payload, 2) == 0 && u8At(payload, 3) == 0;
}

bool hasForm(const QByteArray &payload, int size)
{
    return payload.size() == size && zerosFollowCode(payload);
}

} // namespace

Device::Device(const Chain &description, quint32 seed)
    : m_description(description)
    , m_chain(description)
    , m_live(seed)
{}

void Device::reset()
{
    m_chain = m_description;
    m_images.endRuns();
    m_resetFlag = m_chain.flagsReset;
    ++m_resetCount;
}

Answer Device::answer(const QByteArray &payload, Milliseconds now, const PlayedPower &played)
{
    const bool flagged = m_resetFlag;
    Answer answer = dispatch({payload, now, played});
    if (answer.verdict == Answer::Verdict::Reply && flagged) {
        putU8(answer.payload, ControlFlagsAt, u8At(answer.payload, ControlFlagsAt) | kResetFlag);
        answer.carriesResetFlag = true;
        // A reset command that came meanwhile has raised the flag anew.
        if (u8At(payload, 0) != ResetCode)
            m_resetFlag = false;
    }
    return answer;
}

Answer Device::dispatch(const Request &request)
{
    const QByteArray &payload = request.payload;
    if (payload.isEmpty())
        return refused(QStringLiteral("empty payload"));
    switch (u8At(payload, 0)) {
    case SystemStatusCode:
    case FastSystemStatusCode:
    case FastModuleStatusCode:
    case StaticStatusCode:
    case EepromCode:
        return statusReply(request);
    case FpgaCode:
        return fpgaCommand(request);
    case BridgeCode:
    case RangeCode:
    case ActionCode:
        return channelCommand(request);
    case OffsetCode:
    case FilterCode:
        return textCommand(request);
    case PowerCode:
    case SupplyCode:
    case FunctionCode:
    case RatesCode:
    case ResetCode:
        return systemCommand(request);
    default:
        return refused(QStringLiteral("unknown code %1").arg(hexCode(u8At(payload, 0))));
    }
}

Answer Device::acknowledge(const QString &note, const Request &request) const
{
    const Chain shown = shownChain(request.played);
    return replied(Replies(shown, m_live, request.now).head(m_chain.commandReplyCode), note);
}

Chain Device::shownChain(const PlayedPower &played) const
{
    Chain shown = m_chain;
    if (shown.power)
        played.applyTo(&*shown.power);
    return shown;
}

Answer Device::statusReply(const Request &request)
{
    const QByteArray &payload = request.payload;
    if (!hasForm(payload, kStatusRequestSize))
        return badForm(payload);
    const Chain shown = shownChain(request.played);
    const Replies replies(shown, m_live, request.now);
    const quint8 code = u8At(payload, 0);
    const quint8 argument = u8At(payload, kArgumentAt);
    switch (code) {
    case SystemStatusCode:
        if (argument != kSystemStatusArgument)
            return badForm(payload);
        return replied(replies.systemStatus());
    case FastSystemStatusCode:
    case FastModuleStatusCode:
        if (argument != 0)
            return badForm(payload);
        return replied(code == FastSystemStatusCode ? replies.head(code) : replies.fastModuleStatus());
    case StaticStatusCode: {
        const QByteArray status = replies.staticStatus(argument);
        if (status.isEmpty())
            return {
                Answer::Verdict::Silent, {}, QStringLiteral("nobody has address %1").arg(argument), false};
        return replied(status);
    }
    default:
        return acknowledge(QStringLiteral("no EEPROM text"), request);
    }
}

Answer Device::channelCommand(const Request &request)
{
    const QByteArray &payload = request.payload;
    const int channel = u8At(payload, kArgumentAt);
    const int parameter = u8At(payload, kArgumentAt + 1);
    if (!hasForm(payload, kChannelCommandSize) || channel == 0)
        return badForm(payload);
    Commands commands(m_chain, request.now);
    const quint8 code = u8At(payload, 0);
    if (code == BridgeCode)
        return acknowledge(commands.setBridge(channel, parameter), request);
    if (code == RangeCode)
        return acknowledge(commands.setRange(channel, parameter), request);
    return acknowledge(commands.act(channel, parameter), request);
}

Answer Device::textCommand(const Request &request)
{
    const QByteArray &payload = request.payload;
    const int channel = u8At(payload, kArgumentAt);
    const bool endsWithItsOnlyZero = payload.indexOf('\0', kArgumentAt + 1) == payload.size() - 1;
    if (payload.size() < kSmallestTextCommand || !zerosFollowCode(payload) || channel == 0 ||
        !endsWithItsOnlyZero)
        return badForm(payload);
    const QString text = QString::fromUtf8(payload.mid(kArgumentAt + 1).chopped(1));
    Commands commands(m_chain, request.now);
    const quint8 code = u8At(payload, 0);
    return acknowledge(
        code == OffsetCode ? commands.setOffset(channel, text) : commands.setFilter(channel, text), request);
}

Answer Device::systemCommand(const Request &request)
{
    const QByteArray &payload = request.payload;
    const quint8 code = u8At(payload, 0);
    const int p1 = u8At(payload, kArgumentAt);
    const int p2 = u8At(payload, kArgumentAt + 1);
    const int p3 = u8At(payload, kArgumentAt + 2);
    if (!hasForm(payload, code == PowerCode ? kPowerCommandSize : kSystemCommandSize))
        return badForm(payload);
    Commands commands(m_chain, request.now);
    switch (code) {
    case PowerCode:
        return acknowledge(commands.setPower(p1, p2, u16At(payload, kArgumentAt + 2)), request);
    case SupplyCode:
        return p1 == 0 ? badForm(payload) : acknowledge(commands.setSupply(p1, p2, p3), request);
    case FunctionCode:
        return p1 == 0 || p3 != 0 ? badForm(payload) : acknowledge(commands.setFunction(p1, p2), request);
    case RatesCode:
        return p3 != 0 ? badForm(payload) : acknowledge(commands.setRates(p1, p2), request);
    default: {
        if (p1 != 0 || p2 != 0 || p3 != 0)
            return badForm(payload);
        const Answer answer = acknowledge(QStringLiteral("system reset"), request);
        reset();
        return answer;
    }
    }
}

Answer Device::fpgaCommand(const Request &request)
{
    const QByteArray &payload = request.payload;
    if (payload.size() < kFpgaDataAt)
        return badForm(payload);
    return acknowledge(m_images.take(payload), request);
}

} // namespace sim
