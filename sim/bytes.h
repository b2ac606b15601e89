#pragma once

#include <QByteArray>
#include <QString>

namespace sim {

constexpr int kByteMaximum = 255;
constexpr int kWordMaximum = 65535;

// Little-endian access to a buffer of fixed size. Offsets are the caller's duty: writing outside the
// buffer is a programming error, reading outside gives 0.

void putU8(QByteArray &bytes, int offset, int value);
void putU16(QByteArray &bytes, int offset, int value);
quint8 u8At(const QByteArray &bytes, int offset);
quint16 u16At(const QByteArray &bytes, int offset);

/// Writes the UTF-8 form of `text`, cut at `width` bytes; the rest of the field keeps its zeros. The cut
/// never leaves half a character behind.
void putText(QByteArray &bytes, int offset, int width, const QString &text);

/// "0x" and two lower-case digits.
QString hexCode(int code);

} // namespace sim
