#include "controller/mydoublespinbox.h"
#include "controllerrow.h"
#include "support/messagecatcher.h"
#include "support/plainlog.h"

#include <QComboBox>
#include <QGroupBox>
#include <QtTest>

namespace {

/// Enabled controls of the output voltage.
QString enabledControls(const Row &row)
{
    QStringList names;
    for (const char *name : {"doubleSpinBox_OutputVoltage", "comboBox_OutputVoltageMode"}) {
        if (row.child<QWidget>(name)->isEnabled())
            names.append(QString::fromLatin1(name));
    }
    return names.join(QLatin1Char(','));
}

const QString kBothControls = QStringLiteral("doubleSpinBox_OutputVoltage,comboBox_OutputVoltageMode");

QString setpoint(const Row &row)
{
    return row.child<MyDoubleSpinBox>("doubleSpinBox_OutputVoltage")->text();
}

int mode(const Row &row)
{
    return row.child<QComboBox>("comboBox_OutputVoltageMode")->currentIndex();
}

} // namespace

/// What the report of the power module does to its part of the top row.
class TstPowerStatusRow : public QObject
{
    Q_OBJECT

private slots:
    void settingsBeginAsAgreed();
    void captionsStandInTheirGroup();
    void boxesAreDisabledBeforeTheFirstReport();
    void boxesAreEnabledByTheFirstReport();
    void otherReportsEnableNothing_data();
    void otherReportsEnableNothing();
    void reportIsShownWhole();
    void setpointFollowsTheMode_data();
    void setpointFollowsTheMode();
    void setpointIsBroughtIntoTheRangeOfTheBox_data();
    void setpointIsBroughtIntoTheRangeOfTheBox();
    void laterReportReplacesAnEarlierOne();
    void reportRaisesNoCommand();
    void modeOtherThanFixedIsShownAsAuto_data();
    void modeOtherThanFixedIsShownAsAuto();
    void protectionIsShownByName_data();
    void protectionIsShownByName();
    void linesComeInTheirOrder();
    void firmwareIsCheckedAfterAllElse();
    void emptySerialNumberChangesNoSetting();
    void emptySerialNumberStopsNoPendingSetpoint();
};

void TstPowerStatusRow::settingsBeginAsAgreed()
{
    const Row row;
    const auto *box = row.child<MyDoubleSpinBox>("doubleSpinBox_OutputVoltage");
    QCOMPARE(box->minimum(), 5.0);
    QCOMPARE(box->maximum(), 20.0);
    QCOMPARE(box->singleStep(), 0.1);
    QCOMPARE(box->decimals(), 1);
    const auto *modes = row.child<QComboBox>("comboBox_OutputVoltageMode");
    QCOMPARE(modes->count(), 2);
    QCOMPARE(modes->itemText(0), QStringLiteral("fixed"));
    QCOMPARE(modes->itemText(1), QStringLiteral("auto"));
    QCOMPARE(row.text("label_Protection"), QStringLiteral("updating"));
}

void TstPowerStatusRow::captionsStandInTheirGroup()
{
    const Row row;
    const auto *group = row.child<QGroupBox>("groupBox_OutputVoltage");
    QCOMPARE(group->title(), QStringLiteral("Output Voltage Settings"));
    for (const char *name : {"doubleSpinBox_OutputVoltage", "comboBox_OutputVoltageMode", "label_Protection"})
        QVERIFY2(group->isAncestorOf(row.child<QWidget>(name)), name);
    QStringList captions;
    const auto labels = row.controller->GetView()->findChildren<QLabel *>();
    for (const QLabel *label : labels)
        captions.append(label->text());
    for (const char *caption :
         {"Setpoint [V]", "Mode", "Protection:", "Output Load Current", "Rectified Input Supply Voltage"})
        QVERIFY2(captions.count(QString::fromLatin1(caption)) == 1, caption);
}

void TstPowerStatusRow::boxesAreDisabledBeforeTheFirstReport()
{
    Row row;
    QCOMPARE(enabledControls(row), QString());
    row.take(Fast_System_Status());
    row.take(moduleStatus(kControllerType, "01.00"));
    row.take(moduleStatus(kPowerType, "01.00")); // the identity of a power module, not its settings
    QCOMPARE(enabledControls(row), QString());
    QCOMPARE(row.text("label_Protection"), QStringLiteral("updating"));
}

void TstPowerStatusRow::boxesAreEnabledByTheFirstReport()
{
    Row row;
    row.take(outputStatus(0, 12000, 13000));
    QCOMPARE(enabledControls(row), kBothControls);
}

