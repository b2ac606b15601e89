#include "firmware/firmwarename.h"

bool FirmwareName::hasKnownModule() const
{
    return !moduleText().isEmpty();
}
bool FirmwareName::hasKnownFpga() const
{
    return false;
}
FirmwareName::Verdict FirmwareName::verdict() const
{
    return Verdict::Invalid;
}
QString FirmwareName::moduleText() const
{
    return {};
}
FirmwareName firmwareName(const QString &path)
{
    FirmwareName n;
    n.file = path;
    return n;
}
