#include <QtTest>

#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <csignal>

namespace {

const QByteArray kFastRequest = QByteArray::fromHex("8081828301ff4350000000000000000005008ff408000000007334");
constexpr int kFrameSize = 38;

/// The simulator as a process of its own.
class Process : public QProcess
{
public:
    explicit Process(const QStringList &arguments) { start(QStringLiteral(VXSIM), arguments); }

    ~Process() override
    {
        if (state() != NotRunning) {
            kill();
            waitForFinished();
        }
    }

    /// Reads lines until one begins so; gives what stands behind the beginning, nothing if none comes.
    QString lineAfter(const QString &beginning)
    {
        while (canReadLine() || waitForReadyRead()) {
            while (canReadLine()) {
                const QString line = QString::fromUtf8(readLine()).trimmed();
                if (line.startsWith(beginning))
                    return line.mid(beginning.size());
            }
        }
        return {};
    }
};

/// Sends a text to the gateway behind its greeting, and waits until a line is there; it stays to be read.
QByteArray talk(QTcpSocket *socket, int port, const QByteArray &text)
{
    socket->connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port));
    const auto wait = [socket](const char *end) {
        while (!socket->peek(9999).endsWith(end) && socket->waitForReadyRead())
            ;
    };
    wait("]---- ");
    socket->readAll();
    socket->write(text);
    wait("\r\n");
    return socket->peek(9999);
}

} // namespace

class TstVxsim : public QObject
{
    Q_OBJECT

private slots:
    void portIsPrintedAndAnswers();
    void exampleChainAndLog();
    void logOnTheStandardOutput();
    void seedIsPrinted();
    void faultFileAndRule();
    void imageIsWrittenAtTheStop();
    void imageFolderThatCannotBeMade();
    void endsAfterItsTime();
    void signalEndsItAndRemovesTheLink_data();
    void signalEndsItAndRemovesTheLink();
    void wrongUse_data();
    void wrongUse();
    void logThatCannotBeOpened();
    void takenPort();
    void linksAreToldWhenAllAreReady();
    void gatewayIsPrintedLastAndAnswers();
    void gatewayAloneHasNoChain();
    void gatewayOfTheChainFile();
    void gatewayFaultFileAndRule();
    void helpNamesTheOptions();
    void paceHoldsOnTheMachinesClock();
};

void TstVxsim::portIsPrintedAndAnswers()
{
    Process process({"--tcp", "0"});
    const int port = process.lineAfter("listening on 127.0.0.1:").toInt();
    QVERIFY(port > 0);
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port));
    socket.write(kFastRequest);
    QTRY_COMPARE(socket.bytesAvailable(), kFrameSize);
}

void TstVxsim::exampleChainAndLog()
{
    QTemporaryDir folder;
    const QString log = folder.filePath("frames.log");
    Process process({"--tcp", "0", "--chain", SIM_CHAINS "/demo.chain", "--log", log});
    const int port = process.lineAfter("listening on 127.0.0.1:").toInt();
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port));
    socket.write(QByteArray::fromHex("80818283010143500000000000000000050091f30100000001ec2b"));
    QTRY_VERIFY(socket.bytesAvailable() > 178);
    QCOMPARE(int(socket.readAll().at(20 + 16)), 14);
    QFile file(log);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    QVERIFY(text.contains(" tcp:1 -> 0x01 system status | 80 81 82 83 01 01 43 50 "));
    QVERIFY(text.contains(" tcp:1 <- 0x01 system status: 14 modules, "));
}

void TstVxsim::logOnTheStandardOutput()
{
    Process process({"--tcp", "0", "--log", "-"});
    const int port = process.lineAfter("listening on 127.0.0.1:").toInt();
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port));
    QVERIFY(socket.waitForConnected());
    while (!process.canReadLine())
        QVERIFY(process.waitForReadyRead());
    QVERIFY(process.readLine().endsWith("tcp:1 -- connected\n"));
}

void TstVxsim::seedIsPrinted()
{
    Process process({"--tcp", "0", "--seed", "4711"});
    QCOMPARE(process.lineAfter("seed "), QString("4711"));
}

