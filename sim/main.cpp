#include "sim/endsignals.h"
#include "sim/gatewayserver.h"
#include "sim/imagefolder.h"
#include "sim/monotonictime.h"
#include "sim/options.h"
#include "sim/server.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>
#include <memory>

namespace {

constexpr int kWrongUse = 2;

void print(const QString &line)
{
    std::fprintf(stdout, "%s\n", qPrintable(line));
    std::fflush(stdout);
}

int fail(int code, const QString &error)
{
    std::fprintf(stderr, "vxsim: %s\n", qPrintable(error));
    return code;
}

bool openLog(const QString &name, QFile *file)
{
    if (name == QLatin1String("-"))
        return file->open(stdout, QIODevice::WriteOnly);
    file->setFileName(name);
    return file->open(QIODevice::WriteOnly | QIODevice::Truncate);
}

bool openLinks(const sim::Options &options, sim::Server &server, sim::GatewayServer &gateway, QString *error)
{
    if (options.tcpPort && !server.listen(*options.tcpPort, error))
        return false;
    if (!options.terminalName.isEmpty() && !server.openTerminal(options.terminalName, error))
        return false;
    return !options.gatewayPort || gateway.listen(*options.gatewayPort, error);
}

/// Tells where the device can be reached; whoever reads this may begin at once, on any link.
void printLinks(const sim::Options &options, const sim::Server &server, const sim::GatewayServer &gateway)
{
    if (options.tcpPort)
        print(QStringLiteral("listening on 127.0.0.1:%1").arg(server.tcpPort()));
    if (!options.terminalName.isEmpty())
        print(QStringLiteral("terminal at %1").arg(options.terminalName));
    if (options.gatewayPort)
        print(QStringLiteral("gateway at 127.0.0.1:%1").arg(gateway.port()));
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("vxsim"));
    sim::quitOnEndSignals(application);

    sim::Options options;
    QString error;
    if (!sim::readOptions(QCoreApplication::arguments(), &options, &error))
        return fail(kWrongUse, error);
    if (!options.message.isEmpty()) {
        print(options.message);
        return 0;
    }
    QFile log;
    if (!options.logName.isEmpty() && !openLog(options.logName, &log))
        return fail(1, QStringLiteral("%1: %2").arg(options.logName, log.errorString()));

    sim::ImageFolder images(options.imageFolder);
    if (!options.imageFolder.isEmpty() && !images.create(&error))
        return fail(1, error);

    sim::MonotonicTime time;
    sim::Server server(time, options.chain, options.seed);
    server.setPace(options.bytesPerSecond);
    server.faults() = options.faults;
    if (!options.imageFolder.isEmpty())
        server.device().images().setSink([&images](const sim::FpgaTarget &target, const QByteArray &image) {
            QString reason;
            if (!images.write(target, image, &reason))
                std::fprintf(stderr, "vxsim: %s\n", qPrintable(reason));
        });
    sim::GatewayServer gateway(time, options.chain.gateway, options.seed);
    gateway.faults() = options.gatewayFaults;
    if (options.hasChain())
        gateway.setChainRate([&server] { return server.chain().system.dataRate(); });
    if (log.isOpen()) {
        const auto write = [&log](const QString &line) {
            log.write(line.toUtf8() + '\n');
            log.flush();
        };
        server.log().setSink(write);
        gateway.log().setSink(write);
    }
    print(QStringLiteral("seed %1").arg(options.seed));
    if (!openLinks(options, server, gateway, &error))
        return fail(1, error);
    printLinks(options, server, gateway);
    if (options.runFor) {
        Timer *end = time.createTimer(&application);
        end->setSingleShot(true);
        QObject::connect(end, &Timer::timeout, &application, &QCoreApplication::quit);
        end->start(*options.runFor);
    }
    return QCoreApplication::exec();
}
