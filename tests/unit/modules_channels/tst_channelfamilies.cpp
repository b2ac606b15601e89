#include "stripfixture.h"
#include "support/messagecatcher.h"

#include <QLabel>

namespace {

const QStringList kBridgeControls{"label",
                                  "label_2",
                                  "checkBox_Shunt_Pos",
                                  "checkBox_Shunt_Neg",
                                  "checkBox_Shunt_Pos_Presel",
                                  "checkBox_Shunt_Neg_Presel",
                                  "pushButton_ManualOffset"};
/// The second press of a quick pair of clicks.
void secondPress(QWidget *widget, Qt::MouseButton button, Qt::KeyboardModifiers keys)
{
    const QPoint place = widget->rect().center();
    QMouseEvent press(QEvent::MouseButtonDblClick, place, widget->mapToGlobal(place), button, button, keys);
    QApplication::sendEvent(widget, &press);
}

const QString kUnknownFunction = QStringLiteral("!Error unknown channel module Type");

} // namespace

/// What tells the strips of the families apart: names, controls, log lines and stamps.
class TstChannelFamilies : public QObject
{
    Q_OBJECT

private slots:
    void stripIsNamed_data() { addFamilies({1, 2, 3, 4}); }
    void stripIsNamed();
    void controlsOfAFamily_data();
    void controlsOfAFamily();
    void toolTips_data() { addFamilies({1, 4}); }
    void toolTips();
    void statusMakesNoList_data() { addFamilies({1, 2, 3, 4}); }
    void statusMakesNoList();
    void autozeroButton_data() { addFamilies({1, 2, 4}); }
    void autozeroButton();
    void slotsAreReachableByName_data();
    void slotsAreReachableByName();

    void rightButtonIsLoggedByType1Only_data() { addFamilies({1, 2, 4}); }
    void rightButtonIsLoggedByType1Only();
    void secondPressOfTheRightButtonIsLoggedToo_data() { addFamilies({1, 2, 4}); }
    void secondPressOfTheRightButtonIsLoggedToo();
    void onlyTheLeftButtonMakesAGesture_data();
    void onlyTheLeftButtonMakesAGesture();
    void secondPressOfTheLeftButtonMakesAGesture_data() { addFamilies({1, 2, 4}); }
    void secondPressOfTheLeftButtonMakesAGesture();
    void shuntClicksAreLoggedByType4Only_data() { addFamilies({1, 4}); }
    void shuntClicksAreLoggedByType4Only();

    void functionShowsItsControls_data();
    void functionShowsItsControls();
    void functionStampsTheGroupCommand_data();
    void functionStampsTheGroupCommand();
    void stripWithoutAFunctionStampsNothing();
};

void TstChannelFamilies::stripIsNamed()
{
    QFETCH(int, family);
    const StripFixture s(family);
    QCOMPARE(s.strip->objectName(), QStringLiteral("ChannelType%1_View").arg(family));
    QCOMPARE(QString::fromLatin1(s.strip->metaObject()->className()), s.strip->objectName());
}

void TstChannelFamilies::controlsOfAFamily_data()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<QStringList>("controls");
    const QStringList bridge{"checkBox_Shunt_Neg",
                             "checkBox_Shunt_Neg_Presel",
                             "checkBox_Shunt_Pos",
                             "checkBox_Shunt_Pos_Presel",
                             "comboBox_BridgeType",
                             "comboBox_Gain",
                             "filterSpinBox",
                             "label",
                             "label_2",
                             "lineEdit_Level",
                             "pushButton_Autozero",
                             "pushButton_ManualOffset"};
    QTest::newRow("type 1") << 1 << bridge + QStringList{"checkBox_RevPol_100"};
    QTest::newRow("type 2") << 2
                            << QStringList{"checkBox_RevPol", "comboBox_BridgeType", "comboBox_RangeGain",
                                           "filterSpinBox",   "lineEdit_Level",      "pushButton_Autozero"};
    QTest::newRow("type 3") << 3
                            << QStringList{"comboBox_TemperatureRange", "comboBox_ThermoDeviceType",
                                           "filterSpinBox"};
    QTest::newRow("type 4") << 4 << bridge + QStringList{"checkBox_RevPol"};
}

