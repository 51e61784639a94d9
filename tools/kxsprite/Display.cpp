#include "Display.h"

#include <SDL_stdinc.h>
#include <SDL_video.h>

#include <algorithm>
#include <ranges>
#include <string_view>

static bool canOpen(std::string_view driver) {
    return std::ranges::any_of(std::views::iota(0, SDL_GetNumVideoDrivers()),
                               [=](int index) { return SDL_GetVideoDriver(index) == driver; });
}

// Elsewhere than under X11 and Wayland, which a variable leads to, whoever starts a program has a display.
bool hasDisplay() {
    return SDL_getenv("SDL_VIDEODRIVER") || SDL_getenv("DISPLAY") || SDL_getenv("WAYLAND_DISPLAY") ||
           !(canOpen("x11") || canOpen("wayland"));
}

// On Windows what draws unseen knows no OpenGL.
void drawUnseen() {
    if (canOpen("offscreen") && !canOpen("windows"))
        SDL_setenv("SDL_VIDEODRIVER", "offscreen", 1);
}
