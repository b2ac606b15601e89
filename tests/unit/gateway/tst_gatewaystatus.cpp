#include "gateway/gatewaystatus.h"

#include <QElapsedTimer>
#include <QMap>
#include <QRandomGenerator>
#include <QtTest>

using gateway::ByteOrder;
using gateway::PcmSync;
using gateway::readReply;
using gateway::Reply;
using gateway::SampleFormat;
using gateway::SampleWidth;
using gateway::Status;

namespace {

constexpr int kMegabyte = 1024 * 1024;

const QString kLine =
    QStringLiteral("#S;;1.07;2;;3;2500;16;TCP-C;L;18;192.168.0.22;5675;2s;;;;123;41.5;33.25;;;;;;;;;60000;"
                   "1772440200;;2;1;2;SLAVE;-17;10;700;IENA-1");

/// A valid line of 39 fields with these in it, and nothing else.
QString lineWith(const QMap<int, QString> &fields)
{
    QStringList texts;
    for (int number = 0; number < 39; ++number)
        texts.append(fields.value(number));
    if (!fields.contains(0))
        texts[0] = QStringLiteral("#S");
    if (!fields.contains(3))
        texts[3] = QStringLiteral("2");
    return texts.join(QLatin1Char(';'));
}

template <typename Value>
QString numberOf(const std::optional<Value> &value)
{
    return value ? QString::number(static_cast<double>(*value)) : QStringLiteral("none");
}

/// What the status tells, as text: what differs from that of a line without any values.
QString described(const Status &status)
{
    const QList<QStringList> all{
        {"version", status.version, QString()},
        {"simulation", QString::number(status.simulation), "0"},
        {"bitRate", status.bitRate, QString()},
        {"channels", status.channelCount, QString()},
        {"mode", numberOf(status.mode), "none"},
        {"order", numberOf(status.byteOrder), "none"},
        {"width", numberOf(status.sampleWidth), "none"},
        {"address", status.extAddress, QString()},
        {"port", status.extPort, QString()},
        {"format", numberOf(status.sampleFormat), "none"},
        {"serial", status.serialNumber, "000000"},
        {"core", status.coreTemperature, QString()},
        {"pcb", status.pcbTemperature, QString()},
        {"highest", numberOf(status.highestRate), "none"},
        {"time", status.unixTime, QString()},
        {"com", QString::number(status.activeCom), "0"},
        {"pcm", numberOf(status.pcmSync), "none"},
        {"ptp", QString::number(status.ptpMode), "0"},
        {"state", status.ptpState, QString()},
        {"accuracy", status.ptpAccuracy, QString()},
        {"min", status.minimumSamples, QString()},
        {"max", status.maximumSamples, QString()},
        {"protocol", numberOf(status.dataProtocol), "none"},
    };
    QStringList told;
    for (const QStringList &entry : all) {
        if (entry.at(1) != entry.at(2))
            told.append(entry.at(0) + QLatin1Char('=') + entry.at(1));
    }
    return told.join(QLatin1Char(' '));
}

QString describedLine(const QString &piece)
{
    const Reply reply = readReply(piece);
    return reply.status ? described(*reply.status) : QStringLiteral("no status");
}

} // namespace

/// What the received pieces say.
class TstGatewayStatus : public QObject
{
    Q_OBJECT

private slots:
    void aWholeLine();
    void aField_data();
    void aField();
    void fieldsWithoutMeaningAreIgnored_data();
    void fieldsWithoutMeaningAreIgnored();
    void guard_data();
    void guard();
    void missingFieldsReadAsEmpty();
    void furtherFieldsAreIgnored();
    void fieldsAreCountedFromTheBeginningOfThePiece();
    void theLineEndsAtItsLineEnd_data();
    void theLineEndsAtItsLineEnd();
    void theFirstOfTwoLinesCounts();
    void aStatusHidesPromptAndNewAddress_data();
    void aStatusHidesPromptAndNewAddress();
    void tag_data();
    void tag();
    void promptAndNewAddress_data();
    void promptAndNewAddress();
    void headsOfALine();
    void tailsOfALineSayNothing();
    void cutPromptsSayNothing();
    void zeroBytesDoNotEndTheText();
    void aMegabyte_data();
    void aMegabyte();
    void flippedBits();
    void randomBytes();
};

