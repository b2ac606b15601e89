#include "reports/reportsheet.h"
#include "reports/spreadsheetfile.h"
#include "reports/workbook.h"
#include "support/messagecatcher.h"
#include "support/workbookreader.h"

#include <QJsonValue>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QtTest>

namespace {

const char *const kParts[] = {
    "[Content_Types].xml",      "_rels/.rels",          "xl/workbook.xml", "xl/_rels/workbook.xml.rels",
    "xl/worksheets/sheet1.xml", "xl/sharedStrings.xml", "xl/styles.xml",   "xl/theme/theme1.xml",
    "docProps/app.xml",         "docProps/core.xml"};

/// A sheet with this text in C3, and in the title and a heading too.
ReportSheet sheetWith(const QString &text)
{
    return {text, {text}, {{3, {QStringLiteral("0"), QStringLiteral("name"), text}}}};
}

} // namespace

class TstWorkbookTexts : public QObject
{
    Q_OBJECT

private slots:
    void textsComeBackAsText_data();
    void textsComeBackAsText();
    void everyPartIsWellFormed();
    void anEscapeInATextStaysText();
    void escapesDoNotMakeATextTooLong_data();
    void escapesDoNotMakeATextTooLong();
    void theTemporaryFolderMayHaveAnyName();
    void columnAIsANumberOnlyIfItIsOne_data();
    void columnAIsANumberOnlyIfItIsOne();
    void anEmptySheetIsAWorkbook();
    void damagedFilesAreFound_data();
    void damagedFilesAreFound();
};

void TstWorkbookTexts::textsComeBackAsText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    const auto same = [](const char *name, const QString &text) { QTest::newRow(name) << text << text; };
    same("one blank", QStringLiteral(" "));
    same("blanks around and between", QStringLiteral("  a  b "));
    same("looks like a formula", QStringLiteral("=1+1"));
    same("leading zeros", QStringLiteral("0012"));
    same("number", QStringLiteral("1.50"));
    same("link", QStringLiteral("http://host/"));
    same("markup", QStringLiteral("<b>&amp;\"'</b>"));
    same("other scripts", QString::fromUtf8("±°ΩÄ 中 \xF0\x9F\x98\x80"));
    same("list", QStringLiteral("Full$Half$#Quarter$"));
    same("32767 characters", QString(32767, u'x'));
    QTest::newRow("40000 characters") << QString(40000, u'x') << QString(32767, u'x');
    QTest::newRow("pair parted by the longest length")
        << QString(32766, u'x') + QString::fromUtf8("\xF0\x9F\x98\x80")
        << QString(32766, u'x') + QChar(0xFFFD);
    QTest::newRow("control characters") << QStringLiteral("a\u0001b\tc\nd\re\u007Ff\u0085g")
                                        << QString::fromUtf8("a\uFFFDb\uFFFDc\uFFFDd\uFFFDe\uFFFDf\uFFFDg");
    QTest::newRow("zero") << QString::fromUtf8("a\0b", 3) << QString::fromUtf8("a\uFFFDb");
    QTest::newRow("U+FFFF") << QString(QChar(0xFFFF)) + u'x' << QString(QChar(0xFFFD)) + u'x';
    QTest::newRow("U+FFFE") << QString(QChar(0xFFFE)) << QString(QChar(0xFFFD));
    QTest::newRow("half a pair") << QString(QChar(0xD83D)) + u'x' << QString(QChar(0xFFFD)) + u'x';
}

void TstWorkbookTexts::textsComeBackAsText()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    const QJsonObject cells =
        readWorkbook(workbook(sheetWith(text))).value(QLatin1String("cells")).toObject();
    for (const char *name : {"A1", "A2", "C3"}) {
        const QJsonObject cell = cells.value(QLatin1String(name)).toObject();
        QCOMPARE(cell.value(QLatin1String("value")), QJsonValue(expected));
        QVERIFY(cell.value(QLatin1String("type")).toString() != QLatin1String("n"));
    }
}

void TstWorkbookTexts::everyPartIsWellFormed()
{
    const QByteArray bytes = workbook(sheetWith(QStringLiteral("<&>\u0001") + QChar(0xFFFF)));
    for (const char *part : kParts) {
        QXmlStreamReader xml(partOf(bytes, part));
        while (!xml.atEnd())
            xml.readNext();
        QVERIFY2(!xml.hasError(), qPrintable(QString::fromLatin1(part) + xml.errorString()));
    }
}

void TstWorkbookTexts::anEscapeInATextStaysText()
{
    // A reader that knows escapes would show "A" for the plain form.
    const QByteArray strings =
        partOf(workbook(sheetWith(QStringLiteral("a_x0041__x00zz_"))), "xl/sharedStrings.xml");
    QVERIFY2(strings.contains(">a_x005F_x0041__x00zz_<"), strings.constData());
}

