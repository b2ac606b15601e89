// What the whole program costs while it does nothing but poll a full chain: processor time and memory.

#include "simulatedchain.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>
#include <unistd.h>

namespace {

constexpr int kMeasureMs = 20000;
constexpr int kSettleMs = 5000;
constexpr int kPatienceMs = 60000;
constexpr double kCpuLimit = 2;
constexpr double kMemoryLimit = 150;

/// User and system time of a process so far, in seconds.
double cpuSeconds(qint64 pid)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray line = file.readAll();
    const QByteArrayList fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
    return (fields.value(11).toDouble() + fields.value(12).toDouble()) /
           static_cast<double>(sysconf(_SC_CLK_TCK));
}

double residentMegabytes(qint64 pid)
{
    QFile file(QStringLiteral("/proc/%1/statm").arg(pid));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toDouble() * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

bool waitUntilRead(QProcess &program)
{
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < kPatienceMs && program.waitForReadyRead(kPatienceMs)) {
        if (program.readAll().contains("Initialized State"))
            return true;
    }
    return false;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const SimulatedChain chain(QStringLiteral("full128.chain"));
    const QTemporaryDir home;
    const QString settings = home.path() + QStringLiteral("/qor/vxconfig");
    QDir().mkpath(settings);
    QFile file(settings + QStringLiteral("/vxconfig.ini"));
    if (!file.open(QIODevice::WriteOnly))
        return 1;
    file.write("MainServer=127.0.0.1:" + QByteArray::number(chain.port()) +
               "\r\nPORT1=COM5:115200,E,8,1\r\nMode=TCP\r\n");
    file.close();

    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home.path());
    environment.insert(QStringLiteral("HOME"), home.path());
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(QStringLiteral(VX_PROGRAM), QStringList());
    if (!waitUntilRead(program)) {
        std::fprintf(stderr, "The program did not read the chain.\n");
        return 1;
    }
    const qint64 pid = program.processId();
    const auto run = [&program](int ms) {
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < ms) {
            program.waitForReadyRead(static_cast<int>(qMax<qint64>(1, ms - clock.elapsed())));
            program.readAll();
        }
        return static_cast<double>(clock.elapsed()) / 1000;
    };
    run(kSettleMs);
    const double before = cpuSeconds(pid);
    const double seconds = run(kMeasureMs);
    const double percent = 100 * (cpuSeconds(pid) - before) / seconds;
    std::printf("polling 128 modules: %.2f %% of a core (limit %.0f %%)\n", percent, kCpuLimit);
    std::printf("resident memory: %.0f MB (limit %.0f MB)\n", residentMegabytes(pid), kMemoryLimit);
    program.terminate();
    program.waitForFinished();
    return 0;
}
