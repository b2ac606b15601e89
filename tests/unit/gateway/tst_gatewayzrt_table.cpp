#include "gatewaypanel.h"

#include <QtTest>

namespace {

/// Notes what becomes observable in which order when a cell is clicked.
class ClickRecorder : public QObject
{
public:
    explicit ClickRecorder(const GatewayPanel &panel, const QString &name)
        : m_cell(panel.cell(name))
    {
        m_cell->installEventFilter(this);
        connect(panel.sock, &TcpSock::dataWritten, this, [this] { order.append("sent"); });
        connect(panel.dialog.get(), &GatewayZRT::Signal_SetVXsamplingRate, this,
                [this] { order.append("told"); });
    }

    QStringList order;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::StyleChange &&
            m_cell->styleSheet() == QStringLiteral("border: 2px solid blue") && !order.contains("marked"))
            order.append("marked");
        return false;
    }

private:
    QPushButton *m_cell;
};

} // namespace

/// The table of data rates on the gateway's panel.
class TstGatewayZrtTable : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }

    void cellClickSendsMarksAndTells_data();
    void cellClickSendsMarksAndTells();
    void clickMarksThenSendsThenTells();
    void handlerWithoutASenderDoesNothing();
    void markedCellClickedAgainIsSentAgain();
    void onlyOneCellIsMarked();
    void deadCellCannotBeClicked();
    void otherTableIsFollowedWithoutAnEcho();
    void otherTableReachesARateWithoutALiveCell_data();
    void otherTableReachesARateWithoutALiveCell();
    void rateOfTheOtherTableIsForgottenWithoutALink();
    void limitDisablesWhatIsAboveIt_data();
    void limitDisablesWhatIsAboveIt();
    void higherLimitDoesNotEnableAgain();
    void unreadableLimitLeavesTheTable();
    void nextConnectionBringsTheCellsBack();
    void limitTakesTheMarkOfACellThatDies();
    void rateIsHighlighted_data();
    void rateIsHighlighted();
    void markTakesTheFocusOnce();
    void assigningAgainSendsOnce();
    void allCellsCanBeSwitched();
};

void TstGatewayZrtTable::cellClickSendsMarksAndTells_data()
{
    QTest::addColumn<QString>("channels");
    QTest::addColumn<QString>("bitRate");
    for (const char *bitRate : {"10000", "5000", "2500", "1250", "625", "312"}) {
        for (const char *channels : {"2", "4", "8", "16", "32", "64", "128", "256"}) {
            const QString name = QString(channels) + ',' + bitRate;
            if (!GatewayPanel::alwaysDead().contains(name))
                QTest::newRow(qPrintable(name)) << QString(channels) << QString(bitRate);
        }
    }
}

void TstGatewayZrtTable::cellClickSendsMarksAndTells()
{
    QFETCH(QString, channels);
    QFETCH(QString, bitRate);
    GatewayPanel p;
    const QSignalSpy told(p.dialog.get(), &GatewayZRT::Signal_SetVXsamplingRate);
    const QString name = channels + ',' + bitRate;
    p.click(name.toLatin1());
    QCOMPARE(p.takeLines(), QStringLiteral("#007_%1:%2\r").arg(bitRate, channels).toLatin1());
    QCOMPARE(told.count(), 1);
    QCOMPARE(told[0], (QVariantList{bitRate, channels}));
    QCOMPARE(p.marked(), name);
    QVERIFY(p.cell(name)->hasFocus());
}

void TstGatewayZrtTable::clickMarksThenSendsThenTells()
{
    GatewayPanel p;
    const ClickRecorder recorder(p, "8,1250");
    p.click("8,1250");
    QCOMPARE(recorder.order, (QStringList{"marked", "sent", "told"}));
}

