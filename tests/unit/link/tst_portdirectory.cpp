#include "link/permissionadvice.h"
#include "link/portdirectory.h"
#include "support/droppedprivileges.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>
#include <memory>

/// The machine is a folder: its devices are plain files.
class TstPortDirectory : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void comNamesMeanDevices_data();
    void comNamesMeanDevices();
    void otherNamesMeanTheDeviceOfThatName_data();
    void otherNamesMeanTheDeviceOfThatName();
    void aDeviceThatExistsIsAvailable();
    void aDeviceThatDoesNotExistIsNot();
    void aNodeWithoutHardwareIsNotAvailable();
    void anAliasGoesFirst();
    void anAliasMayBeAFile();
    void anAliasMayStandBeyondTheNumbersOfTheSystem();
    void anAliasThatLeadsNowhereHidesTheDevice();
    void anAbsolutePathIsAvailableIfItExists();
    void aDeviceNameIsAvailableIfItExists();
    void aFolderIsNoPort();
    void namesThatMeanNothingAreNotAvailable_data();
    void namesThatMeanNothingAreNotAvailable();
    void portsAreListedInTheOrderOfTheirNumbers();
    void withoutDevicesTheListIsEmpty();
    void aChangeIsSeenAtOnce();
    void lackOfPermissionNamesPortGroupAndRemedy();
    void noAdviceIfThePermissionIsNotTheMatter();

private:
    PortDirectory directory() const { return PortDirectory(path("settings"), m_root->path()); }
    QString path(const char *relative) const { return m_root->filePath(QString::fromLatin1(relative)); }
    void addFile(const QString &file, const QByteArray &contents = QByteArray());
    void addDevice(const char *name) { addFile(path("dev/") + QString::fromLatin1(name)); }
    void addAlias(const char *comName, const QString &target);

    std::unique_ptr<QTemporaryDir> m_root;
};

void TstPortDirectory::init()
{
    m_root = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(m_root->path()).mkpath(QStringLiteral("dev")));
    QVERIFY(QDir(m_root->path()).mkpath(QStringLiteral("settings/ports")));
}

void TstPortDirectory::addFile(const QString &file, const QByteArray &contents)
{
    QFile device(file);
    QVERIFY(device.open(QIODevice::WriteOnly));
    QCOMPARE(device.write(contents), qint64(contents.size()));
}

void TstPortDirectory::addAlias(const char *comName, const QString &target)
{
    QVERIFY(QFile::link(target, path("settings/ports/") + QString::fromLatin1(comName)));
}

void TstPortDirectory::comNamesMeanDevices_data()
{
    QTest::addColumn<QString>("comName");
    QTest::addColumn<QString>("device");
    const auto row = [](const char *comName, const char *device) {
        QTest::newRow(comName) << QString::fromLatin1(comName) << QString::fromLatin1(device);
    };
    row("COM1", "/dev/ttyS0");
    row("COM32", "/dev/ttyS31");
    row("COM33", "/dev/ttyUSB0");
    row("COM64", "/dev/ttyUSB31");
    row("COM65", "/dev/ttyACM0");
    row("COM96", "/dev/ttyACM31");
}

void TstPortDirectory::comNamesMeanDevices()
{
    QFETCH(QString, comName);
    QFETCH(QString, device);
    QCOMPARE(PortDirectory(path("settings")).deviceOf(comName), device);
    QCOMPARE(directory().deviceOf(comName), m_root->path() + device);
}

void TstPortDirectory::otherNamesMeanTheDeviceOfThatName_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"", "COM", "COM0", "COM97", "COM01", "com1", "COM1 ", "COM-1", "COM1x",
                             "COM99999999999", "COM../../x"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TstPortDirectory::otherNamesMeanTheDeviceOfThatName()
{
    QFETCH(QString, name);
    QCOMPARE(directory().deviceOf(name), path("dev/") + name);
}

void TstPortDirectory::aDeviceThatExistsIsAvailable()
{
    addDevice("ttyUSB0");
    addDevice("ttyS3");
    QVERIFY(directory().isAvailable(QStringLiteral("COM33")));
    QVERIFY(directory().isAvailable(QStringLiteral("COM4")));
}

void TstPortDirectory::aDeviceThatDoesNotExistIsNot()
{
    addDevice("ttyUSB0");
    QVERIFY(!directory().isAvailable(QStringLiteral("COM34")));
    QVERIFY(!directory().isAvailable(QStringLiteral("COM1")));
}

void TstPortDirectory::aNodeWithoutHardwareIsNotAvailable()
{
    for (const char *name : {"ttyS0", "ttyS1"}) {
        addDevice(name);
        QVERIFY(QDir(m_root->path()).mkpath(QStringLiteral("sys/class/tty/") + QString::fromLatin1(name)));
    }
    addFile(path("sys/class/tty/ttyS0/type"), "0\n");
    addFile(path("sys/class/tty/ttyS1/type"), "4\n");
    QVERIFY(!directory().isAvailable(QStringLiteral("COM1")));
    QVERIFY(directory().isAvailable(QStringLiteral("COM2")));
    QCOMPARE(directory().availablePorts(), QStringList{QStringLiteral("COM2")});
}

void TstPortDirectory::anAliasGoesFirst()
{
    addDevice("ttyS4");
    addDevice("ttyUSB7");
    addAlias("COM5", path("dev/ttyUSB7"));
    QCOMPARE(directory().deviceOf(QStringLiteral("COM5")),
             QFileInfo(path("dev/ttyUSB7")).canonicalFilePath());
    QVERIFY(directory().isAvailable(QStringLiteral("COM5")));
}