void TstChannelFamilies::controlsOfAFamily()
{
    QFETCH(int, family);
    QFETCH(QStringList, controls);
    const StripFixture s(family);
    QStringList found;
    for (const QWidget *child : s.strip->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        found << child->objectName();
    found.sort();
    controls.sort();
    QCOMPARE(found, controls);
}

void TstChannelFamilies::toolTips()
{
    QFETCH(int, family);
    const StripFixture s(family);
    QCOMPARE(
        s.button("checkBox_Shunt_Pos")->toolTip(),
        QStringLiteral("activate 100 kohms shunt between positive input and bridge supply voltage (GND) for "
                       "20 seconds"));
    QCOMPARE(
        s.button("checkBox_Shunt_Neg")->toolTip(),
        QStringLiteral("activate 300 kohms shunt between negative input and bridge supply voltage (GND) for "
                       "20 seconds"));
    QCOMPARE(s.button("checkBox_Shunt_Pos_Presel")->toolTip(),
             QStringLiteral("If selected, 100 kohms shunt will be swiched by On/Off buttons above"));
    QCOMPARE(s.button("checkBox_Shunt_Neg_Presel")->toolTip(),
             QStringLiteral("If selected, 300 kohms shunt will be swiched by On/Off buttons above"));
    QCOMPARE(s.child<QLabel>("label")->text(), QStringLiteral("+"));
    QCOMPARE(s.child<QLabel>("label_2")->text(), QStringLiteral("-"));
}

/// Lists of hundreds of boxes that nobody opens would take time and memory.
void TstChannelFamilies::statusMakesNoList()
{
    QFETCH(int, family);
    StripFixture fixture(family);
    fixture.show();
    fixture.strip->setTypeIndex(1);
    fixture.strip->setRangeIndex(2);
    fixture.strip->setFilterValue(20);
    QVERIFY(!fixture.strip->findChildren<QComboBox *>().isEmpty());
    QVERIFY(fixture.strip->findChildren<QAbstractItemView *>().isEmpty());
}

void TstChannelFamilies::autozeroButton()
{
    QFETCH(int, family);
    const StripFixture s(family);
    QCOMPARE(s.autozero()->text(), QStringLiteral("Auto\nZero"));
    QCOMPARE(
        s.autozero()->toolTip(),
        QStringLiteral("<html><head/><body><p>Tooltip for AutoZero:</p><p>Left click: AutoZero command "
                       "<br/><br/>Long press: AutoZero reset<br/><br/>Shift+click: AutoZero at "
                       "all<br/>matching channels<br/><br/>Ctrl+click: AutoZero at all<br/>Ranges (takes "
                       "some time)</p></body></html>"));
    QCOMPARE(s.autozero()->toolTipDuration(), -1);
    QCOMPARE(s.autozero()->font().family(), QStringLiteral("Segoe UI"));
    QCOMPARE(s.autozero()->font().pixelSize(), 12);
}

void TstChannelFamilies::slotsAreReachableByName_data()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<QByteArrayList>("signatures");
    const QByteArrayList amplifier{"on_comboBox_BridgeType_activated(int)",
                                   "on_pushButton_Autozero_pressed()",
                                   "on_pushButton_Autozero_released()",
                                   "tmrSlot()",
                                   "filterSpinBox_EditingFinished()",
                                   "Slot_spinBoxEnterPress()",
                                   "Slot_filterBoxTextAltered(QString)",
                                   "Slot_RangeShiftClick()",
                                   "Slot_FilterShiftEnter()"};
    const QByteArrayList bridge{"on_comboBox_Gain_activated(int)",
                                "on_pushButton_ManualOffset_clicked()",
                                "on_checkBox_Shunt_Pos_clicked(bool)",
                                "on_checkBox_Shunt_Neg_clicked(bool)",
                                "on_checkBox_Shunt_Pos_Presel_clicked(bool)",
                                "on_checkBox_Shunt_Neg_Presel_clicked(bool)",
                                "Slot_BridgeShiftClick()",
                                "Slot_ShuntPostivTmr()",
                                "Slot_ShuntNegativTmr()",
                                "Slot_LoadPresel()"};
    QTest::newRow("type 1") << 1
                            << amplifier + bridge + QByteArrayList{"on_checkBox_RevPol_100_clicked(bool)"};
    QTest::newRow("type 2") << 2
                            << amplifier + QByteArrayList{"on_comboBox_RangeGain_activated(int)",
                                                          "on_checkBox_RevPol_clicked(bool)",
                                                          "Slot_FilterShiftClick()"};
    QTest::newRow("type 3") << 3
                            << QByteArrayList{"on_comboBox_ThermoDeviceType_activated(int)",
                                              "on_comboBox_TemperatureRange_activated(int)",
                                              "filterSpinBox_EditingFinished()", "Slot_FilterShiftClick()",
                                              "Slot_RangeShiftClick()"};
    QTest::newRow("type 4") << 4 << amplifier + bridge + QByteArrayList{"on_checkBox_RevPol_clicked(bool)"};
}

