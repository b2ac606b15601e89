#include "channelfixture.h"
#include "controller/modulecontroller_ctrllr.h"
#include "controller/modulecontroller_view.h"

#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFrame>
#include <QLabel>
#include <QProgressBar>
#include <QtTest>

namespace {

using namespace std::chrono_literals;

const QString kChain = QStringLiteral("controller serial=C-1\n"
                                      "power serial=P-1 fixed=12000 auto=9000 input=24 load=1.25\n"
                                      "module type=1 serial=SG-\n");

const QString kGoodBar = QStringLiteral("QProgressBar::chunk {background:#00dd00;} "
                                        "QProgressBar {border: 1px solid grey;border-radius: 3px;}");
const QString kFaultBar = QStringLiteral("QProgressBar::chunk {background:red;} "
                                         "QProgressBar {border: 1px solid grey;border-radius: 3px;}");
const QString kFlagOn = QStringLiteral("color: #ffdb1c;background-color: red;");
const QString kFlagOff = QStringLiteral("color: black;background-color: #F0F0F0;");

} // namespace

/// What the top row shows of the power module while the values change.
class TstPowerValues : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_fixture = std::make_unique<ChannelFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void inputVoltageIsShownAndJudged_data();
    void inputVoltageIsShownAndJudged();
    void scriptedInputVoltageIsRedForItsTime_data();
    void scriptedInputVoltageIsRedForItsTime();
    void loadCurrentIsShown_data();
    void loadCurrentIsShown();
    void loadFollowsTheOperatorsSetpoint();
    void healthOfThePowerModuleIsShown();
    void hotModuleIsMarkedWhileItIsHot();
    void protectionDecidesWhatAHotModuleGives();
    void emptySerialNumberHidesThePowerPartForTheSession();
    void emptySerialNumberInAReadBackHidesThePowerPart();
    void chainWithoutAPowerModuleShowsNoPowerPart();

private:
    ChannelFixture &fixture() { return *m_fixture; }
    sim::Power &power() { return *m_fixture->device->chain().power; }
    template <typename T>
    T *child(const char *name) const
    {
        return childByName<T>(m_fixture->window(), name);
    }
    QWidget *topRow() const { return m_fixture->app->controllerModule()->GetView(); }
    QString label(const char *name) const { return child<QLabel>(name)->text(); }

    /// A word of the head that the device would send now. Time stands still, so the next ones are the same.
    int headWord(int at);
    /// Sets the chain so that just this value is reported, without what it wanders by.
    void reportInput(int centivolts);
    void reportLoad(int steps);

    std::unique_ptr<ChannelFixture> m_fixture;
};

int TstPowerValues::headWord(int at)
{
    const QByteArray request = QByteArray::fromHex("0800000000");
    const QByteArray head = fixture().device->device().answer(request, fixture().device->elapsed()).payload;
    return static_cast<quint8>(head.at(at)) | static_cast<quint8>(head.at(at + 1)) << 8;
}

void TstPowerValues::reportInput(int centivolts)
{
    power().inputVolts = 30;
    power().inputVolts += (centivolts - headWord(10)) / 100.0;
    QCOMPARE(headWord(10), centivolts);
}

void TstPowerValues::reportLoad(int steps)
{
    power().loadAmperes = 2;
    power().loadAmperes += (steps - headWord(14)) / 2000.0;
    QCOMPARE(headWord(14), steps);
}

