#include "stripfixture.h"

#include <QMenu>
#include <QScrollArea>
#include <QScrollBar>
#include <QtTest/qtestspontaneevent.h>

namespace {

constexpr auto kAmplifiers = {1, 2, 4};

void turnWheel(QWidget *over)
{
    const QPoint place = over->rect().center();
    QWheelEvent wheel(place, over->mapToGlobal(place), QPoint(), QPoint(0, -240), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    // As from the window system: only such an event is passed on to the parent.
    QSpontaneKeyEvent::setSpontaneous(&wheel);
    QCoreApplication::instance()->notify(over, &wheel);
}

} // namespace

/// The filter box of the strips that have an amplifier, and the warning of low frequencies.
class TstChannelFilter : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void stepsAreSentOnceWhenTheyRest_data() { addFamilies(kAmplifiers); }
    void stepsAreSentOnceWhenTheyRest();
    void stepsGoToMultiplesOf100_data();
    void stepsGoToMultiplesOf100();
    void lowFrequencyByTheArrowsIsWarnedOf_data();
    void lowFrequencyByTheArrowsIsWarnedOf();
    void returnSendsWithoutAWarning_data() { addFamilies(kAmplifiers); }
    void returnSendsWithoutAWarning();
    void returnIsNotGuarded_data() { addFamilies(kAmplifiers); }
    void returnIsNotGuarded();
    void leavingAfterReturnSendsAgainWithTheWarning_data() { addFamilies(kAmplifiers); }
    void leavingAfterReturnSendsAgainWithTheWarning();
    void leavingWithoutAChangeSendsNothing_data() { addFamilies(kAmplifiers); }
    void leavingWithoutAChangeSendsNothing();
    void valueOfAStatusIsNotSentOnLeaving_data() { addFamilies(kAmplifiers); }
    void valueOfAStatusIsNotSentOnLeaving();
    void disabledStripForgetsTheChange_data() { addFamilies(kAmplifiers); }
    void disabledStripForgetsTheChange();
    void disabledStripSendsNoStep_data() { addFamilies(kAmplifiers); }
    void disabledStripSendsNoStep();
    void shiftReturnGoesToTheGroup_data();
    void shiftReturnGoesToTheGroup();
    void disabledStripSendsNoGroupCommand_data() { addFamilies(kAmplifiers); }
    void disabledStripSendsNoGroupCommand();
    void wheelIsSwallowed_data();
    void wheelIsSwallowed();
    void wheelOverABoxLeavesTheFocusElsewhere_data();
    void wheelOverABoxLeavesTheFocusElsewhere();
    void leavingTheWindowSendsTheChange_data() { addFamilies(kAmplifiers); }
    void leavingTheWindowSendsTheChange();
    void popupSendsTheChange_data() { addFamilies(kAmplifiers); }
    void popupSendsTheChange();
    void statusWhileStepsRestIsWhatIsSent_data() { addFamilies(kAmplifiers); }
    void statusWhileStepsRestIsWhatIsSent();
    void rangeLimitsTheValue_data() { addFamilies(kAmplifiers); }
    void rangeLimitsTheValue();

    void warningBox_data() { addFamilies(kAmplifiers); }
    void warningBox();
    void valueGoesOutBeforeTheWarning_data() { addFamilies(kAmplifiers); }
    void valueGoesOutBeforeTheWarning();
    void oneWarningAtATime_data() { addFamilies(kAmplifiers); }
    void oneWarningAtATime();
    void deletedWithTheWarningOpen_data() { addFamilies(kAmplifiers); }
    void deletedWithTheWarningOpen();
    void deletedWithAStepPending_data() { addFamilies(kAmplifiers); }
    void deletedWithAStepPending();
    void deletedWithAChangedText_data() { addFamilies(kAmplifiers); }
    void deletedWithAChangedText();

private:
    void click(bool up) const
    {
        QTest::mouseClick(s->filterBox(), Qt::LeftButton, Qt::NoModifier, s->arrow(s->filterBox(), up));
    }

