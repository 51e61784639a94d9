#include "KobaltrixTest/KXTestUser.h"

#include "KobaltrixTest/KXTestClock.h"

#include <Kobaltrix/KXKeyboard.h>
#include <Kobaltrix/KXLogicLoop.h>
#include <Kobaltrix/KXWindow.h>

#include <SDL.h>

#include <algorithm>
#include <cmath>
#include <utility>

static SDL_Event eventOf(unsigned type) {
    SDL_Event event;
    SDL_zero(event);
    event.type = type;
    return event;
}

KXTestUser::KXTestUser(KXWindow& window, std::function<void()> step, std::function<void()> draw)
    : _window(&window), _windowID(window.id()), _step(std::move(step)), _drawing(std::move(draw)) {}

KXTestUser::KXTestUser(unsigned windowID, std::function<void()> step)
    : _windowID(windowID), _step(std::move(step)) {}

// ---- keys

// Where the numbers of keys that have no name of their own begin, see KXKeyNumber.
static constexpr int firstOfPositions = 200, firstOfCharacters = 1000;

// The platform's code of a key. Those that no place on this layout types are known by their names.
static int keycodeOf(KXKeyNumber key) {
    if (key >= firstOfCharacters)
        return key - firstOfCharacters;
    if (key >= firstOfPositions)
        return (key - firstOfPositions) | SDLK_SCANCODE_MASK;
    for (int position = 1; position < SDL_NUM_SCANCODES; ++position)
        if (KXKeyAtPosition(position) == key)
            return SDL_GetKeyFromScancode(static_cast<SDL_Scancode>(position));
    return SDL_GetKeyFromName(KXKeyName(key));
}

static int modifierOf(int keycode) {
    switch (keycode) {
    case SDLK_LSHIFT:
        return KMOD_LSHIFT;
    case SDLK_RSHIFT:
        return KMOD_RSHIFT;
    case SDLK_LCTRL:
        return KMOD_LCTRL;
    case SDLK_RCTRL:
        return KMOD_RCTRL;
    case SDLK_LALT:
        return KMOD_LALT;
    case SDLK_RALT:
        return KMOD_RALT;
    case SDLK_LGUI:
        return KMOD_LGUI;
    case SDLK_RGUI:
        return KMOD_RGUI;
    case SDLK_MODE:
        return KMOD_MODE;
    default:
        return KMOD_NONE;
    }
}

void KXTestUser::_key(unsigned type, int keycode, int position) {
    const bool down = type == SDL_KEYDOWN;
    _modifiers = down ? _modifiers | modifierOf(keycode) : _modifiers & ~modifierOf(keycode);
    SDL_Event event = eventOf(type);
    event.key.windowID = _windowID;
    event.key.state = down ? SDL_PRESSED : SDL_RELEASED;
    event.key.repeat = down && !_held.insert(keycode).second;
    event.key.keysym.sym = keycode;
    event.key.keysym.scancode = static_cast<SDL_Scancode>(position);
    event.key.keysym.mod = static_cast<Uint16>(_modifiers);
    if (!down)
        _held.erase(keycode);
    SDL_PushEvent(&event);
}

void KXTestUser::hold(KXKeyNumber key) {
    _key(SDL_KEYDOWN, keycodeOf(key), SDL_GetScancodeFromKey(keycodeOf(key)));
}
void KXTestUser::release(KXKeyNumber key) {
    _key(SDL_KEYUP, keycodeOf(key), SDL_GetScancodeFromKey(keycodeOf(key)));
}
void KXTestUser::hold(KXKeyPosition position) {
    _key(SDL_KEYDOWN, SDL_GetKeyFromScancode(static_cast<SDL_Scancode>(position)), position);
}
void KXTestUser::release(KXKeyPosition position) {
    _key(SDL_KEYUP, SDL_GetKeyFromScancode(static_cast<SDL_Scancode>(position)), position);
}

void KXTestUser::press(KXKeyNumber key, unsigned steps) {
    hold(key);
    step(steps);
    release(key);
    step();
}

void KXTestUser::press(KXKeyPosition position, unsigned steps) {
    hold(position);
    step(steps);
    release(position);
    step();
}

void KXTestUser::type(const char* text) {
    do {
        SDL_Event event = eventOf(SDL_TEXTINPUT);
        event.text.windowID = _windowID;
        text += SDL_utf8strlcpy(event.text.text, text, sizeof event.text.text); // cuts no character
        SDL_PushEvent(&event);
    } while (*text);
}

