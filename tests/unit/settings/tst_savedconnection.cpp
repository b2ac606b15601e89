#include "settings/appconfigurationmanager.h"
#include "settings/portlister.h"

#include "portfolder.h"
#include "support/messagecatcher.h"
#include "support/virtualtime.h"

#include <QLineEdit>
#include <QTemporaryDir>
#include <QtTest>
#include <memory>

using model_Namespace::Settings;

/// The settings file and the connection dialog together, joined as the application joins them.
class TstSavedConnection : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void typicalFileActivatesItsSerialParameters();
    void portLineBehindTheModeComesTooLate();
    void serverOfTheFileIsActivated();
    void portLineWithoutParametersLeavesTheDefaults();
    void badParametersLeaveTheDefaults();
    void unknownModeActivatesNothing();
    void activatedPortIsSavedWithCommas();
    void confirmedChoiceComesBack();
    void confirmedGatewayReplacesThePortOfTheFile();

private:
    QString iniPath() const { return m_folder->path() + QStringLiteral("/vxconfig.ini"); }
    int load(const QByteArray &bytes);
    QByteArray saved() const;
    QString shown(const char *name) const
    {
        return m_lister->findChild<QLineEdit *>(QString::fromLatin1(name))->text();
    }

    PortFolder m_ports;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<VirtualTime> m_time;
    std::unique_ptr<PortLister> m_lister;
    std::unique_ptr<AppConfigurationManager> m_manager;
    QList<Settings> m_activated;
};

void TstSavedConnection::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_time = std::make_unique<VirtualTime>();
    m_lister = std::make_unique<PortLister>(*m_time, m_ports.directory());
    m_manager = std::make_unique<AppConfigurationManager>(ConfigPaths{
        m_folder->path(), m_folder->path() + QStringLiteral("/desktop"), QStringLiteral("/opt/vxconfig")});
    m_activated.clear();

    using Manager = AppConfigurationManager;
    connect(m_manager.get(), &Manager::updateConfig, m_lister.get(), &PortLister::updateConfig);
    connect(m_manager.get(), &Manager::serverInfo, m_lister.get(), &PortLister::settingsServer);
    connect(m_manager.get(), &Manager::activateMode, m_lister.get(), &PortLister::Slot_ActivateMode);
    connect(m_lister.get(), &PortLister::Signal_ActivateMode, m_manager.get(), &Manager::SaveComDetails);
    connect(m_lister.get(), &PortLister::Signal_ActivateMode, this,
            [this](const Settings &settings) { m_activated.append(settings); });
    connect(m_lister.get(), &PortLister::setSerialPortConfig, m_manager.get(), &Manager::saveSerialSettings);
    connect(m_lister.get(), &PortLister::setNetworkConfig, m_manager.get(), &Manager::saveServerSettings);
}

void TstSavedConnection::cleanup()
{
    m_manager.reset();
    m_lister.reset();
    m_time.reset();
    m_folder.reset();
}

int TstSavedConnection::load(const QByteArray &bytes)
{
    QFile file(iniPath());
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        return -1;
    file.close();
    return m_manager->loadIniFile();
}

