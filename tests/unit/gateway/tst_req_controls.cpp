#include "reqpanel.h"

#include "support/dialoglook.h"

#include <QGroupBox>
#include <QLabel>
#include <QSignalSpy>

/// How the panel reads, and the controls that send nothing or open a window.
class TstReqControls : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }
    void cleanup();

    void panelHasItsTitle();
    void captionsAndToolTips_data();
    void captionsAndToolTips();
    void captionIsSomewhere_data();
    void captionIsSomewhere();
    void listsHaveTheirEntries_data();
    void listsHaveTheirEntries();
    void groupsHoldTheirControls_data();
    void groupsHoldTheirControls();
    void formChecksItsDefaults();
    void fieldsAreReadOnly_data();
    void fieldsAreReadOnly();
    void labelsHaveTheirFont();
    void dialogueHasItsFont();
    void pickedModeChangesTheFieldsOfTheTarget();
    void setOpensTheTargetDialog();
    void setOfAServerTakesItsPort();
    void samplesAreAskedForByMouse_data();
    void samplesAreAskedForByMouse();
    void samplesAreAskedForByKey_data();
    void samplesAreAskedForByKey();
    void operatorChoiceGivesTheRadioButtonsTheirOrder();
    void everyControlHasAnAccessibleName();
    void debugMessageIsNeverEmitted();
};

void TstReqControls::cleanup()
{
    QVERIFY(!QApplication::activeModalWidget());
}

void TstReqControls::panelHasItsTitle()
{
    const ReqPanel p;
    QCOMPARE(p.panel->windowTitle(), QStringLiteral("ZRT Gateway settings"));
}

void TstReqControls::captionsAndToolTips_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("toolTip");
    const auto row = [](const char *name, const char *text, const char *toolTip = "") {
        QTest::newRow(name) << QString(text) << QString(toolTip);
    };
    row("ipAddrBox", "192.168.0.234", "ZRT gateway IP Address");
    row("portNo", "9999", "ZRT gateway port number");
    row("tcpConnect_Btn", "Connect", "Connect to the remote zrt gateway");
    row("rebootBtn", "Reboot", "Send Reboot to completely restart the device");
    row("restartBtn", "Restart", "Only restarts the zrt gateway application");
    row("radioLitleEndn", "Little Endian");
    row("radioBigEndn", "Big Endian");
    row("radio16Bit", "16 Bit");
    row("radio18Bit", "18 Bit");
    row("twoComp", "Two's Comp.");
    row("unsignedInt", "Unsigned Int.");
    row("simuLabel", "Simulation:");
    row("modeLabel", "Mode:");
    row("setExtAddress", "Set", "Set target socket");
    row("labelExtServrIP", "Ext Server");
    row("labelextPort", "Ext Port");
    row("TcpPortDefault", "8888");
    row("ChangeGateway", "Change IP", "Change the Gateway IP Address");
    row("debugBtn", "Debug");
}

void TstReqControls::captionsAndToolTips()
{
    const ReqPanel p(ReqPanel::Link::Closed);
    const char *name = QTest::currentDataTag();
    QTEST(p.text(name), "text");
    QTEST(p.child<QWidget>(name)->toolTip(), "toolTip");
}

void TstReqControls::captionIsSomewhere_data()
{
    QTest::addColumn<QString>("caption");
    for (const char *caption :
         {"CPU Core", "PCB Temp.", "\xC2\xB0 C",
          "GATEWAY S/N:", "GATEWAY Ver:", "Unix Epoch Time:", "Active Port:", "PTP:", "PCM Sync.",
          "State:", "Accuracy:", "ns", "Samples in Block", "min.", "max.", "Data Protocol:"})
        QTest::newRow(caption) << QString::fromUtf8(caption);
}

