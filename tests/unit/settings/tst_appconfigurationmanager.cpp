#include "managerfixture.h"

#include <QDir>
#include <QtTest>

/// Keeping the values and writing the settings file.
class TstAppConfigurationManager : public ManagerFixture
{
    Q_OBJECT

private slots:
    void connectionBeginsWithTheDefaults();
    void firstSaveWritesDefaults();
    void folderIsMadeWithItsParents();
    void savesTellTheirPath();
    void pathIsToldBeforeAnythingIsWritten();
    void backupIsTheFileBeforeTheFirstSave();
    void backupOfAnotherLifeStays();
    void writingToAFolderFails();
    void writingWithoutSettingsFolderFails();
    void failedSaveKeepsTheValues();
    void noTemporaryFileIsLeft();

    void comDetailsAreOnlyTakenOver();
    void comDetailsAreTakenOverWhole();
    void serialSettingsAreSaved();
    void colonBecomesCommaAndSavingTwiceGivesTheSameFile();
    void serverSettingsAreSaved();
    void gatewayIsSaved();
    void firmwarePathIsSaved();
    void reportDirectoryIsSaved();
    void lineEndsInValuesDoNotBreakTheFile();
    void umlautsSurvive();
};

void TstAppConfigurationManager::connectionBeginsWithTheDefaults()
{
    model_Namespace::Settings expected;
    expected.portName = QStringLiteral("COM5");
    expected.dataBits = 8;
    expected.parity = 2;
    expected.baudRate = 115200;
    expected.stopBits = 1;
    expected.flowControl = 0;
    expected.commType = Comm_Type::None;
    QCOMPARE(m_manager->comSettings(), expected);
    QCOMPARE(m_manager->comSettings().serialConfig, QString());
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

void TstAppConfigurationManager::savesTellTheirPath()
{
    makeSettingsFolder();
    m_manager->StoreIniFile();
    QCOMPARE(m_signals->lines(), QStringList{QStringLiteral("debugMessage|Path:") + iniPath()});
}

void TstAppConfigurationManager::pathIsToldBeforeAnythingIsWritten()
{
    makeIni("old");
    QByteArray contents;
    connect(m_manager.get(), &AppConfigurationManager::debugMessage, this, [&](const QString &message) {
        QCOMPARE(message, QStringLiteral("Path:") + iniPath());
        contents = readFile(iniPath());
        // Would come too late if the text stood in the new file already.
        model_Namespace::Settings late = m_manager->comSettings();
        late.portName = QStringLiteral("COM99");
        m_manager->SaveComDetails(late);
    });
    m_manager->StoreIniFile();
    QCOMPARE(contents, QByteArray("old"));
    QCOMPARE(readFile(iniPath()), fileWith("", ":", ":", "COM99:", "", ""));
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

void TstAppConfigurationManager::comDetailsAreTakenOverWhole()
{
    m_manager->SaveComDetails(serialRecord());
    const model_Namespace::Settings &taken = m_manager->comSettings();
    QCOMPARE(taken.portName, QStringLiteral("COM12"));
    QCOMPARE(taken.dataBits, 7);
    QCOMPARE(taken.parity, 3);
    QCOMPARE(taken.baudRate, 9600);
    QCOMPARE(taken.stopBits, 2);
    QCOMPARE(taken.flowControl, 1);
    QCOMPARE(taken.serialConfig, QStringLiteral("9600:O,7,2"));
    QCOMPARE(taken.ipAddress, QStringLiteral("10.0.0.1"));
    QCOMPARE(taken.tcpPort, QStringLiteral("1234"));
    QCOMPARE(taken.commType, Comm_Type::Serial);
    // A save changes the record's spelling, and nothing else of it.
    m_manager->StoreIniFile();
    model_Namespace::Settings expected = serialRecord();
    expected.serialConfig = QStringLiteral("9600,O,7,2");
    QCOMPARE(m_manager->comSettings(), expected);
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
    model_Namespace::Settings record = serialRecord();
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

QTEST_GUILESS_MAIN(TstAppConfigurationManager)
#include "tst_appconfigurationmanager.moc"
