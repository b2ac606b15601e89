#pragma once

#include <QtGlobal>
#include <array>

/// The frame that carries every message between the program and the controller module, the same over a
/// serial port and over TCP: a header of 20 bytes, a payload of 0 to 1300 bytes and a trailer of 2 bytes.
/// All values are little-endian.
namespace frame {

constexpr std::array<quint8, 5> kStart{0x80, 0x81, 0x82, 0x83, 0x01}; ///< four sync bytes and the version
constexpr int kCounterOffset = 5;
constexpr int kOriginatorOffset = 7;
constexpr int kReservedSize = 8; ///< bytes 8 to 15, zero when sent
constexpr int kLengthOffset = 16;
constexpr int kHeaderSumOffset = 18; ///< 16-bit sum of the 18 bytes before it
constexpr int kHeaderSize = 20;
constexpr int kTrailerSize = 2; ///< CRC over everything before it
constexpr int kMaxPayload = 1300;

constexpr quint8 kController = 0x43; ///< addressee of every request
constexpr quint8 kOwnOriginator = 0x50;
constexpr quint8 kDeviceOriginator = 0x4B; ///< originator of every reply

constexpr quint16 kChecksumStart = 0xF0F1; ///< first value of header sum and CRC

} // namespace frame
