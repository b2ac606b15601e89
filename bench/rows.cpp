// What 128 rows cost: created from one system status beside the same forms created bare, and how long the
// event loop is held up while a full chain is polled.

#include "barerows.h"
#include "benchapplication.h"
#include "giveup.h"
#include "loopgap.h"
#include "measuring.h"
#include "number.h"
#include "protocol/communication.h"
#include "simulatedchain.h"
#include "widgetbench.h"

#include <QTimer>

namespace {

constexpr int kModules = 128;
constexpr int kRounds = 7;
constexpr double kRowLimit = 1.5;
constexpr double kGapLimitMs = 30;
constexpr std::chrono::seconds kPolling{20};
constexpr std::chrono::seconds kPatience{60};
constexpr int kFewestPolls = 8; ///< of live values in that time, each 2 s

double bareRowsMs(const QVector<quint8> &types)
{
    BareWindow bare;
    const double ms = measureMs([&] {
        for (int row = 0; row < types.size(); ++row)
            bare.frame.addModule(new BareRow(types.at(row)), row);
    });
    QCoreApplication::processEvents();
    return ms;
}

double rowsFromStatusMs(Framework_Ctrllr &application, const QVariant &status)
{
    const double ms = measureMs([&] { application.Slot_SystemStatus(status); });
    require(application.analogModules().size() == kModules, "The system status did not make all rows.");
    QCoreApplication::processEvents();
    application.Slot_CleanSlateProtocol();
    QCoreApplication::processEvents();
    return ms;
}

/// The types in turn.
QVector<quint8> fullChain()
{
    QVector<quint8> types;
    for (int i = 0; i < kModules; ++i)
        types.append(static_cast<quint8>(1 + i % 9));
    return types;
}

void measureRows()
{
    BenchApplication bench;
    const QVector<quint8> types = fullChain();
    const QVariant status = BenchApplication::systemStatus(types);
    std::vector<double> bare;
    std::vector<double> rows;
    for (int round = 0; round < kRounds; ++round) {
        bare.push_back(bareRowsMs(types));
        rows.push_back(rowsFromStatusMs(bench.app(), status));
    }
    Number(std::to_string(kModules) + " rows from a system status", medianMs(rows), "ms")
        .worst(worstMs(rows))
        .beside("bare forms", medianMs(bare))
        .ratioAtMost(kRowLimit)
        .report();
}

Gap longestGap(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    LoopGap gap;
    gap.start();
    loop.exec();
    return gap.longest();
}

void readChain(const Communication &session)
{
    QEventLoop loop;
    QObject::connect(&session, &Communication::stateInitialized, &loop, &QEventLoop::quit);
    QTimer::singleShot(kPatience, &loop, [] { giveUp("The chain was not read in time."); });
    loop.exec();
}

void measureGap()
{
    const Gap bare = longestGap(kPolling); // what the machine itself holds up
    const SimulatedChain chain(QStringLiteral("full128.chain"));
    BenchApplication bench("MainServer=127.0.0.1:" + QByteArray::number(chain.port()) +
                           "\r\nPORT1=COM5:115200,E,8,1\r\nMode=TCP\r\n");
    Framework_Ctrllr &application = bench.app();
    readChain(*application.communication());
    require(application.analogModules().size() == kModules, "Not all modules have a row.");

    int polls = 0;
    QObject::connect(application.communication(), &Communication::Signal_FastModuleStatus, &application,
                     [&polls] { ++polls; });
    const Gap gap = longestGap(kPolling);
    require(polls >= kFewestPolls, "The chain was not polled.");
    Number("longest gap, " + std::to_string(kModules) + " modules polled", gap.ms, "ms")
        .worst(gap.byTheClockMs)
        .atMost(kGapLimitMs)
        .beside("bare event loop", bare.ms)
        .report();
}

} // namespace

int main(int argc, char *argv[])
{
    return runWidgetBench(argc, argv, [] {
        measureRows();
        measureGap();
    });
}
