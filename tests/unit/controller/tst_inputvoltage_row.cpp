#include "controllerrow.h"

#include <QProgressBar>
#include <QtTest>
#include <limits>

namespace {

const QString kRed = QStringLiteral("QProgressBar::chunk {background:red;} QProgressBar {border: 1px solid "
                                    "grey;border-radius: 3px;}");
const QString kGreen = QStringLiteral("QProgressBar::chunk {background:#00dd00;} QProgressBar {border: 1px "
                                      "solid grey;border-radius: 3px;}");
const QString kBlue = QStringLiteral("QProgressBar::chunk {background:#0000ff;} QProgressBar {border: 1px "
                                     "solid grey;border-radius: 3px;}");

/// `voltage` in 1/100 V, `outputVoltage` in 1/1000 V, `loadCurrent` in 1/2000 A.
Fast_System_Status fastStatus(int voltage, int outputVoltage = 0, int loadCurrent = 0, int flags = 0)
{
    Fast_System_Status status;
    status.voltageRaw = static_cast<quint16>(voltage);
    status.outputVoltageRaw = static_cast<quint16>(outputVoltage);
    status.loadCurrentRaw = static_cast<quint16>(loadCurrent);
    status.statusFlags = static_cast<quint8>(flags);
    return status;
}

Module_Status limitsStatus(const QByteArray &list, const char *serialNumber = "4712", int type = kPowerType)
{
    Module_Status status = moduleStatus(type, "01.00", serialNumber);
    status.rangeList = QString::fromLatin1(list);
    return status;
}

QProgressBar *voltageBar(const Row &row)
{
    return row.child<QProgressBar>("progressBar_InputVoltage");
}

QProgressBar *currentBar(const Row &row)
{
    return row.child<QProgressBar>("progressBar_LoadCurrent");
}

/// The limits in force, in volts: low, high, maximum, lower limit.
QString limits(const Row &row)
{
    const PowerLimits &l = row.controller->model().power.limits;
    QStringList texts;
    for (const float volts :
         {l.inputVoltageLow, l.inputVoltageHigh, l.inputVoltageMaximum, l.lowerVoltageLimit})
        texts.append(QString::number(double(volts), 'g', 5));
    return texts.join(QLatin1Char(' '));
}

const QString kFirstLimits = QStringLiteral("7 50 60 0");

} // namespace

/// What the cyclic status shows of the power module: input voltage, load current and the status flag.
class TstInputVoltageRow : public QObject
{
    Q_OBJECT

private slots:
    void barsBeginAtZero();
    void voltageColoursItsBar_data();
    void voltageColoursItsBar();
    void voltageIsShown_data();
    void voltageIsShown();
    void currentIsShown_data();
    void currentIsShown();
    void outputPowerIsTheProduct_data();
    void outputPowerIsTheProduct();
    void statusOfAWrongTypeReadsAsZero();
    void statusFlagIsBit0_data();
    void statusFlagIsBit0();
    void statusFlagMarksTheTemperature();
    void statusFlagTakenBackRestoresTheTemperature();
    void statusFlagLeavesTheControllersTemperature();
    void reportedLimitsAreTakenOver_data();
    void reportedLimitsAreTakenOver();
    void limitsTurnTheBarBlueUntilTheNextStatus();
    void limitsMoveTheColours_data();
    void limitsMoveTheColours();
    void limitsMoveTheScale();
    void valueBeyondTheNewScaleFillsTheBar();
    void scaleStaysUsable_data();
    void scaleStaysUsable();
    void barsHaveNoText();
    void shortListSetsItsEntriesAndTheBar();
    void limitsWithoutSerialNumberAreSkipped();
    void limitsOfAnotherModuleAreSkipped();
};

void TstInputVoltageRow::barsBeginAtZero()
{
    const Row row;
    QCOMPARE(voltageBar(row)->value(), 0);
    QCOMPARE(voltageBar(row)->minimum(), 0);
    QCOMPARE(voltageBar(row)->maximum(), 60);
    QVERIFY(!voltageBar(row)->isTextVisible());
    QCOMPARE(voltageBar(row)->styleSheet(), kGreen);
    QCOMPARE(currentBar(row)->value(), 0);
    QCOMPARE(currentBar(row)->minimum(), 0);
    QCOMPARE(currentBar(row)->maximum(), 5000);
    QVERIFY(!currentBar(row)->isTextVisible());
    QCOMPARE(limits(row), kFirstLimits);
    QVERIFY(!row.controller->model().power.limitsReceived);
}

