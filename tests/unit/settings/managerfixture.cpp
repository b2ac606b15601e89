#include "managerfixture.h"

#include "settings/configpaths.h"

#include <QDir>
#include <QFile>
#include <QtTest>

const QString ManagerFixture::kBackupComplaint = QStringLiteral("Backup file not created");
const QString ManagerFixture::kWriteComplaint =
    QStringLiteral("debugMessage|Error:Unable to write file in the path");

void ManagerFixture::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("desktop")));
    m_manager = std::make_unique<AppConfigurationManager>(ConfigPaths{
        settingsFolder(), m_folder->path() + QStringLiteral("/desktop"), QStringLiteral("/opt/vx/vxconfig")});
    m_signals = std::make_unique<SignalRecorder>(*m_manager);
    m_log = std::make_unique<MessageCatcher>();
}

void ManagerFixture::cleanup()
{
    m_log.reset();
    m_signals.reset();
    m_manager.reset();
    m_folder.reset();
}

void ManagerFixture::writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(path));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

QByteArray ManagerFixture::readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("absent");
}

QByteArray ManagerFixture::fileWith(const QByteArray &report, const QByteArray &gateway,
                                    const QByteArray &server, const QByteArray &port, const QByteArray &mode,
                                    const QByteArray &firmware)
{
    return "\r\n======[Torvex Configurator ]=========\r\n[ACCESS]\r\nLastCommand=/opt/vx/vxconfig\r\n"
           "[Save Location]\r\nFILE_DIR=" +
           report + "\r\n\r\n[TCP/IP]\r\nZrtGateway=" + gateway + "\r\nMainServer=" + server +
           "\r\n[RS232]\r\nPORT1=" + port + "\r\n[Active Mode]\r\nMode=" + mode +
           "\r\n[Firmware File Location]\r\nFIRMWR_FILEPATH=" + firmware +
           "\r\n\r\n\r\n--------------EOF------------------";
}

model_Namespace::Settings ManagerFixture::serialRecord()
{
    model_Namespace::Settings record;
    record.portName = QStringLiteral("COM12");
    record.dataBits = 7;
    record.parity = 3;
    record.baudRate = 9600;
    record.stopBits = 2;
    record.flowControl = 1;
    record.serialConfig = QStringLiteral("9600:O,7,2");
    record.ipAddress = QStringLiteral("10.0.0.1");
    record.tcpPort = QStringLiteral("1234");
    record.commType = Comm_Type::Serial;
    return record;
}

void ManagerFixture::makeSettingsFolder()
{
    QVERIFY(QDir().mkpath(settingsFolder()));
}

void ManagerFixture::makeIni(const QByteArray &bytes)
{
    makeSettingsFolder();
    writeFile(iniPath(), bytes);
}
