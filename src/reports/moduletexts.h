#pragma once

#include <QString>
#include <QStringList>

struct Module_Status;

/// How reports show types and raw values.
namespace moduletexts {

/// Name of a module type or channel function in file names; "UNKNWN<code>" for other codes.
QString shortTypeName(quint8 code);

/// The same in the text of reports; "unknown<code>" for other codes.
QString longTypeName(quint8 code);

/// What every row of a module begins with: address, long type name, serial number as the module sent it,
/// hardware, first and second firmware.
QStringList identity(const Module_Status &module, int address);

/// Blanks removed, then zeros put in front until there are nine characters. A longer number stays as it is.
QString nineDigits(const QString &serialNumber);

/// "Failure" for every flag but 0, "O.K" for 0.
QString selfTest(quint8 failureFlag);

/// A range with the unit of a channel function: "±<value> mV/V", "±<value> V" or "<value> °C"; the value
/// alone for functions without one.
QString rangeWithUnit(const QString &value, quint8 functionCode);

/// V, from the raw 16-bit value in steps of 10 mV, in the shortest form of at most six digits.
QString shortVolts(quint16 raw);

/// Degrees Celsius, from the raw value in steps of half a degree from -55; the same form.
QString shortCelsius(quint16 raw);

/// The same two with a fixed number of decimals.
QString volts(quint16 raw, int decimals);
QString celsius(quint16 raw, int decimals);

} // namespace moduletexts
