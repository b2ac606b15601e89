#include "settings/appconfigurationmanager.h"

#include "base/settingsfolder.h"
#include "settings/configpaths.h"
#include "signalrecorder.h"
#include "support/messagecatcher.h"

#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>
#include <memory>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

using model_Namespace::Settings;

namespace {

const QString kBackupComplaint = QStringLiteral("Backup file not created");
const QString kWriteComplaint = QStringLiteral("debugMessage|Error:Unable to write file in the path");

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(path));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

/// The bytes of the file; "absent" if it is not there.
QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("absent");
}

/// A file as the program writes it, with these values.
QByteArray fileWith(const QByteArray &report, const QByteArray &gateway, const QByteArray &server,
                    const QByteArray &port, const QByteArray &mode, const QByteArray &firmware)
{
    return "\r\n======[Torvex Configurator ]=========\r\n[ACCESS]\r\nLastCommand=/opt/vx/vxconfig\r\n"
           "[Save Location]\r\nFILE_DIR=" +
           report + "\r\n\r\n[TCP/IP]\r\nZrtGateway=" + gateway + "\r\nMainServer=" + server +
           "\r\n[RS232]\r\nPORT1=" + port + "\r\n[Active Mode]\r\nMode=" + mode +
           "\r\n[Firmware File Location]\r\nFIRMWR_FILEPATH=" + firmware +
           "\r\n\r\n\r\n--------------EOF------------------";
}

Settings serialRecord()
{
    Settings record;
    record.portName = QStringLiteral("COM12");
    record.dataBits = 7;
    record.parity = 3;
    record.baudRate = 9600;
    record.stopBits = 2;
    record.serialConfig = QStringLiteral("9600:O,7,2");
    record.ipAddress = QStringLiteral("10.0.0.1");
    record.tcpPort = QStringLiteral("1234");
    record.commType = Comm_Type::Serial;
    return record;
}

} // namespace

class TstAppConfigurationManager : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void missingFileLoadsNothing();
    void folderInPlaceOfTheFileLoadsNothing();
    void unreadableFileLoadsNothing();
    void typicalFileIsReadInItsOrder();
    void otherOrderGivesOtherOrder();
    void fileOfUnixLineEndsIsRead();
    void twoPortLinesCountTwice();
    void portLineWithoutParametersCounts();
    void emptyGatewayIsStillTold();
    void modeIsToldIfKnown_data();
    void modeIsToldIfKnown();
    void unknownModeIsKept();
    void linesWithTooFewPartsChangeNothing();
    void missingLineIsNotTold_data();
    void missingLineIsNotTold();
    void accessSectionMayBeDeleted();
    void executablePathWithKeyIsReadAsThatKey();
    void portLineIsNotStored();
    void loadedValuesAreWrittenBack();
    void loadingTwiceTellsTwice();
    void binaryFileIsRead();

    void firstSaveWritesDefaults();
    void folderIsMadeWithItsParents();
    void folderThatCannotBeMadeIsLogged();
    void savesTellTheirPath();
    void backupIsTheFileBeforeTheFirstSave();
    void backupOfAnotherLifeStays();
    void writingToAFolderFails();
    void writingWithoutSettingsFolderFails();
    void failedSaveKeepsTheValues();
    void fullDiskKeepsTheOldFile();
    void writableFileInAReadOnlyFolderIsWritten();
    void readOnlyFileIsNotWritten();
    void noTemporaryFileIsLeft();

    void comDetailsAreOnlyTakenOver();
    void serialSettingsAreSaved();
    void colonBecomesCommaAndSavingTwiceGivesTheSameFile();
    void serverSettingsAreSaved();
    void gatewayIsSaved();
    void firmwarePathIsSaved();
    void reportDirectoryIsSaved();
    void lineEndsInValuesDoNotBreakTheFile();
    void umlautsSurvive();

    void desktopFileIsCleanedUp_data();
    void desktopFileIsCleanedUp();
    void desktopBackupAloneStays();
    void desktopFolderOfThatNameStays();
    void desktopFileIsLostIfTheFolderCannotBeMade();
    void movedDesktopFileIsLoaded();

    void productPathsAreTheMachines();

