#pragma once

#include "modules/bridgemodule_view.h"

class TimeSource;

/// The row of a strain gauge module.
class ModuleDeviceType1_View : public BridgeModule_View
{
    Q_OBJECT

public:
    /// `time` must outlive the row.
    ModuleDeviceType1_View(int moduleNumber, const ModuleIdentification &identification,
                           const ModuleMeasurement &measurement, int firstChannel, int secondChannel,
                           TimeSource &time, QWidget *parent = nullptr);

public slots:
    void Slot_SendShuntAll(bool state);

signals:
    /// The shunts of the whole module. No gesture asks for it.
    void Signal_SendShuntAll(bool state);

    /// Agreed, never emitted: a reset of the Auto Zero goes out as Signal_SendAutozero() with its own code.
    void Signal_SendAutoReset(int ch, bool state);
};
