#include "channelfixture.h"

#include <QtTest>

namespace {

using namespace std::chrono_literals;

const QString kChain =
    QStringLiteral("controller serial=C-1\npower serial=P-1\n"
                   "module type=1 serial=SG- preselectB=both\n"
                   "module type=2 serial=VO-\n"
                   "module type=4 serial=TH-\n"
                   "module type=9 serial=UN- functionA=1 functionB=2 preselectA=positive\n");

} // namespace

/// The buttons of a channel that the device switches back by itself, and those that it only remembers:
/// shunts, their preselection and Auto Zero.
class TstChannelSwitches : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_fixture.reset(); }

    void switchIsSentAndShown_data();
    void switchIsSentAndShown();
    void shuntGoesOffByItself_data();
    void shuntGoesOffByItself();
    void shuntThatIsClickedOffKeepsItsTimer();
    void altClickOnAShuntSendsNothing();
    void autozeroByClickIsRedUntilItHasRun_data();
    void autozeroByClickIsRedUntilItHasRun();
    void autozeroHeldForTwoSecondsIsReset_data();
    void autozeroHeldForTwoSecondsIsReset();
    void autozeroHeldForOneAndAHalfSecondsSendsNothing();

private:
    ChannelFixture &fixture() { return *m_fixture; }

    std::unique_ptr<ChannelFixture> m_fixture;
};

void TstChannelSwitches::init()
{
    m_fixture = std::make_unique<ChannelFixture>();
    m_fixture->startChain(kChain);
}

void TstChannelSwitches::switchIsSentAndShown_data()
{
    QTest::addColumn<int>("module");
    QTest::addColumn<char>("channel");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("style");
    QTest::addColumn<QString>("payload");
    QTest::addColumn<QString>("change");
    const auto row = [](const char *title, int module, char channel, const char *name, const QString &style,
                        const char *payload, const char *change) {
        QTest::newRow(title) << module << channel << QByteArray(name) << style << QString::fromLatin1(payload)
                             << QString::fromLatin1(change);
    };
    row("positive shunt", 1, 'A', "checkBox_Shunt_Pos", styles::kShuntActive, "280000000183",
        "1A shunt+=yes");
    row("negative shunt", 1, 'B', "checkBox_Shunt_Neg", styles::kShuntActive, "280000000289",
        "1B shunt-=yes");
    row("positive preselection", 1, 'A', "checkBox_Shunt_Pos_Presel", styles::kOn, "28000000019b",
        "1A preselect+=yes");
    row("negative preselection", 1, 'A', "checkBox_Shunt_Neg_Presel", styles::kOn, "28000000019d",
        "1A preselect-=yes");
    row("positive preselection taken back", 1, 'B', "checkBox_Shunt_Pos_Presel", styles::kOff, "28000000029a",
        "1B preselect+=no");
    row("negative preselection taken back", 1, 'B', "checkBox_Shunt_Neg_Presel", styles::kOff, "28000000029c",
        "1B preselect-=no");
    row("universal: positive shunt", 4, 'A', "checkBox_Shunt_Pos", styles::kShuntActive, "280000000783",
        "4A shunt+=yes");
    row("universal: negative shunt", 4, 'A', "checkBox_Shunt_Neg", styles::kShuntActive, "280000000789",
        "4A shunt-=yes");
    row("universal: positive preselection taken back", 4, 'A', "checkBox_Shunt_Pos_Presel", styles::kOff,
        "28000000079a", "4A preselect+=no");
    row("universal: negative preselection", 4, 'A', "checkBox_Shunt_Neg_Presel", styles::kOn, "28000000079d",
        "4A preselect-=yes");
}

