#include "channelfixture.h"

#include <QLineEdit>
#include <QtTest>

namespace {

using namespace std::chrono_literals;

const QString kChain = QStringLiteral("controller serial=C-1\npower serial=P-1\n"
                                      "module type=1 serial=SG- offset=1.5\n"
                                      "module type=2 serial=VO-\n");

} // namespace

/// What a control shows when the status that should confirm it comes late, twice, damaged or never, and when
/// it tells something else than the operator asked for.
class TstChannelStatus : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_fixture.reset(); }

    void lateStatus();
    void statusThatComesTwice();
    void statusThatNeverComes();
    void statusWithinTheSecondIsHeldBack();
    void secondChangeBeforeTheStatus();
    void valueThatTheDeviceRefuses_data();
    void valueThatTheDeviceRefuses();
    void lostReplyToACommandEndsInTheStateOfTheDevice();
    void silentDeviceGetsTheCommandOnce();
    void changesOfManyControlsAtOnceAreAllConfirmed();

private:
    ChannelFixture &fixture() { return *m_fixture; }

    std::unique_ptr<ChannelFixture> m_fixture;
};

void TstChannelStatus::init()
{
    m_fixture = std::make_unique<ChannelFixture>();
    m_fixture->startChain(kChain);
}

void TstChannelStatus::lateStatus()
{
    fixture().addFaults("delay ms=900 code=0x12 argument=2");
    auto *range = fixture().rangeBox(2, 'A');
    gestures::pick(range, 3);
    WAIT_COMPARE(fixture().changes(), QStringList{"2A range=3"});
    const int asked = fixture().device->requestCount(0x12);
    fixture().time.skip(1s);
    WAIT_COMPARE(fixture().device->requestCount(0x12), asked + 1);
    QCOMPARE(range->styleSheet(), styles::kSent);
    fixture().time.skip(899ms);
    QCOMPARE(range->styleSheet(), styles::kSent);
    QCOMPARE(range->currentIndex(), 3);
    fixture().time.skip(1ms);
    WAIT_COMPARE(range->styleSheet(), styles::kConfirmed);
    QCOMPARE(range->currentIndex(), 3);
    fixture().waitForPolls();
    QCOMPARE(fixture().commands().size(), 1);
}

void TstChannelStatus::statusThatComesTwice()
{
    fixture().addFaults("twice code=0x12 argument=1\ntwice code=0x22");
    auto *gain = fixture().rangeBox(1, 'B');
    gestures::pick(gain, 5);
    WAIT_COMPARE(fixture().changes(), QStringList{"1B range=5"});
    fixture().time.skip(1s);
    WAIT_COMPARE(gain->styleSheet(), styles::kConfirmed);
    fixture().waitForPolls();
    QCOMPARE(fixture().mismatches(), QStringList());
    QCOMPARE(fixture().commands(), QStringList{"220000000205"});
    QCOMPARE(fixture().rowCount(), 2);
}

void TstChannelStatus::statusThatNeverComes()
{
    fixture().addFaults("unknown-code code=0x12 count=1");
    auto *range = fixture().rangeBox(2, 'A');
    gestures::pick(range, 3);
    const int asked = fixture().device->requestCount(0x12);
    fixture().time.skip(1s);
    WAIT_COMPARE(fixture().device->requestCount(0x12), asked + 1);
    fixture().waitForPolls();
    fixture().time.skip(10s);
    fixture().waitForPolls();
    QCOMPARE(range->styleSheet(), styles::kSent);
    QCOMPARE(range->currentIndex(), 3);
    // A later status of the module, asked for by the other channel, is shown at once.
    gestures::pick(fixture().rangeBox(2, 'B'), 1);
    fixture().time.skip(1s);
    WAIT_COMPARE(fixture().unconfirmed(), QStringList());
    QCOMPARE(fixture().mismatches(), QStringList());
    QCOMPARE(fixture().commands().size(), 2);
}

void TstChannelStatus::statusWithinTheSecondIsHeldBack()
{
    auto *range = fixture().rangeBox(2, 'A');
    gestures::pick(range, 3);
    WAIT_COMPARE(fixture().changes(), QStringList{"2A range=3"});
    // Somebody else turns it to another value, and a status tells it.
    fixture().device->chain().module(2).channel(0).gainIndex = 6;
    fixture().time.skip(200ms);
    fixture().app->Slot_GetChannelData(2);
    const int asked = fixture().device->requestCount(0x12);
    WAIT_COMPARE(fixture().device->requestCount(0x12), asked + 1);
    fixture().waitForPolls();
    QCOMPARE(range->currentIndex(), 3);
    QCOMPARE(range->styleSheet(), styles::kSent);
    fixture().time.skip(800ms);
    // At the very end of the second, before the status that is fetched then.
    QCOMPARE(range->currentIndex(), 6);
    QCOMPARE(range->styleSheet(), styles::kConfirmed);
    fixture().waitForPolls();
    QCOMPARE(fixture().mismatches(), QStringList());
}