void KXTestUser::compose(const char* text) {
    SDL_Event event = eventOf(SDL_TEXTEDITING);
    event.edit.windowID = _windowID;
    if (SDL_strlen(text) < sizeof event.edit.text) {
        SDL_strlcpy(event.edit.text, text, sizeof event.edit.text);
    } else {
        event.type = SDL_TEXTEDITING_EXT;
        event.editExt.text = SDL_strdup(text); // whoever reads the event frees it
    }
    SDL_PushEvent(&event);
}

// ---- the mouse

// A coordinate as the platform has it.
static int whole(float coordinate) {
    if (!(coordinate > -2147483648.0f)) // or not a number
        return coordinate <= 0 ? SDL_MIN_SINT32 : 0;
    return coordinate < 2147483648.0f ? static_cast<int>(coordinate) : SDL_MAX_SINT32;
}

// A way between two places may be more than an int holds.
static int way(int to, int from) {
    return static_cast<int>(static_cast<unsigned>(to) - static_cast<unsigned>(from));
}

void KXTestUser::_motion(KXPoint point, bool byTouch) {
    SDL_Event event = eventOf(SDL_MOUSEMOTION);
    event.motion.windowID = _windowID;
    event.motion.which = byTouch ? SDL_TOUCH_MOUSEID : 0;
    event.motion.x = whole(point.x);
    event.motion.y = whole(point.y);
    event.motion.xrel = way(event.motion.x, std::exchange(_x, event.motion.x));
    event.motion.yrel = way(event.motion.y, std::exchange(_y, event.motion.y));
    SDL_PushEvent(&event);
}

// The platform numbers left, middle, right and then the others, from 1; 0 for what is no button.
static int platformButton(KXMouseButton button) {
    switch (button) {
    case KXMouseLeft:
        return SDL_BUTTON_LEFT;
    case KXMouseRight:
        return SDL_BUTTON_RIGHT;
    case KXMouseMiddle:
        return SDL_BUTTON_MIDDLE;
    default:
        return button < KXMouseBack ? 0 : button - KXMouseBack + SDL_BUTTON_X1;
    }
}

void KXTestUser::_button(unsigned type, KXMouseButton button, bool byTouch) {
    SDL_Event event = eventOf(type);
    event.button.windowID = _windowID;
    event.button.which = byTouch ? SDL_TOUCH_MOUSEID : 0;
    event.button.button = static_cast<Uint8>(platformButton(button));
    event.button.state = type == SDL_MOUSEBUTTONDOWN ? SDL_PRESSED : SDL_RELEASED;
    event.button.clicks = 1;
    event.button.x = _x;
    event.button.y = _y;
    if (event.button.button)
        SDL_PushEvent(&event);
}

void KXTestUser::move(KXPoint point) { _motion(point, false); }
void KXTestUser::hold(KXMouseButton button) { _button(SDL_MOUSEBUTTONDOWN, button, false); }
void KXTestUser::release(KXMouseButton button) { _button(SDL_MOUSEBUTTONUP, button, false); }

void KXTestUser::click(KXPoint point, KXMouseButton button) {
    move(point);
    step(); // widgets look at the pointer before the press
    hold(button);
    step();
    release(button);
    step();
}

void KXTestUser::drag(KXPoint from, KXPoint to, unsigned steps, KXMouseButton button) {
    move(from);
    step();
    hold(button);
    step();
    for (unsigned i = 1; i <= steps; ++i) {
        const float part = static_cast<float>(i) / static_cast<float>(steps);
        move({from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part});
        step();
    }
    release(button);
    step();
}

// The whole notches in what was turned so far; the rest stays for the next turn.
static int takeNotches(float& turned, float more) {
    const float notches = std::trunc(turned += more);
    turned -= notches;
    return whole(notches);
}

void KXTestUser::wheel(float notches, float sideways) {
    SDL_Event event = eventOf(SDL_MOUSEWHEEL);
    event.wheel.windowID = _windowID;
    event.wheel.x = takeNotches(_wheel.x, sideways);
    event.wheel.y = takeNotches(_wheel.y, notches);
    event.wheel.preciseX = sideways;
    event.wheel.preciseY = notches;
    SDL_PushEvent(&event);
}

// ---- fingers

KXSize KXTestUser::_size() const {
    int width = 1, height = 1;
    if (SDL_Window* const window = SDL_GetWindowFromID(_windowID))
        SDL_GetWindowSize(window, &width, &height);
    return {static_cast<float>(width), static_cast<float>(height)};
}

