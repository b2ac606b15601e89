#include "modules/moduledevicetype1_ctrllr.h"

#include "modules/common/channelsnapshot.h"
#include "modules/moduledevicetype1_view.h"
#include "modules/modulerequests.h"

namespace {

constexpr int kWholeModule = 0; ///< in place of a channel

} // namespace

ModuleDeviceType1_Ctrllr::ModuleDeviceType1_Ctrllr(int moduleNumber, int firstChannel, TimeSource &time,
                                                   QObject *parent)
    : BridgeModule_Ctrllr(makeParts<ModuleDeviceType1_View, ModelType1>(wireCode(ModuleType::StrainGauge),
                                                                        moduleNumber, firstChannel, time),
                          time, parent)
{
    using View = ModuleDeviceType1_View;
    auto *view = &row<View>();
    connect(view, &View::Signal_SendShuntAll, this, &ModuleDeviceType1_Ctrllr::Slot_SendShuntCmdAll);
    connect(view, &View::Signal_ShifClickCommand, this, &ModuleDeviceType1_Ctrllr::Slot_ShiftClick);
}

void ModuleDeviceType1_Ctrllr::SetChannelT1Setup(int channel, const ChannelSetup &setup)
{
    applySetup(channel, setup);
}

void ModuleDeviceType1_Ctrllr::SetChannelT1Values(int channel, const ChannelRecord &values)
{
    applyValues(channel, values);
}

void ModuleDeviceType1_Ctrllr::connectRequests(const ModuleRequests &requests)
{
    connect(this, &ModuleDeviceType1_Ctrllr::Signal_SendChannelT1Data, requests.context,
            requests.channelRequest);
}

void ModuleDeviceType1_Ctrllr::Slot_SendShuntCmdAll(bool state)
{
    ChannelRecord snapshot = GetData()->channel(kWholeModule);
    snapshot.shuntState = state ? 1 : 0;
    emitRequest(kWholeModule, snapshot, wireCode(ChannelSelector::ShuntAll));
}

void ModuleDeviceType1_Ctrllr::emitRequest(int ch, const ChannelRecord &snapshot, quint8 selector)
{
    emit Signal_SendChannelT1Data(
        QVariant::fromValue(changeRequest<DatagramT1>(moduleNumber(), ch, snapshot, selector)));
}
