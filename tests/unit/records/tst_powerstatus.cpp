#include "protocol/records/powerstatus.h"

#include <QtTest>

namespace {

constexpr int kSize = 100;

/// Single bytes hold their own offset, each text its name.
QByteArray wholePayload()
{
    QByteArray payload(kSize, '\0');
    payload[0] = 0x12;
    for (int offset = 16; offset < 36; ++offset)
        payload[offset] = static_cast<char>(offset);
    payload.replace(36, 6, "serial");
    payload.replace(52, 8, "hardware");
    payload.replace(68, 10, "firmware 1");
    payload.replace(84, 10, "firmware 2");
    return payload;
}

} // namespace

class TstPowerStatus : public QObject
{
    Q_OBJECT

private slots:
    void bytesHaveTheirPlaces();
    void voltagesAreLittleEndian();
    void textsHaveTheirPlaces();
    void aTextThatFillsItsFieldKeepsAllCharacters();
    void shortPayloadsReadAsZero();
    void valuesPrintThemselves();
};

void TstPowerStatus::bytesHaveTheirPlaces()
{
    const Power_Status s = decodePowerStatus(wholePayload());
    QCOMPARE(s.moduleAddress, quint8(16));
    QCOMPARE(s.identification, quint8(17));
    QCOMPARE(s.moduleType, quint8(18));
    QCOMPARE(s.powerMode, quint8(19));
    QCOMPARE(s.powerProtection, quint8(20));
    QCOMPARE(s.reserved1, (std::array<quint8, 4>{21, 22, 23, 24}));
    QCOMPARE(s.reserved2, quint8(25));
    QCOMPARE(s.reserved3, quint8(26));
    QCOMPARE(s.reserved5, (std::array<quint8, 2>{33, 34}));
    QCOMPARE(s.reserved6, quint8(35));
}

void TstPowerStatus::voltagesAreLittleEndian()
{
    const Power_Status s = decodePowerStatus(wholePayload());
    QCOMPARE(s.fixedVoltage, quint16(27 + 256 * 28));
    QCOMPARE(s.autoVoltage, quint16(29 + 256 * 30));
    QCOMPARE(s.reserved4, quint16(31 + 256 * 32));
}

void TstPowerStatus::textsHaveTheirPlaces()
{
    const Power_Status s = decodePowerStatus(wholePayload());
    QCOMPARE(s.serialNumber, QStringLiteral("serial"));
    QCOMPARE(s.hardwareVersion, QStringLiteral("hardware"));
    QCOMPARE(s.firmware1Version, QStringLiteral("firmware 1"));
    QCOMPARE(s.firmware2Version, QStringLiteral("firmware 2"));
}

void TstPowerStatus::aTextThatFillsItsFieldKeepsAllCharacters()
{
    QByteArray payload = wholePayload();
    payload.replace(84, 16, "0123456789abcdef");
    QCOMPARE(payload.size(), kSize);
    QCOMPARE(decodePowerStatus(payload).firmware2Version, QStringLiteral("0123456789abcdef"));
}

void TstPowerStatus::shortPayloadsReadAsZero()
{
    QCOMPARE(decodePowerStatus({}), Power_Status());
    QCOMPARE(decodePowerStatus(wholePayload().left(16)), Power_Status());
    const Power_Status cut = decodePowerStatus(wholePayload().left(28));
    QCOMPARE(cut.powerMode, quint8(19));
    QCOMPARE(cut.fixedVoltage, quint16(0));
    QCOMPARE(cut.serialNumber, QString());
}

void TstPowerStatus::valuesPrintThemselves()
{
    QString text;
    QDebug(&text) << decodePowerStatus(wholePayload());
    QVERIFY2(text.startsWith(QStringLiteral("Power_Status(type 18, \"serial\", mode 19")), qPrintable(text));
}

QTEST_GUILESS_MAIN(TstPowerStatus)
#include "tst_powerstatus.moc"
