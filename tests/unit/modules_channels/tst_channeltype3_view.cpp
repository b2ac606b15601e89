#include "stripfixture.h"
#include "support/messagecatcher.h"

namespace {

const QString kBoxName = QStringLiteral("specialRangeBox");
const QString kWarning = QStringLiteral(
    "You are trying to select one of the \"Special Ranges\". Please be aware that this action has NO EFFECT "
    "on "
    "the resolution of the measured value: the only effect is a multiplication of the output value by a "
    "fixed "
    "factor.\nThis only makes sense when you are using an analog decoder with +/-10 Volt output range.\nIn "
    "all "
    "other cases this will lead to strange and useless results.\n\nIf you really need one of the \"Special "
    "Ranges\", select \"I want to continue\".\nOtherwise choose \"back to Standard Functionality\".\n\n");

} // namespace

/// Special ranges and the filter of a thermo strip.
class TstChannelType3View : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void disabledStripSendsNoSensorType();
    void standardRangeIsSentAtOnce();
    void standardRangeOfADisabledStripIsNotSent();
    void specialRangeIsAskedFor();
    void specialRangeIsSentAfterContinue();
    void shiftPickOfASpecialRangeIsAskedForToo();
    void shiftPickOfTheStandardRangeGoesToTheGroup();
    void abortGoesBackToTheStandardRange_data();
    void abortGoesBackToTheStandardRange();
    void abortAtTheStandardRangeSendsItAgain();
    void abortOfAShiftPickKeepsTheGesture();
    void disabledStripAsksToo();
    void guardCountsWhenTheBoxIsLeft();
    void statusMeanwhileDoesNotTakeThePickAway();
    void statusMeanwhileIsOverruledByAnAbort();
    void oneQuestionAtATime();
    void deletedWithTheQuestionOpen();

    void arrowsSendAtOnce_data();
    void arrowsSendAtOnce();
    void shiftOnTheArrowsIsForGood();
    void disabledStripSendsNoFilter();
    void lowFilterIsNotWarnedOf();

    void groupCommand_data();
    void groupCommand();
    void groupRangeIsNeitherAskedForNorGuarded();
    void groupTypeAndFilterGuards();
    void stepLogsWhetherItIsForAll();

private:
    void arrow(bool up, Qt::KeyboardModifiers keys = Qt::NoModifier) const
    {
        QTest::mouseClick(s->filterBox(), Qt::LeftButton, keys, s->arrow(s->filterBox(), up));
    }
    QMessageBox *question() const { return s->messageBox("specialRangeBox"); }
    void answer(QMessageBox::StandardButton button) const
    {
        QTest::mouseClick(question()->button(button), Qt::LeftButton);
    }

    std::unique_ptr<StripFixture> s;
};

void TstChannelType3View::init()
{
    s = std::make_unique<StripFixture>(3);
    s->show();
}

void TstChannelType3View::cleanup()
{
    s.reset();
}

void TstChannelType3View::disabledStripSendsNoSensorType()
{
    s->strip->disableUpdates();
    s->pick(s->typeBox(), 1);
    s->pick(s->typeBox(), 2, Qt::ShiftModifier);
    QCOMPARE(s->recorder->take(), QStringList());
    QCOMPARE(s->typeBox()->styleSheet(), QString());
}

void TstChannelType3View::standardRangeIsSentAtOnce()
{
    s->strip->setRangeIndex(2);
    s->pick(s->rangeBox(), 0);
    QCOMPARE(s->recorder->take(), QStringList(s->rangeSignal(0)));
    QCOMPARE(s->rangeBox()->styleSheet(), kRed);
    QVERIFY(!question());
}

void TstChannelType3View::standardRangeOfADisabledStripIsNotSent()
{
    s->strip->disableUpdates();
    s->pick(s->rangeBox(), 0);
    QCOMPARE(s->recorder->take(), QStringList());
    QCOMPARE(s->rangeBox()->styleSheet(), QString());
}

