#include "reports/reportfilename.h"

namespace reportfilename {

QString systemProposal(const QString &, const QDateTime &)
{
    return {};
}
QString moduleProposal(const QString &, const QDateTime &, const QString &, quint8)
{
    return {};
}
QString baseName(const QString &)
{
    return {};
}

} // namespace reportfilename
