#include "base/gui/fonts.h"
#include "shownratetable.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QtTest>

namespace {

const QString kMark = QStringLiteral("border: 2px solid blue");

QStringList marked(const RateTable &table)
{
    QStringList names;
    const auto buttons = table.buttons();
    for (const QPushButton *button : buttons) {
        if (button->styleSheet() == kMark)
            names << button->objectName();
        else if (!button->styleSheet().isEmpty())
            names << QStringLiteral("style of ") + button->objectName();
    }
    return names;
}

QStringList disabled(const RateTable &table)
{
    QStringList names;
    const auto buttons = table.buttons();
    for (const QPushButton *button : buttons) {
        if (!button->isEnabled())
            names << button->objectName();
    }
    return names;
}

QImage picture(const QPushButton &cell, int ratio, QIcon::Mode mode = QIcon::Normal)
{
    return cell.icon().pixmap(cell.iconSize() * ratio, mode).toImage();
}

bool isRed(QRgb pixel)
{
    return qAlpha(pixel) > 128 && qRed(pixel) > 200 && qGreen(pixel) < 50 && qBlue(pixel) < 50;
}

bool isBlack(QRgb pixel)
{
    return qAlpha(pixel) > 128 && qRed(pixel) < 50 && qGreen(pixel) < 50 && qBlue(pixel) < 50;
}

/// How many pixels of these lines have the colour.
int count(const QImage &image, int top, int bottom, bool (*hasColour)(QRgb))
{
    int found = 0;
    for (int y = top; y < bottom; ++y) {
        for (int x = 0; x < image.width(); ++x)
            found += hasColour(image.pixel(x, y)) ? 1 : 0;
    }
    return found;
}

} // namespace

class TstRateTable : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }

    void headingsReadAsAgreed_data();
    void headingsReadAsAgreed();
    void thereAreNoOtherHeadings();
    void cellsStandUnderTheirHeadings();

    void picturesAreDrawnForTheFirstShow();
    void picturesHaveBlackAboveRed();
    void pictureForAFineScreenIsNotMagnified();
    void deadPicturesAreGrey();

    void allCellsBeginEnabledAndUnmarked();
    void cellIsFoundByItsNameOnly_data();
    void cellIsFoundByItsNameOnly();
    void namesAreParsed_data();
    void namesAreParsed();

    void markGoesFromCellToCell();
    void deadCellAndNullAreNotMarked();
    void clearedTableHasNoMark();
    void markIsToldToScreenReaders();

    void disablingTakesThoseCellsOnly();
    void unknownCellsAreNotDisabled();
    void allAreDisabledAndEnabled();
};

void TstRateTable::headingsReadAsAgreed_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("text");
    QTest::newRow("corner") << 0 << 0
                            << "<p align=center><font size = 4 color=indigo>Bitrate</font><br/>"
                               "<font size=2 color=indigo></font></p>";
    const char *channels[] = {"2", "4", "8", "16", "32", "64", "128", "256"};
    for (int i = 0; i < 8; ++i)
        QTest::newRow(channels[i]) << 0 << i + 1
                                   << QStringLiteral("<p align=center><font size = 4 color=green>Channels"
                                                     "</font><br/><font size=2 color=green>") +
                                          channels[i] + QStringLiteral("</font></p>");
    const char *bitRates[] = {"10000", "5000", "2500", "1250", "625", "312"};
    for (int i = 0; i < 6; ++i)
        QTest::newRow(bitRates[i]) << i + 1 << 0
                                   << QStringLiteral("<p align=center><font size = 4 color=indigo>kBit/s"
                                                     "</font><br/><font size=2 color=indigo>") +
                                          bitRates[i] + QStringLiteral("</font></p>");
}

void TstRateTable::headingsReadAsAgreed()
{
    QFETCH(int, row);
    QFETCH(int, column);
    QFETCH(QString, text);
    RateTable table;
    table.show();
    const auto *grid = qobject_cast<QGridLayout *>(table.layout());
    QVERIFY(grid);
    const auto *heading = qobject_cast<QLabel *>(grid->itemAtPosition(row, column)->widget());
    QVERIFY(heading);
    QCOMPARE(heading->text(), text);
    QCOMPARE(heading->textFormat(), Qt::RichText);
    QCOMPARE(heading->styleSheet(), QStringLiteral("border: 1px solid black"));
}

void TstRateTable::thereAreNoOtherHeadings()
{
    const RateTable table;
    QCOMPARE(table.findChildren<QLabel *>().size(), 15);
}

