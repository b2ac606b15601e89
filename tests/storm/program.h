#pragma once

#include "app/framework_ctrllr.h"
#include "app/framework_view.h"
#include "base/timesource.h"
#include "link/settings.h"
#include "world.h"

#include <QElapsedTimer>
#include <QMap>
#include <QTemporaryDir>
#include <memory>

namespace storm {

/// The times of the session in the storm, shorter than the product's, so that many sessions fit into it.
CommPeriods stormPeriods();
constexpr std::chrono::milliseconds kReconnect{150};
/// How long the program waits for a connection to come up.
constexpr std::chrono::milliseconds kConnect{50};

/// Where temporary folders of the storm lie, for QTemporaryDir.
QString folderPattern();

/// The whole program with its real links, windows and clock, in a folder of its own, before the world.
///
/// The folder is one in memory, where there is such a place: settings and reports are written to the disk
/// before the program goes on, and how long that takes on a busy machine is not the program's.
class Program
{
public:
    explicit Program(const Addresses &addresses, const CommPeriods &periods = stormPeriods());
    ~Program();

    /// Writes the settings file and starts the program. The ports are those of the gateway and of the server
    /// of the version files.
    void start(quint16 gatewayPort, quint16 webPort);
    /// Fills what remembers the last lines up to its limit, as after hours of work: else it grows until then.
    void fillDialogue() const;
    /// The operator closes the main window, and the program ends; false if it had to be ended.
    bool end();

    Framework_View *window() const { return m_app->mainWindow(); }
    Framework_Ctrllr &app() const { return *m_app; }
    const Addresses &addresses() const { return m_addresses; }
    quint16 gatewayPort() const { return m_gatewayPort; }

    QString folder() const { return m_folder.path(); }
    /// Here the user's own names of ports stand.
    QString portFolder() const { return folder() + QStringLiteral("/ports"); }

    /// The link that was chosen last.
    const model_Namespace::Settings &link() const { return m_link; }

    QString statusBox() const;
    bool isReady() const { return statusBox() == QStringLiteral("READY"); }
    /// Whether the rows of all modules that the system status named are there.
    int rowCount() const { return static_cast<int>(m_app->analogModules().size()); }

    /// Sessions that were begun, and those that came to the cyclic polling.
    int sessionsBegun() const { return m_sessionsBegun; }
    int sessionsRead() const { return m_sessionsRead; }
    /// The latter by the link over which they went.
    const QMap<Comm_Type, int> &sessionsByLink() const { return m_sessionsByLink; }

    /// Sessions that ended, and with them the rows.
    int cleanSlates() const { return m_cleanSlates; }
    /// Replies with the values of all modules.
    int polls() const { return m_polls; }
    /// System statuses that a change of the data rate asked for, and that came in the session behind it only.
    int lateRefreshes() const { return m_lateRefreshes; }
    /// How long the last reading of the modules took, from the system status on.
    double walkMs() const { return m_walkMs; }

    /// Firmware files of the folder, which is the working directory; there from the start on.
    static QString smallImage() { return QStringLiteral("X_ANA_FPGA5_1_2_3_s.bin"); }
    static QString largeImage() { return QStringLiteral("X_CON_FPGA5_1_2_3_l.bin"); }
    static QString wrongImage() { return QStringLiteral("X_ANA_FPGA4_1_2_3_w.bin"); }

private:
    void writeImages() const;

    const Addresses m_addresses;
    const CommPeriods m_periods;
    QTemporaryDir m_folder{folderPattern()};
    quint16 m_gatewayPort = 0;
    SystemTime m_time;
    std::unique_ptr<Framework_Ctrllr> m_app;
    model_Namespace::Settings m_link;
    int m_sessionsBegun = 0;
    int m_sessionsRead = 0;
    QMap<Comm_Type, int> m_sessionsByLink;
    int m_cleanSlates = 0;
    int m_polls = 0;
    int m_lateRefreshes = 0;
    bool m_isBegun = false; ///< the session
    QElapsedTimer m_walk;
    double m_walkMs = 0;
};

} // namespace storm
