#include "link/framecrc.h"

#include <array>

namespace frame {

namespace {

constexpr unsigned kPolynomial = 0x1021;
constexpr int kSlices = 16; ///< bytes that are taken in one step

/// Row k holds, for each byte value, what that byte contributes to the CRC when k bytes follow it.
using Tables = std::array<std::array<quint16, 256>, kSlices>;

constexpr quint16 shiftByte(unsigned crc)
{
    for (int bit = 0; bit < 8; ++bit)
        crc = (crc & 0x8000U) != 0 ? (crc << 1) ^ kPolynomial : crc << 1;
    return static_cast<quint16>(crc);
}

constexpr Tables makeTables()
{
    Tables tables{};
    for (unsigned value = 0; value < 256; ++value)
        tables[0][value] = shiftByte(value << 8);
    for (std::size_t row = 1; row < kSlices; ++row) {
        for (std::size_t value = 0; value < 256; ++value) {
            const unsigned before = tables[row - 1][value];
            tables[row][value] = static_cast<quint16>((before << 8) ^ tables[0][before >> 8]);
        }
    }
    return tables;
}

constexpr Tables kTables = makeTables();

constexpr quint8 value(char byte)
{
    return static_cast<quint8>(byte);
}

quint16 updateSlice(unsigned crc, const char *bytes)
{
    unsigned next = kTables[kSlices - 1][value(bytes[0]) ^ (crc >> 8)] ^
                    kTables[kSlices - 2][value(bytes[1]) ^ (crc & 0xFFU)];
    for (std::size_t i = 2; i < kSlices; ++i)
        next ^= kTables[kSlices - 1 - i][value(bytes[i])];
    return static_cast<quint16>(next);
}

} // namespace

quint16 updateCrc(quint16 crc, const char *bytes, int size)
{
    for (; size >= kSlices; size -= kSlices, bytes += kSlices)
        crc = updateSlice(crc, bytes);
    for (; size > 0; --size, ++bytes)
        crc = static_cast<quint16>((crc << 8) ^ kTables[0][(crc >> 8) ^ value(*bytes)]);
    return crc;
}

quint16 updateSum(quint16 sum, const char *bytes, int size)
{
    for (int i = 0; i < size; ++i)
        sum = static_cast<quint16>(sum + value(bytes[i]));
    return sum;
}

} // namespace frame
