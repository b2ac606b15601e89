#pragma once

#include "protocol/records/moduletypes.h"

#include <QString>

/// What a row tells about its module before and after the module's first status.
struct ModuleIdentification
{
    QString name = QStringLiteral("Unknown");
    QString serialNumber = QStringLiteral("XXXXXXX");
    QString firmware1 = QStringLiteral("XX.XX.XX");
    QString firmware2 = QStringLiteral("XX.XX.XX");
    QString hardware = QStringLiteral("XX.XX");
    HeaderForm headerForm = HeaderForm::Universal;
};

/// Live values of a module.
struct ModuleMeasurement
{
    float voltage = 0;     ///< V
    float temperature = 0; ///< degrees Celsius
    quint8 selftest = 0;   ///< 0: no failure
};
