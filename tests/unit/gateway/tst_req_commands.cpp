#include "reqpanel.h"

#include <QSignalSpy>
#include <functional>

namespace {

using Action = std::function<void(ReqPanel &)>;

void pressBox(ReqPanel &p, const char *box)
{
    QTest::mousePress(p.child<QLineEdit>(box), Qt::LeftButton);
}

/// Presses the box of a sample count, types the value and leaves the dialog by OK.
Action samples(const char *box, const QString &value)
{
    return [box, value](ReqPanel &p) {
        pressBox(p, box);
        auto *dialog = ReqPanel::open("minMaxDialog");
        QVERIFY(dialog);
        ReqPanel::type(ReqPanel::edit(dialog, "valueBox"), value);
        ReqPanel::press(dialog, QDialogButtonBox::Ok);
    };
}

Action picks(const char *combo, int entry)
{
    return [combo, entry](ReqPanel &p) { p.pick(combo, entry); };
}

Action clicks(const char *button)
{
    return [button](ReqPanel &p) { p.click(button); };
}

Action confirms(const char *button, const char *box)
{
    return [button, box](ReqPanel &p) {
        p.click(button);
        auto *question = ReqPanel::open<QMessageBox>(box);
        QVERIFY(question);
        ReqPanel::answer(question, QMessageBox::Yes);
    };
}

void changesAddress(ReqPanel &p)
{
    confirms("ChangeGateway", "addressConfirmation")(p);
    auto *dialog = ReqPanel::open("changeGatewayDialog");
    QVERIFY(dialog);
    ReqPanel::type(ReqPanel::edit(dialog, "IpAddress"), "10.1.2.3");
    ReqPanel::press(dialog, QDialogButtonBox::Ok);
}

void setsTarget(ReqPanel &p)
{
    p.child<QLineEdit>("extIpAddr")->setText("192.168.0.77");
    p.child<QLineEdit>("extPort")->setText("5001");
    p.click("setExtAddress");
    auto *dialog = ReqPanel::open("externIpAndPort");
    QVERIFY(dialog);
    ReqPanel::press(dialog, QDialogButtonBox::Ok);
}

} // namespace

Q_DECLARE_METATYPE(Action)

/// Every line of the gateway's dialogue: what the operator does, what goes over the line, what is shown.
class TstReqCommands : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }

    void actionSendsItsLine_data();
    void actionSendsItsLine();
    void offRepeatsTheLastMode();
    void sameEntryChosenAgainIsSentAgain();
    void arrowKeyOnAClosedListSendsTheNextEntry();
    void wheelOverAListSendsNothing();
    void clockIsSetAtEachConnection();
    void emptyLineIsOnlyACr();
    void unknownSampleCountSendsAnEmptyLine_data();
    void unknownSampleCountSendsAnEmptyLine();
    void otherTableSendsBitRateFirst();
    void textGoesOutAsLatin1();
    void commandStaysOneLine();
    void settingsAreKeptApart();
    void closedLinkSwallowsCommandsWithoutAMessage();
};

