#pragma once

#include "render/ByteColor.h"

#include <Kobaltrix/KXTypes.h>

/// How a quad is filled.
enum class _KXFill { Solid, Texture, Glyph };

/// What quads are filled with.
struct _KXPaint {
    _KXFill fill;
    unsigned texture; ///< 0 for a solid fill.
    _KXByteColor color;
    /// Whether its edges show where the game has polygons drawn as lines, whatever the game's edge flag says.
    bool showsEdges = false;
};

/// A corner, and the place on the texture that is shown there.
struct _KXCorner {
    KXPoint position;
    float u, v;
};

/// Four corners, in order around the shape.
struct _KXQuad {
    _KXCorner corners[4];
};

/// A way for what is drawn to reach OpenGL: at once, or collected in a batch. Corners come computed.
///
/// Whatever the way, OpenGL is left as if each call had been drawn when it was made: 2D texturing on after
/// solid fills and lines, the colour and the line width the ones given last, the texture of the last quads
/// bound, but what was bound before after glyphs.
class _KXDrawSink {
public:
    /// Draws quads of one paint.
    virtual void quads(const _KXQuad* quads, int count, const _KXPaint& paint) = 0;
    /// Draws a line from point to point, and back to the first if it is closed.
    virtual void lines(const KXPoint* points, int count, bool closed, float width, KXColor color) = 0;
    /// Fills the convex shape of some points.
    virtual void fan(const KXPoint* points, int count, KXColor color) = 0;
    /// Leaves a colour as OpenGL's current one.
    virtual void leaveColor(KXColor color) = 0;
    /// Leaves a line width as OpenGL's current one.
    virtual void leaveLineWidth(float width) = 0;

protected:
    constexpr _KXDrawSink() = default;
    ~_KXDrawSink() = default;
};

/// The way that draws go now.
_KXDrawSink& _KXCurrentSink();
/// The way behind the scopes that cut.
_KXDrawSink& _KXSinkBehindClips();
/// Draws quads the way that draws go now, and leaves the colour exactly as given.
void _KXDrawQuads(const _KXQuad* quads, int count, _KXFill fill, unsigned texture, KXColor color,
                  bool showsEdges = false);
/// A corner of a triangle with a colour of its own.
struct _KXMeshCorner {
    KXPoint position;
    KXColor color;
};
/// Draws triangles of three corners each, the way that draws go now.
void _KXDrawMesh(const _KXMeshCorner* corners, int count);
/// The same behind the scopes that cut.
void _KXDrawMeshBehindClips(const _KXMeshCorner* corners, int count);
/// Draws at once.
_KXDrawSink& _KXImmediateSink();
/// Has what is drawn at once look anew which points are in view.
void _KXForgetView();