/// Captions whose widgets have no name of their own.
void TstReqControls::captionIsSomewhere()
{
    QFETCH(QString, caption);
    const ReqPanel p;
    int found = 0;
    const auto labels = p.panel->findChildren<QLabel *>();
    for (const QLabel *label : labels)
        found += label->isVisible() && label->text() == caption ? 1 : 0;
    const auto groups = p.panel->findChildren<QGroupBox *>();
    for (const QGroupBox *group : groups)
        found += group->isVisible() && group->title() == caption ? 1 : 0;
    QVERIFY(found > 0);
}

void TstReqControls::listsHaveTheirEntries_data()
{
    QTest::addColumn<QStringList>("entries");
    QTest::newRow("comboSimultn") << QStringList{
        "Normal",        "Simulation (Triangle)", "+ Full Scale",
        "-  Full Scale", "+ Digital Full Scale",  "-  Digital Full Scale",
        "+ Half Scale",  "-  Half Scale",         "Special Pattern"};
    QTest::newRow("comboMode") << QStringList{"UDP Broadcast", "UDP Multicast", "UDP Unicast",
                                              "TCP Server",    "TCP Client",    "OFF"};
    QTest::newRow("comboActivCOM") << QStringList{"OFF", "COM 1", "COM 2", "COM 3"};
    QTest::newRow("comboPTP") << QStringList{"Off", "Slave mode", "Auto mode"};
    QTest::newRow("comboBoxDataPtcl") << QStringList{"ZRT-1", "IENA-1"};
}

void TstReqControls::listsHaveTheirEntries()
{
    const ReqPanel p;
    const auto *box = p.child<QComboBox>(QTest::currentDataTag());
    QStringList entries;
    for (int i = 0; i < box->count(); ++i)
        entries.append(box->itemText(i));
    QTEST(entries, "entries");
    QVERIFY(!box->isEditable());
    if (box->objectName() == "comboActivCOM")
        QCOMPARE(box->toolTip(), QStringLiteral("Gateway COM port for VX Configuration"));
}

void TstReqControls::groupsHoldTheirControls_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QStringList>("controls");
    QTest::newRow("groupBoxEndian") << "Endian" << QStringList{"radioLitleEndn", "radioBigEndn"};
    QTest::newRow("groupBoxDataLength") << "Data Length" << QStringList{"radio16Bit", "radio18Bit"};
    QTest::newRow("groupBoxDataFormat") << "Data Format" << QStringList{"twoComp", "unsignedInt"};
    QTest::newRow("groupBoxTemperature") << "Temperature" << QStringList{"CoreTempBox", "PCBTempBox"};
}

void TstReqControls::groupsHoldTheirControls()
{
    QFETCH(QStringList, controls);
    const ReqPanel p;
    const auto *group = p.child<QGroupBox>(QTest::currentDataTag());
    QTEST(group->title(), "title");
    for (const QString &name : controls)
        QVERIFY(group->isAncestorOf(p.child<QWidget>(name.toLatin1())));
}

void TstReqControls::formChecksItsDefaults()
{
    const ReqPanel p(ReqPanel::Link::Closed);
    QVERIFY(p.isChecked("radioBigEndn") && !p.isChecked("radioLitleEndn"));
    QVERIFY(p.isChecked("radio16Bit") && !p.isChecked("radio18Bit"));
    QVERIFY(!p.isShown("TcpPortDefault"));
    QVERIFY(p.isShown("extIpAddr") && p.isShown("extPort") && p.isShown("setExtAddress"));
}

void TstReqControls::fieldsAreReadOnly_data()
{
    QTest::addColumn<bool>("isReadOnly");
    for (const char *name : {"RxBox", "SerialNo", "GtwVersion", "unixEpochField", "PTPStateLineEdit",
                             "accuracyPTP", "minBox", "maxBox", "tcpLed", "PCM_Led"})
        QTest::newRow(name) << true;
    for (const char *name : {"ipAddrBox", "portNo"})
        QTest::newRow(name) << false;
}