void TstGatewayStatus::aWholeLine()
{
    const Reply reply = readReply(kLine);
    QVERIFY(reply.isStatus);
    QVERIFY(reply.status);
    const Status &status = *reply.status;
    QCOMPARE(status.version, QStringLiteral("1.07"));
    QCOMPARE(status.simulation, 3);
    QCOMPARE(status.bitRate, QStringLiteral("2500"));
    QCOMPARE(status.channelCount, QStringLiteral("16"));
    QCOMPARE(status.mode, std::optional<int>(4));
    QCOMPARE(status.byteOrder, std::optional<ByteOrder>(ByteOrder::Little));
    QCOMPARE(status.sampleWidth, std::optional<SampleWidth>(SampleWidth::Bits18));
    QCOMPARE(status.extAddress, QStringLiteral("192.168.0.22"));
    QCOMPARE(status.extPort, QStringLiteral("5675"));
    QCOMPARE(status.sampleFormat, std::optional<SampleFormat>(SampleFormat::TwosComplement));
    QCOMPARE(status.serialNumber, QStringLiteral("000123"));
    QCOMPARE(status.coreTemperature, QStringLiteral("41.5"));
    QCOMPARE(status.pcbTemperature, QStringLiteral("33.25"));
    QCOMPARE(status.highestRate, std::optional<double>(60000));
    QCOMPARE(status.unixTime, QStringLiteral("1772440200"));
    QCOMPARE(status.activeCom, 2);
    QCOMPARE(status.pcmSync, std::optional<PcmSync>(PcmSync::Present));
    QCOMPARE(status.ptpMode, 2);
    QCOMPARE(status.ptpState, QStringLiteral("SLAVE"));
    QCOMPARE(status.ptpAccuracy, QStringLiteral("-17"));
    QCOMPARE(status.minimumSamples, QStringLiteral("10"));
    QCOMPARE(status.maximumSamples, QStringLiteral("700"));
    QCOMPARE(status.dataProtocol, std::optional<int>(1));
}

void TstGatewayStatus::aField_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("told");
    const auto row = [](int field, const char *text, const char *told) {
        QTest::addRow("%d '%s'", field, text)
            << field << QString::fromLatin1(text) << QString::fromLatin1(told);
    };
    // Shown as they come.
    row(2, "1.07 beta", "version=1.07 beta");
    row(2, "\xe4", "version=\xe4");
    row(6, "2500", "bitRate=2500");
    row(7, "16", "channels=16");
    row(11, "10.0.0.1", "address=10.0.0.1");
    row(12, "5675", "port=5675");
    row(18, "41.5", "core=41.5");
    row(19, "-3", "pcb=-3");
    row(29, "1772440200", "time=1772440200");
    row(34, "LISTENING", "state=LISTENING");
    row(35, "-17", "accuracy=-17");
    row(36, "10", "min=10");
    row(37, "700", "max=700");
    // Indices, which may be beyond the list.
    row(5, "8", "simulation=8");
    row(5, "9", "simulation=9");
    row(5, "-1", "simulation=-1");
    row(5, "", "");
    row(5, "x", "");
    row(5, "1.5", "");
    row(5, "99999999999", "");
    row(31, "3", "com=3");
    row(31, "4", "com=4");
    row(31, "COM1", "");
    row(33, "1", "ptp=1");
    row(33, "2", "ptp=2");
    row(33, "0", "");
    row(33, "3", "");
    row(33, "-1", "");
    row(33, "x", "");
    // Texts of a list; others tell nothing.
    row(8, "UDP-B", "mode=0");
    row(8, "UDP-M", "mode=1");
    row(8, "UDP-U", "mode=2");
    row(8, "TCP-S", "mode=3");
    row(8, "TCP-C", "mode=4");
    row(8, "OFF", "mode=5");
    row(8, "UDP", "");
    row(8, "off", "");
    row(8, " OFF", "");
    row(8, "UDP-BX", "");
    row(9, "B", "order=0");
    row(9, "L", "order=1");
    row(9, "b", "");
    row(9, "BL", "");
    row(10, "16", "width=0");
    row(10, "18", "width=1");
    row(10, "24", "");
    row(10, "16.0", "");
    row(13, "U", "format=0");
    row(13, "Unsigned", "format=0");
    row(13, "2", "format=1");
    row(13, "2's", "format=1");
    row(13, "u", "");
    row(13, " U", "");
    row(32, "X", "pcm=0");
    row(32, "0", "pcm=1");
    row(32, "1", "pcm=2");
    row(32, "x", "");
    row(32, "2", "");
    row(32, "10", "");
    row(38, "ZRT-1", "protocol=0");
    row(38, "IENA-1", "protocol=1");
    row(38, "IENA", "");
    row(38, "zrt-1", "");
    // At least six characters.
    row(17, "", "");
    row(17, "123", "serial=000123");
    row(17, "12345", "serial=012345");
    row(17, "123456", "serial=123456");
    row(17, "1234567", "serial=1234567");
    row(17, "AB", "serial=0000AB");
    // A number, if it is readable.
    row(28, "60000", "highest=60000");
    row(28, "62500.5", "highest=62500.5");
    row(28, "0", "highest=0");
    row(28, "-1", "highest=-1");
    row(28, "1e3", "highest=1000");
    row(28, "", "");
    row(28, "x", "");
    row(28, "60000x", "");
    row(28, "60,000", "");
    row(28, "inf", "");
    row(28, "-inf", "");
    row(28, "nan", "");
    row(28, "1e999", "");
}

