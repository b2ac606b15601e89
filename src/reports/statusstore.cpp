#include "reports/statusstore.h"

void StatusStore::setSystem(const System_Status &) {}
void StatusStore::setFastSystem(const Fast_System_Status &) {}
bool StatusStore::setModule(const Module_Status &)
{
    return false;
}
void StatusStore::setFastModules(const QVector<Fast_Module_Status> &) {}
void StatusStore::setEepromText(const QString &, int) {}
const Module_Status &StatusStore::module(int) const
{
    return modules.front();
}
const Fast_Module_Status &StatusStore::fastModule(int) const
{
    return fastModules.front();
}
bool StatusStore::hasPowerModule() const
{
    return false;
}
int StatusStore::analogModuleCount() const
{
    return 0;
}
