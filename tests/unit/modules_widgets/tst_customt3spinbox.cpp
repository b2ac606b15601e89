#include "modules/widgets/customt3spinbox.h"

#include "stepcolour.h"
#include "support/messagecatcher.h"
#include "wheelinarea.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QStyle>
#include <QStyleOptionSpinBox>
#include <QtTest>
#include <limits>
#include <memory>

namespace {

const QString kShiftLine = QStringLiteral("Thermo Click + UP/Down");

} // namespace

class TstCustomT3SpinBox : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void singleStepDoublesOrHalves_data();
    void singleStepDoublesOrHalves();
    void doublingStopsAtTheEndOfTheNumbers();
    void arrowButtonsAndKeysStep();
    void stepIsReportedAtOnceWithItsValue();
    void stepTurnsTheBoxRed_data();
    void stepTurnsTheBoxRed();
    void otherCountsAreNotReported();

    void textCannotBeTyped();

    void shiftClickIsRemembered();
    void shiftClickIsKnownWhenTheStepComes();
    void otherClicksAreNotRemembered_data();
    void otherClicksAreNotRemembered();
    void shiftClickBesideTheArrowsOfTheBoxCounts();

    void focusComesByTabAndClickOnly();
    void wheelDoesNotGiveTheFocus();

private:
    QPoint arrow(QStyle::SubControl control) const;
    void click(QStyle::SubControl control, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    std::unique_ptr<CustomT3SpinBox> m_box;
    std::unique_ptr<QSignalSpy> m_steps;
};

void TstCustomT3SpinBox::init()
{
    m_box = std::make_unique<CustomT3SpinBox>();
    m_box->setRange(1, 32);
    m_box->show();
    QVERIFY(QTest::qWaitForWindowActive(m_box.get()));
    m_box->setFocus();
    m_steps = std::make_unique<QSignalSpy>(m_box.get(), &CustomT3SpinBox::stepChanged);
}

void TstCustomT3SpinBox::cleanup()
{
    m_box.reset();
}

QPoint TstCustomT3SpinBox::arrow(QStyle::SubControl control) const
{
    QStyleOptionSpinBox option;
    option.initFrom(m_box.get());
    option.subControls = QStyle::SC_All;
    return m_box->style()->subControlRect(QStyle::CC_SpinBox, &option, control, m_box.get()).center();
}

void TstCustomT3SpinBox::click(QStyle::SubControl control, Qt::KeyboardModifiers modifiers)
{
    QTest::mouseClick(m_box.get(), Qt::LeftButton, modifiers, arrow(control));
}

void TstCustomT3SpinBox::singleStepDoublesOrHalves_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("steps");
    QTest::addColumn<int>("to");
    QTest::newRow("1 up") << 1 << 1 << 2;
    QTest::newRow("16 up") << 16 << 1 << 32;
    QTest::newRow("17 up stops at the maximum") << 17 << 1 << 32;
    QTest::newRow("32 up stays at the maximum") << 32 << 1 << 32;
    QTest::newRow("32 down") << 32 << -1 << 16;
    QTest::newRow("5 down is cut") << 5 << -1 << 2;
    QTest::newRow("2 down") << 2 << -1 << 1;
    QTest::newRow("1 down stays at the minimum") << 1 << -1 << 1;
}

void TstCustomT3SpinBox::singleStepDoublesOrHalves()
{
    QFETCH(int, from);
    QFETCH(int, steps);
    m_box->setValue(from);
    m_box->stepBy(steps);
    QTEST(m_box->value(), "to");
    QCOMPARE(m_steps->count(), 1);
}

void TstCustomT3SpinBox::doublingStopsAtTheEndOfTheNumbers()
{
    constexpr int kHighest = std::numeric_limits<int>::max();
    m_box->setRange(1, kHighest);
    for (const int value : {1 << 30, kHighest}) {
        m_box->setValue(value);
        m_box->stepBy(1);
        QCOMPARE(m_box->value(), kHighest);
    }
}

void TstCustomT3SpinBox::arrowButtonsAndKeysStep()
{
    m_box->setValue(4);
    click(QStyle::SC_SpinBoxUp);
    QCOMPARE(m_box->value(), 8);
    QTest::keyClick(m_box.get(), Qt::Key_Up);
    QCOMPARE(m_box->value(), 16);
    click(QStyle::SC_SpinBoxDown);
    QCOMPARE(m_box->value(), 8);
    QTest::keyClick(m_box.get(), Qt::Key_Down);
    QCOMPARE(m_box->value(), 4);
    QCOMPARE(m_steps->count(), 4);
}

