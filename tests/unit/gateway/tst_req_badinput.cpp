#include "reqpanel.h"

#include <QElapsedTimer>
#include <QRandomGenerator>

namespace {

constexpr int kShownOfAPiece = 4096;
constexpr int kShownLines = 2000;

int lines(const ReqPanel &p)
{
    return p.dialogue().count(QLatin1Char('\n')) + 1;
}

} // namespace

/// A gateway, or something else at its address, that sends what it should not.
class TstReqBadInput : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }

    void megabyteWithoutALineEnd_data();
    void megabyteWithoutALineEnd();
    void pieceAtTheBoundIsShownWhole();
    void pieceAboveTheBoundTellsHowMuchMoreCame();
    void manyPiecesKeepTheDialogueBounded();
    void oneByteAtATime();
    void binaryPiecesDoNoHarm();
    void everyByteAlone();
    void statusWithAHundredThousandFields();
    void statusBeyondTheShownPartIsRead();
    void hostileNumbers_data();
    void hostileNumbers();
    void longFieldsDoNoHarm();
    void markupStaysText();
    void promptFloodIsAnsweredPieceByPiece();
    void cutStatusAtEachPlace();
};

void TstReqBadInput::megabyteWithoutALineEnd_data()
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

void TstReqBadInput::megabyteWithoutALineEnd()
{
    QFETCH(QByteArray, piece);
    ReqPanel p;
    QElapsedTimer clock;
    clock.start();
    p.receive(piece);
    QVERIFY2(clock.elapsed() < 5000, "the window would stand still");
    QVERIFY(p.dialogue().size() < kShownOfAPiece + 200);
    QVERIFY(lines(p) <= kShownLines);
    QCOMPARE(p.sent(), QByteArray());
    p.report({{2, "still alive"}});
    QCOMPARE(p.text("GtwVersion"), QStringLiteral("still alive"));
}

void TstReqBadInput::pieceAtTheBoundIsShownWhole()
{
    ReqPanel p;
    p.receive(QByteArray(kShownOfAPiece, 'x'));
    QCOMPARE(p.shown(), QString(kShownOfAPiece, QLatin1Char('x')) + '\n');
}

void TstReqBadInput::pieceAboveTheBoundTellsHowMuchMoreCame()
{
    ReqPanel p;
    p.receive(QByteArray(kShownOfAPiece, 'x') + QByteArray(321, 'y'));
    const QString shown = p.shown();
    QVERIFY(shown.startsWith(QString(kShownOfAPiece, QLatin1Char('x'))));
    const QString note = shown.mid(kShownOfAPiece);
    QVERIFY2(note.contains(QStringLiteral("321")), qPrintable(note));
    QVERIFY(!note.contains(QStringLiteral("yy")));
    QVERIFY(note.endsWith('\n'));
}

void TstReqBadInput::manyPiecesKeepTheDialogueBounded()
{
    ReqPanel p;
    for (int i = 0; i < 5000; ++i)
        p.receive("piece " + QByteArray::number(i));
    QVERIFY(lines(p) <= kShownLines);
    QVERIFY(lines(p) > kShownLines / 2);
    QVERIFY(p.dialogue().contains(QStringLiteral("piece 4999\n")));
    QVERIFY(p.dialogue().contains(QStringLiteral("piece 3500\n")));
    QVERIFY(!p.dialogue().contains(QStringLiteral("piece 1\n")));
    p.click("debugBtn");
    QVERIFY(p.dialogue().endsWith(QStringLiteral("piece 4999\n#000_1\n")));
}

void TstReqBadInput::oneByteAtATime()
{
    ReqPanel p;
    const QByteArray all = ReqPanel::status({{2, "V5"}}) + "\r\n[gw]----";
    for (const char byte : all)
        p.receive(QByteArray(1, byte));
    QCOMPARE(p.text("GtwVersion"), QString()); // pieces are not put together
    QCOMPARE(p.sent(), QByteArray());
    p.time.advance(1000);
    QCOMPARE(p.sent(), QByteArray("#?\r"));
}

void TstReqBadInput::binaryPiecesDoNoHarm()
{
    ReqPanel p;
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
    for (const QByteArray &line : p.sent().split('\r'))
        QVERIFY2(line.isEmpty() || line == "#?", line);
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Disconnect"));
    p.report({{2, "still alive"}});
    QCOMPARE(p.text("GtwVersion"), QStringLiteral("still alive"));
}

