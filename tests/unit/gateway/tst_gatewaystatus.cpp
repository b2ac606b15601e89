#include "statuslines.h"

#include <QtTest>

using gateway::ByteOrder;
using gateway::PcmSync;
using gateway::readReply;
using gateway::Reply;
using gateway::SampleFormat;
using gateway::SampleWidth;
using gateway::Status;
using statuslines::describedLine;
using statuslines::kLine;
using statuslines::lineWith;

/// What the fields of a status line say.
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

QTEST_GUILESS_MAIN(TstGatewayStatus)
#include "tst_gatewaystatus.moc"