void TstChannelFamilies::slotsAreReachableByName()
{
    QFETCH(int, family);
    QFETCH(QByteArrayList, signatures);
    const StripFixture s(family);
    for (const QByteArray &signature : signatures)
        QVERIFY2(s.strip->metaObject()->indexOfSlot(signature) >= 0, signature.constData());
}

void TstChannelFamilies::rightButtonIsLoggedByType1Only()
{
    QFETCH(int, family);
    StripFixture s(family);
    s.show();
    MessageCatcher log;
    QTest::mouseClick(s.autozero(), Qt::RightButton);
    QCOMPARE(log.contains("Mouse right button click triggered"), family == 1);
    QCOMPARE(log.lines().size(), family == 1 ? 1 : 0);
    QCOMPARE(s.recorder->take(), QStringList());
    QCOMPARE(s.autozero()->styleSheet(), kBlack);
    log.clear();
    s.holdAutozero(0);
    QVERIFY(!log.contains("Mouse right button click triggered"));
}

void TstChannelFamilies::secondPressOfTheRightButtonIsLoggedToo()
{
    QFETCH(int, family);
    StripFixture s(family);
    s.show();
    MessageCatcher log;
    secondPress(s.autozero(), Qt::RightButton, Qt::NoModifier);
    QCOMPARE(log.lines(), family == 1 ? QStringList("Mouse right button click triggered") : QStringList());
}

void TstChannelFamilies::onlyTheLeftButtonMakesAGesture_data()
{
    QTest::addColumn<int>("family");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("sent");
    for (const int family : {1, 2, 4})
        QTest::addRow("type %d, Auto Zero", family) << family << "pushButton_Autozero"
                                                    << "Signal_SendAutozero(true)";
    for (const int family : {1, 4}) {
        QTest::addRow("type %d, positive shunt", family) << family << "checkBox_Shunt_Pos"
                                                         << "Signal_SendShuntState(131)";
        QTest::addRow("type %d, negative shunt", family) << family << "checkBox_Shunt_Neg"
                                                         << "Signal_SendShuntState(137)";
    }
}

void TstChannelFamilies::onlyTheLeftButtonMakesAGesture()
{
    QFETCH(int, family);
    QFETCH(QString, button);
    QFETCH(QString, sent);
    StripFixture s(family);
    s.show();
    QPushButton *control = s.button(button.toLatin1().constData());
    for (const Qt::MouseButton other : {Qt::RightButton, Qt::MiddleButton}) {
        for (const Qt::KeyboardModifier key : {Qt::ShiftModifier, Qt::AltModifier}) {
            QTest::mouseClick(control, other, key);
            secondPress(control, other, key);
        }
    }
    QCOMPARE(s.recorder->take(), QStringList());
    QTest::mouseClick(control, Qt::LeftButton);
    QCOMPARE(s.recorder->take(), QStringList(sent));
}

void TstChannelFamilies::secondPressOfTheLeftButtonMakesAGesture()
{
    QFETCH(int, family);
    StripFixture s(family);
    s.show();
    secondPress(s.autozero(), Qt::LeftButton, Qt::ShiftModifier);
    QTest::mouseRelease(s.autozero(), Qt::LeftButton, Qt::ShiftModifier);
    QCOMPARE(s.recorder->take(), QStringList(s.groupSignal(2)));
}

