// How long the reports of a whole chain take, each written to a file as the dialog does it. They are made in
// one go: for this time the window stands still.

#include "measuring.h"
#include "reports/overviewhtml.h"
#include "reports/pdfdocument.h"
#include "reports/protocolhtml.h"
#include "reports/reportfile.h"
#include "reports/reportsheet.h"
#include "reports/statusstore.h"
#include "reports/workbook.h"
#include "widgetbench.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdio>

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

/// `make` writes the report to the device and returns whether it did.
void measureReport(const char *name, const std::function<bool(QIODevice &)> &make)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("report"));
    bool isSaved = true;
    std::vector<double> times;
    for (int round = 0; round < kRounds; ++round)
        times.push_back(measureMs([&] { isSaved = saveReport(path, make) && isSaved; }));
    std::printf("%s of a chain of %d modules (%lld bytes%s): first %.0f ms, median %.0f ms, worst %.0f ms "
                "(limit %.0f "
                "ms)\n",
                name, kModules, QFileInfo(path).size(), isSaved ? "" : ", NOT SAVED", times.front(),
                medianMs(times), worstMs(times), kLimitMs);
}

void measure()
{
    const StatusStore store = fullStore();
    const ReportHead head{QStringLiteral("/reports/report.pdf"), QDateTime(QDate(2026, 1, 2), QTime(3, 4)),
                          QStringLiteral("1.1.62"), QStringLiteral("an OS")};
    measureReport("overview PDF", [&](QIODevice &file) {
        return writePdf(file, overviewHtml(store, isEveryModule, head), PdfFlow::PageByPage, QString());
    });
    measureReport("protocol PDF", [&](QIODevice &file) {
        return writePdf(file, protocolHtml(store, 1, head), PdfFlow::OnePage, QString());
    });
    measureReport("XLSX", [&](QIODevice &file) {
        const QByteArray bytes = workbook(reportSheet(store, isEveryModule, head));
        return !bytes.isEmpty() && file.write(bytes) == bytes.size();
    });
}

} // namespace

int main(int argc, char *argv[])
{
    return runWidgetBench(argc, argv, measure);
}
