#include "reqpanel.h"

#include <QLabel>
#include <QSignalSpy>

namespace {

const QString kMark = QStringLiteral("border: 2px solid blue");

/// Notes what becomes observable in which order when a cell is clicked.
class ClickRecorder : public QObject
{
public:
    explicit ClickRecorder(const ReqPanel &panel, const QString &name)
        : m_cell(panel.cell(name))
    {
        m_cell->installEventFilter(this);
        connect(panel.sock, &TcpSock::dataWritten, this, [this] { order.append("sent"); });
        connect(panel.panel.get(), &GatewayZRT::Signal_SetVXsamplingRate, this,
                [this] { order.append("told"); });
    }

    QStringList order;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::StyleChange && m_cell->styleSheet() == kMark &&
            !order.contains("marked"))
            order.append("marked");
        return false;
    }

private:
    QPushButton *m_cell;
};

} // namespace

/// The panel's table of bit rates and channels.
class TstReqTable : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }

    void tableStandsInItsPlace();
    void headingsAreAsAgreed();
    void deadCellsAreThePanelsOwn();
    void cellClickSendsMarksAndTells_data();
    void cellClickSendsMarksAndTells();
    void clickMarksThenSendsThenTells();
    void markedCellClickedAgainIsSentAgain();
    void onlyOneCellIsMarked();
    void deadCellCannotBeClicked_data();
    void deadCellCannotBeClicked();
    void spaceKeyChoosesTheCell();
    void otherTableMarksAndSendsButTellsNothing();
    void otherTableMaySendADeadRate_data();
    void otherTableMaySendADeadRate();
    void limitDisablesWhatIsAboveIt_data();
    void limitDisablesWhatIsAboveIt();
    void unreadableLimitLeavesTheTable_data();
    void unreadableLimitLeavesTheTable();
    void higherLimitDoesNotEnableAgain();
    void limitComesAfterTheHighlight();
    void focusIsNotTakenEachSecond();
    void allCellsOffAndOn();
};

void TstReqTable::tableStandsInItsPlace()
{
    const ReqPanel p;
    const auto *place = p.child<QWidget>("gridLayoutWidget");
    QCOMPARE(place->findChildren<QPushButton *>(QRegularExpression("^[0-9]+,[0-9]+$")).size(), 48);
    QCOMPARE(p.cells([place](const QPushButton *cell) { return place->isAncestorOf(cell); }).size(), 48);
    for (const QString &name : p.cells([](const QPushButton *cell) { return !cell->isVisible(); }))
        QFAIL(qPrintable(name));
}

void TstReqTable::headingsAreAsAgreed()
{
    const ReqPanel p;
    QStringList expected;
    const auto heading = [](const QString &colour, const QString &text, const QString &value) {
        return QStringLiteral("<p align=center><font size = 4 color=\"%1\">%2</font><br/>"
                              "<font size=2 color=\"%1\">%3</font></p>")
            .arg(colour, text, value);
    };
    for (const char *channels : {"2", "4", "8", "16", "32", "64", "128", "256"})
        expected.append(heading("green", "Channels", channels));
    for (const char *rate : {"10000", "5000", "2500", "1250", "625", "312"})
        expected.append(heading("indigo", "kBit/s", rate));
    QStringList found;
    const auto labels = p.child<QWidget>("gridLayoutWidget")->findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        QCOMPARE(label->styleSheet(), QStringLiteral("border: 1px solid black"));
        QString text = label->text();
        if (text.contains("Bitrate"))
            QVERIFY(text.contains("indigo"));
        else
            found.append(text.replace(QRegularExpression("color=\"?(\\w+)\"?>"), "color=\"\\1\">"));
    }
    expected.sort();
    found.sort();
    QCOMPARE(labels.size(), 15);
    QCOMPARE(found.join('\n'), expected.join('\n'));
}

void TstReqTable::deadCellsAreThePanelsOwn()
{
    const ReqPanel p;
    QCOMPARE(p.deadCells(), (QStringList{"2,10000", "4,10000", "2,5000", "256,625", "128,312", "256,312"}));
    QCOMPARE(p.liveCells().size(), 42);
}

