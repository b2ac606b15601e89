#include "modules/moduledevicetype2_view.h"

#include "modules/channels/channeltype2_view.h"

ModuleDeviceType2_View::ModuleDeviceType2_View(int moduleNumber, const ModuleIdentification &identification,
                                               const ModuleMeasurement &measurement, int firstChannel,
                                               int secondChannel, TimeSource &time, QWidget *parent)
    : AmplifierModule_View(moduleNumber, identification, measurement, firstChannel, secondChannel, parent)
{
    setObjectName(QStringLiteral("ModuleDeviceType2_View"));
    auto *a = new ChannelType2_View(time, this);
    auto *b = new ChannelType2_View(time, this);
    setAmplifierChannels(a, b);
    using Strip = ChannelType2_View;
    using Row = ModuleDeviceType2_View;
    connect(a, &Strip::Signal_SendRangeGainIndex, this, &Row::SendRangeGainIndex_A);
    connect(b, &Strip::Signal_SendRangeGainIndex, this, &Row::SendRangeGainIndex_B);
    connect(a, &Strip::Signal_SendFilterValue, this, &Row::SendFilterValue_A);
    connect(b, &Strip::Signal_SendFilterValue, this, &Row::SendFilterValue_B);
    connect(a, &Strip::Signal_SendRevPolState, this, &Row::SendRevPolState_A);
    connect(b, &Strip::Signal_SendRevPolState, this, &Row::SendRevPolState_B);
}

void ModuleDeviceType2_View::SendRangeGainIndex_A(int index)
{
    emit Signal_SendRangeGainIndex(kChannelA, index);
}

void ModuleDeviceType2_View::SendRangeGainIndex_B(int index)
{
    emit Signal_SendRangeGainIndex(kChannelB, index);
}

void ModuleDeviceType2_View::SendFilterValue_A(int value)
{
    emit Signal_SendFilterValue(kChannelA, value);
}

void ModuleDeviceType2_View::SendFilterValue_B(int value)
{
    emit Signal_SendFilterValue(kChannelB, value);
}

void ModuleDeviceType2_View::SendRevPolState_A(bool state)
{
    emit Signal_SendRevPolState(kChannelA, state);
}

void ModuleDeviceType2_View::SendRevPolState_B(bool state)
{
    emit Signal_SendRevPolState(kChannelB, state);
}
