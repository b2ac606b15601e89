#include "simulatedchain.h"

#include <QRegularExpression>
#include <cstdio>
#include <cstdlib>

SimulatedChain::SimulatedChain(const QString &chain, const QStringList &options)
{
    const QString file = QStringLiteral(VX_CHAINS "/") + chain;
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(
        QStringLiteral(VX_SIMULATOR),
        QStringList{QStringLiteral("--chain"), file, QStringLiteral("--tcp"), QStringLiteral("0")} + options);
    const QRegularExpression listening(QStringLiteral("listening on .*:(\\d+)"));
    while (m_port == 0 && (m_process.canReadLine() || m_process.waitForReadyRead())) {
        const auto match = listening.match(QString::fromUtf8(m_process.readLine()));
        if (match.hasMatch())
            m_port = match.captured(1).toUShort();
    }
    if (m_port == 0) {
        m_process.kill();
        m_process.waitForFinished();
        std::fprintf(stderr, "The simulator did not start.\n");
        std::exit(1);
    }
}

SimulatedChain::~SimulatedChain()
{
    m_process.terminate();
    m_process.waitForFinished();
}