private:
    QString settingsFolder() const { return m_folder->path() + QStringLiteral("/settings/vx"); }
    QString iniPath() const { return settingsFolder() + QStringLiteral("/vxconfig.ini"); }
    QString backupPath() const { return iniPath() + QStringLiteral(".bak"); }
    QString desktopFile() const { return m_folder->path() + QStringLiteral("/desktop/vxconfig.ini"); }

    void makeSettingsFolder() { QVERIFY(QDir().mkpath(settingsFolder())); }
    void makeIni(const QByteArray &bytes)
    {
        makeSettingsFolder();
        writeFile(iniPath(), bytes);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<AppConfigurationManager> m_manager;
    std::unique_ptr<SignalRecorder> m_signals;
    std::unique_ptr<MessageCatcher> m_log;
};

void TstAppConfigurationManager::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("desktop")));
    m_manager = std::make_unique<AppConfigurationManager>(ConfigPaths{
        settingsFolder(), m_folder->path() + QStringLiteral("/desktop"), QStringLiteral("/opt/vx/vxconfig")});
    m_signals = std::make_unique<SignalRecorder>(*m_manager);
    m_log = std::make_unique<MessageCatcher>();
}

void TstAppConfigurationManager::cleanup()
{
    m_log.reset();
    m_signals.reset();
    m_manager.reset();
    m_folder.reset();
}

void TstAppConfigurationManager::missingFileLoadsNothing()
{
    QCOMPARE(m_manager->loadIniFile(), 0);
    QCOMPARE(m_signals->lines(), QStringList());
    QVERIFY(QFileInfo(settingsFolder()).isDir());
    QCOMPARE(m_log->lines(), QStringList());
}

void TstAppConfigurationManager::folderInPlaceOfTheFileLoadsNothing()
{
    QVERIFY(QDir().mkpath(iniPath()));
    QCOMPARE(m_manager->loadIniFile(), 0);
    QCOMPARE(m_signals->lines(), QStringList());
}

void TstAppConfigurationManager::unreadableFileLoadsNothing()
{
    makeIni("PORT1=COM5:\r\nMode=TCP\r\n");
    QVERIFY(QFile::setPermissions(iniPath(), QFileDevice::WriteOwner));
    if (QFile(iniPath()).open(QIODevice::ReadOnly))
        QSKIP("This user may read every file");
    QCOMPARE(m_manager->loadIniFile(), 0);
    QCOMPARE(m_signals->lines(), QStringList());
}

void TstAppConfigurationManager::typicalFileIsReadInItsOrder()
{
    makeIni(fileWith("C:/Reports", "192.168.0.62:7777", "192.168.0.63:7778", "COM5:115200,E,8,1", "Serial",
                     "D:/fw/a_b.bin"));
    QCOMPARE(m_manager->loadIniFile(), 1);
    QCOMPARE(m_signals->lines(), (QStringList{
                                     QStringLiteral("debugMessage|Default report:C:/Reports"),
                                     QStringLiteral("updatePath|C:/Reports"),
                                     QStringLiteral("gateWayInfo|192.168.0.62|7777"),
                                     QStringLiteral("serverInfo|192.168.0.63|7778"),
                                     QStringLiteral("updateConfig|PORT1|COM5|115200|E|8|1"),
                                     QStringLiteral("activateMode|2"),
                                     QStringLiteral("debugMessage|Firmwr File Path:D:/fw/a_b.bin"),
                                     QStringLiteral("Signal_updateFwFilpth|D:/fw/a_b.bin"),
                                 }));
    QCOMPARE(m_log->lines(), QStringList());
}

void TstAppConfigurationManager::otherOrderGivesOtherOrder()
{
    makeIni(
        "FIRMWR_FILEPATH=f\r\nMode=TCP\r\nPORT1=COM5:\r\nMainServer=a:1\r\nZrtGateway=b:2\r\nFILE_DIR=d\r\n");
    QCOMPARE(m_manager->loadIniFile(), 1);
    QCOMPARE(m_signals->lines(), (QStringList{
                                     QStringLiteral("debugMessage|Firmwr File Path:f"),
                                     QStringLiteral("Signal_updateFwFilpth|f"),
                                     QStringLiteral("activateMode|1"),
                                     QStringLiteral("updateConfig|PORT1|COM5|"),
                                     QStringLiteral("serverInfo|a|1"),
                                     QStringLiteral("gateWayInfo|b|2"),
                                     QStringLiteral("debugMessage|Default report:d"),
                                     QStringLiteral("updatePath|d"),
                                 }));
}

