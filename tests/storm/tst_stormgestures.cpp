#include "gestures.h"
#include "hands.h"
#include "program.h"

#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QtTest>

using namespace storm;

/// What the gestures make the program do happens when the hands do it, as the time is measured then.
class TstStormGestures : public QObject
{
    Q_OBJECT

private slots:
    void theHandsScrollToTheControl();
    void theHandsScrollToTheItem();

private:
    void finish(Hands &hands);
};

void TstStormGestures::finish(Hands &hands)
{
    hands.setPace(Hands::Time(0));
    hands.start();
    QTRY_VERIFY(!hands.isBusy());
}

void TstStormGestures::theHandsScrollToTheControl()
{
    Program program(addressesOfThisProcess());
    DialogBook book;
    Hands hands;
    Chance chance(1);
    Gestures gestures(program, hands, chance, book);
    QScrollArea area;
    auto *content = new QWidget;
    content->setFixedSize(200, 3000);
    auto *button = new QPushButton(content);
    button->setGeometry(10, 2900, 80, 30);
    area.setWidget(content);
    area.show();
    QVERIFY(QTest::qWaitForWindowActive(&area));
    const QSignalSpy presses(button, &QPushButton::pressed);
    QVERIFY(!gestures.use(button).isEmpty());
    QCOMPARE(area.verticalScrollBar()->value(), 0);
    finish(hands);
    QVERIFY(area.verticalScrollBar()->value() > 2000);
    QTRY_VERIFY(!presses.isEmpty());
}

void TstStormGestures::theHandsScrollToTheItem()
{
    Program program(addressesOfThisProcess());
    DialogBook book;
    QTreeWidget tree;
    for (int i = 0; i < 1000; ++i)
        tree.addTopLevelItem(new QTreeWidgetItem({QString::number(i)}));
    tree.show();
    QVERIFY(QTest::qWaitForWindowActive(&tree));
    for (quint32 seed = 1; !tree.currentItem() || tree.currentIndex().row() < 100; ++seed) {
        Hands hands;
        Chance chance(seed);
        Gestures gestures(program, hands, chance, book);
        const int before = tree.verticalScrollBar()->value();
        QVERIFY(!gestures.use(&tree).isEmpty());
        QCOMPARE(tree.verticalScrollBar()->value(), before);
        finish(hands);
        QVERIFY(seed < 20);
    }
}

QTEST_MAIN(TstStormGestures)

#include "tst_stormgestures.moc"
