#include "modules/moduledevicetype2_ctrllr.h"

#include "modules/common/channelsnapshot.h"
#include "modules/moduledevicetype2_view.h"
#include "modules/modulerequests.h"

ModuleDeviceType2_Ctrllr::ModuleDeviceType2_Ctrllr(quint8 moduleType, int moduleNumber, int firstChannel,
                                                   TimeSource &time, QObject *parent)
    : AmplifierModule_Ctrllr(
          makeParts<ModuleDeviceType2_View, ModelType2>(moduleType, moduleNumber, firstChannel, time),
          amplifierLimits(), time, parent)
{
    addParameter(
        ChannelParameter::RangeIndex, [this] { Slot_RangeGain_A_FakeTimeOver(); },
        [this] { Slot_RangeGain_B_FakeTimeOver(); });
    using View = ModuleDeviceType2_View;
    auto *view = &row<View>();
    connect(view, &View::Signal_SendRangeGainIndex, this, &ModuleDeviceType2_Ctrllr::Slot_SendRangeGainIndex);
    connect(view, &View::Signal_ShifClickCommand, this, &ModuleDeviceType2_Ctrllr::Slot_ShiftClick);
}

void ModuleDeviceType2_Ctrllr::SetChannelT2Setup(int channel, const ChannelSetup &setup)
{
    applySetup(channel, setup);
}

void ModuleDeviceType2_Ctrllr::SetChannelT2Values(int channel, const ChannelRecord &values)
{
    applyValues(channel, values);
}

void ModuleDeviceType2_Ctrllr::connectRequests(const ModuleRequests &requests)
{
    connect(this, &ModuleDeviceType2_Ctrllr::Signal_SendChannelT2Data, requests.context,
            requests.channelRequest);
}

void ModuleDeviceType2_Ctrllr::Slot_SendRangeGainIndex(int ch, int index)
{
    changeRangeIndex(ch, index);
}

void ModuleDeviceType2_Ctrllr::Slot_RangeGain_A_FakeTimeOver()
{
    timeOver(ChannelParameter::RangeIndex, Channel::A);
}

void ModuleDeviceType2_Ctrllr::Slot_RangeGain_B_FakeTimeOver()
{
    timeOver(ChannelParameter::RangeIndex, Channel::B);
}

void ModuleDeviceType2_Ctrllr::emitRequest(int ch, const ChannelRecord &snapshot, quint8 selector)
{
    emit Signal_SendChannelT2Data(
        QVariant::fromValue(changeRequest<DatagramT2>(moduleNumber(), ch, snapshot, selector)));
}

void ModuleDeviceType2_Ctrllr::applyFastStatus(const Fast_Module_Status &status)
{
    AmplifierModule_Ctrllr::applyFastStatus(status);
    logAnalogData("void ModuleDeviceType2_Ctrllr::Slot_FastModuleStatus(QVariant)", status);
}
