#include "stripfixture.h"

namespace {

constexpr auto kBridges = {1, 4};

/// The two shunts, as the device and the agreed names tell them apart.
struct Shunt
{
    const char *button;
    const char *preselect;
    int on;
    int off;
    int allOn;
    int allOff;
    int selected;
    int deselected;
    int groupOn;
    int groupOff;
};

constexpr Shunt kShunts[] = {
    {"checkBox_Shunt_Pos", "checkBox_Shunt_Pos_Presel", 131, 130, 139, 138, 155, 154, 6, 7},
    {"checkBox_Shunt_Neg", "checkBox_Shunt_Neg_Presel", 137, 136, 141, 140, 157, 156, 8, 9},
};

QString shuntSignal(int code)
{
    return QStringLiteral("Signal_SendShuntState(%1)").arg(code);
}

void addShunts()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<int>("which");
    for (const int family : kBridges) {
        QTest::addRow("type %d, positive", family) << family << 0;
        QTest::addRow("type %d, negative", family) << family << 1;
    }
}

} // namespace

/// The shunts of the strips that feed a bridge.
class TstBridgeChannelView : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void newStripHasItsShuntsOff_data() { addFamilies(kBridges); }
    void newStripHasItsShuntsOff();
    void clickSwitchesOnAndOff_data() { addShunts(); }
    void clickSwitchesOnAndOff();
    void shiftClickGoesToAll_data() { addShunts(); }
    void shiftClickGoesToAll();
    void altClickTogglesTheButtonOnly_data() { addShunts(); }
    void altClickTogglesTheButtonOnly();
    void otherKeysMakeAPlainClick_data();
    void otherKeysMakeAPlainClick();
    void gestureWithoutAClickCountsForTheNext_data();
    void gestureWithoutAClickCountsForTheNext();
    void gestureBelongsToItsButton_data() { addFamilies(kBridges); }
    void gestureBelongsToItsButton();
    void shuntGoesOffByItselfAfter20Seconds_data() { addShunts(); }
    void shuntGoesOffByItselfAfter20Seconds();
    void switchingOffLeavesTheTimerRunning_data() { addShunts(); }
    void switchingOffLeavesTheTimerRunning();
    void endOfTheTimerAfterSwitchingOffHasNoEffect_data() { addShunts(); }
    void endOfTheTimerAfterSwitchingOffHasNoEffect();
    void switchingOnAgainStartsTheTimeAnew_data() { addShunts(); }
    void switchingOnAgainStartsTheTimeAnew();
    void shuntsHaveTimersOfTheirOwn_data() { addFamilies(kBridges); }
    void shuntsHaveTimersOfTheirOwn();
    void preselection_data() { addShunts(); }
    void preselection();
    void preselectionHasNoGesture_data() { addShunts(); }
    void preselectionHasNoGesture();
    void preselectionOfAStatus_data();
    void preselectionOfAStatus();
    void disabledStripDoesNotSwitch_data() { addShunts(); }
    void disabledStripDoesNotSwitch();
    void loadPreselectionGoesToTheGroup_data() { addFamilies(kBridges); }
    void loadPreselectionGoesToTheGroup();

    void groupOnShowsTheShuntFor20Seconds_data() { addShunts(); }
    void groupOnShowsTheShuntFor20Seconds();
    void groupOffLeavesCheckAndTimer_data() { addShunts(); }
    void groupOffLeavesCheckAndTimer();
    void groupActivatesWhatIsPreselected_data();
    void groupActivatesWhatIsPreselected();
    void groupDeactivationStopsTheTimers_data() { addFamilies(kBridges); }
    void groupDeactivationStopsTheTimers();
    void shuntCommandsAreNotGuarded_data() { addFamilies(kBridges); }
    void shuntCommandsAreNotGuarded();
    void deletedWhileAShuntIsOn_data() { addFamilies(kBridges); }
    void deletedWhileAShuntIsOn();

