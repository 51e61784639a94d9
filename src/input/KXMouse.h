#pragma once

#include <Kobaltrix/KXMouse.h>

struct SDL_MouseButtonEvent;
struct SDL_MouseMotionEvent;
struct SDL_MouseWheelEvent;

// -1 while down (buttons) or for the frame in which the notch arrived (wheel).
inline constinit int _KXMouseButtonLeft = 0;
inline constinit int _KXMouseButtonRight = 0;
inline constinit int _KXMouseButtonMiddle = 0;
inline constinit int _KXMouseButtonWheelUp = 0;
inline constinit int _KXMouseButtonWheelDown = 0;
inline constinit int _KXMouseButtonWheelRight = 0;
inline constinit int _KXMouseButtonWheelLeft = 0;

/// Takes a button press or release over.
void _KXSetMouse(SDL_MouseButtonEvent event);
/// Takes wheel notches over; flags are only set here.
void _KXSetMouseWheel(SDL_MouseWheelEvent event);
/// Takes the pointer's position and motion over.
void _KXSetMouseMotion(const SDL_MouseMotionEvent& event);
/// Forgets the wheel notches at the end of a frame.
void _KXUnsetMouseWheel();
