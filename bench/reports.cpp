// How long the reports of a whole chain take, each written to a file as the dialog does it. They are made in
// one go: for this time the window stands still.

#include "measuring.h"
#include "number.h"
#include "reports/overviewhtml.h"
#include "reports/pdfdocument.h"
#include "reports/protocolhtml.h"
#include "reports/reportfile.h"
#include "reports/reportsheet.h"
#include "reports/statusstore.h"
#include "reports/workbook.h"
#include "widgetbench.h"

#include <QPdfWriter>
#include <QTemporaryDir>
#include <QTextDocument>
#include <cstdio>
#include <functional>
#include <xlsxwriter.h>

namespace {

constexpr int kModules = 128;
constexpr int kRounds = 7;
constexpr double kLimitMs = 1000;

Module_Status module(int address)
{
    Module_Status status;
    status.moduleAddress = static_cast<quint8>(address);
    status.moduleType = static_cast<quint8>(1 + address % 9);
    status.functionCodeA = 1;
    status.functionCodeB = 6;
    status.serialNumber = QString::number(700000 + address);
    status.hardwareVersion = QStringLiteral("1.0.15");
    status.firmware1Version = QStringLiteral("12.34.56");
    status.firmware2Version = QStringLiteral("65.43.21");
    status.offsetA = QStringLiteral("0.25");
    status.offsetB = QStringLiteral("-0.5");
    status.filterA = QStringLiteral("10000");
    status.filterB = QStringLiteral("100000");
    // Lists as long as the device can send them.
    status.sensorList = QStringLiteral("Full Bridge 350 Ohm$").repeated(10);
    status.rangeList = QStringLiteral("1000.5$").repeated(28);
    return status;
}

StatusStore fullStore()
{
    StatusStore store;
    System_Status system;
    system.nModules = kModules;
    system.bitRate = QStringLiteral("5 MBit/s (256ch)");
    store.setSystem(system);
    for (int address = 0; address <= kModules; ++address)
        store.setModule(module(address));
    return store;
}

bool isEveryModule(int)
{
    return true;
}

using Step = std::function<void(const QString &path)>;

std::vector<double> timesOf(const Step &step)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("report"));
    std::vector<double> times;
    for (int round = 0; round < kRounds; ++round)
        times.push_back(measureMs([&] { step(path); }));
    return times;
}

/// `make` writes the report to the device and returns whether it did.
void measureReport(const char *name, const std::function<bool(QIODevice &)> &make, const char *bareName,
                   const Step &bare)
{
    const std::vector<double> times = timesOf([&make](const QString &path) {
        if (!saveReport(path, make))
            qFatal("A report could not be saved.");
    });
    Number(name, medianMs(times), "ms")
        .worst(worstMs(times))
        .atMost(kLimitMs)
        .beside(bareName, medianMs(timesOf(bare)))
        .report();
}

void measurePdf(const char *name, const std::function<QString()> &html, PdfFlow flow)
{
    measureReport(
        name, [&](QIODevice &file) { return writePdf(file, html(), flow, QString()); }, "bare text document",
        [text = html()](const QString &path) {
            QPdfWriter writer(path);
            QTextDocument document;
            document.setHtml(text);
            document.print(&writer);
        });
}

void writeBareWorkbook(const QString &path, const ReportSheet &sheet)
{
    lxw_workbook *book = workbook_new(path.toUtf8().constData());
    lxw_worksheet *page = workbook_add_worksheet(book, nullptr);
    for (const ReportSheet::Row &row : sheet.rows) {
        for (int i = 0; i < row.values.size(); ++i)
            worksheet_write_string(page, static_cast<lxw_row_t>(row.number), static_cast<lxw_col_t>(i),
                                   row.values.at(i).toUtf8().constData(), nullptr);
    }
    workbook_close(book);
}

void measure()
{
    const StatusStore store = fullStore();
    const ReportHead head{QStringLiteral("/reports/report.pdf"), QDateTime(QDate(2026, 1, 2), QTime(3, 4)),
                          QStringLiteral("1.1.62"), QStringLiteral("an OS")};
    measurePdf(
        "overview PDF of 128 modules", [&] { return overviewHtml(store, isEveryModule, head); },
        PdfFlow::PageByPage);
    measurePdf(
        "protocol PDF of one module", [&] { return protocolHtml(store, 1, head); }, PdfFlow::OnePage);
    measureReport(
        "XLSX of 128 modules",
        [&](QIODevice &file) {
            const QByteArray bytes = workbook(reportSheet(store, isEveryModule, head));
            return !bytes.isEmpty() && file.write(bytes) == bytes.size();
        },
        "bare workbook",
        [sheet = reportSheet(store, isEveryModule, head)](const QString &path) {
            writeBareWorkbook(path, sheet);
        });
}

} // namespace

int main(int argc, char *argv[])
{
    return runWidgetBench(argc, argv, measure);
}
