#pragma once

#include <Kobaltrix/KXPlatform.h>

/// @file
/// The values that every operation passes by value, their constants, and small scalar functions.
/// Nothing here allocates, fails, or depends on the library being initialised; every function is usable from
/// any thread.

/// A position in pixels. In a window's 2D mode one unit is one point and y grows downward.
struct KXPoint {
    float x; ///< Distance from the left edge.
    float y; ///< Distance from the top edge.
};

/// An extent in pixels.
struct KXSize {
    float width;  ///< Horizontal extent.
    float height; ///< Vertical extent.
};

/// A rectangle: its top-left corner and its extent.
struct KXRect {
    KXPoint origin; ///< Top-left corner.
    KXSize size;    ///< Width and height.
};

/// A colour with straight (not premultiplied) alpha. Channels are nominally 0.0 to 1.0 and are never clamped.
struct KXColor {
    float r; ///< Red.
    float g; ///< Green.
    float b; ///< Blue.
    float a; ///< Opacity: 0.0 transparent, 1.0 opaque.
};

/// The eight directions of a grid; y grows downward, so "down" means increasing y.
enum KXDirection : int {
    KXDirectionNone = -1,     ///< No direction.
    KXDirectionLeft = 0,      ///< Towards smaller x.
    KXDirectionUp = 1,        ///< Towards smaller y.
    KXDirectionDown = 2,      ///< Towards larger y.
    KXDirectionRight = 3,     ///< Towards larger x.
    KXDirectionDownLeft = 4,  ///< Diagonal.
    KXDirectionDownRight = 5, ///< Diagonal.
    KXDirectionUpLeft = 6,    ///< Diagonal.
    KXDirectionUpRight = 7    ///< Diagonal.
};

/// How a font draws its glyphs. Any other value behaves as #KXAliasModeTexture.
enum KXAliasMode : int {
    KXAliasModePolygon = 1, ///< Glyph outlines filled as polygons.
    KXAliasModeTexture = 2  ///< Glyphs drawn from a texture atlas.
};

/// How a texture is flipped where it is drawn, or an image.
enum KXFlip : int {
    KXFlipNone = 0,
    KXFlipLeftRight = 2, ///< Mirrors left to right.
    KXFlipTopBottom = 4, ///< Mirrors top to bottom.
    KXFlipDiagonal = 6   ///< Both together: exchanges rows and columns.
};

extern KX_API const KXPoint KXZeroPoint;  ///< (0, 0).
extern KX_API const KXSize KXZeroSize;    ///< (0, 0).
extern KX_API const KXRect KXZeroRect;    ///< (0, 0, 0, 0).
extern KX_API const KXColor KXRedColor;   ///< (1, 0, 0, 1).
extern KX_API const KXColor KXGreenColor; ///< (0, 1, 0, 1).
extern KX_API const KXColor KXBlueColor;  ///< (0, 0, 1, 1).

/// The colour of the four channels as given, unclamped.
KX_API KXColor KXMakeColor(float r, float g, float b, float a);

/// The colour of four channels on a scale where 255 is full (each divided by 255.0), unclamped.
KX_API KXColor KXMakeColori(int r, int g, int b, int a);

/// @a a if it is less than @a b, otherwise @a b (so also when either is not a number).
KX_API float KXMinf(float a, float b);
/// @a a if it is less than @a b, otherwise @a b.
KX_API int KXMini(int a, int b);
/// @a a if it is greater than @a b, otherwise @a b (so also when either is not a number).
KX_API float KXMaxf(float a, float b);
/// @a a if it is greater than @a b, otherwise @a b.
KX_API int KXMaxi(int a, int b);

/// Brings @a *v into the range @a lo to @a hi. The lower bound is tested first; not-a-number becomes @a hi.
/// A null @a v does nothing.
KX_API void KXClampf(float* v, float lo, float hi);
/// Brings @a *v into the range @a lo to @a hi. The lower bound is tested first. A null @a v does nothing.
KX_API void KXClampi(int* v, int lo, int hi);

/// The smallest power of two that is at least @a n: 1 for every n up to 1, and 2^30 for every n above 2^30,
/// the largest power of two that an int holds.
KX_API int KXNearestPowerOfTwo(int n);
