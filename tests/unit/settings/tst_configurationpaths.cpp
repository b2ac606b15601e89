#include "base/settingsfolder.h"
#include "managerfixture.h"
#include "settings/configpaths.h"

#include <QDir>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QtTest>

/// Where the settings file lies, and where earlier versions left it.
class TstConfigurationPaths : public ManagerFixture
{
    Q_OBJECT

private slots:
    void desktopFileIsCleanedUp_data();
    void desktopFileIsCleanedUp();
    void desktopBackupAloneStays();
    void desktopFolderOfThatNameStays();
    void desktopFileIsLostIfTheFolderCannotBeMade();
    void movedDesktopFileIsLoaded();

    void productPathsAreTheMachines();
};

void TstConfigurationPaths::desktopFileIsCleanedUp_data()
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

void TstConfigurationPaths::desktopFileIsCleanedUp()
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

void TstConfigurationPaths::desktopBackupAloneStays()
{
    writeFile(desktopFile() + QStringLiteral(".bak"), "backup");
    QCOMPARE(m_manager->loadIniFile(), 0);
    QCOMPARE(m_manager->loadIniFile(), 0);
    QCOMPARE(readFile(desktopFile() + QStringLiteral(".bak")), QByteArray("backup"));
}

void TstConfigurationPaths::desktopFolderOfThatNameStays()
{
    QVERIFY(QDir().mkpath(desktopFile()));
    QCOMPARE(m_manager->loadIniFile(), 0);
    QVERIFY(QFileInfo(desktopFile()).isDir());
    QVERIFY(!QFile::exists(iniPath()));
}

void TstConfigurationPaths::desktopFileIsLostIfTheFolderCannotBeMade()
{
    writeFile(m_folder->path() + QStringLiteral("/settings"), "a file where the folder should be");
    writeFile(desktopFile(), "Mode=TCP\r\n");
    QTest::ignoreMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("^stat\\(\\) failed for '")));
    QCOMPARE(m_manager->loadIniFile(), 0);
    QVERIFY(!QFile::exists(desktopFile()));
    QCOMPARE(m_signals->lines(), QStringList());
    QCOMPARE(m_log->lines().filter(QStringLiteral("Directory not created")).size(), 1);
}

void TstConfigurationPaths::movedDesktopFileIsLoaded()
{
    writeFile(desktopFile(), "PORT1=COM5:9600,E,8,1\r\nMode=TCP\r\n");
    QCOMPARE(m_manager->loadIniFile(), 1);
    QCOMPARE(m_signals->lines(), (QStringList{QStringLiteral("updateConfig|PORT1|COM5|9600|E|8|1"),
                                              QStringLiteral("activateMode|1")}));
}

void TstConfigurationPaths::productPathsAreTheMachines()
{
    const ConfigPaths paths = defaultConfigPaths();
    QCOMPARE(paths.settingsFolder, ::settingsFolder());
    QVERIFY(paths.settingsFolder.endsWith(QStringLiteral("qor/vxconfig")));
    QCOMPARE(paths.desktopFolder, QStandardPaths::writableLocation(QStandardPaths::DesktopLocation));
    QCOMPARE(paths.executablePath, QCoreApplication::applicationFilePath());
    QVERIFY(paths.executablePath.contains(QStringLiteral("tst_configurationpaths")));
}

QTEST_GUILESS_MAIN(TstConfigurationPaths)
#include "tst_configurationpaths.moc"
