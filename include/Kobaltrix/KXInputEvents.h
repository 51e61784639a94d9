#pragma once

#include <Kobaltrix/KXKeys.h>
#include <Kobaltrix/KXTypes.h>

#include <stdint.h>

/// @file
/// The events of a logic step, in the order in which they came. For those who must know what came first, such
/// as a text field: "X", Backspace, "Y". Games that only ask what is held or what went down use
/// KXKeyHeld(), KXKeyWentDown() and their kind, which tell the same.
///
///     for (const KXInputEvent& event : KXInputEvents())
///         if (event.type == KXInputEventText)
///             name += event.text;

/// What happened. Which fields of KXInputEvent it fills beside type, windowID and time stands with each.
enum KXInputEventType : int {
    KXInputEventKeyDown = 1,     ///< key, position. A key that is down goes down no second time.
    KXInputEventKeyRepeat,       ///< key, position. The system repeats a key that is held.
    KXInputEventKeyUp,           ///< key, position.
    KXInputEventText,            ///< text. It was typed, on any layout and with any input method.
    KXInputEventComposition,     ///< text. What an input method is composing; it is not typed yet.
    KXInputEventMouseMoved,      ///< point, motion.
    KXInputEventMouseDown,       ///< button, point.
    KXInputEventMouseUp,         ///< button, point.
    KXInputEventMouseWheel,      ///< motion in notches: x to the right, y away from the user.
    KXInputEventFingerDown,      ///< finger, point, pressure.
    KXInputEventFingerMoved,     ///< finger, point, motion, pressure.
    KXInputEventFingerUp,        ///< finger, point.
    KXInputEventPadConnected,    ///< pad.
    KXInputEventPadDisconnected, ///< pad.
    KXInputEventPadDown,         ///< pad, button.
    KXInputEventPadUp,           ///< pad, button.
    KXInputEventFocusGained,     ///< The window has the keyboard now.
    KXInputEventFocusLost,       ///< It has lost it. What was held has gone up just before.
    KXInputEventWindowClosed,    ///< The user asks to close the window.
    KXInputEventFileDropped,     ///< text: the path of a file that was dropped on the window.
    KXInputEventTextDropped,     ///< text: dropped on the window.
    KXInputEventDensityChanged   ///< density. The window came to another display, or its display changed.
};

/// One event. Fields that its type does not fill are 0.
struct KXInputEvent {
    KXInputEventType type;  ///< What happened.
    unsigned windowID;      ///< KXWindow::id() of the window it belongs to, 0 for none.
    uint32_t time;          ///< When the system saw it: milliseconds of its tick counter.
    int key;                ///< Number of the key, see KXKeyNumber.
    KXKeyPosition position; ///< Place of the key.
    int button;             ///< Of the mouse (KXMouseButton) or of the pad (KXPadButton).
    int finger;             ///< Number of the finger, from 0.
    int pad;                ///< Number of the pad, from 0.
    KXPoint point;          ///< Points from the window's top-left corner, or units of its logical size.
    KXPoint motion;         ///< The same since the last event of the kind; notches of the wheel.
    float pressure;         ///< Of the finger, 0 to 1.
    float density;          ///< Pixels to a point, as KXWindow::density() tells.
    const char* text;       ///< UTF-8; null where there is none. Lives until KXLogicUpdate().
};

/// The events of a step, to be walked with a range-based for.
struct KXInputEventList {
    const KXInputEvent* first; ///< Null if there are none.
    int count;                 ///< How many there are.

    const KXInputEvent* begin() const { return first; }       ///< For a range-based for.
    const KXInputEvent* end() const { return first + count; } ///< For a range-based for.
};

/// The events that this logic step has read; empty between steps. The list lives until KXLogicUpdate().
KX_API KXInputEventList KXInputEvents();

/// The window that the keyboard's last event belongs to, 0 before the first and when the keyboard has left.
KX_API unsigned KXKeyboardWindowID();
/// The window that the mouse's last event belongs to, 0 before the first.
KX_API unsigned KXMouseWindowID();
