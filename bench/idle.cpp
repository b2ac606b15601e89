// What the whole program costs while it does nothing but poll a full chain: processor time and memory, beside
// a bare Qt program with an empty window.

#include "number.h"
#include "programhome.h"
#include "simulatedchain.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <cstdlib>
#include <unistd.h>

namespace {

constexpr int kMeasureMs = 20000;
constexpr int kSettleMs = 5000;
constexpr int kPatienceMs = 60000;
constexpr double kCpuLimit = 2;
constexpr double kMemoryLimit = 150;

/// A program that runs as long as this object lives.
class RunningProgram
{
public:
    RunningProgram(const char *path, const ProgramHome &home)
    {
        m_process.setProcessEnvironment(home.environment());
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_process.start(QString::fromUtf8(path), QStringList());
    }

    ~RunningProgram()
    {
        m_process.terminate();
        m_process.waitForFinished();
    }

    bool waitUntilRead()
    {
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < kPatienceMs && m_process.waitForReadyRead(kPatienceMs)) {
            if (m_process.readAll().contains("Initialized State"))
                return true;
        }
        return false;
    }

    /// Lets time pass and takes what the program writes meanwhile.
    void run(int ms)
    {
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < ms) {
            m_process.waitForReadyRead(static_cast<int>(qMax<qint64>(1, ms - clock.elapsed())));
            m_process.readAll();
        }
    }

    /// User and system time so far.
    double cpuSeconds() const
    {
        const QByteArray line = procFile("stat");
        const QByteArrayList fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
        return (fields.value(11).toDouble() + fields.value(12).toDouble()) /
               static_cast<double>(sysconf(_SC_CLK_TCK));
    }

    double residentMegabytes() const
    {
        return procFile("statm").split(' ').value(1).toDouble() * static_cast<double>(sysconf(_SC_PAGESIZE)) /
               1e6;
    }

private:
    QByteArray procFile(const char *name) const
    {
        QFile file(QStringLiteral("/proc/%1/%2").arg(m_process.processId()).arg(QLatin1String(name)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QProcess m_process;
};

void measure(const QByteArray &address)
{
    const ProgramHome home;
    home.writeSettings(tcpSettings(address));
    RunningProgram bare(VX_BARE_PROGRAM, home);
    RunningProgram product(VX_PROGRAM, home);
    if (!product.waitUntilRead()) {
        std::fprintf(stderr, "The program did not read the chain.\n");
        std::exit(1);
    }
    product.run(kSettleMs);
    const double before = product.cpuSeconds();
    const double bareBefore = bare.cpuSeconds();
    QElapsedTimer clock;
    clock.start();
    product.run(kMeasureMs);
    const double percent = 100.0 / (static_cast<double>(clock.elapsed()) / 1000);
    Number("share of a core while 128 modules are polled", (product.cpuSeconds() - before) * percent, "%")
        .atMost(kCpuLimit)
        .beside("bare window", (bare.cpuSeconds() - bareBefore) * percent)
        .report();
    Number("resident memory with 128 modules", product.residentMegabytes(), "MB")
        .atMost(kMemoryLimit)
        .beside("bare window", bare.residentMegabytes())
        .report();
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const SimulatedChain chain(QStringLiteral("full128.chain"));
    measure("127.0.0.1:" + QByteArray::number(chain.port()));
}
