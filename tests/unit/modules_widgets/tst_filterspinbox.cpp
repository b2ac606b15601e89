#include "modules/widgets/filterspinbox.h"

#include "stepcolour.h"
#include "support/virtualtime.h"
#include "wheelinarea.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QStyle>
#include <QStyleOptionSpinBox>
#include <QtTest>
#include <limits>
#include <memory>

class TstFilterSpinBox : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void singleStepGoesToMultiplesOf100_data();
    void singleStepGoesToMultiplesOf100();
    void stepStopsAtTheEndOfTheNumbers();
    void arrowButtonsAreSingleSteps();
    void arrowKeysAreSingleSteps();

    void stepTurnsTheBoxRed_data();
    void stepTurnsTheBoxRed();
    void stepIsReportedAtRest();
    void seriesOfStepsIsReportedOnce();
    void stepAtTheLimitIsReported();
    void ownRestIsKept();
    void otherCountsAreStepsOfTheSpinBox_data();
    void otherCountsAreStepsOfTheSpinBox();
    void otherCountKeepsARunningRest();
    void boxMayGoBeforeTheRestIsOver();
    void receiverMayStepAgain();

    void returnIsReportedOnce_data();
    void returnIsReportedOnce();
    void returnDeselects();
    void returnTakesTheTypedText();
    void heldReturnIsReportedOnce();

    void shiftReturnIsReported_data();
    void shiftReturnIsReported();
    void heldShiftReturnIsReportedOnce();
    void shiftReturnMayHaveOtherKeys_data();
    void shiftReturnMayHaveOtherKeys();
    void otherKeysAloneMakeAPlainReturn_data();
    void otherKeysAloneMakeAPlainReturn();

    void typingIsReportedAndNothingElse();

    void focusComesByTabAndClickOnly();
    void wheelDoesNotGiveTheFocus();

private:
    bool sendKey(Qt::Key key, Qt::KeyboardModifiers modifiers, bool repeat);
    QPoint arrow(QStyle::SubControl control) const;

    VirtualTime m_time;
    std::unique_ptr<FilterSpinBox> m_box;
    std::unique_ptr<QSignalSpy> m_steps;
    std::unique_ptr<QSignalSpy> m_enters;
    std::unique_ptr<QSignalSpy> m_shiftEnters;
    std::unique_ptr<QSignalSpy> m_texts;
};

void TstFilterSpinBox::init()
{
    m_box = std::make_unique<FilterSpinBox>(m_time);
    m_box->setRange(0, 999999999);
    m_box->show();
    QVERIFY(QTest::qWaitForWindowActive(m_box.get()));
    m_box->setFocus();
    m_steps = std::make_unique<QSignalSpy>(m_box.get(), &FilterSpinBox::stepChanged);
    m_enters = std::make_unique<QSignalSpy>(m_box.get(), &FilterSpinBox::enterPress);
    m_shiftEnters = std::make_unique<QSignalSpy>(m_box.get(), &FilterSpinBox::Signal_ShiftEnter);
    m_texts = std::make_unique<QSignalSpy>(m_box.get(), &FilterSpinBox::textAltered);
}

void TstFilterSpinBox::cleanup()
{
    m_box.reset();
}

/// True if the box took the key.
bool TstFilterSpinBox::sendKey(Qt::Key key, Qt::KeyboardModifiers modifiers, bool repeat)
{
    QKeyEvent event(QEvent::KeyPress, key, modifiers, QString(), repeat);
    QApplication::sendEvent(m_box.get(), &event);
    return event.isAccepted();
}

QPoint TstFilterSpinBox::arrow(QStyle::SubControl control) const
{
    QStyleOptionSpinBox option;
    option.initFrom(m_box.get());
    option.subControls = QStyle::SC_All;
    return m_box->style()->subControlRect(QStyle::CC_SpinBox, &option, control, m_box.get()).center();
}