void TstAppConfigurationManager::fileOfUnixLineEndsIsRead()
{
    makeIni("PORT1=COM5:115200,E,8,1\nMode=TCP\n");
    QCOMPARE(m_manager->loadIniFile(), 1);
    QCOMPARE(m_signals->lines(), (QStringList{QStringLiteral("updateConfig|PORT1|COM5|115200|E|8|1"),
                                              QStringLiteral("activateMode|1")}));
}

void TstAppConfigurationManager::twoPortLinesCountTwice()
{
    makeIni("PORT1=COM5:9600,E,8,1\r\nPORT1=COM6:9600,E,8,1\r\n");
    QCOMPARE(m_manager->loadIniFile(), 2);
    QCOMPARE(m_signals->lines(), (QStringList{QStringLiteral("updateConfig|PORT1|COM5|9600|E|8|1"),
                                              QStringLiteral("updateConfig|PORT1|COM6|9600|E|8|1")}));
}

void TstAppConfigurationManager::portLineWithoutParametersCounts()
{
    makeIni("PORT1=COM5:\r\n");
    QSignalSpy spy(m_manager.get(), &AppConfigurationManager::updateConfig);
    QCOMPARE(m_manager->loadIniFile(), 1);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.first().first().toStringList(),
             (QStringList{QStringLiteral("PORT1"), QStringLiteral("COM5"), QString()}));
}

void TstAppConfigurationManager::emptyGatewayIsStillTold()
{
    makeIni("ZrtGateway=:\r\nMainServer=:\r\n");
    QCOMPARE(m_manager->loadIniFile(), 0);
    QCOMPARE(m_signals->lines(),
             (QStringList{QStringLiteral("gateWayInfo||"), QStringLiteral("serverInfo||")}));
}

void TstAppConfigurationManager::modeIsToldIfKnown_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("serial") << QByteArray("Mode=Serial") << QStringList{QStringLiteral("activateMode|2")};
    QTest::newRow("TCP") << QByteArray("Mode=TCP") << QStringList{QStringLiteral("activateMode|1")};
    QTest::newRow("heading first") << QByteArray("[Active Mode]\r\nMode=TCP")
                                   << QStringList{QStringLiteral("activateMode|1")};
    QTest::newRow("twice") << QByteArray("Mode=TCP\r\nMode=Serial")
                           << QStringList{QStringLiteral("activateMode|1"), QStringLiteral("activateMode|2")};
    QTest::newRow("lower case") << QByteArray("Mode=serial") << QStringList();
    QTest::newRow("empty") << QByteArray("Mode=") << QStringList();
    QTest::newRow("number") << QByteArray("Mode=2") << QStringList();
    QTest::newRow("blank behind") << QByteArray("Mode=TCP ") << QStringList();
    QTest::newRow("heading alone") << QByteArray("[Active Mode]") << QStringList();
}

void TstAppConfigurationManager::modeIsToldIfKnown()
{
    QFETCH(QByteArray, line);
    QFETCH(QStringList, expected);
    makeIni(line);
    QCOMPARE(m_manager->loadIniFile(), 0);
    QCOMPARE(m_signals->lines(), expected);
}

void TstAppConfigurationManager::unknownModeIsKept()
{
    makeIni("Mode=Infrared\r\n");
    QCOMPARE(m_manager->loadIniFile(), 0);
    QCOMPARE(m_signals->lines(), QStringList());
    m_manager->StoreIniFile();
    QCOMPARE(readFile(iniPath()), fileWith("", ":", ":", "COM5:", "Infrared", ""));
}

