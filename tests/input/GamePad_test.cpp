#include "input/GamePad.h"

#include "LogicSteps.h"
#include "core/dispatch/EventDispatch.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <functional>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace {
void pump() {
    SDL_JoystickUpdate();
    _KXDispatchEvents();
}

void expectMoved(int result) {
    ASSERT_EQ(result, 0) << SDL_GetError();
    pump();
}

void setButton(int b, bool down) { expectMoved(SDL_JoystickSetVirtualButton(_KXGamePad, b, down)); }
void setHat(int position) {
    expectMoved(SDL_JoystickSetVirtualHat(_KXGamePad, 0, static_cast<Uint8>(position)));
}
void setAxis(int axis, int value) {
    expectMoved(SDL_JoystickSetVirtualAxis(_KXGamePad, axis, static_cast<Sint16>(value)));
}

struct Plug : testing::Test {
    void SetUp() override {
        ASSERT_EQ(SDL_InitSubSystem(SDL_INIT_JOYSTICK), 0) << SDL_GetError();
        if (SDL_NumJoysticks() > 0)
            GTEST_SKIP() << "a real joystick would be opened instead of the virtual one";
    }
    void TearDown() override {
        KXDeInitGamePad();
        unplug();
        SDL_QuitSubSystem(SDL_INIT_JOYSTICK);
    }
    void plugIn() {
        device = SDL_JoystickAttachVirtual(SDL_JOYSTICK_TYPE_GAMECONTROLLER, 10, 20, 1);
        ASSERT_EQ(device, 0) << SDL_GetError();
        ASSERT_EQ(KXInitGamePad(), -1);
        pump(); // the axes' resting positions
    }
    void unplug() {
        if (device >= 0)
            SDL_JoystickDetachVirtual(device);
        device = -1;
    }
    int device = -1;
};

struct GamePad : Plug {
    void SetUp() override {
        Plug::SetUp();
        if (!IsSkipped())
            plugIn();
    }
    LogicSteps steps;
};

// One thing a thumb can hold, and how to ask for it.
struct Input {
    std::string name;
    std::function<void(bool)> hold;
    std::function<int(int)> ask; // with or without once
    std::function<int()> repeating;
    int told = -1, repeated = -1; // the answers to a press and when it repeats
    int axis = -1, sign = 0;      // where an axis is pushed

    int held() const { return ask(0); }
    int once() const { return ask(1); }
};

std::vector<Input> inputs() {
    std::vector<Input> all;
    for (int b = 0; b < 16; ++b)
        all.push_back({"button " + std::to_string(b), [=](bool on) { setButton(b, on); },
                       [=](int once) { return KXGamePadButton(b, once); },
                       [=] { return KXGamePadButtonWithDelayedRepeat(b); }});
    const int bits[] = {1, 4, 8, 2};
    for (int d = 0; d < 4; ++d)
        all.push_back({"hat " + std::to_string(d), [=](bool on) { setHat(on ? bits[d] : 0); },
                       [=](int once) { return KXGamePadHat(d, once); },
                       [=] { return KXGamePadHatWithDelayedRepeat(d); }, 1});
    const struct {
        int axis, sign, (*ask)(int, int), (*repeating)(int), repeated;
    } pushes[] = {{0, -1, KXGamePadStickLeft, KXGamePadStickLeftWithDelayedRepeat, 0}, // never repeats
                  {1, -1, KXGamePadStickUp, KXGamePadStickUpWithDelayedRepeat, -1},
                  {0, 1, KXGamePadStickRight, KXGamePadStickRightWithDelayedRepeat, -1},
                  {1, 1, KXGamePadStickDown, KXGamePadStickDownWithDelayedRepeat, -1},
                  {4, 1, [](int, int once) { return KXGamePadLeftTrigger(once); },
                   [](int) { return KXGamePadLeftTriggerWithDelayedRepeat(); }, -1},
                  {5, 1, [](int, int once) { return KXGamePadRightTrigger(once); },
                   [](int) { return KXGamePadRightTriggerWithDelayedRepeat(); }, -1}};
    for (int stick : {0, 1})
        for (const auto& push : pushes) {
            const int axis = push.axis + stick * 2, sign = push.sign;
            if (axis < 6)
                all.push_back({"axis " + std::to_string(axis) + " to " + std::to_string(sign),
                               [=](bool on) { setAxis(axis, on ? sign * 16384 : 0); },
                               [=](int once) { return push.ask(stick, once); },
                               [=] { return push.repeating(stick); }, -1, push.repeated, axis, sign});
        }
    return all;
}

