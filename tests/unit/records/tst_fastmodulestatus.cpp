#include "base/bytereader.h"
#include "protocol/records/fastmodulestatus.h"

#include <QtTest>
#include <random>

namespace {

Fast_Module_Status entryOf(const QByteArray &hex)
{
    const QByteArray bytes = QByteArray::fromHex(hex);
    ByteReader reader(bytes);
    return readFastModuleStatus(reader);
}

} // namespace

class TstFastModuleStatus : public QObject
{
    Q_OBJECT

private slots:
    void eachFieldHasItsOwnBits_data();
    void eachFieldHasItsOwnBits();
    void fieldsMixedInOneEntry();
    void allBitsSet();
    void entryKStandsAt16Plus9k();
    void entriesOfAbsentModulesAreDecodedToo();
    void aReplyCutAnywhereGives130Entries();
    void entryCutOffKeepsTheBytesThatAreThere();
    void valuesPrintThemselves();
};

void TstFastModuleStatus::eachFieldHasItsOwnBits_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<int>("field");
    QTest::addColumn<quint32>("value");
    const auto row = [](const char *name, const char *hex, int field, quint32 value) {
        QTest::newRow(name) << QByteArray(hex) << field << value;
    };
    row("supplyVoltage", "ff0700000000000000", 0, 0x7FF);
    row("supplyVoltageInvalid", "000800000000000000", 1, 1);
    row("temperature", "00f01f000000000000", 2, 0x1FF);
    row("temperatureInvalid", "000020000000000000", 3, 1);
    row("flag1", "000040000000000000", 4, 1);
    row("flag2", "000080000000000000", 5, 1);
    row("valueA", "000000ffff03000000", 6, 0x3FFFF);
    row("flag3", "000000000004000000", 7, 1);
    row("autozeroA", "000000000008000000", 8, 1);
    row("autozeroB", "000000000010000000", 9, 1);
    row("shuntA", "000000000020000000", 10, 1);
    row("shuntB", "000000000040000000", 11, 1);
    row("flag4", "000000000080000000", 12, 1);
    row("valueB", "000000000000ffff03", 13, 0x3FFFF);
    row("flag5", "000000000000000004", 14, 1);
    row("moduleState", "0000000000000000f8", 15, 31);
}

void TstFastModuleStatus::eachFieldHasItsOwnBits()
{
    QFETCH(QByteArray, hex);
    QFETCH(int, field);
    QFETCH(quint32, value);
    const Fast_Module_Status s = entryOf(hex);
    const QVector<quint32> fields{s.supplyVoltage, s.supplyVoltageInvalid,
                                  s.temperature,   s.temperatureInvalid,
                                  s.flag1,         s.flag2,
                                  s.valueA,        s.flag3,
                                  s.autozeroA,     s.autozeroB,
                                  s.shuntA,        s.shuntB,
                                  s.flag4,         s.valueB,
                                  s.flag5,         s.moduleState};
    for (int i = 0; i < fields.size(); ++i)
        QCOMPARE(fields.at(i), i == field ? value : 0U);
}

void TstFastModuleStatus::fieldsMixedInOneEntry()
{
    Fast_Module_Status expected;
    expected.supplyVoltage = 1200;
    expected.temperature = 160;
    expected.temperatureInvalid = 1;
    expected.valueA = 0x2ABCD;
    expected.autozeroA = 1;
    expected.shuntB = 1;
    expected.valueB = 0x15432;
    expected.moduleState = 0x12;
    QCOMPARE(entryOf("b0042acdab4a325491"), expected);
}

void TstFastModuleStatus::allBitsSet()
{
    const Fast_Module_Status s = entryOf("ffffffffffffffffff");
    QCOMPARE(s.supplyVoltage, quint16(0x7FF));
    QCOMPARE(s.temperature, quint16(0x1FF));
    QCOMPARE(s.valueA, 0x3FFFFU);
    QCOMPARE(s.valueB, 0x3FFFFU);
    QCOMPARE(s.moduleState, quint8(31));
    QCOMPARE(int(s.flag1), 1);
    QCOMPARE(int(s.flag5), 1);
}

void TstFastModuleStatus::entryKStandsAt16Plus9k()
{
    QByteArray payload(16 + 130 * 9, '\0');
    QCOMPARE(payload.size(), 1186);
    for (int k = 0; k < 130; ++k)
        payload[16 + 9 * k] = static_cast<char>(k + 1);
    const auto entries = decodeFastModuleStatus(payload);
    QCOMPARE(entries.size(), 130);
    for (int k = 0; k < 130; ++k)
        QCOMPARE(int(entries.at(k).supplyVoltage), k + 1);
    QCOMPARE(kControllerEntry, 128);
    QCOMPARE(kPowerEntry, 129);
}

void TstFastModuleStatus::entriesOfAbsentModulesAreDecodedToo()
{
    QByteArray payload(1186, '\0');
    payload[16 + 9 * 77 + 8] = char(0xF8);
    const auto entries = decodeFastModuleStatus(payload);
    QCOMPARE(entries.at(77).moduleState, quint8(31));
    QCOMPARE(entries.at(76), Fast_Module_Status());
}

void TstFastModuleStatus::aReplyCutAnywhereGives130Entries()
{
    std::mt19937 random(7);
    QByteArray payload(1186, '\0');
    for (char &byte : payload)
        byte = static_cast<char>(random());
    const auto whole = decodeFastModuleStatus(payload);
    for (int size = 0; size <= payload.size(); ++size) {
        const auto entries = decodeFastModuleStatus(payload.left(size));
        QCOMPARE(entries.size(), 130);
        const int complete = qMax(0, (size - 16) / 9);
        for (int k = 0; k < 130; ++k) {
            if (k < complete)
                QCOMPARE(entries.at(k), whole.at(k));
            else if (k > complete)
                QCOMPARE(entries.at(k), Fast_Module_Status());
        }
    }
}

void TstFastModuleStatus::entryCutOffKeepsTheBytesThatAreThere()
{
    const Fast_Module_Status s = entryOf("ff07");
    QCOMPARE(s.supplyVoltage, quint16(0x7FF));
    QCOMPARE(s.valueA, 0U);
}

void TstFastModuleStatus::valuesPrintThemselves()
{
    QString text;
    QDebug(&text) << entryOf("b0042acdab4a325491");
    QVERIFY2(text.startsWith(QStringLiteral("Fast_Module_Status(voltage 1200, temperature 160")),
             qPrintable(text));
}

QTEST_GUILESS_MAIN(TstFastModuleStatus)
#include "tst_fastmodulestatus.moc"
