#include "app/appenvironment.h"

#include "base/settingsfolder.h"
#include "base/timesource.h"
#include "link/tcpsock.h"

#include <QCoreApplication>

AppEnvironment productEnvironment(TimeSource &time)
{
    const PortDirectory ports(settingsFolder());
    const auto createLinks = [&time, ports] {
        CommLinks links;
        links.serial = std::make_unique<SerialComm>(time, ports);
        links.tcp = std::make_unique<TcpSock>(time);
        return links;
    };
    const QString deployment = deploymentFile(QCoreApplication::applicationDirPath());
    return {time, ports, defaultConfigPaths(), readDeployment(deployment), createLinks, CommPeriods()};
}
