#pragma once

#include "render/Tessellator.h"

#include <Kobaltrix/KXShapes.h>

// From the lines around shapes to triangles with colours.

/// Units of the target to a pixel of it, as it is drawn now.
float _KXUnitsPerPixel();

/// Whether what is opaque looks the same however often it is drawn in one place.
bool _KXCoversWhatItOverlaps();

/// How many corners a whole circle has, to look round.
int _KXCornersOfCircle(float radius);

/// The line of a part of an ellipse, both its ends included. @param begin,end degrees, clockwise on screen.
/// @param pieces straight ones that it consists of.
_KXContour _KXArc(KXPoint centre, KXSize radii, float begin, float end, int pieces);
/// The line of a whole ellipse, as round as it has to look.
_KXContour _KXEllipse(KXPoint centre, KXSize radii);

/// A line without the points that are equal to the one before; of a closed one the last comes before the
/// first.
_KXContour _KXWithoutRepeats(const _KXContour& line, bool closed);
/// Whether a contour goes clockwise on screen.
bool _KXIsClockwise(const _KXContour& contour);

/// Fills what some lines go round.
void _KXFillContours(const _KXContours& contours, const KXShapePaint& paint);
/// Fills a convex contour, which needs no tessellator.
void _KXFillConvex(const _KXContour& contour, const KXShapePaint& paint);
