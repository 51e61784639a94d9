#include "time/AnimationCurve.h"

// The square of a float is exact in a double, so this is the correctly rounded power.
static double cube(double value) { return value * value * value; }

float _bezierCalc(float p0, float p1, float p2, float p3, float t) {
    const float rest = 1 - t;
    return static_cast<float>(cube(rest) * p0 + 3 * rest * rest * t * p1 + 3 * rest * t * t * p2 +
                              cube(t) * p3);
}

KXPoint KXBezierCurve(KXPoint p0, KXPoint p1, KXPoint p2, KXPoint p3, float t) {
    return {_bezierCalc(p0.x, p1.x, p2.x, p3.x, t), _bezierCalc(p0.y, p1.y, p2.y, p3.y, t)};
}

float _KXAnimationCurve(KXPoint p1, KXPoint p2, float t) {
    return _bezierCalc(KXZeroPoint.y, p1.y, p2.y, 1, t); // the x is not needed
}

float KXAnimationCurve(KXAnimationCurveType type, float t) {
    switch (type) {
    case KXAnimationCurveTypeEaseIn:
        return _KXAnimationCurve({0.55f, 0.055f}, {0.675f, 0.19f}, t);
    case KXAnimationCurveTypeEaseOut:
        return _KXAnimationCurve({0.215f, 0.61f}, {0.355f, 1.0f}, t);
    case KXAnimationCurveTypeEaseInOut:
        return _KXAnimationCurve({0.645f, 0.045f}, {0.355f, 1.0f}, t);
    case KXAnimationCurveTypeLinear:
    default:
        return t;
    }
}
