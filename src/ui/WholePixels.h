#pragma once

#include "core/ground/Truncate.h"

#include <Kobaltrix/KXTypes.h>

#include <algorithm>

/// A coordinate as drawing truncates it, kept to where windows can be: sums of some of these fit into an int.
inline int _KXWholePixel(float coordinate) {
    constexpr int furthest = 1 << 16;
    return std::clamp(_KXTruncate(coordinate), -furthest, furthest);
}

/// The rectangle between two corners; an empty one where the second is not to the lower right of the first.
inline KXRect _KXRectBetween(int left, int top, int right, int bottom) {
    return {{static_cast<float>(left), static_cast<float>(top)},
            {static_cast<float>(std::max(0, right - left)), static_cast<float>(std::max(0, bottom - top))}};
}

/// Whether a point belongs to a widget of a rectangle: its left and top edges do not.
inline bool _KXContains(KXRect rect, KXPoint point) {
    return rect.origin.x < point.x && point.x <= rect.origin.x + rect.size.width && rect.origin.y < point.y &&
           point.y <= rect.origin.y + rect.size.height;
}

/// Whether a rectangle covers a point as it covers pixels: its right and bottom edges do not belong to it.
inline bool _KXCovers(KXRect rect, KXPoint point) {
    return rect.origin.x <= point.x && point.x < rect.origin.x + rect.size.width &&
           rect.origin.y <= point.y && point.y < rect.origin.y + rect.size.height;
}
