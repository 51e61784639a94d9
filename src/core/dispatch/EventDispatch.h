#pragma once

#include <Kobaltrix/KXEvents.h>

#include <SDL_events.h>

/// The event being dispatched.
extern constinit SDL_Event _KXMainEvent;

/// Called for resized windows while the game has set no function of its own.
void _KXNoOpWindowResizedCallback(unsigned windowID, KXSize size);

/// Reads every waiting event into the input state, the windows and the quit request.
void _KXDispatchEvents();
