#include "modules/moduledevicetype4_ctrllr.h"

#include "base/log.h"
#include "modules/common/channelsnapshot.h"
#include "modules/moduledevicetype4_view.h"
#include "modules/modulerequests.h"
#include "protocol/records/modulestatus.h"

ModuleDeviceType4_Ctrllr::ModuleDeviceType4_Ctrllr(int moduleNumber, int firstChannel, TimeSource &time,
                                                   QObject *parent)
    : BridgeModule_Ctrllr(makeParts<ModuleDeviceType4_View, ModelType4>(wireCode(ModuleType::Universal),
                                                                        moduleNumber, firstChannel, time),
                          time, parent)
{
    using View = ModuleDeviceType4_View;
    using Own = ModuleDeviceType4_Ctrllr;
    auto *view = &row<View>();
    connect(view, &View::Signal_SendChannelChange, this, &Own::Slot_SendChannelChange);
    connect(view, &View::Signal_VoltageSupply, this, &Own::Slot_SendVoltageSupply);
    // The channel, or the dialog, has put its stamp on the command already.
    connect(view, &View::Signal_ShifClickCommand, this, &Own::Signal_ShiftClickCommand);
}

void ModuleDeviceType4_Ctrllr::SetChannelT4Setup(int channel, const ChannelSetup &setup)
{
    applySetup(channel, setup);
}

void ModuleDeviceType4_Ctrllr::SetChannelT4Values(int channel, const ChannelRecord &values)
{
    applyValues(channel, values);
}

void ModuleDeviceType4_Ctrllr::connectRequests(const ModuleRequests &requests)
{
    using Own = ModuleDeviceType4_Ctrllr;
    connect(this, &Own::Signal_SendChannelT4Data, requests.context, requests.channelRequest);
    connect(this, &Own::Signal_SendChannelChange, requests.context, requests.channelChange);
    connect(this, &Own::Signal_SendVoltageSupply, requests.context, requests.voltageSupply);
}

void ModuleDeviceType4_Ctrllr::Slot_SendChannelChange(uchar ch, uchar type)
{
    emit Signal_SendChannelChange(ch, type);
    emit Signal_GetChannelData(static_cast<uint>(moduleNumber()));
}

void ModuleDeviceType4_Ctrllr::Slot_SendVoltageSupply(uchar ch, uchar onOff, uchar voltage)
{
    emit Signal_SendVoltageSupply(ch, onOff, voltage);
    emit Signal_GetChannelData(static_cast<uint>(moduleNumber()));
}

void ModuleDeviceType4_Ctrllr::Slot_Autozero_A_FakeTimeOver()
{
    qDebug() << "Inside timeout";
    BridgeModule_Ctrllr::Slot_Autozero_A_FakeTimeOver();
}

void ModuleDeviceType4_Ctrllr::emitRequest(int ch, const ChannelRecord &snapshot, quint8 selector)
{
    emit Signal_SendChannelT4Data(
        QVariant::fromValue(changeRequest<DatagramT1>(moduleNumber(), ch, snapshot, selector)));
}

ChannelLists ModuleDeviceType4_Ctrllr::splitLists(const QString &text) const
{
    return channelLists(text);
}

void ModuleDeviceType4_Ctrllr::showNames(const Module_Status &status)
{
    debugLine("void ModuleDeviceType4_Ctrllr::Slot_StaticModuleStatus(QVariant)")
        << "Static M Stat ModuleDeviceType4_Ctrllr type" << status.moduleType
        << "Address: " << moduleNumber();
    qDebug() << " Shunt Preselect value: " << status.shuntPreselect;
    auto &view = row<ModuleDeviceType4_View>();
    view.setChannelFunction(Channel::A, status.functionCodeA);
    view.setChannelFunction(Channel::B, status.functionCodeB);
    view.setDeviceName(moduleTypeName(status.moduleType));
}

bool ModuleDeviceType4_Ctrllr::matchesGroupCommand(const GroupCommand &) const
{
    return true;
}