QByteArray TstSavedConnection::saved() const
{
    QFile file(iniPath());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void TstSavedConnection::typicalFileActivatesItsSerialParameters()
{
    QCOMPARE(load("PORT1=COM5:115200,E,8,1\r\nMode=Serial\r\n"), 1);
    QCOMPARE(shown("portConfigBox"), QStringLiteral("115200:E,8,1"));
    QCOMPARE(shown("comBox"), QStringLiteral("5"));
    QCOMPARE(m_activated.size(), 1);
    QCOMPARE(m_activated.at(0).portName, QStringLiteral("COM5"));
    QCOMPARE(m_activated.at(0).serialConfig, QStringLiteral("115200:E,8,1"));
    QCOMPARE(m_activated.at(0).baudRate, 115200);
    QCOMPARE(m_activated.at(0).commType, Comm_Type::Serial);
}

void TstSavedConnection::portLineBehindTheModeComesTooLate()
{
    QCOMPARE(load("Mode=Serial\r\nPORT1=COM5:9600,N,7,2\r\n"), 1);
    QCOMPARE(m_activated.size(), 1);
    QCOMPARE(m_activated.at(0).serialConfig, QStringLiteral("115200,E,8,1"));
    QCOMPARE(m_activated.at(0).baudRate, 115200);
    QCOMPARE(m_activated.at(0).portName, QString());
    QCOMPARE(shown("portConfigBox"), QStringLiteral("9600:N,7,2"));
}

void TstSavedConnection::serverOfTheFileIsActivated()
{
    QCOMPARE(load("MainServer=10.0.0.7:4000\r\nMode=TCP\r\n"), 0);
    QCOMPARE(m_activated.size(), 1);
    QCOMPARE(m_activated.at(0).ipAddress, QStringLiteral("10.0.0.7"));
    QCOMPARE(m_activated.at(0).tcpPort, QStringLiteral("4000"));
    QCOMPARE(m_activated.at(0).commType, Comm_Type::Ethernet);
    QCOMPARE(shown("ipAddrBox"), QStringLiteral("10.0.0.7"));
    QCOMPARE(shown("portBox"), QStringLiteral("7777"));
}

void TstSavedConnection::portLineWithoutParametersLeavesTheDefaults()
{
    QCOMPARE(load("PORT1=COM5:\r\nMode=Serial\r\n"), 1);
    QCOMPARE(shown("portConfigBox"), QStringLiteral("115200,E,8,1"));
    QCOMPARE(shown("comBox"), QString());
    QCOMPARE(m_activated.value(0).serialConfig, QStringLiteral("115200,E,8,1"));
}

void TstSavedConnection::badParametersLeaveTheDefaults()
{
    MessageCatcher log;
    QCOMPARE(load("PORT1=COM5:9601,E,8,1\r\nMode=Serial\r\n"), 1);
    QCOMPARE(log.lines(), QStringList{QStringLiteral("Baud Rate not Parsed")});
    QCOMPARE(shown("portConfigBox"), QStringLiteral("115200,E,8,1"));
    QCOMPARE(shown("comBox"), QString());
}

void TstSavedConnection::unknownModeActivatesNothing()
{
    QCOMPARE(load("PORT1=COM5:9600,E,8,1\r\nMode=Radio\r\n"), 1);
    QCOMPARE(m_activated.size(), 0);
    QCOMPARE(shown("comBox"), QStringLiteral("5"));
}

void TstSavedConnection::activatedPortIsSavedWithCommas()
{
    QCOMPARE(load("PORT1=COM5:9600:O,7,2\r\nMode=TCP\r\n"), 1);
    m_manager->HandleDefltPath(QStringLiteral("/reports"));
    QVERIFY(saved().contains("\r\nPORT1=COM5:9600,O,7,2\r\n"));
    const QByteArray first = saved();
    QCOMPARE(m_manager->loadIniFile(), 1);
    m_manager->StoreIniFile();
    QCOMPARE(saved(), first);
}

void TstSavedConnection::confirmedChoiceComesBack()
{
    QTest::keyClicks(m_lister->findChild<QLineEdit *>(QStringLiteral("comBox")), QStringLiteral("42"));
    m_lister->on_openBtn_clicked();
    QVERIFY(saved().contains("\r\nPORT1=COM42:115200,E,8,1\r\n"));
    QVERIFY(saved().contains("\r\nMode=Serial\r\n"));
    QCOMPARE(m_manager->loadIniFile(), 1);
    QCOMPARE(m_activated.size(), 1);
    QCOMPARE(m_activated.at(0).portName, QStringLiteral("COM42"));
}

void TstSavedConnection::confirmedGatewayReplacesThePortOfTheFile()
{
    QCOMPARE(load("MainServer=10.0.0.7:4000\r\nMode=TCP\r\n"), 0);
    m_lister->on_openBtn_clicked();
    QVERIFY(saved().contains("\r\nMainServer=10.0.0.7:7777\r\n"));
    QVERIFY(saved().contains("\r\nMode=TCP\r\n"));
}

QTEST_MAIN(TstSavedConnection)
#include "tst_savedconnection.moc"
