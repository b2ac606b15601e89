#pragma once

#include "system/rates/ratetable.h"

/// Which cells of the table of data rates the gateway cannot run.
namespace gateway {

/// The pairs that it never runs.
QList<RateChoice> deadCells();

/// The cells that are above `highestRate`: bit rate x 50 / channels is greater than it.
QList<RateChoice> cellsAbove(double highestRate);

} // namespace gateway
