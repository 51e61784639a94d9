#pragma once

#include <Kobaltrix/KXBlendMode.h>
#include <Kobaltrix/KXTypes.h>

/// @file
/// How a texture or a sprite is drawn, by name: KXTexture::draw(const KXDrawOptions&) and
/// KXSprite::draw(const KXDrawOptions&).
///
/// @code
/// ship.draw({.position = at, .origin = {8, 8}, .rotation = 12.5f, .scale = {2, 2}}); // C++20
/// KXDrawOptions options; // C++11
/// options.position = at;
/// ship.draw(options);
/// @endcode
///
/// Drawing needs the thread that owns the OpenGL context; where something comes to lie is told on any.

class KXShader;

/// Which part is drawn, where and how. What is not set draws the whole as it is at (0, 0). C++20 has the
/// names of a list stand in this order.
///
/// The part is stretched to its size, flipped within it, laid with its origin on the position, and scaled and
/// turned about that. Where a number is none or infinite, or a corner would come to lie more than a thousand
/// million units away, nothing is drawn.
struct KXDrawOptions {
    /// Mirrors the part within the place that it would have without.
    KXFlip flip = KXFlipNone;
    /// Where the origin comes to lie, in the units of the target. Fractions count.
    KXPoint position = {0, 0};
    /// The point of the part, in its pixels from its top left, that lies at the position and that it is
    /// scaled and turned about. It may lie outside.
    KXPoint origin = {0, 0};
    /// Degrees, clockwise on screen. Fractions count.
    float rotation = 0;
    /// Along the part's own axes, before it is turned; a negative one mirrors about the origin, with 0
    /// nothing is drawn.
    KXSize scale = {1, 1};
    /// What the texture's own tint is multiplied by, and with its alpha the opacity. 0.0 to 1.0.
    KXColor tint = {1, 1, 1, 1};
    /// How it meets what is there.
    KXBlendMode blend = KXBlendInherited;
    /// What it is drawn with instead of the one that is pushed, if any.
    KXShader* shader = nullptr;
    /// The part, in pixels of the texture, or of the sprite's frame on show from its top left. What reaches
    /// past the edges is cut off, or of a texture shown as KXTexture::setWrap() says. A negative width or
    /// height reaches to the edge.
    KXRect source = {{0, 0}, {-1, -1}};
    /// What the part is stretched to before it is scaled, in the units of the target; a negative side is the
    /// part's own. With 0 nothing is drawn.
    KXSize size = {-1, -1};
};

/// Where a rectangle of something drawn comes to lie, in the units of the target. All zeros where nothing is
/// drawn.
struct KXPlacedBox {
    KXPoint corners[4]; ///< What was top left, top right, bottom right and bottom left.
    KXRect bounds;      ///< The upright rectangle around them.
};
