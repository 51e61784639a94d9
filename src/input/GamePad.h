#pragma once

#include <Kobaltrix/KXGamePad.h>

struct _SDL_Joystick;

inline constexpr int _KXGamePadButtonCount = 16;
inline constexpr int _KXGamePadHatCount = 4;
inline constexpr int _KXGamePadAxisCount = 8;

inline constinit _SDL_Joystick* _KXGamePad = nullptr; ///< The open pad.

// What is held, and for each input whether the game was told of it and the logic time (ms) of that report.
inline constinit int _KXGamePadButtons[_KXGamePadButtonCount] = {}; ///< -1 while held.
inline constinit int _KXGamePadButtonsDown[_KXGamePadButtonCount] = {};
inline constinit int _KXGamePadButtonsDownTime[_KXGamePadButtonCount] = {};

inline constinit int _KXGamePadHatPosition = 0; ///< The platform's bits: up 1, right 2, down 4, left 8.
inline constinit int _KXGamePadHatDown[_KXGamePadHatCount] = {}; ///< 1 once told; up, down, left, right.
inline constinit int _KXGamePadHatDownTime[_KXGamePadHatCount] = {};

/// Last values: left stick x and y, right stick x and y, left trigger, right trigger, two more.
inline constinit int _KXGamePadAxes[_KXGamePadAxisCount] = {};

inline constinit int _KXGamePadLeftStickDown_Up = 0;
inline constinit int _KXGamePadLeftStickDown_Up_Time = 0;
inline constinit int _KXGamePadLeftStickDown_Down = 0;
inline constinit int _KXGamePadLeftStickDown_Down_Time = 0;
inline constinit int _KXGamePadLeftStickDown_Left = 0;
inline constinit int _KXGamePadLeftStickDown_Left_Time = 0;
inline constinit int _KXGamePadLeftStickDown_Right = 0;
inline constinit int _KXGamePadLeftStickDown_Right_Time = 0;
inline constinit int _KXGamePadRightStickDown_Up = 0;
inline constinit int _KXGamePadRightStickDown_Up_Time = 0;
inline constinit int _KXGamePadRightStickDown_Down = 0;
inline constinit int _KXGamePadRightStickDown_Down_Time = 0;
inline constinit int _KXGamePadRightStickDown_Left = 0;
inline constinit int _KXGamePadRightStickDown_Left_Time = 0;
inline constinit int _KXGamePadRightStickDown_Right = 0;
inline constinit int _KXGamePadRightStickDown_Right_Time = 0;
inline constinit int _KXGamePadLeftTriggerDown = 0;
inline constinit int _KXGamePadLeftTriggerDownTime = 0;
inline constinit int _KXGamePadRightTriggerDown = 0;
inline constinit int _KXGamePadRightTriggerDownTime = 0;

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