void TstInputVoltageRow::voltageColoursItsBar_data()
{
    QTest::addColumn<int>("raw");
    QTest::addColumn<QString>("style");
    QTest::newRow("0 V") << 0 << kRed;
    QTest::newRow("6.99 V") << 699 << kRed;
    QTest::newRow("7.0 V is a fault") << 700 << kRed;
    QTest::newRow("7.01 V is good") << 701 << kGreen;
    QTest::newRow("24 V") << 2400 << kGreen;
    QTest::newRow("49.99 V is good") << 4999 << kGreen;
    QTest::newRow("50.0 V is a fault") << 5000 << kRed;
    QTest::newRow("50.01 V") << 5001 << kRed;
    QTest::newRow("655.35 V") << 65535 << kRed;
}

void TstInputVoltageRow::voltageColoursItsBar()
{
    QFETCH(int, raw);
    QFETCH(QString, style);
    Row row;
    row.take(fastStatus(style == kRed ? 2400 : 0)); // the other colour first
    QVERIFY(voltageBar(row)->styleSheet() != style);
    row.take(fastStatus(raw));
    QCOMPARE(voltageBar(row)->styleSheet(), style);
}

void TstInputVoltageRow::voltageIsShown_data()
{
    QTest::addColumn<int>("raw");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("bar");
    QTest::newRow("0 V") << 0 << "0.0" << 0;
    QTest::newRow("24 V") << 2400 << "24.0" << 24;
    QTest::newRow("one decimal") << 2340 << "23.4" << 23;
    QTest::newRow("below the end of the scale") << 5900 << "59.0" << 59;
    QTest::newRow("the end of the scale") << 6000 << "60.0" << 60;
    QTest::newRow("beyond the scale") << 6100 << "61.0" << 60;
    QTest::newRow("far beyond the scale") << 65500 << "655.0" << 60;
}

void TstInputVoltageRow::voltageIsShown()
{
    QFETCH(int, raw);
    QFETCH(int, bar);
    Row row;
    row.take(fastStatus(1000));
    row.take(fastStatus(raw));
    QTEST(row.text("label_InputVoltage"), "text");
    QCOMPARE(voltageBar(row)->value(), bar);
    QCOMPARE(row.controller->model().power.inputVoltage, static_cast<float>(raw) / 100);
}

void TstInputVoltageRow::currentIsShown_data()
{
    QTest::addColumn<int>("raw");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("bar");
    QTest::newRow("0 A") << 0 << "0.000" << 0;
    // The float product of these lies a little below the whole step.
    QTest::newRow("0.005 A") << 10 << "0.005" << 5;
    QTest::newRow("4.996 A") << 9992 << "4.996" << 4996;
    QTest::newRow("parts of a step are cut") << 9993 << "4.997" << 4996;
    QTest::newRow("three decimals") << 250 << "0.125" << 125;
    QTest::newRow("0.25 A") << 500 << "0.250" << 250;
    QTest::newRow("1.5 A") << 3000 << "1.500" << 1500;
    QTest::newRow("4.875 A") << 9750 << "4.875" << 4875;
    QTest::newRow("5 A fills the bar") << 10000 << "5.000" << 5000;
    QTest::newRow("6 A leaves the bar at its maximum") << 12000 << "6.000" << 5000;
    QTest::newRow("32.5 A") << 65000 << "32.500" << 5000;
}

void TstInputVoltageRow::currentIsShown()
{
    QFETCH(int, raw);
    QFETCH(int, bar);
    Row row;
    row.take(fastStatus(2400, 12000, 2000));
    row.take(fastStatus(2400, 12000, raw));
    QTEST(row.text("label_LoadCurrent"), "text");
    QCOMPARE(currentBar(row)->value(), bar);
}

