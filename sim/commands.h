#pragma once

#include "sim/chain.h"

namespace sim {

/// Carries out the commands of the program on a chain. Each function returns what it did or why it did
/// nothing, for the log. A command that the device does not obey is still a well-formed request.
class Commands
{
public:
    Commands(Chain &chain, Milliseconds now)
        : m_chain(chain)
        , m_now(now)
    {}

    QString setBridge(int wireChannel, int index);
    QString setRange(int wireChannel, int index);
    /// "Auto" or a decimal number of at most 16 bytes, for channels with shunts only.
    QString setOffset(int wireChannel, const QString &text);
    QString setFilter(int wireChannel, const QString &text);
    /// Autozero, polarity and shunts; the group codes reach all channels that have shunts.
    QString act(int wireChannel, int action);
    /// A universal channel starts afresh with another function.
    QString setFunction(int wireChannel, int function);
    QString setSupply(int wireChannel, int onOff, int code);
    /// A voltage beyond the limits of the power module is not taken.
    QString setPower(int first, int setting, int value);
    QString setRates(int bitRateCode, int channelCountCode);

private:
    QString actOnChannel(Channel &channel, int action);
    QString switchShunt(Channel &channel, int action);
    QString switchAllShunts(int action);
    void setShunt(Milliseconds Channel::*until, Channel &channel, bool on);
    Module *moduleOf(int wireChannel);

    Chain &m_chain;
    Milliseconds m_now;
};

} // namespace sim