void TstReqControls::fieldsAreReadOnly()
{
    const ReqPanel p(ReqPanel::Link::Closed);
    auto *field = p.child<QWidget>(QTest::currentDataTag());
    QTEST(field->property("readOnly").toBool(), "isReadOnly");
    QVERIFY(field->isEnabled());
    const char *property = field->property("plainText").isValid() ? "plainText" : "text";
    const QString before = field->property(property).toString();
    QTest::keyClicks(field, "8");
    QTEST(field->property(property).toString() == before, "isReadOnly");
}

void TstReqControls::labelsHaveTheirFont()
{
    const ReqPanel p;
    const auto labels = p.panel->findChildren<QLabel *>();
    int seen = 0;
    for (const QLabel *label : labels) {
        if (label->window() != p.panel.get() || p.child<QWidget>("gridLayoutWidget")->isAncestorOf(label))
            continue;
        QCOMPARE(label->font().family(), QStringLiteral("Segoe UI"));
        QCOMPARE(label->font().pixelSize(), 11);
        ++seen;
    }
    QVERIFY(seen >= 15);
}

void TstReqControls::dialogueHasItsFont()
{
    const ReqPanel p;
    QCOMPARE(p.child<QWidget>("RxBox")->font().family(), QStringLiteral("Lucida Console"));
    QCOMPARE(p.child<QWidget>("RxBox")->toolTip(), QStringLiteral("Data receiving from the ZRT gateway"));
}

void TstReqControls::pickedModeChangesTheFieldsOfTheTarget()
{
    ReqPanel p;
    const auto check = [&p](bool isServer) {
        QCOMPARE(p.isShown("TcpPortDefault"), isServer);
        QCOMPARE(p.text("labelextPort"), isServer ? QStringLiteral("TCP Port") : QStringLiteral("Ext Port"));
        for (const char *name : {"extIpAddr", "extPort", "labelExtServrIP", "setExtAddress"})
            QCOMPARE(p.isShown(name), !isServer);
    };
    for (int mode : {0, 1, 2, 4}) {
        p.pick("comboMode", 3);
        check(true);
        p.pick("comboMode", 5);
        check(true); // off leaves the display
        p.pick("comboMode", mode);
        check(false);
        p.pick("comboMode", 5);
        check(false);
    }
    p.forget();
    p.panel->Slot_ModeIndexChange(3);
    check(true);
    p.panel->Slot_ModeIndexChange(1);
    check(false);
    QCOMPARE(p.sent(), QByteArray());
}

void TstReqControls::setOpensTheTargetDialog()
{
    ReqPanel p;
    p.report({{11, "10.0.0.3"}, {12, "5005"}});
    const QSignalSpy details(p.panel.get(), &GatewayZRT::Signal_sendIpDetails);
    p.click("setExtAddress");
    QCOMPARE(details.count(), 1);
    QCOMPARE(details[0], (QVariantList{"10.0.0.3", "5005"}));
    auto *dialog = ReqPanel::open("externIpAndPort");
    QVERIFY(dialog);
    QVERIFY(dialog->isModal());
    QCOMPARE(ReqPanel::edit(dialog, "ipAddress")->text(), QStringLiteral("10.0.0.3"));
    QCOMPARE(ReqPanel::edit(dialog, "portNo")->text(), QStringLiteral("5005"));
    QCOMPARE(p.sent(), QByteArray());
    ReqPanel::press(dialog, QDialogButtonBox::Cancel);
    QCOMPARE(p.sent(), QByteArray());
}

void TstReqControls::setOfAServerTakesItsPort()
{
    ReqPanel p;
    p.report({{8, "TCP-S"}, {11, "10.0.0.3"}, {12, "5005"}});
    const QSignalSpy details(p.panel.get(), &GatewayZRT::Signal_sendIpDetails);
    p.panel->Slot_setExtServerAddr();
    QCOMPARE(details.count(), 1);
    QCOMPARE(details[0], (QVariantList{"10.0.0.3", "8888"}));
    QVERIFY(ReqPanel::open("externIpAndPort"));
    ReqPanel::open("externIpAndPort")->reject();
    // Both shown: neither way is meant.
    p.child<QWidget>("extPort")->show();
    p.panel->Slot_setExtServerAddr();
    QCOMPARE(details.count(), 1);
}

