#include "modules/moduledevicetype3_view.h"

#include "modules/channels/channeltype3_view.h"

ModuleDeviceType3_View::ModuleDeviceType3_View(int moduleNumber, const ModuleIdentification &identification,
                                               const ModuleMeasurement &measurement, int firstChannel,
                                               int secondChannel, QWidget *parent)
    : ChannelModule_View(moduleNumber, identification, measurement, firstChannel, secondChannel, parent)
{
    setObjectName(QStringLiteral("ModuleDeviceType3_View"));
    auto *a = new ChannelType3_View(this);
    auto *b = new ChannelType3_View(this);
    setChannelViews(a, b);
    using Strip = ChannelType3_View;
    using Row = ModuleDeviceType3_View;
    connect(a, &Strip::Signal_SendThermoDeviceTypeIndex, this, &Row::SendThermoDeviceTypeIndex_A);
    connect(b, &Strip::Signal_SendThermoDeviceTypeIndex, this, &Row::SendThermoDeviceTypeIndex_B);
    connect(a, &Strip::Signal_SendTemperatureRangeIndex, this, &Row::SendTemperatureRangeIndex_A);
    connect(b, &Strip::Signal_SendTemperatureRangeIndex, this, &Row::SendTemperatureRangeIndex_B);
    connect(a, &Strip::Signal_SendFilterValue, this, &Row::SendFilterValue_A);
    connect(b, &Strip::Signal_SendFilterValue, this, &Row::SendFilterValue_B);
    for (const Strip *strip : {a, b})
        connect(strip, &Strip::Signal_ShiftClickCommand, this, &Row::Signal_ShiftClickCommand);
}

void ModuleDeviceType3_View::SendThermoDeviceTypeIndex_A(int index)
{
    emit Signal_SendThermoDeviceTypeIndex(kChannelA, index);
}

void ModuleDeviceType3_View::SendThermoDeviceTypeIndex_B(int index)
{
    emit Signal_SendThermoDeviceTypeIndex(kChannelB, index);
}

void ModuleDeviceType3_View::SendTemperatureRangeIndex_A(int index)
{
    emit Signal_SendTemperatureRangeIndex(kChannelA, index);
}

void ModuleDeviceType3_View::SendTemperatureRangeIndex_B(int index)
{
    emit Signal_SendTemperatureRangeIndex(kChannelB, index);
}

void ModuleDeviceType3_View::SendFilterValue_A(int value)
{
    emit Signal_SendFilterValue(kChannelA, value);
}

void ModuleDeviceType3_View::SendFilterValue_B(int value)
{
    emit Signal_SendFilterValue(kChannelB, value);
}
