#pragma once

#include <Kobaltrix/KXTypes.h>

/// @file
/// Lines, rectangles, circles and triangles in one colour, drawn into the current target in its coordinates
/// (points in a window, pixels in a texture). Alpha blends. Every KXDraw… call leaves 2D texturing on and the
/// current colour changed, and all but KXDrawRectFill() the line width; without a window nothing is drawn.

/// Replaces everything in the current target, or within its clip, by a colour: also its alpha, which other
/// draws blend with, and what KXWindowRenderingMode3D knows of depths. Heeds no transformation and leaves
/// OpenGL's state as it is. The cheapest way to begin a frame.
KX_API void KXClear(KXColor color);
/// A line one pixel wide between two points, each truncated to integers. Its last pixel is left out.
KX_API void KXDrawLine(KXPoint from, KXPoint to, KXColor color);
/// The outline of a rectangle, one unit thick. Its edges are truncated to integers, and it lies inside them.
/// The unit at its top left is drawn twice, which a colour that is not opaque shows. Where the width or the
/// height is less than 1, parts of it lie outside.
KX_API void KXDrawRect(KXRect rect, KXColor color);
/// A filled rectangle, its edges truncated to integers.
KX_API void KXDrawRectFill(KXRect rect, KXColor color);
/// The outline, one pixel wide, of a polygon around @a centre: its corners are 6.28 / @a segments radians
/// apart, so the last side is a little longer. The first is straight below the centre, the next to the right
/// of it. A negative number of @a segments counts as positive, above 65536 as 65536; 0 and 1 draw nothing.
KX_API void KXDrawCircle(KXPoint centre, int radius, int segments, KXColor color);
/// The same polygon, filled. It takes 3 @a segments to enclose anything.
KX_API void KXDrawCircleFill(KXPoint centre, int radius, int segments, KXColor color);
/// The outline of a triangle, two pixels wide.
KX_API void KXDrawTriangle(KXPoint a, KXPoint b, KXPoint c, KXColor color);
/// A filled triangle.
KX_API void KXDrawTriangleFill(KXPoint a, KXPoint b, KXPoint c, KXColor color);
