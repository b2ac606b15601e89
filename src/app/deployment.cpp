#include "app/deployment.h"

#include <QSettings>
#include <limits>

QString deploymentFile(const QString &applicationFolder)
{
    const QString named = qEnvironmentVariable("VXCONFIG_DEPLOYMENT");
    return named.isEmpty() ? applicationFolder + QStringLiteral("/deployment.ini") : named;
}

Deployment readDeployment(const QString &file)
{
    Deployment deployment;
    QSettings settings(file, QSettings::IniFormat);
    settings.beginGroup(QStringLiteral("web"));
    deployment.host = settings.value(QStringLiteral("host"), deployment.host).toString();
    const uint port = settings.value(QStringLiteral("port"), deployment.port).toUInt();
    if (port > 0 && port <= std::numeric_limits<quint16>::max())
        deployment.port = static_cast<quint16>(port);
    deployment.downloadPage =
        settings.value(QStringLiteral("downloadPage"), deployment.downloadPage).toString();
    return deployment;
}
