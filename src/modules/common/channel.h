#pragma once

#include <cstddef>
#include <optional>

/// Channels of an analog module, by the number with which they are addressed within it.
enum class Channel { A = 1, B = 2 };

constexpr int kChannelA = static_cast<int>(Channel::A);
constexpr int kChannelB = static_cast<int>(Channel::B);

/// Place of a channel in an array of the two.
constexpr std::size_t indexOf(Channel channel)
{
    return channel == Channel::A ? 0 : 1;
}

/// The channel with this number; nothing for any other number.
inline std::optional<Channel> channelOf(int number)
{
    if (number != kChannelA && number != kChannelB)
        return std::nullopt;
    return static_cast<Channel>(number);
}