    std::unique_ptr<StripFixture> s;
};

void TstChannelFilter::init()
{
    QFETCH(int, family);
    s = std::make_unique<StripFixture>(family);
    s->show();
}

void TstChannelFilter::cleanup()
{
    s.reset();
}

void TstChannelFilter::stepsAreSentOnceWhenTheyRest()
{
    s->strip->setFilterValue(500);
    click(true);
    QCOMPARE(s->filterBox()->styleSheet(), kRed); // at once
    s->time.advance(1199);
    click(true);
    s->time.advance(1199);
    click(true);
    s->time.advance(1199);
    QCOMPARE(s->recorder->take(), QStringList());
    s->time.advance(1);
    QCOMPARE(s->recorder->take(), QStringList(s->filterSignal(800)));
    s->time.advance(10000);
    QCOMPARE(s->recorder->take(), QStringList());
    QVERIFY(!s->messageBox("filterWarningBox"));
}

void TstChannelFilter::stepsGoToMultiplesOf100_data()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<int>("from");
    QTest::addColumn<bool>("up");
    QTest::addColumn<int>("to");
    for (const int family : kAmplifiers) {
        QTest::addRow("type %d, 99 up", family) << family << 99 << true << 100;
        QTest::addRow("type %d, 100 up", family) << family << 100 << true << 200;
        QTest::addRow("type %d, 250 up", family) << family << 250 << true << 300;
        QTest::addRow("type %d, 250 down", family) << family << 250 << false << 100;
        QTest::addRow("type %d, 50 down", family) << family << 50 << false << 0;
    }
}

void TstChannelFilter::stepsGoToMultiplesOf100()
{
    QFETCH(int, from);
    QFETCH(bool, up);
    s->strip->setFilterValue(from);
    click(up);
    QTEST(s->filterBox()->value(), "to");
}

void TstChannelFilter::lowFrequencyByTheArrowsIsWarnedOf_data()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<int>("from");
    QTest::addColumn<bool>("up");
    QTest::addColumn<bool>("warning");
    for (const int family : kAmplifiers) {
        QTest::addRow("type %d, to 100", family) << family << 200 << false << true;
        QTest::addRow("type %d, to 0", family) << family << 100 << false << true;
        QTest::addRow("type %d, to 200", family) << family << 100 << true << false;
        QTest::addRow("type %d, to 300", family) << family << 400 << false << false;
    }
}

void TstChannelFilter::lowFrequencyByTheArrowsIsWarnedOf()
{
    QFETCH(int, from);
    QFETCH(bool, up);
    QFETCH(bool, warning);
    s->strip->setFilterValue(from);
    click(up);
    QVERIFY(!s->messageBox("filterWarningBox"));
    s->time.advance(1200);
    QCOMPARE(s->recorder->take(), QStringList(s->filterSignal(s->filterBox()->value())));
    QCOMPARE(s->messageBox("filterWarningBox") != nullptr, warning);
}

