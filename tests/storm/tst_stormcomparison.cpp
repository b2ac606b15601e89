#include "comparison.h"
#include "program.h"
#include "world.h"

#include "modules/moduledevice_ctrllr.h"
#include "support/messagecatcher.h"
#include "support/testcertificates.h"

#include <QtTest>
#include <optional>

using namespace storm;

namespace {

using Tamper = void (*)(Snapshot &);

} // namespace

Q_DECLARE_METATYPE(Tamper)

/// The comparison of the storm finds nothing where the program shows what the devices have, and each value
/// that differs.
class TstStormComparison : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void theProgramShowsWhatTheDevicesHave();
    void aDifferenceIsFound_data();
    void aDifferenceIsFound();
    void aSessionThatWentOnKnowsNothingOfThePowerSettings();

private:
    Snapshot look();
    QStringList differences(const Snapshot &snapshot, Comparison::Reach reach, int *values = nullptr) const;

    MessageCatcher m_log;
    TestCertificates m_certificates;
    std::unique_ptr<Program> m_program;
    std::unique_ptr<World> m_world;
};

void TstStormComparison::initTestCase()
{
    const Addresses addresses = addressesOfThisProcess();
    m_program = std::make_unique<Program>(addresses);
    m_world = std::make_unique<World>(addresses, m_program->portFolder(), 1,
                                      m_certificates.certified(QStringLiteral("IP:127.0.0.1")));
    m_world->start();
    m_world->plug(0);
    m_program->start(m_world->gatewayPort(), m_world->webPort());
    QTRY_VERIFY_WITH_TIMEOUT(m_program->isReady() && m_program->polls() > 2, 30000);
}

void TstStormComparison::cleanupTestCase()
{
    m_program.reset();
    m_world.reset();
}

Snapshot TstStormComparison::look()
{
    std::optional<Snapshot> seen;
    m_world->look(this, [&seen](const Snapshot &snapshot) { seen = snapshot; });
    [&seen] { QTRY_VERIFY(seen.has_value()); }();
    return seen.value_or(Snapshot());
}

QStringList TstStormComparison::differences(const Snapshot &snapshot, Comparison::Reach reach,
                                            int *values) const
{
    Comparison comparison(snapshot, reach);
    comparison.compare(*m_program);
    if (values)
        *values = comparison.valueCount();
    return comparison.differences();
}

void TstStormComparison::theProgramShowsWhatTheDevicesHave()
{
    int values = 0;
    QTRY_COMPARE(differences(look(), Comparison::Reach::Whole, &values), QStringList());
    QVERIFY(values > 14 * 14);
}

