#pragma once

#include <Kobaltrix/KXPointMath.h>

/// @file
/// Rectangles, circles and lines that lie in each other's way. Nothing here allocates or fails, everything is
/// usable from any thread, and truth values are ints: -1 for yes, 0 for no.
///
/// **Edges.** Touching is not overlapping: shapes overlap where they share an area, a line overlaps a shape
/// where a stretch of it runs inside. So a box that stands on a floor does not overlap it, and may slide
/// along it. Of single points those on the left and on the top edge are a rectangle's own, those on the right
/// and on the bottom edge are not: of tiles side by side exactly one holds each point. Edges are compared
/// without rounding: the right one is where `x + width` exactly is.
///
/// **Numbers.** A rectangle without an area (a side that is 0 or negative) holds and overlaps nothing. A
/// shape with a number that is infinite or not a number is nowhere: it holds, overlaps and stops nothing. A
/// negative radius counts like a positive one.

/// The rectangle that two opposite corners span, in whichever order.
KX_API KXRect KXRectBetween(KXPoint corner, KXPoint opposite);
/// The rectangle of a size around its middle.
KX_API KXRect KXRectAround(KXPoint centre, KXSize size);
/// The middle of a rectangle.
KX_API KXPoint KXRectCentre(KXRect rect);
/// The bottom right corner of a rectangle.
KX_API KXPoint KXRectEnd(KXRect rect);
/// The rectangle moved by a way.
KX_API KXRect KXMovedRect(KXRect rect, KXPoint by);
/// The rectangle with each side moved outward, the left and the right one by @a by.width, the others by
/// @a by.height; inward where that is negative. A side that would become negative becomes 0, at the middle.
KX_API KXRect KXGrownRect(KXRect rect, KXSize by);

/// Whether two rectangles share an area.
KX_API int KXRectsOverlap(KXRect a, KXRect b);
/// Whether two rectangles overlap or touch, at an edge or but at a corner. Those without an area touch, too.
KX_API int KXRectsMeet(KXRect a, KXRect b);
/// The area that two rectangles share. #KXZeroRect if there is none.
KX_API KXRect KXIntersection(KXRect a, KXRect b);
/// The smallest rectangle around two others. Of one that holds nothing it takes no notice: then it is the
/// other, #KXZeroRect if both hold nothing.
KX_API KXRect KXUnion(KXRect a, KXRect b);
/// Whether a point is a rectangle's own.
KX_API int KXPointInRect(KXPoint point, KXRect rect);
/// Whether all of a rectangle lies in another; their edges may meet.
KX_API int KXRectInRect(KXRect inner, KXRect rect);
/// The point of a rectangle, edges and all, that is nearest to another one. A side that is negative counts as
/// 0; where a coordinate is not a number, it is that of the top left corner.
KX_API KXPoint KXClampedToRect(KXPoint point, KXRect rect);

/// Whether two circles share an area.
KX_API int KXCirclesOverlap(KXPoint a, float radiusA, KXPoint b, float radiusB);
/// Whether a circle and a rectangle share an area.
KX_API int KXCircleOverlapsRect(KXPoint centre, float radius, KXRect rect);
/// Whether a stretch of the line from @a from to @a to runs inside a rectangle; of two equal points, whether
/// that point lies inside, its edges left out.
KX_API int KXLineOverlapsRect(KXPoint from, KXPoint to, KXRect rect);
/// Whether a stretch of the line from @a from to @a to runs inside a circle; likewise.
KX_API int KXLineOverlapsCircle(KXPoint from, KXPoint to, KXPoint centre, float radius);

/// What a moving shape meets on its way.
struct KXSweep {
    int hit;          ///< -1 if something stops it, 0 if its way is free.
    float time;       ///< How much of the way is free: 0 none of it, 1 all.
    KXPoint position; ///< Where it gets: its origin, or its centre.
    KXPoint normal;   ///< Of length 1, from what it hits towards it: (0, -1) on a floor. Else zero.
};

/// How far a rectangle comes on its way before it would overlap another. Nothing is missed between start and
/// end, and where it stops the two touch exactly: they do not overlap, and the next sweep along the edge is
/// free. One that touches is hit only by moving into it. At a corner that is met exactly, the normal is
/// vertical.
///
/// Where they overlap at the start already, it is a hit with the time 0 and the normal zero; an overlap
/// thinner than floats of that size can tell apart counts as touching. The moving one may be without an area
/// (a point, for what a ray meets). Where a number of its own or of @a by is not finite, it stays, without a
/// hit.
KX_API KXSweep KXSweepRect(KXRect moving, KXPoint by, KXRect obstacle);
/// The same for a circle and a rectangle, round its corners as circles go. A radius of 0 is a point.
KX_API KXSweep KXSweepCircle(KXPoint centre, float radius, KXPoint by, KXRect obstacle);
/// The same for a circle and another one that stands still.
KX_API KXSweep KXSweepCircle(KXPoint centre, float radius, KXPoint by, KXPoint other, float otherRadius);

/// Where a rectangle gets that slides along what it hits.
struct KXSlide {
    KXPoint position; ///< Of its origin.
    KXPoint normal;   ///< What stopped it: x is 1 for something on its left, -1 on its right, else 0;
                      ///< y is 1 for a ceiling, -1 for a floor, else 0.
};

/// Moves a rectangle among others: up to the first that is in its way, and from there along it. It never gets
/// into one of them, and gets out of one that it overlaps at the start, which does not stop it.
/// @param moving,by as in KXSweepRect().
/// @param obstacles,count those that stand still. None, if null or negative.
KX_API KXSlide KXSlideRect(KXRect moving, KXPoint by, const KXRect* obstacles, int count);