void TstPowerValues::inputVoltageIsShownAndJudged_data()
{
    QTest::addColumn<int>("centivolts");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("bar");
    QTest::addColumn<QString>("style");
    QTest::newRow("none") << 0 << QStringLiteral("0.0") << 0 << kFaultBar;
    QTest::newRow("at the lower limit") << 700 << QStringLiteral("7.0") << 7 << kFaultBar;
    QTest::newRow("above the lower limit") << 701 << QStringLiteral("7.0") << 7 << kGoodBar;
    QTest::newRow("usual") << 2430 << QStringLiteral("24.3") << 24 << kGoodBar;
    QTest::newRow("below the upper limit") << 4999 << QStringLiteral("50.0") << 49 << kGoodBar;
    QTest::newRow("at the upper limit") << 5000 << QStringLiteral("50.0") << 50 << kFaultBar;
    QTest::newRow("at the end of the bar") << 6000 << QStringLiteral("60.0") << 60 << kFaultBar;
    QTest::newRow("beyond the bar") << 6520 << QStringLiteral("65.2") << 60 << kFaultBar;
}

void TstPowerValues::inputVoltageIsShownAndJudged()
{
    QFETCH(int, centivolts);
    QFETCH(QString, text);
    QFETCH(int, bar);
    QFETCH(QString, style);
    fixture().startChain(kChain);
    auto *progress = child<QProgressBar>("progressBar_InputVoltage");
    QCOMPARE(progress->maximum(), 60);
    reportInput(centivolts);
    WAIT_COMPARE(label("label_InputVoltage"), text);
    QCOMPARE(progress->value(), bar);
    // Two voltages share one text: the colour is that of the last poll.
    fixture().waitForPolls();
    QCOMPARE(progress->styleSheet(), style);
    QCOMPARE(label("label_InputVoltage"), text);
}

void TstPowerValues::scriptedInputVoltageIsRedForItsTime_data()
{
    QTest::addColumn<QString>("volts");
    QTest::addColumn<QString>("style");
    QTest::newRow("below the lower limit") << "6.5" << kFaultBar;
    QTest::newRow("above the lower limit") << "7.5" << kGoodBar;
    QTest::newRow("below the upper limit") << "49.5" << kGoodBar;
    QTest::newRow("above the upper limit") << "50.5" << kFaultBar;
}

void TstPowerValues::scriptedInputVoltageIsRedForItsTime()
{
    QFETCH(QString, volts);
    QFETCH(QString, style);
    fixture().startChain(kChain);
    const auto *progress = child<QProgressBar>("progressBar_InputVoltage");
    const auto shows = [this](double wanted) {
        return qAbs(label("label_InputVoltage").toDouble() - wanted) < 0.5;
    };
    const auto start = fixture().device->elapsed().count() + 3000;
    fixture().addFaults(QStringLiteral("input volts=%1 from=%2 for=4000").arg(volts).arg(start));
    fixture().time.skip(2s);
    fixture().waitForPolls();
    QVERIFY(shows(24));
    QCOMPARE(progress->styleSheet(), kGoodBar);
    fixture().time.skip(1s);
    WAIT_VERIFY(shows(volts.toDouble()));
    QCOMPARE(progress->styleSheet(), style);
    fixture().time.skip(4s);
    WAIT_VERIFY(shows(24));
    QCOMPARE(progress->styleSheet(), kGoodBar);
}

void TstPowerValues::loadCurrentIsShown_data()
{
    QTest::addColumn<int>("steps");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("bar");
    QTest::newRow("none") << 0 << QStringLiteral("0.000") << 0;
    QTest::newRow("usual") << 2500 << QStringLiteral("1.250") << 1250;
    QTest::newRow("at the end of the bar") << 10000 << QStringLiteral("5.000") << 5000;
    QTest::newRow("beyond the bar") << 12000 << QStringLiteral("6.000") << 5000;
}

void TstPowerValues::loadCurrentIsShown()
{
    QFETCH(int, steps);
    QFETCH(QString, text);
    QFETCH(int, bar);
    fixture().startChain(kChain);
    reportLoad(steps);
    WAIT_COMPARE(label("label_LoadCurrent"), text);
    QCOMPARE(child<QProgressBar>("progressBar_LoadCurrent")->value(), bar);
    QCOMPARE(child<QProgressBar>("progressBar_LoadCurrent")->maximum(), 5000);
}

