#pragma once

#include <QByteArray>

/// Frames of the device for the tests of the link, worked out by a bitwise program of their own.
namespace deviceframes {

/// Counter 1, no payload.
inline QByteArray empty()
{
    return QByteArray::fromHex("808182830101504b0000000000000000000094f39539");
}

/// Counter 7, payload 11 22 33 80 81, which ends like the begin of a frame.
inline QByteArray five()
{
    return QByteArray::fromHex("808182830107504b000000000000000005009ff31122338081e82d");
}

/// Counter 0x2a, payload 01 01 80 81 82 83 01 11, which holds the begin of a frame.
inline QByteArray eight()
{
    return QByteArray::fromHex("80818283012a504b00000000000000000800c5f30101808182830111337f");
}

/// Byte i of the payload is 7 i + 3.
inline QByteArray patternPayload(int size)
{
    QByteArray payload;
    for (int i = 0; i < size; ++i)
        payload.append(static_cast<char>(7 * i + 3));
    return payload;
}

/// Counter 9, the longest payload, 1300 bytes of the pattern.
inline QByteArray largest()
{
    return QByteArray::fromHex("808182830109504b00000000000000001405b5f3") + patternPayload(1300) +
           QByteArray::fromHex("2d2b");
}

/// Right but for its length: counter 9, 1301 bytes of the pattern.
inline QByteArray tooLong()
{
    return QByteArray::fromHex("808182830109504b00000000000000001505b6f3") + patternPayload(1301) +
           QByteArray::fromHex("4a1c");
}

/// Frames with the payload 5a and the counters that the names tell.
inline QByteArray counterFE()
{
    return QByteArray::fromHex("8081828301fe504b0000000000000000010092f45afed0");
}

inline QByteArray counterFF()
{
    return QByteArray::fromHex("8081828301ff504b0000000000000000010093f45aea4f");
}

inline QByteArray counter00()
{
    return QByteArray::fromHex("808182830100504b0000000000000000010094f35ab0cb");
}

inline QByteArray counter01()
{
    return QByteArray::fromHex("808182830101504b0000000000000000010095f35aa454");
}

inline QByteArray counter02()
{
    return QByteArray::fromHex("808182830102504b0000000000000000010096f35ab9e5");
}

/// `frame` with its last byte spoilt.
inline QByteArray withBadChecksum(QByteArray frame)
{
    frame.back() = static_cast<char>(frame.back() ^ 1);
    return frame;
}

} // namespace deviceframes