void TstGatewayStatus::aField()
{
    QFETCH(int, field);
    QFETCH(QString, text);
    QTEST(describedLine(lineWith({{field, text}})), "told");
}

void TstGatewayStatus::fieldsWithoutMeaningAreIgnored_data()
{
    QTest::addColumn<int>("field");
    for (const int field : {1, 4, 14, 15, 16, 20, 21, 22, 23, 24, 25, 26, 27, 30})
        QTest::addRow("%d", field) << field;
}

void TstGatewayStatus::fieldsWithoutMeaningAreIgnored()
{
    QFETCH(int, field);
    QCOMPARE(describedLine(lineWith({{field, QStringLiteral("1")}})), QString());
}

void TstGatewayStatus::guard_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    QTest::newRow("1") << QStringLiteral("1") << false;
    QTest::newRow("2") << QStringLiteral("2") << true;
    QTest::newRow("1.0") << QStringLiteral("1.0") << false;
    QTest::newRow("1.001") << QStringLiteral("1.001") << true;
    QTest::newRow("1e1") << QStringLiteral("1e1") << true;
    QTest::newRow("1000000000000") << QStringLiteral("1000000000000") << true;
    QTest::newRow("0") << QStringLiteral("0") << false;
    QTest::newRow("negative") << QStringLiteral("-2") << false;
    QTest::newRow("empty") << QString() << false;
    QTest::newRow("text") << QStringLiteral("two") << false;
    QTest::newRow("number and text") << QStringLiteral("2x") << false;
    QTest::newRow("comma") << QStringLiteral("2,5") << false;
    QTest::newRow("infinite") << QStringLiteral("inf") << false;
    QTest::newRow("not a number") << QStringLiteral("nan") << false;
    QTest::newRow("beyond a double") << QStringLiteral("1e999") << false;
}

void TstGatewayStatus::guard()
{
    QFETCH(QString, text);
    const Reply reply = readReply(lineWith({{3, text}}));
    QVERIFY(reply.isStatus);
    QTEST(reply.status.has_value(), "valid");
}

void TstGatewayStatus::missingFieldsReadAsEmpty()
{
    const QStringList fields = kLine.split(QLatin1Char(';'));
    QCOMPARE(fields.size(), 39);
    for (int count = 1; count < fields.size(); ++count) {
        QMap<int, QString> present{{3, QString()}};
        for (int field = 0; field < count; ++field)
            present[field] = fields.at(field);
        const QString cut = QStringList(fields.mid(0, count)).join(QLatin1Char(';'));
        QCOMPARE(describedLine(cut), describedLine(lineWith(present)));
        QCOMPARE(readReply(cut).status.has_value(), count > 3);
    }
}

