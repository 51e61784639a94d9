#include "platform/VideoDriver.h"

#include <SDL_video.h>

#include <string_view>

bool _KXShowsNothing() {
    const char* const driver = SDL_GetCurrentVideoDriver();
    return !driver || driver == std::string_view("offscreen") || driver == std::string_view("dummy");
}
