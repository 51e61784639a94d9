#include "InputTest.h"

#include <algorithm>
#include <climits>
#include <new>
#include <string>
#include <vector>

namespace {
using Part = bool (KXTestPad::*)(int number, int value);
constexpr Part button = &KXTestPad::setButton, hat = &KXTestPad::setHat, axis = &KXTestPad::setAxis;

struct GamePad : InputTest {
    void SetUp() override {
        if (SDL_NumJoysticks() > 1)
            GTEST_SKIP() << "a real joystick might be opened instead of the virtual one";
        ASSERT_EQ(KXInitGamePad(), -1) << SDL_GetError();
        user.step(); // the axes' resting positions
    }
    void move(Part part, int number, int value) {
        ASSERT_TRUE((pad.*part)(number, value)) << SDL_GetError();
        _KXDispatchEvents();
    }

    KXTestPad pad{false, {10, 20}};
};

// One thing a thumb can hold: where it is, and how a game asks for it.
struct Input {
    Part part;
    int number, value, argument, (*ask)(int argument, int once), (*repeating)(int argument);
    int told = -1, repeated = -1; // the answers to a press and when it repeats

    int held() const { return ask(argument, 0); }
    int once() const { return ask(argument, 1); }
};

std::vector<Input> inputs() {
    std::vector<Input> all = {{axis, 4, 16384, 0, [](int, int once) { return KXGamePadLeftTrigger(once); },
                               [](int) { return KXGamePadLeftTriggerWithDelayedRepeat(); }},
                              {axis, 5, 16384, 0, [](int, int once) { return KXGamePadRightTrigger(once); },
                               [](int) { return KXGamePadRightTriggerWithDelayedRepeat(); }}};
    for (int b = 0; b < 16; ++b)
        all.push_back({button, b, 1, b, KXGamePadButton, KXGamePadButtonWithDelayedRepeat});
    for (int d = 0, bits[] = {1, 4, 8, 2}; d < 4; ++d)
        all.push_back({hat, 0, bits[d], d, KXGamePadHat, KXGamePadHatWithDelayedRepeat, 1});
    for (int s : {0, 1}) {
        const int x = 2 * s, y = x + 1;
        all.push_back({axis, x, -16384, s, KXGamePadStickLeft, KXGamePadStickLeftWithDelayedRepeat, -1, 0});
        all.push_back({axis, y, -16384, s, KXGamePadStickUp, KXGamePadStickUpWithDelayedRepeat});
        all.push_back({axis, x, 16384, s, KXGamePadStickRight, KXGamePadStickRightWithDelayedRepeat});
        all.push_back({axis, y, 16384, s, KXGamePadStickDown, KXGamePadStickDownWithDelayedRepeat});
    }
    return all;
}

TEST_F(GamePad, EveryInputIsHeldToldOnceAndRepeated) {
    const std::vector<Input> all = inputs();
    for (const Input& input : all) {
        SCOPED_TRACE(&input - all.data());
        const auto hold = [&](int value) { move(input.part, input.number, value); };
        hold(input.value);
        for (const Input& other : all)
            EXPECT_EQ(other.held(), &other == &input ? input.told : 0) << &other - all.data();
        EXPECT_EQ(input.once(), input.told);
        _KXSetAxis(6, 1); // an event that is not about this input
        EXPECT_EQ(input.once(), 0);
        EXPECT_EQ(KXGamePadPressedButton(), input.part == button ? input.number : -1);
        hold(0);
        EXPECT_EQ(input.held() | input.once() | input.repeating(input.argument), 0);
        hold(input.value);
        EXPECT_EQ(input.repeating(input.argument), input.told);
        for (int step = 1; step < 32; ++step) {
            user.step();
            EXPECT_EQ(input.repeating(input.argument), step < 30 ? 0 : input.repeated) << step;
            EXPECT_EQ(input.once(), 0) << step;
        }
        if (const int sign = input.value > 0 ? 1 : -1; input.part == axis) {
            hold(input.value - sign); // in the dead zone
            EXPECT_EQ(input.held() | input.once(), 0);
            hold(sign * 32767);
            EXPECT_EQ(input.held() & input.once(), -1);
        }
        hold(0);
    }
    move(axis, 4, -32768); // a trigger at its far end takes its report with the answer 0, until it moves
    EXPECT_EQ(KXGamePadLeftTrigger(1), 0);
    EXPECT_EQ(_KXGamePadLeftTriggerDown, -1);
    move(axis, 4, -20000);
    EXPECT_EQ(_KXGamePadLeftTriggerDown, 0);
}

TEST_F(GamePad, SticksFromSideToSideAndRollingHats) {
    for (int value : {20000, -20000, 20000}) { // the way through the other side counts as letting go
        move(axis, 0, value);
        EXPECT_EQ(value > 0 ? KXGamePadStickRight(0, 1) : KXGamePadStickLeft(0, 1), -1);
    }
    // Asking for the other side uses that side's report up until the stick passes the dead zone.
    EXPECT_EQ(KXGamePadStickLeft(0, 1), 0);
    move(axis, 0, -20000);
    EXPECT_EQ(KXGamePadStickLeft(0, 1), 0);
    user.step(30);
    EXPECT_EQ(_KXGamePadStickLeft(0, -1, -1), -1); // repeats, which games reach through no public call
    move(axis, 1, 30000);
    for (int direction : {INT_MIN, -1, 0, 0, 3, 4}) // not directions of a vertical axis: always told
        EXPECT_EQ(_KXGamePadAxis(KXGamePadLeftStickY, direction, 1, 0), 30000) << direction;
    move(axis, 6, 16383);
    EXPECT_EQ(_KXGamePadAxis(6, 0, 1, 0), 16383);
    move(axis, 6, 16384);
    EXPECT_THROW(_KXGamePadAxis(6, 0, 0, 0), std::bad_alloc);

    move(hat, 0, SDL_HAT_RIGHTUP);
    // 4 is up under another number, with one report.
    EXPECT_EQ(KXGamePadHat(4, 1) & KXGamePadHat(KXHatRight, 1), 1);
    move(hat, 0, SDL_HAT_UP); // keeps what stays held
    move(hat, 0, SDL_HAT_RIGHTUP);
    EXPECT_EQ(KXGamePadHat(KXHatUp, 1), 0);
    EXPECT_EQ(KXGamePadHat(KXHatRight, 1), 1);
}

TEST_F(GamePad, NumbersBeyondTheTables) {
    _KXSetHat(15);
    const _KXGamePadState before = _KXPad;
    const int beyond[][3] = {{INT_MIN, INT_MIN, INT_MIN}, {-1, -1, -1}, {16, 5, 8}};
    for (const auto& [b, direction, a] : beyond) {
        _KXSetGamePadButton(b);
        _KXSetAxis(a, 20000);
        EXPECT_EQ(_KXPad, before) << b;
        _KXUnsetGamePadButton(b);
        EXPECT_EQ(KXGamePadButton(b) | KXGamePadHat(direction) | KXGamePadAxis(a), 0) << b;
        EXPECT_STREQ(KXGamePadButtonToString(b), "Unknown") << b;
    }
    for (int b = 15; b >= 0; --b) {
        _KXSetGamePadButton(b);
        EXPECT_EQ(KXGamePadPressedButton(), b);
        EXPECT_EQ(KXGamePadButtonToString(b), "Button " + std::to_string(b + 1));
    }
    _KXSetAxis(0, INT_MIN);
    _KXSetAxis(1, INT_MAX);
    EXPECT_EQ(KXGamePadAxis(KXGamePadLeftStickX), -32768);
    EXPECT_EQ(KXGamePadAxis(KXGamePadLeftStickY), 32767);
}

TEST_F(GamePad, ComesAndGoesForgettingWhatWasHeldAndTold) {
    for (bool opens : {true, false, true}) {
        std::ranges::fill(_KXPad.buttons, -1);
        std::ranges::fill(_KXPad.axes, 20000);
        _KXSetHat(15);
        for (const Input& input : inputs())
            input.once();
        opens ? KXInitGamePad() : (KXDeInitGamePad(), 0);
        EXPECT_EQ(_KXPad, _KXGamePadState());
    }
    move(button, 3, 1);
    pad.unplug();
    user.step();
    EXPECT_EQ(KXGamePadButton(KXGamePadButton4), 0) << "the platform lets go of everything";
    EXPECT_EQ(KXInitGamePad(), 0);
    const KXTestPad other;
    EXPECT_EQ(KXInitGamePad(), -1);
    SDL_Quit(); // and with it the pad
    KXDeInitGamePad();
    EXPECT_EQ(KXInitGamePad(), 0);
}
} // namespace
