#include "gateway/dialogueview.h"
#include "gateway/gatewaydialogue.h"
#include "gatewayfixture.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QtTest>

using namespace std::chrono_literals;

/// The panel shows what the gateway reports, and asks once a second.
class TstGatewayMirror : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_fixture = std::make_unique<GatewayFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void openingConnectsSetsTheClockAndShowsTheState();
    void statusIsAskedOnceASecond();
    void changesAtTheGatewayShow();
    void temperaturesAndTimeGoOn();
    void lampFollowsTheChain();
    void limitDisablesTheCellsAbove();
    void unknownTextsLeaveTheControls();
    void statusWithoutTheGuardChangesNothing();
    void statusInSmallPiecesChangesNothing();
    void promptBehindTheStatusAsksForNothing();
    void promptBehindEachCommandAsksForTheStatus();
    void floodIsBoundedAndTheStatusBehindItShows();
    void lostAnswersDoNotStopThePolling();

private:
    GatewayFixture &fixture() { return *m_fixture; }
    QString dialogue() const { return m_fixture->part<QPlainTextEdit>("RxBox")->toPlainText(); }

    std::unique_ptr<GatewayFixture> m_fixture;
};

void TstGatewayMirror::openingConnectsSetsTheClockAndShowsTheState()
{
    sim::GatewayState state;
    state.version = "3.7";
    state.serial = "123";
    state.mode = "TCP-C";
    state.endian = "L";
    state.dataLength = "18";
    state.dataFormat = "2";
    state.simulation = "8";
    state.activeCom = "3";
    state.ptpMode = "2";
    state.ptpState = "MASTER";
    state.dataProtocol = "IENA-1";
    state.rate = {"625", "128"};
    state.extAddress = "10.9.8.7";
    fixture().plugGateway(state);
    fixture().startWithGateway();
    QVERIFY(!fixture().panel());
    QCOMPARE(fixture().gateway->connectionCount(), 0);
    fixture().openConnectedPanel();

    QCOMPARE(fixture().panel()->windowTitle(), QString("ZRT Gateway settings"));
    QCOMPARE(fixture().partText("SerialNo"), QString("000123"));
    QCOMPARE(fixture().lampColour("tcpLed"), QColor(Qt::green));
    QCOMPARE(fixture().gateway->connectionCount(), 1);
    const QByteArray clock = fixture().gateway->receivedLines().first();
    const QByteArray now = QByteArray::number(fixture().time.now().toMSecsSinceEpoch());
    QCOMPARE(clock, "#030_" + now + "000000");
    QCOMPARE(fixture().lines(), QStringList());
    QVERIFY2(dialogue().contains("]---- \n#?"), qPrintable(dialogue()));
    QVERIFY(dialogue().contains("#S;;3.7;2;;8;625;128;TCP-C;L;18;10.9.8.7;5675;2;"));
}

void TstGatewayMirror::statusIsAskedOnceASecond()
{
    fixture().startWithGateway();
    fixture().openConnectedPanel();
    QCOMPARE(fixture().statusRequests(), 1);
    fixture().time.skip(999ms);
    fixture().waitForPolls();
    QCOMPARE(fixture().statusRequests(), 1);
    fixture().time.skip(1ms);
    WAIT_COMPARE(fixture().statusRequests(), 2);
    for (int i = 0; i < 5; ++i)
        fixture().nextPoll();
    QCOMPARE(fixture().statusRequests(), 7);
}

void TstGatewayMirror::changesAtTheGatewayShow()
{
    fixture().startWithGateway();
    fixture().openConnectedPanel();
    sim::GatewayState &state = fixture().gateway->state();
    state.mode = "OFF";
    state.rate = {"312", "2"};
    state.simulation = "4";
    state.minimumSamples = "9";
    state.endian = "L";
    fixture().waitForPolls();
    QCOMPARE(fixture().differences().size(), 6); // the chain has another rate, so the lamp differs too
    fixture().nextPoll();
    WAIT_COMPARE(fixture().differences(), QStringList());
    QCOMPARE(fixture().lines(), QStringList());
    QCOMPARE(fixture().commands(), QStringList());
}

