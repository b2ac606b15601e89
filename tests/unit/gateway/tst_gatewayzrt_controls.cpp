#include "gatewaypanel.h"
#include "modules/widgets/qcomboboxnowheel.h"

#include <QtTest>

/// What keys, wheel and clicks do to the controls of the panel.
class TstGatewayZrtControls : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }
    void cleanup();

    void keySendsOneLine_data();
    void keySendsOneLine();
    void wheelSendsNothing();
    void modeDecidesWhichFieldsAreShown_data();
    void modeDecidesWhichFieldsAreShown();
    void modeOffLeavesTheFields();
    void dialogueCannotBeTyped();
    void eachGroupOfChoicesIsExclusiveByItself();
    void escapeClosesAnOpenListOnly();
    void disabledControlsSendNothing_data();
    void disabledControlsSendNothing();
    void debugMessageIsNeverEmitted();
};

void TstGatewayZrtControls::cleanup()
{
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(!QApplication::activePopupWidget());
}

void TstGatewayZrtControls::keySendsOneLine_data()
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

void TstGatewayZrtControls::keySendsOneLine()
{
    QFETCH(QByteArray, name);
    QFETCH(int, key);
    QFETCH(QByteArray, line);
    GatewayPanel p;
    p.child(name)->setFocus();
    QTest::keyClick(p.child(name), Qt::Key(key));
    QCOMPARE(p.takeLines(), line);
}

void TstGatewayZrtControls::wheelSendsNothing()
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

void TstGatewayZrtControls::modeDecidesWhichFieldsAreShown_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("server");
    QTest::newRow("UDP broadcast") << 0 << false;
    QTest::newRow("UDP multicast") << 1 << false;
    QTest::newRow("UDP unicast") << 2 << false;
    QTest::newRow("TCP server") << 3 << true;
    QTest::newRow("TCP client") << 4 << false;
}

void TstGatewayZrtControls::modeDecidesWhichFieldsAreShown()
{
    QFETCH(int, index);
    QFETCH(bool, server);
    const GatewayPanel p;
    p.receiveStatus({{8, server ? "UDP-B" : "TCP-S"}}); // the other display before
    p.pick("comboMode", index);
    QCOMPARE(p.text("labelextPort"), server ? QStringLiteral("TCP Port") : QStringLiteral("Ext Port"));
    QCOMPARE(p.child("TcpPortDefault")->isVisible(), server);
    for (const char *name : {"extIpAddr", "extPort", "labelExtServrIP", "setExtAddress"})
        QCOMPARE(p.child(name)->isVisible(), !server);
    QCOMPARE(p.text("TcpPortDefault"), QStringLiteral("8888"));
}

void TstGatewayZrtControls::modeOffLeavesTheFields()
{
    const GatewayPanel p;
    p.pick("comboMode", 3);
    p.pick("comboMode", 5);
    QVERIFY(p.child("TcpPortDefault")->isVisible());
    p.pick("comboMode", 0);
    p.pick("comboMode", 5);
    QVERIFY(!p.child("TcpPortDefault")->isVisible());
    QCOMPARE(p.text("labelextPort"), QStringLiteral("Ext Port"));
}

void TstGatewayZrtControls::dialogueCannotBeTyped()
{
    const GatewayPanel p;
    const QString before = p.dialogue();
    auto *box = p.child<QPlainTextEdit>("RxBox");
    QTest::keyClicks(box, "reboot");
    QTest::keyClick(box, Qt::Key_Return);
    QTest::keyClick(box, Qt::Key_Backspace);
    QCOMPARE(p.dialogue(), before);
}

void TstGatewayZrtControls::eachGroupOfChoicesIsExclusiveByItself()
{
    GatewayPanel p;
    p.click("radioLitleEndn");
    p.click("radio18Bit");
    p.click("twoComp");
    QVERIFY(p.isChecked("radioLitleEndn") && p.isChecked("radio18Bit") && p.isChecked("twoComp"));
    QCOMPARE(p.takeLines(), QByteArray("#010_L\r#011_18\r#014_2\r"));
    p.click("unsignedInt");
    QVERIFY(p.isChecked("radioLitleEndn") && p.isChecked("radio18Bit") && !p.isChecked("twoComp"));
}

void TstGatewayZrtControls::escapeClosesAnOpenListOnly()
{
    GatewayPanel p;
    const auto *box = p.child<QComboBox>("comboSimultn");
    p.openList("comboSimultn");
    QTest::keyClick(box->view(), Qt::Key_Escape);
    QTRY_VERIFY(!box->view()->isVisible());
    QVERIFY(p.dialog->isVisible());
    QCOMPARE(p.text("tcpConnect_Btn"), QStringLiteral("Disconnect"));
    QCOMPARE(p.takeLines(), QByteArray());
}

void TstGatewayZrtControls::disabledControlsSendNothing_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name :
         {"radioLitleEndn", "radio18Bit", "twoComp", "comboSimultn", "comboMode", "16,2500", "256,10000"})
        QTest::newRow(name) << QByteArray(name);
}

void TstGatewayZrtControls::disabledControlsSendNothing()
{
    QFETCH(QByteArray, name);
    GatewayPanel p(GatewayPanel::Link::Down);
    const QSignalSpy told(p.dialog.get(), &GatewayZRT::Signal_SetVXsamplingRate);
    p.click(name);
    QTest::keyClick(p.child(name), Qt::Key_Space);
    QCOMPARE(p.dialogue(), QString()); // what is dropped would be shown all the same
    QCOMPARE(told.count(), 0);
    QVERIFY(!QApplication::activePopupWidget());
}

void TstGatewayZrtControls::debugMessageIsNeverEmitted()
{
    GatewayPanel p;
    const QSignalSpy debug(p.dialog.get(), &GatewayZRT::Signal_debugMessage);
    p.click("debugBtn");
    p.receive("]----");
    p.receiveStatus({{2, "V"}});
    p.sock->drop();
    QCOMPARE(debug.count(), 0);
}

QTEST_MAIN(TstGatewayZrtControls)
#include "tst_gatewayzrt_controls.moc"