void TstGatewayStatus::furtherFieldsAreIgnored()
{
    const QString whole = describedLine(kLine);
    QCOMPARE(describedLine(kLine + QStringLiteral(";")), whole);
    QCOMPARE(describedLine(kLine + QStringLiteral(";more;#S;]----;5")), whole);
}

void TstGatewayStatus::fieldsAreCountedFromTheBeginningOfThePiece()
{
    QCOMPARE(describedLine(QStringLiteral("hello #S;1;7.5;2")), QStringLiteral("version=7.5"));
    QCOMPARE(describedLine(QStringLiteral("a;b;c;4;#S;6")), QStringLiteral("version=c simulation=6"));
    QCOMPARE(describedLine(QStringLiteral("[root]----\r\n#S;1;7.5;2")), QStringLiteral("version=7.5"));
    // Pushed along by one.
    QCOMPARE(describedLine(QStringLiteral(";#S;1;7.5;2")), QStringLiteral("version=1"));
    QCOMPARE(describedLine(QStringLiteral("x;y;z;1;#S;;7.5;2")), QStringLiteral("no status"));
}

void TstGatewayStatus::theLineEndsAtItsLineEnd_data()
{
    QTest::addColumn<QString>("behind");
    QTest::newRow("CR") << QStringLiteral("\r");
    QTest::newRow("LF") << QStringLiteral("\n");
    QTest::newRow("CR LF") << QStringLiteral("\r\n");
    QTest::newRow("prompt") << QStringLiteral("\r\n[root]----");
    QTest::newRow("prompt behind LF") << QStringLiteral("\n[root]----");
    QTest::newRow("new address") << QStringLiteral("\r[NEW IP ADDRESS 10.0.0.1]");
    QTest::newRow("fields") << QStringLiteral("\r;1;2;3;4");
}

void TstGatewayStatus::theLineEndsAtItsLineEnd()
{
    QFETCH(QString, behind);
    QCOMPARE(describedLine(kLine + behind), describedLine(kLine));
    // What follows a short line is no field of it.
    QCOMPARE(describedLine(QStringLiteral("#S;;1.07;2") + behind), QStringLiteral("version=1.07"));
}

void TstGatewayStatus::theFirstOfTwoLinesCounts()
{
    QCOMPARE(describedLine(QStringLiteral("#S;;old;2;;1\r\n#S;;new;2;;4\r\n")),
             QStringLiteral("version=old simulation=1"));
    QCOMPARE(describedLine(QStringLiteral("#S;;old;1\r\n#S;;new;2\r\n")), QStringLiteral("no status"));
}

void TstGatewayStatus::aStatusHidesPromptAndNewAddress_data()
{
    QTest::addColumn<QString>("piece");
    QTest::newRow("prompt behind") << kLine + QStringLiteral("\r\n[root]----");
    QTest::newRow("prompt in front") << QStringLiteral("[root]----") + kLine;
    QTest::newRow("new address behind") << kLine + QStringLiteral("\r\n[NEW IP ADDRESS");
    QTest::newRow("new address in front") << QStringLiteral("[NEW IP ADDRESS") + kLine;
    QTest::newRow("a line that is not valid") << QStringLiteral("#S [root]---- [NEW IP ADDRESS");
}

void TstGatewayStatus::aStatusHidesPromptAndNewAddress()
{
    QFETCH(QString, piece);
    const Reply reply = readReply(piece);
    QVERIFY(reply.isStatus);
    QVERIFY(!reply.hasPrompt);
    QVERIFY(!reply.hasNewAddress);
}

void TstGatewayStatus::tag_data()
{
    QTest::addColumn<QString>("piece");
    QTest::addColumn<bool>("found");
    QTest::newRow("alone") << QStringLiteral("#S") << true;
    QTest::newRow("within a word") << QStringLiteral("xx#Syy") << true;
    QTest::newRow("at the end") << QStringLiteral("1;2;3;4;#S") << true;
    QTest::newRow("behind another #") << QStringLiteral("##S") << true;
    QTest::newRow("small letter") << QStringLiteral("#s;;;2") << false;
    QTest::newRow("in two") << QStringLiteral("# S;;;2") << false;
    QTest::newRow("half") << QStringLiteral("#") << false;
    QTest::newRow("the request's echo") << QStringLiteral("#?") << false;
    QTest::newRow("empty") << QString() << false;
}