private:
    Shunt shunt() const
    {
        QFETCH(int, which);
        return kShunts[which];
    }
    QPushButton *button() const { return s->button(shunt().button); }
    void click(Qt::KeyboardModifiers keys = Qt::NoModifier) const
    {
        QTest::mouseClick(button(), Qt::LeftButton, keys);
    }

    std::unique_ptr<StripFixture> s;
};

void TstBridgeChannelView::init()
{
    QFETCH(int, family);
    s = std::make_unique<StripFixture>(family);
    s->show();
}

void TstBridgeChannelView::cleanup()
{
    s.reset();
}

void TstBridgeChannelView::newStripHasItsShuntsOff()
{
    for (const Shunt &each : kShunts) {
        for (const char *name : {each.button, each.preselect}) {
            QVERIFY(s->button(name)->isCheckable());
            QVERIFY(!s->button(name)->isChecked());
            QCOMPARE(s->button(name)->styleSheet(), kUncheckedPicture);
        }
    }
}

void TstBridgeChannelView::clickSwitchesOnAndOff()
{
    click();
    QCOMPARE(s->recorder->take(), QStringList(shuntSignal(shunt().on)));
    QCOMPARE(button()->styleSheet(), kFakePicture);
    QVERIFY(button()->isChecked());
    click();
    QCOMPARE(s->recorder->take(), QStringList(shuntSignal(shunt().off)));
    QCOMPARE(button()->styleSheet(), kUncheckedPicture);
}

void TstBridgeChannelView::shiftClickGoesToAll()
{
    click(Qt::ShiftModifier);
    QCOMPARE(s->recorder->take(), QStringList({shuntSignal(shunt().allOn), s->groupSignal(shunt().groupOn)}));
    QCOMPARE(button()->styleSheet(), kUncheckedPicture); // this channel receives the command like all others
    click(Qt::ShiftModifier);
    QCOMPARE(s->recorder->take(),
             QStringList({shuntSignal(shunt().allOff), s->groupSignal(shunt().groupOff)}));
    click(); // the gesture is over
    QCOMPARE(s->recorder->take(), QStringList(shuntSignal(shunt().on)));
}

void TstBridgeChannelView::altClickTogglesTheButtonOnly()
{
    click(Qt::AltModifier);
    QCOMPARE(s->recorder->take(), QStringList());
    QVERIFY(button()->isChecked());
    QCOMPARE(button()->styleSheet(), kUncheckedPicture);
    click(Qt::AltModifier);
    QVERIFY(!button()->isChecked());
    QCOMPARE(s->recorder->take(), QStringList());
    s->time.advance(30000); // no timer was started
    click();
    QCOMPARE(s->recorder->take(), QStringList(shuntSignal(shunt().on)));
}

void TstBridgeChannelView::otherKeysMakeAPlainClick_data()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<int>("which");
    QTest::addColumn<int>("keys");
    for (const int family : kBridges) {
        for (const int which : {0, 1}) {
            QTest::addRow("type %d, shunt %d, Ctrl", family, which)
                << family << which << int(Qt::ControlModifier);
            QTest::addRow("type %d, shunt %d, Shift and Ctrl", family, which)
                << family << which << int(Qt::ShiftModifier | Qt::ControlModifier);
            QTest::addRow("type %d, shunt %d, Shift and Alt", family, which)
                << family << which << int(Qt::ShiftModifier | Qt::AltModifier);
        }
    }
}

void TstBridgeChannelView::otherKeysMakeAPlainClick()
{
    QFETCH(int, keys);
    click(Qt::KeyboardModifiers(keys));
    QCOMPARE(s->recorder->take(), QStringList(shuntSignal(shunt().on)));
    QCOMPARE(button()->styleSheet(), kFakePicture);
}

