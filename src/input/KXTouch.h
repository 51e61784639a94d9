#pragma once

#include <Kobaltrix/KXTouch.h>

inline constinit int _KXTouching = 0; ///< -1 while a finger is down.

/// Stores whether a finger is down.
void _KXSetTouching(int touching);
/// Stores the finger's position, given as fractions of @a windowSize (points).
void _KXSetTouchPosition(float x, float y, KXSize windowSize);