void TstGatewayMirror::temperaturesAndTimeGoOn()
{
    fixture().startWithGateway();
    fixture().openConnectedPanel();
    QSet<QString> temperatures;
    const qint64 start = fixture().partText("unixEpochField").toLongLong();
    QVERIFY(start > 1700000000);
    for (int i = 1; i <= 30; ++i) {
        fixture().nextPoll();
        WAIT_COMPARE(fixture().partText("unixEpochField").toLongLong(), start + i);
        temperatures.insert(fixture().partText("CoreTempBox"));
        QVERIFY(qAbs(fixture().partText("CoreTempBox").toDouble() - 52) <= 2.5);
        QVERIFY(qAbs(fixture().partText("PCBTempBox").toDouble() - 41) <= 2.5);
    }
    QVERIFY(temperatures.size() > 3);
}

void TstGatewayMirror::lampFollowsTheChain()
{
    fixture().startWithGateway();
    fixture().openConnectedPanel();
    QCOMPARE(fixture().lampColour("PCM_Led"), QColor(Qt::green));
    fixture().device->chain().system.channelCountCode = 0;
    fixture().nextPoll();
    WAIT_COMPARE(fixture().lampColour("PCM_Led"), QColor(Qt::red));
    fixture().gateway->setChainRate(nullptr);
    fixture().nextPoll();
    WAIT_COMPARE(fixture().lampColour("PCM_Led"), QColor(Qt::gray));
}

void TstGatewayMirror::limitDisablesTheCellsAbove()
{
    fixture().startWithGateway();
    fixture().openConnectedPanel();
    QVERIFY(fixture().cell("2,2500")->isEnabled()); // 62500 samples per second
    fixture().gateway->state().highestRate = 60000;
    fixture().nextPoll();
    WAIT_VERIFY(!fixture().cell("2,2500")->isEnabled());
    QVERIFY(fixture().cell("4,2500")->isEnabled());
    fixture().gateway->state().highestRate = 250000;
    fixture().nextPoll();
    QVERIFY(!fixture().cell("2,2500")->isEnabled());
}

void TstGatewayMirror::unknownTextsLeaveTheControls()
{
    fixture().startWithGateway();
    fixture().gateway->state().mode = "TCP-S";
    fixture().openConnectedPanel();
    fixture().addGatewayFaults("odd field=8 value=TCP\nodd field=9 value=X\nodd field=10 value=17\n"
                               "odd field=13 value=9\nodd field=38 value=ZRT\nodd field=32 value=9\n"
                               "odd field=28 value=fast\nodd field=2 value=seen");
    fixture().nextPoll();
    WAIT_COMPARE(fixture().differences(), QStringList("GtwVersion: seen, not 2.3.1"));
}

void TstGatewayMirror::statusWithoutTheGuardChangesNothing()
{
    fixture().startWithGateway();
    fixture().openConnectedPanel();
    const sim::GatewayState before = fixture().gateway->state();
    fixture().gateway->state().mode = "OFF";
    fixture().gateway->state().version = "9";
    for (const char *guard : {"1", "", "two"}) {
        fixture().gateway->faults().clear();
        fixture().addGatewayFaults(QString("odd field=3 value=\"%1\"").arg(guard));
        fixture().nextPoll();
        QCOMPARE(fixture().partText("GtwVersion"), before.version);
        QCOMPARE(fixture().part<QComboBox>("comboMode")->currentIndex(), 0);
    }
    fixture().gateway->faults().clear();
    fixture().nextPoll();
    WAIT_COMPARE(fixture().differences(), QStringList());
}

