#pragma once

#include <Kobaltrix/KXWindow.h>

/// How a picture in units of its own fills a window.
struct _KXPictureFit {
    KXRect part;  ///< Of the window, in points.
    KXSize units; ///< That the part holds.

    KXPoint toUnits(KXPoint point) const {
        return {(point.x - part.origin.x) * units.width / part.size.width,
                (point.y - part.origin.y) * units.height / part.size.height};
    }
    KXPoint toPoints(KXPoint place) const {
        return {part.origin.x + place.x * part.size.width / units.width,
                part.origin.y + place.y * part.size.height / units.height};
    }
    /// A rectangle in points, cut to the part.
    KXRect toPoints(KXRect rect) const;
    /// A way in points, without a place.
    KXPoint moveToUnits(KXPoint move) const {
        return {move.x * units.width / part.size.width, move.y * units.height / part.size.height};
    }
};

/// Finds it. @param window its size in points, of which each side counts as 1 at least.
/// @param density pixels to a point, for whole multiples.
_KXPictureFit _KXFitPicture(const KXLogicalSize& logical, KXSize window, float density);
/// Pixels of a surface, from its bottom left.
struct _KXPixelBox {
    int left, bottom, width, height;
};

/// The pixels nearest to a part of a window.
/// @param part,window in points. @param width,height of the surface.
_KXPixelBox _KXPixelsOf(KXRect part, KXSize window, int width, int height);

/// Whether a size is one to draw in: what is no number, infinite or not above 0 is none.
bool _KXIsLogical(const KXLogicalSize& logical);