void TstPowerStatusRow::otherReportsEnableNothing_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("serialNumber");
    QTest::newRow("of the controller") << 100 << "4711";
    QTest::newRow("of another module") << 7 << "4711";
    QTest::newRow("of type 0") << 0 << "4711";
    QTest::newRow("no power module answers") << 120 << "";
}

void TstPowerStatusRow::otherReportsEnableNothing()
{
    QFETCH(int, type);
    QFETCH(QString, serialNumber);
    Row row;
    Power_Status status = outputStatus(1, 12000, 13000, 2);
    status.moduleType = static_cast<quint8>(type);
    status.serialNumber = serialNumber;
    row.take(status);
    QCOMPARE(enabledControls(row), QString());
    QCOMPARE(row.text("label_Protection"), QStringLiteral("updating"));
    QCOMPARE(row.text("label_SerialNumber_Pow"), QStringLiteral("S/N XXXXXXX"));
    QCOMPARE(int(row.controller->model().power.voltageMode), 0);
    QCOMPARE(int(row.controller->model().power.protectionMode), 0);
}

void TstPowerStatusRow::reportIsShownWhole()
{
    Row row;
    row.take(outputStatus(1, 12000, 8400, 2));
    QCOMPARE(row.button("pushButton_powModType"), QStringLiteral("Power"));
    QCOMPARE(row.text("label_SerialNumber_Pow"), QStringLiteral("S/N 4712"));
    QCOMPARE(mode(row), 1);
    QCOMPARE(setpoint(row), QStringLiteral("8.4"));
    QCOMPARE(row.text("label_Protection"), QStringLiteral("mission critical"));
    QCOMPARE(int(row.controller->model().power.voltageMode), 1);
    QCOMPARE(int(row.controller->model().power.protectionMode), 2);
}

void TstPowerStatusRow::setpointFollowsTheMode_data()
{
    QTest::addColumn<int>("powerMode");
    QTest::addColumn<QString>("shown");
    QTest::newRow("fixed") << 0 << "12.3";
    QTest::newRow("auto") << 1 << "8.4";
    QTest::newRow("unknown mode") << 2 << "8.4";
    QTest::newRow("highest mode") << 255 << "8.4";
}

void TstPowerStatusRow::setpointFollowsTheMode()
{
    QFETCH(int, powerMode);
    Row row;
    row.take(outputStatus(powerMode, 12300, 8400));
    QTEST(setpoint(row), "shown");
}

void TstPowerStatusRow::setpointIsBroughtIntoTheRangeOfTheBox_data()
{
    QTest::addColumn<int>("millivolts");
    QTest::addColumn<QString>("shown");
    QTest::newRow("0") << 0 << "5.0";
    QTest::newRow("4900") << 4900 << "5.0";
    QTest::newRow("5000") << 5000 << "5.0";
    QTest::newRow("5100") << 5100 << "5.1";
    QTest::newRow("20000") << 20000 << "20.0";
    QTest::newRow("65535") << 65535 << "20.0";
}

void TstPowerStatusRow::setpointIsBroughtIntoTheRangeOfTheBox()
{
    QFETCH(int, millivolts);
    Row row;
    row.take(outputStatus(0, 10000, 0)); // another value first
    row.take(outputStatus(0, millivolts, 0));
    QTEST(setpoint(row), "shown");
}

void TstPowerStatusRow::laterReportReplacesAnEarlierOne()
{
    Row row;
    row.take(outputStatus(1, 12300, 8400, 2));
    row.take(outputStatus(0, 12400, 8500, 1));
    QCOMPARE(mode(row), 0);
    QCOMPARE(setpoint(row), QStringLiteral("12.4"));
    QCOMPARE(row.text("label_Protection"), QStringLiteral("derating"));
    QCOMPARE(int(row.controller->model().power.voltageMode), 0);
    QCOMPARE(int(row.controller->model().power.protectionMode), 1);
    QCOMPARE(enabledControls(row), kBothControls);
}

void TstPowerStatusRow::reportRaisesNoCommand()
{
    Row row;
    row.take(outputStatus(1, 12300, 8400, 2));
    row.take(outputStatus(0, 12400, 8500, 1));
    row.time.advance(10000);
    QCOMPARE(row.takeSettings(), QStringList());
}

