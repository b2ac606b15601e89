#include "reports/overviewhtml.h"

#include "protocol/records/moduletypes.h"
#include "reports/channelsettings.h"
#include "reports/htmltext.h"
#include "reports/moduletexts.h"
#include "reports/reportfilename.h"
#include "reports/statusstore.h"

#include <QLocale>
#include <QRegularExpression>

namespace {

using OptionalText = std::optional<QString>;

QString cell(const QString &text)
{
    return QStringLiteral("<td>") + htmlText(text) + QStringLiteral("</td>");
}

/// Without a value the cell holds one blank.
QString optionalCell(const OptionalText &text)
{
    return text ? cell(*text) : QStringLiteral("<td> </td>");
}

// ---- Head ----

QString pageStart()
{
    return QStringLiteral(
        "<html><head>"
        "<style>table, th, td { border: 1px solid red;border-color:#d1d1e0;border-width: thin;"
        "border-style: solid;  border-collapse: collapse;line-height:0.9;}"
        "th, td {padding: 2px;border-style: solid;border-width: thin;vertical-align: top;}</style></head>"
        "<body style=\"font-family:arial narrow;font-size:9px;vertical-align: top;\">");
}

QString originLines(const ReportHead &head)
{
    return QStringLiteral("&nbsp;") + htmlText(reportfilename::baseName(head.fileName)) +
           QStringLiteral("<br>&nbsp;Date:&nbsp;") +
           QLocale::c().toString(head.created, QStringLiteral("dd/MM/yyyy")) +
           QStringLiteral("&nbsp; Time:&nbsp;") +
           QLocale::c().toString(head.created, QStringLiteral("HH:mm:ss")) +
           QStringLiteral("&nbsp; VXConfig Version:&nbsp;") + htmlText(head.productVersion) +
           QStringLiteral("&nbsp; OS Version:&nbsp;") + htmlText(head.osVersion);
}

QString ratesLine(const System_Status &system)
{
    // The device writes the channels behind the rate: "<rate> (<channels>ch)".
    static const QRegularExpression kSeparator(QStringLiteral("\\(|\\)|ch"));
    const QStringList parts = system.bitRate.split(kSeparator);
    const QString bitRate = QString(parts.first()).remove(u' ');
    const QString channels = parts.value(1);
    const QString gap = QStringLiteral("; &nbsp;&nbsp;&nbsp;");
    return QStringLiteral("<br>&nbsp;Bitrate:&nbsp;") + htmlText(bitRate) + gap +
           QStringLiteral("Channels:&nbsp;") + htmlText(channels) + gap +
           QStringLiteral("Sampling Rate:&nbsp;") + htmlText(system.samplingRate) + u';';
}

// ---- Heading rows ----

struct Heading
{
    const char *attributes; ///< of the cell, with a blank in front
    const char *html;
};

// One column each, the four pairs of columns of the channels, and one column each again.
constexpr Heading kHeadings[] = {
    {" width=\"24\"", "Addr"},
    {" width=\"54\"", "ModuleType"},
    {" width=\"48\"", "Serial No."},
    {" colspan=\"2\"", "Channel Function"},
    {" colspan=\"2\"", "Sensor Type"},
    {" colspan=\"2\"", "Range"},
    {" colspan=\"2\"", "Filter<span style=\"font-weight:normal\"> -3 dB cutoff [Hz]</span>"},
    {"", "HW"},
    {"", "FW1"},
    {"", "FW2"},
};

constexpr Heading kChannelHeadings[] = {
    {"", ""},
    {" width=\"50\"", ""},
    {" width=\"40\"", ""},
    {" width=\"48\"", "Channel A"},
    {" width=\"48\"", "Channel B"},
    {" width=\"50\"", "Channel A"},
    {" width=\"50\"", "Channel B"},
    {" width=\"68\"", "Channel A"},
    {" width=\"68\"", "Channel B"},
    {" width=\"42\"", "Channel A"},
    {" width=\"42\"", "Channel B"},
    {" width=\"30\"", ""},
    {" width=\"38\"", ""},
    {" width=\"38\"", ""},
};

template <std::size_t Count>
QString headingRow(const Heading (&headings)[Count])
{
    QString row = QStringLiteral("<tr>");
    for (const Heading &heading : headings)
        row += QStringLiteral("<th%1>%2</th>").arg(heading.attributes, heading.html);
    return row + QStringLiteral("</tr>");
}

QString headHtml(const System_Status &system, const ReportHead &head)
{
    return pageStart() + originLines(head) + ratesLine(system) +
           QStringLiteral("<br><table border=\"1\" cellspacing=\"0\" "
                          "style=\"font-family: arial narrow;font-size:8px;\">") +
           headingRow(kHeadings) + headingRow(kChannelHeadings);
}

// ---- Rows of modules ----

QString identityCells(const Module_Status &module, int address)
{
    return cell(QString::number(address)) + cell(moduletexts::longTypeName(module.moduleType)) +
           cell(moduletexts::nineDigits(module.serialNumber));
}

QString versionCells(const Module_Status &module)
{
    return cell(module.hardwareVersion) + cell(module.firmware1Version) + cell(module.firmware2Version);
}

/// Row of a module that has no channels.
QString fixedRow(const StatusStore &store, int address)
{
    constexpr int kChannelColumns = 8;
    const Module_Status &module = store.module(address);
    return QStringLiteral("<tr>") + identityCells(module, address) +
           cell(QString()).repeated(kChannelColumns) + versionCells(module) + QStringLiteral("</tr>");
}

OptionalText withUnit(const OptionalText &range, quint8 functionCode)
{
    if (!range)
        return std::nullopt;
    return moduletexts::rangeWithUnit(*range, functionCode);
}

QString pairCells(const OptionalText &a, const OptionalText &b)
{
    return optionalCell(a) + optionalCell(b);
}

/// Both cells are blank if one value is missing.
QString wholePairCells(const OptionalText &a, const OptionalText &b)
{
    return a && b ? pairCells(a, b) : pairCells(std::nullopt, std::nullopt);
}

QString settingCells(const Module_Status &module)
{
    const ModuleSettings settings = moduleSettings(module);
    const ChannelSettings &a = settings.a;
    const ChannelSettings &b = settings.b;
    if (module.moduleType == wireCode(ModuleType::Universal))
        return wholePairCells(a.sensor, b.sensor) +
               wholePairCells(withUnit(a.range, a.functionCode), withUnit(b.range, b.functionCode));
    return pairCells(a.sensor, b.sensor) +
           pairCells(withUnit(a.range, module.moduleType), withUnit(b.range, module.moduleType));
}

QString analogRow(const Module_Status &module, int address)
{
    return QStringLiteral("<tr >") + identityCells(module, address) +
           cell(moduletexts::longTypeName(module.functionCodeA)) +
           cell(moduletexts::longTypeName(module.functionCodeB)) + settingCells(module) +
           cell(module.filterA) + cell(module.filterB) + versionCells(module) + QStringLiteral("</tr>");
}

QString fixedRows(const StatusStore &store, const ModuleFilter &isChosen)
{
    QString rows;
    if (isChosen(kControllerAddress))
        rows += fixedRow(store, kControllerAddress);
    if (isChosen(kPowerAddress) && store.hasPowerModule())
        rows += fixedRow(store, kPowerAddress);
    return rows;
}

QString analogRows(const StatusStore &store, const ModuleFilter &isChosen)
{
    QString rows;
    for (int address = 1; address <= store.analogModuleCount(); ++address) {
        if (isChosen(address))
            rows += analogRow(store.module(address), address);
    }
    return rows;
}

} // namespace

QString overviewHtml(const StatusStore &store, const ModuleFilter &isChosen, const ReportHead &head)
{
    return headHtml(store.systemStatus, head) + fixedRows(store, isChosen) + analogRows(store, isChosen) +
           QStringLiteral("</table></body></html>");
}
