#include "stripfixture.h"
#include "support/messagecatcher.h"

#include <QToolTip>

namespace {

constexpr auto kAmplifiers = {1, 2, 4};
const QString kAutozeroSent = QStringLiteral("Signal_SendAutozero(true)");
const QString kAutoResetSent = QStringLiteral("Signal_SendAutoReset(true)");

/// Counts how often a widget gets another style.
class StyleChanges : public QObject
{
public:
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::StyleChange ? 1 : 0;
        return false;
    }

    int count = 0;
};

} // namespace

/// Lists, polarity and group commands of the strips that have an amplifier. What is true for the lists of a
/// thermo strip as well is tested with it too.
class TstAmplifierChannelView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void constructionWritesNoLine_data() { addFamilies({1, 2, 3, 4}); }
    void constructionWritesNoLine();
    void newStripDoesNotAct_data() { addFamilies(kAmplifiers); }
    void newStripDoesNotAct();
    void disabledStripDoesNotAct_data() { addFamilies(kAmplifiers); }
    void disabledStripDoesNotAct();
    void firstFastStatusChangesNoStyle_data() { addFamilies(kAmplifiers); }
    void firstFastStatusChangesNoStyle();
    void statusValuesSendNothing_data() { addFamilies({1, 2, 3, 4}); }
    void statusValuesSendNothing();

    void pickedTypeIsSent_data() { addFamilies({1, 2, 3, 4}); }
    void pickedTypeIsSent();
    void pickedRangeIsSent_data() { addFamilies(kAmplifiers); }
    void pickedRangeIsSent();
    void shiftPickGoesToTheGroupOnce_data();
    void shiftPickGoesToTheGroupOnce();
    void otherKeysMakeAPlainPick_data();
    void otherKeysMakeAPlainPick();
    void shiftPressWithoutAPickCountsForTheNext_data();
    void shiftPressWithoutAPickCountsForTheNext();
    void wheelOverABoxWithoutFocusScrollsTheList_data() { addFamilies({1, 2, 3, 4}); }
    void wheelOverABoxWithoutFocusScrollsTheList();
    void indexBeyondTheListLeavesTheBoxBlank_data() { addFamilies({1, 2, 3, 4}); }
    void indexBeyondTheListLeavesTheBoxBlank();

    void polarityClick_data() { addFamilies(kAmplifiers); }
    void polarityClick();
    void polarityStatus_data() { addFamilies(kAmplifiers); }
    void polarityStatus();
    void levelHasSixDigitsAndIsHidden_data() { addFamilies(kAmplifiers); }
    void levelHasSixDigitsAndIsHidden();

    void groupCommand_data();
    void groupCommand();
    void groupIndexBeyondTheListLeavesTheBoxBlank_data() { addFamilies(kAmplifiers); }
    void groupIndexBeyondTheListLeavesTheBoxBlank();
    void groupIndexMeetsAGestureThatWaits_data() { shiftPickGoesToTheGroupOnce_data(); }
    void groupIndexMeetsAGestureThatWaits();
    void groupIndexPassesTheGuard_data() { addFamilies(kAmplifiers); }
    void groupIndexPassesTheGuard();
    void groupAutozeroAndFilterAreUnguarded_data() { addFamilies(kAmplifiers); }
    void groupAutozeroAndFilterAreUnguarded();
    void foreignCommandsAreIgnored_data();
    void foreignCommandsAreIgnored();

    void deletedWithAListOpen_data() { addFamilies({1, 2, 3, 4}); }
    void deletedWithAListOpen();

private:
    std::unique_ptr<StripFixture> s;
};

void TstAmplifierChannelView::initTestCase()
{
    QApplication::setDoubleClickInterval(0); // a list takes the release that soon after it opened
}

void TstAmplifierChannelView::init()
{
    QFETCH(int, family);
    s = std::make_unique<StripFixture>(family);
    s->show();
}

void TstAmplifierChannelView::cleanup()
{
    s.reset();
    QToolTip::hideText();
}

void TstAmplifierChannelView::constructionWritesNoLine()
{
    QFETCH(int, family);
    MessageCatcher log;
    s = std::make_unique<StripFixture>(family);
    s->show();
    s.reset();
    QCOMPARE(log.lines(), QStringList());
}

void TstAmplifierChannelView::newStripDoesNotAct()
{
    QFETCH(int, family);
    s = std::make_unique<StripFixture>(family, StripFixture::Updates::AsConstructed);
    s->show();
    s->holdAutozero(0);
    s->pick(s->typeBox(), 1);
    QTest::mouseClick(s->polarity(), Qt::LeftButton);
    QCOMPARE(s->recorder->take(), QStringList());
    s->strip->enableUpdates();
    s->holdAutozero(0);
    QCOMPARE(s->recorder->take(), QStringList(kAutozeroSent));
}

