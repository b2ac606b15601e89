#pragma once

#include <QString>

/// For a device that the user may not open: what stands in the way and what to do, as a sentence for the log.
/// `group` is the name of the group that owns the device, empty if the system knows none for `groupId`.
QString permissionAdvice(const QString &comName, const QString &device, const QString &group, uint groupId);
