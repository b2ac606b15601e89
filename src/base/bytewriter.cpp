#include "base/bytewriter.h"

ByteWriter &ByteWriter::writeU8(quint8 value)
{
    m_bytes.append(static_cast<char>(value));
    return *this;
}

ByteWriter &ByteWriter::writeU16(quint16 value)
{
    writeU8(static_cast<quint8>(value & 0xFFU));
    return writeU8(static_cast<quint8>(value >> 8));
}

ByteWriter &ByteWriter::writeBytes(const QByteArray &bytes)
{
    m_bytes.append(bytes);
    return *this;
}

ByteWriter &ByteWriter::writeZeros(int count)
{
    m_bytes.append(count, '\0');
    return *this;
}