void TstAmplifierChannelView::disabledStripDoesNotAct()
{
    s->strip->disableUpdates();
    s->pick(s->typeBox(), 1);
    s->pick(s->rangeBox(), 1);
    s->pick(s->typeBox(), 2, Qt::ShiftModifier);
    s->holdAutozero(500);
    s->holdAutozero(500, Qt::ShiftModifier);
    QTest::mouseClick(s->polarity(), Qt::LeftButton);
    QCOMPARE(s->recorder->take(), QStringList());
    QCOMPARE(s->typeBox()->styleSheet(), QString());
    QCOMPARE(s->rangeBox()->styleSheet(), QString());
    QCOMPARE(s->autozero()->styleSheet(), kBlack);
    QCOMPARE(s->polarity()->styleSheet(), kUncheckedPicture);
}

void TstAmplifierChannelView::firstFastStatusChangesNoStyle()
{
    // It reaches all channels at once, and each style sheet set costs a polish of the widget.
    QFETCH(int, family);
    s = std::make_unique<StripFixture>(family, StripFixture::Updates::AsConstructed);
    QCOMPARE(s->autozero()->styleSheet(), kBlack);
    s->show();
    StyleChanges changes;
    s->autozero()->installEventFilter(&changes);
    s->strip->setAutozero(false);
    QCOMPARE(changes.count, 0);
    s->strip->setAutozero(true);
    QCOMPARE(changes.count, 1);
}

void TstAmplifierChannelView::statusValuesSendNothing()
{
    s->strip->setTypeIndex(1);
    s->strip->setRangeIndex(2);
    s->strip->setFilterValue(20);
    s->strip->setAutozero(true);
    s->strip->setPolarity(true);
    s->strip->setOffset(QStringLiteral("1.5"));
    s->strip->setPreselection(true, true);
    s->strip->setLevel(12.5);
    s->time.advance(30000);
    QCOMPARE(s->recorder->take(), QStringList());
    QCOMPARE(s->typeBox()->currentIndex(), 1);
    QCOMPARE(s->typeBox()->styleSheet(), kBlack);
    QCOMPARE(s->rangeBox()->currentIndex(), 2);
    QCOMPARE(s->rangeBox()->styleSheet(), kBlack);
    QCOMPARE(s->filterBox()->value(), 20);
    QCOMPARE(s->filterBox()->styleSheet(), kBlack);
}

void TstAmplifierChannelView::pickedTypeIsSent()
{
    s->strip->setTypeIndex(0);
    s->pick(s->typeBox(), 2);
    QCOMPARE(s->recorder->take(), QStringList(s->typeSignal(2)));
    QCOMPARE(s->typeBox()->styleSheet(), kRed);
    s->strip->setTypeIndex(2);
    QCOMPARE(s->typeBox()->styleSheet(), kBlack);
    // The same entry again is a pick too, and so is one by key.
    s->pick(s->typeBox(), 2);
    s->typeBox()->setFocus();
    QTest::keyClick(s->typeBox(), Qt::Key_Up);
    QCOMPARE(s->recorder->take(), QStringList({s->typeSignal(2), s->typeSignal(1)}));
}

void TstAmplifierChannelView::pickedRangeIsSent()
{
    s->pick(s->rangeBox(), 1);
    QCOMPARE(s->recorder->take(), QStringList(s->rangeSignal(1)));
    QCOMPARE(s->rangeBox()->styleSheet(), kRed);
    QCOMPARE(s->typeBox()->styleSheet(), QString());
}

void TstAmplifierChannelView::shiftPickGoesToTheGroupOnce_data()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<bool>("range");
    for (const int family : kAmplifiers) {
        QTest::addRow("type %d, types", family) << family << false;
        QTest::addRow("type %d, ranges", family) << family << true;
    }
    QTest::newRow("type 3, types") << 3 << false;
}

void TstAmplifierChannelView::shiftPickGoesToTheGroupOnce()
{
    QFETCH(bool, range);
    QComboBox *box = range ? s->rangeBox() : s->typeBox();
    s->pick(box, 2, Qt::ShiftModifier);
    // Nothing goes out directly: this channel receives the command like all others.
    QCOMPARE(s->recorder->take(), QStringList(s->groupSignal(range ? 1 : 0, 2)));
    QCOMPARE(box->currentIndex(), 2);
    QCOMPARE(box->styleSheet(), kRed);
    s->pick(box, 1);
    QCOMPARE(s->recorder->take(), QStringList(range ? s->rangeSignal(1) : s->typeSignal(1)));
}

void TstAmplifierChannelView::otherKeysMakeAPlainPick_data()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<int>("keys");
    for (const int family : kAmplifiers) {
        QTest::addRow("type %d, Ctrl", family) << family << int(Qt::ControlModifier);
        QTest::addRow("type %d, Shift and Ctrl", family)
            << family << int(Qt::ShiftModifier | Qt::ControlModifier);
    }
}

