#include "modules/widgets/qspinboxnowheel.h"

#include "wheelinarea.h"

#include <QtTest>

class TstQSpinBoxNoWheel : public QObject
{
    Q_OBJECT

private slots:
    void focusComesByTabAndClickOnly();
    void wheelWithoutFocusScrollsTheList();
    void wheelWithFocusStepsTheBox();
    void wheelDoesNotGiveTheFocus();
};

void TstQSpinBoxNoWheel::focusComesByTabAndClickOnly()
{
    const QSpinBoxNoWheel box;
    QCOMPARE(box.focusPolicy(), Qt::StrongFocus);
}

void TstQSpinBoxNoWheel::wheelWithoutFocusScrollsTheList()
{
    auto *box = new QSpinBoxNoWheel;
    WheelInArea list(box);
    QVERIFY(QTest::qWaitForWindowActive(&list.area()));
    list.area().setFocus();
    box->setValue(50);
    list.turn();
    QCOMPARE(box->value(), 50);
    QVERIFY(list.scrolled() > 0);
}

void TstQSpinBoxNoWheel::wheelWithFocusStepsTheBox()
{
    auto *box = new QSpinBoxNoWheel;
    WheelInArea list(box);
    QVERIFY(QTest::qWaitForWindowActive(&list.area()));
    box->setFocus();
    QVERIFY(box->hasFocus());
    box->setValue(50);
    list.turn();
    QCOMPARE(box->value(), 49);
    QCOMPARE(list.scrolled(), 0);
}

void TstQSpinBoxNoWheel::wheelDoesNotGiveTheFocus()
{
    auto *box = new QSpinBoxNoWheel;
    WheelInArea list(box);
    QVERIFY(QTest::qWaitForWindowActive(&list.area()));
    list.area().setFocus();
    list.turn();
    QVERIFY(!box->hasFocus());
}

QTEST_MAIN(TstQSpinBoxNoWheel)
#include "tst_qspinboxnowheel.moc"
