#pragma once

#include "core/ground/ColorByte.h"

#include <Kobaltrix/KXTypes.h>

#include <cstdint>

/// The colour that quads are drawn in, in the steps that pixels have. A driver that draws in software rounds
/// what lies between two steps one way or another, as the shape, its neighbours and the calls have it.
struct _KXByteColor {
    std::uint8_t r, g, b, a;

    _KXByteColor(KXColor color)
        : r(_KXColorByte(color.r)), g(_KXColorByte(color.g)), b(_KXColorByte(color.b)),
          a(_KXColorByte(color.a)) {}
    operator KXColor() const {
        constexpr float steps = 255;
        return {static_cast<float>(r) / steps, static_cast<float>(g) / steps, static_cast<float>(b) / steps,
                static_cast<float>(a) / steps};
    }
};