void TstFilterSpinBox::singleStepGoesToMultiplesOf100_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("steps");
    QTest::addColumn<int>("to");
    QTest::newRow("99 up") << 99 << 1 << 100;
    QTest::newRow("100 up") << 100 << 1 << 200;
    QTest::newRow("101 up") << 101 << 1 << 200;
    QTest::newRow("250 up") << 250 << 1 << 300;
    QTest::newRow("0 up") << 0 << 1 << 100;
    QTest::newRow("300 down") << 300 << -1 << 200;
    QTest::newRow("250 down") << 250 << -1 << 100;
    QTest::newRow("199 down") << 199 << -1 << 0;
    QTest::newRow("100 down") << 100 << -1 << 0;
    QTest::newRow("99 down stops at the minimum") << 99 << -1 << 0;
    QTest::newRow("0 down stays") << 0 << -1 << 0;
    QTest::newRow("maximum up stays") << 999999999 << 1 << 999999999;
    QTest::newRow("maximum down") << 999999999 << -1 << 999999800;
}

void TstFilterSpinBox::singleStepGoesToMultiplesOf100()
{
    QFETCH(int, from);
    QFETCH(int, steps);
    m_box->setValue(from);
    m_box->stepBy(steps);
    QTEST(m_box->value(), "to");
}

void TstFilterSpinBox::stepStopsAtTheEndOfTheNumbers()
{
    constexpr int kHighest = std::numeric_limits<int>::max();
    constexpr int kLowest = std::numeric_limits<int>::min();
    m_box->setRange(kLowest, kHighest);
    m_box->setValue(kHighest);
    m_box->stepBy(1);
    QCOMPARE(m_box->value(), kHighest);
    m_box->setValue(kLowest);
    m_box->stepBy(-1);
    QCOMPARE(m_box->value(), kLowest);
}

void TstFilterSpinBox::arrowButtonsAreSingleSteps()
{
    m_box->setValue(250);
    QTest::mouseClick(m_box.get(), Qt::LeftButton, Qt::NoModifier, arrow(QStyle::SC_SpinBoxUp));
    QCOMPARE(m_box->value(), 300);
    QTest::mouseClick(m_box.get(), Qt::LeftButton, Qt::NoModifier, arrow(QStyle::SC_SpinBoxDown));
    QCOMPARE(m_box->value(), 200);
    QCOMPARE(m_steps->count(), 0);
    m_time.advance(1200);
    QCOMPARE(m_steps->count(), 1);
}

void TstFilterSpinBox::arrowKeysAreSingleSteps()
{
    m_box->setValue(250);
    QTest::keyClick(m_box.get(), Qt::Key_Up);
    QCOMPARE(m_box->value(), 300);
    QTest::keyClick(m_box.get(), Qt::Key_Down);
    QCOMPARE(m_box->value(), 200);
}

void TstFilterSpinBox::stepTurnsTheBoxRed_data()
{
    addStepCounts();
}

void TstFilterSpinBox::stepTurnsTheBoxRed()
{
    checkStepTurnsRed(*m_box);
}

void TstFilterSpinBox::stepIsReportedAtRest()
{
    m_box->stepBy(1);
    m_time.advance(1199);
    QCOMPARE(m_steps->count(), 0);
    m_time.advance(1);
    QCOMPARE(m_steps->count(), 1);
    m_time.advance(10000); // and that was it
    QCOMPARE(m_steps->count(), 1);
}

void TstFilterSpinBox::seriesOfStepsIsReportedOnce()
{
    m_box->stepBy(1);
    m_time.advance(1000);
    m_box->stepBy(1);
    m_time.advance(1000);
    m_box->stepBy(-1);
    m_time.advance(1199);
    QCOMPARE(m_steps->count(), 0);
    m_time.advance(1);
    QCOMPARE(m_steps->count(), 1);
    QCOMPARE(m_box->value(), 100);
}

void TstFilterSpinBox::stepAtTheLimitIsReported()
{
    m_box->setValue(0);
    m_box->stepBy(-1);
    m_time.advance(1200);
    QCOMPARE(m_steps->count(), 1);
}