void TstChannelStatus::secondChangeBeforeTheStatus()
{
    auto *range = fixture().rangeBox(2, 'A');
    gestures::pick(range, 3);
    fixture().time.skip(700ms);
    gestures::pick(range, 5);
    WAIT_COMPARE(fixture().commands(), (QStringList{"220000000303", "220000000305"}));
    fixture().time.skip(700ms);
    fixture().waitForPolls();
    QCOMPARE(range->styleSheet(), styles::kSent);
    QCOMPARE(range->currentIndex(), 5);
    fixture().time.skip(300ms);
    WAIT_COMPARE(range->styleSheet(), styles::kConfirmed);
    QCOMPARE(range->currentIndex(), 5);
    QCOMPARE(fixture().changes(), QStringList{"2A range=5"});
}

void TstChannelStatus::valueThatTheDeviceRefuses_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("payload");
    QTest::newRow("no number") << "abc"
                               << "240000000161626300";
    QTest::newRow("beyond the range") << "1000"
                                      << "24000000013130303000";
    QTest::newRow("empty") << ""
                           << "240000000100";
    QTest::newRow("no ASCII") << QStringLiteral("5 °") << "24000000013520c2b000";
}

void TstChannelStatus::valueThatTheDeviceRefuses()
{
    QFETCH(QString, text);
    QFETCH(QString, payload);
    auto *offset = fixture().button(1, 'A', "pushButton_ManualOffset");
    QTest::mouseClick(offset, Qt::LeftButton);
    QWidget *dialog = fixture().openDialog("Dialog_ManualOffset");
    QVERIFY(dialog);
    childByName<QLineEdit>(dialog, "lineEdit_Manual")->selectAll();
    QTest::keyClick(childByName<QLineEdit>(dialog, "lineEdit_Manual"), Qt::Key_Delete);
    QTest::keyClicks(childByName<QLineEdit>(dialog, "lineEdit_Manual"), text);
    QTest::keyClick(dialog, Qt::Key_Return);
    WAIT_COMPARE(ChannelFixture::openDialogCount(), 0);
    QCOMPARE(offset->text(), text);
    QCOMPARE(offset->styleSheet(), styles::kOffsetSent);
    WAIT_COMPARE(fixture().commands(), QStringList{payload});
    fixture().time.skip(1s);
    WAIT_COMPARE(offset->styleSheet(), styles::kOffsetConfirmed);
    QCOMPARE(offset->text(), QStringLiteral("1.5"));
    QCOMPARE(fixture().changes(), QStringList());
}

void TstChannelStatus::lostReplyToACommandEndsInTheStateOfTheDevice()
{
    fixture().addFaults("lose code=0x20 count=1");
    QPointer<QWidget> row = fixture().row(1);
    gestures::pick(fixture().typeBox(1, 'A'), 2);
    WAIT_COMPARE(fixture().changes(), QStringList{"1A type=2"});
    // The session waits for the reply, and then starts over.
    fixture().time.skip(fixture().periods.comm);
    WAIT_VERIFY(!row);
    fixture().waitUntilRead();
    QCOMPARE(fixture().typeBox(1, 'A')->currentIndex(), 2);
    QCOMPARE(fixture().typeBox(1, 'A')->styleSheet(), styles::kConfirmed);
    fixture().time.skip(3s);
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), QStringList{"200000000102"});
}

void TstChannelStatus::silentDeviceGetsTheCommandOnce()
{
    fixture().addFaults("silence code=0x26 count=1");
    QPointer<QWidget> row = fixture().row(2);
    gestures::type(fixture().filterBox(2, 'B'), QStringLiteral("640"));
    QTest::keyClick(fixture().filterBox(2, 'B'), Qt::Key_Return);
    WAIT_COMPARE(fixture().commands(), QStringList{"260000000436343000"});
    fixture().time.skip(fixture().periods.comm);
    WAIT_VERIFY(!row);
    fixture().waitUntilRead();
    QCOMPARE(fixture().filterBox(2, 'B')->text(), QStringLiteral("1000"));
    fixture().time.skip(3s);
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), QStringList{"260000000436343000"});
}

void TstChannelStatus::changesOfManyControlsAtOnceAreAllConfirmed()
{
    gestures::pick(fixture().typeBox(1, 'A'), 2);
    gestures::pick(fixture().rangeBox(1, 'A'), 3);
    QTest::mouseClick(fixture().button(1, 'A', "checkBox_RevPol_100"), Qt::LeftButton);
    QTest::mouseClick(fixture().button(1, 'A', "checkBox_Shunt_Neg_Presel"), Qt::LeftButton);
    gestures::pick(fixture().typeBox(2, 'B'), 1);
    gestures::type(fixture().filterBox(1, 'A'), QStringLiteral("900"));
    QTest::keyClick(fixture().filterBox(1, 'A'), Qt::Key_Return);
    const QStringList sent{"200000000102", "220000000103", "280000000185",
                           "28000000019d", "200000000401", "260000000139303000"};
    WAIT_COMPARE(fixture().commands(), sent);
    WAIT_COMPARE(fixture().changes(), (QStringList{"1A type=2", "1A range=3", "1A filter=900",
                                                   "1A reversed=yes", "1A preselect-=yes", "2B type=1"}));
    QCOMPARE(fixture().unconfirmed().size(), 5);
    fixture().time.skip(1s);
    WAIT_COMPARE(fixture().unconfirmed(), QStringList());
    WAIT_COMPARE(fixture().mismatches(), QStringList());
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), sent);
}

QTEST_MAIN(TstChannelStatus)

#include "tst_channelstatus.moc"
