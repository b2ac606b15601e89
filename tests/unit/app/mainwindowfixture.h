#pragma once

#include "app/framework_view.h"
#include "link/portdirectory.h"
#include "settings/portlister.h"
#include "support/childbyname.h"
#include "support/virtualtime.h"

#include <QLabel>
#include <QLineEdit>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>
#include <memory>

/// The main window with virtual time, window settings and a port folder of its own.
class MainWindowFixture
{
public:
    MainWindowFixture()
        : ports(folder.path())
    {
        // No native format: on some platforms that is no file and knows no path.
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
        restart();
    }

    /// Builds the window anew, as the next start of the program does.
    void restart(const DisplayPeriods &periods = {})
    {
        view.reset();
        view = std::make_unique<Framework_View>(time, ports, periods);
    }

    /// Where the window keeps its geometry.
    static std::unique_ptr<QSettings> windowSettings()
    {
        return std::make_unique<QSettings>(QSettings::defaultFormat(), QSettings::UserScope,
                                           QStringLiteral("ZRT"), QStringLiteral("VXConfig"));
    }

    void show()
    {
        view->show();
        QVERIFY(QTest::qWaitForWindowActive(view.get()));
    }

    template <typename T>
    T *child(const char *name) const
    {
        return childByName<T>(view.get(), name);
    }

    QString statusText() const { return child<QLabel>("statusLabel")->text(); }
    QString boxText() const { return child<QLineEdit>("statusBox")->text(); }

    QColor lamp(const char *name) const
    {
        const QPalette palette = child<QLineEdit>(name)->palette();
        const QColor active = palette.color(QPalette::Active, QPalette::Base);
        for (const QPalette::ColorGroup group : {QPalette::Inactive, QPalette::Disabled}) {
            if (palette.color(group, QPalette::Base) != active)
                return {};
        }
        return active;
    }

    QTemporaryDir folder;
    VirtualTime time;
    PortDirectory ports;
    std::unique_ptr<Framework_View> view;
};
