#include "reports/moduleline.h"

#include "reports/moduletexts.h"
#include "reports/statusstore.h"

#include <QStringList>

namespace {

QStringList commonFields(const Module_Status &module, const Fast_Module_Status &fast, int address)
{
    return moduletexts::identity(module, address) + QStringList{moduletexts::shortVolts(fast.supplyVoltage),
                                                                moduletexts::shortCelsius(fast.temperature),
                                                                QStringLiteral("0"),
                                                                QString::number(fast.moduleState)};
}

QStringList controllerFields(const System_Status &system)
{
    return {QString::number(system.nModules), system.poweringMode, system.dataTransmission,
            system.transmissionMode,          system.samplingRate, system.bitRate};
}

QStringList powerFields(const Module_Status &module, const Fast_System_Status &fast)
{
    return {module.rangeList, moduletexts::shortVolts(fast.voltageRaw),
            moduletexts::shortVolts(fast.outputVoltageRaw), QStringLiteral(" ")};
}

QStringList channelFields(quint8 bridgeIndex, quint8 rangeIndex, const QString &offset, const QString &filter)
{
    return {QStringLiteral("0"), QString::number(bridgeIndex), QString::number(rangeIndex), offset, filter};
}

QStringList analogFields(const Module_Status &module)
{
    return channelFields(module.bridgeIndexA, module.rangeIndexA, module.offsetA, module.filterA) +
           channelFields(module.bridgeIndexB, module.rangeIndexB, module.offsetB, module.filterB) +
           QStringList{QStringLiteral("0"), module.sensorList, module.rangeList};
}

QStringList fieldsOfKind(const StatusStore &store, const Module_Status &module, int address)
{
    if (address == kControllerAddress)
        return controllerFields(store.systemStatus);
    if (address == kPowerAddress)
        return powerFields(module, store.fastSystemStatus);
    return analogFields(module);
}

} // namespace

QString moduleLine(const StatusStore &store, int address)
{
    const Module_Status &module = store.module(address);
    const QStringList fields =
        commonFields(module, store.fastModule(address), address) + fieldsOfKind(store, module, address);
    const QString separator = QStringLiteral("  ");
    return separator + fields.join(separator) + QStringLiteral(".\n");
}
