#pragma once

#include "render/GlyphPages.h"

#include <Kobaltrix/KXTypes.h>

// Where the corners of everything the library fills are computed, on the CPU: a matrix call for each quad
// would end the batch that the driver builds and cost several times what the quad itself does.

/// A 2 x 3 affine map: (x, y) goes to (xx x + xy y + dx, yx x + yy y + dy).
struct _KXAffine {
    float xx, xy, dx;
    float yx, yy, dy;

    KXPoint operator()(float x, float y) const { return {xx * x + xy * y + dx, yx * x + yy * y + dy}; }
};

/// The cosine and the sine of a turn.
struct _KXRotation {
    float cosine, sine;
};
/// Of so many degrees, exact at the quarter turns. Not a number for what is none, or infinite.
_KXRotation _KXRotationBy(float degrees);

/// The placement of a drawn part: moved to (x, y), scaled about its top-left corner, turned and flipped about
/// the middle of width by height. The same map as KXTexture::drawingPosition() multiplies onto the matrix.
_KXAffine _KXPlacement(int x, int y, int width, int height, float scale, int rotation, int flips);

/// The texture coordinates of a quad's top-left and bottom-right corners.
struct _KXTextureRect {
    float left, top, right, bottom;
};

/// Draws the rectangle from (0, 0) to (width, height), mapped, with a texture.
void _KXDrawTexturedQuad(unsigned texture, const _KXTextureRect& source, KXColor color,
                         const _KXAffine& placement, float width, float height);

/// A glyph: its corners as FTGL places them and its part of an atlas page.
struct _KXGlyphQuad {
    _KXGlyphPage page;
    KXPoint corners[4];
    _KXTextureRect source;
};

/// Draws glyphs; the texture that was bound stays bound.
/// @param sharp whether all of them lie on whole pixels at natural size.
void _KXDrawGlyphQuads(const _KXGlyphQuad* quads, int count, KXColor color, bool sharp);

/// Leaves a colour as OpenGL's current one.
void _KXLeaveColor(KXColor color);
