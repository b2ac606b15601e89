#include "base/bytereader.h"
#include "protocol/records/fastsystemstatus.h"

#include <QtTest>

namespace {

const QByteArray kHead = QByteArray::fromHex("08a1b1b2b3b4b5b6fe01102734120df0");

Fast_System_Status decode(const QByteArray &payload)
{
    ByteReader reader(payload);
    return readFastSystemStatus(reader);
}

} // namespace

class TstFastSystemStatus : public QObject
{
    Q_OBJECT

private slots:
    void eachFieldHasItsPlace();
    void sixteenBytesAreComplete();
    void onlyBit0AsksForANewStart_data();
    void onlyBit0AsksForANewStart();
    void aShortHeadReadsAsZero();
    void valuesPrintThemselves();
};

void TstFastSystemStatus::eachFieldHasItsPlace()
{
    const Fast_System_Status s = decode(kHead);
    QCOMPARE(s.payloadType, quint8(0x08));
    QCOMPARE(s.reserved1, quint8(0xA1));
    QCOMPARE(s.reserved2, (std::array<quint8, 6>{0xB1, 0xB2, 0xB3, 0xB4, 0xB5, 0xB6}));
    QCOMPARE(s.controlFlags, quint8(0xFE));
    QCOMPARE(s.statusFlags, quint8(0x01));
    QCOMPARE(s.voltageRaw, quint16(10000));
    QCOMPARE(s.outputVoltageRaw, quint16(0x1234));
    QCOMPARE(s.loadCurrentRaw, quint16(0xF00D));
}

void TstFastSystemStatus::sixteenBytesAreComplete()
{
    QCOMPARE(kHead.size(), kFastSystemStatusSize);
    ByteReader reader(kHead);
    readFastSystemStatus(reader);
    QCOMPARE(reader.position(), 16);
}

void TstFastSystemStatus::onlyBit0AsksForANewStart_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<bool>("asks");
    QTest::newRow("none") << 0x00 << false;
    QTest::newRow("bit 0") << 0x01 << true;
    QTest::newRow("all others") << 0xFE << false;
    QTest::newRow("all") << 0xFF << true;
}

void TstFastSystemStatus::onlyBit0AsksForANewStart()
{
    QFETCH(int, flags);
    QFETCH(bool, asks);
    Fast_System_Status status;
    status.controlFlags = static_cast<quint8>(flags);
    QCOMPARE(status.asksForNewStart(), asks);
}

void TstFastSystemStatus::aShortHeadReadsAsZero()
{
    QCOMPARE(decode({}), Fast_System_Status());
    const Fast_System_Status cut = decode(kHead.left(15));
    QCOMPARE(cut.outputVoltageRaw, quint16(0x1234));
    QCOMPARE(cut.loadCurrentRaw, quint16(0));
}

void TstFastSystemStatus::valuesPrintThemselves()
{
    QString text;
    QDebug(&text) << decode(kHead);
    QVERIFY2(text.startsWith(QStringLiteral("Fast_System_Status(type 8, control 254")), qPrintable(text));
}

QTEST_GUILESS_MAIN(TstFastSystemStatus)
#include "tst_fastsystemstatus.moc"
