#include "benchapplication.h"

#include "app/appenvironment.h"
#include "app/framework_view.h"
#include "link/serialcomm.h"
#include "link/tcpsock.h"
#include "protocol/communication.h"
#include "protocol/records/moduletypes.h"
#include "protocol/records/systemstatus.h"

#include <QFile>

BenchApplication::BenchApplication(const QByteArray &settings)
{
    const QString folder = m_folder.path();
    QFile file(folder + QStringLiteral("/vxconfig.ini"));
    if (!file.open(QIODevice::WriteOnly) || file.write(settings) != settings.size())
        qFatal("The settings file could not be written.");
    file.close();
    const PortDirectory ports(folder);
    const auto createLinks = [this, ports] {
        CommLinks links;
        links.serial = std::make_unique<SerialComm>(m_time, ports);
        links.tcp = std::make_unique<TcpSock>(m_time);
        return links;
    };
    Deployment deployment;
    deployment.host.clear(); // nobody is asked for new versions
    const ConfigPaths paths{folder, folder + QStringLiteral("/desktop"), QString()};
    m_app = std::make_unique<Framework_Ctrllr>(
        AppEnvironment{m_time, ports, paths, deployment, createLinks, CommPeriods()});
}

BenchApplication::BenchApplication()
    : BenchApplication("PORT1=COM5:115200,E,8,1\r\n")
{}

QVariant BenchApplication::systemStatus(const QVector<quint8> &types)
{
    System_Status status;
    status.nModules = static_cast<quint16>(types.size());
    std::copy(types.begin(), types.end(), status.analogModuleTypes.begin());
    status.sModules = {wireCode(ModuleType::Controller), wireCode(ModuleType::Power)};
    return QVariant::fromValue(status);
}
