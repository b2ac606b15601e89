#include "base/bytereader.h"
#include "base/bytewriter.h"

#include <QtTest>

class TstByteWriter : public QObject
{
    Q_OBJECT

private slots:
    void valuesAreLittleEndian();
    void callsFollowEachOther();
    void readerGivesBackWhatWasWritten();
};

void TstByteWriter::valuesAreLittleEndian()
{
    ByteWriter writer;
    writer.writeU8(0x80);
    writer.writeU16(0x1234);
    QCOMPARE(writer.bytes(), QByteArray::fromHex("803412"));
}

void TstByteWriter::callsFollowEachOther()
{
    ByteWriter writer;
    writer.writeU8(1).writeZeros(3).writeBytes("ab").writeZeros(0).writeU16(0xFF00);
    QCOMPARE(writer.bytes(), QByteArray::fromHex("01000000616200ff"));
}

void TstByteWriter::readerGivesBackWhatWasWritten()
{
    for (int value = 0; value <= 0xFFFF; value += 251) {
        ByteWriter writer;
        writer.writeU16(static_cast<quint16>(value)).writeU8(static_cast<quint8>(value & 0xFF));
        ByteReader reader(writer.bytes());
        QCOMPARE(int(reader.readU16()), value);
        QCOMPARE(int(reader.readU8()), value & 0xFF);
    }
}

QTEST_GUILESS_MAIN(TstByteWriter)
#include "tst_bytewriter.moc"