void TstAppConfigurationManager::linesWithTooFewPartsChangeNothing()
{
    makeIni("FILE_DIR=r\r\nZrtGateway=a:1\r\nMainServer=b:2\r\nMode=TCP\r\nFIRMWR_FILEPATH=f\r\n"
            "FILE_DIR\r\nZrtGateway=c\r\nMainServer\r\n[Active Mode]\r\nFIRMWR_FILEPATH\r\n");
    QCOMPARE(m_manager->loadIniFile(), 0);
    QCOMPARE(m_signals->lines().size(), 7);
    m_manager->StoreIniFile();
    QCOMPARE(readFile(iniPath()), fileWith("r", "a:1", "b:2", "COM5:", "TCP", "f"));
}

void TstAppConfigurationManager::missingLineIsNotTold_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QString>("signal");
    QTest::addColumn<int>("result");
    QTest::newRow("gateway") << QByteArray("ZrtGateway") << "gateWayInfo" << 1;
    QTest::newRow("server") << QByteArray("MainServer") << "serverInfo" << 1;
    QTest::newRow("port") << QByteArray("PORT1") << "updateConfig" << 0;
    QTest::newRow("mode") << QByteArray("Mode=") << "activateMode" << 1;
    QTest::newRow("report") << QByteArray("FILE_DIR") << "updatePath" << 1;
    QTest::newRow("firmware") << QByteArray("FIRMWR_FILEPATH") << "Signal_updateFwFilpth" << 1;
}

void TstAppConfigurationManager::missingLineIsNotTold()
{
    QFETCH(QByteArray, key);
    QFETCH(QString, signal);
    QFETCH(int, result);
    QByteArray bytes;
    const QList<QByteArray> lines = fileWith("r", "a:1", "b:2", "COM5:115200,E,8,1", "TCP", "f").split('\n');
    for (const QByteArray &line : lines) {
        if (!line.startsWith(key))
            bytes += line + '\n';
    }
    makeIni(bytes);
    QCOMPARE(m_manager->loadIniFile(), result);
    QCOMPARE(m_signals->lines().filter(signal + QLatin1Char('|')), QStringList());
    const QStringList others =
        m_signals->lines().filter(QRegularExpression(QStringLiteral("^(?!debugMessage)")));
    QCOMPARE(others.size(), 5);
}

void TstAppConfigurationManager::accessSectionMayBeDeleted()
{
    QByteArray bytes = fileWith("r", "a:1", "b:2", "COM5:115200,E,8,1", "TCP", "f");
    makeIni(bytes);
    QCOMPARE(m_manager->loadIniFile(), 1);
    const QStringList whole = m_signals->lines();
    m_signals->clear();
    makeIni(bytes.replace("[ACCESS]\r\nLastCommand=/opt/vx/vxconfig\r\n", ""));
    QVERIFY(!bytes.contains("ACCESS"));
    QCOMPARE(m_manager->loadIniFile(), 1);
    QCOMPARE(m_signals->lines(), whole);
}

void TstAppConfigurationManager::executablePathWithKeyIsReadAsThatKey()
{
    makeIni("LastCommand=C:/PORT1/vxconfig.exe\r\nLastCommand=C:/ZrtGateway/vxconfig.exe\r\n");
    QCOMPARE(m_manager->loadIniFile(), 1);
    QCOMPARE(m_signals->lines(), (QStringList{QStringLiteral("updateConfig|LastCommand|C|PORT1|vxconfig|exe"),
                                              QStringLiteral("gateWayInfo|C|/ZrtGateway/vxconfig.exe")}));
}

void TstAppConfigurationManager::portLineIsNotStored()
{
    makeIni("PORT1=COM9:9600,N,7,2\r\n");
    QCOMPARE(m_manager->loadIniFile(), 1);
    m_manager->StoreIniFile();
    QCOMPARE(readFile(iniPath()), fileWith("", ":", ":", "COM5:", "", ""));
}

void TstAppConfigurationManager::loadedValuesAreWrittenBack()
{
    const QByteArray bytes = fileWith("C:/Reports", "1.2.3.4:5", "6.7.8.9:10", "COM5:", "TCP", "D:/x.bin");
    makeIni(bytes);
    QCOMPARE(m_manager->loadIniFile(), 1);
    m_manager->StoreIniFile();
    QCOMPARE(readFile(iniPath()), bytes);
}

