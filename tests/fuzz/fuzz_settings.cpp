// The settings file: any contents are read as its lines say, what was read survives being written again, and
// the connection dialog never offers a connection that cannot be.

#include "fuzztarget.h"
#include "settings/appconfigurationmanager.h"
#include "settings/portlister.h"
#include "settings/settingsfile.h"
#include "support/virtualtime.h"

#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTextCodec>

using fuzz::require;

namespace {

const char *const kKeys[] = {"ZrtGateway", "MainServer", "PORT1", "Mode", "FILE_DIR", "FIRMWR_FILEPATH"};

const char kSoundFile[] =
    "FILE_DIR=/reports\r\nZrtGateway=10.0.0.1:23\r\nMainServer=10.0.0.2:10001\r\n"
    "PORT1=COM7:9600,O,7,2\r\nMode=Serial\r\nFIRMWR_FILEPATH=/images/a_CON_FPGA4.bin\r\n";

const char *const kSoundTold[] = {
    "debug|Default report:/reports",
    "report|/reports",
    "gateway|10.0.0.1|23",
    "server|10.0.0.2|10001",
    "port|PORT1|COM7|9600|O|7|2",
    "mode|Serial",
    "debug|Firmwr File Path:/images/a_CON_FPGA4.bin",
    "firmware|/images/a_CON_FPGA4.bin",
};

/// What one load tells, a line for each signal; and the values of a file that would say the same.
struct Told
{
    QStringList lines;
    settingsfile::Values values;
};

class Loader
{
public:
    explicit Loader(const QString &folder)
        : m_manager(ConfigPaths{folder, folder + QStringLiteral("/none"), QStringLiteral("/opt/vxconfig")})
    {
        using Manager = AppConfigurationManager;
        const auto on = [this](auto signal, auto slot) {
            QObject::connect(&m_manager, signal, &m_manager, slot);
        };
        on(&Manager::updateConfig, [this](const QStringList &words) {
            tell("port", words);
            m_told.values.portName = words.value(1);
            m_told.values.serialConfig = words.mid(2).join(QLatin1Char(','));
        });
        on(&Manager::updatePath, [this](const QString &directory) {
            tell("report", {directory});
            m_told.values.reportDirectory = directory;
        });
        on(&Manager::Signal_updateFwFilpth, [this](const QString &path) {
            tell("firmware", {path});
            m_told.values.firmwarePath = path;
        });
        on(&Manager::gateWayInfo, [this](const QString &address, const QString &port) {
            tell("gateway", {address, port});
            m_told.values.gatewayAddress = address;
            m_told.values.gatewayPort = port;
        });
        on(&Manager::serverInfo, [this](const QString &address, const QString &port) {
            tell("server", {address, port});
            m_told.values.serverAddress = address;
            m_told.values.serverPort = port;
        });
        on(&Manager::debugMessage, [this](const QString &text) { tell("debug", {text}); });
        on(&Manager::activateMode, [this](Comm_Type mode) {
            tell("mode", {settingsfile::modeText(mode)});
            m_told.values.activeMode = settingsfile::modeText(mode);
        });
    }

    AppConfigurationManager &manager() { return m_manager; }

    Told load()
    {
        m_told = Told();
        const int portLines = m_manager.loadIniFile();
        require(portLines == m_told.lines.filter(QRegularExpression(QStringLiteral("^port"))).size(),
                "the port lines are counted");
        return m_told;
    }

private:
    void tell(const char *what, const QStringList &values)
    {
        m_told.lines.append(QLatin1String(what) + QLatin1Char('|') + values.join(QLatin1Char('|')));
    }

