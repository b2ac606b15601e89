#pragma once

#include <QString>
#include <QVector>

/// What the table of data rates offers. Twice the channels at half the bit rate give the same sampling rate.
namespace rates {

/// The two figures of a cell, as they are shown.
struct RatePair
{
    QString large; ///< the large figure
    QString small; ///< the small figure below it, in red
};

/// 13 pairs; the cell in row r and column c, both from 0, shows pair r + c.
const QVector<RatePair> &ratePairs();

/// Of the rows, in kBit/s, the fastest first.
const QVector<int> &tableBitRates();

/// Of the columns, the fewest first.
const QVector<int> &tableChannelCounts();

} // namespace rates