void TstReqBadInput::everyByteAlone()
{
    ReqPanel p;
    for (int byte = 0; byte < 256; ++byte)
        p.report({{2, QByteArray("a") + static_cast<char>(byte) + "b"}, {34, "x"}});
    QCOMPARE(p.text("GtwVersion").size(), 3);
    QCOMPARE(p.text("GtwVersion").at(1), QChar(0xFF));
    QCOMPARE(p.sent(), QByteArray());
}

void TstReqBadInput::statusWithAHundredThousandFields()
{
    ReqPanel p;
    QElapsedTimer clock;
    clock.start();
    p.receive(ReqPanel::status({{2, "V5"}, {38, "IENA-1"}}) + QByteArray(";7").repeated(100000));
    QVERIFY2(clock.elapsed() < 5000, "the window would stand still");
    QCOMPARE(p.text("GtwVersion"), QStringLiteral("V5"));
    QCOMPARE(p.index("comboBoxDataPtcl"), 1);
}

void TstReqBadInput::statusBeyondTheShownPartIsRead()
{
    ReqPanel p;
    p.receive(QByteArray(100000, '-') + ReqPanel::status({{2, "V5"}}));
    QCOMPARE(p.text("GtwVersion"), QStringLiteral("V5"));
    p.receive(QByteArray(100000, '-') + "]----");
    QCOMPARE(p.sent(), QByteArray("#?\r"));
}

void TstReqBadInput::hostileNumbers_data()
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

void TstReqBadInput::hostileNumbers()
{
    QFETCH(QByteArray, number);
    ReqPanel p;
    ReqPanel::Fields fields;
    for (int field = 5; field < 39; ++field)
        fields[field] = number;
    fields[2] = "V5";
    p.report(fields);
    QCOMPARE(p.text("GtwVersion"), QStringLiteral("V5"));
    QCOMPARE(p.markedCells(), QStringList());
    QVERIFY(p.index("comboSimultn") <= 0); // none, or the first for what cannot be read
    QVERIFY(p.index("comboActivCOM") <= 0);
    QCOMPARE(p.index("comboPTP"), 0);
    QCOMPARE(p.index("comboMode"), 0);
    QCOMPARE(p.index("comboBoxDataPtcl"), 0);
    QCOMPARE(p.sent(), QByteArray());
    p.report({{5, "2"}, {31, "1"}, {33, "2"}});
    QCOMPARE(p.index("comboSimultn"), 2);
    QCOMPARE(p.index("comboActivCOM"), 1);
    QCOMPARE(p.index("comboPTP"), 2);
}

void TstReqBadInput::longFieldsDoNoHarm()
{
    ReqPanel p;
    ReqPanel::Fields fields;
    for (int field : {2, 6, 7, 8, 9, 11, 12, 17, 18, 19, 29, 34, 35, 36, 37, 38})
        fields[field] = QByteArray(100000, 'W');
    const QSize before = p.panel->size();
    p.report(fields);
    p.time.turn();
    QCOMPARE(p.panel->size(), before);
    p.report({{2, "V6"}, {17, "1"}});
    QCOMPARE(p.text("GtwVersion"), QStringLiteral("V6"));
    QCOMPARE(p.text("SerialNo"), QStringLiteral("000001"));
}

void TstReqBadInput::markupStaysText()
{
    ReqPanel p;
    p.receive("<h1>big</h1><img src=\"x\">");
    QCOMPARE(p.shown(), QStringLiteral("<h1>big</h1><img src=\"x\">\n"));
    p.report({{34, "<b>x</b>"}});
    QCOMPARE(p.text("PTPStateLineEdit"), QStringLiteral("<b>x</b>"));
}

void TstReqBadInput::promptFloodIsAnsweredPieceByPiece()
{
    ReqPanel p;
    for (int i = 0; i < 1000; ++i)
        p.receive("]----");
    QCOMPARE(p.sent(), QByteArray("#?\r").repeated(1000));
    QCOMPARE(p.time.activeTimers(), 1);
}

/// Wherever the network cuts a status line, nothing is taken that is not there.
void TstReqBadInput::cutStatusAtEachPlace()
{
    const QByteArray whole = ReqPanel::status({{2, "V5"}, {5, "3"}, {11, "10.0.0.1"}, {38, "IENA-1"}});
    for (int size = 1; size < whole.size(); ++size) {
        ReqPanel p;
        p.receive(whole.left(size));
        const bool isApplied = size >= QByteArray("#S;;V5;2").size();
        QCOMPARE(p.text("GtwVersion"), isApplied ? QStringLiteral("V5") : QString());
        QCOMPARE(p.index("comboBoxDataPtcl"), 0);
        QCOMPARE(p.sent(), QByteArray());
    }
}

QTEST_MAIN(TstReqBadInput)
#include "tst_req_badinput.moc"