void TstCustomT3SpinBox::stepIsReportedAtOnceWithItsValue()
{
    int reported = 0;
    connect(m_box.get(), &CustomT3SpinBox::stepChanged, m_box.get(),
            [this, &reported] { reported = m_box->value(); });
    m_box->setValue(4);
    QCOMPARE(reported, 0);
    m_box->stepBy(1);
    QCOMPARE(reported, 8);
}

void TstCustomT3SpinBox::stepTurnsTheBoxRed_data()
{
    addStepCounts();
}

void TstCustomT3SpinBox::stepTurnsTheBoxRed()
{
    checkStepTurnsRed(*m_box);
}

void TstCustomT3SpinBox::otherCountsAreNotReported()
{
    m_box->setSingleStep(2);
    m_box->setValue(1);
    QTest::keyClick(m_box.get(), Qt::Key_PageUp);
    QCOMPARE(m_box->value(), 21); // ten single steps of the spin box
    m_box->stepBy(-2);
    QCOMPARE(m_box->value(), 17);
    QCOMPARE(m_steps->count(), 0);
}

void TstCustomT3SpinBox::textCannotBeTyped()
{
    m_box->setValue(4);
    auto *edit = m_box->findChild<QLineEdit *>();
    QVERIFY(edit->isReadOnly());
    QVERIFY(!m_box->isReadOnly()); // the arrows work
    m_box->selectAll();
    QTest::keyClicks(m_box.get(), QStringLiteral("8"));
    QTest::keyClick(m_box.get(), Qt::Key_Backspace);
    QTest::keyClick(m_box.get(), Qt::Key_Delete);
    QTest::keyClick(m_box.get(), Qt::Key_Return);
    QCOMPARE(m_box->value(), 4);
    QCOMPARE(edit->text(), QStringLiteral("4"));
}

void TstCustomT3SpinBox::shiftClickIsRemembered()
{
    QVERIFY(!m_box->isShiftClicked());
    MessageCatcher log;
    click(QStyle::SC_SpinBoxUp, Qt::ShiftModifier);
    QVERIFY(m_box->isShiftClicked());
    QVERIFY(log.contains(QtDebugMsg, kShiftLine));
    log.clear();
    click(QStyle::SC_SpinBoxUp);
    QTest::keyClick(m_box.get(), Qt::Key_Up);
    QVERIFY(m_box->isShiftClicked()); // for good
    QVERIFY(!log.contains(kShiftLine));
}

void TstCustomT3SpinBox::shiftClickIsKnownWhenTheStepComes()
{
    bool known = false;
    connect(m_box.get(), &CustomT3SpinBox::stepChanged, m_box.get(),
            [this, &known] { known = m_box->isShiftClicked(); });
    m_box->setValue(4);
    click(QStyle::SC_SpinBoxUp, Qt::ShiftModifier);
    QCOMPARE(m_box->value(), 8);
    QVERIFY(known);
}

void TstCustomT3SpinBox::otherClicksAreNotRemembered_data()
{
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("none") << Qt::KeyboardModifiers();
    QTest::newRow("ctrl") << Qt::KeyboardModifiers(Qt::ControlModifier);
    QTest::newRow("alt") << Qt::KeyboardModifiers(Qt::AltModifier);
    QTest::newRow("shift and ctrl") << (Qt::ShiftModifier | Qt::ControlModifier);
    QTest::newRow("shift and alt") << (Qt::ShiftModifier | Qt::AltModifier);
}

void TstCustomT3SpinBox::otherClicksAreNotRemembered()
{
    QFETCH(Qt::KeyboardModifiers, modifiers);
    MessageCatcher log;
    click(QStyle::SC_SpinBoxUp, modifiers);
    QVERIFY(!m_box->isShiftClicked());
    QVERIFY(!log.contains(kShiftLine));
}

void TstCustomT3SpinBox::shiftClickBesideTheArrowsOfTheBoxCounts()
{
    QTest::mouseClick(m_box.get(), Qt::LeftButton, Qt::ShiftModifier, QPoint(0, 0)); // the frame
    QVERIFY(m_box->isShiftClicked());
    QCOMPARE(m_steps->count(), 0);
}

void TstCustomT3SpinBox::focusComesByTabAndClickOnly()
{
    QCOMPARE(m_box->focusPolicy(), Qt::StrongFocus);
}

void TstCustomT3SpinBox::wheelDoesNotGiveTheFocus()
{
    auto *box = m_box.release();
    WheelInArea list(box);
    QVERIFY(QTest::qWaitForWindowActive(&list.area()));
    list.area().setFocus();
    list.turn();
    QVERIFY(!box->hasFocus());
}

QTEST_MAIN(TstCustomT3SpinBox)
#include "tst_customt3spinbox.moc"
