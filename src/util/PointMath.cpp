#include <Kobaltrix/KXPointMath.h>

#include <Kobaltrix/KXVector3D.h>

#include <cmath>
#include <numbers>

// The square of a float always fits into a double.
static double lengthOf(double x, double y) { return std::sqrt(x * x + y * y); }

float KXLength(KXPoint way) { return static_cast<float>(lengthOf(way.x, way.y)); }

float KXDistance(KXPoint a, KXPoint b) {
    return static_cast<float>(lengthOf(double{b.x} - a.x, double{b.y} - a.y));
}

KXPoint KXNormalized(KXPoint way) {
    const double length = lengthOf(way.x, way.y);
    if (!(length > 0) || !std::isfinite(length))
        return KXZeroPoint;
    return {static_cast<float>(way.x / length), static_cast<float>(way.y / length)};
}

KXPoint KXTurned(KXPoint way, float degrees) {
    if (!std::isfinite(degrees))
        return way;
    const KXVector3D turned = KXVector3D{way.x, way.y, 0}.rotZ(degrees);
    return {turned.x, turned.y};
}

float KXAngle(KXPoint way) {
    // Adding 0 takes the sign off a zero: -180 is not among the results.
    const double angle = std::atan2(way.y + 0.0, double{way.x}) * (180 / std::numbers::pi);
    return std::isnan(angle) || way == KXZeroPoint ? 0 : static_cast<float>(angle);
}
