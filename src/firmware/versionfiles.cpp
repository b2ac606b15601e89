#include "firmware/versionfiles.h"

namespace versionfiles {

QString configuratorLine(const QByteArray &)
{
    return {};
}
std::optional<QString> configuratorVersion(const QString &)
{
    return std::nullopt;
}
QVector<FirmwareEntry> firmwareEntries(const QByteArray &)
{
    return {};
}

} // namespace versionfiles
