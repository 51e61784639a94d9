#pragma once

#include <Kobaltrix/KXTypes.h>

/// @file
/// One touching finger: whether it is down and where, in window points. Changes only while KXLogicLoop()
/// reads events; of a burst of finger motion only the first sample is taken.

extern KX_API int KXTouchX;         ///< Points from the window's left edge.
extern KX_API int KXTouchY;         ///< Points from the window's top edge.
extern KX_API KXPoint KXTouchPoint; ///< The same position.

/// -1 while a finger is down, else 0.
KX_API int KXFingerDown();
