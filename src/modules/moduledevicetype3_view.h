#pragma once

#include "modules/channelmodule_view.h"
#include "protocol/records/groupcommand.h"

/// The row of a thermo module.
class ModuleDeviceType3_View : public ChannelModule_View
{
    Q_OBJECT

public:
    ModuleDeviceType3_View(int moduleNumber, const ModuleIdentification &identification,
                           const ModuleMeasurement &measurement, int firstChannel, int secondChannel,
                           QWidget *parent = nullptr);

public slots:
    void SendThermoDeviceTypeIndex_A(int index);
    void SendThermoDeviceTypeIndex_B(int index);
    void SendTemperatureRangeIndex_A(int index);
    void SendTemperatureRangeIndex_B(int index);
    void SendFilterValue_A(int value);
    void SendFilterValue_B(int value);

signals:
    // The operator's wishes; `ch` is 1 (A) or 2 (B).
    void Signal_SendThermoDeviceTypeIndex(int ch, int index);
    void Signal_SendTemperatureRangeIndex(int ch, int index);
    void Signal_SendFilterValue(int ch, int value);

    /// A gesture for all matching channels.
    void Signal_ShiftClickCommand(GroupCommand command);
};
