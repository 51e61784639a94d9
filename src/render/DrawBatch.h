#pragma once

#include <Kobaltrix/KXDrawBatch.h>
#include <Kobaltrix/KXTypes.h>

/// How a corner gets its colour.
enum class _KXFill { Solid, Texture, Glyph };

/// A corner on its way to OpenGL.
struct _KXVertex {
    KXPoint position;
    float u, v;
    float fill; ///< A _KXFill.
    KXColor color;
};

inline constinit KXDrawStatistics _KXDrawStatistics = {};     ///< Since the last swap.
inline constinit KXDrawStatistics _KXLastDrawStatistics = {}; ///< Of the frame before.

/// Counts a frame as ended.
void _KXEndDrawStatistics();

/// Whether draws are collected. They are not where the game has polygons drawn as lines or points: shapes
/// would show the edges between their triangles.
bool _KXIsBatching();

/// Room for the corners of @a count quads (4 each), a few at a time, drawn after everything
/// before.
/// @param texture what a fill other than a solid one is taken from.
_KXVertex* _KXBatchQuads(int count, _KXFill fill, unsigned texture);
/// Room for the ends of @a count lines (2 each), a few at a time.
_KXVertex* _KXBatchLines(int count, float width);

/// What immediate drawing would leave as OpenGL's current colour, bound texture and line width.
void _KXBatchLeavesColor(KXColor color);
void _KXBatchLeavesTexture(unsigned texture);
void _KXBatchLeavesLineWidth(float width);

/// Draws what was collected. Costs one comparison if that is nothing.
void _KXFlushBatch(KXDrawFlushReason reason);
/// Forgets what was collected for a window that closes.
void _KXDropBatch();
/// Ends every batch and frees its memory; what was collected is forgotten.
void _KXFreeBatch();
