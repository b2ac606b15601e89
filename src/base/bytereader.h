#pragma once

#include <QByteArray>
#include <QString>

/// Reads little-endian values from the bytes of a message, front to back. Nothing is ever read beyond the
/// end: what is missing reads as zero or as an empty text, as the device protocol asks for short messages.
class ByteReader
{
public:
    explicit ByteReader(const QByteArray &bytes);

    /// Number of bytes that were asked for so far; may lie beyond the end.
    int position() const { return m_position; }
    void seek(int position) { m_position = position; }

    quint8 readU8();
    quint16 readU16();
    quint64 readU64();

    /// The next `count` bytes, fewer if the message ends before.
    QByteArray readBytes(int count);

    /// Text field of `width` bytes, UTF-8, ended by its first zero byte if there is one.
    QString readText(int width);

private:
    QByteArray m_bytes;
    int m_position = 0;
};