void TstPowerValues::loadFollowsTheOperatorsSetpoint()
{
    fixture().startChain(kChain);
    fixture().time.skip(2s);
    reportLoad(2400);
    WAIT_COMPARE(label("label_LoadCurrent"), QStringLiteral("1.200"));
    gestures::type(child<QDoubleSpinBox>("doubleSpinBox_OutputVoltage"), QStringLiteral("6"));
    fixture().waitForPolls();
    QCOMPARE(label("label_LoadCurrent"), QStringLiteral("1.200"));
    // Another moment gives another value: the one that the device would send now counts.
    fixture().time.skip(2s);
    WAIT_COMPARE(power().fixedMillivolts, 6000);
    WAIT_VERIFY(qAbs(label("label_LoadCurrent").toDouble() - headWord(14) / 2000.0) < 0.001);
    const int atSixVolts = child<QProgressBar>("progressBar_LoadCurrent")->value();
    QVERIFY2(qAbs(atSixVolts - 600) < 60, qPrintable(QString::number(atSixVolts)));
    gestures::pick(child<QComboBox>("comboBox_OutputVoltageMode"), 1); // 9 V
    WAIT_VERIFY(qAbs(child<QProgressBar>("progressBar_LoadCurrent")->value() - 1.5 * atSixVolts) < 3);
}

void TstPowerValues::healthOfThePowerModuleIsShown()
{
    fixture().startChain(kChain);
    sim::Health &health = power().health;
    health.volts = 15;
    health.celsius = 60;
    health.selftest = 0x0A;
    WAIT_COMPARE(label("label_SelftestSt_Pow"), QStringLiteral("0x0A"));
    const QString volts = label("label_Voltage_Pow");
    QVERIFY2(QRegExp(QStringLiteral("(14|15)\\.\\d\\d V")).exactMatch(volts), qPrintable(volts));
    const QString celsius = label("label_Temperature_Pow");
    QVERIFY2(celsius.endsWith(QStringLiteral(" °C")), qPrintable(celsius));
    QVERIFY(qAbs(celsius.chopped(3).toDouble() - 60) < 3);
    // A voltage that is marked as invalid leaves the old text; the rest of the entry counts.
    health.voltsInvalid = true;
    health.volts = 5;
    health.selftest = 0;
    WAIT_COMPARE(label("label_SelftestSt_Pow"), QStringLiteral("O.K."));
    QCOMPARE(label("label_Voltage_Pow"), volts);
}

void TstPowerValues::hotModuleIsMarkedWhileItIsHot()
{
    fixture().startChain(kChain);
    const auto *flag = child<QLabel>("label_StatusFlag");
    const auto isBold = [this](const char *name) {
        return childByName<QLabel>(topRow(), name)->font().bold();
    };
    fixture().waitForPolls();
    QCOMPARE(flag->text(), QString());
    QCOMPARE(flag->styleSheet(), kFlagOff);
    fixture().addFaults(QStringLiteral("hot from=%1 for=5000").arg(fixture().device->elapsed().count()));
    WAIT_COMPARE(flag->styleSheet(), kFlagOn);
    QCOMPARE(flag->text(), QStringLiteral("!"));
    QVERIFY(isBold("label_TxtTemperature_Pow") && isBold("label_Temperature_Pow"));
    QVERIFY(!isBold("label_Temperature"));
    fixture().time.skip(5s);
    WAIT_COMPARE(flag->styleSheet(), kFlagOff);
    QCOMPARE(flag->text(), QString());
    QVERIFY(!isBold("label_TxtTemperature_Pow") && !isBold("label_Temperature_Pow"));
}

