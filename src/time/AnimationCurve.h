#pragma once

#include <Kobaltrix/KXInterpolation.h>

/// One coordinate of a cubic Bézier curve: the Bernstein sum at parameter @a t.
float _bezierCalc(float p0, float p1, float p2, float p3, float t);

/// The easing curve from (0, 0) to (1, 1) with the control points @a p1 and @a p2. Its y at parameter @a t is
/// the eased fraction as it is: t is the parameter, not an x to solve for.
float _KXAnimationCurve(KXPoint p1, KXPoint p2, float t);
