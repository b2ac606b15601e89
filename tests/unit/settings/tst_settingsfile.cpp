#include "settings/settingsfile.h"

#include <QBuffer>
#include <QRandomGenerator>
#include <QTextCodec>
#include <QtTest>
#include <algorithm>

using namespace settingsfile;

namespace {

/// What a line means as one text, so that rows can be compared: kind and values between bars.
QString meaning(const QString &line)
{
    struct Printer
    {
        QString operator()(const IgnoredLine &) const { return QStringLiteral("ignored"); }
        QString operator()(const GatewayLine &l) const
        {
            return pair(QStringLiteral("gateway"), l.address, l.port);
        }
        QString operator()(const ServerLine &l) const
        {
            return pair(QStringLiteral("server"), l.address, l.port);
        }
        QString operator()(const PortLine &l) const
        {
            return QStringLiteral("port|") + l.words.join(QLatin1Char('|')) + QLatin1Char('|');
        }
        QString operator()(const ModeLine &l) const { return QStringLiteral("mode|%1|").arg(l.mode); }
        QString operator()(const ReportDirectoryLine &l) const
        {
            return QStringLiteral("report|%1|").arg(l.directory);
        }
        QString operator()(const FirmwareLine &l) const { return QStringLiteral("firmware|%1|").arg(l.path); }

        static QString pair(const QString &kind, const QString &a, const QString &b)
        {
            return kind + QLatin1Char('|') + a + QLatin1Char('|') + b + QLatin1Char('|');
        }
    };
    return std::visit(Printer(), classify(line));
}

QStringList linesOf(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::ReadOnly | QIODevice::Text))
        return {QStringLiteral("not open")};
    return keyLines(buffer);
}

const QByteArray kEmptyFile = "\r\n======[Torvex Configurator ]=========\r\n"
                              "[ACCESS]\r\n"
                              "LastCommand=\r\n"
                              "[Save Location]\r\n"
                              "FILE_DIR=\r\n"
                              "\r\n"
                              "[TCP/IP]\r\n"
                              "ZrtGateway=:\r\n"
                              "MainServer=:\r\n"
                              "[RS232]\r\n"
                              "PORT1=:\r\n"
                              "[Active Mode]\r\n"
                              "Mode=\r\n"
                              "[Firmware File Location]\r\n"
                              "FIRMWR_FILEPATH=\r\n"
                              "\r\n"
                              "\r\n"
                              "--------------EOF------------------";

} // namespace

class TstSettingsFile : public QObject
{
    Q_OBJECT

private slots:
    void emptyValuesGiveTheBareFile();
    void valuesStandBehindTheirKeys();
    void lineEndsInValuesAreLeftOut();
    void lineMeans_data();
    void lineMeans();
    void modesGiveTheirLinkKind_data();
    void modesGiveTheirLinkKind();
    void linkKindsGiveTheirText();
    void linesWithKeysAreReadInOrder();
    void lastLineNeedsNoEnd();
    void utf8IsRead();
    void byteOrderMarkBeforeAKeyIsSkipped();
    void lineOfAnEarlierVersionIsRead_data();
    void lineOfAnEarlierVersionIsRead();
    void lineOfAnEarlierVersionIsReadInTheLocalEncoding();
    void zeroBytesStayInTheLine();
    void invalidUtf8DoesNotHideTheLine();
    void longestLineIsRead();
    void longerLineIsLeftOutAndTheNextIsRead_data();
    void longerLineIsLeftOutAndTheNextIsRead();
    void garbageOfFiftyMegabytesIsRead_data();
    void garbageOfFiftyMegabytesIsRead();
    void randomLinesAreClassified();
    void writtenFileIsReadBack();
};

void TstSettingsFile::emptyValuesGiveTheBareFile()
{
    QCOMPARE(fileText(Values()).toUtf8(), kEmptyFile);
}

