#include "channelfixture.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>
#include <vector>

namespace {

using namespace std::chrono_literals;

const QString kChain = QStringLiteral("system bitrate=2500 channels=16 powering=cable transmission=radio\n"
                                      "controller serial=C-1\npower serial=P-1\n"
                                      "module type=1 serial=SG-\n"
                                      "module type=2 serial=VO-\n"
                                      "module type=9 serial=UN-\n"
                                      "module type=4 count=2 serial=TH-\n");

const QString kMarked = QStringLiteral("border: 2px solid blue");

// As the rows and columns of the table stand.
const QStringList kBitRates{"10000", "5000", "2500", "1250", "625", "312"};
const QStringList kChannelCounts{"2", "4", "8", "16", "32", "64", "128", "256"};

// What the system cannot run.
const QStringList kDead{"2,10000",  "2,5000",   "4,10000",  "128,10000", "128,312", "256,10000",
                        "256,5000", "256,2500", "256,1250", "256,625",   "256,312"};

} // namespace

/// The table of data rates before a chain: what a click on a cell does, and when the table is dead.
class TstDataRates : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_fixture = std::make_unique<ChannelFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void panelShowsTheSystem();
    void tableOpensByItsButton();
    void clickSendsTheRateAndReadsTheSystemOnce();
    void everyLiveCellSendsItsCodes();
    void deadCellsSendNothing();
    void clickOnTheMarkedCellSendsAgain();
    void rateOfADeadCellIsShownAndNotMarked();
    void rateThatGetsLostGivesWayToTheDevices();
    void cleanSlateKillsTheTableUntilTheNextSession();
    void oldMarkDoesNotComeBackWithTheNextSession();
    void tableSurvivesALostLink();
    void queuedRateGoesWithTheSession();
    void twoQuickClicksAreSentAndReadTheSystemOnce();
    void clickWhileTheSystemIsReadIsSentAndNotReadBack();
    void programEndsWhileTheTableIsOpen();

private:
    ChannelFixture &fixture() { return *m_fixture; }
    QString label(const char *name) const { return childByName<QLabel>(m_fixture->window(), name)->text(); }
    QString edit(const char *name) const { return childByName<QLineEdit>(m_fixture->window(), name)->text(); }
    QString rates() const { return edit("lineEdit_BitRate") + ' ' + edit("lineEdit_SamplingRate"); }
    QWidget *openTable();
    void waitForTheLateRefresh();
    static QPushButton *cell(const QWidget *table, const QString &name)
    {
        return childByName<QPushButton>(table, name.toLatin1());
    }
    static void click(QPushButton *cell) { QTest::mouseClick(cell, Qt::LeftButton); }
    /// All cells, row by row.
    static QStringList allCells();
    static QStringList marked(const QWidget *table);
    static QStringList enabled(const QWidget *table);
    static QStringList liveCells();

    std::unique_ptr<ChannelFixture> m_fixture;
};

QWidget *TstDataRates::openTable()
{
    QTest::mouseClick(childByName<QPushButton>(fixture().window(), "bitrateConfigBtn"), Qt::LeftButton);
    return fixture().openDialog("samplingRatesDialog");
}

QStringList TstDataRates::allCells()
{
    QStringList names;
    for (const QString &bitRate : kBitRates) {
        for (const QString &channels : kChannelCounts)
            names.append(channels + QLatin1Char(',') + bitRate);
    }
    return names;
}

QStringList TstDataRates::liveCells()
{
    QStringList names;
    for (const QString &name : allCells()) {
        if (!kDead.contains(name))
            names.append(name);
    }
    return names;
}

QStringList TstDataRates::marked(const QWidget *table)
{
    QStringList names;
    for (const QString &name : allCells()) {
        if (cell(table, name)->styleSheet().contains(kMarked))
            names.append(name);
    }
    return names;
}

QStringList TstDataRates::enabled(const QWidget *table)
{
    QStringList names;
    for (const QString &name : allCells()) {
        if (cell(table, name)->isEnabled())
            names.append(name);
    }
    return names;
}

void TstDataRates::panelShowsTheSystem()
{
    fixture().startChain(kChain);
    QCOMPARE(label("label_ModulesNumber"), QStringLiteral("5"));
    QCOMPARE(label("label_ChannelsNumber"), QStringLiteral("10"));
    QCOMPARE(label("label_PoweringMode"), QStringLiteral("cable"));
    QCOMPARE(label("label_DataTransmission"), QStringLiteral("radio"));
    QCOMPARE(rates(), QStringLiteral("2500 (16ch) 3000"));
}

