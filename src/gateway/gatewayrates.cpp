#include "gateway/gatewayrates.h"

#include "system/rates/ratepairs.h"

namespace gateway {

namespace {

struct Cell
{
    int channels;
    int bitRate; ///< kBit/s
};

RateChoice choiceOf(const Cell &cell)
{
    return {QString::number(cell.bitRate), QString::number(cell.channels)};
}

/// Samples per second and channel, which the gateway's limit is compared with.
double rateOf(const Cell &cell)
{
    constexpr double kRatePerBitRate = 50;
    return cell.bitRate * kRatePerBitRate / cell.channels;
}

} // namespace

QList<RateChoice> deadCells()
{
    static constexpr Cell kDeadCells[] = {{2, 10000}, {4, 10000}, {2, 5000},
                                          {256, 625}, {128, 312}, {256, 312}};
    QList<RateChoice> cells;
    for (const Cell &cell : kDeadCells)
        cells.append(choiceOf(cell));
    return cells;
}

QList<RateChoice> cellsAbove(double highestRate)
{
    QList<RateChoice> cells;
    for (const int bitRate : rates::tableBitRates()) {
        for (const int channels : rates::tableChannelCounts()) {
            const Cell cell{channels, bitRate};
            if (rateOf(cell) > highestRate)
                cells.append(choiceOf(cell));
        }
    }
    return cells;
}

} // namespace gateway
