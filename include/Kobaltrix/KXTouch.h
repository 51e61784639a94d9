#pragma once

#include <Kobaltrix/KXTypes.h>

/// @file
/// One touching finger: whether it is down and where it was last in a window of the library, in points of
/// that window. Changes only while KXLogicLoop() reads events. After each event, of whatever kind, the
/// touches that still wait are dropped: of a burst of them only the first counts, and one behind another
/// event is missed. Lifting the finger moves nothing.

extern KX_API int KXTouchX;         ///< Points from the window's left edge.
extern KX_API int KXTouchY;         ///< Points from the window's top edge.
extern KX_API KXPoint KXTouchPoint; ///< The same position.

/// -1 while a finger is down, else 0.
KX_API int KXFingerDown();
