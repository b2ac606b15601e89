#include "protocol/records/units.h"

namespace units {

float voltsFromRaw(quint16 raw)
{
    return static_cast<float>(raw) * 10.0F / 1000.0F;
}

float celsiusFromRaw(quint16 raw)
{
    return static_cast<float>(raw) * 0.5F - 55.0F;
}

} // namespace units
