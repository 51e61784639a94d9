#pragma once

#include <Kobaltrix/KXTypes.h>

#include <array>
#include <cstdint>

/// A colour as people choose it.
struct _KXHsv {
    double hue = 0;        ///< Degrees, from 0 to 360, which are both red.
    double saturation = 0; ///< 0 for grey, to 1.
    double value = 0;      ///< 0 for black, to 1.
};

/// Red, green, blue and opacity as pixels have them.
using _KXColorBytes = std::array<std::uint8_t, 4>;

/// The bytes of a colour: the nearest ones, 0 for what is no number.
_KXColorBytes _KXBytesOfColor(KXColor color);
KXColor _KXColorOfBytes(const _KXColorBytes& bytes);

/// What of a colour people choose. Hue and saturation stay those of @a before where a colour has none.
_KXHsv _KXHsvOf(const _KXColorBytes& bytes, const _KXHsv& before);
/// The nearest bytes; those that an _KXHsvOf() was made of are these.
_KXColorBytes _KXBytesOf(const _KXHsv& hsv, std::uint8_t opacity);