void TstChannelSwitches::switchIsSentAndShown()
{
    QFETCH(int, module);
    QFETCH(char, channel);
    QFETCH(QByteArray, name);
    QFETCH(QString, style);
    QFETCH(QString, payload);
    QFETCH(QString, change);
    auto *control = fixture().control<QPushButton>(module, channel, name);
    QTest::mouseClick(control, Qt::LeftButton);
    QCOMPARE(control->styleSheet(), style);
    WAIT_COMPARE(fixture().commands(), QStringList{payload});
    WAIT_COMPARE(fixture().changes(), QStringList{change});
    // The status that follows leaves it so.
    const int statuses = fixture().device->requestCount(0x12);
    fixture().time.skip(1s);
    WAIT_VERIFY(fixture().device->requestCount(0x12) > statuses);
    WAIT_COMPARE(fixture().mismatches(), QStringList());
    QCOMPARE(control->styleSheet(), style);
    QCOMPARE(fixture().commands(), QStringList{payload});
}

void TstChannelSwitches::shuntGoesOffByItself_data()
{
    QTest::addColumn<int>("module");
    QTest::addColumn<char>("channel");
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("strain gauge, positive") << 1 << 'B' << QByteArray("checkBox_Shunt_Pos");
    QTest::newRow("strain gauge, negative") << 1 << 'A' << QByteArray("checkBox_Shunt_Neg");
    QTest::newRow("universal, positive") << 4 << 'A' << QByteArray("checkBox_Shunt_Pos");
    QTest::newRow("universal, negative") << 4 << 'A' << QByteArray("checkBox_Shunt_Neg");
}

void TstChannelSwitches::shuntGoesOffByItself()
{
    QFETCH(int, module);
    QFETCH(char, channel);
    QFETCH(QByteArray, name);
    auto *shunt = fixture().control<QPushButton>(module, channel, name);
    QTest::mouseClick(shunt, Qt::LeftButton);
    WAIT_COMPARE(fixture().changes().size(), 1);
    fixture().time.skip(19900ms);
    QCOMPARE(shunt->styleSheet(), styles::kShuntActive);
    QCOMPARE(fixture().changes().size(), 1);
    fixture().time.skip(100ms);
    QCOMPARE(shunt->styleSheet(), styles::kOff);
    QVERIFY(!shunt->isChecked());
    QCOMPARE(fixture().changes(), QStringList());
    const int polls = fixture().device->requestCount(0x10);
    WAIT_VERIFY(fixture().device->requestCount(0x10) > polls + 1);
    QCOMPARE(fixture().commands().size(), 1);
}

void TstChannelSwitches::shuntThatIsClickedOffKeepsItsTimer()
{
    auto *shunt = fixture().button(1, 'A', "checkBox_Shunt_Pos");
    QTest::mouseClick(shunt, Qt::LeftButton);
    fixture().time.skip(5s);
    QTest::mouseClick(shunt, Qt::LeftButton);
    QCOMPARE(shunt->styleSheet(), styles::kOff);
    WAIT_COMPARE(fixture().commands(), (QStringList{"280000000183", "280000000182"}));
    WAIT_COMPARE(fixture().changes(), QStringList());
    fixture().time.skip(15s);
    QCOMPARE(shunt->styleSheet(), styles::kOff);
    QVERIFY(!shunt->isChecked());
    QCOMPARE(fixture().commands().size(), 2);
}

void TstChannelSwitches::altClickOnAShuntSendsNothing()
{
    auto *shunt = fixture().button(1, 'A', "checkBox_Shunt_Neg");
    QTest::mouseClick(shunt, Qt::LeftButton, Qt::AltModifier);
    QVERIFY(shunt->isChecked());
    QTest::mouseClick(shunt, Qt::LeftButton);
    WAIT_COMPARE(fixture().commands(), QStringList{"280000000188"}); // off: the click before had toggled it
}

void TstChannelSwitches::autozeroByClickIsRedUntilItHasRun_data()
{
    QTest::addColumn<int>("module");
    QTest::addColumn<char>("channel");
    QTest::addColumn<QString>("wireChannel");
    QTest::newRow("strain gauge, A") << 1 << 'A' << "01";
    QTest::newRow("strain gauge, B") << 1 << 'B' << "02";
    QTest::newRow("voltage, A") << 2 << 'A' << "03";
    QTest::newRow("voltage, B") << 2 << 'B' << "04";
    QTest::newRow("universal, strain gauge") << 4 << 'A' << "07";
    QTest::newRow("universal, voltage") << 4 << 'B' << "08";
}

