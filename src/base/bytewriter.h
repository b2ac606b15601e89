#pragma once

#include <QByteArray>

/// Appends little-endian values to a message.
class ByteWriter
{
public:
    const QByteArray &bytes() const { return m_bytes; }

    ByteWriter &writeU8(quint8 value);
    ByteWriter &writeU16(quint16 value);
    ByteWriter &writeBytes(const QByteArray &bytes);

    /// `count` zero bytes.
    ByteWriter &writeZeros(int count);

private:
    QByteArray m_bytes;
};
