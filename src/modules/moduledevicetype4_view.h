#pragma once

#include "modules/bridgemodule_view.h"

class ChangeModuleType;
class ChannelType4_View;
class TimeSource;

/// The row of a universal module, whose channel buttons change what the channels measure.
class ModuleDeviceType4_View : public BridgeModule_View
{
    Q_OBJECT

public:
    /// `time` must outlive the row.
    ModuleDeviceType4_View(int moduleNumber, const ModuleIdentification &identification,
                           const ModuleMeasurement &measurement, int firstChannel, int secondChannel,
                           TimeSource &time, QWidget *parent = nullptr);

    /// Shows the controls and headers that a channel with this function has, and its name.
    void setChannelFunction(Channel channel, quint8 code);

    /// Applies a command to the channels whose function it is for; the command that changes functions is
    /// for all universal modules.
    void applyGroupCommand(const GroupCommand &command) override;

public slots:
    /// A channel gets another function: its controls and headers are hidden until a status tells how it is
    /// set. `ch`: number of the channel in the chain, one byte; odd is A. `type`: code of the function.
    void Slot_SendChangeChannel(uchar ch, uchar type);

signals:
    // For a channel by its number in the chain, in one byte.
    void Signal_SendChannelChange(quint8 ch, quint8 type);              ///< function as a module type code
    void Signal_VoltageSupply(quint8 ch, quint8 onOff, quint8 voltage); ///< 1 or 0, (volts - 3) x 10

private:
    std::array<ChannelType4_View *, 2> m_strips; // children of this row
    ChangeModuleType *m_functionDialog;          // child of this row
};
