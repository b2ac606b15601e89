#pragma once

#include <QString>
#include <functional>

class QIODevice;

/// Writes a report to a file. It is written beside the file and takes its place when it is whole: an earlier
/// file of this name stays if the folder is gone or closed, the disk is full, or `write` returns false. The
/// log then tells the path and the reason, and false is returned.
bool saveReport(const QString &path, const std::function<bool(QIODevice &)> &write);
