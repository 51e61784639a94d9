#pragma once

#include <Kobaltrix/KXPlatform.h>

/// @file
/// A vector of three floats. Nothing here allocates, fails, or depends on the library being initialised;
/// everything is usable from any thread.

/// A position or direction in space. A plain value: every operation returns a new vector.
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

    /// The scalar product: 0 for vectors at a right angle.
    constexpr float dot(KXVector3D other) const { return x * other.x + y * other.y + z * other.z; }
    /// The vector product, right-handed: x cross y is z.
    constexpr KXVector3D cross(KXVector3D other) const {
        return {y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x};
    }
};

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
