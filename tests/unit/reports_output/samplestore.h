#pragma once

#include "reports/overviewhtml.h"
#include "reports/statusstore.h"

#include <QTime>

/// A system of which every record came, to make reports of.
namespace samplestore {

inline Module_Status module(int address)
{
    Module_Status module;
    module.moduleAddress = static_cast<quint8>(address);
    module.moduleType = static_cast<quint8>(address == 0 ? 100 : 1 + address % 9);
    module.functionCodeA = 1;
    module.functionCodeB = 6; // the longest of the common names
    module.bridgeIndexB = 1;
    module.rangeIndexB = 1;
    module.serialNumber = QString::number(700000 + address);
    module.hardwareVersion = QStringLiteral("1.0.15");
    module.firmware1Version = QStringLiteral("12.34.56");
    module.firmware2Version = QStringLiteral("6.54.3");
    module.offsetA = QStringLiteral("0.25");
    module.offsetB = QStringLiteral("-0.5");
    module.filterA = QStringLiteral("10000");
    module.filterB = QStringLiteral("100000");
    // Rows of one to five lines.
    const QString sensor = QStringLiteral("Full Bridge 350 Ohm ").repeated(1 + address % 5).trimmed();
    module.sensorList = sensor + QStringLiteral("$Half Bridge$");
    module.rangeList = QStringLiteral("1000.5$2500$");
    return module;
}

/// With analog modules from address 1 on.
inline StatusStore filled(int analogModules)
{
    StatusStore store;
    System_Status system;
    system.nModules = static_cast<quint16>(analogModules);
    system.poweringMode = QStringLiteral("External");
    system.dataTransmission = QStringLiteral("16 bit");
    system.transmissionMode = QStringLiteral("Normal");
    system.bitRate = QStringLiteral("5 MBit/s (256ch)");
    system.samplingRate = QStringLiteral("2500 Hz");
    store.setSystem(system);
    for (int address = 0; address <= analogModules; ++address)
        store.setModule(module(address));
    return store;
}

inline QString overview(int analogModules)
{
    const ReportHead head{QStringLiteral("/reports/20261121100000_VX_SystemReport_.pdf"),
                          QDateTime(QDate(2026, 11, 21), QTime(10, 0)), QStringLiteral("1.1.62"),
                          QStringLiteral("Debian GNU/Linux 12 (bookworm)")};
    return overviewHtml(
        filled(analogModules), [](int) { return true; }, head);
}

} // namespace samplestore
