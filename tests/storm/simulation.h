#pragma once

#include "sim/gatewayserver.h"
#include "sim/server.h"
#include "support/httpsserver.h"
#include "world.h"

#include "base/timesource.h"

namespace storm {

/// What lives in the thread of the world.
class Simulation : public QObject
{
    Q_OBJECT

public:
    Simulation(const Addresses &addresses, const QString &portFolder, quint32 seed,
               const CertifiedKey &identity);
    ~Simulation() override;

    void start();
    quint16 gatewayPort() const { return m_gateway->port(); }
    quint16 webPort() const { return m_web->serverPort(); }

    void plug(int chain);
    void unplug();
    void setFaults(const QString &rules, const QString &gatewayRules);
    void setVersions(const QByteArray &configurator, const QByteArray &firmware);
    void cutGateway();

    Snapshot snapshot() const;
    WorldCounts counts() const;

private:
    void addToCounts();
    /// A server that remembers nothing.
    void renewWebServer();
    void noteFaults(const QString &line, const QString &prefix);

    const Addresses m_addresses;
    const QString m_portFolder;
    const quint32 m_seed;
    const CertifiedKey m_identity;
    SystemTime m_time;
    std::unique_ptr<sim::Server> m_device; ///< null: nobody is there
    std::unique_ptr<sim::GatewayServer> m_gateway;
    std::unique_ptr<HttpsServer> m_web;
    QByteArray m_configurator; ///< contents of the version files
    QByteArray m_firmware;
    QString m_rules; ///< of the device, also of one that is plugged later
    WorldCounts m_counts;
};

} // namespace storm