    AppConfigurationManager m_manager;
    Told m_told;
};

bool holdsKey(const QByteArray &line)
{
    return std::any_of(std::begin(kKeys), std::end(kKeys),
                       [&line](const char *key) { return line.contains(key); });
}

bool holdsKey(const QString &text)
{
    return std::any_of(std::begin(kKeys), std::end(kKeys),
                       [&text](const char *key) { return text.contains(QLatin1String(key)); });
}

/// The lines that hold a key, which must be as many as there are in the file.
QStringList checkedLines(QByteArray contents)
{
    QBuffer file(&contents);
    file.open(QIODevice::ReadOnly | QIODevice::Text);
    const QStringList lines = settingsfile::keyLines(file);
    const QList<QByteArray> all = QByteArray(contents).replace('\r', "").split('\n');
    const auto counts = [](const QByteArray &line) {
        return line.size() <= settingsfile::kMaxLineLength && holdsKey(line);
    };
    require(lines.size() == std::count_if(all.begin(), all.end(), counts), "each line with a key is read");
    for (const QString &line : lines)
        require(holdsKey(line) && !line.contains(QLatin1Char('\n')), "what is read is a line with a key");
    return lines;
}

/// The words of a line; what is none separates them.
QStringList wordsOf(const QString &line)
{
    QStringList words{QString()};
    bool isInWord = true;
    const auto characters = line.toUcs4();
    for (const uint character : characters) {
        const bool isOfWord = QChar::isLetterOrNumber(character) || character == '_';
        if (isOfWord)
            words.last().append(QString::fromUcs4(&character, 1));
        else if (isInWord)
            words.append(QString());
        isInWord = isOfWord;
    }
    return words;
}

const QLatin1String kUnclearPort("port|"); ///< of a line whose words are not known

/// Whether the tables of characters may tell differently what is a letter: they are of different years.
bool hasNewCharacter(const QString &line)
{
    const auto characters = line.toUcs4();
    return std::any_of(characters.begin(), characters.end(),
                       [](uint character) { return QChar::category(character) == QChar::Other_NotAssigned; });
}

QStringList toldOfPath(const char *message, const char *what, const QString &value)
{
    QStringList told{QLatin1String("debug|") + QLatin1String(message) + value};
    if (!value.contains(QChar(QChar::Null))) // which is in no path
        told.append(QLatin1String(what) + value);
    return told;
}

/// What a line has to tell, read anew: the first of the keys in their order decides.
QStringList toldBy(const QString &line)
{
    const auto parts = [&line](const char *separators) {
        QStringList found{QString()};
        for (const QChar character : line) {
            if (QString::fromLatin1(separators).contains(character))
                found.append(QString());
            else
                found.last().append(character);
        }
        return found;
    };
    const auto has = [&line](const char *key) { return line.contains(QLatin1String(key)); };
    for (const char *key : {"ZrtGateway", "MainServer"}) {
        if (!has(key))
            continue;
        const QStringList found = parts("=:");
        const QString what = QLatin1String(key[0] == 'Z' ? "gateway|" : "server|");
        return found.size() < 3 ? QStringList()
                                : QStringList{what + found.at(1) + QLatin1Char('|') + found.at(2)};
    }
    if (has("PORT1"))
        return {hasNewCharacter(line) ? QString(kUnclearPort)
                                      : kUnclearPort + wordsOf(line).join(QLatin1Char('|'))};
    const QStringList found = parts("=");
    const QString value = found.value(1);
    if (has("Mode")) {
        const bool isKnown = value == QLatin1String("Serial") || value == QLatin1String("TCP");
        return isKnown ? QStringList{QStringLiteral("mode|") + value} : QStringList();
    }
    if (found.size() < 2)
        return {};
    return has("FILE_DIR") ? toldOfPath("Default report:", "report|", value)
                           : toldOfPath("Firmwr File Path:", "firmware|", value);
}

void checkTold(const Told &told, const QStringList &lines)
{
    QStringList expected;
    for (const QString &line : lines)
        expected += toldBy(line);
    require(told.lines.size() == expected.size(), "each line with a value is told");
    for (int i = 0; i < expected.size(); ++i) {
        const QString &line = expected.at(i);
        require(line == kUnclearPort ? told.lines.at(i).startsWith(kUnclearPort) : told.lines.at(i) == line,
                "a line is told as it stands");
    }
}

QString asWritten(QString value)
{
    return value.remove(QLatin1Char('\r')).remove(QLatin1Char('\n'));
}

/// A file with these values says the same again. Not if a value holds a key itself.
void checkRoundTrip(const settingsfile::Values &values)
{
    using namespace settingsfile;
    for (const QString *value :
         {&values.reportDirectory, &values.gatewayAddress, &values.gatewayPort, &values.serverAddress,
          &values.serverPort, &values.portName, &values.serialConfig, &values.firmwarePath}) {
        if (holdsKey(*value))
            return;
    }
    QByteArray contents = fileText(values).toUtf8();
    // One heading holds a key as well, and no value.
    const QStringList lines = checkedLines(contents).filter(QStringLiteral("="));
    require(lines.size() == int(std::size(kKeys)), "a written file has all lines");
    const auto report = std::get<ReportDirectoryLine>(classify(lines.at(0)));
    const auto gateway = std::get<GatewayLine>(classify(lines.at(1)));
    const auto server = std::get<ServerLine>(classify(lines.at(2)));
    const auto port = std::get<PortLine>(classify(lines.at(3)));
    const auto mode = std::get<ModeLine>(classify(lines.at(4)));
    const auto firmware = std::get<FirmwareLine>(classify(lines.at(5)));
    require(report.directory == asWritten(values.reportDirectory), "the report folder survives");
    require(gateway.address == asWritten(values.gatewayAddress), "the gateway's address survives");
    require(gateway.port == asWritten(values.gatewayPort), "the gateway's port survives");
    require(server.address == asWritten(values.serverAddress), "the server's address survives");
    require(server.port == asWritten(values.serverPort), "the server's port survives");
    QStringList words{QStringLiteral("PORT1"), values.portName};
    if (!values.portName.isEmpty() || !values.serialConfig.isEmpty())
        words += values.serialConfig.split(QLatin1Char(','));
    require(port.words == words, "the port and its parameters survive");
    require(mode.mode == values.activeMode, "the mode survives");
    require(firmware.path == asWritten(values.firmwarePath), "the path of the firmware survives");
}

/// What is kept from input to input: a dialog takes long to make.
class Bench
{
public:
    Bench()
        : m_folder(QDir::homePath() + QStringLiteral("/settings"))
        , m_ports(m_folder, m_folder)
        , m_lister(m_time, m_ports)
    {
        QDir().mkpath(m_folder);
        QObject::connect(&m_lister, &PortLister::setSerialPortConfig, &m_lister,
                         [](const model_Namespace::Settings &settings) { checkSerial(settings); });
        QObject::connect(&m_lister, &PortLister::setNetworkConfig, &m_lister,
                         [](const model_Namespace::Settings &settings) {
                             require(settings.commType == Comm_Type::Ethernet, "the gateway is chosen");
                             require(!settings.ipAddress.isEmpty(), "the gateway has an address");
                         });
    }

