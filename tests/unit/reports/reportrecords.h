#pragma once

#include "reports/reporthead.h"
#include "reports/statusstore.h"

#include <utility>

/// Example records, put together here, of which reports are made.
namespace reportrecords {

/// A module whose texts tell what they are and, at their end, whose.
inline Module_Status module(quint8 address, quint8 type)
{
    const QString number = QString::number(address);
    Module_Status status;
    status.moduleAddress = address;
    status.moduleType = type;
    status.functionCodeA = type;
    status.functionCodeB = type;
    status.serialNumber = QStringLiteral("77 ") + number;
    status.hardwareVersion = QStringLiteral("HW") + number;
    status.firmware1Version = QStringLiteral("MAIN") + number;
    status.firmware2Version = QStringLiteral("FPGA") + number;
    status.offsetA = QStringLiteral("oa") + number;
    status.offsetB = QStringLiteral("ob") + number;
    status.filterA = QStringLiteral("fa") + number;
    status.filterB = QStringLiteral("fb") + number;
    return status;
}

inline Module_Status controller()
{
    Module_Status status = module(0, 100);
    status.serialNumber = QStringLiteral("12 34");
    return status;
}

inline Module_Status power()
{
    Module_Status status = module(129, 120);
    status.rangeList = QStringLiteral("9-36$");
    return status;
}

/// Channel A: the second sensor and the third range. Channel B: the first of both.
inline Module_Status oneListModule(quint8 address, quint8 type)
{
    Module_Status status = module(address, type);
    status.sensorList = QStringLiteral("Full$Half$");
    status.rangeList = QStringLiteral("2$5$10$");
    status.bridgeIndexA = 1;
    status.rangeIndexA = 2;
    return status;
}

/// Channel A: strain gauge, the second sensor and the first range. Channel B: voltage, the third sensor and
/// the second range.
inline Module_Status universalModule(quint8 address)
{
    Module_Status status = module(address, 9);
    status.sensorList = QStringLiteral("Full$Half$#Volt$Diff$IEPE$");
    status.rangeList = QStringLiteral("2$5$#1$10$");
    status.bridgeIndexA = 1;
    status.bridgeIndexB = 2;
    status.rangeIndexB = 1;
    status.functionCodeA = 1;
    status.functionCodeB = 2;
    return status;
}

/// Live values of a module in good health.
inline Fast_Module_Status fast(quint16 supplyVoltage, quint16 temperature, quint8 failureFlag = 0)
{
    Fast_Module_Status status;
    status.supplyVoltage = supplyVoltage;
    status.temperature = temperature;
    status.moduleState = failureFlag;
    return status;
}

/// A system that claims this number of analog modules.
inline System_Status system(quint16 modules)
{
    System_Status status;
    status.nModules = modules;
    status.sModules[0] = 100;
    status.poweringMode = QStringLiteral("Fixed");
    status.dataTransmission = QStringLiteral("PCM");
    status.transmissionMode = QStringLiteral("FM");
    status.samplingRate = QStringLiteral("1000 Hz");
    status.bitRate = QStringLiteral("5000 kbit/s (16)");
    return status;
}

/// The store of a controller and these modules.
inline StatusStore storeOf(const QVector<Module_Status> &analogModules)
{
    StatusStore store;
    store.setSystem(system(static_cast<quint16>(analogModules.size())));
    store.setModule(controller());
    for (const Module_Status &module : analogModules)
        store.setModule(module);
    return store;
}

/// A module of each type, in the order of the type codes, from address 1 on.
inline StatusStore chain()
{
    QVector<Module_Status> modules;
    for (quint8 type = 1; type <= 8; ++type)
        modules.append(oneListModule(type, type));
    modules.append(universalModule(9));
    modules.append(oneListModule(10, 130));
    modules.append(oneListModule(11, 140));
    modules.append(oneListModule(12, 150));
    return storeOf(modules);
}

/// Puts a power module into a store: named by the system, with a record of its own.
inline void addPower(StatusStore &store)
{
    store.systemStatus.sModules[9] = 120;
    store.setModule(power());
    store.fastSystemStatus.voltageRaw = 2805;
    store.fastSystemStatus.outputVoltageRaw = 1234;
}

inline ReportHead head(const QString &fileName)
{
    return {fileName, QDateTime(QDate(2026, 3, 5), QTime(9, 8, 7)), QStringLiteral("1.1.62"),
            QStringLiteral("Test OS 5")};
}

inline ModuleFilter allChosen()
{
    return [](int) { return true; };
}

/// Only these addresses were chosen.
inline ModuleFilter chosen(QVector<int> addresses)
{
    return [addresses = std::move(addresses)](int address) { return addresses.contains(address); };
}

} // namespace reportrecords
