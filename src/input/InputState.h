#pragma once

#include "input/GamePad.h"
#include "input/KXMouse.h"
#include "input/KXTouch.h"
#include "input/Keyboard.h"

/// A position or motion as it is exported to games.
struct _KXExportedPoint {
    int x = 0, y = 0;
    float pointX = 0, pointY = 0;

    bool operator==(const _KXExportedPoint&) const = default;
};

/// All that input has told at one moment, and who was told of it. It says nothing of devices and windows.
struct _KXInputState {
    _KXKeyboardState keyboard;
    _KXMouseState mouse;
    _KXExportedPoint mousePosition, mouseMotion;
    _KXTouchState touch;
    _KXExportedPoint touchPosition;
    _KXGamePadState pad;

    bool operator==(const _KXInputState&) const = default;
};

/// The state now.
_KXInputState _KXTakeInputState();
/// Puts a state back: everything reads as it did when it was taken, and a new one as if nothing had happened.
void _KXPutInputState(const _KXInputState& state);
