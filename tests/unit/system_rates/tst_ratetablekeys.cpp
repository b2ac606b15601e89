#include "base/gui/fonts.h"
#include "shownratetable.h"

#include <QSignalSpy>

/// How the keyboard moves in the table of the rates and what it presses there.
class TstRateTableKeys : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }

    void markedCellGetsTheFocus();
    void tabGoesInReadingOrder();
    void arrowsGoToTheNeighbour();
    void arrowsStopAtTheEdge();
    void arrowsSkipDeadCells();
    void arrowsStayWhereNoCellLives();
    void spacePressesTheCell();
    void returnPressesNoCell_data();
    void returnPressesNoCell();
};

void TstRateTableKeys::markedCellGetsTheFocus()
{
    ShownTable t;
    t.cell("2,10000")->setFocus();
    t.table->markSelected(t.cell("16,2500"));
    QCOMPARE(t.focused(), QStringLiteral("16,2500"));
}

void TstRateTableKeys::tabGoesInReadingOrder()
{
    ShownTable t;
    t.table->disable({{"10000", "4"}});
    t.cell("2,10000")->setFocus();
    QStringList visited;
    for (int i = 0; i < 47; ++i) {
        visited << t.focused();
        t.press(Qt::Key_Tab);
    }
    QStringList expected;
    const auto buttons = t.table->buttons();
    for (const QPushButton *button : buttons)
        expected << button->objectName();
    expected.removeOne(QStringLiteral("4,10000"));
    QCOMPARE(visited, expected);
}

void TstRateTableKeys::arrowsGoToTheNeighbour()
{
    ShownTable t;
    t.cell("16,2500")->setFocus();
    t.press(Qt::Key_Right);
    QCOMPARE(t.focused(), QStringLiteral("32,2500"));
    t.press(Qt::Key_Down);
    QCOMPARE(t.focused(), QStringLiteral("32,1250"));
    t.press(Qt::Key_Left);
    QCOMPARE(t.focused(), QStringLiteral("16,1250"));
    t.press(Qt::Key_Up);
    QCOMPARE(t.focused(), QStringLiteral("16,2500"));
}

void TstRateTableKeys::arrowsStopAtTheEdge()
{
    ShownTable t;
    t.cell("2,10000")->setFocus();
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Left}) {
        t.press(key);
        QCOMPARE(t.focused(), QStringLiteral("2,10000"));
    }
    t.cell("256,312")->setFocus();
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Right}) {
        t.press(key);
        QCOMPARE(t.focused(), QStringLiteral("256,312"));
    }
}

void TstRateTableKeys::arrowsSkipDeadCells()
{
    ShownTable t;
    t.table->disable({{"2500", "8"}, {"2500", "16"}, {"1250", "4"}});
    t.cell("4,2500")->setFocus();
    t.press(Qt::Key_Right);
    QCOMPARE(t.focused(), QStringLiteral("32,2500"));
    t.press(Qt::Key_Left);
    QCOMPARE(t.focused(), QStringLiteral("4,2500"));
    t.press(Qt::Key_Down);
    QCOMPARE(t.focused(), QStringLiteral("4,625"));
}

void TstRateTableKeys::arrowsStayWhereNoCellLives()
{
    ShownTable t;
    t.table->setAllEnabled(false);
    t.cell("4,2500")->setEnabled(true);
    t.cell("4,2500")->setFocus();
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right}) {
        t.press(key);
        QCOMPARE(t.focused(), QStringLiteral("4,2500"));
    }
}

void TstRateTableKeys::spacePressesTheCell()
{
    ShownTable t;
    QSignalSpy clicked(t.cell("4,2500"), &QPushButton::clicked);
    t.cell("4,2500")->setFocus();
    t.press(Qt::Key_Space);
    QCOMPARE(clicked.count(), 1);
    t.press(Qt::Key_Right);
    QCOMPARE(clicked.count(), 1); // the arrows press nothing
}

void TstRateTableKeys::returnPressesNoCell_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Return") << int(Qt::Key_Return);
    QTest::newRow("Enter") << int(Qt::Key_Enter);
}

void TstRateTableKeys::returnPressesNoCell()
{
    QFETCH(int, key);
    ShownTable t;
    int clicks = 0;
    const auto buttons = t.table->buttons();
    for (const QPushButton *button : buttons)
        connect(button, &QPushButton::clicked, this, [&clicks] { ++clicks; });
    t.cell("4,2500")->setFocus();
    t.press(static_cast<Qt::Key>(key));
    QTest::keyClick(&t.dialog, static_cast<Qt::Key>(key));
    QCOMPARE(clicks, 0);
    QVERIFY(t.dialog.isVisible());
}

QTEST_MAIN(TstRateTableKeys)
#include "tst_ratetablekeys.moc"
