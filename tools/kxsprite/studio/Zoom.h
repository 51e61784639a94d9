#pragma once

#include "../Document.h"

#include <Kobaltrix/KXTypes.h>

/// Where a view shows its picture, and how large. Steps are such that the pixels of a picture are all of one
/// size: whole numbers, and halves of halves below 1.
class Zoom {
public:
    /// How many points a pixel of the picture is wide and high: 1/8 to 64.
    float scale() const;

    /// Where in the window a place of the picture is seen by a view. @param view its rectangle.
    KXPoint fromPicture(const KXRect& view, KXPoint place) const;
    KXRect fromPicture(const KXRect& view, const Area& area) const;
    /// The place of the picture that is seen at a point of the window.
    KXPoint toPicture(const KXRect& view, KXPoint point) const;

    /// So many steps nearer, or farther if negative. What is seen at a point of the window stays there.
    void zoomAt(const KXRect& view, KXPoint point, int steps);
    /// A point for each pixel, with the middle staying what it is.
    void showActualSize() { _step = stepOfOne; }
    /// A part of the picture as large as there is room for.
    void fit(const KXRect& view, const Area& part);
    /// Moves the picture by so many points.
    void pan(KXPoint points);
    /// Moves it no further than needed for a place to be seen.
    void reveal(const KXRect& view, const Area& part);
    /// Keeps the middle of the view on a part of the picture, so that it is not lost.
    void stayOn(const Area& part);

private:
    static constexpr int stepOfOne = 3;

    KXPoint _centre = {0, 0}; // the place of the picture that is in the middle of the view
    int _step = stepOfOne;
};
