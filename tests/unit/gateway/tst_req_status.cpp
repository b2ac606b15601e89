#include "reqpanel.h"

/// Every field of the status line, with good, odd, missing and unknown values.
class TstReqStatus : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }

    void textIsShown_data();
    void textIsShown();
    void serialNumberHasSixCharacters_data();
    void serialNumberHasSixCharacters();
    void listShowsItsEntry_data();
    void listShowsItsEntry();
    void missingListFieldMeansEntryZero();
    void choiceIsChecked_data();
    void choiceIsChecked();
    void pcmLampHasItsColour_data();
    void pcmLampHasItsColour();
    void rateIsHighlighted_data();
    void rateIsHighlighted();
    void ignoredFieldsChangeNothing_data();
    void ignoredFieldsChangeNothing();
    void modeChangesTheFieldsOfTheTarget_data();
    void modeChangesTheFieldsOfTheTarget();
    void shortLineReadsTheRestAsEmpty();
};

void TstReqStatus::textIsShown_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("widget");
    const auto row = [](int field, const char *widget) { QTest::newRow(widget) << field << QString(widget); };
    row(2, "GtwVersion");
    row(11, "extIpAddr");
    row(12, "extPort");
    row(18, "CoreTempBox");
    row(19, "PCBTempBox");
    row(29, "unixEpochField");
    row(34, "PTPStateLineEdit");
    row(35, "accuracyPTP");
    row(36, "minBox");
    row(37, "maxBox");
}

void TstReqStatus::textIsShown()
{
    QFETCH(int, field);
    QFETCH(QString, widget);
    const QByteArray name = widget.toLatin1();
    ReqPanel p;
    for (const char *value : {"4711.5", "other", "<b>7</b>", " spaced ", "-1"}) {
        p.report({{field, value}});
        QCOMPARE(p.text(name), QString::fromLatin1(value));
    }
    p.report({{field, "\xB0"}}); // one character per byte
    QCOMPARE(p.text(name), QString(QChar(0xB0)));
    p.report({{field, "before"}});
    p.report({}); // an empty field empties it
    QCOMPARE(p.text(name), QString());
    // Its neighbours are not taken for it.
    p.report({{field - 1 == 3 ? 1 : field - 1, "3"}, {field + 1 == 3 ? 4 : field + 1, "3"}});
    QCOMPARE(p.text(name), QString());
}

void TstReqStatus::serialNumberHasSixCharacters_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QString>("shown");
    QTest::newRow("three") << QByteArray("123") << "000123";
    QTest::newRow("five") << QByteArray("12345") << "012345";
    QTest::newRow("six") << QByteArray("123456") << "123456";
    QTest::newRow("seven stay") << QByteArray("1234567") << "1234567";
    QTest::newRow("empty") << QByteArray() << "000000";
    QTest::newRow("letters") << QByteArray("A-7") << "000A-7";
}

void TstReqStatus::serialNumberHasSixCharacters()
{
    QFETCH(QByteArray, field);
    ReqPanel p;
    p.report({{17, "999999"}});
    p.report({{17, field}});
    QTEST(p.text("SerialNo"), "shown");
}

