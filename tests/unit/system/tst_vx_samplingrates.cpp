#include "ratedialog.h"
#include "support/messagecatcher.h"
#include "support/plainlog.h"

#include <QGridLayout>
#include <QImage>
#include <QLabel>
#include <QtTest>

namespace {

/// Cells that the system cannot run, by their names, one by one.
const QStringList kDeadCells{"2,10000",  "2,5000",   "4,10000",  "128,312", "128,10000", "256,10000",
                             "256,5000", "256,2500", "256,1250", "256,625", "256,312"};

const QStringList kNothing;

QImage picture(const QPushButton *cell)
{
    return cell->icon().pixmap(cell->iconSize(), QIcon::Normal).toImage();
}

/// True if the picture has a pixel that is clearly red, in the lines from `from` to below `to`.
bool hasRed(const QImage &image, int from, int to)
{
    for (int y = from; y < to; ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor colour = image.pixelColor(x, y);
            if (colour.alpha() > 128 && colour.red() > 128 && colour.green() < 64 && colour.blue() < 64)
                return true;
        }
    }
    return false;
}

} // namespace

/// The dialog of the data rates: how it looks, which cells live and what a click does.
class TstVxSamplingRates : public QObject
{
    Q_OBJECT

private slots:
    void windowIsAsAgreed();
    void headingsAreAsAgreed();
    void thereIsACellForEachPair();
    void cellsShowAPictureOnly();
    void cellsOnADiagonalShowTheSamePair();
    void smallTextIsRed();
    void allCellsAreDeadBeforeEnabling();
    void deadCellsStayDead_data();
    void deadCellsStayDead();
    void allOthersLive();
    void column256IsDeadInAllRows();
    void disablingKillsAllCells();
    void enablingAgainGivesTheSameCells();
    void enablingTwiceChangesNothing();
    void clickOnEachLiveCellSendsItsPair_data();
    void clickOnEachLiveCellSendsItsPair();
    void clickOnDeadCellsSendsNothing_data();
    void clickOnDeadCellsSendsNothing();
    void clickBeforeEnablingSendsNothing();
    void clickIsLogged();
    void clickMarksTheCellBeforeItSends();
    void clickOnTheMarkedCellSendsAgain();
    void clickTakesTheMarkFromTheLastCell();
    void clickLeavesTheDialogOpen();
    void spaceKeyPressesTheCellWithTheFocus();
    void handlerWithoutASenderDoesNothing();
    void closedDialogKeepsItsMark();
};

void TstVxSamplingRates::windowIsAsAgreed()
{
    const VX_SamplingRates dialog;
    QCOMPARE(dialog.minimumSize(), QSize(664, 350));
    QCOMPARE(dialog.maximumSize(), QSize(664, 350));
    QCOMPARE(dialog.windowTitle(), QStringLiteral("VX Sampling Rates"));
    QCOMPARE(dialog.objectName(), QStringLiteral("samplingRatesDialog"));
    const QDialog like(nullptr,
                       Qt::CustomizeWindowHint | Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint);
    QCOMPARE(dialog.windowFlags(), like.windowFlags());
}

