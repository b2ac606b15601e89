#include "settings/appconfigurationmanager.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTextStream>

namespace {

const QLatin1String kFileName("/vxconfig.ini");
const QLatin1String kBackupSuffix(".bak");
const QLatin1String kDefaultPort("COM5");

/// A file system that is asked for a path with a zero byte complains.
bool canBePath(const QString &text)
{
    return !text.contains(QChar(QChar::Null));
}

template <typename... Handlers>
struct Overloaded : Handlers...
{
    using Handlers::operator()...;
};
template <typename... Handlers>
Overloaded(Handlers...) -> Overloaded<Handlers...>;

} // namespace

AppConfigurationManager::AppConfigurationManager(const ConfigPaths &paths, QObject *parent)
    : QObject(parent)
    , m_paths(paths)
{
    // Other owners of the record start from other ports, on purpose.
    m_comSettings.portName = kDefaultPort;
    model_Namespace::setDefaultSerialParameters(m_comSettings);
}

const model_Namespace::Settings &AppConfigurationManager::comSettings() const
{
    return m_comSettings;
}

QString AppConfigurationManager::preparedPath()
{
    const QString path = m_paths.settingsFolder + kFileName;
    if (QDir(m_paths.settingsFolder).exists()) {
        cleanUpDesktop(false, path);
        return path;
    }
    if (!QDir().mkpath(m_paths.settingsFolder))
        qDebug() << "Directory not created";
    cleanUpDesktop(true, path);
    return path;
}

/// Removes the settings file that an earlier version left on the desktop, moved to `path` before or not.
/// On purpose nothing that fails here is reported.
void AppConfigurationManager::cleanUpDesktop(bool move, const QString &path)
{
    const QString candidate = m_paths.desktopFolder + kFileName;
    if (!QFileInfo(candidate).isFile())
        return;
    if (move)
        QFile::rename(candidate, path);
    QFile::remove(candidate);
    QFile::remove(candidate + kBackupSuffix);
}

int AppConfigurationManager::loadIniFile()
{
    QFile file(preparedPath());
    if (!QFileInfo(file.fileName()).isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Text))
        return 0;
    const QStringList lines = settingsfile::keyLines(file);
    file.close();

    int portLines = 0;
    for (const QString &line : lines)
        portLines += handle(settingsfile::classify(line));
    return portLines;
}

/// Returns 1 for a port line, otherwise 0.
int AppConfigurationManager::handle(const settingsfile::Line &line)
{
    using namespace settingsfile;
    const auto isPortLine = Overloaded{
        [](const IgnoredLine &) { return 0; },
        [this](const GatewayLine &gateway) {
            m_gatewayAddress = gateway.address;
            m_gatewayPort = gateway.port;
            emit gateWayInfo(gateway.address, gateway.port);
            return 0;
        },
        [this](const ServerLine &server) {
            m_serverAddress = server.address;
            m_serverPort = server.port;
            emit serverInfo(server.address, server.port);
            return 0;
        },
        [this](const PortLine &port) {
            emit updateConfig(port.words);
            return 1;
        },
        [this](const ModeLine &mode) {
            handleMode(mode.mode);
            return 0;
        },
        [this](const ReportDirectoryLine &report) {
            handleReportDirectory(report.directory);
            return 0;
        },
        [this](const FirmwareLine &firmware) {
            handleFirmwarePath(firmware.path);
            return 0;
        },
    };
    return std::visit(isPortLine, line);
}

void AppConfigurationManager::handleMode(const QString &mode)
{
    m_activeMode = mode;
    const Comm_Type kind = settingsfile::linkKind(mode);
    if (kind != Comm_Type::None)
        emit activateMode(kind);
}

void AppConfigurationManager::handleReportDirectory(const QString &directory)
{
    m_reportDirectory = directory;
    emit debugMessage(QStringLiteral("Default report:") + directory);
    if (canBePath(directory))
        emit updatePath(directory);
}

void AppConfigurationManager::handleFirmwarePath(const QString &path)
{
    m_firmwarePath = path;
    emit debugMessage(QStringLiteral("Firmwr File Path:") + path);
    if (canBePath(path))
        emit Signal_updateFwFilpth(path);
}

void AppConfigurationManager::StoreIniFile()
{
    const QString path = preparedPath();
    // The copy does not overwrite: the backup stays as it was before the first save, on purpose.
    if (!QFile::copy(path, path + kBackupSuffix))
        qDebug() << "Backup file not created";
    // The file knows only the spelling with commas, and so does the record once it was saved.
    m_comSettings.serialConfig.replace(QLatin1Char(':'), QLatin1Char(','));
    writeFile(path);
}

/// Writes beside the file and moves it into place, so that a full disk does not cost the old file.
void AppConfigurationManager::writeFile(const QString &path)
{
    QSaveFile file(path);
    file.setDirectWriteFallback(true);
    if (!file.open(QIODevice::WriteOnly)) {
        emit debugMessage(QStringLiteral("Error:Unable to write file in the path"));
        return;
    }
    emit debugMessage(QStringLiteral("Path:") + path);
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    stream << settingsfile::fileText(values());
    stream.flush();
    // Looked at here because the file itself does not notice when only a part of its buffer was written.
    const bool isWritten = stream.status() == QTextStream::Ok;
    if (!isWritten)
        file.cancelWriting();
    if (!file.commit())
        qDebug() << "Settings file not written" << path;
}

settingsfile::Values AppConfigurationManager::values() const
{
    settingsfile::Values values;
    values.executablePath = m_paths.executablePath;
    values.reportDirectory = m_reportDirectory;
    values.gatewayAddress = m_gatewayAddress;
    values.gatewayPort = m_gatewayPort;
    values.serverAddress = m_serverAddress;
    values.serverPort = m_serverPort;
    values.portName = m_comSettings.portName;
    values.serialConfig = m_comSettings.serialConfig;
    values.activeMode = m_activeMode;
    values.firmwarePath = m_firmwarePath;
    return values;
}

void AppConfigurationManager::SaveComDetails(const model_Namespace::Settings &setting)
{
    m_comSettings = setting;
}

void AppConfigurationManager::saveSerialSettings(const model_Namespace::Settings &setting)
{
    SaveComDetails(setting);
    m_activeMode = settingsfile::modeText(Comm_Type::Serial);
    StoreIniFile();
    emit debugMessage(QStringLiteral("Comm Settings saved CurrntPath:") + m_reportDirectory);
}

void AppConfigurationManager::saveServerSettings(const model_Namespace::Settings &setting)
{
    m_serverAddress = setting.ipAddress;
    m_serverPort = setting.tcpPort;
    m_activeMode = settingsfile::modeText(Comm_Type::Ethernet);
    StoreIniFile();
}

void AppConfigurationManager::Slot_ZrtGateway(const QString &address, const QString &port)
{
    m_gatewayAddress = address;
    m_gatewayPort = port;
    qDebug() << "Saving Gateway Address";
    StoreIniFile();
}

void AppConfigurationManager::Slot_SaveFirmWrFilePath(const QString &path)
{
    m_firmwarePath = path;
    StoreIniFile();
}

void AppConfigurationManager::HandleDefltPath(const QString &path)
{
    m_reportDirectory = path;
    StoreIniFile();
}
