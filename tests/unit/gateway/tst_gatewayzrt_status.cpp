#include "gatewaypanel.h"
#include "support/messagecatcher.h"

#include <QtTest>

namespace {

GatewayPanel::Fields fullStatus()
{
    return {{2, "1.2.3"},  {5, "3"},         {6, "1250"},        {7, "32"},     {8, "TCP-C"},  {9, "L"},
            {10, "18"},    {11, "10.0.0.5"}, {12, "7000"},       {13, "2comp"}, {17, "123"},   {18, "51.5"},
            {19, "40.25"}, {28, "1e9"},      {29, "1700000001"}, {31, "3"},     {32, "1"},     {33, "2"},
            {34, "SLAVE"}, {35, "-17"},      {36, "64"},         {37, "512"},   {38, "IENA-1"}};
}

} // namespace

/// What the panel shows of the gateway's status lines.
class TstGatewayZrtStatus : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }

    void choicesOfTheForm();
    void statusIsShownAndSendsNothing();
    void guardDecides_data();
    void guardDecides();
    void unknownTextsLeaveTheControls();
    void indexBeyondTheListShowsNoEntry();
    void modeChangesTheFieldsOfTheTarget_data();
    void modeChangesTheFieldsOfTheTarget();
    void lampFollowsThePcmState_data();
    void lampFollowsThePcmState();
    void emptyFieldsEmptyTheTexts();
    void statusIsLogged();
    void settingsAreNotTakenFromTheStatus();
    void operatorIsNotDisturbed();
    void statusLeavesAnOpenListAlone();
    void statusResetsAControlTheGatewayIgnored();
    void statusIsAppliedWhileThePanelIsHidden();
    void fieldsCannotBeTyped();
    void promptAsksForTheStatus();
    void textsFromTheGatewayAreNoMarkup();
};

void TstGatewayZrtStatus::choicesOfTheForm()
{
    const GatewayPanel p(GatewayPanel::Link::Down);
    QVERIFY(p.isChecked("radioBigEndn") && !p.isChecked("radioLitleEndn"));
    QVERIFY(p.isChecked("radio16Bit") && !p.isChecked("radio18Bit"));
    QVERIFY(!p.isChecked("twoComp") && !p.isChecked("unsignedInt"));
    QVERIFY(!p.isShown("TcpPortDefault"));
    QVERIFY(p.isShown("extIpAddr") && p.isShown("extPort") && p.isShown("setExtAddress"));
}

void TstGatewayZrtStatus::statusIsShownAndSendsNothing()
{
    GatewayPanel p;
    const QSignalSpy rate(p.dialog.get(), &GatewayZRT::Signal_SetVXsamplingRate);
    const QSignalSpy samples(p.dialog.get(), &GatewayZRT::Signal_displayMinMax);
    const QSignalSpy server(p.dialog.get(), &GatewayZRT::Signal_sendIpDetails);
    const QSignalSpy connects(p.dialog.get(), &GatewayZRT::connectToGateway);
    p.receiveStatus(fullStatus());
    QCOMPARE(p.text("GtwVersion"), QStringLiteral("1.2.3"));
    QCOMPARE(p.text("SerialNo"), QStringLiteral("000123"));
    QCOMPARE(p.text("CoreTempBox"), QStringLiteral("51.5"));
    QCOMPARE(p.text("PCBTempBox"), QStringLiteral("40.25"));
    QCOMPARE(p.text("extIpAddr"), QStringLiteral("10.0.0.5"));
    QCOMPARE(p.text("extPort"), QStringLiteral("7000"));
    QCOMPARE(p.text("unixEpochField"), QStringLiteral("1700000001"));
    QCOMPARE(p.text("PTPStateLineEdit"), QStringLiteral("SLAVE"));
    QCOMPARE(p.text("accuracyPTP"), QStringLiteral("-17"));
    QCOMPARE(p.text("minBox"), QStringLiteral("64"));
    QCOMPARE(p.text("maxBox"), QStringLiteral("512"));
    QCOMPARE(p.index("comboSimultn"), 3);
    QCOMPARE(p.index("comboMode"), 4);
    QCOMPARE(p.index("comboActivCOM"), 3);
    QCOMPARE(p.index("comboPTP"), 2);
    QCOMPARE(p.index("comboBoxDataPtcl"), 1);
    QVERIFY(p.isChecked("radioLitleEndn") && p.isChecked("radio18Bit") && p.isChecked("twoComp"));
    QCOMPARE(p.marked(), QStringLiteral("32,1250"));
    QCOMPARE(p.lamp("PCM_Led"), QColor(Qt::green));
    QCOMPARE(p.takeLines(), QByteArray());
    p.receiveStatus({{8, "OFF"}, {9, "B"}, {10, "16"}, {13, "U"}, {38, "ZRT-1"}});
    QVERIFY(p.isChecked("radioBigEndn") && p.isChecked("radio16Bit") && p.isChecked("unsignedInt"));
    QCOMPARE(p.index("comboMode"), 5);
    QCOMPARE(p.index("comboBoxDataPtcl"), 0);
    p.time.advance(5000);
    QCOMPARE(p.takeLines(), QByteArray());
    QCOMPARE(rate.size() + samples.size() + server.size() + connects.size(), 0);
    QVERIFY(!QApplication::activeModalWidget());
}