void TstVxSamplingRates::headingsAreAsAgreed()
{
    const RateDialog d;
    const auto *grid = qobject_cast<QGridLayout *>(d.table()->layout());
    QVERIFY(grid);
    const auto label = [grid](int row, int column) -> const QLabel * {
        QLayoutItem *item = grid->itemAtPosition(row, column);
        return item ? qobject_cast<QLabel *>(item->widget()) : nullptr;
    };
    const QString heading = QStringLiteral("<p align=center><font size = 4 color=%1>%2</font><br/><font "
                                           "size=2 color=%1>%3</font></p>");
    const QStringList channels{"2", "4", "8", "16", "32", "64", "128", "256"};
    for (int i = 0; i < channels.size(); ++i) {
        QVERIFY(label(0, i + 1));
        QCOMPARE(label(0, i + 1)->text(), heading.arg("green", "Channels", channels.at(i)));
    }
    const QStringList bitRates{"10000", "5000", "2500", "1250", "625", "312"};
    for (int i = 0; i < bitRates.size(); ++i) {
        QVERIFY(label(i + 1, 0));
        QCOMPARE(label(i + 1, 0)->text(), heading.arg("indigo", "kBit/s", bitRates.at(i)));
    }
    QVERIFY(label(0, 0));
    QVERIFY(label(0, 0)->text().startsWith(
        QStringLiteral("<p align=center><font size = 4 color=indigo>Bitrate</font>")));
    const auto labels = d.table()->findChildren<QLabel *>();
    QCOMPARE(labels.size(), 15);
    for (const QLabel *one : labels)
        QCOMPARE(one->styleSheet(), QStringLiteral("border: 1px solid black"));
}

void TstVxSamplingRates::thereIsACellForEachPair()
{
    const RateDialog d;
    const auto *grid = qobject_cast<QGridLayout *>(d.table()->layout());
    QVERIFY(grid);
    const QStringList channels{"2", "4", "8", "16", "32", "64", "128", "256"};
    const QStringList bitRates{"10000", "5000", "2500", "1250", "625", "312"};
    for (int row = 0; row < 6; ++row) {
        for (int column = 0; column < 8; ++column) {
            const QLayoutItem *item = grid->itemAtPosition(row + 1, column + 1);
            QVERIFY(item);
            QCOMPARE(const_cast<QLayoutItem *>(item)->widget()->objectName(),
                     channels.at(column) + QLatin1Char(',') + bitRates.at(row));
        }
    }
    QCOMPARE(d.cells().size(), 48);
}

void TstVxSamplingRates::cellsShowAPictureOnly()
{
    const RateDialog d;
    for (const QPushButton *cell : d.cells()) {
        QCOMPARE(cell->text(), QString());
        QVERIFY(!cell->icon().isNull());
        QVERIFY(!cell->accessibleName().isEmpty());
    }
}

void TstVxSamplingRates::cellsOnADiagonalShowTheSamePair()
{
    const RateDialog d;
    const QStringList channels{"2", "4", "8", "16", "32", "64", "128", "256"};
    const QStringList bitRates{"10000", "5000", "2500", "1250", "625", "312"};
    QMap<int, QImage> pictures;
    for (int row = 0; row < 6; ++row) {
        for (int column = 0; column < 8; ++column) {
            const QImage image = picture(d.cell(channels.at(column) + QLatin1Char(',') + bitRates.at(row)));
            if (!pictures.contains(row + column))
                pictures.insert(row + column, image);
            QCOMPARE(image, pictures.value(row + column));
        }
    }
    for (int pair = 1; pair < 13; ++pair)
        QVERIFY2(pictures.value(pair) != pictures.value(pair - 1), qPrintable(QString::number(pair)));
}

void TstVxSamplingRates::smallTextIsRed()
{
    const RateDialog d;
    for (const QPushButton *cell : d.cells()) {
        const QImage image = picture(cell);
        QVERIFY2(!hasRed(image, 0, image.height() / 2), qPrintable(cell->objectName()));
        QVERIFY2(hasRed(image, image.height() / 2, image.height()), qPrintable(cell->objectName()));
        QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
    }
}

void TstVxSamplingRates::allCellsAreDeadBeforeEnabling()
{
    const RateDialog d(RateDialog::Cells::AllDead);
    QCOMPARE(d.live(), kNothing);
}

void TstVxSamplingRates::deadCellsStayDead_data()
{
    addRows(kDeadCells);
}

void TstVxSamplingRates::deadCellsStayDead()
{
    const RateDialog d;
    QVERIFY(!d.cell(QString::fromLatin1(QTest::currentDataTag()))->isEnabled());
}