TEST_F(GamePad, EveryInputIsHeldToldOnceAndRepeated) {
    const std::vector<Input> all = inputs();
    for (const Input& input : all) {
        SCOPED_TRACE(input.name);
        input.hold(true);
        for (const Input& other : all)
            EXPECT_EQ(other.held(), &other == &input ? input.told : 0) << other.name;
        EXPECT_EQ(input.once(), input.told);
        EXPECT_EQ(input.once(), 0);
        EXPECT_EQ(input.held(), input.told);
        input.hold(false);
        EXPECT_EQ(input.held() | input.once() | input.repeating(), 0);

        input.hold(true);
        EXPECT_EQ(input.repeating(), input.told);
        for (int step = 1; step < 32; ++step) {
            steps.advance(1);
            EXPECT_EQ(input.repeating(), step < 30 ? 0 : input.repeated) << step;
            EXPECT_EQ(input.once(), 0) << step;
        }
        input.hold(false);
    }
}

TEST_F(GamePad, DeadZone) {
    for (int value : {-32768, -16384, -16383, 16383, 16384, 32767})
        for (int axis = 0; axis < 6; ++axis) {
            _KXSetAxis(axis, value);
            EXPECT_EQ(KXGamePadAxis(axis), value);
            for (const Input& input : inputs())
                for (int once : {0, 1})
                    EXPECT_EQ(input.ask(once), input.axis == axis && value * input.sign >= 16384 ? -1 : 0)
                        << input.name << " at " << value;
            _KXSetAxis(axis, 0);
        }
    // A trigger that rests at the far end takes its report with the answer 0, until it moves.
    _KXSetAxis(4, -32768);
    EXPECT_EQ(KXGamePadLeftTrigger(1), 0);
    EXPECT_EQ(_KXGamePadLeftTriggerDown, -1);
    _KXSetAxis(4, -20000);
    EXPECT_EQ(_KXGamePadLeftTriggerDown, 0);
}

TEST_F(GamePad, AStickThrownFromSideToSide) {
    setAxis(0, 20000);
    EXPECT_EQ(KXGamePadStickRight(0, 1), -1);
    setAxis(0, -20000);
    EXPECT_EQ(KXGamePadStickLeft(0, 1), -1);
    setAxis(0, 20000);
    EXPECT_EQ(KXGamePadStickRight(0, 1), -1); // the way through the other side counted as letting go
    // Asking for the other side uses that side's report up until the stick passes the dead zone.
    EXPECT_EQ(KXGamePadStickLeft(0, 1), 0);
    setAxis(0, -20000);
    EXPECT_EQ(KXGamePadStickLeft(0, 1), 0);
    EXPECT_EQ(KXGamePadStickLeft(0, 0), -1);
}

TEST_F(GamePad, GeneralAxisQuery) {
    setAxis(1, 30000);
    EXPECT_EQ(_KXGamePadAxis(1, KXDirectionDown, 1, 0), 30000);
    EXPECT_EQ(_KXGamePadAxis(1, KXDirectionDown, 1, 0), 0);
    for (int direction : {INT_MIN, -1, 0, 3, 4, INT_MAX}) // not directions of a vertical axis: always told
        for (int times = 0; times < 2; ++times)
            EXPECT_EQ(_KXGamePadAxis(1, direction, 1, 0), 30000) << direction;
    // The left push repeats in its general form, which games reach through no public call.
    setAxis(0, -30000);
    EXPECT_EQ(_KXGamePadStickLeft(0, -1, -1), -1);
    EXPECT_EQ(_KXGamePadStickLeft(0, -1, -1), 0);
    steps.advance(30);
    EXPECT_EQ(_KXGamePadStickLeft(0, -1, -1), -1);

    for (int axis : {6, 7}) {
        setAxis(axis, 16000);
        EXPECT_EQ(_KXGamePadAxis(axis, 0, 1, 0), 16000);
        setAxis(axis, 16384);
        EXPECT_EQ(KXGamePadAxis(axis), 16384);
        EXPECT_THROW(_KXGamePadAxis(axis, 0, 0, 0), std::bad_alloc);
    }
}

