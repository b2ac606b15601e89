// What the whole program costs while it does nothing but poll a full chain: processor time and memory, beside
// a bare Qt program with an empty window.

#include "childprocess.h"
#include "giveup.h"
#include "number.h"
#include "programhome.h"
#include "simulatedchain.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <unistd.h>

namespace {

constexpr int kMeasureMs = 20000;
constexpr int kSettleMs = 5000;
constexpr int kPatienceMs = 60000;
constexpr int kStretches = 4;     ///< of the time that is measured
constexpr int kFewestReplies = 3; ///< to polls, in each of them
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

    /// Lets time pass and reads in the program's log how many polls the chain answered meanwhile. Ends the
    /// benchmark if the program ends.
    int repliesWithin(int ms)
    {
        int replies = 0;
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < ms) {
            m_process.waitForReadyRead(static_cast<int>(qMax<qint64>(1, ms - clock.elapsed())));
            requireRunning();
            replies += m_process.readAll().count("Rcvd TYPE_FAST_SYSTEM_STATUS_");
        }
        return replies;
    }

    /// User and system time so far.
    double cpuSeconds()
    {
        const QByteArray line = procFile("stat");
        const QByteArrayList fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
        return (fields.value(11).toDouble() + fields.value(12).toDouble()) /
               static_cast<double>(sysconf(_SC_CLK_TCK));
    }

    double residentMegabytes()
    {
        return procFile("statm").split(' ').value(1).toDouble() * static_cast<double>(sysconf(_SC_PAGESIZE)) /
               1e6;
    }

private:
    void requireRunning()
    {
        require(!m_process.waitForFinished(0) && m_process.state() == QProcess::Running,
                "A program ended while it was measured.");
    }

    QByteArray procFile(const char *name)
    {
        requireRunning();
        QFile file(QStringLiteral("/proc/%1/%2").arg(m_process.processId()).arg(QLatin1String(name)));
        require(file.open(QIODevice::ReadOnly), "A program cannot be looked at.");
        return file.readAll();
    }

    ChildProcess m_process;
};

void measure(const QByteArray &address)
{
    const ProgramHome home;
    home.writeSettings(tcpSettings(address));
    RunningProgram bare(VX_BARE_PROGRAM, home);
    RunningProgram product(VX_PROGRAM, home);
    require(product.waitUntilRead(), "The program did not read the chain.");
    product.repliesWithin(kSettleMs);
    const double before = product.cpuSeconds();
    const double bareBefore = bare.cpuSeconds();
    QElapsedTimer clock;
    clock.start();
    for (int stretch = 0; stretch < kStretches; ++stretch)
        require(product.repliesWithin(kMeasureMs / kStretches) >= kFewestReplies,
                "The chain was not polled.");
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
