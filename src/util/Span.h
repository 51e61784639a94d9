#pragma once

#include <Kobaltrix/KXTypes.h>

#include <algorithm>
#include <cmath>
#include <limits>

// Rectangles as what they cover of each axis. In doubles, which hold the sum of two floats exactly wherever
// these are of sizes that a game uses together.

/// What is covered of an axis, from the edge at the low end to that at the high end.
struct _KXSpan {
    double low, high;

    bool overlaps(const _KXSpan& other) const { return low < other.high && other.low < high; }
    bool meets(const _KXSpan& other) const { return low <= other.high && other.low <= high; }
    bool covers(const _KXSpan& other) const { return low <= other.low && other.high <= high; }
    /// The largest number an edge has, by size.
    double magnitude() const { return std::max(std::fabs(low), std::fabs(high)); }
};

/// What a rectangle covers of both.
struct _KXSpans {
    _KXSpan x, y;
    bool isFinite;

    explicit _KXSpans(const KXRect& rect)
        : x{rect.origin.x, double{rect.origin.x} + rect.size.width}, y{rect.origin.y, double{rect.origin.y} +
                                                                                          rect.size.height},
          isFinite(std::isfinite(x.low) && std::isfinite(x.high) && std::isfinite(y.low) &&
                   std::isfinite(y.high)) {}

    bool hasArea() const { return isFinite && x.low < x.high && y.low < y.high; }
};

/// What is thinner than floats of such sizes can tell apart.
inline double _KXFloatStep(double magnitude) {
    return magnitude * double{std::numeric_limits<float>::epsilon()};
}
