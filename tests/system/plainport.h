#pragma once

#include "sim/link.h"

#include <QFile>
#include <QString>

/// A pseudo terminal as the port of a simulated device, under a name in the folder of the port names. Unlike
/// the simulator's own it stays the same whoever opens it and whatever he does to it, and it does nothing by
/// itself.
class PlainPort : public sim::Link
{
    Q_OBJECT

public:
    /// Ends the test program if the system has no pseudo terminals.
    explicit PlainPort(const QString &name);
    ~PlainPort() override;

    /// The device is there from now on; the port belongs to a simulated one already.
    void plug();

    /// Path of the device behind the name.
    QString device() const { return m_device; }

    /// Who may use the device.
    void setPermissions(QFile::Permissions permissions) const;

    static constexpr QFile::Permissions kForTheOwner = QFile::ReadOwner | QFile::WriteOwner;

private:
    const QString m_name;
    QString m_device;
    int m_master = -1;
    int m_peer = -1; ///< kept open, so that nobody who closes the port hangs it up
};
