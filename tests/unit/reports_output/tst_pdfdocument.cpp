#include "base/gui/fonts.h"
#include "reports/pdfdocument.h"
#include "samplestore.h"
#include "support/pdfreader.h"

#include <QFile>
#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>

Q_DECLARE_METATYPE(PdfFlow)

namespace {

// Page pixels from the corner of the paper: margins of 50 and 20 mm, and the rest of A4.
const QRectF kPrintable(246, 98.4, 689, 1166.4);
const QRectF kLogo(246 + 570, 98.4 - 5, 110, 40);
constexpr double kBelowLogo = 40; ///< from the top of the printable area
constexpr double kHalfPixel = 0.5;

QString paragraphs(int count)
{
    QString html = QStringLiteral("<html><body style=\"font-family:'arial narrow';font-size:10px;\"><p>");
    for (int i = 0; i < count; ++i)
        html += QStringLiteral("<br>line%1").arg(i);
    return html + QStringLiteral("</p></body></html>");
}

/// How far two pictures are apart: 0 equal, 255 as far as can be.
double distance(const QImage &a, const QImage &b)
{
    double sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x)
            sum += qAbs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y)));
    }
    return sum / (a.width() * a.height());
}

bool isWhite(const QImage &page, const QRect &place)
{
    for (int y = place.top(); y <= place.bottom(); ++y) {
        for (int x = place.left(); x <= place.right(); ++x) {
            if (qGray(page.pixel(x, y)) < 250)
                return false;
        }
    }
    return true;
}

QImage logoOnWhite(const QSize &size)
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(picture.rect(), QImage(QStringLiteral(":/pictures/qor-Logo.png"))
                                          .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    return picture;
}

} // namespace

class TstPdfDocument : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void paperIsA4WithTheTitleOfTheReport();
    void textStandsInsideTheMargins_data();
    void textStandsInsideTheMargins();
    void noTextStandsUnderTheLogo_data();
    void noTextStandsUnderTheLogo();
    void logoStandsWholeOnEveryPage();
    void logoIsWrittenOncePerPage();
    void fontsAreEmbeddedAndNarrow();
    void onePageIsCutBehindItsLastWholeLine();
    void anEmptyReportHasOnePage();
    void textIsBlackWhateverTheScreenShows();
    void linesOfTheTableAreThinAndPale();
    void escapedTextOfADeviceIsShownAsItCame();

private:
    QString write(const QString &html, PdfFlow flow, const QString &title = QStringLiteral("title"));

    QTemporaryDir m_folder;
};

void TstPdfDocument::initTestCase()
{
    fonts::installSubstitutions();
}

QString TstPdfDocument::write(const QString &html, PdfFlow flow, const QString &title)
{
    const QString path = m_folder.filePath(QStringLiteral("report.pdf"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || !writePdf(file, html, flow, title))
        QTest::qFail("no PDF", __FILE__, __LINE__);
    return path;
}

void TstPdfDocument::paperIsA4WithTheTitleOfTheReport()
{
    const auto facts = pdfreader::facts(
        write(paragraphs(3), PdfFlow::OnePage, QString::fromUtf8("20261121 Prüfung (1).pdf")));
    QCOMPARE(facts.value(QStringLiteral("Pages")), QStringLiteral("1"));
    QVERIFY2(facts.value(QStringLiteral("Page size")).contains(QLatin1String("(A4)")),
             qPrintable(facts.value(QStringLiteral("Page size"))));
    QCOMPARE(facts.value(QStringLiteral("Title")), QString::fromUtf8("20261121 Prüfung (1).pdf"));
}

void TstPdfDocument::textStandsInsideTheMargins_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<PdfFlow>("flow");
    QTest::addColumn<double>("firstLine");
    QTest::newRow("long lines")
        << QStringLiteral("<p style=\"font-size:10px\">%1</p>").arg(QStringLiteral("word ").repeated(3000))
        << PdfFlow::OnePage << kBelowLogo;
    QTest::newRow("a line without blanks")
        << QStringLiteral("<p style=\"font-size:10px\">%1</p>").arg(QString(900, u'W')) << PdfFlow::OnePage
        << kBelowLogo;
    QTest::newRow("short lines") << paragraphs(20) << PdfFlow::OnePage << 0.0;
    QTest::newRow("overview") << samplestore::overview(128) << PdfFlow::PageByPage << 0.0;
}

