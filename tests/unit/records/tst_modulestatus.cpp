#include "protocol/records/modulestatus.h"

#include <QtTest>

namespace {

constexpr int kSize = 564;

void put(QByteArray &payload, int offset, const QByteArray &text)
{
    payload.replace(offset, text.size(), text);
}

/// Single bytes hold their own offset, each text its name.
QByteArray wholePayload()
{
    QByteArray payload(kSize, '\0');
    payload[0] = 0x12;
    for (int offset = 16; offset < 36; ++offset)
        payload[offset] = static_cast<char>(offset);
    put(payload, 36, "serial");
    put(payload, 52, "hardware");
    put(payload, 68, "firmware 1");
    put(payload, 84, "firmware 2");
    put(payload, 100, "-1.5");
    put(payload, 116, "2.5");
    put(payload, 132, "1000");
    put(payload, 148, "2000");
    put(payload, 164, "350$120$");
    put(payload, 364, "2$4$");
    return payload;
}

} // namespace

class TstModuleStatus : public QObject
{
    Q_OBJECT

private slots:
    void bytesHaveTheirPlaces();
    void textsHaveTheirPlaces();
    void textsThatFillTheirFieldsKeepAllCharacters();
    void aPayloadCutAnywhereKeepsWhatIsThere();
    void valuesPrintThemselves();
};

void TstModuleStatus::bytesHaveTheirPlaces()
{
    const Module_Status s = decodeModuleStatus(wholePayload());
    QCOMPARE(s.moduleAddress, quint8(16));
    QCOMPARE(s.identification, quint8(17));
    QCOMPARE(s.moduleType, quint8(18));
    QCOMPARE(s.bridgeIndexA, quint8(19));
    QCOMPARE(s.bridgeIndexB, quint8(20));
    QCOMPARE(s.rangeIndexA, quint8(21));
    QCOMPARE(s.rangeIndexB, quint8(22));
    QCOMPARE(s.functionCodeA, quint8(23));
    QCOMPARE(s.functionCodeB, quint8(24));
    QCOMPARE(s.revPolBits, quint8(25));
    QCOMPARE(s.reserved1, (std::array<quint8, 4>{26, 27, 28, 29}));
    QCOMPARE(s.shuntPreselect, quint8(30));
    QCOMPARE(s.reserved2, (std::array<quint8, 4>{31, 32, 33, 34}));
    QCOMPARE(s.reserved3, quint8(35));
}

void TstModuleStatus::textsHaveTheirPlaces()
{
    const Module_Status s = decodeModuleStatus(wholePayload());
    QCOMPARE(s.serialNumber, QStringLiteral("serial"));
    QCOMPARE(s.hardwareVersion, QStringLiteral("hardware"));
    QCOMPARE(s.firmware1Version, QStringLiteral("firmware 1"));
    QCOMPARE(s.firmware2Version, QStringLiteral("firmware 2"));
    QCOMPARE(s.offsetA, QStringLiteral("-1.5"));
    QCOMPARE(s.offsetB, QStringLiteral("2.5"));
    QCOMPARE(s.filterA, QStringLiteral("1000"));
    QCOMPARE(s.filterB, QStringLiteral("2000"));
    QCOMPARE(s.sensorList, QStringLiteral("350$120$"));
    QCOMPARE(s.rangeList, QStringLiteral("2$4$"));
}

void TstModuleStatus::textsThatFillTheirFieldsKeepAllCharacters()
{
    QByteArray payload = wholePayload();
    put(payload, 36, QByteArray(16, 's'));
    put(payload, 52, QByteArray(16, 'h'));
    put(payload, 164, QByteArray(200, 'l'));
    put(payload, 364, QByteArray(200, 'r'));
    QCOMPARE(payload.size(), kSize);
    const Module_Status s = decodeModuleStatus(payload);
    QCOMPARE(s.serialNumber, QString(16, QLatin1Char('s')));
    QCOMPARE(s.hardwareVersion, QString(16, QLatin1Char('h')));
    QCOMPARE(s.sensorList, QString(200, QLatin1Char('l')));
    QCOMPARE(s.rangeList, QString(200, QLatin1Char('r')));
}

void TstModuleStatus::aPayloadCutAnywhereKeepsWhatIsThere()
{
    const QByteArray whole = wholePayload();
    for (int size = 0; size <= kSize; ++size) {
        const Module_Status s = decodeModuleStatus(whole.left(size));
        QCOMPARE(s.moduleType, size > 18 ? quint8(18) : quint8(0));
        QCOMPARE(s.serialNumber, QString::fromLatin1("serial").left(qMax(0, size - 36)));
        QCOMPARE(s.rangeList, QString::fromLatin1("2$4$").left(qMax(0, size - 364)));
    }
    QCOMPARE(decodeModuleStatus({}), Module_Status());
}

void TstModuleStatus::valuesPrintThemselves()
{
    QString text;
    QDebug(&text) << decodeModuleStatus(wholePayload());
    QVERIFY2(text.startsWith(QStringLiteral("Module_Status(address 16, type 18, \"serial\"")),
             qPrintable(text));
}

QTEST_GUILESS_MAIN(TstModuleStatus)
#include "tst_modulestatus.moc"
