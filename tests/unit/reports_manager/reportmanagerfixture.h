#pragma once

#include "reports/moduleconfigurationmanager.h"
#include "reports/reportrecords.h"
#include "reports/systemreport.h"
#include "support/childbyname.h"
#include "support/messagecatcher.h"
#include "support/virtualtime.h"

#include <QTemporaryDir>
#include <functional>
#include <memory>

class QFileDialog;
class QUrl;
class SensorModel;

/// A manager of its own for each test, with an empty folder, and what it told the world in the order in
/// which it did.
class ReportManagerFixture : public QObject
{
    Q_OBJECT

public slots:
    /// Stands in for the programs that show files.
    void openUrl(const QUrl &url);

private slots:
    void init();
    void cleanup();

protected:
    /// No program shows any file from now on, and Qt warns of each of the `files` that are to be shown.
    void loseViewers(int files = 1);

    QString folder() const { return m_folder->path(); }
    QString desktopFolder() const { return folder() + QStringLiteral("/Desktop"); }

    /// Makes a folder within the test's own, and returns its path.
    QString makeFolder(const QString &name) const;

    /// The bytes of the file; "absent" if it is not there.
    static QByteArray readFile(const QString &path);

    /// Names of all files under the test's folder.
    QStringList files() const;

    /// Files the records of a system of a controller and these modules: all four kinds.
    void fill(const QVector<Module_Status> &modules);
    void fileModule(const Module_Status &module);

    SystemReport &report() const { return *m_manager->reportDialog(); }
    SensorModel &table() const;

    /// The dialog that asks for a file; there must be one.
    QFileDialog &saveDialog() const;

    /// Number of windows of this class that the manager asks the user by.
    template <typename T>
    int openWindows() const
    {
        int count = 0;
        const auto windows = report().findChildren<T *>();
        for (const T *window : windows)
            count += window->isVisible() ? 1 : 0;
        return count;
    }

    /// What the dialog has in its field for the name.
    QString proposedName() const;

    /// Enters a path or name in the dialog and leaves it by Return. `meanwhile` is called as soon as the
    /// dialog waits for an answer to a question of its own.
    void saveAs(const QString &path, const std::function<void()> &meanwhile = {});

    /// The program is to log one critical line that holds this text.
    static void expectCritical(const QString &text);

    QStringList critical() const { return m_log->lines(QtCriticalMsg); }

    /// What the program logged; warnings of the toolkit do not count.
    QStringList logged() const { return m_log->lines(QtDebugMsg) + critical(); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<VirtualTime> m_time;
    std::unique_ptr<ModuleConfigurationManager> m_manager;
    std::unique_ptr<MessageCatcher> m_log;

    /// Signals with their argument ("DefltLctn|/x") and files that were shown ("open|/x").
    QStringList m_events;
};
