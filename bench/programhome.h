#pragma once

#include <QDir>
#include <QFile>
#include <QProcessEnvironment>
#include <QTemporaryDir>

/// A home folder of its own for a program that is started as a user starts it. Ends with this object.
class ProgramHome
{
public:
    ProgramHome()
    {
        if (!QDir().mkpath(settingsFolder()))
            qFatal("The home folder could not be made.");
    }

    /// Writes the settings file of the product.
    void writeSettings(const QByteArray &settings) const
    {
        QFile file(settingsFolder() + QStringLiteral("/vxconfig.ini"));
        if (!file.open(QIODevice::WriteOnly) || file.write(settings) != settings.size())
            qFatal("The settings file could not be written.");
    }

    QProcessEnvironment environment() const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_folder.path());
        environment.insert(QStringLiteral("HOME"), m_folder.path());
        return environment;
    }

private:
    QString settingsFolder() const { return m_folder.path() + QStringLiteral("/qor/vxconfig"); }

    QTemporaryDir m_folder;
};

/// Settings that name a chain behind a TCP port.
inline QByteArray tcpSettings(const QByteArray &address)
{
    return "MainServer=" + address + "\r\nPORT1=COM5:115200,E,8,1\r\nMode=TCP\r\n";
}