void TstPortDirectory::anAliasMayBeAFile()
{
    addFile(path("settings/ports/COM6"));
    QCOMPARE(directory().deviceOf(QStringLiteral("COM6")),
             QFileInfo(path("settings/ports/COM6")).canonicalFilePath());
    QVERIFY(directory().isAvailable(QStringLiteral("COM6")));
}

void TstPortDirectory::anAliasMayStandBeyondTheNumbersOfTheSystem()
{
    addDevice("ttyUSB0");
    addAlias("COM150", path("dev/ttyUSB0"));
    QVERIFY(directory().isAvailable(QStringLiteral("COM150")));
}

void TstPortDirectory::anAliasThatLeadsNowhereHidesTheDevice()
{
    addDevice("ttyS4");
    addAlias("COM5", path("dev/gone"));
    QCOMPARE(directory().deviceOf(QStringLiteral("COM5")), path("settings/ports/COM5"));
    QVERIFY(!directory().isAvailable(QStringLiteral("COM5")));
    QVERIFY(directory().availablePorts().isEmpty());
}

void TstPortDirectory::anAbsolutePathIsAvailableIfItExists()
{
    addDevice("ttyAMA0");
    QVERIFY(directory().isAvailable(path("dev/ttyAMA0")));
    QVERIFY(!directory().isAvailable(path("dev/ttyAMA1")));
}

void TstPortDirectory::aDeviceNameIsAvailableIfItExists()
{
    QVERIFY(QDir(m_root->path()).mkpath(QStringLiteral("dev/pts")));
    addDevice("pts/0");
    addDevice("ttyAMA0");
    QVERIFY(directory().isAvailable(QStringLiteral("pts/0")));
    QVERIFY(directory().isAvailable(QStringLiteral("ttyAMA0")));
    QVERIFY(!directory().isAvailable(QStringLiteral("pts/1")));
}

void TstPortDirectory::aFolderIsNoPort()
{
    QVERIFY(QDir(m_root->path()).mkpath(QStringLiteral("dev/pts")));
    QVERIFY(!directory().isAvailable(QStringLiteral("pts")));
    QVERIFY(!directory().isAvailable(path("dev")));
    QVERIFY(!directory().isAvailable(QString()));
}

void TstPortDirectory::namesThatMeanNothingAreNotAvailable_data()
{
    otherNamesMeanTheDeviceOfThatName_data();
}

void TstPortDirectory::namesThatMeanNothingAreNotAvailable()
{
    QFETCH(QString, name);
    addDevice("ttyS0");
    QVERIFY(!directory().isAvailable(name));
}

void TstPortDirectory::portsAreListedInTheOrderOfTheirNumbers()
{
    addDevice("ttyACM0");
    addDevice("ttyUSB1");
    addDevice("ttyUSB10");
    addDevice("ttyS0");
    addDevice("ttyS32"); // beyond its kind's numbers
    addDevice("null");
    addAlias("COM150", path("dev/ttyACM0"));
    addAlias("COM9", path("dev/ttyACM0"));
    addAlias("COM34", path("dev/ttyACM0")); // also the name of ttyUSB1: listed once
    addAlias("COM10", path("dev/gone"));
    addAlias("readme", path("dev/null"));
    QCOMPARE(directory().availablePorts().join(QLatin1Char(' ')),
             QStringLiteral("COM1 COM9 COM34 COM43 COM65 COM150"));
}

void TstPortDirectory::withoutDevicesTheListIsEmpty()
{
    QVERIFY(directory().availablePorts().isEmpty());
    QVERIFY(PortDirectory(path("nothing"), path("here")).availablePorts().isEmpty());
}

void TstPortDirectory::aChangeIsSeenAtOnce()
{
    const PortDirectory ports = directory();
    addDevice("ttyUSB0");
    QVERIFY(ports.isAvailable(QStringLiteral("COM33")));
    QVERIFY(QFile::remove(path("dev/ttyUSB0")));
    QVERIFY(!ports.isAvailable(QStringLiteral("COM33")));
    QVERIFY(ports.availablePorts().isEmpty());
}

void TstPortDirectory::lackOfPermissionNamesPortGroupAndRemedy()
{
    addDevice("ttyUSB0");
    QVERIFY(QFile::setPermissions(path("dev/ttyUSB0"), QFile::Permissions()));
    QVERIFY(QFile::setPermissions(m_root->path(), DroppedPrivileges::kOpenFolder));
    const QFileInfo device(path("dev/ttyUSB0"));
    QString advice;
    {
        const DroppedPrivileges ordinary;
        advice = directory().permissionAdvice(QStringLiteral("COM33"));
    }
    QCOMPARE(advice,
             permissionAdvice(QStringLiteral("COM33"), device.filePath(), device.group(), device.groupId()));
}

void TstPortDirectory::noAdviceIfThePermissionIsNotTheMatter()
{
    addDevice("ttyUSB0");
    QVERIFY(directory().permissionAdvice(QStringLiteral("COM33")).isEmpty());
    QVERIFY(directory().permissionAdvice(QStringLiteral("COM34")).isEmpty());
    QVERIFY(directory().permissionAdvice(QStringLiteral("COM0")).isEmpty());
}

QTEST_GUILESS_MAIN(TstPortDirectory)
#include "tst_portdirectory.moc"