void TstVxSamplingRates::allOthersLive()
{
    const RateDialog d;
    QStringList dead;
    for (const QPushButton *cell : d.cells()) {
        if (!cell->isEnabled())
            dead.append(cell->objectName());
    }
    QStringList expected = kDeadCells;
    expected.sort();
    dead.sort();
    QCOMPARE(dead, expected);
    QCOMPARE(d.live().size(), 37);
}

void TstVxSamplingRates::column256IsDeadInAllRows()
{
    RateDialog d;
    int count = 0;
    for (QPushButton *cell : d.cells()) {
        if (!cell->objectName().startsWith(QStringLiteral("256,")))
            continue;
        ++count;
        QTest::mouseClick(cell, Qt::LeftButton);
    }
    QCOMPARE(count, 6);
    QCOMPARE(d.take(), kNothing);
    QCOMPARE(d.marked(), kNothing);
}

void TstVxSamplingRates::disablingKillsAllCells()
{
    RateDialog d;
    QTest::mouseClick(d.cell("16,2500"), Qt::LeftButton);
    d.take();
    d.dialog.Slot_disableAllBtns();
    QCOMPARE(d.live(), kNothing);
    QTest::mouseClick(d.cell("16,2500"), Qt::LeftButton);
    QTest::keyClick(d.cell("16,2500"), Qt::Key_Space);
    QCOMPARE(d.take(), kNothing);
}

void TstVxSamplingRates::enablingAgainGivesTheSameCells()
{
    RateDialog d;
    const QStringList before = d.live();
    d.dialog.Slot_disableAllBtns();
    d.dialog.Slot_EnableAllBtns();
    QCOMPARE(d.live(), before);
    QTest::mouseClick(d.cell("16,2500"), Qt::LeftButton);
    QCOMPARE(d.take(), (QStringList{"device 2500 16", "gateway 2500 16"}));
}

void TstVxSamplingRates::enablingTwiceChangesNothing()
{
    RateDialog d;
    const QStringList before = d.live();
    QTest::mouseClick(d.cell("16,2500"), Qt::LeftButton);
    d.dialog.Slot_EnableAllBtns();
    QCOMPARE(d.live(), before);
    QCOMPARE(d.marked(), QStringList{"16,2500"});
}

void TstVxSamplingRates::clickOnEachLiveCellSendsItsPair_data()
{
    addRows({"8,10000",  "16,10000", "32,10000", "64,10000", "4,5000",  "8,5000",  "16,5000", "32,5000",
             "64,5000",  "128,5000", "2,2500",   "4,2500",   "8,2500",  "16,2500", "32,2500", "64,2500",
             "128,2500", "2,1250",   "4,1250",   "8,1250",   "16,1250", "32,1250", "64,1250", "128,1250",
             "2,625",    "4,625",    "8,625",    "16,625",   "32,625",  "64,625",  "128,625", "2,312",
             "4,312",    "8,312",    "16,312",   "32,312",   "64,312"});
}

void TstVxSamplingRates::clickOnEachLiveCellSendsItsPair()
{
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    const QString pair =
        name.section(QLatin1Char(','), 1) + QLatin1Char(' ') + name.section(QLatin1Char(','), 0, 0);
    RateDialog d;
    QTest::mouseClick(d.cell(name), Qt::LeftButton);
    QCOMPARE(d.take(), (QStringList{"device " + pair, "gateway " + pair}));
    QCOMPARE(d.marked(), QStringList{name});
}

void TstVxSamplingRates::clickOnDeadCellsSendsNothing_data()
{
    addRows(kDeadCells);
}

void TstVxSamplingRates::clickOnDeadCellsSendsNothing()
{
    RateDialog d;
    QTest::mouseClick(d.cell(QString::fromLatin1(QTest::currentDataTag())), Qt::LeftButton);
    QCOMPARE(d.take(), kNothing);
    QCOMPARE(d.marked(), kNothing);
}

