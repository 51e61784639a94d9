#include "InputTest.h"

#include <functional>
#include <vector>

namespace {
TEST_F(InputTest, ItsStateCanBePutBackWhateverHappened) {
    KXTestPad pad;
    EXPECT_EQ(KXInitGamePad(), -1);
    _KXBeginTextInput();
    const std::function<void()> acts[] = {
        [&] { user.keyDown(SDLK_RETURN), user.keyDown(SDLK_LCTRL), user.type("ignored"); },
        [&] { user.keyUp(SDLK_LCTRL), user.type("typed"), user.compose("composed"); },
        [&] { user.moveMouse(30, 40); },
        [&] { user.mouseDown(2); },
        [&] { user.fingerDown(0.5f, 0.5f); },
        [&] {
            _KXSetTouchPosition(0.5f, 0.25f, {320, 200});
        },
        [&] { pad.setButton(3, true), pad.setHat(SDL_HAT_LEFTUP); },
        [&] { pad.setAxis(2, -20000), pad.setAxis(5, 20000); },
        [&] { KXKey(_KXKeyReturn, 1), KXGamePadButton(3, 1), KXGamePadHat(2, 1), KXGamePadStickLeft(1, 1); },
        [&] { _KXBeginWidgetKeys(); },
    };
    std::vector<_KXInputState> states = {_KXTakeInputState()};
    for (const auto& act : acts) {
        act();
        user.step();
        states.push_back(_KXTakeInputState());
        EXPECT_NE(states.back(), *(states.end() - 2)) << states.size();
    }
    const auto look = [] {
        return std::vector<int>{KXKey(_KXKeyReturn),
                                KXKey(_KXKeyReturn, 1),
                                KXMouse(2),
                                KXMouseX,
                                KXMouseYRelative,
                                KXFingerDown(),
                                KXTouchY,
                                KXGamePadButton(3),
                                KXGamePadButton(3, 1),
                                KXGamePadHat(2),
                                KXGamePadStickLeft(1, 0),
                                KXGamePadRightTrigger(0)};
    };
    for (const _KXInputState& state : {states.front(), states.back(), states[3], states[7]}) {
        _KXPutInputState(state);
        EXPECT_EQ(_KXTakeInputState(), state);
    }
    _KXPutInputState(states.back());
    EXPECT_EQ(look(), (std::vector<int>{-1, 0, -1, 30, 40, -1, 50, -1, 0, 1, -1, -1}));
    EXPECT_EQ(_KXTakeTypedText() + _KXComposedText(), "typedcomposed");
    _KXPutInputState({});
    EXPECT_EQ(look(), std::vector<int>(12));
}
} // namespace