void KXTestUser::_finger(unsigned type, int finger, float pressure) {
    const KXPoint point = _fingers[finger];
    const KXSize size = _size();
    SDL_Event event = eventOf(type);
    event.tfinger.windowID = _windowID;
    event.tfinger.touchId = 1;
    event.tfinger.fingerId = finger;
    event.tfinger.x = point.x / size.width;
    event.tfinger.y = point.y / size.height;
    event.tfinger.pressure = pressure;
    SDL_PushEvent(&event);
}

void KXTestUser::touch(int finger, KXPoint point, float pressure) {
    if (_fingers.empty() && SDL_GetHintBoolean(SDL_HINT_TOUCH_MOUSE_EVENTS, SDL_TRUE)) {
        _mouseFinger = finger;
        _movesMouse = true;
        _motion(point, true);
        _button(SDL_MOUSEBUTTONDOWN, KXMouseLeft, true);
    }
    _fingers[finger] = point;
    _finger(SDL_FINGERDOWN, finger, pressure);
}

void KXTestUser::slide(int finger, KXPoint point, float pressure) {
    if (_movesMouse && finger == _mouseFinger)
        _motion(point, true);
    _fingers[finger] = point;
    _finger(SDL_FINGERMOTION, finger, pressure);
}

void KXTestUser::lift(int finger) {
    if (_movesMouse && finger == _mouseFinger) {
        _button(SDL_MOUSEBUTTONUP, KXMouseLeft, true);
        _movesMouse = false;
    }
    _finger(SDL_FINGERUP, finger, 0);
    _fingers.erase(finger);
}

// ---- the window

void KXTestUser::_drop(unsigned type, const char* text) {
    SDL_Event event = eventOf(type);
    event.drop.windowID = _windowID;
    event.drop.file = SDL_strdup(text); // whoever reads the event frees it
    SDL_PushEvent(&event);
}

void KXTestUser::dropFile(const char* path) { _drop(SDL_DROPFILE, path); }
void KXTestUser::dropText(const char* text) { _drop(SDL_DROPTEXT, text); }

void KXTestUser::_tell(unsigned windowEvent, KXSize size) {
    SDL_Event event = eventOf(SDL_WINDOWEVENT);
    event.window.event = static_cast<Uint8>(windowEvent);
    event.window.windowID = _windowID;
    event.window.data1 = whole(size.width);
    event.window.data2 = whole(size.height);
    SDL_PushEvent(&event);
}

void KXTestUser::resize(KXSize size) {
    if (SDL_Window* const window = SDL_GetWindowFromID(_windowID)) // not by the library: the user does it
        SDL_SetWindowSize(window, whole(size.width), whole(size.height));
    _tell(SDL_WINDOWEVENT_RESIZED, size);
}

void KXTestUser::loseFocus() {
    _held.clear();
    _tell(SDL_WINDOWEVENT_FOCUS_LOST);
}
void KXTestUser::gainFocus() { _tell(SDL_WINDOWEVENT_FOCUS_GAINED); }
void KXTestUser::close() { _tell(SDL_WINDOWEVENT_CLOSE); }

void KXTestUser::quit() {
    SDL_Event event = eventOf(SDL_QUIT);
    SDL_PushEvent(&event);
}

// ---- frames

void KXTestUser::_draw() {
    if (_window)
        _window->setRenderContext();
    if (_drawing)
        _drawing();
}

void KXTestUser::_endFrame() {
    KXPostLogicLoop();
    if (KXTestClock* const clock = KXTestClock::current())
        clock->_lastFrame = clock->nanoseconds();
}

void KXTestUser::step(unsigned count) {
    for (unsigned i = 0; i < count; ++i) {
        const KXTestClock* const clock = KXTestClock::current();
        if (clock && clock->nanoseconds() == clock->_lastFrame)
            KXWaitForLogicStep();
        else
            KXResetLogicLoop();
        KXPreLogicLoop();
        if (KXLogicLoop()) { // `if`: where time is the system's, more may be owed by now
            if (_step)
                _step();
            KXLogicUpdate();
        }
        _endFrame();
    }
}

int KXTestUser::frame(double milliseconds) {
    if (KXTestClock* const clock = KXTestClock::current()) {
        if (clock->_lastFrame == KXTestClock::_never)
            KXResetLogicLoop();
        clock->advanceNanoseconds(static_cast<uint64_t>(std::max(milliseconds, 0.0) * 1e6));
    }
    int steps = 0;
    for (KXPreLogicLoop(); KXLogicLoop(); KXLogicUpdate(), ++steps)
        if (_step)
            _step();
    _draw();
    if (_window)
        _window->swapBuffers();
    KXFPSTick();
    _endFrame();
    return steps;
}

KXTestPicture KXTestUser::look() {
    _draw();
    return _window ? KXTestPicture::of(*_window) : KXTestPicture();
}