void TstReqTable::cellClickSendsMarksAndTells_data()
{
    QTest::addColumn<QString>("channels");
    QTest::addColumn<QString>("bitRate");
    for (const char *bitRate : {"10000", "5000", "2500", "1250", "625", "312"}) {
        for (const char *channels : {"2", "4", "8", "16", "32", "64", "128", "256"}) {
            const QString name = QString(channels) + ',' + bitRate;
            if (!ReqPanel::alwaysDead().contains(name))
                QTest::newRow(qPrintable(name)) << QString(channels) << QString(bitRate);
        }
    }
}

void TstReqTable::cellClickSendsMarksAndTells()
{
    QFETCH(QString, channels);
    QFETCH(QString, bitRate);
    ReqPanel p;
    const QSignalSpy told(p.panel.get(), &GatewayZRT::Signal_SetVXsamplingRate);
    const QString name = channels + ',' + bitRate;
    p.click(name.toLatin1());
    QCOMPARE(p.sent(), QStringLiteral("#007_%1:%2\r").arg(bitRate, channels).toLatin1());
    QCOMPARE(told.count(), 1);
    QCOMPARE(told[0], (QVariantList{bitRate, channels}));
    QCOMPARE(p.markedCells(), QStringList{name});
    QVERIFY(p.cell(name)->hasFocus());
}

void TstReqTable::clickMarksThenSendsThenTells()
{
    ReqPanel p;
    const ClickRecorder recorder(p, "8,1250");
    p.click("8,1250");
    QCOMPARE(recorder.order, (QStringList{"marked", "sent", "told"}));
}

void TstReqTable::markedCellClickedAgainIsSentAgain()
{
    ReqPanel p;
    const QSignalSpy told(p.panel.get(), &GatewayZRT::Signal_SetVXsamplingRate);
    p.click("8,1250");
    p.click("8,1250");
    QCOMPARE(p.sent(), QByteArray("#007_1250:8\r#007_1250:8\r"));
    QCOMPARE(told.count(), 2);
}

void TstReqTable::onlyOneCellIsMarked()
{
    ReqPanel p;
    p.click("8,1250");
    p.click("64,625");
    QCOMPARE(p.markedCells(), QStringList{"64,625"});
    QCOMPARE(p.cells([](const QPushButton *cell) { return !cell->styleSheet().isEmpty(); }),
             QStringList{"64,625"});
}

void TstReqTable::deadCellCannotBeClicked_data()
{
    QTest::addColumn<QString>("name");
    for (const QString &name : ReqPanel::alwaysDead())
        QTest::newRow(qPrintable(name)) << name;
}

void TstReqTable::deadCellCannotBeClicked()
{
    QFETCH(QString, name);
    ReqPanel p;
    const QSignalSpy told(p.panel.get(), &GatewayZRT::Signal_SetVXsamplingRate);
    p.click(name.toLatin1());
    QCOMPARE(p.sent(), QByteArray());
    QCOMPARE(told.count(), 0);
    QCOMPARE(p.markedCells(), QStringList());
}

void TstReqTable::spaceKeyChoosesTheCell()
{
    ReqPanel p;
    p.cell("16,312")->setFocus();
    QTest::keyClick(p.cell("16,312"), Qt::Key_Space);
    QCOMPARE(p.sent(), QByteArray("#007_312:16\r"));
    QCOMPARE(p.markedCells(), QStringList{"16,312"});
}

void TstReqTable::otherTableMarksAndSendsButTellsNothing()
{
    ReqPanel p;
    const QSignalSpy told(p.panel.get(), &GatewayZRT::Signal_SetVXsamplingRate);
    p.panel->Slot_setBitRateSettings("625", "128");
    QCOMPARE(p.sent(), QByteArray("#007_625:128\r"));
    QCOMPARE(p.markedCells(), QStringList{"128,625"});
    QCOMPARE(told.count(), 0);
}

void TstReqTable::otherTableMaySendADeadRate_data()
{
    QTest::addColumn<QString>("bitRate");
    QTest::addColumn<QString>("channels");
    QTest::newRow("dead here") << "625"
                               << "256";
    QTest::newRow("not in the table") << "77"
                                      << "3";
}

