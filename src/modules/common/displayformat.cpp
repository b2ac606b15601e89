#include "modules/common/displayformat.h"

namespace displayformat {

namespace {

constexpr int kHexDigits = 2;
constexpr int kHexBase = 16;

} // namespace

QString voltage(float volts)
{
    return QString::number(static_cast<double>(volts), 'f', 2) + QStringLiteral(" V");
}

QString temperature(float celsius)
{
    return QString::number(static_cast<double>(celsius), 'f', 1) + QStringLiteral(" °C");
}

QString selftest(quint8 code)
{
    if (code == 0)
        return QStringLiteral("O.K.");
    const QString digits = QString::number(code, kHexBase).toUpper();
    return QStringLiteral("0x") + digits.rightJustified(kHexDigits, QLatin1Char('0'));
}

} // namespace displayformat
