#include "base/gui/fonts.h"
#include "reports/pdfdocument.h"
#include "samplestore.h"
#include "support/pdfreader.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr int kRows = 130;
constexpr int kColumns = 14;
constexpr double kPrintableLeft = 246; ///< page pixels from the paper's edge
constexpr double kPrintableRight = 246 + 689;
constexpr double kPrintableBottom = 98.4 + 1166.4;
constexpr double kLaterPagesTop = 98.4 + 40; ///< below the logo

int wordCount(int row, int column)
{
    return 1 + (row * 5 + column * 3) % 9;
}

/// The same word several times: the number of its row and the letter of its column.
QString cellText(int row, int column)
{
    return QStringLiteral("%1%2 ")
        .arg(row)
        .arg(QChar(u'a' + column))
        .repeated(wordCount(row, column))
        .trimmed();
}

QString dataRow(int row)
{
    QString html = QStringLiteral("<tr >");
    for (int column = 0; column < kColumns; ++column)
        html += QStringLiteral("<td>%1</td>").arg(cellText(row, column));
    return html + QStringLiteral("</tr>");
}

/// The agreed table with rows of one to nine lines, behind this many lines of text.
QString tallRows(int linesAbove)
{
    const QString empty = samplestore::overview(0);
    const int table = empty.indexOf(QStringLiteral("<br><table"));
    const int rows = empty.indexOf(QStringLiteral("</tr>"), empty.indexOf(QStringLiteral("</tr>")) + 1) + 5;
    QString html =
        empty.left(table) + QStringLiteral("<br>above").repeated(linesAbove) + empty.mid(table, rows - table);
    for (int row = 0; row < kRows; ++row)
        html += dataRow(row);
    return html + QStringLiteral("</table></body></html>");
}

/// -1 for a word that stands in no cell of a row.
int rowOf(const QString &word)
{
    static const QRegularExpression cellWord(QStringLiteral("^(\\d+)[a-n]$"));
    const QRegularExpressionMatch match = cellWord.match(word);
    return match.hasMatch() ? match.captured(1).toInt() : -1;
}

bool isWhite(const QImage &picture)
{
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (qGray(picture.pixel(x, y)) < 250)
                return false;
        }
    }
    return true;
}

} // namespace

class TstPdfPages : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void noRowIsCutByTheEdgeOfAPage_data();
    void noRowIsCutByTheEdgeOfAPage();
    void allRowsComeOnceAndInOrder();
    void headingsStandOnEveryPage();
    void firstPageShowsTheHeadOnce();
    void furtherPagesBeginBelowTheLogo();
    void linesOfTheTableCloseEachPage();
    void nothingHangsBelowTheTable();
    void allColumnsStandInsideTheMargins_data();
    void allColumnsStandInsideTheMargins();
    void headingsAreReadBeforeTheRows();
    void longTextsWithoutBlanksDoNotPushColumnsOut();
    void aRowHigherThanAPageGoesOn_data();
    void aRowHigherThanAPageGoesOn();
    void textWithoutATableFlowsOverPages();

private:
    QString write(const QString &html);

    QTemporaryDir m_folder;
};

void TstPdfPages::initTestCase()
{
    fonts::installSubstitutions();
}

QString TstPdfPages::write(const QString &html)
{
    const QString path = m_folder.filePath(QStringLiteral("report.pdf"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) ||
        !writePdf(file, html, PdfFlow::PageByPage, QStringLiteral("title")))
        QTest::qFail("no PDF", __FILE__, __LINE__);
    return path;
}

void TstPdfPages::noRowIsCutByTheEdgeOfAPage_data()
{
    QTest::addColumn<int>("linesAbove");
    for (const int lines : {0, 1, 2, 5, 8})
        QTest::addRow("%d lines above", lines) << lines;
    QTest::newRow("almost a page above") << 118;
    QTest::newRow("more than a page above") << 150;
}

void TstPdfPages::noRowIsCutByTheEdgeOfAPage()
{
    QFETCH(int, linesAbove);
    const auto pages = pdfreader::words(write(tallRows(linesAbove)));
    QVERIFY(pages.size() > 3);
    QMap<int, int> wordsOfRow;
    QMap<int, int> pageOfRow;
    for (int number = 0; number < pages.size(); ++number) {
        for (const pdfreader::Word &word : pages.at(number)) {
            const int row = rowOf(word.text);
            if (row < 0)
                continue;
            ++wordsOfRow[row];
            QVERIFY2(pageOfRow.value(row, number) == number, qPrintable(word.text));
            pageOfRow[row] = number;
        }
    }
    QCOMPARE(wordsOfRow.size(), kRows);
    for (int row = 0; row < kRows; ++row) {
        int expected = 0;
        for (int column = 0; column < kColumns; ++column)
            expected += wordCount(row, column);
        QCOMPARE(wordsOfRow.value(row), expected);
    }
}