void TstReqStatus::listShowsItsEntry_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("widget");
    QTest::addColumn<int>("shown");
    const auto row = [](const QByteArray &name, int field, const QByteArray &value, const char *widget,
                        int shown) {
        QTest::newRow(qPrintable(QByteArray(widget) + " " + name))
            << field << value << QString(widget) << shown;
    };
    for (int i = 0; i <= 8; ++i)
        row(QByteArray::number(i), 5, QByteArray::number(i), "comboSimultn", i);
    for (int i = 0; i <= 3; ++i)
        row(QByteArray::number(i), 31, QByteArray::number(i), "comboActivCOM", i);
    const QByteArrayList modes{"UDP-B", "UDP-M", "UDP-U", "TCP-S", "TCP-C", "OFF"};
    for (int i = 0; i < modes.size(); ++i)
        row(modes[i], 8, modes[i], "comboMode", i);
    row("0", 33, "0", "comboPTP", 0);
    row("1", 33, "1", "comboPTP", 1);
    row("2", 33, "2", "comboPTP", 2);
    row("ZRT-1", 38, "ZRT-1", "comboBoxDataPtcl", 0);
    row("IENA-1", 38, "IENA-1", "comboBoxDataPtcl", 1);

    row("not a number", 5, "abc", "comboSimultn", 0);
    row("real number", 5, "2.5", "comboSimultn", 0);
    row("too big a number", 5, "99999999999999999999", "comboSimultn", 0);
    row("beyond the list", 5, "9", "comboSimultn", -1);
    row("below the list", 5, "-1", "comboSimultn", -1);
    row("far below the list", 5, "-7", "comboSimultn", -1);
    row("not a number", 31, "COM 2", "comboActivCOM", 0);
    row("empty", 31, "", "comboActivCOM", 0);
    row("beyond the list", 31, "4", "comboActivCOM", -1);
    row("below the list", 31, "-1", "comboActivCOM", -1);
    row("three is no mode", 33, "3", "comboPTP", 0);
    row("minus one", 33, "-1", "comboPTP", 0);
    row("text", 33, "Auto", "comboPTP", 0);
    row("empty", 33, "", "comboPTP", 0);

    // The lists show entry 2, 2 and 1 before.
    row("unknown stays", 8, "UDP-X", "comboMode", 2);
    row("other case stays", 8, "tcp-s", "comboMode", 2);
    row("list text stays", 8, "TCP Server", "comboMode", 2);
    row("beginning stays", 8, "UDP", "comboMode", 2);
    row("longer stays", 8, "UDP-BB", "comboMode", 2);
    row("empty stays", 8, "", "comboMode", 2);
    row("unknown stays", 38, "ZRT-2", "comboBoxDataPtcl", 1);
    row("other case stays", 38, "zrt-1", "comboBoxDataPtcl", 1);
    row("index stays", 38, "0", "comboBoxDataPtcl", 1);
    row("empty stays", 38, "", "comboBoxDataPtcl", 1);
}

void TstReqStatus::listShowsItsEntry()
{
    QFETCH(int, field);
    QFETCH(QByteArray, value);
    QFETCH(QString, widget);
    ReqPanel p;
    const QByteArray name = widget.toLatin1();
    p.report({{5, "2"}, {8, "UDP-U"}, {31, "2"}, {33, "1"}, {38, "IENA-1"}});
    QCOMPARE(p.index("comboSimultn"), 2);
    QCOMPARE(p.index("comboMode"), 2);
    QCOMPARE(p.index("comboActivCOM"), 2);
    QCOMPARE(p.index("comboPTP"), 1);
    QCOMPARE(p.index("comboBoxDataPtcl"), 1);
    p.report({{field, value}});
    QTEST(p.index(name), "shown");
    QCOMPARE(p.sent(), QByteArray());
}

void TstReqStatus::missingListFieldMeansEntryZero()
{
    ReqPanel p;
    p.report({{5, "2"}, {31, "2"}, {33, "2"}});
    p.receive("#S;;;2"); // these fields stand beyond its end
    QCOMPARE(p.index("comboSimultn"), 0);
    QCOMPARE(p.index("comboActivCOM"), 0);
    QCOMPARE(p.index("comboPTP"), 0);
}