void TstGatewayZrtTable::handlerWithoutASenderDoesNothing()
{
    GatewayPanel p;
    const QSignalSpy told(p.dialog.get(), &GatewayZRT::Signal_SetVXsamplingRate);
    p.dialog->handleBtnClick();
    QCOMPARE(p.takeLines(), QByteArray());
    QCOMPARE(told.count(), 0);
    QCOMPARE(p.marked(), QString());
}

void TstGatewayZrtTable::markedCellClickedAgainIsSentAgain()
{
    GatewayPanel p;
    const QSignalSpy told(p.dialog.get(), &GatewayZRT::Signal_SetVXsamplingRate);
    p.click("8,1250");
    p.click("8,1250");
    QCOMPARE(p.takeLines(), QByteArray("#007_1250:8\r#007_1250:8\r"));
    QCOMPARE(told.count(), 2);
}

void TstGatewayZrtTable::onlyOneCellIsMarked()
{
    const GatewayPanel p;
    p.click("8,1250");
    p.click("64,625");
    QCOMPARE(p.marked(), QStringLiteral("64,625"));
    QVERIFY(p.cell("8,1250")->styleSheet().isEmpty());
}

void TstGatewayZrtTable::deadCellCannotBeClicked()
{
    GatewayPanel p;
    QCOMPARE(p.dead(), GatewayPanel::alwaysDead());
    const QStringList dead = GatewayPanel::alwaysDead();
    for (const QString &name : dead)
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

void TstGatewayZrtTable::otherTableReachesARateWithoutALiveCell_data()
{
    QTest::addColumn<QString>("bitRate");
    QTest::addColumn<QString>("channels");
    QTest::newRow("dead") << "625"
                          << "256";
    QTest::newRow("not in the table") << "77"
                                      << "3";
}

void TstGatewayZrtTable::otherTableReachesARateWithoutALiveCell()
{
    QFETCH(QString, bitRate);
    QFETCH(QString, channels);
    GatewayPanel p;
    p.click("8,5000");
    p.takeLines();
    p.dialog->Slot_setBitRateSettings(bitRate, channels);
    QCOMPARE(p.takeLines(), QStringLiteral("#007_%1:%2\r").arg(bitRate, channels).toLatin1());
    QCOMPARE(p.marked(), QString());
    QCOMPARE(p.dead(), GatewayPanel::alwaysDead());
}

void TstGatewayZrtTable::rateOfTheOtherTableIsForgottenWithoutALink()
{
    GatewayPanel p(GatewayPanel::Link::Down);
    const QSignalSpy told(p.dialog.get(), &GatewayZRT::Signal_SetVXsamplingRate);
    p.dialog->Slot_setBitRateSettings("625", "64");
    QCOMPARE(p.takeLines(), QByteArray());
    QCOMPARE(p.marked(), QString());
    QCOMPARE(told.count(), 0);
    p.click("tcpConnect_Btn");
    QCOMPARE(p.takeLines(), QByteArray("#030_1772440200000000000\r")); // nothing waited for the link
    QCOMPARE(p.marked(), QString());
}

void TstGatewayZrtTable::limitDisablesWhatIsAboveIt_data()
{
    QTest::addColumn<QByteArray>("limit");
    QTest::addColumn<QStringList>("disabled"); // beside those that are always dead
    const auto row = [](const char *limit, const QStringList &disabled) {
        QTest::newRow(limit) << QByteArray(limit) << disabled;
    };
    const QStringList at62500{"8,10000", "4,5000", "2,2500"};
    const QStringList at31250{"16,10000", "8,5000", "4,2500", "2,1250"};
    row("250000", {});
    row("62500", {});
    row("62499.9", at62500);
    row("60000", at62500);
    row("31250", at62500);
    row("31249", at62500 + at31250);
    row("1e5", {});
}

void TstGatewayZrtTable::limitDisablesWhatIsAboveIt()
{
    QFETCH(QByteArray, limit);
    QFETCH(QStringList, disabled);
    GatewayPanel p;
    p.receiveStatus({{28, limit}});
    QStringList expected = disabled + GatewayPanel::alwaysDead();
    QStringList dead = p.dead();
    expected.sort();
    dead.sort();
    QCOMPARE(dead, expected);
    QCOMPARE(p.takeLines(), QByteArray());
}

void TstGatewayZrtTable::higherLimitDoesNotEnableAgain()
{
    GatewayPanel p;
    p.receiveStatus({{28, "60000"}});
    QVERIFY(!p.cell("2,2500")->isEnabled());
    p.receiveStatus({{28, "100000"}});
    QVERIFY(!p.cell("2,2500")->isEnabled());
    p.receiveStatus({});
    QVERIFY(!p.cell("2,2500")->isEnabled());
    p.click("2,2500");
    QCOMPARE(p.takeLines(), QByteArray());
    // The bounds of the figures: real numbers, not whole ones.
    p.receiveStatus({{28, "244"}}); // 625 x 50 / 128 = 244.140625
    QVERIFY(!p.cell("128,625")->isEnabled());
    QVERIFY(p.cell("64,312")->isEnabled()); // 243.75
    p.receiveStatus({{28, "0"}});
    QCOMPARE(p.dead().size(), 48);
}

void TstGatewayZrtTable::unreadableLimitLeavesTheTable()
{
    const GatewayPanel p;
    p.receiveStatus();
    p.receiveStatus({{28, "none"}});
    p.receive("#S;;;2");
    QCOMPARE(p.dead(), GatewayPanel::alwaysDead());
}

void TstGatewayZrtTable::nextConnectionBringsTheCellsBack()
{
    const GatewayPanel p;
    p.receiveStatus({{28, "1"}});
    QCOMPARE(p.dead().size(), 48);
    p.click("tcpConnect_Btn");
    p.click("tcpConnect_Btn");
    QCOMPARE(p.dead(), GatewayPanel::alwaysDead());
}

void TstGatewayZrtTable::limitTakesTheMarkOfACellThatDies()
{
    const GatewayPanel p;
    p.click("2,2500");
    p.receiveStatus({{6, "2500"}, {7, "2"}, {28, "60000"}});
    QCOMPARE(p.marked(), QString());
    QVERIFY(!p.table()->selected());
}

void TstGatewayZrtTable::rateIsHighlighted_data()
{
    QTest::addColumn<QByteArray>("bitRate");
    QTest::addColumn<QByteArray>("channels");
    QTest::addColumn<QString>("marked");
    const auto row = [](const char *name, const char *bitRate, const char *channels, const QString &marked) {
        QTest::newRow(name) << QByteArray(bitRate) << QByteArray(channels) << marked;
    };
    row("a cell", "1250", "8", "8,1250");
    row("first live cell", "10000", "8", "8,10000");
    row("last column", "10000", "256", "256,10000");
    row("channels and bit rate swapped", "8", "1250", QString());
    row("dead cell", "10000", "2", QString());
    row("no such channels", "1250", "7", QString());
    row("no such bit rate", "1251", "8", QString());
    row("both empty", "", "", QString());
    row("no bit rate", "", "8", QString());
}

void TstGatewayZrtTable::rateIsHighlighted()
{
    QFETCH(QByteArray, bitRate);
    QFETCH(QByteArray, channels);
    GatewayPanel p;
    p.receiveStatus({{6, "2500"}, {7, "16"}});
    QCOMPARE(p.marked(), QStringLiteral("16,2500"));
    QVERIFY(p.cell("16,2500")->hasFocus());
    p.receiveStatus({{6, bitRate}, {7, channels}});
    QFETCH(QString, marked);
    QCOMPARE(p.marked(), marked);
    QVERIFY(p.cell("16,2500")->styleSheet().isEmpty());
    if (!marked.isEmpty())
        QVERIFY(p.cell(marked)->hasFocus());
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
    QCOMPARE(p.dead(), GatewayPanel::alwaysDead());
}

QTEST_MAIN(TstGatewayZrtTable)
#include "tst_gatewayzrt_table.moc"
