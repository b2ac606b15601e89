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
constexpr int kFpgaHeadSize = 9;
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
    m_resetFlag = m_chain.flagsReset;
    ++m_resetCount;
}

Answer Device::answer(const QByteArray &payload, Milliseconds now, const PlayedPower &played)
{
    m_played = played;
    const bool flagged = m_resetFlag;
    Answer answer = dispatch(payload, now);
    if (answer.verdict == Answer::Verdict::Reply && flagged) {
        putU8(answer.payload, ControlFlagsAt, u8At(answer.payload, ControlFlagsAt) | kResetFlag);
        answer.carriesResetFlag = true;
        // A reset command that came meanwhile has raised the flag anew.
        if (u8At(payload, 0) != ResetCode)
            m_resetFlag = false;
    }
    return answer;
}

Answer Device::dispatch(const QByteArray &payload, Milliseconds now)
{
    if (payload.isEmpty())
        return refused(QStringLiteral("empty payload"));
    switch (u8At(payload, 0)) {
    case SystemStatusCode:
    case FastSystemStatusCode:
    case FastModuleStatusCode:
    case StaticStatusCode:
    case EepromCode:
        return statusReply(payload, now);
    case FpgaCode:
        return fpgaCommand(payload, now);
    case BridgeCode:
    case RangeCode:
    case ActionCode:
        return channelCommand(payload, now);
    case OffsetCode:
    case FilterCode:
        return textCommand(payload, now);
    case PowerCode:
    case SupplyCode:
    case FunctionCode:
    case RatesCode:
    case ResetCode:
        return systemCommand(payload, now);
    default:
        return refused(QStringLiteral("unknown code %1").arg(hexCode(u8At(payload, 0))));
    }
}

Answer Device::acknowledge(const QString &note, Milliseconds now) const
{
    const Chain shown = shownChain();
    return replied(Replies(shown, m_live, now).head(m_chain.commandReplyCode), note);
}

Chain Device::shownChain() const
{
    Chain shown = m_chain;
    if (shown.power)
        m_played.applyTo(&*shown.power);
    return shown;
}

Answer Device::statusReply(const QByteArray &payload, Milliseconds now)
{
    if (!hasForm(payload, kStatusRequestSize))
        return badForm(payload);
    const Chain shown = shownChain();
    const Replies replies(shown, m_live, now);
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
        return acknowledge(QStringLiteral("no EEPROM text"), now);
    }
}

Answer Device::channelCommand(const QByteArray &payload, Milliseconds now)
{
    const int channel = u8At(payload, kArgumentAt);
    const int parameter = u8At(payload, kArgumentAt + 1);
    if (!hasForm(payload, kChannelCommandSize) || channel == 0)
        return badForm(payload);
    Commands commands(m_chain, now);
    const quint8 code = u8At(payload, 0);
    if (code == BridgeCode)
        return acknowledge(commands.setBridge(channel, parameter), now);
    if (code == RangeCode)
        return acknowledge(commands.setRange(channel, parameter), now);
    return acknowledge(commands.act(channel, parameter), now);
}

Answer Device::textCommand(const QByteArray &payload, Milliseconds now)
{
    const int channel = u8At(payload, kArgumentAt);
    const bool endsWithItsOnlyZero = payload.indexOf('\0', kArgumentAt + 1) == payload.size() - 1;
    if (payload.size() < kSmallestTextCommand || !zerosFollowCode(payload) || channel == 0 ||
        !endsWithItsOnlyZero)
        return badForm(payload);
    const QString text = QString::fromUtf8(payload.mid(kArgumentAt + 1).chopped(1));
    Commands commands(m_chain, now);
    const quint8 code = u8At(payload, 0);
    return acknowledge(
        code == OffsetCode ? commands.setOffset(channel, text) : commands.setFilter(channel, text), now);
}

Answer Device::systemCommand(const QByteArray &payload, Milliseconds now)
{
    const quint8 code = u8At(payload, 0);
    const int p1 = u8At(payload, kArgumentAt);
    const int p2 = u8At(payload, kArgumentAt + 1);
    const int p3 = u8At(payload, kArgumentAt + 2);
    if (!hasForm(payload, code == PowerCode ? kPowerCommandSize : kSystemCommandSize))
        return badForm(payload);
    Commands commands(m_chain, now);
    switch (code) {
    case PowerCode:
        return acknowledge(commands.setPower(p1, p2, u16At(payload, kArgumentAt + 2)), now);
    case SupplyCode:
        return p1 == 0 ? badForm(payload) : acknowledge(commands.setSupply(p1, p2, p3), now);
    case FunctionCode:
        return p1 == 0 || p3 != 0 ? badForm(payload) : acknowledge(commands.setFunction(p1, p2), now);
    case RatesCode:
        return p3 != 0 ? badForm(payload) : acknowledge(commands.setRates(p1, p2), now);
    default: {
        if (p1 != 0 || p2 != 0 || p3 != 0)
            return badForm(payload);
        const Answer answer = acknowledge(QStringLiteral("system reset"), now);
        reset();
        return answer;
    }
    }
}

Answer Device::fpgaCommand(const QByteArray &payload, Milliseconds now)
{
    if (payload.size() < kFpgaHeadSize)
        return badForm(payload);
    return acknowledge(
        QStringLiteral("FPGA command %1, nothing flashed").arg(hexCode(u8At(payload, kArgumentAt))), now);
}

} // namespace sim
