#include "base/bytereader.h"

ByteReader::ByteReader(const QByteArray &bytes)
    : m_bytes(bytes)
{
}

quint8 ByteReader::readU8()
{
    const int at = m_position++;
    return at < m_bytes.size() ? static_cast<quint8>(m_bytes.at(at)) : quint8(0);
}

quint16 ByteReader::readU16()
{
    const quint16 low = readU8();
    const quint16 high = readU8();
    return static_cast<quint16>(low | (high << 8));
}

quint64 ByteReader::readU64()
{
    quint64 value = 0;
    for (unsigned shift = 0; shift < 64; shift += 8)
        value |= quint64(readU8()) << shift;
    return value;
}

QByteArray ByteReader::readBytes(int count)
{
    const QByteArray bytes = m_position < m_bytes.size() ? m_bytes.mid(m_position, count) : QByteArray();
    m_position += count;
    return bytes;
}

QString ByteReader::readText(int width)
{
    const QByteArray field = readBytes(width);
    const int end = field.indexOf('\0');
    return QString::fromUtf8(end < 0 ? field : field.left(end));
}
