#pragma once

#include "render/Pen.h"
#include "render/ShaderProgram.h"

#include <Kobaltrix/KXTypes.h>

#include <optional>

/// Where the game's matrices put things on the target's pixels.
struct _KXPixelGrid {
    bool isUpright; ///< What is upright stays it.
    KXPoint scale;  ///< How many pixels a unit has along each axis. OpenGL counts them from the bottom.
    KXPoint origin; ///< The pixels' coordinates of (0, 0).

    static _KXPixelGrid now();
    KXPoint operator()(KXPoint point) const {
        return {point.x * scale.x + origin.x, point.y * scale.y + origin.y};
    }
};

/// The pixels that glyphs are made of.
struct _KXGlyphRaster {
    float scale = 1;       ///< How many a unit has.
    KXPoint unit = {1, 1}; ///< How large one is drawn, in units.
    bool isTargets = true; ///< Whether they are as large as those of the target.
    bool settles = false;  ///< Whether they are to be those, wherever the text is.
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

    /// The pixels for glyphs of a font's size.
    _KXGlyphRaster rasterFor(int size) const;
    /// Moves a point to a whole pixel of the target if glyphs are to be made of those.
    /// @return whether glyphs that are placed from it on by whole pixels of theirs cover the target's.
    bool settle(KXPoint& point, const _KXGlyphRaster& raster) const;

private:
    KXPoint scaleSeen() const;

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
