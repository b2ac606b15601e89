#include "base/gui/fonts.h"
#include "gatewaypanel.h"

#include <QtTest>

namespace {

const QStringList kDead{"2,10000", "4,10000", "2,5000", "256,625", "128,312", "256,312"};

} // namespace

/// The table of data rates on the gateway's panel.
class TstGatewayZrtTable : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }
    void clickIsMarkedSentAndTold();
    void deadCellCannotBeClicked();
    void otherTableIsFollowedWithoutAnEcho();
    void otherTableReachesADeadCell();
    void limitKillsTheCellsAboveIt();
    void higherLimitBringsNoCellBack();
    void unreadableLimitLeavesTheTable();
    void nextConnectionBringsTheCellsBack();
    void limitTakesTheMarkOfACellThatDies();
    void statusMarksItsRate();
    void rateWithoutALiveCellTakesTheMarkAway_data();
    void rateWithoutALiveCellTakesTheMarkAway();
    void markTakesTheFocusOnce();
    void assigningAgainSendsOnce();
    void allCellsCanBeSwitched();
};

void TstGatewayZrtTable::clickIsMarkedSentAndTold()
{
    GatewayPanel p;
    QByteArray sentBefore;
    QSignalSpy told(p.dialog.get(), &GatewayZRT::Signal_SetVXsamplingRate);
    connect(p.dialog.get(), &GatewayZRT::Signal_SetVXsamplingRate, this, [&] { sentBefore = p.takeLines(); });
    p.click("8,5000");
    QCOMPARE(p.marked(), QStringLiteral("8,5000"));
    QCOMPARE(sentBefore, QByteArray("#007_5000:8\r"));
    QCOMPARE(told.size(), 1);
    QCOMPARE(told.first(), (QVariantList{"5000", "8"}));
    p.click("16,5000");
    QCOMPARE(p.marked(), QStringLiteral("16,5000"));
}

void TstGatewayZrtTable::deadCellCannotBeClicked()
{
    GatewayPanel p;
    QCOMPARE(p.dead(), kDead);
    for (const QString &name : kDead)
        p.click(qPrintable(name));
    QCOMPARE(p.takeLines(), QByteArray());
    QCOMPARE(p.marked(), QString());
}

void TstGatewayZrtTable::otherTableIsFollowedWithoutAnEcho()
{
    GatewayPanel p;
    QSignalSpy told(p.dialog.get(), &GatewayZRT::Signal_SetVXsamplingRate);
    p.dialog->Slot_setBitRateSettings("1250", "32");
    QCOMPARE(p.takeLines(), QByteArray("#007_1250:32\r"));
    QCOMPARE(p.marked(), QStringLiteral("32,1250"));
    QCOMPARE(told.size(), 0);
}

void TstGatewayZrtTable::otherTableReachesADeadCell()
{
    GatewayPanel p;
    p.click("8,5000");
    p.takeLines();
    p.dialog->Slot_setBitRateSettings("625", "256");
    QCOMPARE(p.takeLines(), QByteArray("#007_625:256\r"));
    QCOMPARE(p.marked(), QString());
}

void TstGatewayZrtTable::limitKillsTheCellsAboveIt()
{
    const GatewayPanel p;
    p.receiveStatus({{28, "60000"}});
    // 2 channels at 2500 kBit/s are 62500; 4 at 2500 are 31250.
    QStringList expected = kDead;
    for (const char *name : {"8,10000", "4,5000", "2,2500"})
        expected.append(name);
    QStringList dead = p.dead();
    expected.sort();
    dead.sort();
    QCOMPARE(dead, expected);
}

void TstGatewayZrtTable::higherLimitBringsNoCellBack()
{
    const GatewayPanel p;
    p.receiveStatus({{28, "60000"}});
    p.receiveStatus({{28, "900000"}});
    QVERIFY(!p.isEnabled("2,2500"));
    QVERIFY(p.isEnabled("4,2500"));
}

void TstGatewayZrtTable::unreadableLimitLeavesTheTable()
{
    const GatewayPanel p;
    p.receiveStatus();
    p.receiveStatus({{28, "none"}});
    p.receive("#S;;;2");
    QCOMPARE(p.dead(), kDead);
}

void TstGatewayZrtTable::nextConnectionBringsTheCellsBack()
{
    const GatewayPanel p;
    p.receiveStatus({{28, "1"}});
    QCOMPARE(p.dead().size(), 48);
    p.click("tcpConnect_Btn");
    p.click("tcpConnect_Btn");
    QCOMPARE(p.dead(), kDead);
}

void TstGatewayZrtTable::limitTakesTheMarkOfACellThatDies()
{
    const GatewayPanel p;
    p.click("2,2500");
    p.receiveStatus({{6, "2500"}, {7, "2"}, {28, "60000"}});
    QCOMPARE(p.marked(), QString());
    QVERIFY(!p.table()->selected());
}

void TstGatewayZrtTable::statusMarksItsRate()
{
    const GatewayPanel p;
    p.receiveStatus({{6, "312"}, {7, "64"}});
    QCOMPARE(p.marked(), QStringLiteral("64,312"));
}

void TstGatewayZrtTable::rateWithoutALiveCellTakesTheMarkAway_data()
{
    QTest::addColumn<QByteArray>("bitRate");
    QTest::addColumn<QByteArray>("channels");
    QTest::newRow("dead") << QByteArray("10000") << QByteArray("2");
    QTest::newRow("not in the table") << QByteArray("2501") << QByteArray("16");
    QTest::newRow("empty") << QByteArray() << QByteArray();
}

void TstGatewayZrtTable::rateWithoutALiveCellTakesTheMarkAway()
{
    QFETCH(QByteArray, bitRate);
    QFETCH(QByteArray, channels);
    const GatewayPanel p;
    p.receiveStatus({{6, "2500"}, {7, "16"}});
    p.receiveStatus({{6, bitRate}, {7, channels}});
    QCOMPARE(p.marked(), QString());
}

void TstGatewayZrtTable::markTakesTheFocusOnce()
{
    const GatewayPanel p;
    p.receiveStatus({{6, "2500"}, {7, "16"}});
    QCOMPARE(QApplication::focusWidget(), p.cell("16,2500"));
    p.child("comboPTP")->setFocus();
    p.receiveStatus({{6, "2500"}, {7, "16"}});
    QCOMPARE(QApplication::focusWidget(), p.child("comboPTP"));
    QCOMPARE(p.marked(), QStringLiteral("16,2500"));
}

void TstGatewayZrtTable::assigningAgainSendsOnce()
{
    GatewayPanel p;
    p.dialog->assignIDs();
    p.click("16,2500");
    p.click("radio18Bit");
    QCOMPARE(p.takeLines(), QByteArray("#007_2500:16\r#011_18\r"));
}

void TstGatewayZrtTable::allCellsCanBeSwitched()
{
    const GatewayPanel p;
    p.click("16,2500");
    p.dialog->Slot_disableAllBtns();
    QCOMPARE(p.dead().size(), 48);
    QCOMPARE(p.marked(), QString());
    p.dialog->Slot_EnableAllBtns();
    QCOMPARE(p.dead(), kDead);
}

QTEST_MAIN(TstGatewayZrtTable)
#include "tst_gatewayzrt_table.moc"
