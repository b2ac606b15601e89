#include "gatewaypanel.h"
#include "link/tcpsock.h"
#include "support/messagecatcher.h"

#include <QHostAddress>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>
#include <functional>

namespace {

using Action = std::function<void(GatewayPanel &)>;

Action clicks(const char *button)
{
    return [button](const GatewayPanel &p) { p.click(button); };
}

Action picks(const char *combo, int entry)
{
    return [combo, entry](const GatewayPanel &p) { p.pick(combo, entry); };
}

/// Presses the box of a sample count, types the value and leaves the dialog by OK.
Action samples(const char *box, const QString &value)
{
    return [box, value](const GatewayPanel &p) {
        QTest::mousePress(p.child(box), Qt::LeftButton);
        const auto *dialog = GatewayPanel::openDialog("minMaxDialog");
        QVERIFY(dialog);
        GatewayPanel::type(childByName<QLineEdit>(dialog, "valueBox"), value);
        GatewayPanel::pressOk(dialog);
    };
}

Action confirms(const char *button, const char *question)
{
    return [button, question](const GatewayPanel &p) {
        p.click(button);
        GatewayPanel::answer(question, QMessageBox::Yes);
    };
}

void changesAddress(GatewayPanel &p)
{
    confirms("ChangeGateway", "addressConfirmation")(p);
    const auto *dialog = GatewayPanel::openDialog("changeGatewayDialog");
    QVERIFY(dialog);
    GatewayPanel::type(childByName<QLineEdit>(dialog, "IpAddress"), "10.1.2.3");
    GatewayPanel::pressOk(dialog);
}

void setsTarget(GatewayPanel &p)
{
    p.child<QLineEdit>("extIpAddr")->setText("192.168.0.77");
    p.child<QLineEdit>("extPort")->setText("5001");
    p.click("setExtAddress");
    const auto *dialog = GatewayPanel::openDialog("externIpAndPort");
    QVERIFY(dialog);
    GatewayPanel::pressOk(dialog);
}

} // namespace

Q_DECLARE_METATYPE(Action)

/// Every line of the dialogue: what the operator does, what goes out, and what is shown of it.
class TstGatewayZrtCommands : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }

    void actionSendsItsLine_data();
    void actionSendsItsLine();
    void offRepeatsTheLastMode();
    void sameEntryChosenAgainIsSentAgain();
    void clockIsSetAtEachConnection();
    void emptyLineIsOnlyACr();
    void unknownSampleCountSendsAnEmptyLine_data();
    void unknownSampleCountSendsAnEmptyLine();
    void settingsAreKeptApart();
    void closedLinkSwallowsCommandsWithoutAMessage();
    void commandsAreSeenInTheDialogue();
    void commandScrollsToTheEnd();
    void bytesReachAGatewayOnTheNetwork();
};

void TstGatewayZrtCommands::actionSendsItsLine_data()
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

void TstGatewayZrtCommands::actionSendsItsLine()
{
    QFETCH(Action, action);
    QFETCH(QByteArray, line);
    QFETCH(bool, isShown);
    GatewayPanel p;
    action(p);
    QCOMPARE(p.takeLines(), line);
    const QString echo = QString::fromLatin1(line).replace(QLatin1Char('\r'), QLatin1Char('\n'));
    QCOMPARE(p.takeShown(), isShown ? echo : QString());
    p.time.advance(10);
    QCOMPARE(p.takeLines(), QByteArray());
}

void TstGatewayZrtCommands::offRepeatsTheLastMode()
{
    GatewayPanel p;
    p.pick("comboMode", 4);
    p.forget();
    p.pick("comboMode", 5);
    QCOMPARE(p.takeLines(), QByteArray("#009_TCP-C\r"));
    QCOMPARE(p.takeShown(), QStringLiteral("#009_TCP-C\n"));
    QCOMPARE(p.index("comboMode"), 5);
}

void TstGatewayZrtCommands::sameEntryChosenAgainIsSentAgain()
{
    GatewayPanel p;
    p.pick("comboSimultn", 3);
    p.pick("comboSimultn", 3);
    QCOMPARE(p.takeLines(), QByteArray("#006_3\r#006_3\r"));
    p.click("radio18Bit");
    p.click("radio18Bit");
    QCOMPARE(p.takeLines(), QByteArray("#011_18\r#011_18\r"));
}

void TstGatewayZrtCommands::clockIsSetAtEachConnection()
{
    GatewayPanel p(GatewayPanel::Link::Down);
    // 2026-03-02 08:30:00 UTC, and 5.25 s later.
    p.click("tcpConnect_Btn");
    QCOMPARE(p.takeLines(), QByteArray("#030_1772440200000000000\r"));
    QCOMPARE(p.takeShown(), QStringLiteral("#030_1772440200000000000\n"));
    p.click("tcpConnect_Btn");
    p.time.advance(5250);
    QCOMPARE(p.takeLines(), QByteArray());
    p.click("tcpConnect_Btn");
    QCOMPARE(p.takeLines(), QByteArray("#030_1772440205250000000\r"));
}

void TstGatewayZrtCommands::emptyLineIsOnlyACr()
{
    GatewayPanel p;
    p.dialog->Slot_sendEntr();
    QCOMPARE(p.takeLines(), QByteArray("\r"));
    QCOMPARE(p.takeShown(), QStringLiteral("\n"));
}

