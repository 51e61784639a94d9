#pragma once

#include <Kobaltrix/KXTypes.h>

/// @file
/// Shapes of any form: thick lines with joins and caps, curves, rounded rectangles, ellipses, sectors and
/// rings, polygons, filled with one colour or a gradient, with sharp or smooth edges.
///
/// @code
/// KXStroke rope;
/// rope.width = 5;
/// rope.join = KXJoinRound;
/// KXDrawStroke(points, count, rope);
/// KXDrawEllipse({80, 60}, {30, 20}, KXShapePaint{KXRedColor});
/// @endcode
///
/// They are drawn into the current target in its coordinates, fractions count, and batches take them. Angles
/// are degrees, clockwise on screen; 0 points right. Round shapes have as many corners as it takes to look
/// round at the target's density. Where a number is none, infinite or above a thousand million, nothing is
/// drawn. Each pixel of a shape is drawn once, so what is not opaque stays even where a line crosses itself.
/// Every call leaves OpenGL's current colour changed; without a window nothing is drawn. Needs the thread
/// that owns the OpenGL context; throws std::bad_alloc, with nothing drawn, when memory is exhausted.

/// How the colour of a shape runs.
enum KXGradient : int {
    KXGradientNone = 0,   ///< It is one.
    KXGradientLinear = 1, ///< From one point to another, and on beyond both as it is there.
    KXGradientRadial = 2  ///< From a point outward to a distance, and on beyond it as it is there.
};

/// What a shape is filled with.
struct KXShapePaint {
    KXColor color = {1, 1, 1, 1};         ///< All of it, or where the gradient begins.
    KXGradient gradient = KXGradientNone; ///< Whether there is one.
    KXColor endColor = {1, 1, 1, 1};      ///< Where the gradient ends.
    KXPoint from = {0, 0};                ///< Where it begins; the middle of a radial one.
    KXPoint to = {0, 0};                  ///< Where it ends; of a radial one a point as far away as that.
    int smooth = 0;                       ///< Non-zero for edges that cover pixels in part.

    /// White.
    KXShapePaint() = default;
    /// One colour.
    explicit KXShapePaint(KXColor paint) : color(paint) {}
};

/// What is drawn where two pieces of a line meet.
enum KXLineJoin : int {
    KXJoinMiter = 0, ///< A corner, or a cut one where that would reach further than the limit.
    KXJoinBevel = 1, ///< A cut corner.
    KXJoinRound = 2  ///< A round one.
};

/// How a line ends.
enum KXLineCap : int {
    KXCapButt = 0,   ///< At its end.
    KXCapSquare = 1, ///< Half its width further.
    KXCapRound = 2   ///< In half a circle.
};

/// How a line is drawn.
struct KXStroke {
    float width = 1;               ///< In units of the target. Below a pixel it is drawn paler instead.
    KXColor color = {1, 1, 1, 1};  ///< Of all of it.
    KXLineJoin join = KXJoinMiter; ///< At its corners.
    KXLineCap cap = KXCapButt;     ///< At its ends.
    float miterLimit = 4;          ///< How far a corner may reach, in widths.
    int closed = 0;                ///< Non-zero to go back to the first point; it then has no ends.
    int smooth = 0;                ///< Non-zero for edges that cover pixels in part.

    /// White, a unit wide.
    KXStroke() = default;
    /// As wide as that, in a colour.
    KXStroke(float strokeWidth, KXColor strokeColor) : width(strokeWidth), color(strokeColor) {}
};

/// A line through points. Points that are equal to the one before count once; a single one is a dot if the
/// caps are not butt. Null, or more than 65536 points, draw nothing.
KX_API void KXDrawStroke(const KXPoint* points, int count, const KXStroke& stroke);
/// A line from point to point.
KX_API void KXDrawStroke(KXPoint from, KXPoint to, const KXStroke& stroke);
/// A cubic Bézier curve, which leaves towards the first control point and arrives from the second.
KX_API void KXDrawCurve(KXPoint from, KXPoint control1, KXPoint control2, KXPoint to, const KXStroke& stroke);
/// A smooth curve through points (a Catmull-Rom spline); with `closed` one without a beginning. Limits as of
/// KXDrawStroke().
KX_API void KXDrawSpline(const KXPoint* points, int count, const KXStroke& stroke);
/// A part of a circle's line, clockwise from @a begin to @a end degrees, the other way if the end is less.
/// More than a turn is a whole circle.
KX_API void KXDrawArc(KXPoint centre, float radius, float begin, float end, const KXStroke& stroke);

/// A filled polygon, also one that is not convex or crosses itself: what its line goes round is filled. Null,
/// less than 3 points, or more than 65536, draw nothing.
KX_API void KXDrawPolygon(const KXPoint* points, int count, const KXShapePaint& paint);
/// A filled rectangle with round corners: 0 is a plain one, and at most half a side is taken.
KX_API void KXDrawRoundedRect(KXRect rect, float radius, const KXShapePaint& paint);
/// Its outline, whose middle runs along the rectangle's edges.
KX_API void KXDrawRoundedRect(KXRect rect, float radius, const KXStroke& stroke);
/// A filled ellipse. Its @a radii are half its width and height.
KX_API void KXDrawEllipse(KXPoint centre, KXSize radii, const KXShapePaint& paint);
/// Its outline.
KX_API void KXDrawEllipse(KXPoint centre, KXSize radii, const KXStroke& stroke);
/// A sector of a circle (a slice of a cake), or with an @a innerRadius above 0 a part of a ring. It lies
/// between @a begin and @a end as an arc does: 0 and 360 are the whole ring.
KX_API void KXDrawSector(KXPoint centre, float innerRadius, float radius, float begin, float end,
                         const KXShapePaint& paint);
