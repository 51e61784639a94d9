#pragma once

#include <Kobaltrix/KXTypes.h>

#include <type_traits>

/// @file
/// Arithmetic with points and sizes. A point is a position or a way: the way from a to b is `b - a`. Angles
/// are degrees, clockwise on screen: 0 points right, 90 down. Nothing here allocates or fails, everything is
/// usable from any thread, and lengths do not overflow on their way. What is not a number or infinite is
/// handed on as floats do, unless a call says otherwise.
///
///     at += KXNormalized(target - at) * speed;
///
/// The operators are templates for KXPoint and KXSize alone, so that those a game has defined for itself come
/// first.

/// What an operator for @a Wanted gives; for other types there is none.
template<class Type, class Wanted, class Result = Type>
using KXOnly = typename std::enable_if<std::is_same<Type, Wanted>::value, Result>::type;

/// Whether two points are exactly equal in both numbers.
template<class Point>
constexpr KXOnly<Point, KXPoint, bool> operator==(Point a, Point b) {
    return a.x == b.x && a.y == b.y;
}
/// Whether two points differ in any of the two numbers.
template<class Point>
constexpr KXOnly<Point, KXPoint, bool> operator!=(Point a, Point b) {
    return !(a.x == b.x && a.y == b.y);
}
/// The sum of two points.
template<class Point>
constexpr KXOnly<Point, KXPoint> operator+(Point a, Point b) {
    return Point{a.x + b.x, a.y + b.y};
}
/// The way from @a b to @a a.
template<class Point>
constexpr KXOnly<Point, KXPoint> operator-(Point a, Point b) {
    return Point{a.x - b.x, a.y - b.y};
}
/// The opposite way.
template<class Point>
constexpr KXOnly<Point, KXPoint> operator-(Point a) {
    return Point{-a.x, -a.y};
}
/// The point scaled by a factor.
template<class Point>
constexpr KXOnly<Point, KXPoint> operator*(Point a, float factor) {
    return Point{a.x * factor, a.y * factor};
}
/// The point scaled by a factor.
template<class Point>
constexpr KXOnly<Point, KXPoint> operator*(float factor, Point a) {
    return Point{a.x * factor, a.y * factor};
}
/// The point divided by a number. By 0 it is infinite or not a number, as floats are.
template<class Point>
constexpr KXOnly<Point, KXPoint> operator/(Point a, float divisor) {
    return Point{a.x / divisor, a.y / divisor};
}
/// Adds a point to another.
template<class Point>
inline KXOnly<Point, KXPoint>& operator+=(Point& a, Point b) {
    return a = Point{a.x + b.x, a.y + b.y};
}
/// Takes a point off another.
template<class Point>
inline KXOnly<Point, KXPoint>& operator-=(Point& a, Point b) {
    return a = Point{a.x - b.x, a.y - b.y};
}
/// Scales a point by a factor.
template<class Point>
inline KXOnly<Point, KXPoint>& operator*=(Point& a, float factor) {
    return a = Point{a.x * factor, a.y * factor};
}
/// Divides a point by a number, as `a / divisor` does.
template<class Point>
inline KXOnly<Point, KXPoint>& operator/=(Point& a, float divisor) {
    return a = Point{a.x / divisor, a.y / divisor};
}

