#pragma once

#include <QString>

/// Values of a deployment, read from "deployment.ini" beside the executable, or from the file that the
/// environment variable VXCONFIG_DEPLOYMENT names. What the file does not say keeps its default.
struct Deployment
{
    QString host = QStringLiteral("www.qor.example");                 ///< server of the version files
    quint16 port = 443;                                               ///< its HTTPS port
    QString downloadPage = QStringLiteral("https://www.qor.example"); ///< where the user gets new versions
};

/// File to read for an executable in `applicationFolder`.
QString deploymentFile(const QString &applicationFolder);

/// A file that is missing or unreadable gives the defaults, and so does a port outside 1 to 65535.
Deployment readDeployment(const QString &file);
