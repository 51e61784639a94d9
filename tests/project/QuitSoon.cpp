// Ends an example of the pages as closing its window would: a little after it was started, and again should
// it be deaf.

#include <SDL.h>

#include <cstring>

static Uint32 quit(Uint32 interval, void*) {
    SDL_Event event;
    std::memset(&event, 0, sizeof event);
    event.type = SDL_QUIT;
    SDL_PushEvent(&event);
    return interval;
}

static const bool started = [] {
    SDL_InitSubSystem(SDL_INIT_TIMER | SDL_INIT_EVENTS);
    return SDL_AddTimer(300, quit, nullptr) != 0;
}();