TEST_F(GamePad, HatDirections) {
    setHat(SDL_HAT_RIGHTUP);
    EXPECT_EQ(KXGamePadHat(0) & KXGamePadHat(3), 1);
    EXPECT_EQ(KXGamePadHat(1) | KXGamePadHat(2), 0);
    EXPECT_EQ(KXGamePadHat(4), 1); // up under another number, with one report
    EXPECT_EQ(KXGamePadHat(4, 1), 1);
    EXPECT_EQ(KXGamePadHat(0, 1), 0);
    EXPECT_EQ(KXGamePadHat(3, 1), 1);
    setHat(SDL_HAT_UP); // rolling on keeps what stays held
    EXPECT_EQ(KXGamePadHat(0, 1), 0);
    setHat(SDL_HAT_RIGHTUP);
    EXPECT_EQ(KXGamePadHat(3, 1), 1);
}

TEST_F(GamePad, NumbersBeyondTheTables) {
    const int beyond[][3] = {
        {INT_MIN, INT_MIN, INT_MIN}, {-1, -1, -1}, {16, 5, 8}, {INT_MAX, INT_MAX, INT_MAX}};
    _KXSetHat(15);
    for (const auto& [b, direction, axis] : beyond) {
        _KXSetGamePadButton(b);
        _KXSetAxis(axis, 20000);
        EXPECT_EQ(KXGamePadPressedButton(), -1);
        EXPECT_EQ(KXGamePadButton(b) | KXGamePadButton(b, 1) | KXGamePadButtonWithDelayedRepeat(b), 0) << b;
        EXPECT_EQ(KXGamePadHat(direction) | _KXGamePadHat(direction, 1, 1), 0) << direction;
        EXPECT_EQ(KXGamePadAxis(axis) | _KXGamePadAxis(axis, 0, 1, 0), 0) << axis;
        EXPECT_STREQ(KXGamePadButtonToString(b), "Unknown") << b;
        _KXUnsetGamePadButton(b);
    }
    setButton(9, true);
    setButton(5, true);
    EXPECT_EQ(KXGamePadPressedButton(), 5);
    for (int b = 0; b < 16; ++b)
        EXPECT_EQ(KXGamePadButtonToString(b), "Button " + std::to_string(b + 1));
    for (const auto& [value, kept] : {std::pair{INT_MIN, -32768}, {INT_MAX, 32767}}) {
        _KXSetAxis(0, value);
        EXPECT_EQ(KXGamePadAxis(0), kept);
    }
}

void holdEverything(int axisValue) {
    std::ranges::fill(_KXGamePadButtons, -1);
    std::ranges::fill(_KXGamePadAxes, axisValue);
    _KXGamePadHatPosition = 15;
}

bool isForgotten() {
    return KXGamePadPressedButton() < 0 && !_KXGamePadHatPosition &&
           std::ranges::count(_KXGamePadAxes, 0) == _KXGamePadAxisCount;
}

TEST_F(GamePad, OpeningAndClosingForgetWhatWasHeldAndTold) {
    for (int axisValue : {20000, -20000}) {
        for (int opened = 0; opened < 2; ++opened) {
            holdEverything(axisValue);
            for (const Input& input : inputs())
                EXPECT_EQ(input.once(), input.held()) << input.name;
            EXPECT_EQ(KXInitGamePad(), -1); // while open
            EXPECT_TRUE(isForgotten());
        }
        holdEverything(axisValue);
        KXDeInitGamePad();
        EXPECT_TRUE(isForgotten());
        holdEverything(axisValue); // left over from before the pad
        EXPECT_EQ(KXInitGamePad(), -1);
        EXPECT_TRUE(isForgotten());
    }
}

TEST_F(Plug, PadsComeAndGo) {
    EXPECT_EQ(KXInitGamePad(), 0);
    for (int times = 0; times < 2; ++times) {
        plugIn();
        setButton(3, true);
        setHat(SDL_HAT_UP);
        setAxis(2, 20000);
        EXPECT_EQ(KXGamePadButton(3) & KXGamePadStickRight(1, 0), -1);
        unplug();
        pump(); // the platform lets go of everything; triggers come to rest at the far end
        for (const Input& input : inputs())
            EXPECT_EQ(input.held(), 0) << input.name;
        EXPECT_EQ(KXInitGamePad(), 0);
    }
}

TEST_F(Plug, WithoutThePlatform) {
    plugIn();
    SDL_QuitSubSystem(SDL_INIT_JOYSTICK);
    device = -1;
    KXDeInitGamePad(); // the pad went with the platform
    EXPECT_EQ(_KXGamePad, nullptr);
    EXPECT_EQ(KXInitGamePad(), 0);
    ASSERT_EQ(SDL_InitSubSystem(SDL_INIT_JOYSTICK), 0);
}
} // namespace
