#pragma once

#include "sim/chain.h"

namespace sim {

constexpr int kGatewaySensors = 200; ///< from here on places that no module has

/// Values that wander slowly around their base: the same for the same seed, place and time.
class LiveValues
{
public:
    explicit LiveValues(quint32 seed);

    /// Raw supply voltage of a module in units of 10 mV, 11 bits.
    int voltsRaw(int address, const Health &health, Milliseconds now) const;
    /// Raw temperature of a module in units of 0.5 degrees above -55, 9 bits.
    int celsiusRaw(int address, const Health &health, Milliseconds now) const;
    /// Raw measured value of a channel (0 is A, 1 is B), 18 bits around the middle of its range.
    int channelRaw(int address, int channelIndex, const Channel &channel, Milliseconds now) const;
    /// A temperature that `address` tells from others.
    double celsius(int address, double base, Milliseconds now) const;
    /// How far a clock is off that PTP keeps.
    int ptpNs(Milliseconds now) const;
    double inputVolts(double base, Milliseconds now) const;
    double loadAmperes(double base, Milliseconds now) const;

private:
    /// Between -1 and 1; `place` tells one wandering value from another.
    double wander(quint32 place, Milliseconds period, Milliseconds now) const;
    double phase(quint32 place) const;

    quint32 m_seed;
};

} // namespace sim
