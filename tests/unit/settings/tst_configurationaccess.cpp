#include "managerfixture.h"
#include "support/droppedprivileges.h"

#include <QDir>
#include <QtTest>
#include <csignal>
#include <sys/resource.h>

namespace {

constexpr QFile::Permissions kWritableFile = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup |
                                             QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
constexpr QFile::Permissions kReadOnlyFile = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
constexpr QFile::Permissions kWritableFolder =
    kWritableFile | QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther;
constexpr QFile::Permissions kReadOnlyFolder =
    kReadOnlyFile | QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther;

} // namespace

/// Files and folders that the user may not use, and a disk that is full.
class TstConfigurationAccess : public ManagerFixture
{
    Q_OBJECT

private slots:
    void unreadableFileLoadsNothing();
    void readOnlyFileIsNotWritten();
    void writableFileInAReadOnlyFolderIsWritten();
    void folderWithoutRightsIsNotWritten();
    void fullDiskKeepsTheOldFile();

private:
    /// Opens the folders above the settings file, so that only the rights of file and settings folder count.
    void setRights(QFile::Permissions folder, QFile::Permissions file);

    /// Saves as somebody who is not the superuser.
    void saveAsUser();
};

void TstConfigurationAccess::setRights(QFile::Permissions folder, QFile::Permissions file)
{
    QVERIFY(QFile::setPermissions(m_folder->path(), DroppedPrivileges::kOpenFolder));
    if (QFile::exists(iniPath()))
        QVERIFY(QFile::setPermissions(iniPath(), file));
    QVERIFY(QFile::setPermissions(settingsFolder(), folder));
}

void TstConfigurationAccess::saveAsUser()
{
    const DroppedPrivileges user;
    m_manager->StoreIniFile();
}

void TstConfigurationAccess::unreadableFileLoadsNothing()
{
    makeIni("PORT1=COM5:\r\nMode=TCP\r\n");
    setRights(kWritableFolder, QFile::WriteOwner);
    {
        const DroppedPrivileges user;
        QVERIFY(QFileInfo(iniPath()).isFile());
        QCOMPARE(m_manager->loadIniFile(), 0);
    }
    QCOMPARE(m_signals->lines(), QStringList());
    QCOMPARE(m_log->lines(), QStringList());
    setRights(kWritableFolder, kReadOnlyFile);
    const DroppedPrivileges user;
    QCOMPARE(m_manager->loadIniFile(), 1);
}

void TstConfigurationAccess::readOnlyFileIsNotWritten()
{
    makeIni("read only");
    setRights(kWritableFolder, kReadOnlyFile);
    saveAsUser();
    QCOMPARE(m_signals->lines(), QStringList{kWriteComplaint});
    QCOMPARE(readFile(iniPath()), QByteArray("read only"));
    QCOMPARE(readFile(backupPath()), QByteArray("read only"));
}

void TstConfigurationAccess::writableFileInAReadOnlyFolderIsWritten()
{
    makeIni("the old file, longer than the new one" + QByteArray(1000, '.'));
    setRights(kReadOnlyFolder, kWritableFile);
    saveAsUser();
    setRights(DroppedPrivileges::kOpenFolder, kWritableFile);
    QCOMPARE(m_signals->lines(), QStringList{pathMessage()});
    QCOMPARE(m_log->lines(), QStringList{kBackupComplaint});
    QCOMPARE(readFile(iniPath()), fileWith("", ":", ":", "COM5:", "", ""));
}

void TstConfigurationAccess::folderWithoutRightsIsNotWritten()
{
    makeSettingsFolder();
    setRights(kReadOnlyFolder, kWritableFile);
    saveAsUser();
    setRights(DroppedPrivileges::kOpenFolder, kWritableFile);
    QCOMPARE(m_signals->lines(), QStringList{kWriteComplaint});
    QVERIFY(!QFile::exists(iniPath()));
}

void TstConfigurationAccess::fullDiskKeepsTheOldFile()
{
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
    // The file could be opened, so that is all that is told; the rest is for the log.
    QCOMPARE(m_signals->lines(), QStringList{pathMessage()});
    QVERIFY(m_log->containsText(QStringLiteral("Settings file not written")));
    QCOMPARE(readFile(iniPath()), QByteArray("the old file"));
    QCOMPARE(QDir(settingsFolder()).entryList(QDir::Files),
             (QStringList{QStringLiteral("vxconfig.ini"), QStringLiteral("vxconfig.ini.bak")}));
    m_manager->StoreIniFile();
    QCOMPARE(readFile(iniPath()), fileWith("new", ":", ":", "COM5:", "", ""));
}

QTEST_GUILESS_MAIN(TstConfigurationAccess)
#include "tst_configurationaccess.moc"
