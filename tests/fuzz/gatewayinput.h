#pragma once

#include <QtGlobal>

/// What one input of the gateway's target consists of: steps, each with a byte for its kind.
namespace gatewayinput {

enum class Step : quint8 {
    Piece,   ///< long block: what the link receives at once
    Fields,  ///< u8 count, for each u8 number and short block: a status line with these fields
    Wait,    ///< u16: milliseconds, up to kLongestWait
    Connect, ///< flag: whether the gateway accepts
    Drop,    ///< the gateway goes away
    Operate, ///< u8 what, two short blocks: texts or, by their sizes, numbers
    Count
};

constexpr int kFields = 39;
constexpr int kLongestWait = 6000;

} // namespace gatewayinput
