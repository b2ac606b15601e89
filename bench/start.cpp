// How long the start takes, from the making of the process to the first paint of the main window, beside a
// bare program with the same splash and a main window of the same size with nothing in it. Both programs run
// as they are, and nothing in them knows of the measurement:
// - on a display, this program asks the display for one pixel within the place of the main window, and not of
//   the splash, until it has another colour than before. Qt's windows have no background that the display
//   would fill in by itself, so it changes with the window's first paint, which takes the window as a whole;
// - without one, both programs are asked through QT_LOGGING_RULES for Qt's own lines on painting, of which
//   one tells that a window's first paint is done. The product pays more for the other lines, having more
//   widgets.

#include "childprocess.h"
#include "giveup.h"
#include "measuring.h"
#include "number.h"
#include "programhome.h"
#include "silentport.h"
#include "simulatedchain.h"

#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QThread>
#include <chrono>
#include <functional>

namespace {

constexpr int kRounds = 25;
constexpr double kRatioLimit = 1.3;
constexpr int kPatienceMs = 20000;
constexpr int kTurnUs = 300;        ///< between two looks
constexpr QPoint kPlace(1150, 490); ///< near the lower right corner of the main window, outside of the splash

/// Looks until `isSeen` and returns how long that took.
double waitMs(const QElapsedTimer &clock, const std::function<bool()> &isSeen)
{
    while (!isSeen()) {
        if (clock.elapsed() > kPatienceMs)
            giveUp("No main window was painted.");
        QThread::usleep(kTurnUs);
    }
    return elapsedMs(clock);
}

QRgb colourOnScreen()
{
    QScreen &screen = *QGuiApplication::primaryScreen();
    return screen.grabWindow(0, kPlace.x(), kPlace.y(), 1, 1).toImage().pixel(0, 0);
}

bool hasDisplay()
{
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

/// A program that is started and ended once for each measurement.
class MeasuredProgram
{
public:
    MeasuredProgram(const char *path, const ProgramHome &home)
        : m_path(QString::fromUtf8(path))
        , m_environment(home.environment())
    {
        m_environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QGuiApplication::platformName());
    }

    void setVariable(const char *name, const char *value)
    {
        m_environment.insert(QString::fromUtf8(name), QString::fromUtf8(value));
    }

    double firstPaintOnScreenMs()
    {
        const QRgb before = colourOnScreen();
        const double ms = startMs([&](QProcess &) { return colourOnScreen() != before; });
        QElapsedTimer clock;
        clock.start();
        waitMs(clock, [before] { return colourOnScreen() == before; });
        return ms;
    }

    double firstPaintInLogMs()
    {
        setVariable("QT_LOGGING_RULES", "qt.widgets.painting.info=true");
        return startMs([](QProcess &program) {
            while (program.canReadLine()) {
                const QByteArray line = program.readLine();
                if (line.contains("Flushing Q") && !line.contains("QSplashScreen"))
                    return true;
            }
            program.waitForReadyRead(1);
            return false;
        });
    }

private:
    double startMs(const std::function<bool(QProcess &)> &isPainted) const
    {
        ChildProcess program;
        program.setProcessEnvironment(m_environment);
        program.setProcessChannelMode(QProcess::MergedChannels);
        QElapsedTimer clock;
        clock.start();
        program.start(m_path, QStringList());
        const double ms = waitMs(clock, [&] { return isPainted(program); });
        program.terminate();
        program.waitForFinished();
        return ms;
    }

    QString m_path;
    QProcessEnvironment m_environment;
};

struct Rounds
{
    std::vector<double> product;
    std::vector<double> bare;
};

/// Starts both programs in turn.
Rounds measure(MeasuredProgram product, MeasuredProgram bare)
{
    const auto firstPaintMs =
        hasDisplay() ? &MeasuredProgram::firstPaintOnScreenMs : &MeasuredProgram::firstPaintInLogMs;
    Rounds rounds;
    for (int round = 0; round <= kRounds; ++round) {
        const double bareMs = (bare.*firstPaintMs)();
        const double ms = (product.*firstPaintMs)();
        if (round == 0)
            continue; // reads from the disk what the others have at hand
        rounds.product.push_back(ms);
        rounds.bare.push_back(bareMs);
    }
    return rounds;
}

Number firstPaint(const std::string &condition, const Rounds &rounds)
{
    Number number("start to first paint, " + condition, medianMs(rounds.product), "ms");
    number.worst(worstMs(rounds.product));
    return number;
}

const char kBareName[] = "bare window";

/// The product with these settings. The agreed start waits for the link that they name; what a bare socket
/// waits there is added to the time of the bare program.
void measureStart(const std::string &condition, const QByteArray &settings, double bareWaitMs = 0)
{
    const ProgramHome home;
    if (!settings.isEmpty())
        home.writeSettings(settings);
    const Rounds rounds = measure({VX_PROGRAM, home}, {VX_BARE_PROGRAM, home});
    Number number = firstPaint((hasDisplay() ? "on a display, " : "offscreen, ") + condition, rounds);
    number.beside(bareWaitMs > 0 ? kBareName + std::string(", bare socket, 50 ms") : kBareName,
                  medianMs(rounds.bare) + bareWaitMs);
    number.ratioAtMost(kRatioLimit);
    if (!hasDisplay())
        number.asAim(); // what the operator waits for is the display
    number.report();
}

/// The driver of OpenGL, which the product leaves alone, is the larger part of what the bare program does.
void measureWithoutOpenGl()
{
    const ProgramHome home;
    MeasuredProgram bare(VX_BARE_PROGRAM, home);
    bare.setVariable("QT_XCB_GL_INTEGRATION", "none");
    const Rounds rounds = measure({VX_PROGRAM, home}, bare);
    firstPaint("on a display, neither with OpenGL", rounds)
        .beside(kBareName, medianMs(rounds.bare))
        .ratioAtMost(kRatioLimit)
        .asAim()
        .report();
}

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    measureStart("no device", QByteArray());
    const SimulatedChain chain(QStringLiteral("demo.chain"));
    measureStart("a chain over TCP", tcpSettings("127.0.0.1:" + QByteArray::number(chain.port())));
    const SilentPort silent;
    measureStart("nobody answers over TCP", tcpSettings("127.0.0.1:" + QByteArray::number(silent.port())),
                 silent.bareAttemptMs());
    if (hasDisplay())
        measureWithoutOpenGl();
}