void TstReqStatus::choiceIsChecked_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("checked");
    QTest::addColumn<QString>("unchecked");
    const auto row = [](const char *name, int field, const char *before, const char *value,
                        const char *checked, const char *unchecked) {
        QTest::newRow(name) << field << QByteArray(before) << QByteArray(value) << QString(checked)
                            << QString(unchecked);
    };
    const char *big = "radioBigEndn";
    const char *little = "radioLitleEndn";
    row("little endian", 9, "B", "L", little, big);
    row("big endian", 9, "L", "B", big, little);
    row("endian unknown stays", 9, "L", "X", little, big);
    row("endian other case stays", 9, "L", "b", little, big);
    row("endian longer stays", 9, "L", "BL", little, big);
    row("endian empty stays", 9, "L", "", little, big);
    const char *bit16 = "radio16Bit";
    const char *bit18 = "radio18Bit";
    row("18 bit", 10, "16", "18", bit18, bit16);
    row("16 bit", 10, "18", "16", bit16, bit18);
    row("bits unknown stay", 10, "18", "17", bit18, bit16);
    row("bits longer stay", 10, "18", "160", bit18, bit16);
    row("bits empty stay", 10, "18", "", bit18, bit16);
    const char *plain = "unsignedInt";
    const char *twos = "twoComp";
    row("two's complement", 13, "U", "2", twos, plain);
    row("unsigned", 13, "2", "U", plain, twos);
    row("two's complement, only the first character", 13, "U", "2U", twos, plain);
    row("unsigned, only the first character", 13, "2", "U2", plain, twos);
    row("format unknown stays", 13, "2", "S", twos, plain);
    row("format other case stays", 13, "2", "u", twos, plain);
    row("format in the second character stays", 13, "2", "xU", twos, plain);
    row("format empty stays", 13, "2", "", twos, plain);
}

void TstReqStatus::choiceIsChecked()
{
    QFETCH(int, field);
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, value);
    QFETCH(QString, checked);
    QFETCH(QString, unchecked);
    ReqPanel p;
    p.report({{field, before}});
    p.report({{field, value}});
    QVERIFY(p.isChecked(checked.toLatin1()));
    QVERIFY(!p.isChecked(unchecked.toLatin1()));
    QCOMPARE(p.sent(), QByteArray());
}

void TstReqStatus::pcmLampHasItsColour_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QColor>("colour");
    const auto row = [](const char *name, const char *before, const char *value, Qt::GlobalColor colour) {
        QTest::newRow(name) << QByteArray(before) << QByteArray(value) << QColor(colour);
    };
    row("X is gray", "1", "X", Qt::gray);
    row("0 is red", "1", "0", Qt::red);
    row("1 is green", "0", "1", Qt::green);
    row("2 leaves it", "1", "2", Qt::green);
    row("x leaves it", "1", "x", Qt::green);
    row("01 leaves it", "0", "01", Qt::red);
    row("empty leaves it", "0", "", Qt::red);
}

void TstReqStatus::pcmLampHasItsColour()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, value);
    QFETCH(QColor, colour);
    ReqPanel p;
    p.report({{32, before}});
    p.report({{32, value}});
    QCOMPARE(p.lamp("PCM_Led"), colour);
    QCOMPARE(p.lamp("tcpLed"), QColor(Qt::green));
}

void TstReqStatus::rateIsHighlighted_data()
{
    QTest::addColumn<QByteArray>("bitRate");
    QTest::addColumn<QByteArray>("channels");
    QTest::addColumn<QStringList>("marked");
    const auto row = [](const char *name, const char *bitRate, const char *channels,
                        const QStringList &marked) {
        QTest::newRow(name) << QByteArray(bitRate) << QByteArray(channels) << marked;
    };
    row("a cell", "1250", "8", {"8,1250"});
    row("first live cell", "10000", "8", {"8,10000"});
    row("last column", "10000", "256", {"256,10000"});
    row("channels and bit rate swapped", "8", "1250", {});
    row("dead cell", "10000", "2", {});
    row("no such channels", "1250", "7", {});
    row("no such bit rate", "1251", "8", {});
    row("both empty", "", "", {});
    row("no bit rate", "", "8", {});
}