void TstAmplifierChannelView::otherKeysMakeAPlainPick()
{
    QFETCH(int, keys);
    s->pick(s->rangeBox(), 1, Qt::KeyboardModifiers(keys));
    QCOMPARE(s->recorder->take(), QStringList(s->rangeSignal(1)));
}

void TstAmplifierChannelView::shiftPressWithoutAPickCountsForTheNext_data()
{
    shiftPickGoesToTheGroupOnce_data();
}

void TstAmplifierChannelView::shiftPressWithoutAPickCountsForTheNext()
{
    QFETCH(bool, range);
    QComboBox *box = range ? s->rangeBox() : s->typeBox();
    s->openList(box);
    QTest::mousePress(box->view()->viewport(), Qt::LeftButton, Qt::ShiftModifier, s->itemPlace(box, 1));
    box->hidePopup();
    QCOMPARE(s->recorder->take(), QStringList());
    s->pick(box, 2);
    QCOMPARE(s->recorder->take(), QStringList(s->groupSignal(range ? 1 : 0, 2)));
}

void TstAmplifierChannelView::wheelOverABoxWithoutFocusScrollsTheList()
{
    s->strip->setTypeIndex(1);
    QWheelEvent wheel(QPointF(4, 4), s->typeBox()->mapToGlobal(QPoint(4, 4)), QPoint(), QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    wheel.ignore();
    QApplication::sendEvent(s->typeBox(), &wheel);
    QVERIFY(!wheel.isAccepted()); // it goes on to the list of rows
    QCOMPARE(s->typeBox()->currentIndex(), 1);
    QCOMPARE(s->recorder->take(), QStringList());
}

void TstAmplifierChannelView::indexBeyondTheListLeavesTheBoxBlank()
{
    for (const int index : {3, 200, -1}) {
        s->strip->setTypeIndex(1);
        s->strip->setRangeIndex(1);
        s->strip->setTypeIndex(index);
        s->strip->setRangeIndex(index);
        QCOMPARE(s->typeBox()->currentText(), QString());
        QCOMPARE(s->typeBox()->currentIndex(), -1);
        QCOMPARE(s->rangeBox()->currentText(), QString());
    }
}

void TstAmplifierChannelView::polarityClick()
{
    MessageCatcher log;
    QCOMPARE(s->polarity()->styleSheet(), kUncheckedPicture);
    QTest::mouseClick(s->polarity(), Qt::LeftButton);
    QCOMPARE(s->recorder->take(), QStringList("Signal_SendRevPolState(true)"));
    QCOMPARE(s->polarity()->styleSheet(), kBluePicture);
    QVERIFY(log.contains("****RevPolarity clicked"));
    QTest::mouseClick(s->polarity(), Qt::LeftButton);
    QCOMPARE(s->recorder->take(), QStringList("Signal_SendRevPolState(false)"));
    QCOMPARE(s->polarity()->styleSheet(), kUncheckedPicture);
    log.clear();
    s->strip->disableUpdates();
    QTest::mouseClick(s->polarity(), Qt::LeftButton);
    QVERIFY(log.contains("****RevPolarity clicked")); // the line is written all the same
    QCOMPARE(s->recorder->take(), QStringList());
}

void TstAmplifierChannelView::polarityStatus()
{
    s->strip->setPolarity(true);
    QVERIFY(s->polarity()->isChecked());
    QCOMPARE(s->polarity()->styleSheet(), kBlackPicture);
    s->strip->setPolarity(false);
    QVERIFY(!s->polarity()->isChecked());
    QCOMPARE(s->polarity()->styleSheet(), kUncheckedPicture);
}

void TstAmplifierChannelView::levelHasSixDigitsAndIsHidden()
{
    auto *level = s->child<QLineEdit>("lineEdit_Level");
    QVERIFY(level->isHidden());
    s->strip->setLevel(12.3456789);
    QCOMPARE(level->text(), QStringLiteral("12.3457"));
    s->strip->setLevel(1234567.0);
    QCOMPARE(level->text(), QStringLiteral("1.23457e+06"));
    QVERIFY(level->isHidden());
}

void TstAmplifierChannelView::groupCommand_data()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<int>("command");
    for (const int family : kAmplifiers) {
        for (const int command : {0, 1, 2, 3, 5})
            QTest::addRow("type %d, command %d", family, command) << family << command;
    }
}

