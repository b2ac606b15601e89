#pragma once

#include <QString>

/// Limits of the power module, in volts, with the values that hold until it reports others.
struct PowerLimits
{
    float inputVoltageLow = 7.0F;      ///< at or below it the input voltage is a fault
    float inputVoltageHigh = 50.0F;    ///< at or above it the input voltage is a fault
    float inputVoltageMaximum = 60.0F; ///< upper end of the scale
    float lowerVoltageLimit = 0.0F;
};

/// Takes over the limits of a list in millivolts, separated by "$", in the order of the record. The last
/// entry of the list is no limit; limits that the list does not have, or not as numbers, stay as they were.
PowerLimits withReportedLimits(const PowerLimits &present, const QString &list);

bool isInputVoltageGood(float volts, const PowerLimits &limits);
