#include "gatewaypanel.h"
#include "support/dialoglook.h"

#include <QAbstractButton>

namespace {

constexpr char kLimited[] = "2,2500"; ///< 62500 samples per second
const GatewayPanel::Fields kLimit{{28, "60000"}};
constexpr char kConnect[] = "tcpConnect_Btn";

/// Name of the widget that takes the keys, or would if the panel were shown.
QString focused(const GatewayPanel &p)
{
    const QWidget *widget = p.dialog->focusWidget();
    return widget ? widget->objectName() : QString();
}

void addSettings()
{
    QTest::addColumn<QByteArray>("control");
    for (const char *name :
         {"16,2500", "radioLitleEndn", "radio16Bit", "twoComp", "CoreTempBox", "comboSimultn", "comboMode"})
        QTest::newRow(name) << QByteArray(name);
}

} // namespace

/// Where the keys of the panel go when the control that had them can no longer be used.
class TstGatewayZrtFocus : public QObject
{
    Q_OBJECT

private slots:
    void limitTakesTheFocusFromACell();
    void limitTakesTheFocusOfAHiddenPanel();
    void limitLeavesTheFocusOfOthers();
    void reportedRateAboveItsLimitTakesNoFocus();
    void linkThatComesUpPutsNoButtonUnderTheKeys();
    void lostLinkGivesTheFocusToTheConnectButton_data() { addSettings(); }
    void lostLinkGivesTheFocusToTheConnectButton();
    void lostLinkOfAHiddenPanelDoesTheSame_data() { addSettings(); }
    void lostLinkOfAHiddenPanelDoesTheSame();
    void leavingGivesTheFocusToTheConnectButton();
    void lostLinkLeavesTheFocusOfOthers();
    void connectButtonKeepsTheFocusWhileThePanelIsHidden();
    void tabVisitsTheCheckedChoice();
    void tabVisitsTheFirstOfNoChoice();
};

void TstGatewayZrtFocus::limitTakesTheFocusFromACell()
{
    GatewayPanel p;
    p.cell(kLimited)->setFocus();
    p.receiveStatus(kLimit);
    QVERIFY(p.dead().contains(kLimited));
    QCOMPARE(focused(p), QStringLiteral("RxBox"));
    QTest::keyClick(p.dialog->focusWidget(), Qt::Key_Space);
    QCOMPARE(p.takeLines(), QByteArray());
}

void TstGatewayZrtFocus::limitTakesTheFocusOfAHiddenPanel()
{
    const GatewayPanel p;
    p.cell(kLimited)->setFocus();
    p.dialog->hide();
    p.receiveStatus(kLimit);
    QCOMPARE(focused(p), QStringLiteral("RxBox"));
    p.dialog->show();
    QCOMPARE(focused(p), QStringLiteral("RxBox"));
}

void TstGatewayZrtFocus::limitLeavesTheFocusOfOthers()
{
    const GatewayPanel p;
    for (const char *name : {"16,2500", "comboMode", kConnect}) {
        p.child(name)->setFocus();
        p.receiveStatus(kLimit);
        QCOMPARE(focused(p), QString(name));
    }
}

void TstGatewayZrtFocus::reportedRateAboveItsLimitTakesNoFocus()
{
    const GatewayPanel p;
    p.child("minBox")->setFocus();
    GatewayPanel::Fields fields = kLimit;
    fields[6] = "2500";
    fields[7] = "2";
    p.receiveStatus(fields);
    QVERIFY(p.dead().contains(kLimited));
    QCOMPARE(focused(p), QStringLiteral("minBox"));
}

void TstGatewayZrtFocus::linkThatComesUpPutsNoButtonUnderTheKeys()
{
    const GatewayPanel p;
    p.dialog->Slot_tcpDisconnected();
    p.child("ipAddrBox")->setFocus();
    p.dialog->Slot_tcpConnected();
    QVERIFY(!p.isEnabled("ipAddrBox"));
    QCOMPARE(focused(p), QStringLiteral("RxBox"));
    p.dialog->Slot_tcpDisconnected();
    p.child("ipAddrBox")->setFocus();
    p.dialog->connectToTcp();
    QCOMPARE(focused(p), QStringLiteral("RxBox"));
}

