#pragma once

#include "sim/chain.h"
#include "sim/faults.h"
#include "sim/gatewayfaults.h"

namespace sim {

/// What the command line asks for.
struct Options
{
    Chain chain;
    FaultScript faults;
    GatewayFaults gatewayFaults;
    quint32 seed = 1;
    std::optional<quint16> tcpPort;
    QString terminalName;               ///< empty: no pseudo terminal
    std::optional<quint16> gatewayPort; ///< none: no gateway
    int bytesPerSecond = 0;
    QString imageFolder; ///< empty: images are not written
    QString logName;     ///< empty: no log; "-": the standard output
    std::optional<Milliseconds> runFor;
    /// Whether anybody can reach the chain; else the gateway stands alone.
    bool hasChain() const { return tcpPort || !terminalName.isEmpty(); }

    QString message; ///< help text to print instead of running
};

/// Reads the arguments, the program's name in front, and the files they name. False with the reason.
[[nodiscard]] bool readOptions(const QStringList &arguments, Options *options, QString *error);

} // namespace sim
