#include "protocol/pollingpattern.h"

namespace {

constexpr quint8 kRound = 4;

} // namespace

PayloadCode PollingPattern::next()
{
    if (++m_cycleCount < kRound)
        return PayloadCode::FastSystemStatus;
    m_cycleCount = 0;
    return PayloadCode::FastModuleStatus;
}