void TstDataRates::tableOpensByItsButton()
{
    fixture().startChain(kChain);
    QVERIFY(!fixture().openDialog("samplingRatesDialog"));
    QWidget *table = openTable();
    QVERIFY(table);
    QCOMPARE(table->windowTitle(), QStringLiteral("VX Sampling Rates"));
    QCOMPARE(table->size(), QSize(664, 350));
    QCOMPARE(marked(table), QStringList{"16,2500"});
    QCOMPARE(enabled(table), liveCells());
    QTest::keyClick(table, Qt::Key_Escape);
    QVERIFY(!fixture().openDialog("samplingRatesDialog"));
    QCOMPARE(openTable(), table);
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), QStringList());
}

void TstDataRates::clickSendsTheRateAndReadsTheSystemOnce()
{
    fixture().startChain(kChain);
    std::vector<QPointer<QWidget>> rows;
    for (int module = 1; module <= 5; ++module)
        rows.emplace_back(fixture().row(module));
    const QPointer<QWidget> topRow = childByName<QPushButton>(fixture().window(), "pushButton_modType");
    const int walk = fixture().device->requestCount(0x12);
    QCOMPARE(fixture().device->requestCount(0x01), 1);
    QWidget *table = openTable();
    QVERIFY(table);
    click(cell(table, QStringLiteral("32,625")));
    QCOMPARE(marked(table), QStringList{"32,625"});
    // The panel shows what the device reports.
    QCOMPARE(rates(), QStringLiteral("2500 (16ch) 3000"));
    WAIT_COMPARE(fixture().commands(), QStringList{"2a000000060400"});
    WAIT_COMPARE(rates(), QStringLiteral("625 (32ch) 375"));
    fixture().time.skip(10s);
    fixture().waitForPolls();
    QCOMPARE(fixture().device->requestCount(0x01), 2);
    QCOMPARE(fixture().device->requestCount(0x12), walk);
    QCOMPARE(fixture().commands().size(), 1);
    QCOMPARE(marked(table), QStringList{"32,625"});
    QVERIFY(table->isVisible());
    QCOMPARE(fixture().rowCount(), 5);
    for (int module = 1; module <= 5; ++module)
        QCOMPARE(rows[static_cast<std::size_t>(module - 1)].data(), fixture().row(module));
    QVERIFY(topRow);
    QCOMPARE(label("label_ModulesNumber"), QStringLiteral("5"));
    QCOMPARE(fixture().device->refusals(), QStringList());
}

void TstDataRates::everyLiveCellSendsItsCodes()
{
    fixture().startChain(kChain);
    QWidget *table = openTable();
    QVERIFY(table);
    QStringList commands;
    for (const QString &name : liveCells()) {
        // Code 0 is 40000 kBit/s and 2 channels; the table begins at 10000 kBit/s.
        const int bitRate = kBitRates.indexOf(name.section(QLatin1Char(','), 1)) + 2;
        const int channels = kChannelCounts.indexOf(name.section(QLatin1Char(','), 0, 0));
        commands.append(
            QStringLiteral("2a0000000%1%2%3").arg(bitRate).arg(channels, 2, 10, QLatin1Char('0')).arg("00"));
        click(cell(table, name));
        QCOMPARE(marked(table), QStringList{name});
        WAIT_COMPARE(fixture().commands(), commands);
        WAIT_COMPARE(fixture().device->requestCount(0x01), commands.size() + 1);
        const QString text =
            QStringLiteral("%1 (%2ch)")
                .arg(name.section(QLatin1Char(','), 1), name.section(QLatin1Char(','), 0, 0));
        WAIT_COMPARE(edit("lineEdit_BitRate"), text);
        QCOMPARE(marked(table), QStringList{name});
    }
    QCOMPARE(commands.size(), 37);
    QCOMPARE(commands.first(), QStringLiteral("2a000000020200"));
    QCOMPARE(commands.last(), QStringLiteral("2a000000070500"));
}

void TstDataRates::deadCellsSendNothing()
{
    fixture().startChain(kChain);
    QWidget *table = openTable();
    QVERIFY(table);
    for (const QString &name : kDead)
        click(cell(table, name));
    QCOMPARE(marked(table), QStringList{"16,2500"});
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), QStringList());
    QCOMPARE(fixture().device->requestCount(0x01), 1);
}

