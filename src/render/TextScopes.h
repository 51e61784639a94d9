#pragma once

#include "render/Pen.h"
#include "render/ShaderProgram.h"

#include <Kobaltrix/KXTypes.h>

#include <optional>

/// Where the game's matrices put things on the target's pixels.
struct _KXPixelGrid {
    bool natural;   ///< One unit is one pixel, and upright things are upright.
    KXPoint origin; ///< The pixels' coordinates of (0, 0).

    static _KXPixelGrid now();
};

/// Drawing of glyphs with _KXDrawGlyphQuads(), which blend by their opacity and take their colour from the
/// text, whatever the game draws with. Where it draws like that anyway, as most games do, nothing is changed
/// and the glyphs may be collected in a batch.
class _KXGlyphScope {
public:
    _KXGlyphScope();
    ~_KXGlyphScope();
    _KXGlyphScope(const _KXGlyphScope&) = delete;
    _KXGlyphScope& operator=(const _KXGlyphScope&) = delete;

    /// Whether what is drawn from a point on in natural size covers whole pixels of the target.
    bool isOnPixels(KXPoint point) const;

private:
    bool _changed;
    _KXPixelGrid _grid = _KXPixelGrid::now();
};

/// Drawing of FTGL's polygons, which lie on the model-view matrix: within the scope its origin is where the
/// text's baseline begins and its y axis points up. Leaves 2D texturing on.
class _KXPolygonTextScope {
public:
    explicit _KXPolygonTextScope(KXPoint origin);
    ~_KXPolygonTextScope();
    _KXPolygonTextScope(const _KXPolygonTextScope&) = delete;
    _KXPolygonTextScope& operator=(const _KXPolygonTextScope&) = delete;

    void setColor(KXColor color);
    /// Moves the origin to the right.
    void moveBy(float x);

private:
    _KXBlendScope _blend;
    std::optional<_KXShaderScope> _shader;
};
