#pragma once

#include "link/settings.h"
#include "settings/configpaths.h"
#include "settings/settingsfile.h"

#include <QObject>

/// Keeps what has to survive a restart in the settings file "vxconfig.ini". The file is read once, at
/// start; each change rewrites the whole file. The names of its operations are agreed.
class AppConfigurationManager : public QObject
{
    Q_OBJECT

public:
    explicit AppConfigurationManager(const ConfigPaths &paths, QObject *parent = nullptr);

    /// The connection that a save writes. Begins as COM5 with the serial defaults and empty texts; a save
    /// leaves its `serialConfig` without colons.
    const model_Namespace::Settings &comSettings() const;

public slots:
    /// Reads the file and emits a signal for each known line, in the order of the file. Returns the number
    /// of port lines, 0 also for a missing or unreadable file.
    int loadIniFile();

    /// Writes the file. The backup beside it is made before the first save and never refreshed. The values
    /// in memory are kept, whatever comes of it.
    ///
    /// The new file is written beside the old one and takes its place when it is whole, so that a full disk
    /// does not cost the old one; only where the folder is closed for writing the file itself is written.
    /// debugMessage() says one thing, as agreed: the path once the file is open, or that it cannot be
    /// opened. What fails after the path was told is therefore only logged.
    void StoreIniFile();

    /// Takes the record over without writing the file.
    void SaveComDetails(const model_Namespace::Settings &setting);

    /// Takes the record over, makes serial the active mode and writes the file.
    void saveSerialSettings(const model_Namespace::Settings &setting);

    /// Takes over only the address and port of the record, makes TCP the active mode and writes the file.
    void saveServerSettings(const model_Namespace::Settings &setting);

    /// Each takes its values over and writes the file.
    void Slot_ZrtGateway(const QString &address, const QString &port);
    void Slot_SaveFirmWrFilePath(const QString &path);
    void HandleDefltPath(const QString &path);

signals:
    /// A port line was read: "PORT1", port name, baud, parity letter, data bits, stop bits; may be longer or
    /// shorter in a damaged file.
    void updateConfig(const QStringList &config);

    /// The line of the folder for reports was read. Not emitted for a value with a zero byte, which is kept
    /// and told by debugMessage() as any other, but can be no path; nor is the next one.
    void updatePath(const QString &directory);

    /// The line of the last firmware file was read.
    void Signal_updateFwFilpth(const QString &path);

    /// The line of the gateway, or of the main server, was read.
    void gateWayInfo(const QString &address, const QString &port);
    void serverInfo(const QString &address, const QString &port);

    /// Progress of loading and saving, for the debug panel.
    void debugMessage(const QString &message);

    /// The line of the active mode was read, with a known value.
    void activateMode(Comm_Type mode);

private:
    /// Makes the settings folder if necessary and clears away the file of earlier versions.
    QString preparedPath();
    void cleanUpDesktop(bool move, const QString &path);
    int handle(const settingsfile::Line &line);
    void handleReportDirectory(const QString &directory);
    void handleFirmwarePath(const QString &path);
    void handleMode(const QString &mode);
    void writeFile(const QString &path);
    settingsfile::Values values() const;

    ConfigPaths m_paths;
    QString m_gatewayAddress;
    QString m_gatewayPort;
    QString m_serverAddress;
    QString m_serverPort;
    model_Namespace::Settings m_comSettings;
    QString m_reportDirectory;
    QString m_firmwarePath;
    QString m_activeMode;
};
