#pragma once

#include "link/portdirectory.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

/// A settings folder with ports of the test's own, on a machine that has no others.
class PortFolder
{
public:
    PortFolder() { QDir(m_folder.path()).mkdir(QStringLiteral("ports")); }

    PortDirectory directory() const { return PortDirectory(m_folder.path(), m_folder.path()); }

    bool plug(const QString &name) { return QFile::link(QStringLiteral("/dev/null"), path(name)); }
    bool unplug(const QString &name) { return QFile::remove(path(name)); }

private:
    QString path(const QString &name) const { return m_folder.path() + QStringLiteral("/ports/") + name; }

    QTemporaryDir m_folder;
};
