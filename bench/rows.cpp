// What 128 rows cost: created from one system status beside the same forms created bare, and how long the
// event loop is held up while a full chain is polled.

#include "app/appenvironment.h"
#include "app/dynamicmodulesframe_view.h"
#include "app/framework_ctrllr.h"
#include "app/framework_view.h"
#include "base/gui/fonts.h"
#include "base/timesource.h"
#include "link/serialcomm.h"
#include "link/tcpsock.h"
#include "protocol/communication.h"
#include "protocol/records/systemstatus.h"
#include "simulatedchain.h"
#include "ui_moduledevice_view.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGridLayout>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

constexpr int kModules = 128;
constexpr int kRounds = 7;
constexpr double kRowLimit = 1.5;
constexpr double kGapLimitMs = 30;
constexpr std::chrono::seconds kPolling{20};

double medianMs(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times.at(times.size() / 2);
}

double elapsedMs(const QElapsedTimer &clock)
{
    return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

/// A new frame for rows, in a window as wide as the program's.
struct BareWindow
{
    BareWindow()
    {
        window.resize(1160, 500);
        auto *layout = new QVBoxLayout(&window);
        layout->addWidget(&frame);
        window.show();
        QCoreApplication::processEvents();
    }

    QWidget window;
    DynamicModulesFrame_View frame;
};

double bareRowsMs()
{
    BareWindow bare;
    QElapsedTimer clock;
    clock.start();
    for (int row = 0; row < kModules; ++row) {
        auto *form = new QFrame;
        Ui::ModuleDevice_View ui;
        ui.setupUi(form);
        bare.frame.addModule(form, row);
    }
    const double ms = elapsedMs(clock);
    QCoreApplication::processEvents();
    return ms;
}

double rowsFromStatusMs(Framework_Ctrllr &application, const QVariant &status)
{
    QElapsedTimer clock;
    clock.start();
    application.Slot_SystemStatus(status);
    const double ms = elapsedMs(clock);
    QCoreApplication::processEvents();
    application.Slot_CleanSlateProtocol();
    QCoreApplication::processEvents();
    return ms;
}

QVariant fullStatus()
{
    System_Status status;
    status.nModules = kModules;
    for (std::size_t i = 0; i < kModules; ++i)
        status.analogModuleTypes.at(i) = static_cast<quint8>(1 + i % 9);
    status.sModules = {0x64, 0x78};
    return QVariant::fromValue(status);
}

AppEnvironment environment(TimeSource &time, const QString &folder)
{
    const PortDirectory ports(folder);
    const auto createLinks = [&time, ports] {
        CommLinks links;
        links.serial = std::make_unique<SerialComm>(time, ports);
        links.tcp = std::make_unique<TcpSock>(time);
        return links;
    };
    return {time,         ports,       {folder, folder + QStringLiteral("/desktop"), QString()},
            Deployment(), createLinks, CommPeriods()};
}

void writeSettings(const QString &folder, const QByteArray &text)
{
    QFile file(folder + QStringLiteral("/vxconfig.ini"));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("The settings file could not be written.");
}

void measureRows(TimeSource &time)
{
    const QTemporaryDir folder;
    writeSettings(folder.path(), "PORT1=COM5:115200,E,8,1\r\n");
    Framework_Ctrllr application(environment(time, folder.path()));
    const QVariant status = fullStatus();
    std::vector<double> bare;
    std::vector<double> rows;
    for (int round = 0; round < kRounds; ++round) {
        bare.push_back(bareRowsMs());
        rows.push_back(rowsFromStatusMs(application, status));
    }
    std::printf("%d rows from a system status: %.1f ms, bare forms %.1f ms, ratio %.2f (limit %.2f)\n",
                kModules, medianMs(rows), medianMs(bare), medianMs(rows) / medianMs(bare), kRowLimit);
}

void measureGap(TimeSource &time)
{
    const SimulatedChain chain(QStringLiteral("full128.chain"));
    const QTemporaryDir folder;
    writeSettings(folder.path(), "MainServer=127.0.0.1:" + QByteArray::number(chain.port()) +
                                     "\r\nPORT1=COM5:115200,E,8,1\r\nMode=TCP\r\n");
    Framework_Ctrllr application(environment(time, folder.path()));
    QEventLoop loop;
    QObject::connect(application.communication(), &Communication::stateInitialized, &loop, &QEventLoop::quit);
    loop.exec();

    QElapsedTimer clock;
    double longest = 0;
    QTimer heartbeat;
    heartbeat.setTimerType(Qt::PreciseTimer);
    heartbeat.setInterval(1);
    QObject::connect(&heartbeat, &QTimer::timeout, &heartbeat, [&] {
        longest = std::max(longest, elapsedMs(clock));
        clock.start();
    });
    QTimer::singleShot(kPolling, &loop, &QEventLoop::quit);
    clock.start();
    heartbeat.start();
    loop.exec();
    std::printf("longest gap in the event loop while %d modules are polled: %.1f ms (limit %.0f ms)\n",
                static_cast<int>(application.analogModules().size()), longest, kGapLimitMs);
}

} // namespace

int main(int argc, char *argv[])
{
    fonts::installSubstitutions();
    QApplication application(argc, argv);
    QApplication::setFont(fonts::text());
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    SystemTime time;
    measureRows(time);
    measureGap(time);
    return 0;
}