void TstRateTable::cellsStandUnderTheirHeadings()
{
    const RateTable table;
    const auto *grid = qobject_cast<QGridLayout *>(table.layout());
    QCOMPARE(grid->rowCount(), 7);
    QCOMPARE(grid->columnCount(), 9);
    const char *channels[] = {"2", "4", "8", "16", "32", "64", "128", "256"};
    const char *bitRates[] = {"10000", "5000", "2500", "1250", "625", "312"};
    for (int row = 0; row < 6; ++row) {
        for (int column = 0; column < 8; ++column) {
            QCOMPARE(grid->itemAtPosition(row + 1, column + 1)->widget()->objectName(),
                     QString::fromLatin1(channels[column]) + QLatin1Char(',') + bitRates[row]);
        }
    }
}

void TstRateTable::picturesAreDrawnForTheFirstShow()
{
    RateTable table;
    const QPushButton &cell = *table.buttons().first();
    QVERIFY(cell.icon().isNull()); // the start of the program does not wait for it
    table.show();
    QVERIFY(!cell.icon().isNull());
    QVERIFY(cell.width() >= cell.iconSize().width() + 4);
    QVERIFY(cell.height() >= cell.iconSize().height() + 4);
}

void TstRateTable::picturesHaveBlackAboveRed()
{
    RateTable table;
    table.show();
    const auto buttons = table.buttons();
    for (const QPushButton *cell : buttons) {
        for (const int ratio : {1, 2}) {
            const QImage image = picture(*cell, ratio);
            QCOMPARE(image.size(), cell->iconSize() * ratio);
            const int half = image.height() / 2;
            QVERIFY2(count(image, 0, half, isBlack) > 10 * ratio, qPrintable(cell->objectName()));
            QCOMPARE(count(image, 0, half, isRed), 0);
            QVERIFY2(count(image, half, image.height(), isRed) > 5 * ratio, qPrintable(cell->objectName()));
            QCOMPARE(count(image, image.height() * 2 / 3, image.height(), isBlack), 0);
            QCOMPARE(qAlpha(image.pixel(0, 0)), 0); // on a transparent ground
        }
    }
}

