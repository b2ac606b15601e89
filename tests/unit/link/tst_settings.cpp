#include "link/settings.h"

#include <QVariant>
#include <QtTest>
#include <functional>

using model_Namespace::Settings;

class TstSettings : public QObject
{
    Q_OBJECT

private slots:
    void anEmptyRecordHasNoKind();
    void linkKindsHaveTheAgreedValues();
    void serialDefaultsLeaveTheOtherFieldsAlone();
    void everyFieldCountsInTheComparison();
    void aVariantCarriesTheRecord();
    void theLogShowsPortAndAddress();
};

void TstSettings::anEmptyRecordHasNoKind()
{
    const Settings settings;
    QCOMPARE(settings.commType, Comm_Type::None);
    QVERIFY(settings.portName.isEmpty());
    QCOMPARE(settings.baudRate, 0);
}

void TstSettings::linkKindsHaveTheAgreedValues()
{
    QCOMPARE(static_cast<int>(Comm_Type::Ethernet), 1);
    QCOMPARE(static_cast<int>(Comm_Type::Serial), 2);
}

void TstSettings::serialDefaultsLeaveTheOtherFieldsAlone()
{
    Settings settings;
    settings.portName = QStringLiteral("COM3");
    settings.flowControl = 9;
    model_Namespace::setDefaultSerialParameters(settings);
    QCOMPARE(settings.baudRate, 115200);
    QCOMPARE(settings.parity, 2);
    QCOMPARE(settings.dataBits, 8);
    QCOMPARE(settings.stopBits, 1);
    QCOMPARE(settings.flowControl, 0);
    QCOMPARE(settings.portName, QStringLiteral("COM3"));
    QCOMPARE(settings.commType, Comm_Type::None);
    QVERIFY(settings.serialConfig.isEmpty());
}

void TstSettings::everyFieldCountsInTheComparison()
{
    const QList<std::function<void(Settings &)>> changes{
        [](Settings &s) { s.portName = QStringLiteral("x"); },
        [](Settings &s) { s.dataBits = 1; },
        [](Settings &s) { s.parity = 1; },
        [](Settings &s) { s.baudRate = 1; },
        [](Settings &s) { s.stopBits = 1; },
        [](Settings &s) { s.flowControl = 1; },
        [](Settings &s) { s.serialConfig = QStringLiteral("x"); },
        [](Settings &s) { s.ipAddress = QStringLiteral("x"); },
        [](Settings &s) { s.tcpPort = QStringLiteral("x"); },
        [](Settings &s) { s.commType = Comm_Type::Serial; },
    };
    QVERIFY(Settings() == Settings());
    for (const auto &change : changes) {
        Settings settings;
        change(settings);
        QVERIFY(!(settings == Settings()));
    }
}

void TstSettings::aVariantCarriesTheRecord()
{
    Settings settings;
    settings.tcpPort = QStringLiteral("7777");
    settings.commType = Comm_Type::Ethernet;
    QVERIFY(QVariant::fromValue(settings).value<Settings>() == settings);
}

void TstSettings::theLogShowsPortAndAddress()
{
    Settings settings;
    settings.portName = QStringLiteral("COM20");
    settings.ipAddress = QStringLiteral("192.168.0.62");
    QString text;
    QDebug(&text) << settings;
    QVERIFY2(text.contains(QStringLiteral("COM20")), qPrintable(text));
    QVERIFY2(text.contains(QStringLiteral("192.168.0.62")), qPrintable(text));
}

QTEST_APPLESS_MAIN(TstSettings)
#include "tst_settings.moc"
