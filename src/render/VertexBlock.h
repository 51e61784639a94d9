#pragma once

#include "render/Pen.h"

#include <Kobaltrix/KXTypes.h>

/// A corner on its way to OpenGL in a vertex array.
struct _KXVertex {
    KXPoint position;
    float u, v;
    float fill;    ///< A _KXFill.
    KXColor color; ///< At the end: what is in one colour does without.
};

inline bool operator==(const KXColor& a, const KXColor& b) {
    return a.r == b.r && a.g == b.g && a.b == b.b && a.a == b.a;
}

/// Corners that follow each other and are drawn alike.
struct _KXVertexRun {
    bool isLines;     ///< Two corners each; else quads.
    unsigned texture; ///< 0 while all are solid.
    bool hasSolid;    ///< Whether solid quads are among those with a texture.
    float lineWidth;
    int first, count;
    _KXPen pen = {};
    int shaderValues = 0; ///< The pen's, as they were.
    bool hasOneColor = true;
    bool hasShades = false; ///< Whether colours change within some of its quads.
};

/// Draws runs of corners in their order, the way that suits the driver. Bound textures, the colour and the
/// line width are left changed.
void _KXDrawVertexRuns(const _KXVertex* vertices, const _KXVertexRun* runs, int runCount);