void TstBridgeChannelView::gestureWithoutAClickCountsForTheNext_data()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<int>("which");
    QTest::addColumn<bool>("shift");
    for (const int family : kBridges) {
        for (const int which : {0, 1}) {
            QTest::addRow("type %d, shunt %d, Shift", family, which) << family << which << true;
            QTest::addRow("type %d, shunt %d, Alt", family, which) << family << which << false;
        }
    }
}

void TstBridgeChannelView::gestureWithoutAClickCountsForTheNext()
{
    QFETCH(bool, shift);
    const QPoint outside(-50, -50);
    QTest::mousePress(button(), Qt::LeftButton, shift ? Qt::ShiftModifier : Qt::AltModifier);
    QTest::mouseMove(button(), outside);
    QTest::mouseRelease(button(), Qt::LeftButton, Qt::NoModifier, outside);
    QVERIFY(!button()->isChecked());
    QCOMPARE(s->recorder->take(), QStringList());
    click();
    if (shift)
        QCOMPARE(s->recorder->take(),
                 QStringList({shuntSignal(shunt().allOn), s->groupSignal(shunt().groupOn)}));
    else
        QCOMPARE(s->recorder->take(), QStringList());
}

void TstBridgeChannelView::gestureBelongsToItsButton()
{
    QPushButton *positive = s->button("checkBox_Shunt_Pos");
    const QPoint outside(-50, -50);
    QTest::mousePress(positive, Qt::LeftButton, Qt::ShiftModifier);
    QTest::mouseRelease(positive, Qt::LeftButton, Qt::NoModifier, outside);
    QTest::mouseClick(s->button("checkBox_Shunt_Neg"), Qt::LeftButton);
    QCOMPARE(s->recorder->take(), QStringList(shuntSignal(137)));
}

void TstBridgeChannelView::shuntGoesOffByItselfAfter20Seconds()
{
    click();
    s->recorder->take();
    s->time.advance(19999);
    QVERIFY(button()->isChecked());
    QCOMPARE(button()->styleSheet(), kFakePicture);
    s->time.advance(1);
    QVERIFY(!button()->isChecked());
    QCOMPARE(button()->styleSheet(), kUncheckedPicture);
    // The timer stopped: a button checked without one stays checked.
    click(Qt::AltModifier);
    s->time.advance(60000);
    QVERIFY(button()->isChecked());
    QCOMPARE(s->recorder->take(), QStringList());
}

void TstBridgeChannelView::switchingOffLeavesTheTimerRunning()
{
    click();
    s->time.advance(5000);
    click();
    click(Qt::AltModifier); // checked, without a timer of its own
    s->time.advance(14999);
    QVERIFY(button()->isChecked());
    s->time.advance(1);
    QVERIFY(!button()->isChecked());
}

void TstBridgeChannelView::endOfTheTimerAfterSwitchingOffHasNoEffect()
{
    click();
    s->time.advance(5000);
    click();
    s->recorder->take();
    s->time.advance(60000);
    QCOMPARE(s->recorder->take(), QStringList());
    QVERIFY(!button()->isChecked());
    QCOMPARE(button()->styleSheet(), kUncheckedPicture);
}

void TstBridgeChannelView::switchingOnAgainStartsTheTimeAnew()
{
    click();
    s->time.advance(15000);
    click();
    click();
    s->time.advance(19999);
    QVERIFY(button()->isChecked());
    QCOMPARE(button()->styleSheet(), kFakePicture);
    s->time.advance(1);
    QVERIFY(!button()->isChecked());
}

void TstBridgeChannelView::shuntsHaveTimersOfTheirOwn()
{
    QPushButton *positive = s->button("checkBox_Shunt_Pos");
    QPushButton *negative = s->button("checkBox_Shunt_Neg");
    QTest::mouseClick(positive, Qt::LeftButton);
    s->time.advance(10000);
    QTest::mouseClick(negative, Qt::LeftButton);
    s->time.advance(10000);
    QVERIFY(!positive->isChecked());
    QVERIFY(negative->isChecked());
    QCOMPARE(negative->styleSheet(), kFakePicture);
    s->time.advance(10000);
    QVERIFY(!negative->isChecked());
}

