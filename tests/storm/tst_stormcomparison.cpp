#include "comparison.h"
#include "program.h"
#include "world.h"

#include "modules/moduledevice_ctrllr.h"
#include "modules/moduledevice_view.h"
#include "sim/catalogue.h"
#include "support/testcertificates.h"
#include "system/modulesyssettings_ctrllr.h"
#include "system/modulesyssettings_view.h"

#include <QPushButton>
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
    void theNumberOfARowIsCompared();
    void theNumbersOfTheSystemPanelAreCompared();
    void aSessionThatWentOnKnowsNothingOfThePowerSettings();
    void theGatewaysPanelIsCompared_data();
    void theGatewaysPanelIsCompared();
    void statesOfTheGatewayAreAlikeWhereTheyAreShownSo();
    void otherChainsAreCompared_data();
    void otherChainsAreCompared();

private:
    Snapshot look();
    QStringList differences(const Snapshot &snapshot, Comparison::Reach reach, int *values = nullptr) const;

    TestCertificates m_certificates;
    std::unique_ptr<Program> m_program;
    std::unique_ptr<World> m_world;
    int m_chain = 0;
};

void TstStormComparison::initTestCase()
{
    const Addresses addresses = addressesOfThisProcess();
    CommPeriods patient = stormPeriods(); // nobody asks twice for a row whose session was lost meanwhile
    patient.comm = patient.initSequence = std::chrono::seconds(5);
    m_program = std::make_unique<Program>(addresses, patient);
    m_world = std::make_unique<World>(addresses, m_program->portFolder(), 1,
                                      m_certificates.certified(QStringLiteral("IP:127.0.0.1")));
    m_world->start();
    m_world->plug(0);
    QVERIFY(look().hasDevice); // before the program opens its link, which it does once
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
        "polarity of a strain gauge",
        [](Snapshot &s) { s.chain.module(1).channel(0).reversePolarity = true; },
        "row 1 A checkBox_RevPol_100: not yes");
    add(
        "polarity of a voltage", [](Snapshot &s) { s.chain.module(3).channel(1).reversePolarity = true; },
        "row 3 B checkBox_RevPol: not yes");
    add(
        "polarity of an IEPE", [](Snapshot &s) { s.chain.module(5).channel(0).reversePolarity = true; },
        "row 5 A checkBox_RevPol: not yes");
    add(
        "polarity of an XVDT", [](Snapshot &s) { s.chain.module(8).channel(0).reversePolarity = true; },
        "row 8 A checkBox_RevPol: not yes");
    add(
        "polarity that was reversed",
        [](Snapshot &s) { s.chain.module(9).channel(1).reversePolarity = false; },
        "row 9 B checkBox_RevPol: not no");
    add(
        "polarity of a universal", [](Snapshot &s) { s.chain.module(13).channel(1).reversePolarity = true; },
        "row 13 B checkBox_RevPol: not yes");
    // Types of another family than the one that is shown; the strip lacks what they have.
    add(
        "button that is missing", [](Snapshot &s) { s.chain.module(6).type = sim::kVoltage; },
        "row 6 A checkBox_RevPol: not no");
    add(
        "strip of an unknown type", [](Snapshot &s) { s.chain.module(5).type = 77; }, "row 5 has a strip");
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
        "controller's hardware", [](Snapshot &s) { s.chain.controller.identity.hardware += 'x'; },
        "controller label_HwVersion");
    add(
        "controller's firmware 1", [](Snapshot &s) { s.chain.controller.identity.firmware1 += 'x'; },
        "controller label_SwVersion");
    add(
        "controller's firmware 2", [](Snapshot &s) { s.chain.controller.identity.firmware2 += 'x'; },
        "controller label_FpgaVersn");
    add(
        "controller's temperature", [](Snapshot &s) { s.chain.controller.health.celsius -= 9; },
        "controller label_Temperature");
    add(
        "power module", [](Snapshot &s) { s.chain.power.reset(); }, "power module is shown");
    add(
        "power module's serial number", [](Snapshot &s) { s.chain.power->identity.serial += 'x'; },
        "power module label_SerialNumber_Pow");
    add(
        "power module's hardware", [](Snapshot &s) { s.chain.power->identity.hardware += 'x'; },
        "power module label_HwVersion_Pow");
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
        "sampling rate", [](Snapshot &s) { ++s.chain.system.channelCountCode; },
        "system panel lineEdit_SamplingRate");
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

