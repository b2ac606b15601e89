#include "simulation.h"

#include "sim/chainfile.h"
#include "sim/tcplink.h"
#include "support/kernelclocks.h"

#include <QRegularExpression>

namespace storm {

namespace {

const QByteArray kConfiguratorPath = "/fileadmin/Public/Products/Telemetry/Tools/vxconfig.txt";
const QByteArray kFirmwarePath = "/fileadmin/Public/Products/Telemetry/Tools/vx_update.txt";

} // namespace

Simulation::Simulation(const Addresses &addresses, const QString &portFolder, quint32 seed,
                       const CertifiedKey &identity)
    : m_addresses(addresses)
    , m_portFolder(portFolder)
    , m_seed(seed)
    , m_identity(identity)
{}

Simulation::~Simulation() = default;

void Simulation::start()
{
    sim::GatewayState state;
    state.address = m_addresses.gateway;
    state.restartTime = sim::Milliseconds(150);
    state.rebootTime = sim::Milliseconds(400);
    m_gateway = std::make_unique<sim::GatewayServer>(m_time, state, m_seed);
    QString error;
    if (!m_gateway->listen(0, &error))
        qFatal("gateway: %s", qPrintable(error));
    m_gateway->setChainRate(
        [this] { return m_device ? m_device->chain().system.dataRate() : sim::DataRate(); });
    m_gateway->log().setSink([this](const QString &line) { noteFaults(line, QStringLiteral("gateway ")); });
    m_web = std::make_unique<HttpsServer>(m_identity);
    setVersions("vxconfig v1.1.62\n", "14.03.24  1.4.2\n");
}

void Simulation::plug(int chain)
{
    unplug();
    sim::Chain description;
    QString error;
    if (!sim::parseChain(stormChains().at(chain), &description, &error))
        qFatal("chain %d: %s", chain, qPrintable(error));
    m_device = std::make_unique<sim::Server>(m_time, description, m_seed + quint32(m_counts.plugs));
    m_device->log().setSink([this](const QString &line) { noteFaults(line, QString()); });
    auto link = std::make_unique<sim::TcpLink>();
    if (!link->open(kDevicePort, &error, QHostAddress(m_addresses.device)))
        qFatal("device: %s", qPrintable(error));
    m_device->addLink(std::move(link));
    if (!m_device->openTerminal(m_portFolder + QStringLiteral("/COM%1").arg(kLivePort), &error))
        qFatal("device: %s", qPrintable(error));
    if (!m_device->faults().parse(m_rules, &error))
        qFatal("faults: %s", qPrintable(error));
    ++m_counts.plugs;
}

void Simulation::unplug()
{
    if (!m_device)
        return;
    addToCounts();
    m_device.reset();
}

void Simulation::setFaults(const QString &rules, const QString &gatewayRules)
{
    QString error;
    m_rules = rules;
    if (m_device) {
        // What the device remembers does not grow, nor does it differ from one sample of the memory to the
        // next.
        addToCounts();
        m_device->device().images() = sim::FpgaImages();
        m_device->faults().clear();
        if (!m_device->faults().parse(rules, &error))
            qFatal("faults: %s", qPrintable(error));
    }
    if (m_web->connections() > 0)
        renewWebServer();
    m_counts.gatewayLines += m_gateway->receivedLines().size();
    m_gateway->clearLines();
    m_gateway->faults().clear();
    if (!m_gateway->faults().parse(gatewayRules, &error))
        qFatal("faults of the gateway: %s", qPrintable(error));
}

void Simulation::setVersions(const QByteArray &configurator, const QByteArray &firmware)
{
    m_configurator = configurator;
    m_firmware = firmware;
    m_web->setAnswer(kConfiguratorPath, {configurator});
    m_web->setAnswer(kFirmwarePath, {firmware});
}

void Simulation::renewWebServer()
{
    m_counts.webRequests += m_web->requests().size();
    const quint16 port = m_web->serverPort();
    m_web.reset();
    m_web = std::make_unique<HttpsServer>(m_identity, QHostAddress(QHostAddress::LocalHost), port);
    setVersions(m_configurator, m_firmware);
}

void Simulation::cutGateway()
{
    m_gateway->goAway(sim::Milliseconds(100));
}

Snapshot Simulation::snapshot() const
{
    Snapshot snapshot;
    snapshot.gateway = m_gateway->state();
    snapshot.gatewayLines = m_counts.gatewayLines + m_gateway->receivedLines().size();
    snapshot.waitedNs = kernelclocks::waitedForProcessorNs();
    if (m_device) {
        snapshot.hasDevice = true;
        snapshot.chain = m_device->chain();
        snapshot.now = m_device->elapsed();
        snapshot.live = m_device->device().live();
    }
    return snapshot;
}

WorldCounts Simulation::counts() const
{
    WorldCounts counts = m_counts;
    if (m_device)
        counts.requests += m_device->requestCount();
    counts.gatewayLines += m_gateway->receivedLines().size();
    counts.webRequests += m_web->requests().size();
    return counts;
}

void Simulation::addToCounts()
{
    m_counts.requests += m_device->requestCount();
    m_device->clearCounters();
}

void Simulation::noteFaults(const QString &line, const QString &prefix)
{
    const QLatin1String mark("fault: ");
    const int at = line.indexOf(mark);
    if (at < 0)
        return;
    static const QRegularExpression place(QStringLiteral(" \\(line \\d+\\)"));
    const QString names = line.mid(at + mark.size()).remove(place);
    for (const QString &name : names.split(QStringLiteral(", ")))
        ++m_counts.faults[prefix + name.trimmed()];
}

} // namespace storm