void TstChannelFilter::returnSendsWithoutAWarning()
{
    s->type(s->filterBox(), QStringLiteral("150"));
    QCOMPARE(s->recorder->take(), QStringList());
    QTest::keyClick(s->filterBox(), Qt::Key_Return);
    QCOMPARE(s->recorder->take(), QStringList(s->filterSignal(150)));
    QCOMPARE(s->filterBox()->styleSheet(), kRed);
    QVERIFY(!s->messageBox("filterWarningBox"));
    QTest::keyClick(s->filterBox(), Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(s->recorder->take(), QStringList(s->filterSignal(150)));
}

void TstChannelFilter::returnIsNotGuarded()
{
    s->strip->disableUpdates();
    s->type(s->filterBox(), QStringLiteral("700"));
    QTest::keyClick(s->filterBox(), Qt::Key_Return);
    QCOMPARE(s->recorder->take(), QStringList(s->filterSignal(700)));
    QCOMPARE(s->filterBox()->styleSheet(), kRed);
}

void TstChannelFilter::leavingAfterReturnSendsAgainWithTheWarning()
{
    s->type(s->filterBox(), QStringLiteral("150"));
    QTest::keyClick(s->filterBox(), Qt::Key_Return);
    s->recorder->take();
    QTest::mouseClick(s->elsewhere, Qt::LeftButton);
    QCOMPARE(s->recorder->take(), QStringList(s->filterSignal(150)));
    QVERIFY(s->messageBox("filterWarningBox"));
}

void TstChannelFilter::leavingWithoutAChangeSendsNothing()
{
    s->type(s->filterBox(), QStringLiteral("600"));
    QTest::keyClick(s->filterBox(), Qt::Key_Tab);
    QCOMPARE(s->recorder->take(), QStringList(s->filterSignal(600)));
    s->filterBox()->setFocus();
    QTest::keyClick(s->filterBox(), Qt::Key_Tab);
    QCOMPARE(s->recorder->take(), QStringList());
}

void TstChannelFilter::valueOfAStatusIsNotSentOnLeaving()
{
    s->filterBox()->setFocus();
    s->strip->setFilterValue(150);
    s->elsewhere->setFocus();
    QCOMPARE(s->recorder->take(), QStringList());
    QCOMPARE(s->filterBox()->styleSheet(), kBlack);
    QVERIFY(!s->messageBox("filterWarningBox"));
}

void TstChannelFilter::disabledStripForgetsTheChange()
{
    s->strip->disableUpdates();
    s->type(s->filterBox(), QStringLiteral("100"));
    s->elsewhere->setFocus();
    QCOMPARE(s->recorder->take(), QStringList());
    QCOMPARE(s->filterBox()->styleSheet(), QString());
    QVERIFY(!s->messageBox("filterWarningBox"));
    s->strip->enableUpdates();
    s->filterBox()->setFocus();
    s->elsewhere->setFocus();
    QCOMPARE(s->recorder->take(), QStringList());
}

void TstChannelFilter::disabledStripSendsNoStep()
{
    s->strip->disableUpdates();
    click(true);
    s->time.advance(5000);
    QCOMPARE(s->recorder->take(), QStringList());
    QVERIFY(!s->messageBox("filterWarningBox"));
}

void TstChannelFilter::shiftReturnGoesToTheGroup_data()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("keys");
    for (const int family : kAmplifiers) {
        QTest::addRow("type %d, Return", family) << family << int(Qt::Key_Return) << int(Qt::ShiftModifier);
        QTest::addRow("type %d, Enter", family)
            << family << int(Qt::Key_Enter) << int(Qt::ShiftModifier | Qt::KeypadModifier);
    }
}

void TstChannelFilter::shiftReturnGoesToTheGroup()
{
    QFETCH(int, key);
    QFETCH(int, keys);
    s->type(s->filterBox(), QStringLiteral("150"));
    QTest::keyClick(s->filterBox(), Qt::Key(key), Qt::KeyboardModifiers(keys));
    QCOMPARE(s->recorder->take(), QStringList(s->groupSignal(3, 150)));
    QVERIFY(!s->messageBox("filterWarningBox"));
}

void TstChannelFilter::disabledStripSendsNoGroupCommand()
{
    s->strip->disableUpdates();
    s->type(s->filterBox(), QStringLiteral("150"));
    QTest::keyClick(s->filterBox(), Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(s->recorder->take(), QStringList());
}

void TstChannelFilter::wheelIsSwallowed_data()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<bool>("focus");
    for (const int family : {1, 2, 3, 4}) {
        QTest::addRow("type %d", family) << family << false;
        QTest::addRow("type %d, with focus", family) << family << true;
    }
}

