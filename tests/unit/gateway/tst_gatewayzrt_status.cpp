#include "base/gui/fonts.h"
#include "gatewaypanel.h"
#include "support/messagecatcher.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QScrollBar>
#include <QtTest>

namespace {

GatewayPanel::Fields fullStatus()
{
    return {{2, "1.2.3"},  {5, "3"},         {6, "1250"},        {7, "32"},     {8, "TCP-C"},  {9, "L"},
            {10, "18"},    {11, "10.0.0.5"}, {12, "7000"},       {13, "2comp"}, {17, "123"},   {18, "51.5"},
            {19, "40.25"}, {28, "1e9"},      {29, "1700000001"}, {31, "3"},     {32, "1"},     {33, "2"},
            {34, "SLAVE"}, {35, "-17"},      {36, "64"},         {37, "512"},   {38, "IENA-1"}};
}

bool isChecked(const GatewayPanel &p, const char *name)
{
    return p.child<QAbstractButton>(name)->isChecked();
}

int index(const GatewayPanel &p, const char *name)
{
    return p.child<QComboBox>(name)->currentIndex();
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
    void lampFollowsThePcmState_data();
    void lampFollowsThePcmState();
    void emptyFieldsEmptyTheTexts();
    void statusIsLogged();
    void settingsAreNotTakenFromTheStatus();
    void operatorIsNotDisturbed();
    void openListStaysOpen();
    void fieldsCannotBeTyped();
    void promptAsksForTheStatus();
    void textsFromTheGatewayAreNoMarkup();
};

void TstGatewayZrtStatus::choicesOfTheForm()
{
    const GatewayPanel p(GatewayPanel::Link::Down);
    QVERIFY(isChecked(p, "radioBigEndn") && !isChecked(p, "radioLitleEndn"));
    QVERIFY(isChecked(p, "radio16Bit") && !isChecked(p, "radio18Bit"));
    QVERIFY(!isChecked(p, "twoComp") && !isChecked(p, "unsignedInt"));
}

void TstGatewayZrtStatus::statusIsShownAndSendsNothing()
{
    GatewayPanel p;
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
    QCOMPARE(index(p, "comboSimultn"), 3);
    QCOMPARE(index(p, "comboMode"), 4);
    QCOMPARE(index(p, "comboActivCOM"), 3);
    QCOMPARE(index(p, "comboPTP"), 2);
    QCOMPARE(index(p, "comboBoxDataPtcl"), 1);
    QVERIFY(isChecked(p, "radioLitleEndn") && isChecked(p, "radio18Bit") && isChecked(p, "twoComp"));
    QCOMPARE(p.marked(), QStringLiteral("32,1250"));
    QCOMPARE(p.lamp("PCM_Led"), QColor(Qt::green));
    QCOMPARE(p.takeLines(), QByteArray());
    p.receiveStatus({{8, "OFF"}, {9, "B"}, {10, "16"}, {13, "U"}, {38, "ZRT-1"}});
    QVERIFY(isChecked(p, "radioBigEndn") && isChecked(p, "radio16Bit") && isChecked(p, "unsignedInt"));
    QCOMPARE(index(p, "comboMode"), 5);
    QCOMPARE(index(p, "comboBoxDataPtcl"), 0);
    QCOMPARE(p.takeLines(), QByteArray());
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
    QCOMPARE(index(p, "comboMode"), 4);
    QVERIFY(isChecked(p, "radioLitleEndn") && isChecked(p, "radio18Bit") && isChecked(p, "twoComp"));
    QCOMPARE(p.lamp("PCM_Led"), QColor(Qt::green));
    QCOMPARE(index(p, "comboBoxDataPtcl"), 1);
}

void TstGatewayZrtStatus::indexBeyondTheListShowsNoEntry()
{
    const GatewayPanel p;
    p.receiveStatus({{5, "9"}, {31, "4"}});
    QCOMPARE(index(p, "comboSimultn"), -1);
    QCOMPARE(index(p, "comboActivCOM"), -1);
    p.receiveStatus({{5, "-2"}, {31, "x"}});
    QCOMPARE(index(p, "comboSimultn"), -1);
    QCOMPARE(index(p, "comboActivCOM"), 0);
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
    const QPalette palette = p.child("PCM_Led")->palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        QCOMPARE(palette.color(group, QPalette::Base), colour);
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

void TstGatewayZrtStatus::openListStaysOpen()
{
    const GatewayPanel p;
    p.receiveStatus(fullStatus());
    auto *box = p.child<QComboBox>("comboSimultn");
    box->showPopup();
    box->view()->setCurrentIndex(box->model()->index(7, 0));
    p.receiveStatus(fullStatus());
    QVERIFY(box->view()->isVisible());
    QCOMPARE(box->view()->currentIndex().row(), 7);
    box->hidePopup();
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
