#pragma once

#include <QString>

class QDateTime;

/// Names of report files.
namespace reportfilename {

/// What the dialog for a system report proposes: `folder` and "/" unless it is empty, the time, and
/// "_VX_SystemReport_".
QString systemProposal(const QString &folder, const QDateTime &now);

/// The same for one module: the time, "_", the nine-digit serial number, "_VX_", the short type name, "_".
/// Characters that a file name must not have are replaced by "_", and so are points: what stands behind one
/// would pass for the suffix.
QString moduleProposal(const QString &folder, const QDateTime &now, const QString &serialNumber,
                       quint8 typeCode);

/// The last part of a path with its suffix, as reports show it. Parts are parted by "/" and by two
/// apostrophes.
QString baseName(const QString &path);

} // namespace reportfilename