void TstPdfDocument::textStandsInsideTheMargins()
{
    QFETCH(QString, html);
    QFETCH(PdfFlow, flow);
    QFETCH(double, firstLine);
    const auto pages = pdfreader::words(write(html, flow));
    QVERIFY(!pages.isEmpty());
    const QRectF allowed = kPrintable.adjusted(-kHalfPixel, -kHalfPixel, kHalfPixel, kHalfPixel);
    for (const auto &page : pages) {
        QVERIFY(page.size() > 5);
        for (const pdfreader::Word &word : page)
            QVERIFY2(allowed.contains(word.place), qPrintable(word.text));
    }
    QVERIFY(pages.first().first().place.left() < kPrintable.left() + 10);
    QVERIFY(pages.first().first().place.top() < kPrintable.top() + firstLine + 20);
}

void TstPdfDocument::noTextStandsUnderTheLogo_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<double>("firstLine");
    const QString name = QStringLiteral("20261121100000_VX_SystemReport_.pdf");
    const QString longName = QStringLiteral("20261121100000_%1.pdf").arg(QString(220, u'm'));
    const QString overview = samplestore::overview(3);
    const QString protocol =
        QStringLiteral("<p style=\"line-height:0.8;font-size:10px\">%1<br>= [ Test Protocol ] =</p>");
    QTest::newRow("overview") << overview << 0.0;
    QTest::newRow("overview, long file name") << QString(overview).replace(name, longName) << kBelowLogo;
    QTest::newRow("protocol") << protocol.arg(name) << 0.0;
    QTest::newRow("protocol, long file name") << protocol.arg(longName) << kBelowLogo;
    QTest::newRow("second line long") << protocol.arg(name + QStringLiteral("<br>") + longName) << kBelowLogo;
    QTest::newRow("long line below the logo")
        << protocol.arg(name + QStringLiteral("<br>short").repeated(5) + QStringLiteral("<br>") + longName)
        << 0.0;
}

void TstPdfDocument::noTextStandsUnderTheLogo()
{
    QFETCH(QString, html);
    QFETCH(double, firstLine);
    for (const PdfFlow flow : {PdfFlow::OnePage, PdfFlow::PageByPage}) {
        const auto pages = pdfreader::words(write(html, flow));
        QVERIFY(!pages.isEmpty());
        for (const pdfreader::Word &word : pages.first())
            QVERIFY2(!word.place.intersects(kLogo), qPrintable(word.text));
        const double top = pages.first().first().place.top() - kPrintable.top();
        QVERIFY2(top > firstLine && top < firstLine + 20, qPrintable(QString::number(top)));
    }
}

void TstPdfDocument::logoStandsWholeOnEveryPage()
{
    const QString path = write(samplestore::overview(128), PdfFlow::PageByPage);
    const int pages = pdfreader::facts(path).value(QStringLiteral("Pages")).toInt();
    QVERIFY(pages >= 3);
    const QRect place(246 + 570, 98 - 5, 110, 40);
    const QImage logo = logoOnWhite(place.size());
    QVERIFY(!isWhite(logo, logo.rect()));
    for (int number = 1; number <= pages; ++number) {
        const QImage page = pdfreader::picture(path, number);
        QVERIFY(page.rect().contains(place));
        double apart = 255;
        for (const QPoint &rounding : {QPoint(0, 0), QPoint(1, 0), QPoint(0, 1), QPoint(1, 1)})
            apart = qMin(apart, distance(page.copy(place.translated(rounding)), logo));
        QVERIFY2(apart < 12, qPrintable(QString::number(apart)));
        QVERIFY(isWhite(page, QRect(place.left() - 3, place.top() - 6, place.width() + 6, 5)));
        QVERIFY(isWhite(page, QRect(place.left() - 3, place.bottom() + 2, place.width() + 6, 2)));
        QVERIFY(isWhite(page, QRect(place.right() + 2, place.top(), 5, place.height())));
    }
}

void TstPdfDocument::logoIsWrittenOncePerPage()
{
    const QString path = write(samplestore::overview(128), PdfFlow::PageByPage);
    QStringList pages;
    for (const QString &line : pdfreader::pictures(path))
        pages << line.section(u' ', 0, 0);
    QStringList expected;
    for (int i = 1; i <= pdfreader::facts(path).value(QStringLiteral("Pages")).toInt(); ++i)
        expected << QString::number(i);
    QCOMPARE(pages, expected);
}

