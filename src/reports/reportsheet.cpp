#include "reports/reportsheet.h"

#include "reports/channelsettings.h"
#include "reports/moduletexts.h"
#include "reports/reportfilename.h"
#include "reports/statusstore.h"

#include <QLocale>
#include <algorithm>

namespace {

constexpr int kControllerRow = 3;
constexpr int kFirstAnalogRow = 4;

// Columns that stay empty in rows of one kind. An analog row has one value behind the last heading, the row
// of the power module ends before "Bit Rate", both as agreed.
constexpr int kFromFirstFunctionToCurrent = 21;
constexpr int kFromInpVoltBehindBitRate = 10;
constexpr int kFromFirstFunctionToSensors = 17;
constexpr int kFromCurrentToSamplingRate = 6;

constexpr int kDecimals = 2;
constexpr char kZero[] = "0";

QStringList emptyCells(int count)
{
    QStringList cells;
    for (int i = 0; i < count; ++i)
        cells += QStringLiteral(" ");
    return cells;
}

QStringList headingCells()
{
    const QString headings =
        QStringLiteral("Mod|Module Name|S/N|HW|SW1|SW2|Volt|Temp|BITE|Status|"
                       "Ch.1 Function|Function1|Sensor1|Range1|Offset1|Filter1|Level1|"
                       "Ch.2 Function|Function2|Sensor2|Range2|Offset2|Filter2|Level2|"
                       "Sensor List|Range List|Sensors|Ranges|InpVolt|OutVolt|Current|Modules|"
                       "Powering Mode|Data Transmission|Transmission Mode|Sampling Rate|Bit Rate");
    return headings.split(u'|');
}

QString titleText(const ReportHead &head)
{
    return reportfilename::baseName(head.fileName) + QStringLiteral(" / Report Created ") +
           QLocale::c().toString(head.created, QStringLiteral("dd.MM.yy, HH:mm:ss /")) +
           QStringLiteral(" comment comment comment");
}

/// From "Mod" to "Temp".
QStringList identityCells(const StatusStore &store, int address)
{
    const Fast_Module_Status &fast = store.fastModule(address);
    return moduletexts::identity(store.module(address), address) +
           QStringList{moduletexts::volts(fast.supplyVoltage, kDecimals),
                       moduletexts::celsius(fast.temperature, kDecimals)};
}

QString failureFlag(const StatusStore &store, int address)
{
    return QString::number(store.fastModule(address).moduleState);
}

/// "BITE" and "Status" of the controller and the power module.
QStringList fixedStateCells(const StatusStore &store, int address)
{
    return {kZero, failureFlag(store, address)};
}

/// The same of an analog module: the other way round, as agreed.
QStringList analogStateCells(const StatusStore &store, int address)
{
    return {failureFlag(store, address), kZero};
}

QStringList controllerCells(const StatusStore &store)
{
    const System_Status &system = store.systemStatus;
    return identityCells(store, kControllerAddress) + fixedStateCells(store, kControllerAddress) +
           emptyCells(kFromFirstFunctionToCurrent) +
           QStringList{QString::number(system.nModules), system.poweringMode, system.dataTransmission,
                       system.transmissionMode,          system.samplingRate, system.bitRate};
}

QStringList channelCells(quint8 functionCode, quint8 bridgeIndex, quint8 rangeIndex, const QString &offset,
                         const QString &filter)
{
    return {moduletexts::longTypeName(functionCode),
            QString::number(functionCode),
            QString::number(bridgeIndex),
            QString::number(rangeIndex),
            offset,
            filter,
            kZero};
}

QStringList listCells(const Module_Status &module)
{
    const ChannelSettings settings = moduleSettings(module).a;
    return {module.sensorList, module.rangeList, QString::number(settings.sensors.size()),
            QString::number(settings.ranges.size())};
}

QStringList analogCells(const StatusStore &store, int address)
{
    const Module_Status &module = store.module(address);
    return identityCells(store, address) + analogStateCells(store, address) +
           channelCells(module.functionCodeA, module.bridgeIndexA, module.rangeIndexA, module.offsetA,
                        module.filterA) +
           channelCells(module.functionCodeB, module.bridgeIndexB, module.rangeIndexB, module.offsetB,
                        module.filterB) +
           listCells(module) + emptyCells(kFromInpVoltBehindBitRate);
}

QStringList powerCells(const StatusStore &store)
{
    const Fast_System_Status &fast = store.fastSystemStatus;
    return identityCells(store, kPowerAddress) + fixedStateCells(store, kPowerAddress) +
           emptyCells(kFromFirstFunctionToSensors) +
           QStringList{store.module(kPowerAddress).rangeList, moduletexts::shortVolts(fast.voltageRaw),
                       moduletexts::shortVolts(fast.outputVoltageRaw)} +
           emptyCells(kFromCurrentToSamplingRate);
}

std::vector<ReportSheet::Row> sheetRows(const StatusStore &store, const ModuleFilter &isChosen)
{
    std::vector<ReportSheet::Row> rows;
    const int analogCount = store.analogModuleCount();
    if (isChosen(kControllerAddress))
        rows.push_back({kControllerRow, controllerCells(store)});
    for (int address = 1; address <= analogCount; ++address) {
        if (isChosen(address))
            rows.push_back({kFirstAnalogRow + address - 1, analogCells(store, address)});
    }
    if (isChosen(kPowerAddress) && store.hasPowerModule())
        rows.push_back({kFirstAnalogRow + analogCount, powerCells(store)});
    return rows;
}

} // namespace

ReportSheet reportSheet(const StatusStore &store, const ModuleFilter &isChosen, const ReportHead &head)
{
    return {titleText(head), headingCells(), sheetRows(store, isChosen)};
}

bool isNumberCell(int column, const QString &value)
{
    constexpr int kNumberColumns[] = {1, 9, 10, 13, 14, 20, 21};
    return !value.contains(u' ') && std::find(std::begin(kNumberColumns), std::end(kNumberColumns), column) !=
                                        std::end(kNumberColumns);
}
