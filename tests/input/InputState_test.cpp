#include "input/InputState.h"

#include "support/TestClock.h"
#include "testkit/KXTestInput.h"
#include "testkit/KXTestPad.h"

#include <Kobaltrix/KXInit.h>

#include <SDL.h>
#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace {
struct InputState : testing::Test {
    InputState() {
        EXPECT_EQ(KXInit(), -1);
        EXPECT_EQ(KXInitGamePad(), -1);
        _KXBeginTextInput();
        user.step();
        _KXPutInputState({});
    }
    ~InputState() override {
        _KXEndTextInput();
        _KXPutInputState({});
        KXDeInit();
    }

    /// Whatever a game can ask for. Being told of a press changes what is told next.
    static std::vector<float> seen() {
        std::vector<float> all = {KXMousePoint.x,         KXMousePoint.y, KXMousePointRelative.x,
                                  KXMousePointRelative.y, KXTouchPoint.x, KXTouchPoint.y};
        const auto add = [&](auto... values) { (all.push_back(static_cast<float>(values)), ...); };
        add(KXMouseX, KXMouseY, KXMouseXRelative, KXMouseYRelative, KXTouchX, KXTouchY, KXFingerDown());
        for (int key = 0; key < _KXKeyCount; ++key)
            add(KXKey(key), KXKeyWithDelayedRepeat(key), _KXWidgetKey(key, true));
        for (int button = 0; button < 16; ++button)
            add(KXMouse(button), KXGamePadButton(button), KXGamePadButtonWithDelayedRepeat(button),
                KXGamePadHat(button), KXGamePadHatWithDelayedRepeat(button), KXGamePadAxis(button));
        for (int stick : {0, 1})
            add(KXGamePadStickLeft(stick, 1), KXGamePadStickUpWithDelayedRepeat(stick),
                KXGamePadStickRightWithDelayedRepeat(stick), KXGamePadStickDown(stick, 1));
        add(KXGamePadLeftTrigger(1), KXGamePadRightTriggerWithDelayedRepeat());
        for (const char c : _KXTakeTypedText() + "|" + _KXComposedText())
            add(c);
        return all;
    }

    TestClock clock{1000};
    KXTestPad pad;
    KXTestInput user{0, [this] { clock.advance(16); }};
};

TEST_F(InputState, PutsBackWhateverHappened) {
    SDL_StartTextInput();
    const std::function<void()> happenings[] = {
        [&] { user.keyDown(SDLK_RETURN); },
        [&] { user.keyUp(SDLK_RETURN); },
        [&] { user.keyDown(SDLK_LCTRL); },
        [&] { user.type("ignored"), user.keyUp(SDLK_LCTRL), user.type("typed"); },
        [&] { user.compose("composed"); },
        [&] { user.moveMouse(30, 40); },
        [&] { user.mouseDown(2); },
        [&] { user.turnWheel(1, -1), user.mouseDown(); },
        [&] { user.fingerDown(0.5f, 0.5f); },
        [&] {
            _KXSetTouchPosition(0.5f, 0.25f, {320, 200});
        },
        [&] { pad.setButton(3, true); },
        [&] { pad.setHat(SDL_HAT_LEFTUP); },
        [&] { pad.setAxis(2, -20000), pad.setAxis(5, 20000); },
        [&] { _KXBeginWidgetKeys(), user.keyDown(SDLK_LEFT); },
        [&] { user.step(40); }, // what is held repeats
    };
    std::vector<std::uint32_t> times = {_KXLogicCurrentTime}; // what repeats goes by it
    std::vector<_KXInputState> states = {_KXTakeInputState()};
    std::vector<std::vector<float>> views = {seen()};
    for (const auto& happens : happenings) {
        happens();
        user.step();
        times.push_back(_KXLogicCurrentTime);
        states.push_back(_KXTakeInputState());
        views.push_back(seen());
    }
    // In any order, each state is there again as a whole, for the library and for whoever looks.
    for (std::size_t i = states.size(); i-- > 0;) {
        _KXLogicCurrentTime = times[i];
        _KXPutInputState(states[i]);
        EXPECT_EQ(_KXTakeInputState(), states[i]) << i;
        EXPECT_EQ(seen(), views[i]) << i;
        if (i > 0 && i < states.size() - 1) {
            EXPECT_NE(states[i], states[i - 1]) << i;
        }
    }
}

TEST_F(InputState, ANewOneHoldsNothing) {
    user.keyDown(SDLK_a);
    user.mouseDown();
    pad.setButton(0, true);
    user.step();
    _KXPutInputState({});
    EXPECT_EQ(KXKeyPressed(), 0);
    EXPECT_EQ(KXMouse(0) | KXGamePadButton(0) | KXFingerDown(), 0);
    EXPECT_EQ(_KXKeysDownTime[1], 0x7FFFFFFF);
}
} // namespace