void TstPowerStatusRow::modeOtherThanFixedIsShownAsAuto_data()
{
    QTest::addColumn<int>("code");
    QTest::newRow("auto") << 1;
    QTest::newRow("first beyond the box") << 2;
    QTest::newRow("highest") << 255;
}

void TstPowerStatusRow::modeOtherThanFixedIsShownAsAuto()
{
    QFETCH(int, code);
    Row row;
    row.take(outputStatus(0, 12300, 8400));
    QCOMPARE(row.child<QComboBox>("comboBox_OutputVoltageMode")->currentText(), QStringLiteral("fixed"));
    row.take(outputStatus(code, 12300, 8400));
    QCOMPARE(row.child<QComboBox>("comboBox_OutputVoltageMode")->currentText(), QStringLiteral("auto"));
    QCOMPARE(int(row.controller->model().power.voltageMode), code); // as reported
    QCOMPARE(row.takeSettings(), QStringList());
}

void TstPowerStatusRow::protectionIsShownByName_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("text");
    QTest::newRow("0") << 0 << "standard";
    QTest::newRow("1") << 1 << "derating";
    QTest::newRow("2") << 2 << "mission critical";
    QTest::newRow("3") << 3 << "none";
    QTest::newRow("4") << 4 << "4";
    QTest::newRow("7") << 7 << "7";
    QTest::newRow("255") << 255 << "255";
}

void TstPowerStatusRow::protectionIsShownByName()
{
    QFETCH(int, code);
    Row row;
    row.take(outputStatus(0, 12000, 12000, code));
    QTEST(row.text("label_Protection"), "text");
    QCOMPARE(int(row.controller->model().power.protectionMode), code);
}

void TstPowerStatusRow::linesComeInTheirOrder()
{
    Row row;
    const MessageCatcher log;
    row.take(outputStatus(1, 12300, 8400, 2));
    const QString text = plainLog(log.lines());
    int from = 0;
    for (const char *part :
         {"retrieved StaticPowerStatus with module type = Power",
          "void ModuleController_View::SetOutputVoltageMode(int) : 1", "fixed_voltage = 12300",
          ", auto_voltage = 8400", "Power mode = 1", "Power protection = 2"}) {
        const int place = text.indexOf(QLatin1String(part), from);
        QVERIFY2(place >= 0, qPrintable(QLatin1String(part) + QStringLiteral(" is not in ") + text));
        from = place;
    }
}

void TstPowerStatusRow::firmwareIsCheckedAfterAllElse()
{
    Row row;
    row.take(moduleStatus(kControllerType, "01.00"));
    const MessageCatcher log;
    QString shown;
    QString lines;
    connect(row.controller.get(), &ModuleController_Ctrllr::Signal_FirmwareMismatch, this, [&] {
        shown = setpoint(row) + QLatin1Char('|') + row.text("label_Protection");
        lines = plainLog(log.lines());
    });
    row.take(outputStatus(0, 12300, 8400, 1)); // its firmware is an empty text
    QCOMPARE(row.mismatch.count(), 1);
    QCOMPARE(shown, QStringLiteral("12.3|derating"));
    QVERIFY(lines.contains(QStringLiteral("Power protection = 1")));
}

void TstPowerStatusRow::emptySerialNumberChangesNoSetting()
{
    Row row;
    row.take(outputStatus(1, 12300, 8400, 2));
    const MessageCatcher log;
    Power_Status none = outputStatus(0, 9000, 9000, 1);
    none.serialNumber.clear();
    row.take(none);
    QVERIFY(row.powerIsHidden());
    QCOMPARE(mode(row), 1);
    QCOMPARE(setpoint(row), QStringLiteral("8.4"));
    QCOMPARE(row.text("label_Protection"), QStringLiteral("mission critical"));
    QCOMPARE(int(row.controller->model().power.voltageMode), 1);
    QVERIFY(!log.containsText(QStringLiteral("retrieved StaticPowerStatus with module type = Power")));
    QVERIFY(!log.containsText(QStringLiteral("fixed_voltage =")));
}

void TstPowerStatusRow::emptySerialNumberStopsNoPendingSetpoint()
{
    Row row;
    row.take(outputStatus(0, 12300, 8400));
    row.controller->Slot_OutputVoltageSetpointChanged(9.5);
    row.take(powerStatus(kPowerType, "01.00", ""));
    row.time.advance(2000);
    QCOMPARE(row.takeSettings(), QStringList{QStringLiteral("1 0x10 9500")});
}

QTEST_MAIN(TstPowerStatusRow)
#include "tst_powerstatus_row.moc"
