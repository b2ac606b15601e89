#pragma once

#include <QtGlobal>

/// What one input of the target of the module lists consists of: u8 for the row, then steps, each with a
/// byte for its kind.
namespace listsinput {

enum class Step : quint8 {
    Status, ///< flag: of another module, u8 type code (0: that of the row), long block: what follows the type
    Lists,  ///< u8 types of A and B, u8 ranges of A and B, u8 functions of A and B, u8 polarity bits, six
            ///< short blocks: sensors, ranges, filters of A and B, offsets of A and B
    Live,   ///< 9 bytes of a fast status
    Change, ///< u8 parameter, u8 channel: the operator changes it
    Wait,   ///< u16: milliseconds, up to kLongestWait
    Count
};

constexpr quint8 kRowTypes[] = {1, 2, 4, 5, 9, 77}; ///< the last one is no known type
constexpr int kLongestWait = 3000;

} // namespace listsinput