void TstVxSamplingRates::clickBeforeEnablingSendsNothing()
{
    RateDialog d(RateDialog::Cells::AllDead);
    for (QPushButton *cell : d.cells())
        QTest::mouseClick(cell, Qt::LeftButton);
    QCOMPARE(d.take(), kNothing);
    QCOMPARE(d.marked(), kNothing);
}

void TstVxSamplingRates::clickIsLogged()
{
    RateDialog d;
    const MessageCatcher log;
    QTest::mouseClick(d.cell("32,625"), Qt::LeftButton);
    const QString text = plainLog(log.lines());
    QVERIFY2(text.contains(QStringLiteral("Bitrate: 625 ChannelCnt 32")), qPrintable(text));
}

void TstVxSamplingRates::clickMarksTheCellBeforeItSends()
{
    RateDialog d;
    QStringList markedThen;
    QStringList logged;
    const MessageCatcher log;
    connect(&d.dialog, &VX_SamplingRates::setSamplingRate, this, [&] {
        markedThen = d.marked();
        logged = log.lines();
    });
    QTest::mouseClick(d.cell("32,625"), Qt::LeftButton);
    QCOMPARE(markedThen, QStringList{"32,625"});
    QVERIFY(logged.filter(QStringLiteral("ChannelCnt")).isEmpty()); // the line comes last
}

void TstVxSamplingRates::clickOnTheMarkedCellSendsAgain()
{
    RateDialog d;
    d.dialog.showCurrentRate(QStringLiteral("2500 16"));
    QCOMPARE(d.marked(), QStringList{"16,2500"});
    for (int i = 0; i < 2; ++i) {
        QTest::mouseClick(d.cell("16,2500"), Qt::LeftButton);
        QCOMPARE(d.take(), (QStringList{"device 2500 16", "gateway 2500 16"}));
        QCOMPARE(d.marked(), QStringList{"16,2500"});
    }
}

void TstVxSamplingRates::clickTakesTheMarkFromTheLastCell()
{
    RateDialog d;
    QTest::mouseClick(d.cell("16,2500"), Qt::LeftButton);
    QTest::mouseClick(d.cell("2,312"), Qt::LeftButton);
    QCOMPARE(d.marked(), QStringList{"2,312"});
    QCOMPARE(d.cell("16,2500")->styleSheet(), QString());
    QCOMPARE(d.dialog.focusWidget(), d.cell("2,312"));
}

void TstVxSamplingRates::clickLeavesTheDialogOpen()
{
    RateDialog d;
    QTest::mouseClick(d.cell("16,2500"), Qt::LeftButton);
    QVERIFY(d.dialog.isVisible());
}

void TstVxSamplingRates::spaceKeyPressesTheCellWithTheFocus()
{
    RateDialog d;
    d.dialog.showCurrentRate(QStringLiteral("1250 8"));
    QCOMPARE(d.dialog.focusWidget(), d.cell("8,1250"));
    QTest::keyClick(d.dialog.focusWidget(), Qt::Key_Space);
    QCOMPARE(d.take(), (QStringList{"device 1250 8", "gateway 1250 8"}));
}

void TstVxSamplingRates::handlerWithoutASenderDoesNothing()
{
    RateDialog d;
    const MessageCatcher log;
    d.dialog.handleBtnClick();
    QCOMPARE(d.take(), kNothing);
    QCOMPARE(d.marked(), kNothing);
    QVERIFY(!log.containsText(QStringLiteral("ChannelCnt")));
}

void TstVxSamplingRates::closedDialogKeepsItsMark()
{
    RateDialog d;
    QTest::mouseClick(d.cell("16,2500"), Qt::LeftButton);
    d.take();
    QTest::keyClick(&d.dialog, Qt::Key_Escape);
    QVERIFY(!d.dialog.isVisible());
    d.dialog.show();
    QCOMPARE(d.marked(), QStringList{"16,2500"});
    QCOMPARE(d.live().size(), 37);
    QCOMPARE(d.take(), kNothing);
}

QTEST_MAIN(TstVxSamplingRates)
#include "tst_vx_samplingrates.moc"
