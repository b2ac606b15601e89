#pragma once

#include <QtGlobal>
#include <optional>

struct Fast_Module_Status;

/// What a fast status tells of a module. A value that the module marked invalid is missing; what was known
/// of it before stays.
struct LiveValues
{
    std::optional<float> voltage;     ///< V
    std::optional<float> temperature; ///< degrees Celsius
    quint8 selftest = 0;              ///< 0: no failure
};

LiveValues liveValues(const Fast_Module_Status &status);
