#include "reports/htmltext.h"

#include <QXmlStreamReader>
#include <QtTest>

/// Texts of modules in HTML.
class TstHtmlText : public QObject
{
    Q_OBJECT

private slots:
    void shownText_data();
    void shownText();
    void everyCharacterIsWellFormed();
};

void TstHtmlText::shownText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("html");
    const QChar replaced(0xFFFD);
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("plain") << "Strain-Gauge_4/20 [1]"
                           << "Strain-Gauge_4/20 [1]";
    QTest::newRow("less") << "a<b"
                          << "a&lt;b";
    QTest::newRow("greater") << "a>b"
                             << "a&gt;b";
    QTest::newRow("ampersand") << "a&b"
                               << "a&amp;b";
    QTest::newRow("quotes") << "\"a\""
                            << "&quot;a&quot;";
    QTest::newRow("apostrophe") << "it's"
                                << "it's";
    QTest::newRow("dollar") << "a$b#c%1"
                            << "a$b#c%1";
    QTest::newRow("what looks escaped") << "&lt;&nbsp;"
                                        << "&amp;lt;&amp;nbsp;";
    QTest::newRow("tag") << "</p><b>"
                         << "&lt;/p&gt;&lt;b&gt;";
    QTest::newRow("umlauts") << QStringLiteral("äöüÄÖÜß±°C€") << QStringLiteral("äöüÄÖÜß±°C€");
    QTest::newRow("beyond 16 bits") << QString::fromUtf8("\xF0\x9F\x98\x80")
                                    << QString::fromUtf8("\xF0\x9F\x98\x80");
    QTest::newRow("one blank") << "a b"
                               << "a b";
    QTest::newRow("two blanks") << "a  b"
                                << "a&nbsp; b";
    QTest::newRow("three blanks") << "a   b"
                                  << "a&nbsp;&nbsp; b";
    QTest::newRow("several runs") << "a  b c   d"
                                  << "a&nbsp; b c&nbsp;&nbsp; d";
    QTest::newRow("blank in front") << " a"
                                    << "&nbsp;a";
    QTest::newRow("two in front") << "  a"
                                  << "&nbsp;&nbsp;a";
    QTest::newRow("blank behind") << "a "
                                  << "a&nbsp;";
    QTest::newRow("two behind") << "a  "
                                << "a&nbsp;&nbsp;";
    QTest::newRow("only a blank") << " "
                                  << "&nbsp;";
    QTest::newRow("only blanks") << "   "
                                 << "&nbsp;&nbsp;&nbsp;";
    QTest::newRow("blank and escaped") << " < "
                                       << "&nbsp;&lt;&nbsp;";
    QTest::newRow("tab") << "a\tb" << (QStringLiteral("a") + replaced + 'b');
    QTest::newRow("line end") << "a\nb" << (QStringLiteral("a") + replaced + 'b');
    QTest::newRow("carriage return") << "a\rb" << (QStringLiteral("a") + replaced + 'b');
    QTest::newRow("zero") << (QStringLiteral("a") + QChar(0)) << (QStringLiteral("a") + replaced);
    QTest::newRow("one") << (QStringLiteral("a") + QChar(1)) << (QStringLiteral("a") + replaced);
    QTest::newRow("escape") << (QStringLiteral("a") + QChar(0x1B)) << (QStringLiteral("a") + replaced);
    QTest::newRow("delete") << (QStringLiteral("a") + QChar(0x7F)) << (QStringLiteral("a") + replaced);
    for (const int code : {0x2028, 0x2029, 0x202A, 0x202D, 0x202E, 0x2066, 0x2069, 0xFDD0, 0xFDD1, 0xFDEF,
                           0xFFFC, 0xFFFE, 0xFFFF}) {
        QTest::addRow("U+%04X", unsigned(code))
            << (QStringLiteral("a") + QChar(code) + 'b') << (QStringLiteral("a") + replaced + 'b');
    }
    for (const int code : {0x00A0, 0x200E, 0x2027, 0x2030, 0x05D0, 0xFDCF, 0xFDF0, 0xFFFB}) {
        const QString text = QStringLiteral("a") + QChar(code) + 'b';
        QTest::addRow("U+%04X", unsigned(code)) << text << text;
    }
    QTest::newRow("no character beyond 16 bits")
        << QString::fromUtf8("a\xF0\x9F\xBF\xBF") << (QStringLiteral("a") + replaced);
    QTest::newRow("control beyond ASCII")
        << (QStringLiteral("a") + QChar(0x85)) << (QStringLiteral("a") + replaced);
    QTest::newRow("lone high surrogate")
        << (QStringLiteral("a") + QChar(0xD83D) + 'b') << (QStringLiteral("a") + replaced + 'b');
    QTest::newRow("high surrogate at the end")
        << (QStringLiteral("a") + QChar(0xD83D)) << (QStringLiteral("a") + replaced);
    QTest::newRow("lone low surrogate")
        << (QStringLiteral("a") + QChar(0xDE00)) << (QStringLiteral("a") + replaced);
    QTest::newRow("no character FFFE")
        << (QStringLiteral("a") + QChar(0xFFFE)) << (QStringLiteral("a") + replaced);
    QTest::newRow("no character FFFF")
        << (QStringLiteral("a") + QChar(0xFFFF)) << (QStringLiteral("a") + replaced);
}

void TstHtmlText::shownText()
{
    QFETCH(QString, text);
    QTEST(htmlText(text), "html");
}

void TstHtmlText::everyCharacterIsWellFormed()
{
    for (int code = 0; code <= 0xFFFF; ++code) {
        const QString html = htmlText(QStringLiteral("x") + QChar(code) + 'y');
        QVERIFY2(html.startsWith('x') && html.endsWith('y'), qPrintable(QString::number(code, 16)));
        QXmlStreamReader reader(QStringLiteral("<p>") + html + QStringLiteral("</p>"));
        QVERIFY(reader.readNextStartElement());
        const QString shown = reader.readElementText();
        QVERIFY2(!reader.hasError(), qPrintable(QString::number(code, 16)));
        QCOMPARE(shown.size(), 3);
    }
}

QTEST_GUILESS_MAIN(TstHtmlText)
#include "tst_htmltext.moc"