void TstFilterSpinBox::ownRestIsKept()
{
    FilterSpinBox box(m_time, nullptr, std::chrono::milliseconds(50));
    const QSignalSpy steps(&box, &FilterSpinBox::stepChanged);
    box.stepBy(1);
    m_time.advance(49);
    QCOMPARE(steps.count(), 0);
    m_time.advance(1);
    QCOMPARE(steps.count(), 1);
}

void TstFilterSpinBox::otherCountsAreStepsOfTheSpinBox_data()
{
    QTest::addColumn<int>("steps");
    QTest::addColumn<int>("to");
    QTest::newRow("page up") << 10 << 260;
    QTest::newRow("page down") << -10 << 240;
    QTest::newRow("two") << 2 << 252;
    QTest::newRow("none") << 0 << 250;
}

void TstFilterSpinBox::otherCountsAreStepsOfTheSpinBox()
{
    QFETCH(int, steps);
    m_box->setValue(250);
    m_box->stepBy(steps);
    QTEST(m_box->value(), "to");
    m_time.advance(10000);
    QCOMPARE(m_steps->count(), 0);
}

void TstFilterSpinBox::otherCountKeepsARunningRest()
{
    m_box->stepBy(1);
    m_time.advance(1000);
    m_box->stepBy(10);
    m_time.advance(200);
    QCOMPARE(m_steps->count(), 1);
}

void TstFilterSpinBox::boxMayGoBeforeTheRestIsOver()
{
    m_box->stepBy(1);
    m_box.reset();
    m_time.advance(5000);
    QCOMPARE(m_steps->count(), 0);
}

void TstFilterSpinBox::receiverMayStepAgain()
{
    bool stepped = false;
    connect(m_box.get(), &FilterSpinBox::stepChanged, m_box.get(), [this, &stepped] {
        if (!stepped)
            m_box->stepBy(1);
        stepped = true;
    });
    m_box->stepBy(1);
    m_time.advance(1200);
    QCOMPARE(m_steps->count(), 1);
    m_time.advance(1200);
    QCOMPARE(m_steps->count(), 2);
}

void TstFilterSpinBox::returnIsReportedOnce_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("return") << int(Qt::Key_Return) << Qt::KeyboardModifiers();
    QTest::newRow("enter") << int(Qt::Key_Enter) << Qt::KeyboardModifiers(Qt::KeypadModifier);
}

void TstFilterSpinBox::returnIsReportedOnce()
{
    QFETCH(int, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QTest::keyClick(m_box.get(), static_cast<Qt::Key>(key), modifiers);
    QCOMPARE(m_enters->count(), 1);
    QCOMPARE(m_shiftEnters->count(), 0);
    QCOMPARE(m_steps->count(), 0);
}

void TstFilterSpinBox::returnDeselects()
{
    auto *edit = m_box->findChild<QLineEdit *>();
    m_box->selectAll();
    QVERIFY(edit->hasSelectedText());
    bool wasSelected = true;
    connect(m_box.get(), &FilterSpinBox::enterPress, m_box.get(),
            [edit, &wasSelected] { wasSelected = edit->hasSelectedText(); });
    QTest::keyClick(m_box.get(), Qt::Key_Return);
    QVERIFY(!wasSelected);
    QVERIFY(!edit->hasSelectedText());
}

void TstFilterSpinBox::returnTakesTheTypedText()
{
    m_box->selectAll();
    QTest::keyClicks(m_box.get(), QStringLiteral("1250"));
    QCOMPARE(m_enters->count(), 0);
    QTest::keyClick(m_box.get(), Qt::Key_Return);
    QCOMPARE(m_enters->count(), 1);
    QCOMPARE(m_box->value(), 1250);
    m_time.advance(10000);
    QCOMPARE(m_steps->count(), 0);
}

void TstFilterSpinBox::heldReturnIsReportedOnce()
{
    sendKey(Qt::Key_Return, Qt::NoModifier, false);
    QVERIFY(sendKey(Qt::Key_Return, Qt::NoModifier, true));
    QVERIFY(sendKey(Qt::Key_Enter, Qt::KeypadModifier, true));
    QCOMPARE(m_enters->count(), 1);
    sendKey(Qt::Key_Return, Qt::NoModifier, false);
    QCOMPARE(m_enters->count(), 2);
}

void TstFilterSpinBox::shiftReturnIsReported_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    const Qt::KeyboardModifiers shift = Qt::ShiftModifier;
    QTest::newRow("return") << int(Qt::Key_Return) << shift;
    QTest::newRow("enter") << int(Qt::Key_Enter) << shift;
    QTest::newRow("enter of the keypad") << int(Qt::Key_Enter) << (shift | Qt::KeypadModifier);
    QTest::newRow("return of a keypad") << int(Qt::Key_Return) << (shift | Qt::KeypadModifier);
}

