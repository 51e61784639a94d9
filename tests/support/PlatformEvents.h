#pragma once

#include <SDL_events.h>

/// Forgets what the desktop has sent so far of real windows, such as their focus and the mouse above them.
inline void forgetPlatformEvents() {
    SDL_PumpEvents();
    SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
}