void TstChannelSwitches::autozeroByClickIsRedUntilItHasRun()
{
    QFETCH(int, module);
    QFETCH(char, channel);
    QFETCH(QString, wireChannel);
    auto *autozero = fixture().button(module, channel, "pushButton_Autozero");
    WAIT_COMPARE(autozero->styleSheet(), styles::kConfirmed);
    QTest::mousePress(autozero, Qt::LeftButton);
    fixture().time.skip(1000ms);
    QCOMPARE(fixture().commands(), QStringList());
    QTest::mouseRelease(autozero, Qt::LeftButton);
    QCOMPARE(autozero->styleSheet(), styles::kSent);
    WAIT_COMPARE(fixture().commands(), QStringList{"28000000" + wireChannel + "81"});
    WAIT_COMPARE(fixture().changes().size(), 1);
    QVERIFY(fixture().changes().first().endsWith(QStringLiteral(" zeroed=yes")));
    // The device is at it for 3 s; the second of the display is over, and the button tells what it does.
    fixture().time.skip(1500ms);
    const int polls = fixture().device->requestCount(0x10);
    WAIT_VERIFY(fixture().device->requestCount(0x10) > polls + 1);
    QCOMPARE(autozero->styleSheet(), styles::kSent);
    fixture().time.skip(1500ms);
    WAIT_COMPARE(autozero->styleSheet(), styles::kConfirmed);
    QCOMPARE(fixture().commands().size(), 1);
}

void TstChannelSwitches::autozeroHeldForTwoSecondsIsReset_data()
{
    autozeroByClickIsRedUntilItHasRun_data();
}

void TstChannelSwitches::autozeroHeldForTwoSecondsIsReset()
{
    QFETCH(int, module);
    QFETCH(char, channel);
    QFETCH(QString, wireChannel);
    fixture().device->chain().module(module).channel(channel == 'A' ? 0 : 1).zeroed = true;
    fixture().forgetChanges();
    auto *autozero = fixture().button(module, channel, "pushButton_Autozero");
    WAIT_COMPARE(autozero->styleSheet(), styles::kConfirmed);
    QTest::mousePress(autozero, Qt::LeftButton);
    fixture().time.skip(1000ms);
    QCOMPARE(autozero->styleSheet(), styles::kConfirmed);
    fixture().time.skip(1000ms);
    QCOMPARE(autozero->styleSheet(), styles::kSent);
    WAIT_COMPARE(fixture().commands(), QStringList{"28000000" + wireChannel + "80"});
    fixture().time.skip(1000ms);
    QTest::mouseRelease(autozero, Qt::LeftButton);
    WAIT_COMPARE(fixture().changes().size(), 1);
    QVERIFY(fixture().changes().first().endsWith(QStringLiteral(" zeroed=no")));
    fixture().time.skip(1000ms);
    WAIT_COMPARE(autozero->styleSheet(), styles::kConfirmed);
    QCOMPARE(fixture().commands().size(), 1);
}

void TstChannelSwitches::autozeroHeldForOneAndAHalfSecondsSendsNothing()
{
    auto *autozero = fixture().button(2, 'A', "pushButton_Autozero");
    QTest::mousePress(autozero, Qt::LeftButton);
    fixture().time.skip(1500ms);
    QTest::mouseRelease(autozero, Qt::LeftButton);
    fixture().time.skip(3000ms);
    const int polls = fixture().device->requestCount(0x10);
    WAIT_VERIFY(fixture().device->requestCount(0x10) > polls + 1);
    QCOMPARE(fixture().commands(), QStringList());
    QCOMPARE(autozero->styleSheet(), styles::kConfirmed);
}

QTEST_MAIN(TstChannelSwitches)

#include "tst_channelswitches.moc"
