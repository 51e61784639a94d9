#pragma once

#include <Kobaltrix/KXKeys.h>
#include <Kobaltrix/KXTypes.h>

/// @file
/// The mouse: position of the last motion event in points of the window it belongs to (in units of its
/// logical size, of which the integers drop the fraction downward), buttons, and wheel notches. Everything
/// changes only while KXLogicLoop() reads events, but that notches end with the frame, in KXPostLogicLoop().
///
/// KXMouse() tells levels. KXMouseHeld(), KXMouseWentDown(), KXMouseWentUp(), KXMouseWheel() and
/// KXMouseMotion() tell what happened in the step that is under way, and lose nothing: a click between two
/// steps went down and went up in the next. Between steps nothing happens.

extern KX_API int KXMouseX;         ///< Pointer position, points from the window's left edge.
extern KX_API int KXMouseY;         ///< Pointer position, points from the window's top edge.
extern KX_API KXPoint KXMousePoint; ///< The same position.
extern KX_API int KXMouseXRelative; ///< Motion of the last motion event in points; it stays until the next.
extern KX_API int KXMouseYRelative; ///< Motion of the last motion event in points; it stays until the next.
extern KX_API KXPoint KXMousePointRelative; ///< The same motion.

/// -1 while a button is down or a wheel notch arrived this frame, else 0.
/// @param button 0 left, 1 right, 2 middle, 3 wheel down, 4 wheel up, 5 wheel left, 6 wheel right; others
/// give 0. While a control key is held the left button reads as the right one.
KX_API int KXMouse(int button);
/// The pointer's position on the desktop, in the platform's screen coordinates.
KX_API KXPoint KXMousePointAbsolute();
/// Shows the cursor for a non-zero @a show, hides it for 0. Returns the platform's result: 1 if the cursor
/// was shown until now, 0 if it was hidden, negative on failure.
KX_API int KXShowMouse(int show);

/// -1 while the button itself is down, whatever keys are held, else 0. @param button a KXMouseButton but the
/// wheel's; further buttons go on after #KXMouseForward.
KX_API int KXMouseHeld(int button);
/// How often the button went down in this step: mostly 0 or 1.
KX_API int KXMouseWentDown(int button);
/// How often the button came up in this step.
KX_API int KXMouseWentUp(int button);
/// What the wheel was turned in this step, in notches: x to the right, y away from the user. Every notch
/// counts, and fine wheels and touch pads give fractions.
KX_API KXPoint KXMouseWheel();
/// How far the mouse has moved in this step, in points.
KX_API KXPoint KXMouseMotion();

/// With a non-zero @a relative the pointer is hidden and stays where it is, and KXMouseMotion() alone tells
/// how the mouse moves, without an edge to stop at. With 0 it is free again.
/// @return -1, or 0 with a text in KXError() if the platform refuses.
KX_API int KXSetMouseRelative(int relative);