void TstSettingsFile::valuesStandBehindTheirKeys()
{
    Values values;
    values.executablePath = QStringLiteral("C:/Program Files/vx/vxconfig.exe");
    values.reportDirectory = QStringLiteral("C:/Users/J\u00fcrgen/Reports");
    values.gatewayAddress = QStringLiteral("192.168.0.62");
    values.gatewayPort = QStringLiteral("7777");
    values.serverAddress = QStringLiteral("192.168.0.63");
    values.serverPort = QStringLiteral("7778");
    values.portName = QStringLiteral("COM5");
    values.serialConfig = QStringLiteral("115200,E,8,1");
    values.activeMode = QStringLiteral("Serial");
    values.firmwarePath = QStringLiteral("D:/fw/a_b.bin");
    const QByteArray expected = "\r\n======[Torvex Configurator ]=========\r\n"
                                "[ACCESS]\r\n"
                                "LastCommand=C:/Program Files/vx/vxconfig.exe\r\n"
                                "[Save Location]\r\n"
                                "FILE_DIR=C:/Users/J\xc3\xbcrgen/Reports\r\n"
                                "\r\n"
                                "[TCP/IP]\r\n"
                                "ZrtGateway=192.168.0.62:7777\r\n"
                                "MainServer=192.168.0.63:7778\r\n"
                                "[RS232]\r\n"
                                "PORT1=COM5:115200,E,8,1\r\n"
                                "[Active Mode]\r\n"
                                "Mode=Serial\r\n"
                                "[Firmware File Location]\r\n"
                                "FIRMWR_FILEPATH=D:/fw/a_b.bin\r\n"
                                "\r\n"
                                "\r\n"
                                "--------------EOF------------------";
    QCOMPARE(fileText(values).toUtf8(), expected);
}

void TstSettingsFile::lineEndsInValuesAreLeftOut()
{
    const QString value = QStringLiteral("\r\na\rb\nc\r\n");
    Values values;
    for (QString *field : {&values.executablePath, &values.reportDirectory, &values.gatewayAddress,
                           &values.gatewayPort, &values.serverAddress, &values.serverPort, &values.portName,
                           &values.serialConfig, &values.activeMode, &values.firmwarePath})
        *field = value;
    const QByteArray text = fileText(values).toUtf8();
    QCOMPARE(text.count("abc"), 10);
    QCOMPARE(text.count('\n'), kEmptyFile.count('\n'));
    QCOMPARE(text.count('\r'), kEmptyFile.count('\r'));
    QByteArray bare = text;
    QCOMPARE(bare.replace("abc", ""), kEmptyFile);
}

