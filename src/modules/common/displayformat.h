#pragma once

#include <QString>

/// How the live values of a module read on the screen.
namespace displayformat {

/// "12.00 V", from volts.
QString voltage(float volts);

/// "-55.0 °C", from degrees Celsius.
QString temperature(float celsius);

/// "O.K." for 0, else the code as "0x0A".
QString selftest(quint8 code);

} // namespace displayformat
