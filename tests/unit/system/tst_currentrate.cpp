#include "ratedialog.h"
#include "support/messagecatcher.h"

#include <QtTest>

namespace {

const QStringList kNothing;

} // namespace

/// What marks a cell of the table without a click: the device's report and the gateway's panel.
class TstCurrentRate : public QObject
{
    Q_OBJECT

private slots:
    void reportMarksItsCell_data();
    void reportMarksItsCell();
    void reportThatNamesNoLiveCellMarksNothing_data();
    void reportThatNamesNoLiveCellMarksNothing();
    void reportThatNamesNoLiveCellLeavesTheMark_data();
    void reportThatNamesNoLiveCellLeavesTheMark();
    void reportSendsNothing();
    void reportGivesTheFocus();
    void reportIsLoggedWithTwoNumbersOnly_data();
    void reportIsLoggedWithTwoNumbersOnly();
    void reportBeforeEnablingMarksNothing();
    void reportAfterDisablingMarksNothing();
    void laterReportMovesTheMark();
    void gatewaysChoiceGoesToTheDeviceOnly();
    void gatewaysChoiceIsSentEvenIfNotMarked_data();
    void gatewaysChoiceIsSentEvenIfNotMarked();
    void gatewaysChoiceBeforeEnablingIsSent();
    void gatewaysChoiceIsMarkedBeforeItIsSent();
    void gatewaysChoiceOfTheMarkedCellIsSentAgain();
};

void TstCurrentRate::reportMarksItsCell_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("cell");
    QTest::newRow("two numbers") << "2500 16"
                                 << "16,2500";
    QTest::newRow("channels in brackets") << "2500 (16ch)"
                                          << "16,2500";
    QTest::newRow("units") << "1250 kBit/s 64 channels"
                           << "64,1250";
    QTest::newRow("no blank") << "625x128"
                              << "128,625";
    QTest::newRow("text in front") << "PCM: 312/2"
                                   << "2,312";
    QTest::newRow("signs are no part") << "-2500 -16"
                                       << "16,2500";
    QTest::newRow("a third number is not read") << "2500 16 8"
                                                << "16,2500";
    QTest::newRow("lines") << "\n10000\r\n8\n"
                           << "8,10000";
    QTest::newRow("very long") << QString(QStringLiteral("2500") + QString(100000, QLatin1Char('x')) +
                                          QStringLiteral("16"))
                               << "16,2500";
}

void TstCurrentRate::reportMarksItsCell()
{
    QFETCH(QString, text);
    QFETCH(QString, cell);
    RateDialog d;
    d.dialog.showCurrentRate(text);
    QCOMPARE(d.marked(), QStringList{cell});
}

void addUselessTexts()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << "";
    QTest::newRow("no number") << "abc";
    QTest::newRow("one number") << "625";
    QTest::newRow("one number in a text") << "625 kBit/s";
    QTest::newRow("dead cell") << "625 256";
    QTest::newRow("another dead cell") << "10000 2";
    QTest::newRow("dead cell of column 128") << "312 128";
    QTest::newRow("unknown bit rate") << "9999 16";
    QTest::newRow("unknown channels") << "2500 17";
    QTest::newRow("channels first") << "16 2500";
    QTest::newRow("a fraction is a number of its own") << "2500.5 16";
    QTest::newRow("leading zero") << "02500 16";
    QTest::newRow("other digits") << QString::fromUtf8("٢٥٠٠ ١٦");
    QTest::newRow("very long number") << QString(QString(100000, QLatin1Char('2')) + QStringLiteral(" 16"));
}

void TstCurrentRate::reportThatNamesNoLiveCellMarksNothing_data()
{
    addUselessTexts();
}

void TstCurrentRate::reportThatNamesNoLiveCellMarksNothing()
{
    QFETCH(QString, text);
    RateDialog d;
    d.dialog.showCurrentRate(text);
    QCOMPARE(d.marked(), kNothing);
}

void TstCurrentRate::reportThatNamesNoLiveCellLeavesTheMark_data()
{
    addUselessTexts();
}

void TstCurrentRate::reportThatNamesNoLiveCellLeavesTheMark()
{
    QFETCH(QString, text);
    RateDialog d;
    d.dialog.showCurrentRate(QStringLiteral("1250 8"));
    d.dialog.showCurrentRate(text);
    QCOMPARE(d.marked(), QStringList{"8,1250"});
}

void TstCurrentRate::reportSendsNothing()
{
    RateDialog d;
    for (const char *text : {"2500 16", "625 256", "", "625"})
        d.dialog.showCurrentRate(QString::fromLatin1(text));
    QCOMPARE(d.take(), kNothing);
}

void TstCurrentRate::reportGivesTheFocus()
{
    RateDialog d;
    d.dialog.showCurrentRate(QStringLiteral("2500 16"));
    QCOMPARE(d.dialog.focusWidget(), d.cell("16,2500"));
}

