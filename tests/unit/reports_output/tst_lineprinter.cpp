#include "base/gui/fonts.h"
#include "reports/lineprinter.h"
#include "support/pdfreader.h"

#include <QPrinter>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

namespace {

/// Like the line of a module: two blanks in front of each field.
QString lineOf(int length)
{
    QString line;
    for (int field = 0; line.size() < length - 2; ++field)
        line += QStringLiteral("  value%1").arg(field);
    return line.left(length - 2) + QStringLiteral(".\n");
}

QString joined(const QVector<pdfreader::Word> &words)
{
    QString text;
    for (const pdfreader::Word &word : words)
        text += word.text;
    return text;
}

} // namespace

class TstLinePrinter : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void paperIsLandscape();
    void aShortLineBeginsAtItsPoint();
    void linesFitOnThePaper_data();
    void linesFitOnThePaper();
    void lettersGetSmallerBeforeTheLineBreaks();
    void signsThatWouldDisturbTheLineAreReplaced_data();
    void signsThatWouldDisturbTheLineAreReplaced();
    void aPrinterThatFailsIsTold();

private:
    void print(const QString &text);

    QTemporaryDir m_folder;
    QString m_path;
    QRectF m_printable; ///< page pixels of the reader
};

void TstLinePrinter::initTestCase()
{
    fonts::installSubstitutions();
    m_path = m_folder.filePath(QStringLiteral("printed.pdf"));
}

void TstLinePrinter::print(const QString &text)
{
    QPrinter printer(QPrinter::ScreenResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(m_path);
    prepareLinePrinter(printer);
    m_printable = QRectF(printer.pageLayout().paintRectPixels(pdfreader::kPixelsPerInch));
    printLine(printer, text);
}

void TstLinePrinter::paperIsLandscape()
{
    print(lineOf(30));
    const QImage page = pdfreader::picture(m_path, 1);
    QVERIFY(page.width() > page.height());
}

void TstLinePrinter::aShortLineBeginsAtItsPoint()
{
    print(QStringLiteral("Hxg.\n"));
    const auto words = pdfreader::words(m_path).value(0);
    QCOMPARE(words.size(), 1);
    QCOMPARE(words.first().text, QStringLiteral("Hxg."));
    const QRectF place = words.first().place;
    QVERIFY(qAbs(place.left() - (m_printable.left() + 50.0 * pdfreader::kPixelsPerInch / 96)) < 2);
    // The letters stand on a line 50 pixels, of which 96 make an inch, below the printable area's top.
    const double baseLine = m_printable.top() + 50.0 * pdfreader::kPixelsPerInch / 96;
    QVERIFY2(place.top() < baseLine - 8 && place.bottom() > baseLine && place.bottom() < baseLine + 8,
             qPrintable(QStringLiteral("%1 %2 %3").arg(place.top()).arg(place.bottom()).arg(baseLine)));
}

void TstLinePrinter::linesFitOnThePaper_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("short") << lineOf(20);
    QTest::newRow("usual") << lineOf(180);
    QTest::newRow("600 characters") << lineOf(600);
    QTest::newRow("a word of 600 characters") << QString(598, u'W') + QStringLiteral(".\n");
}

void TstLinePrinter::linesFitOnThePaper()
{
    QFETCH(QString, line);
    print(line);
    const auto pages = pdfreader::words(m_path);
    QCOMPARE(pages.size(), 1);
    QCOMPARE(joined(pages.first()), QString(line).remove(u' ').remove(u'\n'));
    for (const pdfreader::Word &word : pages.first())
        QVERIFY2(m_printable.adjusted(-1, -1, 1, 1).contains(word.place), qPrintable(word.text));
}

void TstLinePrinter::lettersGetSmallerBeforeTheLineBreaks()
{
    const auto heightFor = [this](int length) {
        print(lineOf(length));
        const auto words = pdfreader::words(m_path).value(0);
        return words.isEmpty() ? 0 : words.first().place.height();
    };
    const double usual = heightFor(60);
    const double small = heightFor(210);
    QVERIFY(usual > 0);
    QVERIFY2(small < usual - 1, qPrintable(QStringLiteral("%1 %2").arg(small).arg(usual)));
    const auto words = pdfreader::words(m_path).value(0);
    QCOMPARE(words.first().place.top(), words.last().place.top()); // still one line
    QVERIFY(heightFor(600) * 2 > usual);                           // and never too small to read
    const auto many = pdfreader::words(m_path).value(0);
    QVERIFY(many.last().place.top() > many.first().place.bottom() - 3);
}

void TstLinePrinter::signsThatWouldDisturbTheLineAreReplaced_data()
{
    QTest::addColumn<QChar>("sign");
    QTest::newRow("line separator") << QChar(0x2028);
    QTest::newRow("paragraph separator") << QChar(0x2029);
    QTest::newRow("line end") << QChar(u'\n');
    QTest::newRow("carriage return") << QChar(u'\r');
    QTest::newRow("tabulator") << QChar(u'\t');
    QTest::newRow("right to left from here on") << QChar(0x202E);
    QTest::newRow("isolated right to left") << QChar(0x2067);
    QTest::newRow("object") << QChar(QChar::ObjectReplacementCharacter);
}

void TstLinePrinter::signsThatWouldDisturbTheLineAreReplaced()
{
    QFETCH(QChar, sign);
    const QString text = QStringLiteral("  before%1after  (last)\n");
    print(text.arg(QChar(QChar::ReplacementCharacter)));
    const QImage expected = pdfreader::picture(m_path, 1);
    QVERIFY(!expected.isNull());
    print(text.arg(sign));
    QCOMPARE(pdfreader::picture(m_path, 1), expected);
}

void TstLinePrinter::aPrinterThatFailsIsTold()
{
    QPrinter printer(QPrinter::ScreenResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(m_folder.filePath(QStringLiteral("gone/printed.pdf")));
    prepareLinePrinter(printer);
    QTest::ignoreMessage(QtWarningMsg, "QPainter::begin(): Returned false");
    QTest::ignoreMessage(QtCriticalMsg, QRegularExpression(QStringLiteral(" : Nothing printed on ")));
    printLine(printer, lineOf(30));
}

QTEST_MAIN(TstLinePrinter)
#include "tst_lineprinter.moc"
