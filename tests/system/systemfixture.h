#pragma once

#include "app/framework_ctrllr.h"
#include "app/framework_view.h"
#include "sim/chain.h"
#include "sim/server.h"
#include "skippingtime.h"

#include <QStringList>
#include <QTemporaryDir>
#include <memory>

/// The whole program with its real links, joined to the simulator in the same process, over real sockets and
/// pseudo terminals. The program's periods are shortened, so that a test waits for milliseconds where an
/// operator waits for seconds.
class SystemFixture
{
public:
    enum class LinkKind { Tcp, Serial };

    explicit SystemFixture(LinkKind kind);
    ~SystemFixture();

    SkippingTime time; ///< of the program and of the chain
    QTemporaryDir folder;
    /// Short ones for the cycle and the time-outs; to be changed before start().
    CommPeriods periods;
    std::chrono::milliseconds reconnect{150}; ///< as the periods
    Deployment deployment;                    ///< without a server for the versions; as the periods
    std::unique_ptr<sim::Server> device;      ///< null: nobody is there
    QString gatewayAddress;                   ///< "address:port" of the settings file; empty: it names none
    std::unique_ptr<Framework_Ctrllr> app;

    /// Makes the simulated chain of this description answer; over TCP on the port that the first one chose.
    void plug(const QString &chainText);

    /// The same with a file of sim/chains.
    void plugFile(const QString &name);

    /// The chain goes away, and the port or connection with it.
    void unplug();

    /// Lets the session wait for replies as long as the product does: for tests in which no reply is missing
    /// and a busy machine must not look like a silent device.
    void useProductTimeouts();

    /// Lets it wait for a minute: for tests that skip many seconds while the device answers.
    void usePatientTimeouts();

    /// Starts the program with a settings file that names the link.
    void start();

    /// Ends the program and starts it with the settings file that it left.
    void startAgain();

    /// What the settings file has behind this key.
    QString savedSetting(const QString &key) const;

    /// The connection that the settings file names, as a user would choose it in the dialog.
    model_Namespace::Settings chosenConnection() const;

    Framework_View *window() const { return app->mainWindow(); }
    QString statusBox() const;
    QString statusText() const;
    bool isReady() const { return statusBox() == QStringLiteral("READY"); }
    int rowCount() const;

    /// Text of a label in the row of the module at `index`, from 0.
    QString rowText(int index, const char *label) const;

    /// Text of a label in the top row.
    QString controllerText(const char *label) const;

private:
    void answer(const sim::Chain &chain);
    void launch();
    QString settingsFile() const { return folder.path() + QStringLiteral("/vxconfig.ini"); }

    LinkKind m_kind;
    quint16 m_port = 0;
};

Q_DECLARE_METATYPE(SystemFixture::LinkKind)

/// Rows "tcp" and "serial" with a column "kind".
void addLinkKinds();
