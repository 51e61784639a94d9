#pragma once

#include "../Document.h"

#include <Kobaltrix/KXCursor.h>
#include <Kobaltrix/KXTypes.h>

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
