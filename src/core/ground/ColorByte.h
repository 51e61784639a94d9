#pragma once

#include <bit>
#include <cstdint>

/// The step of 0 to 255 that is nearest to a channel, rounded as graphics drivers do: to even. What is not a
/// number is 0.
inline std::uint8_t _KXColorByte(float channel) {
    const float clamped = channel > 0 ? (channel < 1 ? channel : 1) : 0;
    // At this height a float has no fraction: its lowest bits are the value.
    constexpr float wholeNumbers = 1 << 23;
    return static_cast<std::uint8_t>(std::bit_cast<std::uint32_t>(clamped * 255 + wholeNumbers));
}
