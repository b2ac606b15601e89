#include "link/linesettings.h"
#include "pseudoterminal.h"
#include "support/messagecatcher.h"

#include <QSerialPort>
#include <QtTest>
#include <memory>

namespace {

model_Namespace::Settings plainSettings()
{
    model_Namespace::Settings settings;
    settings.portName = QStringLiteral("COM120");
    settings.baudRate = 19200;
    settings.dataBits = 8;
    settings.parity = QSerialPort::NoParity;
    settings.stopBits = 1;
    return settings;
}

QString refused(const char *setting)
{
    return QStringLiteral("Info : Port COM120 does not take the ") + QString::fromLatin1(setting);
}

} // namespace

class TstLineSettings : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theSettingsReachThePort();
    void everyParityIsHandedOn_data();
    void everyParityIsHandedOn();
    void flowControlIsSwitchedOff();
    void whatAPseudoTerminalRefusesIsTold_data();
    void whatAPseudoTerminalRefusesIsTold();
    void aPortThatRefusesEverythingIsToldLineByLine();

private:
    std::unique_ptr<PseudoTerminal> m_terminal;
    std::unique_ptr<QSerialPort> m_port;
    std::unique_ptr<MessageCatcher> m_log;
};

void TstLineSettings::init()
{
    m_terminal = std::make_unique<PseudoTerminal>();
    m_port = std::make_unique<QSerialPort>(m_terminal->device());
    m_log = std::make_unique<MessageCatcher>();
}

void TstLineSettings::cleanup()
{
    m_port.reset();
    m_terminal.reset();
    m_log.reset();
}

void TstLineSettings::theSettingsReachThePort()
{
    QVERIFY(m_port->open(QIODevice::ReadWrite));
    model_Namespace::Settings settings = plainSettings();
    settings.stopBits = 2;
    applyLineSettings(*m_port, settings);
    QCOMPARE(m_port->baudRate(QSerialPort::Input), 19200);
    QCOMPARE(m_port->baudRate(QSerialPort::Output), 19200);
    QCOMPARE(m_port->dataBits(), QSerialPort::Data8);
    QCOMPARE(m_port->parity(), QSerialPort::NoParity);
    QCOMPARE(m_port->stopBits(), QSerialPort::TwoStop);
    QVERIFY(m_log->lines().isEmpty());
}

void TstLineSettings::everyParityIsHandedOn_data()
{
    QTest::addColumn<int>("parity");
    QTest::newRow("even") << 2;
    QTest::newRow("odd") << 3;
    QTest::newRow("space") << 4;
    QTest::newRow("mark") << 5;
}

/// A terminal takes some of them and refuses others; either shows that it was asked.
void TstLineSettings::everyParityIsHandedOn()
{
    QFETCH(int, parity);
    QVERIFY(m_port->open(QIODevice::ReadWrite));
    model_Namespace::Settings settings = plainSettings();
    settings.parity = parity;
    applyLineSettings(*m_port, settings);
    QVERIFY(int(m_port->parity()) == parity || m_log->lines() == QStringList{refused("parity")});
}

/// Whatever the record says and the port had before.
void TstLineSettings::flowControlIsSwitchedOff()
{
    m_port->setFlowControl(QSerialPort::SoftwareControl);
    QVERIFY(m_port->open(QIODevice::ReadWrite));
    QCOMPARE(m_port->flowControl(), QSerialPort::SoftwareControl);
    model_Namespace::Settings settings = plainSettings();
    settings.flowControl = QSerialPort::SoftwareControl;
    applyLineSettings(*m_port, settings);
    QCOMPARE(m_port->flowControl(), QSerialPort::NoFlowControl);
}

void TstLineSettings::whatAPseudoTerminalRefusesIsTold_data()
{
    QTest::addColumn<int>("baudRate");
    QTest::addColumn<int>("dataBits");
    QTest::addColumn<QString>("line");
    QTest::newRow("no baud rate") << 0 << 8 << refused("baud rate");
    QTest::newRow("seven data bits") << 19200 << 7 << refused("data bits");
}

void TstLineSettings::whatAPseudoTerminalRefusesIsTold()
{
    QFETCH(int, baudRate);
    QFETCH(int, dataBits);
    QFETCH(QString, line);
    QVERIFY(m_port->open(QIODevice::ReadWrite));
    model_Namespace::Settings settings = plainSettings();
    settings.baudRate = baudRate;
    settings.dataBits = dataBits;
    applyLineSettings(*m_port, settings);
    QCOMPARE(m_log->lines(), QStringList{line});
    QVERIFY(m_port->isOpen());
}

void TstLineSettings::aPortThatRefusesEverythingIsToldLineByLine()
{
    QVERIFY(m_port->open(QIODevice::ReadWrite));
    m_terminal->vanish();
    applyLineSettings(*m_port, plainSettings());
    QCOMPARE(m_log->lines(), (QStringList{refused("baud rate"), refused("data bits"), refused("parity"),
                                          refused("stop bits"), refused("flow control")}));
}

QTEST_GUILESS_MAIN(TstLineSettings)
#include "tst_linesettings.moc"
