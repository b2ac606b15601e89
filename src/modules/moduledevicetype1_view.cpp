#include "modules/moduledevicetype1_view.h"

#include "modules/channels/channeltype1_view.h"

ModuleDeviceType1_View::ModuleDeviceType1_View(int moduleNumber, const ModuleIdentification &identification,
                                               const ModuleMeasurement &measurement, int firstChannel,
                                               int secondChannel, TimeSource &time, QWidget *parent)
    : BridgeModule_View(moduleNumber, identification, measurement, firstChannel, secondChannel, parent)
{
    setObjectName(QStringLiteral("ModuleDeviceType1_View"));
    auto *a = new ChannelType1_View(time, this);
    auto *b = new ChannelType1_View(time, this);
    setBridgeChannels(a, b);
    for (const ChannelType1_View *strip : {a, b})
        connect(strip, &ChannelType1_View::Signal_ShiftClickShunt, this,
                &ModuleDeviceType1_View::Slot_SendShuntAll);
}

void ModuleDeviceType1_View::Slot_SendShuntAll(bool state)
{
    emit Signal_SendShuntAll(state);
}
