#include "input/KXGamePad.h"

#include "LogicSteps.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <functional>
#include <new>
#include <string>
#include <vector>

namespace {
// Hands the platform's events on as the logic loop does.
void pump() {
    SDL_JoystickUpdate();
    SDL_Event event;
    while (SDL_PollEvent(&event)) {
        if (event.type == SDL_JOYAXISMOTION)
            _KXSetAxis(event.jaxis.axis, event.jaxis.value);
        else if (event.type == SDL_JOYHATMOTION)
            _KXSetHat(event.jhat.value);
        else if (event.type == SDL_JOYBUTTONDOWN)
            _KXSetGamePadButton(event.jbutton.button);
        else if (event.type == SDL_JOYBUTTONUP)
            _KXUnsetGamePadButton(event.jbutton.button);
    }
}

void setButton(int b, bool down) {
    ASSERT_EQ(SDL_JoystickSetVirtualButton(_KXGamePad, b, down), 0) << SDL_GetError();
    pump();
}

void setHat(int position) {
    ASSERT_EQ(SDL_JoystickSetVirtualHat(_KXGamePad, 0, static_cast<Uint8>(position)), 0) << SDL_GetError();
    pump();
}

void setAxis(int axis, int value) {
    ASSERT_EQ(SDL_JoystickSetVirtualAxis(_KXGamePad, axis, static_cast<Sint16>(value)), 0) << SDL_GetError();
    pump();
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
        if (IsSkipped())
            return;
        plugIn();
        ASSERT_EQ(KXInitGamePad(), -1);
        pump(); // the axes' resting positions
    }
    LogicSteps steps;
};

// One thing a thumb can hold, and the three ways to ask for it.
struct Input {
    std::string name;
    std::function<void(bool)> hold;
    std::function<int()> held, once, repeating;
    int told = -1;     // the answer to a press
    int repeated = -1; // the answer when it repeats
};

std::vector<Input> inputs() {
    std::vector<Input> all;
    for (int b = 0; b < 16; ++b)
        all.push_back({"button " + std::to_string(b), [=](bool on) { setButton(b, on); },
                       [=] { return KXGamePadButton(b); }, [=] { return KXGamePadButton(b, 1); },
                       [=] { return KXGamePadButtonWithDelayedRepeat(b); }});
    const int bits[] = {1, 4, 8, 2};
    for (int d = 0; d < 4; ++d)
        all.push_back({"hat " + std::to_string(d), [=](bool on) { setHat(on ? bits[d] : 0); },
                       [=] { return KXGamePadHat(d); }, [=] { return KXGamePadHat(d, 1); },
                       [=] { return KXGamePadHatWithDelayedRepeat(d); }, 1});
    const struct {
        const char* name;
        int axis, pushedTo;
        int (*ask)(int, int);
        int (*repeating)(int);
        int repeated;
    } ways[] = {
        {"left", 0, -16384, KXGamePadStickLeft, KXGamePadStickLeftWithDelayedRepeat, 0},
        {"up", 1, -16384, KXGamePadStickUp, KXGamePadStickUpWithDelayedRepeat, -1},
        {"right", 0, 16384, KXGamePadStickRight, KXGamePadStickRightWithDelayedRepeat, -1},
        {"down", 1, 16384, KXGamePadStickDown, KXGamePadStickDownWithDelayedRepeat, -1},
    };
    for (int stick : {0, 1})
        for (const auto& way : ways)
            all.push_back({"stick " + std::to_string(stick) + " " + way.name,
                           [=](bool on) { setAxis(way.axis + stick * 2, on ? way.pushedTo : 0); },
                           [=] { return way.ask(stick, 0); }, [=] { return way.ask(stick, 1); },
                           [=] { return way.repeating(stick); }, -1, way.repeated});
    all.push_back({"left trigger", [](bool on) { setAxis(4, on ? 16384 : 0); },
                   [] { return KXGamePadLeftTrigger(0); }, [] { return KXGamePadLeftTrigger(1); },
                   KXGamePadLeftTriggerWithDelayedRepeat});
    all.push_back({"right trigger", [](bool on) { setAxis(5, on ? 16384 : 0); },
                   [] { return KXGamePadRightTrigger(0); }, [] { return KXGamePadRightTrigger(1); },
                   KXGamePadRightTriggerWithDelayedRepeat});
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
        for (int step = 1; step < 30; ++step) {
            steps.advance(1);
            EXPECT_EQ(input.repeating(), 0) << step;
        }
        for (int step = 30; step < 32; ++step) {
            steps.advance(1);
            EXPECT_EQ(input.repeating(), input.repeated) << step;
            EXPECT_EQ(input.once(), 0) << step;
        }
        input.hold(false);
        EXPECT_EQ(input.held() | input.once() | input.repeating(), 0);
        input.hold(true);
        EXPECT_EQ(input.once(), input.told);
        input.hold(false);
    }
}

