#include "managerfixture.h"

#include <QDir>
#include <QtTest>

namespace {

/// The two lines that name a path, each with what is told of it.
void addPathLines()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("signal");
    QTest::newRow("folder of the reports")
        << QByteArray("FILE_DIR") << QStringLiteral("Default report:") << QStringLiteral("updatePath|");
    QTest::newRow("firmware file") << QByteArray("FIRMWR_FILEPATH") << QStringLiteral("Firmwr File Path:")
                                   << QStringLiteral("Signal_updateFwFilpth|");
}

} // namespace

/// Reading the settings file.
class TstConfigurationLoad : public ManagerFixture
{
    Q_OBJECT

private slots:
    void missingFileLoadsNothing();
    void folderInPlaceOfTheFileLoadsNothing();
    void folderThatCannotBeMadeIsLogged();
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
    void valueWithAZeroByteIsToldButNotAsAPath_data();
    void valueWithAZeroByteIsToldButNotAsAPath();
    void zeroByteOutsideThePathDoesNotHideIt_data();
    void zeroByteOutsideThePathDoesNotHideIt();
    void binaryFileIsRead();
    void fileOfAnEarlierVersionBecomesUtf8();
};

void TstConfigurationLoad::missingFileLoadsNothing()
{
    QCOMPARE(m_manager->loadIniFile(), 0);
    QCOMPARE(m_signals->lines(), QStringList());
    QVERIFY(QFileInfo(settingsFolder()).isDir());
    QCOMPARE(m_log->lines(), QStringList());
}

void TstConfigurationLoad::folderInPlaceOfTheFileLoadsNothing()
{
    QVERIFY(QDir().mkpath(iniPath()));
    QCOMPARE(m_manager->loadIniFile(), 0);
    QCOMPARE(m_signals->lines(), QStringList());
}

void TstConfigurationLoad::folderThatCannotBeMadeIsLogged()
{
    writeFile(m_folder->path() + QStringLiteral("/settings"), "a file where the folder should be");
    QCOMPARE(m_manager->loadIniFile(), 0);
    QCOMPARE(m_log->lines(), QStringList{QStringLiteral("Directory not created")});
    QCOMPARE(m_signals->lines(), QStringList());
}

void TstConfigurationLoad::typicalFileIsReadInItsOrder()
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

void TstConfigurationLoad::otherOrderGivesOtherOrder()
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

void TstConfigurationLoad::fileOfUnixLineEndsIsRead()
{
    makeIni("PORT1=COM5:115200,E,8,1\nMode=TCP\n");
    QCOMPARE(m_manager->loadIniFile(), 1);
    QCOMPARE(m_signals->lines(), (QStringList{QStringLiteral("updateConfig|PORT1|COM5|115200|E|8|1"),
                                              QStringLiteral("activateMode|1")}));
}

void TstConfigurationLoad::twoPortLinesCountTwice()
{
    makeIni("PORT1=COM5:9600,E,8,1\r\nPORT1=COM6:9600,E,8,1\r\n");
    QCOMPARE(m_manager->loadIniFile(), 2);
    QCOMPARE(m_signals->lines(), (QStringList{QStringLiteral("updateConfig|PORT1|COM5|9600|E|8|1"),
                                              QStringLiteral("updateConfig|PORT1|COM6|9600|E|8|1")}));
}

void TstConfigurationLoad::portLineWithoutParametersCounts()
{
    makeIni("PORT1=COM5:\r\n");
    QSignalSpy spy(m_manager.get(), &AppConfigurationManager::updateConfig);
    QCOMPARE(m_manager->loadIniFile(), 1);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.first().first().toStringList(),
             (QStringList{QStringLiteral("PORT1"), QStringLiteral("COM5"), QString()}));
}

void TstConfigurationLoad::emptyGatewayIsStillTold()
{
    makeIni("ZrtGateway=:\r\nMainServer=:\r\n");
    QCOMPARE(m_manager->loadIniFile(), 0);
    QCOMPARE(m_signals->lines(),
             (QStringList{QStringLiteral("gateWayInfo||"), QStringLiteral("serverInfo||")}));
}

void TstConfigurationLoad::modeIsToldIfKnown_data()
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

void TstConfigurationLoad::modeIsToldIfKnown()
{
    QFETCH(QByteArray, line);
    QFETCH(QStringList, expected);
    makeIni(line);
    QCOMPARE(m_manager->loadIniFile(), 0);
    QCOMPARE(m_signals->lines(), expected);
}

void TstConfigurationLoad::unknownModeIsKept()
{
    makeIni("Mode=Infrared\r\n");
    QCOMPARE(m_manager->loadIniFile(), 0);
    QCOMPARE(m_signals->lines(), QStringList());
    m_manager->StoreIniFile();
    QCOMPARE(readFile(iniPath()), fileWith("", ":", ":", "COM5:", "Infrared", ""));
}

void TstConfigurationLoad::linesWithTooFewPartsChangeNothing()
{
    makeIni("FILE_DIR=r\r\nZrtGateway=a:1\r\nMainServer=b:2\r\nMode=TCP\r\nFIRMWR_FILEPATH=f\r\n"
            "FILE_DIR\r\nZrtGateway=c\r\nMainServer\r\n[Active Mode]\r\nFIRMWR_FILEPATH\r\n");
    QCOMPARE(m_manager->loadIniFile(), 0);
    QCOMPARE(m_signals->lines().size(), 7);
    m_manager->StoreIniFile();
    QCOMPARE(readFile(iniPath()), fileWith("r", "a:1", "b:2", "COM5:", "TCP", "f"));
}