void TstGatewayZrtFocus::lostLinkGivesTheFocusToTheConnectButton()
{
    QFETCH(QByteArray, control);
    const GatewayPanel p;
    p.child(control)->setFocus();
    QCOMPARE(focused(p), QString(control));
    p.dialog->Slot_tcpDisconnected();
    QVERIFY(!p.isEnabled(control));
    QCOMPARE(focused(p), QString(kConnect));
    QVERIFY(p.child(kConnect)->hasFocus());
}

void TstGatewayZrtFocus::lostLinkOfAHiddenPanelDoesTheSame()
{
    QFETCH(QByteArray, control);
    const GatewayPanel p;
    p.child(control)->setFocus();
    p.dialog->hide();
    p.dialog->Slot_tcpDisconnected();
    QCOMPARE(focused(p), QString(kConnect));
    p.dialog->show();
    QCOMPARE(focused(p), QString(kConnect));
}

void TstGatewayZrtFocus::leavingGivesTheFocusToTheConnectButton()
{
    const GatewayPanel p;
    p.cell("16,2500")->setFocus();
    QTest::keyClick(p.cell("16,2500"), Qt::Key_Escape);
    QCOMPARE(p.text(kConnect), QStringLiteral("Connect"));
    QCOMPARE(focused(p), QString(kConnect));
}

void TstGatewayZrtFocus::lostLinkLeavesTheFocusOfOthers()
{
    for (const char *name : {"RxBox", "comboPTP", "minBox", "debugBtn"}) {
        const GatewayPanel p;
        p.child(name)->setFocus();
        p.dialog->Slot_tcpDisconnected();
        QCOMPARE(focused(p), QString(name));
    }
}

void TstGatewayZrtFocus::connectButtonKeepsTheFocusWhileThePanelIsHidden()
{
    const GatewayPanel p;
    p.child(kConnect)->setFocus();
    QTest::keyClick(p.child(kConnect), Qt::Key_Escape);
    QVERIFY(!p.dialog->isVisible());
    p.dialog->connectToTcp(); // as the opening does
    p.dialog->show();
    QCOMPARE(p.text(kConnect), QStringLiteral("Disconnect"));
    QCOMPARE(focused(p), QString(kConnect));
}

void TstGatewayZrtFocus::tabVisitsTheCheckedChoice()
{
    const GatewayPanel p;
    const auto visited = [&p] {
        p.child(kConnect)->setFocus();
        const QStringList all = dialoglook::tabOrder(*p.dialog, 100);
        QStringList choices;
        for (const QString &name : all) {
            if (p.child(qPrintable(name))->inherits("QRadioButton"))
                choices.append(name);
        }
        return choices.mid(0, 2); // of the third group none is checked before the first status
    };
    QCOMPARE(visited(), (QStringList{"radioBigEndn", "radio16Bit"}));
    p.receiveStatus({{9, "L"}, {10, "18"}});
    QCOMPARE(visited(), (QStringList{"radioLitleEndn", "radio18Bit"}));
    p.receiveStatus({{9, "B"}, {10, "16"}});
    QCOMPARE(visited(), (QStringList{"radioBigEndn", "radio16Bit"}));
}

void TstGatewayZrtFocus::tabVisitsTheFirstOfNoChoice()
{
    const GatewayPanel p;
    p.child("radio16Bit")->setFocus();
    QTest::keyClick(p.child("radio16Bit"), Qt::Key_Tab);
    QCOMPARE(focused(p), QStringLiteral("twoComp"));
    p.receiveStatus({{13, "U"}});
    p.child("radio16Bit")->setFocus();
    QTest::keyClick(p.child("radio16Bit"), Qt::Key_Tab);
    QCOMPARE(focused(p), QStringLiteral("unsignedInt"));
}

QTEST_MAIN(TstGatewayZrtFocus)
#include "tst_gatewayzrt_focus.moc"