    Told load(const QByteArray &contents)
    {
        QFile file(m_folder + QStringLiteral("/vxconfig.ini"));
        require(file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size(), "the disk works");
        file.close();
        Loader loader(m_folder);
        const AppConfigurationManager &manager = loader.manager();
        QObject::connect(&manager, &AppConfigurationManager::updateConfig, &m_lister,
                         &PortLister::updateConfig);
        QObject::connect(&manager, &AppConfigurationManager::activateMode, &m_lister,
                         &PortLister::Slot_ActivateMode);
        QObject::connect(&manager, &AppConfigurationManager::serverInfo, &m_lister,
                         &PortLister::settingsServer);
        const Told told = loader.load();
        m_lister.on_openBtn_clicked();
        return told;
    }

private:
    static void checkSerial(const model_Namespace::Settings &settings)
    {
        static const QRegularExpression parameters(
            QStringLiteral("^(1200|2400|4800|9600|19200|38400|57600|115200)[:,][EMNOS],[78],[12]$"));
        require(settings.commType == Comm_Type::Serial, "a port is chosen");
        require(settings.portName.startsWith(QLatin1String("COM")), "a port has its name");
        require(parameters.match(settings.serialConfig).hasMatch(), "the parameters are of the choices");
        const QString &text = settings.serialConfig;
        const QStringList parts =
            QString(text).replace(QLatin1Char(':'), QLatin1Char(',')).split(QLatin1Char(','));
        require(settings.baudRate == parts.at(0).toInt() && settings.dataBits == parts.at(2).toInt() &&
                    settings.stopBits == parts.at(3).toInt(),
                "the numbers are those of the text");
    }

    const QString m_folder;
    VirtualTime m_time;
    PortDirectory m_ports;
    PortLister m_lister;
};

Bench *bench = nullptr; // lives until the process ends

} // namespace

void fuzz::begin(int &argc, char **argv)
{
    new QApplication(argc, argv);
    bench = new Bench;
}

void fuzz::tryInput(const QByteArray &bytes)
{
    const QByteArray contents(bytes.constData(), bytes.size());
    const QStringList lines = checkedLines(contents);
    const Told told = bench->load(contents);
    checkTold(told, lines);
    checkRoundTrip(told.values);
    const Told sound = bench->load(kSoundFile);
    require(
        std::equal(sound.lines.begin(), sound.lines.end(), std::begin(kSoundTold), std::end(kSoundTold),
                   [](const QString &told, const char *expected) { return told == QLatin1String(expected); }),
        "a sound file is read, whatever was read before");
}