void TstConfigurationLoad::missingLineIsNotTold_data()
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

void TstConfigurationLoad::missingLineIsNotTold()
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

void TstConfigurationLoad::accessSectionMayBeDeleted()
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

void TstConfigurationLoad::executablePathWithKeyIsReadAsThatKey()
{
    makeIni("LastCommand=C:/PORT1/vxconfig.exe\r\nLastCommand=C:/ZrtGateway/vxconfig.exe\r\n");
    QCOMPARE(m_manager->loadIniFile(), 1);
    QCOMPARE(m_signals->lines(), (QStringList{QStringLiteral("updateConfig|LastCommand|C|PORT1|vxconfig|exe"),
                                              QStringLiteral("gateWayInfo|C|/ZrtGateway/vxconfig.exe")}));
}

void TstConfigurationLoad::portLineIsNotStored()
{
    makeIni("PORT1=COM9:9600,N,7,2\r\n");
    QCOMPARE(m_manager->loadIniFile(), 1);
    m_manager->StoreIniFile();
    QCOMPARE(readFile(iniPath()), fileWith("", ":", ":", "COM5:", "", ""));
}

void TstConfigurationLoad::loadedValuesAreWrittenBack()
{
    const QByteArray bytes = fileWith("C:/Reports", "1.2.3.4:5", "6.7.8.9:10", "COM5:", "TCP", "D:/x.bin");
    makeIni(bytes);
    QCOMPARE(m_manager->loadIniFile(), 1);
    m_manager->StoreIniFile();
    QCOMPARE(readFile(iniPath()), bytes);
}

void TstConfigurationLoad::loadingTwiceTellsTwice()
{
    makeIni("PORT1=COM5:9600,E,8,1\r\n");
    QCOMPARE(m_manager->loadIniFile(), 1);
    QCOMPARE(m_manager->loadIniFile(), 1);
    QCOMPARE(m_signals->lines().size(), 2);
}

void TstConfigurationLoad::valueWithAZeroByteIsToldButNotAsAPath_data()
{
    addPathLines();
}

void TstConfigurationLoad::valueWithAZeroByteIsToldButNotAsAPath()
{
    QFETCH(QByteArray, key);
    QFETCH(QString, message);
    for (const QByteArray &value : {QByteArray("/a\0b", 4), QByteArray("/a\0", 3), QByteArray("\0", 1)}) {
        makeIni(key + '=' + value + "\r\n");
        QCOMPARE(m_manager->loadIniFile(), 0);
        const QString text = QString::fromLatin1(value.constData(), value.size());
        QCOMPARE(m_signals->lines(), QStringList{QStringLiteral("debugMessage|") + message + text});
        m_manager->StoreIniFile();
        QVERIFY(readFile(iniPath()).contains(key + '=' + value + "\r\n"));
        m_signals->clear();
    }
}

void TstConfigurationLoad::zeroByteOutsideThePathDoesNotHideIt_data()
{
    addPathLines();
}

void TstConfigurationLoad::zeroByteOutsideThePathDoesNotHideIt()
{
    QFETCH(QByteArray, key);
    QFETCH(QString, message);
    QFETCH(QString, signal);
    const QByteArray zero("\0", 1);
    makeIni(zero + key + "=/a\r\n" + key + zero + "=/b\r\n" + key + "=/c=" + zero + "\r\n");
    QCOMPARE(m_manager->loadIniFile(), 0);
    QStringList expected;
    for (const char *path : {"/a", "/b", "/c"})
        expected << QStringLiteral("debugMessage|") + message + QLatin1String(path)
                 << signal + QLatin1String(path);
    QCOMPARE(m_signals->lines(), expected);
}

void TstConfigurationLoad::binaryFileIsRead()
{
    QByteArray bytes;
    for (int i = 0; i < 100000; ++i)
        bytes += char((i * 7919) >> 3);
    makeIni(bytes + "\nMode=TCP\n" + bytes);
    QCOMPARE(m_manager->loadIniFile(), 0);
    QCOMPARE(m_signals->lines(), QStringList{QStringLiteral("activateMode|1")});
}

void TstConfigurationLoad::fileOfAnEarlierVersionBecomesUtf8()
{
    makeIni(fileWith("C:/Users/J\xfcrgen/Me\xdfwerte", ":", ":", "COM5:", "", "D:/fw.bin"));
    QCOMPARE(m_manager->loadIniFile(), 1);
    QVERIFY(m_signals->lines().contains(QStringLiteral("updatePath|C:/Users/J\u00fcrgen/Me\u00dfwerte")));
    m_manager->StoreIniFile();
    QCOMPARE(readFile(iniPath()),
             fileWith("C:/Users/J\xc3\xbcrgen/Me\xc3\x9fwerte", ":", ":", "COM5:", "", "D:/fw.bin"));
}

QTEST_GUILESS_MAIN(TstConfigurationLoad)
#include "tst_configurationload.moc"
