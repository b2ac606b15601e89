// How long the session takes to write a firmware image: over a link that is as slow as a serial line, beside
// the time that the bytes themselves need on the wire, and over one without a limit. And how long the window
// stands still when the operator starts it, and until all commands are queued.

#include "app/framework_view.h"
#include "benchapplication.h"
#include "countedsession.h"
#include "firmware/firmwareimage.h"
#include "firmware/firmwareupdate.h"
#include "giveup.h"
#include "loopgap.h"
#include "measuring.h"
#include "number.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QTimer>

namespace {

constexpr int kBytesPerSecond = 10472; // 115200 bit/s, 11 bits a byte
constexpr double kLimit = 1.03;
constexpr double kBlocksPerSecond = 2000;
constexpr double kGapLimitMs = 30; ///< as long as the event loop may be held up
constexpr int kFileSize = 300000;
constexpr firmwareimage::Target kTarget{1, 2};
const char kImageFile[] = "analog-fpga2.bin";
constexpr std::chrono::seconds kPatience{90};

struct Run
{
    double seconds = 0; ///< from the order to start to the reply to the last command
    qint64 bytes = 0;   ///< of all requests and replies in that time
    int commands = 0;
};

QByteArray contents()
{
    QByteArray bytes(kFileSize, '\0');
    for (int i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i * 7 + i / 256);
    return bytes;
}

/// Leaves the benchmark if the chain did not get the image as it is.
void checkImage(const QString &folder)
{
    QFile file(folder + QLatin1Char('/') + QLatin1String(kImageFile));
    const QByteArray image = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    if (image.left(kFileSize) != contents())
        giveUp("The chain has another image than was flashed.");
}

/// Walks the chain and writes the image into it.
Run flash(const QStringList &options)
{
    const QTemporaryDir folder;
    const SimulatedChain chain(QStringLiteral("demo.chain"),
                               QStringList{QStringLiteral("--images"), folder.path()} + options);
    CountedSession session(chain);
    Communication &communication = session.communication();
    const auto commands = firmwareimage::commands(kTarget, contents());
    Run run;
    run.commands = commands.size();
    int waiting = 0;
    QElapsedTimer clock;
    QEventLoop loop;
    QObject::connect(&communication, &Communication::stateInitialized, &loop, [&] {
        // In a turn of its own: the walk's last reply is dealt with, and no poll is out.
        QTimer::singleShot(0, &loop, [&] {
            waiting = run.commands;
            session.bytes = 0;
            clock.start();
            for (const FPGAfwCommand &command : commands)
                communication.Slot_FirmwareCommands(QVariant::fromValue(command));
            communication.Slot_StartFPGAprocess();
        });
    });
    // Each reply tells the head, and nothing but commands of the image is answered meanwhile.
    QObject::connect(&communication, &Communication::Signal_FastSystemStatus, &loop, [&] {
        if (waiting == 0 || --waiting > 0)
            return;
        run.seconds = static_cast<double>(clock.nsecsElapsed()) / 1e9;
        run.bytes = session.bytes;
        loop.quit();
    });
    QTimer::singleShot(kPatience, &loop, [] { giveUp("The image was not written in time."); });
    if (!session.open())
        giveUp("The link did not open.");
    loop.exec();
    checkImage(folder.path());
    return run;
}

void measurePaced()
{
    const Run run = flash({QStringLiteral("--pace"), QString::number(kBytesPerSecond)});
    const double wire = static_cast<double>(run.bytes) / kBytesPerSecond;
    Number("flashing of " + std::to_string(kFileSize) + " bytes at 115200 bit/s", run.seconds, "s")
        .beside("bare wire time", wire)
        .ratioAtMost(kLimit)
        .report();
}

void measureUnpaced()
{
    const Run run = flash({});
    const int blocks = (kFileSize + firmwareimage::kBlockSize - 1) / firmwareimage::kBlockSize;
    Number("flashing over a link without a limit", blocks / run.seconds, "blocks/s")
        .atLeast(kBlocksPerSecond)
        .report();
}

/// Writes a file of this size that the program takes for an analog module.
QString writeImage(const QTemporaryDir &folder, int size)
{
    const QString path = folder.filePath(QStringLiteral("x_ANA_FPGA5_v2.bin"));
    QFile file(path);
    const QByteArray image = QByteArray("iCE40UP5K-SG48").leftJustified(size, 'x');
    require(file.open(QIODevice::WriteOnly) && file.write(image) == image.size(),
            "The image could not be written.");
    return path;
}

/// The longest gap in the event loop until all commands are queued.
Gap longestGap(const FirmwareUpdate &update)
{
    QEventLoop loop;
    QObject::connect(&update, &FirmwareUpdate::Signal_StartProcedure, &loop, &QEventLoop::quit);
    QTimer::singleShot(kPatience, &loop, [] { giveUp("The commands were not queued in time."); });
    LoopGap gap;
    gap.start();
    loop.exec();
    return gap.longest();
}

/// The whole program takes a file; debug lines are made and dropped.
void measureClick(int size)
{
    const QTemporaryDir folder;
    BenchApplication application;
    FirmwareUpdate &update = *application.app().mainWindow()->firmwareUpdate();
    update.Slot_UpdateFirmwrFilePath(writeImage(folder, size));
    int commands = 0;
    bool isQueued = false;
    QObject::connect(&update, &FirmwareUpdate::Signal_commandMsg, &update, [&commands] { ++commands; });
    QObject::connect(&update, &FirmwareUpdate::Signal_StartProcedure, &update,
                     [&isQueued] { isQueued = true; });
    QLoggingCategory::setFilterRules(QString());
    const auto before = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    const std::string image = std::to_string(size) + " bytes";
    const double ms = measureMs([&update] { update.Slot_UpdateOrAbortFirmw(); });
    require(commands > 0 && application.app().communication()->firmwareCommandsWait(),
            "The click started nothing.");
    Number("click that starts flashing of " + image, ms, "ms").atMost(kGapLimitMs).report();
    if (!isQueued) {
        const Gap gap = longestGap(update);
        Number("longest gap behind the click until " + image + " are queued", gap.ms, "ms")
            .worst(gap.byTheClockMs)
            .atMost(kGapLimitMs)
            .report();
    }
    qInstallMessageHandler(before);
    require(commands == firmwareimage::commandCount(size), "Not all commands were queued.");
}

} // namespace

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    measurePaced();
    measureUnpaced();
    measureClick(kFileSize);
    measureClick(int(firmwareimage::kMaximumSize));
}
