#include "protocol/records/systemstatus.h"

#include <QtTest>

namespace {

constexpr int kTextOffset = 156;

/// Everything before the texts: 3 modules of types 1, 2, 9; controller and power module.
QByteArray fixedPart()
{
    QByteArray payload(kTextOffset, '\0');
    payload[0] = 1;
    payload[16] = 3;
    payload[18] = 1;
    payload[19] = 2;
    payload[20] = 9;
    payload[145] = 7;
    payload[146] = 100;
    payload[155] = 120;
    return payload;
}

QByteArray zeroEnded(const QList<QByteArray> &texts)
{
    QByteArray bytes;
    for (const QByteArray &text : texts)
        bytes += text + '\0';
    return bytes;
}

QStringList texts(const System_Status &s)
{
    return {s.poweringMode, s.dataTransmission, s.samplingRate,
            s.bitRate,      s.reservedText,     s.transmissionMode};
}

} // namespace

class TstSystemStatus : public QObject
{
    Q_OBJECT

private slots:
    void fixedFieldsHaveTheirPlaces();
    void numberOfModulesIsLittleEndian();
    void powerAndControllerAreFoundAnywhere();
    void withoutAPowerModuleNoneIsFound();
    void sixTextsInTheirOrder();
    void textsAreUtf8();
    void missingTextsAreEmpty();
    void textsBeyondTheSixthAreLeftOut();
    void anUnendedTextCounts();
    void textLengthIsTakenModulo256();
    void textAreaOf256BytesIsEmpty();
    void typesBeyondTheArrayAreZero();
    void shortPayloadsReadAsZero();
    void valuesPrintThemselves();
};

void TstSystemStatus::fixedFieldsHaveTheirPlaces()
{
    const System_Status s = decodeSystemStatus(fixedPart());
    QCOMPARE(s.nModules, quint16(3));
    QCOMPARE(s.analogModuleTypes.front(), quint8(1));
    QCOMPARE(s.analogModuleType(0), quint8(1));
    QCOMPARE(s.analogModuleType(1), quint8(2));
    QCOMPARE(s.analogModuleType(2), quint8(9));
    QCOMPARE(s.analogModuleType(127), quint8(7));
    QCOMPARE(s.sModules.front(), quint8(100));
    QCOMPARE(s.sModules.back(), quint8(120));
}

void TstSystemStatus::numberOfModulesIsLittleEndian()
{
    QByteArray payload = fixedPart();
    payload[16] = char(0x34);
    payload[17] = char(0x12);
    QCOMPARE(decodeSystemStatus(payload).nModules, quint16(0x1234));
}

void TstSystemStatus::powerAndControllerAreFoundAnywhere()
{
    const System_Status s = decodeSystemStatus(fixedPart());
    QVERIFY(s.hasFixedModule(100));
    QVERIFY(s.hasFixedModule(120));
}

void TstSystemStatus::withoutAPowerModuleNoneIsFound()
{
    QByteArray payload = fixedPart();
    payload[155] = 0;
    payload[30] = 120; // among the analog modules it does not count
    QVERIFY(!decodeSystemStatus(payload).hasFixedModule(120));
}

void TstSystemStatus::sixTextsInTheirOrder()
{
    const System_Status s = decodeSystemStatus(fixedPart() + zeroEnded({"a", "b", "c", "d", "e", "f"}));
    QCOMPARE(s.poweringMode, QStringLiteral("a"));
    QCOMPARE(s.dataTransmission, QStringLiteral("b"));
    QCOMPARE(s.samplingRate, QStringLiteral("c"));
    QCOMPARE(s.bitRate, QStringLiteral("d"));
    QCOMPARE(s.reservedText, QStringLiteral("e"));
    QCOMPARE(s.transmissionMode, QStringLiteral("f"));
}

void TstSystemStatus::textsAreUtf8()
{
    const System_Status s = decodeSystemStatus(fixedPart() + QByteArray::fromHex("c2b15600"));
    QCOMPARE(s.poweringMode, QStringLiteral("\u00B1V"));
}

void TstSystemStatus::missingTextsAreEmpty()
{
    const QString none;
    QCOMPARE(texts(decodeSystemStatus(fixedPart() + zeroEnded({"a", "", "c"}))),
             QStringList({QStringLiteral("a"), none, QStringLiteral("c"), none, none, none}));
    QCOMPARE(texts(decodeSystemStatus(fixedPart())), QStringList({none, none, none, none, none, none}));
}

void TstSystemStatus::textsBeyondTheSixthAreLeftOut()
{
    const System_Status s = decodeSystemStatus(fixedPart() + zeroEnded({"a", "b", "c", "d", "e", "f", "g"}));
    QCOMPARE(s.transmissionMode, QStringLiteral("f"));
}

void TstSystemStatus::anUnendedTextCounts()
{
    QCOMPARE(decodeSystemStatus(fixedPart() + "half").poweringMode, QStringLiteral("half"));
}

void TstSystemStatus::textLengthIsTakenModulo256()
{
    const QByteArray area(300, 'x');
    QCOMPARE(decodeSystemStatus(fixedPart() + area).poweringMode.size(), 300 - 256);
    QCOMPARE(decodeSystemStatus(fixedPart() + area.left(255)).poweringMode.size(), 255);
}

void TstSystemStatus::textAreaOf256BytesIsEmpty()
{
    QCOMPARE(decodeSystemStatus(fixedPart() + QByteArray(256, 'x')).poweringMode, QString());
}

void TstSystemStatus::typesBeyondTheArrayAreZero()
{
    System_Status s;
    s.analogModuleTypes.fill(1);
    QCOMPARE(s.analogModuleType(127), quint8(1));
    QCOMPARE(s.analogModuleType(128), quint8(0));
    QCOMPARE(s.analogModuleType(65535), quint8(0));
    QCOMPARE(s.analogModuleType(-1), quint8(0));
}

void TstSystemStatus::shortPayloadsReadAsZero()
{
    const QByteArray whole = fixedPart() + zeroEnded({"a", "b", "c", "d", "e", "f"});
    QCOMPARE(decodeSystemStatus({}), System_Status());
    QCOMPARE(decodeSystemStatus(whole.left(16)), System_Status());
    QCOMPARE(decodeSystemStatus(whole.left(17)).nModules, quint16(0));
    for (int size = 18; size < kTextOffset; ++size) {
        const System_Status s = decodeSystemStatus(whole.left(size));
        QCOMPARE(s.nModules, quint16(3));
        QCOMPARE(s.poweringMode, QString());
        QCOMPARE(s.hasFixedModule(120), false);
    }
}

void TstSystemStatus::valuesPrintThemselves()
{
    QString text;
    QDebug(&text) << decodeSystemStatus(fixedPart() + zeroEnded({"fixed"}));
    QVERIFY2(text.startsWith(QStringLiteral("System_Status(3 modules, \"fixed\"")), qPrintable(text));
}

QTEST_GUILESS_MAIN(TstSystemStatus)
#include "tst_systemstatus.moc"
