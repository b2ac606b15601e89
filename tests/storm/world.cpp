#include "world.h"

#include "simulation.h"
#include "threadsofstorm.h"

#include <QCoreApplication>
#include <QHostAddress>
#include <QPointer>
#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace storm {

Addresses addressesOfThisProcess()
{
    const qint64 process = QCoreApplication::applicationPid();
    const QString net = QStringLiteral("127.%1.%2.").arg(10 + process / 250 % 240).arg(1 + process % 250);
    const auto address = [&net](int host) { return net + QString::number(host); };
    return {address(10), address(11), address(12), address(13), address(14)};
}

QStringList stormChains()
{
    return {
        QStringLiteral("device autozero=700 shunt=3000\n"
                       "system powering=inductive transmission=inductive bitrate=2500 channels=32 mode=PCM\n"
                       "controller serial=CT-4711 hw=2.1 fw1=1.4.2 fw2=1.07 temperature=38\n"
                       "power serial=PW-0815 hw=1.3 fw1=1.4.2 fw2=1.02 mode=fixed fixed=12000 auto=9000\n"
                       "module type=1 serial=SG- filter=1000\n"
                       "module type=1 serial=SG- offsetA=12.5 bridgeB=3 rangeB=4 preselectA=both\n"
                       "module type=2 count=2 serial=VO- rangeA=2 rangeB=6\n"
                       "module type=3 serial=IE-\n"
                       "module type=4 serial=TH- bridgeA=1 filterA=4 rangeB=0\n"
                       "module type=4 serial=TH-\n"
                       "module type=5 serial=XV-\n"
                       "module type=6 serial=PO- polarityB=yes\n"
                       "module type=7 serial=CU-\n"
                       "module type=8 serial=AU- selftest=3\n"
                       "module type=9 serial=AN-\n"
                       "module type=9 serial=AN- functionA=2 functionB=3\n"),
        QStringLiteral("device autozero=500 shunt=1000\n"
                       "system powering=battery transmission=cable bitrate=5000 channels=16 mode=burst\n"
                       "controller serial=CT-1 hw=2.2 fw1=1.3.8 fw2=1.08 temperature=48\n"
                       "module type=9 serial=B-UN- hw=2.2 fw1=1.3.8 fw2=1.08 functionA=6\n"
                       "module type=2 serial=B-VO- hw=2.2 fw1=1.3.8 fw2=1.08 polarityA=yes selftest=27\n"
                       "module type=4 serial=B-TH- hw=2.2 fw1=1.3.8 fw2=1.08\n"
                       "module type=1 serial=B-SG- hw=2.2 fw1=1.3.8 fw2=1.08 preselect=positive\n"),
        QStringLiteral("system powering=mains transmission=radio bitrate=1250 channels=8 mode=FM\n"
                       "controller serial=CT-2 hw=2.3 fw1=1.4.3 fw2=1.09 temperature=28\n"
                       "power serial=PW-2 hw=1.4 fw1=1.3.9 fw2=1.03 mode=auto auto=24000\n"
                       "module type=1 serial=C-SG- hw=2.3 fw1=1.4.1 fw2=1.09 bridge=2 range=5\n"
                       "module type=77 serial=C-UNKNOWN- hw=2.3 fw1=1.4.3 fw2=1.09\n"
                       "module type=9 serial=C-AN- hw=2.3 fw1=1.4.3 fw2=1.09\n"
                       "module type=4 serial=C-TH- hw=2.3 fw1=1.2.0 fw2=1.09\n"
                       "module type=3 serial=C-IE- hw=2.3 fw1=1.4.3 fw2=1.09 bridge=1\n"),
    };
}

DeafListener::~DeafListener()
{
    for (const int socket : m_sockets)
        ::close(socket);
}

void DeafListener::listen(const QString &address, quint16 port)
{
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_port = htons(port);
    place.sin_addr.s_addr = htonl(QHostAddress(address).toIPv4Address());
    const auto *where = reinterpret_cast<const sockaddr *>(&place); // the interface of the kernel asks for it
    const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    m_sockets.append(listener);
    if (::bind(listener, where, sizeof place) != 0 || ::listen(listener, 0) != 0)
        qFatal("nobody can listen at %s", qPrintable(address));
    // One connection waits for ever to be taken; there is no room for another.
    for (int i = 0; i < 2; ++i) {
        const int waiting = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
        m_sockets.append(waiting);
        (void)::connect(waiting, where, sizeof place); // goes on by itself
    }
}

World::World(const Addresses &addresses, const QString &portFolder, quint32 seed,
             const CertifiedKey &identity)
    : m_addresses(addresses)
    , m_simulation(new Simulation(addresses, portFolder, seed, identity))
{
    m_thread.setObjectName(QLatin1String(kThreadOfTheWorld)); // also for the kernel
    m_simulation->moveToThread(&m_thread);
    connect(&m_thread, &QThread::finished, m_simulation, &QObject::deleteLater);
}

World::~World()
{
    m_thread.quit();
    m_thread.wait();
}

void World::start()
{
    m_deaf.listen(m_addresses.deaf, kDevicePort);
    m_thread.start();
    QMetaObject::invokeMethod(
        m_simulation,
        [this] {
            m_simulation->start();
            m_gatewayPort = m_simulation->gatewayPort();
            m_webPort = m_simulation->webPort();
        },
        Qt::BlockingQueuedConnection);
}

void World::order(const std::function<void(Simulation &)> &act)
{
    QMetaObject::invokeMethod(
        m_simulation, [simulation = m_simulation, act] { act(*simulation); }, Qt::QueuedConnection);
}

void World::plug(int chain)
{
    order([chain](Simulation &simulation) { simulation.plug(chain); });
}

void World::unplug()
{
    order([](Simulation &simulation) { simulation.unplug(); });
}

void World::setFaults(const QString &rules, const QString &gatewayRules)
{
    order([rules, gatewayRules](Simulation &simulation) { simulation.setFaults(rules, gatewayRules); });
}

void World::setVersions(const QByteArray &configurator, const QByteArray &firmware)
{
    order(
        [configurator, firmware](Simulation &simulation) { simulation.setVersions(configurator, firmware); });
}

void World::cutGateway()
{
    order([](Simulation &simulation) { simulation.cutGateway(); });
}

void World::look(QObject *receiver, const std::function<void(const Snapshot &)> &tell)
{
    const QPointer<QObject> asker = receiver; // read in its own thread only
    order([asker, this, tell](Simulation &simulation) {
        const Snapshot snapshot = simulation.snapshot();
        QMetaObject::invokeMethod(
            this,
            [asker, snapshot, tell] {
                if (asker)
                    tell(snapshot);
            },
            Qt::QueuedConnection);
    });
}

void World::count(QObject *receiver, const std::function<void(const WorldCounts &)> &tell)
{
    const QPointer<QObject> asker = receiver;
    order([asker, this, tell](Simulation &simulation) {
        const WorldCounts counts = simulation.counts();
        QMetaObject::invokeMethod(
            this,
            [asker, counts, tell] {
                if (asker)
                    tell(counts);
            },
            Qt::QueuedConnection);
    });
}

} // namespace storm
