#include "reports/statusstore.h"

#include "protocol/records/devicecodes.h"
#include "protocol/records/moduletypes.h"

#include <algorithm>

namespace {

bool isReportAddress(int address)
{
    return address >= 0 && address < kReportAddresses;
}

std::size_t indexOf(int address)
{
    return static_cast<std::size_t>(address);
}

} // namespace

void StatusStore::setSystem(const System_Status &status)
{
    systemStatus = status;
    haveSystem = true;
}

void StatusStore::setFastSystem(const Fast_System_Status &status)
{
    fastSystemStatus = status;
    haveFastSystem = true;
}

bool StatusStore::setModule(const Module_Status &status)
{
    if (!isReportAddress(status.moduleAddress))
        return false;
    modules.at(status.moduleAddress) = status;
    haveModule = true;
    return true;
}

void StatusStore::setFastModules(const QVector<Fast_Module_Status> &entries)
{
    const int count = std::min(entries.size(), kReportAddresses);
    std::copy_n(entries.begin(), count, fastModules.begin());
    haveFastModule = haveFastModule || count > 0;
}

void StatusStore::setEepromText(const QString &text, int address)
{
    if (isReportAddress(address))
        eepromText.at(indexOf(address)) = text;
}

const Module_Status &StatusStore::module(int address) const
{
    static const Module_Status kEmpty;
    return isReportAddress(address) ? modules.at(indexOf(address)) : kEmpty;
}

const Fast_Module_Status &StatusStore::fastModule(int address) const
{
    static const Fast_Module_Status kEmpty;
    return isReportAddress(address) ? fastModules.at(indexOf(address)) : kEmpty;
}

bool StatusStore::hasPowerModule() const
{
    if (!systemStatus.hasFixedModule(wireCode(ModuleType::Power)))
        return false;
    if (!module(kPowerAddress).serialNumber.isEmpty())
        return true;
    qDebug() << "Power Module Empty";
    return false;
}

int StatusStore::analogModuleCount() const
{
    return std::min<int>(systemStatus.nModules, kMaxAnalogModules);
}
