#include "ratedialog.h"
#include "support/messagecatcher.h"

#include <QtTest>

namespace {

/// Cells that the system cannot run, by their names, one by one.
const QStringList kDeadCells{"2,10000",  "2,5000",   "4,10000",  "128,312", "128,10000", "256,10000",
                             "256,5000", "256,2500", "256,1250", "256,625", "256,312"};

const QStringList kNothing;

} // namespace

/// The dialog of the data rates: how it looks, which cells live and what a click does.
class TstVxSamplingRates : public QObject
{
    Q_OBJECT

private slots:
    void windowIsAsAgreed();
    void allCellsAreDeadBeforeEnabling();
    void deadCellsStayDead_data();
    void deadCellsStayDead();
    void allOthersLive();
    void column256IsDeadInAllRows();
    void disablingKillsAllCells();
    void disablingTakesTheMarkForGood();
    void enablingAgainGivesTheSameCells();
    void enablingTwiceChangesNothing();
    void clickOnEachLiveCellSendsItsPair_data();
    void clickOnEachLiveCellSendsItsPair();
    void clickOnDeadCellsSendsNothing_data();
    void clickOnDeadCellsSendsNothing();
    void clickBeforeEnablingSendsNothing();
    void clickIsLogged();
    void clickMarksFirstAndLogsLast();
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

void TstVxSamplingRates::disablingTakesTheMarkForGood()
{
    RateDialog d;
    d.dialog.showCurrentRate(QStringLiteral("2500 16"));
    QCOMPARE(d.marked(), QStringList{"16,2500"});
    d.dialog.Slot_disableAllBtns();
    QCOMPARE(d.marked(), kNothing);
    d.dialog.Slot_EnableAllBtns();
    QCOMPARE(d.marked(), kNothing);
    for (const QPushButton *cell : d.cells())
        QCOMPARE(cell->styleSheet(), QString());
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
    QCOMPARE(log.lines(), QStringList{"Bitrate: \"625\"   ChannelCnt \"32\""});
}

void TstVxSamplingRates::clickMarksFirstAndLogsLast()
{
    RateDialog d;
    const MessageCatcher log;
    QStringList steps;
    const auto note = [&](const char *signal) {
        return
            [&steps, &d, &log, signal] { steps << QString::fromLatin1(signal) << d.marked() << log.lines(); };
    };
    connect(&d.dialog, &VX_SamplingRates::setSamplingRate, this, note("device"));
    connect(&d.dialog, &VX_SamplingRates::setGatewaySampling, this, note("gateway"));
    QTest::mouseClick(d.cell("32,625"), Qt::LeftButton);
    QCOMPARE(steps, (QStringList{"device", "32,625", "gateway", "32,625"})); // no line yet
    QCOMPARE(log.lines().size(), 1);
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