void TstAppConfigurationManager::loadingTwiceTellsTwice()
{
    makeIni("PORT1=COM5:9600,E,8,1\r\n");
    QCOMPARE(m_manager->loadIniFile(), 1);
    QCOMPARE(m_manager->loadIniFile(), 1);
    QCOMPARE(m_signals->lines().size(), 2);
}

void TstAppConfigurationManager::binaryFileIsRead()
{
    QByteArray bytes;
    for (int i = 0; i < 100000; ++i)
        bytes += char((i * 7919) >> 3);
    makeIni(bytes + "\nMode=TCP\n" + bytes);
    QCOMPARE(m_manager->loadIniFile(), 0);
    QCOMPARE(m_signals->lines(), QStringList{QStringLiteral("activateMode|1")});
}

void TstAppConfigurationManager::firstSaveWritesDefaults()
{
    makeSettingsFolder();
    m_manager->StoreIniFile();
    const QByteArray bytes = readFile(iniPath());
    QCOMPARE(bytes, fileWith("", ":", ":", "COM5:", "", ""));
    QVERIFY(bytes.startsWith("\r\n="));
    QVERIFY(bytes.endsWith("\r\n--------------EOF------------------"));
    QCOMPARE(bytes.count('\n'), bytes.count("\r\n"));
    QCOMPARE(m_log->lines(), QStringList{kBackupComplaint});
    QVERIFY(!QFile::exists(backupPath()));
}

void TstAppConfigurationManager::folderIsMadeWithItsParents()
{
    QVERIFY(!QFile::exists(m_folder->path() + QStringLiteral("/settings")));
    m_manager->StoreIniFile();
    QCOMPARE(readFile(iniPath()), fileWith("", ":", ":", "COM5:", "", ""));
    QVERIFY(!m_log->contains(QStringLiteral("Directory not created")));
}

void TstAppConfigurationManager::folderThatCannotBeMadeIsLogged()
{
    writeFile(m_folder->path() + QStringLiteral("/settings"), "a file where the folder should be");
    QCOMPARE(m_manager->loadIniFile(), 0);
    QCOMPARE(m_log->lines(), QStringList{QStringLiteral("Directory not created")});
    QCOMPARE(m_signals->lines(), QStringList());
}

void TstAppConfigurationManager::savesTellTheirPath()
{
    makeSettingsFolder();
    m_manager->StoreIniFile();
    QCOMPARE(m_signals->lines(), QStringList{QStringLiteral("debugMessage|Path:") + iniPath()});
}

void TstAppConfigurationManager::backupIsTheFileBeforeTheFirstSave()
{
    makeIni("the first life");
    m_manager->HandleDefltPath(QStringLiteral("one"));
    QCOMPARE(readFile(backupPath()), QByteArray("the first life"));
    QCOMPARE(m_log->lines(), QStringList());
    m_manager->HandleDefltPath(QStringLiteral("two"));
    QCOMPARE(readFile(backupPath()), QByteArray("the first life"));
    QCOMPARE(m_log->lines(), QStringList{kBackupComplaint});
    QCOMPARE(readFile(iniPath()), fileWith("two", ":", ":", "COM5:", "", ""));
}

void TstAppConfigurationManager::backupOfAnotherLifeStays()
{
    makeIni("new");
    writeFile(backupPath(), "old");
    m_manager->StoreIniFile();
    QCOMPARE(readFile(backupPath()), QByteArray("old"));
    QCOMPARE(m_log->lines(), QStringList{kBackupComplaint});
}

void TstAppConfigurationManager::writingToAFolderFails()
{
    QVERIFY(QDir().mkpath(iniPath()));
    m_manager->StoreIniFile();
    QCOMPARE(m_signals->lines(), QStringList{kWriteComplaint});
    QVERIFY(QFileInfo(iniPath()).isDir());
}

