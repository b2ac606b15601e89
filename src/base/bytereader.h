#pragma once

#include <QByteArray>
#include <QString>

/// Reads little-endian values from the bytes of a message, front to back. Nothing is ever read outside of the
/// message: a value that is not there as a whole reads as zero, and a text is what is left of it, as the
/// device protocol asks for short messages.
class ByteReader
{
public:
    explicit ByteReader(const QByteArray &bytes);

    /// Number of bytes that were asked for so far; may lie beyond the end.
    int position() const { return m_position; }
    void seek(int position) { m_position = position; }

    quint8 readU8();
    quint16 readU16();

    /// The next `count` bytes, fewer if the message ends before.
    QByteArray readBytes(int count);

    /// Text field of `width` bytes, UTF-8, ended by its first zero byte if there is one.
    QString readText(int width);

private:
    quint16 readValue(int width);

    QByteArray m_bytes;
    int m_position = 0;
};
