#include "sim/livevalues.h"

#include <QtMath>

#include <cmath>

namespace sim {

namespace {

using namespace std::chrono_literals;

constexpr double kVoltsSwing = 0.15;
constexpr double kCelsiusSwing = 2.5;
constexpr double kInputSwing = 0.4;
constexpr double kLoadSwing = 0.05;
constexpr Milliseconds kVoltsPeriod = 47s;
constexpr Milliseconds kCelsiusPeriod = 310s;
constexpr Milliseconds kChannelPeriod = 9s;

constexpr int kRawVoltsMaximum = (1 << 11) - 1;
constexpr int kRawCelsiusMaximum = (1 << 9) - 1;
constexpr int kChannelMaximum = (1 << 18) - 1;
constexpr int kChannelMiddle = 1 << 17;
constexpr double kChannelSwing = 9000;
constexpr double kChannelConstant = 4000; ///< what an autozero takes away
constexpr double kShuntStep = 30000;
constexpr double kPtpMiddle = 90;
constexpr double kPtpSwing = 40;

// Places of the values of one module; modules are kPlaces apart.
enum Place : quint32 {
    VoltsPlace,
    CelsiusPlace,
    ValuePlace,
    ConstantPlace = 4,
    InputPlace = 6,
    LoadPlace,
    Places
};

quint32 placeOf(int address, quint32 place)
{
    return static_cast<quint32>(address) * Places + place;
}

int limited(double value, int maximum)
{
    return qBound(0, qRound(value), maximum);
}

} // namespace

LiveValues::LiveValues(quint32 seed)
    : m_seed(seed)
{}

double LiveValues::phase(quint32 place) const
{
    // A multiplicative mix of seed and place, spread over one turn.
    quint32 mixed = m_seed * 2654435761U + place * 2246822519U;
    mixed ^= mixed >> 15;
    mixed *= 3266489917U;
    mixed ^= mixed >> 13;
    return mixed / 4294967296.0 * 2 * M_PI;
}

double LiveValues::wander(quint32 place, Milliseconds period, Milliseconds now) const
{
    const double turn = 2 * M_PI * static_cast<double>(now.count()) / static_cast<double>(period.count());
    return 0.7 * std::sin(turn + phase(place)) + 0.3 * std::sin(3.7 * turn + phase(place + 1));
}

int LiveValues::voltsRaw(int address, const Health &health, Milliseconds now) const
{
    const double volts = health.volts + kVoltsSwing * wander(placeOf(address, VoltsPlace), kVoltsPeriod, now);
    return limited(volts * 100, kRawVoltsMaximum);
}

int LiveValues::celsiusRaw(int address, const Health &health, Milliseconds now) const
{
    return limited((celsius(address, health.celsius, now) + 55) * 2, kRawCelsiusMaximum);
}

double LiveValues::celsius(int address, double base, Milliseconds now) const
{
    return base + kCelsiusSwing * wander(placeOf(address, CelsiusPlace), kCelsiusPeriod, now);
}

int LiveValues::ptpNs(Milliseconds now) const
{
    return qRound(kPtpMiddle + kPtpSwing * wander(placeOf(kGatewaySensors, VoltsPlace), kVoltsPeriod, now));
}

int LiveValues::channelRaw(int address, int channelIndex, const Channel &channel, Milliseconds now) const
{
    const auto side = static_cast<quint32>(channelIndex);
    double value = kChannelSwing * wander(placeOf(address, ValuePlace + side), kChannelPeriod, now);
    if (!channel.zeroed)
        value += kChannelConstant * std::cos(phase(placeOf(address, ConstantPlace + side)));
    if (channel.positiveShuntOn(now))
        value += kShuntStep;
    if (channel.negativeShuntOn(now))
        value -= kShuntStep;
    if (channel.reversePolarity)
        value = -value;
    return limited(kChannelMiddle + value, kChannelMaximum);
}

double LiveValues::inputVolts(double base, Milliseconds now) const
{
    return base + kInputSwing * wander(placeOf(kPowerAddress, InputPlace), kVoltsPeriod, now);
}

double LiveValues::loadAmperes(double base, Milliseconds now) const
{
    return base + kLoadSwing * wander(placeOf(kPowerAddress, LoadPlace), kVoltsPeriod, now);
}

} // namespace sim
