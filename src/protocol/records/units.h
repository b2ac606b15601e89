#pragma once

#include <QtGlobal>

/// Conversions of raw device numbers, computed in 32-bit float.
namespace units {

/// Module supply voltage, in V, from the 11-bit value in steps of 10 mV.
float voltsFromRaw(quint16 raw);

/// Module temperature, in degrees Celsius, from the 9-bit value in steps of half a degree from -55.
float celsiusFromRaw(quint16 raw);

} // namespace units