void TstInputVoltageRow::outputPowerIsTheProduct_data()
{
    QTest::addColumn<int>("voltage");
    QTest::addColumn<int>("current");
    QTest::addColumn<float>("watts");
    QTest::newRow("12 V, 1.5 A") << 12000 << 3000 << 18.0F;
    QTest::newRow("12.5 V, 0.5 A") << 12500 << 1000 << 6.25F;
    QTest::newRow("no load") << 12000 << 0 << 0.0F;
    QTest::newRow("no voltage") << 0 << 3000 << 0.0F;
}

void TstInputVoltageRow::outputPowerIsTheProduct()
{
    QFETCH(int, voltage);
    QFETCH(int, current);
    Row row;
    row.take(fastStatus(2400, 1000, 2000));
    QCOMPARE(row.controller->model().power.outputPower, 1.0F);
    row.take(fastStatus(2400, voltage, current));
    QTEST(row.controller->model().power.outputPower, "watts");
}

void TstInputVoltageRow::statusOfAWrongTypeReadsAsZero()
{
    Row row;
    row.take(fastStatus(2400, 12000, 3000, 1));
    row.controller->Slot_FastSystemStatus(QVariant(QStringLiteral("no status")));
    QCOMPARE(row.text("label_InputVoltage"), QStringLiteral("0.0"));
    QCOMPARE(voltageBar(row)->value(), 0);
    QCOMPARE(voltageBar(row)->styleSheet(), kRed);
    QCOMPARE(row.text("label_LoadCurrent"), QStringLiteral("0.000"));
    QCOMPARE(currentBar(row)->value(), 0);
    QCOMPARE(row.controller->model().power.outputPower, 0.0F);
    QVERIFY(!row.controller->model().power.statusFlag);
}

void TstInputVoltageRow::statusFlagIsBit0_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<bool>("set");
    QTest::newRow("none") << 0x00 << false;
    QTest::newRow("bit 0") << 0x01 << true;
    QTest::newRow("all but bit 0") << 0xFE << false;
    QTest::newRow("all") << 0xFF << true;
}

void TstInputVoltageRow::statusFlagIsBit0()
{
    QFETCH(int, flags);
    QFETCH(bool, set);
    Row row;
    row.take(fastStatus(2400, 0, 0, set ? 0 : 1)); // the other state first
    QCOMPARE(row.controller->model().power.statusFlag, !set);
    row.take(fastStatus(2400, 0, 0, flags));
    QCOMPARE(row.controller->model().power.statusFlag, set);
    QCOMPARE(row.child<QLabel>("label_StatusFlag")->styleSheet(),
             set ? QStringLiteral("color: #ffdb1c;background-color: red;")
                 : QStringLiteral("color: black;background-color: #F0F0F0;"));
    QCOMPARE(row.text("label_StatusFlag"), set ? QStringLiteral("!") : QString());
}

void TstInputVoltageRow::statusFlagMarksTheTemperature()
{
    Row row;
    QCOMPARE(row.text("label_StatusFlag"), QString());
    for (const char *name : {"label_TxtTemperature_Pow", "label_Temperature_Pow"})
        QVERIFY2(!row.child<QLabel>(name)->font().bold(), name);
    row.take(fastStatus(2400, 0, 0, 1));
    for (const char *name : {"label_TxtTemperature_Pow", "label_Temperature_Pow"}) {
        const QFont font = row.child<QLabel>(name)->font();
        QCOMPARE(font.family(), QStringLiteral("Segoe UI"));
        QCOMPARE(font.pixelSize(), 12);
        QCOMPARE(font.weight(), int(QFont::Bold));
    }
}

void TstInputVoltageRow::statusFlagTakenBackRestoresTheTemperature()
{
    Row row;
    row.take(fastStatus(2400, 0, 0, 1));
    row.take(fastStatus(2400, 0, 0, 0));
    for (const char *name : {"label_TxtTemperature_Pow", "label_Temperature_Pow"})
        QCOMPARE(row.child<QLabel>(name)->font().weight(), int(QFont::Normal));
}

