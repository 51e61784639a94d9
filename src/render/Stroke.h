#pragma once

#include "render/Tessellator.h"

#include <Kobaltrix/KXShapes.h>

/// Draws a line through points.
void _KXDrawStrokeOf(const _KXContour& points, const KXStroke& stroke);