void TstChannelFamilies::shuntClicksAreLoggedByType4Only()
{
    QFETCH(int, family);
    StripFixture s(family);
    s.show();
    MessageCatcher log;
    QTest::mouseClick(s.button("checkBox_Shunt_Pos"), Qt::LeftButton);
    QCOMPARE(log.lines(), family == 4 ? QStringList("Positiv Check box clicked value") : QStringList());
    log.clear();
    s.strip->disableUpdates();
    QTest::mouseClick(s.button("checkBox_Shunt_Neg"), Qt::LeftButton);
    QCOMPARE(log.lines(), family == 4 ? QStringList("Negative Check box clicked value") : QStringList());
}

void TstChannelFamilies::functionShowsItsControls_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<bool>("bridge");
    QTest::addColumn<bool>("known");
    QTest::newRow("1 strain gauge") << 1 << true << true;
    QTest::newRow("2 voltage") << 2 << false << true;
    QTest::newRow("3 IEPE") << 3 << false << true;
    QTest::newRow("5 XVDT") << 5 << false << true;
    QTest::newRow("6 potentiometer") << 6 << false << true;
    QTest::newRow("8 auxiliary") << 8 << false << true;
    QTest::newRow("0 unknown") << 0 << true << false;
    QTest::newRow("4 thermo") << 4 << true << false;
    QTest::newRow("7 current loop") << 7 << true << false;
    QTest::newRow("9 universal") << 9 << true << false;
    QTest::newRow("255") << 255 << true << false;
}

void TstChannelFamilies::functionShowsItsControls()
{
    QFETCH(int, code);
    QFETCH(bool, bridge);
    QFETCH(bool, known);
    StripFixture s(4);
    s.show();
    auto *strip = qobject_cast<ChannelType4_View *>(s.strip);
    for (const int before : {1, 2}) {
        strip->setFunction(quint8(before));
        MessageCatcher log;
        strip->setFunction(quint8(code));
        QCOMPARE(strip->channelFunction(), quint8(code));
        QCOMPARE(log.lines(), known ? QStringList() : QStringList(kUnknownFunction));
        for (const QString &name : kBridgeControls) {
            const auto *control = s.child<QWidget>(name.toLatin1().constData());
            QVERIFY2(control->isVisible() == bridge, qPrintable(name));
        }
        for (const QWidget *control : std::initializer_list<const QWidget *>{
                 s.typeBox(), s.rangeBox(), s.autozero(), s.filterBox(), s.polarity()})
            QVERIFY2(control->isVisible(), qPrintable(control->objectName()));
        QVERIFY(s.child<QLineEdit>("lineEdit_Level")->isHidden());
    }
    QCOMPARE(s.recorder->take(), QStringList());
}

void TstChannelFamilies::functionStampsTheGroupCommand_data()
{
    QTest::addColumn<int>("code");
    for (const int code : {1, 2, 3, 6})
        QTest::addRow("%d", code) << code;
}

void TstChannelFamilies::functionStampsTheGroupCommand()
{
    QFETCH(int, code);
    StripFixture s(4);
    s.show();
    qobject_cast<ChannelType4_View *>(s.strip)->setFunction(quint8(code));
    s.pick(s.typeBox(), 1, Qt::ShiftModifier);
    s.pick(s.rangeBox(), 2, Qt::ShiftModifier);
    s.holdAutozero(0, Qt::ShiftModifier);
    s.type(s.filterBox(), QStringLiteral("400"));
    QTest::keyClick(s.filterBox(), Qt::Key_Return, Qt::ShiftModifier);
    s.holdAutozero(2000, Qt::ShiftModifier);
    QStringList expected;
    for (const char *rest : {"0,1", "1,2", "2,0", "3,400", "5,0"})
        expected << QStringLiteral("Signal_ShiftClickCommand(%1,%2)").arg(code).arg(rest);
    QStringList groups = s.recorder->take().filter("Signal_ShiftClickCommand");
    QCOMPARE(groups, expected);
}

void TstChannelFamilies::stripWithoutAFunctionStampsNothing()
{
    StripFixture s(4);
    s.show();
    QCOMPARE(qobject_cast<ChannelType4_View *>(s.strip)->channelFunction(), quint8(0));
    s.holdAutozero(0, Qt::ShiftModifier);
    QCOMPARE(s.recorder->take(), QStringList("Signal_ShiftClickCommand(0,2,0)"));
}

QTEST_MAIN(TstChannelFamilies)
#include "tst_channelfamilies.moc"
