#include "reports/reportsheet.h"

ReportSheet reportSheet(const StatusStore &, const ModuleFilter &, const ReportHead &)
{
    return {};
}

bool isNumberCell(int, const QString &)
{
    return false;
}
