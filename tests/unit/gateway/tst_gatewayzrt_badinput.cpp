#include "gatewaypanel.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QtTest>

namespace {

constexpr int kShownOfAPiece = 4096;
constexpr int kShownLines = 2000;

int lines(const GatewayPanel &p)
{
    return p.dialogue().count(QLatin1Char('\n')) + 1;
}

} // namespace

/// A gateway, or something else at its address, that sends what it should not.
class TstGatewayZrtBadInput : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }

    void megabyteWithoutALineEnd_data();
    void megabyteWithoutALineEnd();
    void binaryPiecesDoNoHarm();
    void everyByteAlone();
    void hostileNumbers_data();
    void hostileNumbers();
    void longFieldsDoNoHarm();
};

void TstGatewayZrtBadInput::megabyteWithoutALineEnd_data()
{
    QTest::addColumn<QByteArray>("piece");
    constexpr int kMegabyte = 1024 * 1024;
    QTest::newRow("letters") << QByteArray(kMegabyte, 'x');
    QTest::newRow("zeros") << QByteArray(kMegabyte, '\0');
    QTest::newRow("semicolons") << QByteArray(kMegabyte, ';');
    QTest::newRow("status of semicolons") << "#S;;;2" + QByteArray(kMegabyte, ';');
    QTest::newRow("status of digits") << "#S;;;2;;" + QByteArray(kMegabyte, '7');
    QTest::newRow("line ends") << QByteArray(kMegabyte, '\n');
    QTest::newRow("hashes") << QByteArray(kMegabyte, '#');
}

void TstGatewayZrtBadInput::megabyteWithoutALineEnd()
{
    QFETCH(QByteArray, piece);
    GatewayPanel p;
    QElapsedTimer clock;
    clock.start();
    p.receive(piece);
    QVERIFY2(clock.elapsed() < 5000, "the window would stand still");
    QVERIFY(p.dialogue().size() < kShownOfAPiece + 200);
    QVERIFY(lines(p) <= kShownLines);
    QCOMPARE(p.takeLines(), QByteArray());
    p.receiveStatus({{2, "still alive"}});
    QCOMPARE(p.text("GtwVersion"), QStringLiteral("still alive"));
}

void TstGatewayZrtBadInput::binaryPiecesDoNoHarm()
{
    GatewayPanel p;
    QRandomGenerator random(4711);
    for (int i = 0; i < 2000; ++i) {
        QByteArray piece(int(random.bounded(1, 400)), Qt::Uninitialized);
        for (char &byte : piece)
            byte = static_cast<char>(random.bounded(256));
        if (i % 4 == 0)
            piece.prepend("#S;;;9;");
        p.receive(piece);
    }
    QVERIFY(lines(p) <= kShownLines);
    for (const QByteArray &line : p.takeLines().split('\r'))
        QVERIFY2(line.isEmpty() || line == "#?", line);
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Disconnect"));
    p.receiveStatus({{2, "still alive"}});
    QCOMPARE(p.text("GtwVersion"), QStringLiteral("still alive"));
}

void TstGatewayZrtBadInput::everyByteAlone()
{
    GatewayPanel p;
    for (int byte = 0; byte < 256; ++byte)
        p.receiveStatus({{2, QByteArray("a") + static_cast<char>(byte) + "b"}, {34, "x"}});
    QCOMPARE(p.text("GtwVersion").size(), 3);
    QCOMPARE(p.text("GtwVersion").at(1), QChar(0xFF));
    QCOMPARE(p.takeLines(), QByteArray());
}

void TstGatewayZrtBadInput::hostileNumbers_data()
{
    QTest::addColumn<QByteArray>("number");
    QTest::newRow("huge") << QByteArray("99999999999999999999999999");
    QTest::newRow("2^31") << QByteArray("2147483648");
    QTest::newRow("-2^31") << QByteArray("-2147483648");
    QTest::newRow("2^31 - 1") << QByteArray("2147483647");
    QTest::newRow("2^32") << QByteArray("4294967296");
    QTest::newRow("minus one") << QByteArray("-1");
    QTest::newRow("overflow") << QByteArray("1e400");
    QTest::newRow("not a number") << QByteArray("nan");
    QTest::newRow("infinite") << QByteArray("-inf");
    QTest::newRow("hex") << QByteArray("0x2");
    QTest::newRow("thousand digits") << QByteArray(1000, '9');
    QTest::newRow("zero byte") << QByteArray("2\0002", 3);
    QTest::newRow("percent") << QByteArray("%1%n%s");
}

void TstGatewayZrtBadInput::hostileNumbers()
{
    QFETCH(QByteArray, number);
    GatewayPanel p;
    GatewayPanel::Fields fields;
    for (int field = 5; field < 39; ++field)
        fields[field] = number;
    fields[2] = "V5";
    p.receiveStatus(fields);
    QCOMPARE(p.text("GtwVersion"), QStringLiteral("V5"));
    QCOMPARE(p.marked(), QString());
    QVERIFY(p.index("comboSimultn") <= 0); // none, or the first for what cannot be read
    QVERIFY(p.index("comboActivCOM") <= 0);
    QCOMPARE(p.index("comboPTP"), 0);
    QCOMPARE(p.index("comboMode"), 0);
    QCOMPARE(p.index("comboBoxDataPtcl"), 0);
    QCOMPARE(p.takeLines(), QByteArray());
    p.receiveStatus({{5, "2"}, {31, "1"}, {33, "2"}});
    QCOMPARE(p.index("comboSimultn"), 2);
    QCOMPARE(p.index("comboActivCOM"), 1);
    QCOMPARE(p.index("comboPTP"), 2);
}

void TstGatewayZrtBadInput::longFieldsDoNoHarm()
{
    GatewayPanel p;
    GatewayPanel::Fields fields;
    for (int field : {2, 6, 7, 8, 9, 11, 12, 17, 18, 19, 29, 34, 35, 36, 37, 38})
        fields[field] = QByteArray(100000, 'W');
    const QSize before = p.dialog->size();
    p.receiveStatus(fields);
    p.time.turn();
    QCOMPARE(p.dialog->size(), before);
    p.receiveStatus({{2, "V6"}, {17, "1"}});
    QCOMPARE(p.text("GtwVersion"), QStringLiteral("V6"));
    QCOMPARE(p.text("SerialNo"), QStringLiteral("000001"));
}

QTEST_MAIN(TstGatewayZrtBadInput)
#include "tst_gatewayzrt_badinput.moc"