void TstPdfPages::allRowsComeOnceAndInOrder()
{
    const auto pages = pdfreader::words(write(samplestore::overview(128)));
    QStringList serials;
    for (const auto &page : pages) {
        for (const pdfreader::Word &word : page) {
            if (word.text.startsWith(QLatin1String("000700")))
                serials << word.text;
        }
    }
    QStringList expected;
    for (int address = 0; address <= 128; ++address)
        expected << QStringLiteral("000700%1").arg(address, 3, 10, QLatin1Char('0'));
    QCOMPARE(serials, expected);
}

void TstPdfPages::headingsStandOnEveryPage()
{
    const auto pages = pdfreader::words(write(samplestore::overview(128)));
    QVERIFY(pages.size() >= 3);
    const auto &first = pages.first();
    for (const auto &page : pages) {
        for (const char *heading : {"Addr", "ModuleType", "HW", "FW1", "FW2"}) {
            const auto found = pdfreader::wordsLike(page, QString::fromLatin1(heading));
            QCOMPARE(found.size(), 1);
            const QRectF onFirst = pdfreader::wordsLike(first, found.first().text).first().place;
            QVERIFY(qAbs(found.first().place.left() - onFirst.left()) < 0.1); // above the same column
            QVERIFY(found.first().place.bottom() < page.last().place.top());
        }
        // Twice "Channel A" and "Channel B" for each of the four pairs, and "Channel Function".
        QCOMPARE(pdfreader::wordsLike(page, QStringLiteral("Channel")).size(), 9);
    }
}

void TstPdfPages::firstPageShowsTheHeadOnce()
{
    const auto pages = pdfreader::words(write(samplestore::overview(128)));
    int count = 0;
    for (const auto &page : pages)
        count += pdfreader::wordsLike(page, QStringLiteral("20261121100000_VX_SystemReport_.pdf")).size();
    QCOMPARE(count, 1);
    QCOMPARE(pages.first().first().text, QStringLiteral("20261121100000_VX_SystemReport_.pdf"));
}

void TstPdfPages::furtherPagesBeginBelowTheLogo()
{
    constexpr double kLogoBottom = 98.4 - 5 + 40;
    const auto pages = pdfreader::words(write(samplestore::overview(128)));
    for (int number = 1; number < pages.size(); ++number) {
        for (const pdfreader::Word &word : pages.at(number))
            QVERIFY2(word.place.top() > kLogoBottom, qPrintable(word.text));
    }
}

void TstPdfPages::linesOfTheTableCloseEachPage()
{
    const QString path = write(samplestore::overview(128));
    const auto pages = pdfreader::words(path);
    for (int number = 0; number < pages.size(); ++number) {
        const QImage page = pdfreader::picture(path, number + 1);
        int lowest = page.height() - 1;
        const int middle = 600; // inside a column, left of its text or beside it
        while (lowest > 0 && qGray(page.pixel(middle, lowest)) > 250)
            --lowest;
        double lastText = 0;
        for (const pdfreader::Word &word : pages.at(number))
            lastText = qMax(lastText, word.place.bottom());
        QVERIFY2(lowest >= lastText - 1, qPrintable(QString::number(number)));
        // A whole line from the first to the last column.
        int dark = 0;
        for (int x = 254; x < 890; ++x)
            dark += qGray(page.pixel(x, lowest)) < 250;
        QVERIFY2(dark > 630, qPrintable(QStringLiteral("page %1: %2").arg(number + 1).arg(dark)));
    }
}

void TstPdfPages::nothingHangsBelowTheTable()
{
    constexpr int kScale = 4;
    const QString path = write(samplestore::overview(128));
    for (const int number : {1, 2, pdfreader::facts(path).value(QStringLiteral("Pages")).toInt()}) {
        const QImage page = pdfreader::picture(path, number, pdfreader::kPixelsPerInch * kScale);
        int closingLine = page.height() - 1;
        const int middle = 600 * kScale; // no line between two columns
        while (closingLine > 0 && qGray(page.pixel(middle, closingLine)) >= 250)
            --closingLine;
        QVERIFY(closingLine > 200 * kScale);
        QVERIFY(isWhite(page.copy(0, closingLine + 1, page.width(), page.height() - closingLine - 1)));
    }
}

void TstPdfPages::allColumnsStandInsideTheMargins_data()
{
    QTest::addColumn<QString>("family");
    for (const char *family : {"Liberation Sans Narrow", "Open Sans", "DejaVu Sans"})
        QTest::newRow(family) << QString::fromLatin1(family);
}

void TstPdfPages::allColumnsStandInsideTheMargins()
{
    QFETCH(QString, family);
    const QString reportFamily = fonts::report().family();
    const QStringList before = QFont::substitutes(reportFamily);
    QFont::removeSubstitutions(reportFamily);
    QFont::insertSubstitution(reportFamily, family);
    const QString path = write(samplestore::overview(128));
    QFont::removeSubstitutions(reportFamily);
    QFont::insertSubstitutions(reportFamily, before);

    int boldFaces = 0;
    const auto faces = pdfreader::fonts(path);
    for (const pdfreader::Font &font : faces) {
        QVERIFY(font.isEmbedded);
        QVERIFY2(font.name.startsWith(QString(family).remove(u' ')), qPrintable(font.name));
        boldFaces += font.name.contains(QStringLiteral("Bold")) ? 1 : 0;
    }
    QCOMPARE(faces.size(), 2); // one for the headings, one for the rest
    QCOMPARE(boldFaces, 1);
    for (const auto &page : pdfreader::words(path)) {
        // The last cell of every row, and nothing beyond the margins.
        QVERIFY(!pdfreader::wordsLike(page, QStringLiteral("6.54.3")).isEmpty());
        for (const pdfreader::Word &word : page) {
            QVERIFY2(word.place.left() > kPrintableLeft - 1, qPrintable(word.text));
            QVERIFY2(word.place.right() < kPrintableRight + 1, qPrintable(word.text));
        }
    }
}

