#include "base/timesource.h"
#include "closebutton.h"
#include "sim/chainfile.h"
#include "sim/server.h"
#include "waiting.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const char kTitle[] = "Torvex Configurator (V1.1.62)";
const QString kChain = QStringLiteral("controller serial=C-1\npower serial=P-1\nmodule type=1 serial=SG-\n");
/// The program sets what asks for it behind the application's construction on purpose.
const QString kLateAttribute =
    QStringLiteral("Attribute Qt::AA_EnableHighDpiScaling must be set before QCoreApplication is created.");
constexpr int kFastModuleStatus = 0x10; ///< the request with which the polling begins

void write(const QString &path, const QString &text)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text.toUtf8());
}

/// The lines of the program's log that nobody meant: warnings and worse, be they of Qt or of ours, but for
/// `announced`, and what a sanitizer tells.
QStringList unexpectedLines(const QByteArray &log, const QStringList &announced)
{
    const QRegularExpression unexpected(QStringLiteral("^(WARNING|CRITICAL|FATAL) |Sanitizer|runtime error"));
    QStringList lines = QString::fromUtf8(log).split(QLatin1Char('\n')).filter(unexpected);
    for (const QString &line : announced)
        lines.removeAll(QStringLiteral("WARNING ") + line);
    return lines;
}

} // namespace

/// The program as it is installed, in a process of its own, on a display of its own.
class TstProgram : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theChainOfTheSettingsFileIsReadAndPolledUntilTheWindowIsClosed();
    void theProgramEndsWithItsDisplay();

private:
    void start();

    SystemTime m_time;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<sim::Server> m_device;
    QProcess m_display;
    QProcess m_program;
    QString m_displayName;
};

void TstProgram::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    sim::Chain chain;
    QString error;
    QVERIFY2(sim::parseChain(kChain, &chain, &error), qPrintable(error));
    m_device = std::make_unique<sim::Server>(m_time, chain);
    QVERIFY2(m_device->listen(0, &error), qPrintable(error));

    m_display.start(QStringLiteral("Xvfb"),
                    {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-nolisten"),
                     QStringLiteral("tcp"), QStringLiteral("-screen"), QStringLiteral("0"),
                     QStringLiteral("1280x1024x24")});
    WAIT_VERIFY(m_display.canReadLine());
    m_displayName = QLatin1Char(':') + QString::fromLatin1(m_display.readLine().trimmed());
}

void TstProgram::cleanup()
{
    for (QProcess *process : {&m_program, &m_display}) {
        process->terminate();
        process->waitForFinished();
    }
    m_device.reset();
    m_folder.reset();
}

void TstProgram::start()
{
    const QString settings = m_folder->filePath(QStringLiteral("qor/vxconfig"));
    const QString deployment = m_folder->filePath(QStringLiteral("deployment.ini"));
    QVERIFY(QDir().mkpath(settings));
    write(settings + QStringLiteral("/vxconfig.ini"),
          QStringLiteral("MainServer=127.0.0.1:%1\r\nMode=TCP\r\n").arg(m_device->tcpPort()));
    // Nobody else listens at this address, so the port is free there.
    write(deployment, QStringLiteral("[web]\nhost=127.127.127.126\nport=%1\n").arg(m_device->tcpPort()));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), m_displayName);
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("default.debug=true"));
    environment.insert(QStringLiteral("QT_MESSAGE_PATTERN"),
                       QStringLiteral("%{if-warning}WARNING %{endif}%{if-critical}CRITICAL %{endif}"
                                      "%{if-fatal}FATAL %{endif}%{message}"));
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_folder->path());
    environment.insert(QStringLiteral("VXCONFIG_DEPLOYMENT"), deployment);
    m_program.setProcessEnvironment(environment);
    m_program.setProcessChannelMode(QProcess::MergedChannels);
    m_program.start(QStringLiteral(VX_PROGRAM), QStringList());
    QVERIFY2(m_program.waitForStarted(), qPrintable(m_program.errorString()));
}

void TstProgram::theChainOfTheSettingsFileIsReadAndPolledUntilTheWindowIsClosed()
{
    start();
    WAIT_VERIFY(m_device->requestCount(kFastModuleStatus) > 0);
    QCOMPARE(m_device->refusals(), QStringList());
    QCOMPARE(m_program.state(), QProcess::Running);
    QVERIFY(clickCloseButton(m_displayName.toLatin1(), kTitle));
    WAIT_COMPARE(m_program.state(), QProcess::NotRunning);
    QCOMPARE(m_program.exitStatus(), QProcess::NormalExit);
    const QByteArray log = m_program.readAll();
    QVERIFY2(m_program.exitCode() == 0, log); // a leak counts as well under a sanitizer
    QVERIFY2(log.contains("Initialized State"), log);
    QCOMPARE(unexpectedLines(log, {kLateAttribute}), QStringList());
}

void TstProgram::theProgramEndsWithItsDisplay()
{
    start();
    WAIT_VERIFY(m_device->requestCount(kFastModuleStatus) > 0);
    m_display.terminate();
    WAIT_COMPARE(m_program.state(), QProcess::NotRunning);
    QCOMPARE(m_program.exitStatus(), QProcess::NormalExit); // it did not crash
    QCOMPARE(m_program.exitCode(), 1);
    const QStringList announced{
        kLateAttribute, QStringLiteral("The X11 connection broke (error 1). Did the X11 server die?")};
    QCOMPARE(unexpectedLines(m_program.readAll(), announced), QStringList());
}

QTEST_GUILESS_MAIN(TstProgram)
#include "tst_program.moc"
