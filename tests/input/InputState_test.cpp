#include "InputTest.h"

#include <functional>
#include <vector>

namespace {
TEST_F(InputTest, ItsStateCanBePutBackWhateverHappened) {
    KXTestPad pad;
    EXPECT_EQ(KXInitGamePad(), -1);
    _KXBeginTextInput();
    const struct {
        std::function<void()> act;
        bool (*seen)();
    } rows[] = {
        {[&] { user.keyDown(SDLK_a), user.keyDown(SDLK_LCTRL); }, [] { return KXKey(_KXKeyA) == -1; }},
        {[&] { user.keyUp(SDLK_LCTRL), user.type("t"); }, [] { return _KXTakeTypedText() == "t"; }},
        {[&] { user.compose("k"); }, [] { return _KXComposedText() == "k"; }},
        {[&] { user.moveMouse(30, 40); }, [] { return KXMouseX == 30 && KXMousePointRelative.y == 40; }},
        {[&] { user.mouseDown(2); }, [] { return KXMouse(2) == -1; }},
        {[&] { user.fingerDown(0.5f, 0.5f); }, [] { return KXFingerDown() == -1; }},
        {[&] {
             _KXSetTouchPosition(0.5f, 0.25f, {320, 200});
         },
         [] { return KXTouchX == 160 && KXTouchPoint.y == 50; }},
        {[&] { pad.setButton(3, 1); }, [] { return KXGamePadButton(3, 1) == -1; }},
        {[&] { pad.setHat(0, SDL_HAT_LEFTUP); }, [] { return KXGamePadHat(0) == 1; }},
        {[&] { pad.setAxis(2, -20000); }, [] { return KXGamePadStickLeft(1, 1) == -1; }},
        {[&] { KXKey(_KXKeyA, 1), KXGamePadHat(0, 1); },
         [] { return !KXKey(_KXKeyA, 1) && !KXGamePadHat(0, 1); }},
        {[&] { _KXBeginWidgetKeys(); }, [] { return !_KXWidgetKey(_KXKeyA); }},
    };
    std::vector<_KXInputState> states = {_KXTakeInputState()};
    for (const auto& row : rows) {
        row.act();
        user.step();
        states.push_back(_KXTakeInputState());
        EXPECT_NE(states.back(), states[states.size() - 2]) << states.size();
    }
    for (std::size_t i = std::size(rows); i > 0; --i) {
        _KXPutInputState(states[i]);
        EXPECT_EQ(_KXTakeInputState(), states[i]) << i;
        EXPECT_TRUE(rows[i - 1].seen()) << i;
    }
    _KXPutInputState({});
    EXPECT_EQ(_KXTakeInputState(), _KXInputState());
}
} // namespace
