#pragma once

#include <Kobaltrix/KXTypes.h>

/// @file
/// Touch screens. Places are in points of the window, or in units of its logical size.
///
/// KXFingers() gives every finger with its place, its pressure and what it did in the step that is under way,
/// right for each sequence that a screen sends.
///
/// KXFingerDown() and KXTouchPoint know one touching finger, and less of it: after each event, of whatever
/// kind, the touches that still wait are left out for them, so of a burst of touches only the first counts
/// and one behind another event is missed. As the platform sends an event of the mouse before each first
/// touch, they see next to nothing of a real screen unless KXSetTouchMovesMouse(0) was called; and one whose
/// finger moves and is lifted in the same step stays down for them. Lifting the finger moves nothing.
///
/// Everything changes only while KXLogicLoop() reads events.

extern KX_API int KXTouchX;         ///< Points from the window's left edge.
extern KX_API int KXTouchY;         ///< Points from the window's top edge.
extern KX_API KXPoint KXTouchPoint; ///< The same position.

/// -1 while a finger is down, else 0.
KX_API int KXFingerDown();

/// A finger on the screen.
struct KXFinger {
    int number;        ///< Its own until it is lifted: the lowest that was free, from 0.
    unsigned windowID; ///< KXWindow::id() of the window it touches.
    KXPoint point;     ///< Points from the window's top-left corner.
    float pressure;    ///< 0 to 1; 1 where the screen does not measure it.
    int held;          ///< -1 while it is down; 0 in the step in which it was lifted.
    int wentDown;      ///< -1 in the step in which it went down, else 0.
    int wentUp;        ///< -1 in the step in which it was lifted, else 0.
};

/// Fingers, to be walked with a range-based for.
struct KXFingerList {
    const KXFinger* first; ///< Null if there are none.
    int count;             ///< How many there are.

    const KXFinger* begin() const { return first; }       ///< For a range-based for.
    const KXFinger* end() const { return first + count; } ///< For a range-based for.
};

/// The fingers that are down, and in a step those that were lifted in it. The list lives until the next call.
KX_API KXFingerList KXFingers();

/// With 0 touches no longer move and press the mouse as well; with a non-zero value, as at the start, the
/// first finger does. @return -1, or 0 if the platform refuses.
KX_API int KXSetTouchMovesMouse(int moves);
