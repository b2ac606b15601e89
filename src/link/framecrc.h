#pragma once

#include <QtGlobal>

namespace frame {

/// 16-bit CRC with the polynomial 0x1021, most significant bit first, not reflected, not inverted. Takes
/// `crc` on over `size` bytes; the frame starts with kChecksumStart.
quint16 updateCrc(quint16 crc, const char *bytes, int size);

/// 16-bit sum of the bytes as unsigned values, carried on from `sum`.
quint16 updateSum(quint16 sum, const char *bytes, int size);

} // namespace frame
