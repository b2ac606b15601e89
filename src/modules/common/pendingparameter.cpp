#include "modules/common/pendingparameter.h"

bool PendingParameter::statusArrived()
{
    if (m_pending) {
        m_statusArrived = true;
        if (!m_timeElapsed)
            return false;
    }
    clear();
    return true;
}

PendingParameter::Outcome PendingParameter::timeOver()
{
    m_timeElapsed = true;
    Outcome outcome;
    if (m_timeOver == TimeOver::OnlyElapse)
        return outcome;
    outcome.requestStatus = true;
    if (m_statusArrived) {
        outcome.showLatest = true;
        clear();
    }
    return outcome;
}

void PendingParameter::clear()
{
    m_pending = false;
    m_timeElapsed = false;
    m_statusArrived = false;
}