void TstGatewayZrtStatus::guardDecides_data()
{
    QTest::addColumn<QByteArray>("guard");
    QTest::addColumn<QString>("version");
    QTest::newRow("1 changes nothing") << QByteArray("1") << QString();
    QTest::newRow("2 is applied") << QByteArray("2") << QStringLiteral("5.5");
    QTest::newRow("no number") << QByteArray("two") << QString();
}

void TstGatewayZrtStatus::guardDecides()
{
    QFETCH(QByteArray, guard);
    const GatewayPanel p;
    p.receiveStatus({{2, "5.5"}, {3, guard}});
    QTEST(p.text("GtwVersion"), "version");
}

void TstGatewayZrtStatus::unknownTextsLeaveTheControls()
{
    const GatewayPanel p;
    p.receiveStatus(fullStatus());
    p.receiveStatus({{8, "SCTP"}, {9, "M"}, {10, "24"}, {13, "float"}, {32, "?"}, {38, "ZRT-2"}});
    QCOMPARE(p.index("comboMode"), 4);
    QVERIFY(p.isChecked("radioLitleEndn") && p.isChecked("radio18Bit") && p.isChecked("twoComp"));
    QCOMPARE(p.lamp("PCM_Led"), QColor(Qt::green));
    QCOMPARE(p.index("comboBoxDataPtcl"), 1);
}

void TstGatewayZrtStatus::indexBeyondTheListShowsNoEntry()
{
    const GatewayPanel p;
    p.receiveStatus({{5, "9"}, {31, "4"}});
    QCOMPARE(p.index("comboSimultn"), -1);
    QCOMPARE(p.index("comboActivCOM"), -1);
    p.receiveStatus({{5, "-2"}, {31, "x"}});
    QCOMPARE(p.index("comboSimultn"), -1);
    QCOMPARE(p.index("comboActivCOM"), 0);
}

void TstGatewayZrtStatus::modeChangesTheFieldsOfTheTarget_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("mode");
    QTest::addColumn<bool>("isServer");
    for (const char *mode : {"UDP-B", "UDP-M", "UDP-U", "TCP-C"})
        QTest::newRow(mode) << QByteArray("TCP-S") << QByteArray(mode) << false;
    QTest::newRow("TCP-S") << QByteArray("UDP-B") << QByteArray("TCP-S") << true;
    QTest::newRow("off after a target") << QByteArray("UDP-U") << QByteArray("OFF") << false;
    QTest::newRow("off after the server") << QByteArray("TCP-S") << QByteArray("OFF") << true;
    QTest::newRow("unknown after the server") << QByteArray("TCP-S") << QByteArray("UDP-Q") << true;
}

void TstGatewayZrtStatus::modeChangesTheFieldsOfTheTarget()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, mode);
    QFETCH(bool, isServer);
    GatewayPanel p;
    p.receiveStatus({{8, before}});
    p.receiveStatus({{8, mode}});
    QCOMPARE(p.isShown("TcpPortDefault"), isServer);
    QCOMPARE(p.text("labelextPort"), isServer ? QStringLiteral("TCP Port") : QStringLiteral("Ext Port"));
    for (const char *name : {"extIpAddr", "extPort", "labelExtServrIP", "setExtAddress"})
        QCOMPARE(p.isShown(name), !isServer);
    QVERIFY(p.isShown("labelextPort"));
}

void TstGatewayZrtStatus::lampFollowsThePcmState_data()
{
    QTest::addColumn<QByteArray>("state");
    QTest::addColumn<QColor>("colour");
    QTest::newRow("X") << QByteArray("X") << QColor(Qt::gray);
    QTest::newRow("0") << QByteArray("0") << QColor(Qt::red);
    QTest::newRow("1") << QByteArray("1") << QColor(Qt::green);
}

void TstGatewayZrtStatus::lampFollowsThePcmState()
{
    QFETCH(QByteArray, state);
    QFETCH(QColor, colour);
    const GatewayPanel p;
    p.receiveStatus({{32, state == "0" ? "1" : "0"}}); // another one before
    const QString before = p.child("PCM_Led")->accessibleDescription();
    p.receiveStatus({{32, state}});
    QCOMPARE(p.lamp("PCM_Led"), colour);
    QVERIFY(p.child("PCM_Led")->accessibleDescription() != before);
    QCOMPARE(p.child("PCM_Led")->toolTip(), p.child("PCM_Led")->accessibleDescription());
}

