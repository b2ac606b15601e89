#pragma once

#include <QString>

/// What is known of the controller module or of the power module.
struct FixedModuleModel
{
    QString serialNumber = QStringLiteral("XXXXXXX");
    QString hardware = QStringLiteral("XX.XX.XX");
    QString firmware1 = QStringLiteral("XX.XX.XX");
    QString firmware2 = QStringLiteral("XX.XX");
    float voltage = 0;     ///< V
    float temperature = 0; ///< degrees Celsius
    quint8 selftest = 0;   ///< 0: no failure
};

/// Data record of the top row.
struct ControllerModel
{
    FixedModuleModel controller;
    FixedModuleModel power;
};
