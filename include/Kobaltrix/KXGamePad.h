#pragma once

#include <Kobaltrix/KXPlatform.h>

/// @file
/// One game pad, the first joystick the platform reports: buttons, a hat, two sticks and two triggers,
/// numbered as its maker has them. KXPads.h has several pads with one layout, and misses nothing.
///
/// Most inputs are read in three ways. Held: on every call while the input is held. Once: the first time it
/// is asked for while held, then not again until it was let go. With delayed repeat: like once, and again on
/// every call once the time of 30 logic steps has passed since the report (480 ms at the default speed; time
/// is that of the frame's KXPreLogicLoop()). An input has one report, shared by all callers that ask for it
/// once or with repeat.
///
/// Sticks and triggers count as pushed at half of their way or more: axis values of 16384 and more, and for
/// left and up of -16384 and less. Between lies the dead zone.
///
/// Once and repeat tell a push from the one before by what is seen between them: a stick or trigger that goes
/// from one end of its way to the other between two calls may be missed, and so may a stick that was asked
/// for the direction opposite to its push.
///
/// Everything changes only while KXLogicLoop() reads events. The events of any joystick that is open at the
/// platform count as the pad's, also of one that the game has opened itself, and with no pad open here; but
/// of those that KXInitPads() has taken only this pad's own do. A number that is no button, direction or axis
/// reads as not held.

/// Opens the first joystick and forgets what was held. -1 on success, 0 if none is attached or KXInit() has
/// not run. A pad that is open already is closed first, so call it again after a pad was plugged in.
KX_API int KXInitGamePad();
/// Closes the pad, if one is open, and forgets what was held on it. KXDeInit() does the same.
KX_API void KXDeInitGamePad();

/// Buttons as this header numbers them, in the order in which the pad has them.
enum KXGamePadButtonNumber : int {
    KXGamePadButton1 = 0,
    KXGamePadButton2,
    KXGamePadButton3,
    KXGamePadButton4,
    KXGamePadButton5,
    KXGamePadButton6,
    KXGamePadButton7,
    KXGamePadButton8,
    KXGamePadButton9,
    KXGamePadButton10,
    KXGamePadButton11,
    KXGamePadButton12,
    KXGamePadButton13,
    KXGamePadButton14,
    KXGamePadButton15,
    KXGamePadButton16
};

/// Directions of the hat.
enum KXHatDirection : int { KXHatUp = 0, KXHatDown = 1, KXHatLeft = 2, KXHatRight = 3 };

/// Axes as this header numbers them.
enum KXGamePadAxisNumber : int {
    KXGamePadLeftStickX = 0,
    KXGamePadLeftStickY = 1,
    KXGamePadRightStickX = 2,
    KXGamePadRightStickY = 3,
    KXGamePadLeftTriggerAxis = 4,
    KXGamePadRightTriggerAxis = 5
};

/// The lowest number of a held button, -1 if none is held.
KX_API int KXGamePadPressedButton();
/// -1 while the button is held, else 0. Buttons are numbered 0 to 15; the pad's further buttons are ignored.
KX_API int KXGamePadButton(int b);
/// -1 once per press with a non-zero @a once, else -1 while the button is held; otherwise 0.
KX_API int KXGamePadButton(int b, int once);
/// -1 once per press and again with the delayed repeat, otherwise 0.
KX_API int KXGamePadButtonWithDelayedRepeat(int b);
/// The button's display name, "Button 1" for button 0 to "Button 16" for 15, "Unknown" for others. A constant
/// text.
KX_API const char* KXGamePadButtonToString(int b);

/// 1 while the hat is held in a direction: 0 up, 1 down, 2 left, 3 right, 4 up as well. Otherwise 0.
KX_API int KXGamePadHat(int direction);
/// 1 once per press with a non-zero @a once, else 1 while the direction is held; otherwise 0.
KX_API int KXGamePadHat(int direction, int once);
/// Non-zero once per press (1) and again with the delayed repeat (-1), otherwise 0.
KX_API int KXGamePadHatWithDelayedRepeat(int direction);

/// An axis's last value, -32768 to 32767: 0 and 1 left stick x and y, 2 and 3 right stick x and y, 4 left
/// trigger, 5 right trigger, 6 and 7 whatever the pad has there. x grows to the right, y downward.
KX_API int KXGamePadAxis(int axis);

/// -1 while a stick is pushed to the left, or with a non-zero @a once, once per push; otherwise 0. The left
/// stick for @a rightStick 0, else the right one.
KX_API int KXGamePadStickLeft(int rightStick, int once);
/// KXGamePadStickLeft() for a push upward.
KX_API int KXGamePadStickUp(int rightStick, int once);
/// KXGamePadStickLeft() for a push to the right.
KX_API int KXGamePadStickRight(int rightStick, int once);
/// KXGamePadStickLeft() for a push downward.
KX_API int KXGamePadStickDown(int rightStick, int once);
/// -1 once per push, otherwise 0. Unlike the other three directions a held push to the left never repeats.
KX_API int KXGamePadStickLeftWithDelayedRepeat(int rightStick);
/// -1 once per push upward and again with the delayed repeat, otherwise 0.
KX_API int KXGamePadStickUpWithDelayedRepeat(int rightStick);
/// -1 once per push to the right and again with the delayed repeat, otherwise 0.
KX_API int KXGamePadStickRightWithDelayedRepeat(int rightStick);
/// -1 once per push downward and again with the delayed repeat, otherwise 0.
KX_API int KXGamePadStickDownWithDelayedRepeat(int rightStick);

/// -1 while the left trigger is pressed, or with a non-zero @a once, once per press; otherwise 0.
KX_API int KXGamePadLeftTrigger(int once);
/// -1 while the right trigger is pressed, or with a non-zero @a once, once per press; otherwise 0.
KX_API int KXGamePadRightTrigger(int once);
/// -1 once per press of the left trigger and again with the delayed repeat, otherwise 0.
KX_API int KXGamePadLeftTriggerWithDelayedRepeat();
/// -1 once per press of the right trigger and again with the delayed repeat, otherwise 0.
KX_API int KXGamePadRightTriggerWithDelayedRepeat();
