#pragma once

#include <Kobaltrix/KXGamePad.h>

struct _SDL_Joystick;

inline constexpr int _KXGamePadButtonCount = 16;
inline constexpr int _KXGamePadHatCount = 4;
inline constexpr int _KXGamePadAxisCount = 8;

inline constinit _SDL_Joystick* _KXGamePad = nullptr; ///< The open pad.

/// All that the pad has told: what is held, and for each input whether the game was told of it and the logic
/// time (ms) of that report.
struct _KXGamePadState {
    /// Of an axis that is pushed one way.
    struct Report {
        int told = 0;
        int time = 0;
        bool operator==(const Report&) const = default;
    };

    int buttons[_KXGamePadButtonCount] = {}; ///< -1 while held.
    int buttonsTold[_KXGamePadButtonCount] = {};
    int buttonsTime[_KXGamePadButtonCount] = {};
    int hatPosition = 0;                  ///< The platform's bits: up 1, right 2, down 4, left 8.
    int hatTold[_KXGamePadHatCount] = {}; ///< 1 once told; up, down, left, right.
    int hatTime[_KXGamePadHatCount] = {};
    /// Last values: left stick x and y, right stick x and y, left trigger, right trigger, two more.
    int axes[_KXGamePadAxisCount] = {};
    Report negative[4]; ///< By axis: to the left and up.
    Report positive[6]; ///< By axis: to the right and down, and the triggers, which have one way only.

    bool operator==(const _KXGamePadState&) const = default;
};

inline constinit _KXGamePadState _KXPad;

inline constinit int (&_KXGamePadButtons)[_KXGamePadButtonCount] = _KXPad.buttons;
inline constinit int (&_KXGamePadButtonsDown)[_KXGamePadButtonCount] = _KXPad.buttonsTold;
inline constinit int (&_KXGamePadButtonsDownTime)[_KXGamePadButtonCount] = _KXPad.buttonsTime;
inline constinit int& _KXGamePadHatPosition = _KXPad.hatPosition;
inline constinit int (&_KXGamePadHatDown)[_KXGamePadHatCount] = _KXPad.hatTold;
inline constinit int (&_KXGamePadHatDownTime)[_KXGamePadHatCount] = _KXPad.hatTime;
inline constinit int (&_KXGamePadAxes)[_KXGamePadAxisCount] = _KXPad.axes;

inline constinit int& _KXGamePadLeftStickDown_Up = _KXPad.negative[1].told;
inline constinit int& _KXGamePadLeftStickDown_Up_Time = _KXPad.negative[1].time;
inline constinit int& _KXGamePadLeftStickDown_Down = _KXPad.positive[1].told;
inline constinit int& _KXGamePadLeftStickDown_Down_Time = _KXPad.positive[1].time;
inline constinit int& _KXGamePadLeftStickDown_Left = _KXPad.negative[0].told;
inline constinit int& _KXGamePadLeftStickDown_Left_Time = _KXPad.negative[0].time;
inline constinit int& _KXGamePadLeftStickDown_Right = _KXPad.positive[0].told;
inline constinit int& _KXGamePadLeftStickDown_Right_Time = _KXPad.positive[0].time;
inline constinit int& _KXGamePadRightStickDown_Up = _KXPad.negative[3].told;
inline constinit int& _KXGamePadRightStickDown_Up_Time = _KXPad.negative[3].time;
inline constinit int& _KXGamePadRightStickDown_Down = _KXPad.positive[3].told;
inline constinit int& _KXGamePadRightStickDown_Down_Time = _KXPad.positive[3].time;
inline constinit int& _KXGamePadRightStickDown_Left = _KXPad.negative[2].told;
inline constinit int& _KXGamePadRightStickDown_Left_Time = _KXPad.negative[2].time;
inline constinit int& _KXGamePadRightStickDown_Right = _KXPad.positive[2].told;
inline constinit int& _KXGamePadRightStickDown_Right_Time = _KXPad.positive[2].time;
inline constinit int& _KXGamePadLeftTriggerDown = _KXPad.positive[4].told;
inline constinit int& _KXGamePadLeftTriggerDownTime = _KXPad.positive[4].time;
inline constinit int& _KXGamePadRightTriggerDown = _KXPad.positive[5].told;
inline constinit int& _KXGamePadRightTriggerDownTime = _KXPad.positive[5].time;

/// A button went down. Buttons the tables do not hold are ignored, here and below.
void _KXSetGamePadButton(int b);
/// A button came up.
void _KXUnsetGamePadButton(int b);
/// The hat moved to @a position, a set of direction bits.
void _KXSetHat(int position);
/// An axis moved; axes the table does not hold are ignored.
void _KXSetAxis(int axis, int value);

// The general forms of the queries: with @a once a held input is told once, with @a repeat as well it is told
// again after the delay.
int _KXGamePadButton(int b, int once, int repeat);
int _KXGamePadHat(int direction, int once, int repeat);
int _KXGamePadStickLeft(int rightStick, int once, int repeat);
int _KXGamePadStickUp(int rightStick, int once, int repeat);
int _KXGamePadStickRight(int rightStick, int once, int repeat);
int _KXGamePadStickDown(int rightStick, int once, int repeat);
int _KXGamePadLeftTrigger(int once, int repeat);
int _KXGamePadRightTrigger(int once, int repeat);

/// The axis's value, or 0 while it is pushed but must not be told. @a direction (KXDirection) chooses the
/// report a stick's axis counts against; triggers take any. The value may be pushed the other way: callers
/// look at it. Throws std::bad_alloc for a pushed axis above 5.
int _KXGamePadAxis(int axis, int direction, int once, int repeat);
