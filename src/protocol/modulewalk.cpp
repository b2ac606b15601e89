#include "protocol/modulewalk.h"

#include "protocol/records/devicecodes.h"
#include "protocol/records/moduletypes.h"

#include <QDebug>

void ModuleWalk::clear()
{
    m_next = 0;
    m_count = 0;
}

void ModuleWalk::begin(quint16 analogModules, bool powerModulePresent)
{
    m_count = static_cast<quint16>(analogModules + 1);
    m_powerModulePresent = powerModulePresent;
}

ModuleWalk::Step ModuleWalk::takeReply(quint8 moduleType)
{
    ++m_next;
    if (moduleType == wireCode(ModuleType::Power) || m_next > m_count)
        return Step::Finished;
    if (m_next < m_count)
        return Step::Continue;
    if (!m_powerModulePresent)
        return Step::Finished;
    m_next = kPowerModuleAddress;
    qDebug() << "****Fetch next Module Power*****";
    return Step::Continue;
}