void TstSettingsFile::lineMeans_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, const char *line, const char *expected) {
        QTest::newRow(name) << QString::fromUtf8(line) << QString::fromUtf8(expected);
    };
    row("gateway", "ZrtGateway=192.168.0.62:7777", "gateway|192.168.0.62|7777|");
    row("gateway, both empty", "ZrtGateway=:", "gateway|||");
    row("gateway, no port", "ZrtGateway=192.168.0.62", "ignored");
    row("gateway, key alone", "ZrtGateway", "ignored");
    row("gateway, three parts by equal signs", "ZrtGateway=a=b", "gateway|a|b|");
    row("gateway, further parts are dropped", "ZrtGateway=a:1:2=3", "gateway|a|1|");
    row("gateway, address with colons is cut", "ZrtGateway=::1:9999", "gateway|||");
    row("gateway, blanks stay", "ZrtGateway= a : 1 ", "gateway| a | 1 |");
    row("gateway, key inside the line", "# ZrtGateway=a:1", "gateway|a|1|");
    row("gateway, key behind the separators", "x:y:ZrtGateway", "gateway|y|ZrtGateway|");
    row("gateway, wrong case", "zrtgateway=a:1", "ignored");
    row("server", "MainServer=10.0.0.7:7777", "server|10.0.0.7|7777|");
    row("server, both empty", "MainServer=:", "server|||");
    row("server, no port", "MainServer=10.0.0.7", "ignored");
    row("server, wrong case", "Mainserver=a:1", "ignored");
    row("port", "PORT1=COM5:115200,E,8,1", "port|PORT1|COM5|115200|E|8|1|");
    row("port, with a colon in the parameters", "PORT1=COM5:115200:E,8,1", "port|PORT1|COM5|115200|E|8|1|");
    row("port, no parameters", "PORT1=COM5:", "port|PORT1|COM5||");
    row("port, key alone", "PORT1", "port|PORT1|");
    row("port, end of the parameters missing", "PORT1=COM5:115200,E,8,", "port|PORT1|COM5|115200|E|8||");
    row("port, neighbouring separators count once", "PORT1=COM5:,,E", "port|PORT1|COM5|E|");
    row("port, line begins with a separator", "#PORT1=COM5", "port||PORT1|COM5|");
    row("port, underscore and umlaut are word characters", "PORT1=COM_\xc3\xbc:1",
        "port|PORT1|COM_\xc3\xbc|1|");
    row("port, PORT10 counts too", "PORT10=COM5", "port|PORT10|COM5|");
    row("port, wrong case", "port1=COM5", "ignored");
    row("mode serial", "Mode=Serial", "mode|Serial|");
    row("mode TCP", "Mode=TCP", "mode|TCP|");
    row("mode, unknown", "Mode=Infrared", "mode|Infrared|");
    row("mode, empty", "Mode=", "mode||");
    row("mode, key alone", "Mode", "ignored");
    row("mode, heading", "[Active Mode]", "ignored");
    row("mode, second equal sign cuts", "Mode=Serial=x", "mode|Serial|");
    row("mode, blank stays", "Mode=Serial ", "mode|Serial |");
    row("mode, wrong case", "mode=Serial", "ignored");
    row("report", "FILE_DIR=C:/Reports/today", "report|C:/Reports/today|");
    row("report, empty", "FILE_DIR=", "report||");
    row("report, key alone", "FILE_DIR", "ignored");
    row("report, path is cut at an equal sign", "FILE_DIR=C:/a=b/c", "report|C:/a|");
    row("firmware", "FIRMWR_FILEPATH=D:/fw/a_b.bin", "firmware|D:/fw/a_b.bin|");
    row("firmware, empty", "FIRMWR_FILEPATH=", "firmware||");
    row("firmware, key alone", "FIRMWR_FILEPATH", "ignored");
    row("firmware, path is cut at an equal sign", "FIRMWR_FILEPATH=D:/x=y.bin", "firmware|D:/x|");
    row("order: gateway before server", "MainServer=ZrtGateway:1", "gateway|ZrtGateway|1|");
    row("order: server before port", "PORT1=MainServer:1", "server|MainServer|1|");
    row("order: port before mode", "Mode=PORT1", "port|Mode|PORT1|");
    row("order: mode before report", "FILE_DIR=C:/Model", "mode|C:/Model|");
    row("order: report before firmware", "FIRMWR_FILEPATH=/FILE_DIR/x", "report|/FILE_DIR/x|");
    row("order: a report folder with a port's key is a port line", "FILE_DIR=/x/PORT1",
        "port|FILE_DIR|x|PORT1|");
    row("order: an ignored first key hides the others", "ZrtGateway FILE_DIR=x", "ignored");
    row("executable", "LastCommand=C:/vx/vxconfig.exe", "ignored");
    row("executable with a gateway's key", "LastCommand=C:/ZrtGateway/vx.exe",
        "gateway|C|/ZrtGateway/vx.exe|");
    row("executable with a server's key, no drive", "LastCommand=/opt/MainServer/vx", "ignored");
    row("executable with a port's key", "LastCommand=/PORT1/vx", "port|LastCommand|PORT1|vx|");
    row("executable with a mode's key", "LastCommand=/Mode/vx", "mode|/Mode/vx|");
    row("executable with a report's key", "LastCommand=/FILE_DIR/vx", "report|/FILE_DIR/vx|");
    row("executable with a firmware's key", "LastCommand=/FIRMWR_FILEPATH/vx",
        "firmware|/FIRMWR_FILEPATH/vx|");
    row("empty line", "", "ignored");
    row("banner", "======[Torvex Configurator ]=========", "ignored");
    row("access heading", "[ACCESS]", "ignored");
    row("location heading", "[Save Location]", "ignored");
    row("TCP heading", "[TCP/IP]", "ignored");
    row("serial heading", "[RS232]", "ignored");
    row("firmware heading", "[Firmware File Location]", "ignored");
    row("end", "--------------EOF------------------", "ignored");
}

