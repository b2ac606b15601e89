#include "reports/moduletexts.h"

namespace moduletexts {

QString shortTypeName(quint8)
{
    return {};
}
QString longTypeName(quint8)
{
    return {};
}
QString nineDigits(const QString &)
{
    return {};
}
QString selfTest(quint8)
{
    return {};
}
QString rangeWithUnit(const QString &, quint8)
{
    return {};
}
QString shortVolts(quint16)
{
    return {};
}
QString shortCelsius(quint16)
{
    return {};
}
QString volts(quint16, int)
{
    return {};
}
QString celsius(quint16, int)
{
    return {};
}

} // namespace moduletexts
