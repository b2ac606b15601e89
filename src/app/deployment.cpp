#include "app/deployment.h"

#include <QSettings>
#include <limits>

namespace {

/// A text of the file; one that is missing or empty is the default. A comma makes a list of a text, so the
/// list is put together again.
QString textOf(const QSettings &settings, const QString &key, const QString &whenMissing)
{
    const QString text = settings.value(key).toStringList().join(QLatin1Char(','));
    return text.isEmpty() ? whenMissing : text;
}

} // namespace

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
    deployment.host = textOf(settings, QStringLiteral("host"), deployment.host);
    const uint port = settings.value(QStringLiteral("port"), deployment.port).toUInt();
    if (port > 0 && port <= std::numeric_limits<quint16>::max())
        deployment.port = static_cast<quint16>(port);
    deployment.downloadPage = textOf(settings, QStringLiteral("downloadPage"), deployment.downloadPage);
    return deployment;
}
