#pragma once

#include "sim/chain.h"
#include "sim/livevalues.h"

#include <QMap>
#include <QObject>
#include <QStringList>
#include <QThread>
#include <QVector>
#include <functional>
#include <memory>

struct CertifiedKey;

namespace storm {

class Simulation;

/// Addresses of the loopback interface that belong to this process, so that several may run at once with the
/// port that the product prescribes.
struct Addresses
{
    QString device;  ///< here the chain answers
    QString nobody;  ///< here nobody listens
    QString deaf;    ///< somebody listens, and no connection comes up
    QString gateway; ///< where the gateway is at first
    QString otherGateway;
};

Addresses addressesOfThisProcess();

constexpr quint16 kDevicePort = 7777; ///< the only one that the connection dialog offers
constexpr int kLivePort = 40;         ///< number of the COM port at which the chain answers
constexpr int kDeadPort = 41;         ///< at this nobody does

/// The chains of the storm, as descriptions: all families of modules; one without a power module; one whose
/// modules have different firmware, and with a module of unknown type. What two of them have has another
/// value in each, so that one that is not shown anew is found.
QStringList stormChains();

/// The state of the simulated devices at one moment.
struct Snapshot
{
    bool hasDevice = false;
    qint64 waitedNs = 0; ///< for which the kernel let the devices wait for a processor, since the start
    sim::Chain chain;
    sim::Milliseconds now{0};
    sim::LiveValues live{0};
    sim::GatewayState gateway;
    qint64 gatewayLines = 0; ///< that it was sent, since the start
};

/// What the simulated devices have met.
struct WorldCounts
{
    qint64 requests = 0;
    qint64 gatewayLines = 0;
    qint64 webRequests = 0;
    int plugs = 0;
    QMap<QString, int> faults; ///< by their names, those of the gateway behind "gateway "
};

/// Listens at an address, and lets no connection come up.
class DeafListener
{
public:
    DeafListener() = default;
    ~DeafListener();
    DeafListener(const DeafListener &) = delete;
    DeafListener &operator=(const DeafListener &) = delete;

    /// Ends the program if that cannot be.
    void listen(const QString &address, quint16 port);

private:
    QVector<int> m_sockets;
};

/// The simulated chain, its gateway and the server of the version files, in a thread of their own: what they
/// do takes no time from the program's. Orders go there as messages, and answers come back so.
class World : public QObject
{
    Q_OBJECT

public:
    /// `portFolder` is where the pseudo terminal of the chain gets its name.
    World(const Addresses &addresses, const QString &portFolder, quint32 seed, const CertifiedKey &identity);
    ~World() override;

    /// Starts the gateway and the web server, not the chain; waits until they are there. Ends the program if
    /// an address cannot be had.
    void start();
    quint16 gatewayPort() const { return m_gatewayPort; }
    quint16 webPort() const { return m_webPort; }

    /// The chain with this number in stormChains() answers, on TCP and on the terminal, in place of another.
    void plug(int chain);
    void unplug();
    void setFaults(const QString &rules, const QString &gatewayRules);
    void clearFaults() { setFaults({}, {}); }
    /// What the web server tells as the newest versions.
    void setVersions(const QByteArray &configurator, const QByteArray &firmware);
    /// Ends all connections to the gateway.
    void cutGateway();

    /// Tells the state soon, if `receiver` lives that long.
    void look(QObject *receiver, const std::function<void(const Snapshot &)> &tell);
    void count(QObject *receiver, const std::function<void(const WorldCounts &)> &tell);

private:
    void order(const std::function<void(Simulation &)> &act);

    const Addresses m_addresses;
    DeafListener m_deaf;
    QThread m_thread;
    Simulation *m_simulation; ///< lives in the thread, which ends it
    quint16 m_gatewayPort = 0;
    quint16 m_webPort = 0;
};

} // namespace storm
