#include "gatewayfixture.h"

#include <QDialog>
#include <QLineEdit>
#include <QtTest>

using namespace std::chrono_literals;

namespace {

const QString kChain = QStringLiteral("system bitrate=2500 channels=16\nmodule type=1\n");

} // namespace

/// The two tables of data rates: a click in either reaches chain and gateway, once.
class TstGatewayTables : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_fixture.reset(); }

    void clickInThePanelReachesBoth_data();
    void clickInThePanelReachesBoth();
    void clickInTheTableReachesBoth_data();
    void clickInTheTableReachesBoth();
    void clickInTheTableWithoutAGatewayReachesTheChain();
    void clickInThePanelWithoutAChainReachesTheGateway();
    void cellThatIsDeadInTheTableWorksInThePanel();
    void deadCellsOfThePanelSendNothing();
    void statusMarksAndSendsNothing();
    void rateThatTheGatewayRefusesLosesItsMark();

private:
    GatewayFixture &fixture() { return *m_fixture; }
    QWidget *openTable();
    static QString marked(const QWidget *table);
    QString systemRate() const
    {
        return childByName<QLineEdit>(m_fixture->window(), "lineEdit_BitRate")->text();
    }
    /// Both have the rate, and got it by one command each; both tables show it.
    void expectRate(const QString &bitRate, const QString &channels, const QByteArray &payloadStart);

    std::unique_ptr<GatewayFixture> m_fixture;
};

void TstGatewayTables::init()
{
    m_fixture = std::make_unique<GatewayFixture>();
}

QWidget *TstGatewayTables::openTable()
{
    QTest::mouseClick(childByName<QPushButton>(fixture().window(), "bitrateConfigBtn"), Qt::LeftButton);
    return fixture().openDialog("samplingRatesDialog");
}

QString TstGatewayTables::marked(const QWidget *table)
{
    QStringList names;
    for (const auto *button : table->findChildren<QPushButton *>()) {
        if (button->styleSheet().contains(QStringLiteral("border: 2px solid blue")))
            names.append(button->objectName());
    }
    return names.join(QLatin1Char(' '));
}

void TstGatewayTables::expectRate(const QString &bitRate, const QString &channels,
                                  const QByteArray &payloadStart)
{
    const QString name = channels + ',' + bitRate;
    WAIT_COMPARE(systemRate(), QString("%1 (%2ch)").arg(bitRate, channels));
    WAIT_COMPARE(fixture().lines(), QStringList(QString("#007_%1:%2").arg(bitRate, channels)));
    for (int i = 0; i < 3; ++i)
        fixture().nextPoll();
    WAIT_COMPARE(fixture().differences(), QStringList());
    QCOMPARE(fixture().markedCell(), name);
    QCOMPARE(fixture().lampColour("PCM_Led"), QColor(Qt::green));
    QCOMPARE(marked(childByName<QDialog>(fixture().window(), "samplingRatesDialog")), name);
    QCOMPARE(fixture().lines().size(), 1);
    QCOMPARE(fixture().commands().size(), 1);
    QVERIFY2(fixture().commands().first().startsWith(payloadStart), qPrintable(fixture().commands().first()));
    QCOMPARE(fixture().device->chain().system.bitRate(), QString("%1 (%2ch)").arg(bitRate, channels));
}

void TstGatewayTables::clickInThePanelReachesBoth_data()
{
    QTest::addColumn<QString>("bitRate");
    QTest::addColumn<QString>("channels");
    QTest::addColumn<QByteArray>("payloadStart");
    // The codes count the bit rates from 40000 and the channels from 2.
    QTest::newRow("1250, 32") << "1250"
                              << "32"
                              << QByteArray("2a000000"
                                            "0504");
    QTest::newRow("10000, 8") << "10000"
                              << "8"
                              << QByteArray("2a000000"
                                            "0202");
    QTest::newRow("312, 2") << "312"
                            << "2"
                            << QByteArray("2a000000"
                                          "0700");
    QTest::newRow("625, 128") << "625"
                              << "128"
                              << QByteArray("2a000000"
                                            "0606");
    QTest::newRow("the present one") << "2500"
                                     << "16"
                                     << QByteArray("2a000000"
                                                   "0403");
}

void TstGatewayTables::clickInThePanelReachesBoth()
{
    QFETCH(QString, bitRate);
    QFETCH(QString, channels);
    QFETCH(QByteArray, payloadStart);
    fixture().startWithGateway(kChain);
    fixture().openConnectedPanel();
    QTest::mouseClick(fixture().cell(channels + ',' + bitRate), Qt::LeftButton);
    QCOMPARE(fixture().markedCell(), channels + ',' + bitRate);
    expectRate(bitRate, channels, payloadStart);
}

