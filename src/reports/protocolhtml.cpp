#include "reports/protocolhtml.h"

#include "protocol/records/modulelists.h"
#include "protocol/records/moduletypes.h"
#include "reports/channelsettings.h"
#include "reports/htmltext.h"
#include "reports/moduletexts.h"
#include "reports/reportfilename.h"
#include "reports/reporthead.h"
#include "reports/statusstore.h"

#include <QLocale>

namespace {

constexpr char kGap[] = "&nbsp;&nbsp;&nbsp;";

/// A line with what is ours as HTML and what is the module's as plain text. `name` ends with its colon.
QString line(const char *name, const QString &value, const QString &product = QString())
{
    return QStringLiteral("<br>") + QLatin1String(name) + QLatin1String(kGap) + product + htmlText(value);
}

QString listLine(const char *name, const QString &listText)
{
    return line(name, joinedItems(listText));
}

QString settingLine(const char *name, const std::optional<QString> &item)
{
    return line(name, item.value_or(QString()));
}

QString headLines(const ReportHead &head)
{
    return htmlText(reportfilename::baseName(head.fileName)) +
           QStringLiteral("<br>========= [ Test Protocol ") +
           QLocale::c().toString(head.created, QStringLiteral("dd.MM.yyyy")) +
           QStringLiteral(" ] =========<br>");
}

QString identityLines(const Module_Status &module)
{
    return line("Module:", moduletexts::longTypeName(module.moduleType)) +
           line("Serial Number:", moduletexts::nineDigits(module.serialNumber)) +
           line("Hardware:", module.hardwareVersion) + line("BOOT Firmware:", QStringLiteral("n/a")) +
           line("MAIN Firmware:", module.firmware1Version, QStringLiteral("&nbsp;VXPIC1&nbsp;")) +
           line("FPGA Firmware:", module.firmware2Version, QStringLiteral("VX_THERMO&nbsp;"));
}

QString stateLines(const Fast_Module_Status &fast)
{
    return line("Supply Voltage:", moduletexts::volts(fast.supplyVoltage, 2) + QStringLiteral(" V")) +
           line("Module Temperature:", moduletexts::celsius(fast.temperature, 1) + QStringLiteral(" °C")) +
           line("Selftest Message:", moduletexts::selfTest(fast.moduleState)) + QStringLiteral("<br>");
}

QString strainGaugeLines(const Module_Status &module)
{
    const ModuleSettings settings = moduleSettings(module);
    return listLine("Bridge Types:", module.sensorList) + listLine("Range Types:", module.rangeList) +
           settingLine("Ch.1 Bridge Type setting:", settings.a.sensor) +
           settingLine("Ch.1 Range setting:", settings.a.range) +
           settingLine("Ch.2 Bridge Type setting:", settings.b.sensor) +
           settingLine("Ch.2 Range setting:", settings.b.range);
}

QString universalLines(const Module_Status &module)
{
    const ChannelTexts sensors = channelListTexts(module.sensorList);
    const ChannelTexts ranges = channelListTexts(module.rangeList);
    const ModuleSettings settings = moduleSettings(module);
    return listLine("Bridge/Sensor Types Channel A:", sensors.a) +
           listLine("Range Types Channel A:", ranges.a) +
           settingLine("Ch.A Bridge Type setting:", settings.a.sensor) +
           settingLine("Ch.A Range setting:", settings.a.range) +
           listLine("<br>Bridge Type Channel B:", sensors.b) + listLine("Range Types Channel B:", ranges.b) +
           settingLine("Ch.B Bridge Type setting:", settings.b.sensor) +
           settingLine("Ch.B Range setting:", settings.b.range);
}

QString otherLines(const Module_Status &module)
{
    const ModuleSettings settings = moduleSettings(module);
    return listLine("Input:", module.sensorList) + QStringLiteral("<br>Ranges: ") +
           htmlText(joinedItems(module.rangeList)) + settingLine("Ch.1 Range setting:", settings.a.range) +
           settingLine("Ch.2 Range setting:", settings.b.range);
}

QString typeLines(const Module_Status &module)
{
    switch (static_cast<ModuleType>(module.moduleType)) {
    case ModuleType::StrainGauge:
        return strainGaugeLines(module);
    case ModuleType::Universal:
        return universalLines(module);
    case ModuleType::Thermo:
        return {};
    case ModuleType::Unknown:
    case ModuleType::Voltage:
    case ModuleType::Iepe:
    case ModuleType::Xvdt:
    case ModuleType::Potentiometer:
    case ModuleType::CurrentLoop:
    case ModuleType::Auxiliary:
    case ModuleType::Controller:
    case ModuleType::Power:
        break;
    }
    return otherLines(module);
}

} // namespace

QString protocolHtml(const StatusStore &store, int address, const ReportHead &head)
{
    const Module_Status &module = store.module(address);
    return QStringLiteral("<html><head></head><body "
                          "style=\"font-family:'arial narrow';font-size:10px;line-height:0.0;\">"
                          "<p style=\"line-height:0.8;\">") +
           headLines(head) + identityLines(module) + stateLines(store.fastModule(address)) +
           typeLines(module) + QStringLiteral("</p></body></html>");
}
