#include "controller/powersetting.h"

#include <QTranslator>
#include <QtTest>
#include <limits>

namespace {

/// Translates every text of one class into the text with "*" around it.
class StarTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }

    QString translate(const char *context, const char *text, const char * /*disambiguation*/,
                      int /*count*/) const override
    {
        if (qstrcmp(context, "ModuleController_Ctrllr") != 0)
            return QString();
        return QStringLiteral("*%1*").arg(QLatin1String(text));
    }
};

} // namespace

/// What the power module is told for what the user chose.
class TstPowerSetting : public QObject
{
    Q_OBJECT

private slots:
    void codesOnTheWire();
    void modeEntries_data();
    void modeEntries();
    void protectionEntries_data();
    void protectionEntries();
    void protectionsToChooseFrom();
    void protectionNames_data();
    void protectionNames();
    void protectionNamesAreTranslated();
    void setpointInMillivolts_data();
    void setpointInMillivolts();
    void setpointStoredAsFloatKeepsItsMillivolts();
};

void TstPowerSetting::codesOnTheWire()
{
    QCOMPARE(static_cast<int>(PowerSetting::None), 0);
    QCOMPARE(static_cast<int>(PowerSetting::FixedVoltage), 0x10);
    QCOMPARE(static_cast<int>(PowerSetting::AutoVoltage), 0x11);
    QCOMPARE(static_cast<int>(PowerSetting::FixedMode), 0x20);
    QCOMPARE(static_cast<int>(PowerSetting::AutoMode), 0x21);
    QCOMPARE(static_cast<int>(PowerSetting::ProtectionStandard), 0x30);
    QCOMPARE(static_cast<int>(PowerSetting::ProtectionDerating), 0x31);
    QCOMPARE(static_cast<int>(PowerSetting::ProtectionMissionCritical), 0x32);
}

void TstPowerSetting::modeEntries_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("code");
    QTest::newRow("fixed") << 0 << 0x20;
    QTest::newRow("auto") << 1 << 0x21;
    QTest::newRow("beyond the list") << 2 << 0;
    QTest::newRow("no entry") << -1 << 0;
    QTest::newRow("far beyond the list") << std::numeric_limits<int>::max() << 0;
    QTest::newRow("far below the list") << std::numeric_limits<int>::min() << 0;
}

void TstPowerSetting::modeEntries()
{
    QFETCH(int, index);
    QTEST(static_cast<int>(modeSetting(index)), "code");
}

void TstPowerSetting::protectionEntries_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("code");
    QTest::newRow("standard") << 0 << 0x30;
    QTest::newRow("derating") << 1 << 0x31;
    QTest::newRow("mission critical") << 2 << 0x32;
    QTest::newRow("beyond the list") << 3 << 0x30;
    QTest::newRow("not in the list") << -1 << 0x30;
}

void TstPowerSetting::protectionEntries()
{
    QFETCH(int, index);
    QTEST(static_cast<int>(protectionSetting(index)), "code");
}

void TstPowerSetting::protectionsToChooseFrom()
{
    QCOMPARE(::protectionNames(), QStringList({QStringLiteral("standard"), QStringLiteral("derating"),
                                               QStringLiteral("mission critical")}));
}

void TstPowerSetting::protectionNames_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("name");
    QTest::newRow("0") << 0 << "standard";
    QTest::newRow("1") << 1 << "derating";
    QTest::newRow("2") << 2 << "mission critical";
    QTest::newRow("3") << 3 << "none";
    QTest::newRow("4 has no name") << 4 << "4";
    QTest::newRow("7 has no name") << 7 << "7";
    QTest::newRow("255 has no name") << 255 << "255";
}

void TstPowerSetting::protectionNames()
{
    QFETCH(int, code);
    QTEST(protectionName(static_cast<quint8>(code)), "name");
}

void TstPowerSetting::protectionNamesAreTranslated()
{
    StarTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QCOMPARE(::protectionNames(), QStringList({QStringLiteral("*standard*"), QStringLiteral("*derating*"),
                                               QStringLiteral("*mission critical*")}));
    QCOMPARE(protectionName(1), QStringLiteral("*derating*"));
    QCOMPARE(protectionName(3), QStringLiteral("*none*"));
    QCOMPARE(protectionName(4), QStringLiteral("4"));
}

void TstPowerSetting::setpointInMillivolts_data()
{
    QTest::addColumn<double>("volts");
    QTest::addColumn<int>("millivolts");
    QTest::newRow("12.3 V") << 12.3 << 12300;
    QTest::newRow("lowest of the box") << 5.0 << 5000;
    QTest::newRow("highest of the box") << 20.0 << 20000;
    QTest::newRow("0") << 0.0 << 0;
    QTest::newRow("just below half a millivolt") << 0.0004 << 0;
    QTest::newRow("half a millivolt") << 0.0005 << 1;
    QTest::newRow("rounded down") << 10.0004 << 10000;
    QTest::newRow("rounded up") << 10.0006 << 10001;
    QTest::newRow("64.9 V") << 64.9 << 64900;
    QTest::newRow("65 V") << 65.0 << 65000;
    QTest::newRow("just above 65 V") << 65.001 << 65000;
    QTest::newRow("more than 16 bits") << 65.6 << 65000;
    QTest::newRow("largest number") << std::numeric_limits<double>::max() << 65000;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << 65000;
    QTest::newRow("negative") << -12.3 << 0;
    QTest::newRow("least number") << std::numeric_limits<double>::lowest() << 0;
    QTest::newRow("infinite and negative") << -std::numeric_limits<double>::infinity() << 0;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << 0;
}

void TstPowerSetting::setpointInMillivolts()
{
    QFETCH(double, volts);
    QTEST(static_cast<int>(setpointMillivolts(volts)), "millivolts");
}

void TstPowerSetting::setpointStoredAsFloatKeepsItsMillivolts()
{
    for (int tenths = 50; tenths <= 200; ++tenths) {
        const float stored = static_cast<float>(tenths / 10.0);
        QCOMPARE(static_cast<int>(setpointMillivolts(static_cast<double>(stored))), tenths * 100);
    }
}

QTEST_GUILESS_MAIN(TstPowerSetting)
#include "tst_powersetting.moc"
