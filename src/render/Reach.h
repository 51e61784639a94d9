#pragma once

#include <Kobaltrix/KXTypes.h>

#include <cmath>

/// Whether a number is one that things are drawn at: beyond, and for what is no number, nothing is. So far
/// away a float tells a pixel from the next hundred at best.
inline bool _KXIsWithinReach(float number) { return std::abs(number) <= 1e9f; }
/// The same of both numbers of a point.
inline bool _KXIsWithinReach(KXPoint point) { return _KXIsWithinReach(point.x) && _KXIsWithinReach(point.y); }