void TstCurrentRate::reportIsLoggedWithTwoNumbersOnly_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("line");
    QTest::newRow("two numbers") << "2500 (16ch)"
                                 << "************************Bitrate: \"2500\"   CH CNT: \"16\"";
    QTest::newRow("dead cell") << "625 256"
                               << "************************Bitrate: \"625\"   CH CNT: \"256\"";
    QTest::newRow("unknown pair") << "1 2 3"
                                  << "************************Bitrate: \"1\"   CH CNT: \"2\"";
    QTest::newRow("one number") << "625"
                                << "";
    QTest::newRow("empty") << ""
                           << "";
}

void TstCurrentRate::reportIsLoggedWithTwoNumbersOnly()
{
    QFETCH(QString, text);
    QFETCH(QString, line);
    RateDialog d;
    const MessageCatcher log;
    d.dialog.showCurrentRate(text);
    QCOMPARE(log.lines(), line.isEmpty() ? kNothing : QStringList{line});
}

void TstCurrentRate::reportBeforeEnablingMarksNothing()
{
    RateDialog d(RateDialog::Cells::AllDead);
    d.dialog.showCurrentRate(QStringLiteral("2500 16"));
    QCOMPARE(d.marked(), kNothing);
    d.dialog.Slot_EnableAllBtns();
    QCOMPARE(d.marked(), kNothing);
    d.dialog.showCurrentRate(QStringLiteral("2500 16"));
    QCOMPARE(d.marked(), QStringList{"16,2500"});
}

void TstCurrentRate::reportAfterDisablingMarksNothing()
{
    RateDialog d;
    d.dialog.Slot_disableAllBtns();
    d.dialog.showCurrentRate(QStringLiteral("2500 16"));
    QCOMPARE(d.marked(), kNothing);
}

void TstCurrentRate::laterReportMovesTheMark()
{
    RateDialog d;
    d.dialog.showCurrentRate(QStringLiteral("2500 16"));
    d.dialog.showCurrentRate(QStringLiteral("1250 8"));
    QCOMPARE(d.marked(), QStringList{"8,1250"});
    QCOMPARE(d.cell("16,2500")->styleSheet(), QString());
}

void TstCurrentRate::gatewaysChoiceGoesToTheDeviceOnly()
{
    RateDialog d;
    d.dialog.Slot_SetVXbitrateSettings(QStringLiteral("2500"), QStringLiteral("16"));
    QCOMPARE(d.take(), QStringList{"device 2500 16"});
    QCOMPARE(d.marked(), QStringList{"16,2500"});
    QCOMPARE(d.dialog.focusWidget(), d.cell("16,2500"));
}

void TstCurrentRate::gatewaysChoiceIsSentEvenIfNotMarked_data()
{
    QTest::addColumn<QString>("bitRate");
    QTest::addColumn<QString>("channels");
    QTest::newRow("dead cell") << "625"
                               << "256";
    QTest::newRow("another dead cell") << "10000"
                                       << "4";
    QTest::newRow("unknown pair") << "40000"
                                  << "3";
    QTest::newRow("empty texts") << ""
                                 << "";
}

void TstCurrentRate::gatewaysChoiceIsSentEvenIfNotMarked()
{
    QFETCH(QString, bitRate);
    QFETCH(QString, channels);
    RateDialog d;
    d.dialog.showCurrentRate(QStringLiteral("1250 8"));
    d.dialog.Slot_SetVXbitrateSettings(bitRate, channels);
    QCOMPARE(d.take(), QStringList{"device " + bitRate + ' ' + channels});
    QCOMPARE(d.marked(), QStringList{"8,1250"});
}

void TstCurrentRate::gatewaysChoiceBeforeEnablingIsSent()
{
    RateDialog d(RateDialog::Cells::AllDead);
    d.dialog.Slot_SetVXbitrateSettings(QStringLiteral("2500"), QStringLiteral("16"));
    QCOMPARE(d.take(), QStringList{"device 2500 16"});
    QCOMPARE(d.marked(), kNothing);
}

void TstCurrentRate::gatewaysChoiceIsMarkedBeforeItIsSent()
{
    RateDialog d;
    QStringList markedThen;
    connect(&d.dialog, &VX_SamplingRates::setSamplingRate, this, [&] { markedThen = d.marked(); });
    d.dialog.Slot_SetVXbitrateSettings(QStringLiteral("2500"), QStringLiteral("16"));
    QCOMPARE(markedThen, QStringList{"16,2500"});
}

void TstCurrentRate::gatewaysChoiceOfTheMarkedCellIsSentAgain()
{
    RateDialog d;
    for (int i = 0; i < 2; ++i) {
        d.dialog.Slot_SetVXbitrateSettings(QStringLiteral("2500"), QStringLiteral("16"));
        QCOMPARE(d.take(), QStringList{"device 2500 16"});
    }
}

QTEST_MAIN(TstCurrentRate)
#include "tst_currentrate.moc"
