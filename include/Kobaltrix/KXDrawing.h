#pragma once

#include <Kobaltrix/KXTypes.h>

/// @file
/// Lines, rectangles, circles and triangles in one colour, drawn into the current target in its coordinates
/// (points in a window, pixels in a texture). Alpha blends. Every call leaves 2D texturing on and the current
/// colour changed; without a window it does nothing.

/// A line one pixel wide between two points, each truncated to integers.
KX_API void KXDrawLine(KXPoint from, KXPoint to, KXColor color);
/// The outline of a rectangle, one unit thick and inside it. Its corners are drawn twice.
KX_API void KXDrawRect(KXRect rect, KXColor color);
/// A filled rectangle, its edges truncated to integers.
KX_API void KXDrawRectFill(KXRect rect, KXColor color);
/// The outline of a regular polygon around @a centre. The first corner is straight below the centre. A
/// negative number of @a segments counts as positive, above 65536 as 65536; 0 draws a point.
KX_API void KXDrawCircle(KXPoint centre, int radius, int segments, KXColor color);
/// The same polygon, filled.
KX_API void KXDrawCircleFill(KXPoint centre, int radius, int segments, KXColor color);
/// The outline of a triangle, two pixels wide.
KX_API void KXDrawTriangle(KXPoint a, KXPoint b, KXPoint c, KXColor color);
/// A filled triangle.
KX_API void KXDrawTriangleFill(KXPoint a, KXPoint b, KXPoint c, KXColor color);