void TstPowerValues::protectionDecidesWhatAHotModuleGives()
{
    fixture().startChain(kChain);
    reportLoad(2400);
    WAIT_COMPARE(label("label_LoadCurrent"), QStringLiteral("1.200"));
    fixture().addFaults(QStringLiteral("hot"));
    // "standard" switches off.
    WAIT_COMPARE(label("label_LoadCurrent"), QStringLiteral("0.000"));
    const auto choose = [this](int index) {
        QTest::mouseClick(child<QPushButton>("pushButton_powModType"), Qt::LeftButton);
        QWidget *dialog = fixture().openDialog("powerSettingsDialog");
        QVERIFY(dialog);
        gestures::pick(childByName<QComboBox>(dialog, "comboBox_Protection"), index);
        QTest::mouseClick(childByName<QDialogButtonBox>(dialog, "buttonBox")->button(QDialogButtonBox::Ok),
                          Qt::LeftButton);
        WAIT_COMPARE(ChannelFixture::openDialogCount(), 0);
    };
    choose(1);
    WAIT_COMPARE(label("label_LoadCurrent"), QStringLiteral("0.500")); // 5 V of 12
    WAIT_COMPARE(label("label_Protection"), QStringLiteral("derating"));
    choose(2);
    WAIT_COMPARE(label("label_LoadCurrent"), QStringLiteral("1.200"));
    WAIT_COMPARE(label("label_Protection"), QStringLiteral("mission critical"));
    QCOMPARE(fixture().commands(), (QStringList{"1800000001310000", "1800000001320000"}));
}

void TstPowerValues::emptySerialNumberHidesThePowerPartForTheSession()
{
    fixture().plug(kChain);
    fixture().addFaults(QStringLiteral("no-power for=20000"));
    fixture().start();
    fixture().waitUntilRead();
    fixture().time.hold();
    QVERIFY(!child<QPushButton>("pushButton_powModType")->isVisible());
    QVERIFY(!child<QProgressBar>("progressBar_InputVoltage")->isVisible());
    QVERIFY(child<QPushButton>("pushButton_modType")->isVisible());
    const int width = childByName<QFrame>(topRow(), "controllerFrame")->width();
    fixture().time.skip(20s);
    fixture().waitForPolls();
    QVERIFY(!child<QPushButton>("pushButton_powModType")->isVisible());

    // The next session asks again.
    const QPointer<QWidget> row = child<QPushButton>("pushButton_powModType");
    fixture().addFaults(QStringLiteral("reset-flag code=0x08 count=1"));
    WAIT_VERIFY(!row);
    fixture().waitUntilRead();
    QVERIFY(child<QPushButton>("pushButton_powModType")->isVisible());
    QCOMPARE(label("label_SerialNumber_Pow"), QStringLiteral("S/N P-1"));
    QCOMPARE(childByName<QFrame>(topRow(), "controllerFrame")->width(), width);
}

void TstPowerValues::emptySerialNumberInAReadBackHidesThePowerPart()
{
    fixture().startChain(kChain);
    const int width = childByName<QFrame>(topRow(), "controllerFrame")->width();
    QVERIFY(child<QPushButton>("pushButton_powModType")->isVisible());
    fixture().addFaults(QStringLiteral("no-power"));
    gestures::pick(child<QComboBox>("comboBox_OutputVoltageMode"), 1);
    WAIT_VERIFY(!child<QPushButton>("pushButton_powModType")->isVisible());
    fixture().waitForPolls();
    QCOMPARE(fixture().commands(), QStringList{"1800000001210000"});
    QCOMPARE(childByName<QFrame>(topRow(), "controllerFrame")->width(), width);
    QCOMPARE(fixture().mismatches(), QStringList());
}

void TstPowerValues::chainWithoutAPowerModuleShowsNoPowerPart()
{
    fixture().startChain(QStringLiteral("controller serial=C-1\nmodule type=1 serial=SG-\n"));
    fixture().waitForPolls();
    QVERIFY(!child<QPushButton>("pushButton_powModType")->isVisible());
    QVERIFY(child<QPushButton>("pushButton_modType")->isVisible());
    QCOMPARE(fixture().device->requestCount(0x12), 2);
}

QTEST_MAIN(TstPowerValues)

#include "tst_powervalues.moc"
