#include "controller/inputvoltage.h"

#include <QStringList>
#include <array>
#include <cmath>

namespace {

constexpr float kInputMillivoltsPerVolt = 1000.0F;

} // namespace

PowerLimits withReportedLimits(const PowerLimits &present, const QString &list)
{
    QStringList entries = list.split(QLatin1Char('$'), Qt::SkipEmptyParts);
    if (!entries.isEmpty())
        entries.removeLast();
    PowerLimits limits = present;
    const std::array<float *, 4> fields{&limits.inputVoltageLow, &limits.inputVoltageHigh,
                                        &limits.inputVoltageMaximum, &limits.lowerVoltageLimit};
    int index = 0;
    for (float *field : fields) {
        bool isNumber = false;
        const float millivolts = entries.value(index++).toFloat(&isNumber);
        if (isNumber && std::isfinite(millivolts)) // the words "nan" and "inf" count as numbers otherwise
            *field = millivolts / kInputMillivoltsPerVolt;
    }
    return limits;
}

bool isInputVoltageGood(float volts, const PowerLimits &limits)
{
    return volts > limits.inputVoltageLow && volts < limits.inputVoltageHigh;
}
