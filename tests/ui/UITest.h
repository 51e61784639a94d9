#pragma once

#include "core/dispatch/EventDispatch.h"
#include "input/KXMouse.h"
#include "input/Keyboard.h"

#include "input/LogicSteps.h"
#include "support/Golden.h"
#include "text/TextTest.h"

#include <Kobaltrix/KXUIGlobalFont.h>

#include <SDL_events.h>

/// A test of a widget: a window of 320 x 200 points, the user-interface font, and a user whose hands are real
/// events. Each of what the user does ends with one logic step's reading of events; the test polls.
struct UITest : TextTest {
    UITest() {
        window = std::make_unique<KXWindow>("UI", KXSize{320, 200});
        window->setRenderContext();
        fill({0.2f, 0.3f, 0.4f, 1});
        KXUISetGlobalFont(testFont(), KXAliasModeTexture, 12, KXZeroPoint);
        moveMouse(-1, -1);
    }
    ~UITest() override {
        for (int button : {SDL_BUTTON_LEFT, SDL_BUTTON_MIDDLE, SDL_BUTTON_RIGHT})
            mouseButton(SDL_MOUSEBUTTONUP, button);
        _KXUnsetMouseWheel();
        _KXInitKeys();
    }

    /// Hands an event to the library as the window system would, and lets a step pass.
    void send(SDL_Event event) {
        SDL_PushEvent(&event);
        step();
    }
    /// One logic step: wheel notches of the last one end, events are read.
    void step(unsigned count = 1) {
        _KXUnsetMouseWheel();
        _KXDispatchEvents();
        steps.advance(count);
    }
    void moveMouse(int x, int y) {
        SDL_Event event = {};
        event.motion = {SDL_MOUSEMOTION, 0, window->id(), 0, 0, x, y, 0, 0};
        send(event);
    }
    void press(int button = SDL_BUTTON_LEFT) { mouseButton(SDL_MOUSEBUTTONDOWN, button); }
    void release(int button = SDL_BUTTON_LEFT) { mouseButton(SDL_MOUSEBUTTONUP, button); }
    /// Positive @a notches turn the wheel away from the user.
    void wheel(int notches) {
        SDL_Event event = {};
        event.wheel = {SDL_MOUSEWHEEL, 0, window->id(), 0, 0, notches, SDL_MOUSEWHEEL_NORMAL, 0, 0, 0, 0};
        send(event);
    }
    void keyDown(int keycode) { key(SDL_KEYDOWN, keycode); }
    void keyUp(int keycode) { key(SDL_KEYUP, keycode); }
    /// What a key or an input method types.
    void type(const char* text) {
        SDL_Event event = {};
        event.text.type = SDL_TEXTINPUT;
        event.text.windowID = window->id();
        SDL_strlcpy(event.text.text, text, sizeof event.text.text);
        send(event);
    }

    LogicSteps steps;

private:
    void mouseButton(Uint32 type, int button) {
        SDL_Event event = {};
        event.button.type = type;
        event.button.windowID = window->id();
        event.button.button = static_cast<Uint8>(button);
        event.button.state = type == SDL_MOUSEBUTTONDOWN ? SDL_PRESSED : SDL_RELEASED;
        event.button.x = KXMouseX;
        event.button.y = KXMouseY;
        send(event);
    }
    void key(Uint32 type, int keycode) {
        SDL_Event event = {};
        event.key.type = type;
        event.key.windowID = window->id();
        event.key.state = type == SDL_KEYDOWN ? SDL_PRESSED : SDL_RELEASED;
        event.key.keysym.sym = keycode;
        send(event);
    }
};