void TstVxsim::faultFileAndRule()
{
    QTemporaryDir folder;
    QFile file(folder.filePath("bad.fault"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("# the first is lost\nlose nth=1\n");
    file.close();
    Process process({"--tcp", "0", "--fault", file.fileName(), "--fault-rule", "reset-flag nth=2"});
    const int port = process.lineAfter("listening on 127.0.0.1:").toInt();
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port));
    socket.write(kFastRequest + kFastRequest);
    QTRY_COMPARE(socket.bytesAvailable(), kFrameSize);
    const QByteArray reply = socket.readAll();
    QCOMPARE(int(reply.at(5)), 2);
    QCOMPARE(int(reply.at(20 + 8)), 1);
}

void TstVxsim::imageIsWrittenAtTheStop()
{
    QTemporaryDir folder;
    Process process({"--tcp", "0", "--images", folder.filePath("images"), "--log", "-"});
    const int port = process.lineAfter("listening on 127.0.0.1:").toInt();
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port));
    // For the second FPGA of the controller: start, page 0, block 0, stop.
    socket.write(QByteArray::fromHex("80818283010143500000000000000000090095f3160002010100000000a764") +
                 QByteArray::fromHex("80818283010243500000000000000000090096f316000201e00000000005d4") +
                 QByteArray::fromHex("80818283010343500000000000000000090198f316000201e100000001") +
                 QByteArray(256, 'A') + QByteArray::fromHex("1819") +
                 QByteArray::fromHex("80818283010443500000000000000000090098f3160002010000000000790e"));
    QTRY_COMPARE(socket.bytesAvailable(), 4 * kFrameSize);
    QFile image(folder.filePath("images/controller-fpga2.bin"));
    QVERIFY(image.open(QIODevice::ReadOnly));
    QCOMPARE(image.readAll(), QByteArray(256, 'A'));
    QCOMPARE(QDir(folder.filePath("images")).entryList(QDir::Files).size(), 1);
    QString last;
    while (!last.contains("stopped") && !(last = process.lineAfter("")).isEmpty())
        QVERIFY2(!last.contains("breach"), qPrintable(last));
    QVERIFY2(last.endsWith("tcp:1 -- controller-fpga2: flashing stopped, 1 blocks"), qPrintable(last));
}

void TstVxsim::imageFolderThatCannotBeMade()
{
    Process process({"--tcp", "0", "--images", "/dev/null/images"});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 1);
    QCOMPARE(QString::fromUtf8(process.readAllStandardError()).trimmed(),
             QString("vxsim: /dev/null/images: the folder cannot be made"));
}

void TstVxsim::endsAfterItsTime()
{
    Process process({"--tcp", "0", "--run-for", "0.05"});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
}

void TstVxsim::signalEndsItAndRemovesTheLink_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void TstVxsim::signalEndsItAndRemovesTheLink()
{
    QFETCH(int, signal);
    QTemporaryDir folder;
    const QString name = folder.filePath("ports/COM40");
    std::signal(SIGHUP, SIG_DFL); // for the child, where this was begun without a terminal
    Process process({"--pty", name});
    QCOMPARE(process.lineAfter("terminal at "), name);
    QVERIFY(QFileInfo(name).isSymLink());
    QCOMPARE(::kill(static_cast<pid_t>(process.processId()), signal), 0);
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
    QVERIFY(!QFileInfo(name).isSymLink());
}

