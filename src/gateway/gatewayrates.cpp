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

bool isAbove(const RateChoice &choice, double highestRate)
{
    constexpr double kRatePerBitRate = 50;
    const double channels = choice.channels.toDouble();
    return channels > 0 && choice.bitRate.toDouble() * kRatePerBitRate / channels > highestRate;
}

QList<RateChoice> cellsAbove(double highestRate)
{
    QList<RateChoice> cells;
    for (const int bitRate : rates::tableBitRates()) {
        for (const int channels : rates::tableChannelCounts()) {
            const RateChoice choice = choiceOf({channels, bitRate});
            if (isAbove(choice, highestRate))
                cells.append(choice);
        }
    }
    return cells;
}

} // namespace gateway