void TstAmplifierChannelView::groupCommand()
{
    QFETCH(int, command);
    const QMap<int, QString> sent{{0, s->typeSignal(2)},
                                  {1, s->rangeSignal(2)},
                                  {2, kAutozeroSent},
                                  {3, s->filterSignal(2)},
                                  {5, kAutoResetSent}};
    const QMap<int, QWidget *> control{
        {0, s->typeBox()}, {1, s->rangeBox()}, {2, s->autozero()}, {3, s->filterBox()}, {5, s->autozero()}};
    QMap<QWidget *, QString> before;
    for (QWidget *each : control)
        before.insert(each, each->styleSheet());
    s->apply(command, 2);
    QCOMPARE(s->recorder->take(), QStringList(sent.value(command)));
    for (QWidget *each : control)
        QCOMPARE(each->styleSheet(), each == control.value(command) ? kRed : before.value(each));
    QCOMPARE(s->typeBox()->currentIndex(), command == 0 ? 2 : 0);
    QCOMPARE(s->rangeBox()->currentIndex(), command == 1 ? 2 : 0);
    QCOMPARE(s->filterBox()->value(), command == 3 ? 2 : 0);
    QCOMPARE(QToolTip::text(), command == 5 ? QStringLiteral("AutoReset Sent") : QString());
    QVERIFY(!s->messageBox("filterWarningBox")); // no warning, low as the filter is
}

void TstAmplifierChannelView::groupIndexBeyondTheListLeavesTheBoxBlank()
{
    s->apply(0, 7);
    s->apply(1, 8);
    QCOMPARE(s->typeBox()->currentText(), QString());
    QCOMPARE(s->rangeBox()->currentText(), QString());
    QCOMPARE(s->recorder->take(), QStringList({s->typeSignal(7), s->rangeSignal(8)}));
}

void TstAmplifierChannelView::groupIndexMeetsAGestureThatWaits()
{
    // On purpose: a Shift press whose pick never came waits for the next pick, and the command of a group is
    // carried out as a pick. So it goes out as a group command once more, which finds no gesture any more.
    QFETCH(bool, range);
    QComboBox *box = range ? s->rangeBox() : s->typeBox();
    const int command = range ? 1 : 0;
    s->openList(box);
    QTest::mousePress(box->view()->viewport(), Qt::LeftButton, Qt::ShiftModifier, s->itemPlace(box, 1));
    box->hidePopup();
    s->apply(command, 2);
    QCOMPARE(s->recorder->take(), QStringList(s->groupSignal(command, 2)));
    QCOMPARE(box->styleSheet(), kRed);
    s->apply(command, 2);
    QCOMPARE(s->recorder->take(), QStringList(range ? s->rangeSignal(2) : s->typeSignal(2)));
}

void TstAmplifierChannelView::groupIndexPassesTheGuard()
{
    s->strip->disableUpdates();
    s->apply(0, 1);
    s->apply(1, 2);
    QCOMPARE(s->recorder->take(), QStringList());
    QCOMPARE(s->typeBox()->currentIndex(), 1);
    QCOMPARE(s->typeBox()->styleSheet(), kBlack);
    QCOMPARE(s->rangeBox()->currentIndex(), 2);
    QCOMPARE(s->rangeBox()->styleSheet(), kBlack);
}

void TstAmplifierChannelView::groupAutozeroAndFilterAreUnguarded()
{
    s->strip->disableUpdates();
    s->apply(2);
    s->apply(3, 500);
    s->apply(5);
    QCOMPARE(s->recorder->take(), QStringList({kAutozeroSent, s->filterSignal(500), kAutoResetSent}));
}

void TstAmplifierChannelView::foreignCommandsAreIgnored_data()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<int>("command");
    for (const int family : {1, 2, 3, 4}) {
        for (const int command : {4, 12, 255, -1})
            QTest::addRow("type %d, command %d", family, command) << family << command;
    }
    for (const int command : {6, 7, 8, 9, 10, 11})
        QTest::addRow("type 2, command %d", command) << 2 << command;
    for (const int command : {2, 5, 6, 7, 8, 9, 10, 11})
        QTest::addRow("type 3, command %d", command) << 3 << command;
}

void TstAmplifierChannelView::foreignCommandsAreIgnored()
{
    QFETCH(int, command);
    QStringList before;
    for (const QWidget *each : s->strip->findChildren<QWidget *>())
        before << each->styleSheet();
    s->apply(command, 2);
    QStringList after;
    for (const QWidget *each : s->strip->findChildren<QWidget *>())
        after << each->styleSheet();
    QCOMPARE(s->recorder->take(), QStringList());
    QCOMPARE(after, before);
    QCOMPARE(s->typeBox()->currentIndex(), 0);
    QCOMPARE(s->rangeBox()->currentIndex(), 0);
}

void TstAmplifierChannelView::deletedWithAListOpen()
{
    QComboBox *box = s->typeBox();
    s->openList(box);
    delete s->strip;
    s->time.advance(30000);
    QCOMPARE(s->recorder->take(), QStringList());
}

QTEST_MAIN(TstAmplifierChannelView)
#include "tst_amplifierchannel_view.moc"