void TstVxsim::wrongUse_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("error");

    const QString all = "--tcp";
    QTest::newRow("nothing") << QStringList()
                             << "vxsim: neither --tcp nor --pty nor --gateway: nobody could reach the device";
    QTest::newRow("unknown option") << QStringList({"--colour"}) << "vxsim: Unknown option 'colour'.";
    QTest::newRow("a word") << QStringList({"demo"}) << "vxsim: \"demo\" is no option";
    QTest::newRow("port") << QStringList({all, "70000"})
                          << "vxsim: --tcp: \"70000\" is no number from 0 to 65535";
    QTest::newRow("gateway port") << QStringList({"--gateway", "x"})
                                  << "vxsim: --gateway: \"x\" is no number from 0 to 65535";
    QTest::newRow("gateway rule")
        << QStringList({"--gateway", "0", "--gateway-rule", "hot"})
        << "vxsim: --gateway-rule \"hot\": line 1: there is no fault \"hot\" of a gateway";
    QTest::newRow("port, broken") << QStringList({all, "1.5"})
                                  << "vxsim: --tcp: \"1.5\" is no number from 0 to 65535";
    QTest::newRow("pace") << QStringList({all, "0", "--pace", "fast"})
                          << "vxsim: --pace: \"fast\" is no number from 0 to 100000000";
    QTest::newRow("pace, nan") << QStringList({all, "0", "--pace", "nan"})
                               << "vxsim: --pace: \"nan\" is no number from 0 to 100000000";
    QTest::newRow("seed, nan") << QStringList({all, "0", "--seed", "nan"})
                               << "vxsim: --seed: \"nan\" is no number from 0 to 4294967295";
    QTest::newRow("seed, too large") << QStringList({all, "0", "--seed", "4294967296"})
                                     << "vxsim: --seed: \"4294967296\" is no number from 0 to 4294967295";
    QTest::newRow("time, nan") << QStringList({all, "0", "--run-for", "nan"})
                               << "vxsim: --run-for: \"nan\" is no number from 0 to 10000000";
    QTest::newRow("time, infinite") << QStringList({all, "0", "--run-for", "inf"})
                                    << "vxsim: --run-for: \"inf\" is no number from 0 to 10000000";
    QTest::newRow("time, negative") << QStringList({all, "0", "--run-for", "-1"})
                                    << "vxsim: --run-for: \"-1\" is no number from 0 to 10000000";
    QTest::newRow("rule") << QStringList({all, "0", "--fault-rule", "burn"})
                          << "vxsim: --fault-rule \"burn\": line 1: there is no fault \"burn\"";
    QTest::newRow("chain file") << QStringList({all, "0", "--chain", "/no/such.chain"})
                                << "vxsim: /no/such.chain: No such file or directory";
}

void TstVxsim::wrongUse()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, error);
    Process process(arguments);
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 2);
    QCOMPARE(QString::fromUtf8(process.readAllStandardError()).trimmed(), error);
}

void TstVxsim::logThatCannotBeOpened()
{
    Process process({"--tcp", "0", "--log", "/no/such/folder/frames.log"});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 1);
    QCOMPARE(QString::fromUtf8(process.readAllStandardError()).trimmed(),
             QString("vxsim: /no/such/folder/frames.log: No such file or directory"));
}

void TstVxsim::takenPort()
{
    QTcpServer owner;
    QVERIFY(owner.listen(QHostAddress::LocalHost));
    Process process({"--tcp", QString::number(owner.serverPort())});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 1);
    const QString error = QString::fromUtf8(process.readAllStandardError());
    QVERIFY2(error.startsWith(QString("vxsim: TCP port %1: ").arg(owner.serverPort())), qPrintable(error));
}

void TstVxsim::linksAreToldWhenAllAreReady()
{
    QTemporaryDir folder;
    const QString name = folder.filePath("COM40");
    Process process({"--tcp", "0", "--pty", name});
    QVERIFY(process.lineAfter("listening on 127.0.0.1:").toInt() > 0);
    QCOMPARE(process.lineAfter("terminal at "), name);
    // A terminal that cannot be had: the port is not told either.
    Process failing({"--tcp", "0", "--pty", "/dev/null"});
    QVERIFY(failing.waitForFinished());
    QCOMPARE(failing.exitCode(), 1);
    QVERIFY(!failing.readAllStandardOutput().contains("listening"));
}