void TstChannelType3View::specialRangeIsAskedFor()
{
    s->pick(s->rangeBox(), 1);
    QCOMPARE(s->recorder->take(), QStringList()); // before anything else
    QCOMPARE(s->rangeBox()->styleSheet(), QString());
    const QMessageBox *box = question();
    QVERIFY(box);
    QCOMPARE(box->windowTitle(), QStringLiteral("Warning"));
    QCOMPARE(box->icon(), QMessageBox::Warning);
    QCOMPARE(box->text(), kWarning);
    QCOMPARE(box->standardButtons(), QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(box->button(QMessageBox::Yes)->text(),
             QStringLiteral("I know what I'm doing, I want to continue"));
    QCOMPARE(box->button(QMessageBox::No)->text(),
             QStringLiteral("Abort, and back to Standard Functionality"));
    QCOMPARE(box->defaultButton(), box->button(QMessageBox::No));
    QCOMPARE(box->windowModality(), Qt::ApplicationModal);
    QCOMPARE(box->parent(), s->strip.data());
}

void TstChannelType3View::specialRangeIsSentAfterContinue()
{
    s->pick(s->rangeBox(), 2);
    const QPointer<QMessageBox> box = question();
    answer(QMessageBox::Yes);
    QCOMPARE(s->recorder->take(), QStringList(s->rangeSignal(2)));
    QCOMPARE(s->rangeBox()->currentIndex(), 2);
    QCOMPARE(s->rangeBox()->styleSheet(), kRed);
    s->time.turn();
    QVERIFY(!box);
}

void TstChannelType3View::shiftPickOfASpecialRangeIsAskedForToo()
{
    s->pick(s->rangeBox(), 2, Qt::ShiftModifier);
    QCOMPARE(s->recorder->take(), QStringList());
    answer(QMessageBox::Yes);
    QCOMPARE(s->recorder->take(), QStringList(s->groupSignal(1, 2)));
    QCOMPARE(s->rangeBox()->styleSheet(), kRed);
    s->pick(s->rangeBox(), 0);
    QCOMPARE(s->recorder->take(), QStringList(s->rangeSignal(0))); // the gesture was for one pick
}

void TstChannelType3View::shiftPickOfTheStandardRangeGoesToTheGroup()
{
    s->pick(s->rangeBox(), 0, Qt::ShiftModifier);
    QCOMPARE(s->recorder->take(), QStringList(s->groupSignal(1, 0)));
}

void TstChannelType3View::abortGoesBackToTheStandardRange_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<bool>("enabled");
    for (const char *way : {"button", "escape", "return", "close"}) {
        QTest::addRow("%s", way) << way << true;
        QTest::addRow("%s, disabled", way) << way << false;
    }
}

void TstChannelType3View::abortGoesBackToTheStandardRange()
{
    QFETCH(QString, way);
    QFETCH(bool, enabled);
    s->strip->setRangeIndex(1);
    if (!enabled)
        s->strip->disableUpdates();
    s->pick(s->rangeBox(), 2);
    if (way == QLatin1String("button"))
        answer(QMessageBox::No);
    else if (way == QLatin1String("escape"))
        QTest::keyClick(question(), Qt::Key_Escape);
    else if (way == QLatin1String("return"))
        QTest::keyClick(question(), Qt::Key_Return);
    else
        question()->close();
    QCOMPARE(s->recorder->take(), QStringList(s->rangeSignal(0)));
    QCOMPARE(s->rangeBox()->currentIndex(), 0);
    QCOMPARE(s->rangeBox()->styleSheet(), kRed);
    QVERIFY(!question());
}

void TstChannelType3View::abortAtTheStandardRangeSendsItAgain()
{
    s->strip->setRangeIndex(0);
    s->pick(s->rangeBox(), 1);
    answer(QMessageBox::No);
    QCOMPARE(s->recorder->take(), QStringList(s->rangeSignal(0)));
}

