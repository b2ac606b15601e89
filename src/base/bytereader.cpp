#include "base/bytereader.h"

ByteReader::ByteReader(const QByteArray &bytes)
    : m_bytes(bytes)
{}

quint16 ByteReader::readValue(int width)
{
    const int begin = m_position;
    m_position += width;
    if (begin < 0 || m_position > m_bytes.size())
        return 0;
    quint32 value = 0;
    for (int at = m_position - 1; at >= begin; --at)
        value = (value << 8) | static_cast<quint8>(m_bytes.at(at));
    return static_cast<quint16>(value);
}

quint8 ByteReader::readU8()
{
    return static_cast<quint8>(readValue(1));
}

quint16 ByteReader::readU16()
{
    return readValue(2);
}

QByteArray ByteReader::readBytes(int count)
{
    const bool inside = m_position >= 0 && m_position < m_bytes.size() && count > 0;
    const QByteArray bytes = inside ? m_bytes.mid(m_position, count) : QByteArray();
    m_position += count;
    return bytes;
}

QString ByteReader::readText(int width)
{
    const QByteArray field = readBytes(width);
    const int end = field.indexOf('\0');
    return QString::fromUtf8(end < 0 ? field : field.left(end));
}
