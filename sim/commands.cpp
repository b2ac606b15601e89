#include "sim/commands.h"

#include "sim/bytes.h"
#include "sim/catalogue.h"

namespace sim {

namespace {

constexpr int kMaximumTextBytes = 16;
constexpr double kOffsetLimit = 999.9;

enum Action {
    AutoReset = 0x80,
    Autozero = 0x81,
    PositiveShuntOff = 130,
    PositiveShuntOn = 131,
    PolarityOff = 0x84,
    PolarityOn = 0x85,
    NegativeShuntOff = 136,
    NegativeShuntOn = 137,
    AllPositiveShuntsOff = 138,
    AllPositiveShuntsOn = 139,
    AllNegativeShuntsOff = 140,
    AllNegativeShuntsOn = 141,
    AllShuntsOff = 142,
    PreselectedShuntsOn = 143,
    PositivePreselectOff = 154,
    PositivePreselectOn = 155,
    NegativePreselectOff = 156,
    NegativePreselectOn = 157
};

enum PowerSetting {
    FixedVoltage = 0x10,
    AutoVoltage = 0x11,
    FixedMode = 0x20,
    AutoMode = 0x21,
    FirstProtection = 0x30,
    LastProtection = 0x32
};

QString noChannel(int wireChannel)
{
    return QStringLiteral("there is no channel %1").arg(wireChannel);
}

QString channelDid(int wireChannel, const QString &what)
{
    return QStringLiteral("channel %1: %2").arg(wireChannel).arg(what);
}

int sideOf(int wireChannel)
{
    return wireChannel % 2 == 1 ? 0 : 1;
}

const FunctionEntry &entryOf(const Channel &channel)
{
    return functionEntry(channel.function);
}

} // namespace

Module *Commands::moduleOf(int wireChannel)
{
    const int address = (wireChannel + 1) / 2;
    return m_chain.hasModule(address) ? &m_chain.module(address) : nullptr;
}

QString Commands::setBridge(int wireChannel, int index)
{
    Module *module = moduleOf(wireChannel);
    if (!module)
        return noChannel(wireChannel);
    const QStringList items = module->sensorsOf(sideOf(wireChannel));
    if (index >= items.size())
        return channelDid(wireChannel, QStringLiteral("no sensor %1").arg(index));
    module->channel(sideOf(wireChannel)).bridgeIndex = index;
    return channelDid(wireChannel, QStringLiteral("sensor %1 \"%2\"").arg(index).arg(items.at(index)));
}

QString Commands::setRange(int wireChannel, int index)
{
    Module *module = moduleOf(wireChannel);
    if (!module)
        return noChannel(wireChannel);
    const QStringList items = module->rangesOf(sideOf(wireChannel));
    if (index >= items.size())
        return channelDid(wireChannel, QStringLiteral("no range %1").arg(index));
    module->channel(sideOf(wireChannel)).gainIndex = index;
    return channelDid(wireChannel, QStringLiteral("range %1 \"%2\"").arg(index).arg(items.at(index)));
}

QString Commands::setOffset(int wireChannel, const QString &text)
{
    Channel *channel = m_chain.wireChannel(wireChannel);
    if (!channel)
        return noChannel(wireChannel);
    if (!entryOf(*channel).hasShunts)
        return channelDid(wireChannel, QStringLiteral("has no manual offset"));
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    const bool isOffset = isNumber && qAbs(value) <= kOffsetLimit;
    if (text.toUtf8().size() > kMaximumTextBytes || !(isOffset || text == QLatin1String("Auto")))
        return channelDid(wireChannel, QStringLiteral("takes no offset \"%1\"").arg(text));
    channel->offset = text;
    return channelDid(wireChannel, QStringLiteral("offset \"%1\"").arg(text));
}

QString Commands::setFilter(int wireChannel, const QString &text)
{
    Channel *channel = m_chain.wireChannel(wireChannel);
    if (!channel)
        return noChannel(wireChannel);
    bool isNumber = false;
    const int value = text.toInt(&isNumber);
    const FunctionEntry &entry = entryOf(*channel);
    if (!isNumber || value < entry.filterMinimum || value > entry.filterMaximum)
        return channelDid(wireChannel, QStringLiteral("takes no filter \"%1\"").arg(text));
    channel->filter = QString::number(value);
    return channelDid(wireChannel, QStringLiteral("filter %1").arg(value));
}

QString Commands::act(int wireChannel, int action)
{
    if (action >= AllPositiveShuntsOff && action <= PreselectedShuntsOn)
        return switchAllShunts(action);
    Channel *channel = m_chain.wireChannel(wireChannel);
    if (!channel)
        return noChannel(wireChannel);
    return channelDid(wireChannel, actOnChannel(*channel, action));
}

QString Commands::actOnChannel(Channel &channel, int action)
{
    const bool isZeroAction =
        action == AutoReset || action == Autozero || action == PolarityOff || action == PolarityOn;
    if (!isZeroAction)
        return switchShunt(channel, action);
    if (!entryOf(channel).hasZero)
        return QStringLiteral("has no autozero and no polarity");
    switch (action) {
    case AutoReset:
        channel.zeroed = false;
        channel.autozeroUntil = Milliseconds(0);
        return QStringLiteral("auto reset");
    case Autozero:
        channel.zeroed = true;
        channel.autozeroUntil = m_now + m_chain.autozeroTime;
        return QStringLiteral("autozero");
    default:
        channel.reversePolarity = action == PolarityOn;
        return channel.reversePolarity ? QStringLiteral("polarity reversed")
                                       : QStringLiteral("polarity normal");
    }
}

QString Commands::switchShunt(Channel &channel, int action)
{
    if (!entryOf(channel).hasShunts)
        return QStringLiteral("has no shunts");
    switch (action) {
    case PositiveShuntOff:
    case PositiveShuntOn:
        setShunt(&Channel::positiveShuntUntil, channel, action == PositiveShuntOn);
        return action == PositiveShuntOn ? QStringLiteral("positive shunt on")
                                         : QStringLiteral("positive shunt off");
    case NegativeShuntOff:
    case NegativeShuntOn:
        setShunt(&Channel::negativeShuntUntil, channel, action == NegativeShuntOn);
        return action == NegativeShuntOn ? QStringLiteral("negative shunt on")
                                         : QStringLiteral("negative shunt off");
    case PositivePreselectOff:
    case PositivePreselectOn:
        channel.positivePreselected = action == PositivePreselectOn;
        return QStringLiteral("positive preselect %1").arg(action == PositivePreselectOn);
    case NegativePreselectOff:
    case NegativePreselectOn:
        channel.negativePreselected = action == NegativePreselectOn;
        return QStringLiteral("negative preselect %1").arg(action == NegativePreselectOn);
    default:
        return QStringLiteral("does not know action %1").arg(action);
    }
}

QString Commands::switchAllShunts(int action)
{
    for (Module &module : m_chain.modules) {
        for (Channel &channel : module.channels) {
            if (!entryOf(channel).hasShunts)
                continue;
            const bool all = action == AllShuntsOff;
            const bool preselected = action == PreselectedShuntsOn;
            if (all || action == AllPositiveShuntsOff)
                channel.positiveShuntUntil = Milliseconds(0);
            if (all || action == AllNegativeShuntsOff)
                channel.negativeShuntUntil = Milliseconds(0);
            if (action == AllPositiveShuntsOn || (preselected && channel.positivePreselected))
                setShunt(&Channel::positiveShuntUntil, channel, true);
            if (action == AllNegativeShuntsOn || (preselected && channel.negativePreselected))
                setShunt(&Channel::negativeShuntUntil, channel, true);
        }
    }
    return QStringLiteral("all channels: shunt action %1").arg(action);
}

void Commands::setShunt(Milliseconds Channel::*until, Channel &channel, bool on)
{
    channel.*until = on ? m_now + m_chain.shuntTime : Milliseconds(0);
}

QString Commands::setFunction(int wireChannel, int function)
{
    Module *module = moduleOf(wireChannel);
    if (!module)
        return noChannel(wireChannel);
    if (module->type != kUniversal)
        return channelDid(wireChannel, QStringLiteral("has a fixed function"));
    const auto code = static_cast<quint8>(function);
    if (!functionEntry(code).canBeSelected)
        return channelDid(wireChannel, QStringLiteral("has no function %1").arg(function));
    module->channel(sideOf(wireChannel)) = Channel::withFunction(code);
    return channelDid(wireChannel, QStringLiteral("is now %1").arg(QLatin1String(functionEntry(code).name)));
}

QString Commands::setSupply(int wireChannel, int onOff, int code)
{
    Module *module = moduleOf(wireChannel);
    if (!module)
        return noChannel(wireChannel);
    if (module->type != kUniversal)
        return channelDid(wireChannel, QStringLiteral("has no sensor supply"));
    Channel &channel = module->channel(sideOf(wireChannel));
    channel.supplyOn = onOff != 0;
    channel.supplyCode = static_cast<quint8>(code);
    return channelDid(wireChannel, QStringLiteral("sensor supply %1 V").arg(channel.supplyVolts()));
}

QString Commands::setPower(int first, int setting, int value)
{
    if (!m_chain.power)
        return QStringLiteral("there is no power module");
    Power &power = *m_chain.power;
    if (first == 1 && (setting == FixedVoltage || setting == AutoVoltage)) {
        if (value < power.minimumMillivolts || value > power.maximumMillivolts)
            return QStringLiteral("power module takes no %1 mV").arg(value);
        (setting == FixedVoltage ? power.fixedMillivolts : power.autoMillivolts) = value;
        return QStringLiteral("%1 voltage %2 mV")
            .arg(setting == FixedVoltage ? QStringLiteral("fixed") : QStringLiteral("auto"))
            .arg(value);
    }
    if (first == 1 && (setting == FixedMode || setting == AutoMode)) {
        power.mode = setting == FixedMode ? Power::Fixed : Power::Auto;
        return setting == FixedMode ? QStringLiteral("mode fixed") : QStringLiteral("mode auto");
    }
    if (first == 1 && setting >= FirstProtection && setting <= LastProtection) {
        power.protection = static_cast<quint8>(setting - FirstProtection);
        return QStringLiteral("protection %1").arg(power.protection);
    }
    return QStringLiteral("there is no power setting %1 %2").arg(first).arg(hexCode(setting));
}

QString Commands::setRates(int bitRateCode, int channelCountCode)
{
    if (bitRateCode >= bitRateNames().size() || channelCountCode >= channelCountNames().size())
        return QStringLiteral("there is no rate %1, %2").arg(bitRateCode).arg(channelCountCode);
    m_chain.system.bitRateCode = static_cast<quint8>(bitRateCode);
    m_chain.system.channelCountCode = static_cast<quint8>(channelCountCode);
    return QStringLiteral("bit rate %1").arg(m_chain.system.bitRate());
}

} // namespace sim
