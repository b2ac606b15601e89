#include "lossfixture.h"
#include "sleepingmachine.h"

#include <QtTest>

using namespace std::chrono_literals;
using Asleep = SkippingTime::Asleep;
using LinkKind = SystemFixture::LinkKind;
using Moment = LossFixture::Moment;

/// The machine sleeps for hours, from one moment to the next. On some platforms its timers count the sleep,
/// and all that fell due meanwhile fire when it wakes up; on others they stand still with it.
///
/// | Asleep                  | Timers that counted the sleep        | Timers that stood still              |
/// |-------------------------|--------------------------------------|--------------------------------------|
/// | while it is polled      | At once "Retrying to connect with    | READY with live values, as if it had |
/// |                         | Torvex", yellow, OFFLINE, no row;    | not slept.                           |
/// |                         | then the walk, READY.                |                                      |
/// | in the walk             | The same.                            | The walk goes on; it begins anew     |
/// |                         |                                      | after 3.8 s if a reply was lost.     |
/// | with a control in red,  | The rows go and come back with what  | Red for the rest of its second, then |
/// | Auto Zero or a shunt on | the device has. Nothing is sent      | what the device has. A shunt shows   |
/// |                         | again.                               | active for the rest of its 20 s.     |
/// | while the link is away  | See tst_linkloss_sleep_away.         |                                      |
/// | with the windows of     | See tst_linkloss_sleep_windows.      |                                      |
/// | firmware or gateway     |                                      |                                      |
class TstLinkLossSleep : public QObject
{
    Q_OBJECT

private slots:
    void whileItIsPolled_data();
    void whileItIsPolled();
    void inTheWalk_data();
    void inTheWalk();
    void withTimersOfChannels_data();
    void withTimersOfChannels();
};

void TstLinkLossSleep::whileItIsPolled_data()
{
    QTest::addColumn<LinkKind>("kind");
    QTest::addColumn<Asleep>("asleep");
    addSleeps([](const QByteArray &name, LinkKind kind, Asleep asleep) {
        QTest::newRow(name.constData()) << kind << asleep;
    });
}

void TstLinkLossSleep::whileItIsPolled()
{
    QFETCH(LinkKind, kind);
    QFETCH(Asleep, asleep);
    LossFixture f(kind);
    f.startUpTo(Moment::Cycle);
    f.poll(2s);
    const QString before = f.sight();
    f.log.clear();
    sim::Health &health = f.device->chain().module(1).health;
    health.volts = 17;
    health.selftest = 7;
    f.device->clearCounters();
    f.time.sleep(kNight, asleep);
    if (timesOut(asleep)) {
        QCOMPARE(f.sight(), LossFixture::retrying());
        f.expectNothingShown();
    } else {
        QCOMPARE(f.sight(), before);
    }
    f.expectWhole();
    f.poll(12s);
    QVERIFY(f.isReady());
    // The hours that were missed are not made up for: one start, or two that answer each other.
    const int starts = asleep == Asleep::InTurn ? 3 : asleep == Asleep::Overdue ? 1 : 0;
    QCOMPARE(f.device->requestCount(0x01), starts);
    QCOMPARE(f.losses(), 0);
    QCOMPARE(f.warnings(), QStringList());
}

void TstLinkLossSleep::inTheWalk_data()
{
    QTest::addColumn<LinkKind>("kind");
    QTest::addColumn<Asleep>("asleep");
    QTest::addColumn<bool>("isLost");
    addSleeps([](const QByteArray &name, LinkKind kind, Asleep asleep) {
        QTest::newRow((name + ", reply lost").constData()) << kind << asleep << true;
        QTest::newRow((name + ", reply waits").constData()) << kind << asleep << false;
    });
}

