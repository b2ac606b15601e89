#pragma once

#include <chrono>

/// The times of the main window.
struct DisplayPeriods
{
    std::chrono::milliseconds clock{1000};          ///< clock and one tick of the status line
    std::chrono::milliseconds busyStep{500};        ///< how often the busy seconds are counted down
    std::chrono::milliseconds lamp{100};            ///< how long the Rx and Tx lamps stay lit
    std::chrono::milliseconds longPressPoll{500};   ///< how often a held help button is looked at
    std::chrono::milliseconds helpPress{1100};      ///< the longest press that opens the help
    std::chrono::milliseconds resetPress{2000};     ///< the shortest press that resets the system
    std::chrono::milliseconds hwDelayMessage{3000}; ///< how long a response delay is shown
};
