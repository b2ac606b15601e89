#pragma once

#include <chrono>

/// Periods of the session's timers.
struct CommPeriods
{
    std::chrono::milliseconds cyclic{500};        ///< turns of the polling cycle
    std::chrono::milliseconds comm{4000};         ///< longest silence in the cyclic state
    std::chrono::milliseconds initSequence{3800}; ///< longest silence before the cyclic state
    std::chrono::milliseconds eeprom{2000};       ///< pause of the session for an EEPROM request
    std::chrono::milliseconds fpga{0};            ///< turns of the firmware queue: each turn of the loop
};
