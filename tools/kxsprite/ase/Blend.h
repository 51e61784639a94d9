#pragma once

#include <Kobaltrix/KXImage.h>

/// a · b of the range 0 to 255; a may be negative.
inline int aseMultiply(int a, int b) {
    const int product = a * b + 128;
    return (product + (product >> 8)) >> 8;
}

/// Draws pixels over others as Aseprite does, bit by bit.
class AseBlender {
public:
    /// @param mode a layer's, by its number; what has none is normal. @param opacity 0 to 255.
    /// @param gray whether the sprite is, where hues and saturations mean nothing.
    AseBlender(int mode, int opacity, bool gray);

    KXPixel operator()(KXPixel backdrop, KXPixel source) const;

private:
    KXPixel over(KXPixel backdrop, KXPixel source) const;

    KXPixel (*_mix)(KXPixel backdrop, KXPixel source); ///< Null for the normal mode.
    int _opacity;
};
