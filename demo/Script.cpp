#include "Script.h"

#include <SDL_events.h>

#include <cstring>

namespace {
enum class Act { keyDown, keyUp, move, press, release, wheel };

struct Line {
    int step;
    Act act;
    int a, b; // a keycode, a position, or wheel notches
};

constexpr Line script[] = {
    {2, Act::keyDown, SDLK_RIGHT, 0}, {22, Act::keyUp, SDLK_RIGHT, 0}, // walk
    {24, Act::wheel, 0, 1},           {27, Act::wheel, 0, -1},         // turn, and back
    {30, Act::keyDown, SDLK_m, 0},    {32, Act::keyUp, SDLK_m, 0},     // mirror the small picture
    {40, Act::move, 236, 236},        {46, Act::press, 236, 236},      // pull the panel's corner
    {50, Act::move, 256, 246},        {54, Act::move, 286, 262},
    {56, Act::release, 286, 262},     {60, Act::move, 330, 380},
    {62, Act::press, 330, 380}, // place the hero
    {64, Act::release, 330, 380},     {70, Act::keyDown, SDLK_3, 0},
    {72, Act::keyUp, SDLK_3, 0},                                          // 3D
    {74, Act::keyDown, SDLK_h, 0},    {76, Act::keyUp, SDLK_h, 0},        // boxes
    {80, Act::keyDown, SDLK_LEFT, 0}, {104, Act::keyDown, SDLK_SPACE, 0}, // walk and hop
    {108, Act::keyUp, SDLK_SPACE, 0},
};

SDL_Event toEvent(const Line& line, unsigned windowID) {
    SDL_Event event;
    std::memset(&event, 0, sizeof event);
    switch (line.act) {
    case Act::keyDown:
    case Act::keyUp:
        event.type = line.act == Act::keyDown ? SDL_KEYDOWN : SDL_KEYUP;
        event.key.windowID = windowID;
        event.key.keysym.sym = line.a;
        break;
    case Act::move:
        event.type = SDL_MOUSEMOTION;
        event.motion.windowID = windowID;
        event.motion.x = line.a;
        event.motion.y = line.b;
        break;
    case Act::press:
    case Act::release:
        event.type = line.act == Act::press ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
        event.button.windowID = windowID;
        event.button.button = SDL_BUTTON_LEFT;
        event.button.state = line.act == Act::press ? SDL_PRESSED : SDL_RELEASED;
        event.button.x = line.a;
        event.button.y = line.b;
        break;
    case Act::wheel:
        event.type = SDL_MOUSEWHEEL;
        event.wheel.windowID = windowID;
        event.wheel.x = line.a;
        event.wheel.y = line.b;
        break;
    }
    return event;
}
} // namespace

void playScript(int step, unsigned windowID) {
    for (const Line& line : script)
        if (line.step == step) {
            SDL_Event event = toEvent(line, windowID);
            SDL_PushEvent(&event);
        }
}
