#include "input/KXMouse.h"

#include <Kobaltrix/KXKeyboard.h>

#include <SDL_events.h>
#include <SDL_mouse.h>

constinit int KXMouseX = 0;
constinit int KXMouseY = 0;
constinit KXPoint KXMousePoint = {0, 0};
constinit int KXMouseXRelative = 0;
constinit int KXMouseYRelative = 0;
constinit KXPoint KXMousePointRelative = {0, 0};

static KXPoint toPoint(int x, int y) { return {static_cast<float>(x), static_cast<float>(y)}; }

int KXMouse(int button) {
    constexpr int leftControl = 135, rightControl = 136;
    const bool control = KXKey(leftControl) || KXKey(rightControl);
    switch (button) {
    case 0:
        return control ? 0 : _KXMouseButtonLeft;
    case 1:
        return control && _KXMouseButtonLeft ? -1 : _KXMouseButtonRight;
    case 2:
        return _KXMouseButtonMiddle;
    case 3:
        return _KXMouseButtonWheelDown;
    case 4:
        return _KXMouseButtonWheelUp;
    case 5:
        return _KXMouseButtonWheelLeft;
    case 6:
        return _KXMouseButtonWheelRight;
    default:
        return 0;
    }
}

KXPoint KXMousePointAbsolute() {
    int x = 0, y = 0;
    SDL_GetGlobalMouseState(&x, &y);
    return toPoint(x, y);
}

int KXShowMouse(int show) { return SDL_ShowCursor(show ? SDL_ENABLE : SDL_DISABLE); }

void _KXSetMouse(SDL_MouseButtonEvent event) {
    const int state = event.state == SDL_PRESSED ? -1 : 0;
    switch (event.button) {
    case 1:
        _KXMouseButtonLeft = state;
        break;
    case 2:
        _KXMouseButtonMiddle = state;
        break;
    case 3:
        _KXMouseButtonRight = state;
        break;
    default:
        break;
    }
}

void _KXSetMouseWheel(SDL_MouseWheelEvent event) {
    if (event.y > 0)
        _KXMouseButtonWheelUp = -1;
    else if (event.y < 0)
        _KXMouseButtonWheelDown = -1;
    if (event.x < 0)
        _KXMouseButtonWheelLeft = -1;
    else if (event.x > 0)
        _KXMouseButtonWheelRight = -1;
}

void _KXSetMouseMotion(const SDL_MouseMotionEvent& event) {
    KXMouseX = event.x;
    KXMouseY = event.y;
    KXMousePoint = toPoint(event.x, event.y);
    KXMouseXRelative = event.xrel;
    KXMouseYRelative = event.yrel;
    KXMousePointRelative = toPoint(event.xrel, event.yrel);
}

void _KXUnsetMouseWheel() {
    _KXMouseButtonWheelUp = 0;
    _KXMouseButtonWheelDown = 0;
    _KXMouseButtonWheelLeft = 0;
    _KXMouseButtonWheelRight = 0;
}
