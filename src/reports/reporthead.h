#pragma once

#include <QDateTime>
#include <QString>
#include <functional>

/// What a report says of itself.
struct ReportHead
{
    QString fileName;       ///< path of the report's file as it was chosen
    QDateTime created;      ///< local time
    QString productVersion; ///< of this program
    QString osVersion;      ///< name of the operating system
};

/// Whether the module of this address was chosen for the report.
using ModuleFilter = std::function<bool(int address)>;
