#pragma once

#include <Kobaltrix/KXTouch.h>

/// What is held of the touch screen. Where it is stands in the exported variables, which games may write.
struct _KXTouchState {
    int touching = 0; ///< -1 while a finger is down.
    bool operator==(const _KXTouchState&) const = default;
};

inline constinit _KXTouchState _KXTouch;

inline constinit int& _KXTouching = _KXTouch.touching;

/// Stores whether a finger is down.
void _KXSetTouching(int touching);
/// Stores the finger's position, given as fractions of @a windowSize (points).
void _KXSetTouchPosition(float x, float y, KXSize windowSize);