void TstChannelType3View::abortOfAShiftPickKeepsTheGesture()
{
    s->pick(s->rangeBox(), 1, Qt::ShiftModifier);
    answer(QMessageBox::No);
    QCOMPARE(s->recorder->take(), QStringList(s->rangeSignal(0)));
    s->pick(s->rangeBox(), 0);
    QCOMPARE(s->recorder->take(), QStringList(s->groupSignal(1, 0)));
}

void TstChannelType3View::disabledStripAsksToo()
{
    s->strip->disableUpdates();
    s->pick(s->rangeBox(), 1);
    QVERIFY(question());
    answer(QMessageBox::Yes);
    QCOMPARE(s->recorder->take(), QStringList());
    QCOMPARE(s->rangeBox()->styleSheet(), QString());
}

void TstChannelType3View::guardCountsWhenTheBoxIsLeft()
{
    s->pick(s->rangeBox(), 1);
    s->strip->disableUpdates();
    s->strip->setRangeIndex(2); // by a status
    answer(QMessageBox::Yes);
    QCOMPARE(s->recorder->take(), QStringList());
    QCOMPARE(s->rangeBox()->currentIndex(), 2);
    s->pick(s->rangeBox(), 1);
    s->strip->enableUpdates();
    answer(QMessageBox::Yes);
    QCOMPARE(s->recorder->take(), QStringList(s->rangeSignal(1)));
}

void TstChannelType3View::statusMeanwhileDoesNotTakeThePickAway()
{
    s->pick(s->rangeBox(), 2);
    s->strip->setRangeIndex(0);
    answer(QMessageBox::Yes);
    QCOMPARE(s->recorder->take(), QStringList(s->rangeSignal(2)));
    QCOMPARE(s->rangeBox()->currentIndex(), 2);
    QCOMPARE(s->rangeBox()->styleSheet(), kRed);
    // With Shift it is the picked index that goes to the group.
    s->pick(s->rangeBox(), 2, Qt::ShiftModifier);
    s->strip->setRangeIndex(0);
    answer(QMessageBox::Yes);
    QCOMPARE(s->recorder->take(), QStringList(s->groupSignal(1, 2)));
}

void TstChannelType3View::statusMeanwhileIsOverruledByAnAbort()
{
    s->pick(s->rangeBox(), 2);
    s->strip->setRangeIndex(1);
    answer(QMessageBox::No);
    QCOMPARE(s->recorder->take(), QStringList(s->rangeSignal(0)));
    QCOMPARE(s->rangeBox()->currentIndex(), 0);
}

void TstChannelType3View::oneQuestionAtATime()
{
    auto *thermo = qobject_cast<ChannelType3_View *>(s->strip);
    thermo->on_comboBox_TemperatureRange_activated(1);
    const QMessageBox *box = question();
    thermo->on_comboBox_TemperatureRange_activated(2);
    QCOMPARE(question(), box);
    answer(QMessageBox::Yes);
    QCOMPARE(s->recorder->take(), QStringList(s->rangeSignal(1)));
    thermo->on_comboBox_TemperatureRange_activated(2); // in the same turn
    QVERIFY(question());
}

void TstChannelType3View::deletedWithTheQuestionOpen()
{
    s->pick(s->rangeBox(), 1);
    const QPointer<QMessageBox> box = question();
    delete s->strip;
    QVERIFY(!box);
    s->time.turn();
    QCOMPARE(s->recorder->take(), QStringList());
}

void TstChannelType3View::arrowsSendAtOnce_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<bool>("up");
    QTest::addColumn<int>("to");
    QTest::newRow("8 up") << 8 << true << 16;
    QTest::newRow("8 down") << 8 << false << 4;
    QTest::newRow("32 up stays") << 32 << true << 32;
    QTest::newRow("1 down stays") << 1 << false << 1;
}

void TstChannelType3View::arrowsSendAtOnce()
{
    QFETCH(int, from);
    QFETCH(bool, up);
    QFETCH(int, to);
    s->strip->setFilterValue(from);
    // Not by the mouse: the arrow of a limit is greyed out.
    s->filterBox()->stepBy(up ? 1 : -1);
    QCOMPARE(s->recorder->take(), QStringList(s->filterSignal(to)));
    QCOMPARE(s->filterBox()->value(), to);
    QCOMPARE(s->filterBox()->styleSheet(), kRed);
}

