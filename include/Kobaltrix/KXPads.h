#pragma once

#include <Kobaltrix/KXPlatform.h>
#include <Kobaltrix/KXTypes.h>

/// @file
/// Game pads: up to eight, which come and go at any time, with one layout whatever their make.
///
///     KXInitPads();
///     ... // in a logic step
///     for (int pad = 0; pad < KXMaximumPads; ++pad)
///         if (KXPadWentDown(pad, KXPadStart))
///             join(pad);
///
/// Each pad has a number from 0 on: the lowest that is free when it comes, and its own until it goes. Number,
/// button, axis and stick of every call may be any; what does not exist is not held, and at rest.
/// #KXAnyPad asks all pads together.
///
/// Everything changes only while KXLogicLoop() reads events, but for what KXInitPads() and KXDeInitPads() do
/// at once. A step's presses are told as those of keys are (see KXKeyboard.h): nothing is lost or seen twice,
/// and between steps nothing goes down or up. When a pad goes, and when a window loses the keyboard, all that
/// was held goes up and the sticks read as at rest until they move. While no window has the keyboard, pads
/// tell nothing.
///
/// KXGamePad.h has an older way, for one pad as its maker numbers it. Both can be used side by side.

/// Starts to look for pads, takes those that are plugged in, and from now on those that come. Nothing happens
/// if it did already. @return -1, or 0 with a text in KXError().
KX_API int KXInitPads();
/// Lets all pads go; dead zones are again as at the start. KXDeInit() does the same.
KX_API void KXDeInitPads();

/// Numbers of pads go from 0 to #KXMaximumPads - 1.
enum KXPadNumber : int {
    KXAnyPad = -1,    ///< All pads together.
    KXMaximumPads = 8 ///< Further pads wait until a number is free.
};

/// -1 if there is a pad of that number, else 0. #KXInputEventPadConnected and #KXInputEventPadDisconnected
/// tell when one comes or goes, also of those that are there when KXInitPads() is called.
KX_API int KXPadConnected(int pad);
/// What the maker or the system calls the pad, empty if there is none of that number. A temporary string.
KX_API const char* KXPadName(int pad);

/// Buttons of pads. The four at the right are named for where they lie on most makes, whatever is printed on
/// them: A is the lowest, B the right one, X the left one, Y the uppermost.
enum KXPadButton : int {
    KXPadA = 0,
    KXPadB = 1,
    KXPadX = 2,
    KXPadY = 3,
    KXPadBack = 4,
    KXPadGuide = 5, ///< In the middle, with the maker's sign. Some systems keep it to themselves.
    KXPadStart = 6,
    KXPadLeftStick = 7,  ///< The stick pressed down.
    KXPadRightStick = 8, ///< The stick pressed down.
    KXPadLeftShoulder = 9,
    KXPadRightShoulder = 10,
    KXPadDPadUp = 11,
    KXPadDPadDown = 12,
    KXPadDPadLeft = 13,
    KXPadDPadRight = 14,
    KXPadMisc = 15, ///< Share, capture or microphone.
    KXPadPaddle1 = 16,
    KXPadPaddle2 = 17,
    KXPadPaddle3 = 18,
    KXPadPaddle4 = 19,
    KXPadTouchpad = 20, ///< The touch pad pressed down.
    // Sticks and triggers as buttons: down from half of the way on, up again below two fifths of it.
    KXPadLeftStickLeft = 32,
    KXPadLeftStickRight = 33,
    KXPadLeftStickUp = 34,
    KXPadLeftStickDown = 35,
    KXPadRightStickLeft = 36,
    KXPadRightStickRight = 37,
    KXPadRightStickUp = 38,
    KXPadRightStickDown = 39,
    KXPadLeftTrigger = 40,
    KXPadRightTrigger = 41
};

/// -1 while the button is held, else 0. @param pad its number, or #KXAnyPad.
/// @param button any of KXPadButton.
KX_API int KXPadHeld(int pad, int button);
/// How often the button went down in this step: mostly 0 or 1, with #KXAnyPad on all pads together.
KX_API int KXPadWentDown(int pad, int button);
/// How often the button came up in this step. A stick that was thrown straight across has come up on one side
/// and gone down on the other.
KX_API int KXPadWentUp(int pad, int button);
/// How far the button is pushed, 0 to 1: a stick's way to that side behind its dead zone, a trigger's way;
/// buttons that know no way between give 0 or 1. With #KXAnyPad the furthest.
KX_API float KXPadValue(int pad, int button);

/// The button's name, such as "A", "D-Pad Up", "Left Stick Left" or "Right Trigger", another for each;
/// "Unknown" for a number that is no button. A constant text.
KX_API const char* KXPadButtonName(int button);
/// The button with that name, -1 for none.
KX_API int KXPadButtonFromName(const char* name);

/// Sides of a pad, for its sticks.
enum KXPadSide : int { KXPadLeftSide = 0, KXPadRightSide = 1 };

/// Axes of a pad.
enum KXPadAxisNumber : int {
    KXPadLeftStickX = 0,
    KXPadLeftStickY = 1,
    KXPadRightStickX = 2,
    KXPadRightStickY = 3,
    KXPadLeftTriggerAxis = 4,
    KXPadRightTriggerAxis = 5
};

/// Where a stick is: x from -1 to 1 to the right, y from -1 to 1 downward, at most 1 from the middle in any
/// direction. Within its dead zone it is at rest, beyond it begins at 0. With #KXAnyPad the stick that is
/// furthest out.
KX_API KXPoint KXPadStick(int pad, KXPadSide side);
/// Where an axis is: of a stick the x or y that KXPadStick() gives, of a trigger 0 to 1. With #KXAnyPad the
/// one that is furthest out.
KX_API float KXPadAxis(int pad, KXPadAxisNumber axis);
/// Sets how far from the middle a stick counts as at rest, as a part of its way: 0 to below 1, 0.2 at the
/// start. It belongs to the number, whichever pad has it; with #KXAnyPad to all.
/// @return -1, or 0 with a text in KXError() for a part, a side or a pad that is out of range.
KX_API int KXSetPadDeadZone(int pad, KXPadSide side, float part);

/// Shakes the pad for some time, in place of how it shakes now. @param pad its number. @param low strength of
/// the slow, heavy motor, 0 to 1. @param high strength of the fast, light motor, 0 to 1. @param milliseconds
/// up to 65535; 0 stops.
/// @return -1, or 0 with a text in KXError() if there is no such pad or it cannot.
KX_API int KXRumblePad(int pad, float low, float high, unsigned milliseconds);

/// How full a pad's battery is.
enum KXPadBattery : int {
    KXPadBatteryUnknown = -1,
    KXPadBatteryEmpty = 0,
    KXPadBatteryLow = 1,
    KXPadBatteryMedium = 2,
    KXPadBatteryFull = 3,
    KXPadBatteryWired = 4 ///< It has a cable.
};
/// How full the pad's battery is, as far as the system knows.
KX_API KXPadBattery KXPadBatteryLevel(int pad);

/// Teaches the layout of further pads, or another one of known pads, until KXDeInit(). Call it after
/// KXInit(), before or after KXInitPads(). A pad that is plugged in changes at once, and what is held on it
/// goes up; one that does not tell its maker changes when it is plugged in again.
/// @param text lines as the community's database for SDL has them: GUID of 32 digits, name, fields. Lines of
/// other systems, comments and whatever else are passed over.
/// @return how many lines hold a layout for this system; 0 with a text in KXError() if none does.
KX_API int KXAddPadMappings(const char* text);
/// KXAddPadMappings() with what stands in a file.
KX_API int KXLoadPadMappings(const char* path);