void TstStormComparison::theNumberOfARowIsCompared()
{
    Comparison comparison(look(), Comparison::Reach::Whole);
    comparison.compareModule(*m_program->app().analogModules().at(2)->GetView(), 4);
    QVERIFY(comparison.differences().contains(R"(row 4 pushButton_DeviceButton: "3", not "4")"));
}

void TstStormComparison::theNumbersOfTheSystemPanelAreCompared()
{
    Snapshot snapshot = look();
    const auto differences = [this, &snapshot] {
        Comparison comparison(snapshot, Comparison::Reach::Whole);
        comparison.compareSystemPanel(*m_program->app().sysSettings()->GetView());
        return comparison.differences();
    };
    QCOMPARE(differences(), QStringList());
    snapshot.chain.modules.removeLast();
    QCOMPARE(differences(), (QStringList{R"(system panel label_ModulesNumber: "13", not "12")",
                                         R"(system panel label_ChannelsNumber: "26", not "24")"}));
}

void TstStormComparison::aSessionThatWentOnKnowsNothingOfThePowerSettings()
{
    Snapshot snapshot = look();
    snapshot.chain.power->protection = 2;
    QCOMPARE(differences(snapshot, Comparison::Reach::Session), QStringList());
}

void TstStormComparison::theGatewaysPanelIsCompared_data()
{
    QTest::addColumn<Tamper>("tamper");
    QTest::addColumn<QString>("difference");
    const auto add = [](const char *name, Tamper tamper, const char *difference) {
        QTest::newRow(name) << tamper << QString::fromLatin1(difference);
    };
    add(
        "version", [](Snapshot &s) { s.gateway.version += 'x'; }, "gateway's panel GtwVersion");
    add(
        "serial number", [](Snapshot &s) { s.gateway.serial = "77"; }, "gateway's panel SerialNo");
    add(
        "external address", [](Snapshot &s) { s.gateway.extAddress += '1'; }, "gateway's panel extIpAddr");
    add(
        "external port", [](Snapshot &s) { s.gateway.extPort = "1"; }, "gateway's panel extPort");
    add(
        "minimum", [](Snapshot &s) { s.gateway.minimumSamples = "9"; }, "gateway's panel minBox");
    add(
        "maximum", [](Snapshot &s) { s.gateway.maximumSamples = "9"; }, "gateway's panel maxBox");
    add(
        "state of PTP", [](Snapshot &s) { s.gateway.ptpMode = "1"; }, "gateway's panel PTPStateLineEdit");
    add(
        "mode", [](Snapshot &s) { s.gateway.mode = "OFF"; }, "gateway's panel comboMode");
    add(
        "simulation", [](Snapshot &s) { s.gateway.simulation = "2"; }, "gateway's panel comboSimultn");
    add(
        "active port", [](Snapshot &s) { s.gateway.activeCom = "3"; }, "gateway's panel comboActivCOM");
    add(
        "mode of PTP", [](Snapshot &s) { s.gateway.ptpMode = "2"; }, "gateway's panel comboPTP");
    add(
        "protocol", [](Snapshot &s) { s.gateway.dataProtocol = "IENA-1"; },
        "gateway's panel comboBoxDataPtcl");
    add(
        "endian", [](Snapshot &s) { s.gateway.endian = "L"; }, "gateway's panel radioBigEndn");
    add(
        "other endian", [](Snapshot &s) { s.gateway.endian = "L"; }, "gateway's panel radioLitleEndn");
    add(
        "length", [](Snapshot &s) { s.gateway.dataLength = "18"; }, "gateway's panel radio16Bit");
    add(
        "other length", [](Snapshot &s) { s.gateway.dataLength = "18"; }, "gateway's panel radio18Bit");
    add(
        "format", [](Snapshot &s) { s.gateway.dataFormat = "2"; }, "gateway's panel unsignedInt");
    add(
        "other format", [](Snapshot &s) { s.gateway.dataFormat = "2"; }, "gateway's panel twoComp");
}

