#pragma once

#include "link/settings.h"
#include "settings/appconfigurationmanager.h"
#include "signalrecorder.h"
#include "support/messagecatcher.h"

#include <QByteArray>
#include <QTemporaryDir>
#include <memory>

/// A manager of its own for each test, in folders that are empty or absent, with what it emitted and logged.
class ManagerFixture : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

protected:
    static const QString kBackupComplaint; ///< of the log
    static const QString kWriteComplaint;  ///< of the signals

    static void writeFile(const QString &path, const QByteArray &bytes);

    /// The bytes of the file; "absent" if it is not there.
    static QByteArray readFile(const QString &path);

    /// A file as the program writes it, with these values.
    static QByteArray fileWith(const QByteArray &report, const QByteArray &gateway, const QByteArray &server,
                               const QByteArray &port, const QByteArray &mode, const QByteArray &firmware);

    /// A connection that differs from the defaults in every field.
    static model_Namespace::Settings serialRecord();

    QString settingsFolder() const { return m_folder->path() + QStringLiteral("/settings/vx"); }
    QString iniPath() const { return settingsFolder() + QStringLiteral("/vxconfig.ini"); }
    QString backupPath() const { return iniPath() + QStringLiteral(".bak"); }
    QString desktopFile() const { return m_folder->path() + QStringLiteral("/desktop/vxconfig.ini"); }

    /// What the signals tell of a save that opens its file.
    QString pathMessage() const { return QStringLiteral("debugMessage|Path:") + iniPath(); }

    void makeSettingsFolder();
    void makeIni(const QByteArray &bytes);

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<AppConfigurationManager> m_manager;
    std::unique_ptr<SignalRecorder> m_signals;
    std::unique_ptr<MessageCatcher> m_log;
};
