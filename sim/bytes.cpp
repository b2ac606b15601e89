#include "sim/bytes.h"

namespace sim {

void putU8(QByteArray &bytes, int offset, int value)
{
    Q_ASSERT(offset >= 0 && offset < bytes.size());
    bytes[offset] = static_cast<char>(value & 0xFF);
}

void putU16(QByteArray &bytes, int offset, int value)
{
    putU8(bytes, offset, value & 0xFF);
    putU8(bytes, offset + 1, (value >> 8) & 0xFF);
}

quint8 u8At(const QByteArray &bytes, int offset)
{
    if (offset < 0 || offset >= bytes.size())
        return 0;
    return static_cast<quint8>(bytes.at(offset));
}

quint16 u16At(const QByteArray &bytes, int offset)
{
    return static_cast<quint16>(u8At(bytes, offset) | (u8At(bytes, offset + 1) << 8));
}

void putText(QByteArray &bytes, int offset, int width, const QString &text)
{
    QByteArray utf8 = text.toUtf8();
    int size = utf8.size();
    if (size > width) {
        size = width;
        while (size > 0 && (u8At(utf8, size) & 0xC0) == 0x80)
            --size;
    }
    for (int i = 0; i < size; ++i)
        putU8(bytes, offset + i, u8At(utf8, i));
}

QString hexCode(int code)
{
    return QStringLiteral("0x%1").arg(code & 0xFF, 2, 16, QLatin1Char('0'));
}

} // namespace sim