void TstReqCommands::actionSendsItsLine_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<bool>("isShown");
    const auto row = [](const char *name, const Action &action, const QByteArray &line, bool isShown = true) {
        QTest::newRow(name) << action << line << isShown;
    };
    row("debug button", clicks("debugBtn"), "#000_1\r");
    for (int i = 0; i <= 8; ++i) {
        const QByteArray number = QByteArray::number(i);
        row("simulation " + number, picks("comboSimultn", i), "#006_" + number + "\r");
    }
    row("cell of the table", clicks("32,625"), "#007_625:32\r");
    row("other cell of the table", clicks("256,10000"), "#007_10000:256\r");
    const QByteArrayList modes{"UDP-B", "UDP-M", "UDP-U", "TCP-S", "TCP-C"};
    for (int i = 0; i < modes.size(); ++i)
        row("mode " + modes[i], picks("comboMode", i), "#009_" + modes[i] + "\r");
    row("mode off repeats the initial mode", picks("comboMode", 5), "#009_UDP\r");
    row("little endian", clicks("radioLitleEndn"), "#010_L\r");
    row("big endian", clicks("radioBigEndn"), "#010_B\r");
    row("16 bit", clicks("radio16Bit"), "#011_16\r");
    row("18 bit", clicks("radio18Bit"), "#011_18\r");
    row("target socket", setsTarget, "#012_192.168.0.77:5001\r");
    row("unsigned", clicks("unsignedInt"), "#014_U\r");
    row("two's complement", clicks("twoComp"), "#014_2\r");
    for (int i = 0; i <= 3; ++i) {
        const QByteArray number = QByteArray::number(i);
        row("active COM " + number, picks("comboActivCOM", i), "#032_" + number + "\r");
    }
    for (int i = 0; i <= 2; ++i) {
        const QByteArray number = QByteArray::number(i);
        row("PTP " + number, picks("comboPTP", i), "#034_" + number + "\r");
    }
    row("minimum samples", samples("minBox", "120"), "#037_120\r");
    row("minimum samples empty", samples("minBox", ""), "#037_\r");
    row("maximum samples", samples("maxBox", "350"), "#038_350\r");
    row("maximum samples empty", samples("maxBox", ""), "#038_\r");
    row("protocol ZRT-1", picks("comboBoxDataPtcl", 0), "#039_ZRT-1\r");
    row("protocol IENA-1", picks("comboBoxDataPtcl", 1), "#039_IENA-1\r");
    row("new address is not shown", changesAddress, "gateway.addr=10.1.2.3\r", false);
    row("reboot is not shown", confirms("rebootBtn", "rebootConfirmation"), "reboot\r", false);
    row("restart is not shown", confirms("restartBtn", "restartConfirmation"), "restart\r", false);
}

void TstReqCommands::actionSendsItsLine()
{
    QFETCH(Action, action);
    QFETCH(QByteArray, line);
    QFETCH(bool, isShown);
    ReqPanel p;
    action(p);
    QCOMPARE(p.sent(), line);
    const QString echo = QString::fromLatin1(line).replace(QLatin1Char('\r'), QLatin1Char('\n'));
    QCOMPARE(p.shown(), isShown ? echo : QString());
    p.time.advance(10);
    QCOMPARE(p.sent(), QByteArray());
}

void TstReqCommands::offRepeatsTheLastMode()
{
    ReqPanel p;
    p.pick("comboMode", 4);
    p.forget();
    p.pick("comboMode", 5);
    QCOMPARE(p.sent(), QByteArray("#009_TCP-C\r"));
    QCOMPARE(p.shown(), QStringLiteral("#009_TCP-C\n"));
    QCOMPARE(p.index("comboMode"), 5);
}

void TstReqCommands::sameEntryChosenAgainIsSentAgain()
{
    ReqPanel p;
    p.pick("comboSimultn", 3);
    p.pick("comboSimultn", 3);
    QCOMPARE(p.sent(), QByteArray("#006_3\r#006_3\r"));
    p.click("radio18Bit");
    p.click("radio18Bit");
    QCOMPARE(p.sent(), QByteArray("#011_18\r#011_18\r"));
}

void TstReqCommands::arrowKeyOnAClosedListSendsTheNextEntry()
{
    ReqPanel p;
    p.report({{5, "4"}});
    p.child<QComboBox>("comboSimultn")->setFocus();
    QTest::keyClick(p.child<QComboBox>("comboSimultn"), Qt::Key_Down);
    QCOMPARE(p.sent(), QByteArray("#006_5\r"));
}

