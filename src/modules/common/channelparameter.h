#pragma once

/// What can be set on a channel; a family of modules has some of these or all.
enum class ChannelParameter {
    TypeIndex,  ///< bridge, input or sensor type
    RangeIndex, ///< gain or range
    Autozero,
    ManualOffset,
    Filter,
    ReversePolarity,
    Shunt,
};