void TstAppConfigurationManager::writingWithoutSettingsFolderFails()
{
    writeFile(m_folder->path() + QStringLiteral("/settings"), "a file where the folder should be");
    m_manager->StoreIniFile();
    QCOMPARE(m_log->lines(), (QStringList{QStringLiteral("Directory not created"), kBackupComplaint}));
    QCOMPARE(m_signals->lines(), QStringList{kWriteComplaint});
}

void TstAppConfigurationManager::failedSaveKeepsTheValues()
{
    QVERIFY(QDir().mkpath(iniPath()));
    m_manager->Slot_ZrtGateway(QStringLiteral("1.2.3.4"), QStringLiteral("5"));
    QCOMPARE(m_signals->lines(), QStringList{kWriteComplaint});
    QVERIFY(QDir().rmdir(iniPath()));
    m_manager->StoreIniFile();
    QCOMPARE(readFile(iniPath()), fileWith("", "1.2.3.4:5", ":", "COM5:", "", ""));
}

void TstAppConfigurationManager::fullDiskKeepsTheOldFile()
{
#ifdef Q_OS_UNIX
    makeIni("the old file");
    writeFile(backupPath(), "the backup");
    rlimit before = {};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &before), 0);
    rlimit small = before;
    small.rlim_cur = 100;
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
    m_manager->HandleDefltPath(QStringLiteral("new"));
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, oldHandler);
    QCOMPARE(m_signals->lines(),
             (QStringList{QStringLiteral("debugMessage|Path:") + iniPath(), kWriteComplaint}));
    QCOMPARE(readFile(iniPath()), QByteArray("the old file"));
    QCOMPARE(QDir(settingsFolder()).entryList(QDir::Files),
             (QStringList{QStringLiteral("vxconfig.ini"), QStringLiteral("vxconfig.ini.bak")}));
    m_manager->StoreIniFile();
    QCOMPARE(readFile(iniPath()), fileWith("new", ":", ":", "COM5:", "", ""));
#else
    QSKIP("The size of a file can be limited on Unix only");
#endif
}

void TstAppConfigurationManager::writableFileInAReadOnlyFolderIsWritten()
{
    makeIni("the old file, longer than the new one" + QByteArray(1000, '.'));
    QVERIFY(QFile::setPermissions(settingsFolder(), QFileDevice::ReadOwner | QFileDevice::ExeOwner));
    m_manager->StoreIniFile();
    QVERIFY(QFile::setPermissions(settingsFolder(),
                                  QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner));
    QCOMPARE(readFile(iniPath()), fileWith("", ":", ":", "COM5:", "", ""));
}

void TstAppConfigurationManager::readOnlyFileIsNotWritten()
{
    makeIni("read only");
    QVERIFY(QFile::setPermissions(iniPath(), QFileDevice::ReadOwner));
    if (QFileInfo(iniPath()).isWritable())
        QSKIP("This user may write every file");
    m_manager->StoreIniFile();
    QCOMPARE(m_signals->lines(), QStringList{kWriteComplaint});
    QCOMPARE(readFile(iniPath()), QByteArray("read only"));
}

