#pragma once

#include "app/appenvironment.h"
#include "app/framework_ctrllr.h"
#include "app/framework_view.h"
#include "support/childbyname.h"
#include "support/fakelinks.h"
#include "support/virtualtime.h"

#include <QByteArray>
#include <QTemporaryDir>
#include <memory>
#include <vector>

struct System_Status;

/// The whole application in a folder of its own, with scripted links to the device and virtual time.
class AppFixture
{
public:
    AppFixture();
    ~AppFixture();

    VirtualTime time;
    FakeSerialComm *serial = nullptr; ///< belongs to the application; set by start()
    FakeTcpSock *tcp = nullptr;
    std::unique_ptr<Framework_Ctrllr> app;

    /// What the links answer to an attempt to open them, from the very first one on.
    bool serialOpens = false;
    bool tcpConnects = false;

    /// Without a server for the versions unless a test names one.
    Deployment deployment;

    QString settingsFolder() const { return m_folder.path() + QStringLiteral("/settings"); }
    QString settingsFile() const { return settingsFolder() + QStringLiteral("/vxconfig.ini"); }

    /// Writes the settings file that start() finds.
    void writeSettings(const QByteArray &text);
    QByteArray readSettings() const;

    void start();

    Framework_View *window() const { return app->mainWindow(); }

    /// Text of the status line, without the blanks in front of it.
    QString statusText() const;

    /// Colour of the connection lamp.
    QColor lamp() const;

    /// Texts of the placeholders on screen, the controller's first.
    QStringList placeholders() const;

    template <typename T>
    T *child(const char *name) const
    {
        return childByName<T>(window(), name);
    }

private:
    AppEnvironment environment();

    QTemporaryDir m_folder;
};

/// A system status of a controller, of a power module on request, and of analog modules of these types.
System_Status systemStatus(const std::vector<int> &types, bool withController = true, bool withPower = true);
