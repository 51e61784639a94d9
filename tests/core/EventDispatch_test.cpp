#include "core/dispatch/EventDispatch.h"

#include <Kobaltrix/KXGamePad.h>
#include <Kobaltrix/KXKeyboard.h>
#include <Kobaltrix/KXMouse.h>
#include <Kobaltrix/KXTouch.h>

#include "input/GamePad.h"
#include "support/TestClock.h"
#include "support/WindowTest.h"

#include <SDL.h>

#include <cstring>

namespace {
unsigned resizedWindow;
KXSize resizedSize;

struct EventDispatch : WindowTest {
    EventDispatch() {
        SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT); // what opening the window has left
        KXResetLogicLoop();
        resizedWindow = 0;
    }
    ~EventDispatch() override {
        KXSetWindowResizedCallback(nullptr);
        KXApplicationCancelQuitRequest();
        KXUnsetKeys();
    }

    static SDL_Event event(Uint32 type) {
        SDL_Event result;
        std::memset(&result, 0, sizeof result);
        result.type = type;
        return result;
    }

    static void push(SDL_Event pushed) { EXPECT_EQ(SDL_PushEvent(&pushed), 1); }

    void pushKey(Uint32 type, SDL_Keycode keycode, unsigned windowID) {
        SDL_Event key = event(type);
        key.key.keysym.sym = keycode;
        key.key.windowID = windowID;
        push(key);
    }

    void pushResized(unsigned windowID, int width, int height, Uint8 kind = SDL_WINDOWEVENT_RESIZED) {
        SDL_Event resized = event(SDL_WINDOWEVENT);
        resized.window.event = kind;
        resized.window.windowID = windowID;
        resized.window.data1 = width;
        resized.window.data2 = height;
        push(resized);
    }

    void pushFinger(Uint32 type, float x, float y, unsigned windowID) {
        SDL_Event finger = event(type);
        finger.tfinger.touchId = 0x700000009;
        finger.tfinger.x = x;
        finger.tfinger.y = y;
        finger.tfinger.windowID = windowID;
        push(finger);
    }

    /// One frame with a logic step, which reads what was pushed.
    void step() {
        clock.advance(16);
        KXPreLogicLoop();
        while (KXLogicLoop())
            KXLogicUpdate();
    }

    TestClock clock;
};

TEST_F(EventDispatch, ReadsEventsOnlyInFramesThatRunLogic) {
    step();
    KXPostLogicLoop();
    pushKey(SDL_KEYDOWN, SDLK_a, 7);
    KXPreLogicLoop();
    EXPECT_EQ(KXLogicLoop(), 0);
    EXPECT_EQ(KXKey(1), 0);
    step();
    EXPECT_EQ(KXKey(1), -1);
    EXPECT_EQ(KXCurrentEventWindowID, 7u);
    pushKey(SDL_KEYUP, SDLK_a, 8);
    step();
    EXPECT_EQ(KXKey(1), 0);
    EXPECT_EQ(KXCurrentEventWindowID, 8u);
}

TEST_F(EventDispatch, Mouse) {
    SDL_Event motion = event(SDL_MOUSEMOTION);
    motion.motion.x = 11;
    motion.motion.y = -3;
    motion.motion.xrel = 4;
    motion.motion.yrel = -5;
    push(motion);
    SDL_Event button = event(SDL_MOUSEBUTTONDOWN);
    button.button.button = SDL_BUTTON_RIGHT;
    button.button.state = SDL_PRESSED;
    push(button);
    SDL_Event wheel = event(SDL_MOUSEWHEEL);
    wheel.wheel.y = 1;
    wheel.wheel.x = -1;
    push(wheel);
    step();
    EXPECT_EQ(KXMouseX, 11);
    EXPECT_EQ(KXMousePoint.y, -3);
    EXPECT_EQ(KXMouseXRelative, 4);
    EXPECT_EQ(KXMousePointRelative.y, -5);
    EXPECT_EQ(KXMouse(1), -1);
    EXPECT_EQ(KXMouse(4), -1);
    EXPECT_EQ(KXMouse(5), -1);
    KXPostLogicLoop();
    button.type = SDL_MOUSEBUTTONUP;
    button.button.state = SDL_RELEASED;
    push(button);
    step();
    EXPECT_EQ(KXMouse(1), 0);
    EXPECT_EQ(KXMouse(4), 0);
    EXPECT_EQ(KXMouseXRelative, 4) << "stays until the next motion";
}