void TstReqStatus::rateIsHighlighted()
{
    QFETCH(QByteArray, bitRate);
    QFETCH(QByteArray, channels);
    ReqPanel p;
    p.report({{6, "2500"}, {7, "16"}});
    QCOMPARE(p.markedCells(), QStringList{"16,2500"});
    QVERIFY(p.cell("16,2500")->hasFocus());
    p.report({{6, bitRate}, {7, channels}});
    QTEST(p.markedCells(), "marked");
    QVERIFY(p.cell("16,2500")->styleSheet().isEmpty());
    QFETCH(QStringList, marked);
    if (!marked.isEmpty())
        QVERIFY(p.cell(marked.first())->hasFocus());
}

void TstReqStatus::ignoredFieldsChangeNothing_data()
{
    QTest::addColumn<int>("field");
    for (int field : {1, 4, 14, 15, 16, 20, 21, 22, 23, 24, 25, 26, 27, 30})
        QTest::newRow(QByteArray::number(field)) << field;
}

/// Compares pictures of the panel, without the dialogue.
void TstReqStatus::ignoredFieldsChangeNothing()
{
    QFETCH(int, field);
    ReqPanel p;
    p.child<QWidget>("RxBox")->hide();
    p.report({{6, "2500"}, {7, "16"}});
    const auto look = [&p] { return p.panel->grab().toImage(); };
    const QImage before = look();
    for (const char *value : {"1", "X", "UDP-M", "100", "L"}) {
        p.report({{6, "2500"}, {7, "16"}, {field, value}});
        QVERIFY(look() == before);
    }
    p.report({{6, "2500"}, {7, "16"}, {2, "V2"}});
    QVERIFY(look() != before);
}

void TstReqStatus::modeChangesTheFieldsOfTheTarget_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("mode");
    QTest::addColumn<bool>("isServer");
    for (const char *mode : {"UDP-B", "UDP-M", "UDP-U", "TCP-C"})
        QTest::newRow(mode) << QByteArray("TCP-S") << QByteArray(mode) << false;
    QTest::newRow("TCP-S") << QByteArray("UDP-B") << QByteArray("TCP-S") << true;
    QTest::newRow("off after a target") << QByteArray("UDP-U") << QByteArray("OFF") << false;
    QTest::newRow("off after the server") << QByteArray("TCP-S") << QByteArray("OFF") << true;
    QTest::newRow("unknown after the server") << QByteArray("TCP-S") << QByteArray("UDP-Q") << true;
}

void TstReqStatus::modeChangesTheFieldsOfTheTarget()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, mode);
    QFETCH(bool, isServer);
    ReqPanel p;
    p.report({{8, before}});
    p.report({{8, mode}});
    QCOMPARE(p.isShown("TcpPortDefault"), isServer);
    QCOMPARE(p.text("labelextPort"), isServer ? QStringLiteral("TCP Port") : QStringLiteral("Ext Port"));
    for (const char *name : {"extIpAddr", "extPort", "labelExtServrIP", "setExtAddress"})
        QCOMPARE(p.isShown(name), !isServer);
    QVERIFY(p.isShown("labelextPort"));
}

void TstReqStatus::shortLineReadsTheRestAsEmpty()
{
    ReqPanel p;
    p.report({{9, "L"}, {10, "18"}, {11, "1.1.1.1"}, {13, "2"}, {32, "1"}, {37, "9"}, {38, "IENA-1"}});
    p.receive("#S;;V3;2;;4;2500;16;TCP-C");
    QCOMPARE(p.text("GtwVersion"), QStringLiteral("V3"));
    QCOMPARE(p.index("comboSimultn"), 4);
    QCOMPARE(p.index("comboMode"), 4);
    QCOMPARE(p.text("extIpAddr"), QString());
    QCOMPARE(p.text("maxBox"), QString());
    QCOMPARE(p.text("SerialNo"), QStringLiteral("000000"));
    QVERIFY(p.isChecked("radioLitleEndn") && p.isChecked("radio18Bit") && p.isChecked("twoComp"));
    QCOMPARE(p.lamp("PCM_Led"), QColor(Qt::green));
    QCOMPARE(p.index("comboBoxDataPtcl"), 1);
}

QTEST_MAIN(TstReqStatus)
#include "tst_req_status.moc"
