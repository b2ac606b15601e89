#pragma once

#include <QString>

/// Code of a sensor supply voltage that was entered as text, in volts: tenths of a volt above 3 V, computed
/// in 32-bit floats and cut to its low 16 bits. 0 for an empty text; a text that is no number counts as 0 V.
quint16 voltageCode(const QString &text);
