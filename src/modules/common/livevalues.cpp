#include "modules/common/livevalues.h"

#include "protocol/records/fastmodulestatus.h"
#include "protocol/records/units.h"

LiveValues liveValues(const Fast_Module_Status &status)
{
    LiveValues values;
    if (status.supplyVoltageInvalid == 0)
        values.voltage = units::voltsFromRaw(status.supplyVoltage);
    if (status.temperatureInvalid == 0)
        values.temperature = units::celsiusFromRaw(status.temperature);
    values.selftest = status.moduleState;
    return values;
}