void TstGatewayMirror::statusInSmallPiecesChangesNothing()
{
    fixture().startWithGateway();
    fixture().openConnectedPanel();
    fixture().addGatewayFaults("cut size=4 gap=1 line=\"#?\" nth=1");
    fixture().gateway->state().mode = "OFF";
    const int requests = fixture().statusRequests();
    fixture().time.skip(1s);
    const auto pieces = [this] { return dialogue().section("#?", -1); };
    WAIT_VERIFY(pieces().remove('\n').endsWith(";ZRT-1;;"));
    QVERIFY2(pieces().startsWith("#S;;\n2.3.\n1;2;\n"), qPrintable(pieces()));
    fixture().waitForPolls();
    QCOMPARE(fixture().statusRequests(), requests + 1);
    QCOMPARE(fixture().differences(), QStringList("comboMode: 0, not 5"));
    fixture().nextPoll();
    WAIT_COMPARE(fixture().differences(), QStringList());
}

void TstGatewayMirror::promptBehindTheStatusAsksForNothing()
{
    fixture().startWithGateway();
    fixture().openConnectedPanel();
    fixture().addGatewayFaults("merge line=\"#?\"");
    fixture().gateway->state().dataProtocol = "IENA-1"; // the last field before the prompt that is shown
    fixture().nextPoll();
    WAIT_COMPARE(fixture().differences(), QStringList());
    const int requests = fixture().statusRequests();
    fixture().waitForPolls();
    QCOMPARE(fixture().statusRequests(), requests);
}

void TstGatewayMirror::promptBehindEachCommandAsksForTheStatus()
{
    fixture().startWithGateway();
    fixture().openConnectedPanel();
    fixture().addGatewayFaults("merge line=\"#010_\"");
    const int requests = fixture().statusRequests();
    gestures::check(fixture().part<QAbstractButton>("radioLitleEndn"));
    WAIT_COMPARE(fixture().statusRequests(), requests + 1);
    QCOMPARE(fixture().lines(), QStringList("#010_L"));
}

void TstGatewayMirror::floodIsBoundedAndTheStatusBehindItShows()
{
    constexpr int kBytes = 3000000;
    constexpr int kFloods = 8;
    fixture().startWithGateway();
    fixture().openConnectedPanel();
    qint64 received = 0;
    const auto *receiver = fixture().panel()->findChild<GatewayDialogue *>();
    connect(receiver, &GatewayDialogue::textToShow, this, [&](const QString &text) {
        static const QRegularExpression left(" \\[(\\d+) more characters\\]");
        received += text.count('x') + left.match(text).captured(1).toInt();
    });
    QStringList lost;
    fixture().gateway->log().setSink([&lost](const QString &line) {
        if (line.contains("lost"))
            lost.append(line);
    });
    fixture().addGatewayFaults(QString("flood bytes=%1 line=\"#?\" count=%2").arg(kBytes).arg(kFloods));
    fixture().gateway->state().mode = "UDP-U";
    for (int i = 1; i <= kFloods; ++i) {
        fixture().time.skip(1s);
        WAIT_VERIFY(received >= i * kBytes);
        fixture().waitForPolls(); // the chain's session goes on meanwhile
    }
    QCOMPARE(lost, QStringList());
    fixture().nextPoll();
    WAIT_COMPARE(fixture().differences(), QStringList());
    QVERIFY2(dialogue().size() < DialogueView::kCharacters + 9999,
             qPrintable(QString::number(dialogue().size())));
    QVERIFY(fixture().part<QPlainTextEdit>("RxBox")->blockCount() <= DialogueView::kLines);
    QVERIFY(fixture().isReady());
}

void TstGatewayMirror::lostAnswersDoNotStopThePolling()
{
    fixture().startWithGateway();
    fixture().openConnectedPanel();
    fixture().addGatewayFaults("lose line=\"#?\" count=3");
    fixture().gateway->state().mode = "UDP-U";
    for (int i = 0; i < 3; ++i) {
        const int requests = fixture().statusRequests();
        fixture().time.skip(1s);
        WAIT_COMPARE(fixture().statusRequests(), requests + 1);
        QCOMPARE(fixture().differences(), QStringList("comboMode: 0, not 2"));
    }
    fixture().nextPoll();
    WAIT_COMPARE(fixture().differences(), QStringList());
}

QTEST_MAIN(TstGatewayMirror)
#include "tst_gatewaymirror.moc"