void TstReqCommands::wheelOverAListSendsNothing()
{
    ReqPanel p;
    for (const char *name : {"comboSimultn", "comboMode", "comboActivCOM", "comboPTP", "comboBoxDataPtcl"}) {
        auto *box = p.child<QComboBox>(name);
        const int before = box->currentIndex();
        box->clearFocus();
        const QPointF place = box->rect().center();
        QWheelEvent event(place, box->mapToGlobal(place.toPoint()), QPoint(), QPoint(0, -120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(box, &event);
        QCOMPARE(box->currentIndex(), before);
    }
    QCOMPARE(p.sent(), QByteArray());
}

void TstReqCommands::clockIsSetAtEachConnection()
{
    ReqPanel p(ReqPanel::Link::Closed);
    // 2026-03-02 08:30:00 UTC, and 5.25 s later.
    p.click("tcpConnect_Btn");
    QCOMPARE(p.sent(), QByteArray("#030_1772440200000000000\r"));
    QCOMPARE(p.shown(), QStringLiteral("#030_1772440200000000000\n"));
    p.click("tcpConnect_Btn");
    p.time.advance(5250);
    QCOMPARE(p.sent(), QByteArray());
    p.click("tcpConnect_Btn");
    QCOMPARE(p.sent(), QByteArray("#030_1772440205250000000\r"));
}

void TstReqCommands::emptyLineIsOnlyACr()
{
    ReqPanel p;
    p.panel->Slot_sendEntr();
    QCOMPARE(p.sent(), QByteArray("\r"));
    QCOMPARE(p.shown(), QStringLiteral("\n"));
}

void TstReqCommands::unknownSampleCountSendsAnEmptyLine_data()
{
    QTest::addColumn<QStringList>("answer");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("minimum") << QStringList{"Set Minimum", "7"} << QByteArray("#037_7\r");
    QTest::newRow("maximum") << QStringList{"Set Maximum", "8"} << QByteArray("#038_8\r");
    QTest::newRow("another label") << QStringList{"Set Something", "7"} << QByteArray("\r");
    QTest::newRow("other case") << QStringList{"set minimum", "7"} << QByteArray("\r");
    QTest::newRow("empty label") << QStringList{"", "7"} << QByteArray("\r");
}

void TstReqCommands::unknownSampleCountSendsAnEmptyLine()
{
    QFETCH(QStringList, answer);
    ReqPanel p;
    p.panel->Slot_DispatchMinMax(answer);
    QTEST(p.sent(), "line");
}

void TstReqCommands::otherTableSendsBitRateFirst()
{
    ReqPanel p;
    p.panel->Slot_setBitRateSettings("1250", "64");
    QCOMPARE(p.sent(), QByteArray("#007_1250:64\r"));
    QCOMPARE(p.shown(), QStringLiteral("#007_1250:64\n"));
}

void TstReqCommands::textGoesOutAsLatin1()
{
    ReqPanel p;
    p.panel->Slot_DispatchMinMax({"Set Maximum", QString(QChar(0xE4))});
    QCOMPARE(p.sent(), QByteArray("#038_\xE4\r"));
}

void TstReqCommands::commandStaysOneLine()
{
    ReqPanel p;
    p.panel->Slot_DispatchMinMax({"Set Minimum", "1\r2\n3\r\n4"});
    QCOMPARE(p.sent(), QByteArray("#037_1234\r"));
    p.panel->changeGatewayAddr("10.0.0.1\rreboot");
    const QByteArray line = p.sent();
    QCOMPARE(line, QByteArray("gateway.addr=10.0.0.1reboot\r"));
}

void TstReqCommands::settingsAreKeptApart()
{
    ReqPanel p;
    p.panel->Slot_setExtServerCommand("1.2.3.4", "99");
    QCOMPARE(p.sent(), QByteArray("#012_1.2.3.4:99\r"));
    p.panel->Slot_ServDetails("5.6.7.8", "11");
    QCOMPARE(p.sent(), QByteArray("#012_5.6.7.8:11\r"));
    p.panel->simComboBox(8);
    p.panel->Slot_indexActivCom(3);
    p.panel->Slot_PTPControl(2);
    p.panel->Slot_DataPtclChanged(1);
    p.panel->modeComboBox(1);
    p.panel->modeComboBox(5);
    QCOMPARE(p.sent(), QByteArray("#006_8\r#032_3\r#034_2\r#039_IENA-1\r#009_UDP-M\r#009_UDP-M\r"));
}

void TstReqCommands::closedLinkSwallowsCommandsWithoutAMessage()
{
    ReqPanel p(ReqPanel::Link::Closed);
    const MessageCatcher log;
    p.click("debugBtn");
    p.pick("comboPTP", 1);
    p.pick("comboBoxDataPtcl", 1);
    confirms("rebootBtn", "rebootConfirmation")(p);
    p.time.advance(20000);
    QCOMPARE(p.sent(), QByteArray());
    QCOMPARE(p.sock->calls, QStringList());
    // What the platform of the tests cannot do is no word of the program.
    QCOMPARE(log.lines().filter(QRegularExpression("^(?!This plugin does not support)")), QStringList());
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Connect"));
}

QTEST_MAIN(TstReqCommands)
#include "tst_req_commands.moc"