void TstBridgeChannelView::preselection()
{
    QPushButton *preselect = s->button(shunt().preselect);
    QTest::mouseClick(preselect, Qt::LeftButton);
    QCOMPARE(s->recorder->take(), QStringList(shuntSignal(shunt().selected)));
    QCOMPARE(preselect->styleSheet(), kBlackPicture);
    s->time.advance(60000);
    QVERIFY(preselect->isChecked());
    QTest::mouseClick(preselect, Qt::LeftButton);
    QCOMPARE(s->recorder->take(), QStringList(shuntSignal(shunt().deselected)));
    QCOMPARE(preselect->styleSheet(), kUncheckedPicture);
}

void TstBridgeChannelView::preselectionHasNoGesture()
{
    QPushButton *preselect = s->button(shunt().preselect);
    QTest::mouseClick(preselect, Qt::LeftButton, Qt::ShiftModifier);
    QTest::mouseClick(preselect, Qt::LeftButton, Qt::AltModifier);
    QCOMPARE(s->recorder->take(),
             QStringList({shuntSignal(shunt().selected), shuntSignal(shunt().deselected)}));
    click();
    QCOMPARE(s->recorder->take(), QStringList(shuntSignal(shunt().on)));
}

void TstBridgeChannelView::preselectionOfAStatus_data()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<bool>("positive");
    QTest::addColumn<bool>("negative");
    for (const int family : kBridges) {
        for (const int bits : {0, 1, 2, 3})
            QTest::addRow("type %d, bits %d", family, bits) << family << bool(bits & 1) << bool(bits & 2);
    }
}

void TstBridgeChannelView::preselectionOfAStatus()
{
    QFETCH(bool, positive);
    QFETCH(bool, negative);
    s->strip->setPreselection(!positive, !negative);
    s->strip->setPreselection(positive, negative);
    QCOMPARE(s->button("checkBox_Shunt_Pos_Presel")->isChecked(), positive);
    QCOMPARE(s->button("checkBox_Shunt_Pos_Presel")->styleSheet(),
             positive ? kBlackPicture : kUncheckedPicture);
    QCOMPARE(s->button("checkBox_Shunt_Neg_Presel")->isChecked(), negative);
    QCOMPARE(s->button("checkBox_Shunt_Neg_Presel")->styleSheet(),
             negative ? kBlackPicture : kUncheckedPicture);
    QCOMPARE(s->recorder->take(), QStringList());
}

void TstBridgeChannelView::disabledStripDoesNotSwitch()
{
    s->strip->disableUpdates();
    click();
    click(Qt::ShiftModifier);
    QTest::mouseClick(s->button(shunt().preselect), Qt::LeftButton);
    QCOMPARE(s->recorder->take(), QStringList());
    QCOMPARE(button()->styleSheet(), kUncheckedPicture);
    QCOMPARE(s->button(shunt().preselect)->styleSheet(), kUncheckedPicture);
    s->strip->enableUpdates();
    click(); // the gesture that was refused counts now
    QCOMPARE(s->recorder->take(), QStringList({shuntSignal(shunt().allOn), s->groupSignal(shunt().groupOn)}));
}

void TstBridgeChannelView::loadPreselectionGoesToTheGroup()
{
    QVERIFY(QMetaObject::invokeMethod(s->strip, "Slot_LoadPresel"));
    QCOMPARE(s->recorder->take(), QStringList(s->groupSignal(10)));
    s->strip->disableUpdates();
    QVERIFY(QMetaObject::invokeMethod(s->strip, "Slot_LoadPresel"));
    QCOMPARE(s->recorder->take(), QStringList());
}

