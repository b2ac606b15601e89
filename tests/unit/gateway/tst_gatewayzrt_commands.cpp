#include "base/gui/fonts.h"
#include "gatewaypanel.h"
#include "link/tcpsock.h"
#include "modules/widgets/qcomboboxnowheel.h"

#include <QAbstractItemView>
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

namespace {

/// Opens the list of a combo box and picks an entry with the mouse.
void pick(QComboBox *box, int index)
{
    box->showPopup();
    QWidget *list = box->view()->viewport();
    const QRect place = box->view()->visualRect(box->model()->index(index, 0));
    QTest::mouseMove(list, place.center());
    // Soon after the opening the list takes a release for the end of the click that opened it.
    QTest::mousePress(list, Qt::LeftButton, Qt::NoModifier, place.center());
    QTest::mouseRelease(list, Qt::LeftButton, Qt::NoModifier, place.center());
    box->hidePopup();
}

} // namespace

/// What the operator's clicks and keys send.
class TstGatewayZrtCommands : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }
    void clickSendsOneLine_data();
    void clickSendsOneLine();
    void checkedChoiceIsSentAgain();
    void pickSendsOneLine_data();
    void pickSendsOneLine();
    void keySendsOneLine_data();
    void keySendsOneLine();
    void modeOffRepeatsTheLastMode();
    void modeOffFromTheStart();
    void wheelSendsNothing();
    void controlsSendNothingWithoutALink();
    void modeDecidesWhichFieldsAreShown_data();
    void modeDecidesWhichFieldsAreShown();
    void modeOffLeavesTheFields();
    void commandsAreSeenInTheDialogue();
    void dialogueCannotBeTyped();
    void bytesReachAGatewayOnTheNetwork();
};

void TstGatewayZrtCommands::clickSendsOneLine_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("radioLitleEndn") << QByteArray("#010_L\r");
    QTest::newRow("radioBigEndn") << QByteArray("#010_B\r");
    QTest::newRow("radio16Bit") << QByteArray("#011_16\r");
    QTest::newRow("radio18Bit") << QByteArray("#011_18\r");
    QTest::newRow("unsignedInt") << QByteArray("#014_U\r");
    QTest::newRow("twoComp") << QByteArray("#014_2\r");
    QTest::newRow("debugBtn") << QByteArray("#000_1\r");
    QTest::newRow("16,2500") << QByteArray("#007_2500:16\r"); // bit rate first
    QTest::newRow("128,10000") << QByteArray("#007_10000:128\r");
}

void TstGatewayZrtCommands::clickSendsOneLine()
{
    QFETCH(QByteArray, line);
    GatewayPanel p;
    p.click(QTest::currentDataTag());
    QCOMPARE(p.takeLines(), line);
}

void TstGatewayZrtCommands::checkedChoiceIsSentAgain()
{
    GatewayPanel p;
    p.click("radio18Bit");
    p.click("radio18Bit");
    QCOMPARE(p.takeLines(), QByteArray("#011_18\r#011_18\r"));
}

void TstGatewayZrtCommands::pickSendsOneLine_data()
{
    QTest::addColumn<QByteArray>("box");
    QTest::addColumn<int>("index");
    QTest::addColumn<QByteArray>("line");
    const auto row = [](const char *box, int index, const char *line) {
        QTest::addRow("%s %d", box, index) << QByteArray(box) << index << QByteArray(line);
    };
    for (int i = 0; i < 9; ++i)
        row("comboSimultn", i, qPrintable(QStringLiteral("#006_%1\r").arg(i)));
    const char *const modes[] = {"#009_UDP-B\r", "#009_UDP-M\r", "#009_UDP-U\r", "#009_TCP-S\r",
                                 "#009_TCP-C\r"};
    for (int i = 0; i < 5; ++i)
        row("comboMode", i, modes[i]);
    for (int i = 0; i < 4; ++i)
        row("comboActivCOM", i, qPrintable(QStringLiteral("#032_%1\r").arg(i)));
    for (int i = 0; i < 3; ++i)
        row("comboPTP", i, qPrintable(QStringLiteral("#034_%1\r").arg(i)));
    row("comboBoxDataPtcl", 0, "#039_ZRT-1\r");
    row("comboBoxDataPtcl", 1, "#039_IENA-1\r");
}

void TstGatewayZrtCommands::pickSendsOneLine()
{
    QFETCH(QByteArray, box);
    QFETCH(int, index);
    QFETCH(QByteArray, line);
    GatewayPanel p;
    pick(p.child<QComboBox>(box), index);
    QCOMPARE(p.takeLines(), line);
    QCOMPARE(p.child<QComboBox>(box)->currentIndex(), index);
}