void TstGatewayZrtCommands::unknownSampleCountSendsAnEmptyLine_data()
{
    QTest::addColumn<QStringList>("answer");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("minimum") << QStringList{"Set Minimum", "7"} << QByteArray("#037_7\r");
    QTest::newRow("maximum") << QStringList{"Set Maximum", "8"} << QByteArray("#038_8\r");
    QTest::newRow("another label") << QStringList{"Set Something", "7"} << QByteArray("\r");
    QTest::newRow("other case") << QStringList{"set minimum", "7"} << QByteArray("\r");
    QTest::newRow("nothing") << QStringList() << QByteArray("\r");
    QTest::newRow("empty label") << QStringList{"", "7"} << QByteArray("\r");
}

void TstGatewayZrtCommands::unknownSampleCountSendsAnEmptyLine()
{
    QFETCH(QStringList, answer);
    GatewayPanel p;
    p.dialog->Slot_DispatchMinMax(answer);
    QTEST(p.takeLines(), "line");
}

void TstGatewayZrtCommands::settingsAreKeptApart()
{
    GatewayPanel p;
    p.dialog->Slot_setExtServerCommand("1.2.3.4", "99");
    QCOMPARE(p.takeLines(), QByteArray("#012_1.2.3.4:99\r"));
    p.dialog->Slot_ServDetails("5.6.7.8", "11");
    QCOMPARE(p.takeLines(), QByteArray("#012_5.6.7.8:11\r"));
    p.dialog->simComboBox(8);
    p.dialog->Slot_indexActivCom(3);
    p.dialog->Slot_PTPControl(2);
    p.dialog->Slot_DataPtclChanged(1);
    p.dialog->modeComboBox(1);
    p.dialog->modeComboBox(5);
    QCOMPARE(p.takeLines(), QByteArray("#006_8\r#032_3\r#034_2\r#039_IENA-1\r#009_UDP-M\r#009_UDP-M\r"));
}

void TstGatewayZrtCommands::closedLinkSwallowsCommandsWithoutAMessage()
{
    GatewayPanel p(GatewayPanel::Link::Down);
    const MessageCatcher log;
    p.click("debugBtn");
    p.pick("comboPTP", 1);
    p.pick("comboBoxDataPtcl", 1);
    confirms("rebootBtn", "rebootConfirmation")(p);
    QCOMPARE(p.dialogue(), QStringLiteral("#000_1\n#034_1\n#039_IENA-1\n")); // as if it had gone out
    p.time.advance(20000);
    QCOMPARE(p.takeLines(), QByteArray());
    QCOMPARE(p.sock->calls, QStringList());
    // What the platform of the tests cannot do is no word of the program.
    QCOMPARE(log.lines().filter(QRegularExpression("^(?!This plugin does not support)")), QStringList());
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Connect"));
}

void TstGatewayZrtCommands::commandsAreSeenInTheDialogue()
{
    const GatewayPanel p;
    const QString before = p.dialogue();
    p.click("debugBtn");
    p.receive("[ZRT GATEWAY]---->");
    p.dialog->Slot_sendEntr();
    QCOMPARE(p.dialogue(), before + "#000_1\n[ZRT GATEWAY]---->\n#?\n");
}

void TstGatewayZrtCommands::commandScrollsToTheEnd()
{
    GatewayPanel p;
    for (int i = 0; i < 200; ++i)
        p.receive("line " + QByteArray::number(i));
    auto *bar = p.child<QPlainTextEdit>("RxBox")->verticalScrollBar();
    QVERIFY(bar->maximum() > 0);
    bar->setValue(0);
    p.click("debugBtn");
    QCOMPARE(bar->value(), bar->maximum());
}

void TstGatewayZrtCommands::bytesReachAGatewayOnTheNetwork()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    constexpr std::chrono::milliseconds kPatience(20000); // no load of the machine uses it up
    VirtualTime time;
    auto socket = std::make_unique<TcpSock>(time, nullptr, kPatience);
    GatewayZRT panel(time, std::make_unique<TcpComm>(time, std::move(socket)));
    panel.Slot_loadTcpAddr("127.0.0.1", QString::number(server.serverPort()));
    panel.show();
    QTest::mouseClick(childByName<QPushButton>(&panel, "tcpConnect_Btn"), Qt::LeftButton);
    QTRY_VERIFY(server.hasPendingConnections());
    QTcpSocket *peer = server.nextPendingConnection();
    peer->write("[ZRT GATEWAY]---->");
    const QByteArray clock = "#030_" + QByteArray::number(time.now().toMSecsSinceEpoch()) + "000000\r";
    QTRY_COMPARE(peer->bytesAvailable(), qint64((clock + "#?\r").size()));
    QCOMPARE(peer->readAll(), clock + "#?\r");
    peer->write("#S;;9.9;2;;3");
    auto *version = childByName<QLineEdit>(&panel, "GtwVersion");
    QTRY_COMPARE(version->text(), QStringLiteral("9.9"));
    QTest::mouseClick(childByName<QPushButton>(&panel, "32,1250"), Qt::LeftButton);
    QTRY_COMPARE(peer->bytesAvailable(), qint64(13));
    QCOMPARE(peer->readAll(), QByteArray("#007_1250:32\r"));
    peer->close();
    auto *button = childByName<QPushButton>(&panel, "tcpConnect_Btn");
    QTRY_COMPARE(button->text(), QStringLiteral("Connect"));
}

QTEST_MAIN(TstGatewayZrtCommands)
#include "tst_gatewayzrt_commands.moc"
