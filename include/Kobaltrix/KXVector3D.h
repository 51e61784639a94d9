#pragma once

#include <Kobaltrix/KXPlatform.h>

/// @file
/// A vector of three floats; its text form is KXVector3DToString(). Nothing here allocates, fails, or depends
/// on the library being initialised; everything is usable from any thread.

/// A position or direction in space. A plain value: its members return new vectors.
struct KX_API KXVector3D {
    float x; ///< First coordinate.
    float y; ///< Second coordinate.
    float z; ///< Third coordinate.

    /// The vector turned about the x axis. Degrees, right-handed: a quarter turn takes y to z, exactly.
    KXVector3D rotX(float degrees) const;
    /// The vector turned about the y axis. Degrees, right-handed: a quarter turn takes z to x, exactly.
    KXVector3D rotY(float degrees) const;
    /// The vector turned about the z axis. Degrees, right-handed: a quarter turn takes x to y, exactly.
    KXVector3D rotZ(float degrees) const;
    /// The distance from the origin. No intermediate result overflows.
    float length() const;
    /// The vector of length 1 in the same direction. The zero vector stays as it is; an infinite coordinate
    /// gives one that is not a number.
    KXVector3D normalized() const;

    /// The scalar product: 0 for vectors at a right angle.
    constexpr float dot(KXVector3D other) const { return x * other.x + y * other.y + z * other.z; }
    /// The vector product, right-handed: x cross y is z.
    constexpr KXVector3D cross(KXVector3D other) const {
        return {y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x};
    }
};

/// Whether two vectors are exactly equal in all three numbers.
constexpr bool operator==(KXVector3D a, KXVector3D b) { return a.x == b.x && a.y == b.y && a.z == b.z; }
/// Whether two vectors differ in any of the three numbers.
constexpr bool operator!=(KXVector3D a, KXVector3D b) { return !(a == b); }
/// The vector in the opposite direction.
constexpr KXVector3D operator-(KXVector3D a) { return {-a.x, -a.y, -a.z}; }
/// The sum of two vectors.
constexpr KXVector3D operator+(KXVector3D a, KXVector3D b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
/// The difference of two vectors.
constexpr KXVector3D operator-(KXVector3D a, KXVector3D b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
/// The vector scaled by a factor.
constexpr KXVector3D operator*(KXVector3D a, float factor) {
    return {a.x * factor, a.y * factor, a.z * factor};
}
/// The vector scaled by a factor.
constexpr KXVector3D operator*(float factor, KXVector3D a) { return a * factor; }
/// The vector divided by a number. By 0 it is infinite or not a number, as floats are.
constexpr KXVector3D operator/(KXVector3D a, float divisor) {
    return {a.x / divisor, a.y / divisor, a.z / divisor};
}
/// Adds a vector to another.
inline KXVector3D& operator+=(KXVector3D& a, KXVector3D b) { return a = a + b; }
/// Takes a vector off another.
inline KXVector3D& operator-=(KXVector3D& a, KXVector3D b) { return a = a - b; }
/// Scales a vector by a factor.
inline KXVector3D& operator*=(KXVector3D& a, float factor) { return a = a * factor; }
/// Divides a vector by a number, as `a / divisor` does.
inline KXVector3D& operator/=(KXVector3D& a, float divisor) { return a = a / divisor; }
