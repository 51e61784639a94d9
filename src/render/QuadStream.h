#pragma once

#include <Kobaltrix/KXTypes.h>

// Where everything the library fills leaves for OpenGL. Corners are computed here, on the CPU: a matrix call
// for each quad would end the batch that the driver builds and cost several times what the quad itself does.

/// A 2 x 3 affine map: (x, y) goes to (xx x + xy y + dx, yx x + yy y + dy).
struct _KXAffine {
    float xx, xy, dx;
    float yx, yy, dy;

    KXPoint operator()(float x, float y) const { return {xx * x + xy * y + dx, yx * x + yy * y + dy}; }
};

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

/// A rectangle given by two opposite corners, in integers.
struct _KXSolidQuad {
    int x1, y1, x2, y2;
};

/// Draws rectangles in one colour and leaves 2D texturing on.
void _KXDrawSolidQuads(const _KXSolidQuad* quads, int count, KXColor color);

/// Turns 2D texturing off and sets the colour for as long as the scope lasts, then turns texturing on.
class _KXSolidDrawingScope {
public:
    explicit _KXSolidDrawingScope(KXColor color);
    ~_KXSolidDrawingScope();
    _KXSolidDrawingScope(const _KXSolidDrawingScope&) = delete;
    _KXSolidDrawingScope& operator=(const _KXSolidDrawingScope&) = delete;
};