void TstAppConfigurationManager::noTemporaryFileIsLeft()
{
    makeIni("old");
    for (int i = 0; i < 20; ++i)
        m_manager->HandleDefltPath(QString::number(i));
    QCOMPARE(QDir(settingsFolder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             (QStringList{QStringLiteral("vxconfig.ini"), QStringLiteral("vxconfig.ini.bak")}));
    QCOMPARE(readFile(iniPath()), fileWith("19", ":", ":", "COM5:", "", ""));
}

void TstAppConfigurationManager::comDetailsAreOnlyTakenOver()
{
    makeSettingsFolder();
    m_manager->SaveComDetails(serialRecord());
    QVERIFY(!QFile::exists(iniPath()));
    QCOMPARE(m_signals->lines(), QStringList());
    m_manager->StoreIniFile();
    QCOMPARE(readFile(iniPath()), fileWith("", ":", ":", "COM12:9600,O,7,2", "", ""));
}

void TstAppConfigurationManager::serialSettingsAreSaved()
{
    makeSettingsFolder();
    m_manager->HandleDefltPath(QStringLiteral("/reports"));
    m_signals->clear();
    m_manager->saveSerialSettings(serialRecord());
    QCOMPARE(readFile(iniPath()), fileWith("/reports", ":", ":", "COM12:9600,O,7,2", "Serial", ""));
    QCOMPARE(m_signals->lines(),
             (QStringList{QStringLiteral("debugMessage|Path:") + iniPath(),
                          QStringLiteral("debugMessage|Comm Settings saved CurrntPath:/reports")}));
}

void TstAppConfigurationManager::colonBecomesCommaAndSavingTwiceGivesTheSameFile()
{
    makeSettingsFolder();
    Settings record = serialRecord();
    record.serialConfig = QStringLiteral("115200:E,8,1");
    m_manager->saveSerialSettings(record);
    const QByteArray first = readFile(iniPath());
    QVERIFY(first.contains("\r\nPORT1=COM12:115200,E,8,1\r\n"));
    m_manager->StoreIniFile();
    QCOMPARE(readFile(iniPath()), first);

    record.serialConfig = QStringLiteral(":a::b:");
    m_manager->saveSerialSettings(record);
    QVERIFY(readFile(iniPath()).contains("\r\nPORT1=COM12:,a,,b,\r\n"));
}

void TstAppConfigurationManager::serverSettingsAreSaved()
{
    makeSettingsFolder();
    m_manager->saveServerSettings(serialRecord());
    // Only address and port are taken: the port line still has its default.
    QCOMPARE(readFile(iniPath()), fileWith("", ":", "10.0.0.1:1234", "COM5:", "TCP", ""));
    QCOMPARE(m_signals->lines(), QStringList{QStringLiteral("debugMessage|Path:") + iniPath()});
}

void TstAppConfigurationManager::gatewayIsSaved()
{
    makeSettingsFolder();
    m_manager->Slot_ZrtGateway(QStringLiteral("192.168.0.234"), QStringLiteral("9999"));
    QCOMPARE(readFile(iniPath()), fileWith("", "192.168.0.234:9999", ":", "COM5:", "", ""));
    QCOMPARE(m_log->lines().value(0), QStringLiteral("Saving Gateway Address"));
    QCOMPARE(m_signals->lines(), QStringList{QStringLiteral("debugMessage|Path:") + iniPath()});
}

void TstAppConfigurationManager::firmwarePathIsSaved()
{
    makeSettingsFolder();
    m_manager->Slot_SaveFirmWrFilePath(QStringLiteral("D:/fw.bin"));
    QCOMPARE(readFile(iniPath()), fileWith("", ":", ":", "COM5:", "", "D:/fw.bin"));
}

void TstAppConfigurationManager::reportDirectoryIsSaved()
{
    makeSettingsFolder();
    m_manager->HandleDefltPath(QStringLiteral("D:/reports"));
    QCOMPARE(readFile(iniPath()), fileWith("D:/reports", ":", ":", "COM5:", "", ""));
}

void TstAppConfigurationManager::lineEndsInValuesDoNotBreakTheFile()
{
    makeSettingsFolder();
    m_manager->HandleDefltPath(QStringLiteral("/a\r\nMode=TCP\r\nb"));
    m_manager->Slot_ZrtGateway(QStringLiteral("1\n"), QStringLiteral("\r2"));
    QCOMPARE(readFile(iniPath()), fileWith("/aMode=TCPb", "1:2", ":", "COM5:", "", ""));
}

void TstAppConfigurationManager::umlautsSurvive()
{
    makeSettingsFolder();
    const QString path = QStringLiteral("/home/J\u00fcrgen/Me\u00dfwerte");
    m_manager->HandleDefltPath(path);
    QVERIFY(readFile(iniPath()).contains("FILE_DIR=/home/J\xc3\xbcrgen/Me\xc3\x9fwerte\r\n"));
    QSignalSpy spy(m_manager.get(), &AppConfigurationManager::updatePath);
    QCOMPARE(m_manager->loadIniFile(), 1);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.first().first().toString(), path);
}

