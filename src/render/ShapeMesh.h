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

/// Whether a number is one that shapes are drawn for.
bool _KXIsDrawn(float number);
/// The same of both numbers of a point.
bool _KXIsDrawn(KXPoint point);

/// Whether a contour goes clockwise on screen.
bool _KXIsClockwise(const _KXContour& contour);

/// Fills what some lines go round.
void _KXFillContours(const _KXContours& contours, const KXShapePaint& paint);
/// Fills a convex contour, which needs no tessellator.
void _KXFillConvex(const _KXContour& contour, const KXShapePaint& paint);
