#pragma once

#include "modules/amplifiermodule_view.h"

class TimeSource;

/// The row of a voltage-like module.
class ModuleDeviceType2_View : public AmplifierModule_View
{
    Q_OBJECT

public:
    /// `time` must outlive the row.
    ModuleDeviceType2_View(int moduleNumber, const ModuleIdentification &identification,
                           const ModuleMeasurement &measurement, int firstChannel, int secondChannel,
                           TimeSource &time, QWidget *parent = nullptr);

public slots:
    void SendRangeGainIndex_A(int index);
    void SendRangeGainIndex_B(int index);
    void SendFilterValue_A(int value);
    void SendFilterValue_B(int value);
    void SendRevPolState_A(bool state);
    void SendRevPolState_B(bool state);

signals:
    /// The operator's wish for channel 1 (A) or 2 (B); place in the list of ranges.
    void Signal_SendRangeGainIndex(int ch, int index);
};
