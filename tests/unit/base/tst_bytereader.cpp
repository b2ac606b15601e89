#include "base/bytereader.h"

#include <QtTest>

class TstByteReader : public QObject
{
    Q_OBJECT

private slots:
    void valuesAreLittleEndian();
    void aMissingValueIsZero();
    void aValueCutOffIsZeroAsAWhole();
    void nothingIsReadBehindAValueCutOff();
    void bytesAreCutAtTheEnd();
    void textEndsAtItsFirstZeroByte();
    void textThatFillsItsWidthKeepsAllCharacters();
    void textIsUtf8();
    void textBeyondTheEndIsEmpty();
    void seekGoesBothWays();
    void nothingIsReadBeforeTheBegin();
    void aCountBelowZeroReadsNothing();
};

void TstByteReader::valuesAreLittleEndian()
{
    ByteReader reader(QByteArray::fromHex("fe3412"));
    QCOMPARE(reader.readU8(), quint8(0xFE));
    QCOMPARE(reader.readU16(), quint16(0x1234));
    QCOMPARE(reader.position(), 3);
}

void TstByteReader::aMissingValueIsZero()
{
    ByteReader reader(QByteArray{});
    QCOMPARE(reader.readU8(), quint8(0));
    QCOMPARE(reader.readU16(), quint16(0));
    QCOMPARE(reader.position(), 3);
}

void TstByteReader::aValueCutOffIsZeroAsAWhole()
{
    ByteReader reader(QByteArray::fromHex("01ff"));
    reader.readU8();
    QCOMPARE(reader.readU16(), quint16(0));
}

void TstByteReader::nothingIsReadBehindAValueCutOff()
{
    ByteReader reader(QByteArray::fromHex("ff"));
    QCOMPARE(reader.readU16(), quint16(0));
    QCOMPARE(reader.readU8(), quint8(0));
    QCOMPARE(reader.readBytes(4), QByteArray());
}

void TstByteReader::bytesAreCutAtTheEnd()
{
    ByteReader reader("abcde");
    QCOMPARE(reader.readBytes(3), QByteArray("abc"));
    QCOMPARE(reader.readBytes(3), QByteArray("de"));
    QCOMPARE(reader.position(), 6);
    QCOMPARE(reader.readBytes(3), QByteArray());
}

void TstByteReader::textEndsAtItsFirstZeroByte()
{
    ByteReader reader(QByteArray("ab\0cd", 5) + 'x');
    QCOMPARE(reader.readText(5), QStringLiteral("ab"));
    QCOMPARE(reader.readU8(), quint8('x'));
}

void TstByteReader::textThatFillsItsWidthKeepsAllCharacters()
{
    ByteReader reader("0123456789abcdefX");
    QCOMPARE(reader.readText(16), QStringLiteral("0123456789abcdef"));
}

void TstByteReader::textIsUtf8()
{
    ByteReader reader(QByteArray::fromHex("c2b156"));
    QCOMPARE(reader.readText(3), QStringLiteral("\u00B1V"));
}

void TstByteReader::textBeyondTheEndIsEmpty()
{
    ByteReader reader("abc");
    reader.seek(100);
    QCOMPARE(reader.readText(16), QString());
}

void TstByteReader::seekGoesBothWays()
{
    ByteReader reader(QByteArray::fromHex("010203"));
    reader.seek(2);
    QCOMPARE(reader.readU8(), quint8(3));
    reader.seek(0);
    QCOMPARE(reader.readU8(), quint8(1));
}

void TstByteReader::nothingIsReadBeforeTheBegin()
{
    ByteReader reader(QByteArray::fromHex("010203"));
    reader.seek(-2);
    QCOMPARE(reader.readU8(), quint8(0));
    QCOMPARE(reader.readU16(), quint16(0)); // half of it is there
    reader.seek(-1);
    QCOMPARE(reader.readBytes(3), QByteArray());
}

void TstByteReader::aCountBelowZeroReadsNothing()
{
    ByteReader reader("abc");
    QCOMPARE(reader.readBytes(-1), QByteArray());
}

QTEST_GUILESS_MAIN(TstByteReader)
#include "tst_bytereader.moc"
