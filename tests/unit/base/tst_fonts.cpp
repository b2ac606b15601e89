#include "base/gui/fonts.h"

#include <QWidget>
#include <QtTest>

class TstFonts : public QObject
{
    Q_OBJECT

private slots:
    void textIs12Pixels();
    void textKeepsTheOtherPropertiesOfItsBase();
    void strongIsBold();
    void titleIsLargeAndBold();
    void placeholderIsLargeBoldAndItalic();
    void smallIs11Pixels();
    void consoleHasCharactersOfOneWidth();
    void consoleHasCharactersOfOneWidthInAnyWindow();
    void reportIsNarrowAndNotFittedToTheScreen();
    void substitutionsComeInTheirOrder_data();
    void substitutionsComeInTheirOrder();
};

void TstFonts::textIs12Pixels()
{
    QCOMPARE(fonts::text().family(), QStringLiteral("Segoe UI"));
    QCOMPARE(fonts::text().pixelSize(), 12);
    QCOMPARE(fonts::text().weight(), int(QFont::Normal));
}

void TstFonts::textKeepsTheOtherPropertiesOfItsBase()
{
    QFont base(QStringLiteral("Other"));
    base.setPixelSize(30);
    base.setUnderline(true);
    const QFont font = fonts::text(base);
    QVERIFY(font.underline());
    QCOMPARE(font.pixelSize(), 12);
    QCOMPARE(font.family(), QStringLiteral("Segoe UI"));
}

void TstFonts::strongIsBold()
{
    QCOMPARE(fonts::strong().pixelSize(), 12);
    QCOMPARE(fonts::strong().weight(), 75);
}

void TstFonts::titleIsLargeAndBold()
{
    const QFont font = fonts::title();
    QCOMPARE(font.family(), QStringLiteral("Segoe UI"));
    QCOMPARE(font.pixelSize(), 15);
    QCOMPARE(font.weight(), 75);
    QVERIFY(!font.italic());
}

void TstFonts::placeholderIsLargeBoldAndItalic()
{
    const QFont font = fonts::placeholder();
    QCOMPARE(font.family(), QStringLiteral("Segoe UI"));
    QCOMPARE(font.pixelSize(), 15);
    QCOMPARE(font.weight(), 75);
    QVERIFY(font.italic());
    QVERIFY(font.kerning());
}

void TstFonts::smallIs11Pixels()
{
    QCOMPARE(fonts::small().family(), QStringLiteral("Segoe UI"));
    QCOMPARE(fonts::small().pixelSize(), 11);
}

void TstFonts::consoleHasCharactersOfOneWidth()
{
    const QFont font = fonts::console();
    QCOMPARE(font.family(), QStringLiteral("Lucida Console"));
    const QFontMetrics metrics(font);
    QCOMPARE(metrics.horizontalAdvance(QStringLiteral("iiii")),
             metrics.horizontalAdvance(QStringLiteral("WWWW")));
}

void TstFonts::consoleHasCharactersOfOneWidthInAnyWindow()
{
    QWidget window;
    window.setFont(fonts::text());
    QWidget console(&window);
    console.setFont(fonts::console());
    const QFontMetrics metrics(console.font());
    QCOMPARE(metrics.horizontalAdvance(QStringLiteral("iiii")),
             metrics.horizontalAdvance(QStringLiteral("WWWW")));
}

void TstFonts::reportIsNarrowAndNotFittedToTheScreen()
{
    QCOMPARE(fonts::report().family(), QStringLiteral("arial narrow"));
    QCOMPARE(fonts::report().hintingPreference(), QFont::PreferNoHinting);
}

void TstFonts::substitutionsComeInTheirOrder_data()
{
    QTest::addColumn<QString>("family");
    QTest::addColumn<QString>("expected");
    QTest::newRow("window") << "Segoe UI"
                            << "open sans,noto sans,dejavu sans";
    QTest::newRow("report") << "arial narrow"
                            << "liberation sans narrow,nimbus sans narrow,arial,open sans,"
                               "dejavu sans condensed,dejavu sans";
}

void TstFonts::substitutionsComeInTheirOrder()
{
    QFETCH(QString, family);
    QFETCH(QString, expected);
    fonts::installSubstitutions();
    // Families compare without regard to case, and the list keeps them in lower case.
    const QString list = QFont::substitutes(family).join(QLatin1Char(',')).toLower();
    QVERIFY2(list.startsWith(expected), qPrintable(list));
}

QTEST_MAIN(TstFonts)
#include "tst_fonts.moc"