void TstLinkLossSleep::inTheWalk()
{
    QFETCH(LinkKind, kind);
    QFETCH(Asleep, asleep);
    QFETCH(bool, isLost);
    QString asleepAt;
    LossFixture f(kind);
    if (isLost) {
        f.startUpTo(Moment::Walk);
        f.device->faults().clear();
        const QString before = f.sight();
        f.time.sleep(kNight, asleep);
        if (!timesOut(asleep)) {
            QVERIFY(busyTurns() < kFewTurns);
            QCOMPARE(f.sight(), before);
            f.time.skip(3800ms);
        }
        QCOMPARE(f.sight(), LossFixture::retrying());
        f.expectNothingShown();
    } else {
        f.plug(LossFixture::chain());
        connect(f.device.get(), &sim::Server::replied, f.device.get(), [&] {
            if (f.device->requestCount(0x12) != 3 || !asleepAt.isNull())
                return;
            asleepAt = f.statusBox();
            f.time.sleep(kNight, asleep); // the reply is on its way
        });
        f.start();
        WAIT_COMPARE(asleepAt.trimmed(), QStringLiteral("2 / 5"));
    }
    f.expectWhole();
    const int starts = isLost || timesOut(asleep) ? 2 : 1;
    QCOMPARE(f.device->requestCount(0x01), starts);
    f.poll(12s);
    QVERIFY(f.isReady());
    QCOMPARE(f.device->requestCount(0x01), starts);
    QCOMPARE(f.losses(), 0);
    QCOMPARE(f.warnings(), QStringList());
}

void TstLinkLossSleep::withTimersOfChannels_data()
{
    QTest::addColumn<Asleep>("asleep");
    QTest::addColumn<bool>("isPatient"); // the session outlives the night
    for (const auto &platform : platforms()) {
        QTest::newRow(platform.first) << platform.second << false;
        QTest::addRow("%s, the session stands", platform.first) << platform.second << true;
    }
}

void TstLinkLossSleep::withTimersOfChannels()
{
    QFETCH(Asleep, asleep);
    QFETCH(bool, isPatient);
    LossFixture f(LinkKind::Tcp);
    if (isPatient)
        f.periods.comm = 24h;
    f.startUpTo(Moment::Cycle);
    f.window()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(f.window()));
    const QPointer<QWidget> row = f.row(1);
    QTest::mouseClick(f.button(1, 'A', "checkBox_Shunt_Pos"), Qt::LeftButton);
    QTest::mouseClick(f.button(1, 'B', "pushButton_Autozero"), Qt::LeftButton);
    gestures::pick(f.rangeBox(2, 'A'), 3);
    const QStringList commands{"280000000183", "280000000281", "220000000303"};
    WAIT_COMPARE(f.commands(), commands);
    f.waitForPolls();
    const QStringList red{"1B pushButton_Autozero", "2A comboBox_RangeGain"};
    QCOMPARE(f.unconfirmed(), red);
    QCOMPARE(f.activeShunts("checkBox_Shunt_Pos"), QStringList("1A"));
    f.time.sleep(kNight, asleep);
    const bool stands = isPatient || !timesOut(asleep);
    QCOMPARE(row.isNull(), !stands);
    if (asleep == Asleep::Stopped) {
        QCOMPARE(f.unconfirmed(), red);
        f.poll(2s);
        QCOMPARE(f.activeShunts("checkBox_Shunt_Pos"), QStringList("1A"));
        f.poll(18s);
    }
    WAIT_VERIFY(f.isReady() && f.rowCount() == LossFixture::kRows);
    WAIT_COMPARE(operatorview::differences(f), QStringList());
    WAIT_COMPARE(f.unconfirmed(), QStringList());
    QCOMPARE(f.mismatches(), QStringList());
    QCOMPARE(f.activeShunts("checkBox_Shunt_Pos"), QStringList());
    QCOMPARE(f.changes(), (QStringList{"1B zeroed=yes", "2A range=3"}));
    f.poll(25s);
    QCOMPARE(f.commands(), commands);
    QCOMPARE(f.unconfirmed(), QStringList());
    QCOMPARE(row.isNull(), !stands);
    QCOMPARE(f.warnings(), QStringList());
}

QTEST_MAIN(TstLinkLossSleep)

#include "tst_linkloss_sleep.moc"
