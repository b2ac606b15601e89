#include "controller/inputvoltage.h"

#include <QtTest>
#include <limits>

/// The limits that a power module reports, and when its input voltage is a fault.
class TstInputVoltage : public QObject
{
    Q_OBJECT

private slots:
    void limitsBeforeAnyReport();
    void voltageAtALimit_data();
    void voltageAtALimit();
    void voltageFromTheRawValue_data();
    void voltageFromTheRawValue();
    void voltageFollowsTheReportedLimits();
    void reportedLimits_data();
    void reportedLimits();
    void limitsOfTheReportBeforeStay();
};

namespace {

const PowerLimits kPresent{1.0F, 2.0F, 3.0F, 4.0F};
constexpr float kInfinite = std::numeric_limits<float>::infinity();

} // namespace

void TstInputVoltage::limitsBeforeAnyReport()
{
    const PowerLimits limits;
    QCOMPARE(limits.inputVoltageLow, 7.0F);
    QCOMPARE(limits.inputVoltageHigh, 50.0F);
    QCOMPARE(limits.inputVoltageMaximum, 60.0F);
    QCOMPARE(limits.lowerVoltageLimit, 0.0F);
}

void TstInputVoltage::voltageAtALimit_data()
{
    QTest::addColumn<float>("volts");
    QTest::addColumn<bool>("good");
    QTest::newRow("none") << 0.0F << false;
    QTest::newRow("below the low limit") << 6.99F << false;
    QTest::newRow("at the low limit") << 7.0F << false;
    QTest::newRow("above the low limit") << 7.01F << true;
    QTest::newRow("between") << 24.0F << true;
    QTest::newRow("below the high limit") << 49.99F << true;
    QTest::newRow("at the high limit") << 50.0F << false;
    QTest::newRow("above the high limit") << 50.01F << false;
    QTest::newRow("highest that can be reported") << 655.35F << false;
    QTest::newRow("negative") << -24.0F << false;
    QTest::newRow("infinite") << kInfinite << false;
    QTest::newRow("no number") << std::numeric_limits<float>::quiet_NaN() << false;
}

void TstInputVoltage::voltageAtALimit()
{
    QFETCH(float, volts);
    QTEST(isInputVoltageGood(volts, PowerLimits()), "good");
}

void TstInputVoltage::voltageFromTheRawValue_data()
{
    QTest::addColumn<int>("raw");
    QTest::addColumn<bool>("good");
    QTest::newRow("699") << 699 << false;
    QTest::newRow("700") << 700 << false;
    QTest::newRow("701") << 701 << true;
    QTest::newRow("4999") << 4999 << true;
    QTest::newRow("5000") << 5000 << false;
    QTest::newRow("5001") << 5001 << false;
}

void TstInputVoltage::voltageFromTheRawValue()
{
    QFETCH(int, raw);
    QTEST(isInputVoltageGood(static_cast<float>(raw) / 100.0F, PowerLimits()), "good");
}

void TstInputVoltage::voltageFollowsTheReportedLimits()
{
    const PowerLimits limits = withReportedLimits(PowerLimits(), QStringLiteral("9500$30100$40000$5000$0$"));
    QVERIFY(!isInputVoltageGood(9.5F, limits));
    QVERIFY(isInputVoltageGood(9.51F, limits));
    QVERIFY(isInputVoltageGood(30.09F, limits));
    QVERIFY(!isInputVoltageGood(30.1F, limits));
}

void TstInputVoltage::reportedLimits_data()
{
    QTest::addColumn<QString>("list");
    QTest::addColumn<QVector<float>>("limits");
    const auto row = [](const char *name, const char *list, float low, float high, float maximum,
                        float lower) {
        QTest::newRow(name) << QString::fromLatin1(list) << QVector<float>{low, high, maximum, lower};
    };
    row("last entry is no limit", "7000$50000$60000$5000$99$", 7, 50, 60, 5);
    row("without the separator at the end", "7000$50000$60000$5000$99", 7, 50, 60, 5);
    row("list of four gives three", "7000$50000$60000$5000$", 7, 50, 60, 4);
    row("list of three gives two", "7000$50000$60000$", 7, 50, 3, 4);
    row("list of two gives one", "7000$50000$", 7, 2, 3, 4);
    row("list of one gives none", "7000$", 1, 2, 3, 4);
    row("empty list", "", 1, 2, 3, 4);
    row("separators alone", "$$$$$$", 1, 2, 3, 4);
    row("entries beyond the fourth", "7000$50000$60000$5000$8000$9000$", 7, 50, 60, 5);
    row("empty entries are dropped", "$7000$$50000$$$60000$5000$99$$", 7, 50, 60, 5);
    row("fractions of a volt", "7250$49999$60001$1$99$", 7.25F, 49.999F, 60.001F, 0.001F);
    row("fractions of a millivolt", "7000.5$50000$60000$5000$99$", 7.0005F, 50, 60, 5);
    row("zero", "0$0$0$0$0$", 0, 0, 0, 0);
    row("negative", "-7000$50000$60000$5000$99$", -7, 50, 60, 5);
    row("first is no number", "low$50000$60000$5000$99$", 1, 50, 60, 5);
    row("second is no number", "7000$5O000$60000$5000$99$", 7, 2, 60, 5);
    row("third has a unit", "7000$50000$60000 mV$5000$99$", 7, 50, 3, 5);
    row("decimal comma", "7000$50000$60000$5000,5$99$", 7, 50, 60, 4);
    row("the word nan", "nan$50000$60000$nan$99$", 1, 50, 60, 4);
    row("the word inf", "7000$inf$-inf$5000$99$", 7, 2, 3, 5);
    row("too large for a float", "7000$50000$1e60$5000$99$", 7, 50, 3, 5);
    row("hexadecimal", "0x10$50000$60000$5000$99$", 1, 50, 60, 5);
}

void TstInputVoltage::reportedLimits()
{
    QFETCH(QString, list);
    const PowerLimits limits = withReportedLimits(kPresent, list);
    const QVector<float> actual{limits.inputVoltageLow, limits.inputVoltageHigh, limits.inputVoltageMaximum,
                                limits.lowerVoltageLimit};
    QTEST(actual, "limits");
}

void TstInputVoltage::limitsOfTheReportBeforeStay()
{
    PowerLimits limits = withReportedLimits(PowerLimits(), QStringLiteral("8000$40000$45000$6000$0$"));
    limits = withReportedLimits(limits, QStringLiteral("9000$0$"));
    QCOMPARE(limits.inputVoltageLow, 9.0F);
    QCOMPARE(limits.inputVoltageHigh, 40.0F);
    QCOMPARE(limits.inputVoltageMaximum, 45.0F);
    QCOMPARE(limits.lowerVoltageLimit, 6.0F);
}

QTEST_GUILESS_MAIN(TstInputVoltage)
#include "tst_inputvoltage.moc"
