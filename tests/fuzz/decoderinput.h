#pragma once

#include <QtGlobal>

/// What one input of the frame decoder's target consists of: a byte that picks the limit of the buffer, then
/// steps, each with a byte for its kind.
namespace decoderinput {

enum class Step : quint8 {
    Bytes,   ///< short block, each byte by itself
    Read,    ///< short block, as one read of the link
    Frame,   ///< see below
    Pause,   ///< u16: milliseconds, up to kLongestPause
    Turn,    ///< the event loop comes round
    Abandon, ///< flag: whether receivers of a frame drop the rest of the read from now on
    TimeOut, ///< the slot of the time-out is called
    Count
};

/// A frame: u8 counter, u16 payload size up to kLongestPayload, short block that is repeated as the payload,
/// a Damage with u16 for its place, u16 for the place where the link cuts it into two reads.
enum class Damage : quint8 { None, FlippedBit, LostByte, DoubledByte, Originator, Count };

constexpr int kLongestPause = 2500;
constexpr int kLongestPayload = 1310; ///< a little more than what is allowed

} // namespace decoderinput
