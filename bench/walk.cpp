// How long the session takes to walk a full chain over a link that is as slow as a serial line, beside the
// time that the bytes themselves need on the wire.

#include "countedsession.h"
#include "giveup.h"
#include "number.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLoggingCategory>
#include <QTimer>

namespace {

constexpr int kBytesPerSecond = 10472; // 115200 bit/s, 11 bits a byte
constexpr int kModules = 129;          ///< those of the chain and the controller
constexpr double kLimit = 1.03;
constexpr std::chrono::seconds kPatience{60};

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    const SimulatedChain chain(QStringLiteral("full128.chain"),
                               {QStringLiteral("--pace"), QString::number(kBytesPerSecond)});

    CountedSession session(chain);
    Communication &communication = session.communication();
    QElapsedTimer clock;
    int modules = 0;
    QObject::connect(&communication, &Communication::ModuleRead, &application, [&modules] { ++modules; });
    QObject::connect(&communication, &Communication::stateInitialized, &application, [&] {
        const double seconds = static_cast<double>(clock.nsecsElapsed()) / 1e9;
        require(modules == kModules, "The walk did not read all modules.");
        const double wire = static_cast<double>(session.bytes) / kBytesPerSecond;
        Number("walk of " + std::to_string(modules) + " modules at 115200 bit/s", seconds, "s")
            .beside("bare wire time", wire)
            .ratioAtMost(kLimit)
            .report();
        QCoreApplication::exit(0);
    });
    QTimer::singleShot(kPatience, &application, [] { giveUp("The walk did not end."); });
    clock.start();
    require(session.open(), "The link did not open.");
    return QCoreApplication::exec();
}
