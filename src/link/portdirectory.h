#pragma once

#include <QString>
#include <QStringList>

/// The COM ports of the machine under the names that the user knows them by, "COM1" and up.
///
/// On Windows these are the system's own names. On Linux "COM<n>" means first the symlink or file
/// "ports/COM<n>" in the settings folder; otherwise COM1 to COM32 are ttyS0 to ttyS31, COM33 to COM64 are
/// ttyUSB0 to ttyUSB31 and COM65 to COM96 are ttyACM0 to ttyACM31.
class PortDirectory
{
public:
    /// `settingsFolder` holds the folder "ports" with the user's own names. `systemRoot` is the folder
    /// under which "/dev" and "/sys" stand. Neither is used on Windows.
    explicit PortDirectory(const QString &settingsFolder, const QString &systemRoot = QString());

    /// Device to open for a COM name. On Linux always a path: a name that is no COM name of the machine means
    /// the device of this name, "pts/0" for instance, or the path that it is.
    QString deviceOf(const QString &comName) const;

    /// True if the port is there now. Asks for this one name only, so it is cheap enough for every write.
    bool isAvailable(const QString &comName) const;

    /// COM names of all ports that are there now, in ascending order of their numbers.
    QStringList availablePorts() const;

    /// For a port that may not be opened for lack of permission: which group owns it and what to do, as a
    /// sentence for the log. Empty if the permission is not the matter.
    QString permissionAdvice(const QString &comName) const;

private:
    QString pathOf(const QString &name) const; ///< not on Windows

    QString m_aliasFolder;
    QString m_systemRoot;
};
