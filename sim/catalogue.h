#pragma once

#include <QString>

namespace sim {

// Type codes of modules; an analog channel's function uses the codes of the analog modules.
constexpr quint8 kStrainGauge = 1;
constexpr quint8 kVoltage = 2;
constexpr quint8 kIepe = 3;
constexpr quint8 kThermo = 4;
constexpr quint8 kXvdt = 5;
constexpr quint8 kPotentiometer = 6;
constexpr quint8 kCurrentLoop = 7;
constexpr quint8 kAuxiliary = 8;
constexpr quint8 kUniversal = 9;
constexpr quint8 kControllerType = 100;
constexpr quint8 kPowerType = 120;

/// What a channel with one function offers.
struct FunctionEntry
{
    quint8 code = 0;
    const char *name = "unknown";
    const char *sensors = ""; ///< each item followed by "$"
    const char *ranges = "";  ///< each item followed by "$"
    const char *filter = "0"; ///< what a fresh channel is set to
    int filterMinimum = 0;
    int filterMaximum = 999999999;
    bool hasZero = false;       ///< autozero and polarity
    bool hasShunts = false;     ///< shunts and manual offset
    bool canBeSelected = false; ///< a universal channel can be switched to it
};

/// The entry of a function code; for a code without one an entry with empty lists.
const FunctionEntry &functionEntry(quint8 code);

} // namespace sim