void TstReqTable::otherTableMaySendADeadRate()
{
    QFETCH(QString, bitRate);
    QFETCH(QString, channels);
    ReqPanel p;
    p.panel->Slot_setBitRateSettings(bitRate, channels);
    QCOMPARE(p.sent(), QStringLiteral("#007_%1:%2\r").arg(bitRate, channels).toLatin1());
    QCOMPARE(p.markedCells(), QStringList());
    QCOMPARE(p.deadCells(), ReqPanel::alwaysDead());
}

void TstReqTable::limitDisablesWhatIsAboveIt_data()
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

void TstReqTable::limitDisablesWhatIsAboveIt()
{
    QFETCH(QByteArray, limit);
    QFETCH(QStringList, disabled);
    ReqPanel p;
    p.report({{28, limit}});
    QStringList expected = disabled + ReqPanel::alwaysDead();
    QStringList dead = p.deadCells();
    expected.sort();
    dead.sort();
    QCOMPARE(dead, expected);
    QCOMPARE(p.sent(), QByteArray());
}

void TstReqTable::unreadableLimitLeavesTheTable_data()
{
    QTest::addColumn<QByteArray>("limit");
    for (const char *limit : {"", "abc", "nan", "inf", "-inf", "1e400", "10,5", "0x10", "5 kHz"})
        QTest::newRow(*limit ? limit : "empty") << QByteArray(limit);
}

void TstReqTable::unreadableLimitLeavesTheTable()
{
    QFETCH(QByteArray, limit);
    ReqPanel p;
    p.report({{28, limit}, {29, "77"}});
    QCOMPARE(p.text("unixEpochField"), QStringLiteral("77"));
    QCOMPARE(p.deadCells(), ReqPanel::alwaysDead());
}

void TstReqTable::higherLimitDoesNotEnableAgain()
{
    ReqPanel p;
    p.report({{28, "60000"}});
    QVERIFY(!p.cell("2,2500")->isEnabled());
    p.report({{28, "100000"}});
    QVERIFY(!p.cell("2,2500")->isEnabled());
    p.report({});
    QVERIFY(!p.cell("2,2500")->isEnabled());
    p.click("2,2500");
    QCOMPARE(p.sent(), QByteArray());
    // The bounds of the figures: real numbers, not whole ones.
    p.report({{28, "244"}}); // 625 x 50 / 128 = 244.140625
    QVERIFY(!p.cell("128,625")->isEnabled());
    QVERIFY(p.cell("64,312")->isEnabled()); // 243.75
    p.report({{28, "0"}});
    QCOMPARE(p.liveCells(), QStringList());
}

void TstReqTable::limitComesAfterTheHighlight()
{
    ReqPanel p;
    const ClickRecorder recorder(p, "2,2500");
    p.report({{6, "2500"}, {7, "2"}, {28, "60000"}});
    QCOMPARE(recorder.order, QStringList{"marked"});
    QVERIFY(!p.cell("2,2500")->isEnabled());
    p.report({{6, "2500"}, {7, "2"}, {28, "60000"}});
    QCOMPARE(p.markedCells(), QStringList());
}

void TstReqTable::focusIsNotTakenEachSecond()
{
    ReqPanel p;
    p.report({{6, "2500"}, {7, "16"}});
    QVERIFY(p.cell("16,2500")->hasFocus());
    auto *other = p.child<QWidget>("debugBtn");
    other->setFocus();
    p.report({{6, "2500"}, {7, "16"}});
    QVERIFY(other->hasFocus());
    QCOMPARE(p.markedCells(), QStringList{"16,2500"});
}

void TstReqTable::allCellsOffAndOn()
{
    ReqPanel p;
    p.report({{6, "2500"}, {7, "16"}, {28, "1000"}});
    p.panel->Slot_disableAllBtns();
    QCOMPARE(p.liveCells(), QStringList());
    QCOMPARE(p.markedCells(), QStringList());
    p.panel->Slot_EnableAllBtns();
    QCOMPARE(p.deadCells(), ReqPanel::alwaysDead());
    QCOMPARE(p.sent(), QByteArray());
}

QTEST_MAIN(TstReqTable)
#include "tst_req_table.moc"
