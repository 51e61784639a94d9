#pragma once

#include "core/ground/Truncate.h"

#include <Kobaltrix/KXTypes.h>

#include <algorithm>

/// Whole pixels from (left, top) to before (right, bottom).
struct _KXBox {
    int left, top, right, bottom;

    /// A rectangle without its fractions, as KXDrawRectFill() takes it.
    static _KXBox of(const KXRect& rect) {
        const int left = _KXTruncate(rect.origin.x), top = _KXTruncate(rect.origin.y);
        return {left, top, _KXTruncate(double{rect.size.width} + left),
                _KXTruncate(double{rect.size.height} + top)};
    }
    /// Of a picture whose top left lies at (x, y). What an int does not hold lies beyond every image.
    static _KXBox at(int x, int y, int width, int height) {
        return {x, y, _KXTruncate(static_cast<double>(x) + width),
                _KXTruncate(static_cast<double>(y) + height)};
    }
    /// What of it lies on an image. Its right and bottom may come before left and top: it is empty then.
    _KXBox within(int width, int height) const {
        return {std::max(left, 0), std::max(top, 0), std::min(right, width), std::min(bottom, height)};
    }
    bool isEmpty() const { return left >= right || top >= bottom; }
};