TEST_F(EventDispatch, WindowsAndTheirCallback) {
    KXSetWindowResizedCallback([](unsigned id, KXSize size) {
        resizedWindow = id;
        resizedSize = size;
    });
    EXPECT_EQ(window->size().width, 64);
    SDL_SetWindowSize(SDL_GetWindowFromID(window->id()), 90, 70);
    SDL_FlushEvent(SDL_WINDOWEVENT);
    pushResized(window->id(), 90, 70, SDL_WINDOWEVENT_SIZE_CHANGED);
    step();
    EXPECT_EQ(resizedWindow, 0u) << "only the kind resized counts";
    EXPECT_EQ(window->size().width, 64);
    pushResized(window->id(), 90, 70);
    step();
    EXPECT_EQ(resizedWindow, window->id());
    EXPECT_EQ(resizedSize.height, 70);
    EXPECT_EQ(window->size().width, 90);
    pushResized(12345, 3, 4); // no window of ours: told all the same
    step();
    EXPECT_EQ(resizedWindow, 12345u);
    KXSetWindowResizedCallback(nullptr);
    pushResized(1, 3, 4);
    step();
    EXPECT_EQ(resizedWindow, 12345u);
}

TEST_F(EventDispatch, TouchesInWindowsOnly) {
    pushFinger(SDL_FINGERDOWN, 0.51f, 0.99f, window->id());
    step();
    EXPECT_EQ(KXFingerDown(), -1);
    EXPECT_EQ(KXTouchX, 32);
    EXPECT_EQ(KXTouchY, 47);
    EXPECT_EQ(KXTouchPoint.x, 32);
    EXPECT_EQ(KXCurrentEventWindowID, 9u) << "the low half of the device's identifier";
    pushFinger(SDL_FINGERMOTION, 0, 0, 4711); // another application's window
    step();
    EXPECT_EQ(KXTouchX, 32);
    pushFinger(SDL_FINGERUP, 0.1f, 0.1f, window->id());
    step();
    EXPECT_EQ(KXFingerDown(), 0);
    EXPECT_EQ(KXTouchX, 32) << "lifting moves nothing";
}

TEST_F(EventDispatch, ABurstOfTouchesCollapsesToItsFirst) {
    pushFinger(SDL_FINGERMOTION, 0.25f, 0, window->id());
    pushFinger(SDL_FINGERMOTION, 0.5f, 0, window->id());
    pushFinger(SDL_FINGERUP, 0.5f, 0, window->id());
    pushKey(SDL_KEYDOWN, SDLK_b, 1);
    step();
    EXPECT_EQ(KXTouchX, 16);
    EXPECT_EQ(KXKey(2), -1) << "other events are not lost";
}

TEST_F(EventDispatch, GamePadAndQuit) {
    SDL_Event axis = event(SDL_JOYAXISMOTION);
    axis.jaxis.which = 3;
    axis.jaxis.axis = 1;
    axis.jaxis.value = -20000;
    push(axis);
    SDL_Event hat = event(SDL_JOYHATMOTION);
    hat.jhat.value = SDL_HAT_RIGHT;
    push(hat);
    SDL_Event button = event(SDL_JOYBUTTONDOWN);
    button.jbutton.button = 5;
    push(button);
    button.jbutton.button = 200;
    push(button);
    push(event(SDL_JOYDEVICEADDED));
    push(event(SDL_USEREVENT));
    push(event(SDL_QUIT));
    step();
    EXPECT_EQ(KXGamePadAxis(1), -20000);
    EXPECT_NE(KXGamePadHat(3), 0);
    EXPECT_EQ(KXGamePadPressedButton(), 5);
    EXPECT_EQ(KXApplicationQuitRequested(), -1);
    button = event(SDL_JOYBUTTONUP);
    button.jbutton.button = 5;
    push(button);
    step();
    EXPECT_EQ(KXGamePadPressedButton(), -1);
    _KXSetAxis(1, 0);
    _KXSetHat(0);
}
} // namespace
