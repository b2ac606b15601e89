#include "base/gui/firstshow.h"

#include <QDialog>
#include <QLabel>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QtTest>

class TstFirstShow : public QObject
{
    Q_OBJECT

private slots:
    void stepWaitsForTheFirstShow();
    void stepRunsOnce();
    void stepCountsForTheFirstSize();
    void stepCountsForTheFirstSizeOfADialog();
    void stepOfAPartRunsWithItsWindow();
    void stepDoesNotRunWithTheParentOfItsWindow();
    void pageMayGetIntoItsWindowLater();
    void widgetMayBePutIntoALayoutLater();
    void pageMayGetIntoAnotherWindow();
    void pageMayGetIntoAWindowOnTheScreen();
    void partThatStaysHiddenRunsWithItsWindow();
    void numberOfAWindowIsNoShow();
    void widgetMadeByTheStepIsShown();
    void widgetMayGoBeforeItIsShown();
    void laterStepWaitsForTheFirstPaint();
};

void TstFirstShow::stepWaitsForTheFirstShow()
{
    QWidget widget;
    int runs = 0;
    beforeFirstShow(widget, [&runs] { ++runs; });
    widget.setWindowTitle(QStringLiteral("title"));
    widget.resize(100, 100);
    QCoreApplication::processEvents();
    QCOMPARE(runs, 0);
    widget.show();
    QCOMPARE(runs, 1);
}

void TstFirstShow::stepRunsOnce()
{
    QWidget parent;
    auto *widget = new QWidget;
    int runs = 0;
    beforeFirstShow(*widget, [&runs] { ++runs; });
    widget->show();
    widget->hide();
    widget->show();
    widget->setParent(&parent);
    parent.show();
    widget->show();
    QCOMPARE(runs, 1);
}

void TstFirstShow::stepCountsForTheFirstSize()
{
    QWidget window;
    QVBoxLayout layout(&window);
    auto *label = new QLabel;
    layout.addWidget(label);
    beforeFirstShow(window, [label] { label->setFixedSize(321, 123); });
    window.show();
    QVERIFY(window.width() >= 321);
    QVERIFY(window.height() >= 123);
}

void TstFirstShow::stepCountsForTheFirstSizeOfADialog()
{
    QWidget parent;
    QDialog window(&parent);
    QVBoxLayout layout(&window);
    auto *label = new QLabel;
    layout.addWidget(label);
    beforeFirstShow(*label, [label] { label->setFixedSize(321, 123); });
    window.open();
    QVERIFY(window.width() >= 321);
    QVERIFY(window.height() >= 123);
}

void TstFirstShow::stepOfAPartRunsWithItsWindow()
{
    QWidget window;
    auto *part = new QWidget(&window);
    int runs = 0;
    beforeFirstShow(*part, [&runs] { ++runs; });
    window.show();
    QCOMPARE(runs, 1);
}

void TstFirstShow::stepDoesNotRunWithTheParentOfItsWindow()
{
    QWidget window;
    auto *dialog = new QDialog(&window);
    auto *part = new QWidget(dialog);
    int runs = 0;
    beforeFirstShow(*part, [&runs] { ++runs; });
    window.show();
    QCoreApplication::processEvents();
    QCOMPARE(runs, 0);
    dialog->show();
    QCOMPARE(runs, 1);
}

void TstFirstShow::pageMayGetIntoItsWindowLater()
{
    QTabWidget window;
    auto *page = new QWidget;
    QVBoxLayout layout(page);
    auto *part = new QLabel;
    layout.addWidget(part);
    int runs = 0;
    beforeFirstShow(*part, [&runs, part] {
        ++runs;
        part->setFixedSize(321, 123);
    });
    window.addTab(page, QStringLiteral("page"));
    QCoreApplication::processEvents();
    QCOMPARE(runs, 0);
    window.show();
    QCOMPARE(runs, 1);
    QVERIFY(window.width() >= 321); // it was in time
    window.hide();
    window.show();
    QCOMPARE(runs, 1);
}

void TstFirstShow::widgetMayBePutIntoALayoutLater()
{
    QWidget window;
    QVBoxLayout layout(&window);
    auto *part = new QLabel;
    int runs = 0;
    beforeFirstShow(*part, [&runs, part] {
        ++runs;
        part->setFixedSize(321, 123);
    });
    layout.addWidget(part);
    QCoreApplication::processEvents();
    QCOMPARE(runs, 0);
    window.show();
    QCOMPARE(runs, 1);
    QVERIFY(window.width() >= 321);
}

void TstFirstShow::pageMayGetIntoAnotherWindow()
{
    QWidget before;
    QWidget after;
    auto *page = new QWidget(&before);
    auto *part = new QWidget(page);
    int runs = 0;
    beforeFirstShow(*part, [&runs] { ++runs; });
    page->setParent(&after);
    before.show();
    QCoreApplication::processEvents();
    QCOMPARE(runs, 0);
    after.show();
    QCOMPARE(runs, 1);
}

void TstFirstShow::pageMayGetIntoAWindowOnTheScreen()
{
    QWidget window;
    window.show();
    auto *page = new QWidget;
    auto *part = new QWidget(page);
    int runs = 0;
    beforeFirstShow(*part, [&runs] { ++runs; });
    page->setParent(&window);
    QCoreApplication::processEvents();
    QCOMPARE(runs, 0);
    page->show();
    QCOMPARE(runs, 1);
}

void TstFirstShow::partThatStaysHiddenRunsWithItsWindow()
{
    QWidget window;
    auto *part = new QWidget(&window);
    part->hide();
    int runs = 0;
    beforeFirstShow(*part, [&runs] { ++runs; });
    window.show();
    QCOMPARE(runs, 1);
}

void TstFirstShow::numberOfAWindowIsNoShow()
{
    QWidget window;
    auto *part = new QWidget(&window);
    int runs = 0;
    beforeFirstShow(*part, [&runs] { ++runs; });
    QVERIFY(window.winId());
    QCoreApplication::processEvents();
    QCOMPARE(runs, 0);
    window.show();
    QCOMPARE(runs, 1);
}

void TstFirstShow::widgetMadeByTheStepIsShown()
{
    QWidget window;
    QVBoxLayout layout(&window);
    QLabel *label = nullptr;
    beforeFirstShow(window, [&] {
        label = new QLabel(QStringLiteral("text"));
        layout.addWidget(label);
    });
    window.show();
    QVERIFY(label && label->isVisible());
}

void TstFirstShow::widgetMayGoBeforeItIsShown()
{
    int runs = 0;
    {
        QWidget widget;
        beforeFirstShow(widget, [&runs] { ++runs; });
    }
    QCoreApplication::processEvents();
    QCOMPARE(runs, 0);
}

void TstFirstShow::laterStepWaitsForTheFirstPaint()
{
    class Painted : public QWidget
    {
    public:
        int paints = 0;

    protected:
        void paintEvent(QPaintEvent *) override { ++paints; }
    };
    Painted widget;
    QList<int> paintsAtStep;
    afterFirstPaint(widget, [&] { paintsAtStep << widget.paints; });
    QCoreApplication::processEvents();
    QCOMPARE(paintsAtStep, QList<int>());
    widget.show();
    QTRY_COMPARE(paintsAtStep, QList<int>{1});
    widget.repaint();
    QCoreApplication::processEvents();
    QCOMPARE(paintsAtStep, QList<int>{1});
}

QTEST_MAIN(TstFirstShow)

#include "tst_firstshow.moc"