void TstGatewayStatus::tag()
{
    QFETCH(QString, piece);
    QTEST(readReply(piece).isStatus, "found");
}

void TstGatewayStatus::promptAndNewAddress_data()
{
    QTest::addColumn<QString>("piece");
    QTest::addColumn<bool>("prompt");
    QTest::addColumn<bool>("newAddress");
    QTest::newRow("empty") << QString() << false << false;
    QTest::newRow("prompt") << QStringLiteral("]----") << true << false;
    QTest::newRow("prompt within") << QStringLiteral("\r\n[root]----> ") << true << false;
    QTest::newRow("longer prompt") << QStringLiteral("]-----") << true << false;
    QTest::newRow("short prompt") << QStringLiteral("]---") << false << false;
    QTest::newRow("without bracket") << QStringLiteral("-----") << false << false;
    QTest::newRow("address") << QStringLiteral("[NEW IP ADDRESS") << false << true;
    QTest::newRow("address told") << QStringLiteral("ok [NEW IP ADDRESS 10.0.0.1]\r\n") << false << true;
    QTest::newRow("short address") << QStringLiteral("[NEW IP ADDRES") << false << false;
    QTest::newRow("no bracket") << QStringLiteral("NEW IP ADDRESS") << false << false;
    QTest::newRow("small letters") << QStringLiteral("[new ip address") << false << false;
    QTest::newRow("both") << QStringLiteral("[NEW IP ADDRESS]----") << true << true;
}

void TstGatewayStatus::promptAndNewAddress()
{
    QFETCH(QString, piece);
    const Reply reply = readReply(piece);
    QVERIFY(!reply.isStatus);
    QVERIFY(!reply.status);
    QTEST(reply.hasPrompt, "prompt");
    QTEST(reply.hasNewAddress, "newAddress");
}

void TstGatewayStatus::headsOfALine()
{
    constexpr int kTagSize = 2;
    const int guardEnd = QStringLiteral("#S;;1.07;2").size();
    for (int cut = 0; cut <= kLine.size(); ++cut) {
        const QString head = kLine.left(cut);
        const Reply reply = readReply(head);
        QCOMPARE(reply.isStatus, cut >= kTagSize);
        QCOMPARE(reply.status.has_value(), cut >= guardEnd);
        QVERIFY(!reply.hasPrompt);
        if (reply.status) // the last field may be cut short, those behind it are missing
            QCOMPARE(described(*reply.status), describedLine(head + QString(39, QLatin1Char(';'))));
    }
    QCOMPARE(readReply(kLine.left(kLine.size() - 1)).status->dataProtocol, std::optional<int>());
    QCOMPARE(readReply(kLine.left(kLine.size() - 1)).status->maximumSamples, QStringLiteral("700"));
}

void TstGatewayStatus::tailsOfALineSayNothing()
{
    for (int cut = 1; cut <= kLine.size(); ++cut) {
        const Reply reply = readReply(kLine.mid(cut));
        QVERIFY(!reply.isStatus);
        QVERIFY(!reply.status);
        QVERIFY(!reply.hasPrompt);
        QVERIFY(!reply.hasNewAddress);
    }
}

void TstGatewayStatus::cutPromptsSayNothing()
{
    for (const QString &whole : {QStringLiteral("]----"), QStringLiteral("[NEW IP ADDRESS")}) {
        for (int cut = 1; cut < whole.size(); ++cut) {
            for (const QString &piece : {whole.left(cut), whole.mid(cut)}) {
                QVERIFY(!readReply(piece).hasPrompt);
                QVERIFY(!readReply(piece).hasNewAddress);
            }
        }
    }
}

