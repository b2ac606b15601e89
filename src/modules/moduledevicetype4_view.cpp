#include "modules/moduledevicetype4_view.h"

#include "modules/channels/channeltype4_view.h"
#include "modules/common/channelfunction.h"
#include "modules/widgets/changemoduletype.h"
#include "protocol/records/moduletypes.h"

ModuleDeviceType4_View::ModuleDeviceType4_View(int moduleNumber, const ModuleIdentification &identification,
                                               const ModuleMeasurement &measurement, int firstChannel,
                                               int secondChannel, TimeSource &time, QWidget *parent)
    : BridgeModule_View(moduleNumber, identification, measurement, firstChannel, secondChannel, parent)
    , m_strips{new ChannelType4_View(time, this), new ChannelType4_View(time, this)}
    , m_functionDialog(new ChangeModuleType(this))
{
    setObjectName(QStringLiteral("ModuleDeviceType4_View"));
    setBridgeChannels(m_strips[0], m_strips[1]);
    using Row = ModuleDeviceType4_View;
    connect(this, &Row::Signal_Channelbutton, m_functionDialog, &ChangeModuleType::Slot_Channel);
    connect(m_functionDialog, &ChangeModuleType::moduleSelected, this, &Row::Slot_SendChangeChannel);
    connect(m_functionDialog, &ChangeModuleType::voltageSupply, this, &Row::Signal_VoltageSupply);
    connect(m_functionDialog, &ChangeModuleType::Signal_ShiftClickCommand, this,
            &Row::Signal_ShifClickCommand);
}

void ModuleDeviceType4_View::setChannelFunction(Channel channel, quint8 code)
{
    setControlsVisible(channel, true);
    m_strips[indexOf(channel)]->setFunction(code);
    emit Signal_ChangeLabels(static_cast<int>(channel), code);
}

void ModuleDeviceType4_View::applyGroupCommand(const GroupCommand &command)
{
    const bool toUniversal = command.moduleType == wireCode(ModuleType::Universal);
    if (toUniversal && command.action() == GroupAction::ChannelFunction) {
        const auto function = static_cast<uchar>(command.value);
        Slot_SendChangeChannel(static_cast<uchar>(channelNumberA()), function);
        Slot_SendChangeChannel(static_cast<uchar>(channelNumberB()), function);
        return;
    }
    for (ChannelType4_View *strip : m_strips) {
        if (strip->channelFunction() == command.moduleType)
            strip->applyGroupCommand(command);
    }
}

void ModuleDeviceType4_View::Slot_SendChangeChannel(uchar ch, uchar type)
{
    const Channel channel = ch % 2 == 1 ? Channel::A : Channel::B;
    setControlsVisible(channel, false);
    setChannelName(channel, functionName(type));
    emit Signal_SendChannelChange(ch, type);
}