void TstGatewayZrtCommands::keySendsOneLine_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("key");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("down in a list") << QByteArray("comboPTP") << int(Qt::Key_Down) << QByteArray("#034_1\r");
    QTest::newRow("space on a choice")
        << QByteArray("radio18Bit") << int(Qt::Key_Space) << QByteArray("#011_18\r");
    QTest::newRow("up among choices")
        << QByteArray("radioBigEndn") << int(Qt::Key_Up) << QByteArray("#010_L\r");
    QTest::newRow("space on a cell") << QByteArray("64,625") << int(Qt::Key_Space)
                                     << QByteArray("#007_625:64\r");
    QTest::newRow("space on a command")
        << QByteArray("debugBtn") << int(Qt::Key_Space) << QByteArray("#000_1\r");
    QTest::newRow("return on a command") << QByteArray("debugBtn") << int(Qt::Key_Return) << QByteArray();
    QTest::newRow("return on a cell") << QByteArray("64,625") << int(Qt::Key_Return) << QByteArray();
}

void TstGatewayZrtCommands::keySendsOneLine()
{
    QFETCH(QByteArray, name);
    QFETCH(int, key);
    QFETCH(QByteArray, line);
    GatewayPanel p;
    p.child(name)->setFocus();
    QTest::keyClick(p.child(name), Qt::Key(key));
    QCOMPARE(p.takeLines(), line);
}

void TstGatewayZrtCommands::modeOffRepeatsTheLastMode()
{
    GatewayPanel p;
    auto *mode = p.child<QComboBox>("comboMode");
    pick(mode, 4);
    pick(mode, 5);
    QCOMPARE(p.takeLines(), QByteArray("#009_TCP-C\r#009_TCP-C\r"));
}

void TstGatewayZrtCommands::modeOffFromTheStart()
{
    GatewayPanel p;
    pick(p.child<QComboBox>("comboMode"), 5);
    QCOMPARE(p.takeLines(), QByteArray("#009_UDP\r"));
}

void TstGatewayZrtCommands::wheelSendsNothing()
{
    GatewayPanel p;
    int boxes = 0;
    const auto all = p.dialog->findChildren<QComboBox *>();
    for (QComboBox *box : all) {
        QVERIFY2(qobject_cast<QComboBoxNoWheel *>(box), qPrintable(box->objectName()));
        const int before = box->currentIndex();
        const QPointF middle = box->rect().center();
        QWheelEvent wheel(middle, box->mapToGlobal(middle.toPoint()), QPoint(), QPoint(0, -120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(box, &wheel);
        QCOMPARE(box->currentIndex(), before);
        ++boxes;
    }
    QCOMPARE(boxes, 5);
    QCOMPARE(p.takeLines(), QByteArray());
}

void TstGatewayZrtCommands::controlsSendNothingWithoutALink()
{
    GatewayPanel p(GatewayPanel::Link::Down);
    for (const char *name : {"16,2500", "radioLitleEndn", "radio18Bit", "twoComp", "debugBtn"})
        p.click(name);
    QCOMPARE(p.takeLines(), QByteArray());
    QCOMPARE(p.dialogue(), QStringLiteral("#000_1\n")); // alive, but swallowed without a word
}

void TstGatewayZrtCommands::modeDecidesWhichFieldsAreShown_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("server");
    QTest::newRow("UDP broadcast") << 0 << false;
    QTest::newRow("UDP multicast") << 1 << false;
    QTest::newRow("UDP unicast") << 2 << false;
    QTest::newRow("TCP server") << 3 << true;
    QTest::newRow("TCP client") << 4 << false;
}

void TstGatewayZrtCommands::modeDecidesWhichFieldsAreShown()
{
    QFETCH(int, index);
    QFETCH(bool, server);
    const GatewayPanel p;
    p.receiveStatus({{8, server ? "UDP-B" : "TCP-S"}}); // the other display before
    pick(p.child<QComboBox>("comboMode"), index);
    QCOMPARE(p.text("labelextPort"), server ? QStringLiteral("TCP Port") : QStringLiteral("Ext Port"));
    QCOMPARE(p.child("TcpPortDefault")->isVisible(), server);
    for (const char *name : {"extIpAddr", "extPort", "labelExtServrIP", "setExtAddress"})
        QCOMPARE(p.child(name)->isVisible(), !server);
    QCOMPARE(p.text("TcpPortDefault"), QStringLiteral("8888"));
}

void TstGatewayZrtCommands::modeOffLeavesTheFields()
{
    const GatewayPanel p;
    pick(p.child<QComboBox>("comboMode"), 3);
    pick(p.child<QComboBox>("comboMode"), 5);
    QVERIFY(p.child("TcpPortDefault")->isVisible());
    pick(p.child<QComboBox>("comboMode"), 0);
    pick(p.child<QComboBox>("comboMode"), 5);
    QVERIFY(!p.child("TcpPortDefault")->isVisible());
    QCOMPARE(p.text("labelextPort"), QStringLiteral("Ext Port"));
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

void TstGatewayZrtCommands::dialogueCannotBeTyped()
{
    const GatewayPanel p;
    const QString before = p.dialogue();
    auto *box = p.child<QPlainTextEdit>("RxBox");
    QTest::keyClicks(box, "reboot");
    QTest::keyClick(box, Qt::Key_Return);
    QTest::keyClick(box, Qt::Key_Backspace);
    QCOMPARE(p.dialogue(), before);
}

void TstGatewayZrtCommands::bytesReachAGatewayOnTheNetwork()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    VirtualTime time;
    GatewayZRT panel(time, std::make_unique<TcpComm>(time, std::make_unique<TcpSock>(time)));
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
