#pragma once

#include <Kobaltrix/KXTypes.h>

/// @file
/// Directions of the grid, points on lines and circles, and simple hit tests.
/// Nothing here allocates, fails, or depends on the library being initialised; every function is usable from
/// any thread.

/// The opposite direction. None for none and for values that are no direction.
KX_API KXDirection KXOppositeDirection(KXDirection direction);
/// The next of left, up, right, down, going clockwise. Diagonals go to the cardinal direction that follows
/// them (down left to left, up left to up, …); none and values that are no direction give none.
KX_API KXDirection KXNextClockwiseCardinalDirection(KXDirection direction);

/// The direction in which @a to lies seen from @a from. Distances along an axis shorter than one pixel count
/// as 0, and so does what is not a number; none if both do.
KX_API KXDirection KXDirectionBetween(KXPoint from, KXPoint to);
/// Like KXDirectionBetween(), but a diagonal becomes the cardinal direction of its longer axis, the vertical
/// one if both are equally long.
KX_API KXDirection KXCardinalDirectionBetween(KXPoint from, KXPoint to);

/// The point moved by @a distance pixels along each axis that the direction names. Diagonals move the full
/// distance on both axes; none and values that are no direction leave the point where it is.
KX_API KXPoint KXAddDirectionToPoint(KXDirection direction, KXPoint point, float distance);

/// Finds the point at @a t on the line through two points.
/// @param t 0 at @a a, 1 at @a b; not clamped. @param a where the line starts. @param b where it ends.
/// @param x receives the horizontal position; may be null. @param y likewise the vertical one.
KX_API void KXParametricLine(float t, KXPoint a, KXPoint b, float* x, float* y);
/// The point at @a t on the line through @a a (t = 0) and @a b (t = 1). @a t is not clamped.
KX_API KXPoint KXParametricLine(float t, KXPoint a, KXPoint b);

/// Finds the point at @a t on a circle.
/// @param t whole turns: 0 is right of the centre and 0.25, y growing downward, below it.
/// @param radius pixels. @param centre the middle of the circle.
/// @param x receives the horizontal position; may be null. @param y likewise the vertical one.
KX_API void KXParametricCircle(float t, int radius, KXPoint centre, float* x, float* y);
/// The point at @a t turns on a circle of @a radius pixels: 0 is right of the centre, 0.25 below it.
KX_API KXPoint KXParametricCircle(float t, int radius, KXPoint centre);

/// Whether @a point lies inside the circle. The distances along the axes are first truncated to whole pixels;
/// points on the circle itself are outside. A negative radius counts like a positive one, and a position that
/// is not a number is outside every circle.
KX_API bool KXPointInCircle(KXPoint point, KXPoint centre, float radius);
/// Whether two rectangles are exactly equal in all four numbers.
KX_API bool KXEqualRects(KXRect a, KXRect b);