void TstInputVoltageRow::statusFlagLeavesTheControllersTemperature()
{
    Row row;
    const char *const names[] = {"label_TxtTemperature", "label_Temperature", "label_TxtVoltage_Pow",
                                 "label_Voltage_Pow"};
    QList<QFont> before;
    for (const char *name : names)
        before.append(row.child<QLabel>(name)->font());
    row.take(fastStatus(2400, 0, 0, 1));
    for (const char *name : names)
        QCOMPARE(row.child<QLabel>(name)->font(), before.takeFirst());
}

void TstInputVoltageRow::reportedLimitsAreTakenOver_data()
{
    QTest::addColumn<QByteArray>("list");
    QTest::addColumn<QString>("expected");
    // The last entry of the list is no limit.
    QTest::newRow("five entries") << QByteArray("8000$40000$48000$6500$0$") << "8 40 48 6.5";
    QTest::newRow("five entries, open end") << QByteArray("8000$40000$48000$6500$0") << "8 40 48 6.5";
    QTest::newRow("four entries") << QByteArray("8000$40000$48000$6500$") << "8 40 48 0";
    QTest::newRow("empty parts are dropped") << QByteArray("$8000$$40000$48000$$6500$0$$") << "8 40 48 6.5";
    QTest::newRow("three entries") << QByteArray("8000$40000$48000$") << "8 40 60 0";
    QTest::newRow("two entries") << QByteArray("8000$40000$") << "8 50 60 0";
    QTest::newRow("one entry") << QByteArray("8000$") << "7 50 60 0";
    QTest::newRow("no entry") << QByteArray("") << "7 50 60 0";
    QTest::newRow("separators only") << QByteArray("$$$$") << "7 50 60 0";
    QTest::newRow("six entries") << QByteArray("8000$40000$48000$6500$9000$0$") << "8 40 48 6.5";
    QTest::newRow("parts of a volt") << QByteArray("7250$49750$60000$6125$0$") << "7.25 49.75 60 6.125";
    QTest::newRow("a text is no limit") << QByteArray("8000$x$48000$6500$0$") << "8 50 48 6.5";
}

void TstInputVoltageRow::reportedLimitsAreTakenOver()
{
    QFETCH(QByteArray, list);
    Row row;
    row.take(limitsStatus(list));
    QTEST(limits(row), "expected");
}

void TstInputVoltageRow::limitsTurnTheBarBlueUntilTheNextStatus()
{
    Row row;
    row.take(fastStatus(2400));
    row.take(limitsStatus("8000$40000$48000$6500$0$"));
    QCOMPARE(voltageBar(row)->styleSheet(), kBlue);
    QVERIFY(row.controller->model().power.limitsReceived);
    row.take(fastStatus(2400));
    QCOMPARE(voltageBar(row)->styleSheet(), kGreen);
    row.take(limitsStatus("8000$40000$48000$6500$0$"));
    QCOMPARE(voltageBar(row)->styleSheet(), kBlue);
    row.take(fastStatus(0));
    QCOMPARE(voltageBar(row)->styleSheet(), kRed);
}

void TstInputVoltageRow::limitsMoveTheColours_data()
{
    QTest::addColumn<int>("raw");
    QTest::addColumn<QString>("style");
    QTest::newRow("at the lower limit") << 800 << kRed;
    QTest::newRow("above the lower limit") << 801 << kGreen;
    QTest::newRow("below the upper limit") << 3999 << kGreen;
    QTest::newRow("at the upper limit") << 4000 << kRed;
}

void TstInputVoltageRow::limitsMoveTheColours()
{
    QFETCH(int, raw);
    Row row;
    row.take(limitsStatus("8000$40000$48000$6500$0$"));
    row.take(fastStatus(raw));
    QTEST(voltageBar(row)->styleSheet(), "style");
}

void TstInputVoltageRow::limitsMoveTheScale()
{
    Row row;
    row.take(fastStatus(5900));
    row.take(limitsStatus("8000$40000$48000$6500$0$"));
    QCOMPARE(voltageBar(row)->maximum(), 48);
    row.take(fastStatus(4700));
    QCOMPARE(voltageBar(row)->value(), 47);
    row.take(fastStatus(4900));
    QCOMPARE(voltageBar(row)->value(), 48);
    QCOMPARE(row.text("label_InputVoltage"), QStringLiteral("49.0"));
}

