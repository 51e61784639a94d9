#pragma once

#include <Kobaltrix/KXMouse.h>

struct SDL_MouseButtonEvent;
struct SDL_MouseMotionEvent;
struct SDL_MouseWheelEvent;

inline constexpr int _KXMouseButtonCount = 7; ///< Buttons as KXMouse() numbers them, the wheel's ways too.

/// What is held of the mouse. Where it is stands in the exported variables, which games may write.
struct _KXMouseState {
    int buttons[_KXMouseButtonCount] = {}; ///< -1 while down, or for the frame in which a notch arrived.
    bool operator==(const _KXMouseState&) const = default;
};

inline constinit _KXMouseState _KXMouseHeld;

inline constinit int& _KXMouseButtonLeft = _KXMouseHeld.buttons[0];
inline constinit int& _KXMouseButtonRight = _KXMouseHeld.buttons[1];
inline constinit int& _KXMouseButtonMiddle = _KXMouseHeld.buttons[2];
inline constinit int& _KXMouseButtonWheelDown = _KXMouseHeld.buttons[3];
inline constinit int& _KXMouseButtonWheelUp = _KXMouseHeld.buttons[4];
inline constinit int& _KXMouseButtonWheelLeft = _KXMouseHeld.buttons[5];
inline constinit int& _KXMouseButtonWheelRight = _KXMouseHeld.buttons[6];

/// Takes a button press or release over.
void _KXSetMouse(SDL_MouseButtonEvent event);
/// Takes wheel notches over; flags are only set here.
void _KXSetMouseWheel(SDL_MouseWheelEvent event);
/// Takes the pointer's position and motion over.
void _KXSetMouseMotion(const SDL_MouseMotionEvent& event);
/// Sets where it is and how far it moved; the integers lose the fraction downward.
void _KXSetMousePlace(KXPoint place, KXPoint motion);
/// Forgets the wheel notches at the end of a frame.
void _KXUnsetMouseWheel();
