#include <Kobaltrix/KXVector3D.h>

#include <cmath>
#include <numbers>
#include <utility>

namespace {
struct Rotation {
    double cosine;
    double sine;

    // The angle is split into quarter turns, which are exact, and a rest of at most an eighth.
    explicit Rotation(float degrees) {
        int quarters = 0;
        const double rest = std::remquo(static_cast<double>(degrees), 90.0, &quarters);
        cosine = std::cos(rest * std::numbers::pi / 180.0);
        sine = std::sin(rest * std::numbers::pi / 180.0);
        if (quarters & 1)
            cosine = -std::exchange(sine, cosine);
        if (quarters & 2) {
            cosine = -cosine;
            sine = -sine;
        }
    }

    // The two coordinates of the plane of rotation, the first turning towards the second.
    float first(float a, float b) const { return static_cast<float>(a * cosine - b * sine); }
    float second(float a, float b) const { return static_cast<float>(a * sine + b * cosine); }
};
} // namespace

KXVector3D KXVector3D::rotX(float degrees) const {
    const Rotation turn(degrees);
    return {x, turn.first(y, z), turn.second(y, z)};
}

KXVector3D KXVector3D::rotY(float degrees) const {
    const Rotation turn(degrees);
    return {turn.second(z, x), y, turn.first(z, x)};
}

KXVector3D KXVector3D::rotZ(float degrees) const {
    const Rotation turn(degrees);
    return {turn.first(x, y), turn.second(x, y), z};
}

// The square of a float always fits into a double.
static double lengthOf(const KXVector3D& v) {
    const double x = v.x, y = v.y, z = v.z;
    return std::sqrt(x * x + y * y + z * z);
}

float KXVector3D::length() const { return static_cast<float>(lengthOf(*this)); }

KXVector3D KXVector3D::normalized() const {
    const double length = lengthOf(*this);
    if (length == 0)
        return *this;
    return {static_cast<float>(x / length), static_cast<float>(y / length), static_cast<float>(z / length)};
}