void TstGatewayZrtStatus::emptyFieldsEmptyTheTexts()
{
    const GatewayPanel p;
    p.receiveStatus(fullStatus());
    p.receive("#S;;;2");
    QCOMPARE(p.text("GtwVersion"), QString());
    QCOMPARE(p.text("extIpAddr"), QString());
    QCOMPARE(p.text("SerialNo"), QStringLiteral("000000"));
    QCOMPARE(p.marked(), QString());
}

void TstGatewayZrtStatus::statusIsLogged()
{
    const GatewayPanel p;
    const MessageCatcher log;
    p.receiveStatus();
    QVERIFY(log.contains("From extract status"));
}

void TstGatewayZrtStatus::settingsAreNotTakenFromTheStatus()
{
    GatewayPanel p;
    p.receiveStatus(fullStatus()); // mode "TCP-C"
    p.dialog->modeComboBox(5);
    QCOMPARE(p.takeLines(), QByteArray("#009_UDP\r"));
}

void TstGatewayZrtStatus::operatorIsNotDisturbed()
{
    const GatewayPanel p;
    p.receiveStatus(fullStatus());
    p.child("comboPTP")->setFocus();
    auto *version = p.child<QLineEdit>("GtwVersion");
    version->setSelection(2, 3);
    QSignalSpy boxes(p.child<QComboBox>("comboSimultn"),
                     QMetaMethod::fromSignal(qOverload<int>(&QComboBox::currentIndexChanged)));
    QSignalSpy choices(p.child<QAbstractButton>("radio18Bit"), &QAbstractButton::toggled);
    for (int i = 0; i < 3; ++i)
        p.receiveStatus(fullStatus());
    QCOMPARE(version->selectedText(), QStringLiteral("2.3"));
    QCOMPARE(QApplication::focusWidget(), p.child("comboPTP"));
    QCOMPARE(boxes.size(), 0);
    QCOMPARE(choices.size(), 0);
}

void TstGatewayZrtStatus::statusLeavesAnOpenListAlone()
{
    GatewayPanel p;
    p.receiveStatus({{5, "2"}});
    auto *box = p.child<QComboBox>("comboSimultn");
    p.openList("comboSimultn");
    QTest::keyClick(box->view(), Qt::Key_Down);
    p.receiveStatus({{5, "2"}});
    QVERIFY(box->view()->isVisible());
    QTest::keyClick(box->view(), Qt::Key_Return);
    QTRY_VERIFY(!box->view()->isVisible());
    QCOMPARE(p.takeLines(), QByteArray("#006_3\r"));
}

void TstGatewayZrtStatus::statusResetsAControlTheGatewayIgnored()
{
    const GatewayPanel p;
    const GatewayPanel::Fields fields{{5, "3"}, {6, "2500"}, {7, "16"}, {10, "16"}};
    p.receiveStatus(fields);
    p.pick("comboSimultn", 7);
    p.click("radio18Bit");
    p.click("8,5000");
    QCOMPARE(p.marked(), QStringLiteral("8,5000"));
    p.receiveStatus(fields);
    QCOMPARE(p.index("comboSimultn"), 3);
    QVERIFY(p.isChecked("radio16Bit"));
    QCOMPARE(p.marked(), QStringLiteral("16,2500"));
}

void TstGatewayZrtStatus::statusIsAppliedWhileThePanelIsHidden()
{
    GatewayPanel p;
    p.dialog->close();
    p.receiveStatus(fullStatus());
    QCOMPARE(p.text("GtwVersion"), QStringLiteral("1.2.3"));
    QCOMPARE(p.index("comboMode"), 4);
}

void TstGatewayZrtStatus::fieldsCannotBeTyped()
{
    const GatewayPanel p;
    p.receiveStatus(fullStatus());
    for (const char *name : {"SerialNo", "GtwVersion", "unixEpochField", "PTPStateLineEdit", "accuracyPTP",
                             "CoreTempBox", "PCBTempBox", "minBox", "maxBox", "extIpAddr", "extPort"}) {
        const QString before = p.text(name);
        QTest::keyClicks(p.child(name), "77");
        QTest::keyClick(p.child(name), Qt::Key_Backspace);
        QCOMPARE(p.text(name), before);
    }
}

void TstGatewayZrtStatus::promptAsksForTheStatus()
{
    GatewayPanel p;
    p.receive("[ZRT GATEWAY]---->");
    QCOMPARE(p.takeLines(), QByteArray("#?\r"));
    p.dialog->Slot_OneSecTmrHndlr();
    QCOMPARE(p.takeLines(), QByteArray("#?\r"));
}

void TstGatewayZrtStatus::textsFromTheGatewayAreNoMarkup()
{
    const GatewayPanel p;
    p.receive("<h1>big</h1> & <b>bold</b>");
    QVERIFY(p.dialogue().endsWith("<h1>big</h1> & <b>bold</b>\n"));
}

QTEST_MAIN(TstGatewayZrtStatus)
#include "tst_gatewayzrt_status.moc"
