#pragma once

#include "childprocess.h"

#include <QString>
#include <QStringList>

/// The simulator as a process of its own, on a TCP port that it chose. Ends with this object.
class SimulatedChain
{
public:
    /// `chain` names a file of sim/chains. Leaves the benchmark with a message if the simulator does not
    /// start.
    explicit SimulatedChain(const QString &chain, const QStringList &options = {});
    ~SimulatedChain();

    quint16 port() const { return m_port; }

private:
    ChildProcess m_process;
    quint16 m_port = 0;
};