void TstSettingsFile::lineMeans()
{
    QFETCH(QString, line);
    QFETCH(QString, expected);
    QCOMPARE(meaning(line), expected);
}

void TstSettingsFile::modesGiveTheirLinkKind_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<int>("kind");
    QTest::newRow("serial") << "Serial" << 2;
    QTest::newRow("TCP") << "TCP" << 1;
    QTest::newRow("empty") << "" << 0;
    QTest::newRow("serial in lower case") << "serial" << 0;
    QTest::newRow("TCP in lower case") << "tcp" << 0;
    QTest::newRow("serial with a blank") << "Serial " << 0;
    QTest::newRow("other") << "USB" << 0;
}

void TstSettingsFile::modesGiveTheirLinkKind()
{
    QFETCH(QString, mode);
    QFETCH(int, kind);
    QCOMPARE(int(linkKind(mode)), kind);
}

void TstSettingsFile::linkKindsGiveTheirText()
{
    QCOMPARE(modeText(Comm_Type::Serial), QStringLiteral("Serial"));
    QCOMPARE(modeText(Comm_Type::Ethernet), QStringLiteral("TCP"));
    QCOMPARE(modeText(Comm_Type::None), QString());
}

void TstSettingsFile::linesWithKeysAreReadInOrder()
{
    const QStringList expected = {QStringLiteral("Mode=TCP"), QStringLiteral("PORT1=COM5:"),
                                  QStringLiteral("FILE_DIR=x")};
    QCOMPARE(linesOf("\r\nMode=TCP\r\nnothing\r\nPORT1=COM5:\r\nFILE_DIR=x\r\n"), expected);
    QCOMPARE(linesOf("\nMode=TCP\nnothing\nPORT1=COM5:\nFILE_DIR=x\n"), expected);
    QCOMPARE(linesOf(QByteArray()), QStringList());
}

void TstSettingsFile::lastLineNeedsNoEnd()
{
    QCOMPARE(linesOf("Mode=TCP"), QStringList{QStringLiteral("Mode=TCP")});
    QCOMPARE(linesOf("Mode=TCP\r"), QStringList{QStringLiteral("Mode=TCP")});
}

void TstSettingsFile::utf8IsRead()
{
    QCOMPARE(linesOf("FILE_DIR=/home/J\xc3\xbcrgen/\xe2\x82\xac"),
             QStringList{QStringLiteral("FILE_DIR=/home/J\u00fcrgen/\u20ac")});
}

void TstSettingsFile::byteOrderMarkBeforeAKeyIsSkipped()
{
    QCOMPARE(linesOf("\xef\xbb\xbfMode=TCP\r\n"), QStringList{QStringLiteral("Mode=TCP")});
    const QStringList lines = linesOf("\xef\xbb\xbfPORT1=COM5:9600,E,8,1\r\nMode=TCP\r\n");
    QCOMPARE(lines, (QStringList{QStringLiteral("PORT1=COM5:9600,E,8,1"), QStringLiteral("Mode=TCP")}));
    QCOMPARE(meaning(lines.first()), QStringLiteral("port|PORT1|COM5|9600|E|8|1|"));
}

void TstSettingsFile::lineOfAnEarlierVersionIsRead_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("line");
    QTest::newRow("umlauts") << QByteArray("FILE_DIR=/home/J\xfcrgen/Me\xdfwerte")
                             << QStringLiteral("FILE_DIR=/home/J\u00fcrgen/Me\u00dfwerte");
    QTest::newRow("umlaut at the end")
        << QByteArray("FILE_DIR=/home/Bl\xe4") << QStringLiteral("FILE_DIR=/home/Bl\u00e4");
    QTest::newRow("two umlauts that begin as UTF-8")
        << QByteArray("FILE_DIR=/\xc3\xc4x") << QStringLiteral("FILE_DIR=/\u00c3\u00c4x");
    QTest::newRow("zero byte too") << QByteArray("FILE_DIR=\xfc\0x", 12)
                                   << QStringLiteral("FILE_DIR=\u00fc") + QChar(0) + QLatin1Char('x');
    QTest::newRow("UTF-8 stays") << QByteArray("FILE_DIR=J\xc3\xbcrgen")
                                 << QStringLiteral("FILE_DIR=J\u00fcrgen");
}

