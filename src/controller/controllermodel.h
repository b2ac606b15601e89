#pragma once

#include "controller/inputvoltage.h"

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

/// What is known of the power module beyond that.
struct PowerModuleModel : FixedModuleModel
{
    float outputPower = 0;  ///< W
    float inputVoltage = 0; ///< V, rectified
    PowerLimits limits;
    bool limitsReceived = false;
    float outputVoltageSetpoint = 0; ///< V; the last value that the user chose
    quint8 voltageMode = 0;          ///< of the output: 0 fixed, else automatic; as reported
    quint8 protectionMode = 0;       ///< as reported
    bool statusFlag = false;         ///< the module is too hot
};

/// Data record of the top row.
struct ControllerModel
{
    FixedModuleModel controller;
    PowerModuleModel power;
};
