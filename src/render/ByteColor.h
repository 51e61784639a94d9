#pragma once

#include <Kobaltrix/KXTypes.h>

#include <bit>
#include <cstdint>

/// The colour that quads are drawn in, in the steps that pixels have. A driver that draws in software rounds
/// what lies between two steps one way or another, as the shape, its neighbours and the calls have it.
struct _KXByteColor {
    std::uint8_t r, g, b, a;

    _KXByteColor(KXColor color)
        : r(nearest(color.r)), g(nearest(color.g)), b(nearest(color.b)), a(nearest(color.a)) {}
    operator KXColor() const {
        constexpr float steps = 255;
        return {static_cast<float>(r) / steps, static_cast<float>(g) / steps, static_cast<float>(b) / steps,
                static_cast<float>(a) / steps};
    }

private:
    static std::uint8_t nearest(float value) {
        const float clamped = value > 0 ? (value < 1 ? value : 1) : 0; // not-a-number is 0
        // At this height a float has no fraction: its lowest bits are the value, rounded to even as drivers
        // do.
        constexpr float wholeNumbers = 1 << 23;
        return static_cast<std::uint8_t>(std::bit_cast<std::uint32_t>(clamped * 255 + wholeNumbers));
    }
};
