#pragma once

#include <Kobaltrix/KXTypes.h>

#include <algorithm>

/// A part of what is drawn into: left, top, right and bottom.
struct _KXCornerBox {
    float left, top, right, bottom;
};

/// The box around some corners, at least one. @param pointOf where a corner lies.
template<class Corner, class PointOf>
_KXCornerBox _KXBoxAround(const Corner* corners, int count, const PointOf& pointOf) {
    const KXPoint first = pointOf(corners[0]);
    _KXCornerBox box = {first.x, first.y, first.x, first.y};
    for (int i = 1; i < count; ++i) {
        const KXPoint point = pointOf(corners[i]);
        box = {std::min(box.left, point.x), std::min(box.top, point.y), std::max(box.right, point.x),
               std::max(box.bottom, point.y)};
    }
    return box;
}
