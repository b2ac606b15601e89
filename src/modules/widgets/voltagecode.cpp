#include "modules/widgets/voltagecode.h"

#include <cmath>

namespace {

constexpr float kLowestVolts = 3.0F;
constexpr float kStepsPerVolt = 10.0F;

/// From here on a 32-bit float is a multiple of 65536, and its low 16 bits are 0.
constexpr float kNoLowBits = 1099511627776.0F; // 2^40

} // namespace

quint16 voltageCode(const QString &text)
{
    if (text.isEmpty())
        return 0;
    const float steps = (text.toFloat() - kLowestVolts) * kStepsPerVolt;
    if (!(std::fabs(steps) < kNoLowBits)) // infinite and "not a number" too
        return 0;
    return static_cast<quint16>(static_cast<qint64>(steps));
}
