#include "support/childbyname.h"
#include "system/rates/ratepairs.h"
#include "system/rates/ratetable.h"

#include "base/gui/fonts.h"

#include <QPainter>
#include <QPushButton>
#include <QTextDocument>
#include <QtTest>

namespace {

constexpr int kRatio = 2;

struct Pair
{
    const char *large;
    const char *small;
};

constexpr Pair kPairs[] = {
    {"96000", "250000"},  {"48000", "125000"},  {"24000", "62500"},   {"12000", "31250"},
    {"6000", "15625"},    {"3000", "7812.5"},   {"1500", "3906.25"},  {"750", "1953.125"},
    {"375", "976.5625"},  {"188", "488.28125"}, {"94", "244.140625"}, {"47", "122.070313"},
    {"23", "61.0351563"},
};

/// What is large on the cells, as an operator reads the table: a line for each bit rate.
struct Line
{
    const char *bitRate;
    const char *large[8];
};

constexpr const char *kChannels[] = {"2", "4", "8", "16", "32", "64", "128", "256"};
constexpr Line kLines[] = {
    {"10000", {"96000", "48000", "24000", "12000", "6000", "3000", "1500", "750"}},
    {"5000", {"48000", "24000", "12000", "6000", "3000", "1500", "750", "375"}},
    {"2500", {"24000", "12000", "6000", "3000", "1500", "750", "375", "188"}},
    {"1250", {"12000", "6000", "3000", "1500", "750", "375", "188", "94"}},
    {"625", {"6000", "3000", "1500", "750", "375", "188", "94", "47"}},
    {"312", {"3000", "1500", "750", "375", "188", "94", "47", "23"}},
};

const Pair &pairWith(const QString &large)
{
    for (const Pair &pair : kPairs) {
        if (large == QLatin1String(pair.large))
            return pair;
    }
    qFatal("no such pair");
}

/// The part of the image that is not transparent.
QImage ink(const QImage &image)
{
    QRect found;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 0)
                found |= QRect(x, y, 1, 1);
        }
    }
    QImage part = image.copy(found).convertToFormat(QImage::Format_ARGB32);
    part.setDevicePixelRatio(1);
    return part;
}

QImage drawnHere(const Pair &pair)
{
    QTextDocument document;
    document.setDefaultFont(fonts::text());
    document.setDocumentMargin(0);
    document.setHtml(QStringLiteral("<p align=center><font size = 4>%1</font><br/><font size=2 color=red>%2"
                                    "</font></p>")
                         .arg(QLatin1String(pair.large), QLatin1String(pair.small)));
    document.setTextWidth(document.idealWidth());
    QPixmap pixmap(200 * kRatio, 200 * kRatio);
    pixmap.setDevicePixelRatio(kRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    document.drawContents(&painter);
    painter.end();
    return ink(pixmap.toImage());
}

QImage drawnOn(const QPushButton &cell)
{
    return ink(cell.icon().pixmap(cell.iconSize() * kRatio).toImage());
}

} // namespace

/// What the table of data rates offers, read as an operator reads it.
class TstRatePairs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }

    void pairsAreTheAgreedThirteen();
    void rowsAndColumnsAreTheAgreedOnes();
    void cellShowsItsPair_data();
    void cellShowsItsPair();
    void thereAreNoOtherCells();
};

void TstRatePairs::pairsAreTheAgreedThirteen()
{
    QCOMPARE(rates::ratePairs().size(), 13);
    for (int i = 0; i < 13; ++i) {
        QCOMPARE(rates::ratePairs()[i].large, QLatin1String(kPairs[i].large));
        QCOMPARE(rates::ratePairs()[i].small, QLatin1String(kPairs[i].small));
    }
}

void TstRatePairs::rowsAndColumnsAreTheAgreedOnes()
{
    QCOMPARE(rates::tableBitRates(), (QVector<int>{10000, 5000, 2500, 1250, 625, 312}));
    QCOMPARE(rates::tableChannelCounts(), (QVector<int>{2, 4, 8, 16, 32, 64, 128, 256}));
}

void TstRatePairs::cellShowsItsPair_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("large");
    for (const Line &line : kLines) {
        for (int column = 0; column < 8; ++column) {
            const QString name = QString::fromLatin1(kChannels[column]) + QLatin1Char(',') + line.bitRate;
            QTest::newRow(qPrintable(name)) << name << QString::fromLatin1(line.large[column]);
        }
    }
}

void TstRatePairs::cellShowsItsPair()
{
    QFETCH(QString, name);
    QFETCH(QString, large);
    RateTable table;
    table.show();
    const auto *cell = childByName<QPushButton>(&table, qPrintable(name));
    QVERIFY(cell->text().isEmpty());
    const Pair &pair = pairWith(large);
    const QImage shown = drawnOn(*cell);
    QCOMPARE(shown.size(), drawnHere(pair).size());
    QVERIFY(shown == drawnHere(pair));
    const Pair &next = large == QLatin1String("23") ? kPairs[0] : *(&pair + 1);
    QVERIFY(shown != drawnHere(next));
    const QStringList nameParts = name.split(QLatin1Char(','));
    QCOMPARE(cell->accessibleName(),
             QStringLiteral("%1 kBit/s, %2 channels: %3, %4")
                 .arg(nameParts[1], nameParts[0], QLatin1String(pair.large), QLatin1String(pair.small)));
}

void TstRatePairs::thereAreNoOtherCells()
{
    const RateTable table;
    QCOMPARE(table.findChildren<QPushButton *>().size(), 48);
    QCOMPARE(table.buttons().size(), 48);
    QCOMPARE(table.buttons().first()->objectName(), QStringLiteral("2,10000"));
    QCOMPARE(table.buttons().at(8)->objectName(), QStringLiteral("2,5000"));
    QCOMPARE(table.buttons().last()->objectName(), QStringLiteral("256,312"));
}

QTEST_MAIN(TstRatePairs)
#include "tst_ratepairs.moc"
