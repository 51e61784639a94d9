#pragma once

#include <Kobaltrix/KXTypes.h>

#include <vector>

/// The corners of a closed line.
using _KXContour = std::vector<KXPoint>;
using _KXContours = std::vector<_KXContour>;

/// What of several closed lines is inside.
enum class _KXInside {
    GoneRound,     ///< What they go round, however often and whichever way.
    GoneClockwise, ///< What they go round more often clockwise on screen than the other way.
};

/// Triangles that cover what is inside and do not overlap, three corners each.
std::vector<KXPoint> _KXTriangles(const _KXContours& contours, _KXInside rule);
/// The border of what is inside, by lines that cross nothing: clockwise on screen around it, and the other
/// way around its holes.
_KXContours _KXOutlines(const _KXContours& contours, _KXInside rule);