void TstBridgeChannelView::groupOnShowsTheShuntFor20Seconds()
{
    s->apply(shunt().groupOn);
    QCOMPARE(button()->styleSheet(), kFakePicture);
    QVERIFY(!button()->isChecked());
    const char *other = kShunts[button()->objectName() == kShunts[0].button ? 1 : 0].button;
    QCOMPARE(s->button(other)->styleSheet(), kUncheckedPicture);
    s->time.advance(19999);
    QCOMPARE(button()->styleSheet(), kFakePicture);
    s->time.advance(1);
    QCOMPARE(button()->styleSheet(), kUncheckedPicture);
    QCOMPARE(s->recorder->take(), QStringList());
}

void TstBridgeChannelView::groupOffLeavesCheckAndTimer()
{
    click();
    s->recorder->take();
    s->apply(shunt().groupOff);
    QCOMPARE(button()->styleSheet(), kUncheckedPicture);
    QVERIFY(button()->isChecked());
    s->time.advance(19999);
    QVERIFY(button()->isChecked());
    s->time.advance(1);
    QVERIFY(!button()->isChecked());
    QCOMPARE(s->recorder->take(), QStringList());
}

void TstBridgeChannelView::groupActivatesWhatIsPreselected_data()
{
    preselectionOfAStatus_data();
}

void TstBridgeChannelView::groupActivatesWhatIsPreselected()
{
    QFETCH(bool, positive);
    QFETCH(bool, negative);
    s->strip->setPreselection(positive, negative);
    s->apply(10);
    QCOMPARE(s->button("checkBox_Shunt_Pos")->styleSheet(), positive ? kFakePicture : kUncheckedPicture);
    QCOMPARE(s->button("checkBox_Shunt_Neg")->styleSheet(), negative ? kFakePicture : kUncheckedPicture);
    QVERIFY(!s->button("checkBox_Shunt_Pos")->isChecked());
    s->time.advance(19999);
    QCOMPARE(s->button("checkBox_Shunt_Neg")->styleSheet(), negative ? kFakePicture : kUncheckedPicture);
    s->time.advance(1);
    QCOMPARE(s->button("checkBox_Shunt_Pos")->styleSheet(), kUncheckedPicture);
    QCOMPARE(s->button("checkBox_Shunt_Neg")->styleSheet(), kUncheckedPicture);
    QCOMPARE(s->recorder->take(), QStringList());
}

void TstBridgeChannelView::groupDeactivationStopsTheTimers()
{
    for (const Shunt &each : kShunts)
        QTest::mouseClick(s->button(each.button), Qt::LeftButton);
    s->recorder->take();
    s->apply(11);
    s->time.advance(60000);
    for (const Shunt &each : kShunts) {
        QCOMPARE(s->button(each.button)->styleSheet(), kUncheckedPicture);
        QVERIFY(s->button(each.button)->isChecked()); // no timer ended
    }
    QCOMPARE(s->recorder->take(), QStringList());
}

void TstBridgeChannelView::shuntCommandsAreNotGuarded()
{
    s->strip->disableUpdates();
    s->apply(6);
    s->apply(8);
    QCOMPARE(s->button("checkBox_Shunt_Pos")->styleSheet(), kFakePicture);
    QCOMPARE(s->button("checkBox_Shunt_Neg")->styleSheet(), kFakePicture);
    s->apply(11);
    QCOMPARE(s->button("checkBox_Shunt_Pos")->styleSheet(), kUncheckedPicture);
}

void TstBridgeChannelView::deletedWhileAShuntIsOn()
{
    QTest::mouseClick(s->button("checkBox_Shunt_Pos"), Qt::LeftButton);
    s->recorder->take();
    delete s->strip;
    s->time.advance(30000);
    QCOMPARE(s->recorder->take(), QStringList());
}

QTEST_MAIN(TstBridgeChannelView)
#include "tst_bridgechannel_view.moc"
