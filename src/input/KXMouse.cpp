#include "input/KXMouse.h"

#include "core/ground/ErrorSlot.h"
#include "core/ground/Tape.h"
#include "core/ground/Truncate.h"
#include "input/Keyboard.h"

#include <SDL_events.h>
#include <SDL_mouse.h>

#include <cmath>

constinit int KXMouseX = 0;
constinit int KXMouseY = 0;
constinit KXPoint KXMousePoint = {0, 0};
constinit int KXMouseXRelative = 0;
constinit int KXMouseYRelative = 0;
constinit KXPoint KXMousePointRelative = {0, 0};

static KXPoint toPoint(int x, int y) { return {static_cast<float>(x), static_cast<float>(y)}; }

int KXMouse(int button) {
    if (button < 0 || button >= _KXMouseButtonCount)
        return 0;
    constexpr int right = 1;
    const bool control = _KXKeys[KXKeyLeftControl] || _KXKeys[KXKeyRightControl];
    if (button > right || !control)
        return _KXMouseHeld.buttons[button];
    // With a control key held the left button reads as the right one.
    if (button != right)
        return 0;
    return _KXMouseButtonLeft ? -1 : _KXMouseButtonRight;
}

KXPoint KXMousePointAbsolute() {
    int x = 0, y = 0;
    SDL_GetGlobalMouseState(&x, &y);
    x = _KXAnswerTo(_KXQuestion::Left, [x] { return x; });
    y = _KXAnswerTo(_KXQuestion::Top, [y] { return y; });
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

void _KXSetMousePlace(KXPoint place, KXPoint motion) {
    KXMouseX = _KXTruncate(std::floor(place.x));
    KXMouseY = _KXTruncate(std::floor(place.y));
    KXMousePoint = place;
    KXMouseXRelative = _KXTruncate(std::floor(motion.x));
    KXMouseYRelative = _KXTruncate(std::floor(motion.y));
    KXMousePointRelative = motion;
}

void _KXUnsetMouseWheel() {
    _KXMouseButtonWheelUp = _KXMouseButtonWheelDown = _KXMouseButtonWheelLeft = _KXMouseButtonWheelRight = 0;
}

int KXSetMouseRelative(int relative) {
    if (SDL_SetRelativeMouseMode(relative ? SDL_TRUE : SDL_FALSE) == 0)
        return -1;
    _KXReportError("The pointer cannot be held: %s", SDL_GetError());
    return 0;
}