void TstGatewayTables::clickInTheTableReachesBoth_data()
{
    clickInThePanelReachesBoth_data();
}

void TstGatewayTables::clickInTheTableReachesBoth()
{
    QFETCH(QString, bitRate);
    QFETCH(QString, channels);
    QFETCH(QByteArray, payloadStart);
    fixture().startWithGateway(kChain);
    fixture().openConnectedPanel();
    fixture().panel()->close(); // the link stays
    WAIT_VERIFY(!fixture().panel());
    QWidget *table = openTable();
    QVERIFY(table);
    QTest::mouseClick(childByName<QPushButton>(table, (channels + ',' + bitRate).toLatin1()), Qt::LeftButton);
    expectRate(bitRate, channels, payloadStart);
    fixture().openPanel();
    QCOMPARE(fixture().differences(), QStringList());
}

void TstGatewayTables::clickInTheTableWithoutAGatewayReachesTheChain()
{
    fixture().startWithGateway(kChain);
    QTest::mouseClick(childByName<QPushButton>(openTable(), "32,1250"), Qt::LeftButton);
    WAIT_COMPARE(systemRate(), QString("1250 (32ch)"));
    QCOMPARE(fixture().gateway->receivedLines(), QList<QByteArray>());
    QCOMPARE(fixture().commands().size(), 1);
}

void TstGatewayTables::clickInThePanelWithoutAChainReachesTheGateway()
{
    fixture().startWithGateway(kChain);
    fixture().openConnectedPanel();
    fixture().unplug();
    fixture().gateway->setChainRate(nullptr);
    QTest::mouseClick(fixture().cell("32,1250"), Qt::LeftButton);
    WAIT_COMPARE(fixture().lines(), QStringList("#007_1250:32"));
    fixture().nextPoll();
    QCOMPARE(fixture().markedCell(), QString("32,1250"));
    WAIT_COMPARE(fixture().lampColour("PCM_Led"), QColor(Qt::gray));
    QVERIFY(fixture().isConnected());
}

void TstGatewayTables::cellThatIsDeadInTheTableWorksInThePanel()
{
    fixture().startWithGateway(kChain);
    fixture().openConnectedPanel();
    QTest::mouseClick(fixture().cell("256,1250"), Qt::LeftButton);
    WAIT_COMPARE(fixture().lines(), QStringList("#007_1250:256"));
    WAIT_COMPARE(systemRate(), QString("1250 (256ch)"));
    fixture().nextPoll();
    WAIT_COMPARE(fixture().differences(), QStringList());
}

void TstGatewayTables::deadCellsOfThePanelSendNothing()
{
    fixture().startWithGateway(kChain);
    fixture().openConnectedPanel();
    for (const char *name : {"2,10000", "4,10000", "2,5000", "256,625", "128,312", "256,312"}) {
        QVERIFY2(!fixture().cell(name)->isEnabled(), name);
        QTest::mouseClick(fixture().cell(name), Qt::LeftButton);
    }
    fixture().nextPoll();
    fixture().waitForPolls();
    QCOMPARE(fixture().lines(), QStringList());
    QCOMPARE(fixture().commands(), QStringList());
}

void TstGatewayTables::statusMarksAndSendsNothing()
{
    fixture().startWithGateway(kChain);
    fixture().openConnectedPanel();
    fixture().gateway->state().rate = {"312", "64"};
    fixture().nextPoll();
    WAIT_COMPARE(fixture().markedCell(), QString("64,312"));
    fixture().gateway->state().rate = {"10000", "2"}; // a dead cell
    fixture().nextPoll();
    WAIT_COMPARE(fixture().markedCell(), QString());
    fixture().waitForPolls();
    QCOMPARE(fixture().lines(), QStringList());
    QCOMPARE(fixture().commands(), QStringList());
    QCOMPARE(systemRate(), QString("2500 (16ch)"));
}

void TstGatewayTables::rateThatTheGatewayRefusesLosesItsMark()
{
    fixture().startWithGateway(kChain);
    fixture().openConnectedPanel();
    fixture().addGatewayFaults("silent line=\"#007_\"");
    QTest::mouseClick(fixture().cell("32,1250"), Qt::LeftButton);
    WAIT_COMPARE(systemRate(), QString("1250 (32ch)"));
    QCOMPARE(fixture().markedCell(), QString("32,1250"));
    fixture().nextPoll();
    WAIT_COMPARE(fixture().markedCell(), QString("16,2500"));
    QCOMPARE(fixture().lampColour("PCM_Led"), QColor(Qt::red));
}

QTEST_MAIN(TstGatewayTables)
#include "tst_gatewaytables.moc"
