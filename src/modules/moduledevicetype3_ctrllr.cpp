#include "modules/moduledevicetype3_ctrllr.h"

#include "modules/common/channelsnapshot.h"
#include "modules/moduledevicetype3_view.h"
#include "modules/modulerequests.h"

namespace {

constexpr qint32 kThermoFilterMin = 1;
constexpr qint32 kThermoFilterMax = 32;
constexpr qint32 kThermoFilterStep = 2;

ChannelSetup thermoLimits()
{
    ChannelSetup limits;
    limits.filterMin = kThermoFilterMin;
    limits.filterMax = kThermoFilterMax;
    limits.filterStep = kThermoFilterStep;
    return limits;
}

} // namespace

ModuleDeviceType3_Ctrllr::ModuleDeviceType3_Ctrllr(int moduleNumber, int firstChannel, TimeSource &time,
                                                   QObject *parent)
    : ChannelModule_Ctrllr(makeParts<ModuleDeviceType3_View, ModelType3>(wireCode(ModuleType::Thermo),
                                                                         moduleNumber, firstChannel),
                           thermoLimits(), time, parent)
{
    using P = ChannelParameter;
    addParameter(
        P::TypeIndex, [this] { ThermoDeviceType_A_FakeTimeOver(); },
        [this] { ThermoDeviceType_B_FakeTimeOver(); });
    addParameter(
        P::RangeIndex, [this] { TemperatureRange_A_FakeTimeOver(); },
        [this] { TemperatureRange_B_FakeTimeOver(); });
    addParameter(
        P::Autozero, [this] { Slot_Autozero_A_FakeTimeOver(); }, [this] { Slot_Autozero_B_FakeTimeOver(); });
    addParameter(
        P::Filter, [this] { Filter_A_FakeTimeOver(); }, [this] { Filter_B_FakeTimeOver(); });

    using View = ModuleDeviceType3_View;
    using Own = ModuleDeviceType3_Ctrllr;
    auto *view = &row<View>();
    connect(view, &View::Signal_DeviceButton, this, &Own::DeviceButton);
    connect(view, &View::Signal_SendThermoDeviceTypeIndex, this, &Own::SendThermoDeviceTypeIndex);
    connect(view, &View::Signal_SendTemperatureRangeIndex, this, &Own::SendTemperatureRangeIndex);
    connect(view, &View::Signal_SendFilterValue, this, &Own::SendFilterValue);
    connect(view, &View::Signal_ShiftClickCommand, this, &Own::Slot_ShiftClick);
}

void ModuleDeviceType3_Ctrllr::SetChannelT3Setup(int channel, const ChannelSetup &setup)
{
    applySetup(channel, setup);
}

void ModuleDeviceType3_Ctrllr::SetChannelT3Values(int channel, const ChannelRecord &values)
{
    applyValues(channel, values);
}

void ModuleDeviceType3_Ctrllr::connectRequests(const ModuleRequests &requests)
{
    connect(this, &ModuleDeviceType3_Ctrllr::Signal_SendChannelT3Data, requests.context,
            requests.channelRequest);
}

void ModuleDeviceType3_Ctrllr::DeviceButton()
{
    Slot_DeviceButton();
}

void ModuleDeviceType3_Ctrllr::ChannelButton()
{
    Slot_ChannelButton();
}

void ModuleDeviceType3_Ctrllr::SendThermoDeviceTypeIndex(int ch, int index)
{
    changeTypeIndex(ch, index);
}

void ModuleDeviceType3_Ctrllr::SendTemperatureRangeIndex(int ch, int index)
{
    changeRangeIndex(ch, index);
}

void ModuleDeviceType3_Ctrllr::SendFilterValue(int ch, int value)
{
    changeFilter(ch, value);
}

void ModuleDeviceType3_Ctrllr::Slot_SendAutozero(int ch, bool state)
{
    changeAutozero(ch, state, wireCode(ChannelSelector::Autozero));
}

void ModuleDeviceType3_Ctrllr::ThermoDeviceType_A_FakeTimeOver()
{
    timeOver(ChannelParameter::TypeIndex, Channel::A);
}

void ModuleDeviceType3_Ctrllr::ThermoDeviceType_B_FakeTimeOver()
{
    timeOver(ChannelParameter::TypeIndex, Channel::B);
}

void ModuleDeviceType3_Ctrllr::TemperatureRange_A_FakeTimeOver()
{
    timeOver(ChannelParameter::RangeIndex, Channel::A);
}

void ModuleDeviceType3_Ctrllr::TemperatureRange_B_FakeTimeOver()
{
    timeOver(ChannelParameter::RangeIndex, Channel::B);
}

void ModuleDeviceType3_Ctrllr::Slot_Autozero_A_FakeTimeOver()
{
    timeOver(ChannelParameter::Autozero, Channel::A);
}

void ModuleDeviceType3_Ctrllr::Slot_Autozero_B_FakeTimeOver()
{
    timeOver(ChannelParameter::Autozero, Channel::B);
}

void ModuleDeviceType3_Ctrllr::Filter_A_FakeTimeOver()
{
    timeOver(ChannelParameter::Filter, Channel::A);
}

void ModuleDeviceType3_Ctrllr::Filter_B_FakeTimeOver()
{
    timeOver(ChannelParameter::Filter, Channel::B);
}

void ModuleDeviceType3_Ctrllr::emitRequest(int ch, const ChannelRecord &snapshot, quint8 selector)
{
    emit Signal_SendChannelT3Data(
        QVariant::fromValue(changeRequest<DatagramT3>(moduleNumber(), ch, snapshot, selector)));
}

void ModuleDeviceType3_Ctrllr::applyFastStatus(const Fast_Module_Status &status)
{
    ChannelModule_Ctrllr::applyFastStatus(status);
    logAnalogData("void ModuleDeviceType3_Ctrllr::Slot_FastModuleStatus(QVariant)", status);
}