void TstReqControls::samplesAreAskedForByMouse_data()
{
    QTest::addColumn<QString>("label");
    QTest::newRow("minBox") << "Set Minimum";
    QTest::newRow("maxBox") << "Set Maximum";
}

void TstReqControls::samplesAreAskedForByMouse()
{
    QFETCH(QString, label);
    ReqPanel p;
    p.report({{36, "12"}, {37, "12"}});
    const QSignalSpy asked(p.panel.get(), &GatewayZRT::Signal_displayMinMax);
    auto *box = p.child<QLineEdit>(QTest::currentDataTag());
    QTest::mouseMove(box);
    QCOMPARE(asked.count(), 0);
    QTest::mousePress(box, Qt::LeftButton);
    QCOMPARE(asked.count(), 1); // by the press, not the release
    QCOMPARE(asked[0][0].toStringList(), (QStringList{label, "12", label}));
    auto *dialog = ReqPanel::open("minMaxDialog");
    QVERIFY(dialog);
    QCOMPARE(dialog->windowTitle(), label);
    QCOMPARE(ReqPanel::edit(dialog, "valueBox")->text(), QStringLiteral("12"));
    ReqPanel::press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(p.sent(), QByteArray(label == "Set Minimum" ? "#037_12\r" : "#038_12\r"));
}

void TstReqControls::samplesAreAskedForByKey_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("count");
    QTest::newRow("return") << int(Qt::Key_Return) << 1;
    QTest::newRow("enter") << int(Qt::Key_Enter) << 1;
    QTest::newRow("space") << int(Qt::Key_Space) << 1;
    QTest::newRow("digit") << int(Qt::Key_5) << 0;
    QTest::newRow("tab") << int(Qt::Key_Tab) << 0;
}

void TstReqControls::samplesAreAskedForByKey()
{
    QFETCH(int, key);
    for (const char *name : {"minBox", "maxBox"}) {
        ReqPanel p;
        const QSignalSpy asked(p.panel.get(), &GatewayZRT::Signal_displayMinMax);
        p.child<QWidget>(name)->setFocus();
        QTest::keyClick(p.child<QWidget>(name), static_cast<Qt::Key>(key));
        QTEST(asked.count(), "count");
        if (auto *dialog = ReqPanel::open("minMaxDialog"))
            dialog->reject();
        QCOMPARE(p.sent(), QByteArray());
    }
}

/// Each of the groups is exclusive by itself.
void TstReqControls::operatorChoiceGivesTheRadioButtonsTheirOrder()
{
    ReqPanel p;
    p.click("radioLitleEndn");
    p.click("radio18Bit");
    p.click("twoComp");
    QVERIFY(p.isChecked("radioLitleEndn") && p.isChecked("radio18Bit") && p.isChecked("twoComp"));
    QCOMPARE(p.sent(), QByteArray("#010_L\r#011_18\r#014_2\r"));
    p.click("unsignedInt");
    QVERIFY(p.isChecked("radioLitleEndn") && p.isChecked("radio18Bit") && !p.isChecked("twoComp"));
}

void TstReqControls::everyControlHasAnAccessibleName()
{
    const ReqPanel p;
    QCOMPARE(dialoglook::withoutAccessibleName(*p.panel), QStringList());
}

void TstReqControls::debugMessageIsNeverEmitted()
{
    ReqPanel p;
    const QSignalSpy debug(p.panel.get(), &GatewayZRT::Signal_debugMessage);
    p.click("debugBtn");
    p.receive("]----");
    p.report({{2, "V"}});
    p.sock->drop();
    QCOMPARE(debug.count(), 0);
}

QTEST_MAIN(TstReqControls)
#include "tst_req_controls.moc"