void TstPdfDocument::fontsAreEmbeddedAndNarrow()
{
    const auto fonts = pdfreader::fonts(write(samplestore::overview(3), PdfFlow::PageByPage));
    QCOMPARE(fonts.size(), 2); // upright and bold
    for (const pdfreader::Font &font : fonts) {
        QVERIFY2(font.isEmbedded, qPrintable(font.name));
        QVERIFY2(font.name.startsWith(QLatin1String("LiberationSansNarrow")), qPrintable(font.name));
    }
}

void TstPdfDocument::onePageIsCutBehindItsLastWholeLine()
{
    const QString path = write(paragraphs(300), PdfFlow::OnePage);
    const auto pages = pdfreader::words(path);
    QCOMPARE(pages.size(), 1);
    const int count = pages.first().size();
    QVERIFY2(count > 80 && count < 120, qPrintable(QString::number(count)));
    for (int i = 0; i < count; ++i)
        QCOMPARE(pages.first().at(i).text, QStringLiteral("line%1").arg(i));
    // No shred of the next line.
    const QImage page = pdfreader::picture(path, 1);
    const int end = qCeil(pages.first().last().place.bottom()) + 1;
    QVERIFY(isWhite(page, QRect(0, end, page.width(), page.height() - end)));
}

void TstPdfDocument::anEmptyReportHasOnePage()
{
    for (const PdfFlow flow : {PdfFlow::OnePage, PdfFlow::PageByPage})
        QCOMPARE(pdfreader::facts(write(QString(), flow)).value(QStringLiteral("Pages")),
                 QStringLiteral("1"));
}

void TstPdfDocument::textIsBlackWhateverTheScreenShows()
{
    const QPalette before = QGuiApplication::palette();
    QPalette dark = before;
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::Base, Qt::black);
    QGuiApplication::setPalette(dark);
    const QString path = write(QStringLiteral("<p style=\"font-size:40px\">IIIIIIII</p>"), PdfFlow::OnePage);
    QGuiApplication::setPalette(before);
    const QRect text = pdfreader::words(path).value(0).value(0).place.toRect();
    QVERIFY(!text.isEmpty());
    int darkest = 255;
    const QImage page = pdfreader::picture(path, 1);
    for (int x = text.left(); x < text.right(); ++x)
        darkest = qMin(darkest, qGray(page.pixel(x, text.center().y())));
    QVERIFY2(darkest < 30, qPrintable(QString::number(darkest)));
}

void TstPdfDocument::linesOfTheTableAreThinAndPale()
{
    // Between two cells of the empty heading row; no text crosses it.
    const QString path = write(samplestore::overview(1), PdfFlow::PageByPage);
    const QRectF heading =
        pdfreader::wordsLike(pdfreader::words(path).value(0), QStringLiteral("Addr")).value(0).place;
    QVERIFY(heading.isValid());
    constexpr int kScale = 4;
    const QImage page = pdfreader::picture(path, 1, pdfreader::kPixelsPerInch * kScale);
    const int y = qRound((heading.bottom() + 9) * kScale);
    QVector<int> widths;
    int width = 0;
    for (int x = qRound(kPrintable.left()) * kScale; x < kPrintable.left() * kScale + 130 * kScale; ++x) {
        const QRgb pixel = page.pixel(x, y);
        QVERIFY2(qGray(pixel) > 190, qPrintable(QString::number(x))); // #d1d1e0 is 211
        if (qGray(pixel) < 230) {
            ++width;
        } else if (width > 0) {
            widths.append(width);
            width = 0;
        }
    }
    QVERIFY2(widths.size() >= 3, qPrintable(QString::number(widths.size())));
    for (const int found : widths)
        QVERIFY2(found <= kScale + 1, qPrintable(QString::number(found)));
}

void TstPdfDocument::escapedTextOfADeviceIsShownAsItCame()
{
    const QString html =
        QString::fromUtf8("<p style=\"font-size:10px\">&lt;b&gt;&amp;amp;&nbsp;&nbsp;±µΩ°</p>");
    const auto words = pdfreader::words(write(html, PdfFlow::OnePage)).value(0);
    QCOMPARE(words.size(), 2);
    QCOMPARE(words.first().text, QStringLiteral("<b>&amp;"));
    QCOMPARE(words.last().text, QString::fromUtf8("±µΩ°"));
}

QTEST_MAIN(TstPdfDocument)
#include "tst_pdfdocument.moc"
