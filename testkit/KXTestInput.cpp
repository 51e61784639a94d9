#include "testkit/KXTestInput.h"

#include <Kobaltrix/KXLogicLoop.h>

#include <SDL.h>

#include <utility>

static SDL_Event eventOf(unsigned type) {
    SDL_Event event;
    SDL_zero(event);
    event.type = type;
    return event;
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

KXTestInput::KXTestInput(unsigned windowID, std::function<void()> logic)
    : _windowID(windowID), _logic(std::move(logic)) {}

KXTestInput::~KXTestInput() = default;

void KXTestInput::_key(unsigned type, int keycode) {
    const bool down = type == SDL_KEYDOWN;
    _modifiers = down ? _modifiers | modifierOf(keycode) : _modifiers & ~modifierOf(keycode);
    SDL_Event event = eventOf(type);
    event.key.windowID = _windowID;
    event.key.state = down ? SDL_PRESSED : SDL_RELEASED;
    event.key.keysym.sym = keycode;
    event.key.keysym.scancode = SDL_GetScancodeFromKey(keycode);
    event.key.keysym.mod = static_cast<Uint16>(_modifiers);
    SDL_PushEvent(&event);
}

void KXTestInput::keyDown(int keycode) { _key(SDL_KEYDOWN, keycode); }
void KXTestInput::keyUp(int keycode) { _key(SDL_KEYUP, keycode); }

void KXTestInput::type(const char* text) {
    do {
        SDL_Event event = eventOf(SDL_TEXTINPUT);
        event.text.windowID = _windowID;
        text += SDL_utf8strlcpy(event.text.text, text, sizeof event.text.text); // cuts no character
        SDL_PushEvent(&event);
    } while (*text);
}

void KXTestInput::compose(const char* text) {
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

void KXTestInput::moveMouse(int x, int y) {
    SDL_Event event = eventOf(SDL_MOUSEMOTION);
    event.motion.windowID = _windowID;
    event.motion.x = x;
    event.motion.y = y;
    // Pointers of tests go as far as an int does, and a way between such places is more than one holds.
    const auto way = [](int to, int from) {
        return static_cast<int>(static_cast<unsigned>(to) - static_cast<unsigned>(from));
    };
    event.motion.xrel = way(x, std::exchange(_x, x));
    event.motion.yrel = way(y, std::exchange(_y, y));
    SDL_PushEvent(&event);
}

void KXTestInput::_button(unsigned type, int button) {
    SDL_Event event = eventOf(type);
    event.button.windowID = _windowID;
    event.button.button = static_cast<Uint8>(button);
    event.button.state = type == SDL_MOUSEBUTTONDOWN ? SDL_PRESSED : SDL_RELEASED;
    event.button.clicks = 1;
    event.button.x = _x;
    event.button.y = _y;
    SDL_PushEvent(&event);
}

void KXTestInput::mouseDown(int button) { _button(SDL_MOUSEBUTTONDOWN, button); }
void KXTestInput::mouseUp(int button) { _button(SDL_MOUSEBUTTONUP, button); }

void KXTestInput::turnWheel(int notches, int sideways) {
    SDL_Event event = eventOf(SDL_MOUSEWHEEL);
    event.wheel.windowID = _windowID;
    event.wheel.x = sideways;
    event.wheel.y = notches;
    event.wheel.preciseX = static_cast<float>(sideways);
    event.wheel.preciseY = static_cast<float>(notches);
    SDL_PushEvent(&event);
}

void KXTestInput::_finger(unsigned type, float x, float y) {
    SDL_Event event = eventOf(type);
    event.tfinger.windowID = _windowID;
    event.tfinger.touchId = 1;
    event.tfinger.x = x;
    event.tfinger.y = y;
    event.tfinger.dx = x - std::exchange(_fingerX, x);
    event.tfinger.dy = y - std::exchange(_fingerY, y);
    event.tfinger.pressure = type == SDL_FINGERUP ? 0.0f : 1.0f;
    SDL_PushEvent(&event);
}

void KXTestInput::fingerDown(float x, float y) {
    _fingerX = x;
    _fingerY = y;
    _finger(SDL_FINGERDOWN, x, y);
}
void KXTestInput::moveFinger(float x, float y) { _finger(SDL_FINGERMOTION, x, y); }
void KXTestInput::fingerUp(float x, float y) { _finger(SDL_FINGERUP, x, y); }

void KXTestInput::resizeWindow(int width, int height) {
    SDL_Event event = eventOf(SDL_WINDOWEVENT);
    event.window.event = SDL_WINDOWEVENT_RESIZED;
    event.window.windowID = _windowID;
    event.window.data1 = width;
    event.window.data2 = height;
    SDL_PushEvent(&event);
}

void KXTestInput::quit() {
    SDL_Event event = eventOf(SDL_QUIT);
    SDL_PushEvent(&event);
}

void KXTestInput::step(unsigned count) {
    for (unsigned i = 0; i < count; ++i) {
        KXResetLogicLoop(); // one step is owed
        KXPreLogicLoop();
        if (KXLogicLoop()) { // `if`: a busy machine may owe more by now
            if (_logic)
                _logic();
            KXLogicUpdate();
        }
        KXPostLogicLoop();
    }
}

void KXTestInput::tap(int keycode, unsigned steps) {
    keyDown(keycode);
    step(steps);
    keyUp(keycode);
    step();
}

void KXTestInput::click(int x, int y, int button) {
    moveMouse(x, y);
    step(); // widgets look at the pointer before the press
    mouseDown(button);
    step();
    mouseUp(button);
    step();
}

void KXTestInput::drag(KXPoint from, KXPoint to, unsigned steps) {
    moveMouse(static_cast<int>(from.x), static_cast<int>(from.y));
    step();
    mouseDown();
    step();
    for (unsigned i = 1; i <= steps; ++i) {
        const float way = static_cast<float>(i) / static_cast<float>(steps);
        moveMouse(static_cast<int>(from.x + (to.x - from.x) * way),
                  static_cast<int>(from.y + (to.y - from.y) * way));
        step();
    }
    mouseUp();
    step();
}