void TstChannelFilter::wheelIsSwallowed()
{
    QFETCH(bool, focus);
    s->strip->setFilterValue(16);
    QScrollArea area; // as the list of rows
    auto *content = new QWidget;
    content->resize(800, 2000);
    s->strip->setParent(content);
    area.setWidget(content);
    area.resize(600, 200);
    area.show();
    QVERIFY(QTest::qWaitForWindowActive(&area));
    s->filterBox()->clearFocus();
    if (focus)
        s->filterBox()->setFocus();
    s->recorder->take();
    turnWheel(s->filterBox());
    turnWheel(s->filterBox()->findChild<QLineEdit *>());
    QCOMPARE(s->filterBox()->value(), 16);
    QCOMPARE(area.verticalScrollBar()->value(), 0);
    turnWheel(s->strip);
    QVERIFY(area.verticalScrollBar()->value() > 0); // beside the box it scrolls
    s->time.advance(2000);
    QCOMPARE(s->recorder->take(), QStringList());
    s->strip->setParent(&s->window);
}

void TstChannelFilter::wheelOverABoxLeavesTheFocusElsewhere_data()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<int>("over");
    for (const int family : kAmplifiers) {
        for (const int over : {1, 2, 3, 4})
            QTest::addRow("type %d, wheel over a box of type %d", family, over) << family << over;
    }
}

void TstChannelFilter::wheelOverABoxLeavesTheFocusElsewhere()
{
    // Otherwise the scrolling would take the focus from a box with an altered text, which would send it.
    QFETCH(int, over);
    const StripFixture other(over);
    other.strip->setParent(&s->window);
    other.strip->move(0, s->strip->height());
    other.strip->show();
    other.strip->setFilterValue(16);
    s->type(s->filterBox(), QStringLiteral("700"));
    turnWheel(other.filterBox());
    turnWheel(other.filterBox()->findChild<QLineEdit *>());
    QVERIFY(s->filterBox()->hasFocus());
    QCOMPARE(other.filterBox()->value(), 16);
    s->time.advance(5000);
    QCOMPARE(s->recorder->take(), QStringList());
    QCOMPARE(other.recorder->take(), QStringList());
    delete other.strip;
}

void TstChannelFilter::leavingTheWindowSendsTheChange()
{
    // On purpose: the box is left, whatever it is left for.
    s->type(s->filterBox(), QStringLiteral("700"));
    QWidget otherWindow;
    otherWindow.show();
    QVERIFY(QTest::qWaitForWindowActive(&otherWindow));
    QCOMPARE(s->recorder->take(), QStringList(s->filterSignal(700)));
    QCOMPARE(s->filterBox()->styleSheet(), kRed);
    s->window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&s->window));
    QCOMPARE(s->recorder->take(), QStringList()); // once
}

void TstChannelFilter::popupSendsTheChange()
{
    // On purpose too: a popup takes the focus.
    s->type(s->filterBox(), QStringLiteral("700"));
    QMenu menu;
    menu.addAction(QStringLiteral("entry"));
    menu.popup(s->window.mapToGlobal(QPoint(10, 10)));
    QTRY_VERIFY(menu.isVisible());
    QCOMPARE(s->recorder->take(), QStringList(s->filterSignal(700)));
    menu.close();
    QCOMPARE(s->recorder->take(), QStringList());
}

void TstChannelFilter::statusWhileStepsRestIsWhatIsSent()
{
    // On purpose: only a change that was sent holds the display back. Steps that still rest were not sent,
    // so that the status is shown; and what goes out at the end of the rest is what the box shows.
    s->strip->setFilterValue(500);
    click(true);
    s->time.advance(600);
    s->strip->setFilterValue(900);
    QCOMPARE(s->filterBox()->value(), 900);
    QCOMPARE(s->filterBox()->styleSheet(), kBlack);
    s->time.advance(599);
    QCOMPARE(s->recorder->take(), QStringList());
    s->time.advance(1);
    QCOMPARE(s->recorder->take(), QStringList(s->filterSignal(900)));
    QCOMPARE(s->filterBox()->styleSheet(), kRed);
}