void TstDataRates::clickOnTheMarkedCellSendsAgain()
{
    fixture().startChain(kChain);
    QWidget *table = openTable();
    QVERIFY(table);
    click(cell(table, QStringLiteral("16,2500")));
    WAIT_COMPARE(fixture().commands(), QStringList{"2a000000040300"});
    WAIT_COMPARE(fixture().device->requestCount(0x01), 2);
    QCOMPARE(rates(), QStringLiteral("2500 (16ch) 3000"));
}

void TstDataRates::rateOfADeadCellIsShownAndNotMarked()
{
    fixture().startChain(QStringLiteral("system bitrate=625 channels=256\ncontroller serial=C-1\n"));
    QCOMPARE(rates(), QStringLiteral("625 (256ch) 47"));
    QWidget *table = openTable();
    QVERIFY(table);
    QCOMPARE(marked(table), QStringList());
}

void TstDataRates::rateThatGetsLostGivesWayToTheDevices()
{
    fixture().startChain(kChain);
    fixture().addFaults(QStringLiteral("silence code=0x2a count=1"));
    QWidget *table = openTable();
    QVERIFY(table);
    click(cell(table, QStringLiteral("64,312")));
    WAIT_COMPARE(fixture().commands(), QStringList{"2a000000070500"});
    QCOMPARE(marked(table), QStringList{"64,312"});
    fixture().time.skip(fixture().periods.comm);
    waitForTheLateRefresh();
    QCOMPARE(rates(), QStringLiteral("2500 (16ch) 3000"));
    fixture().time.skip(fixture().periods.initSequence);
    fixture().waitUntilRead();
    QCOMPARE(rates(), QStringLiteral("2500 (16ch) 3000"));
    QCOMPARE(marked(table), QStringList{"16,2500"});
    QCOMPARE(fixture().commands().size(), 1);
}

/// The wish for a new system status outlives its session: the next status is taken for the refresh, without
/// rows, and the session begins when the time for that is over.
void TstDataRates::waitForTheLateRefresh()
{
    WAIT_COMPARE(fixture().device->requestCount(0x01), 2);
    WAIT_COMPARE(fixture().rowCount(), 0);
    WAIT_VERIFY(!edit("lineEdit_BitRate").isEmpty());
    QCOMPARE(fixture().device->requestCount(0x01), 2);
}

void TstDataRates::cleanSlateKillsTheTableUntilTheNextSession()
{
    fixture().startChain(kChain);
    QWidget *table = openTable();
    QVERIFY(table);
    fixture().addFaults(QStringLiteral("reset-flag code=0x08 count=1\nsilence code=0x01"));
    WAIT_COMPARE(fixture().rowCount(), 0);
    QCOMPARE(rates(), QStringLiteral(" "));
    QCOMPARE(label("label_PoweringMode"), QString());
    QCOMPARE(label("label_DataTransmission"), QString());
    QCOMPARE(label("label_ModulesNumber"), QStringLiteral("5"));
    QCOMPARE(label("label_ChannelsNumber"), QStringLiteral("10"));
    QCOMPARE(enabled(table), QStringList());
    QCOMPARE(marked(table), QStringList());
    QVERIFY(table->isVisible());
    for (const QString &name : allCells())
        click(cell(table, name));
    QCOMPARE(fixture().commands(), QStringList());
    QCOMPARE(marked(table), QStringList());

    fixture().device->faults().clear();
    fixture().time.skip(60s);
    fixture().waitUntilRead();
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), QStringList());
    QCOMPARE(rates(), QStringLiteral("2500 (16ch) 3000"));
    QCOMPARE(label("label_PoweringMode"), QStringLiteral("cable"));
    QCOMPARE(enabled(table), liveCells());
    QCOMPARE(marked(table), QStringList{"16,2500"});
    click(cell(table, QStringLiteral("8,1250")));
    WAIT_COMPARE(fixture().commands(), QStringList{"2a000000050200"});
    WAIT_COMPARE(rates(), QStringLiteral("1250 (8ch) 3000"));
}

void TstDataRates::oldMarkDoesNotComeBackWithTheNextSession()
{
    fixture().startChain(kChain);
    QWidget *table = openTable();
    QVERIFY(table);
    QCOMPARE(marked(table), QStringList{"16,2500"});
    fixture().unplug();
    WAIT_COMPARE(fixture().statusText(), QStringLiteral("COM Port unavailable: COM40"));
    fixture().time.skip(3s);
    // The rate of a dead cell marks nothing in its place.
    fixture().plug(QStringLiteral("system bitrate=625 channels=256\ncontroller serial=C-2\n"));
    WAIT_COMPARE(rates(), QStringLiteral("625 (256ch) 47"));
    fixture().waitUntilRead();
    QCOMPARE(enabled(table), liveCells());
    QCOMPARE(marked(table), QStringList());
}