TEST_F(GamePad, DeadZone) {
    const auto sticks = {KXGamePadStickLeft, KXGamePadStickUp, KXGamePadStickRight, KXGamePadStickDown};
    const auto triggers = {KXGamePadLeftTrigger, KXGamePadRightTrigger};
    for (int value : {-32768, -16384, -16383, -1, 0, 16383, 16384, 32767})
        for (int axis = 0; axis < 6; ++axis)
            for (int once : {0, 1}) {
                SCOPED_TRACE(testing::Message() << "axis " << axis << " at " << value << ", once " << once);
                _KXSetAxis(axis, value);
                EXPECT_EQ(KXGamePadAxis(axis), value);
                const int low = value <= -16384 ? -1 : 0, high = value >= 16384 ? -1 : 0;
                for (int stick : {0, 1}) {
                    const bool x = axis == stick * 2, y = axis == stick * 2 + 1;
                    const int expected[] = {x ? low : 0, y ? low : 0, x ? high : 0, y ? high : 0};
                    EXPECT_TRUE(
                        std::ranges::equal(sticks, expected, {}, [&](auto ask) { return ask(stick, once); }));
                }
                const int expected[] = {axis == 4 ? high : 0, axis == 5 ? high : 0};
                EXPECT_TRUE(std::ranges::equal(triggers, expected, {}, [&](auto ask) { return ask(once); }));
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
    setAxis(0, 0);
    setAxis(0, -20000);
    EXPECT_EQ(KXGamePadStickLeft(0, 1), -1);
}

TEST_F(GamePad, GeneralAxisQuery) {
    setAxis(1, 30000);
    EXPECT_EQ(_KXGamePadAxis(1, 2, 1, 0), 30000);
    EXPECT_EQ(_KXGamePadAxis(1, 2, 1, 0), 0);
    steps.advance(30);
    EXPECT_EQ(_KXGamePadAxis(1, 2, 1, -1), 30000);
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
    EXPECT_EQ(KXGamePadHat(0), 1);
    EXPECT_EQ(KXGamePadHat(3), 1);
    EXPECT_EQ(KXGamePadHat(1) | KXGamePadHat(2), 0);
    EXPECT_EQ(KXGamePadHat(4), 1); // up under another number, with one report
    EXPECT_EQ(KXGamePadHat(4, 1), 1);
    EXPECT_EQ(KXGamePadHat(0, 1), 0);
    EXPECT_EQ(KXGamePadHat(3, 1), 1);
    setHat(SDL_HAT_UP); // rolling on keeps what stays held
    EXPECT_EQ(KXGamePadHat(0, 1), 0);
    setHat(SDL_HAT_RIGHTUP);
    EXPECT_EQ(KXGamePadHat(3, 1), 1);

    _KXSetHat(SDL_HAT_LEFT);
    EXPECT_EQ(KXGamePadHat(2, 1), 1);
    _KXSetHat(SDL_HAT_LEFT | SDL_HAT_RIGHT);
    EXPECT_EQ(KXGamePadHat(2, 1), 0);
    EXPECT_EQ(KXGamePadHat(3, 1), 1);
    for (int direction : {INT_MIN, -1, 5, INT_MAX})
        EXPECT_EQ(KXGamePadHat(direction) | KXGamePadHat(direction, 1) |
                      KXGamePadHatWithDelayedRepeat(direction),
                  0)
            << direction;
}

TEST_F(GamePad, ButtonsAndAxesBeyondTheTables) {
    EXPECT_EQ(KXGamePadPressedButton(), -1);
    for (int b = 16; b < 20; ++b)
        setButton(b, true);
    EXPECT_EQ(KXGamePadPressedButton(), -1);
    for (int b : {INT_MIN, -1, 16, 17, INT_MAX}) {
        _KXSetGamePadButton(b);
        EXPECT_EQ(KXGamePadButton(b) | KXGamePadButton(b, 1) | KXGamePadButtonWithDelayedRepeat(b), 0) << b;
        _KXUnsetGamePadButton(b);
        EXPECT_STREQ(KXGamePadButtonToString(b), "Unknown") << b;
    }
    setButton(9, true);
    setButton(5, true);
    EXPECT_EQ(KXGamePadPressedButton(), 5);
    for (int b = 0; b < 16; ++b)
        EXPECT_EQ(KXGamePadButtonToString(b), "Button " + std::to_string(b + 1));

    setAxis(9, 20000);
    for (int axis : {INT_MIN, -1, 8, 9, INT_MAX}) {
        _KXSetAxis(axis, 20000);
        EXPECT_EQ(KXGamePadAxis(axis), 0) << axis;
        EXPECT_EQ(_KXGamePadAxis(axis, 0, 1, 0), 0) << axis;
    }
    _KXSetAxis(0, INT_MIN);
    EXPECT_EQ(KXGamePadAxis(0), -32768);
    _KXSetAxis(0, INT_MAX);
    EXPECT_EQ(KXGamePadAxis(0), 32767);
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
        EXPECT_EQ(_KXGamePad, nullptr);
        KXDeInitGamePad();
        holdEverything(axisValue); // left over from before the pad
        EXPECT_EQ(KXInitGamePad(), -1);
        EXPECT_TRUE(isForgotten());
    }
}

TEST_F(Plug, PadsComeAndGo) {
    EXPECT_EQ(KXInitGamePad(), 0);
    EXPECT_EQ(_KXGamePad, nullptr);
    for (int times = 0; times < 2; ++times) {
        plugIn();
        ASSERT_EQ(KXInitGamePad(), -1);
        pump();
        setButton(3, true);
        setHat(SDL_HAT_UP);
        setAxis(2, 20000);
        EXPECT_EQ(KXGamePadButton(3) & KXGamePadStickRight(1, 0), -1);
        unplug();
        pump(); // the platform lets go of everything; triggers come to rest at the far end
        for (const Input& input : inputs())
            EXPECT_EQ(input.held(), 0) << input.name;
        EXPECT_EQ(KXInitGamePad(), 0);
        EXPECT_EQ(_KXGamePad, nullptr);
    }
}

TEST_F(Plug, WithoutThePlatform) {
    plugIn();
    ASSERT_EQ(KXInitGamePad(), -1);
    SDL_QuitSubSystem(SDL_INIT_JOYSTICK);
    device = -1;
    KXDeInitGamePad(); // the pad went with the platform
    EXPECT_EQ(_KXGamePad, nullptr);
    EXPECT_EQ(KXInitGamePad(), 0);
    ASSERT_EQ(SDL_InitSubSystem(SDL_INIT_JOYSTICK), 0);
}
} // namespace
