#pragma once

#include "system/rates/ratetable.h"

/// Which cells of the table of data rates the gateway cannot run.
namespace gateway {

/// The pairs that it never runs.
QList<RateChoice> deadCells();

/// Whether bit rate x 50 / channels is greater than `highestRate`. False if the texts are no numbers.
bool isAbove(const RateChoice &choice, double highestRate);

/// The cells that are above `highestRate`.
QList<RateChoice> cellsAbove(double highestRate);

} // namespace gateway
