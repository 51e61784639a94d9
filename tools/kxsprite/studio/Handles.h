#pragma once

#include "../Document.h"

#include <Kobaltrix/KXCursor.h>
#include <Kobaltrix/KXTypes.h>

#include <vector>

/// What of a rectangle a pointer has hold of: the edges that move with it, several at a corner.
enum Grip : unsigned {
    GripNone = 0,
    GripLeft = 1,
    GripTop = 2,
    GripRight = 4,
    GripBottom = 8,
    GripAll = GripLeft | GripTop | GripRight | GripBottom ///< The inside: the whole moves.
};

/// What is taken hold of at a point of the window. @param seen where the rectangle is drawn.
unsigned gripAt(const KXRect& seen, KXPoint point);
/// An area whose edges have been moved so far, snapped to whole pixels, at least one wide and high.
Area movedBy(const Area& area, unsigned grip, KXPoint pixels);
/// The pointer's shape over a grip.
KXCursor cursorOf(unsigned grip);
/// Draws the eight handles, as many as there is room for.
void drawHandles(const KXRect& seen, KXColor fill, KXColor rim);
/// The area between two pixels, both in it, wherever the second lies.
Area areaBetween(KXPoint one, KXPoint other);
/// An area that an arrow moves, or makes larger and smaller at its right and bottom edge, by 1 or by 8
/// pixels.
Area nudged(const Area& area, KXPoint way, bool isFast, bool resizes);
/// Whether a place is in an area, or so many pixels beside it.
bool isIn(const Area& area, KXPoint place, float rim);
/// Of numbers in their order the one behind another, around the end: of things that lie on each other a click
/// chooses one after the other. -1 for none.
int nextOf(const std::vector<int>& numbers, int present);

/// An area that is dragged by one of its grips.
struct AreaDrag {
    Area before;
    unsigned grip = GripNone;
    KXPoint from = {0, 0}; ///< Where it was taken hold of.
    bool hasBegun = false; ///< Whether it has been changed.

    Area to(KXPoint place) const { return movedBy(before, grip, {place.x - from.x, place.y - from.y}); }
};