void TstWorkbookTexts::escapesDoNotMakeATextTooLong_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("shortest");
    QTest::newRow("nothing but escapes") << QStringLiteral("_x0041_").repeated(5000) << 17600;
    QTest::newRow("one escape") << QStringLiteral("_x0041_") + QString(40000, u'x') << 32755;
    QTest::newRow("one escape at the end") << QString(32760, u'x') + QStringLiteral("_x0041_") << 32755;
    QTest::newRow("pairs") << QString::fromUtf8("_x0041_\xF0\x9F\x98\x80").repeated(5000) << 19000;
}

void TstWorkbookTexts::escapesDoNotMakeATextTooLong()
{
    QFETCH(QString, text);
    QFETCH(int, shortest);
    const MessageCatcher log;
    const QByteArray bytes = workbook(sheetWith(text));
    QVERIFY2(!bytes.isEmpty(), qPrintable(log.lines().join(u'\n')));
    QXmlStreamReader xml(partOf(bytes, "xl/sharedStrings.xml"));
    QStringList strings;
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1String("t"))
            strings << xml.readElementText();
    }
    strings.removeAll(QStringLiteral("name"));
    QCOMPARE(strings.size(), 1); // the library keeps equal texts once
    QVERIFY(strings.first().size() <= 32767);
    const QString shown = QString(strings.first()).replace(QLatin1String("_x005F_"), QLatin1String("_"));
    QVERIFY2(shown.size() >= shortest, qPrintable(QString::number(shown.size())));
    const QString whole = shown.endsWith(QChar(0xFFFD)) ? shown.chopped(1) : shown; // half of a pair
    QVERIFY(text.startsWith(whole));
    const QJsonObject cells = readWorkbook(bytes).value(QLatin1String("cells")).toObject();
    for (const char *name : {"A1", "A2", "C3"})
        QVERIFY2(!cells.value(QLatin1String(name)).toObject().value(QLatin1String("value")).isNull(), name);
}

void TstWorkbookTexts::theTemporaryFolderMayHaveAnyName()
{
    const QTemporaryDir folder;
    const QString own = folder.filePath(QString::fromUtf8("Jürgen 中 #1"));
    QVERIFY(QDir().mkpath(own));
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", QFile::encodeName(own));
    const QByteArray bytes = workbook(sheetWith(QStringLiteral("text")));
    if (before.isNull())
        qunsetenv("TMPDIR");
    else
        qputenv("TMPDIR", before);
    QVERIFY(!bytes.isEmpty());
}

void TstWorkbookTexts::columnAIsANumberOnlyIfItIsOne_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QJsonValue>("expected");
    QTest::newRow("number") << "128" << QJsonValue(128);
    QTest::newRow("negative") << "-5" << QJsonValue(-5);
    QTest::newRow("blank") << " " << QJsonValue(QStringLiteral(" "));
    QTest::newRow("number with a blank") << "1 2" << QJsonValue(QStringLiteral("1 2"));
    QTest::newRow("no number") << "x" << QJsonValue(QStringLiteral("x"));
}

void TstWorkbookTexts::columnAIsANumberOnlyIfItIsOne()
{
    QFETCH(QString, text);
    QFETCH(QJsonValue, expected);
    const ReportSheet sheet{QStringLiteral("title"), {}, {{3, {text, text}}}};
    const QJsonObject cells = readWorkbook(workbook(sheet)).value(QLatin1String("cells")).toObject();
    QCOMPARE(cells.value(QLatin1String("A3")).toObject().value(QLatin1String("value")), expected);
    QCOMPARE(cells.value(QLatin1String("B3")).toObject().value(QLatin1String("value")), QJsonValue(text));
}

void TstWorkbookTexts::anEmptySheetIsAWorkbook()
{
    const QJsonObject book = readWorkbook(workbook(ReportSheet()));
    QCOMPARE(book.value(QLatin1String("sheets")).toInt(), 1);
}

void TstWorkbookTexts::damagedFilesAreFound_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isSound");
    const QByteArray whole = workbook(sheetWith(QStringLiteral("text")));
    QVERIFY(!whole.isEmpty());
    QTest::newRow("whole") << whole << true;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("no archive") << QByteArray(1000, 'x') << false;
    QTest::newRow("first half") << whole.left(whole.size() / 2) << false;
    QTest::newRow("last byte missing in the list") << whole.left(whole.size() - 30) << false;
    for (const int place : {100, 400, 900}) {
        QByteArray damaged = whole;
        damaged[place] = static_cast<char>(~damaged.at(place));
        QTest::addRow("byte %d changed", place) << damaged << false;
    }
}

void TstWorkbookTexts::damagedFilesAreFound()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, isSound);
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("report.xlsx")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    file.close();
    const QString fault = spreadsheetFault(file.fileName());
    QVERIFY2(fault.isEmpty() == isSound, qPrintable(fault));
}

QTEST_GUILESS_MAIN(TstWorkbookTexts)
#include "tst_workbooktexts.moc"
