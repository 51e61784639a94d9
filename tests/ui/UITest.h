#pragma once

#include "core/dispatch/EventDispatch.h"
#include "input/KXMouse.h"
#include "input/Keyboard.h"

#include "support/LogicSteps.h"
#include "support/Golden.h"
#include "testkit/KXTestInput.h"
#include "text/TextTest.h"

#include <Kobaltrix/KXUIGlobalFont.h>

#include <SDL_events.h>

/// A test of a widget: a window of 320 x 200 points, the user-interface font, and a user whose hands are
/// real events. Each of what the user does ends with one logic step's reading of events; the test polls.
struct UITest : TextTest {
    UITest() {
        window = std::make_unique<KXWindow>("UI", KXSize{320, 200});
        window->setRenderContext();
        hands = KXTestInput(window->id());
        fill({0.2f, 0.3f, 0.4f, 1});
        KXUISetGlobalFont(testFont(), KXAliasModeTexture, 12, KXZeroPoint);
        moveMouse(-1, -1);
    }
    ~UITest() override {
        for (int button : {SDL_BUTTON_LEFT, SDL_BUTTON_MIDDLE, SDL_BUTTON_RIGHT})
            release(button);
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
    void moveMouse(int x, int y) { hands.moveMouse(x, y), step(); }
    void press(int button = SDL_BUTTON_LEFT) { hands.mouseDown(button), step(); }
    void release(int button = SDL_BUTTON_LEFT) { hands.mouseUp(button), step(); }
    /// Positive @a notches turn the wheel away from the user.
    void wheel(int notches) { hands.turnWheel(notches), step(); }
    void keyDown(int keycode) { hands.keyDown(keycode), step(); }
    void keyUp(int keycode) { hands.keyUp(keycode), step(); }
    /// What a key or an input method types.
    void type(const char* text) { hands.type(text), step(); }

    LogicSteps steps;
    KXTestInput hands;
};