void TstChannelFilter::rangeLimitsTheValue()
{
    s->strip->setFilterRange(0, 1000);
    s->strip->setFilterValue(999999999);
    QCOMPARE(s->filterBox()->value(), 1000);
    s->strip->setFilterRange(0, 999999999);
    s->strip->setFilterValue(999999999);
    QCOMPARE(s->filterBox()->value(), 999999999);
}

void TstChannelFilter::warningBox()
{
    s->type(s->filterBox(), QStringLiteral("199"));
    s->elsewhere->setFocus();
    QPointer<QMessageBox> box = s->messageBox("filterWarningBox");
    QVERIFY(box);
    QCOMPARE(box->windowTitle(), QStringLiteral("Warning"));
    QCOMPARE(box->icon(), QMessageBox::Warning);
    QCOMPARE(box->text(), QStringLiteral("Warning: Filter response may be deteriorated below 200 Hz filter "
                                         "frequency."));
    QCOMPARE(box->windowModality(), Qt::ApplicationModal);
    const QDialog like(nullptr,
                       Qt::CustomizeWindowHint | Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint);
    QCOMPARE(box->windowFlags(), like.windowFlags());
    QCOMPARE(box->parent(), s->strip.data());
    s->recorder->take();
    QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
    s->time.turn();
    QVERIFY(!box);
    QCOMPARE(s->recorder->take(), QStringList());
}

void TstChannelFilter::valueGoesOutBeforeTheWarning()
{
    int openAtSignal = -1;
    s->recorder->onSignal = [&] { openAtSignal = s->messageBox("filterWarningBox") ? 1 : 0; };
    s->type(s->filterBox(), QStringLiteral("50"));
    s->elsewhere->setFocus();
    QCOMPARE(openAtSignal, 0);
    QVERIFY(s->messageBox("filterWarningBox"));
}

void TstChannelFilter::oneWarningAtATime()
{
    s->type(s->filterBox(), QStringLiteral("50"));
    s->elsewhere->setFocus();
    QMessageBox *box = s->messageBox("filterWarningBox");
    s->type(s->filterBox(), QStringLiteral("60"));
    s->elsewhere->setFocus();
    QCOMPARE(s->messageBox("filterWarningBox"), box);
    QCOMPARE(s->recorder->take(), QStringList({s->filterSignal(50), s->filterSignal(60)}));
    // Once it is left, the next low value warns again, even in the same turn.
    QTest::keyClick(box, Qt::Key_Escape);
    QVERIFY(!s->messageBox("filterWarningBox"));
    s->type(s->filterBox(), QStringLiteral("70"));
    s->elsewhere->setFocus();
    QVERIFY(s->messageBox("filterWarningBox"));
}

void TstChannelFilter::deletedWithTheWarningOpen()
{
    s->type(s->filterBox(), QStringLiteral("50"));
    s->elsewhere->setFocus();
    const QPointer<QMessageBox> box = s->messageBox("filterWarningBox");
    s->recorder->take();
    delete s->strip;
    QVERIFY(!box);
    s->time.advance(5000);
    QCOMPARE(s->recorder->take(), QStringList());
}

void TstChannelFilter::deletedWithAStepPending()
{
    click(true);
    delete s->strip;
    s->time.advance(5000);
    QCOMPARE(s->recorder->take(), QStringList());
}

void TstChannelFilter::deletedWithAChangedText()
{
    s->type(s->filterBox(), QStringLiteral("150"));
    QVERIFY(s->filterBox()->hasFocus());
    delete s->strip;
    s->time.turn();
    QCOMPARE(s->recorder->take(), QStringList());
}

QTEST_MAIN(TstChannelFilter)
#include "tst_channelfilter.moc"