void TstStormComparison::aDifferenceIsFound_data()
{
    QTest::addColumn<Tamper>("tamper");
    QTest::addColumn<QString>("difference");
    const auto add = [](const char *name, Tamper tamper, const char *difference) {
        QTest::newRow(name) << tamper << QString::fromLatin1(difference);
    };
    add(
        "row", [](Snapshot &s) { s.chain.modules.removeLast(); }, "rows, not");
    add(
        "device", [](Snapshot &s) { s.hasDevice = false; }, "rows, not");
    add(
        "serial number", [](Snapshot &s) { s.chain.module(3).identity.serial += 'x'; },
        "row 3 label_SnVersion");
    add(
        "hardware", [](Snapshot &s) { s.chain.module(3).identity.hardware += 'x'; }, "row 3 label_HwVersion");
    add(
        "firmware 1", [](Snapshot &s) { s.chain.module(4).identity.firmware1 += 'x'; },
        "row 4 label_SwVersion");
    add(
        "firmware 2", [](Snapshot &s) { s.chain.module(4).identity.firmware2 += 'x'; },
        "row 4 label_FpgaVersn");
    add(
        "voltage", [](Snapshot &s) { s.chain.module(5).health.volts += 1; }, "row 5 label_Voltage");
    add(
        "temperature", [](Snapshot &s) { s.chain.module(5).health.celsius += 9; }, "row 5 label_Temperature");
    add(
        "self-test", [](Snapshot &s) { s.chain.module(5).health.selftest = 5; }, "row 5 label_SelftestSt");
    add(
        "bridge type", [](Snapshot &s) { ++s.chain.module(1).channel(1).bridgeIndex; },
        "row 1 B comboBox_BridgeType");
    add(
        "input type", [](Snapshot &s) { ++s.chain.module(3).channel(0).bridgeIndex; },
        "row 3 A comboBox_BridgeType");
    add(
        "sensor", [](Snapshot &s) { ++s.chain.module(6).channel(0).bridgeIndex; },
        "row 6 A comboBox_ThermoDeviceType");
    add(
        "bridge range", [](Snapshot &s) { ++s.chain.module(1).channel(0).gainIndex; },
        "row 1 A comboBox_Gain");
    add(
        "range", [](Snapshot &s) { ++s.chain.module(4).channel(0).gainIndex; }, "row 4 A comboBox_RangeGain");
    add(
        "temperature range", [](Snapshot &s) { ++s.chain.module(7).channel(1).gainIndex; },
        "row 7 B comboBox_TemperatureRange");
    add(
        "filter", [](Snapshot &s) { s.chain.module(9).channel(1).filter = QStringLiteral("7"); },
        "row 9 B filterSpinBox");
    add(
        "thermo filter", [](Snapshot &s) { s.chain.module(6).channel(1).filter = QStringLiteral("2"); },
        "row 6 B filterSpinBox");
    add(
        "polarity", [](Snapshot &s) { s.chain.module(8).channel(0).reversePolarity = true; },
        "row 8 A polarity");
    add(
        "offset", [](Snapshot &s) { s.chain.module(2).channel(0).offset = QStringLiteral("1"); },
        "row 2 A pushButton_ManualOffset");
    add(
        "positive preselection",
        [](Snapshot &s) { s.chain.module(2).channel(0).positivePreselected = false; },
        "row 2 A checkBox_Shunt_Pos_Presel");
    add(
        "negative preselection",
        [](Snapshot &s) { s.chain.module(12).channel(1).negativePreselected = true; },
        "row 12 B checkBox_Shunt_Neg_Presel");
    add(
        "function", [](Snapshot &s) { s.chain.module(13).channel(0).function = 6; },
        "row 13 A ChDeviceLabel_A");
    add(
        "controller", [](Snapshot &s) { s.chain.controller.identity.serial += 'x'; },
        "controller label_SerialNumber");
    add(
        "controller's temperature", [](Snapshot &s) { s.chain.controller.health.celsius -= 9; },
        "controller label_Temperature");
    add(
        "power module", [](Snapshot &s) { s.chain.power.reset(); }, "power module is shown");
    add(
        "power module's firmware", [](Snapshot &s) { s.chain.power->identity.firmware1 += 'x'; },
        "power module label_SwVersion_Pow");
    add(
        "power module's voltage", [](Snapshot &s) { s.chain.power->health.volts -= 1; },
        "power module label_Voltage_Pow");
    add(
        "input voltage", [](Snapshot &s) { s.chain.power->inputVolts += 3; },
        "power module label_InputVoltage");
    add(
        "load", [](Snapshot &s) { s.chain.power->loadAmperes += 0.5; }, "power module label_LoadCurrent");
    add(
        "too hot", [](Snapshot &s) { s.chain.power->tooHot = true; }, "power module label_StatusFlag");
    add(
        "mode", [](Snapshot &s) { s.chain.power->mode = sim::Power::Auto; },
        "power module comboBox_OutputVoltageMode");
    add(
        "setpoint", [](Snapshot &s) { s.chain.power->fixedMillivolts += 100; }, "power module setpoint");
    add(
        "protection", [](Snapshot &s) { s.chain.power->protection = 2; }, "power module label_Protection");
    add(
        "bit rate", [](Snapshot &s) { ++s.chain.system.bitRateCode; }, "system panel lineEdit_BitRate");
    add(
        "rate cell", [](Snapshot &s) { ++s.chain.system.bitRateCode; }, "system panel marks rate");
    add(
        "no rate cell", [](Snapshot &s) { s.chain.system.bitRateCode = 99; }, "system panel has no cell for");
    add(
        "powering", [](Snapshot &s) { s.chain.system.poweringMode = QStringLiteral("x"); },
        "system panel label_PoweringMode");
    add(
        "transmission", [](Snapshot &s) { s.chain.system.dataTransmission = QStringLiteral("x"); },
        "system panel label_DataTransmission");
}

void TstStormComparison::aDifferenceIsFound()
{
    QFETCH(Tamper, tamper);
    QFETCH(QString, difference);
    Snapshot snapshot = look();
    tamper(snapshot);
    const QStringList found = differences(snapshot, Comparison::Reach::Whole);
    QVERIFY2(!found.filter(difference).isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
}

void TstStormComparison::aSessionThatWentOnKnowsNothingOfThePowerSettings()
{
    Snapshot snapshot = look();
    snapshot.chain.power->protection = 2;
    QCOMPARE(differences(snapshot, Comparison::Reach::Session), QStringList());
}

QTEST_MAIN(TstStormComparison)

#include "tst_stormcomparison.moc"
