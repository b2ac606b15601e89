#include "weather.h"
#include "world.h"

#include "sim/chainfile.h"
#include "sim/faults.h"
#include "sim/gatewayfaults.h"

#include <QtTest>

using namespace storm;

namespace {

const QStringList kWanted{"cut", "delay", "reset", "close", "lose", "corrupt", "gateway"};

/// What goes wrong with the first requests, by name.
QStringList faultsOf(const QString &rules, int requests)
{
    sim::FaultScript script;
    QString error;
    if (!script.parse(rules, &error))
        QTest::qFail(qPrintable(error), __FILE__, __LINE__);
    QStringList names;
    for (int i = 0; i < requests; ++i) {
        for (const QString &note :
             script.planFor(QByteArray::fromHex("0800000000"), sim::Milliseconds(i)).notes)
            names.append(note.section(QLatin1Char(' '), 0, 0));
    }
    return names;
}

} // namespace

/// No storm without each kind of fault, and no value that is the same before and after.
class TstStormWeather : public QObject
{
    Q_OBJECT

private slots:
    void kindsThatWereNotMetAreMissing();
    void missingKindsAreBrought();
    void missingFaultOfTheGatewayIsBrought();
    void nothingIsBroughtThatIsNotMissing();
    void chainsDifferInAllThatIsShown();
};

void TstStormWeather::kindsThatWereNotMetAreMissing()
{
    WorldCounts counts;
    QCOMPARE(Weather::missingKinds(counts), kWanted);
    counts.faults = {{"reset-flag", 4}, {"silence", 2}, {"gateway cut", 1}, {"delay", 3}};
    QCOMPARE(Weather::missingKinds(counts), (QStringList{"cut", "reset", "close", "lose", "corrupt"}));
    counts.faults = {{"cut", 1}, {"reset", 1}, {"close", 1}, {"lose", 1}, {"corrupt", 1}, {"delay", 1}};
    QCOMPARE(Weather::missingKinds(counts), QStringList("gateway"));
    counts.faults["gateway odd"] = 1;
    QCOMPARE(Weather::missingKinds(counts), QStringList());
}

void TstStormWeather::missingKindsAreBrought()
{
    for (quint32 seed = 1; seed < 100; ++seed) {
        Chance chance(seed);
        const QStringList faults = faultsOf(Weather::wantedDeviceRules(kWanted, chance), 18);
        QCOMPARE(faults, QStringList(kWanted.mid(0, 6)));
    }
    Chance chance(1);
    QCOMPARE(faultsOf(Weather::wantedDeviceRules({"lose"}, chance), 3), QStringList("lose"));
}

void TstStormWeather::missingFaultOfTheGatewayIsBrought()
{
    for (quint32 seed = 1; seed < 100; ++seed) {
        Chance chance(seed);
        sim::GatewayFaults script;
        QString error;
        QVERIFY2(script.parse(Weather::wantedGatewayRules(kWanted, chance), &error), qPrintable(error));
        QVERIFY(!script.planFor("#?", sim::Milliseconds(0)).isClean());
    }
}

void TstStormWeather::nothingIsBroughtThatIsNotMissing()
{
    Chance chance(1);
    QCOMPARE(Weather::wantedDeviceRules({"gateway"}, chance), QString());
    QCOMPARE(Weather::wantedDeviceRules({}, chance), QString());
    QCOMPARE(Weather::wantedGatewayRules({"lose"}, chance), QString());
}

void TstStormWeather::chainsDifferInAllThatIsShown()
{
    QMap<QString, QStringList> shown; // by what it is, one of each chain that has it
    const auto addIdentity = [&shown](const QString &what, const sim::Identity &identity) {
        shown[what + " serial"].append(identity.serial);
        shown[what + " hardware"].append(identity.hardware);
        shown[what + " firmware 1"].append(identity.firmware1);
        shown[what + " firmware 2"].append(identity.firmware2);
    };
    for (const QString &text : stormChains()) {
        sim::Chain chain;
        QString error;
        QVERIFY2(sim::parseChain(text, &chain, &error), qPrintable(error));
        shown["powering"].append(chain.system.poweringMode);
        shown["transmission"].append(chain.system.dataTransmission);
        shown["mode"].append(chain.system.transmissionMode);
        shown["bit rate"].append(chain.system.bitRate());
        shown["sampling rate"].append(chain.system.samplingRate());
        shown["modules"].append(QString::number(chain.modules.size()));
        addIdentity("controller", chain.controller.identity);
        shown["controller temperature"].append(QString::number(chain.controller.health.celsius));
        if (chain.power)
            addIdentity("power", chain.power->identity);
        for (int address = 1; address <= chain.modules.size(); ++address)
            addIdentity(QStringLiteral("module %1").arg(address), chain.module(address).identity);
    }
    QCOMPARE(shown["powering"].size(), 3);
    for (auto entry = shown.cbegin(); entry != shown.cend(); ++entry) {
        const QStringList &texts = entry.value();
        QVERIFY2(QStringList(texts).removeDuplicates() == 0,
                 qPrintable(entry.key() + ": " + texts.join(", ")));
    }
}

QTEST_GUILESS_MAIN(TstStormWeather)

#include "tst_stormweather.moc"