void TstFilterSpinBox::shiftReturnIsReported()
{
    QFETCH(int, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QVERIFY(sendKey(static_cast<Qt::Key>(key), modifiers, false));
    QCOMPARE(m_shiftEnters->count(), 1);
    QCOMPARE(m_enters->count(), 0);
}

void TstFilterSpinBox::heldShiftReturnIsReportedOnce()
{
    QVERIFY(sendKey(Qt::Key_Return, Qt::ShiftModifier, false));
    QVERIFY(sendKey(Qt::Key_Return, Qt::ShiftModifier, true));
    QVERIFY(sendKey(Qt::Key_Return, Qt::ShiftModifier, true));
    QCOMPARE(m_shiftEnters->count(), 1);
    QCOMPARE(m_enters->count(), 0);
}

void TstFilterSpinBox::shiftReturnMayHaveOtherKeys_data()
{
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("ctrl") << (Qt::ShiftModifier | Qt::ControlModifier);
    QTest::newRow("alt") << (Qt::ShiftModifier | Qt::AltModifier);
    QTest::newRow("meta") << (Qt::ShiftModifier | Qt::MetaModifier);
}

void TstFilterSpinBox::shiftReturnMayHaveOtherKeys()
{
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QVERIFY(sendKey(Qt::Key_Return, modifiers, false));
    QCOMPARE(m_shiftEnters->count(), 1);
    QCOMPARE(m_enters->count(), 0);
}

void TstFilterSpinBox::otherKeysAloneMakeAPlainReturn_data()
{
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("ctrl") << Qt::KeyboardModifiers(Qt::ControlModifier);
    QTest::newRow("alt") << Qt::KeyboardModifiers(Qt::AltModifier);
    QTest::newRow("meta") << Qt::KeyboardModifiers(Qt::MetaModifier);
}

void TstFilterSpinBox::otherKeysAloneMakeAPlainReturn()
{
    QFETCH(Qt::KeyboardModifiers, modifiers);
    sendKey(Qt::Key_Return, modifiers, false);
    QCOMPARE(m_shiftEnters->count(), 0);
    QCOMPARE(m_enters->count(), 1);
}

void TstFilterSpinBox::typingIsReportedAndNothingElse()
{
    m_box->setValue(5);
    m_box->selectAll();
    QTest::keyClicks(m_box.get(), QStringLiteral("12"));
    m_box->stepBy(1);
    m_box->setValue(700);
    QStringList texts;
    for (const QList<QVariant> &arguments : qAsConst(*m_texts))
        texts.append(arguments.first().toString());
    QCOMPARE(texts, (QStringList{"1", "12"}));
}

void TstFilterSpinBox::focusComesByTabAndClickOnly()
{
    QCOMPARE(m_box->focusPolicy(), Qt::StrongFocus);
}

void TstFilterSpinBox::wheelDoesNotGiveTheFocus()
{
    auto *box = m_box.release();
    WheelInArea list(box);
    QVERIFY(QTest::qWaitForWindowActive(&list.area()));
    list.area().setFocus();
    list.turn();
    QVERIFY(!box->hasFocus());
}

QTEST_MAIN(TstFilterSpinBox)
#include "tst_filterspinbox.moc"
