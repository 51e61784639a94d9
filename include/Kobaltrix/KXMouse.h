#pragma once

#include <Kobaltrix/KXTypes.h>

/// @file
/// The mouse: position of the last motion event in points of the window it belongs to, buttons, and wheel
/// notches. Everything changes only while KXLogicLoop() reads events, but that notches end with the frame, in
/// KXPostLogicLoop().

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