void TstVxsim::gatewayIsPrintedLastAndAnswers()
{
    QTemporaryDir folder;
    Process process({"--tcp", "0", "--pty", folder.filePath("COM40"), "--gateway", "0", "--log", "-"});
    const int port = process.lineAfter("listening on 127.0.0.1:").toInt();
    QVERIFY(!process.lineAfter("terminal at ").isEmpty());
    const int gateway = process.lineAfter("gateway at 127.0.0.1:").toInt();
    QVERIFY(port > 0 && gateway > 0 && gateway != port);
    QTcpSocket socket;
    QVERIFY2(talk(&socket, gateway, "#?\r").endsWith(";ZRT-1;;\r\n"), socket.peek(999));
    // The chain of a missing description runs at 2500 kBit/s with 16 channels, and so does the gateway.
    QCOMPARE(socket.readAll().split(';').value(32), QByteArray("1"));
    QVERIFY(process.lineAfter("").endsWith(" gateway:1 -- connected"));
    QTcpSocket chain;
    chain.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port));
    chain.write(kFastRequest);
    QTRY_COMPARE(chain.bytesAvailable(), kFrameSize);
}

void TstVxsim::gatewayAloneHasNoChain()
{
    Process process({"--gateway", "0"});
    QTcpSocket socket;
    talk(&socket, process.lineAfter("gateway at 127.0.0.1:").toInt(), "#?\r");
    QCOMPARE(socket.readAll().split(';').value(32), QByteArray("X"));
}

void TstVxsim::gatewayOfTheChainFile()
{
    Process process({"--tcp", "0", "--gateway", "0", "--chain", SIM_CHAINS "/demo.chain"});
    QTcpSocket socket;
    talk(&socket, process.lineAfter("gateway at 127.0.0.1:").toInt(), "#?\r");
    const QList<QByteArray> fields = socket.readAll().split(';');
    QCOMPARE(fields.value(17), QByteArray("4711"));
    QCOMPARE(fields.value(32), QByteArray("1"));
}

void TstVxsim::gatewayFaultFileAndRule()
{
    QTemporaryDir folder;
    QFile file(folder.filePath("bad.fault"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("odd field=2 value=old\n");
    file.close();
    Process process(
        {"--gateway", "0", "--gateway-fault", file.fileName(), "--gateway-rule", "odd field=17 value=99"});
    QTcpSocket socket;
    talk(&socket, process.lineAfter("gateway at 127.0.0.1:").toInt(), "#?\r");
    const QList<QByteArray> fields = socket.readAll().split(';');
    QCOMPARE(fields.value(2), QByteArray("old"));
    QCOMPARE(fields.value(17), QByteArray("99"));
}

void TstVxsim::helpNamesTheOptions()
{
    Process process({"--help"});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
    const QString help = QString::fromUtf8(process.readAllStandardOutput());
    for (const char *option :
         {"--chain", "--tcp", "--pty", "--gateway <port>", "--fault", "--fault-rule", "--gateway-fault",
          "--gateway-rule", "--pace", "--images <folder>", "--log", "--seed", "--run-for"})
        QVERIFY2(help.contains(QLatin1String(option)), option);
}

void TstVxsim::paceHoldsOnTheMachinesClock()
{
    constexpr int kPace = 10472;
    constexpr int kTurns = 100;
    Process process({"--tcp", "0", "--pace", QString::number(kPace)});
    const int port = process.lineAfter("listening on 127.0.0.1:").toInt();
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port));
    QVERIFY(socket.waitForConnected());
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < kTurns; ++i) {
        socket.write(kFastRequest);
        while (socket.bytesAvailable() < kFrameSize)
            QVERIFY(socket.waitForReadyRead());
        socket.readAll();
    }
    const double wireMs = 1000.0 * kTurns * (kFastRequest.size() + kFrameSize) / kPace;
    // Never faster than the line. How much slower depends on the load of the machine.
    QVERIFY2(static_cast<double>(clock.elapsed()) >= wireMs - 2,
             qPrintable(QString::number(clock.elapsed())));
    qInfo("%d turns: %lld ms, on the wire %.1f ms", kTurns, clock.elapsed(), wireMs);
}

QTEST_GUILESS_MAIN(TstVxsim)
#include "tst_vxsim.moc"