void TstChannelType3View::shiftOnTheArrowsIsForGood()
{
    s->strip->setFilterValue(4);
    arrow(true);
    QCOMPARE(s->recorder->take(), QStringList(s->filterSignal(8)));
    arrow(true, Qt::ShiftModifier);
    QCOMPARE(s->recorder->take(), QStringList(s->groupSignal(3, 16)));
    arrow(false);
    QCOMPARE(s->recorder->take(), QStringList(s->groupSignal(3, 8)));
    QCOMPARE(s->filterBox()->styleSheet(), kRed);
}

void TstChannelType3View::disabledStripSendsNoFilter()
{
    s->strip->setFilterValue(4);
    s->strip->disableUpdates();
    MessageCatcher log;
    arrow(true);
    arrow(true, Qt::ShiftModifier);
    QCOMPARE(s->recorder->take(), QStringList());
    QVERIFY(!log.containsText("ShiftClick Value:"));
}

void TstChannelType3View::lowFilterIsNotWarnedOf()
{
    s->strip->setFilterValue(2);
    arrow(false);
    QCOMPARE(s->recorder->take(), QStringList(s->filterSignal(1)));
    QVERIFY(s->strip->findChildren<QMessageBox *>().isEmpty());
}

void TstChannelType3View::groupCommand_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("value");
    QTest::newRow("0: sensor type") << 0 << 2;
    QTest::newRow("1: range") << 1 << 2;
    QTest::newRow("3: filter") << 3 << 16;
}

void TstChannelType3View::groupCommand()
{
    QFETCH(int, command);
    QFETCH(int, value);
    s->apply(command, value);
    const QMap<int, QString> sent{
        {0, s->typeSignal(value)}, {1, s->rangeSignal(value)}, {3, s->filterSignal(value)}};
    QCOMPARE(s->recorder->take(), QStringList(sent.value(command)));
    QCOMPARE(s->typeBox()->currentIndex(), command == 0 ? value : 0);
    QCOMPARE(s->typeBox()->styleSheet(), command == 0 ? kRed : QString());
    QCOMPARE(s->rangeBox()->currentIndex(), command == 1 ? value : 0);
    QCOMPARE(s->rangeBox()->styleSheet(), command == 1 ? kRed : QString());
    QCOMPARE(s->filterBox()->value(), command == 3 ? value : 1);
    QCOMPARE(s->filterBox()->styleSheet(), command == 3 ? kRed : QString());
}

void TstChannelType3View::groupRangeIsNeitherAskedForNorGuarded()
{
    s->strip->disableUpdates();
    s->apply(1, 2);
    QVERIFY(!question());
    QCOMPARE(s->recorder->take(), QStringList(s->rangeSignal(2)));
    QCOMPARE(s->rangeBox()->currentIndex(), 2);
    QCOMPARE(s->rangeBox()->styleSheet(), kRed);
}

void TstChannelType3View::groupTypeAndFilterGuards()
{
    s->strip->disableUpdates();
    s->apply(0, 1);
    QCOMPARE(s->recorder->take(), QStringList());
    QCOMPARE(s->typeBox()->currentIndex(), 1);
    QCOMPARE(s->typeBox()->styleSheet(), kBlack);
    s->apply(3, 8);
    QCOMPARE(s->recorder->take(), QStringList(s->filterSignal(8)));
}

void TstChannelType3View::stepLogsWhetherItIsForAll()
{
    s->strip->setFilterValue(4);
    MessageCatcher log;
    arrow(true);
    QVERIFY(log.contains("ShiftClick Value: false"));
    arrow(true, Qt::ShiftModifier);
    QVERIFY(log.contains("ShiftClick Value: true"));
}

QTEST_MAIN(TstChannelType3View)
#include "tst_channeltype3_view.moc"