void TstAppConfigurationManager::desktopFileIsCleanedUp_data()
{
    QTest::addColumn<bool>("folderExists");
    QTest::addColumn<bool>("withBackup");
    QTest::addColumn<bool>("store");
    QTest::addColumn<bool>("isMoved");
    for (const bool withBackup : {false, true}) {
        for (const bool store : {false, true}) {
            const auto name = [=](const char *folder) {
                return QByteArray(folder) + (withBackup ? ", with backup" : ", no backup") +
                       (store ? ", at a save" : ", at a load");
            };
            QTest::newRow(name("folder exists")) << true << withBackup << store << false;
            QTest::newRow(name("folder is made")) << false << withBackup << store << true;
        }
    }
}

void TstAppConfigurationManager::desktopFileIsCleanedUp()
{
    QFETCH(bool, folderExists);
    QFETCH(bool, withBackup);
    QFETCH(bool, store);
    QFETCH(bool, isMoved);
    const QByteArray left = "Mode=TCP\r\n";
    writeFile(desktopFile(), left);
    if (withBackup)
        writeFile(desktopFile() + QStringLiteral(".bak"), "backup");
    if (folderExists)
        makeSettingsFolder();

    if (store)
        m_manager->StoreIniFile();
    else
        QCOMPARE(m_manager->loadIniFile(), 0);

    QVERIFY(!QFile::exists(desktopFile()));
    QVERIFY(!QFile::exists(desktopFile() + QStringLiteral(".bak")));
    const QByteArray saved = fileWith("", ":", ":", "COM5:", "", "");
    // A save overwrites the file that was just moved, which becomes the backup.
    QCOMPARE(readFile(store ? backupPath() : iniPath()), isMoved ? left : QByteArray("absent"));
    if (store)
        QCOMPARE(readFile(iniPath()), saved);
}

void TstAppConfigurationManager::desktopBackupAloneStays()
{
    writeFile(desktopFile() + QStringLiteral(".bak"), "backup");
    QCOMPARE(m_manager->loadIniFile(), 0);
    QCOMPARE(m_manager->loadIniFile(), 0);
    QCOMPARE(readFile(desktopFile() + QStringLiteral(".bak")), QByteArray("backup"));
}

void TstAppConfigurationManager::desktopFolderOfThatNameStays()
{
    QVERIFY(QDir().mkpath(desktopFile()));
    QCOMPARE(m_manager->loadIniFile(), 0);
    QVERIFY(QFileInfo(desktopFile()).isDir());
    QVERIFY(!QFile::exists(iniPath()));
}

void TstAppConfigurationManager::desktopFileIsLostIfTheFolderCannotBeMade()
{
    writeFile(m_folder->path() + QStringLiteral("/settings"), "a file where the folder should be");
    writeFile(desktopFile(), "Mode=TCP\r\n");
    QCOMPARE(m_manager->loadIniFile(), 0);
    QVERIFY(!QFile::exists(desktopFile()));
    QCOMPARE(m_signals->lines(), QStringList());
    QCOMPARE(m_log->lines().filter(QStringLiteral("Directory not created")).size(), 1);
}

void TstAppConfigurationManager::movedDesktopFileIsLoaded()
{
    writeFile(desktopFile(), "PORT1=COM5:9600,E,8,1\r\nMode=TCP\r\n");
    QCOMPARE(m_manager->loadIniFile(), 1);
    QCOMPARE(m_signals->lines(), (QStringList{QStringLiteral("updateConfig|PORT1|COM5|9600|E|8|1"),
                                              QStringLiteral("activateMode|1")}));
}

void TstAppConfigurationManager::productPathsAreTheMachines()
{
    const ConfigPaths paths = defaultConfigPaths();
    QCOMPARE(paths.settingsFolder, ::settingsFolder());
    QVERIFY(paths.settingsFolder.endsWith(QStringLiteral("qor/vxconfig")));
    QCOMPARE(paths.desktopFolder, QStandardPaths::writableLocation(QStandardPaths::DesktopLocation));
    QCOMPARE(paths.executablePath, QCoreApplication::applicationFilePath());
    QVERIFY(paths.executablePath.contains(QStringLiteral("tst_appconfigurationmanager")));
}

QTEST_GUILESS_MAIN(TstAppConfigurationManager)
#include "tst_appconfigurationmanager.moc"