void TstRateTable::pictureForAFineScreenIsNotMagnified()
{
    RateTable table;
    table.show();
    const QPushButton &cell = *table.buttons().first();
    const QSize size = cell.iconSize();
    const QList<QSize> sizes = cell.icon().availableSizes();
    QVERIFY(sizes.contains(size));
    QVERIFY(sizes.contains(size * 2));
    QVERIFY(picture(cell, 2) != picture(cell, 1).scaled(size * 2));
    QVERIFY(picture(cell, 2) !=
            picture(cell, 1).scaled(size * 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

void TstRateTable::deadPicturesAreGrey()
{
    RateTable table;
    table.show();
    const QColor grey = QApplication::palette().color(QPalette::Disabled, QPalette::ButtonText);
    const auto buttons = table.buttons();
    for (const QPushButton *cell : buttons) {
        const QImage live = picture(*cell, 2);
        const QImage dead = picture(*cell, 2, QIcon::Disabled);
        QCOMPARE(dead.size(), live.size());
        int inked = 0;
        for (int y = 0; y < dead.height(); ++y) {
            for (int x = 0; x < dead.width(); ++x) {
                const QRgb pixel = dead.pixel(x, y);
                QCOMPARE(qAlpha(pixel), qAlpha(live.pixel(x, y)));
                if (qAlpha(pixel) < 255)
                    continue;
                QCOMPARE(QColor(pixel), grey);
                ++inked;
            }
        }
        QVERIFY(inked > 0);
    }
}

void TstRateTable::allCellsBeginEnabledAndUnmarked()
{
    const RateTable table;
    QCOMPARE(disabled(table), QStringList());
    QCOMPARE(marked(table), QStringList());
}

void TstRateTable::cellIsFoundByItsNameOnly_data()
{
    QTest::addColumn<QString>("bitRate");
    QTest::addColumn<QString>("channels");
    QTest::addColumn<QString>("found");
    QTest::newRow("a cell") << "625"
                            << "32"
                            << "32,625";
    QTest::newRow("the last cell") << "312"
                                   << "256"
                                   << "256,312";
    QTest::newRow("the other way round") << "32"
                                         << "625"
                                         << "";
    QTest::newRow("unknown bit rate") << "40000"
                                      << "32"
                                      << "";
    QTest::newRow("unknown channels") << "625"
                                      << "3"
                                      << "";
    QTest::newRow("leading zero") << "0625"
                                  << "32"
                                  << "";
    QTest::newRow("blank") << "625 "
                           << "32"
                           << "";
    QTest::newRow("no bit rate") << ""
                                 << "32"
                                 << "";
    QTest::newRow("nothing") << ""
                             << ""
                             << "";
}

void TstRateTable::cellIsFoundByItsNameOnly()
{
    QFETCH(QString, bitRate);
    QFETCH(QString, channels);
    QFETCH(QString, found);
    const RateTable table;
    const QPushButton *cell = table.button({bitRate, channels});
    QCOMPARE(cell ? cell->objectName() : QString(), found);
}

void TstRateTable::namesAreParsed_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isPair");
    QTest::addColumn<QString>("channels");
    QTest::addColumn<QString>("bitRate");
    QTest::newRow("a cell") << "32,625" << true << "32"
                            << "625";
    QTest::newRow("empty parts are dropped") << ",32,,625," << true << "32"
                                             << "625";
    QTest::newRow("more parts than two") << "32,625,7" << true << "32"
                                         << "625";
    QTest::newRow("no digits") << "a,b" << true << "a"
                               << "b";
    QTest::newRow("blanks stay") << " 32, 625" << true << " 32"
                                 << " 625";
    QTest::newRow("one part") << "32" << false << ""
                              << "";
    QTest::newRow("one part and a comma") << "32," << false << ""
                                          << "";
    QTest::newRow("commas only") << ",,," << false << ""
                                 << "";
    QTest::newRow("empty") << "" << false << ""
                           << "";
    QTest::newRow("another separator") << "32;625" << false << ""
                                       << "";
}

void TstRateTable::namesAreParsed()
{
    QFETCH(QString, name);
    const auto choice = RateTable::choiceOf(name);
    QTEST(choice.has_value(), "isPair");
    QTEST(choice.value_or(RateChoice{QLatin1String(""), QLatin1String("")}).channels, "channels");
    QTEST(choice.value_or(RateChoice{QLatin1String(""), QLatin1String("")}).bitRate, "bitRate");
}

void TstRateTable::markGoesFromCellToCell()
{
    RateTable table;
    table.markSelected(table.button({"2500", "16"}));
    QCOMPARE(marked(table), QStringList{"16,2500"});
    QCOMPARE(table.selected(), table.button({"2500", "16"}));
    table.markSelected(table.button({"312", "2"}));
    QCOMPARE(marked(table), QStringList{"2,312"});
    table.markSelected(table.button({"312", "2"}));
    QCOMPARE(marked(table), QStringList{"2,312"});
}

void TstRateTable::deadCellAndNullAreNotMarked()
{
    ShownTable t;
    t.table->disable({{"625", "256"}});
    t.table->markSelected(t.cell("16,2500"));
    t.table->markSelected(t.cell("256,625"));
    QCOMPARE(marked(*t.table), QStringList{"16,2500"});
    t.table->markSelected(nullptr);
    QCOMPARE(marked(*t.table), QStringList{"16,2500"});
    QCOMPARE(t.focused(), QStringLiteral("16,2500"));
}

void TstRateTable::clearedTableHasNoMark()
{
    RateTable table;
    table.markSelected(table.button({"2500", "16"}));
    table.clearSelection();
    QCOMPARE(marked(table), QStringList());
    QVERIFY(!table.selected());
    table.clearSelection();
    QCOMPARE(marked(table), QStringList());
}

void TstRateTable::markIsToldToScreenReaders()
{
    RateTable table;
    QPushButton *first = table.button({"2500", "16"});
    QPushButton *second = table.button({"312", "2"});
    table.markSelected(first);
    QCOMPARE(first->accessibleDescription(), QStringLiteral("selected"));
    table.markSelected(second);
    QCOMPARE(first->accessibleDescription(), QString());
    QCOMPARE(second->accessibleDescription(), QStringLiteral("selected"));
    table.clearSelection();
    QCOMPARE(second->accessibleDescription(), QString());
}

void TstRateTable::disablingTakesThoseCellsOnly()
{
    RateTable table;
    table.disable({{"10000", "2"}, {"312", "128"}});
    QCOMPARE(disabled(table), (QStringList{"2,10000", "128,312"}));
    table.disable({{"625", "32"}});
    QCOMPARE(disabled(table), (QStringList{"2,10000", "32,625", "128,312"}));
}

void TstRateTable::unknownCellsAreNotDisabled()
{
    RateTable table;
    table.disable({{"40000", "2"}, {"", ""}, {"2", "10000"}, {"312", "64"}});
    QCOMPARE(disabled(table), QStringList{"64,312"});
}

void TstRateTable::allAreDisabledAndEnabled()
{
    RateTable table;
    table.setAllEnabled(false);
    QCOMPARE(disabled(table).size(), 48);
    table.setAllEnabled(true);
    QCOMPARE(disabled(table), QStringList());
}

QTEST_MAIN(TstRateTable)
#include "tst_ratetable.moc"