void TstSettingsFile::lineOfAnEarlierVersionIsRead()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, line);
    // The tests run where the local encoding is UTF-8.
    QCOMPARE(linesOf(bytes), QStringList{line});
}

void TstSettingsFile::lineOfAnEarlierVersionIsReadInTheLocalEncoding()
{
    QTextCodec *before = QTextCodec::codecForLocale();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("windows-1250"));
    const QStringList lines = linesOf("FILE_DIR=/\xb9t\xecp\xe1n\r\nFIRMWR_FILEPATH=/J\xc3\xbcrgen\r\n");
    QTextCodec::setCodecForLocale(before);
    // Each line is looked at alone.
    QCOMPARE(lines, (QStringList{QStringLiteral("FILE_DIR=/\u0105t\u011bp\u00e1n"),
                                 QStringLiteral("FIRMWR_FILEPATH=/J\u00fcrgen")}));
}

void TstSettingsFile::zeroBytesStayInTheLine()
{
    const QStringList lines = linesOf(QByteArray("\0\0Mode=TCP\0x\n\0\0\n", 16));
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines.first().size(), 12);
    QCOMPARE(meaning(lines.first()), QStringLiteral("mode|TCP") + QChar(0) + QStringLiteral("x|"));
}

void TstSettingsFile::invalidUtf8DoesNotHideTheLine()
{
    QCOMPARE(linesOf("\xff\xfe Mode=TCP").size(), 1);
    QCOMPARE(meaning(linesOf("\xff\xfe Mode=TCP").first()), QStringLiteral("mode|TCP|"));
}

void TstSettingsFile::longestLineIsRead()
{
    const QByteArray key = "FILE_DIR=";
    const QByteArray longest = key + QByteArray(kMaxLineLength - key.size(), 'x');
    QCOMPARE(linesOf(longest), QStringList{QString::fromLatin1(longest)});
    QCOMPARE(linesOf(longest + "\nMode=TCP\n"),
             (QStringList{QString::fromLatin1(longest), QStringLiteral("Mode=TCP")}));
}

void TstSettingsFile::longerLineIsLeftOutAndTheNextIsRead_data()
{
    QTest::addColumn<int>("length");
    QTest::newRow("one more") << kMaxLineLength + 1;
    QTest::newRow("two more") << kMaxLineLength + 2;
    QTest::newRow("twice") << 2 * kMaxLineLength;
    QTest::newRow("twice and one") << 2 * kMaxLineLength + 1;
    QTest::newRow("twice and two") << 2 * kMaxLineLength + 2;
    QTest::newRow("twice and three") << 2 * kMaxLineLength + 3;
    QTest::newRow("ten times") << 10 * kMaxLineLength;
}

void TstSettingsFile::longerLineIsLeftOutAndTheNextIsRead()
{
    QFETCH(int, length);
    // A key at both ends, so that no piece of the line may be taken for a line of its own.
    QByteArray line = "Mode=Serial" + QByteArray(length, 'x') + "Mode=Serial";
    line = line.left(11) + line.right(length - 11);
    QCOMPARE(line.size(), length);
    QCOMPARE(linesOf(line), QStringList());
    QCOMPARE(linesOf(line + "\nMode=TCP"), QStringList{QStringLiteral("Mode=TCP")});
    QCOMPARE(linesOf(line + "\r\nMode=TCP\r\n" + line), QStringList{QStringLiteral("Mode=TCP")});
}

void TstSettingsFile::garbageOfFiftyMegabytesIsRead_data()
{
    QTest::addColumn<QByteArray>("block");
    QByteArray noise(1 << 16, '\0');
    QRandomGenerator random(7);
    for (char &byte : noise)
        byte = char(random.bounded(256));
    QTest::newRow("noise") << noise;
    QTest::newRow("zero bytes") << QByteArray(1 << 16, '\0');
    QTest::newRow("line ends") << QByteArray(1 << 16, '\n');
    QTest::newRow("carriage returns") << QByteArray(1 << 16, '\r');
    QTest::newRow("one line of separators with keys") << QByteArray("PORT1=,:").repeated(1 << 13);
}

