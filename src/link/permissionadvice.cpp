#include "link/permissionadvice.h"

namespace {

constexpr uint kRootGroup = 0;

/// The superuser's group opens far more than a port, and a group without a name cannot be joined by name.
QString remedy(const QString &group, uint groupId)
{
    if (groupId == kRootGroup || group.isEmpty())
        return QStringLiteral("ask the administrator to give the device to a group that you belong to, for "
                              "example \"dialout\", by a rule of the device manager");
    return QStringLiteral("add your user to this group with \"sudo usermod -aG %1 $USER\", then log out and "
                          "in again")
        .arg(group);
}

} // namespace

QString permissionAdvice(const QString &comName, const QString &device, const QString &group, uint groupId)
{
    const QString owner = group.isEmpty()
                              ? QStringLiteral("the group number %1, which has no name here").arg(groupId)
                              : QStringLiteral("the group \"%1\"").arg(group);
    return QStringLiteral("No permission to open port %1 (%2), which belongs to %3: %4.")
        .arg(comName, device, owner, remedy(group, groupId));
}