void TstGatewayStatus::zeroBytesDoNotEndTheText()
{
    const QString zeros(3, QChar(0));
    QCOMPARE(describedLine(zeros + kLine), describedLine(kLine));
    QVERIFY(readReply(zeros + QStringLiteral("]----")).hasPrompt);
    QCOMPARE(readReply(lineWith({{2, zeros}})).status->version, zeros);
}

void TstGatewayStatus::aMegabyte_data()
{
    QTest::addColumn<QString>("piece");
    QTest::addColumn<QString>("told");
    const QString no = QStringLiteral("no status");
    const QString separators(kMegabyte, QLatin1Char(';'));
    const QString nines(kMegabyte, QLatin1Char('9'));
    QTest::newRow("zero bytes") << QString(kMegabyte, QChar(0)) << no;
    QTest::newRow("separators") << separators << no;
    QTest::newRow("tag and separators") << QStringLiteral("#S") + separators << no;
    QTest::newRow("separators and tag") << separators + QStringLiteral("#S") << no;
    QTest::newRow("valid, then separators")
        << QStringLiteral("#S;;1.07;2") + separators << QStringLiteral("version=1.07");
    QTest::newRow("tags") << QStringLiteral("#S").repeated(kMegabyte / 2) << no;
    QTest::newRow("fields of tags") << QStringLiteral("#S;").repeated(kMegabyte / 3) << no;
    QTest::newRow("half tags") << QString(kMegabyte, QLatin1Char('#')) << no;
    QTest::newRow("half prompts") << QStringLiteral("]---").repeated(kMegabyte / 4) << no;
    QTest::newRow("half addresses") << QStringLiteral("[NEW IP ADDRES").repeated(kMegabyte / 14) << no;
    QTest::newRow("line ends") << QStringLiteral("#S") + QString(kMegabyte, QLatin1Char('\r')) << no;
    QTest::newRow("guard of digits") << QStringLiteral("#S;;;") + nines << no;
    QTest::newRow("index of digits") << lineWith({{5, nines}}) << QString();
    QTest::newRow("limit of digits") << lineWith({{28, nines}}) << QString();
    QTest::newRow("serial number") << lineWith({{17, nines}}) << QStringLiteral("serial=") + nines;
}

void TstGatewayStatus::aMegabyte()
{
    constexpr int kLimitMs = 5000; // for work that grows with the size; with its square it takes minutes
    QFETCH(QString, piece);
    QElapsedTimer timer;
    timer.start();
    const QString found = describedLine(piece);
    QVERIFY2(timer.elapsed() < kLimitMs, qPrintable(QString::number(timer.elapsed())));
    QFETCH(QString, told);
    QVERIFY2(found == told, qPrintable(found.left(100)));
}

void TstGatewayStatus::flippedBits()
{
    constexpr int kTagSize = 2;
    const QByteArray line = kLine.toLatin1();
    for (int bit = 0; bit < line.size() * 8; ++bit) {
        QByteArray damaged = line;
        damaged[bit / 8] = char(damaged.at(bit / 8) ^ (1 << bit % 8));
        const Reply reply = readReply(QString::fromLatin1(damaged.constData(), damaged.size()));
        QCOMPARE(reply.isStatus, bit >= kTagSize * 8);
        QVERIFY(!reply.hasPrompt);
    }
}

void TstGatewayStatus::randomBytes()
{
    QRandomGenerator random(20260302);
    const QByteArray telling("#S;]-[\r\n2N \0\xff", 13);
    for (int round = 0; round < 20000; ++round) {
        QByteArray bytes(random.bounded(300), '\0');
        for (char &byte : bytes)
            byte = round % 2 ? char(random.bounded(256)) : telling.at(random.bounded(telling.size()));
        const Reply reply = readReply(QString::fromLatin1(bytes.constData(), bytes.size()));
        const bool tagged = bytes.contains("#S");
        QCOMPARE(reply.isStatus, tagged);
        QVERIFY(tagged || !reply.status);
        QCOMPARE(reply.hasPrompt, !tagged && bytes.contains("]----"));
        QVERIFY(!reply.hasNewAddress);
    }
}

QTEST_GUILESS_MAIN(TstGatewayStatus)
#include "tst_gatewaystatus.moc"