/// Whether two sizes are exactly equal in both numbers.
template<class Size>
constexpr KXOnly<Size, KXSize, bool> operator==(Size a, Size b) {
    return a.width == b.width && a.height == b.height;
}
/// Whether two sizes differ in any of the two numbers.
template<class Size>
constexpr KXOnly<Size, KXSize, bool> operator!=(Size a, Size b) {
    return !(a.width == b.width && a.height == b.height);
}
/// The sum of two sizes.
template<class Size>
constexpr KXOnly<Size, KXSize> operator+(Size a, Size b) {
    return Size{a.width + b.width, a.height + b.height};
}
/// The difference of two sizes.
template<class Size>
constexpr KXOnly<Size, KXSize> operator-(Size a, Size b) {
    return Size{a.width - b.width, a.height - b.height};
}
/// The size scaled by a factor.
template<class Size>
constexpr KXOnly<Size, KXSize> operator*(Size a, float factor) {
    return Size{a.width * factor, a.height * factor};
}
/// The size scaled by a factor.
template<class Size>
constexpr KXOnly<Size, KXSize> operator*(float factor, Size a) {
    return Size{a.width * factor, a.height * factor};
}
/// The size divided by a number. By 0 it is infinite or not a number, as floats are.
template<class Size>
constexpr KXOnly<Size, KXSize> operator/(Size a, float divisor) {
    return Size{a.width / divisor, a.height / divisor};
}
/// Adds a size to another.
template<class Size>
inline KXOnly<Size, KXSize>& operator+=(Size& a, Size b) {
    return a = Size{a.width + b.width, a.height + b.height};
}
/// Takes a size off another.
template<class Size>
inline KXOnly<Size, KXSize>& operator-=(Size& a, Size b) {
    return a = Size{a.width - b.width, a.height - b.height};
}
/// Scales a size by a factor.
template<class Size>
inline KXOnly<Size, KXSize>& operator*=(Size& a, float factor) {
    return a = Size{a.width * factor, a.height * factor};
}
/// Divides a size by a number, as `a / divisor` does.
template<class Size>
inline KXOnly<Size, KXSize>& operator/=(Size& a, float divisor) {
    return a = Size{a.width / divisor, a.height / divisor};
}

/// The scalar product: 0 for ways at a right angle, positive for those that go alike.
constexpr float KXDot(KXPoint a, KXPoint b) { return a.x * b.x + a.y * b.y; }
/// The third coordinate of the vector product: positive where @a b lies clockwise of @a a on screen.
constexpr float KXCross(KXPoint a, KXPoint b) { return a.x * b.y - a.y * b.x; }
/// The square of KXLength(), cheaper where lengths are only compared. Infinite for lengths from 1.8e19 on.
constexpr float KXSquaredLength(KXPoint way) { return way.x * way.x + way.y * way.y; }
/// How long a way is.
KX_API float KXLength(KXPoint way);
/// How far two points are apart.
KX_API float KXDistance(KXPoint a, KXPoint b);
/// The way of length 1 in the same direction. Zero stays zero, and what is not finite has no direction and
/// gives zero, too.
KX_API KXPoint KXNormalized(KXPoint way);
/// The way turned by @a degrees, clockwise on screen; quarter turns are exact. What is no finite angle turns
/// nothing.
KX_API KXPoint KXTurned(KXPoint way, float degrees);
/// The direction of a way in degrees, more than -180 to 180: 0 right, 90 down. 0 for zero and for what is not
/// a number.
KX_API float KXAngle(KXPoint way);

/// The number at @a t from @a a (0) to @a b (1), exactly these at 0 and 1 if both are finite. @a t is not
/// clamped.
constexpr float KXLerp(float a, float b, float t) { return (1 - t) * a + t * b; }
/// The point at @a t from @a a (0) to @a b (1), exactly these at 0 and 1 if both are finite. @a t is not
/// clamped.
constexpr KXPoint KXLerp(KXPoint a, KXPoint b, float t) {
    return KXPoint{KXLerp(a.x, b.x, t), KXLerp(a.y, b.y, t)};
}
/// The lesser x and the lesser y of two points; the second's where one is not a number.
constexpr KXPoint KXMinPoint(KXPoint a, KXPoint b) {
    return KXPoint{a.x < b.x ? a.x : b.x, a.y < b.y ? a.y : b.y};
}
/// The greater x and the greater y of two points; the second's where one is not a number.
constexpr KXPoint KXMaxPoint(KXPoint a, KXPoint b) {
    return KXPoint{a.x > b.x ? a.x : b.x, a.y > b.y ? a.y : b.y};
}
