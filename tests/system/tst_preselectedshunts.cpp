#include "channelfixture.h"

#include <QtTest>

namespace {

using namespace std::chrono_literals;

const QString kChain =
    QStringLiteral("controller serial=C-1\npower serial=P-1\n"
                   "module type=1 serial=SG- preselectA=positive preselectB=negative\n"
                   "module type=2 serial=VO-\n"
                   "module type=9 serial=UN- functionA=1 functionB=2 preselectA=both\n"
                   "module type=4 serial=TH-\n"
                   "module type=1 serial=SG- preselectB=both\n"
                   "module type=9 serial=UN- function=2 preselect=positive\n"
                   "module type=9 serial=UN- functionA=3 functionB=1 preselectB=negative\n");

const QString kOn = QStringLiteral("28000000018f");
const QString kOff = QStringLiteral("28000000018e");

constexpr char kPositive[] = "checkBox_Shunt_Pos";
constexpr char kNegative[] = "checkBox_Shunt_Neg";

} // namespace

/// The two buttons of the panel that switch the preselected shunts of the whole chain with one request.
class TstPreselectedShunts : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_fixture = std::make_unique<ChannelFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void onIsSentOnceAndShownWhereAShuntIsPreselected();
    void offTakesAllShuntsBack();
    void shuntsGoOffByThemselves();
    void preselectionOfThisSessionCounts();
    void requestGoesOutWithoutRowsThatShowIt_data();
    void requestGoesOutWithoutRowsThatShowIt();
    void nextSessionKnowsNothingOfIt();

private:
    ChannelFixture &fixture() { return *m_fixture; }
    void click(const char *name)
    {
        QTest::mouseClick(childByName<QPushButton>(m_fixture->window(), name), Qt::LeftButton);
    }

    std::unique_ptr<ChannelFixture> m_fixture;
};

void TstPreselectedShunts::onIsSentOnceAndShownWhereAShuntIsPreselected()
{
    fixture().startChain(kChain);
    click("loadPreselBtn");
    QCOMPARE(fixture().activeShunts(kPositive), (QStringList{"1A", "3A", "5B"}));
    QCOMPARE(fixture().activeShunts(kNegative), (QStringList{"1B", "3A", "5B", "7B"}));
    WAIT_COMPARE(fixture().commands(), QStringList{kOn});
    WAIT_COMPARE(fixture().changes(),
                 (QStringList{"1A shunt+=yes", "1B shunt-=yes", "3A shunt+=yes", "3A shunt-=yes",
                              "5B shunt+=yes", "5B shunt-=yes", "7B shunt-=yes"}));
    fixture().time.skip(3s);
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), QStringList{kOn});
    QCOMPARE(fixture().activeShunts(kPositive), (QStringList{"1A", "3A", "5B"}));
    QCOMPARE(fixture().mismatches(), QStringList());
    QCOMPARE(fixture().unconfirmed(), QStringList());
    QCOMPARE(fixture().device->refusals(), QStringList());
}

void TstPreselectedShunts::offTakesAllShuntsBack()
{
    fixture().startChain(kChain);
    click("loadPreselBtn");
    WAIT_COMPARE(fixture().changes().size(), 7);
    // A shunt that is not preselected goes off with the others.
    QTest::mouseClick(fixture().button(5, 'A', kNegative), Qt::LeftButton);
    WAIT_COMPARE(fixture().changes().size(), 8);
    click("loadPreselBtn_off");
    WAIT_COMPARE(fixture().commands(), (QStringList{kOn, "280000000989", kOff}));
    WAIT_COMPARE(fixture().changes(), QStringList());
    QCOMPARE(fixture().activeShunts(kPositive), QStringList());
    QCOMPARE(fixture().activeShunts(kNegative), QStringList());
    fixture().time.skip(25s);
    fixture().waitForPolls();
    QCOMPARE(fixture().commands().size(), 3);
    QCOMPARE(fixture().mismatches(), QStringList());
}

void TstPreselectedShunts::shuntsGoOffByThemselves()
{
    fixture().startChain(kChain);
    click("loadPreselBtn");
    WAIT_COMPARE(fixture().changes().size(), 7);
    fixture().time.skip(20s);
    QCOMPARE(fixture().activeShunts(kPositive), QStringList());
    QCOMPARE(fixture().activeShunts(kNegative), QStringList());
    QCOMPARE(fixture().changes(), QStringList());
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), QStringList{kOn});
}

void TstPreselectedShunts::preselectionOfThisSessionCounts()
{
    fixture().startChain(kChain);
    QTest::mouseClick(fixture().button(5, 'A', "checkBox_Shunt_Pos_Presel"), Qt::LeftButton);
    QTest::mouseClick(fixture().button(1, 'A', "checkBox_Shunt_Pos_Presel"), Qt::LeftButton);
    WAIT_COMPARE(fixture().changes(), (QStringList{"1A preselect+=no", "5A preselect+=yes"}));
    fixture().time.skip(2s);
    fixture().waitForPolls();
    fixture().forgetChanges();
    click("loadPreselBtn");
    QCOMPARE(fixture().activeShunts(kPositive), (QStringList{"3A", "5A", "5B"}));
    WAIT_COMPARE(fixture().changes(),
                 (QStringList{"1B shunt-=yes", "3A shunt+=yes", "3A shunt-=yes", "5A shunt+=yes",
                              "5B shunt+=yes", "5B shunt-=yes", "7B shunt-=yes"}));
}

void TstPreselectedShunts::requestGoesOutWithoutRowsThatShowIt_data()
{
    QTest::addColumn<QString>("modules");
    QTest::newRow("no modules") << QString();
    QTest::newRow("no module with shunts") << QStringLiteral("module type=2 serial=VO-\n"
                                                             "module type=4 serial=TH-\n"
                                                             "module type=3 serial=IE-\n");
    QTest::newRow("unknown module") << QStringLiteral("module type=77 serial=XX-\n");
}

void TstPreselectedShunts::requestGoesOutWithoutRowsThatShowIt()
{
    QFETCH(QString, modules);
    fixture().plug(QStringLiteral("controller serial=C-1\npower serial=P-1\n") + modules);
    fixture().start();
    WAIT_VERIFY(fixture().isReady());
    fixture().window()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(fixture().window()));
    fixture().time.hold();
    click("loadPreselBtn");
    WAIT_COMPARE(fixture().commands(), QStringList{kOn});
    click("loadPreselBtn_off");
    WAIT_COMPARE(fixture().commands(), (QStringList{kOn, kOff}));
    fixture().time.skip(25s);
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), (QStringList{kOn, kOff}));
    QCOMPARE(fixture().device->refusals(), QStringList());
}

void TstPreselectedShunts::nextSessionKnowsNothingOfIt()
{
    fixture().startChain(kChain);
    click("loadPreselBtn");
    WAIT_COMPARE(fixture().changes().size(), 7);
    const QPointer<QWidget> row = fixture().row(1);
    fixture().addFaults(QStringLiteral("reset-flag code=0x08 count=1"));
    WAIT_VERIFY(!row);
    fixture().waitUntilRead();
    QCOMPARE(fixture().activeShunts(kPositive), QStringList());
    click("loadPreselBtn");
    // Each row hears of it once.
    QCOMPARE(fixture().activeShunts(kPositive), (QStringList{"1A", "3A", "5B"}));
    WAIT_COMPARE(fixture().commands(), (QStringList{kOn, kOn}));
}

QTEST_MAIN(TstPreselectedShunts)

#include "tst_preselectedshunts.moc"