void TstStormComparison::theGatewaysPanelIsCompared()
{
    QFETCH(Tamper, tamper);
    QFETCH(QString, difference);
    const auto differences = [](const Snapshot &snapshot) {
        Comparison comparison(snapshot, Comparison::Reach::Whole);
        comparison.compareGateway(*connectedPanel());
        return comparison.differences();
    };
    if (!connectedPanel())
        m_program->window()->findChild<QPushButton *>(QStringLiteral("tvxGateway"))->click();
    QTRY_VERIFY(connectedPanel());
    QTRY_COMPARE(differences(look()), QStringList());
    Snapshot snapshot = look();
    tamper(snapshot);
    QVERIFY(!isShownAlike(snapshot.gateway, look().gateway));
    const QStringList found = differences(snapshot);
    QVERIFY2(!found.filter(difference).isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
}

void TstStormComparison::statesOfTheGatewayAreAlikeWhereTheyAreShownSo()
{
    const sim::GatewayState state;
    sim::GatewayState later = state;
    later.clockNs = 5;
    later.coreCelsius += 1;
    QVERIFY(isShownAlike(state, later));
    later.endian = QStringLiteral("L");
    QVERIFY(!isShownAlike(state, later));
}

void TstStormComparison::otherChainsAreCompared_data()
{
    QTest::addColumn<int>("chain");
    QTest::addColumn<Tamper>("tamper");
    QTest::addColumn<QString>("difference");
    const auto add = [](const char *name, int chain, Tamper tamper, const char *difference) {
        QTest::newRow(name) << chain << tamper << QString::fromLatin1(difference);
    };
    add(
        "no power module", 1, [](Snapshot &s) { s.chain.power.emplace(); }, "power module is shown");
    add(
        "polarity", 1, [](Snapshot &s) { s.chain.module(2).channel(0).reversePolarity = false; },
        "row 2 A checkBox_RevPol: not no");
    add(
        "self-test", 1, [](Snapshot &s) { s.chain.module(2).health.selftest = 0x1A; },
        R"(row 2 label_SelftestSt: "0x1B", not "0x1A")");
    add(
        "unknown type", 2, [](Snapshot &s) { s.chain.module(2).type = sim::kVoltage; }, "row 2 A is missing");
    add(
        "unknown type's serial number", 2, [](Snapshot &s) { s.chain.module(2).identity.serial += 'x'; },
        "row 2 label_SnVersion");
    add(
        "mode", 2, [](Snapshot &s) { s.chain.power->mode = sim::Power::Fixed; },
        "power module comboBox_OutputVoltageMode");
}

void TstStormComparison::otherChainsAreCompared()
{
    QFETCH(int, chain);
    QFETCH(Tamper, tamper);
    QFETCH(QString, difference);
    if (chain != m_chain) {
        m_chain = chain;
        m_world->plug(chain);
    }
    const auto all = [this] { return differences(look(), Comparison::Reach::Whole); };
    (void)QTest::qWaitFor([&all] { return all().isEmpty(); }, 30000);
    QVERIFY2(all().isEmpty(), qPrintable(all().join("\n")));
    Snapshot snapshot = look();
    tamper(snapshot);
    const QStringList found = differences(snapshot, Comparison::Reach::Whole);
    QVERIFY2(!found.filter(difference).isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
}

QTEST_MAIN(TstStormComparison)

#include "tst_stormcomparison.moc"