void TstPdfPages::headingsAreReadBeforeTheRows()
{
    const QStringList pages = pdfreader::readingOrder(write(samplestore::overview(128)));
    QVERIFY(pages.size() > 1);
    QVERIFY(pages.first().indexOf(QStringLiteral("Addr")) <
            pages.first().indexOf(QStringLiteral("Controller")));
    for (int page = 1; page < pages.size(); ++page)
        QVERIFY2(pages.at(page).startsWith(QStringLiteral("Addr")), qPrintable(pages.at(page).left(60)));
}

void TstPdfPages::longTextsWithoutBlanksDoNotPushColumnsOut()
{
    QString html = tallRows(0);
    html.replace(cellText(7, 5), QString(200, u'W'));
    const auto page = pdfreader::words(write(html)).value(0);
    QCOMPARE(pdfreader::wordsLike(page, QStringLiteral("7n")).size(), wordCount(7, 13));
    int letters = 0;
    for (const pdfreader::Word &word : page) {
        QVERIFY2(word.place.right() < kPrintableRight + 1, qPrintable(word.text));
        if (QString(word.text).remove(u'W').isEmpty())
            letters += word.text.size();
    }
    QCOMPARE(letters, 200);
}

void TstPdfPages::aRowHigherThanAPageGoesOn_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("sign");
    QTest::newRow("row below others") << 3 << "x";
    QTest::newRow("row below the heading") << 0 << "x";
    // Of another font, so that the lines of the row's cells do not stand side by side.
    QTest::newRow("lines of different heights") << 3 << QString::fromUtf8("Ա");
}

void TstPdfPages::aRowHigherThanAPageGoesOn()
{
    constexpr int kWords = 300;
    QFETCH(int, row);
    QFETCH(QString, sign);
    QString html = tallRows(0);
    const auto replaceCell = [&html, row](int column, const QString &text) {
        const QString cell = QStringLiteral("<td>%1</td>");
        html.replace(cell.arg(cellText(row, column)), cell.arg(text));
    };
    replaceCell(5, QStringLiteral("%1%1%1%1%1%1%1%1 ").arg(sign).repeated(kWords));
    replaceCell(6, QStringLiteral("yyyyyyyy ").repeated(kWords));
    const QString path = write(html);
    const auto pages = pdfreader::words(path);
    QVERIFY(pages.size() > 5);
    int tall = 0;
    int beside = 0;
    for (int number = 0; number < pages.size(); ++number) {
        for (const pdfreader::Word &word : pages.at(number)) {
            tall += word.text.startsWith(sign) ? word.text.count(sign) : 0;
            beside += word.text == QLatin1String("yyyyyyyy");
            QVERIFY2(word.place.bottom() < kPrintableBottom + 1, qPrintable(word.text));
            QVERIFY2(number == 0 || word.place.top() > kLaterPagesTop, qPrintable(word.text));
        }
        QVERIFY(!pdfreader::wordsLike(pages.at(number), QStringLiteral("Addr")).isEmpty());
    }
    for (const int number : {1, 2, 3}) {
        const QImage page = pdfreader::picture(path, number);
        const int end = qCeil(kPrintableBottom) + 1;
        QVERIFY(isWhite(page.copy(0, end, page.width(), page.height() - end)));
    }
    QCOMPARE(tall, 8 * kWords);
    QCOMPARE(beside, kWords);
    QCOMPARE(pdfreader::wordsLike(pages.last(), QStringLiteral("129n")).size(), wordCount(129, 13));
}

void TstPdfPages::textWithoutATableFlowsOverPages()
{
    QString html = QStringLiteral("<p style=\"font-size:10px\">first");
    for (int line = 0; line < 300; ++line)
        html += QStringLiteral("<br>line%1").arg(line);
    const auto pages = pdfreader::words(write(html + QStringLiteral("</p>")));
    QVERIFY(pages.size() >= 3);
    QStringList found;
    for (int number = 0; number < pages.size(); ++number) {
        for (const pdfreader::Word &word : pages.at(number)) {
            QVERIFY2(number == 0 || word.place.top() > kLaterPagesTop, qPrintable(word.text));
            QVERIFY2(word.place.bottom() < kPrintableBottom, qPrintable(word.text));
            found << word.text;
        }
    }
    QStringList expected{QStringLiteral("first")};
    for (int line = 0; line < 300; ++line)
        expected << QStringLiteral("line%1").arg(line);
    QCOMPARE(found, expected);
}

QTEST_MAIN(TstPdfPages)
#include "tst_pdfpages.moc"