void TstDataRates::tableSurvivesALostLink()
{
    fixture().startChain(kChain);
    const QPointer<QWidget> table = openTable();
    QVERIFY(table);
    const QPointer<QWidget> row = fixture().row(1);
    fixture().unplug();
    WAIT_COMPARE(fixture().statusText(), QStringLiteral("COM Port unavailable: COM40"));
    QCOMPARE(enabled(table), QStringList());
    QCOMPARE(marked(table), QStringList());
    fixture().time.skip(3s);
    fixture().plug(QStringLiteral("system bitrate=312 channels=4\ncontroller serial=C-2\n"
                                  "module type=6 count=3 serial=PO-\n"));
    WAIT_VERIFY(!row);
    fixture().waitUntilRead();
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), QStringList());
    QVERIFY(table);
    QCOMPARE(rates(), QStringLiteral("312 (4ch) 1500"));
    QCOMPARE(label("label_ModulesNumber"), QStringLiteral("3"));
    QCOMPARE(label("label_ChannelsNumber"), QStringLiteral("6"));
    QCOMPARE(marked(table), QStringList{"4,312"});
    QCOMPARE(enabled(table), liveCells());
}

void TstDataRates::queuedRateGoesWithTheSession()
{
    fixture().startChain(kChain);
    fixture().addFaults(QStringLiteral("reset-flag code=0x2a count=1"));
    QWidget *table = openTable();
    QVERIFY(table);
    click(cell(table, QStringLiteral("8,1250")));
    click(cell(table, QStringLiteral("8,625")));
    waitForTheLateRefresh();
    fixture().time.skip(fixture().periods.initSequence);
    fixture().waitUntilRead();
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), QStringList{"2a000000050200"});
    QCOMPARE(rates(), QStringLiteral("1250 (8ch) 3000"));
    QCOMPARE(marked(table), QStringList{"8,1250"});
}

void TstDataRates::twoQuickClicksAreSentAndReadTheSystemOnce()
{
    fixture().startChain(kChain);
    QWidget *table = openTable();
    QVERIFY(table);
    click(cell(table, QStringLiteral("8,1250")));
    click(cell(table, QStringLiteral("32,625")));
    WAIT_COMPARE(rates(), QStringLiteral("625 (32ch) 375"));
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), (QStringList{"2a000000050200", "2a000000060400"}));
    QCOMPARE(fixture().device->requestCount(0x01), 2); // the one at the start and this one
    QCOMPARE(marked(table), QStringList{"32,625"});
}

/// One flag stands for all wishes to read the system, and the reply clears it: on purpose, a rate that is
/// chosen between the request and the reply is sent, and the panel keeps what that reply told.
void TstDataRates::clickWhileTheSystemIsReadIsSentAndNotReadBack()
{
    fixture().startChain(kChain);
    QWidget *table = openTable();
    QVERIFY(table);
    int requests = 0;
    connect(fixture().device.get(), &sim::Server::requestReceived, table, [&](const QByteArray &payload) {
        if (payload.at(0) == 0x01 && ++requests == 1)
            click(cell(table, QStringLiteral("32,625")));
    });
    click(cell(table, QStringLiteral("8,1250")));
    WAIT_COMPARE(fixture().commands(), (QStringList{"2a000000050200", "2a000000060400"}));
    fixture().waitForPolls();
    QCOMPARE(requests, 1);
    QCOMPARE(rates(), QStringLiteral("1250 (8ch) 3000"));
    QCOMPARE(marked(table), QStringList{"8,1250"});
}

void TstDataRates::programEndsWhileTheTableIsOpen()
{
    fixture().startChain(kChain);
    const QPointer<QWidget> table = openTable();
    QVERIFY(table);
    fixture().app.reset();
    QVERIFY(!table);
    QCOMPARE(ChannelFixture::openDialogCount(), 0);
    fixture().time.skip(20s);
    QCoreApplication::processEvents();
    QCOMPARE(fixture().commands(), QStringList());
}

QTEST_MAIN(TstDataRates)

#include "tst_datarates.moc"