void TstInputVoltageRow::valueBeyondTheNewScaleFillsTheBar()
{
    Row row;
    row.take(fastStatus(5900));
    QCOMPARE(voltageBar(row)->value(), 59);
    row.take(limitsStatus("8000$40000$48000$6500$0$"));
    QCOMPARE(voltageBar(row)->value(), 48);
    QCOMPARE(row.text("label_InputVoltage"), QStringLiteral("59.0"));
    row.take(limitsStatus("8000$40000$60000$6500$0$")); // a wider scale shows the same
    QCOMPARE(voltageBar(row)->value(), 48);
}

void TstInputVoltageRow::scaleStaysUsable_data()
{
    QTest::addColumn<QByteArray>("millivolts");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("shown"); // of 24 V
    QTest::newRow("0") << QByteArray("0") << 1 << 1;
    QTest::newRow("negative") << QByteArray("-5000") << 1 << 1;
    QTest::newRow("below 1 V") << QByteArray("999") << 1 << 1;
    QTest::newRow("parts of a volt are cut") << QByteArray("30900") << 30 << 24;
    QTest::newRow("more than the bar can count")
        << QByteArray("1e30") << std::numeric_limits<int>::max() << 24;
    QTest::newRow("less than the bar can count") << QByteArray("-1e30") << 1 << 1;
}

void TstInputVoltageRow::scaleStaysUsable()
{
    QFETCH(QByteArray, millivolts);
    QFETCH(int, maximum);
    QFETCH(int, shown);
    Row row;
    row.take(limitsStatus("8000$40000$" + millivolts + "$6500$0$"));
    QCOMPARE(voltageBar(row)->minimum(), 0);
    QCOMPARE(voltageBar(row)->maximum(), maximum);
    row.take(fastStatus(2400));
    QCOMPARE(voltageBar(row)->value(), shown);
}

void TstInputVoltageRow::barsHaveNoText()
{
    Row row;
    QCOMPARE(voltageBar(row)->format(), QString());
    for (const int voltage : {2400, 0, 2400}) {
        voltageBar(row)->setFormat(QStringLiteral("%p%"));
        row.take(fastStatus(voltage)); // sets the style, and with it the format
        QCOMPARE(voltageBar(row)->format(), QString());
        QCOMPARE(voltageBar(row)->text(), QString());
    }
    row.take(limitsStatus("8000$40000$48000$6500$0$"));
    QCOMPARE(voltageBar(row)->format(), QString());
    QVERIFY(!voltageBar(row)->isTextVisible());
    QVERIFY(!currentBar(row)->isTextVisible());
}

void TstInputVoltageRow::shortListSetsItsEntriesAndTheBar()
{
    Row row;
    row.take(limitsStatus("8000$40000$"));
    QCOMPARE(limits(row), QStringLiteral("8 50 60 0"));
    QCOMPARE(voltageBar(row)->maximum(), 60);
    QCOMPARE(voltageBar(row)->styleSheet(), kBlue);
    QVERIFY(row.controller->model().power.limitsReceived);
}

void TstInputVoltageRow::limitsWithoutSerialNumberAreSkipped()
{
    Row row;
    row.take(limitsStatus("8000$40000$48000$6500$0$", ""));
    QCOMPARE(limits(row), kFirstLimits);
    QCOMPARE(voltageBar(row)->styleSheet(), kGreen);
    QCOMPARE(voltageBar(row)->maximum(), 60);
    QVERIFY(!row.controller->model().power.limitsReceived);
}

void TstInputVoltageRow::limitsOfAnotherModuleAreSkipped()
{
    Row row;
    row.take(limitsStatus("8000$40000$48000$6500$0$", "4712", 1));
    row.take(limitsStatus("8000$40000$48000$6500$0$", "4712", kControllerType));
    QCOMPARE(limits(row), kFirstLimits);
    QCOMPARE(voltageBar(row)->styleSheet(), kGreen);
    QVERIFY(!row.controller->model().power.limitsReceived);
}

QTEST_MAIN(TstInputVoltageRow)
#include "tst_inputvoltage_row.moc"
