#pragma once

#include <Kobaltrix/KXPads.h>

#include <SDL_events.h>

#include <cstdint>

// What the platform tells of pads, by the number that it has given to each plug-in (the instance). Of those
// that KXInitPads() has not taken nothing is taken in.

/// Whether a joystick has moved, or a button of it.
inline bool _KXIsOfJoystick(const SDL_Event& event) {
    return event.type >= SDL_JOYAXISMOTION && event.type <= SDL_JOYBUTTONUP;
}

/// Whether a joystick is one of the pads.
bool _KXIsPad(std::int32_t instance);
/// A pad may have come: takes all that are there and have no number yet, while numbers last.
void _KXTakePads(std::uint32_t time);
/// Looks who is there: pads that a replay brought, or that went unheard, have gone, and others may have come.
void _KXLookForPads(std::uint32_t time);
/// A pad has gone, and what was held on it goes up.
void _KXLosePad(std::int32_t instance, std::uint32_t time);
/// The pad has got another layout: nothing of it counts as held until it tells anew.
void _KXRestPad(std::int32_t instance);
/// The sticks and triggers of all pads count as at rest until they move. Their presses stay.
void _KXRestPadAxes();
void _KXTakePadButton(std::int32_t instance, int button, bool down, std::uint32_t time);
/// @param value -32768 to 32767, of triggers from 0.
void _KXTakePadAxis(std::int32_t instance, int axis, int value, std::uint32_t time);