void TstSettingsFile::garbageOfFiftyMegabytesIsRead()
{
    QFETCH(QByteArray, block);
    const QByteArray garbage = block.repeated(50 * 16);
    QVERIFY(garbage.size() >= 50 * 1024 * 1024);
    QCOMPARE(linesOf(garbage + "\nMode=TCP\n"), QStringList{QStringLiteral("Mode=TCP")});
}

void TstSettingsFile::randomLinesAreClassified()
{
    // Random mixtures of keys and separators; none may crash. Each is known by its first key, if it has as
    // many separators as the lines of that key need.
    struct Key
    {
        QString text;
        QString kind;
        QString separators;
        int needed;
    };
    const QList<Key> keys = {
        {QStringLiteral("ZrtGateway"), QStringLiteral("gateway"), QStringLiteral("=:"), 2},
        {QStringLiteral("MainServer"), QStringLiteral("server"), QStringLiteral("=:"), 2},
        {QStringLiteral("PORT1"), QStringLiteral("port"), QString(), 0},
        {QStringLiteral("Mode"), QStringLiteral("mode"), QStringLiteral("="), 1},
        {QStringLiteral("FILE_DIR"), QStringLiteral("report"), QStringLiteral("="), 1},
        {QStringLiteral("FIRMWR_FILEPATH"), QStringLiteral("firmware"), QStringLiteral("="), 1}};
    QStringList pieces = {QStringLiteral("="), QStringLiteral(":"), QString(QChar(0)),
                          QStringLiteral("\u00fc"), QStringLiteral("x")};
    for (const Key &key : keys)
        pieces.append(key.text);
    QRandomGenerator random(11);
    QMap<QString, int> seen;
    for (int i = 0; i < 5000; ++i) {
        QString line;
        const int length = random.bounded(8);
        for (int j = 0; j < length; ++j)
            line += pieces.at(random.bounded(pieces.size()));
        const auto key = std::find_if(keys.begin(), keys.end(), [&line](const Key &candidate) {
            return line.contains(candidate.text);
        });
        QString expected = QStringLiteral("ignored");
        if (key != keys.end()) {
            const auto separators = std::count_if(line.begin(), line.end(),
                                                  [key](QChar c) { return key->separators.contains(c); });
            if (separators >= key->needed)
                expected = key->kind;
        }
        QVERIFY2(meaning(line).section(QLatin1Char('|'), 0, 0) == expected, qPrintable(line));
        ++seen[expected];
    }
    QCOMPARE(seen.size(), keys.size() + 1);
}

void TstSettingsFile::writtenFileIsReadBack()
{
    Values values;
    values.reportDirectory = QStringLiteral("/home/\u00e4\u00f6\u00fc/\U0001F4C1");
    values.gatewayAddress = QStringLiteral("1.2.3.4");
    values.gatewayPort = QStringLiteral("5");
    values.serverAddress = QStringLiteral("6.7.8.9");
    values.serverPort = QStringLiteral("10");
    values.portName = QStringLiteral("COM77");
    values.serialConfig = QStringLiteral("9600,N,7,2");
    values.activeMode = QStringLiteral("TCP");
    values.firmwarePath = QStringLiteral("/fw/\u00df.bin");
    QStringList meanings;
    const QStringList lines = linesOf(fileText(values).toUtf8());
    for (const QString &line : lines)
        meanings.append(meaning(line));
    QCOMPARE(meanings,
             (QStringList{QStringLiteral("report|/home/\u00e4\u00f6\u00fc/\U0001F4C1|"),
                          QStringLiteral("gateway|1.2.3.4|5|"), QStringLiteral("server|6.7.8.9|10|"),
                          QStringLiteral("port|PORT1|COM77|9600|N|7|2|"), QStringLiteral("ignored"),
                          QStringLiteral("mode|TCP|"), QStringLiteral("firmware|/fw/\u00df.bin|")}));
}

QTEST_GUILESS_MAIN(TstSettingsFile)
#include "tst_settingsfile.moc"
